#include "proof/wood_plan.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "machine/tool_table.h"
#include "machine/tool_way.h"

namespace kv {

namespace {

// Of a tool that nobody gives a size: its way alone is proved.
constexpr double RadiusOfUnknown = 0.5; // mm

double LengthOfPiece(const Move& move)
{
    return move.IsArc ? Between(move.Centre, move.From) * std::fabs(move.Sweep) * Degree
                      : Between(move.From, move.To);
}

// A closed way that begins within its longest piece, where a tool beside it has no corner to come from.
std::vector<Move> BegunWithinPiece(const std::vector<Move>& way)
{
    const auto longest = std::max_element(way.begin(), way.end(), [](const Move& a, const Move& b) {
        return LengthOfPiece(a) < LengthOfPiece(b);
    });
    Move first = *longest, last = *longest;
    if (longest->IsArc) {
        const double angle = (DirectionTo(longest->Centre, longest->From) + longest->Sweep / 2) * Degree;
        const double radius = Between(longest->Centre, longest->From);
        first.From = {longest->Centre.X + radius * std::cos(angle),
                      longest->Centre.Y + radius * std::sin(angle)};
        first.Sweep = last.Sweep = longest->Sweep / 2;
    } else {
        first.From = {(longest->From.X + longest->To.X) / 2, (longest->From.Y + longest->To.Y) / 2};
    }
    last.To = first.From;
    std::vector<Move> turned = {first};
    turned.insert(turned.end(), longest + 1, way.end());
    turned.insert(turned.end(), way.begin(), longest);
    turned.push_back(last);
    return turned;
}

ToolWay IdealWay(const AskedWay& way, double radius, int side)
{
    RouterCut cut;
    cut.On = way.On;
    cut.Radius = radius;
    cut.Side = side;
    cut.Moves = way.IsClosed && side != 0 ? BegunWithinPiece(way.Pieces) : way.Pieces;
    cut.Start = cut.Moves.front().From;
    return WayOf(cut);
}

double AreaInside(const WoodShape& shape)
{
    double area = 0;
    for (std::size_t i = 0; i < shape.size(); ++i) {
        const PathPoint &a = shape[i], &b = shape[(i + 1) % shape.size()];
        area += a.X * b.Y - b.X * a.Y;
    }
    return area / 2;
}

// Below 0: the program does not say it.
int NumberOfTool(const MachineSteps& steps, const RouterCut& cut)
{
    switch (steps.Tools) {
    case ToolNames::WithGroup:
        return ToolNumberOf(cut.Tool);
    case ToolNames::NumberAlone:
        return ToolNumberOf("01" + cut.Tool);
    case ToolNames::OfTheMachine:
        break;
    }
    return -1;
}

class Planning {
  public:
    Planning(WoodPlan& plan, std::vector<MachineSteps>& programs) : Plan(plan), Programs(programs) {}

    void Make()
    {
        LearnRadii();
        AddMadeCuts();
        const PieceIndex made(Plan.MadePieces);
        for (const AskedWay& way : Plan.Asked.Ways)
            AddAskedCut(way, made);
        for (const AskedPocket& pocket : Plan.Asked.Pockets)
            Plan.PocketInsides.push_back(InsideOf(pocket.Outline));
        const PieceIndex asked(Plan.AskedPieces);
        for (MadeCut& cut : Plan.MadeCuts)
            cut.OwnWay = OwnWayOf(cut, asked);
    }

  private:
    void LearnRadii()
    {
        for (const MachineSteps& steps : Programs)
            for (const RouterCut& cut : steps.Cuts)
                LearnRadius(NumberOfTool(steps, cut), cut.Radius);
        for (const AskedWay& way : Plan.Asked.Ways)
            LearnRadius(way.Tool, way.Radius);
        for (const AskedPocket& pocket : Plan.Asked.Pockets)
            LearnRadius(pocket.Tool, pocket.Radius);
    }
    void LearnRadius(int tool, double radius)
    {
        constexpr double same = 0.001; // mm
        if (tool <= 0 || radius <= 0)
            return;
        const auto [known, isNew] = RadiusOfTool.try_emplace(tool, radius);
        if (!isNew && std::fabs(known->second - radius) > same)
            known->second = 0; // two sizes: nobody knows
    }
    double RadiusByTool(int tool) const
    {
        const auto known = RadiusOfTool.find(tool);
        return known != RadiusOfTool.end() ? known->second : 0;
    }
    double RadiusOfMade(const MachineSteps& steps, const RouterCut& cut) const
    {
        if (cut.Radius > 0)
            return cut.Radius;
        if (const double radius = RadiusByTool(NumberOfTool(steps, cut)); radius > 0)
            return radius;
        for (const AskedWay& way : Plan.Asked.Ways) // where tool numbers are exchanged
            for (const Move& piece : way.Pieces)
                if (way.On == cut.On && way.Side == 0 && way.Radius > 0 &&
                    DistanceFrom(piece, cut.Start) <= Plan.Tolerance)
                    return way.Radius;
        return RadiusOfUnknown;
    }
    double RadiusOfAsked(const AskedWay& way) const
    {
        if (way.Radius > 0)
            return way.Radius;
        const double radius = RadiusByTool(way.Tool);
        return radius > 0 ? radius : way.Side == 0 ? RadiusOfUnknown : 0;
    }

    void AddMadeCuts()
    {
        for (std::size_t program = 0; program < Programs.size(); ++program)
            for (RouterCut& cut : Programs[program].Cuts) {
                if (cut.Moves.empty()) // a bore
                    continue;
                cut.Radius = RadiusOfMade(Programs[program], cut);
                AddMadeCut(cut, program);
            }
    }
    void AddMadeCut(const RouterCut& cut, std::size_t program)
    {
        const ToolWay way = WayOf(cut);
        MadeCut made;
        made.Cut = &cut;
        made.Program = program;
        made.FirstPiece = Plan.MadePieces.size();
        for (const Move& piece : way.Pieces)
            if (std::max(piece.DepthFrom, piece.DepthTo) > 0)
                Plan.MadePieces.push_back(
                    {cut.On, piece, way.Radius, std::min(piece.DepthFrom, piece.DepthTo),
                     std::max(piece.DepthFrom, piece.DepthTo), Plan.MadeCuts.size(), false});
        made.LastPiece = Plan.MadePieces.size();
        if (!way.Faults.empty()) {
            made.NarrowText = way.Faults.front().Text;
            made.NarrowAt = way.Faults.front().At;
            made.NarrowLine = way.Faults.front().Line;
        }
        Plan.MadeCuts.push_back(std::move(made));
    }

    static bool IsRollOf(const Move& piece, const ToolWay& ideal, const AskedWay& way)
    {
        constexpr double same = 1e-6; // mm
        return piece.IsArc && std::fabs(Between(piece.Centre, piece.From) - ideal.Radius) < same &&
               std::any_of(way.Pieces.begin(), way.Pieces.end(),
                           [&](const Move& drawn) { return Between(drawn.To, piece.Centre) < same; });
    }
    void AddPieces(const ToolWay& ideal, const AskedWay& way, std::size_t owner,
                   std::vector<CutPiece>& pieces) const
    {
        for (const Move& piece : ideal.Pieces)
            pieces.push_back({way.On, piece, ideal.Radius, way.DepthLeast, way.DepthMost, owner,
                              way.Side != 0 && IsRollOf(piece, ideal, way)});
    }
    // How much of the pieces the programs do not follow.
    double LengthBeside(const std::vector<CutPiece>& pieces, const PieceIndex& made) const
    {
        double beside = 0;
        for (const CutPiece& piece : pieces) {
            std::vector<const Move*> near;
            for (const std::size_t i : made.Near(piece.On, BoxOfPiece(piece.Way, piece.Radius)))
                near.push_back(&Plan.MadePieces[i].Way);
            for (const Move& part : PartsBeside(piece.Way, near))
                beside += LengthOfPiece(part);
        }
        return beside;
    }
    void AddAskedCut(const AskedWay& way, const PieceIndex& made)
    {
        const std::size_t owner = Plan.AskedCuts.size();
        AskedCut asked;
        const double radius = RadiusOfAsked(way);
        asked.IsJudged = radius > 0;
        asked.FirstPiece = asked.LastPiece = Plan.AskedPieces.size();
        int side = way.Side;
        if (asked.IsJudged) {
            std::vector<CutPiece> pieces;
            AddPieces(IdealWay(way, radius, side), way, owner, pieces);
            if (way.IsSideOpen) {
                std::vector<CutPiece> other;
                AddPieces(IdealWay(way, radius, -side), way, owner, other);
                if (LengthBeside(other, made) < LengthBeside(pieces, made)) {
                    pieces = std::move(other);
                    side = -side;
                }
            }
            Plan.AskedPieces.insert(Plan.AskedPieces.end(), pieces.begin(), pieces.end());
            asked.LastPiece = Plan.AskedPieces.size();
        }
        if (way.IsClosed && side != 0) {
            asked.Inside = InsideOf(way.Pieces);
            asked.IsToolOutside = (AreaInside(asked.Inside) > 0) == (side < 0);
        }
        Plan.AskedCuts.push_back(std::move(asked));
    }

    std::size_t OwnWayOf(const MadeCut& cut, const PieceIndex& asked) const
    {
        std::map<std::size_t, double> followed; // length by way
        for (std::size_t i = cut.FirstPiece; i < cut.LastPiece; ++i) {
            const CutPiece& piece = Plan.MadePieces[i];
            std::map<std::size_t, std::vector<const Move*>> near;
            for (const std::size_t k : asked.Near(piece.On, BoxOfPiece(piece.Way, piece.Radius)))
                near[Plan.AskedPieces[k].Owner].push_back(&Plan.AskedPieces[k].Way);
            for (const auto& [way, moves] : near) {
                double beside = 0;
                for (const Move& part : PartsBeside(piece.Way, moves))
                    beside += LengthOfPiece(part);
                followed[way] += LengthOfPiece(piece.Way) - beside;
            }
        }
        std::size_t own = NoWay;
        double most = Plan.Tolerance;
        for (const auto& [way, length] : followed)
            if (length > most) {
                own = way;
                most = length;
            }
        return own;
    }

    WoodPlan& Plan;
    std::vector<MachineSteps>& Programs;
    std::map<int, double> RadiusOfTool; // by its number; 0: not known
};

} // namespace

WoodPlan PlanOf(const Demands& demands, std::vector<MachineSteps>& programs, double tolerance)
{
    WoodPlan plan{demands, tolerance, {}, {}, {}, {}, {}};
    Planning(plan, programs).Make();
    return plan;
}

bool IsInside(const WoodShape& shape, const PathPoint& at)
{
    bool isInside = false;
    for (std::size_t i = 0; i < shape.size(); ++i) {
        const PathPoint &a = shape[i], &b = shape[(i + 1) % shape.size()];
        if ((a.Y > at.Y) != (b.Y > at.Y) && at.X < a.X + (at.Y - a.Y) / (b.Y - a.Y) * (b.X - a.X))
            isInside = !isInside;
    }
    return isInside;
}

} // namespace kv

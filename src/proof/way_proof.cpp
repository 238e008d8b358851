#include "proof/way_proof.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "machine/tool_way.h"

namespace kv {

namespace {

WoodShape BoxShape(double length, double width)
{
    return {{0, 0}, {length, 0}, {length, width}, {0, width}};
}

// The panel's wood in the plane.
std::vector<WoodShape> WoodOf(Plane on, const Demands& panel)
{
    if (on == Plane::Surface)
        return {BoxShape(panel.Length, panel.Width)};
    const bool alongX = on == Plane::Edge1 || on == Plane::Edge2;
    return {BoxShape(alongX ? panel.Length : panel.Width, panel.Thickness)};
}

void Widen(PieceBox& box, const PieceBox& other)
{
    box.Low = {std::min(box.Low.X, other.Low.X), std::min(box.Low.Y, other.Low.Y)};
    box.High = {std::max(box.High.X, other.High.X), std::max(box.High.Y, other.High.Y)};
}

bool Meets(const PieceBox& a, const PieceBox& b)
{
    return a.Low.X <= b.High.X && b.Low.X <= a.High.X && a.Low.Y <= b.High.Y && b.Low.Y <= a.High.Y;
}

PieceBox BoxOfShape(const WoodShape& shape)
{
    PieceBox box{shape.front(), shape.front()};
    for (const PathPoint& at : shape)
        Widen(box, {at, at});
    return box;
}

// Parts of ways that nothing matches, with the tool that goes along them.
struct LooseParts {
    std::vector<Move> Parts;
    double Radius = 0, Depth = 0;
    bool IsLead = false;
    PieceBox Box;
    std::size_t Line = 0; // of the program, the first

    void Add(const Move& part, double radius)
    {
        const PieceBox box = BoxOfPiece(part, radius);
        if (Parts.empty()) {
            Box = box;
            Line = part.Line;
        }
        Widen(Box, box);
        Parts.push_back(part);
        Radius = radius;
    }
    std::vector<WoodShape> Swept() const
    {
        std::vector<WoodShape> shapes;
        for (const Move& part : Parts)
            AddSwept(shapes, part, Radius);
        return shapes;
    }
};

Finding FindingOf(FindingKind kind, Plane on, const WoodRest& rest, double depth)
{
    Finding finding;
    finding.Kind = kind;
    finding.On = on;
    finding.At = rest.At;
    finding.Depth = depth;
    finding.Millimetres = rest.Width;
    finding.Area = rest.Area;
    return finding;
}

// --- what is left standing

class LeftProof {
  public:
    LeftProof(Proof& proof, const WoodPlan& plan) : All(proof), Plan(plan), Made(plan.MadePieces) {}

    void Prove()
    {
        for (std::size_t way = 0; way < Plan.AskedCuts.size() && !All.IsFull(); ++way)
            ProveWay(way);
        for (std::size_t pocket = 0; pocket < Plan.PocketInsides.size(); ++pocket)
            ProvePocket(pocket);
    }

  private:
    // Pieces that go as deep, and are as wide.
    std::vector<std::size_t> MadeNear(Plane on, const PieceBox& box, double depth) const
    {
        std::vector<std::size_t> near;
        for (const std::size_t i : Made.Near(on, box))
            if (Plan.MadePieces[i].DepthLeast >= depth - Plan.Tolerance &&
                Meets(box, BoxOfPiece(Plan.MadePieces[i].Way, Plan.MadePieces[i].Radius)))
                near.push_back(i);
        return near;
    }
    std::vector<WoodShape> SweptNear(Plane on, const PieceBox& box, double depth) const
    {
        std::vector<WoodShape> shapes;
        for (const std::size_t i : MadeNear(on, box, depth))
            AddSwept(shapes, Plan.MadePieces[i].Way, Plan.MadePieces[i].Radius);
        return shapes;
    }
    LooseParts PartsLeft(const AskedCut& asked) const
    {
        LooseParts left;
        for (std::size_t i = asked.FirstPiece; i < asked.LastPiece; ++i) {
            const CutPiece& piece = Plan.AskedPieces[i];
            if (piece.IsRoll)
                continue;
            std::vector<const Move*> same;
            for (const std::size_t k :
                 MadeNear(piece.On, BoxOfPiece(piece.Way, piece.Radius), piece.DepthLeast))
                if (Plan.MadePieces[k].Radius > piece.Radius - SameRadius)
                    same.push_back(&Plan.MadePieces[k].Way);
            for (const Move& part : PartsBeside(piece.Way, same))
                left.Add(part, piece.Radius);
        }
        return left;
    }
    void ProveWay(std::size_t index)
    {
        const AskedWay& way = Plan.Asked.Ways[index];
        const AskedCut& asked = Plan.AskedCuts[index];
        if (!asked.IsJudged) {
            All.Left.push_back({way.Drawn.front(), "nobody names its tool's radius"});
            return;
        }
        const LooseParts left = PartsLeft(asked);
        if (left.Parts.empty()) {
            ++All.Contours;
            return;
        }
        const std::vector<WoodRest> rests =
            RestsOf({left.Swept(), WoodOf(way.On, Plan.Asked), SweptNear(way.On, left.Box, way.DepthLeast)},
                    Plan.Tolerance);
        if (rests.empty())
            ++All.Contours;
        for (const WoodRest& rest : rests)
            Tell(FindingOf(FindingKind::Left, way.On, rest, way.DepthLeast), NearestDrawn(way, rest.At));
    }
    static Long NearestDrawn(const AskedWay& way, const PathPoint& at)
    {
        std::size_t nearest = 0;
        for (std::size_t i = 1; i < way.Pieces.size(); ++i)
            if (DistanceFrom(way.Pieces[i], at) < DistanceFrom(way.Pieces[nearest], at))
                nearest = i;
        return way.Drawn[nearest];
    }
    void ProvePocket(std::size_t index)
    {
        const AskedPocket& pocket = Plan.Asked.Pockets[index];
        const WoodShape& inside = Plan.PocketInsides[index];
        const std::vector<WoodShape> wood = WoodOf(Plane::Surface, Plan.Asked);
        const std::vector<WoodShape> middles = MiddlesInside(pocket.Outline, pocket.Radius);
        std::vector<WoodRest> rests;
        for (const WoodRest& rest :
             RestsOf({{inside}, wood, SweptNear(Plane::Surface, BoxOfShape(inside), pocket.Depth)},
                     Plan.Tolerance)) {
            // Corners that the tool cannot reach stay.
            const WoodShape around = {
                rest.Low, {rest.High.X, rest.Low.Y}, rest.High, {rest.Low.X, rest.High.Y}};
            WoodQuestion reachable{ReachedFrom(middles, pocket.Radius, rest.Low, rest.High),
                                   {around},
                                   SweptNear(Plane::Surface, {rest.Low, rest.High}, pocket.Depth)};
            for (const WoodRest& left : RestsOf(reachable, Plan.Tolerance))
                rests.push_back(left);
        }
        if (rests.empty())
            ++All.Pockets;
        for (const WoodRest& rest : rests)
            Tell(FindingOf(FindingKind::Left, Plane::Surface, rest, pocket.Depth), pocket.Drawn.front());
    }
    void Tell(Finding finding, Long drawn)
    {
        finding.Drawn = drawn;
        // Is it cut there, but less deep?
        double depth = 0;
        const PieceBox here{finding.At, finding.At};
        for (const std::size_t i : Made.Near(finding.On, here))
            if (DistanceFrom(Plan.MadePieces[i].Way, finding.At) <= Plan.MadePieces[i].Radius)
                depth = std::max(depth, Plan.MadePieces[i].DepthLeast);
        if (depth > 0)
            finding.What = "cut " + MillimetreText(depth) + " deep there";
        All.Findings.push_back(std::move(finding));
    }

    static constexpr double SameRadius = 0.005; // mm
    Proof& All;
    const WoodPlan& Plan;
    PieceIndex Made;
};

// --- what is cut away

class CutProof {
  public:
    CutProof(Proof& proof, const WoodPlan& plan) : All(proof), Plan(plan), Asked(plan.AskedPieces)
    {
        for (const WoodShape& inside : plan.PocketInsides)
            PocketBoxes.push_back(BoxOfShape(inside));
    }

    void Prove()
    {
        for (const MadeCut& cut : Plan.MadeCuts) {
            if (All.IsFull())
                return;
            for (const auto& [key, parts] : PartsBesideAsked(cut))
                ProveParts(cut, parts);
        }
    }

  private:
    // What belongs to one question: leads, or parts of the way itself; by depth in hundredths of a mm.
    using PartsKey = std::pair<bool, long long>;

    std::vector<Move> PartsBesideAsked(const CutPiece& piece) const
    {
        std::vector<const Move*> same;
        for (const std::size_t k : AskedNear(piece.On, BoxOfPiece(piece.Way, piece.Radius), piece.DepthMost))
            if (Plan.AskedPieces[k].Radius > piece.Radius - SameRadius)
                same.push_back(&Plan.AskedPieces[k].Way);
        return PartsBeside(piece.Way, same);
    }
    std::map<PartsKey, LooseParts> PartsBesideAsked(const MadeCut& cut) const
    {
        std::vector<std::vector<Move>> parts;
        for (std::size_t i = cut.FirstPiece; i < cut.LastPiece; ++i)
            parts.push_back(PartsBesideAsked(Plan.MadePieces[i]));
        // Leads are the first and the last move, where the way itself comes after and before them.
        const auto follows = [](const std::vector<Move>& beside) { return beside.empty(); };
        const auto first = std::find_if(parts.begin(), parts.end(), follows);
        const auto last = std::find_if(parts.rbegin(), parts.rend(), follows).base(); // behind it
        std::map<PartsKey, LooseParts> loose;
        for (auto beside = parts.begin(); beside != parts.end(); ++beside) {
            const CutPiece& piece =
                Plan.MadePieces[cut.FirstPiece + static_cast<std::size_t>(beside - parts.begin())];
            const std::size_t line = piece.Way.Line;
            const bool isLead =
                first != parts.end() && ((beside < first && line == cut.Cut->Moves.front().Line) ||
                                         (beside >= last && line == cut.Cut->Moves.back().Line));
            for (const Move& part : *beside) {
                if (IsInPocket(piece, part))
                    continue;
                LooseParts& together = loose[{isLead, std::llround(piece.DepthMost * 100)}];
                together.Add(part, piece.Radius);
                together.Depth = std::max(together.Depth, piece.DepthMost);
                together.IsLead = isLead;
            }
        }
        return loose;
    }
    std::vector<std::size_t> AskedNear(Plane on, const PieceBox& box, double depth) const
    {
        std::vector<std::size_t> near;
        for (const std::size_t i : Asked.Near(on, box))
            if (Plan.AskedPieces[i].DepthMost >= depth - Plan.Tolerance)
                near.push_back(i);
        return near;
    }
    // The tool on the part stays inside a pocket that is as deep.
    bool IsInPocket(const CutPiece& piece, const Move& part) const
    {
        for (std::size_t i = 0; i < Plan.PocketInsides.size(); ++i) {
            const AskedPocket& pocket = Plan.Asked.Pockets[i];
            if (piece.On != Plane::Surface || pocket.Depth < piece.DepthMost - Plan.Tolerance ||
                !Meets(PocketBoxes[i], BoxOfPiece(part, 0)))
                continue;
            if (StaysInside(part, pocket.Outline, Plan.PocketInsides[i], piece.Radius))
                return true;
        }
        return false;
    }
    static bool StaysInside(const Move& part, const std::vector<Move>& outline, const WoodShape& inside,
                            double radius)
    {
        constexpr double rounding = 0.03; // mm
        const double step = std::max(0.2, radius / 10);
        const double length = part.IsArc ? Between(part.Centre, part.From) * std::fabs(part.Sweep) * Degree
                                         : Between(part.From, part.To);
        const int count = std::max(2, static_cast<int>(std::ceil(length / step)));
        for (int i = 0; i <= count; ++i) {
            const PathPoint at = PlaceOnMove(part, static_cast<double>(i) / count);
            if (!IsInside(inside, at))
                return false;
            for (const Move& wall : outline)
                if (DistanceFrom(wall, at) < radius - rounding)
                    return false;
        }
        return true;
    }
    static PathPoint PlaceOnMove(const Move& move, double share)
    {
        if (!move.IsArc)
            return {move.From.X + (move.To.X - move.From.X) * share,
                    move.From.Y + (move.To.Y - move.From.Y) * share};
        const double angle = (DirectionTo(move.Centre, move.From) + move.Sweep * share) * Degree;
        const double radius = Between(move.Centre, move.From);
        return {move.Centre.X + radius * std::cos(angle), move.Centre.Y + radius * std::sin(angle)};
    }

    void ProveParts(const MadeCut& cut, const LooseParts& parts)
    {
        const Plane on = cut.Cut->On;
        WoodQuestion question{parts.Swept(), WoodOf(on, Plan.Asked),
                              AskedShapesNear(on, parts.Box, parts.Depth)};
        std::vector<WoodRest> rests = RestsOf(question, Plan.Tolerance);
        if (rests.empty())
            return;
        if (cut.OwnWay != NoWay && (parts.IsLead || !Plan.Asked.Ways[cut.OwnWay].IsClosed))
            rests = WithoutLeads(cut, question, std::move(rests));
        for (const WoodRest& rest : rests) {
            Finding finding = FindingOf(FindingKind::Cut, on, rest, parts.Depth);
            finding.Program = cut.Program;
            finding.Line = parts.Line;
            for (const Move& part : parts.Parts) // the line that cuts there
                if (DistanceFrom(part, rest.At) <= parts.Radius + Plan.Tolerance)
                    finding.Line = part.Line;
            finding.Drawn = cut.OwnWay != NoWay ? Plan.Asked.Ways[cut.OwnWay].Drawn.front() : 0;
            NameDepth(finding);
            All.Findings.push_back(std::move(finding));
        }
    }
    std::vector<WoodShape> AskedShapesNear(Plane on, const PieceBox& box, double depth) const
    {
        std::vector<WoodShape> shapes;
        for (const std::size_t i : AskedNear(on, box, depth))
            AddSwept(shapes, Plan.AskedPieces[i].Way, Plan.AskedPieces[i].Radius);
        if (on != Plane::Surface)
            return shapes;
        for (std::size_t i = 0; i < Plan.PocketInsides.size(); ++i)
            if (Plan.Asked.Pockets[i].Depth >= depth - Plan.Tolerance && Meets(PocketBoxes[i], box))
                shapes.push_back(Plan.PocketInsides[i]);
        for (const AskedGroove& groove : Plan.Asked.Grooves)
            if (groove.Depth >= depth - Plan.Tolerance) {
                const double half = std::max(groove.Width, groove.Kerf) / 2;
                AddBand(shapes, groove.From, groove.To, half, half);
            }
        return shapes;
    }
    // Wood beside the way, on the tool's side and as far as its lead is long, falls off or was asked to go.
    std::vector<WoodRest> WithoutLeads(const MadeCut& cut, WoodQuestion question,
                                       std::vector<WoodRest> rests) const
    {
        const AskedWay& way = Plan.Asked.Ways[cut.OwnWay];
        const AskedCut& asked = Plan.AskedCuts[cut.OwnWay];
        std::vector<WoodRest> kept;
        for (WoodRest& rest : rests)
            if (!IsWithinLead(way, cut.Cut->Radius, rest))
                kept.push_back(std::move(rest));
        if (asked.Inside.empty() || kept.size() == rests.size())
            return kept;
        std::vector<WoodShape> protectedWood = ProtectedParts(cut.OwnWay, question);
        if (asked.IsToolOutside)
            protectedWood.push_back(asked.Inside);
        if (!protectedWood.empty()) {
            WoodQuestion beyond = question;
            beyond.Within = protectedWood;
            for (WoodRest& rest : RestsOf(beyond, Plan.Tolerance))
                kept.push_back(std::move(rest));
        }
        if (!asked.IsToolOutside) {
            question.Without.push_back(asked.Inside);
            for (WoodRest& rest : RestsOf(question, Plan.Tolerance))
                kept.push_back(std::move(rest));
        }
        return kept;
    }
    bool IsWithinLead(const AskedWay& way, double radius, const WoodRest& rest) const
    {
        const auto reaches = [&](const PathPoint& from, double far) {
            return std::max({Between(from, rest.Low), Between(from, rest.High),
                             Between(from, {rest.Low.X, rest.High.Y}),
                             Between(from, {rest.High.X, rest.Low.Y})}) <= far;
        };
        if (!way.IsClosed) // the tool leaves the panel, or comes to it
            return reaches(way.Pieces.front().From, 3 * radius) || reaches(way.Pieces.back().To, 3 * radius);
        if (way.Lead == 0 || way.Side == 0)
            return false;
        const double far = 2 * way.Lead + 3 * radius + Plan.Tolerance;
        return std::any_of(way.Pieces.begin(), way.Pieces.end(),
                           [&](const Move& piece) { return DistanceFrom(piece, rest.At) <= far; });
    }
    // Other parts that are cut out, and that this way is not in.
    std::vector<WoodShape> ProtectedParts(std::size_t own, const WoodQuestion& question) const
    {
        std::vector<WoodShape> parts;
        PieceBox box = BoxOfShape(question.Of.front());
        for (const WoodShape& shape : question.Of)
            Widen(box, BoxOfShape(shape));
        const PathPoint inOwn = Plan.Asked.Ways[own].Pieces.front().From;
        for (std::size_t i = 0; i < Plan.AskedCuts.size(); ++i) {
            const AskedCut& other = Plan.AskedCuts[i];
            if (i != own && other.IsToolOutside && Plan.Asked.Ways[i].On == Plan.Asked.Ways[own].On &&
                Meets(box, BoxOfShape(other.Inside)) && !IsInside(other.Inside, inOwn))
                parts.push_back(other.Inside);
        }
        return parts;
    }
    // Is it asked for there, but less deep?
    void NameDepth(Finding& finding) const
    {
        double depth = 0;
        for (const std::size_t i : Asked.Near(finding.On, {finding.At, finding.At}))
            if (DistanceFrom(Plan.AskedPieces[i].Way, finding.At) <= Plan.AskedPieces[i].Radius)
                depth = std::max(depth, Plan.AskedPieces[i].DepthMost);
        if (depth > 0)
            finding.What = "asked for " + MillimetreText(depth) + " deep there";
    }

    static constexpr double SameRadius = 0.005; // mm
    Proof& All;
    const WoodPlan& Plan;
    PieceIndex Asked;
    std::vector<PieceBox> PocketBoxes;
};

} // namespace

void ProveNothingLeft(Proof& proof, const WoodPlan& plan)
{
    LeftProof(proof, plan).Prove();
}

void ProveNothingElseCut(Proof& proof, const WoodPlan& plan)
{
    CutProof(proof, plan).Prove();
}

} // namespace kv

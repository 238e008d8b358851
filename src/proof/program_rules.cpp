#include "proof/program_rules.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "machine/tool_way.h"

namespace kv {

namespace {

// --- the place

PieceBox WoodBox(Plane on, const Demands& panel)
{
    if (on == Plane::Surface)
        return {{0, 0}, {panel.Length, panel.Width}};
    const bool alongX = on == Plane::Edge1 || on == Plane::Edge2;
    return {{0, 0}, {alongX ? panel.Length : panel.Width, panel.Thickness}};
}

bool IsBeside(const PieceBox& box, const PieceBox& wood, double tolerance)
{
    return box.High.X < wood.Low.X - tolerance || box.Low.X > wood.High.X + tolerance ||
           box.High.Y < wood.Low.Y - tolerance || box.Low.Y > wood.High.Y + tolerance;
}

// Of its own way, or a lead to it.
bool BelongsToWay(const CutPiece& piece, const MadeCut& cut, const WoodPlan& plan)
{
    if (cut.OwnWay == NoWay)
        return false;
    const AskedWay& way = plan.Asked.Ways[cut.OwnWay];
    const double far = 2 * way.Lead + 3 * piece.Radius + plan.Tolerance;
    return std::any_of(way.Pieces.begin(), way.Pieces.end(), [&](const Move& drawn) {
        return DistanceFrom(drawn, piece.Way.From) <= far && DistanceFrom(drawn, piece.Way.To) <= far;
    });
}

bool IsAsked(const CutPiece& piece, const PieceIndex& asked, const WoodPlan& plan)
{
    std::vector<const Move*> same;
    for (const std::size_t i : asked.Near(piece.On, BoxOfPiece(piece.Way, piece.Radius)))
        same.push_back(&plan.AskedPieces[i].Way);
    return PartsBeside(piece.Way, same).empty();
}

// One finding for each route.
void TellOffPanel(Proof& proof, const WoodPlan& plan)
{
    const PieceIndex asked(plan.AskedPieces);
    for (const MadeCut& cut : plan.MadeCuts) {
        const PieceBox wood = WoodBox(cut.Cut->On, plan.Asked);
        for (std::size_t i = cut.FirstPiece; i < cut.LastPiece && !proof.IsFull(); ++i) {
            const CutPiece& piece = plan.MadePieces[i];
            if (!IsBeside(BoxOfPiece(piece.Way, piece.Radius), wood, plan.Tolerance) ||
                BelongsToWay(piece, cut, plan) || IsAsked(piece, asked, plan))
                continue;
            Finding finding;
            finding.Kind = FindingKind::OffPanel;
            finding.On = piece.On;
            finding.At = piece.Way.To;
            finding.Depth = piece.DepthMost;
            finding.Program = cut.Program;
            finding.Line = piece.Way.Line;
            proof.Findings.push_back(std::move(finding));
            break;
        }
    }
}

// --- tools

struct ToolUse {
    Plane On = Plane::Surface;
    PathPoint At;
    double Depth = 0;
    std::size_t Line = 0;
    std::string Tool;
    char Kind = 'R'; // as in Tools.cfg
};

double DepthOf(const RouterCut& cut)
{
    double depth = cut.StartDepth;
    for (const Move& move : cut.Moves)
        depth = std::max({depth, move.DepthFrom, move.DepthTo});
    return depth;
}

std::vector<ToolUse> UsesOf(const MachineSteps& steps)
{
    std::vector<ToolUse> uses;
    for (const Bore& bore : steps.Bores)
        uses.push_back({bore.On, bore.At, bore.Depth, bore.Line, bore.Tool, 'D'});
    for (const BoreRow& row : steps.Rows)
        uses.push_back({Plane::Surface, row.From, row.Depth, row.Line, row.Tool, 'D'});
    for (const SawCut& saw : steps.Saws)
        uses.push_back({Plane::Surface, saw.From, saw.Depth, saw.Line, saw.Tool, 'S'});
    for (const RouterCut& cut : steps.Cuts)
        uses.push_back({cut.On, cut.Start, DepthOf(cut), cut.Line, cut.Tool, 'R'});
    std::stable_sort(uses.begin(), uses.end(),
                     [](const ToolUse& a, const ToolUse& b) { return a.Line < b.Line; });
    return uses;
}

class ToolRules {
  public:
    ToolRules(Proof& proof, const ToolTable& tools, double tolerance)
        : All(proof), Tools(tools), Tolerance(tolerance)
    {
        for (const auto& [number, tool] : tools.Shop)
            Kinds.insert(tool.Kind);
    }

    void Judge(const MachineSteps& steps, std::size_t program)
    {
        std::set<int> told; // each tool once
        for (const ToolUse& use : UsesOf(steps))
            for (const int number : ToolNumbersOf(steps.Tools, use.Tool)) {
                if (All.IsFull())
                    return;
                JudgeDepth(use, number, program);
                if (!IsKnown(use, number) && told.insert(number).second)
                    Tell(FindingKind::UnknownTool, use, program, use.Tool);
            }
    }

  private:
    // Without a table of that kind of tool nobody can say.
    bool IsKnown(const ToolUse& use, int number) const
    {
        if (IsOnHead(Tools, number) || Tools.Shop.count(number) > 0)
            return true;
        const bool isDrillOfHead =
            use.Kind == 'D' && Tools.Head.size() > 1 && static_cast<std::size_t>(number) < Tools.Head.size();
        return !isDrillOfHead && Kinds.count(use.Kind) == 0;
    }
    void JudgeDepth(const ToolUse& use, int number, std::size_t program)
    {
        const auto tool = Tools.Shop.find(number);
        if (tool == Tools.Shop.end() || !(tool->second.Deepest > 0) ||
            use.Depth <= tool->second.Deepest + Tolerance)
            return;
        Tell(FindingKind::ShortTool, use, program,
             use.Tool + ", whose largest depth is " + MillimetreText(tool->second.Deepest));
    }
    void Tell(FindingKind kind, const ToolUse& use, std::size_t program, std::string what)
    {
        Finding finding;
        finding.Kind = kind;
        finding.On = use.On;
        finding.At = use.At;
        finding.Depth = use.Depth;
        finding.Program = program;
        finding.Line = use.Line;
        finding.What = std::move(what);
        All.Findings.push_back(std::move(finding));
    }

    Proof& All;
    const ToolTable& Tools;
    double Tolerance;
    std::set<char> Kinds; // that Tools.cfg has
};

// --- feeds

bool NamesFeed(const RouterCut& cut)
{
    return cut.Moves.empty() ||
           std::any_of(cut.Moves.begin(), cut.Moves.end(), [](const Move& move) { return move.Feed > 0; });
}

// One finding for each program: a shop that leaves feeds to the control has none in any.
void TellWithoutFeed(Proof& proof, const MachineSteps& steps, std::size_t program)
{
    const auto first = std::find_if_not(steps.Cuts.begin(), steps.Cuts.end(), NamesFeed);
    if (first == steps.Cuts.end() || proof.IsFull())
        return;
    const auto count =
        std::count_if(first, steps.Cuts.end(), [](const RouterCut& cut) { return !NamesFeed(cut); });
    Finding finding;
    finding.Kind = FindingKind::NoFeed;
    finding.On = first->On;
    finding.At = first->Start;
    finding.Depth = first->StartDepth;
    finding.Program = program;
    finding.Line = first->Line;
    finding.What = count == 1 ? "the route names no feed"
                              : "this route names no feed, and " + std::to_string(count - 1) + " after it";
    proof.Findings.push_back(std::move(finding));
}

} // namespace

void ProveRules(Proof& proof, const WoodPlan& plan, const std::vector<MachineSteps>& programs,
                const ToolTable& tools)
{
    TellOffPanel(proof, plan);
    ToolRules rules(proof, tools, plan.Tolerance);
    for (std::size_t program = 0; program < programs.size(); ++program) {
        rules.Judge(programs[program], program);
        TellWithoutFeed(proof, programs[program], program);
    }
}

} // namespace kv

#include "proof/program_rules.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "machine/tool_way.h"
#include "proof/depth_rules.h"
#include "proof/piece_cover.h"
#include "proof/tool_rules.h"

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

// --- saws and rows of drills

PieceBox BoxBetween(const PathPoint& from, const PathPoint& to, double around)
{
    Move line;
    line.From = from;
    line.To = to;
    return BoxOfPiece(line, around);
}

// A saw of unknown width may reach so far beside its way.
constexpr double WidthOfUnknown = 10; // mm

bool IsGrooveAskedIn(const PieceBox& box, const Demands& asked)
{
    return std::any_of(asked.Grooves.begin(), asked.Grooves.end(), [&](const AskedGroove& groove) {
        return !IsBeside(BoxBetween(groove.From, groove.To, std::max(groove.Width, groove.Kerf)), box, 0);
    });
}

bool IsBoreAskedIn(const PieceBox& box, const Demands& asked)
{
    return std::any_of(asked.Bores.begin(), asked.Bores.end(), [&](const AskedBore& bore) {
        return bore.On == Plane::Surface && !IsBeside({bore.At, bore.At}, box, 0);
    });
}

void TellBesidePanel(Proof& proof, const PathPoint& at, double depth, std::size_t program, std::size_t line)
{
    Finding finding;
    finding.Kind = FindingKind::OffPanel;
    finding.At = at;
    finding.Depth = depth;
    finding.Program = program;
    finding.Line = line;
    proof.Findings.push_back(std::move(finding));
}

// Single bores are proved by their places.
void TellSawsAndRowsOffPanel(Proof& proof, const WoodPlan& plan, const MachineSteps& steps,
                             std::size_t program)
{
    const PieceBox wood = WoodBox(Plane::Surface, plan.Asked);
    for (const SawCut& saw : steps.Saws) {
        const PieceBox box = BoxBetween(saw.From, saw.To, saw.Width > 0 ? saw.Width : WidthOfUnknown);
        if (IsBeside(box, wood, plan.Tolerance) && !IsGrooveAskedIn(box, plan.Asked) && !proof.IsFull())
            TellBesidePanel(proof, saw.To, saw.Depth, program, saw.Line);
    }
    for (const BoreRow& row : steps.Rows) {
        const PieceBox box = BoxBetween(row.From, row.To, plan.Tolerance);
        if (IsBeside(box, wood, plan.Tolerance) && !IsBoreAskedIn(box, plan.Asked) && !proof.IsFull())
            TellBesidePanel(proof, row.To, row.Depth, program, row.Line);
    }
}

// --- moves

void TellRapids(Proof& proof, const WoodPlan& plan, const MachineSteps& steps, std::size_t program)
{
    for (const RapidMove& rapid : steps.Rapids) {
        if (rapid.Depth <= plan.Tolerance || proof.IsFull() ||
            IsBeside(BoxBetween(rapid.From, rapid.To, 0), WoodBox(rapid.On, plan.Asked), 0))
            continue;
        Finding finding;
        finding.Kind = FindingKind::Rapid;
        finding.On = rapid.On;
        finding.At = rapid.To;
        finding.Depth = rapid.Depth;
        finding.Program = program;
        finding.Line = rapid.Line;
        proof.Findings.push_back(std::move(finding));
    }
}

void TellArcsAstray(Proof& proof, const MachineSteps& steps, std::size_t program)
{
    for (const RouterCut& cut : steps.Cuts)
        for (const Move& move : cut.Moves) {
            if (!(move.ArcGap > 0) || proof.IsFull())
                continue;
            Finding finding;
            finding.Kind = FindingKind::ArcAstray;
            finding.On = cut.On;
            finding.At = move.To;
            finding.Depth = move.DepthTo;
            finding.Millimetres = move.ArcGap;
            finding.Program = program;
            finding.Line = move.Line;
            proof.Findings.push_back(std::move(finding));
        }
}

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

// One finding for each program too: routes that name a feed, though not on all of their moves.
void TellMovesWithoutFeed(Proof& proof, const MachineSteps& steps, std::size_t program)
{
    const auto hasFeed = [](const Move& move) { return move.Feed > 0; };
    std::ptrdiff_t count = 0;
    Finding finding;
    for (const RouterCut& cut : steps.Cuts) {
        const auto first = std::find_if_not(cut.Moves.begin(), cut.Moves.end(), hasFeed);
        if (!NamesFeed(cut) || first == cut.Moves.end())
            continue;
        if (count == 0) {
            finding.On = cut.On;
            finding.At = first->From;
            finding.Depth = first->DepthFrom;
            finding.Line = first->Line;
        }
        count += cut.Moves.end() - first - std::count_if(first, cut.Moves.end(), hasFeed);
    }
    if (count == 0 || proof.IsFull())
        return;
    finding.Kind = FindingKind::NoFeed;
    finding.Program = program;
    finding.What = "this move names no feed, others of its route do";
    finding.What += count > 1 ? "; " + std::to_string(count - 1) + " more moves name none" : "";
    proof.Findings.push_back(std::move(finding));
}

} // namespace

void ProveRules(Proof& proof, const WoodPlan& plan, const std::vector<MachineSteps>& programs,
                const ToolTable& tools)
{
    TellOffPanel(proof, plan);
    ProveDepths(proof, plan, programs);
    ProveTools(proof, programs, tools, plan.Tolerance);
    for (std::size_t program = 0; program < programs.size(); ++program) {
        TellSawsAndRowsOffPanel(proof, plan, programs[program], program);
        TellRapids(proof, plan, programs[program], program);
        TellArcsAstray(proof, programs[program], program);
        TellWithoutFeed(proof, programs[program], program);
        TellMovesWithoutFeed(proof, programs[program], program);
    }
}

} // namespace kv

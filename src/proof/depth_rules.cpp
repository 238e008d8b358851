// A lead falls off with its wood, so that areas do not say how deep it goes.
#include "proof/depth_rules.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <set>
#include <string>
#include <utility>

#include "machine/tool_way.h"
#include "proof/piece_cover.h"

namespace kv {

namespace {

using LineOfProgram = std::pair<std::size_t, std::size_t>; // the program, its line

class DepthRules {
  public:
    DepthRules(Proof& proof, const WoodPlan& plan, const std::vector<MachineSteps>& programs)
        : All(proof), Plan(plan), Asked(plan.AskedPieces)
    {
        for (const Finding& finding : proof.Findings)
            if (finding.Kind == FindingKind::Cut)
                Told.emplace(finding.Program, finding.Line);
        for (std::size_t program = 0; program < programs.size(); ++program)
            for (const std::string& text : programs[program].Unread)
                Unread.emplace(program, std::strtoul(text.c_str(), nullptr, 10)); // "7: G4F2"
        Deepest = plan.Asked.Thickness;
        for (const AskedPocket& pocket : plan.Asked.Pockets)
            Deepest = std::max(Deepest, pocket.Depth);
        for (const AskedGroove& groove : plan.Asked.Grooves)
            Deepest = std::max(Deepest, groove.Depth);
    }

    void Judge(const MadeCut& cut)
    {
        if (cut.Cut->On == Plane::Surface && !HasLineIn(cut, Told))
            TellTooDeep(cut);
        if (IsAboveWood(*cut.Cut) && !HasLineIn(cut, Unread) && !IsAskedAbove(*cut.Cut))
            Tell(FindingKind::InTheAir, cut.Cut->On, cut.Cut->Start, cut.Cut->StartDepth, 0,
                 {cut.Program, cut.Cut->Line});
    }
    void Judge(const SawCut& saw, std::size_t program)
    {
        const LineOfProgram line{program, saw.Line};
        if (saw.Depth > Deepest + Plan.Tolerance && Told.count(line) == 0)
            Tell(FindingKind::TooDeep, Plane::Surface, saw.From, saw.Depth, saw.Depth - Deepest, line);
    }

  private:
    static bool HasLineIn(const MadeCut& cut, const std::set<LineOfProgram>& lines)
    {
        return lines.count({cut.Program, cut.Cut->Line}) > 0 ||
               std::any_of(cut.Cut->Moves.begin(), cut.Cut->Moves.end(), [&](const Move& move) {
                   return lines.count({cut.Program, move.Line}) > 0;
               });
    }
    double DeepestNear(const CutPiece& piece, const MadeCut& cut) const
    {
        double deepest = Deepest;
        if (cut.OwnWay != NoWay)
            deepest = std::max(deepest, Plan.Asked.Ways[cut.OwnWay].DepthMost);
        for (const std::size_t i : Asked.Near(piece.On, BoxOfPiece(piece.Way, piece.Radius)))
            deepest = std::max(deepest, Plan.AskedPieces[i].DepthMost);
        return deepest;
    }
    // At the deepest place of the cut.
    void TellTooDeep(const MadeCut& cut)
    {
        const CutPiece* worst = nullptr;
        double most = Plan.Tolerance;
        for (std::size_t i = cut.FirstPiece; i < cut.LastPiece; ++i) {
            const CutPiece& piece = Plan.MadePieces[i];
            if (piece.DepthMost <= Deepest + Plan.Tolerance)
                continue;
            const double below = piece.DepthMost - DeepestNear(piece, cut);
            if (below > most) {
                most = below;
                worst = &piece;
            }
        }
        if (worst != nullptr)
            Tell(FindingKind::TooDeep, worst->On,
                 worst->Way.DepthTo < worst->DepthMost ? worst->Way.From : worst->Way.To, worst->DepthMost,
                 most, {cut.Program, worst->Way.Line});
    }
    static bool IsAboveWood(const RouterCut& cut)
    {
        return cut.StartDepth <= 0 && std::all_of(cut.Moves.begin(), cut.Moves.end(), [](const Move& move) {
                   return move.DepthFrom <= 0 && move.DepthTo <= 0;
               });
    }
    // A layer may ask for no depth.
    bool IsAskedAbove(const RouterCut& cut) const
    {
        const auto isNear = [&](const AskedWay& way, double far) {
            return std::any_of(way.Pieces.begin(), way.Pieces.end(), [&](const Move& drawn) {
                return DistanceFrom(drawn, cut.Moves.front().To) <= far;
            });
        };
        return std::any_of(Plan.Asked.Ways.begin(), Plan.Asked.Ways.end(), [&](const AskedWay& way) {
            return way.On == cut.On && way.DepthLeast <= 0 &&
                   isNear(way, 2 * way.Lead + 3 * cut.Radius + Plan.Tolerance);
        });
    }
    void Tell(FindingKind kind, Plane on, const PathPoint& at, double depth, double millimetres,
              const LineOfProgram& line)
    {
        if (All.IsFull())
            return;
        Finding finding;
        finding.Kind = kind;
        finding.On = on;
        finding.At = at;
        finding.Depth = depth;
        finding.Millimetres = millimetres;
        finding.Program = line.first;
        finding.Line = line.second;
        All.Findings.push_back(std::move(finding));
    }

    Proof& All;
    const WoodPlan& Plan;
    PieceIndex Asked;
    std::set<LineOfProgram> Told, Unread;
    double Deepest = 0; // that any work on the face may be
};

} // namespace

void ProveDepths(Proof& proof, const WoodPlan& plan, const std::vector<MachineSteps>& programs)
{
    DepthRules rules(proof, plan, programs);
    for (const MadeCut& cut : plan.MadeCuts)
        rules.Judge(cut);
    for (std::size_t program = 0; program < programs.size(); ++program)
        for (const SawCut& saw : programs[program].Saws)
            rules.Judge(saw, program);
}

} // namespace kv

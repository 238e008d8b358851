#include "proof/bore_proof.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "machine/tool_way.h"

namespace kv {

namespace {

// A bore that is so near is taken for the one that was meant.
constexpr double BesidePlace = 2; // mm

struct MadeBore {
    Bore Made;
    std::size_t Program = 0;
    bool IsAsked = false;
};

// A router that goes down and up in one place bores.
std::vector<MadeBore> MadeBores(const std::vector<MachineSteps>& programs)
{
    std::vector<MadeBore> made;
    for (std::size_t program = 0; program < programs.size(); ++program) {
        for (const Bore& bore : programs[program].Bores)
            made.push_back({bore, program});
        for (const RouterCut& cut : programs[program].Cuts)
            if (cut.Moves.empty())
                made.push_back(
                    {{cut.On, cut.Start, cut.StartDepth, 2 * cut.Radius, cut.Tool, cut.Line}, program});
    }
    return made;
}

class BoresByPlace {
  public:
    explicit BoresByPlace(std::vector<MadeBore>& bores) : All(bores)
    {
        for (std::size_t i = 0; i < bores.size(); ++i)
            Cells[CellOf(bores[i].Made.On, bores[i].Made.At)].push_back(i);
    }
    std::vector<MadeBore*> At(Plane on, const PathPoint& place, double within)
    {
        std::vector<MadeBore*> found;
        for (const double x : {-CellSize, 0.0, CellSize})
            for (const double y : {-CellSize, 0.0, CellSize}) {
                const auto cell = Cells.find(CellOf(on, {place.X + x, place.Y + y}));
                if (cell == Cells.end())
                    continue;
                for (const std::size_t i : cell->second)
                    if (Between(All[i].Made.At, place) <= within)
                        found.push_back(&All[i]);
            }
        return found;
    }

  private:
    static constexpr double CellSize = 10; // mm, above any tolerance
    using Cell = std::tuple<int, long long, long long>;
    static Cell CellOf(Plane on, const PathPoint& at)
    {
        return {static_cast<int>(on), std::llround(at.X / CellSize), std::llround(at.Y / CellSize)};
    }
    std::vector<MadeBore>& All;
    std::map<Cell, std::vector<std::size_t>> Cells;
};

bool IsAsAsked(const AskedBore& asked, const Bore& made, double tolerance)
{
    const bool isWide =
        made.Diameter == 0 || asked.Diameter == 0 || std::fabs(made.Diameter - asked.Diameter) <= tolerance;
    return isWide && std::fabs(made.Depth - asked.Depth) <= tolerance;
}

std::string BoreText(double diameter, double depth)
{
    return (diameter > 0 ? "diameter " + MillimetreText(diameter) + ", " : "") + MillimetreText(depth) +
           " deep";
}

// A row whose drills are not known drills from one end to the other.
bool IsInRow(const AskedBore& asked, const std::vector<MachineSteps>& programs, double tolerance)
{
    for (const MachineSteps& steps : programs)
        for (const BoreRow& row : steps.Rows) {
            Move way;
            way.From = row.From;
            way.To = row.To;
            if (asked.On == Plane::Surface && std::fabs(row.Depth - asked.Depth) <= tolerance &&
                DistanceFrom(way, asked.At) <= tolerance)
                return true;
        }
    return false;
}

void TellOtherBore(Proof& proof, const AskedBore& asked, const MadeBore& made, double tolerance)
{
    const double away = Between(made.Made.At, asked.At);
    Finding finding;
    finding.Kind = FindingKind::OtherBore;
    finding.On = asked.On;
    finding.At = asked.At;
    finding.Depth = made.Made.Depth;
    const double wider =
        made.Made.Diameter > 0 && asked.Diameter > 0 ? std::fabs(made.Made.Diameter - asked.Diameter) : 0;
    finding.Millimetres = std::max({std::fabs(made.Made.Depth - asked.Depth), wider, away});
    finding.Drawn = asked.Drawn;
    finding.Program = made.Program;
    finding.Line = made.Made.Line;
    finding.What = BoreText(made.Made.Diameter, made.Made.Depth);
    if (!IsAsAsked(asked, made.Made, tolerance))
        finding.What += " instead of " + BoreText(asked.Diameter, asked.Depth);
    if (away > tolerance)
        finding.What +=
            ", drilled at X" + MillimetreText(made.Made.At.X) + " Y" + MillimetreText(made.Made.At.Y);
    proof.Findings.push_back(std::move(finding));
}

void ProveBore(Proof& proof, const AskedBore& asked, BoresByPlace& made,
               const std::vector<MachineSteps>& programs, double tolerance)
{
    MadeBore* same = nullptr;  // the nearest of those that are as asked for
    MadeBore* other = nullptr; // of the rest
    for (MadeBore* const bore : made.At(asked.On, asked.At, BesidePlace)) {
        const double away = Between(bore->Made.At, asked.At);
        const bool isSame = away <= tolerance && IsAsAsked(asked, bore->Made, tolerance);
        MadeBore*& nearest = isSame ? same : other;
        if (nearest == nullptr || away < Between(nearest->Made.At, asked.At))
            nearest = bore;
    }
    if (same != nullptr) {
        same->IsAsked = true;
        ++proof.Bores;
        return;
    }
    if (IsInRow(asked, programs, tolerance)) {
        ++proof.Bores;
        return;
    }
    if (other != nullptr) {
        other->IsAsked = true; // reported here
        TellOtherBore(proof, asked, *other, tolerance);
        return;
    }
    Finding finding;
    finding.Kind = FindingKind::MissingBore;
    finding.On = asked.On;
    finding.At = asked.At;
    finding.Depth = finding.Millimetres = asked.Depth;
    finding.Drawn = asked.Drawn;
    finding.What = BoreText(asked.Diameter, asked.Depth);
    proof.Findings.push_back(std::move(finding));
}

void TellUnasked(Proof& proof, const MadeBore& made)
{
    Finding finding;
    finding.Kind = FindingKind::OtherBore;
    finding.On = made.Made.On;
    finding.At = made.Made.At;
    finding.Depth = finding.Millimetres = made.Made.Depth;
    finding.Program = made.Program;
    finding.Line = made.Made.Line;
    finding.What = BoreText(made.Made.Diameter, made.Made.Depth) + ", nobody drew it";
    proof.Findings.push_back(std::move(finding));
}

} // namespace

void ProveBores(Proof& proof, const Demands& demands, const std::vector<MachineSteps>& programs,
                double tolerance)
{
    std::vector<MadeBore> made = MadeBores(programs);
    BoresByPlace byPlace(made);
    for (const AskedBore& asked : demands.Bores)
        ProveBore(proof, asked, byPlace, programs, tolerance);
    for (const MadeBore& bore : made)
        if (!bore.IsAsked && !proof.IsFull())
            TellUnasked(proof, bore);
}

} // namespace kv

#include "proof/groove_proof.h"

#include <cmath>

#include "machine/tool_way.h"
#include "proof/wood_region.h"

namespace kv {

namespace {

struct MadeSaw {
    SawCut Made;
    std::size_t Program = 0;
    WoodShape Shape;
};

WoodShape BandBeside(const PathPoint& from, const PathPoint& to, double width, int side)
{
    std::vector<WoodShape> shapes;
    const double left = side == 0 ? width / 2 : side > 0 ? width : 0;
    AddBand(shapes, from, to, left, width - left);
    return shapes.front();
}

WoodShape ShapeOfGroove(const AskedGroove& groove)
{
    return groove.Width > groove.Kerf ? BandBeside(groove.From, groove.To, groove.Width, 0)
                                      : BandBeside(groove.From, groove.To, groove.Kerf, groove.Side);
}

double KerfAt(const SawCut& saw, const Demands& demands)
{
    const PathPoint middle{(saw.From.X + saw.To.X) / 2, (saw.From.Y + saw.To.Y) / 2};
    double kerf = 0, nearest = 0;
    for (const AskedGroove& groove : demands.Grooves) {
        Move line;
        line.From = groove.From;
        line.To = groove.To;
        const double away = DistanceFrom(line, middle);
        if (kerf == 0 || away < nearest) {
            kerf = groove.Kerf;
            nearest = away;
        }
    }
    return kerf;
}

std::vector<MadeSaw> MadeSaws(const Demands& demands, const std::vector<MachineSteps>& programs)
{
    std::vector<MadeSaw> made;
    for (std::size_t program = 0; program < programs.size(); ++program)
        for (SawCut saw : programs[program].Saws) {
            saw.Width = saw.Width > 0 ? saw.Width : KerfAt(saw, demands);
            made.push_back({saw, program, BandBeside(saw.From, saw.To, saw.Width, saw.Side)});
        }
    return made;
}

void TellRests(Proof& proof, Finding finding, const std::vector<WoodRest>& rests)
{
    for (const WoodRest& rest : rests) {
        finding.At = rest.At;
        finding.Millimetres = rest.Width;
        finding.Area = rest.Area;
        proof.Findings.push_back(finding);
    }
}

} // namespace

void ProveGrooves(Proof& proof, const Demands& demands, const std::vector<MachineSteps>& programs,
                  double tolerance)
{
    const std::vector<WoodShape> wood = {
        {{0, 0}, {demands.Length, 0}, {demands.Length, demands.Width}, {0, demands.Width}}};
    const std::vector<MadeSaw> made = MadeSaws(demands, programs);
    for (const AskedGroove& groove : demands.Grooves) {
        WoodQuestion question{{ShapeOfGroove(groove)}, wood, {}};
        for (const MadeSaw& saw : made)
            if (saw.Made.Depth >= groove.Depth - tolerance)
                question.Without.push_back(saw.Shape);
        Finding finding;
        finding.Depth = groove.Depth;
        finding.Drawn = groove.Drawn;
        const std::vector<WoodRest> rests = RestsOf(question, tolerance);
        TellRests(proof, finding, rests);
        proof.Grooves += rests.empty() ? 1 : 0;
    }
    for (const MadeSaw& saw : made) {
        if (proof.IsFull())
            return;
        WoodQuestion question{{saw.Shape}, wood, {}};
        for (const AskedGroove& groove : demands.Grooves)
            if (groove.Depth >= saw.Made.Depth - tolerance)
                question.Without.push_back(ShapeOfGroove(groove));
        Finding finding;
        finding.Kind = FindingKind::Cut;
        finding.Depth = saw.Made.Depth;
        finding.Program = saw.Program;
        finding.Line = saw.Made.Line;
        TellRests(proof, finding, RestsOf(question, tolerance));
    }
}

} // namespace kv

#include "support/machine/same_steps.h"

#include <algorithm>
#include <cmath>

namespace kv::test {

namespace {

constexpr double PlaceOpen = 0.01, DepthOpen = 0.001; // mm
constexpr double TurnOpen = 0.2;                      // degrees: of small arcs whose ends are rounded

bool NearPlace(const PathPoint& a, const PathPoint& b)
{
    return Between(a, b) < PlaceOpen;
}

bool SameDepth(double a, double b)
{
    return std::fabs(a - b) < DepthOpen;
}

bool SameMove(const Move& a, const Move& b)
{
    return a.IsArc == b.IsArc && NearPlace(a.From, b.From) && NearPlace(a.To, b.To) &&
           std::fabs(a.Sweep - b.Sweep) < TurnOpen && (!a.IsArc || NearPlace(a.Centre, b.Centre)) &&
           SameDepth(a.DepthFrom, b.DepthFrom) && SameDepth(a.DepthTo, b.DepthTo);
}

bool IsBoreOf(const RouterCut& plunge, const Bore& bore)
{
    return plunge.Moves.empty() && plunge.On == bore.On && NearPlace(bore.At, plunge.Start) &&
           SameDepth(bore.Depth, plunge.StartDepth);
}

std::string StepName(const char* what, std::size_t line, const PathPoint& at)
{
    return std::string(what) + " of line " + std::to_string(line) + " at X" + std::to_string(at.X) + " Y" +
           std::to_string(at.Y) + "\n";
}

} // namespace

bool SameCut(const RouterCut& a, const RouterCut& b)
{
    return a.On == b.On && a.Side == b.Side && std::fabs(a.Radius - b.Radius) < DepthOpen &&
           NearPlace(a.Start, b.Start) && SameDepth(a.StartDepth, b.StartDepth) &&
           std::equal(a.Moves.begin(), a.Moves.end(), b.Moves.begin(), b.Moves.end(), SameMove);
}

bool SameBore(const Bore& a, const Bore& b)
{
    return a.On == b.On && NearPlace(a.At, b.At) && SameDepth(a.Depth, b.Depth) &&
           (a.Diameter == 0 || b.Diameter == 0 || SameDepth(a.Diameter, b.Diameter));
}

bool SameSaw(const SawCut& a, const SawCut& b)
{
    return NearPlace(a.From, b.From) && NearPlace(a.To, b.To) && SameDepth(a.Depth, b.Depth) &&
           a.Side == b.Side;
}

std::string StepsMissing(const MachineSteps& of, const MachineSteps& in)
{
    std::string missing;
    for (const RouterCut& cut : of.Cuts)
        if (std::none_of(in.Cuts.begin(), in.Cuts.end(),
                         [&](const RouterCut& c) { return SameCut(cut, c); }) &&
            std::none_of(in.Bores.begin(), in.Bores.end(), [&](const Bore& b) { return IsBoreOf(cut, b); }))
            missing += StepName("a cut", cut.Line, cut.Start);
    for (const Bore& bore : of.Bores)
        if (std::none_of(in.Bores.begin(), in.Bores.end(),
                         [&](const Bore& b) { return SameBore(bore, b); }) &&
            std::none_of(in.Cuts.begin(), in.Cuts.end(),
                         [&](const RouterCut& c) { return IsBoreOf(c, bore); }))
            missing += StepName("a bore", bore.Line, bore.At);
    for (const SawCut& saw : of.Saws)
        if (std::none_of(in.Saws.begin(), in.Saws.end(), [&](const SawCut& s) { return SameSaw(saw, s); }))
            missing += StepName("a groove", saw.Line, saw.From);
    return missing;
}

} // namespace kv::test

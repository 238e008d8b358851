#include "support/same_steps.h"

#include <algorithm>
#include <cmath>

namespace kv::test {

namespace {

constexpr double PlaceOpen = 0.01, DepthOpen = 0.001; // mm
constexpr double RadianOpen = 1e-5;                   // an end angle has three decimals, in degrees
constexpr double PlacesOpen = 2e-4;                   // mm: four decimals, at both ends
constexpr double Degrees = 45 / 0.78539816339744831;  // in a radian

bool NearPlace(const PathPoint& a, const PathPoint& b)
{
    return Between(a, b) < PlaceOpen;
}

bool SameDepth(double a, double b)
{
    return std::fabs(a - b) < DepthOpen;
}

// Of an arc that is told by a chord and its radius alone: the middle of a half turn is off by the root of
// what the rounding leaves of the radius, and a short chord turns the radius with its rounded ends.
double CentreOpen(const Move& arc)
{
    const double radius = Between(arc.Centre, arc.From), chord = Between(arc.From, arc.To);
    const bool half = std::fabs(std::fabs(arc.Sweep) - 180) < 15;
    const double turned = chord > 0.01 ? 2 * PlacesOpen * radius / chord : 0;
    return PlaceOpen + RadianOpen * radius + turned + (half ? std::sqrt(2 * radius * PlacesOpen) : 0);
}

bool SameArc(const Move& a, const Move& b, double open)
{
    const double radius = Between(a.Centre, a.From);
    return Between(a.Centre, b.Centre) < open &&
           std::fabs(a.Sweep - b.Sweep) < (2 * open / std::max(radius, open)) * Degrees;
}

bool SameMove(const Move& a, const Move& b, double open)
{
    return a.IsArc == b.IsArc && Between(a.From, b.From) < open && Between(a.To, b.To) < open &&
           (!a.IsArc || SameArc(a, b, std::max(open, CentreOpen(a)))) &&
           SameDepth(a.DepthFrom, b.DepthFrom) && SameDepth(a.DepthTo, b.DepthTo);
}

// What follows an arc that ends at an angle begins where its rounding leads.
bool SameMoves(const std::vector<Move>& a, const std::vector<Move>& b)
{
    double open = PlaceOpen;
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](const Move& one, const Move& other) {
        if (one.IsArc)
            open = std::max(open, PlaceOpen + RadianOpen * Between(one.Centre, one.From));
        return SameMove(one, other, open);
    });
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
           SameMoves(a.Moves, b.Moves);
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

#include "machine/arcs.h"

#include <cmath>

namespace kv {

namespace {

constexpr double AngleRounding = 0.001; // an end angle has three decimals
constexpr double PlaceRounding = 0.02;  // places may have two
constexpr double SamePlace = 0.001;

// From one direction to another, above 0 to 360; what rounding leaves of nothing is the full turn.
double Turn(double from, double to, bool left, double rounding)
{
    double turn = std::fmod(left ? to - from : from - to, 360);
    turn += turn < 0 ? 360 : 0;
    turn += turn <= rounding ? 360 : 0;
    return left ? turn : -turn;
}

// Around a centre to a place that is another than the start.
bool TurnPart(Move& move, const PathPoint& centre, const PathPoint& to, bool left)
{
    const double radius = Between(centre, move.From);
    move.IsArc = true;
    move.Centre = centre;
    move.To = to;
    move.Sweep = Turn(DirectionTo(centre, move.From), DirectionTo(centre, to), left, 0);
    const double gap = std::fabs(Between(centre, to) - radius);
    move.ArcGap = gap > PlaceRounding ? gap : 0;
    return radius > 0 && gap <= PlaceRounding;
}

} // namespace

void TurnToAngle(Move& move, const PathPoint& centre, double endAngle, bool left)
{
    const double radius = Between(centre, move.From);
    move.IsArc = true;
    move.Centre = centre;
    move.Sweep = Turn(DirectionTo(centre, move.From), endAngle, left, AngleRounding);
    move.To = {centre.X + radius * std::cos(endAngle * Degree),
               centre.Y + radius * std::sin(endAngle * Degree)};
}

bool TurnAround(Move& move, const PathPoint& centre, const PathPoint& to, bool left)
{
    const bool sound = TurnPart(move, centre, to, left);
    if (Between(move.From, to) <= SamePlace)
        move.Sweep = left ? 360 : -360;
    return sound;
}

bool TurnByRadius(Move& move, const PathPoint& to, double radius, bool left)
{
    const PathPoint& from = move.From;
    const double chord = Between(from, to), r = std::fabs(radius);
    move.To = to;
    if (!(chord > 0))
        return false;
    // Left of the chord's middle for the short way to the left; beyond it for the long one.
    double aside = r > chord / 2 ? std::sqrt(r * r - chord * chord / 4) : 0;
    aside *= left == (radius > 0) ? 1 : -1;
    const PathPoint centre{(from.X + to.X) / 2 - aside * (to.Y - from.Y) / chord,
                           (from.Y + to.Y) / 2 + aside * (to.X - from.X) / chord};
    const bool sound = TurnPart(move, centre, to, left);
    if (chord <= 2 * r + PlaceRounding)
        return sound;
    move.ArcGap = chord - 2 * r;
    return false;
}

bool TurnThrough(Move& move, const PathPoint& middle, const PathPoint& to)
{
    const PathPoint& a = move.From;
    const double bx = middle.X - a.X, by = middle.Y - a.Y, cx = to.X - a.X, cy = to.Y - a.Y;
    const double twice = 2 * (bx * cy - by * cx);
    move.To = to;
    if (twice == 0)
        return false;
    const double b = bx * bx + by * by, c = cx * cx + cy * cy;
    const PathPoint centre{a.X + (cy * b - by * c) / twice, a.Y + (bx * c - cx * b) / twice};
    return TurnPart(move, centre, to, twice > 0);
}

} // namespace kv

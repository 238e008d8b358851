#include "geometry/angles.h"

#include <algorithm>
#include <cmath>

#include "platform/trigonometry.h"
#include "state/run.h"

namespace kv {

namespace {

struct AxisDirection {
    double Angle, Cosine, Sine;
};
constexpr AxisDirection AxisDirections[] = {{0, 1, 0}, {90, 0, 1}, {180, -1, 0}, {270, 0, -1}};

} // namespace

double Bearing(const PlanePoint& a, const PlanePoint& b)
{
    const double dx = b.X - a.X;
    const double dy = b.Y - a.Y;
    if (dx == 0)
        return dy == 0 ? 0 : dy > 0 ? 90 : 270;
    if (dy == 0)
        return dx > 0 ? 0 : 180;
    double angle = ArcTangent(dy / dx) * 180 / static_cast<double>(Run.Pi);
    if (dx < 0)
        angle += 180;
    else if (dy < 0)
        angle += FullTurn;
    return angle >= FullTurn ? 0 : angle;
}

double NormalizeAngle(double angle)
{
    if (angle >= FullTurn)
        return angle - FullTurn;
    return angle < 0 ? angle + FullTurn : angle;
}

double Turn360(double angle)
{
    if (std::fabs(angle) > 100 * FullTurn)
        angle = std::fmod(angle, FullTurn); // a drawing may name any angle
    // A tiny negative angle gives 360 itself when 360 is added, which is 0 again.
    while (angle < 0)
        angle += FullTurn;
    while (angle >= FullTurn)
        angle -= FullTurn;
    return angle;
}

double AngleBetween(double a, double b)
{
    return std::min({std::fabs(a - b), FullTurn - a + b, FullTurn - b + a});
}

PlanePoint Polar(const PlanePoint& from, double distance, double angle)
{
    const double turned = Turn360(angle);
    for (const AxisDirection& axis : AxisDirections)
        if (turned == axis.Angle)
            return {from.X + distance * axis.Cosine, from.Y + distance * axis.Sine};
    const double radians = turned * static_cast<double>(Run.DegToRad);
    return {from.X + distance * Cosine(radians), from.Y + distance * Sine(radians)};
}

} // namespace kv

// Angles and directions of the plane, in degrees, counter-clockwise, 0 along +X. They are computed
// with the run's own Pi and DegToRad, which differ from pi in the last bits of a Single.
#pragma once

#include <cmath>

#include "platform/numbers.h"

namespace kv {

constexpr double HalfTurn = 180, FullTurn = 360;

struct PlanePoint {
    double X = 0, Y = 0;
};

// The direction from A to B, 0 to below 360; exact along the axes, 0 for equal points.
double Bearing(const PlanePoint& a, const PlanePoint& b);
// One step only: takes 360 off a value of 360 or more, else adds 360 to one below 0 (725 gives 365).
double NormalizeAngle(double angle);
// As many steps as it takes: 0 to below 360.
double Turn360(double angle);
// The smaller angle between two directions of 0 to 360.
double AngleBetween(double a, double b);
// The point at a distance on a bearing; exact on the four axis bearings.
PlanePoint Polar(const PlanePoint& from, double distance, double angle);
inline double Distance(const PlanePoint& a, const PlanePoint& b)
{
    const double dx = b.X - a.X;
    const double dy = b.Y - a.Y;
    return std::sqrt(dx * dx + dy * dy);
}

} // namespace kv

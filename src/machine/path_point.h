// Points of programs that are read back: with arithmetic of its own, apart from the one of the passes.
#pragma once

#include <cmath>

namespace kv {

struct PathPoint {
    double X = 0, Y = 0;
};

constexpr double Degree = 3.14159265358979323846 / 180; // in radians

inline double Between(const PathPoint& a, const PathPoint& b)
{
    return std::hypot(b.X - a.X, b.Y - a.Y);
}
// Degrees from +X, counter-clockwise, -180 to 180.
inline double DirectionTo(const PathPoint& from, const PathPoint& to)
{
    return std::atan2(to.Y - from.Y, to.X - from.X) / Degree;
}

} // namespace kv

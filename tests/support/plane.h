// Points for what checks programs: with arithmetic of its own, apart from the one of the passes.
#pragma once

#include <cmath>

namespace kv::test {

struct PathPoint {
    double X = 0, Y = 0;
};

inline double Between(const PathPoint& a, const PathPoint& b)
{
    return std::hypot(b.X - a.X, b.Y - a.Y);
}

} // namespace kv::test

// The saw passes as the rule is told, groove by groove, each axis written out. The pass is held
// against it on random grooves.
#pragma once

#include <cmath>
#include <vector>

#include "state/run.h"

namespace kv::plain {

inline std::vector<GroovePass> ExpandGrooves(std::vector<GrooveRecord> grooves)
{
    for (GrooveRecord& a : grooves) {
        if (!(a.Width < 0))
            continue;
        for (GrooveRecord& b : grooves) {
            if (!(b.Width >= 0))
                continue;
            if (std::fabs(double(b.X2) - double(a.X2)) < 0.01 &&
                std::fabs(double(b.Y2) - double(a.Y2)) < 0.01) {
                const Single x = b.X1;
                b.X1 = a.X2;
                a.X2 = x;
                const Single y = b.Y1;
                b.Y1 = a.Y2;
                a.Y2 = y;
            }
        }
    }
    std::vector<GroovePass> passes;
    for (const GrooveRecord& groove : grooves) {
        if (groove.Width == 0) {
            passes.push_back(groove);
            continue;
        }
        if (groove.Width < 0)
            continue;
        GroovePass pass = groove;
        pass.Kerf = 0;
        const double width = groove.Width, kerf = groove.Kerf;
        const bool alongY = groove.X1 == groove.X2;
        const bool alongX = !alongY && groove.Y1 == groove.Y2;
        if (!alongX && !alongY)
            continue;
        const double middle = alongY ? groove.X1 : groove.Y1;
        if (width <= kerf) {
            passes.push_back(pass); // both ends stand on the middle line already
            continue;
        }
        const double start = middle - width / 2 + kerf / 2;
        const double end = middle + width / 2 - kerf / 2;
        const Single g = Single((end - start) / kerf);
        const long whole = long(std::floor(double(g)));
        const long n = double(g) > double(whole) ? whole + 2 : whole + 1;
        const double step = kerf - (double(n) * kerf - width) / double(n);
        double position = start;
        for (long i = 1; i <= n; ++i) {
            if (alongY)
                pass.X1 = pass.X2 = Single(position);
            else
                pass.Y1 = pass.Y2 = Single(position);
            passes.push_back(pass);
            position += step;
            if (i == n - 1)
                position = end;
        }
    }
    return passes;
}

} // namespace kv::plain

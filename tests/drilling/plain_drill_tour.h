// The tour of OrderBores as the rule is told, bore by bore, without an index. Slow on purpose: the
// fast pass is held against it, bit for bit.
#pragma once

#include <cmath>
#include <vector>

#include "drilling/drill_tour.h"
#include "state/run.h"

namespace kv::plain {

inline void OrderBores()
{
    const Long n = VBores.Last();
    if (n < 1)
        return;
    SortBoresByY(VBores, 1, n);
    const double w = Run.SideWidth[5];
    const double h = Run.SideHeight[5];
    const double weights[] = {0.2, 0.4, 0.6, 0.8, 1.0, 1.2, 1.4, 1.6, 1.8, 2.0};
    double best = 0;
    std::vector<Long> bestOrder;
    Long lookedAt = 0;
    for (int attempt = 0; attempt < 10; ++attempt) {
        std::vector<bool> isFree(static_cast<std::size_t>(n) + 1, true);
        std::vector<Long> order;
        double x = w, y = h, k = weights[attempt], length = 0;
        for (Long step = 1; step <= n; ++step) {
            if (y < h / 2 && static_cast<double>(VBores[lookedAt].Y) < h / 2)
                k = weights[attempt] * 1.5;
            double smallest = 0, plainOfNext = 0;
            Long next = 0;
            for (Long i = 1; i <= n; ++i) {
                if (!isFree[static_cast<std::size_t>(i)])
                    continue;
                lookedAt = i;
                const double dx = VBores[i].X - x;
                const double dy = VBores[i].Y - y;
                const double plain = std::sqrt(dx * dx + dy * dy);
                double weighted = std::sqrt(dy * dy + (dx * k) * (dx * k));
                if (y > h / 2 && static_cast<double>(VBores[i].Y) > h / 2)
                    weighted *= 0.6;
                if (next == 0 || weighted < smallest) {
                    smallest = weighted;
                    next = i;
                    plainOfNext = plain;
                }
            }
            length += plainOfNext;
            isFree[static_cast<std::size_t>(next)] = false;
            order.push_back(next);
            x = VBores[next].X;
            y = VBores[next].Y;
        }
        length += std::sqrt((w - x) * (w - x) + (h - y) * (h - y));
        if (attempt == 0)
            best = length + 10;
        if (length < best) {
            best = length;
            bestOrder = order;
        }
    }
    if (bestOrder.empty())
        return;
    std::vector<VBoreRecord> sorted;
    for (const Long i : bestOrder)
        sorted.push_back(VBores[i]);
    for (Long i = 1; i <= n; ++i)
        VBores[i] = sorted[static_cast<std::size_t>(i - 1)];
}

} // namespace kv::plain

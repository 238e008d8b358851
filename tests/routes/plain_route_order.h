// The order of the paths before they are chained, as the rules are told, piece by piece against every
// other piece. Works on a copy of the list, whose element 0 is blank. Reads Config.SPDA.
#pragma once

#include <cmath>
#include <vector>

#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv::plain {

// Last record of the piece or path that begins at `first`.
inline std::size_t LastOfPath(const std::vector<RouteSegment>& list, std::size_t first)
{
    std::size_t last = first;
    while (last + 1 < list.size() && list[last + 1].Kind >= 0)
        ++last;
    return last;
}

inline bool Touches(const RouteSegment& a, const RouteSegment& b)
{
    return std::fabs(double(a.X) - double(b.X)) < 0.005 && std::fabs(double(a.Y) - double(b.Y)) < 0.005;
}

inline void SweepKind(std::vector<RouteSegment>& list, Int kind)
{
    for (std::size_t i = list.size() - 1; i >= 1; --i) {
        if (list[i].Kind != -kind)
            continue;
        const std::size_t end = LastOfPath(list, i);
        if (end == i)
            break; // nothing behind it ends the sweep
        bool startTouched = false, endTouched = false;
        for (std::size_t other = 1; other < list.size(); ++other) {
            if (other == i || list[other].Kind >= 0 || list[other].Pass != list[i].Pass)
                continue;
            const std::size_t otherEnd = LastOfPath(list, other);
            if (Touches(list[other], list[end]) || Touches(list[otherEnd], list[end]))
                endTouched = true;
            if (Touches(list[other], list[i]) || Touches(list[otherEnd], list[i]))
                startTouched = true;
        }
        if (startTouched != endTouched)
            list[i].Flag = list[end].Flag = 1;
    }
    std::vector<RouteSegment> sorted(1);
    for (const Int flag : {Int(1), Int(0)})
        for (std::size_t i = 1; i < list.size(); ++i)
            if (list[i].Flag == flag)
                sorted.push_back(list[i]);
    for (RouteSegment& record : sorted)
        record.Flag = 0;
    list = sorted;
}

inline void OrderChains(std::vector<RouteSegment>& list)
{
    SweepKind(list, 2);
    SweepKind(list, 3);
    SweepKind(list, 1);
    if (UpperCase(Config.SPDA) == "NO")
        return;
    bool anyOfKind4 = false;
    for (const RouteSegment& record : list)
        if (record.Kind == 4 || record.Kind == -4)
            anyOfKind4 = true;
    if (!anyOfKind4)
        return;
    for (std::size_t i = 1; i + 1 < list.size(); ++i) {
        if (list[i].Kind != -4)
            continue;
        RouteSegment first = list[i], second = list[i + 1];
        if (first.ParamA != 0) {
            first.Kind = -1;
            second.Kind = 1;
            second.Z = 0;
            if (first.ParamB == 0)
                first.Z = first.ParamA;
            first.Aux1 = first.Aux2 = second.Aux1 = second.Aux2 = 0;
            first.ParamA = first.ParamB = second.ParamA = second.ParamB = 0;
        } else {
            second.Kind = 4;
        }
        std::vector<RouteSegment> moved{list[0], first, second};
        for (std::size_t k = 1; k < list.size(); ++k)
            if (k != i && k != i + 1)
                moved.push_back(list[k]);
        list = moved;
        ++i; // the search goes on behind the pair
    }
}

} // namespace kv::plain

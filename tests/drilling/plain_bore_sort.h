// Hoare's partition as it is told, on values and their names. The order of equal values is part of
// the rule.
#pragma once

#include <vector>

#include "platform/numbers.h"

namespace kv::plain {

struct NamedY {
    Single Y = 0;
    int Name = 0;
};

// list counts from 1; element 0 is not looked at.
inline void SortByY(std::vector<NamedY>& list, int low, int high)
{
    const Single pivot = list[static_cast<std::size_t>((low + high) / 2)].Y;
    int i = low, j = high;
    while (true) {
        while (list[static_cast<std::size_t>(i)].Y < pivot)
            i = i + 1;
        while (pivot < list[static_cast<std::size_t>(j)].Y)
            j = j - 1;
        if (i <= j) {
            const NamedY kept = list[static_cast<std::size_t>(i)];
            list[static_cast<std::size_t>(i)] = list[static_cast<std::size_t>(j)];
            list[static_cast<std::size_t>(j)] = kept;
            i = i + 1;
            j = j - 1;
        }
        if (i > j)
            break;
    }
    if (low < j)
        SortByY(list, low, j);
    if (i < high)
        SortByY(list, i, high);
}

} // namespace kv::plain

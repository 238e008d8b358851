// Duplicates, chains, sizes and gatherings as the rules are told, bore by bore, without an index. Slow on
// purpose: the fast passes are held against them, bit for bit. Works on a list of its own, from 1.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "drilling/drill_head.h"
#include "state/run.h"

namespace kv::plain {

using BoreList = std::vector<VBoreRecord>; // element 0 is blank

inline BoreList BoresNow()
{
    return {VBores.begin(), VBores.end()};
}

inline int LastOf(const BoreList& list)
{
    return static_cast<int>(list.size()) - 1;
}

inline void RemoveDuplicateBores(BoreList& list)
{
    const auto near = [](Single a, Single b) {
        return std::abs(static_cast<double>(a) - static_cast<double>(b)) < 0.2;
    };
    for (std::size_t i = 1; i < list.size(); ++i) {
        std::size_t j = i + 1;
        while (j < list.size()) {
            if (near(list[j].X, list[i].X) && near(list[j].Y, list[i].Y) &&
                near(list[j].Diameter, list[i].Diameter))
                list.erase(list.begin() + static_cast<std::ptrdiff_t>(j));
            else
                ++j;
        }
    }
}

inline void ClearChains(BoreList& list)
{
    for (std::size_t i = 1; i < list.size(); ++i) {
        list[i].Group = 0;
        list[i].Speed = 0;
        std::string tool(list[i].Tool.Padded());
        for (char& c : tool)
            if (c == '\0')
                c = ' ';
        list[i].Tool = tool;
        if (tool.find_first_not_of(' ') != std::string::npos)
            list[i].Diameter = 0;
    }
}

struct Pair {
    double XDistance = 0, YDistance = 0, Distance = 0;
};

inline Pair Between(const VBoreRecord& a, const VBoreRecord& b)
{
    const double factor = Run.UnitFactor;
    Pair pair;
    pair.XDistance = std::abs(a.X * factor - b.X * factor);
    pair.YDistance = std::abs(a.Y * factor - b.Y * factor);
    pair.Distance = std::sqrt(pair.XDistance * pair.XDistance + pair.YDistance * pair.YDistance);
    return pair;
}

inline bool OnAxis(const Pair& pair)
{
    return pair.XDistance < 0.1 || pair.YDistance < 0.1;
}

inline int DirectionOf(const Pair& pair)
{
    return pair.XDistance < 0.05 ? -1 : 1;
}

inline bool HeadFits(int s, int direction, double diameter)
{
    for (std::size_t h = 1; h <= 99 - static_cast<std::size_t>(s); ++h) {
        const HeadDrill& a = DrillHead[h];
        const HeadDrill& b = DrillHead[h + static_cast<std::size_t>(s)];
        if (a.Row == direction && b.Row == direction && std::abs(a.Diameter - diameter) < 0.2 &&
            std::abs(b.Diameter - diameter) < 0.2)
            return true;
    }
    return false;
}

inline void FindChains(BoreList& list)
{
    const double tolerance = 0.3F;
    const int last = LastOf(list);
    const auto at = [&](int i) -> VBoreRecord& { return list[static_cast<std::size_t>(i)]; };
    for (int i = 1; i <= last - 1; ++i) {
        if (at(i).Group != 0)
            continue;
        int hit = 0, p = 0;
        for (int tried = 32; tried <= 128 && hit == 0; tried += 32)
            for (int j = i + 1; j <= last && hit == 0; ++j) {
                const Pair pair = Between(at(i), at(j));
                if (OnAxis(pair) && std::abs(pair.Distance - tried) < tolerance &&
                    at(j).Diameter == at(i).Diameter && at(j).Tool == at(i).Tool) {
                    hit = j;
                    p = tried;
                }
            }
        if (hit == 0)
            continue;
        const int direction = DirectionOf(Between(at(i), at(hit)));
        if (!HeadFits(p / 32, direction, at(i).Diameter * static_cast<double>(Run.UnitFactor)))
            continue;
        const auto mark = [&](int bore) {
            at(bore).Group = static_cast<Int>(i * direction);
            at(bore).Pitch = static_cast<Int>(p);
        };
        mark(i);
        mark(hit);
        int end = hit;
        bool joined = true;
        while (joined) {
            joined = false;
            for (int k = 1; k <= last; ++k) {
                if (at(k).Group != 0)
                    continue;
                const Pair pair = Between(at(end), at(k));
                if (!OnAxis(pair) || !(pair.Distance > tolerance) ||
                    !(std::abs(pair.Distance - p) < tolerance) || at(k).Diameter != at(i).Diameter ||
                    !(at(k).Tool == at(i).Tool) || DirectionOf(pair) != direction)
                    continue;
                mark(k);
                end = k;
                joined = true;
            }
        }
    }
}

inline void CountChainSizes(BoreList& list)
{
    for (std::size_t i = 1; i < list.size(); ++i) {
        std::string compact;
        for (const char c : list[i].Tool.Padded())
            if (c != ' ' && c != '\0')
                compact += c;
        list[i].Speed = 1;
        if (compact.size() == 1 || compact.size() == 2 || list[i].Group == 0)
            continue;
        Int members = 0;
        for (std::size_t j = 1; j < list.size(); ++j)
            if (list[j].Group == list[i].Group)
                ++members;
        list[i].Speed = members;
    }
}

inline void TakeOutAndPutIn(BoreList& list, int from, int to)
{
    const VBoreRecord bore = list[static_cast<std::size_t>(from)];
    list.erase(list.begin() + from);
    list.insert(list.begin() + to, bore);
}

inline void GatherFirst(BoreList& list)
{
    const int last = LastOf(list);
    const auto group = [&](int i) { return list[static_cast<std::size_t>(i)].Group; };
    const auto speed = [&](int i) { return list[static_cast<std::size_t>(i)].Speed; };
    for (int i = 1; i < last; ++i) {
        const int g = group(i);
        const int c = speed(i);
        int seen = 1;
        if (g == 0 || c == 0)
            continue;
        for (int j = i + 1; j <= last; ++j) {
            if (group(j) == g) {
                ++seen;
                if (seen == speed(j)) {
                    i = j;
                    break;
                }
            } else if (speed(j) <= c) {
                for (int m = j + 1; m <= last; ++m)
                    if (group(m) == g) {
                        TakeOutAndPutIn(list, m, i);
                        ++i;
                        ++seen;
                    }
                if (speed(j) == seen) {
                    i = j;
                    break;
                }
            } else if (seen > c / 2.0) {
                TakeOutAndPutIn(list, j, i);
                ++i;
            } else {
                int m = last;
                while (m >= j && group(m) != g)
                    --m;
                if (m >= j) {
                    TakeOutAndPutIn(list, j, m);
                    ++seen;
                }
            }
        }
    }
}

inline void GatherFinally(BoreList& list)
{
    BoreList gathered(1);
    std::vector<bool> isCopied(list.size(), false);
    for (std::size_t i = 1; i < list.size(); ++i) {
        if (list[i].Group == 0) {
            gathered.push_back(list[i]);
            continue;
        }
        if (isCopied[i])
            continue;
        for (std::size_t j = 1; j < list.size(); ++j)
            if (list[j].Group == list[i].Group) {
                gathered.push_back(list[j]);
                isCopied[j] = true;
            }
    }
    list = gathered;
}

inline void ChainBores(BoreList& list)
{
    RemoveDuplicateBores(list);
    ClearChains(list);
    FindChains(list);
    CountChainSizes(list);
    GatherFirst(list);
    GatherFinally(list);
}

} // namespace kv::plain

// The head's stops as the rules are told, step by step on texts. The pass is held against it.
#pragma once

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "drilling/drill_head.h"
#include "state/run.h"

namespace kv::plain {

using StopList = std::vector<HeadPosition>; // element 0 is blank

inline const HeadDrill& Slot(int n)
{
    return DrillHead[static_cast<std::size_t>(n)];
}

inline std::string Digits2(int n)
{
    const std::string text = "0" + std::to_string(n);
    return text.substr(text.size() - 2);
}

inline StopList BuildList(const std::vector<VBoreRecord>& bores)
{
    StopList stops(1);
    std::size_t smallest = 0, largest = 0;
    std::size_t i = 1;
    while (i < bores.size()) {
        const int n = bores[i].Speed;
        const int g = bores[i].Group;
        if (n <= 0) {
            ++i;
            continue;
        }
        Single low = 99999, high = 0;
        for (std::size_t b = i; b < i + static_cast<std::size_t>(n); ++b) {
            const Single value = g > 0 ? bores[b].X : bores[b].Y;
            if (value < low) {
                low = value;
                smallest = b;
            }
            if (value > high) {
                high = value;
                largest = b;
            }
        }
        HeadPosition stop;
        stop.X = bores[smallest].X;
        stop.EndX = bores[largest].X;
        stop.Y = bores[smallest].Y;
        stop.EndY = bores[largest].Y;
        if (Run.OriginRight != 0) {
            stop.X = Run.SideWidth[5] - stop.X;
            stop.EndX = Run.SideWidth[5] - stop.EndX;
        }
        if (Run.OriginTop != 0) {
            stop.Y = Run.SideHeight[5] - stop.Y;
            stop.EndY = Run.SideHeight[5] - stop.EndY;
        }
        stop.Depth = bores[smallest].Depth;
        stop.Diameter = bores[smallest].Diameter;
        stop.Tool = bores[smallest].Tool.Padded();
        stop.ExtraSlot = bores[smallest].ExtraSlot;
        stop.Side = bores[smallest].Bottom;
        stop.ChainSize = bores[smallest].Speed;
        stop.Pitch = bores[smallest].Pitch;
        const int sign = bores[smallest].Group;
        stop.Direction = static_cast<Int>(sign > 0 ? 1 : sign < 0 ? -1 : 0);
        stops.push_back(stop);
        i += static_cast<std::size_t>(n);
    }
    return stops;
}

inline double Way(double x1, double y1, double x2, double y2)
{
    return std::sqrt((x2 - x1) * (x2 - x1) + (y2 - y1) * (y2 - y1));
}

inline void OrderEnds(StopList& stops)
{
    for (std::size_t i = 1; i + 1 < stops.size(); ++i) {
        const HeadPosition& a = stops[i];
        HeadPosition& b = stops[i + 1];
        if (a.Direction != 1 || b.Direction != 1)
            continue;
        if (Way(a.EndX, a.EndY, b.X, b.Y) > Way(a.EndX, a.EndY, b.EndX, b.EndY)) {
            const Single x = b.X, y = b.Y;
            b.X = b.EndX;
            b.Y = b.EndY;
            b.EndX = x;
            b.EndY = y;
        }
    }
}

inline void ChooseAll(StopList& stops, bool headOriginFlip)
{
    int prev = 0, last = 0;
    for (std::size_t p = 1; p < stops.size(); ++p) {
        HeadPosition& stop = stops[p];
        const int s = stop.Pitch / 32;
        const int d = stop.Direction;
        const int c = stop.ChainSize;
        const double w = stop.Diameter * static_cast<double>(Run.UnitFactor);
        std::string digits;
        for (const char ch : stop.Tool.Padded())
            if (ch >= '0' && ch <= '9')
                digits += ch;
        const bool reverse =
            (d != 0 && stop.Y > stop.EndY && !headOriginFlip) || (stop.Y < stop.EndY && headOriginFlip);
        std::string list;
        const auto add = [&](int n) { list = reverse ? Digits2(n) + list : list + Digits2(n); };
        int taken = 0, phase = s;
        if (digits.empty()) {
            for (int n = 1; n <= 99; ++n) {
                const bool diameterFits = std::abs(Slot(n).Diameter - w) < 0.2;
                const int row = Slot(n).Row;
                if (diameterFits && row != 0 && row == d) {
                    if (n > prev + s) {
                        list = "";
                        phase = s;
                        taken = 0;
                    }
                    prev = n;
                    if (phase == s) {
                        if (taken == 0)
                            list = "";
                        add(n);
                        ++taken;
                        last = n;
                    }
                    if (taken == c)
                        break;
                } else if (list.empty() && diameterFits && row != 0 && row != d && w > 0) {
                    list = Digits2(n);
                    if (d == 0)
                        break;
                } else if (last == n - s) {
                    if (last > 0 && taken >= 2)
                        break;
                    if (last > 0) {
                        n = last;
                        list = "";
                        phase = s + 1;
                        taken = 0;
                        last = 0;
                    }
                }
                --phase;
                if (phase == 0)
                    phase = s;
            }
        } else {
            int low = std::atoi(digits.substr(0, 2).c_str());
            int high = std::atoi((digits.size() < 2 ? digits : digits.substr(digits.size() - 2)).c_str());
            if (low > high) {
                const int swapped = low;
                low = high;
                high = swapped;
            }
            for (int n = low; n <= high; ++n) {
                if (phase == s) {
                    add(n);
                    ++taken;
                }
                --phase;
                if (phase == 0)
                    phase = s;
                if (taken == c)
                    break;
            }
        }
        if (list.empty())
            list = "00";
        if (d == -1 && Run.OriginTop != 0 && headOriginFlip) {
            const double l = (c - 1) * 32.0 * s;
            stop.Y = static_cast<Single>(stop.Y - l);
            stop.EndY = static_cast<Single>(stop.EndY + l);
            std::string reversed;
            for (std::size_t at = 0; at < list.size(); at += 2)
                reversed.insert(0, list.substr(at, 2));
            list = reversed;
        }
        bool consecutive = list.size() > 5;
        for (std::size_t at = 2; consecutive && at < list.size(); at += 2)
            consecutive =
                std::atoi(list.substr(at, 2).c_str()) == std::atoi(list.substr(at - 2, 2).c_str()) + 1;
        if (consecutive)
            list = list.substr(0, 2) + "|" + list.substr(list.size() - 2);
        stop.Tool = list;
    }
}

inline void RideAlong(StopList& stops)
{
    for (std::size_t r = 1; r < stops.size(); ++r) {
        HeadPosition& row = stops[r];
        for (std::size_t b = 1; b < stops.size() && row.Direction == -1; ++b) {
            HeadPosition& lone = stops[b];
            if (lone.Direction != 0 || lone.X != row.X || lone.Diameter != row.Diameter)
                continue;
            std::string list(row.Tool.Trimmed());
            const HeadDrill& rowsFirst = Slot(std::atoi(list.substr(0, 2).c_str()));
            bool givenUp = false;
            while (!givenUp) {
                const Single o = row.Y - lone.Y;
                const HeadDrill& a = Slot(std::atoi(list.substr(0, 2).c_str()));
                int found = 0;
                for (int n = 1; n <= 99 && found == 0; ++n)
                    if (static_cast<double>(o) + static_cast<double>(Slot(n).Y) == static_cast<double>(a.Y) &&
                        Slot(n).Diameter == a.Diameter && Slot(n).Kind == a.Kind)
                        found = n;
                if (found != 0) {
                    row.Tool = list + Digits2(found);
                    lone.Tool = "";
                    break;
                }
                givenUp = list.find('|') != std::string::npos;
                for (std::size_t at = 0; at + 1 < list.size() && !givenUp; at += 2) {
                    const int next = std::atoi(list.substr(at, 2).c_str()) + 1;
                    givenUp = next > 99 || Slot(next).Kind != rowsFirst.Kind ||
                              Slot(next).Diameter != rowsFirst.Diameter;
                    if (!givenUp)
                        list.replace(at, 2, Digits2(next));
                }
            }
        }
    }
}

inline StopList PlanHeadPositions(const std::vector<VBoreRecord>& bores, bool headOriginFlip)
{
    StopList stops = BuildList(bores);
    OrderEnds(stops);
    ChooseAll(stops, headOriginFlip);
    RideAlong(stops);
    return stops;
}

} // namespace kv::plain

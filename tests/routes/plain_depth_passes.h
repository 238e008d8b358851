// The depth passes as the rules are told: in place, records put in one by one, a route's end looked for
// from each record. The passes are held against them on random routes.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "geometry/angles.h"
#include "state/run.h"

namespace kv::plain_depths {

using Segments = std::vector<RouteSegment>; // from 1, with a blank element 0

inline int HighestOf(const Segments& list)
{
    return static_cast<int>(list.size()) - 1;
}

inline RouteSegment& At(Segments& list, int i)
{
    return list[static_cast<std::size_t>(i)];
}

inline int EndOfRoute(Segments& list, int i)
{
    int e = i;
    for (int j = i + 1; j <= HighestOf(list); ++j) {
        if (At(list, j).Dir == -8)
            break;
        e = j;
    }
    return e;
}

inline int HeadOfRoute(Segments& list, int i)
{
    while (i > 1 && At(list, i).Dir != -8)
        --i;
    return i;
}

inline double Apart(const RouteSegment& a, const RouteSegment& b)
{
    const double dx = double(b.X) - double(a.X);
    const double dy = double(b.Y) - double(a.Y);
    return std::sqrt(dx * dx + dy * dy);
}

inline Text<10> OnOtherHand(const Text<10>& comp)
{
    std::string text(comp.Padded());
    if (text.rfind("G41", 0) == 0)
        text[2] = '2';
    else if (text.rfind("G42", 0) == 0)
        text[2] = '1';
    return Text<10>(text);
}

inline void ReverseClosedPolylines(Segments& list)
{
    for (int i = 1; i <= HighestOf(list); ++i) {
        if (At(list, i).Kind != -4 || i + 2 > HighestOf(list) || std::abs(At(list, i + 1).Kind) != 5)
            continue;
        const int e = EndOfRoute(list, i);
        if (e < i + 2)
            continue;
        const RouteSegment p0 = At(list, i);
        const RouteSegment p1 = At(list, i + 1);
        const RouteSegment p2 = At(list, i + 2);
        if (Apart(p2, p0) <= 0.03 || Apart(p2, p1) <= 0.03)
            continue;
        if (Apart(At(list, e), p0) >= 0.03 && Apart(At(list, e), p1) >= 0.03)
            continue;
        At(list, i).Comp = OnOtherHand(p0.Comp);
        At(list, i + 1).Comp = OnOtherHand(p1.Comp);
        Segments taken;
        for (int j = e; j >= i + 2; --j)
            taken.push_back(At(list, j));
        for (int j = i + 2; j <= e; ++j) {
            RouteSegment& record = At(list, j) = taken[static_cast<std::size_t>(j - i - 2)];
            if (record.Aux2 != 0)
                record.Aux2 = -record.Aux2;
            record.Kind = 5;
            if (j == i + 2)
                record.Kind = -5;
            record.Comp = OnOtherHand(record.Comp);
            if (j == e)
                record.Group = At(list, HeadOfRoute(list, i)).Group;
        }
    }
}

// Copies that the pass puts in are no corners of the drawing and are not looked at.
inline void ReseamClosedPolylines(Segments& list)
{
    std::vector<bool> drawn(list.size(), true);
    for (int i = 1; i <= HighestOf(list); ++i) {
        if (!drawn[static_cast<std::size_t>(i)] || At(list, i).Kind != -5 || At(list, i).Aux2 != 0)
            continue;
        const int e = EndOfRoute(list, i);
        const bool pocket = At(list, e).Kind == 4 || At(list, e).Kind == -4;
        if (e == i || pocket || Apart(At(list, i), At(list, e)) >= 0.001)
            continue;
        const PlanePoint a{At(list, i).X, At(list, i).Y};
        const PlanePoint b{At(list, i + 1).X, At(list, i + 1).Y};
        const PlanePoint middle = Polar(a, Apart(At(list, i), At(list, i + 1)) / 2, Bearing(a, b));
        RouteSegment copy = At(list, e);
        copy.X = At(list, i).X = ToSingle(middle.X);
        copy.Y = At(list, i).Y = ToSingle(middle.Y);
        list.insert(list.begin() + e + 1, copy);
        drawn.insert(drawn.begin() + e + 1, false);
    }
}

// Returns whether the warning is given.
inline bool OscillateZ(Segments& list, Single partThickness)
{
    bool warning = false;
    double sense = 1, amp = 0, offset = 0, lastOffset = 0, span = 0;
    for (int i = 1; i <= HighestOf(list); ++i) {
        RouteSegment& r = At(list, i);
        if (r.Z >= 90)
            continue;
        if (r.Dir == -8) {
            sense = 1;
            amp = offset = lastOffset = span = 0;
            if (r.Z > partThickness) {
                amp = double(r.OscZ);
                span = 2 * amp;
            } else if (r.OscZ > 0) {
                warning = true;
            }
            continue;
        }
        if (r.Kind <= 0 || r.Kind == 4 || !(amp > 0))
            continue;
        const double q = Apart(At(list, i - 1), r) / span;
        offset = offset + amp * q * sense;
        if (offset > amp) {
            offset = amp;
            sense = -1;
        }
        if (offset < 0) {
            offset = 0;
            sense = 1;
        }
        if (std::fabs(offset - lastOffset) < amp / 2 && q > 1) {
            if (offset == amp) {
                offset = 0;
                sense = -sense;
            } else if (offset == 0) {
                offset = amp;
                sense = -sense;
            }
        }
        lastOffset = offset;
        r.Z = ToSingle(double(r.Z) + offset);
        if (i < HighestOf(list) && At(list, i + 1).Dir != -8 &&
            (At(list, i + 1).Kind == 1 || At(list, i + 1).Kind == 3))
            At(list, i + 1).Z = r.Z;
    }
    return warning;
}

inline void SplitDepthPasses(Segments& list)
{
    struct Route {
        int First, Last, N;
    };
    std::vector<Route> routes;
    for (int i = 1; i <= HighestOf(list); ++i)
        if (At(list, i).Dir == -8 && At(list, i).MCode > 0)
            routes.push_back({i, EndOfRoute(list, i), At(list, i).MCode});
    for (int r = static_cast<int>(routes.size()) - 1; r >= 0; --r) {
        const Route route = routes[static_cast<std::size_t>(r)];
        for (int p = route.N; p >= 1; --p)
            for (int i = route.Last; i >= route.First; --i) {
                RouteSegment copy = At(list, i);
                if (copy.Z < 90)
                    copy.Z = ToSingle(double(copy.Z) / route.N * p);
                if (p == 1)
                    At(list, i) = copy;
                else
                    list.insert(list.begin() + route.Last + 1, copy);
            }
    }
}

} // namespace kv::plain_depths

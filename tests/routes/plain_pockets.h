// The pockets as the rules are told, line by line: the list is worked in place, records are counted
// from 1, and a chain's ends are looked for each time. The pass is held against it on random outlines.
#pragma once

#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "geometry/angles.h"
#include "platform/text.h"
#include "state/run.h"

namespace kv::plain_pockets {

using Records = std::vector<RouteSegment>; // from 1, with a blank element 0
using Lines = std::vector<std::string>;

inline int Highest(const Records& list)
{
    return static_cast<int>(list.size()) - 1;
}
inline RouteSegment& Nth(Records& list, int i)
{
    return list[static_cast<std::size_t>(i)];
}
inline PlanePoint Spot(const RouteSegment& r)
{
    return {double(r.X), double(r.Y)};
}
inline int ChainEnd(Records& list, int i)
{
    while (i < Highest(list) && Nth(list, i + 1).Dir != -8)
        ++i;
    return i;
}
inline double RadiusOfTool(const Text<10>& comp)
{
    return Val(Mid(comp.Padded(), 6));
}
inline double PitchOf(Single oscZ, const Text<10>& comp)
{
    double pitch = std::fabs(double(oscZ)) - 1;
    if (pitch == 0)
        pitch = 2 * RadiusOfTool(comp);
    return pitch;
}
inline double Near()
{
    return Run.RouteTolerance > 0.01 ? double(Run.RouteTolerance) : 0.01;
}
inline std::string LayerText(Long pass)
{
    return std::string(Trim(Run.LayerTable.at(static_cast<std::size_t>(pass) + 3)));
}
inline bool Marked(Single oscZ, Long pass)
{
    return oscZ < 0 && LayerText(pass).find("EXCAV") != std::string::npos;
}
inline void Tell(Lines& lines, Long pass, Single x, Single y, const std::string& what)
{
    lines.push_back("Layer " + LayerText(pass) + ": the pocket at X" + PlainText(x) + " Y" + PlainText(y) +
                    " " + what);
}
inline void TellNarrow(Lines& lines, const RouteSegment& at, double pocket, double way)
{
    const double tool = 2 * RadiusOfTool(at.Comp);
    if (tool > 0 && pocket < tool)
        Tell(lines, at.Pass, at.X, at.Y, "is narrower than its tool");
    else if (tool > 0 && way < tool)
        Tell(lines, at.Pass, at.X, at.Y,
             std::string("has ways that are narrower than its tool") +
                 ((2 * tool - pocket - way) / 2 > Near() ? " and cut outside of it" : ""));
}

// Of a circle.
inline void TellWood(Lines& lines, const RouteSegment& at, double radius, double pitch)
{
    const double r = RadiusOfTool(at.Comp);
    if (r <= 0 || pitch - 2 * r <= Near() || radius - 2 * r <= Near())
        return;
    if (radius >= 4 * r || pitch / 2 > radius)
        Tell(lines, at.Pass, at.X, at.Y, "leaves wood between its ways");
}

// The chains of the list as it was drawn: first and last point behind a mark.
struct DrawnEnds {
    Long Pass;
    bool HasMark;
    PlanePoint Start, End;
};
using Ends = std::vector<DrawnEnds>;

inline Ends EndsOf(Records& list)
{
    Ends all;
    for (int i = 1; i <= Highest(list);) {
        const int e = ChainEnd(list, i);
        const bool mark = Nth(list, i).Kind == -4 && i + 2 <= e;
        const RouteSegment& from = Nth(list, mark ? i + 2 : i);
        all.push_back({Nth(list, i).Pass,
                       mark,
                       {double(from.X), double(from.Y)},
                       {double(Nth(list, e).X), double(Nth(list, e).Y)}});
        i = e + 1;
    }
    return all;
}
inline std::string FourPlaces(double value)
{
    return PlainText(ToSingle(std::round(value * 10000) / 10000));
}
// ", its outline is open at ..." for the records from a to b; empty where it is closed, or touched.
inline std::string OpenAt(const Ends& drawn, const RouteSegment& a, const RouteSegment& b)
{
    const PlanePoint start{double(a.X), double(a.Y)}, end{double(b.X), double(b.Y)};
    double gap = Distance(start, end);
    if (gap <= Near())
        return "";
    for (const DrawnEnds& other : drawn) {
        if (other.Pass != a.Pass || other.HasMark || Distance(other.Start, other.End) <= Near())
            continue;
        if (Distance(other.Start, start) == 0 && Distance(other.End, end) == 0)
            continue;
        for (const PlanePoint& p : {other.Start, other.End})
            gap = std::fmin(gap, Distance(end, p));
    }
    if (gap < double(Run.RouteTolerance))
        return "";
    return ", its outline is open at X" + FourPlaces(end.X) + " Y" + FourPlaces(end.Y) + " by " +
           FourPlaces(gap);
}
// The same for the records from i to n of a list, which may hold a mark.
inline std::string FaultFrom(const Ends& drawn, Records& c, int i, int n)
{
    for (int k = i; k <= n; ++k)
        if (Nth(c, k).Kind == -4)
            return ", its outline meets another start mark";
    return i < n ? OpenAt(drawn, Nth(c, i), Nth(c, n)) : "";
}
inline bool IsRestOfAnother(const Ends& drawn, const RouteSegment& a, const RouteSegment& b)
{
    for (const DrawnEnds& other : drawn) {
        const bool open = Distance(other.Start, other.End) > Near();
        if (other.Pass == a.Pass && other.HasMark && open &&
            (Distance(other.Start, {double(a.X), double(a.Y)}) <= Near() ||
             Distance(other.Start, {double(b.X), double(b.Y)}) <= Near()))
            return true;
    }
    return false;
}

struct Box {
    double MinX, MaxX, MinY, MaxY;
};

// What the loops cut outside or leave inside, as it is drawn: the tool beside the way's first point,
// and each corner's rest against what the loop around it clears along the diagonal.
inline void TellOfLoops(Lines& told, const RouteSegment& mark, const Box& box, const RouteSegment& a,
                        const RouteSegment& b, bool clockwise, double pitch, int loops,
                        const std::vector<double>& corners)
{
    const double r = RadiusOfTool(mark.Comp);
    const double shorter = std::fmin(box.MaxX - box.MinX, box.MaxY - box.MinY);
    if (r <= 0 || shorter < 2 * r)
        return;
    double direction = Bearing({double(a.X), double(a.Y)}, {double(b.X), double(b.Y)});
    if (a.Kind == -3 && b.Kind == 3)
        direction = double(b.Aux1) + (b.Dir != 0 ? 90 : -90);
    const PlanePoint tool = Polar({double(a.X), double(a.Y)}, r, direction + (clockwise ? 90 : -90));
    if (tool.X - r < box.MinX - Near() || tool.X + r > box.MaxX + Near() || tool.Y - r < box.MinY - Near() ||
        tool.Y + r > box.MaxY + Near())
        Tell(told, mark.Pass, mark.X, mark.Y, "begins in a sharp corner and cuts into its wall");
    if (pitch > 2 * r + Near() && shorter > 4 * r + Near()) {
        Tell(told, mark.Pass, mark.X, mark.Y, "leaves wood between its ways");
        return;
    }
    const double root = std::sqrt(0.5);
    bool island = false;
    for (int n = 1; n < loops && shorter - 2 * (n * pitch) >= 2 * r; ++n)
        for (const double whole : corners) {
            const auto at = [&](int loop) {
                const double inset = loop * pitch;
                return whole > r && (loop == 0 || whole - inset > pitch) ? whole - inset : 0.0;
            };
            const double rest = n * pitch + r - r * root;
            double cleared = (n - 1) * pitch + 2 * r;
            if (at(n - 1) > 2 * r)
                cleared += (at(n - 1) - 2 * r) - (at(n - 1) - 2 * r) * root;
            island = island || (at(n) == 0 && rest > cleared + Near());
        }
    if (island)
        Tell(told, mark.Pass, mark.X, mark.Y, "leaves islands at its sharp corners");
}

inline bool IsArc(Records& c, int k, int first)
{
    return k > first && k <= Highest(c) && Nth(c, k).Kind == 3 && Nth(c, k - 1).Kind == -3;
}
inline PlanePoint Middle(const RouteSegment& r)
{
    return {double(r.Aux1), double(r.Aux2)};
}

// Rule 2, sentence by sentence.
inline bool HoldsARectangle(Records& c, int first, const Box& box)
{
    const double tol = Near();
    const auto on = [tol](double a, double b) { return std::fabs(a - b) <= tol; };
    const auto both = [&](int k, int side) {
        const RouteSegment &a = Nth(c, k - 1), &b = Nth(c, k);
        switch (side) {
        case 1:
            return on(a.X, box.MinX) && on(b.X, box.MinX);
        case 2:
            return on(a.X, box.MaxX) && on(b.X, box.MaxX);
        case 3:
            return on(a.Y, box.MinY) && on(b.Y, box.MinY);
        default:
            return on(a.Y, box.MaxY) && on(b.Y, box.MaxY);
        }
    };
    int lines = 0;
    for (int k = first; k <= Highest(c); ++k) {
        const RouteSegment& r = Nth(c, k);
        if (!on(r.X, box.MinX) && !on(r.X, box.MaxX) && !on(r.Y, box.MinY) && !on(r.Y, box.MaxY))
            return false;
        if (k == first || r.Kind < 0)
            continue;
        if (IsArc(c, k, first)) {
            const PlanePoint o = Middle(Nth(c, k - 1));
            const double radius = Distance(Spot(Nth(c, k - 1)), o);
            const double dx = std::fmin(std::fabs(o.X - box.MinX), std::fabs(o.X - box.MaxX));
            const double dy = std::fmin(std::fabs(o.Y - box.MinY), std::fabs(o.Y - box.MaxY));
            if (!on(dx, radius) || !on(dy, radius))
                return false;
            continue;
        }
        ++lines;
        if (r.Kind == 5 && Nth(c, k - 1).Aux2 != 0)
            return false;
        if (!both(k, 1) && !both(k, 2) && !both(k, 3) && !both(k, 4))
            return false;
    }
    return lines > 0 && Distance(Spot(Nth(c, Highest(c))), Spot(Nth(c, first))) <= tol; // closed
}

// Rule 5, second part: pairs of the end go to the beginning.
inline void TurnToALine(Records& c, int first)
{
    const int n = Highest(c);
    for (int turns = 0; turns < n && IsArc(c, n, first); ++turns) {
        const RouteSegment a = Nth(c, n - 1), b = Nth(c, n);
        c.erase(c.end() - 2, c.end());
        c.insert(c.begin() + first, {a, b});
    }
}

// No room for the tool, by more than 0.01: nothing of it stays.
inline bool NoRoom(Lines& lines, const RouteSegment& at, double width)
{
    const double tool = 2 * RadiusOfTool(at.Comp);
    if (tool <= 0 || width >= tool - 0.01)
        return false;
    Tell(lines, at.Pass, at.X, at.Y, "is not cleared, it is narrower than its tool");
    return true;
}

// An end of a piece and the next beginning, more than 0.01 apart.
inline void TellGap(Lines& lines, const RouteSegment& at, const RouteSegment& a, const RouteSegment& b)
{
    const double gap = Distance(Spot(a), Spot(b));
    const auto rounded = [](double value) { return PlainText(ToSingle(std::round(value * 1e4) / 1e4)); };
    if (a.Kind > 0 && b.Kind < 0 && gap > 0.01)
        Tell(lines, at.Pass, at.X, at.Y,
             "has a gap in its outline at X" + rounded(a.X) + " Y" + rounded(a.Y) + " of " + rounded(gap));
}

// One contour, c from 1; false when it stays as it is.
inline bool Rectangle(Records c, Records& made, const Ends& drawn, Lines& told)
{
    const RouteSegment c1 = Nth(c, 1), c2 = Nth(c, 2);
    const int n = Highest(c);
    const int first = Nth(c, 3).Kind < 0 ? 3 : 1;
    Box box{1e99, -1e99, 1e99, -1e99};
    for (int k = first; k <= n; ++k) {
        box.MinX = std::fmin(box.MinX, double(Nth(c, k).X));
        box.MaxX = std::fmax(box.MaxX, double(Nth(c, k).X));
        box.MinY = std::fmin(box.MinY, double(Nth(c, k).Y));
        box.MaxY = std::fmax(box.MaxY, double(Nth(c, k).Y));
    }
    const double w = box.MaxX - box.MinX, h = box.MaxY - box.MinY;
    if (w <= 0 || h <= 0 || !HoldsARectangle(c, first, box)) {
        const std::string open = FaultFrom(drawn, c, first, n);
        Tell(told, c1.Pass, c1.X, c1.Y,
             "is not cleared" + (open.empty() ? ", its outline is no rectangle" : open));
        return false;
    }
    const double pitch = PitchOf(c1.OscZ, c1.Comp);
    if (pitch <= 0) {
        told.push_back("Excavation Pitch not specified! (Rectangle)");
        Tell(told, c1.Pass, c1.X, c1.Y, "is not cleared");
        return false;
    }
    if (NoRoom(told, c1, w < h ? w : h))
        return true;
    for (int k = first; k <= n; ++k)
        TellGap(told, c1, Nth(c, k), Nth(c, k == n ? first : k + 1));
    const double midX = (box.MinX + box.MaxX) / 2, midY = (box.MinY + box.MaxY) / 2;
    PlanePoint d[3];
    if (h < w) {
        d[1] = {box.MinX + (w / 2) * (h / w), midY};
        d[2] = {box.MaxX - (w / 2) * (h / w), midY};
    } else {
        d[1] = {midX, box.MinY + (h / 2) * (w / h)};
        d[2] = {midX, box.MaxY - (h / 2) * (w / h)};
    }
    double sum = 0;
    for (int k = first; k <= n - 1; ++k)
        sum += double(Nth(c, k).X) * Nth(c, k + 1).Y - double(Nth(c, k + 1).X) * Nth(c, k).Y;
    const bool clockwise = sum < 0;
    TurnToALine(c, first);

    bool reached[3] = {};
    int lastEnd = 1;
    const auto add = [&](RouteSegment r, Int kind, PlanePoint p, Single aux1, Single aux2, Int dir) {
        if (kind < 0) {
            int lower = 0;
            for (int m = 1; m <= 2; ++m)
                if (Distance(p, d[m]) < pitch) {
                    reached[m] = true;
                    lastEnd = m;
                    if (lower == 0)
                        lower = m;
                }
            if (lower > 0) {
                const PlanePoint q = Polar(d[lower], pitch, Bearing(d[lower], p));
                const bool outside = q.X < box.MinX || q.X > box.MaxX || q.Y < box.MinY || q.Y > box.MaxY;
                p = outside ? p : q;
            }
        }
        r.Kind = kind;
        r.X = ToSingle(p.X);
        r.Y = ToSingle(p.Y);
        r.Aux1 = aux1;
        r.Aux2 = aux2;
        r.Dir = dir;
        made.push_back(r);
    };
    const auto radius = [&](int k) { return Distance(Spot(Nth(c, k - 1)), Middle(Nth(c, k - 1))); };
    const auto alive = [&](int k, int loop) { // the wall's arc as long as the tool can cut it
        const bool tooSmallForTheTool = radius(k) <= RadiusOfTool(c1.Comp);
        return !tooSmallForTheTool && (loop == 0 || radius(k) - loop * pitch > pitch);
    };
    const auto corner = [&](int k, double inset) {
        const PlanePoint own = Spot(Nth(c, k));
        const double upperLeft = Distance(own, {box.MinX, box.MaxY});
        const double upperRight = Distance(own, {box.MaxX, box.MaxY});
        const double lowerRight = Distance(own, {box.MaxX, box.MinY});
        const double lowerLeft = Distance(own, {box.MinX, box.MinY});
        const double nearest = std::fmin(std::fmin(upperLeft, upperRight), std::fmin(lowerRight, lowerLeft));
        if (lowerLeft == nearest) // the last of the four first
            return PlanePoint{box.MinX + inset, box.MinY + inset};
        if (lowerRight == nearest)
            return PlanePoint{box.MaxX - inset, box.MinY + inset};
        if (upperRight == nearest)
            return PlanePoint{box.MaxX - inset, box.MaxY - inset};
        return PlanePoint{box.MinX + inset, box.MaxY - inset};
    };
    const auto place = [&](int k, int loop) {
        const PlanePoint own = Spot(Nth(c, k));
        const double inset = loop * pitch;
        if (Nth(c, k).Kind > 0) {
            const int j = k == n ? first + 1 : k + 2;
            if (IsArc(c, j, first) && Distance(Spot(Nth(c, j - 1)), own) <= double(Run.RouteTolerance) &&
                alive(j, loop))
                return Polar(Middle(Nth(c, j - 1)), radius(j) - inset, double(Nth(c, j).Aux1));
        } else {
            const int j = k == first ? n : k - 1;
            if (IsArc(c, j, first) && Distance(Spot(Nth(c, j)), own) <= double(Run.RouteTolerance) &&
                alive(j, loop))
                return Polar(Middle(Nth(c, j - 1)), radius(j) - inset, double(Nth(c, j).Aux2));
        }
        return corner(k, inset);
    };
    const double shorter = w < h ? w : h;
    int loop = 0;
    while (true) {
        const double inset = loop * pitch;
        int k = n;
        while (k >= first) {
            const RouteSegment ck = Nth(c, k);
            if (IsArc(c, k, first)) {
                const PlanePoint o = Middle(Nth(c, k - 1));
                const Single a1 = ck.Aux1, a2 = ck.Aux2;
                if (alive(k, loop)) {
                    add(Nth(c, k - 1), -3, Polar(o, radius(k) - inset, double(a2)), Nth(c, k - 1).Aux1,
                        Nth(c, k - 1).Aux2, 0);
                    add(ck, 3, Polar(o, radius(k) - inset, double(a1)), a2, a1, ck.Dir == 0 ? -1 : 0);
                } else {
                    add(ck, -1, corner(k, inset), 0, 0, 0);
                    add(Nth(c, k - 1), 1, corner(k - 1, inset), 0, 0, 0);
                }
                k = k - 2;
            } else {
                const int kind = std::abs(ck.Kind);
                const int size = kind == 1 || kind == 2 || kind == 3 ? 1 : 5;
                const bool opens = ck.Kind > 0 && (k == n || Nth(c, k + 1).Kind < 0);
                add(ck, static_cast<Int>(opens ? -size : size), place(k, loop), 0, 0, 0);
                k = k - 1;
            }
        }
        if ((reached[1] && reached[2]) || (loop + 1) * pitch > shorter / 2 + pitch / 2)
            break;
        ++loop;
    }
    RouteSegment mark = c1;
    const PlanePoint p = Polar(d[lastEnd], pitch, Bearing(d[lastEnd], Spot(c1)));
    mark.X = ToSingle(p.X);
    mark.Y = ToSingle(p.Y);
    made.push_back(mark);
    made.push_back(c2);
    for (RouteSegment& r : made) {
        r.OscZ = 0;
        if (r.Dir == -8)
            r.Dir = 0;
        r.Comp = std::string(clockwise ? "G41" : "G42") + std::string(Mid(r.Comp.Padded(), 4));
    }
    made.front().Dir = -8;
    TellNarrow(told, c1, shorter, shorter - 2 * (loop * pitch));
    std::vector<double> corners;
    for (int k = first; k <= n; ++k)
        if (IsArc(c, k, first))
            corners.push_back(radius(k));
    while (corners.size() < 4)
        corners.push_back(0);
    TellOfLoops(told, c1, box, made[0], made[1], clockwise, pitch, loop + 1, corners);
    return true;
}

// Starts of the chains that have become pockets, moved along while the list grows.
using Starts = std::vector<int>;

inline void Rectangles(Records& list, Starts& pockets, const Ends& drawn, Lines& told)
{
    int i = 1;
    while (i <= Highest(list)) {
        if (!(Nth(list, i).Kind == -4 && Marked(Nth(list, i).OscZ, Nth(list, i).Pass))) {
            ++i;
            continue;
        }
        if (Nth(list, i).Dir != -8) {
            int h = i;
            while (h > 1 && Nth(list, h).Dir != -8)
                --h;
            const int e = ChainEnd(list, i);
            Nth(list, h).Dir = 0;
            Records turned;
            for (int j = i; j <= e; ++j)
                turned.push_back(Nth(list, j));
            for (int j = h; j <= i - 1; ++j)
                turned.push_back(Nth(list, j));
            for (int j = h; j <= e; ++j)
                Nth(list, j) = turned[static_cast<std::size_t>(j - h)];
            Nth(list, h).Dir = -8;
            i = h;
        }
        const int e = ChainEnd(list, i);
        const int n = e - i + 1;
        Records contour{RouteSegment{}}, made;
        for (int j = i; j <= e; ++j)
            contour.push_back(Nth(list, j));
        if (n <= 5) {
            const std::string open = FaultFrom(drawn, list, i + 2, e);
            Tell(told, Nth(list, i).Pass, Nth(list, i).X, Nth(list, i).Y, "is not cleared" + open);
            i = e + 1;
        } else if (!Rectangle(contour, made, drawn, told)) {
            i = e + 1;
        } else {
            list.erase(list.begin() + i, list.begin() + e + 1);
            list.insert(list.begin() + i, made.begin(), made.end());
            if (!made.empty())
                pockets.push_back(i);
            i += static_cast<int>(made.size());
        }
    }
}

// Both arcs on one circle, one sense, each beginning where the other ends.
inline bool OneCircle(Records& list, int i)
{
    const double tol = Near();
    const RouteSegment &a = Nth(list, i), &b = Nth(list, i + 1), &c = Nth(list, i + 2), &e = Nth(list, i + 3);
    const double ra = Distance(Middle(a), Spot(a)), rc = Distance(Middle(c), Spot(c));
    if (Distance(Middle(a), Middle(c)) > tol || std::fabs(ra - rc) > tol)
        return false;
    if ((b.Dir == 0) != (e.Dir == 0) || Distance(Spot(a), Spot(b)) <= tol)
        return false;
    return Distance(Spot(b), Spot(c)) <= tol && Distance(Spot(e), Spot(a)) <= tol;
}

inline double Opposite(double angle)
{
    return angle + 180 >= 360 ? angle + 180 - 360 : angle + 180;
}

// Returns the number of records put in front of the outline; 0 when it stays as it is.
inline int RoutePair(Records& list, int i, const Ends& drawn, Lines& told)
{
    const RouteSegment c1 = Nth(list, i), c2 = Nth(list, i + 1);
    if (!OneCircle(list, i)) {
        const std::string open = OpenAt(drawn, c1, Nth(list, i + 3));
        Tell(told, c1.Pass, c1.X, c1.Y,
             "is not cleared" + (open.empty() ? ", its two arcs are no circle" : open));
        return 0;
    }
    const double pitch = PitchOf(c1.OscZ, c1.Comp);
    if (pitch <= 0) {
        told.push_back("Excavation Pitch not specified! (Circle)");
        Tell(told, c1.Pass, c1.X, c1.Y, "is not cleared");
        return 0;
    }
    if (NoRoom(told, c1, 2 * Distance(Middle(c1), Spot(c1)))) {
        list.erase(list.begin() + i, list.begin() + i + 4);
        return -4;
    }
    TellGap(told, c1, Nth(list, i + 1), Nth(list, i + 2));
    TellGap(told, c1, Nth(list, i + 3), c1);
    const PlanePoint o = Middle(c1);
    double r = Distance(o, Spot(c1));
    const double whole = r, a0 = Bearing(o, Spot(c1));
    const bool ccw = c2.Dir != 0;
    Nth(list, i).Dir = 0;
    int s = -1;
    double off = 0;
    Records spiral;
    do {
        const double a = s == 1 ? Opposite(Opposite(a0)) : Opposite(a0);
        RouteSegment p = c1, q = c2;
        PlanePoint at = Polar(o, r, a);
        p.Kind = -3;
        p.X = ToSingle(at.X);
        p.Y = ToSingle(at.Y);
        at = Polar(o, off, Opposite(a));
        p.Aux1 = ToSingle(at.X);
        p.Aux2 = ToSingle(at.Y);
        p.Dir = 0;
        at = Polar(o, r, Opposite(a));
        q.Kind = 3;
        q.X = ToSingle(at.X);
        q.Y = ToSingle(at.Y);
        q.Aux1 = ToSingle(a);
        q.Aux2 = ToSingle(Opposite(a));
        q.Dir = ccw ? -1 : 0;
        spiral.insert(spiral.begin(), {p, q});
        r = r - pitch / 2;
        s = -s;
        off = pitch / 4;
    } while (!(r < pitch / 2));
    spiral.front().Dir = -8;
    const RouteSegment inner = spiral.front();
    TellNarrow(told, c1, 2 * whole, 2 * Distance(Middle(inner), Spot(inner)));
    TellWood(told, c1, whole, pitch);
    list.insert(list.begin() + i, spiral.begin(), spiral.end());
    const int count = static_cast<int>(spiral.size());
    for (int j = i; j < i + count + 4; ++j) {
        Nth(list, j).OscZ = 0;
        Nth(list, j).Comp =
            std::string(ccw ? "G41" : "G42") + std::string(Mid(Nth(list, j).Comp.Padded(), 4));
    }
    return count;
}

// The circles among the routes; a pocket of no known form is told here too.
inline void RoutePairs(Records& list, Starts& pockets, const Ends& drawn, Lines& told)
{
    int i = 1;
    while (i <= Highest(list)) {
        int e = ChainEnd(list, i);
        bool marked = false, isPocket = false;
        for (int j = i; j <= e; ++j)
            marked = marked || Marked(Nth(list, j).OscZ, Nth(list, j).Pass);
        for (const int start : pockets)
            isPocket = isPocket || start == i;
        const RouteSegment& c1 = Nth(list, i);
        const bool isMarked = Marked(c1.OscZ, c1.Pass);
        if (e - i + 1 == 4 && c1.Kind == -3 && Nth(list, i + 1).Kind == 3 && Nth(list, i + 2).Kind == -3 &&
            Nth(list, i + 3).Kind == 3 && c1.Dir == -8 && isMarked) {
            const int grown = RoutePair(list, i, drawn, told);
            for (int& start : pockets)
                start += start > i ? grown : 0;
            if (grown > 0)
                pockets.push_back(i);
            e += grown;
        } else if (marked && !isPocket && !(c1.Kind == -4 && isMarked)) {
            const std::string open = FaultFrom(drawn, list, i, e);
            if (!IsRestOfAnother(drawn, c1, Nth(list, e)))
                Tell(told, c1.Pass, c1.X, c1.Y,
                     "is not cleared" + (open.empty() ? ", no start mark meets its outline" : open));
        }
        i = e + 1;
    }
}

inline void ListCircles(Records& list, Starts& made, std::vector<RouteCircle>& circles, Lines& told)
{
    for (RouteCircle& circle : circles) {
        if (circle.Pass <= 0 || circle.Used != 0 || !Marked(circle.OscZ, circle.Pass))
            continue;
        const double pitch = PitchOf(circle.OscZ, circle.Comp);
        if (pitch <= 0) {
            told.push_back("Excavation Pitch not specified! (Circle)");
            Tell(told, circle.Pass, circle.X, circle.Y, "is not cleared");
            continue;
        }
        if (circle.Radius <= 0) { // nothing to clear, nothing to cut
            Tell(told, circle.Pass, circle.X, circle.Y, "is not cleared");
            circle.Used = -1;
            circle.Pass = 0;
            continue;
        }
        RouteSegment centre;
        centre.Pass = circle.Pass;
        centre.X = circle.X;
        centre.Y = circle.Y;
        centre.Comp = circle.Comp;
        if (NoRoom(told, centre, 2 * double(circle.Radius))) {
            circle.Used = -1;
            circle.Pass = 0;
            continue;
        }
        RouteSegment base;
        base.Pass = circle.Pass;
        base.Z = circle.Z;
        base.Diameter = circle.Diameter;
        base.Group = circle.Group;
        base.ToolNo = circle.ToolNo;
        base.Tool = circle.Tool.Trimmed();
        base.Speed = circle.Speed;
        base.Feed = circle.Feed;
        base.FeedDown = circle.FeedDown;
        base.FeedRapid = circle.FeedRapid;
        base.LeadIn = circle.LeadIn;
        base.RampOut = circle.RampOut;
        base.RampIn = circle.RampIn;
        base.Comp = "G42" + std::string(Mid(circle.Comp.Padded(), 4));
        base.Sequence = circle.Sequence;
        base.MCode = circle.MCode;
        base.Side = circle.Side;
        base.ExtraSlot = circle.ExtraSlot;
        const double x = circle.X, y = circle.Y, whole = circle.Radius;
        const std::size_t veryFirst = list.size();
        const auto add = [&](Int kind, double px, double py, double aux1, double aux2) {
            RouteSegment r = base;
            r.Kind = kind;
            r.X = ToSingle(px);
            r.Y = ToSingle(py);
            r.Aux1 = ToSingle(aux1);
            r.Aux2 = ToSingle(aux2);
            list.push_back(r);
        };
        double r = pitch / 2;
        int s = -1;
        double start = 270, end = 90;
        while (r <= whole) {
            const double next = r + pitch / 2 < whole ? r + pitch / 2 : whole;
            add(-3, x, y + s * r, x, y - s * (next - r) / 2);
            add(3, x, y - s * r, start, end);
            s = -s;
            std::swap(start, end);
            r = r + pitch / 2;
        }
        add(-3, x, y + s * whole, x, y);
        add(3, x, y + s * whole, start, start);
        add(-3, x, y + s * whole, x, y);
        const PlanePoint over = Polar({x, y}, whole, start - 35);
        add(3, over.X, over.Y, start, NormalizeAngle(start - 35));
        list[veryFirst].Dir = -8;
        made.push_back(static_cast<int>(veryFirst));
        RouteSegment at = base;
        at.X = circle.X;
        at.Y = circle.Y;
        TellNarrow(told, at, 2 * whole, 2 * Distance(Spot(list[veryFirst]), Middle(list[veryFirst])));
        TellWood(told, at, whole, pitch);
        circle.Used = -1;
        circle.Pass = 0;
    }
}

// The pockets are taken out one after the other, each the first of the lowest tool that is left, and
// put in front of the first route that is none.
inline void InFront(Records& list, const Starts& pockets, const Starts& circles)
{
    struct Piece {
        Records Of;
        bool IsPocket, Moves;
    };
    std::vector<Piece> pieces;
    for (int i = 1; i <= Highest(list);) {
        const int e = ChainEnd(list, i);
        Piece piece{{list.begin() + i, list.begin() + e + 1}, false, false};
        for (const int start : pockets)
            if (start == i) {
                piece.IsPocket = true;
                piece.Moves = Run.MaxSequence == 0;
            }
        for (const int start : circles)
            if (start == i)
                piece.IsPocket = piece.Moves = true;
        pieces.push_back(piece);
        i = e + 1;
    }
    std::vector<Piece> moved;
    while (true) {
        std::size_t best = pieces.size();
        for (std::size_t i = 0; i < pieces.size(); ++i)
            if (pieces[i].Moves &&
                (best == pieces.size() || pieces[i].Of.front().ToolNo < pieces[best].Of.front().ToolNo))
                best = i;
        if (best == pieces.size())
            break;
        moved.push_back(pieces[best]);
        pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(best));
    }
    std::size_t at = 0;
    while (at < pieces.size() && pieces[at].IsPocket)
        ++at;
    pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(at), moved.begin(), moved.end());
    list.resize(1);
    for (Piece& piece : pieces) {
        if (list.size() > 1)
            piece.Of.front().Dir = -8;
        list.insert(list.end(), piece.Of.begin(), piece.Of.end());
    }
}

inline Lines ExcavatePockets(Records& list, std::vector<RouteCircle>& circles)
{
    Lines told;
    Starts pockets, fromList;
    const Ends drawn = EndsOf(list);
    Rectangles(list, pockets, drawn, told);
    RoutePairs(list, pockets, drawn, told);
    ListCircles(list, fromList, circles, told);
    InFront(list, pockets, fromList);
    return told;
}

} // namespace kv::plain_pockets

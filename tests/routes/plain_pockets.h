// The pockets as the rules are told, line by line: the list is worked in place, records are counted
// from 1, and a chain's ends are looked for each time. The pass is held against it on random outlines.
#pragma once

#include <cmath>
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
inline double PitchOf(Single oscZ, const Text<10>& comp)
{
    double pitch = std::fabs(double(oscZ)) - 1;
    if (pitch == 0)
        pitch = 2 * Val(Mid(comp.Padded(), 6));
    return pitch;
}
inline std::string LayerText(Long pass)
{
    return std::string(Trim(Run.LayerTable.at(static_cast<std::size_t>(pass) + 3)));
}
inline void Tell(Lines& lines, Long pass)
{
    lines.push_back("Layer " + LayerText(pass) + ": the pocket is not cleared");
}

// One contour, c from 1; false when it stays as it is.
inline bool Rectangle(Records c, Records& made, Lines& lines)
{
    const int n = Highest(c);
    const int first = Nth(c, 3).Kind < 0 ? 3 : 1;
    double minX = Nth(c, first).X, maxX = minX, minY = Nth(c, first).Y, maxY = minY;
    for (int k = first; k <= n; ++k) {
        minX = std::fmin(minX, double(Nth(c, k).X));
        maxX = std::fmax(maxX, double(Nth(c, k).X));
        minY = std::fmin(minY, double(Nth(c, k).Y));
        maxY = std::fmax(maxY, double(Nth(c, k).Y));
    }
    const double w = maxX - minX, h = maxY - minY;
    if (w <= 0 || h <= 0)
        return false;
    const double pitch = PitchOf(Nth(c, 1).OscZ, Nth(c, 1).Comp);
    if (pitch <= 0) {
        lines.push_back("Excavation Pitch not specified! (Rectangle)");
        return false;
    }
    const double midX = (minX + maxX) / 2, midY = (minY + maxY) / 2;
    PlanePoint d[3];
    if (h < w) {
        d[1] = {minX + (w / 2) * (h / w), midY};
        d[2] = {maxX - (w / 2) * (h / w), midY};
    } else {
        d[1] = {midX, minY + (h / 2) * (w / h)};
        d[2] = {midX, maxY - (h / 2) * (w / h)};
    }
    const double b1 = Bearing(d[1], Spot(Nth(c, 1)));
    const double b2 = Bearing(d[1], Spot(Nth(c, 2)));
    bool clockwise = false;
    if (b1 > b2)
        clockwise = 360 - b1 + b2 > 180;
    else
        clockwise = !(360 - b2 + b1 > 180);

    bool reached[3] = {};
    int lastEnd = 1;
    const auto add = [&](RouteSegment r, PlanePoint p) {
        if (r.Kind < 0) {
            int lower = 0;
            for (int m = 1; m <= 2; ++m)
                if (Distance(p, d[m]) < pitch) {
                    reached[m] = true;
                    lastEnd = m;
                    if (lower == 0)
                        lower = m;
                }
            if (lower > 0)
                p = Polar(d[lower], pitch, Bearing(d[lower], p));
        }
        r.X = ToSingle(p.X);
        r.Y = ToSingle(p.Y);
        made.push_back(r);
    };
    const auto isArc = [&](int k) {
        return k > first && k <= n && Nth(c, k).Kind == 3 && Nth(c, k - 1).Kind == -3;
    };
    const auto centre = [&](int k) {
        return PlanePoint{double(Nth(c, k - 1).Aux1), double(Nth(c, k - 1).Aux2)};
    };
    const auto radius = [&](int k) { return Distance(Spot(Nth(c, k - 1)), centre(k)); };
    const auto place = [&](int k, double inset) {
        const PlanePoint own = Spot(Nth(c, k));
        if (Nth(c, k).Kind > 0) {
            const int j = k == n ? first + 1 : k + 2;
            if (isArc(j) && Distance(Spot(Nth(c, j - 1)), own) <= double(Run.RouteTolerance)) {
                const double rest = radius(j) - inset;
                if (rest > pitch || inset == 0)
                    return Polar(centre(j), rest, double(Nth(c, j).Aux1));
            }
        } else {
            const int j = k == first ? n : k - 1;
            if (isArc(j) && Distance(Spot(Nth(c, j)), own) <= double(Run.RouteTolerance)) {
                const double rest = radius(j) - inset;
                if (rest > pitch || inset == 0)
                    return Polar(centre(j), rest, double(Nth(c, j).Aux2));
            }
        }
        const double upperLeft = Distance(own, {minX, maxY});
        const double upperRight = Distance(own, {maxX, maxY});
        const double lowerRight = Distance(own, {maxX, minY});
        const double lowerLeft = Distance(own, {minX, minY});
        double nearest = upperLeft;
        PlanePoint at{minX + inset, maxY - inset};
        if (upperRight <= nearest) {
            nearest = upperRight;
            at = {maxX - inset, maxY - inset};
        }
        if (lowerRight <= nearest) {
            nearest = lowerRight;
            at = {maxX - inset, minY + inset};
        }
        if (lowerLeft <= nearest)
            at = {minX + inset, minY + inset};
        return at;
    };
    for (int loop = 0;; ++loop) {
        const double inset = loop * pitch;
        if (inset > w + h) {
            lines.push_back("Layer " + LayerText(Nth(c, 1).Pass) +
                            ": the pocket's way leaves its outline, which is no rectangle of lines");
            break;
        }
        int k = n;
        while (k >= first) {
            if (isArc(k)) {
                const double rest = radius(k) - inset;
                const Single a1 = Nth(c, k).Aux1, a2 = Nth(c, k).Aux2;
                RouteSegment r1, r2;
                if (rest > pitch) {
                    r1 = Nth(c, k - 1);
                    r1.Kind = -3;
                    r1.Dir = 0;
                    r2 = Nth(c, k);
                    r2.Kind = 3;
                    r2.Aux1 = a2;
                    r2.Aux2 = a1;
                    r2.Dir = Nth(c, k).Dir == 0 ? -1 : 0;
                    add(r1, Polar(centre(k), rest, double(a2)));
                    add(r2, Polar(centre(k), rest, double(a1)));
                } else {
                    const double q = radius(k) < pitch ? radius(k) : pitch;
                    r1 = Nth(c, k);
                    r1.Kind = -1;
                    r2 = Nth(c, k - 1);
                    r2.Kind = 1;
                    r1.Aux1 = r1.Aux2 = r2.Aux1 = r2.Aux2 = 0;
                    r1.Dir = r2.Dir = 0;
                    add(r1, Polar(centre(k), q, double(a2)));
                    add(r2, Polar(centre(k), q, double(a1)));
                }
                k = k - 2;
            } else {
                const int kind = std::abs(Nth(c, k).Kind);
                const int size = kind == 1 || kind == 2 || kind == 3 ? 1 : 5;
                const bool opens = Nth(c, k).Kind > 0 && (k == n || Nth(c, k + 1).Kind < 0);
                RouteSegment r = Nth(c, k);
                r.Kind = static_cast<Int>(opens ? -size : size);
                r.Aux1 = r.Aux2 = 0;
                r.Dir = 0;
                add(r, place(k, inset));
                k = k - 1;
            }
        }
        if (reached[1] && reached[2])
            break;
    }
    RouteSegment mark = Nth(c, 1);
    const PlanePoint p = Polar(d[lastEnd], pitch, Bearing(d[lastEnd], Spot(mark)));
    mark.X = ToSingle(p.X);
    mark.Y = ToSingle(p.Y);
    made.push_back(mark);
    made.push_back(Nth(c, 2));
    for (RouteSegment& r : made) {
        r.OscZ = 0;
        if (r.Dir == -8)
            r.Dir = 0;
        r.Comp = std::string(clockwise ? "G41" : "G42") + std::string(Mid(r.Comp.Padded(), 4));
    }
    made.front().Dir = -8;
    return true;
}

inline void Rectangles(Records& list, Lines& lines)
{
    int i = 1;
    while (i <= Highest(list)) {
        if (!(Nth(list, i).Kind == -4 && Nth(list, i).OscZ < 0)) {
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
        Records contour{RouteSegment{}}, made;
        for (int j = i; j <= e; ++j)
            contour.push_back(Nth(list, j));
        if (e - i + 1 <= 5 || !Rectangle(contour, made, lines)) {
            Tell(lines, Nth(list, i).Pass);
            i = e + 1;
            continue;
        }
        list.erase(list.begin() + i, list.begin() + e + 1);
        list.insert(list.begin() + i, made.begin(), made.end());
        i += static_cast<int>(made.size());
    }
}

inline bool RoutePair(Records& list, int i, Lines& lines)
{
    const double pitch = PitchOf(Nth(list, i).OscZ, Nth(list, i).Comp);
    if (pitch <= 0) {
        lines.push_back("Excavation Pitch not specified! (Circle)");
        return false;
    }
    const RouteSegment c1 = Nth(list, i), c2 = Nth(list, i + 1);
    const double cx = c1.X, cy = c1.Aux2;
    double r = std::fabs(cy - double(c1.Y));
    if (r == 0)
        return false;
    Nth(list, i).Dir = 0;
    Nth(list, i).Kind = -3;
    const Int sense = c1.Comp.Padded().substr(2, 1) == "1" ? -1 : 0;
    int s = c1.Y < c1.Aux2 ? 1 : -1;
    double off = 0;
    Records spiral;
    do {
        RouteSegment p = c1, q = c2;
        p.Kind = -3;
        p.X = ToSingle(cx);
        p.Y = ToSingle(cy + s * r);
        p.Aux1 = ToSingle(cx);
        p.Aux2 = ToSingle(cy - off * s);
        p.Dir = 0;
        q.Kind = 3;
        q.X = ToSingle(cx);
        q.Y = ToSingle(cy - s * r);
        q.Aux1 = s == 1 ? 90.0F : 270.0F;
        q.Aux2 = s == 1 ? 270.0F : 90.0F;
        q.Dir = sense;
        spiral.insert(spiral.begin(), {p, q});
        r = r - pitch / 2;
        s = -s;
        off = pitch / 4;
    } while (!(r < pitch));
    spiral.front().Dir = -8;
    list.insert(list.begin() + i, spiral.begin(), spiral.end());
    const int behind = i + static_cast<int>(spiral.size()) + 4;
    for (int j = i; j < behind; ++j)
        Nth(list, j).OscZ = 0;
    return true;
}

// The circles among the routes; a pocket of no known form is told here too.
inline void RoutePairs(Records& list, Lines& lines)
{
    int i = 1;
    while (i <= Highest(list)) {
        const int e = ChainEnd(list, i);
        bool marked = false;
        for (int j = i; j <= e; ++j)
            marked = marked || Nth(list, j).OscZ < 0;
        const bool four = e - i + 1 == 4 && Nth(list, i).Kind == -3 && Nth(list, i + 1).Kind == 3 &&
                          Nth(list, i + 2).Kind == -3 && Nth(list, i + 3).Kind == 3 &&
                          Nth(list, i).Dir == -8 && Nth(list, i).OscZ < 0;
        if (four && RoutePair(list, i, lines)) {
            i = ChainEnd(list, i) + 1;
            continue;
        }
        const bool told = Nth(list, i).Kind == -4 && Nth(list, i).OscZ < 0;
        const bool pocketLayer = LayerText(Nth(list, i).Pass).find("EXCAV") != std::string::npos;
        if (marked && !told && pocketLayer)
            Tell(lines, Nth(list, i).Pass);
        i = e + 1;
    }
}

inline void ListCircles(Records& list, std::vector<RouteCircle>& circles, Lines& lines)
{
    for (RouteCircle& circle : circles) {
        if (!(circle.OscZ < 0) || circle.Pass <= 0 || circle.Used != 0)
            continue;
        const double pitch = PitchOf(circle.OscZ, circle.Comp);
        if (pitch <= 0) {
            lines.push_back("Excavation Pitch not specified! (Circle)");
            Tell(lines, circle.Pass);
            continue;
        }
        if (circle.Radius <= 0) { // nothing to clear, nothing to cut
            Tell(lines, circle.Pass);
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
        circle.Used = -1;
        circle.Pass = 0;
    }
}

inline Lines ExcavatePockets(Records& list, std::vector<RouteCircle>& circles)
{
    Lines lines;
    Rectangles(list, lines);
    RoutePairs(list, lines);
    ListCircles(list, circles, lines);
    return lines;
}

} // namespace kv::plain_pockets

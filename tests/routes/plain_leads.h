// The lead rules as they are told, walked from the list's end to its head and inserting in place; each
// case is written out. Slow on long lists. The pass is held against it on random routes. `r` holds the
// records from 1 on.
#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/angles.h"
#include "state/run.h"

namespace kv::plain {

using List = std::vector<RouteSegment>;

struct Ends {
    char Kind = 'l'; // 'l' line, 'a' arc, 'b' bulge
    double Dir = 0, Radius = 0, CX = 0, CY = 0, Angle = 0, Arc = 0;
    int Sense = 0;
};

inline double Gap(const RouteSegment& a, const RouteSegment& b)
{
    return Distance({a.X, a.Y}, {b.X, b.Y});
}

inline Ends ElementOf(const RouteSegment& p, const RouteSegment& q, bool first)
{
    Ends e;
    if (p.Kind == -3 && q.Kind == 3) {
        e.Kind = 'a';
        e.CX = p.Aux1;
        e.CY = p.Aux2;
        e.Sense = q.Dir == 0 ? -1 : 1;
        const double seen = first ? q.Aux1 : q.Aux2;
        e.Dir = Turn360(e.Sense == 1 ? seen + 90 : seen - 90);
        const RouteSegment& at = first ? p : q;
        e.Radius = Distance({e.CX, e.CY}, {at.X, at.Y});
        e.Angle = q.Aux1;
        return e;
    }
    const double chord = Bearing({p.X, p.Y}, {q.X, q.Y});
    const bool vertices = std::abs(p.Kind) == 5 && std::abs(q.Kind) == 5;
    if (vertices && p.Aux2 != 0 && !(p.X == q.X && p.Y == q.Y)) {
        e.Kind = 'b';
        const double quarter = std::atan(double(p.Aux2));
        const double turned = 4 * quarter * 180 / double(Run.Pi);
        e.Radius = std::fabs(Gap(p, q) / 2 / std::sin(2 * quarter));
        e.Sense = p.Aux2 < 0 ? -1 : 1;
        const double enters = Turn360(chord - turned / 2), leaves = Turn360(chord + turned / 2);
        e.Dir = first ? enters : leaves;
        const PlanePoint centre = Polar({p.X, p.Y}, e.Radius, enters + 90 * e.Sense);
        e.CX = centre.X;
        e.CY = centre.Y;
        e.Angle = Turn360(enters - 90 * e.Sense);
        e.Arc = std::fabs(4 * quarter) * e.Radius;
        return e;
    }
    e.Dir = chord;
    e.Radius = Gap(p, q);
    return e;
}

inline void Put(RouteSegment& s, PlanePoint p, Single z)
{
    s.X = Single(p.X);
    s.Y = Single(p.Y);
    if (z != 0)
        s.Z = z;
}

inline void Insert(List& r, std::size_t at, const RouteSegment& s)
{
    const RouteSegment kept = s;
    r.insert(r.begin() + long(at), kept);
}

inline void StartLine(List& r, std::size_t s, PlanePoint p, Single z)
{
    Insert(r, s, r[s]); // N1; S is at s + 1 from here
    r[s].Kind = -1;
    r[s].Dir = -8;
    r[s].Aux1 = r[s].Aux2 = 0;
    Put(r[s], p, z);
    r[s + 1].Dir = 0;
    if (r[s + 1].Kind != -3) {
        r[s + 1].Kind = Int(std::abs(r[s + 1].Kind));
        return;
    }
    Insert(r, s + 1, r[s + 1]);
    r[s + 1].Kind = 1;
    r[s + 1].Aux1 = r[s + 1].Aux2 = 0;
}

inline void StartArc(List& r, std::size_t s, PlanePoint c, double a0, double a1, bool ccw, PlanePoint p,
                     Single z)
{
    Insert(r, s, r[s]);
    Insert(r, s, r[s]); // N1, N2, S
    r[s].Kind = -3;
    r[s].Dir = -8;
    r[s].Aux1 = Single(c.X);
    r[s].Aux2 = Single(c.Y);
    Put(r[s], p, z);
    r[s + 1].Kind = 3;
    r[s + 1].Dir = ccw ? -1 : 0;
    r[s + 1].Aux1 = Single(Turn360(a0));
    r[s + 1].Aux2 = Single(Turn360(a1));
    r[s + 2].Dir = 0;
}

inline void EndLine(List& r, std::size_t e, char lastElement, PlanePoint p, Single z)
{
    const RouteSegment old = r[e];
    if (old.Kind == 3) {
        Insert(r, ++e, old);
        r[e].Kind = -1;
        r[e].Dir = 0;
        r[e].Aux1 = r[e].Aux2 = 0;
    } else {
        r[e].Aux2 = 0;
        if (std::abs(old.Kind) == 5)
            r[e].Aux1 = 0;
    }
    Insert(r, ++e, old);
    r[e].Kind = old.Kind == 5 && lastElement == 'b' ? 5 : 1;
    r[e].Dir = 0;
    r[e].Aux1 = r[e].Aux2 = 0;
    Put(r[e], p, z);
}

inline void EndArc(List& r, std::size_t e, PlanePoint c, double a0, double a1, bool ccw, PlanePoint p,
                   Single z)
{
    Insert(r, e + 1, r[e]);
    Insert(r, e + 1, r[e]);
    r[e + 1].Kind = -3;
    r[e + 1].Dir = 0;
    r[e + 1].Aux1 = Single(c.X);
    r[e + 1].Aux2 = Single(c.Y);
    r[e + 2].Kind = 3;
    r[e + 2].Aux1 = Single(Turn360(a0));
    r[e + 2].Aux2 = Single(Turn360(a1));
    r[e + 2].Dir = ccw ? -1 : 0;
    Put(r[e + 2], p, z);
}

inline void EndBulge(List& r, std::size_t e, double b, PlanePoint p, Single z)
{
    const RouteSegment old = r[e];
    if (old.Kind == 3) {
        Insert(r, ++e, old);
        r[e].Kind = -5;
        r[e].Dir = 0;
    }
    r[e].Aux1 = -1;
    r[e].Aux2 = Single(b);
    Insert(r, ++e, old);
    r[e].Kind = 5;
    r[e].Dir = 0;
    r[e].Aux1 = r[e].Aux2 = 0;
    Put(r[e], p, z);
}

struct Values {
    Single L = 0, Zo = 0, Zi = 0;
};

inline Values Effective(const RouteSegment& s)
{
    Values v;
    v.L = s.LeadIn;
    if ((v.L == 0 && Run.LeadsOn) || v.L == 999)
        v.L = Run.LeadLength;
    v.Zo = -s.RampOut;
    if ((v.Zo == 0 && Run.RampOutOn) || v.Zo == -999)
        v.Zo = -Run.LeadRampHeight;
    v.Zi = -s.RampIn;
    if ((v.Zi == 0 && Run.RampInOn) || v.Zi == -999)
        v.Zi = -Run.LeadRampHeight;
    return v;
}

struct Limits {
    double MinX, MaxX, MinY, MaxY;
};

inline Limits SideLimitsOf(const RouteSegment& s)
{
    const std::size_t side = s.Side == 0 ? 5 : std::size_t(s.Side);
    const double ox = side == 5 ? Run.OriginX : 0, oy = side == 5 ? Run.OriginY : 0;
    return {Run.SideMinX[side] - ox, Run.SideMaxX[side] - ox, Run.SideMinY[side] - oy,
            Run.SideMaxY[side] - oy};
}

inline bool StepOne(List& r, std::size_t s, std::size_t e, const Values& v)
{
    const double tol = Run.RouteTolerance, L = v.L;
    const RouteSegment S = r[s], E = r[e];
    const std::string_view comp = S.Comp.Trimmed();
    const int c = comp.substr(0, 3) == "G41" ? -1 : comp.substr(0, 3) == "G42" ? 1 : 0;
    if (L == 0 || c == 0 || std::fabs(double(S.X) - E.X) >= tol || std::fabs(double(S.Y) - E.Y) >= tol)
        return false;
    const Limits m = SideLimitsOf(S);
    for (const RouteSegment& p : {S, E})
        if (std::fabs(p.X - m.MinX) < tol || std::fabs(p.X - m.MaxX) < tol || std::fabs(p.Y - m.MinY) < tol ||
            std::fabs(p.Y - m.MaxY) < tol)
            return false;
    const int side = -c;
    const PlanePoint ps{S.X, S.Y}, pe{E.X, E.Y};
    const Ends first = ElementOf(S, r[s + 1], true), last = ElementOf(r[e - 1], E, false);
    const double in = first.Dir, out = last.Dir, back = NormalizeAngle(out + 180);
    int t = in > out ? 1 : -1;
    const double lf = std::fabs(in - out);
    if (360 - in + out < lf)
        t = -1;
    if (360 - out + in < lf)
        t = 1;
    const bool closedCorner = t == -side || AngleBetween(in, out) < 0.01;
    double a = Gap(S, r[s + 1]);
    if (first.Kind == 'a' && a < tol)
        a = first.Radius;
    const double M = std::min(a, L);
    const double normalOut = out + 90 * side, normalIn = in + 90 * side;
    const double bisector = in + side * (AngleBetween(in, back) / 2);
    const auto isShort = [&](const Ends& x) {
        return x.Radius < L && !((x.Kind == 'a' || x.Kind == 'b') && x.Sense == -side);
    };

    if (v.Zo != 0 && first.Kind == 'a') {
        const double circ = 2 * double(Run.Pi) * first.Radius;
        const double turn = circ > L ? L / circ * 360 : 20;
        const double a1 = first.Angle + first.Sense * turn;
        EndArc(r, e, {first.CX, first.CY}, first.Angle, a1, first.Sense == 1,
               Polar({first.CX, first.CY}, first.Radius, a1), v.Zo);
    } else if (v.Zo != 0 && first.Kind == 'b') {
        const double turn = std::min(L, first.Arc) / first.Radius;
        EndBulge(r, e, first.Sense * std::tan(turn / 4),
                 Polar({first.CX, first.CY}, first.Radius,
                       first.Angle + first.Sense * turn * 180 / double(Run.Pi)),
                 v.Zo);
    } else if (v.Zo != 0) {
        EndLine(r, e, last.Kind, Polar(pe, M, in), v.Zo);
    } else if (!closedCorner) {
        EndLine(r, e, last.Kind, Polar(pe, L, bisector), 0);
    } else if (isShort(last)) {
        EndLine(r, e, last.Kind, Polar(pe, M, normalOut), 0);
    } else {
        const PlanePoint centre = Polar(pe, L, normalOut);
        const double a0 = normalOut + 180, a1 = a0 + 90 * side;
        EndArc(r, e, centre, a0, a1, side == 1, Polar(centre, L, a1), 0);
    }

    if (closedCorner && isShort(first)) {
        StartLine(r, s, Polar(ps, M, normalOut), v.Zi);
    } else if (!closedCorner && (first.Kind != 'a' || isShort(first))) {
        StartLine(r, s, Polar(ps, L, bisector), v.Zi);
    } else {
        const PlanePoint centre = Polar(ps, L, normalIn);
        const double a1 = normalIn + 180, a0 = a1 - 90 * side;
        StartArc(r, s, centre, a0, a1, side == 1, Polar(centre, L, a0), v.Zi);
    }
    return true;
}

// What one end gets: 'n' nothing, 's' a straight lead on Ext, 'q' a quarter arc (N, T).
struct BorderPlan {
    char What = 'n';
    double Ext = 0, N = 0, T = 0;
};

inline BorderPlan PlanAt(const RouteSegment& p, const RouteSegment& neighbour, const Ends& element,
                         double ext, bool finish, const Limits& m)
{
    const double tol = Run.RouteTolerance, none = -1;
    const double xout = std::fabs(p.X - m.MinX) < tol ? 180 : std::fabs(p.X - m.MaxX) < tol ? 0 : none;
    const double yout = std::fabs(p.Y - m.MinY) < tol ? 270 : std::fabs(p.Y - m.MaxY) < tol ? 90 : none;
    BorderPlan plan;
    plan.Ext = ext;
    const bool on =
        (xout != none && m.MinY <= p.Y && p.Y <= m.MaxY) || (yout != none && m.MinX <= p.X && p.X <= m.MaxX);
    if (!on)
        return plan;
    plan.What = 's';
    if ((xout != none && yout != none) || element.Kind == 'b')
        return plan;
    const double nu = xout != none ? xout : yout;
    if (element.Kind == 'a') {
        plan.What = 'q';
        plan.T = ext;
        const double w = AngleBetween(Turn360(ext + 90), nu);
        if (std::fabs(w - 90) < 0.01)
            plan.N = finish ? ext + 90 * element.Sense : ext - 90 * element.Sense;
        else
            plan.N = w < 90 ? Turn360(ext + 90) : Turn360(ext - 90);
        return plan;
    }
    const bool alongX = xout != none && std::fabs(double(neighbour.X) - p.X) < tol;
    const bool alongY = yout != none && std::fabs(double(neighbour.Y) - p.Y) < tol;
    if (!alongX && !alongY)
        return plan;
    const double edge = xout != none ? 90 : 0;
    plan.What = 'q';
    plan.N = nu;
    plan.T = AngleBetween(ext, edge) < 90 ? edge : edge + 180;
    return plan;
}

inline void StepTwo(List& r, std::size_t s, std::size_t e, const Values& v)
{
    const double L = v.L;
    if (L == 0)
        return;
    const RouteSegment S = r[s], E = r[e];
    const Limits m = SideLimitsOf(S);
    const Ends first = ElementOf(S, r[s + 1], true), last = ElementOf(r[e - 1], E, false);
    const BorderPlan in = PlanAt(S, r[s + 1], first, Turn360(first.Dir + 180), false, m);
    const BorderPlan out = PlanAt(E, r[e - 1], last, last.Dir, true, m);
    const PlanePoint ps{S.X, S.Y}, pe{E.X, E.Y};
    if (out.What == 's')
        EndLine(r, e, last.Kind, Polar(pe, L, out.Ext), 0);
    if (out.What == 'q') {
        const PlanePoint centre = Polar(pe, L, out.N);
        EndArc(r, e, centre, out.N + 180, out.T, Turn360(out.N - out.T) < 180, Polar(centre, L, out.T), 0);
    }
    if (in.What == 's')
        StartLine(r, s, Polar(ps, L, in.Ext), 0);
    if (in.What == 'q') {
        const PlanePoint centre = Polar(ps, L, in.N);
        StartArc(r, s, centre, in.T, in.N + 180, !(Turn360(in.N - in.T) < 180), Polar(centre, L, in.T), 0);
    }
}

inline void Prepare(List& r)
{
    for (std::size_t i = 1; i + 1 < r.size(); ++i)
        while (i + 1 < r.size() && r[i].Kind == -4 && r[i].Dir == -8 && std::abs(r[i + 1].Kind) == 4 &&
               r[i + 1].Dir != -8) {
            r.erase(r.begin() + long(i), r.begin() + long(i) + 2);
            if (i < r.size())
                r[i].Dir = -8;
        }
    for (std::size_t i = 1; i < r.size();) {
        if (r[i].Kind != 0) {
            ++i;
            continue;
        }
        const bool opened = r[i].Dir == -8;
        r.erase(r.begin() + long(i));
        if (opened && i < r.size())
            r[i].Dir = -8;
    }
}

inline void SynthesizeLeads(List& r)
{
    if (!((Run.LeadLength != 0 && Run.LeadsOn) || Run.AnyLeadCode))
        return;
    Prepare(r);
    std::size_t e = r.size() - 1;
    for (std::size_t i = r.size() - 1; i >= 1; --i) {
        if (r[i].Dir != -8)
            continue;
        if (e > i && std::abs(r[e].Kind) != 4) {
            const Values v = Effective(r[i]);
            if (!StepOne(r, i, e, v))
                StepTwo(r, i, e, v);
        }
        e = i - 1;
    }
}

} // namespace kv::plain

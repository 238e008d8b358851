// Chaining of the routes as the rules are told, record by record and without an index. Slow on purpose:
// the pass is held against it, bit for bit. Works on a copy of the lists; element 0 of each is blank.
// Reads Run's tolerance, panel and lead values, and Config.SPDA.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "geometry/angles.h"
#include "routes/plain_route_order.h"
#include "routes/route_runs.h"
#include "state/run.h"

namespace kv::plain {

struct Routes {
    std::vector<RouteSegment> Segments{1};
    std::vector<RouteCircle> Circles{1};
    Long MaxSequence = 0, MinSequence = 0;

    std::size_t Last() const { return Segments.size() - 1; }
};

// One path: its records First to Last, its directions at both ends.
struct Path {
    std::size_t First = 0, Last = 0;
    Single Start = 0, End = 0;
    Int PathKind = 0;
    bool Head = false, Used = false;
};

inline Single Turned(double angle)
{
    return Single(Turn360(angle));
}

inline double Between(const RouteSegment& a, double x, double y)
{
    const double dx = double(a.X) - x;
    const double dy = double(a.Y) - y;
    return std::sqrt(dx * dx + dy * dy);
}

// ---- Records of kind 0

inline void DropDead(Routes& routes)
{
    std::vector<RouteSegment> kept(1);
    for (std::size_t i = 1; i < routes.Segments.size(); ++i)
        if (routes.Segments[i].Kind != 0)
            kept.push_back(routes.Segments[i]);
    routes.Segments = kept;
}

// ---- Paths

inline std::vector<Path> ListPaths(std::vector<RouteSegment>& list)
{
    std::vector<Path> paths;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i].Kind >= 0)
            continue;
        if (i + 1 == list.size())
            break;
        Path path;
        path.First = i;
        path.Last = LastOfPath(list, i);
        path.PathKind = Int(-list[i].Kind);
        const auto bearing = [&list](std::size_t a, std::size_t b) {
            return Single(Bearing({list[a].X, list[a].Y}, {list[b].X, list[b].Y}));
        };
        if (path.PathKind == 2) {
            path.Start = path.First == path.Last ? 0 : bearing(path.First, path.First + 1);
            path.End = path.First == path.Last ? 0 : bearing(path.Last - 1, path.Last);
        } else if (path.PathKind == 3) {
            path.Start = Turned(double(list[path.Last].Aux1) - 90);
            path.End = Turned(double(list[path.Last].Aux2) - 90);
        } else {
            path.Start = path.End = bearing(path.First, path.Last);
            if (path.PathKind != 4)
                list[path.First].Aux1 = path.Start;
        }
        paths.push_back(path);
    }
    return paths;
}

// What a reversal exchanges: all but the kind, ParamA, ParamB and Flag.
inline void ExchangeRecords(RouteSegment& a, RouteSegment& b)
{
    const RouteSegment oldA = a, oldB = b;
    a = oldB;
    b = oldA;
    a.Kind = oldA.Kind;
    b.Kind = oldB.Kind;
    a.ParamA = oldA.ParamA;
    b.ParamA = oldB.ParamA;
    a.ParamB = oldA.ParamB;
    b.ParamB = oldB.ParamB;
    a.Flag = oldA.Flag;
    b.Flag = oldB.Flag;
}

inline void ExchangeHands(RouteSegment& record)
{
    std::string text(record.Comp.Padded());
    if (text.rfind("G41", 0) == 0)
        text[2] = '2';
    else if (text.rfind("G42", 0) == 0)
        text[2] = '1';
    record.Comp = text;
}

inline void Reverse(std::vector<RouteSegment>& list, Path& path)
{
    if (path.PathKind != 5)
        for (std::size_t i = path.First; i <= path.Last; ++i)
            ExchangeHands(list[i]);
    RouteSegment& first = list[path.First];
    RouteSegment& last = list[path.Last];
    if (path.PathKind == 1 || path.PathKind == 4) {
        ExchangeRecords(first, last);
        path.Start = Turned(double(path.Start) + 180);
        path.End = path.Start;
        first.Aux1 = path.Start;
        if (path.PathKind == 4)
            first.Aux2 = -1;
    }
    if (path.PathKind == 2) {
        for (std::size_t a = path.First, b = path.Last; a < b; ++a, --b)
            std::swap(list[a], list[b]);
        std::swap(first.Kind, last.Kind);
        const Single oldStart = path.Start;
        path.Start = Turned(double(path.End) + 180);
        path.End = Turned(double(oldStart) + 180);
    }
    if (path.PathKind == 3) {
        std::swap(last.Aux1, last.Aux2);
        std::swap(first.X, last.X);
        std::swap(first.Y, last.Y);
        last.Dir = Int(~last.Dir);
        path.Start = Turned(double(path.Start) + 180);
        path.End = Turned(double(path.End) + 180);
    }
}

// ---- Arcs out of circles

inline void SetTangents(const std::vector<RouteSegment>& list, Path& arc)
{
    const RouteSegment& end = list[arc.Last];
    const double side = end.Dir != 0 ? 90 : -90;
    arc.Start = Turned(double(end.Aux1) + side);
    arc.End = Turned(double(end.Aux2) + side);
}

// The pair of records of an arc of the circle that ends where it begins, at (x, y).
inline Path AddArc(Routes& routes, const RouteCircle& circle, Single x, Single y)
{
    RouteSegment start = SegmentOfCircle(circle);
    start.X = x;
    start.Y = y;
    RouteSegment end = start;
    start.Kind = -3;
    start.Aux1 = circle.X;
    start.Aux2 = circle.Y;
    end.Kind = 3;
    end.Aux1 = end.Aux2 = Single(Bearing({circle.X, circle.Y}, {x, y}));
    routes.Segments.push_back(start);
    routes.Segments.push_back(end);
    Path arc;
    arc.First = routes.Last() - 1;
    arc.Last = routes.Last();
    arc.PathKind = 3;
    arc.Used = true;
    return arc;
}

inline Path JoinCircle(Routes& routes, RouteCircle& circle, Single x, Single y, double arriving)
{
    Path arc = AddArc(routes, circle, x, y);
    RouteSegment& end = routes.Segments[arc.Last];
    const double bearing = end.Aux2;
    const double left = AngleBetween(Turn360(bearing + 90), Turn360(arriving));
    const double right = AngleBetween(Turn360(bearing - 90), Turn360(arriving));
    end.Dir = left < right ? True : False;
    circle.Pass = 0;
    circle.Used = True;
    SetTangents(routes.Segments, arc);
    return arc;
}

inline Path JoinCircleAtTop(Routes& routes, RouteCircle& circle)
{
    return JoinCircle(routes, circle, circle.X, Single(double(circle.Y) + double(circle.Radius)), 90);
}

inline bool IsFreeRoute(const RouteCircle& circle) // a pocket is none
{
    return circle.Used == False && !(circle.OscZ < 0);
}

inline void CloseCircles(Routes& routes)
{
    if (routes.Last() != 0)
        return;
    for (std::size_t i = 1; i < routes.Circles.size(); ++i) {
        if (!IsFreeRoute(routes.Circles[i]))
            continue;
        const Path arc = JoinCircleAtTop(routes, routes.Circles[i]);
        routes.Segments[arc.First].Dir = -8;
    }
}

inline bool OnRim(const RouteCircle& circle, const RouteSegment& point, double within)
{
    return std::fabs(double(circle.Radius) - Between(point, circle.X, circle.Y)) < within;
}

// A free path that meets the joined circle: the arc goes on to it.
inline void FindPathOnCircle(Routes& routes, std::vector<Path>& paths, std::vector<Path>& linked,
                             const RouteCircle& circle, Long pass)
{
    const Path before = linked.back();
    for (Path& path : paths) {
        if (path.Used || path.PathKind == 5 || routes.Segments[path.First].Pass != pass)
            continue;
        if (!OnRim(circle, routes.Segments[path.First], 0.001)) {
            if (!OnRim(circle, routes.Segments[path.Last], 0.001))
                continue;
            Reverse(routes.Segments, path);
        }
        const RouteSegment entry = routes.Segments[path.First];
        const RouteSegment last = routes.Segments[before.Last];
        if (entry.X == last.X && entry.Y == last.Y)
            return;
        Path arc = AddArc(routes, circle, entry.X, entry.Y);
        RouteSegment& end = routes.Segments[arc.Last];
        end.Aux1 = last.Aux1;
        end.Dir = last.Dir;
        end.Pass = last.Pass;
        routes.Segments[arc.First].Pass = last.Pass;
        SetTangents(routes.Segments, arc);
        linked.push_back(arc);
        return;
    }
}

// The first circle whose rim holds an end of the current path becomes its detour.
inline void JoinCircleOnRim(Routes& routes, std::vector<Path>& paths, std::vector<Path>& linked)
{
    const Path current = linked.back();
    const RouteSegment start = routes.Segments[current.First];
    const RouteSegment end = routes.Segments[current.Last];
    if (std::abs(start.Kind) == 5 || std::abs(end.Kind) == 5)
        return;
    for (std::size_t i = 1; i < routes.Circles.size(); ++i) {
        RouteCircle& circle = routes.Circles[i];
        if (!IsFreeRoute(circle) || circle.Pass != start.Pass)
            continue;
        const bool atStart = current.Head && OnRim(circle, start, 0.05);
        if (!atStart && !OnRim(circle, end, 0.05))
            continue;
        if (atStart) {
            Reverse(routes.Segments, linked.back());
            linked.push_back(JoinCircle(routes, circle, start.X, start.Y, double(current.End) - 180));
        } else {
            linked.push_back(JoinCircle(routes, circle, end.X, end.Y, double(current.Start)));
        }
        FindPathOnCircle(routes, paths, linked, circle, start.Pass);
        return;
    }
}

// ---- Linking

// 0: the candidate does not fit; 1 to 4: candidate's start or end at the current end, candidate's
// start or end at the current start.
inline int FitOf(const std::vector<RouteSegment>& list, const Path& candidate, const Path& current,
                 bool canReverse)
{
    const RouteSegment& start = list[candidate.First];
    const RouteSegment& end = list[candidate.Last];
    const RouteSegment& currentStart = list[current.First];
    const RouteSegment& currentEnd = list[current.Last];
    const double distances[] = {
        Between(start, currentEnd.X, currentEnd.Y), Between(end, currentEnd.X, currentEnd.Y),
        Between(start, currentStart.X, currentStart.Y), Between(end, currentStart.X, currentStart.Y)};
    int smallest = 0;
    for (int i = 1; i < 4; ++i)
        if (distances[i] < distances[smallest])
            smallest = i;
    const int fit = smallest + 1;
    if (!(distances[smallest] < double(Run.RouteTolerance)))
        return 0;
    if (fit >= 3 && !canReverse)
        return 0;
    if (candidate.PathKind == 5) {
        if (fit == 2 || fit == 4)
            return 0;
        if (start.X == end.X && start.Y == end.Y && current.PathKind != 4)
            return 0;
    }
    return fit;
}

inline double TurnOf(int fit, const Path& candidate, const Path& current)
{
    const auto back = [](Single direction) { return Turn360(double(direction) + 180); };
    if (fit == 1)
        return AngleBetween(candidate.Start, current.End);
    if (fit == 2)
        return AngleBetween(back(candidate.End), current.End);
    if (fit == 3)
        return AngleBetween(candidate.Start, back(current.Start));
    return AngleBetween(back(candidate.End), back(current.Start));
}

inline bool FindNextPath(std::vector<RouteSegment>& list, std::vector<Path>& paths, std::vector<Path>& linked,
                         bool& canReverse)
{
    const Path current = linked.back();
    if (current.PathKind == 5)
        return false;
    double smallestTurn = 360;
    Path* next = nullptr;
    int nextFit = 0;
    for (Path& candidate : paths) {
        if (candidate.Used || list[candidate.First].Pass != list[current.First].Pass)
            continue;
        const int fit = FitOf(list, candidate, current, canReverse);
        if (fit == 0)
            continue;
        const double turn = TurnOf(fit, candidate, current);
        if (turn < smallestTurn) {
            smallestTurn = turn;
            next = &candidate;
            nextFit = fit;
        }
    }
    if (next == nullptr)
        return false;
    if (nextFit >= 3)
        Reverse(list, linked.back());
    if (nextFit == 2 || nextFit == 4)
        Reverse(list, *next);
    next->Used = true;
    linked.push_back(*next);
    RouteSegment& first = list[next->First];
    if (first.Kind == -1 && first.Aux1 == 0 && first.Aux2 == 0)
        first.Aux1 = next->Start;
    canReverse = false;
    return true;
}

inline std::vector<Path> LinkPaths(Routes& routes)
{
    std::vector<Path> paths = ListPaths(routes.Segments);
    std::vector<Path> linked;
    for (Path& path : paths) {
        if (path.Used)
            continue;
        path.Used = true;
        linked.push_back(path);
        linked.back().Head = true;
        bool canReverse = true;
        do
            JoinCircleOnRim(routes, paths, linked);
        while (FindNextPath(routes.Segments, paths, linked, canReverse));
    }
    return linked;
}

// ---- Circles that no path has met

inline void BuildCircleLeads(Routes& routes, std::vector<Path>& linked)
{
    if (!LeadsWanted())
        return;
    double rampOut = 0, rampIn = 0;
    for (std::size_t i = 1; i < routes.Circles.size(); ++i) {
        RouteCircle& circle = routes.Circles[i];
        if (!IsFreeRoute(circle) || circle.Comp == "")
            continue;
        const LeadValues values = LeadValuesOf(circle.LeadIn, circle.RampOut, circle.RampIn);
        if (!(values.Length > 0))
            continue;
        if (values.RampOut != 0)
            rampOut = values.RampOut;
        if (values.RampIn != 0)
            rampIn = values.RampIn;
        const double lead = values.Length, radius = circle.Radius, x = circle.X, y = circle.Y;
        const bool left = circle.Comp.Trimmed().substr(0, 3) == "G41";
        const double centre = y + (radius - (left ? -lead : lead));
        const double span = std::min(180.0, lead / (2 * radius * double(Run.Pi)) * 360);
        const auto add = [&](Int kind, double px, double py, double aux1, double aux2, Int dir) {
            RouteSegment record = SegmentOfCircle(circle);
            record.Kind = kind;
            record.X = Single(px);
            record.Y = Single(py);
            record.Aux1 = Single(aux1);
            record.Aux2 = Single(aux2);
            record.Dir = dir;
            routes.Segments.push_back(record);
        };
        const Int hand = left ? True : False;
        add(-3, x - lead, centre, x, centre, -8);
        if (rampIn != 0)
            routes.Segments.back().Z = Single(rampIn);
        add(3, x, y + radius, 180, left ? 270 : 90, hand);
        add(-3, x, y + radius, x, y, 0);
        add(3, x, y + radius, 90, 90, 0);
        if (rampOut != 0) {
            const PlanePoint out = Polar({x, y}, radius, 90 - span);
            add(-3, x, y + radius, x, y, 0);
            routes.Segments.back().Z = Single(rampOut);
            add(3, out.X, out.Y, 90, 90 - span, 0);
            routes.Segments.back().Z = Single(rampOut);
        } else {
            add(-3, x, y + radius, x, centre, 0);
            add(3, x + lead, centre, 90, 0, hand);
        }
        Path entry;
        entry.First = routes.Last() - 5;
        entry.Last = routes.Last();
        entry.PathKind = 3;
        entry.Head = entry.Used = true;
        linked.push_back(entry);
        circle.Used = True;
        circle.Pass = 0;
    }
}

inline void JoinLeftoverCircles(Routes& routes, std::vector<Path>& linked)
{
    for (std::size_t i = 1; i < routes.Circles.size(); ++i) {
        if (!IsFreeRoute(routes.Circles[i]))
            continue;
        linked.push_back(JoinCircleAtTop(routes, routes.Circles[i]));
        linked.back().Head = true;
        routes.Segments[linked.back().First].Dir = True;
    }
}

// ---- Order of the chains

using Chain = std::vector<RouteSegment>;

inline std::vector<Chain> ChainsOf(const std::vector<RouteSegment>& records)
{
    std::vector<Chain> chains;
    for (const RouteSegment& record : records) {
        if (record.Dir == -8)
            chains.emplace_back();
        if (!chains.empty())
            chains.back().push_back(record);
    }
    return chains;
}

inline std::vector<RouteSegment> RecordsOf(const std::vector<Chain>& chains)
{
    std::vector<RouteSegment> records;
    for (const Chain& chain : chains)
        records.insert(records.end(), chain.begin(), chain.end());
    return records;
}

inline std::vector<Chain> NearestFirst(const std::vector<Chain>& chains)
{
    double x = Run.SideWidth[5], y = Run.SideHeight[5];
    std::vector<bool> used(chains.size());
    std::vector<Chain> ordered;
    for (std::size_t place = 0; place < chains.size(); ++place) {
        double smallest = 0;
        std::size_t nearest = chains.size();
        for (std::size_t i = 0; i < chains.size(); ++i) {
            if (used[i])
                continue;
            const double dx = double(chains[i].front().X) - x;
            const double dy = double(chains[i].front().Y) - y;
            if (nearest == chains.size() || dx * dx + dy * dy < smallest) {
                smallest = dx * dx + dy * dy;
                nearest = i;
            }
        }
        used[nearest] = true;
        ordered.push_back(chains[nearest]);
        x = chains[nearest].back().X;
        y = chains[nearest].back().Y;
    }
    return ordered;
}

// Ascending by key, equal keys in their order; keys outside 0 to 90000 drop out.
template <typename Key> std::vector<Chain> SortedBy(const std::vector<Chain>& chains, Key key)
{
    std::vector<Chain> sorted;
    for (const Chain& chain : chains) {
        const std::int64_t value = key(chain);
        if (value < 0 || value > 90000)
            continue;
        auto place = sorted.end();
        while (place != sorted.begin() && std::int64_t(key(*(place - 1))) > value)
            --place;
        sorted.insert(place, chain);
    }
    return sorted;
}

inline void FixSequences(std::vector<RouteSegment>& records, Routes& routes)
{
    for (std::size_t i = 0; i + 2 < records.size(); ++i)
        if (std::abs(records[i].Kind) == 4)
            records[i].Sequence = records[i + 2].Sequence;
    for (const RouteSegment& record : records) {
        routes.MaxSequence = std::max(routes.MaxSequence, Long(record.Sequence));
        routes.MinSequence = std::min(routes.MinSequence, Long(record.Sequence));
    }
}

// ---- The whole, up to the copy out and the depths of arcs

inline void ChainRoutes(Routes& routes)
{
    std::vector<Path> linked;
    if (routes.Last() == 0) {
        BuildCircleLeads(routes, linked);
        return;
    }
    OrderChains(routes.Segments);
    linked = LinkPaths(routes);
    BuildCircleLeads(routes, linked);
    JoinLeftoverCircles(routes, linked);
    std::vector<RouteSegment> records;
    for (const Path& path : linked) {
        if (path.Head)
            routes.Segments[path.First].Dir = -8;
        for (std::size_t i = path.First; i <= path.Last; ++i)
            records.push_back(routes.Segments[i]);
    }
    records = RecordsOf(NearestFirst(ChainsOf(records)));
    FixSequences(records, routes);
    std::vector<Chain> chains =
        SortedBy(ChainsOf(records), [](const Chain& chain) { return chain.front().ToolNo; });
    const Long least = std::abs(routes.MinSequence);
    if (routes.MaxSequence != 0)
        chains =
            SortedBy(chains, [least](const Chain& chain) { return chain.front().Sequence + least + 10; });
    for (Chain& chain : chains) {
        std::size_t behindMarks = 0;
        while (chain[behindMarks].Kind == -4 && behindMarks + 2 < chain.size())
            behindMarks += 2;
        const auto comp = chain[behindMarks].Comp;
        for (RouteSegment& record : chain) {
            record.ToolNo = chain.front().ToolNo;
            record.Diameter = chain.front().Diameter;
            record.Comp = comp;
            record.Speed = chain.front().Speed;
        }
    }
    records = RecordsOf(chains);
    for (std::size_t i = 1; i < records.size(); ++i)
        if (std::abs(records[i].Kind) == 3 && records[i].Z == 0)
            records[i].Z = records[i - 1].Z;
    routes.Segments.assign(1, RouteSegment{});
    routes.Segments.insert(routes.Segments.end(), records.begin(), records.end());
}

} // namespace kv::plain

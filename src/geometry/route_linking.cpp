// Grows a chain from each path that is still free: first a circle whose rim holds an end, then the
// path that goes on most nearly straight, again and again. Relies on the path list; leaves linked
// entries and, behind the records, the arcs of joined circles. Ends are looked up in a point grid,
// with the results of a plain walk over all paths and circles.
#include "geometry/route_linking.h"

#include <algorithm>
#include <cmath>

#include "geometry/circle_joins.h"
#include "geometry/point_grid.h"
#include "platform/events.h"
#include "shell/report.h"

namespace kv {

namespace {

constexpr double RimReach = 0.05;        // drawing units between a rim and a path's end
constexpr double OtherPathReach = 0.001; // the same for further paths on a joined circle
constexpr double HalfTurn = 180;
constexpr std::size_t LongList = 4000; // paths; above it the meter moves and abort is polled by path
constexpr int MeterAtEnd = 90;         // percent, of a long list's linking

struct Linking {
    std::vector<ChainEntry>& Paths;
    std::vector<ChainEntry>& Linked;
    PointGrid Ends; // of path n: 2n and 2n + 1, whichever way it runs
    // By circle: the paths with an end on its rim, in list order; empty where there is no circle.
    std::vector<std::vector<std::size_t>> PathsAtCircle;
    // By path: the circles whose rim holds one of its ends, in list order.
    std::vector<std::vector<Long>> CirclesAtPath;
    bool CanReverse = true; // the head, until the first path is linked to it

    ChainEntry& Current() { return Linked.back(); }
};

PlanePoint StartOf(const ChainEntry& path)
{
    return PointOf(RouteSegments[path.First]);
}

PlanePoint EndOf(const ChainEntry& path)
{
    return PointOf(RouteSegments[path.Last]);
}

Long PassOf(const ChainEntry& path)
{
    return RouteSegments[path.First].Pass;
}

bool IsPolyline(const ChainEntry& path)
{
    return path.PathKind == 5;
}

bool EndsInVertex(const ChainEntry& path)
{
    return KindOf(RouteSegments[path.First]) == 5 || KindOf(RouteSegments[path.Last]) == 5;
}

bool RimHolds(const RouteCircle& circle, const PlanePoint& point, double reach)
{
    return std::fabs(circle.Radius - Distance(CentreOf(circle), point)) < reach;
}

PointGrid GridOfEnds(const std::vector<ChainEntry>& paths)
{
    std::vector<GridPoint> ends;
    ends.reserve(paths.size() * 2);
    for (const ChainEntry& path : paths) {
        const PlanePoint start = StartOf(path);
        const PlanePoint end = EndOf(path);
        ends.push_back({start.X, start.Y});
        ends.push_back({end.X, end.Y});
    }
    return PointGrid(std::move(ends));
}

// Whether the rim, widened by its reach, can pass through the box.
bool RimReaches(const RouteCircle& circle, const GridBox& box)
{
    const PlanePoint centre = CentreOf(circle);
    const GridPoint nearest = box.Nearest(centre.X, centre.Y);
    const double farX = std::max(std::fabs(box.MinX - centre.X), std::fabs(box.MaxX - centre.X));
    const double farY = std::max(std::fabs(box.MinY - centre.Y), std::fabs(box.MaxY - centre.Y));
    const double nearby = Distance(centre, {nearest.X, nearest.Y});
    const double farthest = std::sqrt(farX * farX + farY * farY);
    // Twice the reach: a box must not be passed over for a last bit.
    return nearby < circle.Radius + 2 * RimReach && farthest > circle.Radius - 2 * RimReach;
}

void FindEndsOnRims(Linking& linking)
{
    linking.PathsAtCircle.resize(static_cast<std::size_t>(RouteCircles.Last()) + 1);
    linking.CirclesAtPath.resize(linking.Paths.size());
    for (Long i = 1; i <= RouteCircles.Last(); ++i) {
        const RouteCircle& circle = RouteCircles[i];
        if (circle.Used != False || IsPocket(circle))
            continue;
        std::vector<std::size_t>& found = linking.PathsAtCircle[static_cast<std::size_t>(i)];
        linking.Ends.Walk([&](const GridBox& box) { return RimReaches(circle, box); },
                          [&](Long end) {
                              const auto path = static_cast<std::size_t>(end / 2);
                              const GridPoint& at = linking.Ends.At(end);
                              if (RimHolds(circle, {at.X, at.Y}, RimReach))
                                  found.push_back(path);
                              return false;
                          });
        std::sort(found.begin(), found.end());
        found.erase(std::unique(found.begin(), found.end()), found.end());
        for (const std::size_t path : found)
            linking.CirclesAtPath[path].push_back(i);
    }
}

void MarkUsed(Linking& linking, std::size_t path)
{
    linking.Paths[path].Used = true;
    linking.Ends.Remove(static_cast<Long>(2 * path));
    linking.Ends.Remove(static_cast<Long>(2 * path + 1));
}

// Goes on round the circle, which has just been joined and was of `pass`, to the first free path of
// that pass that begins or ends on its rim.
void ContinueToOtherPath(Linking& linking, Long circleIndex, Long pass)
{
    const RouteCircle& circle = RouteCircles[circleIndex];
    for (const std::size_t n : linking.PathsAtCircle[static_cast<std::size_t>(circleIndex)]) {
        ChainEntry& path = linking.Paths[n];
        if (path.Used || IsPolyline(path) || PassOf(path) != pass)
            continue;
        if (!RimHolds(circle, StartOf(path), OtherPathReach)) {
            if (!RimHolds(circle, EndOf(path), OtherPathReach))
                continue;
            ReversePath(path);
        }
        const PlanePoint entry = StartOf(path);
        const PlanePoint last = StartOf(linking.Current());
        if (entry.X != last.X || entry.Y != last.Y)
            linking.Linked.push_back(ContinueCircle(linking.Current(), entry));
        return;
    }
}

// Where and from which direction (degrees) a path meets a circle.
struct Meeting {
    bool AtStart = false;
    PlanePoint Entry;
    double Arriving = 0;
};

// The start counts only while the path is its chain's head.
bool MeetsRim(const ChainEntry& path, const RouteCircle& circle, Meeting& meeting)
{
    if (path.ChainHead && RimHolds(circle, StartOf(path), RimReach)) {
        meeting = {true, StartOf(path), path.EndAngle - HalfTurn};
        return true;
    }
    meeting = {false, EndOf(path), path.StartAngle};
    return RimHolds(circle, EndOf(path), RimReach);
}

// Joins the first free circle whose rim holds an end of the current path, which is `pathIndex` of
// the list.
void JoinCircleAtEnds(Linking& linking, std::size_t pathIndex)
{
    if (EndsInVertex(linking.Current()))
        return;
    for (const Long i : linking.CirclesAtPath[pathIndex]) {
        RouteCircle& circle = RouteCircles[i];
        Meeting meeting;
        const Long pass = circle.Pass;
        if (circle.Used != False || pass != PassOf(linking.Current()) ||
            !MeetsRim(linking.Current(), circle, meeting))
            continue;
        if (meeting.AtStart)
            ReversePath(linking.Current());
        linking.Linked.push_back(JoinCircle(circle, meeting.Entry, meeting.Arriving));
        ContinueToOtherPath(linking, i, pass);
        return;
    }
}

// The ways in which a candidate can touch the current path, in the order in which they count.
enum class Joint { StartToEnd, EndToEnd, StartToStart, EndToStart };
constexpr Joint Joints[] = {Joint::StartToEnd, Joint::EndToEnd, Joint::StartToStart, Joint::EndToStart};

bool AtCurrentStart(Joint joint)
{
    return joint == Joint::StartToStart || joint == Joint::EndToStart;
}

bool TurnsCandidate(Joint joint)
{
    return joint == Joint::EndToEnd || joint == Joint::EndToStart;
}

double Gap(const ChainEntry& candidate, const ChainEntry& current, Joint joint)
{
    return Distance(TurnsCandidate(joint) ? EndOf(candidate) : StartOf(candidate),
                    AtCurrentStart(joint) ? StartOf(current) : EndOf(current));
}

bool IsClosed(const ChainEntry& path)
{
    const PlanePoint start = StartOf(path);
    const PlanePoint end = EndOf(path);
    return start.X == end.X && start.Y == end.Y;
}

// Whether the candidate can be linked, and how. The nearest of the four joints decides, also where
// that one is barred.
bool Fits(const Linking& linking, const ChainEntry& candidate, const ChainEntry& current, Joint& joint)
{
    double smallest = Gap(candidate, current, Joints[0]);
    joint = Joints[0];
    for (const Joint other : Joints) {
        const double gap = Gap(candidate, current, other);
        if (gap < smallest) {
            smallest = gap;
            joint = other;
        }
    }
    if (!(smallest < Run.RouteTolerance) || (AtCurrentStart(joint) && !linking.CanReverse))
        return false;
    if (!IsPolyline(candidate))
        return true;
    return !TurnsCandidate(joint) && (current.PathKind == 4 || !IsClosed(candidate));
}

double TurnAt(const ChainEntry& candidate, const ChainEntry& current, Joint joint)
{
    const double onward =
        TurnsCandidate(joint) ? Turn360(candidate.EndAngle + HalfTurn) : candidate.StartAngle;
    const double arriving = AtCurrentStart(joint) ? Turn360(current.StartAngle + HalfTurn) : current.EndAngle;
    return AngleBetween(onward, arriving);
}

struct Candidate {
    std::size_t Path = 0;
    Joint How = Joint::StartToEnd;
    double Turn = 360;
    bool Found = false;
};

// The straightest fit near a point; the first path of the list among equals.
void FindStraightest(const Linking& linking, const ChainEntry& current, const PlanePoint& at, Candidate& best)
{
    const auto reaches = [&](const GridBox& box) {
        const GridPoint nearest = box.Nearest(at.X, at.Y);
        return Distance(at, {nearest.X, nearest.Y}) < Run.RouteTolerance;
    };
    linking.Ends.Walk(reaches, [&](Long end) {
        const auto n = static_cast<std::size_t>(end / 2);
        const ChainEntry& path = linking.Paths[n];
        Joint how = Joint::StartToEnd;
        if (PassOf(path) != PassOf(current) || !Fits(linking, path, current, how))
            return false;
        const double turn = TurnAt(path, current, how);
        if (turn < best.Turn || (best.Found && turn == best.Turn && n < best.Path))
            best = {n, how, turn, true};
        return false;
    });
}

// Links the free path that goes on most nearly straight from the current one. `next` is its index.
bool FindNextPath(Linking& linking, std::size_t& next)
{
    ChainEntry& current = linking.Current();
    if (IsPolyline(current))
        return false;
    Candidate best;
    FindStraightest(linking, current, EndOf(current), best);
    if (linking.CanReverse)
        FindStraightest(linking, current, StartOf(current), best);
    if (!best.Found)
        return false;
    ChainEntry& path = linking.Paths[best.Path];
    if (TurnsCandidate(best.How))
        ReversePath(path);
    if (AtCurrentStart(best.How))
        ReversePath(current);
    MarkUsed(linking, best.Path);
    linking.Linked.push_back(path);
    linking.CanReverse = false;
    next = best.Path;
    return true;
}

void GrowChain(Linking& linking, std::size_t head)
{
    MarkUsed(linking, head);
    linking.Linked.push_back(linking.Paths[head]);
    linking.Current().ChainHead = true;
    linking.CanReverse = true;
    std::size_t current = head;
    do {
        JoinCircleAtEnds(linking, current);
    } while (FindNextPath(linking, current));
}

} // namespace

bool LinkPaths(std::vector<ChainEntry>& paths, std::vector<ChainEntry>& linked)
{
    Linking linking{paths, linked, GridOfEnds(paths), {}, {}, true};
    FindEndsOnRims(linking);
    const bool isLong = paths.size() > LongList;
    const int meterBefore = MeterValue(Meter::Processing);
    for (std::size_t n = 0; n < paths.size(); ++n) {
        DoEvents();
        if (isLong) {
            const double share = static_cast<double>(n) / static_cast<double>(paths.size());
            SetMeter(
                Meter::Processing,
                std::max(meterBefore, static_cast<int>(meterBefore + share * (MeterAtEnd - meterBefore))));
            if (UserAborted())
                return false;
        }
        if (!paths[n].Used)
            GrowChain(linking, n);
    }
    return true;
}

} // namespace kv

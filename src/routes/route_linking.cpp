// Grows a chain from each path that is still free: first a circle whose rim holds an end, then the
// path that goes on most nearly straight, again and again. Relies on the path list; leaves linked
// entries and, behind the records, the arcs of joined circles. Ends are looked up in a point grid,
// with the results of a plain walk over all paths and circles.
#include "routes/route_linking.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <tuple>
#include <utility>

#include "geometry/point_grid.h"
#include "platform/events.h"
#include "routes/circle_joins.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr double RimReach = 0.05;        // drawing units between a rim and a path's end
constexpr double OtherPathReach = 0.001; // the same for further paths on a joined circle
constexpr std::size_t LongList = 4000;   // paths; above it the meter moves and abort is polled by path
constexpr int MeterAtEnd = 90;           // percent, of a long list's linking

constexpr std::size_t NoPath = static_cast<std::size_t>(-1);

// Circles of one place, radius and pass, in list order.
struct EqualCircles {
    std::vector<Long> Circles;
    std::size_t Next = 0;           // the first free one
    std::vector<std::size_t> Paths; // with an end on the rim, in list order
};

struct Linking {
    std::vector<ChainEntry>& Paths;
    std::vector<ChainEntry>& Linked;
    PointGrid Ends; // of path n: 2n and 2n + 1, whichever way it runs
    // Of paths that fit alike in every respect only the first free one is in the grid, or a drawing
    // that was copied onto itself would take for ever. By path: the next one, or NoPath.
    std::vector<std::size_t> Twin;
    std::vector<EqualCircles> Rims;
    std::vector<std::vector<std::size_t>> RimsAtPath; // by path: the rims that hold one of its ends
    bool CanReverse = true;                           // the head, until the first path is linked to it
    bool IsLong = false;                              // more than LongList paths: the abort counts here

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

PointGrid GridOfPaths(const std::vector<ChainEntry>& paths)
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

std::vector<EqualCircles> GroupCircles()
{
    std::map<std::tuple<Single, Single, Single, Int>, std::size_t> groups;
    std::vector<EqualCircles> rims;
    for (Long i = 1; i <= RouteCircles.Last(); ++i) {
        const RouteCircle& circle = RouteCircles[i];
        if (circle.Used != False || IsPocket(circle))
            continue;
        const auto place = groups.try_emplace({circle.X, circle.Y, circle.Radius, circle.Pass}, rims.size());
        if (place.second)
            rims.emplace_back();
        rims[place.first->second].Circles.push_back(i);
    }
    return rims;
}

void FindEndsOnRims(Linking& linking)
{
    linking.Rims = GroupCircles();
    linking.RimsAtPath.resize(linking.Paths.size());
    for (std::size_t rim = 0; rim < linking.Rims.size(); ++rim) {
        const RouteCircle& circle = RouteCircles[linking.Rims[rim].Circles.front()];
        std::vector<std::size_t>& found = linking.Rims[rim].Paths;
        linking.Ends.Walk([&](const GridBox& box) { return RimReaches(circle, box); },
                          [&](Long end) {
                              const GridPoint& at = linking.Ends.At(end);
                              if (RimHolds(circle, {at.X, at.Y}, RimReach))
                                  found.push_back(static_cast<std::size_t>(end / 2));
                              return false;
                          });
        std::sort(found.begin(), found.end());
        found.erase(std::unique(found.begin(), found.end()), found.end());
        for (const std::size_t path : found)
            linking.RimsAtPath[path].push_back(rim);
    }
}

// All that decides whether and how a path fits.
auto FitOf(const ChainEntry& path)
{
    const PlanePoint start = StartOf(path);
    const PlanePoint end = EndOf(path);
    return std::tuple(start.X, start.Y, end.X, end.Y, path.StartAngle, path.EndAngle, IsPolyline(path),
                      PassOf(path));
}

// Leaves only the first of each set of twins in the grid.
void FindTwins(Linking& linking)
{
    std::vector<std::size_t> order(linking.Paths.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return FitOf(linking.Paths[a]) < FitOf(linking.Paths[b]);
    });
    linking.Twin.assign(linking.Paths.size(), NoPath);
    for (std::size_t n = 1; n < order.size(); ++n) {
        if (FitOf(linking.Paths[order[n - 1]]) != FitOf(linking.Paths[order[n]]))
            continue;
        linking.Twin[order[n - 1]] = order[n];
        linking.Ends.Remove(static_cast<Long>(2 * order[n]));
        linking.Ends.Remove(static_cast<Long>(2 * order[n] + 1));
    }
}

// The path is used, or no longer like its twins: the next of them takes its place in the grid.
void ReleaseTwin(Linking& linking, std::size_t path)
{
    const std::size_t twin = std::exchange(linking.Twin[path], NoPath);
    if (twin == NoPath)
        return;
    linking.Ends.Return(static_cast<Long>(2 * twin));
    linking.Ends.Return(static_cast<Long>(2 * twin + 1));
}

void MarkUsed(Linking& linking, std::size_t path)
{
    linking.Paths[path].Used = true;
    linking.Ends.Remove(static_cast<Long>(2 * path));
    linking.Ends.Remove(static_cast<Long>(2 * path + 1));
    ReleaseTwin(linking, path);
}

// Goes on round the circle, which has just been joined and was of `pass`, to the first free path of
// that pass that begins or ends on its rim.
void ContinueToOtherPath(Linking& linking, const RouteCircle& circle, const EqualCircles& rim, Long pass)
{
    for (const std::size_t n : rim.Paths) {
        ChainEntry& path = linking.Paths[n];
        if (path.Used || IsPolyline(path) || PassOf(path) != pass)
            continue;
        if (!RimHolds(circle, StartOf(path), OtherPathReach)) {
            if (!RimHolds(circle, EndOf(path), OtherPathReach))
                continue;
            ReversePath(path);
            ReleaseTwin(linking, n);
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

// The rim of the first free circle of the list that holds an end of the current path, which is
// `pathIndex` of the list; null where none does.
EqualCircles* RimAtEnds(Linking& linking, std::size_t pathIndex, Meeting& meeting)
{
    EqualCircles* first = nullptr;
    for (const std::size_t n : linking.RimsAtPath[pathIndex]) {
        EqualCircles& rim = linking.Rims[n];
        if (rim.Next == rim.Circles.size())
            continue;
        const Long index = rim.Circles[rim.Next];
        const RouteCircle& circle = RouteCircles[index];
        Meeting found;
        if (circle.Pass != PassOf(linking.Current()) || !MeetsRim(linking.Current(), circle, found))
            continue;
        if (first != nullptr && first->Circles[first->Next] < index)
            continue;
        first = &rim;
        meeting = found;
    }
    return first;
}

// The circle becomes a detour of the path.
void JoinCircleAtEnds(Linking& linking, std::size_t pathIndex)
{
    if (EndsInVertex(linking.Current()))
        return;
    Meeting meeting;
    EqualCircles* const rim = RimAtEnds(linking, pathIndex, meeting);
    if (rim == nullptr)
        return;
    RouteCircle& circle = RouteCircles[rim->Circles[rim->Next++]];
    const Long pass = circle.Pass;
    if (meeting.AtStart)
        ReversePath(linking.Current());
    linking.Linked.push_back(JoinCircle(circle, meeting.Entry, meeting.Arriving));
    ContinueToOtherPath(linking, circle, *rim, pass);
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
        DoEvents(); // one chain may be all there is
    } while (!(linking.IsLong && UserAborted()) && FindNextPath(linking, current));
}

} // namespace

bool LinkPaths(std::vector<ChainEntry>& paths, std::vector<ChainEntry>& linked)
{
    Linking linking{paths, linked, GridOfPaths(paths), {}, {}, {}, true, paths.size() > LongList};
    FindEndsOnRims(linking);
    FindTwins(linking);
    const int meterBefore = MeterValue(Meter::Processing);
    for (std::size_t n = 0; n < paths.size(); ++n) {
        DoEvents();
        if (linking.IsLong) {
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
    return !(linking.IsLong && UserAborted());
}

} // namespace kv

// Four small passes over whole routes, each over the list in one walk. They rely on chained routes and
// leave routes that begin and end as before but for the seam of a closed polyline. Depths of 90 and
// more are codes, not depths.
#include "routes/depth_passes.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "routes/route_runs.h"
#include "state/report.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr Int TaperedStart = -4, MarkEnd = 4, PolylineStart = -5, PolylinePoint = 5;
constexpr double MarkReach = 0.03;     // drawing units between a start mark and its polyline
constexpr double ClosedWithin = 0.001; // drawing units between the ends of a closed polyline
constexpr Single FirstDepthCode = 90;

bool IsDepthCode(const RouteSegment& record)
{
    return record.Z >= FirstDepthCode;
}

double DistanceBetween(const RouteSegment& a, const RouteSegment& b)
{
    return Distance(PointOf(a), PointOf(b));
}

// Whether the polyline behind the mark comes back to it, but does not leave from it.
bool LeavesFromTheWrongEnd(Long mark, Long last)
{
    const RouteSegment& first = RouteSegments[mark];
    const RouteSegment& second = RouteSegments[mark + 1];
    const RouteSegment& begin = RouteSegments[mark + 2];
    const RouteSegment& end = RouteSegments[last];
    if (DistanceBetween(begin, first) <= MarkReach || DistanceBetween(begin, second) <= MarkReach)
        return false;
    return DistanceBetween(end, first) < MarkReach || DistanceBetween(end, second) < MarkReach;
}

void ReverseRun(Long begin, Long last, Int groupOfRoute)
{
    std::reverse(RouteSegments.begin() + begin, RouteSegments.begin() + last + 1);
    for (Long i = begin; i <= last; ++i) {
        RouteSegment& record = RouteSegments[i];
        record.Kind = i == begin ? PolylineStart : PolylinePoint;
        record.Aux2 = 0 - record.Aux2; // the bulge; a straight stays 0
    }
    RouteSegments[last].Group = groupOfRoute;
}

void ReverseRoute(Long first, Long last)
{
    for (Long i = first; i + 2 <= last; ++i) {
        if (RouteSegments[i].Kind != TaperedStart || KindOf(RouteSegments[i + 1]) != PolylinePoint)
            continue;
        if (!LeavesFromTheWrongEnd(i, last))
            continue;
        ReverseRun(i + 2, last, RouteSegments[first].Group);
        for (Long k = i; k <= last; ++k) // the tool stays where it was drawn
            RouteSegments[k].Comp = OtherSideOf(RouteSegments[k].Comp);
        return; // no further mark can stand behind it
    }
}

// Moves the seams of a route's closed polylines; `behind` takes the records that come behind it.
void ReseamRoute(Long first, Long last, std::vector<RouteSegment>& behind)
{
    if (KindOf(RouteSegments[last]) == MarkEnd)
        return; // a pocket begins in a corner: moved from there, a part of its wall would stay
    for (Long i = first; i <= last; ++i) {
        RouteSegment& start = RouteSegments[i];
        if (start.Kind != PolylineStart || start.Aux2 != 0)
            continue;
        if (i == last && behind.empty())
            return; // one point has no first straight
        const RouteSegment& next = i < last ? RouteSegments[i + 1] : behind.front();
        RouteSegment end = behind.empty() ? RouteSegments[last] : behind.back();
        if (!(DistanceBetween(start, end) < ClosedWithin))
            continue;
        const double bearing = Bearing(PointOf(start), PointOf(next));
        const PlanePoint middle = Polar(PointOf(start), DistanceBetween(start, next) / 2, bearing);
        PlaceAt(start, middle);
        PlaceAt(end, middle);
        behind.push_back(end);
    }
}

// The cutter's way up and down along a route.
struct Wave {
    int Sense = 1; // 1 deeper, -1 back
    double Amp = 0, Offset = 0, LastOffset = 0;
    double Span = 0; // length of a whole wave
};

void Advance(Wave& wave, double length)
{
    const double waves = length / wave.Span;
    wave.Offset += wave.Amp * waves * wave.Sense;
    if (wave.Offset > wave.Amp) {
        wave.Offset = wave.Amp;
        wave.Sense = -1;
    } else if (wave.Offset < 0) {
        wave.Offset = 0;
        wave.Sense = 1;
    }
    // A long move that would end at the height where it began goes to the other one.
    if (waves > 1 && std::fabs(wave.Offset - wave.LastOffset) < wave.Amp / 2) {
        const bool isTurned = wave.Offset == wave.Amp || wave.Offset == 0;
        if (isTurned) {
            wave.Offset = wave.Offset == 0 ? wave.Amp : 0;
            wave.Sense = -wave.Sense;
        }
    }
    wave.LastOffset = wave.Offset;
}

bool IsOscillated(const RouteSegment& record, const Wave& wave)
{
    return wave.Amp > 0 && record.Kind > 0 && KindOf(record) != 4;
}

// The next record of the same path takes the depth over, unless it is a polyline's.
void HandDepthOn(Long i)
{
    if (i == RouteSegments.Last())
        return;
    RouteSegment& next = RouteSegments[i + 1];
    if (!StartsRoute(next) && (next.Kind == 1 || next.Kind == 3))
        next.Z = RouteSegments[i].Z;
}

RouteSegment AtDepth(const RouteSegment& record, int pass, int passes)
{
    RouteSegment copy = record;
    if (!IsDepthCode(record))
        copy.Z = ToSingle(static_cast<double>(record.Z) / passes * pass);
    return copy;
}

} // namespace

void ReverseClosedPolylines()
{
    for (Long first = 1, last = 0; first <= RouteSegments.Last(); first = last + 1) {
        last = LastOfRoute(first);
        ReverseRoute(first, last);
    }
}

void ReseamClosedPolylines()
{
    if (Run.CornerComp != 1 && !(Run.CornerComp == 0 && Config.CornerComp != 0))
        return;
    std::vector<RouteSegment> records;
    for (Long first = 1, last = 0; first <= RouteSegments.Last(); first = last + 1) {
        last = LastOfRoute(first);
        std::vector<RouteSegment> behind;
        ReseamRoute(first, last, behind);
        for (Long i = first; i <= last; ++i)
            AddTo(records, RouteSegments[i]);
        for (const RouteSegment& record : behind)
            AddTo(records, record);
    }
    StoreSegments(records);
}

void OscillateZ()
{
    Wave wave;
    bool isShallow = false;
    for (Long i = 1; i <= RouteSegments.Last(); ++i) {
        RouteSegment& record = RouteSegments[i];
        if (IsDepthCode(record))
            continue; // as a route's first record too: the wave of the route in front goes on
        if (StartsRoute(record)) {
            wave = Wave{};
            const bool goesThrough = record.Z > Run.PartThickness;
            if (goesThrough) {
                wave.Amp = record.OscZ;
                wave.Span = 2 * wave.Amp;
            }
            isShallow = isShallow || (!goesThrough && record.OscZ > 0);
            continue;
        }
        if (!IsOscillated(record, wave))
            continue;
        Advance(wave, DistanceBetween(RouteSegments[i - 1], record));
        record.Z = ToSingle(record.Z + wave.Offset);
        HandDepthOn(i);
    }
    if (isShallow)
        Tell(Message::ShallowOscillation);
}

void SplitDepthPasses()
{
    std::vector<RouteSegment> records;
    for (Long first = 1, last = 0; first <= RouteSegments.Last(); first = last + 1) {
        last = LastOfRoute(first);
        const RouteSegment& start = RouteSegments[first];
        const int passes = StartsRoute(start) && start.MCode > 0 ? start.MCode : 1;
        for (int pass = 1; pass <= passes; ++pass)
            for (Long i = first; i <= last; ++i)
                AddTo(records, AtDepth(RouteSegments[i], pass, passes));
    }
    StoreSegments(records);
}

} // namespace kv

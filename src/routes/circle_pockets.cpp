// Circles are cleared by half turns whose radius changes by half a pitch each, their centres a
// quarter of a pitch to either side in turn, so that each half turn begins where the one before ends.
// Circles that stand as two half circles of a route keep their outline behind the spiral; those of
// the circle list end in a full circle and an overlap.
#include "routes/circle_pockets.h"

#include <algorithm>
#include <cmath>

#include "routes/pocket_values.h"
#include "routes/route_runs.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr Int ArcStart = -3, ArcEnd = 3;
constexpr Int CirclePair[] = {ArcStart, ArcEnd, ArcStart, ArcEnd};
constexpr Single TopAngle = 90, BottomAngle = 270;
constexpr double OverlapAngle = 35;   // degrees behind the full circle
constexpr std::size_t SenseDigit = 2; // of "G41": the code's third character

// A half turn starts above the centre (1) or below it (-1).
Single StartAngleOf(int sign)
{
    return sign > 0 ? TopAngle : BottomAngle;
}
Single EndAngleOf(int sign)
{
    return StartAngleOf(-sign);
}

void ReportNoPitch()
{
    ReportMessage(1, "Excavation Pitch not specified! (Circle)");
}

void PlaceArc(RouteSegment& start, RouteSegment& end, const PlanePoint& centre, double radius, int sign)
{
    PlaceAt(start, {centre.X, centre.Y + sign * radius});
    PlaceAt(end, {centre.X, centre.Y - sign * radius});
    start.Kind = ArcStart;
    end.Kind = ArcEnd;
    start.Dir = end.Dir = 0;
    end.Aux1 = StartAngleOf(sign);
    end.Aux2 = EndAngleOf(sign);
}

void SetCentre(RouteSegment& start, double x, double y)
{
    start.Aux1 = ToSingle(x);
    start.Aux2 = ToSingle(y);
}

void AddHalfTurn(std::vector<RouteSegment>& records, const RouteSegment& start, const RouteSegment& end)
{
    AddTo(records, start);
    AddTo(records, end);
}

// The half turns from the outside in.
std::vector<RouteSegment> HalfTurnsInward(const RouteSegment& drawnStart, const RouteSegment& drawnEnd,
                                          double radius, double pitch)
{
    const PlanePoint centre{drawnStart.X, drawnStart.Aux2}; // its X is that of the start point
    const bool isLeft = drawnStart.Comp.Padded()[SenseDigit] == '1';
    int sign = drawnStart.Y < drawnStart.Aux2 ? 1 : -1;
    double aside = 0; // the outermost runs on the circle itself
    std::vector<RouteSegment> turns;
    do {
        RouteSegment start = drawnStart;
        RouteSegment end = drawnEnd;
        PlaceArc(start, end, centre, radius, sign);
        SetCentre(start, centre.X, centre.Y - aside * sign);
        end.Dir = isLeft ? True : False;
        AddHalfTurn(turns, start, end);
        radius -= pitch / 2;
        sign = -sign;
        aside = pitch / 4;
    } while (!(radius < pitch));
    return turns;
}

// The last phase: the full circle and a piece of it once more.
void AddFullCircle(std::vector<RouteSegment>& records, RouteSegment start, const PlanePoint& centre,
                   double radius, int sign)
{
    RouteSegment end = start;
    end.Dir = 0;
    const Single angle = StartAngleOf(sign);
    const double overlap = static_cast<double>(angle) - OverlapAngle;
    PlaceAt(start, {centre.X, centre.Y + sign * radius});
    SetCentre(start, centre.X, centre.Y);
    start.Kind = ArcStart;
    PlaceAt(end, PointOf(start));
    end.Kind = ArcEnd;
    end.Aux1 = end.Aux2 = angle;
    AddHalfTurn(records, start, end);
    start.Dir = 0;
    PlaceAt(end, Polar(centre, radius, overlap));
    end.Aux2 = ToSingle(NormalizeAngle(overlap));
    AddHalfTurn(records, start, end);
}

void AddSpiral(std::vector<RouteSegment>& records, const RouteCircle& circle, double pitch)
{
    const PlanePoint centre{circle.X, circle.Y};
    const double radius = circle.Radius;
    const std::size_t begin = records.size();
    RouteSegment record = SegmentOfCircle(circle);
    record.Comp = CompOnSide(circle.Comp, PocketSide::Right);
    record.OscZ = 0;
    int sign = -1;
    for (double turn = pitch / 2; turn <= radius; turn += pitch / 2) {
        RouteSegment start = record;
        RouteSegment end = record;
        PlaceArc(start, end, centre, turn, sign);
        const double growth = std::min(turn + pitch / 2, radius) - turn;
        SetCentre(start, centre.X, centre.Y - sign * growth / 2);
        AddHalfTurn(records, start, end);
        sign = -sign;
    }
    AddFullCircle(records, record, centre, radius, sign);
    records[begin].Dir = RouteStart;
}

} // namespace

bool IsCirclePocket(std::span<const RouteSegment> chain)
{
    const auto sameKind = [](const RouteSegment& record, Int kind) { return record.Kind == kind; };
    return std::equal(chain.begin(), chain.end(), std::begin(CirclePair), std::end(CirclePair), sameKind) &&
           StartsRoute(chain.front()) && MarksPocket(chain.front().OscZ);
}

bool ClearCirclePair(std::span<const RouteSegment> chain, std::vector<RouteSegment>& records)
{
    const RouteSegment& first = chain.front();
    const double pitch = PocketPitch(first.OscZ, first.Comp);
    if (!(pitch > 0)) {
        ReportNoPitch();
        return false;
    }
    // A circle split to the left and right of its centre reads as one without a radius.
    const double radius = std::fabs(static_cast<double>(first.Aux2) - first.Y);
    if (!(radius > 0))
        return false;
    const std::vector<RouteSegment> turns = HalfTurnsInward(first, chain[1], radius, pitch);
    const std::size_t begin = records.size();
    for (std::size_t turn = turns.size(); turn > 0; turn -= 2) // the tool starts at the innermost
        AddHalfTurn(records, turns[turn - 2], turns[turn - 1]);
    for (const RouteSegment& record : chain)
        AddTo(records, record);
    records[begin + turns.size()].Dir = 0;
    for (std::size_t i = begin; i < records.size(); ++i)
        records[i].OscZ = 0;
    records[begin].Dir = RouteStart;
    return true;
}

void ClearListCircles(std::vector<RouteSegment>& records)
{
    for (Long i = 1; i <= RouteCircles.Last(); ++i) {
        RouteCircle& circle = RouteCircles[i];
        if (!MarksPocket(circle.OscZ) || circle.Pass <= 0 || circle.Used != False)
            continue;
        const double pitch = PocketPitch(circle.OscZ, circle.Comp);
        if (!(pitch > 0)) {
            ReportNoPitch();
            ReportUncleared(circle.Pass);
            continue;
        }
        if (circle.Radius > 0)
            AddSpiral(records, circle, pitch);
        else
            ReportUncleared(circle.Pass); // and no arc without length is written for it
        circle.Used = True;
        circle.Pass = 0; // or the writer's block of circles would cut it a second time
    }
}

} // namespace kv

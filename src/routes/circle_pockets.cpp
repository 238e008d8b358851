// Circles are cleared by half turns whose radius changes by half a pitch each, their centres a
// quarter of a pitch to either side in turn, so that each half turn begins where the one before ends.
// Circles that stand as two arcs of a route keep their outline behind the spiral; those of the circle
// list end in a full circle and an overlap.
#include "routes/circle_pockets.h"

#include <algorithm>
#include <cmath>

#include "routes/pocket_values.h"
#include "state/drawn_entities.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr Int CirclePair[] = {ArcOpens, ArcEnds, ArcOpens, ArcEnds};
constexpr Single TopAngle = 90, BottomAngle = 270;
constexpr double OverlapAngle = 35; // degrees behind the full circle

// A half turn starts above the centre (1) or below it (-1).
Single StartAngleOf(int sign)
{
    return sign > 0 ? TopAngle : BottomAngle;
}
Single EndAngleOf(int sign)
{
    return StartAngleOf(-sign);
}

void ReportNoPitch(const PocketSpot& spot)
{
    Tell(Message::CirclePitchMissing, WithPlace({}, spot.Drawn));
    ReportUncleared(spot);
}

void PlaceArc(RouteSegment& start, RouteSegment& end, const PlanePoint& centre, double radius, int sign)
{
    PlaceAt(start, {centre.X, centre.Y + sign * radius});
    PlaceAt(end, {centre.X, centre.Y - sign * radius});
    start.Kind = ArcOpens;
    end.Kind = ArcEnds;
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

// Where the outline begins and which way it runs.
struct CircleOfPair {
    PlanePoint Centre;
    double Radius = 0;
    double Begin = 0; // bearing of the first point
    bool IsCounterClockwise = false;
};

// Two arcs of one centre, radius and sense; the second begins where the first ends and ends where the
// first begins.
bool IsOneCircle(std::span<const RouteSegment> pair)
{
    const double tolerance = OutlineTolerance();
    const auto meet = [tolerance](const PlanePoint& a, const PlanePoint& b) {
        return Distance(a, b) <= tolerance;
    };
    const double first = Distance(CentreOf(pair[0]), PointOf(pair[0]));
    const double second = Distance(CentreOf(pair[2]), PointOf(pair[2]));
    return meet(CentreOf(pair[0]), CentreOf(pair[2])) && std::fabs(first - second) <= tolerance &&
           (pair[1].Dir != 0) == (pair[3].Dir != 0) && meet(PointOf(pair[1]), PointOf(pair[2])) &&
           meet(PointOf(pair[3]), PointOf(pair[0])) && !meet(PointOf(pair[0]), PointOf(pair[1]));
}

// The half turns from the outside in; the outermost runs on the circle itself and ends where the
// outline begins.
std::vector<RouteSegment> HalfTurnsInward(std::span<const RouteSegment> pair, const CircleOfPair& circle,
                                          double pitch)
{
    double angle = Turn360(circle.Begin + HalfTurn);
    double aside = 0;
    std::vector<RouteSegment> turns;
    for (double radius = circle.Radius;;) {
        const double opposite = Turn360(angle + HalfTurn);
        RouteSegment start = pair[0];
        RouteSegment end = pair[1];
        start.Dir = 0;
        end.Dir = circle.IsCounterClockwise ? True : False;
        PlaceAt(start, Polar(circle.Centre, radius, angle));
        PlaceAt(end, Polar(circle.Centre, radius, opposite));
        const PlanePoint centre = Polar(circle.Centre, aside, opposite);
        SetCentre(start, centre.X, centre.Y);
        end.Aux1 = ToSingle(angle);
        end.Aux2 = ToSingle(opposite);
        AddHalfTurn(turns, start, end);
        radius -= pitch / 2;
        if (radius < pitch / 2)
            return turns;
        angle = opposite;
        aside = pitch / 4;
    }
}

// A step above the tool's diameter leaves wood between half turns. A small circle may be cleared by chance,
// where one half turn and the wall are enough; without any half turn it never is.
void TellOfWood(const PocketSpot& spot, double radius, double pitch, double toolRadius)
{
    const double tool = 2 * toolRadius;
    const bool isWide = toolRadius > 0 && pitch > tool + OutlineTolerance();
    if (isWide && radius > tool + OutlineTolerance() && (radius >= 2 * tool || pitch > 2 * radius))
        TellOfPocket(spot, {Message::PocketLeavesWood});
}

// Twice the radius of a half turn.
double WidthOfTurn(const RouteSegment& start)
{
    return 2 * Distance(CentreOf(start), PointOf(start));
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
    start.Kind = ArcOpens;
    PlaceAt(end, PointOf(start));
    end.Kind = ArcEnds;
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
           StartsRoute(chain.front()) && MarksPocket(chain.front().OscZ, chain.front().Pass);
}

bool ClearCirclePair(std::span<const RouteSegment> chain, std::vector<RouteSegment>& records,
                     const OpenOutlines& open)
{
    const RouteSegment& first = chain.front();
    if (!IsOneCircle(chain)) {
        const MessageLine fault = open.FaultOf(chain);
        ReportUncleared(PocketAt(first), fault.Empty() ? MessageLine{Message::PocketNoCircle} : fault);
        return false;
    }
    const double pitch = PocketPitch(first.OscZ, first.Comp);
    if (!(pitch > 0)) {
        ReportNoPitch(PocketAt(first));
        return false;
    }
    if (HasNoRoom(PocketAt(first), 2 * Distance(CentreOf(first), PointOf(first)), ToolRadiusOf(first.Comp)))
        return true;
    TellOfGaps(first, chain);
    const CircleOfPair circle{CentreOf(first), Distance(CentreOf(first), PointOf(first)),
                              Bearing(CentreOf(first), PointOf(first)), chain[1].Dir != 0};
    const std::vector<RouteSegment> turns = HalfTurnsInward(chain, circle, pitch);
    const std::size_t begin = records.size();
    for (std::size_t turn = turns.size(); turn > 0; turn -= 2) // the tool starts at the innermost
        AddHalfTurn(records, turns[turn - 2], turns[turn - 1]);
    for (const RouteSegment& record : chain)
        AddTo(records, record);
    records[begin + turns.size()].Dir = 0;
    for (std::size_t i = begin; i < records.size(); ++i) {
        records[i].OscZ = 0;
        records[i].Comp =
            CompOnSide(records[i].Comp, circle.IsCounterClockwise ? PocketSide::Left : PocketSide::Right);
    }
    records[begin].Dir = RouteStart;
    TellOfNarrowWays(PocketAt(first), 2 * circle.Radius, WidthOfTurn(records[begin]),
                     ToolRadiusOf(first.Comp));
    TellOfWood(PocketAt(first), circle.Radius, pitch, ToolRadiusOf(first.Comp));
    return true;
}

void ClearListCircles(std::vector<RouteSegment>& records, std::vector<std::size_t>& counts)
{
    for (Long i = 1; i <= RouteCircles.Last(); ++i) {
        RouteCircle& circle = RouteCircles[i];
        if (circle.Pass <= 0 || circle.Used != False || !MarksPocket(circle.OscZ, circle.Pass))
            continue;
        const PocketSpot spot = PocketAt(circle);
        const double pitch = PocketPitch(circle.OscZ, circle.Comp);
        if (!(pitch > 0)) {
            ReportNoPitch(spot);
            continue;
        }
        const double width = 2 * static_cast<double>(circle.Radius);
        if (!(width > 0)) {
            ReportUncleared(spot); // and no arc without length is written for it
        } else if (!HasNoRoom(spot, width, ToolRadiusOf(circle.Comp))) {
            const std::size_t begin = records.size();
            AddSpiral(records, circle, pitch);
            counts.push_back(records.size() - begin);
            TellOfNarrowWays(spot, width, WidthOfTurn(records[begin]), ToolRadiusOf(circle.Comp));
            TellOfWood(spot, circle.Radius, pitch, ToolRadiusOf(circle.Comp));
        }
        circle.Used = True;
        circle.Pass = 0; // or the writer's block of circles would cut it a second time
    }
}

} // namespace kv

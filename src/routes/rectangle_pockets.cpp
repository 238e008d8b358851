// A rectangle is cleared by loops that follow its outline backward, each one pitch further in, until
// both ends of its middle line are reached. Rounded corners stay arcs while their radius lasts. The
// outline's start mark, where it has one, takes no part in the loops and stands again behind them.
//
//      +-----------------------+
//      |  1                 2  |      1, 2: the ends of the middle line, half the short side
//      |  o-----------------o  |      away from the short sides
//      |                       |
//      +-----------------------+
#include "routes/rectangle_pockets.h"

#include <algorithm>

#include "routes/pocket_values.h"
#include "routes/route_runs.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr Int ArcStart = -3, ArcEnd = 3;
constexpr std::size_t MarkLength = 2; // records of a start mark

struct Box {
    double MinX = 0, MaxX = 0, MinY = 0, MaxY = 0;
    double Width() const { return MaxX - MinX; }
    double Height() const { return MaxY - MinY; }
};

struct Outline {
    std::span<const RouteSegment> Records;
    std::size_t First = 0; // record behind the start mark
    Box Bounds;
    PlanePoint Ends[2]; // of the middle line
    double Pitch = 0;
    PocketSide Side = PocketSide::Right;
};

// The two records of a rounded corner, its radius less the inset.
struct CornerArc {
    PlanePoint Centre;
    double Drawn = 0, Reduced = 0; // radius
    Single StartAngle = 0, EndAngle = 0;
    bool IsAlive = false; // else the corner has shrunk away
};

struct Clearing {
    std::vector<RouteSegment>& Records;
    bool IsReached[2] = {};
    int LastEnd = 0; // of the outline's Ends
};

Box BoundsOf(std::span<const RouteSegment> records)
{
    Box box{records[0].X, records[0].X, records[0].Y, records[0].Y};
    for (const RouteSegment& record : records) {
        box.MinX = std::min<double>(box.MinX, record.X);
        box.MaxX = std::max<double>(box.MaxX, record.X);
        box.MinY = std::min<double>(box.MinY, record.Y);
        box.MaxY = std::max<double>(box.MaxY, record.Y);
    }
    return box;
}

void FindMiddleLine(Outline& outline)
{
    const Box& box = outline.Bounds;
    const double width = box.Width();
    const double height = box.Height();
    if (height < width) {
        const double middle = (box.MinY + box.MaxY) / 2;
        const double inset = (width / 2) * (height / width);
        outline.Ends[0] = {box.MinX + inset, middle};
        outline.Ends[1] = {box.MaxX - inset, middle};
        return;
    }
    const double middle = (box.MinX + box.MaxX) / 2;
    const double inset = (height / 2) * (width / height);
    outline.Ends[0] = {middle, box.MinY + inset};
    outline.Ends[1] = {middle, box.MaxY - inset};
}

// By the first step of the contour, the start mark's where it has one, seen from the middle line.
PocketSide SideOf(const Outline& outline)
{
    const double first = Bearing(outline.Ends[0], PointOf(outline.Records[0]));
    const double second = Bearing(outline.Ends[0], PointOf(outline.Records[1]));
    const bool isClockwise = first > second ? 360 - first + second > 180 : !(360 - second + first > 180);
    return isClockwise ? PocketSide::Left : PocketSide::Right;
}

bool EndsArc(const Outline& outline, std::size_t k)
{
    const std::span<const RouteSegment> records = outline.Records;
    return k > outline.First && k < records.size() && records[k].Kind == ArcEnd &&
           records[k - 1].Kind == ArcStart;
}

CornerArc ArcAt(const Outline& outline, std::size_t k, double inset)
{
    const RouteSegment& start = outline.Records[k - 1];
    const RouteSegment& end = outline.Records[k];
    CornerArc arc;
    arc.Centre = CentreOf(start);
    arc.Drawn = Distance(PointOf(start), arc.Centre);
    arc.Reduced = arc.Drawn - inset;
    arc.StartAngle = end.Aux1;
    arc.EndAngle = end.Aux2;
    arc.IsAlive = arc.Reduced > outline.Pitch;
    return arc;
}

// The nearest corner of the box, moved inward; of equally near ones the last of the four.
PlanePoint InsetCorner(const Box& box, const PlanePoint& point, double inset)
{
    const struct {
        PlanePoint Corner;
        double InwardX, InwardY;
    } corners[] = {{{box.MinX, box.MaxY}, inset, -inset},
                   {{box.MaxX, box.MaxY}, -inset, -inset},
                   {{box.MaxX, box.MinY}, -inset, inset},
                   {{box.MinX, box.MinY}, inset, inset}};
    double nearest = Distance(point, corners[0].Corner);
    PlanePoint place;
    for (const auto& corner : corners) {
        const double distance = Distance(point, corner.Corner);
        if (distance > nearest)
            continue;
        nearest = distance;
        place = {corner.Corner.X + corner.InwardX, corner.Corner.Y + corner.InwardY};
    }
    return place;
}

// A line point that meets a rounded corner stays on that corner's arc.
PlanePoint PlaceOf(const Outline& outline, std::size_t k, double inset)
{
    const RouteSegment& record = outline.Records[k];
    const std::size_t last = outline.Records.size() - 1;
    const bool isEnd = record.Kind > 0;
    std::size_t corner = 0; // second record of the arc that would touch
    if (isEnd)
        corner = k == last ? outline.First + 1 : k + 2;
    else
        corner = k == outline.First ? last : k - 1;
    const std::size_t touching = isEnd ? corner - 1 : corner;
    if (!EndsArc(outline, corner) || Distance(PointOf(outline.Records[touching]), PointOf(record)) >
                                         static_cast<double>(Run.RouteTolerance))
        return InsetCorner(outline.Bounds, PointOf(record), inset);
    const CornerArc arc = ArcAt(outline, corner, inset);
    if (!arc.IsAlive && inset != 0)
        return InsetCorner(outline.Bounds, PointOf(record), inset);
    const Single angle = isEnd ? arc.StartAngle : arc.EndAngle;
    return Polar(arc.Centre, arc.Reduced, static_cast<double>(angle));
}

void Store(const Outline& outline, std::vector<RouteSegment>& records, RouteSegment record)
{
    record.OscZ = 0;
    record.Comp = CompOnSide(record.Comp, outline.Side);
    if (StartsRoute(record))
        record.Dir = 0;
    AddTo(records, record);
}

// The first point of a move less than a pitch from an end of the middle line reaches that end and is
// kept a pitch away from it.
PlanePoint ReachEnds(const Outline& outline, Clearing& clearing, const PlanePoint& place)
{
    PlanePoint kept = place;
    for (const int end : {1, 0}) {
        const PlanePoint& point = outline.Ends[end];
        if (Distance(place, point) < outline.Pitch)
            kept = Polar(point, outline.Pitch, Bearing(point, place));
    }
    for (const int end : {0, 1}) {
        if (!(Distance(place, outline.Ends[end]) < outline.Pitch))
            continue;
        clearing.IsReached[end] = true;
        clearing.LastEnd = end;
    }
    return kept;
}

void AddPoint(const Outline& outline, Clearing& clearing, RouteSegment record, const PlanePoint& place)
{
    PlaceAt(record, record.Kind < 0 ? ReachEnds(outline, clearing, place) : place);
    Store(outline, clearing.Records, record);
}

RouteSegment LineRecord(const RouteSegment& drawn, Int kind)
{
    RouteSegment record = drawn;
    record.Kind = kind;
    record.Aux1 = record.Aux2 = 0;
    record.Dir = 0;
    return record;
}

// Both records of a corner, run backward: an arc the other way round, or the line that is left of it.
void AddCorner(const Outline& outline, Clearing& clearing, std::size_t k, double inset)
{
    const CornerArc arc = ArcAt(outline, k, inset);
    RouteSegment start = outline.Records[k - 1];
    RouteSegment end = outline.Records[k];
    if (!arc.IsAlive) {
        const double radius = std::min(outline.Pitch, arc.Drawn); // no point outside the drawn corner
        AddPoint(outline, clearing, LineRecord(end, -1),
                 Polar(arc.Centre, radius, static_cast<double>(arc.EndAngle)));
        AddPoint(outline, clearing, LineRecord(start, 1),
                 Polar(arc.Centre, radius, static_cast<double>(arc.StartAngle)));
        return;
    }
    start.Dir = 0;
    end.Dir = end.Dir == 0 ? True : False; // clockwise is 0
    std::swap(end.Aux1, end.Aux2);
    AddPoint(outline, clearing, start, Polar(arc.Centre, arc.Reduced, static_cast<double>(arc.EndAngle)));
    AddPoint(outline, clearing, end, Polar(arc.Centre, arc.Reduced, static_cast<double>(arc.StartAngle)));
}

// What ended a path opens one now.
void AddLinePoint(const Outline& outline, Clearing& clearing, std::size_t k, double inset)
{
    const std::span<const RouteSegment> records = outline.Records;
    const Int kind = KindOf(records[k]);
    const Int size = kind >= 1 && kind <= 3 ? 1 : 5;
    const bool opens = records[k].Kind > 0 && (k + 1 == records.size() || records[k + 1].Kind < 0);
    AddPoint(outline, clearing, LineRecord(records[k], static_cast<Int>(opens ? -size : size)),
             PlaceOf(outline, k, inset));
}

void AddLoop(const Outline& outline, Clearing& clearing, double inset)
{
    std::size_t behind = outline.Records.size(); // of the record that is next
    while (behind > outline.First) {
        const std::size_t k = behind - 1;
        if (EndsArc(outline, k)) {
            AddCorner(outline, clearing, k, inset);
            behind -= 2;
            continue;
        }
        AddLinePoint(outline, clearing, k, inset);
        --behind;
    }
}

// The contour's first two records again, so that the way ends where a pocket's contour does.
void AddClosingMark(const Outline& outline, Clearing& clearing)
{
    const PlanePoint& end = outline.Ends[clearing.LastEnd];
    RouteSegment first = outline.Records[0];
    PlaceAt(first, Polar(end, outline.Pitch, Bearing(end, PointOf(first))));
    Store(outline, clearing.Records, first);
    Store(outline, clearing.Records, outline.Records[1]);
}

} // namespace

bool ClearRectangle(std::span<const RouteSegment> contour, std::vector<RouteSegment>& records)
{
    Outline outline;
    outline.Records = contour;
    outline.First = contour[MarkLength].Kind < 0 ? MarkLength : 0;
    outline.Bounds = BoundsOf(contour.subspan(outline.First));
    if (!(outline.Bounds.Width() > 0) || !(outline.Bounds.Height() > 0))
        return false;
    outline.Pitch = PocketPitch(contour[0].OscZ, contour[0].Comp);
    if (!(outline.Pitch > 0)) {
        ReportMessage(1, "Excavation Pitch not specified! (Rectangle)");
        return false;
    }
    FindMiddleLine(outline);
    outline.Side = SideOf(outline);

    const std::size_t begin = records.size();
    const double furthest = outline.Bounds.Width() + outline.Bounds.Height();
    Clearing clearing{records};
    // The product, not a sum: the number of records ends a pitch that is nothing beside the box.
    for (int loop = 0; !clearing.IsReached[0] || !clearing.IsReached[1]; ++loop) {
        const double inset = loop * outline.Pitch;
        if (inset > furthest) { // no rectangle of lines: an end was never reached
            TellOfPocket(contour[0].Pass,
                         "the pocket's way leaves its outline, which is no rectangle of lines");
            break;
        }
        AddLoop(outline, clearing, inset);
    }
    AddClosingMark(outline, clearing);
    records[begin].Dir = RouteStart;
    return true;
}

} // namespace kv

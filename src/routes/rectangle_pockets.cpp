// A rectangle is cleared by loops that follow its outline backward, each one pitch further in, until
// both ends of its middle line are reached or the inset has passed the middle. Rounded corners stay
// arcs while their radius lasts. The outline's start mark, where it has one, takes no part in the loops
// and stands again behind them.
//
//      +-----------------------+
//      |  1                 2  |      1, 2: the ends of the middle line, half the short side
//      |  o-----------------o  |      away from the short sides
//      |                       |
//      +-----------------------+
#include "routes/rectangle_pockets.h"

#include <algorithm>
#include <array>

#include "routes/pocket_values.h"
#include "routes/rectangle_doubts.h"
#include "routes/rectangle_outlines.h"
#include "state/drawn_entities.h"
#include "state/report.h"

namespace kv {

namespace {

struct Outline {
    std::vector<RouteSegment> Records; // behind the start mark, ending in a line
    OutlineBox Bounds;
    PlanePoint Ends[2]; // of the middle line
    double Pitch = 0;
    double ToolRadius = 0; // 0: not known
    PocketSide Side = PocketSide::Right;
};

// The two records of a rounded corner, its radius less the inset.
struct CornerArc {
    PlanePoint Centre;
    double Reduced = 0; // radius
    Single StartAngle = 0, EndAngle = 0;
    bool IsAlive = false; // else the corner is that of the inset box
};

struct Clearing {
    std::vector<RouteSegment>& Records;
    bool IsReached[2] = {};
    int LastEnd = 0; // of the outline's Ends
};

void FindMiddleLine(Outline& outline)
{
    const OutlineBox& box = outline.Bounds;
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

// The wall keeps every arc that the tool can cut. One that it cannot cut is no arc further in either:
// the tool would run into the wall beside it.
bool LastsAt(const Outline& outline, double radius, double inset)
{
    return radius > outline.ToolRadius && (inset == 0 || radius - inset > outline.Pitch);
}

CornerArc ArcAt(const Outline& outline, std::size_t k, double inset)
{
    const RouteSegment& start = outline.Records[k - 1];
    const RouteSegment& end = outline.Records[k];
    CornerArc arc;
    arc.Centre = CentreOf(start);
    const double radius = Distance(PointOf(start), arc.Centre);
    arc.Reduced = radius - inset;
    arc.StartAngle = end.Aux1;
    arc.EndAngle = end.Aux2;
    arc.IsAlive = LastsAt(outline, radius, inset);
    return arc;
}

// The nearest corner of the box, moved inward; of equally near ones the last of the four.
PlanePoint InsetCorner(const OutlineBox& box, const PlanePoint& point, double inset)
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
        corner = k == last ? 1 : k + 2;
    else
        corner = k == 0 ? last : k - 1;
    const PlanePoint atCorner = InsetCorner(outline.Bounds, PointOf(record), inset);
    if (!EndsArc(outline.Records, corner))
        return atCorner;
    const RouteSegment& touching = outline.Records[isEnd ? corner - 1 : corner];
    const CornerArc arc = ArcAt(outline, corner, inset);
    if (!arc.IsAlive ||
        Distance(PointOf(touching), PointOf(record)) > static_cast<double>(Run.RouteTolerance))
        return atCorner;
    return Polar(arc.Centre, arc.Reduced, static_cast<double>(isEnd ? arc.StartAngle : arc.EndAngle));
}

void Store(const Outline& outline, std::vector<RouteSegment>& records, RouteSegment record)
{
    record.OscZ = 0;
    record.Comp = CompOnSide(record.Comp, outline.Side);
    if (StartsRoute(record))
        record.Dir = 0;
    AddTo(records, record);
}

bool IsWithin(const OutlineBox& box, const PlanePoint& point)
{
    return point.X >= box.MinX && point.X <= box.MaxX && point.Y >= box.MinY && point.Y <= box.MaxY;
}

// The first point of a move less than a pitch from an end of the middle line reaches that end and is
// kept a pitch away from it, but not outside the pocket: a wide pitch reaches the ends from the wall.
PlanePoint ReachEnds(const Outline& outline, Clearing& clearing, const PlanePoint& place)
{
    PlanePoint kept = place;
    for (const int end : {1, 0}) {
        const PlanePoint& point = outline.Ends[end];
        if (Distance(place, point) < outline.Pitch)
            kept = Polar(point, outline.Pitch, Bearing(point, place));
    }
    if (!IsWithin(outline.Bounds, kept))
        kept = place;
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

// Both records of a corner, run backward: an arc the other way round, or the corner of the inset box.
void AddCorner(const Outline& outline, Clearing& clearing, std::size_t k, double inset)
{
    const CornerArc arc = ArcAt(outline, k, inset);
    RouteSegment start = outline.Records[k - 1];
    RouteSegment end = outline.Records[k];
    if (!arc.IsAlive) {
        AddPoint(outline, clearing, LineRecord(end, -1), InsetCorner(outline.Bounds, PointOf(end), inset));
        AddPoint(outline, clearing, LineRecord(start, 1), InsetCorner(outline.Bounds, PointOf(start), inset));
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
    const std::vector<RouteSegment>& records = outline.Records;
    const Int kind = KindOf(records[k]);
    const Int size = kind >= 1 && kind <= 3 ? 1 : 5;
    const bool opens = records[k].Kind > 0 && (k + 1 == records.size() || records[k + 1].Kind < 0);
    AddPoint(outline, clearing, LineRecord(records[k], static_cast<Int>(opens ? -size : size)),
             PlaceOf(outline, k, inset));
}

void AddLoop(const Outline& outline, Clearing& clearing, double inset)
{
    for (std::size_t k = outline.Records.size(); k-- > 0;) {
        if (EndsArc(outline.Records, k)) {
            AddCorner(outline, clearing, k, inset);
            --k; // an arc is two records
        } else {
            AddLinePoint(outline, clearing, k, inset);
        }
    }
}

// All loops; returns the inset of the last one. The insets are products, not sums: the number of
// records ends a pitch that is nothing beside the box.
double AddLoops(const Outline& outline, Clearing& clearing)
{
    const double shorter = std::min(outline.Bounds.Width(), outline.Bounds.Height());
    const double furthest = shorter / 2 + outline.Pitch / 2;
    double last = 0;
    for (int loop = 0; !clearing.IsReached[0] || !clearing.IsReached[1]; ++loop) {
        const double inset = loop * outline.Pitch;
        if (inset > furthest)
            break;
        AddLoop(outline, clearing, inset);
        last = inset;
    }
    return last;
}

// The contour's first two records again, so that the way ends where a pocket's contour does.
void AddClosingMark(const Outline& outline, Clearing& clearing, std::span<const RouteSegment> contour)
{
    const PlanePoint& end = outline.Ends[clearing.LastEnd];
    RouteSegment first = contour[0];
    PlaceAt(first, Polar(end, outline.Pitch, Bearing(end, PointOf(first))));
    Store(outline, clearing.Records, first);
    Store(outline, clearing.Records, contour[1]);
}

// Radii of all four corners; what is no arc is sharp.
std::vector<double> CornerRadii(const Outline& outline)
{
    std::vector<double> radii;
    for (std::size_t k = 0; k < outline.Records.size(); ++k)
        if (EndsArc(outline.Records, k))
            radii.push_back(Distance(PointOf(outline.Records[k - 1]), CentreOf(outline.Records[k - 1])));
    radii.resize(std::max<std::size_t>(radii.size(), 4));
    return radii;
}

// By their places: lower left, lower right, upper right, upper left.
std::array<double, 4> PlacedCornerRadii(const Outline& outline)
{
    std::array<double, 4> radii{};
    const OutlineBox& box = outline.Bounds;
    for (std::size_t k = 0; k < outline.Records.size(); ++k) {
        if (!EndsArc(outline.Records, k))
            continue;
        const PlanePoint centre = CentreOf(outline.Records[k - 1]);
        const bool right = 2 * centre.X > box.MinX + box.MaxX, upper = 2 * centre.Y > box.MinY + box.MaxY;
        radii[upper ? (right ? 2 : 3) : (right ? 1 : 0)] = Distance(PointOf(outline.Records[k - 1]), centre);
    }
    return radii;
}

void TellDoubts(const Outline& outline, const RouteSegment& mark, double lastInset,
                std::span<const RouteSegment> loops)
{
    const double shorter = std::min(outline.Bounds.Width(), outline.Bounds.Height());
    TellOfNarrowWays(PocketAt(mark), shorter, shorter - 2 * lastInset, outline.ToolRadius);
    const LoopsOfPocket way{loops,
                            outline.Records.size(),
                            outline.Bounds,
                            PlacedCornerRadii(outline),
                            outline.ToolRadius,
                            outline.Pitch,
                            outline.Side == PocketSide::Left ? 1 : -1};
    TellRectangleDoubts(PocketAt(mark),
                        {outline.Bounds, outline.Pitch, outline.ToolRadius, outline.Side,
                         CornerRadii(outline), lastInset, way},
                        loops[0], loops[1]);
}

} // namespace

bool ClearRectangle(std::span<const RouteSegment> contour, std::vector<RouteSegment>& records,
                    const OpenOutlines& open)
{
    const RouteSegment& mark = contour.front();
    const std::span<const RouteSegment> drawn =
        contour.subspan(contour[MarkLength].Kind < 0 ? MarkLength : 0);
    Outline outline;
    outline.Bounds = BoxOf(drawn);
    if (!IsRectangle(drawn, outline.Bounds)) {
        const MessageLine fault = open.FaultOf(drawn);
        ReportUncleared(PocketAt(mark), fault.Empty() ? MessageLine{Message::PocketNoRectangle} : fault);
        return false;
    }
    outline.Pitch = PocketPitch(mark.OscZ, mark.Comp);
    if (!(outline.Pitch > 0)) {
        Tell(Message::RectanglePitchMissing, WithPlace({}, mark.Drawn));
        ReportUncleared(PocketAt(mark));
        return false;
    }
    outline.ToolRadius = ToolRadiusOf(mark.Comp);
    if (HasNoRoom(PocketAt(mark), std::min(outline.Bounds.Width(), outline.Bounds.Height()),
                  outline.ToolRadius))
        return true;
    TellOfGaps(mark, drawn);
    outline.Side = RunsClockwise(drawn) ? PocketSide::Left : PocketSide::Right;
    outline.Records = EndingInALine(drawn);
    FindMiddleLine(outline);

    const std::size_t begin = records.size();
    Clearing clearing{records};
    const double lastInset = AddLoops(outline, clearing);
    AddClosingMark(outline, clearing, contour);
    records[begin].Dir = RouteStart;
    TellDoubts(outline, mark, lastInset, std::span(records).subspan(begin));
    return true;
}

} // namespace kv

// Polylines of a route layer. Header and first vertex settle tool, depth and compensation of all
// vertices; each vertex brings its place, bulge and remaining parameters. Leaves the polyline's
// records at the end of RouteSegments, without what runs along the panel's outline.
#include "drawing/route_polylines.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "drawing/border_thinning.h"
#include "platform/events.h"
#include "state/drawn_entities.h"
#include "state/pocket_setting.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr Int ClosedFlag = 1;
constexpr Long VerticesOfMark = 2; // a tapered polyline of so many is a start mark

// What header and first vertex settle for all vertices.
struct PolylineValues {
    std::string Layer;
    bool Closed = false, Tapered = false;
    Single StartWidth = 0, EndWidth = 0; // of a tapered one
    Single HeaderWidth = 0, HeaderThickness = 0;
    Int Sequence = 0;
    bool DepthDefaulted = false;
    RouteSegment Kept; // tool, depth, diameter without code, compensation
};

void TakeWidths(PolylineValues& polyline)
{
    polyline.Tapered = true;
    polyline.StartWidth = std::max(CurrentEntity.StartWidth, Single{0});
    polyline.EndWidth = std::max(CurrentEntity.EndWidth, Single{0});
}

PolylineValues ValuesOfHeader()
{
    const DecodedEntity& header = CurrentEntity;
    PolylineValues polyline;
    polyline.Layer = header.Layer;
    polyline.Closed = (header.Flags & ClosedFlag) != 0;
    polyline.HeaderWidth = std::max(header.StartWidth, Single{0});
    polyline.HeaderThickness = header.Thickness;
    polyline.Sequence = header.Sequence;
    if (header.StartWidth != header.EndWidth)
        TakeWidths(polyline);
    return polyline;
}

void KeepFirstVertex(PolylineValues& polyline)
{
    const DecodedEntity& vertex = CurrentEntity;
    ReadTool(polyline.Kept);
    polyline.Kept.Z = ReadDepth();
    polyline.DepthDefaulted = polyline.Kept.Z == 0;
    if (polyline.DepthDefaulted)
        polyline.Kept.Z = polyline.HeaderThickness;
    polyline.Kept.Diameter = vertex.Thickness != 0 ? vertex.Thickness : polyline.HeaderWidth;
    if (vertex.StartWidth != vertex.EndWidth)
        TakeWidths(polyline);
}

// DepthFromEntity still tells of the first vertex, the only one whose depth code is read.
Single DepthOfVertex(const PolylineValues& polyline)
{
    if (polyline.Kept.Z != 0)
        return polyline.Kept.Z;
    if (CurrentEntity.Elevation != 0)
        return std::abs(CurrentEntity.Elevation);
    return DepthFromEntity != False ? CurrentEntity.Z1 : 0; // with its sign
}

RouteSegment SegmentOfVertex(const RouteWalk& walk, const PolylineValues& polyline, bool isFirst)
{
    const DecodedEntity& vertex = CurrentEntity;
    RouteSegment record;
    record.Drawn = vertex.Drawn;
    record.Kind = isFirst ? -5 : 5;
    record.Pass = walk.Pass;
    record.X = vertex.X1;
    record.Y = vertex.Y1;
    record.Z = DepthOfVertex(polyline);
    record.Aux1 = vertex.Bulge != 0 ? True : False;
    record.Aux2 = vertex.Bulge;
    record.Feed = vertex.Bulge != 0 ? ReadFeedArc() : ReadFeed();
    record.Diameter = DiameterOr(polyline.Kept.Diameter);
    record.ToolNo = polyline.Kept.ToolNo;
    record.Tool = polyline.Kept.Tool;
    record.Comp = polyline.Kept.Comp;
    record.Sequence = polyline.Sequence;
    record.ParamA = ReadParamA();
    record.ParamB = ReadParamB();
    ReadParameters(record);
    return record;
}

RouteSegment TaperedStart(const PolylineValues& polyline, const RouteSegment& first)
{
    RouteSegment record = first;
    record.Kind = -4;
    record.Aux1 = polyline.StartWidth;
    record.Aux2 = polyline.EndWidth;
    record.ParamA = CurrentEntity.Z1;
    if (polyline.DepthDefaulted)
        record.ParamB = 1;
    return record;
}

// Back at the first vertex, in all else as the last one: a route or pocket may begin with it.
RouteSegment ClosingRecord(const RouteSegment& first, const RouteSegment& last)
{
    RouteSegment record = last;
    record.X = first.X;
    record.Y = first.Y;
    record.Kind = 5;
    record.Comp = first.Comp;
    record.Aux1 = first.Aux1;
    record.Aux2 = first.Aux2;
    return record;
}

// Reads vertices up to SEQEND or the end of the drawing, whatever stands between them. Returns the
// first vertex as that of an even polyline.
RouteSegment ReadVertices(RouteWalk& walk, PolylineValues& polyline, EdgeCounts& edges, Long& index)
{
    const Long before = RouteSegments.Last();
    RouteSegment first;
    while (index <= Entities.Last() && KindAt(walk, index) != Drawn::Seqend) {
        DoEvents();
        if (KindAt(walk, index) != Drawn::Vertex) {
            ++index;
            continue;
        }
        if (!polyline.Tapered)
            CurrentEntity.SearchNotes = True;
        DecodeEntity(index);
        RefuseInfinities();
        CurrentEntity.Layer = polyline.Layer;
        if (CurrentEntity.Sequence != 0)
            polyline.Sequence = CurrentEntity.Sequence;
        const bool isFirst = RouteSegments.Last() == before;
        if (isFirst)
            KeepFirstVertex(polyline);
        const RouteSegment record = SegmentOfVertex(walk, polyline, isFirst);
        if (isFirst)
            first = record;
        AddRouteRecord(isFirst && polyline.Tapered ? TaperedStart(polyline, record) : record);
        edges.Add(record.X, record.Y);
    }
    return first;
}

bool LeavesItsFirstPoint(Long first)
{
    for (Long i = first + 1; i <= RouteSegments.Last(); ++i)
        if (!SamePlace(RouteSegments[i], RouteSegments[first]))
            return true;
    return false;
}

// The tool goes down although no move leads it away. A start mark alone is no work.
void CountAsUncut(Uncut& left, Long first)
{
    if (RouteSegments[first].Kind != -5) {
        left.Polylines.Add(RouteSegments[first].Drawn);
        return;
    }
    left.Plunges.Add(RouteSegments[first]);
    if (RouteSegments.Last() == first)
        left.LoneStart = first;
}

} // namespace

void TakeRoutePolyline(RouteWalk& walk, Long& index)
{
    PolylineValues polyline = ValuesOfHeader();
    if (OnExcavationLayer() && !WantsPocketsOfAnyShape())
        Tell(Message::PolylinesToExplode, WithPlace({}, CurrentEntity.Drawn));
    EdgeCounts edges;
    const Long first = RouteSegments.Last() + 1;
    const RouteSegment evenStart = ReadVertices(walk, polyline, edges, index);
    const bool isLong = LeavesItsFirstPoint(first);
    if (RouteSegments.Last() < first) {
        walk.Left.Polylines.Add(CurrentEntity.Drawn);
        return;
    }
    if (polyline.Tapered && RouteSegments.Last() - first + 1 != VerticesOfMark) {
        RouteSegments[first] = evenStart; // no start mark: widths must not stand for a bulge
        if (RouteSegments.Last() > first)
            walk.Left.Widths.Add(RouteSegments[first].Drawn);
    }
    if (polyline.Closed && index <= Entities.Last())
        AddRouteRecord(ClosingRecord(RouteSegments[first], RouteSegments[RouteSegments.Last()]));
    if (!isLong)
        CountAsUncut(walk.Left, first);
    if (Run.RemoveBorder != False && edges.TellOutline()) {
        RouteSegments[first] = evenStart; // the runs are even, so widths must not stand for a bulge
        DropStepsOnOutline(first);
    }
}

} // namespace kv

// The route passes. Each route layer is one walk over all entities, in the order of the layer table;
// what is drawn on it in the face becomes RouteSegments and RouteCircles. Needs rewritten layers, the
// panel and the run's parameters. A line, arc or circle without length is told and left out.
#include "drawing/route_entities.h"

#include <cmath>
#include <string>
#include <vector>

#include "drawing/route_polylines.h"
#include "drawing/route_records.h"
#include "platform/events.h"
#include "platform/text.h"
#include "platform/trigonometry.h"
#include "state/drawn_entities.h"
#include "state/pocket_setting.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr std::size_t FirstRouteRow = 4; // of the layer table
constexpr double StraightArc = 100;      // radius by chord above which an arc is cut as a line

Drawn KindOfRecord(const DxfEntity& entity)
{
    const std::string kind = Compact(entity.Kind.Trimmed());
    if (kind == "LINE")
        return Drawn::Line;
    if (kind == "ARC")
        return Drawn::Arc;
    if (kind == "POLYLINE")
        return Drawn::Polyline;
    if (kind == "VERTEX")
        return Drawn::Vertex;
    if (kind == "SEQEND")
        return Drawn::Seqend;
    if (kind == "CIRCLE")
        return Drawn::Circle;
    return kind == "EOF" ? Drawn::EndOfFile : Drawn::Other;
}

std::vector<Drawn> KindsOfEntities()
{
    std::vector<Drawn> kinds;
    kinds.reserve(static_cast<std::size_t>(Entities.Last()) + 1);
    for (Long i = 0; i <= Entities.Last(); ++i)
        kinds.push_back(KindOfRecord(Entities[i]));
    return kinds;
}

// A record of the pass with everything but place, depth and feed.
RouteSegment SegmentOfEntity(const RouteWalk& walk, Int kind)
{
    RouteSegment record;
    record.Drawn = CurrentEntity.Drawn;
    record.Kind = kind;
    record.Pass = walk.Pass;
    record.Sequence = CurrentEntity.Sequence;
    record.ParamA = ReadParamA();
    record.ParamB = ReadParamB();
    record.Diameter = DiameterOr(CurrentEntity.Thickness);
    ReadTool(record);
    ReadParameters(record);
    return record;
}

// Depths. The order of the defaults is each kind's own; Z counts only where the layer names none.

Single DepthOfLine(Single z)
{
    const Single coded = ReadDepth();
    if (coded != 0)
        return coded;
    if (CurrentEntity.Elevation != 0)
        return std::abs(CurrentEntity.Elevation);
    return DepthFromEntity != False ? std::abs(z) : 0;
}

// The end of an arc never asks for the elevation.
Single DepthOfArcEnd()
{
    const Single coded = ReadDepth();
    if (coded != 0 || DepthFromEntity == False)
        return coded;
    return std::abs(CurrentEntity.Z1);
}

Single DepthOfArcStart()
{
    const Single depth = DepthOfArcEnd();
    return depth != 0 ? depth : std::abs(CurrentEntity.Elevation);
}

// Lines, arcs and circles

void TakeLine(RouteWalk& walk)
{
    const DecodedEntity& line = CurrentEntity;
    RouteSegment start = SegmentOfEntity(walk, -1);
    start.Feed = ReadFeed();
    start.X = line.X1;
    start.Y = line.Y1;
    start.Z = DepthOfLine(line.Z1);
    RouteSegment end = start;
    end.Kind = 1;
    end.X = line.X2;
    end.Y = line.Y2;
    end.Z = DepthOfLine(line.Z2);
    if (SamePlace(start, end) && start.Z == end.Z) { // a change of depth alone is a move
        walk.Left.Lines.Add(line.Drawn);
        return;
    }
    AddRouteRecord(start);
    AddRouteRecord(end);
}

void PutOnArc(RouteSegment& record, Single angle)
{
    const double radius = CurrentEntity.Radius;
    const double radians = static_cast<double>(angle) * Run.DegToRad;
    record.X = StoredCoordinate(CurrentEntity.X1 + radius * Cosine(radians));
    record.Y = StoredCoordinate(CurrentEntity.Y1 + radius * Sine(radians));
}

// Counter-clockwise from the start angle, 0 to below 360; 0 is the full circle.
double SpanOfArc()
{
    const double span =
        std::fmod(static_cast<double>(CurrentEntity.EndAngle) - CurrentEntity.StartAngle, 360.0);
    return span < 0 ? span + 360 : span;
}

// Ends at one place mean a full circle to the control, so a tiny arc must not come with such ends.
bool HasNoLength(const RouteSegment& start, const RouteSegment& end)
{
    const DecodedEntity& arc = CurrentEntity;
    if (!(arc.Radius > 0))
        return true;
    if (!SamePlace(start, end))
        return false;
    if (start.X == arc.X1 && start.Y == arc.Y1) // a radius below what a Single resolves
        return true;
    const double span = SpanOfArc();
    return span > 0 && span < 180;
}

// Nearly straight: also an arc that is all but a full circle, whose chord is short.
void SubstituteStraightArc(RouteSegment& start, RouteSegment& end)
{
    const double dx = static_cast<double>(end.X) - start.X;
    const double dy = static_cast<double>(end.Y) - start.Y;
    const double chord = std::sqrt(dx * dx + dy * dy);
    if (!(chord > 0) || !(CurrentEntity.Radius / chord > StraightArc))
        return;
    start.Kind = -1;
    end.Kind = 1;
    start.Aux2 = 0;
    end.Aux2 = 0;
}

// Drawn counter-clockwise from its start angle, cut clockwise from the end angle to the start angle.
void TakeArc(RouteWalk& walk)
{
    const DecodedEntity& arc = CurrentEntity;
    if (arc.ExtrusionZ == -1 && !walk.ArcNormalTold) {
        Tell(Message::ArcNormalTurned, WithPlace({}, arc.Drawn));
        walk.ArcNormalTold = true;
    }
    RouteSegment start = SegmentOfEntity(walk, -3);
    start.Feed = ReadFeedArc();
    RouteSegment end = start;
    start.Aux1 = arc.X1;
    start.Aux2 = arc.Y1;
    start.Z = DepthOfArcStart();
    // 0 and 360 degrees differ in the last bits: the run's Pi is not exact.
    PutOnArc(start, SpanOfArc() == 0 ? arc.StartAngle : arc.EndAngle);
    end.Kind = 3;
    end.Aux1 = arc.EndAngle;
    end.Aux2 = arc.StartAngle;
    end.Z = DepthOfArcEnd();
    PutOnArc(end, arc.StartAngle);
    if (HasNoLength(start, end)) {
        walk.Left.Arcs.Add(arc.Drawn);
        return;
    }
    if (Run.ArcSubstitution == 1)
        SubstituteStraightArc(start, end);
    AddRouteRecord(start);
    AddRouteRecord(end);
    AddRouteRecord({}); // blank; dropped before the routes are chained
}

void TakeCircle(RouteWalk& walk)
{
    const DecodedEntity& drawn = CurrentEntity;
    RouteCircle circle;
    circle.Drawn = drawn.Drawn;
    circle.X = drawn.X1;
    circle.Y = drawn.Y1;
    circle.Radius = drawn.Radius;
    const Single top = StoredCoordinate(static_cast<double>(circle.Y) + circle.Radius);
    if (!(circle.Radius > 0) || top == circle.Y) {
        walk.Left.Circles.Add(drawn.Drawn);
        return;
    }
    circle.Pass = static_cast<Int>(walk.Pass);
    circle.Sequence = drawn.Sequence;
    circle.Diameter = DiameterOr(drawn.Thickness);
    circle.Feed = ReadFeedArc();
    circle.Z = DepthOfArcStart();
    ReadTool(circle);
    ReadParameters(circle);
    if (circle.OscZ < 0 && !OnExcavationLayer())
        circle.OscZ = 0; // an oscillation without a number: below zero it would pass for a pocket
    Grow(RouteCircles, "route circles, layer " + ShownLayer(drawn.Layer), circle);
}

// Passes

void TakeEntity(RouteWalk& walk, Drawn kind, Long& index)
{
    switch (kind) {
    case Drawn::Line:
        TakeLine(walk);
        break;
    case Drawn::Arc:
        TakeArc(walk);
        break;
    case Drawn::Polyline:
        TakeRoutePolyline(walk, index);
        break;
    default:
        TakeCircle(walk);
        break;
    }
}

bool IsTaken(Drawn kind)
{
    return kind == Drawn::Line || kind == Drawn::Arc || kind == Drawn::Polyline || kind == Drawn::Circle;
}

// Splines, ellipses, hatches and the like. Texts are notes.
void CountUnknown(RouteWalk& walk, const DxfEntity& entity)
{
    if (!(entity.Layer == walk.Layer) || Holds(entity.Kind.Trimmed(), "TEXT"))
        return;
    UnknownKind& unknown = walk.Left.Unknown[std::string(UncutKind(entity))];
    if (++unknown.Count == 1) {
        unknown.First = entity.Drawn;
        unknown.X = entity.X1;
        unknown.Y = entity.Y1;
    }
}

// All entities are decoded, since a note or a sequence counts for every name that begins with the
// row's. Other names can only move the meter, and that they do in the first pass for all passes: so
// later passes step over them.
void RunPass(RouteWalk& walk, const std::string& row, bool isFirstPass)
{
    for (Long i = 1; i <= Entities.Last();) {
        DoEvents();
        const Drawn kind = KindAt(walk, i);
        if (kind == Drawn::EndOfFile)
            return;
        const DxfEntity& entity = Entities[i];
        if (kind == Drawn::Other)
            CountUnknown(walk, entity);
        if (!IsTaken(kind) || (!isFirstPass && !BeginsWith(entity.Layer.Padded(), row))) {
            ++i;
            continue;
        }
        CurrentEntity.SearchNotes = kind != Drawn::Polyline ? True : False;
        DecodeEntity(i);
        if (!(entity.Layer == walk.Layer))
            continue;
        if (CurrentEntity.Side != Face) {
            walk.Left.OnSides.Add(CurrentEntity.Drawn);
            continue;
        }
        RefuseInfinities();
        TakeEntity(walk, kind, i);
    }
}

void TellUncut(const std::string& layer, const UncutCount& left, Message number)
{
    if (left.Count > 0)
        Tell(number, WithPlace({{"layer", ShownLayer(layer)}, {"count", left.Count}}, left.First));
}

void TellPlunges(const std::string& layer, const PlungeCount& plunges)
{
    if (plunges.Count > 0)
        Tell(Message::PolylinesThatPlunge,
             WithPlace({{"layer", ShownLayer(layer)},
                        {"count", plunges.Count},
                        {"place", "X" + PlainText(plunges.X) + " Y" + PlainText(plunges.Y)}},
                       plunges.First));
}

void TellUnknownKind(const std::string& layer, const std::string& kind, const UnknownKind& unknown)
{
    MessageLine line = {Message::EntitiesOfUnknownKind,
                        {{"layer", ShownLayer(layer)}, {"count", unknown.Count}, {"kind", kind}}};
    if (WantsPocketsOfAnyShape() && Holds(layer, "EXCAV")) { // other outlines there may be islands
        line.Number = Message::NoIslandOfUnknownKind;
        line.Values.emplace_back("place", "X" + PlainText(unknown.X) + " Y" + PlainText(unknown.Y));
    }
    line.Values = WithPlace(std::move(line.Values), unknown.First);
    Tell(std::move(line));
}

void TellUncut(const std::string& layer, const Uncut& left)
{
    TellUncut(layer, left.Lines, Message::LinesWithoutLength);
    TellUncut(layer, left.Arcs, Message::ArcsWithoutLength);
    TellUncut(layer, left.Circles, Message::CirclesWithoutRadius);
    TellUncut(layer, left.Polylines, Message::PolylinesWithoutLength);
    TellPlunges(layer, left.Plunges);
    TellUncut(layer, left.Widths, Message::PolylineWidths);
    TellUncut(layer, left.OnSides, Message::EntitiesInEdgePlane);
    for (const auto& [kind, unknown] : left.Unknown)
        TellUnknownKind(layer, kind, unknown);
}

// A start at the list's end is no route. Whether records follow it, only the later passes say.
struct LastStart {
    std::string Layer;
    Long Record = 0; // 0: none
};

LastStart TakeLastStart(const std::string& layer, Uncut& left)
{
    if (left.LoneStart == 0 || left.LoneStart != RouteSegments.Last())
        return {};
    --left.Plunges.Count; // that of the first one stays its place
    return {layer, left.LoneStart};
}

void TellLastStart(const LastStart& start)
{
    if (start.Record == 0)
        return;
    Uncut left;
    if (start.Record == RouteSegments.Last())
        left.Polylines.Add(RouteSegments[start.Record].Drawn);
    else
        left.Plunges.Add(RouteSegments[start.Record]);
    TellUncut(start.Layer, left);
}

} // namespace

void ReadRoutePasses()
{
    RouteWalk walk;
    LastStart last;
    if (Run.LayerTable.size() > FirstRouteRow)
        walk.Kinds = KindsOfEntities();
    for (std::size_t row = FirstRouteRow; row < Run.LayerTable.size(); ++row) {
        const std::string& layer = Run.LayerTable[row];
        Run.RoutePass = ToInt(static_cast<double>(row));
        walk.Pass = static_cast<Long>(row - FirstRouteRow + 1);
        walk.Layer = layer;
        walk.Left = {};
        RunPass(walk, layer, row == FirstRouteRow);
        if (last.Record != RouteSegments.Last()) {
            TellLastStart(last);
            last = TakeLastStart(layer, walk.Left);
        }
        TellUncut(layer, walk.Left);
    }
    TellLastStart(last);
    Run.RoutePass = 0;
}

} // namespace kv

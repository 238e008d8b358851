// What the lines, arcs, circles and polylines of a route layer share: the state of the walks over the
// entities, the parameters that all read alike, and the way into RouteSegments.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "drawing/layer_rules.h"
#include "platform/text.h"
#include "state/run.h"

namespace kv {

enum class Drawn : unsigned char { Other, Line, Arc, Polyline, Vertex, Seqend, Circle, EndOfFile };

// Entities of a kind that no route comes from.
struct UnknownKind {
    Long Count = 0;
    Long First = 0;      // entity
    Single X = 0, Y = 0; // of the first one, as drawn
};

// Polylines that stay where they begin and are cut as a plunge.
struct PlungeCount {
    Long Count = 0;
    Long First = 0;      // entity
    Single X = 0, Y = 0; // of the first one, as drawn
    void Add(const RouteSegment& start)
    {
        if (++Count > 1)
            return;
        First = start.Drawn;
        X = start.X;
        Y = start.Y;
    }
};

// Entities of one fault.
struct UncutCount {
    Long Count = 0;
    Long First = 0; // entity
    void Add(Long drawn)
    {
        if (++Count == 1)
            First = drawn;
    }
};

// What one pass meets and cannot cut.
struct Uncut {
    UncutCount Lines, Arcs, Circles, Polylines;
    PlungeCount Plunges;
    Long LoneStart = 0; // the record of the last polyline of one point
    UncutCount OnSides; // drawn in the plane of an edge
    UncutCount Widths;  // of tapered polylines too long for a start mark; they are cut
    std::map<std::string, UnknownKind> Unknown;
};

struct RouteWalk {
    std::vector<Drawn> Kinds; // of all Entities; looked at once, since hundreds of passes may follow
    bool ArcNormalTold = false;
    // The pass that runs.
    Long Pass = 0;
    Text<114> Layer;
    Uncut Left;
};

inline Drawn KindAt(const RouteWalk& walk, Long index)
{
    return walk.Kinds[static_cast<std::size_t>(index)];
}

inline bool OnExcavationLayer()
{
    return Holds(CurrentEntity.Layer, "EXCAV");
}

// A coordinate that a Single can hold; more than that is a RunError that names the layer.
Single StoredCoordinate(double value);
// CurrentEntity's coordinates are multiplied by the drawing's scale, which may have made them infinite.
void RefuseInfinities();
// Appends to RouteSegments; an error names the layer.
void AddRouteRecord(const RouteSegment& record);
bool SamePlace(const RouteSegment& a, const RouteSegment& b);
Single DiameterOr(Single fallback); // where the layer names none

template <typename Record> void ReadTool(Record& record)
{
    record.ToolNo = ReadToolNumber();
    record.Tool = ReadToolString();
    record.Comp = ReadComp();
}

// What all kinds read in the same way: not tool, depth, diameter, feed and sequence.
template <typename Record> void ReadParameters(Record& record)
{
    record.Speed = ReadSpeed();
    record.FeedDown = ReadFeedDown();
    record.FeedRapid = ReadFeedRapid();
    record.ExtraSlot = ReadExtraSlot();
    record.LeadIn = ReadLeadIn();
    record.RampOut = ReadRampOut();
    record.RampIn = ReadRampIn();
    record.OscZ = OnExcavationLayer() ? -(ReadExcav() + 1) : ReadOscZ();
    record.MCode = ReadMCode();
    const Int group = ReadGroup();
    record.Group = group != 0 ? group : Int{1};
}

} // namespace kv

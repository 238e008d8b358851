// What the passes over RouteSegments share: where a route begins and ends, its lead values, and the
// ways records get into the list. A path is a run of records that begins with a negative Kind; a
// route, once the paths are chained, runs from a record marked as its start to the one before the
// next mark.
#pragma once

#include <string>
#include <vector>

#include "geometry/angles.h"
#include "state/run.h"

namespace kv {

constexpr Int RouteStart = -8; // Dir of a route's first record

inline bool StartsRoute(const RouteSegment& record)
{
    return record.Dir == RouteStart;
}
inline Int KindOf(const RouteSegment& record) // without its sign
{
    return static_cast<Int>(record.Kind < 0 ? -record.Kind : record.Kind);
}
inline PlanePoint PointOf(const RouteSegment& record)
{
    return {record.X, record.Y};
}
inline PlanePoint CentreOf(const RouteSegment& record) // of a record of Kind -3
{
    return {record.Aux1, record.Aux2};
}
inline void PlaceAt(RouteSegment& record, const PlanePoint& point)
{
    record.X = ToSingle(point.X);
    record.Y = ToSingle(point.Y);
}

// Index of the last record of the route or path stretch that `first` opens.
Long LastOfRoute(Long first);

// Appends a record; more than 32767 end the run.
RouteSegment& AddSegment(const RouteSegment& record);
// The same for a list that is built aside.
void AddTo(std::vector<RouteSegment>& records, const RouteSegment& record);
// Replaces all records, the first of the vector becoming record 1, and sets SegmentCount.
void StoreSegments(const std::vector<RouteSegment>& records);

// A record with all fields that a circle shares with it.
RouteSegment SegmentOfCircle(const RouteCircle& circle);

// G41 and G42 change places; what stands behind the code stays.
Text<10> OtherSideOf(const Text<10>& comp);

// The layer of a route pass as people know it; empty where there is none.
std::string ShownLayerOfPass(Long pass);
std::string_view LayerOfPass(Long pass); // as the layer rules rewrote it

// Lead of a route or circle after the run's defaults: lengths in drawing units, ramps as depths
// (minus the height; 0: no ramp).
struct LeadValues {
    Single Length = 0, RampOut = 0, RampIn = 0;
};
LeadValues LeadValuesOf(Single leadIn, Single rampOut, Single rampIn);
// Whether the run makes leads at all.
bool LeadsWanted();

} // namespace kv

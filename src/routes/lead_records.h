// A lead as it is planned, and as the records that it becomes: copies of the route's first record in
// front of it, or of its last record behind it, so that tool, feeds and depth go on.
#pragma once

#include <span>
#include <vector>

#include "geometry/angles.h"
#include "state/records.h"

namespace kv {

enum class LeadForm { None, Line, Arc, Bulge };

struct LeadPlan {
    LeadForm Form = LeadForm::None;
    PlanePoint Far;                      // the lead's end away from the route
    PlanePoint Centre;                   // of an arc
    double StartAngle = 0, EndAngle = 0; // of an arc, in the order of travel
    bool CounterClockwise = false;       // of an arc
    double Bulge = 0;
    Single Ramp = 0; // depth at the far end; 0: the route's own
};

struct RouteLeads {
    LeadPlan In, Out;
};

LeadPlan StraightLead(const PlanePoint& far);
LeadPlan ArcLead(const PlanePoint& far, const PlanePoint& centre, double startAngle, double endAngle,
                 bool counterClockwise);

// Puts a route with its leads behind `records`. The route's first and last record change only as far as
// their place in the path does.
void AppendWithLeads(std::vector<RouteSegment>& records, std::span<const RouteSegment> route,
                     const RouteLeads& leads);

} // namespace kv

// Leads of routes that end at the part's border: on beyond the border where the way crosses it, on a
// quarter arc out of the part where it runs along it. Compensation and ramps play no part here.
#pragma once

#include <span>
#include <vector>

#include "routes/lead_records.h"

namespace kv {

struct SideLimits {
    double MinX = 0, MaxX = 0, MinY = 0, MaxY = 0;
};
// The limits of a side, as the records of its routes are measured; side 0 counts as the face.
SideLimits LimitsOf(Int side);
// Whether a coordinate lies within the tolerance of one of its limits, wherever the other one is.
bool NearsALimit(const PlanePoint& point, const SideLimits& limits);

// A lead for each end of the route that lies on the border.
RouteLeads BorderLeads(std::span<const RouteSegment> route, double length);

} // namespace kv

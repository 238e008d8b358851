// Leads of closed, compensated contours that stay clear of the border: where the tool's side leaves
// room at the seam it comes in and goes out along the corner's bisector, elsewhere on quarter arcs
// tangent to the way.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "routes/lead_records.h"
#include "routes/route_runs.h"

namespace kv {

// Nothing for a route that is open, without lead or compensation, or has its seam at the border.
std::optional<RouteLeads> ContourLeads(std::span<const RouteSegment> route, const LeadValues& values);

} // namespace kv

// What the tool cuts of the walls of an inner corner in which a contour begins: it stays in the program
// as it is, and the report says so with layer and place.
#pragma once

#include <span>
#include <vector>

#include "routes/lead_records.h"
#include "state/messages.h"

namespace kv {

// Of a route and its leads; empty where there is nothing to say, or the tool's radius is not known. Both
// are measured as the pass for the sides has left them; the line has the place of the drawing.
MessageLine LeadDoubt(std::span<const RouteSegment> route, const RouteLeads& leads);

} // namespace kv

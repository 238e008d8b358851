// The polylines of a route pass.
#pragma once

#include "drawing/route_records.h"

namespace kv {

// Stores the polyline whose header is CurrentEntity; `index` stands behind the header and is moved to
// the polyline's SEQEND.
void TakeRoutePolyline(RouteWalk& walk, Long& index);

} // namespace kv

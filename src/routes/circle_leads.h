// A free compensated circle comes with its lead-in and lead-out as arcs.
#pragma once

#include "routes/route_paths.h"

namespace kv {

// Appends lead-in, circle and lead-out of each such circle, and each as a chain of its own to
// `linked`. Nothing when the run makes no leads.
void BuildCircleLeads(std::vector<ChainEntry>& linked);

} // namespace kv

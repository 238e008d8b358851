// Leads of routes: the tool comes into the work and leaves it on a path of its own, with a ramp where
// one is asked for. The last pass over the routes before they are written. It relies on the routes
// being chained, each marked at its first record, and makes the list longer.
#pragma once

namespace kv {

void SynthesizeLeads();

} // namespace kv

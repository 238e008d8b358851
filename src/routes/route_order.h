// The order of the paths before they are chained: free ends first, so that a chain starts at an end.
#pragma once

namespace kv {

// Brings the paths that end a chain to the front of RouteSegments; start marks move to its head.
void OrderRouteChains();

} // namespace kv

// Loose paths and circles of the route layers become ordered chains.
#pragma once

namespace kv {

void DropDeadSegments(); // records of Kind 0
void CloseLoneCircles(); // circles of a drawing without segments become closed arc pairs
// Links touching paths, joins circles to them, gives free circles their leads, and puts the chains
// in order. The first record of each chain is marked as a route's start. False when the operator
// asked to abort.
bool ChainRoutes();

} // namespace kv

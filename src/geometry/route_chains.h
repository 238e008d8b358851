// Segments become paths, paths become ordered chains on their sides.
#pragma once

namespace kv {

void DropDeadSegments(); // records of Kind 0
void CloseLoneCircles(); // circles of a drawing without segments become closed arc pairs
void ChainRoutes();      // order, link, join circles, sort
void AssignRouteSides(); // sides of chains and circles, and the move into the views

} // namespace kv

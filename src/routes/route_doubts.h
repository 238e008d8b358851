// Routes and pockets whose depth, place or tool no designer wants.
#pragma once

namespace kv {

// When the routes are chained, still as drawn: before pockets, leads and depth passes multiply them.
void TellRouteDoubts();

} // namespace kv

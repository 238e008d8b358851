// Routes may be drawn in the edge views around the face.
#pragma once

namespace kv {

// Finds the view of each route and circle and moves the records into that view's coordinates, as the
// control system wants them.
void AssignRouteSides();

} // namespace kv

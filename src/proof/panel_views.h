// The panel's face and the views of its edges in the drawing, as the run found them, in millimetres.
#pragma once

#include "machine/steps.h"

namespace kv {

// The view that holds the place; the face where none of the edges' does.
Plane ViewAt(const PathPoint& drawn);
// In the plane's own coordinates: along the edge, up from the underside. The views 1 and 3 show their edges
// mirrored.
PathPoint PlaceInView(Plane view, const PathPoint& drawn);
bool IsMirroredView(Plane view);
Move MoveInView(Plane view, Move drawn);

} // namespace kv

// The planes of routes: on the face as drawn, on an edge view in the plane of that edge.
#pragma once

#include <string>

#include "platform/numbers.h"

namespace kv {

struct PlaneWords;

// A point as a line names it.
struct WorkingPoint {
    Single X = 0, Y = 0;
    std::string Depth; // depth word's value
};

// Takes the side of a record for it and those behind it; a record of no side lies on the face.
void TakeRouteSide(Int side);
Int SideOfRoute();
// Sets the plane's words for a point on the current side, as drawn, and the offsets of its arc's
// centre. A panel that came from a solid has no edge views: the words stay as they stand.
void SetPlaneWords(Single x, Single y, Single i = 0, Single j = 0);
const PlaneWords& PlaneOfRoute();
// A point as drawn and its depth in the plane of the current side.
WorkingPoint PointInPlane(Single x, Single y, Single z);

} // namespace kv

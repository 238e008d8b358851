// From a place on the sheet back to the one that the program would name.
#pragma once

#include <optional>
#include <string>

#include "scene/scene.h"

namespace kv {

struct PlaceOnSide {
    Plane On = Plane::Surface;
    double Along = 0, Across = 0; // mm: X and Y of the face; along an edge, and up from the panel's underside
};
// Nothing beside the face and the edges.
std::optional<PlaceOnSide> PlaceOnSideOf(const Scene& scene, const PathPoint& sheet);
// "X 100, Y 50 mm" or "side 2: 100 mm along, 4 mm below the face", counted from the corner of the program.
// `unit`: mm of the program's unit, 1 or 25.4. Empty beside all sides.
std::string PlaceText(const Scene& scene, const PathPoint& sheet, double unit);

} // namespace kv

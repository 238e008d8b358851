// The drawing as its designer sees it, for a picture of its program: each entity on the panel's face with
// what became of it.
#pragma once

#include <string_view>
#include <vector>

#include "scene/scene.h"

namespace kv {

// To be told of the stages of a conversion; afterwards DrawnShapesOfRun has the shapes of that drawing, and
// OriginsOfRun what its programs' lines come from.
void KeepDrawnShapes(std::string_view stage);
// Empty where the conversion did not come to its programs.
std::vector<DrawnShape> DrawnShapesOfRun();

} // namespace kv

// The lines of equal distance from the walls.
#pragma once

#include <vector>

#include "geometry/inset_diagram.h"
#include "geometry/inset_field.h"

namespace kv {

// At a distance of so many drawing units. Whole arcs, no chords.
std::vector<InsetLoop> LoopsOf(const InsetDiagram& diagram, double clearance);

} // namespace kv

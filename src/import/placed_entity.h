// Entities moved, turned, mirrored and scaled.
#pragma once

#include <optional>

#include "import/flat_entity.h"

namespace kv {

// The entity where the placement brings it. What comes to lie in the drawing's own plane, whichever side is
// up, has no extrusion any more: arcs then swap their ends, bulges change their sign. Arcs and circles that
// are squeezed become polylines within `tolerance`. Thickness keeps its sign, which no rule of the layers
// asks for. None where the entity collapses into a line.
std::optional<FlatEntity> PlacedEntity(const FlatEntity& flat, const Placement& placement, double tolerance);

} // namespace kv

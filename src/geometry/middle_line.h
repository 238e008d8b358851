// The middle line of a region, where two walls are equally near: what loops leave between them, and where
// the region is narrow.
#pragma once

#include <vector>

#include "geometry/inset_diagram.h"
#include "geometry/inset_field.h"

namespace kv {

// Points between two distances from which no line of the greater one is within reach along the middle
// line. Drawing units.
std::vector<PlanePoint> MiddleFarFromLoops(const InsetDiagram& diagram, double low, double high,
                                           double reach);
// Culs-de-sac and necks of less than the clearance, by more than the rise above what leads to them.
std::vector<NarrowPlace> NarrowPlacesOf(const InsetDiagram& diagram, double clearance, double rise);

} // namespace kv

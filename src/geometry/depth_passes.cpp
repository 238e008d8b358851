// There are no routes to divide yet.
#include "geometry/depth_passes.h"

namespace kv {

void ReseamClosedPolylines() {}

void OscillateZ() {}

void SplitDepthPasses() {}

} // namespace kv

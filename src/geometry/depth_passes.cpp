#include "geometry/depth_passes.h"

namespace kv {

void ReverseClosedPolylines() {}

void ReseamClosedPolylines() {}

void OscillateZ() {}

void SplitDepthPasses() {}

} // namespace kv

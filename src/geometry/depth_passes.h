// Routes that are cut in several depths, seams of closed routes, oscillation in Z.
#pragma once

namespace kv {

void ReseamClosedPolylines();
void OscillateZ();
void SplitDepthPasses();

} // namespace kv

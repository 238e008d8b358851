// Route layers: LINE, ARC, POLYLINE and CIRCLE become segments and circles, one pass for each layer.
#pragma once

namespace kv {

// Reads all route layers in table order. The records stay in drawing coordinates. What has nothing to
// cut is told, layer by layer.
void ReadRoutePasses();

} // namespace kv

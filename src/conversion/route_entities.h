// Route layers: LINE, ARC, POLYLINE and CIRCLE become segments and circles, one pass for each layer.
#pragma once

namespace kv {

// Reads all route layers in table order. Today no route is made: each route layer is told.
void ReadRoutePasses();

} // namespace kv

// The drill optimizer: chains bores and plans the stops of the multi-spindle head.
#pragma once

namespace kv {

// Today no stop is planned: the bores stay as they are, and that is told.
void OptimizeDrilling();

} // namespace kv

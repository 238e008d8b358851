// The drill optimizer: turns the vertical bores into the stops of the multi-spindle boring head.
#pragma once

namespace kv {

// Chains the bores that stand in rows at a multiple of 32 mm and for which the head has drills, makes
// one head position for each chain and each lone bore, and empties VBores. HeadPositions must be empty.
void OptimizeDrilling();

} // namespace kv

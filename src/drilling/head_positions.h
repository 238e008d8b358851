// The stops of the boring head: one for each chain and each lone bore, with the drills that come down.
#pragma once

namespace kv {

// Turns the gathered bores into HeadPositions and empties VBores. `originFlip`: rows along Y are drilled
// from the head's other end.
void PlanHeadPositions(bool originFlip);

} // namespace kv

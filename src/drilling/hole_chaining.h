// Chains of bores that one stop of the boring head can drill. From here on the fields of VBores have
// another meaning: Group is the chain mark (index of the chain's first bore, minus for a chain along Y,
// 0 for none), Speed the number of bores of the chain, Pitch its pitch in mm, a multiple of 32.
#pragma once

namespace kv {

constexpr int PitchUnit = 32; // mm; drills of a row stand this far apart

// Takes out every bore that stands on an earlier one, whatever their depths.
void RemoveDuplicateBores();
// Clears marks and sizes; a bore that names its tool loses its diameter.
void ClearChains();
// Marks the chains that the head has drills for.
void FindChains();
void CountChainSizes();
// Brings the bores of each chain together.
void GatherChains();

} // namespace kv

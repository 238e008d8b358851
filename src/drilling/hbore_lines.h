// Horizontal bores drawn in plan: an axis that runs in from the panel's edge and a short line across
// its inner end.
#pragma once

namespace kv {

// Makes HBores out of HBoreLines, which it empties, and orders the bores of each edge, those of the
// edge views too.
void BuildHorizontalBores();

} // namespace kv

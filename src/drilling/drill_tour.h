// A short way through the vertical bores: nearest neighbour, tried with ten weights of the X axis.
#pragma once

#include "state/run.h"

namespace kv {

// Puts VBores into the order of the shortest of ten tours.
void OrderBores();
// Quicksort by Y, pivot in the middle; the order of equals is its own and later passes rely on it.
void SortBoresByY(RecordArray<VBoreRecord>& list, Long low, Long high);

} // namespace kv

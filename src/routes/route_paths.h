// Paths: runs of records that begin with a negative Kind. The passes that order and link routes work
// on these entries and turn the records themselves where a path is run backward.
#pragma once

#include <vector>

#include "routes/route_runs.h"

namespace kv {

// A path in the making of a chain.
struct ChainEntry {
    Long First = 0, Last = 0;            // records
    Single StartAngle = 0, EndAngle = 0; // directions of the way, 0 to below 360
    Int PathKind = 0;                    // Kind of the first record without its sign
    bool ChainHead = false, Used = false;
};

// The path that each record with a negative Kind opens. The list's last record, when it opens a path
// of its own, ends the list and is in none. First records keep their path's direction in Aux1.
std::vector<ChainEntry> FindPaths();

// Last record of the path that `first` opens.
Long LastOfPath(Long first);

// Runs a path backward: points, directions, turning sense, side of the tool. A polyline stays as it is.
void ReversePath(ChainEntry& path);

} // namespace kv

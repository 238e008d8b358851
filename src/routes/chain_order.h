// Linked paths as a list of chains, and the orders that are laid over it one after the other.
#pragma once

#include <vector>

#include "routes/route_paths.h"

namespace kv {

struct Chain {
    std::size_t First = 0, Last = 0; // in the list's records
    Long SortKey = 0;
};

struct ChainList {
    std::vector<RouteSegment> Records;
    std::vector<Chain> Chains;
};

// Copies the records chain by chain in linked order and marks each chain's first one as a start.
ChainList GatherChains(const std::vector<ChainEntry>& linked);
// From the far corner of the face on, always the nearest chain next. Chains out of reach drop out.
void OrderByNearness(ChainList& list);
// Ascending, stable. Chains with a tool outside 0 to 90000 drop out.
void OrderByTool(ChainList& list);
// Ascending, stable, where the drawing has sequence numbers at all.
void OrderBySequence(ChainList& list);
// Back to RouteSegments; a chain's first record decides tool, diameter, compensation and speed.
void CopyOut(const ChainList& list);

} // namespace kv

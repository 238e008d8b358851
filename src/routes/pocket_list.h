// The chains of the route list while its pockets are being cleared: what each was drawn as or has
// become.
#pragma once

#include <span>
#include <vector>

#include "routes/route_runs.h"

namespace kv {

using ChainSpan = std::span<const RouteSegment>;

// A chain of the list that is built, and what it has become.
struct PocketChain {
    std::size_t First = 0, Count = 0; // in the list's records
    bool IsPocket = false;            // cleared
    bool FromCircleList = false;
    int Rank = 0;
};

struct PocketList {
    std::vector<RouteSegment> Records;
    std::vector<PocketChain> Chains;

    ChainSpan Of(const PocketChain& chain) const { return {&Records[chain.First], chain.Count}; }
    // The records after the last chain are a chain now, where there are any.
    void EndChain(bool isPocket, bool fromCircleList = false)
    {
        const std::size_t first = Chains.empty() ? 0 : Chains.back().First + Chains.back().Count;
        if (Records.size() > first)
            Chains.push_back({first, Records.size() - first, isPocket, fromCircleList});
    }
};

// Each runs from a route's start to the record before the next one.
std::vector<ChainSpan> ChainsOf(ChainSpan records);
void CopyChain(ChainSpan chain, std::vector<RouteSegment>& records);

} // namespace kv

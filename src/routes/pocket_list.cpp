#include "routes/pocket_list.h"

namespace kv {

std::vector<ChainSpan> ChainsOf(ChainSpan records)
{
    std::vector<ChainSpan> chains;
    std::size_t first = 0;
    for (std::size_t i = 1; i <= records.size(); ++i) {
        if (i < records.size() && !StartsRoute(records[i]))
            continue;
        if (i > first)
            chains.push_back(records.subspan(first, i - first));
        first = i;
    }
    return chains;
}

void CopyChain(ChainSpan chain, std::vector<RouteSegment>& records)
{
    for (const RouteSegment& record : chain)
        AddTo(records, record);
}

} // namespace kv

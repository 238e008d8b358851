// Pockets by their form: rectangles first, then circles that are two arcs of a route, then circles of
// the circle list. Relies on chained routes whose records carry the pocket's mark in OscZ; leaves
// clearing paths without it, in front of the other routes. An outline that cannot be cleared stays a
// plain route and is told.
#include "routes/pockets.h"

#include <algorithm>
#include <span>
#include <vector>

#include "routes/circle_pockets.h"
#include "routes/pocket_values.h"
#include "routes/rectangle_pockets.h"

namespace kv {

namespace {

constexpr Int TaperedStart = -4;
constexpr std::size_t FewestRecords = 6; // of a rectangle with its start mark

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
    // The records behind the last chain are a chain now.
    void EndChain(bool isPocket)
    {
        const std::size_t first = Chains.empty() ? 0 : Chains.back().First + Chains.back().Count;
        Chains.push_back({first, Records.size() - first, isPocket});
    }
};

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

bool StartsPocket(const RouteSegment& record)
{
    return record.Kind == TaperedStart && MarksPocket(record.OscZ, record.Pass);
}

void Copy(ChainSpan chain, std::vector<RouteSegment>& records)
{
    for (const RouteSegment& record : chain)
        AddTo(records, record);
}

// The chain begins with the pocket's start mark; what stood in front of it goes to the end.
std::vector<RouteSegment> BeginWith(std::size_t mark, ChainSpan chain)
{
    std::vector<RouteSegment> contour(chain.begin(), chain.end());
    contour.front().Dir = 0;
    std::rotate(contour.begin(), contour.begin() + static_cast<std::ptrdiff_t>(mark), contour.end());
    contour.front().Dir = RouteStart;
    return contour;
}

// Adds the loops, or the chain as it is. Returns whether it is cleared.
bool ClearRectangleOf(ChainSpan chain, std::vector<RouteSegment>& records)
{
    const auto mark = std::find_if(chain.begin(), chain.end(), StartsPocket);
    if (mark == chain.end()) {
        Copy(chain, records);
        return false;
    }
    const std::vector<RouteSegment> contour =
        BeginWith(static_cast<std::size_t>(mark - chain.begin()), chain);
    if (contour.size() < FewestRecords)
        ReportUncleared(contour.front().Pass, PointOf(contour.front()));
    else if (ClearRectangle(contour, records))
        return true;
    Copy(contour, records);
    return false;
}

bool ClearCircleOf(ChainSpan chain, std::vector<RouteSegment>& records)
{
    const auto marksPocket = [](const RouteSegment& record) { return MarksPocket(record.OscZ, record.Pass); };
    const RouteSegment& first = chain.front();
    if (IsCirclePocket(chain)) {
        if (ClearCirclePair(chain, records))
            return true;
    } else if (!StartsPocket(first) && std::any_of(chain.begin(), chain.end(), marksPocket)) {
        ReportUncleared(first.Pass, PointOf(first)); // one that starts as a rectangle is told
    }
    Copy(chain, records);
    return false;
}

PocketList ClearRectangles(ChainSpan drawn)
{
    PocketList list;
    for (const ChainSpan chain : ChainsOf(drawn))
        list.EndChain(ClearRectangleOf(chain, list.Records));
    return list;
}

PocketList ClearCircles(const PocketList& drawn)
{
    PocketList list;
    for (const PocketChain& chain : drawn.Chains) {
        if (chain.IsPocket) {
            Copy(drawn.Of(chain), list.Records);
            list.EndChain(true);
        } else {
            list.EndChain(ClearCircleOf(drawn.Of(chain), list.Records));
        }
    }
    return list;
}

void AddListCircles(PocketList& list)
{
    std::vector<std::size_t> counts;
    ClearListCircles(list.Records, counts);
    std::size_t first = list.Records.size();
    for (const std::size_t count : counts)
        first -= count;
    for (const std::size_t count : counts) {
        list.Chains.push_back({first, count, true, true});
        first += count;
    }
}

// Nothing is cleared in a part that is already cut free: pockets go in front of the first other route,
// by tool. Where the drawing's numbers give the order, those among the routes keep their places.
void PutPocketsFirst(PocketList& list)
{
    const auto isRoute = [](const PocketChain& chain) { return !chain.IsPocket; };
    const auto firstRoute = std::find_if(list.Chains.begin(), list.Chains.end(), isRoute);
    for (auto chain = list.Chains.begin(); chain != list.Chains.end(); ++chain) {
        const bool moves = chain->IsPocket && (chain->FromCircleList || Run.MaxSequence == 0);
        if (moves)
            chain->Rank = 1;
        else
            chain->Rank = chain < firstRoute ? 0 : 2;
    }
    const auto toolOf = [&list](const PocketChain& chain) { return list.Records[chain.First].ToolNo; };
    std::stable_sort(list.Chains.begin(), list.Chains.end(), [&](const PocketChain& a, const PocketChain& b) {
        if (a.Rank != b.Rank)
            return a.Rank < b.Rank;
        return a.Rank == 1 && toolOf(a) < toolOf(b);
    });
}

void StoreChains(const PocketList& list)
{
    std::vector<RouteSegment> ordered;
    ordered.reserve(list.Records.size());
    for (const PocketChain& chain : list.Chains) {
        const std::size_t first = ordered.size();
        Copy(list.Of(chain), ordered);
        if (first > 0) // the head of the list needs no start, what is put behind a pocket does
            ordered[first].Dir = RouteStart;
    }
    StoreSegments(ordered);
}

} // namespace

void ExcavatePockets()
{
    const std::vector<RouteSegment> drawn(RouteSegments.begin() + 1, RouteSegments.end());
    PocketList list = ClearCircles(ClearRectangles(drawn));
    AddListCircles(list);
    PutPocketsFirst(list);
    StoreChains(list);
}

} // namespace kv

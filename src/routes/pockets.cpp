// Pockets by their form: rectangles first, then circles that are two arcs of a route, then circles of
// the circle list; or, by the setting Pockets, all of them by true insets. Relies on chained routes whose
// records carry the pocket's mark in OscZ; leaves clearing paths without it, in front of the other routes.
// An outline that cannot be cleared stays a plain route and is reported.
#include "routes/pockets.h"

#include <algorithm>
#include <vector>

#include "routes/circle_pockets.h"
#include "routes/open_outlines.h"
#include "routes/pocket_list.h"
#include "routes/pocket_values.h"
#include "routes/rectangle_pockets.h"
#include "routes/route_runs.h"
#include "routes/shaped_pockets.h"

namespace kv {

namespace {

constexpr Int TaperedStart = -4;
constexpr std::size_t FewestRecords = 6; // of a rectangle with its start mark

bool StartsPocket(const RouteSegment& record)
{
    return record.Kind == TaperedStart && MarksPocket(record.OscZ, record.Pass);
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
bool ClearRectangleOf(ChainSpan chain, std::vector<RouteSegment>& records, const OpenOutlines& open)
{
    const auto mark = std::find_if(chain.begin(), chain.end(), StartsPocket);
    if (mark == chain.end()) {
        CopyChain(chain, records);
        return false;
    }
    const std::vector<RouteSegment> contour =
        BeginWith(static_cast<std::size_t>(mark - chain.begin()), chain);
    if (contour.size() < FewestRecords)
        ReportUncleared(PocketAt(contour.front()),
                        open.FaultOf(std::span(contour).subspan(std::min(MarkLength, contour.size()))));
    else if (ClearRectangle(contour, records, open))
        return true;
    CopyChain(contour, records);
    return false;
}

bool ClearCircleOf(ChainSpan chain, std::vector<RouteSegment>& records, const OpenOutlines& open)
{
    const auto marksPocket = [](const RouteSegment& record) { return MarksPocket(record.OscZ, record.Pass); };
    const RouteSegment& first = chain.front();
    if (IsCirclePocket(chain)) {
        if (ClearCirclePair(chain, records, open))
            return true;
    } else if (!StartsPocket(first) && std::any_of(chain.begin(), chain.end(), marksPocket)) {
        // One that starts as a rectangle is told, and so is the one that this is the rest of.
        if (const MessageLine fault = open.FaultOf(chain); !open.IsRestOfAnother(chain))
            ReportUncleared(PocketAt(first), fault.Empty() ? MessageLine{Message::PocketWithoutMark} : fault);
    }
    CopyChain(chain, records);
    return false;
}

PocketList ClearRectangles(ChainSpan drawn, const OpenOutlines& open)
{
    PocketList list;
    for (const ChainSpan chain : ChainsOf(drawn))
        list.EndChain(ClearRectangleOf(chain, list.Records, open));
    return list;
}

PocketList ClearCircles(const PocketList& drawn, const OpenOutlines& open)
{
    PocketList list;
    for (const PocketChain& chain : drawn.Chains) {
        if (chain.IsPocket) {
            CopyChain(drawn.Of(chain), list.Records);
            list.EndChain(true);
        } else {
            list.EndChain(ClearCircleOf(drawn.Of(chain), list.Records, open));
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
    RouteSegments.CutTo(0);
    for (const PocketChain& chain : list.Chains) {
        const Long before = RouteSegments.Last();
        for (const RouteSegment& record : list.Of(chain))
            AddSegment(record);
        // The head of the list needs no start, what is put behind a pocket does.
        if (before > 0 && RouteSegments.Last() > before)
            RouteSegments[before + 1].Dir = RouteStart;
    }
    Run.SegmentCount = ToInt(RouteSegments.Last());
}

} // namespace

void ExcavatePockets()
{
    const std::vector<RouteSegment> drawn(RouteSegments.begin() + 1, RouteSegments.end());
    PocketList list;
    if (ClearsAnyShape()) {
        list = ClearAnyShapes(drawn);
    } else {
        const OpenOutlines open;
        list = ClearCircles(ClearRectangles(drawn, open), open);
        AddListCircles(list);
    }
    PutPocketsFirst(list);
    StoreChains(list);
}

} // namespace kv

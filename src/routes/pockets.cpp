// Pockets by their form: rectangles first, then circles that are two half circles of a route, then
// circles of the circle list. Relies on chained routes whose records carry the pocket's mark in OscZ;
// leaves clearing paths without it. An outline that cannot be cleared stays a plain route, and its
// layer is told.
#include "routes/pockets.h"

#include <algorithm>
#include <span>
#include <vector>

#include "routes/circle_pockets.h"
#include "routes/pocket_values.h"
#include "routes/rectangle_pockets.h"
#include "routes/route_runs.h"

namespace kv {

namespace {

constexpr Int TaperedStart = -4;
constexpr std::size_t FewestRecords = 6; // of a rectangle with its start mark

using ChainSpan = std::span<const RouteSegment>;

std::vector<ChainSpan> ChainsOf(const std::vector<RouteSegment>& records)
{
    std::vector<ChainSpan> chains;
    std::size_t first = 0;
    for (std::size_t i = 1; i <= records.size(); ++i) {
        if (i < records.size() && !StartsRoute(records[i]))
            continue;
        chains.emplace_back(&records[first], i - first);
        first = i;
    }
    return chains;
}

bool StartsPocket(const RouteSegment& record)
{
    return record.Kind == TaperedStart && MarksPocket(record.OscZ);
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

void ClearRectangleOf(ChainSpan chain, std::vector<RouteSegment>& records)
{
    const auto mark = std::find_if(chain.begin(), chain.end(), StartsPocket);
    if (mark == chain.end()) {
        Copy(chain, records);
        return;
    }
    const std::vector<RouteSegment> contour =
        BeginWith(static_cast<std::size_t>(mark - chain.begin()), chain);
    if (contour.size() >= FewestRecords && ClearRectangle(contour, records))
        return;
    ReportUncleared(contour.front().Pass);
    Copy(contour, records);
}

void ClearCircleOf(ChainSpan chain, std::vector<RouteSegment>& records)
{
    if (IsCirclePocket(chain) && ClearCirclePair(chain, records))
        return;
    const bool isPocket = std::any_of(chain.begin(), chain.end(),
                                      [](const RouteSegment& record) { return MarksPocket(record.OscZ); });
    const bool isTold = !chain.empty() && StartsPocket(chain.front()); // as a rectangle
    // An oscillation without a number marks a route as a pocket does, and is none.
    if (isPocket && !isTold && IsExcavation(chain.front().Pass))
        ReportUncleared(chain.front().Pass);
    Copy(chain, records);
}

} // namespace

void ExcavatePockets()
{
    const std::vector<RouteSegment> drawn(RouteSegments.begin() + 1, RouteSegments.end());
    std::vector<RouteSegment> withRectangles;
    for (const ChainSpan chain : ChainsOf(drawn))
        ClearRectangleOf(chain, withRectangles);
    std::vector<RouteSegment> cleared;
    for (const ChainSpan chain : ChainsOf(withRectangles))
        ClearCircleOf(chain, cleared);
    ClearListCircles(cleared);
    StoreSegments(cleared);
}

} // namespace kv

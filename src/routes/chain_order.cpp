#include "routes/chain_order.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>

#include "geometry/point_grid.h"
#include "state/carry_over.h"
#include "state/drawn_entities.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr Long HighestKey = 90000;
constexpr Long SequenceBase = 10; // so that no key is 0

double SquaredDistance(const PlanePoint& a, const GridPoint& b)
{
    const double dx = b.X - a.X;
    const double dy = b.Y - a.Y;
    return dx * dx + dy * dy;
}

void AppendChain(ChainList& list, const ChainList& from, const Chain& chain)
{
    const std::size_t first = list.Records.size();
    const auto begin = from.Records.begin();
    list.Records.insert(list.Records.end(), begin + static_cast<std::ptrdiff_t>(chain.First),
                        begin + static_cast<std::ptrdiff_t>(chain.Last) + 1);
    list.Chains.push_back({first, list.Records.size() - 1, 0});
}

// A start mark is cut with the contour behind it.
void SettleStartMarkSequences(ChainList& list)
{
    for (std::size_t i = 0; i + 2 < list.Records.size(); ++i)
        if (KindOf(list.Records[i]) == 4)
            list.Records[i].Sequence = list.Records[i + 2].Sequence;
}

// A route that is not cut must be seen in the report.
void TellLeftOut(const ChainList& list, const std::vector<Chain>& leftOut, Message why)
{
    struct LeftRoutes {
        Long Count = 0;
        Long First = 0; // entity
    };
    std::map<Long, LeftRoutes> ofPass;
    for (const Chain& chain : leftOut) {
        const RouteSegment& record = list.Records[chain.First];
        LeftRoutes& routes = ofPass[record.Pass];
        if (++routes.Count == 1)
            routes.First = record.Drawn;
    }
    for (const auto& [pass, routes] : ofPass)
        Tell(why, WithPlace({{"layer", ShownLayerOfPass(pass)}, {"count", routes.Count}}, routes.First));
}

void DropOutOfRange(ChainList& list, Message why)
{
    const auto inRange = [](const Chain& chain) { return chain.SortKey >= 0 && chain.SortKey <= HighestKey; };
    const auto leftOut = std::stable_partition(list.Chains.begin(), list.Chains.end(), inRange);
    TellLeftOut(list, {leftOut, list.Chains.end()}, why);
    list.Chains.erase(leftOut, list.Chains.end());
}

// The way along a start mark says nothing of the contour's, and it is often the mark that is turned.
const Text<10>& CompOf(const ChainList& list, const Chain& chain)
{
    constexpr std::size_t recordsOfMark = 2;
    std::size_t first = chain.First;
    while (list.Records[first].Kind == -4 && first + recordsOfMark <= chain.Last)
        first += recordsOfMark;
    return list.Records[first].Comp;
}

void SortByKey(ChainList& list)
{
    std::stable_sort(list.Chains.begin(), list.Chains.end(),
                     [](const Chain& a, const Chain& b) { return a.SortKey < b.SortKey; });
}

} // namespace

ChainList GatherChains(const std::vector<ChainEntry>& linked)
{
    ChainList list;
    list.Records.reserve(static_cast<std::size_t>(RouteSegments.Last()));
    for (const ChainEntry& path : linked) {
        if (path.ChainHead)
            RouteSegments[path.First].Dir = RouteStart;
        // A closed circle that was linked behind another one bears a mark too and is cut by itself.
        for (Long i = path.First; i <= path.Last; ++i) {
            const std::size_t at = list.Records.size();
            list.Records.push_back(RouteSegments[i]);
            if (StartsRoute(RouteSegments[i]))
                list.Chains.push_back({at, at, 0});
            list.Chains.back().Last = at;
        }
    }
    return list;
}

void OrderByNearness(ChainList& list)
{
    std::vector<GridPoint> starts;
    starts.reserve(list.Chains.size());
    for (const Chain& chain : list.Chains)
        starts.push_back({list.Records[chain.First].X, list.Records[chain.First].Y});
    PointGrid grid(std::move(starts));

    PlanePoint at = {Run.SideWidth[Face], Run.SideHeight[Face]};
    ChainList ordered;
    ordered.Records.reserve(list.Records.size());
    for (std::size_t n = 0; n < list.Chains.size(); ++n) {
        const Long next =
            grid.Lowest([&](const GridBox& box) { return SquaredDistance(at, box.Nearest(at.X, at.Y)); },
                        [&](Long start) { return SquaredDistance(at, grid.At(start)); });
        grid.Remove(next);
        const Chain& chain = list.Chains[static_cast<std::size_t>(next)];
        at = PointOf(list.Records[chain.Last]);
        AppendChain(ordered, list, chain);
    }
    list = std::move(ordered);
}

void OrderByTool(ChainList& list)
{
    SettleStartMarkSequences(list);
    for (const RouteSegment& record : list.Records) {
        Run.MaxSequence = std::max<Long>(Run.MaxSequence, record.Sequence);
        Run.MinSequence = std::min<Long>(Run.MinSequence, record.Sequence);
        Run.Alone.MinSequence = std::min<Long>(Run.Alone.MinSequence, record.Sequence);
    }
    for (Chain& chain : list.Chains)
        chain.SortKey = list.Records[chain.First].ToolNo;
    DropOutOfRange(list, Message::RouteToolBelowZero);
    SortByKey(list);
}

void OrderBySequence(ChainList& list)
{
    if (Run.MaxSequence == 0)
        return;
    const Long raise = std::abs(Run.MinSequence), raiseAlone = std::abs(Run.Alone.MinSequence);
    for (Chain& chain : list.Chains) {
        const Long key = list.Records[chain.First].Sequence + SequenceBase;
        chain.SortKey = key + raise;
        // The order is the same; only a key beyond the highest makes a difference.
        if (chain.SortKey > HighestKey && key + raiseAlone <= HighestKey)
            NoteTakenOver("lowest sequence", WholeText(Run.MinSequence));
    }
    DropOutOfRange(list, Message::RouteSequenceOutOfRange);
    SortByKey(list);
}

void CopyOut(const ChainList& list)
{
    std::vector<RouteSegment> records;
    records.reserve(list.Records.size());
    for (const Chain& chain : list.Chains) {
        const RouteSegment& head = list.Records[chain.First];
        const Text<10>& comp = CompOf(list, chain);
        for (std::size_t i = chain.First; i <= chain.Last; ++i) {
            RouteSegment& record = records.emplace_back(list.Records[i]);
            record.ToolNo = head.ToolNo;
            record.Diameter = head.Diameter;
            record.Comp = comp;
            record.Speed = head.Speed;
        }
    }
    StoreSegments(records);
}

} // namespace kv

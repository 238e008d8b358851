#include "routes/open_outlines.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/text.h"
#include "routes/pocket_values.h"

namespace kv {

namespace {

constexpr Int MarkOpens = -4;

bool Meet(const PlanePoint& a, const PlanePoint& b)
{
    return Distance(a, b) <= OutlineTolerance();
}

bool IsSame(const PlanePoint& a, const PlanePoint& b)
{
    return a.X == b.X && a.Y == b.Y;
}

bool OpensMark(const RouteSegment& record)
{
    return record.Kind == MarkOpens;
}

std::string Rounded(double value)
{
    return PlainText(ToSingle(std::round(value * 10000) / 10000));
}

} // namespace

OpenOutlines::OpenOutlines()
{
    for (Long first = 1; first <= RouteSegments.Last();) {
        const Long last = LastOfRoute(first);
        const Long behindMark = first + static_cast<Long>(MarkLength);
        const bool hasMark = OpensMark(RouteSegments[first]) && behindMark <= last;
        const PlanePoint start = PointOf(RouteSegments[hasMark ? behindMark : first]);
        const PlanePoint end = PointOf(RouteSegments[last]);
        Layer& layer = Layers[RouteSegments[first].Pass];
        first = last + 1;
        if (Meet(start, end))
            continue;
        if (hasMark)
            layer.MarkedStarts.push_back(start);
        else
            layer.Unmarked.push_back({start, end});
    }
    for (auto& [pass, layer] : Layers) {
        std::vector<GridPoint> ends;
        for (const Ends& chain : layer.Unmarked) {
            ends.push_back({chain.Start.X, chain.Start.Y});
            ends.push_back({chain.End.X, chain.End.Y});
        }
        layer.Grid = PointGrid(std::move(ends));
    }
}

MessageLine OpenOutlines::FaultOf(std::span<const RouteSegment> outline) const
{
    if (std::any_of(outline.begin(), outline.end(), OpensMark))
        return {Message::PocketMeetsMark};
    if (outline.size() < 2 || Meet(PointOf(outline.front()), PointOf(outline.back())))
        return {};
    const PlanePoint start = PointOf(outline.front());
    const PlanePoint end = PointOf(outline.back());
    double gap = Distance(start, end);
    const auto found = Layers.find(outline.front().Pass);
    if (found != Layers.end()) {
        const Layer& layer = found->second;
        const auto distance = [&end](const GridPoint& point) { return Distance(end, {point.X, point.Y}); };
        const auto score = [&](Long point) {
            const Ends& other = layer.Unmarked[static_cast<std::size_t>(point / 2)];
            const bool isItself = IsSame(other.Start, start) && IsSame(other.End, end);
            return isItself ? std::numeric_limits<double>::infinity() : distance(layer.Grid.At(point));
        };
        const Long nearest =
            layer.Grid.Lowest([&](const GridBox& box) { return distance(box.Nearest(end.X, end.Y)); }, score);
        if (nearest != PointGrid::None)
            gap = std::min(gap, score(nearest));
    }
    if (gap < static_cast<double>(Run.RouteTolerance))
        return {}; // drawn as it should be: nothing is linked behind a polyline
    return {Message::PocketOutlineOpen,
            {{"end", "X" + Rounded(end.X) + " Y" + Rounded(end.Y)}, {"gap", Rounded(gap)}}};
}

bool OpenOutlines::IsRestOfAnother(std::span<const RouteSegment> chain) const
{
    const auto found = Layers.find(chain.front().Pass);
    if (found == Layers.end())
        return false;
    const std::vector<PlanePoint>& starts = found->second.MarkedStarts;
    return std::any_of(starts.begin(), starts.end(), [&](const PlanePoint& start) {
        return Meet(start, PointOf(chain.front())) || Meet(start, PointOf(chain.back()));
    });
}

void TellOfGaps(const RouteSegment& named, std::span<const RouteSegment> outline)
{
    constexpr double seenGap = 0.01;
    for (std::size_t k = 0; k < outline.size(); ++k) {
        const RouteSegment& end = outline[k];
        const RouteSegment& next = outline[(k + 1) % outline.size()];
        const double gap = Distance(PointOf(end), PointOf(next));
        if (end.Kind > 0 && next.Kind < 0 && gap > seenGap)
            TellOfPocket(PocketAt(named),
                         {Message::PocketGap,
                          {{"where", "X" + Rounded(end.X) + " Y" + Rounded(end.Y)}, {"gap", Rounded(gap)}}});
    }
}

} // namespace kv

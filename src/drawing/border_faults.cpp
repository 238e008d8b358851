// The analysis counts points alone. Here the points say which entities they come from: an end of a line that
// meets no other, a polyline without four corners, a view of an edge with other than four.
#include "drawing/border_faults.h"

#include <cstddef>
#include <map>
#include <set>
#include <vector>

#include "drawing/border.h"
#include "drawing/doubt_lines.h"
#include "drawing/panel_doubts.h"
#include "state/drawn_entities.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr std::size_t RectangleCorners = 4;

void TellAt(Message number, const BorderPoint& point, MessageValues values = {})
{
    values.emplace_back("layer", LayerAsDrawn(point.Drawn));
    values.emplace_back("place", PlaceText(point.X, point.Y));
    Tell(number, WithPlace(std::move(values), point.Drawn));
}

bool TellFreeEnds()
{
    bool any = false;
    for (const BorderPoint& point : PointsOfBorder())
        if (point.IsLineEnd && point.Times == 1) {
            TellAt(Message::BorderEndFree, point);
            any = true;
        }
    return any;
}

bool TellPolylines()
{
    struct Corners {
        std::set<std::size_t> Points;
        BorderPoint First;
    };
    std::map<Long, Corners> polylines;
    for (const BorderVertex& vertex : VerticesOfBorder()) {
        Corners& corners = polylines[WholeOf(vertex.Drawn)];
        if (corners.Points.empty()) {
            corners.First = PointsOfBorder()[vertex.Point];
            corners.First.Drawn = vertex.Drawn;
        }
        corners.Points.insert(vertex.Point);
    }
    bool any = false;
    for (const auto& [drawn, corners] : polylines)
        if (corners.Points.size() != RectangleCorners) {
            TellAt(Message::BorderPolylineCorners, corners.First,
                   {{"corners", static_cast<long long>(corners.Points.size())}});
            any = true;
        }
    return any;
}

void TellViews()
{
    for (Int side = 1; side <= 4; ++side) {
        std::vector<BorderPoint> points;
        for (const BorderPoint& point : PointsOfBorder())
            if (point.View == side)
                points.push_back(point);
        if (!points.empty() && points.size() != RectangleCorners)
            TellAt(Message::BorderViewCorners, points.front(),
                   {{"side", side}, {"corners", static_cast<long long>(points.size())}});
    }
}

} // namespace

void TellBorderFaults()
{
    if (SourcesOfPanel().HiddenChangedIt) {
        TellHiddenOfPanel();
        return;
    }
    const bool anyEnd = TellFreeEnds();
    const bool anyPolyline = TellPolylines();
    if (!anyEnd && !anyPolyline)
        TellViews();
}

} // namespace kv

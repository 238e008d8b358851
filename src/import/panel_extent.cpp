// The border's points are those that the panel is found by: ends of lines and vertices on layers that hold
// the word. Views of the edges around the face count too: they widen a panel by far less than the unit is
// off.
#include "import/panel_extent.h"

#include <algorithm>

#include "platform/text.h"
#include "state/settings.h"

namespace kv {

void PanelExtent::Extent::Add(const VertexPoint& point)
{
    LowX = IsEmpty ? point.X : std::min(LowX, point.X);
    LowY = IsEmpty ? point.Y : std::min(LowY, point.Y);
    HighX = IsEmpty ? point.X : std::max(HighX, point.X);
    HighY = IsEmpty ? point.Y : std::max(HighY, point.Y);
    IsEmpty = false;
}

void PanelExtent::Take(const FlatEntity& flat)
{
    constexpr int splineFit = 4; // such a polyline is no border
    const std::string layer = UpperCase(flat.Style.Layer);
    const bool isBorder =
        flat.Kind == FlatKind::Line || (flat.Kind == FlatKind::Polyline && flat.Flags != splineFit);
    if (isBorder && Holds(layer, "BORDER"))
        for (const VertexPoint& point : flat.Points)
            Border.Add(point);
    if (flat.Kind == FlatKind::Solid && Holds(layer, "PANEL"))
        for (const VertexPoint& point : flat.Points)
            Solid.Add(point);
}

SpacePoint PanelExtent::MoveFromBelowZero() const
{
    if (Border.IsEmpty)
        return {};
    return {std::max(0.0, -Border.LowX), std::max(0.0, -Border.LowY), 0};
}

double PanelExtent::Millimetre(std::string_view units) const
{
    constexpr double inch = 1 / 25.4, widestInch = 200, highestInch = 100;
    if (Config.UnitMode == "1" || (Config.UnitMode == "4" && units == "1"))
        return inch;
    if (Config.UnitMode == "2" || (Config.UnitMode == "4" && units == "4"))
        return 1;
    const Extent& panel = Solid.IsEmpty ? Border : Solid;
    const bool isSmall = panel.HighX - panel.LowX < widestInch && panel.HighY - panel.LowY < highestInch;
    return !panel.IsEmpty && isSmall ? inch : 1;
}

} // namespace kv

#include "drawing/panel_places.h"

#include <algorithm>

#include "state/run.h"

namespace kv {

namespace {

constexpr double Reach = 0.01; // mm

// Cuts the part of the stretch, from 0 to 1, that is between the two limits. False when nothing is left.
bool CutTo(double from, double step, double low, double high, double& first, double& last)
{
    if (step == 0)
        return !(from < low || from > high);
    const double one = (low - from) / step, other = (high - from) / step;
    first = std::max(first, std::min(one, other));
    last = std::min(last, std::max(one, other));
    return !(first > last);
}

} // namespace

double PlaceReach()
{
    return Reach / static_cast<double>(Run.UnitFactor);
}

PanelRectangle RectangleOfFace()
{
    return RectangleOfSide(static_cast<std::size_t>(Face));
}

PanelRectangle RectangleOfSide(std::size_t side)
{
    return {Run.SideMinX[side], Run.SideMinY[side], Run.SideMaxX[side], Run.SideMaxY[side]};
}

PanelRectangle Widened(const PanelRectangle& rectangle, double by)
{
    return {rectangle.MinX - by, rectangle.MinY - by, rectangle.MaxX + by, rectangle.MaxY + by};
}

bool Meets(const PanelRectangle& rectangle, const Stretch& stretch)
{
    const PanelRectangle at = Widened(rectangle, PlaceReach());
    double first = 0, last = 1;
    return CutTo(stretch.X1, stretch.X2 - stretch.X1, at.MinX, at.MaxX, first, last) &&
           CutTo(stretch.Y1, stretch.Y2 - stretch.Y1, at.MinY, at.MaxY, first, last);
}

} // namespace kv

#include "proof/panel_views.h"

#include "state/run.h"

namespace kv {

namespace {

struct ViewBox {
    double MinX = 0, MinY = 0, MaxX = 0, MaxY = 0; // mm
};

ViewBox BoxOfSide(std::size_t side)
{
    const double unit = Run.UnitFactor;
    return {Run.SideMinX[side] * unit, Run.SideMinY[side] * unit, Run.SideMaxX[side] * unit,
            Run.SideMaxY[side] * unit};
}

} // namespace

Plane ViewAt(const PathPoint& drawn)
{
    const double unit = Run.UnitFactor;
    const double marginX = Run.SideMarginX * unit, marginY = Run.SideMarginY * unit;
    for (std::size_t side = 1; side < static_cast<std::size_t>(Face); ++side) {
        const ViewBox box = BoxOfSide(side);
        if (drawn.X > box.MinX - marginX && drawn.X < box.MaxX + marginX && drawn.Y > box.MinY - marginY &&
            drawn.Y < box.MaxY + marginY)
            return static_cast<Plane>(side);
    }
    return Plane::Surface;
}

PathPoint PlaceInView(Plane view, const PathPoint& drawn)
{
    const double unit = Run.UnitFactor, thickness = Run.PartThickness * unit;
    const PathPoint onFace{drawn.X - Run.OriginX * unit, drawn.Y - Run.OriginY * unit};
    const ViewBox box = BoxOfSide(static_cast<std::size_t>(view));
    switch (view) {
    case Plane::Edge1:
        return {onFace.X, thickness - (drawn.Y - box.MinY)};
    case Plane::Edge2:
        return {onFace.X, thickness - (box.MaxY - drawn.Y)};
    case Plane::Edge3:
        return {onFace.Y, thickness - (box.MaxX - drawn.X)};
    case Plane::Edge4:
        return {onFace.Y, thickness - (drawn.X - box.MinX)};
    case Plane::Surface:
        break;
    }
    return onFace;
}

bool IsMirroredView(Plane view)
{
    return view == Plane::Edge1 || view == Plane::Edge3;
}

Move MoveInView(Plane view, Move drawn)
{
    drawn.From = PlaceInView(view, drawn.From);
    drawn.To = PlaceInView(view, drawn.To);
    drawn.Centre = PlaceInView(view, drawn.Centre);
    drawn.Sweep = IsMirroredView(view) ? -drawn.Sweep : drawn.Sweep;
    return drawn;
}

} // namespace kv

// The folding of scene.cpp the other way round.
#include "scene/sheet_places.h"

#include <cmath>

namespace kv {

std::optional<PlaceOnSide> PlaceOnSideOf(const Scene& scene, const PathPoint& sheet)
{
    for (const SceneView& view : scene.Views) {
        const double x = sheet.X - view.Box.X, y = sheet.Y - view.Box.Y;
        if (!(x >= 0 && y >= 0 && x <= view.Box.Width && y <= view.Box.Height))
            continue;
        switch (view.On) {
        case Plane::Edge1:
            return PlaceOnSide{view.On, x, view.Box.Height - y};
        case Plane::Edge3:
            return PlaceOnSide{view.On, y, x};
        case Plane::Edge4:
            return PlaceOnSide{view.On, y, view.Box.Width - x};
        case Plane::Edge2:
        case Plane::Surface:
            return PlaceOnSide{view.On, x, y};
        }
    }
    return std::nullopt;
}

std::string PlaceText(const Scene& scene, const PathPoint& sheet, double unit)
{
    const std::optional<PlaceOnSide> place = PlaceOnSideOf(scene, sheet);
    if (!place)
        return "";
    const bool isInches = unit != 1;
    // What a hand can point at; a program may be finer.
    const auto text = [&](double millimetres) {
        const double finest = isInches ? 1000 : 10;
        return LengthForPeople(std::round(millimetres / unit * finest) / finest);
    };
    const std::string name = isInches ? " in" : " mm";
    const bool isAlongY = place->On == Plane::Edge3 || place->On == Plane::Edge4;
    const double length = isAlongY ? scene.Width : scene.Length;
    const bool fromFar = isAlongY ? scene.Origin.Top : scene.Origin.Right;
    const double along = fromFar ? length - place->Along : place->Along;
    if (place->On != Plane::Surface)
        return "side " + std::to_string(static_cast<int>(place->On)) + ": " + text(along) + name +
               " along, " + text(scene.Thickness - place->Across) + name + " below the face";
    return "X " + text(along) + ", Y " +
           text(scene.Origin.Top ? scene.Width - place->Across : place->Across) + name;
}

} // namespace kv

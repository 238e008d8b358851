// Whether something lies on the panel or in a view of its edges, in drawing coordinates.
#pragma once

#include <cstddef>

namespace kv {

struct PanelRectangle {
    double MinX = 0, MinY = 0, MaxX = 0, MaxY = 0; // a view that is not drawn has MinX above MaxX
};
struct Stretch {
    double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
};

// Drawing units within which a place counts as on the rectangle.
double PlaceReach();
PanelRectangle RectangleOfFace();
PanelRectangle RectangleOfSide(std::size_t side); // 1 to 5
PanelRectangle Widened(const PanelRectangle& rectangle, double by);
// Whether any point of the stretch is on the rectangle. One that is no number is taken to be.
bool Meets(const PanelRectangle& rectangle, const Stretch& stretch);

} // namespace kv

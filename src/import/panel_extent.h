// How far the border of a drawing reaches: whether below zero, and in which unit it seems to be drawn.
#pragma once

#include <string_view>

#include "import/flat_entity.h"

namespace kv {

class PanelExtent {
  public:
    void Take(const FlatEntity& flat);
    // Brings the lowest X and the lowest Y of the border to 0 where they are below.
    SpacePoint MoveFromBelowZero() const;
    // A millimetre in units of the drawing, by the setting UnitMode, `units` (the number of $INSUNITS), and
    // the size of the panel, as the run settles it.
    double Millimetre(std::string_view units) const;

  private:
    struct Extent {
        double LowX = 0, LowY = 0, HighX = 0, HighY = 0;
        bool IsEmpty = true;
        void Add(const VertexPoint& point);
    };
    Extent Border, Solid;
};

} // namespace kv

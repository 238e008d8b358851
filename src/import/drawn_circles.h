// Circles that a drawing has as something else: as a polygon, as a polyline of arcs, as arcs that meet.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "import/flat_entity.h"

namespace kv {

// Whether the layer's word wants circles as circles: vertical bores and pockets.
bool WantsCircles(std::string_view layer);
// Routes: what is round is wanted as arcs, from where and in which sense it is drawn.
bool WantsRoundWays(std::string_view layer);
// The closed polyline of two half circles in place of one that has straight sides; none where it has none.
// Its Radius is the circle's.
std::optional<FlatEntity> RoundWay(const FlatEntity& polyline, const FlatEntity& circle);
// The circle that a closed polyline runs along once, every point of it within `tolerance`; none otherwise. A
// diameter that is measured and not drawn is rounded to a `grid` (a hundredth of a millimetre) where that is
// within what was measured, so that a drill fits it.
std::optional<FlatEntity> CircleOf(const FlatEntity& polyline, double tolerance, double grid);

// Lines, arcs and open polylines of one layer whose ends meet in a ring that is a circle.
struct LooseEntity {
    std::size_t Number = 0; // whatever it means to the caller
    FlatEntity Entity;
};
struct RingFound {
    FlatEntity Circle;
    std::vector<std::size_t> Numbers; // of its pieces
};
// Of a layer that wants circles; on a pocket's no arcs, which are one outline there already.
bool CanBeLoose(const FlatEntity& flat);
std::vector<RingFound> FindRings(const std::vector<LooseEntity>& pieces, double tolerance, double grid);

} // namespace kv

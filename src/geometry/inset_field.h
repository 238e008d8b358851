// The distance from the walls of a region, and its lines of equal distance: what offsetting a region
// inward by any amount gives. One Voronoi diagram of the walls answers for all distances.
#pragma once

#include <memory>
#include <vector>

#include "geometry/closed_paths.h"

namespace kv {

// A part of an inset loop: a line, or an arc by its centre. The region's deeper side lies on the left.
using InsetPiece = PathSpan;
using InsetLoop = std::vector<InsetPiece>; // closed; each piece begins where the one in front ends

// A place where the region is narrow: a cul-de-sac or a neck.
struct NarrowPlace {
    PlanePoint At;
    double Clearance = 0; // half the width
};

struct InsetDiagram;

class InsetField {
  public:
    // The walls: an outline that runs counter-clockwise, islands that run clockwise; none may meet
    // another or itself (MeetingsOf). Insets leave the true ones by some tolerances.
    InsetField(const std::vector<ClosedPath>& walls, double tolerance);
    ~InsetField();
    InsetField(const InsetField&) = delete;
    InsetField& operator=(const InsetField&) = delete;

    // The largest distance from the walls within the region.
    double Deepest() const;
    // The lines at a distance above 0, without pieces that an exact curve would not have: the chords of
    // an arc are one arc again.
    std::vector<InsetLoop> LoopsAt(double clearance) const;
    // Points of the middle line between two distances from which no line of the greater distance is
    // within reach: along the middle line, so that none is missed.
    std::vector<PlanePoint> FarFromLoops(double low, double high, double reach) const;
    // Culs-de-sac and necks of less than the clearance, by more than the rise above what leads to them.
    std::vector<NarrowPlace> NarrowerThan(double clearance, double rise) const;

  private:
    std::unique_ptr<InsetDiagram> Data;
};

} // namespace kv

// Outlines of pockets that do not close: where they are open, and by how much. Relies on the chained
// routes as they were drawn, of which an outline is one.
#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

#include "geometry/angles.h"
#include "geometry/point_grid.h"
#include "state/messages.h"
#include "state/records.h"

namespace kv {

// Reports each gap of a closed outline that a person would see: more than a hundredth of a drawing unit, but
// within the tolerance. The pocket is named by the place of the record.
void TellOfGaps(const RouteSegment& named, std::span<const RouteSegment> outline);

class OpenOutlines {
  public:
    OpenOutlines(); // of RouteSegments as it is

    // "its outline is open at X100 Y160 by 0.02": from the end of the chain, which begins behind its start
    // mark, to its own start or to an open chain of its layer, whichever is nearer. Or "its outline meets
    // another start mark": one chain has come from both. Empty where the chain is closed, or where an
    // open one touches its end and was not linked.
    MessageLine FaultOf(std::span<const RouteSegment> outline) const;

    // Whether the chain is the rest of an open outline whose start mark begins another chain of its
    // layer: one line is enough for both.
    bool IsRestOfAnother(std::span<const RouteSegment> chain) const;

  private:
    struct Ends {
        PlanePoint Start, End;
    };
    struct Layer {
        std::vector<PlanePoint> MarkedStarts; // of open outlines that begin with a mark
        std::vector<Ends> Unmarked;           // open chains
        PointGrid Grid{{}};                   // of unmarked chain n: 2n and 2n + 1
    };
    std::map<Long, Layer> Layers; // by pass
};

} // namespace kv

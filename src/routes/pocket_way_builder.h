// Builds the programmed way beside the loops of the tool's centre, point by point.
#pragma once

#include <vector>

#include "routes/pocket_rings.h"
#include "routes/pocket_ways.h"

namespace kv {

// A loop of the tool's centre, and where its way comes on and leaves.
struct Ring {
    InsetLoop Pieces;
    std::size_t Level = 0;
    bool IsEntered = false;
    std::size_t EntryPiece = 0;
    PlanePoint Entry; // of the tool's centre
};

// Radians, 0 to below a full turn.
double CounterClockwiseFrom(double from, double to);
double AngleAround(const PlanePoint& centre, const PlanePoint& point);
double LengthOfPiece(const PathSpan& span);
PlanePoint MiddleOf(const PathSpan& span);
// The programmed way beside a point of the centre's: to the right, toward the wall.
PlanePoint Beside(const PathSpan& piece, const PlanePoint& point, double aside);

class WayBuilder {
  public:
    explicit WayBuilder(const ToolReach& reach);

    void Begin(const PathSpan& piece, const PlanePoint& centre, double share);
    // Once round the ring from its entry; the depth changes evenly along the way.
    void AddTurn(const Ring& ring, double fromShare, double toShare);
    // The tool rolls around the way's last point until its centre comes to a point of the next ring.
    void AddJoin(const PlanePoint& centre, const PathSpan& piece);
    void EndTurn() { TurnEnds.push_back(Points.size()); }

    std::vector<WayPoint> Points;
    std::vector<std::size_t> TurnEnds; // how many points there are after each full turn

  private:
    void AddLine(const PlanePoint& to, double share);
    // Around the centre by about that sweep, in radians.
    void AddArc(const PlanePoint& centre, bool counterClockwise, double sweep, const PlanePoint& to,
                double share);
    void AddPiece(const PathSpan& piece, const PlanePoint& to, double share);
    // To the way's point between two pieces; a corner that is an arc is added whole.
    void AddCorner(const PathSpan& piece, const PathSpan& next, double share);

    double Aside, Shortest;
};

} // namespace kv

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
PlanePoint WayBeside(const PathSpan& piece, const PlanePoint& point, double aside);

// Where a way can be cut in two: after so many points. The second part comes again from a point in front
// of the cut, where the floor is cut already and no wall is near the tool's flank.
struct WayCut {
    std::size_t Count = 0;
    WayPoint Before;
};

class WayBuilder {
  public:
    // There is a place to cut the way in every so many points; 0: none is needed.
    WayBuilder(const ToolReach& reach, std::size_t mostPerWay);

    void Begin(const PathSpan& piece, const PlanePoint& centre, double share);
    // Once round the ring from its entry; the depth changes evenly along the way.
    void AddTurn(const Ring& ring, double fromShare, double toShare);
    // The tool rolls around the way's last point until its centre comes to a point of the next ring.
    void AddJoin(const PlanePoint& centre, const PathSpan& piece);

    std::vector<WayPoint> Points;
    std::vector<WayCut> Cuts; // after each turn, and within long ones

  private:
    // Along the piece, or what is left of it.
    void AddLine(const PathSpan& piece, const PlanePoint& to, double share);
    // Around the centre by about that sweep, in radians.
    void AddArc(const PlanePoint& centre, bool counterClockwise, double sweep, const PlanePoint& to,
                double share);
    void AddPiece(const PathSpan& piece, const PlanePoint& to, double share);
    // To the way's point between two pieces; a corner that is an arc is added whole.
    void AddCorner(const PathSpan& piece, const PathSpan& next, double share);

    // The way has come to the end of the piece.
    void AddCut(const PathSpan& piece);
    bool NeedsCut() const;
    bool IsCorner(const PathSpan& piece) const;
    void CloseCorner(const PathSpan& corner, const PathSpan& next);

    double Aside, Shortest;
    std::size_t MostPerWay;
};

} // namespace kv

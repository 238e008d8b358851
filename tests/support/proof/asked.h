// What a drawn panel asks of the machine: worked out from the drawing's own model, never from a program.
// Contours and pockets lie in panel coordinates (support/machine/steps.h), edges in their own planes.
#pragma once

#include <string>
#include <vector>

#include "machine/steps.h"
#include "support/proof/region.h"

namespace kv::test {

// Where a closed contour's cut may begin: between two pieces of the way, or within one.
struct Seam {
    Move Last, First;      // in the order of the way; First begins where Last ends
    bool Backward = false; // the cut runs against the way

    const PathPoint& At() const { return First.From; }
    double Turn() const; // degrees, above 0 to the left
};
// Of a contour of single pieces by the one drawn first: it goes on to the neighbour that turns least, so
// there may be two.
std::vector<Seam> SeamsOfPieces(const std::vector<Move>& pieces, std::size_t drawnFirst);
Seam SeamInMiddleOf(const Move& line);

struct DrawnWay {
    std::string Name;
    Plane On = Plane::Surface;
    std::vector<Move> Pieces; // one behind the other; depths are not used
    bool Closed = false;
    int Side = 0; // of the tool along the pieces: 1 left, -1 right, 0 on them
    double Radius = 0, Depth = 0;
    int Passes = 1;
    double Lead = 0;         // 0: none
    bool Ramps = false;      // its lead comes down, or goes up, on its way
    std::vector<Seam> Seams; // of a closed contour; more than one where the drawing leaves it open
};

struct DrawnPocket {
    std::string Name;
    std::vector<Move> Outline;
    double Radius = 0, Pitch = 0, Depth = 0;
    int Passes = 1;
    bool IsBox = false; // with a start mark, cleared by loops beside the outline
    PathPoint Mark;     // its tip, where the outline's first line begins
};

struct DrawnPanel {
    double Length = 0, Width = 0, Thickness = 0;
    std::vector<DrawnWay> Ways;
    std::vector<DrawnPocket> Pockets;
    std::vector<Bore> Bores;
};

// What of a drawing cannot come out clean, by the drawing's own geometry.
enum class Doubt {
    None,
    PocketNarrowerThanTool, // the tool does not fit
    PocketLoopsTurnedOver,  // the innermost loops are so narrow that the tool beside them meets the wall
    WideStep,               // of a pocket: islands may stay inside, none at the wall
    ShortSideAtMark,        // of a rounded pocket: the step to the next loop comes before the wall's end
    PieceOutOfReach,        // a piece of a contour or chain that the tool beside it does not touch
    BeginsInInnerCorner,    // half a disc of the tool is cut into both walls
    LeadTooShort,           // on the bisector of an inner corner
    LeadOnShortPiece,       // in an inner corner, beside a piece that ends before the tool has come up to it
    LeadTooLong,            // for the room beside the contour
    LeadBesideWall,         // a straight lead across the first or last piece, which is shorter than the lead
    LeadIntoWall,           // a tangent lead into an inner corner begins in the other wall
    RampPastPiece,          // a rising lead out on the first piece ends beyond it, or across its end
};
const char* ShownDoubt(Doubt doubt);

// One feature: where the tool may cut and what it must cut.
struct AskedCut {
    std::string Name;
    Plane On = Plane::Surface;
    double Radius = 0, Depth = 0;
    int Passes = 1;
    bool Ramps = false;
    double Open = 0.05; // mm of the tool's edge that are left open
    Region May, Must;
    PathPoint Low, High; // a box around all that the feature may cut, with its leads
    std::vector<Doubt> Doubts;

    bool Has(Doubt doubt) const;
};

AskedCut AskedOf(const DrawnWay& way, const DrawnPanel& panel);
AskedCut AskedOf(const DrawnPocket& pocket);
std::vector<AskedCut> AskedCuts(const DrawnPanel& panel);

// Directions of a piece's way in degrees; its points at most 0.002 mm beside it.
double DirectionAtStart(const Move& piece);
double DirectionAtEnd(const Move& piece);
double LengthOf(const Move& piece);
std::vector<PathPoint> PointsAlong(const Move& piece);

} // namespace kv::test

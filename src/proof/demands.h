// The wood that a drawing asks the machine to take away: worked out from its entities and the letters of
// their layers, apart from the passes that make the programs. The panel's place in the drawing and the names
// of the layers are those that the run found.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "machine/steps.h"
#include "platform/numbers.h"

namespace kv {

// All lengths in mm, places in panel coordinates as machine/steps.h has them. `Drawn` is the entity's number.
struct AskedBore {
    Plane On = Plane::Surface;
    PathPoint At;
    double Depth = 0, Diameter = 0;
    Long Drawn = 0;
};

struct AskedGroove {
    PathPoint From, To; // on the face
    double Depth = 0, Width = 0, Kerf = 0;
    int Side = 0; // of the saw: 1 left of the way, -1 right, 0 on it
    Long Drawn = 0;
};

// Entities that touch, in the order of the way.
struct AskedWay {
    Plane On = Plane::Surface;
    std::vector<Move> Pieces; // each begins where the last one ends
    std::vector<Long> Drawn;  // of each piece
    bool IsClosed = false;
    int Side = 0;                         // of the tool: 1 left of the way, -1 right, 0 on it
    bool IsSideOpen = false;              // the entities were drawn in both directions: either side
    double Radius = 0;                    // of the tool; 0: the layer names none
    int Tool = 0;                         // its number; 0: the layer names none
    double DepthLeast = 0, DepthMost = 0; // they differ where the depth changes on the way
    double Lead = 0;                      // length; 0: none
};

struct AskedPocket {
    std::vector<Move> Outline;
    std::vector<Long> Drawn;
    double Radius = 0, Depth = 0;
    int Tool = 0;
};

// An entity whose layer asks for something that cannot be worked out from the drawing.
struct Unproved {
    Long Drawn = 0;
    std::string Why;
};

struct Demands {
    double Length = 0, Width = 0, Thickness = 0; // of the panel
    std::vector<AskedBore> Bores;
    std::vector<AskedGroove> Grooves;
    std::vector<AskedWay> Ways;
    std::vector<AskedPocket> Pockets;
    std::vector<Unproved> Left;
};

// Of the drawing that runs, once its panel and its run parameters are known.
Demands DemandsOfRun();

} // namespace kv

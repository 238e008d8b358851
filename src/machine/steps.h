// What a program makes the machine do, in panel coordinates: millimetres, the face seen from above
// with its lower left corner at 0, 0; an edge seen as its own plane (U along the edge, as X or Y of the
// face, V up from the panel's underside), whatever corner the program itself counts from. Readers of all
// program families give this.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "machine/path_point.h"

namespace kv {

enum class Plane {
    Surface = 5,
    Edge1 = 1,
    Edge2 = 2,
    Edge3 = 3,
    Edge4 = 4
}; // edges: the program's own numbers

// One programmed move of the router: a line, or an arc (Sweep in degrees, above 0 counter-clockwise).
struct Move {
    bool IsArc = false;
    PathPoint From, To, Centre;
    double Sweep = 0;
    double DepthFrom = 0, DepthTo = 0; // mm below the plane
    double Feed = 0;                   // as the program has it, 0: it names none
    std::size_t Line = 0;              // of the program
    // By how much an arc's ends and its centre or radius disagree, where that is more than rounding: mm. Its
    // line is unread too.
    double ArcGap = 0;
};

// A way at the speed between operations that stands within a route. No writer makes one, so its line is
// unread too.
struct RapidMove {
    Plane On = Plane::Surface;
    PathPoint From, To;
    double Depth = 0; // the greater one of its ends
    std::size_t Line = 0;
};

// From a start of the router to the next: the way as programmed, beside which the tool runs.
struct RouterCut {
    Plane On = Plane::Surface;
    double Radius = 0; // of the tool, 0: the program does not name it
    int Side = 0;      // 1: tool left of the way (G41), -1: right (G42), 0: on it
    PathPoint Start;
    double StartDepth = 0;
    std::string Tool;        // as the program names it
    std::vector<Move> Moves; // empty: a plunge
    std::size_t Line = 0;
};

struct Bore {
    Plane On = Plane::Surface;
    PathPoint At;
    double Depth = 0, Diameter = 0; // diameter 0: the program does not name it
    std::string Tool;
    std::size_t Line = 0;
};

// A stop of the boring head that drills a row of the face at once: its two ends. Which drills lie between
// them is the head's.
struct BoreRow {
    PathPoint From, To;
    double Depth = 0;
    std::string Tool;
    std::size_t Line = 0;
};

struct SawCut {
    PathPoint From, To;
    double Depth = 0, Width = 0; // width 0: the program does not name it
    int Side = 0;                // 1: saw left of the way, -1: right, 0: on it
    std::string Tool;
    std::size_t Line = 0;
};

// The panel's corner from which a program counts; lower left without a word.
struct Corner {
    bool Right = false, Top = false;
};

// How a program names its tools: two digits of the group and the number ("0171"), the number alone ("71"), or
// a row of a table that only its machine has.
enum class ToolNames { WithGroup, NumberAlone, OfTheMachine };

struct MachineSteps {
    double Length = 0, Width = 0, Thickness = 0; // mm, X, Y, Z
    Corner From;                                 // of a CNC program that of its last work
    ToolNames Tools = ToolNames::WithGroup;
    std::vector<RouterCut> Cuts;
    std::vector<Bore> Bores;
    std::vector<BoreRow> Rows;
    std::vector<SawCut> Saws;
    std::vector<RapidMove> Rapids;
    std::vector<std::string> Unread; // lines that could not be understood, with their number
    std::size_t UnreadCount = 0;     // how many there are, of which Unread has the first ones
};

} // namespace kv

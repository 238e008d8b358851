// What a program makes the machine do, laid out on one sheet: the face with its edges folded out beside it.
// The backs (SVG, the window) draw the same scene.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "machine/steps.h"

namespace kv {

// Millimetres on the sheet, Y upward; the face has its lower left corner at 0, 0.
struct SheetBox {
    double X = 0, Y = 0, Width = 0, Height = 0;
};

enum class WorkShape { Bore, BoreRow, Saw, Route, Plunge };

// Where two programs lie over each other: which of them has the work.
enum class HeldIn { Both, First, Second };

struct SceneItem {
    WorkShape Shape = WorkShape::Bore;
    Plane On = Plane::Surface;
    double Depth = 0;       // mm, the greatest
    double Width = 0;       // mm: diameter of the drill or router, width of the saw; 0: not known
    bool IsThrough = false; // as deep as the panel is thick, or deeper
    int Side = 0;           // of a route or saw cut: 1 left of its way, -1 right, 0 on it
    std::string Tool;       // as the program names it
    double Feed = 0;        // of a route; 0: not known
    std::size_t Line = 0;   // of the program, the first
    std::size_t LastLine = 0;
    std::size_t Group = 0;               // of Groups
    PathPoint At;                        // of a bore or plunge; where else the tool comes down
    std::vector<Move> Way;               // on the sheet, as programmed: a line for a saw cut or a row
    std::vector<Move> Swept;             // on the sheet, the way of the tool's middle
    std::size_t LeadIn = 0, LeadOut = 0; // moves at the ends of Way that are leads
    HeldIn Held = HeldIn::Both;
    std::string OnlyIn; // UTF-8: the program that alone has it; empty for HeldIn::Both
    std::string From;   // UTF-8: the entities of the drawing that it comes from; empty: not known
    std::vector<std::size_t> DrawnLines; // of the drawing's file: where those entities stand
};

// Items that a person takes for the same.
struct SceneGroup {
    WorkShape Shape = WorkShape::Bore;
    std::string Tool;
    double Depth = 0, Width = 0;
    bool IsThrough = false;
    std::size_t Count = 0;
    std::string OnlyIn; // as of the items
};

struct SceneView {
    Plane On = Plane::Surface;
    SheetBox Box;
    std::size_t Items = 0; // on it
};

// A way of the tool above the panel.
struct SceneRapid {
    PathPoint From, To;
    std::size_t Line = 0; // of the work that it leads to
};

// An entity of the drawing on the panel's face.
struct DrawnShape {
    std::vector<Move> Way;
    bool IsLeft = false;  // no program has it, or it is not machined as its layer asks
    std::string Text;     // UTF-8: what it is and where in the drawing's file
    std::size_t Line = 0; // of that file; 0: it is no entity
};

struct Scene {
    double Length = 0, Width = 0, Thickness = 0; // of the panel, mm
    Corner Origin;                               // the corner that the program counts from
    double EdgeGap = 0;                          // mm between the face and the folded edges
    std::vector<SceneView> Views;                // the face first, then edges 1 to 4
    std::vector<SceneItem> Items;                // in the order of the program
    std::vector<SceneGroup> Groups;              // in the order of their first items
    std::vector<SceneRapid> Rapids;
    std::vector<DrawnShape> Drawn; // empty where only a program is known
    SheetBox Sheet;                // around all
};

constexpr double LeastEdgeGap = 25; // mm between the face and a folded edge
Scene SceneOf(const MachineSteps& steps, double leastGap = LeastEdgeGap);
void GroupItems(Scene& scene); // anew
// A box around both.
SheetBox BoxAround(const SheetBox& a, const SheetBox& b);

// "Bores 5, 13 deep" of a group; "5 mm bore, 13 deep" of an item without its place.
std::string GroupText(const SceneGroup& group);
// "Line 118: route, tool 71, left of the line, 8 deep, feed 5000; from LINE on ROUTE1_Z8, line 340".
std::string ItemSentence(const SceneItem& item);
// "3 lines are not understood and not drawn".
std::string UnreadText(std::size_t lines);
// "Panel 600 x 400 x 18 mm, counted from the lower left corner", and how many lines are not drawn.
std::vector<std::string> TitleLines(const Scene& scene, std::size_t linesUnread);
// A length for people: at most three decimals, none that are 0.
std::string LengthForPeople(double millimetres);

} // namespace kv

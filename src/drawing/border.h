// Finds the panel: a SOLID on a PANEL layer, or the outline on BORDER layers with up to four edge
// views around it. Settles origin, thickness, units and tolerance.
#pragma once

#include <vector>

#include "platform/numbers.h"

namespace kv {

// Where the panel comes from, for those who doubt it. Entities by their numbers among the drawn ones.
struct PanelSources {
    Long First = 0;                  // the border's first entity, or the solid
    Long BelowZero = 0;              // the first of the border with a point below zero; 0: none
    Single LowestX = 0, LowestY = 0; // where such points reach to
    bool CornerMissed = false;       // no point of the border is the face's lower left corner
    std::vector<Long> Hidden;        // entities and vertices that a person does not see
    bool HiddenChangedIt = false;    // without them the panel would be another one
};

// A point of the border, however many entities have it.
struct BorderPoint {
    Single X = 0, Y = 0;
    bool IsShown = false;   // an entity that a person sees has it too
    bool IsLineEnd = false; // of a line, else of a polyline
    Long Times = 1;
    Long Drawn = 0; // the first entity that has it
    Int View = 0;   // 1 to 4: of that edge's view
};

// Collects the route layers, the border points and the PANEL solid. False when the run must end.
bool FindPanel();
// Face and edge views out of the border points, unless a solid gave the panel. False as above.
bool AnalyseBorder();
const PanelSources& SourcesOfPanel();
const std::vector<BorderPoint>& PointsOfBorder(); // distinct, in drawing order
// Which of them each vertex of a polyline is.
struct BorderVertex {
    Long Drawn = 0;
    std::size_t Point = 0;
};
const std::vector<BorderVertex>& VerticesOfBorder();
void SettleOriginAndUnits();

} // namespace kv

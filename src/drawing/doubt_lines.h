// What the lines about doubtful operations share: the layer as drawn, the place, lengths for people.
#pragma once

#include <string>
#include <string_view>

#include "platform/numbers.h"
#include "state/messages.h"

namespace kv {

// One operation of the drawing, as a line names it.
struct DoubtedWork {
    Long Drawn = 0;      // its entities
    std::string Name;    // "bore", "groove"
    double X = 0, Y = 0; // as drawn; of a bore in an edge from the panel's corner
};

// A number for people, whatever it is: a line about a doubt never ends a job.
std::string ShownNumber(double value);
// "X100 Y50", to four decimals.
std::string PlaceText(double x, double y);
// Drawing units as millimetres.
double Millimetres(double length);
// To two decimals.
std::string LengthText(double millimetres);
// The layer of an entity, or of the first one that the number stands for, as the drawing spells it.
std::string LayerAsDrawn(Long drawn);
// Adds layer, work, place and the entity's file line to the values. Nothing of work without an entity.
void TellDoubt(Message number, const DoubtedWork& work, MessageValues values = {});

// A depth, in drawing units, that says nothing, is a code, or goes through the panel. `size` is what the
// panel measures in the tool's direction; 0: not known.
void TellDepthDoubts(const DoubtedWork& work, double depth, double size);
bool IsNoDepth(double depth); // what no tool cuts
// Depths from here on are no lengths to the writers of most controls.
constexpr double FirstDoubtedCode = 90;
// The same for work whose depth is a length to every control, however deep.
void TellLengthDoubts(const DoubtedWork& work, double depth, double size);
// That a height or depth is written as a code; false where this control takes it for a length.
bool TellDepthCode(const DoubtedWork& work, double depth);

} // namespace kv

// What a program does beside what its drawing asks for.
#pragma once

#include <string>
#include <vector>

#include "machine/steps.h"
#include "support/proof/asked.h"

namespace kv::test {

enum class Fault { Unread, CutOutside, Left, Depth, Passes, Compensation, Bore, Size };
const char* ShownFault(Fault fault);

struct Deviation {
    Fault What = Fault::Unread;
    AskedCut Feature;
    std::string Text; // the whole of it: feature, what, area or measure, place
    Region Place;
};

// 0.01 mm of depth is left open.
std::vector<Deviation> DeviationsOf(const std::vector<AskedCut>& asked, const DrawnPanel& panel,
                                    const MachineSteps& steps);

// Whether the drawing has nothing but pockets that are narrower than their tools.
bool AsksForNothing(const std::vector<AskedCut>& asked, const DrawnPanel& panel);

// Whether a line of the report is of the layer, "Layer ROUTEZ5: the lead at ...", whatever number its route
// has.
bool IsLineOf(const std::string& layer, const std::string& subject, const std::string& line);

// The doubt of the drawing that brings it about; none where the program is wrong.
Doubt ReasonOf(const Deviation& deviation);
// Whether the report has no line of what the drawing brings about: a lead that cuts what stays, wood between
// the loops of a pocket.
bool IsSilent(const Deviation& deviation, const std::vector<std::string>& report);
// Whether the report tells of a pocket what it does beside its drawing: nearly all pockets end in loops
// that are narrower than the tool, where a control may stop or go astray. `cuts`: the feature's own.
bool IsTold(const Deviation& deviation, const std::vector<std::string>& report, const MachineSteps& cuts);

// What these cuts of a feature cover beside the places where they may.
Region CutOutside(const AskedCut& asked, const MachineSteps& cuts);
// What they leave of it, whatever their depth.
Region LeftInside(const AskedCut& asked, const MachineSteps& cuts);
// The cuts as far as a control comes that stops where a way is narrower than the tool.
MachineSteps UntilNarrowWays(const MachineSteps& steps);

// The cuts of each feature, by the place where they start, the smallest feature around it; those of none
// behind the last.
std::vector<MachineSteps> CutsByFeature(const std::vector<AskedCut>& asked, const MachineSteps& steps);
// Those of one of the features.
MachineSteps CutsOf(const AskedCut& feature, const std::vector<AskedCut>& asked, const MachineSteps& steps);

} // namespace kv::test

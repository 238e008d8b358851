// What a program must be whatever the drawing asks for: it works on the panel, with tools that the shop has
// and no deeper than they reach, at a feed.
#pragma once

#include <vector>

#include "machine/steps.h"
#include "machine/tool_table.h"
#include "proof/proof.h"
#include "proof/wood_plan.h"

namespace kv {

// Other rules need no look of their own. A move begins where the one before it ended, by the form of all
// programs; an arc whose ends and centre do not agree, and a rapid, are lines that are not understood; a lead
// that is shorter than its tool's corner needs, or an arc narrower than the tool, is a narrow way; a cut
// deeper than asked is wood that should stay.
void ProveRules(Proof& proof, const WoodPlan& plan, const std::vector<MachineSteps>& programs,
                const ToolTable& tools);

} // namespace kv

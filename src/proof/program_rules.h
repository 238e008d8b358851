// What a program must be whatever the drawing asks for: it works on the panel and no deeper, at a feed, with
// tools that the shop has.
#pragma once

#include <vector>

#include "machine/steps.h"
#include "machine/tool_table.h"
#include "proof/proof.h"
#include "proof/wood_plan.h"

namespace kv {

// Other rules need no look of their own. A move begins where the one before it ended, in place and depth, and
// a route begins with the tool lifted, by the form of all programs. A lead that is shorter than its tool's
// corner needs, or an arc narrower than the tool, is a narrow way; a bore beside the panel, or deeper than
// asked, is another bore. Only a CNC program can have a rapid within a route; the others have no word for it.
void ProveRules(Proof& proof, const WoodPlan& plan, const std::vector<MachineSteps>& programs,
                const ToolTable& tools);

} // namespace kv

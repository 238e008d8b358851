// The depths of programs against the panel's thickness.
#pragma once

#include <vector>

#include "machine/steps.h"
#include "proof/proof.h"
#include "proof/wood_plan.h"

namespace kv {

// Routes and saws on the face that go deeper than the panel is thick and than anything near is asked for, and
// routes that stay above the wood. Relies on the findings of wood that is cut away: a cut that has one is not
// told again. A route in an edge ends in the panel.
void ProveDepths(Proof& proof, const WoodPlan& plan, const std::vector<MachineSteps>& programs);

} // namespace kv

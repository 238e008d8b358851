// The tools of programs against the tables of the shop.
#pragma once

#include <vector>

#include "machine/steps.h"
#include "machine/tool_table.h"
#include "proof/proof.h"

namespace kv {

// Tools that no table has, that are not of the operation's kind, and that work deeper than they reach.
void ProveTools(Proof& proof, const std::vector<MachineSteps>& programs, const ToolTable& tools,
                double tolerance);

} // namespace kv

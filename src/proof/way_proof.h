// What routers leave standing and cut away, by areas where ways differ.
#pragma once

#include <vector>

#include "proof/proof.h"
#include "proof/wood_plan.h"

namespace kv {

// Ways and pockets: is all gone that should?
void ProveNothingLeft(Proof& proof, const WoodPlan& plan);
// Router cuts: is nothing gone that should stay? Leads may cut where the tool of their contour cuts anyway or
// the wood falls off: on the tool's side, as far as the lead is long.
void ProveNothingElseCut(Proof& proof, const WoodPlan& plan);

} // namespace kv

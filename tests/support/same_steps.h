// Compares what two programs make a machine do.
#pragma once

#include <string>

#include "machine/steps.h"

namespace kv::test {

// Within what rounded places and end angles leave open; in any order.
bool SameCut(const RouterCut& a, const RouterCut& b);
bool SameBore(const Bore& a, const Bore& b); // a diameter that one does not name is any
bool SameSaw(const SawCut& a, const SawCut& b);

// What the second lacks of the first, a line each: "a cut of line 7 at X10 Y20". A plunge of the router may
// be a bore of the other.
std::string StepsMissing(const MachineSteps& of, const MachineSteps& in);

} // namespace kv::test

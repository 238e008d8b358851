// Saw cuts against grooves.
#pragma once

#include <vector>

#include "proof/proof.h"

namespace kv {

// A cut whose width the program leaves open is as wide as the kerf of the groove that it lies in.
void ProveGrooves(Proof& proof, const Demands& demands, const std::vector<MachineSteps>& programs,
                  double tolerance);

} // namespace kv

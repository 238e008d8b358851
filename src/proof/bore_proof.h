// Bores against bores: by place, diameter and depth.
#pragma once

#include <vector>

#include "proof/proof.h"

namespace kv {

void ProveBores(Proof& proof, const Demands& demands, const std::vector<MachineSteps>& programs,
                double tolerance);

} // namespace kv

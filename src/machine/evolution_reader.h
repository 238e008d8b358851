// Reads a program of the Genesis Evolution, from the forms of its lines alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "machine/steps.h"

namespace kv {

struct EvolutionReading {
    // Such a program does not say from which corner it counts.
    Corner From;
    // In an edge the height of a bore is printed from the face, that of a route from the underside. False:
    // both from the underside.
    bool EdgeBoresFromTheFace = true;
};

// Lines are counted from 1. Each mirroring by the corner turns senses and sides; depths may be R variables
// of the program. The template's own sections are passed over, except for these variables.
MachineSteps ReadEvolution(const std::vector<std::string>& lines, const EvolutionReading& how = {});
MachineSteps ReadEvolutionText(std::string_view text, const EvolutionReading& how = {});

} // namespace kv

// Reads a program of the horizontal drilling machine, from the forms of its lines alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "machine/steps.h"

namespace kv {

struct HbdReading {
    // The machine has the drilled edge at its back; the program does not say which edge of the panel this
    // is, nor from which corner it counts.
    Plane Edge = Plane::Edge1;
    Corner From;
};

// Lines are counted from 1. Bores of the edge and of the face near it; Length and Width are the panel's own.
// Bores of the edge are counted along X or Y of the face; those of the face along the machine's own X, which
// for edges 2 and 4 runs the other way.
MachineSteps ReadHbd(const std::vector<std::string>& lines, const HbdReading& how = {});
MachineSteps ReadHbdText(std::string_view text, const HbdReading& how = {});

} // namespace kv

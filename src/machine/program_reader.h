// Reads a program of any family that Korvanti writes, from its text alone.
#pragma once

#include <string>
#include <string_view>

#include "machine/steps.h"

namespace kv {

enum class ProgramFamily { Unknown, Cnc, Evolution, Hbd };
// By the header, and by the names of sections, sides and operations.
ProgramFamily FamilyOf(std::string_view text);

// What a program does not say by itself.
struct ProgramFacts {
    Corner From;                         // of Evolution and the horizontal drilling machine
    Plane HbdEdge = Plane::Edge1;        // that the horizontal drilling machine has at its back
    bool UpperAndLowerExchanged = false; // CNC: the setting Origin is not 0
};

// Blanks, small letters, ends of lines of any system and comments ahead of the header are taken as a control
// does. Of a text that is no such program the steps are empty and Unread says so.
MachineSteps ReadProgram(std::string_view text, const ProgramFacts& facts = {});

} // namespace kv

// What a CNC program cuts on the face beside an outline, and what it leaves inside.
#pragma once

#include <string>
#include <vector>

#include "support/proof/region.h"

namespace kv::test {

struct DrawnArea {
    double CutOutside = 0, LeftInside = 0; // mm2, but for what is nowhere wider than 0.01 mm
    std::string Outside, Left;             // the same as pieces with their places
    std::string Fault;                     // lines that cannot be read, empty in a sound program
};

// The tool has the radius of the R word.
DrawnArea AreaBeside(const std::vector<std::string>& program, const Region& outline);

} // namespace kv::test

// Renames that the instruction pass collects and carries out when all its lines are read.
#pragma once

#include <string>
#include <vector>

#include "platform/numbers.h"

namespace kv {

struct LayerRename {
    std::string From, To; // upper-cased, trimmed
    Long Name = 0;        // number of the new name as the instruction spells it
};
struct ColorRename {
    std::string Color; // a number as text
    std::string To;    // upper-cased
    Long Name = 0;     // as above
};

// Layers first, then the BORDER shift (only with layer renames), then colours.
void ApplyRenames(const std::vector<LayerRename>& layers, const std::vector<ColorRename>& colors);

} // namespace kv

// What differs where the control, or the installation, is GENESIS.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// The program is installed in a folder whose path holds "GENESIS"; asked apart from the control type.
bool IsGenesisInstallation();
// File name of a GENESIS program, at most 12 characters: a long name without a point gets one behind
// its eighth character. `output` is the drawing's output name, `name` the same or the portion's.
std::string GenesisFileName(std::string_view output, std::string_view name);

} // namespace kv

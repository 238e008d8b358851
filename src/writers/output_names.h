// Names and folders of the programs that a drawing makes.
#pragma once

#include <string>

#include "state/run.h"

namespace kv {

// The drawing's output name; one that ends in a backslash is completed by the source's base name.
std::string OutputName();
std::string SourceBaseName();
// Program folder of a control system by the settings, with its backslash; empty when none is set.
std::string ProgramFolder(Int controlType);

} // namespace kv

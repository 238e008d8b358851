// Names and folders of the programs that a drawing makes.
#pragma once

#include <string>
#include <string_view>

#include "state/run.h"

namespace kv {

// A name as the program's file may have it; a change is reported, once a drawing.
std::string ProgramNameFor(std::string_view wanted);
// The file part of the output name; empty where the drawing has none.
std::string OutputFileName();
// The drawing's output name; one that ends in a backslash is completed by the source's base name.
std::string OutputName();
std::string SourceBaseName();
// Program folder of a control system by the settings, with its backslash; empty when none is set.
std::string ProgramFolder(Int controlType);

} // namespace kv

// INDICE.PRG, the list by which a CNC90 or WINNER90 control finds its programs.
#pragma once

#include <string>
#include <string_view>

#include "writers/cnc/index_file.h"

namespace kv {

// The record of a program of this drawing; `programName` has 12 characters.
std::string IndexRecord(std::string_view programName, bool horizontalWritten);
// Place of a program under the index's folder: "PANEL1234567" gives "SRG\P\ANEL1234.567".
std::string PlaceUnderIndex(std::string_view name);
// The same below the folder of programs or notes: "P\ANEL1234.567".
std::string PlaceByFirstLetter(std::string_view name);

} // namespace kv

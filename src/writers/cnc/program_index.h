// INDICE.PRG, the list by which a CNC90 or WINNER90 control finds its programs.
#pragma once

#include <string>
#include <string_view>

namespace kv {

constexpr std::size_t IndexRecordSize = 82; // bytes

// The record of a program of this drawing; `programName` has 12 characters.
std::string IndexRecord(std::string_view programName, bool horizontalWritten);
// The index with the record in its place: over the record of the same name, else before the first
// greater name, else at the end. The length is a multiple of the record size.
std::string IndexWith(std::string_view index, std::string_view record);
// Place of a program under the index's folder: "PANEL1234567" gives "SRG\P\ANEL1234.567".
std::string PlaceUnderIndex(std::string_view name);
// The same below the folder of programs or notes: "P\ANEL1234.567".
std::string PlaceByFirstLetter(std::string_view name);

} // namespace kv

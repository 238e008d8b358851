// Reads a drawing of any kind into Entities and EntityTexts: the front of the drawing's reader.
#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

namespace kv {

// As ReadDrawing. A binary drawing, and texts in other letters than CP1252's, are brought to what the reader
// knows; what would change the geometry goes by the setting Import. An ordinary drawing is read once, by the
// reader alone.
void ReadAnyDrawing(std::string& path);

// Writes what an import makes of the drawing to `clean`, whole or not at all, and leaves the lines of the
// import in the report. Throws RunError as reading does.
FileOutcome WriteCleanDrawing(std::string_view path, std::string_view clean);

} // namespace kv

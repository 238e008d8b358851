// Reads the ENTITIES section of an ASCII DXF file into Entities and EntityTexts.
#pragma once

#include <string>

namespace kv {

// Without an ENTITIES section shows a box and sets `path` to "~". An abort reports and sets
// RunFailed. A file that cannot be read to its ENDSEC is a RunError that names the line.
void ReadDrawing(std::string& path);

} // namespace kv

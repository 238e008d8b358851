// Reads the ENTITIES section of an ASCII DXF file, or of a text in its place, into Entities and EntityTexts.
#pragma once

#include <string>
#include <vector>

#include "platform/numbers.h"

namespace kv {

// Without an ENTITIES section shows a box and sets `path` to "~". An abort reports and sets
// RunFailed. A file that cannot be read to its ENDSEC is a RunError that names the line.
void ReadDrawing(std::string& path);

// From the line `At` of a text on, its records are those of the line `Line` of the drawing: line by line, or
// all of that one line.
struct SourceLine {
    Long At = 0, Line = 0;
    bool IsLineByLine = true;
};
// The pairs of a drawing that was brought to what the reader knows; without origins its lines are the
// drawing's.
struct DrawingText {
    std::string Text;
    std::vector<SourceLine> Origins; // by rising At
};
// The same as ReadDrawing, of the drawing's text in place of its file. Entities are of the drawing's lines.
void ReadDrawingText(std::string& path, DrawingText drawing);

} // namespace kv

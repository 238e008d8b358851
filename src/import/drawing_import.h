// A drawing that is in memory, brought to what the drawing's reader knows.
#pragma once

#include <string_view>

#include "drawing/dxf_reader.h"
#include "import/import_findings.h"

namespace kv {

struct ImportedDrawing {
    DrawingText Text; // HEADER and ENTITIES; empty where nothing was asked for but findings
    ImportFindings Findings;
    Long LeftOfClean = 0;    // entities that the form for a design program has no place for
    bool HasEntities = true; // the drawing has a section of them
};

enum class ImportForm {
    Findings, // nothing is made
    Reading,  // for the drawing's reader: what needs no change stays byte for byte
    Clean,    // for a design program: R12, each handle once
};
// Throws RunError where blocks open to more entities than a drawing can have; of ImportForm::Findings that is
// a finding.
ImportedDrawing ImportText(std::string_view text, ImportForm form);

} // namespace kv

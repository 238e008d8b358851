// MTEXT as the lines of plain TEXT that it shows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "import/flat_entity.h"

namespace kv {

// The lines that a person reads: without codes for fonts, heights and colours; a stacked fraction as "1/2".
// Lines that are empty are left out.
std::vector<std::string> LinesOfMtext(std::string_view contents);
// One TEXT for each line, one below the other from the place that the MTEXT's attachment gives.
std::vector<FlatEntity> TextsOfMtext(const SourceRecord& mtext);
// The contents of all its groups 3 and 1, joined.
std::string ContentsOfMtext(const SourceRecord& mtext);

} // namespace kv

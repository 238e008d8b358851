// The sections around imported entities.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

#include "import/pair_writer.h"

namespace kv {

// For the drawing's reader: the drawing's unit, and the head of the entities.
void WriteReadingHead(PairWriter& writer, std::string_view units);
void WriteReadingFoot(PairWriter& writer);
// A whole drawing of release 12 in CP1252 around entities: what design programs of all makers open.
std::string CleanDrawing(const std::set<std::string>& layers, std::string_view units,
                         std::size_t highestHandle, std::string_view entities);
std::string HexText(std::size_t number); // of a handle

} // namespace kv

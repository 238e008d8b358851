// Where a block's entities come to lie, and what they take from their INSERT.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "import/drawing_index.h"
#include "import/flat_entity.h"

namespace kv {

struct BlockPlace {
    Placement Map;            // from the block's system into the drawing's
    int Depth = 0;            // 0: not in a block
    std::string Layer;        // of the INSERT, for entities on layer 0
    std::optional<int> Color; // of the INSERT, for entities of colour BYBLOCK
    std::string Handle;       // of the outermost INSERT, by which a person finds it
    Long Line = 0;            // of the outermost INSERT
};

// Layer and colour as they are in that place.
EntityStyle StyleInBlock(const SourceRecord& record, const BlockPlace& place);
bool HasUsableScale(const SourceRecord& insert);
// Columns (group 70) or rows (group 71), at least 1.
int CopiesOf(const SourceRecord& insert, int code);
// Of one copy of the block, its columns and rows counted from 0.
Placement PlaceOfCopy(const Placement& outer, const SourceRecord& insert, const DrawnBlock& block, int column,
                      int row);
// An attribute's definition that shows the same text in each INSERT.
bool IsConstantText(const SourceRecord& definition);
// "6 CIRCLE, 1 LINE".
std::string CountsText(const std::map<std::string, Long>& counts);

} // namespace kv

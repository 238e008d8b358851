// Where the parts of a drawing that is in memory are: layers, blocks, entities.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "import/flat_entity.h"
#include "platform/numbers.h"

namespace kv {

// Lines of the text, not yet taken apart.
struct TextRange {
    std::size_t Begin = 0, End = 0;
    Long LinesBefore = 0;
};
struct DrawnBlock {
    std::string Name; // as the drawing spells it
    SpacePoint Base;
    TextRange Entities;
    bool IsEndless = false; // nothing ends it
};
struct LayerSight {
    bool IsFrozen = false, IsOff = false;
};
struct DrawingIndex {
    TextRange Entities;                                 // of the section; empty where there is none
    std::unordered_map<std::string, DrawnBlock> Blocks; // by names in upper case; of two the later one
    std::unordered_map<std::string, LayerSight> Layers; // those that are hidden, by names in upper case
    std::string Units;                                  // behind $INSUNITS; empty: none
    std::size_t HighestHandle = 0;
};
DrawingIndex IndexDrawing(std::string_view text);

// Walks the entities of a range, each with its parts.
class EntityWalk {
  public:
    EntityWalk(std::string_view text, const TextRange& range) : Text(text), At(range.Begin), Range(range)
    {
        Line = range.LinesBefore;
    }
    // False at the end.
    bool Next(SourceEntity& entity);

  private:
    bool NextRecord(SourceRecord& record);
    void TakeParts(SourceEntity& entity);

    std::string_view Text;
    std::size_t At;
    TextRange Range;
    Long Line = 0;
};

} // namespace kv

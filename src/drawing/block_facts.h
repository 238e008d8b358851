// What the drawing's blocks hold. Blocks are not opened, so what an INSERT would bring is only reported.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/numbers.h"

namespace kv {

// Entities of one kind on one layer of a block.
struct BlockPart {
    std::string Kind;  // upper case
    std::string Layer; // as drawn
    std::string Block; // of an INSERT the name of its block
};
using BlockParts = std::vector<BlockPart>; // each kind and layer once

// Before a drawing is read.
void ForgetBlocks();
// The reader met the group 2 of an INSERT.
void NoteInsert(Long drawn, std::string_view block);
std::string BlockOfInsert(Long drawn); // empty: it names none
// Null where the drawing has no such block.
const BlockParts* FindBlock(std::string_view name);

// Reads the pairs of the section BLOCKS.
class BlockReader {
  public:
    static bool Matters(int code) { return code == 0 || code == 2 || code == 8; }
    void Begin();
    void Take(int code, std::string_view value);

  private:
    void EndPart();

    BlockParts* Parts = nullptr; // of the block that runs; null: none, or its name is to come
    bool NamesBlock = false;     // the record of a block runs
    BlockPart Part;
};

} // namespace kv

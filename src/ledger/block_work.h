// Work that a drawing hides in its blocks.
#pragma once

#include "drawing/block_facts.h"

namespace kv {

// Of an INSERT the first part of its block, or of the blocks in it, that would be machined or taken for the
// panel's border were it drawn outside. Null: none, or the entity is no INSERT.
const BlockPart* WorkInBlock(Long drawn);

} // namespace kv

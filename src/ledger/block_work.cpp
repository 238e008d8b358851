// Relies on the blocks as the reader met them and on the words of the layer language. What stands on layer 0
// of a block takes the layer of its INSERT, which means nothing here.
#include "ledger/block_work.h"

#include <string>

#include "ledger/layer_words.h"
#include "platform/text.h"
#include "state/drawn_entities.h"

namespace kv {

namespace {

constexpr int DeepestBlock = 8; // blocks in blocks; a drawing in which a block holds itself ends here

bool IsWork(const BlockPart& part)
{
    const LayerWork work = WorkOfLayer(UpperCase(part.Layer), part.Kind);
    return (AsksForWork(work) || work == LayerWork::Border || work == LayerWork::Panel) &&
           TakesKind(work, part.Kind);
}

const BlockPart* FirstWork(const std::string& block, int depth)
{
    const BlockParts* const parts = depth < DeepestBlock ? FindBlock(block) : nullptr;
    if (parts == nullptr)
        return nullptr;
    for (const BlockPart& part : *parts) {
        if (IsWork(part))
            return &part;
        if (part.Block.empty())
            continue;
        if (const BlockPart* const inner = FirstWork(part.Block, depth + 1); inner != nullptr)
            return inner;
    }
    return nullptr;
}

} // namespace

const BlockPart* WorkInBlock(Long drawn)
{
    const std::string block = BlockOfInsert(DrawnAs(drawn));
    return block.empty() ? nullptr : FirstWork(block, 0);
}

} // namespace kv

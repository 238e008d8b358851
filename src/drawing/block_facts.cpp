// Kinds and layers alone are kept, each once for a block: a block of a thousand lines is one part. Damaged
// drawings are held to a limit; what is beyond it is not known.
#include "drawing/block_facts.h"

#include <algorithm>
#include <unordered_map>

#include "platform/text.h"

namespace kv {

namespace {

constexpr std::size_t MostBlocks = 100'000;
constexpr std::size_t MostParts = 200; // of a block
constexpr std::size_t LongestText = 256;

std::unordered_map<std::string, BlockParts> Blocks; // by names in upper case
std::unordered_map<Long, std::string> Inserts;      // names of blocks by drawn entity

bool IsSame(const BlockPart& a, const BlockPart& b)
{
    return a.Kind == b.Kind && a.Layer == b.Layer && a.Block == b.Block;
}

} // namespace

void ForgetBlocks()
{
    Blocks.clear();
    Inserts.clear();
}

void NoteInsert(Long drawn, std::string_view block)
{
    Inserts[drawn] = block.substr(0, LongestText);
}

std::string BlockOfInsert(Long drawn)
{
    const auto insert = Inserts.find(drawn);
    return insert == Inserts.end() ? std::string() : insert->second;
}

const BlockParts* FindBlock(std::string_view name)
{
    const auto block = Blocks.find(UpperCase(name));
    return block == Blocks.end() ? nullptr : &block->second;
}

void BlockReader::Begin()
{
    Parts = nullptr;
    NamesBlock = false;
    Part = {};
}

void BlockReader::EndPart()
{
    if (Parts != nullptr && !Part.Kind.empty() && Parts->size() < MostParts &&
        std::none_of(Parts->begin(), Parts->end(), [&](const BlockPart& p) { return IsSame(p, Part); }))
        Parts->push_back(Part);
    Part = {};
}

void BlockReader::Take(int code, std::string_view value)
{
    value = value.substr(0, LongestText);
    if (code == 0) {
        EndPart();
        NamesBlock = value == "BLOCK";
        if (NamesBlock || value == "ENDBLK" || value == "ENDSEC")
            Parts = nullptr;
        else if (Parts != nullptr)
            Part.Kind = UpperCase(value);
    } else if (code == 2 && NamesBlock) {
        NamesBlock = false;
        if (Blocks.size() < MostBlocks)
            Parts = &Blocks[UpperCase(value)];
    } else if (code == 2 && Part.Kind == "INSERT") {
        Part.Block = value;
    } else if (code == 8) {
        Part.Layer = value;
    }
}

} // namespace kv

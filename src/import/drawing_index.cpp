// One walk over the pairs. What cannot be followed is left alone: a section without an end reaches to the end
// of the file, a block without one to the next block.
#include "import/drawing_index.h"

#include <algorithm>
#include <charconv>

#include "import/pair_reader.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr std::size_t MostNames =
    100'000; // of layers, of blocks; a damaged drawing's further ones are not known
constexpr std::size_t MostParts = 100'000; // of an entity that is taken apart; a longer one stays as it is

class IndexWalk {
  public:
    explicit IndexWalk(std::string_view text) : Text(text), Pairs(text) {}
    DrawingIndex Walk();

  private:
    void BeginSection(std::string_view name);
    void TakePair();
    void TakeHeader(std::string_view value);
    void TakeTable(std::string_view value);
    void TakeBlock(std::string_view value);
    void EndLayer();
    void EndBlock(bool isEnded);
    void NoteHandle(std::string_view value);

    enum class Part { Other, Header, Tables, Blocks, Entities };

    std::string_view Text;
    PairReader Pairs;
    DrawingIndex Index;
    Part Section = Part::Other;
    bool NamesSection = false;
    std::string Variable; // of the header
    bool InLayer = false;
    std::string LayerName;
    LayerSight Sight;
    enum class BlockState { None, Head, Content };
    BlockState State = BlockState::None;
    DrawnBlock Block;
};

void IndexWalk::NoteHandle(std::string_view value)
{
    std::size_t handle = 0;
    const char* const end = value.data() + value.size();
    const std::from_chars_result read = std::from_chars(value.data(), end, handle, 16);
    if (read.ec == std::errc() && read.ptr == end)
        Index.HighestHandle = std::max(Index.HighestHandle, handle);
}

void IndexWalk::BeginSection(std::string_view name)
{
    Section = name == "HEADER"     ? Part::Header
              : name == "TABLES"   ? Part::Tables
              : name == "BLOCKS"   ? Part::Blocks
              : name == "ENTITIES" ? Part::Entities
                                   : Part::Other;
    if (Section == Part::Entities)
        Index.Entities = {Pairs.End(), Pairs.End(), Pairs.LinesTaken()};
}

void IndexWalk::TakeHeader(std::string_view value)
{
    if (Pairs.Code() == 9)
        Variable = value;
    else if (Variable == "$INSUNITS" && Pairs.Code() == 70)
        Index.Units = value;
    else if (Variable == "$HANDSEED" && Pairs.Code() == 5)
        NoteHandle(value);
}

void IndexWalk::EndLayer()
{
    if (InLayer && !LayerName.empty()) {
        const std::string name = UpperCase(LayerName);
        if (!Sight.IsFrozen && !Sight.IsOff)
            Index.Layers.erase(name);
        else if (Index.Layers.size() < MostNames)
            Index.Layers[name] = Sight;
    }
    InLayer = false;
    LayerName.clear();
    Sight = {};
}

void IndexWalk::TakeTable(std::string_view value)
{
    if (Pairs.Code() == 0) {
        EndLayer();
        InLayer = value == "LAYER";
    } else if (Pairs.Code() == 2) {
        LayerName = value;
    } else if (Pairs.Code() == 62) {
        Sight.IsOff = BeginsWith(value, "-");
    } else if (Pairs.Code() == 70) {
        const double flags = Val(value);
        Sight.IsFrozen = flags >= 0 && flags < 65536 && (static_cast<int>(flags) & 1) != 0;
    }
}

void IndexWalk::EndBlock(bool isEnded)
{
    if (State == BlockState::Content && (Index.Blocks.size() < MostNames)) {
        Block.Entities.End = Pairs.Start();
        Block.IsEndless = !isEnded;
        const std::string name = UpperCase(Block.Name);
        Index.Blocks[name] = Block;
    }
    State = BlockState::None;
}

void IndexWalk::TakeBlock(std::string_view value)
{
    const int code = Pairs.Code();
    if (code == 0 && (value == "BLOCK" || value == "ENDBLK")) {
        if (State == BlockState::Head) { // a block of nothing
            Block.Entities = {Pairs.Start(), Pairs.Start(), Pairs.LineOfCode() - 1};
            State = BlockState::Content;
        }
        EndBlock(value == "ENDBLK");
        Block = {};
        if (value == "BLOCK")
            State = BlockState::Head;
    } else if (code == 0 && State == BlockState::Head) {
        Block.Entities = {Pairs.Start(), Pairs.Start(), Pairs.LineOfCode() - 1};
        State = BlockState::Content;
    } else if (State == BlockState::Head && code == 2) {
        Block.Name = value;
    } else if (State == BlockState::Head && (code == 10 || code == 20 || code == 30)) {
        const double number = NumberOfValue(value);
        (code == 10 ? Block.Base.X : code == 20 ? Block.Base.Y : Block.Base.Z) = number;
    }
}

void IndexWalk::TakePair()
{
    const std::string_view value = Trim(Pairs.Value());
    const int code = Pairs.Code();
    if (code == 0 && Holds(UpperCase(value), "ENDSEC")) {
        EndLayer();
        EndBlock(false);
        if (Section == Part::Entities)
            Index.Entities.End = Pairs.Start();
        Section = Part::Other;
        return;
    }
    if (NamesSection && code == 2)
        BeginSection(value);
    NamesSection = code == 0 && value == "SECTION" && Section != Part::Entities;
    if (code == 5 && Section != Part::Header)
        NoteHandle(value);
    if (Section == Part::Header)
        TakeHeader(value);
    else if (Section == Part::Tables)
        TakeTable(value);
    else if (Section == Part::Blocks)
        TakeBlock(value);
}

DrawingIndex IndexWalk::Walk()
{
    while (Pairs.Next()) {
        TakePair();
        if (Index.Entities.End > Index.Entities.Begin || (Index.Entities.Begin > 0 && Section == Part::Other))
            return Index; // nothing of an import stands after the entities
    }
    if (Section == Part::Entities)
        Index.Entities.End = Text.size();
    EndBlock(false);
    return Index;
}

} // namespace

DrawingIndex IndexDrawing(std::string_view text)
{
    return IndexWalk(text).Walk();
}

// From its group 0 to the next one.
bool EntityWalk::NextRecord(SourceRecord& record)
{
    if (At >= Range.End)
        return false;
    PairReader pairs(Text.substr(0, Range.End), At, Line);
    do { // what stands ahead of the first record, a comment say, is none
        if (!pairs.Next())
            return false;
    } while (pairs.Code() != 0);
    record.Kind = UpperCase(Trim(pairs.Value()));
    record.Line = pairs.LineOfCode();
    record.Pairs.clear();
    const std::size_t begin = pairs.Start();
    std::size_t end = pairs.End();
    Long lines = pairs.LinesTaken();
    while (pairs.Next() && pairs.Code() != 0) {
        record.Pairs.push_back({pairs.Code(), pairs.Value()});
        end = pairs.End();
        lines = pairs.LinesTaken();
    }
    record.Text = Text.substr(begin, end - begin);
    At = end;
    Line = lines;
    return true;
}

// Vertices of a POLYLINE, attributes of an INSERT that says so, and the SEQEND of either. A record of another
// kind ends them, and is an entity again.
void EntityWalk::TakeParts(SourceEntity& entity)
{
    const std::string_view wanted = entity.Head.Kind == "POLYLINE" ? "VERTEX" : "ATTRIB";
    const std::size_t begin = static_cast<std::size_t>(entity.Head.Text.data() - Text.data());
    SourceRecord part;
    for (;;) {
        const std::size_t at = At;
        const Long line = Line;
        if (!NextRecord(part))
            break;
        const bool isEnd = part.Kind == "SEQEND";
        if (!isEnd && part.Kind != wanted) {
            At = at;
            Line = line;
            break;
        }
        if (entity.Parts.size() < MostParts)
            entity.Parts.push_back(part);
        if (isEnd)
            break;
    }
    entity.Text = Text.substr(begin, At - begin);
    if (entity.Parts.size() >= MostParts) { // handed on as it is
        entity.Parts.clear();
        entity.Head.Kind += " ";
    }
}

bool EntityWalk::Next(SourceEntity& entity)
{
    entity.Parts.clear();
    if (!NextRecord(entity.Head))
        return false;
    entity.Text = entity.Head.Text;
    if (entity.Head.Kind == "POLYLINE" || (entity.Head.Kind == "INSERT" && entity.Head.Whole(66) != 0))
        TakeParts(entity);
    return true;
}

} // namespace kv

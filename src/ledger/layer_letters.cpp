// One table of letters for each kind of work. Relies on the readers of the layer rules, which look at
// CurrentEntity; leaves that as it was.
#include "ledger/layer_letters.h"

#include <iterator>
#include <span>
#include <utility>

#include "drawing/layer_rules.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

namespace {

// What a letter gives; empty where the name has none and nothing stands in for it.
struct ReadLetter {
    std::string Value, From;
};
struct LetterRow {
    std::string_view Letter, Meaning;
    ReadLetter (*Read)();
};

ReadLetter FromName(Single value)
{
    return value == 0 ? ReadLetter{} : ReadLetter{PlainText(value), "name"};
}

ReadLetter FromName(Int value)
{
    return value == 0 ? ReadLetter{} : ReadLetter{WholeText(value), "name"};
}

ReadLetter Depth()
{
    const Single depth = ReadDepth();
    if (DepthFromEntity != False || depth == 0)
        return {"that of each entity", "entity"};
    return {PlainText(depth), "name"};
}

ReadLetter DiameterOfBore()
{
    const Single diameter = ReadDiameter();
    return diameter > 0 ? ReadLetter{PlainText(diameter), "name"} : ReadLetter{"as drawn", "entity"};
}

ReadLetter Diameter()
{
    return FromName(ReadDiameter());
}

ReadLetter GrooveWidth()
{
    const Single width = ReadDiameter();
    return width > 0 ? ReadLetter{PlainText(width), "name"} : ReadLetter{"one pass of the saw", "default"};
}

ReadLetter Kerf()
{
    const Single kerf = ReadExcav();
    if (kerf > 0)
        return {PlainText(kerf), "name"};
    return {PlainText(ToSingle(Val(Config.SawKerf) / Run.UnitFactor)), "setting SawKerf"};
}

ReadLetter GrooveSide()
{
    const Int side = ReadGrooveSide();
    if (side == 0)
        return {};
    return {side < 0 ? "left of the line" : "right of the line", "name"};
}

ReadLetter ToolOfBore()
{
    const std::string tool(Trim(ReadToolString()));
    return tool.empty() ? ReadLetter{"by the diameter", "default"} : ReadLetter{tool, "name"};
}

ReadLetter ToolOfRoute()
{
    if (const Int tool = ReadToolNumber(); tool != 0)
        return {WholeText(tool), "name"};
    if (ReadDiameter() > 0)
        return {"by the diameter", "default"};
    return {"that of the work before it", "default"};
}

ReadLetter GroupOfBore()
{
    const Int group = ReadGroup();
    return group != 0 ? FromName(group) : ReadLetter{"1", "default"};
}

ReadLetter Group()
{
    return FromName(ReadGroup());
}

ReadLetter Compensation()
{
    const std::string comp = ReadComp();
    if (comp.empty())
        return {"the tool's centre on the line", "default"};
    const bool left = BeginsWith(comp, "G41");
    return {std::string(left ? "left of the line" : "right of the line") + comp.substr(3), "name"};
}

std::string FromSwitch(std::string_view setting, std::string_view instruction, bool isInstructed)
{
    return isInstructed ? "instruction " + std::string(instruction) : "setting " + std::string(setting);
}

ReadLetter Lead()
{
    const Single lead = ReadLeadIn();
    if (lead != 0 && lead != RunDefault)
        return {PlainText(lead), "name"};
    const bool isInstructed = Run.LeadSwitch != 0 || Run.LeadLengthOverride != 0;
    if (lead == RunDefault || Run.LeadsOn != False)
        return {PlainText(Run.LeadLength), FromSwitch("LeadLength", "LEAD", isInstructed)};
    return {};
}

ReadLetter Pitch()
{
    const Single pitch = ReadExcav();
    return pitch > 0 ? ReadLetter{PlainText(pitch), "name"} : ReadLetter{"none", "default"};
}

ReadLetter Bottom()
{
    constexpr const char* const words[] = {"", "TB", "CB", "SB", "DI", "DG"};
    const Int bottom = ReadBottom();
    return bottom == 0 ? ReadLetter{} : ReadLetter{words[bottom], "name"};
}

constexpr LetterRow BoreRows[] = {
    {"Z", "depth", Depth},
    {"D", "diameter", DiameterOfBore},
    {"T", "tool", ToolOfBore},
    {"G", "group", GroupOfBore},
    {"S", "speed", [] { return FromName(ReadSpeed()); }},
    {"F", "feed", [] { return FromName(ReadFeed()); }},
    {"FD", "feed down", [] { return FromName(ReadFeedDown()); }},
    {"PD", "depth of a peck", [] { return FromName(ReadPeckDepth()); }},
    {"ES", "extra slot", [] { return FromName(ReadExtraSlot()); }},
    {"TB, CB, SB, DI, DG", "bottom", Bottom},
};
constexpr LetterRow GrooveRows[] = {
    {"Z", "depth", Depth},
    {"D", "width", GrooveWidth},
    {"K", "kerf of the saw", Kerf},
    {"L, R", "side", GrooveSide},
    {"T", "tool", [] { return FromName(static_cast<Int>(ReadToolNumber())); }},
};
constexpr LetterRow RouteRows[] = {
    {"Z", "depth", Depth},
    {"T", "tool", ToolOfRoute},
    {"D", "diameter", Diameter},
    {"L, R", "compensation", Compensation},
    {"G", "group", Group},
    {"S", "speed", [] { return FromName(ReadSpeed()); }},
    {"F", "feed", [] { return FromName(ReadFeed()); }},
    {"FA", "feed on arcs", [] { return FromName(ReadFeedArc()); }},
    {"FD", "feed down", [] { return FromName(ReadFeedDown()); }},
    {"FR", "rapid feed", [] { return FromName(ReadFeedRapid()); }},
    {"LD", "lead", Lead},
    {"RI", "ramp in", [] { return FromName(ReadRampIn()); }},
    {"RO", "ramp out", [] { return FromName(ReadRampOut()); }},
    {"OZ", "oscillation", [] { return FromName(ReadOscZ()); }},
    {"M", "passes in depth", [] { return FromName(ReadMCode()); }},
    {"A", "parameter C", [] { return FromName(ReadParamA()); }},
    {"B", "parameter V", [] { return FromName(ReadParamB()); }},
    {"ES", "extra slot", [] { return FromName(ReadExtraSlot()); }},
};
constexpr LetterRow PitchRow = {"K", "pitch of the pocket", Pitch};
constexpr LetterRow ThicknessRow = {"Z", "thickness of the panel", Depth};

struct FlagRow {
    std::string_view Word, Meaning, Value;
};
constexpr FlagRow BorderFlags[] = {
    {"LL", "machine's origin", "lower left"},  {"UL", "machine's origin", "upper left"},
    {"UR", "machine's origin", "upper right"}, {"LR", "machine's origin", "lower right"},
    {"NO", "program", "none is wanted"},       {"OP", "drill optimizer", "on"},
    {"OL", "sorting", "left to right"},        {"OR", "sorting", "right to left"},
    {"GS", "sorting", "by the large side"},    {"SS", "sorting", "by the small side"},
    {"_90", "control", "CNC90/WINNER90"},      {"GE", "control", "Genesis"},
    {"EV", "control", "Genesis Evolution"},
};

// As the passes look for them: anywhere behind the word.
void AddBorderFlags(std::string_view layer, std::vector<LayerValue>& values)
{
    const std::string_view flags = Mid(layer, FirstCodePosition(layer));
    for (const FlagRow& flag : BorderFlags)
        if (Holds(flags, flag.Word))
            values.push_back(
                {std::string(flag.Word), std::string(flag.Meaning), std::string(flag.Value), "name"});
    if (const Long outfit = Find(1, flags, "OF"); outfit > 0)
        values.push_back({"OF", "outfit", PlainText(ToSingle(Val(Mid(flags, outfit + 2)))), "name"});
    if (const Long sequence = Find(1, flags, "SQ"); sequence > 0)
        values.push_back({"SQ", "sequence", std::string(Mid(flags, sequence + 2, 4)), "name"});
}

std::vector<LetterRow> RowsOf(LayerWork work)
{
    const auto all = [](auto& rows) { return std::vector<LetterRow>(std::begin(rows), std::end(rows)); };
    switch (work) {
    case LayerWork::Drilling:
    case LayerWork::EdgeBore:
        return all(BoreRows);
    case LayerWork::Groove:
        return all(GrooveRows);
    case LayerWork::Route:
        return all(RouteRows);
    case LayerWork::Pocket: {
        std::vector<LetterRow> rows = all(RouteRows);
        rows.push_back(PitchRow);
        return rows;
    }
    case LayerWork::Border:
        return {ThicknessRow};
    case LayerWork::Nothing:
    case LayerWork::Panel:
    case LayerWork::Text:
    case LayerWork::Instructions:
        break;
    }
    return {};
}

// The readers look at it.
class BorrowedEntity {
  public:
    explicit BorrowedEntity(std::string_view layer)
        : Before(std::exchange(CurrentEntity, DecodedEntity{})), DepthBefore(DepthFromEntity)
    {
        CurrentEntity.Layer = layer;
    }
    ~BorrowedEntity()
    {
        CurrentEntity = std::move(Before);
        DepthFromEntity = DepthBefore;
    }
    BorrowedEntity(const BorrowedEntity&) = delete;
    BorrowedEntity& operator=(const BorrowedEntity&) = delete;

  private:
    DecodedEntity Before;
    Int DepthBefore;
};

} // namespace

std::vector<LayerValue> ValuesOfLayer(std::string_view layer, LayerWork work)
{
    const BorrowedEntity borrowed(layer);
    std::vector<LayerValue> values;
    for (const LetterRow& row : RowsOf(work)) {
        ReadLetter read;
        try {
            read = row.Read();
        } catch (const RunError& error) {
            read = {error.Cause, "refused"};
        }
        if (!read.Value.empty())
            values.push_back({std::string(row.Letter), std::string(row.Meaning), read.Value, read.From});
    }
    if (work == LayerWork::Border)
        AddBorderFlags(layer, values);
    return values;
}

} // namespace kv

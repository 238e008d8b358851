// One table of fields for each record and one for the run block, in the order of the declarations;
// one loop walks any of them. Relies on the arrays' blank element 0, which is never shown.
#include "console/record_fields.h"

#include <algorithm>
#include <charconv>
#include <variant>

#include "platform/text.h"
#include "state/drawn_entities.h"

namespace kv {

namespace {

template <typename Record> struct Field {
    const char* Name;
    std::variant<Single Record::*, Int Record::*, Long Record::*, Text<1> Record::*, Text<3> Record::*,
                 Text<10> Record::*, Text<12> Record::*, Text<30> Record::*, Text<40> Record::*,
                 Text<114> Record::*>
        Member;
};

constexpr Field<DxfEntity> EntityFields[] = {
    {"Kind", &DxfEntity::Kind},
    {"TextIndex", &DxfEntity::TextIndex},
    {"Layer", &DxfEntity::Layer},
    {"X1", &DxfEntity::X1},
    {"Y1", &DxfEntity::Y1},
    {"X2", &DxfEntity::X2},
    {"Y2", &DxfEntity::Y2},
    {"Z1", &DxfEntity::Z1},
    {"Z2", &DxfEntity::Z2},
    {"Elevation", &DxfEntity::Elevation},
    {"Thickness", &DxfEntity::Thickness},
    {"Radius", &DxfEntity::Radius},
    {"EndWidth", &DxfEntity::EndWidth},
    {"Bulge", &DxfEntity::Bulge},
    {"StartAngle", &DxfEntity::StartAngle},
    {"EndAngle", &DxfEntity::EndAngle},
    {"Color", &DxfEntity::Color},
    {"Flags", &DxfEntity::Flags},
    {"TextAlign", &DxfEntity::TextAlign},
    {"FollowFlag", &DxfEntity::FollowFlag},
    {"Side", &DxfEntity::Side},
    {"ExtrusionZ", &DxfEntity::ExtrusionZ},
    {"Reserved", &DxfEntity::Reserved},
};

constexpr Field<VBoreRecord> VBoreFields[] = {
    {"X", &VBoreRecord::X},
    {"Y", &VBoreRecord::Y},
    {"Depth", &VBoreRecord::Depth},
    {"Diameter", &VBoreRecord::Diameter},
    {"Group", &VBoreRecord::Group},
    {"Speed", &VBoreRecord::Speed},
    {"Feed", &VBoreRecord::Feed},
    {"Tool", &VBoreRecord::Tool},
    {"PeckDepth", &VBoreRecord::PeckDepth},
    {"Pitch", &VBoreRecord::Pitch},
    {"ExtraSlot", &VBoreRecord::ExtraSlot},
    {"Bottom", &VBoreRecord::Bottom},
};

constexpr Field<RouteSegment> RouteSegmentFields[] = {
    {"Pass", &RouteSegment::Pass},
    {"X", &RouteSegment::X},
    {"Y", &RouteSegment::Y},
    {"Z", &RouteSegment::Z},
    {"Diameter", &RouteSegment::Diameter},
    {"Group", &RouteSegment::Group},
    {"ToolNo", &RouteSegment::ToolNo},
    {"Tool", &RouteSegment::Tool},
    {"Aux1", &RouteSegment::Aux1},
    {"Aux2", &RouteSegment::Aux2},
    {"Kind", &RouteSegment::Kind},
    {"Dir", &RouteSegment::Dir},
    {"Speed", &RouteSegment::Speed},
    {"Feed", &RouteSegment::Feed},
    {"FeedDown", &RouteSegment::FeedDown},
    {"FeedRapid", &RouteSegment::FeedRapid},
    {"LeadIn", &RouteSegment::LeadIn},
    {"RampOut", &RouteSegment::RampOut},
    {"RampIn", &RouteSegment::RampIn},
    {"Comp", &RouteSegment::Comp},
    {"Sequence", &RouteSegment::Sequence},
    {"OscZ", &RouteSegment::OscZ},
    {"MCode", &RouteSegment::MCode},
    {"Side", &RouteSegment::Side},
    {"ExtraSlot", &RouteSegment::ExtraSlot},
    {"ParamA", &RouteSegment::ParamA},
    {"ParamB", &RouteSegment::ParamB},
    {"Flag", &RouteSegment::Flag},
};

constexpr Field<RouteCircle> RouteCircleFields[] = {
    {"X", &RouteCircle::X},
    {"Y", &RouteCircle::Y},
    {"Z", &RouteCircle::Z},
    {"Diameter", &RouteCircle::Diameter},
    {"Group", &RouteCircle::Group},
    {"ToolNo", &RouteCircle::ToolNo},
    {"Tool", &RouteCircle::Tool},
    {"Radius", &RouteCircle::Radius},
    {"Pass", &RouteCircle::Pass},
    {"Used", &RouteCircle::Used},
    {"Speed", &RouteCircle::Speed},
    {"Feed", &RouteCircle::Feed},
    {"FeedDown", &RouteCircle::FeedDown},
    {"FeedRapid", &RouteCircle::FeedRapid},
    {"LeadIn", &RouteCircle::LeadIn},
    {"RampOut", &RouteCircle::RampOut},
    {"RampIn", &RouteCircle::RampIn},
    {"Comp", &RouteCircle::Comp},
    {"Sequence", &RouteCircle::Sequence},
    {"MCode", &RouteCircle::MCode},
    {"OscZ", &RouteCircle::OscZ},
    {"Side", &RouteCircle::Side},
    {"ExtraSlot", &RouteCircle::ExtraSlot},
};

constexpr Field<GrooveRecord> GrooveFields[] = {
    {"X1", &GrooveRecord::X1},
    {"Y1", &GrooveRecord::Y1},
    {"X2", &GrooveRecord::X2},
    {"Y2", &GrooveRecord::Y2},
    {"Depth", &GrooveRecord::Depth},
    {"Width", &GrooveRecord::Width},
    {"Kerf", &GrooveRecord::Kerf},
    {"FeedDown", &GrooveRecord::FeedDown},
    {"Feed", &GrooveRecord::Feed},
    {"ToolNumber", &GrooveRecord::ToolNumber},
    {"GrooveSide", &GrooveRecord::GrooveSide},
};

constexpr Field<HBoreLineRecord> HBoreLineFields[] = {
    {"X1", &HBoreLineRecord::X1},
    {"Y1", &HBoreLineRecord::Y1},
    {"X2", &HBoreLineRecord::X2},
    {"Y2", &HBoreLineRecord::Y2},
    {"Feed", &HBoreLineRecord::Feed},
    {"Depth", &HBoreLineRecord::Depth},
    {"Reserved", &HBoreLineRecord::Reserved},
    {"Edge", &HBoreLineRecord::Edge},
    {"Group", &HBoreLineRecord::Group},
    {"Speed", &HBoreLineRecord::Speed},
    {"Tool", &HBoreLineRecord::Tool},
    {"ExtraSlot", &HBoreLineRecord::ExtraSlot},
    {"Bottom", &HBoreLineRecord::Bottom},
};

constexpr Field<HBoreRecord> HBoreFields[] = {
    {"Side", &HBoreRecord::Side},     {"Feed", &HBoreRecord::Feed},
    {"PosX", &HBoreRecord::PosX},     {"PosY", &HBoreRecord::PosY},
    {"Z", &HBoreRecord::Z},           {"Diameter", &HBoreRecord::Diameter},
    {"Group", &HBoreRecord::Group},   {"Speed", &HBoreRecord::Speed},
    {"Tool", &HBoreRecord::Tool},     {"ExtraSlot", &HBoreRecord::ExtraSlot},
    {"Bottom", &HBoreRecord::Bottom},
};

constexpr Field<HeadPosition> HeadPositionFields[] = {
    {"X", &HeadPosition::X},         {"Y", &HeadPosition::Y},
    {"Depth", &HeadPosition::Depth}, {"Diameter", &HeadPosition::Diameter},
    {"Tool", &HeadPosition::Tool},   {"ChainSize", &HeadPosition::ChainSize},
    {"Pitch", &HeadPosition::Pitch}, {"Direction", &HeadPosition::Direction},
    {"EndX", &HeadPosition::EndX},   {"EndY", &HeadPosition::EndY},
    {"Feed", &HeadPosition::Feed},   {"ExtraSlot", &HeadPosition::ExtraSlot},
    {"Side", &HeadPosition::Side},
};

// The run block. `First` is the first element that a list is shown from.
struct RunField {
    const char* Name;
    std::variant<Single RunBlock::*, Int RunBlock::*, Long RunBlock::*, std::string RunBlock::*,
                 SideSingles RunBlock::*, std::array<Int, 6> RunBlock::*, std::array<Single, 3> RunBlock::*,
                 PtsTexts RunBlock::*, std::vector<std::string> RunBlock::*, std::vector<Single> RunBlock::*>
        Member;
    std::size_t First = 1;
};

constexpr RunField RunFields[] = {
    {"RunStartTime", &RunBlock::RunStartTime},
    {"SourceFile", &RunBlock::SourceFile},
    {"SourceName", &RunBlock::SourceName},
    {"PartName", &RunBlock::PartName},
    {"RunState", &RunBlock::RunState},
    {"RunFailed", &RunBlock::RunFailed},
    {"FailedFiles", &RunBlock::FailedFiles},
    {"InstructionLayer", &RunBlock::InstructionLayer},
    {"ControlType", &RunBlock::ControlType},
    {"Outfit", &RunBlock::Outfit},
    {"OptimizeFlag", &RunBlock::OptimizeFlag},
    {"OptimizeSide", &RunBlock::OptimizeSide},
    {"SequenceName", &RunBlock::SequenceName},
    {"MinSequence", &RunBlock::MinSequence},
    {"CncOff", &RunBlock::CncOff},
    {"HbdOff", &RunBlock::HbdOff},
    {"Pi", &RunBlock::Pi},
    {"DegToRad", &RunBlock::DegToRad},
    {"RouteTolerance", &RunBlock::RouteTolerance},
    {"DrawingScale", &RunBlock::DrawingScale},
    {"UnitFactor", &RunBlock::UnitFactor},
    {"DrawingInInch", &RunBlock::DrawingInInch},
    {"SourceFolder", &RunBlock::SourceFolder},
    {"PartDescription", &RunBlock::PartDescription},
    {"ProgramFileName", &RunBlock::ProgramFileName},
    {"SideMinX", &RunBlock::SideMinX},
    {"SideMinY", &RunBlock::SideMinY},
    {"SideMaxX", &RunBlock::SideMaxX},
    {"SideMaxY", &RunBlock::SideMaxY},
    {"SideWidth", &RunBlock::SideWidth},
    {"SideHeight", &RunBlock::SideHeight},
    {"SidePresent", &RunBlock::SidePresent},
    {"PanelFound", &RunBlock::PanelFound},
    {"OriginX", &RunBlock::OriginX},
    {"OriginY", &RunBlock::OriginY},
    {"PartThickness", &RunBlock::PartThickness},
    {"SideMarginX", &RunBlock::SideMarginX},
    {"SideMarginY", &RunBlock::SideMarginY},
    {"OriginRight", &RunBlock::OriginRight},
    {"OriginTop", &RunBlock::OriginTop},
    {"NoCode", &RunBlock::NoCode},
    {"DrAlt", &RunBlock::DrAlt},
    {"AnyLeadCode", &RunBlock::AnyLeadCode},
    {"CornerComp", &RunBlock::CornerComp},
    {"ArcSubstitution", &RunBlock::ArcSubstitution},
    {"VarNames", &RunBlock::VarNames},
    {"VarValues", &RunBlock::VarValues},
    {"HasVars", &RunBlock::HasVars},
    {"FlagMask", &RunBlock::FlagMask},
    {"OpStrings", &RunBlock::OpStrings, 0}, // the index is the operation's number
    {"OutfitDefault", &RunBlock::OutfitDefault},
    {"LeadLengthOverride", &RunBlock::LeadLengthOverride},
    {"RampHeightOverride", &RunBlock::RampHeightOverride},
    {"LeadSwitch", &RunBlock::LeadSwitch},
    {"RampInSwitch", &RunBlock::RampInSwitch},
    {"RampOutSwitch", &RunBlock::RampOutSwitch},
    {"RemBorderSwitch", &RunBlock::RemBorderSwitch},
    {"OffsetOverride", &RunBlock::OffsetOverride, 0}, // X, Y, Z
    {"OffsetOverrideSet", &RunBlock::OffsetOverrideSet},
    {"PtsValues", &RunBlock::PtsValues, 0}, // element 0 is the list's path or its state
    {"NoteX", &RunBlock::NoteX},
    {"NoteY", &RunBlock::NoteY},
    {"NoteText", &RunBlock::NoteText},
    {"NoteCount", &RunBlock::NoteCount},
    {"LeadLength", &RunBlock::LeadLength},
    {"LeadRampHeight", &RunBlock::LeadRampHeight},
    {"LeadsOn", &RunBlock::LeadsOn},
    {"RampInOn", &RunBlock::RampInOn},
    {"RampOutOn", &RunBlock::RampOutOn},
    {"RemoveBorder", &RunBlock::RemoveBorder},
    {"OffsetX", &RunBlock::OffsetX},
    {"OffsetY", &RunBlock::OffsetY},
    {"OffsetZ", &RunBlock::OffsetZ},
    {"CncNotes", &RunBlock::CncNotes},
    {"GCode1", &RunBlock::GCode1},
    {"GCode2", &RunBlock::GCode2},
    {"GCode3", &RunBlock::GCode3},
    {"EntityCount", &RunBlock::EntityCount},
    {"SegmentCount", &RunBlock::SegmentCount},
    {"MaxSequence", &RunBlock::MaxSequence},
    {"LayerTable", &RunBlock::LayerTable, 0}, // rows 0 to 3 are fixed
    {"RoutePass", &RunBlock::RoutePass},
};

Json ShowElement(Single value)
{
    return ShowSingle(value);
}

Json ShowElement(Int value)
{
    return value;
}

Json ShowElement(const std::string& text)
{
    return Utf8FromBytes(TrimRight(text));
}

bool IsBlank(const std::string& text)
{
    return TrimRight(text).empty();
}

void AddField(Json& object, const char* name, Single value, std::size_t)
{
    if (value != 0)
        object[name] = ShowSingle(value);
}

void AddField(Json& object, const char* name, Long value, std::size_t)
{
    if (value != 0)
        object[name] = value;
}

void AddField(Json& object, const char* name, Int value, std::size_t)
{
    AddField(object, name, Long{value}, 0);
}

void AddField(Json& object, const char* name, const std::string& text, std::size_t)
{
    if (!IsBlank(text))
        object[name] = ShowElement(text);
}

template <std::size_t N> void AddField(Json& object, const char* name, const Text<N>& text, std::size_t)
{
    if (!text.Trimmed().empty())
        object[name] = Utf8FromBytes(text.Trimmed());
}

template <typename List> Json ShowList(const List& list, std::size_t first, std::size_t end)
{
    Json shown = Json::array();
    for (std::size_t i = first; i < end; ++i)
        shown.push_back(ShowElement(list[i]));
    return shown;
}

// A grown list is shown whole, blank elements too: others count on their places.
template <typename Element>
void AddField(Json& object, const char* name, const std::vector<Element>& list, std::size_t first)
{
    if (list.size() > first)
        object[name] = ShowList(list, first, list.size());
}

template <typename Element, std::size_t N>
void AddField(Json& object, const char* name, const std::array<Element, N>& list, std::size_t first)
{
    const bool blank = std::all_of(list.begin(), list.end(), [](Element value) { return value == 0; });
    if (!blank)
        object[name] = ShowList(list, first, N);
}

// The cut list's columns end with the last one that has a value.
void AddField(Json& object, const char* name, const PtsTexts& list, std::size_t first)
{
    std::size_t end = list.size();
    while (end > first && IsBlank(list[end - 1]))
        --end;
    if (end > first)
        object[name] = ShowList(list, first, end);
}

template <typename Record, std::size_t N>
Json ShowArray(const RecordArray<Record>& records, const Field<Record> (&fields)[N])
{
    Json shown = Json::array();
    for (Long i = 1; i <= records.Last(); ++i) {
        Json object = Json::object();
        for (const Field<Record>& field : fields)
            std::visit([&](auto member) { AddField(object, field.Name, records[i].*member, 1); },
                       field.Member);
        if (records[i].Drawn != 0)
            object["Drawn"] = ShowDrawn(records[i].Drawn);
        shown.push_back(std::move(object));
    }
    return shown;
}

} // namespace

Json ShowSingle(Single value)
{
    char digits[32];
    const std::to_chars_result written = std::to_chars(digits, digits + sizeof digits, value);
    const std::string_view text(digits, static_cast<std::size_t>(written.ptr - digits));
    if (text.find_first_not_of("-0123456789") == std::string_view::npos) {
        long long whole = 0;
        std::from_chars(digits, written.ptr, whole);
        return whole;
    }
    double number = 0; // of the same decimal text, so that the library writes that text again
    std::from_chars(digits, written.ptr, number);
    return number;
}

std::string Utf8FromBytes(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const unsigned byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            text += c;
            continue;
        }
        text += static_cast<char>(0xC0 | (byte >> 6));
        text += static_cast<char>(0x80 | (byte & 0x3F));
    }
    return text;
}

Json ShowDrawn(Long drawn)
{
    Json shown = Json::array();
    for (const Long number : EntitiesOf(drawn)) {
        Json object = Json::object();
        object["line"] = DrawnEntities[number].Line;
        if (const std::string handle = HandleOf(number); !handle.empty())
            object["handle"] = Utf8FromBytes(handle);
        shown.push_back(std::move(object));
    }
    return shown;
}

Json ShowRecords(const RecordArray<DxfEntity>& records)
{
    return ShowArray(records, EntityFields);
}

Json ShowRecords(const RecordArray<VBoreRecord>& records)
{
    return ShowArray(records, VBoreFields);
}

Json ShowRecords(const RecordArray<RouteSegment>& records)
{
    return ShowArray(records, RouteSegmentFields);
}

Json ShowRecords(const RecordArray<RouteCircle>& records)
{
    return ShowArray(records, RouteCircleFields);
}

Json ShowRecords(const RecordArray<GrooveRecord>& records)
{
    return ShowArray(records, GrooveFields);
}

Json ShowRecords(const RecordArray<HBoreLineRecord>& records)
{
    return ShowArray(records, HBoreLineFields);
}

Json ShowRecords(const RecordArray<HBoreRecord>& records)
{
    return ShowArray(records, HBoreFields);
}

Json ShowRecords(const RecordArray<HeadPosition>& records)
{
    return ShowArray(records, HeadPositionFields);
}

Json ShowTexts(const std::vector<std::string>& texts)
{
    Json shown = Json::array();
    for (std::size_t i = 1; i < texts.size(); ++i)
        shown.push_back(Utf8FromBytes(texts[i]));
    return shown;
}

Json ShowRun()
{
    Json object = Json::object();
    for (const RunField& field : RunFields)
        std::visit([&](auto member) { AddField(object, field.Name, Run.*member, field.First); },
                   field.Member);
    return object;
}

} // namespace kv

// Obeys the directive lines of a drawing. First of all passes, so no layer has been looked at yet;
// needs the reader's InstructionLayer. Leaves overrides, variables, cut list values, operation
// strings and notes in Run, and the layers renamed.
#include "drawing/instructions.h"

#include <cmath>

#include "drawing/instruction_renames.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/carry_over.h"
#include "state/drawn_names.h"
#include "state/given_names.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

namespace {

// One directive line and what the pass collects on its way.
struct Pass {
    DxfEntity* Entity = nullptr;
    std::string Line;  // left-trimmed
    Long Position = 1; // behind the keyword; 0 at the end of the line
    // The last number of a FLAG, OP or PTS line, or the last variable's: the list of variables and
    // these lines share it, so the next VAR goes one above and the list is cut or grown to that.
    Int Scratch = 0;
    std::vector<LayerRename> LayerRenames;
    std::vector<ColorRename> ColorRenames;
    std::array<bool, PtsSlots> FieldByNumber{}; // cut list fields that this drawing gave by number
};

std::string_view Rest(const Pass& pass)
{
    return Mid(pass.Line, pass.Position);
}

std::string_view BehindFirst(std::string_view text, char c)
{
    const std::size_t at = text.find(c);
    return at == std::string_view::npos ? text : text.substr(at + 1);
}

void NoArcSubstitution(Pass&)
{
    Run.ArcSubstitution = 0;
}

// "NO CODE" does nothing; the word is written joined.
void NoEffect(Pass&) {}

void TurnCodeOff(Pass&)
{
    Run.NoCode = True;
}

void AlternateDrilling(Pass&)
{
    Run.DrAlt = True;
}

void RenameLayer(Pass& pass)
{
    if (!Holds(pass.Line, "="))
        return;
    const std::string from = UpperCase(ParseString(pass.Position, pass.Line, "="));
    const std::string to = UpperCase(Rest(pass));
    pass.LayerRenames.push_back(
        {std::string(Trim(from)), std::string(Trim(to)), NumberOfName(Trim(Rest(pass)))});
}

void RenameColor(Pass& pass)
{
    std::string color;
    if (Holds(Rest(pass), "="))
        color = UpperCase(ParseString(pass.Position, pass.Line, "="));
    if (color.empty())
        color = WholeText(pass.Entity->Color); // COLOR=ROUTE1: this text's own colour
    pass.ColorRenames.push_back({color, UpperCase(Rest(pass)), NumberOfName(Trim(Rest(pass)))});
    EntityTexts[static_cast<std::size_t>(pass.Entity->TextIndex)].clear();
}

bool IsVariableName(const std::string& name)
{
    return (name > "@" && name < "H") || name == "I" || BeginsWith(name, "V") || BeginsWith(name, "R");
}

void SetVariable(Pass& pass)
{
    const std::string name = Compact(UpperCase(ParseString(pass.Position, pass.Line, "=")));
    if (!IsVariableName(name))
        return;
    pass.Scratch = ToInt(pass.Scratch + 1.0);
    if (pass.Scratch < 0)
        throw RunError{ErrorSubscript, "VAR behind a negative number: \"" + pass.Line + "\""};
    const auto index = static_cast<std::size_t>(pass.Scratch);
    Run.VarNames.resize(index + 1);
    Run.VarValues.resize(index + 1);
    Run.VarNames[index] = name;
    Run.VarValues[index] = Compact(LowerCase(Rest(pass)));
    Run.HasVars = True;
}

// Without "=" the whole line is the number's text, which reads as 0.
void SetFlag(Pass& pass)
{
    pass.Scratch = ToInt(Val(Compact(BehindFirst(pass.Line, '='))));
    Run.FlagMask |= ToLong(std::exp2(static_cast<double>(pass.Scratch)));
}

void SetDescription(Pass& pass)
{
    Run.PartDescription = NextToken(pass.Position, pass.Line);
}

void SetPartName(Pass& pass)
{
    Run.PartName = PartNameBy(NextToken(pass.Position, pass.Line));
    Tell(Message::PartNameAssigned, {{"name", FileNameOf(Run.PartName)}});
}

void SetOperationString(Pass& pass)
{
    pass.Scratch = ToInt(Val(Compact(ParseString(pass.Position, pass.Line, "= "))));
    if (pass.Scratch < 0)
        throw RunError{ErrorSubscript, "Negative number in \"" + pass.Line + "\""};
    const auto index = static_cast<std::size_t>(pass.Scratch);
    if (Run.OpStrings.size() <= index)
        Run.OpStrings.resize(index + 1);
    Run.OpStrings[index] = TrimLeft(Rest(pass));
}

// The position counts on the line with its blanks, the value is read on the line without them: so
// "SCALE 2.5" reads .5, and "SCALE=2.5" reads 2.5.
double ValueOnCompactLine(Pass& pass)
{
    const std::string line = Compact(pass.Line);
    return std::abs(Val(ParseString(pass.Position, line, "= ")));
}

void SetScale(Pass& pass)
{
    Run.DrawingScale = ToSingle(ValueOnCompactLine(pass));
}

void SetOutfit(Pass& pass)
{
    Run.OutfitDefault = ToLong(ValueOnCompactLine(pass));
}

void SetLead(Pass& pass)
{
    const Long equals = pass.Position == 0 ? 0 : Find(pass.Position, pass.Line, "=");
    if (equals > 0)
        pass.Position = equals + 1;
    const std::string token = UpperCase(NextToken(pass.Position, pass.Line));
    if (token == "OFF") {
        Run.LeadSwitch = -1;
        return;
    }
    if (token != "ON") {
        Run.LeadLengthOverride = ToSingle(std::abs(Val(token)));
        return;
    }
    Run.LeadSwitch = 1;
    const double length = Val(NextToken(pass.Position, pass.Line));
    if (length > 0)
        Run.LeadLengthOverride = ToSingle(length);
}

void SetRampHeight(Pass& pass)
{
    const std::string_view text = Holds(pass.Line, "=") ? BehindFirst(pass.Line, '=') : Rest(pass);
    Long position = 1;
    Run.RampHeightOverride = ToSingle(Val(NextToken(position, text)));
}

// Any word but ON and OFF leaves the switch.
void SetSwitch(Int& field, std::string_view word)
{
    if (EqualIgnoringCase(word, "ON"))
        field = 1;
    else if (EqualIgnoringCase(word, "OFF"))
        field = -1;
}

void SetRampIn(Pass& pass)
{
    SetSwitch(Run.RampInSwitch, NextToken(pass.Position, pass.Line));
}

// The word is looked for from position 9, wherever the keyword ended.
void SetRampOut(Pass& pass)
{
    Long position = 9;
    SetSwitch(Run.RampOutSwitch, NextToken(position, pass.Line));
}

void SetRemoveBorder(Pass& pass)
{
    SetSwitch(Run.RemBorderSwitch, NextToken(pass.Position, pass.Line));
}

void SetCornerComp(Pass& pass)
{
    SetSwitch(Run.CornerComp, NextToken(pass.Position, pass.Line));
}

// A drawing's commas have become points by now, so OFFSET 10,20,30 is X 10.2 and zeros.
void SetOffset(Pass& pass)
{
    const std::string_view token = ParseString(pass.Position, pass.Line, "=");
    Long position = 1;
    for (Single& offset : Run.OffsetOverride)
        offset = ToSingle(Val(ParseString(position, token, ",")));
    Run.OffsetOverrideSet = True;
}

// The slot of a cut list column by its name; 0 for the list's file, -1 when there is none.
int PtsSlotOf(std::string_view token)
{
    const std::string name = Compact(UpperCase(token));
    for (std::size_t slot = 1; slot < Config.PtsFields.size(); ++slot)
        if (Config.PtsFields[slot] == name)
            return static_cast<int>(slot);
    return name == "FILE" ? 0 : -1;
}

// A number names a nameless field, for this drawing and those that follow.
void NameField(Pass& pass, std::size_t slot)
{
    pass.FieldByNumber[slot] = true;
    if (!Config.PtsFields[slot].empty())
        return;
    Config.PtsFields[slot] = "FIELD" + WholeText(static_cast<Long>(slot));
    Config.PtsNamedByDrawing[slot] = true;
}

void SetCutListValue(Pass& pass)
{
    Long position = 5; // fixed, so ".PTS" reads its own blank too
    const std::string_view token = Trim(ParseString(position, pass.Line, "="));
    if (EqualIgnoringCase(token, "OFF") || Run.PtsValues[0] == "OFF") {
        Run.PtsValues[0] = "OFF";
        return;
    }
    if (token.empty()) {
        Tell(Message::CutListWithoutField, {{"instruction", pass.Line}});
        return;
    }
    pass.Scratch = ToInt(Val(token));
    const bool byName = token.size() > 2 || pass.Scratch == 0;
    if (byName) {
        const int slot = PtsSlotOf(token);
        if (slot < 0) {
            Run.PtsValues[0] = "ERROR";
            Tell(Message::CutListFieldUnknown, {{"field", token}});
            return;
        }
        pass.Scratch = static_cast<Int>(slot);
        const auto found = static_cast<std::size_t>(slot);
        if (Config.PtsNamedByDrawing[found] && !pass.FieldByNumber[found])
            NoteTakenOver("cut list field", Config.PtsFields[found]);
    }
    if (pass.Scratch < 0 || pass.Scratch > HighestPtsField)
        throw RunError{ErrorSubscript, "No cut list field of that number: \"" + pass.Line + "\""};
    const auto slot = static_cast<std::size_t>(pass.Scratch);
    if (!byName)
        NameField(pass, slot);
    const std::string_view value = Trim(BehindFirst(Trim(Rest(pass)), '='));
    Run.PtsValues[slot] = slot == 0 ? GivenFileName(NameWithoutFolder("PTS FILE", value)) : value;
}

struct Keyword {
    std::string_view Word;
    void (*Obey)(Pass& pass);
};

// In the order of the tests; compared with the whole upper-cased word.
constexpr Keyword Keywords[] = {
    {"NOARCSUB", NoArcSubstitution},
    {"NO", NoEffect},
    {"NOCODE", TurnCodeOff},
    {"DRALT", AlternateDrilling},
    {"LAYER", RenameLayer},
    {"COLOR", RenameColor},
    {"VAR", SetVariable},
    {"VARIABLE", SetVariable},
    {"FLAG", SetFlag},
    {"DESCR", SetDescription},
    {"NAME", SetPartName},
    {"OP", SetOperationString},
    {"SCALE", SetScale},
    {"OUTFIT", SetOutfit},
    {"LEAD", SetLead},
    {"LEADS", SetLead},
    {"ZRAMP", SetRampHeight},
    {"RAMPIN", SetRampIn},
    {"RAMPOUT", SetRampOut},
    {"REMBORDER", SetRemoveBorder},
    {"OFFSET", SetOffset},
    {"CORNERCOMP", SetCornerComp},
    {"PTS", SetCutListValue},
    {".PTS", SetCutListValue},
};

// A line whose first word is no keyword is a note, pinned to the text's place. The scale is the one
// in force now: a SCALE line further down does not move it.
void PinNote(const Pass& pass)
{
    if (Trim(pass.Line).empty())
        return;
    const DxfEntity& text = *pass.Entity;
    Run.TextsRead.push_back({text.Drawn, "note", pass.Line});
    const bool aligned = text.TextAlign != 0;
    Run.NoteCount = ToInt(Run.NoteCount + 1.0);
    const auto slots = static_cast<std::size_t>(Run.NoteCount) + 1;
    Run.NoteX.resize(slots);
    Run.NoteY.resize(slots);
    Run.NoteText.resize(slots);
    Run.NoteX.back() = (aligned ? text.X2 : text.X1) * Run.DrawingScale;
    Run.NoteY.back() = (aligned ? text.Y2 : text.Y1) * Run.DrawingScale;
    Run.NoteText.back() = Compact(pass.Line);
}

void ObeyLine(Pass& pass)
{
    pass.Position = 1;
    const std::string word = UpperCase(ParseString(pass.Position, pass.Line, " ="));
    if (word == UpperCase(ProductName) || word == "POST") {
        Run.TextsRead.push_back({pass.Entity->Drawn, "title of the instructions", pass.Line});
        return;
    }
    for (const Keyword& keyword : Keywords) {
        if (word != keyword.Word)
            continue;
        Run.TextsRead.push_back({pass.Entity->Drawn, word, pass.Line});
        keyword.Obey(pass);
        return;
    }
    PinNote(pass);
}

} // namespace

void ReadInstructions()
{
    if (Run.InstructionLayer.empty())
        return;
    Pass pass;
    for (Long i = 1; i <= Entities.Last(); ++i) {
        DxfEntity& entity = Entities[i];
        if (entity.TextIndex == 0 || !Holds(Compact(entity.Layer.Trimmed()), Run.InstructionLayer))
            continue; // what has no text has no line
        pass.Entity = &entity;
        pass.Line = TrimLeft(EntityTexts[static_cast<std::size_t>(entity.TextIndex)]);
        if (Run.InstructionLayer != Run.Alone.InstructionLayer && !Trim(pass.Line).empty())
            NoteTakenOver("instruction layer", Run.InstructionLayer);
        ObeyLine(pass);
    }
    ApplyRenames(pass.LayerRenames, pass.ColorRenames);
}

} // namespace kv

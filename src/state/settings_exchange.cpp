// Loads and saves the settings. Each section is a table of keys, forms and fields, walked by one
// loop for the load and one for the save; fix-ups stand in a table of their own, since they follow
// when all is read. Missing keys empty their field: what is designed into Settings lasts only until
// the first load. No value raises a message; what is no number, or none that fits, is 0.
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <span>
#include <utility>
#include <variant>

#include "platform/number_texts.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/settings.h"
#include "state/settings_ini.h"
#include "state/typed_settings.h"
#include "state/typed_texts.h"

namespace kv {

namespace {

enum class Form {
    Text,      // as it stands
    Path,      // a folder; blank is not written, so that a blank field never erases a stored one
    Word,      // "True" or "False", read without case
    ExactWord, // the same, but only the exact "True" is read as such
    Number,    // a check box or flag, printed with a leading blank from zero on
    UnitMode,  // "1" to "4"; any other value leaves the field
};

struct SettingRow {
    std::string_view Key;
    Form How;
    std::variant<std::string*, bool*, Int*> Field;
};

// Section "Configuration", in the order in which it is written.
const SettingRow ExchangeRows[] = {
    {"FormState", Form::Number, &Config.FormState},
    {"SourcePath90", Form::Path, &Config.SourcePath90},
    {"SourcePathGen", Form::Path, &Config.SourcePathGen},
    {"SourcePathEV", Form::Path, &Config.SourcePathEV},
    {"DestinationPath90", Form::Path, &Config.DestinationPath90},
    {"DestinationPathGen", Form::Path, &Config.DestinationPathGen},
    {"DestinationPathEV", Form::Path, &Config.DestinationPathEV},
    {"AutoStartTemp", Form::ExactWord, &Config.AutoStartTemp},
    {"AutoStartBatch", Form::ExactWord, &Config.AutoStartBatch},
    {"HBDDestinationPath", Form::Path, &Config.HBDDestinationPath},
    {"MakeHBD", Form::Number, &Config.MakeHBD},
    {"HBDGlue", Form::Number, &Config.HBDGlue},
    {"HBDDowel", Form::Number, &Config.HBDDowel},
    {"HBDVBoreLimit", Form::Text, &Config.HBDVBoreLimit},
    {"EvOptOff", Form::Word, &Config.EvOptOff},
    {"EvOptLR", Form::Word, &Config.EvOptLR},
    {"EvOptRL", Form::Word, &Config.EvOptRL},
    {"EvOptGS", Form::Word, &Config.EvOptGS},
    {"EvOptSS", Form::Word, &Config.EvOptSS},
    {"Winner90", Form::Word, &Config.Winner90},
    {"Genesis", Form::Word, &Config.Genesis},
    {"GenesisEV", Form::Word, &Config.GenesisEV},
    {"LeadS", Form::Number, &Config.LeadS},
    {"LeadRampIn", Form::Number, &Config.LeadRampIn},
    {"LeadRampOut", Form::Number, &Config.LeadRampOut},
    {"RemoveBorderRoute", Form::Number, &Config.RemoveBorderRoute},
    {"CornerComp", Form::Number, &Config.CornerComp},
    {"LeadLength", Form::Text, &Config.LeadLength},
    {"LeadRampHeight", Form::Text, &Config.LeadRampHeight},
    {"PrecisionMetric", Form::Text, &Config.PrecisionMetric},
    {"PrecisionInch", Form::Text, &Config.PrecisionInch},
    {"Metric", Form::Text, &Config.Metric},
    {"OffsetX", Form::Text, &Config.OffsetX},
    {"OffsetY", Form::Text, &Config.OffsetY},
    {"OffsetZ", Form::Text, &Config.OffsetZ},
    {"GraphicAfterAuto", Form::Number, &Config.GraphicAfterAuto},
    {"GraphicAfterMan", Form::Number, &Config.GraphicAfterMan},
    {"PauseForMessages", Form::Number, &Config.PauseForMessages},
    {"TipsEnable", Form::Number, &Config.TipsEnable},
    {"SawKerf", Form::Text, &Config.SawKerf},
    {"MakeBinaries", Form::Number, &Config.MakeBinaries},
    {"LineLimit", Form::Text, &Config.LineLimit},
    {"BatchLimit", Form::Text, &Config.BatchLimit},
    {"RadiusLimit", Form::Text, &Config.RadiusLimit},
    {"SpeedyInchMode", Form::Number, &Config.SpeedyInchMode},
    {"GraphicDelay", Form::Text, &Config.GraphicDelay},
    {"UnitMode", Form::UnitMode, &Config.UnitMode},
};

// The same section, beside the exchange: each is written where it changes, or never.
const SettingRow OtherRows[] = {
    {"Sequence", Form::Text, &Config.Sequence},
    {"Optimizer", Form::Text, &Config.Optimizer},
    {"DRAlternate", Form::Text, &Config.DRAlternate},
    {"ListColumnWidth3", Form::Text, &Config.ListColumnWidth[0]},
    {"ListColumnWidth4", Form::Text, &Config.ListColumnWidth[1]},
    {"ListColumnWidth5", Form::Text, &Config.ListColumnWidth[2]},
    {"ListColumnWidth6", Form::Text, &Config.ListColumnWidth[3]},
    {"EditorPath", Form::Path, &Config.EditorPath},
    {"LineOrigin", Form::Text, &Config.LineOrigin},
    {"RouteTolerance", Form::Text, &Config.RouteTolerance},
    {"Origin", Form::Text, &Config.Origin},
    {"SPDA", Form::Text, &Config.SPDA},
    {"Pockets", Form::Text, &Config.Pockets},
    {"CarryOver", Form::Text, &Config.CarryOver},
    {"Strict", Form::Text, &Config.Strict},
    {"Check", Form::Text, &Config.Check},
    {"Import", Form::Text, &Config.Import},
    {"ImportTolerance", Form::Text, &Config.ImportTolerance},
};

// Section "System".
const SettingRow SystemRows[] = {
    {"Help", Form::Text, &Config.Help},
    {"OLHelp", Form::Text, &Config.OLHelp},
    {"Viewer", Form::Text, &Config.Viewer},
};

constexpr std::string_view CutListHead = "PTSDATA."; // in front of a key of that section in an override

// Section "PTSDATA", its plain keys.
const SettingRow CutListRows[] = {
    {"Path", Form::Path, &Config.PTSPath},
    {"Name", Form::Text, &Config.PTSName},
};

// In the order in which they are applied, when all keys are read.
struct FixUp {
    std::string* Field;
    void (*Apply)(std::string& text);
};
const FixUp FixUps[] = {
    {&Config.HBDDestinationPath,
     [](std::string& path) {
         if (Trim(path).empty())
             path = "C:\\Albatros\\Product\\";
     }},
    {&Config.PrecisionMetric,
     [](std::string& decimals) {
         if (decimals.empty())
             decimals = "2";
     }},
    {&Config.PrecisionInch,
     [](std::string& decimals) {
         if (decimals.empty())
             decimals = "3";
     }},
    {&Config.GraphicDelay,
     [](std::string& seconds) {
         if (Val(seconds) == 0)
             seconds = ".5";
     }},
    {&Config.SawKerf,
     [](std::string& kerf) {
         if (Val(kerf) < 3)
             kerf = "3";
         if (Val(kerf) > 20)
             kerf = "20";
     }},
    {&Config.LineLimit,
     [](std::string& lines) {
         if (Val(lines) < 200)
             lines = "600"; // not 200
     }},
};

Int NumberOf(std::string_view text)
{
    const double value = std::nearbyint(Val(text)); // halves to even
    const bool fits = value >= std::numeric_limits<Int>::min() && value <= std::numeric_limits<Int>::max();
    return fits ? static_cast<Int>(value) : Int{0};
}

std::string PrintedNumber(Int number)
{
    return (number >= 0 ? " " : "") + WholeText(number);
}

void TakeValue(const SettingRow& row, std::string_view text)
{
    switch (row.How) {
    case Form::Text:
        *std::get<std::string*>(row.Field) = text;
        return;
    case Form::Path: {
        std::string& path = *std::get<std::string*>(row.Field);
        path = text;
        ReplaceChar(path, '/', '\\'); // paths are stored in either form
        return;
    }
    case Form::Word:
        *std::get<bool*>(row.Field) = IsTrueText(text);
        return;
    case Form::ExactWord:
        *std::get<bool*>(row.Field) = text == "True";
        return;
    case Form::Number:
        *std::get<Int*>(row.Field) = NumberOf(text);
        return;
    case Form::UnitMode:
        if (text == "1" || text == "2" || text == "3" || text == "4")
            *std::get<std::string*>(row.Field) = text;
        return;
    }
}

std::string StoredText(const SettingRow& row)
{
    if (const auto* const word = std::get_if<bool*>(&row.Field))
        return **word ? "True" : "False";
    if (const auto* const number = std::get_if<Int*>(&row.Field))
        return PrintedNumber(**number);
    return *std::get<std::string*>(row.Field);
}

// "0" or "1" of the key, taken when the program starts; it also counts for the Evolution.
void TakeOptimizerBox()
{
    Config.OptimizerBox = Val(Config.Optimizer) != 0;
}

std::set<std::string, std::less<>> OverriddenKeys; // in upper case

bool IsFixedUp(const SettingRow& row)
{
    const auto* const field = std::get_if<std::string*>(&row.Field);
    return field != nullptr &&
           std::ranges::any_of(FixUps, [&](const FixUp& fixUp) { return fixUp.Field == *field; });
}

// Of paths nothing is kept.
void KeepTyped(const SettingRow& row, std::string_view text, bool ofCall)
{
    if (row.How == Form::Number || (row.How == Form::Text && IsFixedUp(row)))
        KeepTypedText({std::string(row.Key), std::string(text), StoredText(row), ofCall});
}

// When the fix-ups are through.
void SettleTypedTexts(std::span<const SettingRow> rows)
{
    for (const SettingRow& row : rows)
        SettleTypedText(row.Key, StoredText(row));
}

void LoadRows(std::string_view section, std::span<const SettingRow> rows)
{
    std::vector<ProfileEntry> entries;
    for (const SettingRow& row : rows)
        entries.push_back({std::string(row.Key), {}});
    if (!GetIniValues(section, entries))
        return;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        TakeValue(rows[i], entries[i].Value);
        KeepTyped(rows[i], entries[i].Value, false);
    }
}

void KeepSettledText(const TypedSetting& typed)
{
    KeepTypedText(typed);
    SettleTypedText(typed.Key, typed.Taken);
}

// Under another spelling of the section than the one that is read, and nobody is told of a failure:
// see PutConfigValue.
void SaveRows(std::span<const SettingRow> rows)
{
    std::vector<ProfileEntry> entries;
    for (const SettingRow& row : rows) {
        const std::string text = StoredText(row);
        if (row.How == Form::Path && Trim(text).empty())
            continue;
        entries.push_back({std::string(row.Key), text});
    }
    PutIniValues("ConFiguration", entries);
}

const SettingRow* FindRow(std::span<const SettingRow> rows, std::string_view key)
{
    for (const SettingRow& row : rows) {
        if (EqualIgnoringCase(row.Key, key))
            return &row;
    }
    return nullptr;
}

// A column of the cut list: blanks out, capitals, a "~" in front asks for double quotes.
void TakePtsField(std::size_t slot, std::string_view value)
{
    const std::string name = UpperCase(StripBlanks(value.substr(0, value.find('\0'))));
    const bool quoted = BeginsWith(name, "~");
    Config.PtsFields[slot] = quoted ? name.substr(1) : name;
    Config.PtsQuotes[slot] = quoted ? "\"" : "";
    Config.PtsNamedByDrawing[slot] = false;
}

void CountPtsFields()
{
    Config.PtsFieldCount = 0;
    for (std::size_t slot = 1; slot < PtsSlots; ++slot) { // slot 0 is no column
        if (!Config.PtsFields[slot].empty())
            Config.PtsFieldCount = static_cast<Int>(slot);
    }
}

void TakePtsUnit(std::string_view value)
{
    if (!value.empty()) // a missing key changes nothing
        Config.PTSMetric = Holds(value, "M");
}

struct ToolColumn {
    std::string_view Key; // followed by the row's number, which begins at 0
    std::string ToolSubstitution::*Cell;
};
const ToolColumn ToolColumns[] = {
    {"Enabled", &ToolSubstitution::Enabled},
    {"Tool", &ToolSubstitution::Tool},
    {"ToolSub", &ToolSubstitution::ToolSub},
};

// A cell holds its number printed plainly, so a missing one is "0".
std::string PlainCell(std::string_view text)
{
    constexpr double widest = 1e15; // whole numbers below it are exact
    const double value = Val(text);
    if (std::abs(value) < widest && value == std::floor(value))
        return WholeText(static_cast<long long>(value));
    if (std::abs(value) > std::numeric_limits<Single>::max())
        return "0";
    return PlainText(ToSingle(value));
}

// Keys and cells of all rows, row by row.
std::vector<ProfileEntry> ToolSubstitutionEntries()
{
    std::vector<ProfileEntry> entries;
    for (std::size_t row = 0; row < Config.ToolSubData.size(); ++row) {
        const std::string number = WholeText(static_cast<long long>(row));
        for (const ToolColumn& column : ToolColumns)
            entries.push_back({std::string(column.Key) + number, Config.ToolSubData[row].*column.Cell});
    }
    return entries;
}

// The number at the end of `key` behind `head`, written as the program writes it; -1 if it is none
// below `limit`.
int NumberBehind(std::string_view key, std::string_view head, int limit)
{
    if (!EqualIgnoringCase(key.substr(0, head.size()), head))
        return -1;
    const std::string_view digits = key.substr(head.size());
    for (int number = 0; number < limit; ++number) {
        if (digits == WholeText(number))
            return number;
    }
    return -1;
}

// Of the window, of triggers and viewers: no program depends on them. On Strict depends whether one is
// written, never what it holds.
constexpr std::string_view KeysBesidePrograms[] = {"FormState",        "SourcePath90",     "SourcePathGen",
                                                   "SourcePathEV",     "AutoStartTemp",    "AutoStartBatch",
                                                   "GraphicAfterAuto", "GraphicAfterMan",  "PauseForMessages",
                                                   "TipsEnable",       "MakeBinaries",     "BatchLimit",
                                                   "RadiusLimit",      "GraphicDelay",     "ListColumnWidth3",
                                                   "ListColumnWidth4", "ListColumnWidth5", "ListColumnWidth6",
                                                   "EditorPath",       "Strict",           "Check"};

void AddTexts(std::vector<SettingText>& texts, std::string_view head, std::span<const SettingRow> rows)
{
    for (const SettingRow& row : rows) {
        const auto* const end = std::end(KeysBesidePrograms);
        if (std::find(std::begin(KeysBesidePrograms), end, row.Key) == end)
            texts.push_back({std::string(head) + std::string(row.Key), StoredText(row)});
    }
}

void AddCutListTexts(std::vector<SettingText>& texts)
{
    AddTexts(texts, CutListHead, CutListRows);
    texts.push_back({std::string(CutListHead) + "Unit", Config.PTSMetric ? "M" : ""});
    for (std::size_t slot = 0; slot < PtsSlots; ++slot)
        if (!Config.PtsNamedByDrawing[slot])
            texts.push_back({std::string(CutListHead) + "Field" + WholeText(static_cast<long long>(slot)),
                             Config.PtsQuotes[slot] + Config.PtsFields[slot]});
}

bool OverrideCutList(std::string_view key, std::string_view value)
{
    if (const SettingRow* const row = FindRow(CutListRows, key)) {
        TakeValue(*row, value);
        return true;
    }
    if (EqualIgnoringCase(key, "Unit")) {
        TakePtsUnit(value);
        return true;
    }
    const int slot = NumberBehind(key, "Field", PtsSlots);
    if (slot < 0)
        return false;
    TakePtsField(static_cast<std::size_t>(slot), value);
    CountPtsFields();
    return true;
}

bool OverrideToolSubstitution(std::string_view key, std::string_view value)
{
    for (const ToolColumn& column : ToolColumns) {
        const int row = NumberBehind(key, column.Key, ToolSubstitutionRows);
        if (row < 0)
            continue;
        if (Config.ToolSubData.size() < ToolSubstitutionRows)
            Config.ToolSubData.resize(ToolSubstitutionRows, {"0", "0", "0"});
        std::string& cell = Config.ToolSubData[static_cast<std::size_t>(row)].*column.Cell;
        cell = PlainCell(value);
        KeepSettledText({std::string(key), std::string(value), cell, true});
        return true;
    }
    return false;
}

const SettingRow* FindPlainRow(std::string_view key)
{
    if (const SettingRow* const row = FindRow(ExchangeRows, key))
        return row;
    if (const SettingRow* const row = FindRow(OtherRows, key))
        return row;
    return FindRow(SystemRows, key);
}

} // namespace

void ExchangeSettings(bool save)
{
    if (save) {
        for (const SettingRow& row : ExchangeRows)
            ForgetTypedText(row.Key); // the file holds what became of them
        SaveRows(ExchangeRows);
        return;
    }
    LoadRows("Configuration", ExchangeRows);
    for (const FixUp& fixUp : FixUps)
        fixUp.Apply(*fixUp.Field);
    SettleTypedTexts(ExchangeRows);
    ApplySystemMode();
}

// The optimizer's box has no meaning for the Evolution, which sorts by its own rule. Its key is stored
// whenever the box changes, so the other systems find it off afterwards. At program start the box is
// still off when the first load comes here, and nothing is stored.
void ApplySystemMode()
{
    if (SelectedSystem() != 2 || !Config.OptimizerBox)
        return;
    Config.OptimizerBox = false;
    Config.Optimizer = "0";
    PutConfigValue("Optimizer", Config.Optimizer);
}

void LoadOtherKeys()
{
    LoadRows("Configuration", OtherRows);
    LoadRows("System", SystemRows);
    TakeOptimizerBox();
}

void LoadCutListSettings()
{
    std::vector<ProfileEntry> fields;
    for (int slot = 0; slot < PtsSlots; ++slot)
        fields.push_back({"Field" + WholeText(slot), {}});
    if (!GetIniValues("PTSDATA", fields))
        return;
    for (std::size_t slot = 0; slot < PtsSlots; ++slot)
        TakePtsField(slot, fields[slot].Value);
    CountPtsFields();
    LoadRows("PTSDATA", CutListRows);
    TakePtsUnit(GetIniValue("PTSDATA", "Unit"));
}

void LoadToolSubstitutions()
{
    Config.ToolSubData.resize(ToolSubstitutionRows, {"0", "0", "0"});
    std::vector<ProfileEntry> entries = ToolSubstitutionEntries();
    if (!GetIniValues("ToolSubData", entries))
        return;
    auto entry = entries.begin();
    for (ToolSubstitution& row : Config.ToolSubData) {
        for (const ToolColumn& column : ToolColumns) {
            row.*column.Cell = PlainCell(entry->Value);
            KeepSettledText({entry->Key, entry->Value, row.*column.Cell, false});
            ++entry;
        }
    }
}

void SaveToolSubstitutions()
{
    const std::vector<ProfileEntry> entries = ToolSubstitutionEntries();
    for (const ProfileEntry& entry : entries)
        ForgetTypedText(entry.Key);
    PutIniValues("ToolSubData", entries);
}

void LoadAllSettings()
{
    if (ExeFolder.empty())
        SetExeFolder(FolderOf(ExeName()));
    const SettingsReading reading;
    ExchangeSettings(false);
    LoadOtherKeys();
    LoadToolSubstitutions();
    LoadCutListSettings();
    SetHbdAvailable(true);
}

bool OverrideSetting(std::string_view key, std::string_view value)
{
    const std::string_view text = TrimLeft(value); // as the INI reader gives it
    if (EqualIgnoringCase(key.substr(0, CutListHead.size()), CutListHead))
        return OverrideCutList(key.substr(CutListHead.size()), text);
    const SettingRow* const row = FindPlainRow(key);
    if (row == nullptr)
        return OverrideToolSubstitution(key, text);

    TakeValue(*row, text);
    if (const auto* const field = std::get_if<std::string*>(&row->Field)) {
        for (const FixUp& fixUp : FixUps) {
            if (fixUp.Field == *field)
                fixUp.Apply(**field);
        }
        if (*field == &Config.Optimizer)
            TakeOptimizerBox();
    }
    OverriddenKeys.insert(UpperCase(row->Key));
    KeepTyped(*row, text, true);
    SettleTypedText(row->Key, StoredText(*row));
    if (row->How == Form::Word && SelectedSystem() == 2) // it may have been chosen here
        Config.OptimizerBox = false;                     // for this process alone: no key is stored
    return true;
}

TypedSetting SettingAsTyped(std::string_view key)
{
    const SettingRow* const row = FindPlainRow(key);
    if (row == nullptr)
        return {};
    const std::string stored = StoredText(*row);
    if (const TypedSetting* const kept = FindTypedText(key, stored); kept != nullptr)
        return *kept;
    return {std::string(row->Key), stored, stored, OverriddenKeys.contains(UpperCase(key))};
}

std::vector<TypedSetting> PartlyReadTools()
{
    std::vector<TypedSetting> tools;
    for (const ToolColumn& column : ToolColumns) {
        for (std::size_t row = 0; row < Config.ToolSubData.size(); ++row) {
            const ToolSubstitution& tool = Config.ToolSubData[row];
            const TypedSetting* const kept = FindTypedText(
                std::string(column.Key) + WholeText(static_cast<long long>(row)), tool.*column.Cell);
            const bool counts = column.Cell == &ToolSubstitution::Enabled || Val(tool.Enabled) != 0;
            if (kept != nullptr && counts)
                tools.push_back(*kept);
        }
    }
    return tools;
}

std::vector<SettingText> SettingsOfPrograms()
{
    std::vector<SettingText> texts;
    AddTexts(texts, {}, ExchangeRows);
    AddTexts(texts, {}, OtherRows);
    AddCutListTexts(texts);
    for (std::size_t row = 0; row < Config.ToolSubData.size(); ++row) {
        const ToolSubstitution& tool = Config.ToolSubData[row];
        texts.push_back({"ToolSub" + WholeText(static_cast<long long>(row)),
                         tool.Enabled + " " + tool.Tool + " " + tool.ToolSub});
    }
    return texts;
}

bool IsPathSetting(std::string_view key)
{
    const SettingRow* const row = EqualIgnoringCase(key.substr(0, CutListHead.size()), CutListHead)
                                      ? FindRow(CutListRows, key.substr(CutListHead.size()))
                                      : FindPlainRow(key);
    return row != nullptr && row->How == Form::Path;
}

} // namespace kv

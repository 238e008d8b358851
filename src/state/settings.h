// All settings: one field per key, under the key's name, holding what the control on the screen
// would hold. Forms bind to it, the console loads it, the passes read it.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "platform/numbers.h"

namespace kv {

constexpr int ControlSystems = 3; // 0 CNC90/WINNER90, 1 Genesis, 2 Genesis Evolution
constexpr int PtsSlots = 51;      // slot 0 is no column of the cut list
constexpr int ToolSubstitutionRows = 100;

// One row of the tool substitution grid, as the cells' texts.
struct ToolSubstitution {
    std::string Enabled, Tool, ToolSub;
};

// Designed values stand here; the first load replaces them all.
struct Settings {
    // Section "Configuration", in the order in which it is written.
    Int FormState = 0; // -1: the default settings section is hidden
    std::string SourcePath90 = "C:\\DXF\\", SourcePathGen = "C:\\DXF\\", SourcePathEV = "C:\\DXF\\";
    std::string DestinationPath90, DestinationPathGen, DestinationPathEV;
    bool AutoStartTemp = false, AutoStartBatch = false;
    std::string HBDDestinationPath;
    Int MakeHBD = 0, HBDGlue = 0, HBDDowel = 0; // check boxes: 0 or 1
    std::string HBDVBoreLimit;                  // mm
    bool EvOptOff = false, EvOptLR = false, EvOptRL = false, EvOptGS = false, EvOptSS = false;
    bool Winner90 = false, Genesis = false, GenesisEV = false;
    Int LeadS = 0, LeadRampIn = 0, LeadRampOut = 0, RemoveBorderRoute = 0, CornerComp = 0;
    std::string LeadLength = "25.00", LeadRampHeight = "10.00"; // in the unit of Metric
    std::string PrecisionMetric = "25.00", PrecisionInch = "25.00";
    std::string Metric = "Metric"; // "Metric" or "Inch"
    std::string OffsetX, OffsetY, OffsetZ;
    Int GraphicAfterAuto = 0, GraphicAfterMan = 0, PauseForMessages = 0, TipsEnable = 0;
    std::string SawKerf = "8"; // mm
    Int MakeBinaries = 0;
    std::string LineLimit = "800", BatchLimit;
    std::string RadiusLimit; // mm; kept and shown, no pass reads it
    Int SpeedyInchMode = 0;
    std::string GraphicDelay;   // seconds
    std::string UnitMode = "3"; // "1" inch, "2" metric, "3" automatic, "4" from the drawing

    // The same section, beside the exchange.
    std::string Sequence;                       // four letters out of V, H, G, R; blank: VGHR
    std::string Optimizer;                      // "0" or "1"
    std::string DRAlternate;                    // "0" or "1"
    std::array<std::string, 4> ListColumnWidth; // columns 3 to 6
    std::string EditorPath;
    std::string LineOrigin;     // "LL", "UL", "UR", "LR"
    std::string RouteTolerance; // mm; 0 or blank: 0.1
    std::string Origin;         // a number; not 0 flips the origin in Y
    std::string SPDA;
    std::string Pockets; // "told": rectangles and circles by their rules; "any": any shape by true insets
    std::string Strict;  // "yes": a drawing with a doubt in its report fails; "no"
    std::string Import;  // "plain", "told" or "full": what becomes of blocks, splines and the like
    std::string ImportTolerance; // mm; how far a fitted curve may be from the drawn one; blank: 0.01
    std::string Check;           // "yes": programs are read back and held against the drawing; "no"
    std::string
        CarryOver; // "kept": a drawing starts as the one before left things; "clean": as in a fresh process

    // Section "System".
    std::string Help, OLHelp, Viewer;

    // Section "ToolSubData"; row 1 of the grid is element 0.
    std::vector<ToolSubstitution> ToolSubData;

    // Section "PTSDATA".
    std::array<std::string, PtsSlots> PtsFields; // column names, upper-cased
    std::array<std::string, PtsSlots> PtsQuotes; // the double quote or empty
    Int PtsFieldCount = 0;                       // highest named slot at program start
    std::string PTSPath, PTSName;
    bool PTSMetric = true;

    // Not stored.
    std::array<bool, PtsSlots>
        PtsNamedByDrawing{}; // columns that had no name until a drawing used their number
    bool HbdAvailable = false;
    // Classes of operations that a Genesis Evolution program holds.
    bool EvVBore = true, EvHBore = true, EvGroove = true, EvRoute = true;
    bool OptimizerBox = false; // the check box; cleared for Genesis Evolution, and its key with it
};
extern Settings Config;

// The folder of the executable with its trailing backslash, and KV90.INI in it. Set once at start.
extern std::string ExeFolder;
extern std::string IniPath;
void SetExeFolder(std::string_view folder);

// Why KV90.INI could not be read when it was asked for; Ok while it could, or is not there. As long as it
// stands the settings are not whole: no drawing is converted by them, and none of them is stored.
extern FileOutcome SettingsFault;
// Why the last storing failed; Ok when it did not.
extern FileOutcome StoringFault;
// Reads the file once for all loads as long as it lives, so that they are of one state, and begins without
// a fault. The loads of a program's start stand inside one.
struct SettingsReading {
    SettingsReading();
    ~SettingsReading();
    SettingsReading(const SettingsReading&) = delete;
    SettingsReading& operator=(const SettingsReading&) = delete;
};

void PutConfigValue(std::string_view key, std::string_view value);
std::string GetConfigValue(std::string_view key);
// At most 79 characters; empty when the key is missing, blank or exactly "END.-", and when the file cannot
// be read (SettingsFault).
std::string GetIniValue(std::string_view section, std::string_view key);
bool IsTrueText(std::string_view text);

// Writes all keys of the first table in its order, or loads them, applies the fix-ups and the mode
// switch.
void ExchangeSettings(bool save);
// The mode switch: what the selected system rules out is cleared, and stored where it changed.
void ApplySystemMode();
void LoadCutListSettings();
// Always ToolSubstitutionRows rows; a cell that is not in the file is "0".
void LoadToolSubstitutions();
void SaveToolSubstitutions();
// The keys beside the exchange that the conversion and the window read at start.
void LoadOtherKeys();
void SetHbdAvailable(bool flag);
// Program start: all of the loads above in their order, from the folder that SetExeFolder was given,
// else from the executable's own. What could not be read stands in SettingsFault.
void LoadAllSettings();

// Sets one field by its key for this process alone, as if the file held that value, but of any
// length; false when no setting has that key. Keys of section "PTSDATA" are "PTSDATA.Path" and so on.
bool OverrideSetting(std::string_view key, std::string_view value);
// A setting by its key, or a file beside the settings.
struct SettingText {
    std::string Key, Value;
    bool operator==(const SettingText&) const = default;
};
// The settings that programs, names and lists depend on, as they hold now, always in one order. Those of
// the window, of triggers and of viewers are not among them.
std::vector<SettingText> SettingsOfPrograms();
// Whether the key's value is a folder, so that a front end can bring a typed path into the program's
// form first.
bool IsPathSetting(std::string_view key);

Int SelectedSystem(); // the last selected of Winner90, Genesis, GenesisEV; 0 if none
std::string& SourcePath(int system);
std::string& DestinationPath(int system);
std::string CurrentSourcePath();
constexpr std::string_view ProductName = "Korvanti";
extern const std::string_view ProductVersion; // "major.minor.revision"
extern const std::string_view ProductCommit;  // of the source, abbreviated; "+" behind it: with changes
// "0.1.0 (6080af0)" for people and fault reports; without the commit where none is known.
std::string VersionAndCommit();

// Grids kept in plain files beside the executable: one line a row, cells separated by tabs.
using GridCells = std::vector<std::vector<std::string>>;
// No rows when there is no file, and when it cannot be read.
FileAnswer LoadGrid(std::string_view fileName, GridCells& cells);
FileOutcome SaveGrid(std::string_view fileName, const GridCells& cells);

} // namespace kv

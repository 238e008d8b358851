// Every control of the windows, form by form and frame by frame, as a table: name, kind, caption,
// designed value, whether it shows by design, its Alt letter and its name for a screen reader. Relies
// on nothing; the windows and their tests read it. Captions keep their blanks and spellings. A letter
// is given once among the controls that are in sight together: the frames of the Evolution and those
// of the other systems never are.
#include "shell/control_tables.h"

namespace kv {

namespace {

using enum ControlKind;

constexpr bool InSight = true;
constexpr bool Hidden = false;

constexpr std::string_view BrowserTitle = "Path Browser";

constexpr ControlRow Rows[] = {
    // The main window.
    {"Form1", "Form1", Window, "Korvanti", ""},
    {"Form1", "MnuHelp", Menu, "Help", "", InSight, "H"},
    {"Form1", "MnuOnLineManual", Menu, "On Line Manual", "", InSight, "O"},
    {"Form1", "MnuHelpFile", Menu, "Help File", "", InSight, "F"},
    {"Form1", "MnuAbout", Menu, "About", "", InSight, "A"},
    {"Form1", "Pop", Menu, "Pop", "", Hidden},
    {"Form1", "PopProcess", Menu, "Process", "", InSight, "P"},
    {"Form1", "PopDelete", Menu, "Delete", "", InSight, "D"},

    {"Form1", "Frame1", Frame, "", "", InSight, "", "Files and report"},
    {"Form1", "LabDXFPath", Label, "", "", InSight, "", "Folder of the listed files"},
    {"Form1", "List1", Grid, "", "", InSight, "", "Files"},
    {"Form1", "List2", Grid, "Process Report", "", InSight, "", "Process Report"},
    {"Form1", "StatusFrame", Frame, MeterCaption, "", InSight, "", "Process status"},
    {"Form1", "ProgressBar(0)", Meter, "Parsing", "0", InSight, "", "Parsing"},
    {"Form1", "ProgressBar(1)", Meter, "Reading Info", "0", InSight, "", "Reading Info"},
    {"Form1", "ProgressBar(2)", Meter, "Processing", "0", InSight, "", "Processing"},
    {"Form1", "ProgressBar(3)", Meter, "Sequencing", "0", InSight, "", "Sequencing"},
    {"Form1", "ProgressBar(4)", Meter, "Syn Leads", "0", InSight, "", "Synthesized leads"},
    {"Form1", "ProgressBar(5)", Meter, "Pgm Code", "0", InSight, "", "Program code"},
    {"Form1", "Start", Button, "Process", "", InSight, "P"},
    {"Form1", "BtnAbort", Button, "Abort", "", Hidden, "A"},
    {"Form1", "CmdDF", Button, "df", "", InSight, "d", "Default settings section"},
    {"Form1", "EX1", Button, "Exit", "", InSight, "E"},

    {"Form1", "Frame2", Frame, "", "", InSight, "", "Default settings"},
    {"Form1", "HBDFrame", Frame, "Horizontal Drill Programs (HBD)", ""},
    {"Form1", "MakeHBD", Check, "Make Programs", "", InSight, "k", "Make horizontal drill programs"},
    {"Form1", "HBDGlue", Check, "Force Dowel and Gluing (DG)", "", InSight, "w"},
    {"Form1", "HBDDowel", Check, "Force Dowel Insertion Only (DI)", "", InSight, "F"},
    {"Form1", "Frame4", Frame, "Setup Profile", "", Hidden},
    {"Form1", "SupAdd", Button, "New", "", Hidden, "", "New setup profile"},
    {"Form1", "SUProfile", Combo, "", "Default", Hidden, "", "Setup profile"},
    {"Form1", "EvOptSelFr", Frame, "Operation Selection", ""},
    {"Form1", "EvVBore", Check, "VBore", "on", InSight, "", "Emit vertical bores"},
    {"Form1", "EvHBore", Check, "HBore", "on", InSight, "", "Emit horizontal bores"},
    {"Form1", "EvGroove", Check, "Groove", "on", InSight, "", "Emit grooves"},
    {"Form1", "EvRoute", Check, "Route", "on", InSight, "", "Emit routes"},
    {"Form1", "EvOptFr", Frame, "Optimizer Control", ""},
    {"Form1", "BtnOpt", Button, "Opt", "", InSight, "O", "Optimizer settings"},
    {"Form1", "LabOpt", Label, "", "", InSight, "", "Selected sort mode"},
    {"Form1", "DRAlt", Check, "D R Alternate", "", InSight, "n", "Alternate drilling and routing"},
    {"Form1", "Bin", Check, "Make Binaries", "", InSight, "B"},
    {"Form1", "FrameOpt", Frame, "Optimizer and Default Sequencing", ""},
    {"Form1", "Opt", Check, "On", "", InSight, "O", "Drill optimizer on"},
    {"Form1", "Sq(0)", Combo, "", "", InSight, "", "First operation class"},
    {"Form1", "Sq(1)", Combo, "", "", InSight, "", "Second operation class"},
    {"Form1", "Sq(2)", Combo, "", "", InSight, "", "Third operation class"},
    {"Form1", "Sq(3)", Combo, "", "", InSight, "", "Fourth operation class"},
    {"Form1", "MirFlg", Check, "Optimize for Mirror", "", Hidden},
    {"Form1", "SynFrame", Frame, "", "", InSight, "", "Lead-ins and lead-outs"},
    {"Form1", "FlgLL", Check, "Synthesize Leadins / Leadouts", "", InSight, "L"},
    {"Form1", "FlgRI", Check, "Ramp In", "", InSight, "I"},
    {"Form1", "FlgRO", Check, "Ramp Out", "", InSight, "u"},
    {"Form1", "LLen", Text, "Lead Length", "25.00", InSight, "g"},
    {"Form1", "RHt", Text, "Ramp Height", "10.00", InSight, "R"},
    {"Form1", "Frame5", Frame, "Offset", ""},
    {"Form1", "OSX", Text, "X", "0.00", InSight, "X", "Offset X"},
    {"Form1", "OSY", Text, "Y", "0.00", InSight, "Y", "Offset Y"},
    {"Form1", "OSZ", Text, "Z", "0.00", InSight, "Z", "Offset Z"},
    {"Form1", "FlgCC", Check, "Corner Comp", "", InSight, "m", "Corner compensation"},
    {"Form1", "FlgRBR", Check, "Remove Border Route", "", InSight, "v"},
    {"Form1", "Frame3", Frame, "", "", InSight, "", "Setup and units"},
    {"Form1", "TSetB", Button, "Tool Sub", "", InSight, "T", "Tool substitution"},
    {"Form1", "SetB", Button, "Setup", "", InSight, "S"},
    // The letter is in both of its captions, "Metric" and "Inch".
    {"Form1", "MetIn", Button, "Metric", "", InSight, "c", "Unit of the default settings"},

    // Setup.
    {"SetUp", "SetUp", Window, "Setup", ""},
    {"SetUp", "Tab(0)", Tab, "Paths", "", InSight, "P"},
    {"SetUp", "Frame3", Frame, "DXF Source Path ", ""},
    {"SetUp", "DXFPath(0)", Text, "", "C:\\DXF\\", InSight, "", "DXF source path, CNC90/WINNER90"},
    {"SetUp", "DXFPath(1)", Text, "", "C:\\DXF\\", InSight, "", "DXF source path, Genesis"},
    {"SetUp", "DXFPath(2)", Text, "", "C:\\DXF\\", InSight, "", "DXF source path, Genesis Evolution"},
    {"SetUp", "SPB1", Button, "Browse...", "", InSight, "B", "Browse for the DXF source path"},
    {"SetUp", "SPB1.Browser", Folder, BrowserTitle, "Select source path for DXF files."},
    {"SetUp", "Frame4", Frame, "Program Code Destination Path ", ""},
    {"SetUp", "GCodePath(0)", Text, "", "", InSight, "", "Program destination path, CNC90/WINNER90"},
    {"SetUp", "GCodePath(1)", Text, "", "", InSight, "", "Program destination path, Genesis"},
    {"SetUp", "GCodePath(2)", Text, "", "", InSight, "", "Program destination path, Genesis Evolution"},
    {"SetUp", "SPB2", Button, "Browse...", "", InSight, "r", "Browse for the program destination path"},
    {"SetUp", "SPB2.Browser", Folder, BrowserTitle, "Select destination path for program files."},
    {"SetUp", "FlgDDSFrame", Frame, "Import Direct to", "", Hidden},
    {"SetUp", "FlgDDS(0)", Radio, "CNC90/WINNER90", "", InSight, "N"},
    {"SetUp", "FlgDDS(1)", Radio, "Genesis", "", InSight, "G"},
    {"SetUp", "FlgDDS(2)", Radio, "Genesis Evolution", "", InSight, "E"},
    {"SetUp", "FlgMO", Check, "Machine Origin is Lower Left", "", InSight, "M"},

    {"SetUp", "Tab(1)", Tab, "Auto Action", "", InSight, "A"},
    {"SetUp", "Frame1", Frame, "Automatic Start", ""},
    {"SetUp", "AS1", Radio, "AutoStart on TEMP.DXF", "", InSight, "M"},
    {"SetUp", "AS2", Radio, "AutoStart on BATCH.LST", "", InSight, "B"},
    {"SetUp", "AS0", Radio, "AutoStart OFF", "", InSight, "S"},
    {"SetUp", "GAAP", Check, "Graphic After Auto Process", "", InSight, "G"},
    {"SetUp", "BLim", Text, "Graphic Batch Limit", "5", InSight, "L"},
    {"SetUp", "LblBlim", Label, "Graphic Batch Limit", ""},
    {"SetUp", "GAMP", Check, "Graphic After Man Process", "", InSight, "n"},
    {"SetUp", "PFM", Check, "Pause for Messages", "", Hidden},

    {"SetUp", "Tab(2)", Tab, "Preferences", "", InSight, "f"},
    {"SetUp", "Frame6", Frame, "Precision", ""},
    {"SetUp", "PrcM", Text, "Metric", "", InSight, "M", "Decimals in metric programs"},
    {"SetUp", "PrcI", Text, "Inch", "", InSight, "I", "Decimals in inch programs"},
    {"SetUp", "UModerFrame", Frame, "Unit Mode", ""},
    {"SetUp", "IMode", Radio, "Inch", "", InSight, "n", "Drawings in inch"},
    {"SetUp", "MMode", Radio, "Metric", "", InSight, "e", "Drawings in millimetres"},
    {"SetUp", "AMode", Radio, "Automatic", "on", InSight, "u", "Unit of each drawing found by itself"},
    {"SetUp", "DMode", Radio, "From Drawing", "", InSight, "w",
     "Unit that each drawing's header names, else Automatic"},
    {"SetUp", "GRDly", Text, "Time delay to graphic", ".5", InSight, "d", "Time delay to graphic, seconds"},
    {"SetUp", "SawKerf", Text, "Saw Kerf   mm", "8", InSight, "K"},
    {"SetUp", "RadLim", Text, "Radius Limit  (mm)", "7500", InSight, "R"},
    {"SetUp", "SLim", Text, "Genesis Line Limit", "800", InSight, "G"},
    {"SetUp", "LineLimLab", Label, "Genesis Line Limit", ""},
    {"SetUp", "Tips", Check, "Enable Cursor Help", "on", InSight, "b"},
    {"SetUp", "SLInch", Check, "Inch Mode", "", Hidden},

    {"SetUp", "Tab(3)", Tab, "PTS File", "", InSight, "T"},
    {"SetUp", "PTSUnitFrame", Frame, "PTS File Units", ""},
    {"SetUp", "PTSMetric", Radio, "Metric", "on", InSight, "M", "PTS file in millimetres"},
    {"SetUp", "PTSInch", Radio, "Inch", "", InSight, "I", "PTS file in inch"},
    {"SetUp", "Frame2", Frame, "PTS Destination Path", ""},
    {"SetUp", "PTSPath", Text, "", "C:\\", InSight, "", "PTS destination path"},
    {"SetUp", "Frame5", Frame, "", "", InSight, "", "PTS file name"},
    {"SetUp", "PTSName", Text, "Default File Name", "", InSight, "D", "Default PTS file name"},

    {"SetUp", "Tab(4)", Tab, "HBD", "", InSight, "H"},
    {"SetUp", "HBDSpd", Grid, "", "", InSight, "", "Tools of the horizontal drill"},
    {"SetUp", "Frame7", Frame, "Destination Path for Horizontal Drill Programs", ""},
    {"SetUp", "HBDPath", Text, "", "C:\\Albatros\\Product\\", InSight, "",
     "Destination path for horizontal drill programs"},
    {"SetUp", "SPBhbd", Button, "Browse...", "", InSight, "B",
     "Browse for the destination path of horizontal drill programs"},
    {"SetUp", "SPBhbd.Browser", Folder, BrowserTitle, "Select destination path for HBD program files."},
    {"SetUp", "Frame8", Frame, "Rule for Vertical Drill on HBD", ""},
    {"SetUp", "HBDVboreLim", Text, "Drill Holes Within This Dist. (mm)", "", InSight, "D"},

    {"SetUp", "PrefOK", Button, "OK", "", InSight, "O"},
    {"SetUp", "PrefCan", Button, "Cancel", "", InSight, "C"},

    // Tool Substitution.
    {"ToolSub", "ToolSub", Window, "Tool Substitution", ""},
    {"ToolSub", "ToolSubTbl", Grid, "", "", InSight, "", "Tool substitutions"},
    {"ToolSub", "BtnOK", Button, "OK", "", InSight, "O"},
    {"ToolSub", "btnCan", Button, "Cancel", "", InSight, "C"},

    // Optimizer Settings.
    {"OptSet", "OptSet", Window, "Optimizer Settings", ""},
    {"OptSet", "Tab(0)", Tab, "Settings", "", InSight, "S"},
    {"OptSet", "EVOpt(0)", Radio, "Does Not Sort", "", InSight, "D"},
    {"OptSet", "EVOpt(1)", Radio, "Increasing Fret Sorting in X", "", InSight, "I"},
    {"OptSet", "EVOpt(2)", Radio, "Decreasing Fret Sorting in X", "", InSight, "e"},
    {"OptSet", "EVOpt(3)", Radio, "Generic Sorting", "", InSight, "n"},
    {"OptSet", "EVOpt(4)", Radio, "Sequential Sorting", "", InSight, "q"},
    {"OptSet", "Tab(1)", Tab, "Generic Sorting Options", "", InSight, "G"},
    {"OptSet", "GSortOpt", Grid, "", "", InSight, "", "Generic sorting options, one row for each face"},
    {"OptSet", "BtnOK", Button, "OK", "", InSight, "O"},
    {"OptSet", "btnCan", Button, "Cancel", "", InSight, "C"},

    // About.
    {"About", "About", Window, "About ", ""},
    {"About", "lblInit", Label, "Initializing...   Please Wait...", ""},
    {"About", "lblVersion", Label, "Version ", ""},
    {"About", "OkButton", Button, "OK", "", InSight, "O"},
};

} // namespace

std::span<const ControlRow> ControlRows()
{
    return Rows;
}

} // namespace kv

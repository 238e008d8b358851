// The tables of the controls and of the cursor help, held against the screens' captions.
#include "shell/control_tables.h"

#include <gtest/gtest.h>

#include <cctype>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kv {
namespace {

struct Expected {
    const char *Form, *Name, *Caption;
};

void ExpectRows(ControlKind kind, const std::vector<Expected>& rows)
{
    for (const Expected& expected : rows) {
        const ControlRow* const row = FindControl(expected.Form, expected.Name);
        ASSERT_NE(row, nullptr) << expected.Form << " " << expected.Name;
        EXPECT_EQ(row->Caption, expected.Caption) << expected.Name;
        EXPECT_EQ(row->Kind, kind) << expected.Name;
    }
    std::size_t tabled = 0;
    for (const ControlRow& row : ControlRows())
        tabled += row.Kind == kind ? 1 : 0;
    EXPECT_EQ(tabled, rows.size()); // none beside them
}

TEST(ControlTables, ButtonsHaveTheirCaptions)
{
    ExpectRows(ControlKind::Button, {{"Form1", "Start", "Process"},
                                     {"Form1", "BtnAbort", "Abort"},
                                     {"Form1", "CmdDF", "df"},
                                     {"Form1", "EX1", "Exit"},
                                     {"Form1", "SupAdd", "New"},
                                     {"Form1", "BtnOpt", "Opt"},
                                     {"Form1", "TSetB", "Tool Sub"},
                                     {"Form1", "SetB", "Setup"},
                                     {"Form1", "MetIn", "Metric"},
                                     {"SetUp", "SPB1", "Browse..."},
                                     {"SetUp", "SPB2", "Browse..."},
                                     {"SetUp", "SPBhbd", "Browse..."},
                                     {"SetUp", "PrefOK", "OK"},
                                     {"SetUp", "PrefCan", "Cancel"},
                                     {"ToolSub", "BtnOK", "OK"},
                                     {"ToolSub", "btnCan", "Cancel"},
                                     {"OptSet", "BtnOK", "OK"},
                                     {"OptSet", "btnCan", "Cancel"},
                                     {"About", "OkButton", "OK"}});
}

TEST(ControlTables, FramesHaveTheirCaptionsWithTrailingBlanks)
{
    ExpectRows(
        ControlKind::Frame,
        {{"Form1", "Frame1", ""},
         {"Form1", "StatusFrame",
          "    Parsing         Reading Info    Processing       Sequencing      Syn Leads       Pgm Code "
          "    "},
         {"Form1", "Frame2", ""},
         {"Form1", "HBDFrame", "Horizontal Drill Programs (HBD)"},
         {"Form1", "Frame4", "Setup Profile"},
         {"Form1", "EvOptSelFr", "Operation Selection"},
         {"Form1", "EvOptFr", "Optimizer Control"},
         {"Form1", "FrameOpt", "Optimizer and Default Sequencing"},
         {"Form1", "SynFrame", ""},
         {"Form1", "Frame5", "Offset"},
         {"Form1", "Frame3", ""},
         {"SetUp", "Frame3", "DXF Source Path "},
         {"SetUp", "Frame4", "Program Code Destination Path "},
         {"SetUp", "FlgDDSFrame", "Import Direct to"},
         {"SetUp", "Frame1", "Automatic Start"},
         {"SetUp", "Frame6", "Precision"},
         {"SetUp", "UModerFrame", "Unit Mode"},
         {"SetUp", "PTSUnitFrame", "PTS File Units"},
         {"SetUp", "Frame2", "PTS Destination Path"},
         {"SetUp", "Frame5", ""},
         {"SetUp", "Frame7", "Destination Path for Horizontal Drill Programs"},
         {"SetUp", "Frame8", "Rule for Vertical Drill on HBD"}});
}

TEST(ControlTables, ChecksHaveTheirCaptions)
{
    ExpectRows(ControlKind::Check, {{"Form1", "MakeHBD", "Make Programs"},
                                    {"Form1", "HBDGlue", "Force Dowel and Gluing (DG)"},
                                    {"Form1", "HBDDowel", "Force Dowel Insertion Only (DI)"},
                                    {"Form1", "EvVBore", "VBore"},
                                    {"Form1", "EvHBore", "HBore"},
                                    {"Form1", "EvGroove", "Groove"},
                                    {"Form1", "EvRoute", "Route"},
                                    {"Form1", "DRAlt", "D R Alternate"},
                                    {"Form1", "Bin", "Make Binaries"},
                                    {"Form1", "Opt", "On"},
                                    {"Form1", "MirFlg", "Optimize for Mirror"},
                                    {"Form1", "FlgLL", "Synthesize Leadins / Leadouts"},
                                    {"Form1", "FlgRI", "Ramp In"},
                                    {"Form1", "FlgRO", "Ramp Out"},
                                    {"Form1", "FlgCC", "Corner Comp"},
                                    {"Form1", "FlgRBR", "Remove Border Route"},
                                    {"SetUp", "FlgMO", "Machine Origin is Lower Left"},
                                    {"SetUp", "GAAP", "Graphic After Auto Process"},
                                    {"SetUp", "GAMP", "Graphic After Man Process"},
                                    {"SetUp", "PFM", "Pause for Messages"},
                                    {"SetUp", "Tips", "Enable Cursor Help"},
                                    {"SetUp", "SLInch", "Inch Mode"}});
}

TEST(ControlTables, RadiosHaveTheirCaptions)
{
    ExpectRows(ControlKind::Radio, {{"SetUp", "FlgDDS(0)", "CNC90/WINNER90"},
                                    {"SetUp", "FlgDDS(1)", "Genesis"},
                                    {"SetUp", "FlgDDS(2)", "Genesis Evolution"},
                                    {"SetUp", "AS1", "AutoStart on TEMP.DXF"},
                                    {"SetUp", "AS2", "AutoStart on BATCH.LST"},
                                    {"SetUp", "AS0", "AutoStart OFF"},
                                    {"SetUp", "IMode", "Inch"},
                                    {"SetUp", "MMode", "Metric"},
                                    {"SetUp", "AMode", "Automatic"},
                                    {"SetUp", "DMode", "From Drawing"},
                                    {"SetUp", "PTSMetric", "Metric"},
                                    {"SetUp", "PTSInch", "Inch"},
                                    {"OptSet", "EVOpt(0)", "Does Not Sort"},
                                    {"OptSet", "EVOpt(1)", "Increasing Fret Sorting in X"},
                                    {"OptSet", "EVOpt(2)", "Decreasing Fret Sorting in X"},
                                    {"OptSet", "EVOpt(3)", "Generic Sorting"},
                                    {"OptSet", "EVOpt(4)", "Sequential Sorting"}});
}

TEST(ControlTables, TextsHaveTheirLabels)
{
    ExpectRows(ControlKind::Text, {{"Form1", "LLen", "Lead Length"},
                                   {"Form1", "RHt", "Ramp Height"},
                                   {"Form1", "OSX", "X"},
                                   {"Form1", "OSY", "Y"},
                                   {"Form1", "OSZ", "Z"},
                                   {"SetUp", "DXFPath(0)", ""},
                                   {"SetUp", "DXFPath(1)", ""},
                                   {"SetUp", "DXFPath(2)", ""},
                                   {"SetUp", "GCodePath(0)", ""},
                                   {"SetUp", "GCodePath(1)", ""},
                                   {"SetUp", "GCodePath(2)", ""},
                                   {"SetUp", "BLim", "Graphic Batch Limit"},
                                   {"SetUp", "PrcM", "Metric"},
                                   {"SetUp", "PrcI", "Inch"},
                                   {"SetUp", "GRDly", "Time delay to graphic"},
                                   {"SetUp", "SawKerf", "Saw Kerf   mm"},
                                   {"SetUp", "RadLim", "Radius Limit  (mm)"},
                                   {"SetUp", "SLim", "Genesis Line Limit"},
                                   {"SetUp", "PTSPath", ""},
                                   {"SetUp", "PTSName", "Default File Name"},
                                   {"SetUp", "HBDPath", ""},
                                   {"SetUp", "HBDVboreLim", "Drill Holes Within This Dist. (mm)"}});
}

TEST(ControlTables, OtherControlsHaveTheirCaptions)
{
    ExpectRows(ControlKind::Tab, {{"SetUp", "Tab(0)", "Paths"},
                                  {"SetUp", "Tab(1)", "Auto Action"},
                                  {"SetUp", "Tab(2)", "Preferences"},
                                  {"SetUp", "Tab(3)", "PTS File"},
                                  {"SetUp", "Tab(4)", "HBD"},
                                  {"OptSet", "Tab(0)", "Settings"},
                                  {"OptSet", "Tab(1)", "Generic Sorting Options"}});
    ExpectRows(ControlKind::Grid, {{"Form1", "List1", ""},
                                   {"Form1", "List2", "Process Report"},
                                   {"SetUp", "HBDSpd", ""},
                                   {"ToolSub", "ToolSubTbl", ""},
                                   {"OptSet", "GSortOpt", ""}});
    ExpectRows(ControlKind::Combo, {{"Form1", "SUProfile", ""},
                                    {"Form1", "Sq(0)", ""},
                                    {"Form1", "Sq(1)", ""},
                                    {"Form1", "Sq(2)", ""},
                                    {"Form1", "Sq(3)", ""}});
    ExpectRows(ControlKind::Label, {{"Form1", "LabDXFPath", ""},
                                    {"Form1", "LabOpt", ""},
                                    {"SetUp", "LblBlim", "Graphic Batch Limit"},
                                    {"SetUp", "LineLimLab", "Genesis Line Limit"},
                                    {"About", "lblInit", "Initializing...   Please Wait..."},
                                    {"About", "lblVersion", "Version "}});
    ExpectRows(ControlKind::Menu, {{"Form1", "MnuHelp", "Help"},
                                   {"Form1", "MnuOnLineManual", "On Line Manual"},
                                   {"Form1", "MnuHelpFile", "Help File"},
                                   {"Form1", "MnuAbout", "About"},
                                   {"Form1", "Pop", "Pop"},
                                   {"Form1", "PopProcess", "Process"},
                                   {"Form1", "PopDelete", "Delete"}});
    ExpectRows(ControlKind::Window, {{"Form1", "Form1", "Korvanti"},
                                     {"SetUp", "SetUp", "Setup"},
                                     {"ToolSub", "ToolSub", "Tool Substitution"},
                                     {"OptSet", "OptSet", "Optimizer Settings"},
                                     {"About", "About", "About "}});
}

TEST(ControlTables, BrowsersHaveOneTitleAndPromptsOfTheirOwn)
{
    ExpectRows(ControlKind::Folder, {{"SetUp", "SPB1.Browser", "Path Browser"},
                                     {"SetUp", "SPB2.Browser", "Path Browser"},
                                     {"SetUp", "SPBhbd.Browser", "Path Browser"}});
    EXPECT_EQ(FindControl("SetUp", "SPB1.Browser")->Default, "Select source path for DXF files.");
    EXPECT_EQ(FindControl("SetUp", "SPB2.Browser")->Default, "Select destination path for program files.");
    EXPECT_EQ(FindControl("SetUp", "SPBhbd.Browser")->Default,
              "Select destination path for HBD program files.");
}

TEST(ControlTables, MetersStandUnderTheTitlesOfTheStatusFrame)
{
    std::size_t at = 0;
    for (int i = 0; i < 6; ++i) {
        const ControlRow* const meter = FindControl("Form1", "ProgressBar(" + std::to_string(i) + ")");
        ASSERT_NE(meter, nullptr) << i;
        EXPECT_EQ(meter->Caption, MeterTitles[i]);
        at = FindControl("Form1", "StatusFrame")->Caption.find(MeterTitles[i], at); // in this order
        ASSERT_NE(at, std::string_view::npos) << i;
    }
}

TEST(ControlTables, DesignedValues)
{
    const std::map<std::pair<std::string, std::string>, std::string> expected = {
        {{"Form1", "LLen"}, "25.00"},
        {{"Form1", "RHt"}, "10.00"},
        {{"Form1", "OSX"}, "0.00"},
        {{"Form1", "OSY"}, "0.00"},
        {{"Form1", "OSZ"}, "0.00"},
        {{"Form1", "SUProfile"}, "Default"},
        {{"Form1", "EvVBore"}, "on"},
        {{"Form1", "EvHBore"}, "on"},
        {{"Form1", "EvGroove"}, "on"},
        {{"Form1", "EvRoute"}, "on"},
        {{"SetUp", "DXFPath(0)"}, "C:\\DXF\\"},
        {{"SetUp", "DXFPath(1)"}, "C:\\DXF\\"},
        {{"SetUp", "DXFPath(2)"}, "C:\\DXF\\"},
        {{"SetUp", "BLim"}, "5"},
        {{"SetUp", "AMode"}, "on"},
        {{"SetUp", "GRDly"}, ".5"},
        {{"SetUp", "SawKerf"}, "8"},
        {{"SetUp", "RadLim"}, "7500"},
        {{"SetUp", "SLim"}, "800"},
        {{"SetUp", "Tips"}, "on"},
        {{"SetUp", "PTSMetric"}, "on"},
        {{"SetUp", "PTSPath"}, "C:\\"},
        {{"SetUp", "HBDPath"}, "C:\\Albatros\\Product\\"},
    };
    std::map<std::pair<std::string, std::string>, std::string> designed;
    for (const ControlRow& row : ControlRows()) {
        const bool holdsAValue = row.Kind != ControlKind::Folder && row.Kind != ControlKind::Meter;
        if (holdsAValue && !row.Default.empty())
            designed[{std::string(row.Form), std::string(row.Name)}] = row.Default;
    }
    EXPECT_EQ(designed, expected);
}

TEST(ControlTables, HiddenByDesign)
{
    const std::set<std::pair<std::string, std::string>> expected = {
        {"Form1", "BtnAbort"},  {"Form1", "Frame4"}, {"Form1", "SupAdd"},
        {"Form1", "SUProfile"}, {"Form1", "MirFlg"}, {"Form1", "Pop"},
        {"SetUp", "PFM"},       {"SetUp", "SLInch"}, {"SetUp", "FlgDDSFrame"}};
    std::set<std::pair<std::string, std::string>> hidden;
    for (const ControlRow& row : ControlRows()) {
        if (!row.ShownByDesign)
            hidden.emplace(row.Form, row.Name);
    }
    EXPECT_EQ(hidden, expected);
}

TEST(ControlTables, NamesAreUniqueInTheirForm)
{
    std::set<std::pair<std::string_view, std::string_view>> names;
    for (const ControlRow& row : ControlRows())
        EXPECT_TRUE(names.emplace(row.Form, row.Name).second) << row.Form << " " << row.Name;
}

TEST(ControlTables, UnknownControlIsNone)
{
    EXPECT_EQ(FindControl("Form1", "PrefOK"), nullptr); // it is SetUp's
    EXPECT_EQ(FindControl("Form1", ""), nullptr);
}

TEST(ControlTables, AltLettersAreInTheirCaptions)
{
    for (const ControlRow& row : ControlRows()) {
        EXPECT_LE(row.Mnemonic.size(), 1U) << row.Name;
        EXPECT_NE(row.Caption.find(row.Mnemonic), std::string_view::npos) << row.Name;
    }
    EXPECT_NE(std::string_view("Inch").find(FindControl("Form1", "MetIn")->Mnemonic), std::string_view::npos);
}

// Letters that are given twice among these controls.
std::string GivenTwice(const std::vector<const ControlRow*>& inSight)
{
    std::string letters, twice;
    for (const ControlRow* const row : inSight) {
        if (row->Mnemonic.empty())
            continue;
        const auto letter = static_cast<char>(std::tolower(static_cast<unsigned char>(row->Mnemonic[0])));
        (letters.find(letter) == std::string::npos ? letters : twice) += letter;
    }
    return twice;
}

std::vector<const ControlRow*> MainWindowWithout(const std::set<std::string_view>& names)
{
    std::vector<const ControlRow*> inSight;
    for (const ControlRow& row : ControlRows()) {
        const bool item = row.Kind == ControlKind::Menu && row.Name != "MnuHelp";
        if (row.Form == "Form1" && !item && !names.contains(row.Name))
            inSight.push_back(&row);
    }
    return inSight;
}

TEST(ControlTables, AltLettersOfTheMainWindowAreGivenOnce)
{
    EXPECT_EQ(GivenTwice(MainWindowWithout({"BtnOpt", "EvVBore", "EvHBore", "EvGroove", "EvRoute"})), "");
    EXPECT_EQ(GivenTwice(MainWindowWithout({"Opt", "DRAlt"})), ""); // Genesis Evolution
    EXPECT_EQ(GivenTwice(MainWindowWithout({})), "o");              // the two that are never seen together
}

TEST(ControlTables, AltLettersOfTheMenusAreGivenOnce)
{
    std::vector<const ControlRow*> help, popup;
    for (const ControlRow& row : ControlRows()) {
        if (row.Kind == ControlKind::Menu && row.Name.starts_with("Mnu") && row.Name != "MnuHelp")
            help.push_back(&row);
        if (row.Kind == ControlKind::Menu && row.Name.starts_with("Pop"))
            popup.push_back(&row);
    }
    ASSERT_EQ(help.size(), 3U);
    ASSERT_EQ(popup.size(), 3U);
    EXPECT_EQ(GivenTwice(help), "");
    EXPECT_EQ(GivenTwice(popup), "");
}

TEST(ControlTables, AltLettersOfEachTabAreGivenOnce)
{
    for (const std::string_view form : {"SetUp", "OptSet", "ToolSub", "About"}) {
        std::vector<const ControlRow*> always;
        std::vector<std::vector<const ControlRow*>> tabs(1);
        for (const ControlRow& row : ControlRows()) {
            if (row.Form != form)
                continue;
            if (row.Kind == ControlKind::Tab)
                tabs.emplace_back();
            const bool closes = row.Caption == "OK" || row.Caption == "Cancel";
            (row.Kind == ControlKind::Tab || closes ? always : tabs.back()).push_back(&row);
        }
        for (std::vector<const ControlRow*>& tab : tabs) {
            tab.insert(tab.end(), always.begin(), always.end());
            EXPECT_EQ(GivenTwice(tab), "") << form;
        }
    }
}

TEST(ControlTables, EveryControlOfUseHasANameForAScreenReader)
{
    for (const ControlRow& row : ControlRows())
        EXPECT_TRUE(!row.Caption.empty() || !row.Accessible.empty()) << row.Form << " " << row.Name;
}

TEST(CursorTips, EachBelongsToAControlAndToOneOnly)
{
    std::set<std::pair<std::string_view, std::string_view>> names;
    for (const TipRow& tip : CursorTips()) {
        EXPECT_NE(FindControl(tip.Form, tip.Name), nullptr) << tip.Form << " " << tip.Name;
        EXPECT_TRUE(names.emplace(tip.Form, tip.Name).second) << tip.Form << " " << tip.Name;
        EXPECT_FALSE(tip.Text.empty()) << tip.Name;
    }
    EXPECT_EQ(names.size(), 47U);
}

std::string TipOf(std::string_view form, std::string_view name)
{
    for (const TipRow& tip : CursorTips()) {
        if (tip.Form == form && tip.Name == name)
            return TipText(tip);
    }
    return {};
}

TEST(CursorTips, ProductIsNamedInItsPlace)
{
    EXPECT_EQ(TipOf("SetUp", "AS0"), "If this button is selected Korvanti will not autostart.");
    for (const TipRow& tip : CursorTips())
        EXPECT_EQ(TipText(tip).find('{'), std::string::npos) << tip.Name;
}

TEST(CursorTips, SpellingsAndDoubleBlanksAreKept)
{
    EXPECT_EQ(TipOf("SetUp", "AS1"),
              "If this button is selected Korvanti will automatically start when TEMP.DXF appears in the "
              "specified DXF subdirectory.  The file will be processed and TEMP.DXF will be deleted.");
    EXPECT_EQ(TipOf("Form1", "Bin"),
              "Suplimentary Binary files needed by the Winner90 compiler are created for "
              "all selected files after processing.");
    EXPECT_EQ(TipOf("SetUp", "SLim"), "Large drawings are broken up into multiple progams, this sets the max "
                                      "number of lines for each resulting progam.");
    EXPECT_EQ(TipOf("SetUp", "GCodePath(1)"), "Path that to location for Genesis Program files.");
}

TEST(CursorTips, BothBrowsersOfThePathsHaveOneAndTheThirdHasNone)
{
    EXPECT_EQ(TipOf("SetUp", "SPB1"), "Brings up path browser");
    EXPECT_EQ(TipOf("SetUp", "SPB2"), "Brings up path browser");
    EXPECT_EQ(TipOf("SetUp", "SPBhbd"), "");
}

int TipCalls = 0;
bool TipsOn = false;

TEST(CursorTips, WindowIsToldToSetOrClearThem)
{
    Tips = {};
    InstallCursorTips(true); // nobody there
    TipCalls = 0;
    Tips.Install = [](bool on) {
        ++TipCalls;
        TipsOn = on;
    };
    InstallCursorTips(true);
    EXPECT_TRUE(TipsOn);
    InstallCursorTips(false);
    EXPECT_FALSE(TipsOn);
    EXPECT_EQ(TipCalls, 2);
    Tips = {};
}

} // namespace
} // namespace kv

// The load and the save of all settings, their fix-ups, and the override of single keys.
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/text.h"
#include "shell/settings.h"
#include "shell/settings_folder.h"

namespace kv {
namespace {

// Every key of the exchange in the order in which it is written, with a value that a load keeps.
const std::vector<std::pair<std::string, std::string>> AllKeys = {
    {"FormState", "-1"},
    {"SourcePath90", "C:\\S90\\"},
    {"SourcePathGen", "C:\\SG\\"},
    {"SourcePathEV", "C:\\SE\\"},
    {"DestinationPath90", "C:\\D90\\"},
    {"DestinationPathGen", "C:\\DG\\"},
    {"DestinationPathEV", "C:\\DE\\"},
    {"AutoStartTemp", "True"},
    {"AutoStartBatch", "True"},
    {"HBDDestinationPath", "C:\\H\\"},
    {"MakeHBD", " 1"},
    {"HBDGlue", " 1"},
    {"HBDDowel", " 1"},
    {"HBDVBoreLimit", "60"},
    {"EvOptOff", "True"},
    {"EvOptLR", "True"},
    {"EvOptRL", "True"},
    {"EvOptGS", "True"},
    {"EvOptSS", "True"},
    {"Winner90", "True"},
    {"Genesis", "True"},
    {"GenesisEV", "True"},
    {"LeadS", " 1"},
    {"LeadRampIn", " 1"},
    {"LeadRampOut", " 1"},
    {"RemoveBorderRoute", " 1"},
    {"CornerComp", " 1"},
    {"LeadLength", "25.5"},
    {"LeadRampHeight", "10.5"},
    {"PrecisionMetric", "1"},
    {"PrecisionInch", "4"},
    {"Metric", "Inch"},
    {"OffsetX", "1.1"},
    {"OffsetY", "2.2"},
    {"OffsetZ", "3.3"},
    {"GraphicAfterAuto", " 1"},
    {"GraphicAfterMan", " 1"},
    {"PauseForMessages", " 1"},
    {"TipsEnable", " 1"},
    {"SawKerf", "4.2"},
    {"MakeBinaries", " 1"},
    {"LineLimit", "700"},
    {"BatchLimit", "5"},
    {"RadiusLimit", "7500"},
    {"SpeedyInchMode", " 1"},
    {"GraphicDelay", "1.5"},
    {"UnitMode", "2"},
};

std::string FileOfAllKeys()
{
    std::string text = "[ConFiguration]\r\n";
    for (const auto& [key, value] : AllKeys)
        text += key + "=" + value + "\r\n";
    return text;
}

class SettingsExchange : public SettingsFolder {
  protected:
    void Load(const std::string& lines)
    {
        PutFile("KV90.INI", "[Configuration]\r\n" + lines);
        ExchangeSettings(false);
    }
};

TEST_F(SettingsExchange, FreshInstallHasEmptyPathsAndTheFixUpsValues)
{
    ASSERT_EQ(Config.SourcePath90, "C:\\DXF\\"); // as designed, until the first load
    ExchangeSettings(false);
    for (int system = 0; system < ControlSystems; ++system) {
        EXPECT_EQ(SourcePath(system), "");
        EXPECT_EQ(DestinationPath(system), "");
    }
    EXPECT_EQ(Config.SawKerf, "3");
    EXPECT_EQ(Config.PrecisionMetric, "2");
    EXPECT_EQ(Config.PrecisionInch, "3");
    EXPECT_EQ(Config.LineLimit, "600");
    EXPECT_EQ(Config.GraphicDelay, ".5");
    EXPECT_EQ(Config.HBDDestinationPath, "C:\\Albatros\\Product\\");
    EXPECT_EQ(Config.UnitMode, "3");
    EXPECT_EQ(Config.Metric, "");
    EXPECT_EQ(Config.LeadLength, "");
    EXPECT_EQ(Config.LeadRampHeight, "");
    EXPECT_EQ(Config.RadiusLimit, "");
    EXPECT_EQ(Config.FormState, 0);
    EXPECT_EQ(Config.LeadS, 0);
    EXPECT_FALSE(Config.Winner90);
    EXPECT_FALSE(Config.AutoStartTemp);
    EXPECT_EQ(SelectedSystem(), 0);
    EXPECT_FALSE(FileStands("KV90.INI")); // a load writes nothing
}

TEST_F(SettingsExchange, SaveWritesEveryKeyInItsOrderAndForm)
{
    PutFile("KV90.INI", FileOfAllKeys());
    ExchangeSettings(false);
    std::filesystem::remove(Folder / "KV90.INI");
    ExchangeSettings(true);
    EXPECT_EQ(FileText("KV90.INI"), FileOfAllKeys());
}

TEST_F(SettingsExchange, ManualNamesEveryKeyInTheOrderOfTheFile)
{
    std::ifstream manual(std::string(KORVANTI_SOURCE_DIR) + "/docs/settings.md", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(manual), std::istreambuf_iterator<char>()};
    std::size_t row = 0;
    for (const auto& [key, value] : AllKeys) {
        const std::size_t place = text.find("\n| `" + key + "` |");
        ASSERT_NE(place, std::string::npos) << key;
        EXPECT_GT(place, row) << key;
        row = place;
    }
}

TEST_F(SettingsExchange, ValuesOffAreWrittenAsBlankZeroAndFalse)
{
    Config.FormState = 0;
    Config.MakeHBD = 0;
    Config.Winner90 = false;
    ExchangeSettings(true);
    const std::string text = FileText("KV90.INI");
    EXPECT_TRUE(Holds(text, "\nFormState= 0\r\n"));
    EXPECT_TRUE(Holds(text, "\nMakeHBD= 0\r\n"));
    EXPECT_TRUE(Holds(text, "\nWinner90=False\r\n"));
}

TEST_F(SettingsExchange, SaveKeepsForeignLinesCommentsAndSections)
{
    const std::string before = "; shop 4\r\n[System]\r\nHelp=C:\\W\\HELP.EXE\r\n\r\n"
                               "[configuration]\r\n; the saw\r\nsawkerf=4\r\nNotOurs=1\r\n\r\n"
                               "[PTSDATA]\r\nField1=~Name\r\n";
    PutFile("KV90.INI", before);
    ExchangeSettings(false);
    Config.SawKerf = "5";
    ExchangeSettings(true);
    const std::string after = FileText("KV90.INI");
    std::istringstream lines(before);
    for (std::string line; std::getline(lines, line);) {
        const std::string expected = BeginsWith(line, "sawkerf") ? "sawkerf=5\r" : line;
        EXPECT_TRUE(Holds(after, expected + "\n")) << line;
    }
    EXPECT_FALSE(Holds(after, "SawKerf=")); // the key as it was spelled is the one
    EXPECT_FALSE(Holds(after, "[ConFiguration]"));
}

TEST_F(SettingsExchange, SaveOfAnEmptiedPathKeepsTheStoredOne)
{
    PutFile("KV90.INI", FileOfAllKeys());
    ExchangeSettings(false);
    Config.SourcePath90 = "";
    Config.DestinationPathEV = "  ";
    Config.HBDDestinationPath = " ";
    ExchangeSettings(true);
    ExchangeSettings(false);
    EXPECT_EQ(Config.SourcePath90, "C:\\S90\\");
    EXPECT_EQ(Config.DestinationPathEV, "C:\\DE\\");
    EXPECT_EQ(Config.HBDDestinationPath, "C:\\H\\");
}

TEST_F(SettingsExchange, SaveOfAnEmptiedTextErasesIt)
{
    PutFile("KV90.INI", FileOfAllKeys());
    ExchangeSettings(false);
    Config.OffsetX = "";
    ExchangeSettings(true);
    ExchangeSettings(false);
    EXPECT_EQ(Config.OffsetX, "");
    EXPECT_TRUE(Holds(FileText("KV90.INI"), "\nOffsetX=\r\n"));
}

TEST_F(SettingsExchange, FailedSaveIsNotNoticed)
{
    std::filesystem::create_directories(Folder / "KV90.INI");
    Config.SawKerf = "9";
    ExchangeSettings(true);
    EXPECT_EQ(Config.SawKerf, "9");
}

TEST_F(SettingsExchange, AutoStartIsTrueOnlyForTheExactWord)
{
    Load("AutoStartTemp=true\r\nAutoStartBatch=TRUE\r\n");
    EXPECT_FALSE(Config.AutoStartTemp);
    EXPECT_FALSE(Config.AutoStartBatch);
    Load("AutoStartTemp=True\r\nAutoStartBatch=True\r\n");
    EXPECT_TRUE(Config.AutoStartTemp);
    EXPECT_TRUE(Config.AutoStartBatch);
}

TEST_F(SettingsExchange, SystemWordsAreReadWithoutCase)
{
    Load("Winner90=true\r\nGenesis=TRUE\r\nEvOptSS=tRuE\r\nEvOptGS=yes\r\n");
    EXPECT_TRUE(Config.Winner90);
    EXPECT_TRUE(Config.Genesis);
    EXPECT_TRUE(Config.EvOptSS);
    EXPECT_FALSE(Config.EvOptGS);
    EXPECT_FALSE(Config.GenesisEV);
}

TEST_F(SettingsExchange, SawKerfIsHeldBetweenThreeAndTwenty)
{
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"25", "20"},   {"1.5", "3"}, {"3", "3"},   {"20", "20"},     {"20.01", "20"}, {"2.99", "3"},
        {"4.5", "4.5"}, {"", "3"},    {"saw", "3"}, {"5 mm", "5 mm"}, {"-8", "3"},     {"1e999", "20"},
    };
    for (const auto& [stored, loaded] : rows) {
        Load("SawKerf=" + stored + "\r\n");
        EXPECT_EQ(Config.SawKerf, loaded) << stored;
    }
}

TEST_F(SettingsExchange, LineLimitUnderTwoHundredIsSixHundred)
{
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"150", "600"}, {"199.9", "600"}, {"200", "200"}, {"", "600"}, {"many", "600"}, {"5000", "5000"},
    };
    for (const auto& [stored, loaded] : rows) {
        Load("LineLimit=" + stored + "\r\n");
        EXPECT_EQ(Config.LineLimit, loaded) << stored;
    }
}

TEST_F(SettingsExchange, GraphicDelayOfNothingIsHalfASecond)
{
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"0", ".5"}, {"", ".5"}, {"0.00", ".5"}, {"soon", ".5"}, {".2", ".2"}, {"-1", "-1"},
    };
    for (const auto& [stored, loaded] : rows) {
        Load("GraphicDelay=" + stored + "\r\n");
        EXPECT_EQ(Config.GraphicDelay, loaded) << stored;
    }
}

TEST_F(SettingsExchange, OnlyEmptyPrecisionsAreReplaced)
{
    Load("PrecisionMetric=0\r\nPrecisionInch=x\r\n");
    EXPECT_EQ(Config.PrecisionMetric, "0");
    EXPECT_EQ(Config.PrecisionInch, "x");
    Load("PrecisionMetric=   \r\n");
    EXPECT_EQ(Config.PrecisionMetric, "2");
    EXPECT_EQ(Config.PrecisionInch, "3");
}

TEST_F(SettingsExchange, UnitModeTakesOneOfThreeAndElseStays)
{
    Load("UnitMode=1\r\n");
    EXPECT_EQ(Config.UnitMode, "1");
    for (const char* const other : {"UnitMode=4\r\n", "UnitMode=\r\n", "UnitMode=02\r\n", ""}) {
        Load(other);
        EXPECT_EQ(Config.UnitMode, "1") << other;
    }
    Load("UnitMode=3\r\n");
    EXPECT_EQ(Config.UnitMode, "3");
}

TEST_F(SettingsExchange, NumberKeysThatAreNoNumbersThatFitAreZero)
{
    const std::vector<std::pair<std::string, Int>> rows = {
        {"1", Int{1}},           {" 1", Int{1}},     {"yes", Int{0}},       {"", Int{0}},
        {"2", Int{2}},           {"-1", Int{-1}},    {"32767", Int{32767}}, {"32768", Int{0}},
        {"1e300", Int{0}},       {"1e999", Int{0}},  {"1.5", Int{2}},       {"2.5", Int{2}},
        {"-32768", Int{-32768}}, {"-32769", Int{0}},
    };
    for (const auto& [stored, loaded] : rows) {
        Load("LeadS=" + stored + "\r\n");
        EXPECT_EQ(Config.LeadS, loaded) << stored;
    }
}

TEST_F(SettingsExchange, PathLongerThanSeventyNineCharactersIsCut)
{
    const std::string path = "C:\\" + std::string(76, 'p') + "\\DXF\\";
    Load("SourcePath90=" + path + "\r\n");
    EXPECT_EQ(Config.SourcePath90, path.substr(0, 79));
}

TEST_F(SettingsExchange, PathWithForwardSlashesIsTakenAsABackslashPath)
{
    Load("SourcePath90=/srv/dxf/\r\nHBDDestinationPath=C:/H/\r\n");
    EXPECT_EQ(Config.SourcePath90, "\\srv\\dxf\\");
    EXPECT_EQ(Config.HBDDestinationPath, "C:\\H\\");
}

TEST_F(SettingsExchange, EvolutionClearsTheOptimizerBoxAndKeepsTheKey)
{
    Config.OptimizerBox = true;
    Config.Optimizer = "1";
    Load("GenesisEV=True\r\n");
    EXPECT_FALSE(Config.OptimizerBox);
    EXPECT_EQ(Config.Optimizer, "1");
}

TEST_F(SettingsExchange, OtherSystemsLeaveTheOptimizerBox)
{
    Config.OptimizerBox = true;
    Load("Genesis=True\r\n");
    EXPECT_TRUE(Config.OptimizerBox);
    Config.OptimizerBox = false;
    Load("Winner90=True\r\n");
    EXPECT_FALSE(Config.OptimizerBox);
}

TEST_F(SettingsExchange, LoadUndoesEdits)
{
    PutFile("KV90.INI", FileOfAllKeys());
    ExchangeSettings(false);
    Config.SawKerf = "11";
    Config.MakeHBD = 0;
    Config.Genesis = false;
    ExchangeSettings(false);
    EXPECT_EQ(Config.SawKerf, "4.2");
    EXPECT_EQ(Config.MakeHBD, 1);
    EXPECT_TRUE(Config.Genesis);
}

TEST_F(SettingsExchange, ExampleInstallationNamesEveryKey)
{
    const std::string folder = std::string(KORVANTI_SOURCE_DIR) + "/examples/install/";
    SetExeFolder(FromHostPath(folder));
    std::ifstream example(folder + "KV90.INI", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(example), std::istreambuf_iterator<char>()};
    for (const auto& [key, value] : AllKeys)
        EXPECT_TRUE(Holds(text, "\n" + key + "=")) << key;
    LoadAllSettings();
    EXPECT_EQ(SelectedSystem(), 0);
    EXPECT_EQ(Config.SawKerf, "4");
}

using OtherKeys = SettingsExchange;

TEST_F(OtherKeys, AreReadFromTheirSections)
{
    PutFile("KV90.INI", "[Configuration]\r\nSequence=VHGR\r\nOptimizer=1\r\nDRAlternate=1\r\n"
                        "ListColumnWidth3=12\r\nListColumnWidth6= 9.5\r\nEditorPath=C:\\ED\\\r\n"
                        "LineOrigin=UL\r\nRouteTolerance=0.2\r\nOrigin=1\r\nSPDA=no\r\n"
                        "[System]\r\nHelp=winhlp A\r\nOLHelp=browse B\r\nViewer=view C\r\n");
    LoadOtherKeys();
    EXPECT_EQ(Config.Sequence, "VHGR");
    EXPECT_EQ(Config.Optimizer, "1");
    EXPECT_TRUE(Config.OptimizerBox);
    EXPECT_EQ(Config.DRAlternate, "1");
    EXPECT_EQ(Config.ListColumnWidth[0], "12");
    EXPECT_EQ(Config.ListColumnWidth[1], "");
    EXPECT_EQ(Config.ListColumnWidth[3], "9.5");
    EXPECT_EQ(Config.EditorPath, "C:\\ED\\");
    EXPECT_EQ(Config.LineOrigin, "UL");
    EXPECT_EQ(Config.RouteTolerance, "0.2");
    EXPECT_EQ(Config.Origin, "1");
    EXPECT_EQ(Config.SPDA, "no");
    EXPECT_EQ(Config.Help, "winhlp A");
    EXPECT_EQ(Config.OLHelp, "browse B");
    EXPECT_EQ(Config.Viewer, "view C");
}

TEST_F(OtherKeys, AreNotWrittenByTheExchange)
{
    PutFile("KV90.INI", "[Configuration]\r\nSequence=VHGR\r\n");
    LoadOtherKeys();
    Config.Sequence = "RGHV";
    ExchangeSettings(true);
    EXPECT_EQ(GetConfigValue("Sequence"), "VHGR");
    EXPECT_EQ(GetConfigValue("LineOrigin"), "");
}

TEST_F(OtherKeys, OptimizerKeySetsTheBoxAtStartForTheEvolutionToo)
{
    PutFile("KV90.INI", "[Configuration]\r\nGenesisEV=True\r\nOptimizer=1\r\n");
    LoadAllSettings();
    EXPECT_EQ(SelectedSystem(), 2);
    EXPECT_TRUE(Config.OptimizerBox);
    ExchangeSettings(false);
    EXPECT_FALSE(Config.OptimizerBox);
}

class CutListSettings : public SettingsFolder {
  protected:
    void Load(const std::string& lines)
    {
        PutFile("KV90.INI", "[PTSDATA]\r\n" + lines);
        LoadCutListSettings();
    }
};

TEST_F(CutListSettings, FieldNamesAreCapitalsWithoutBlanks)
{
    Load("Field1= part name \r\nField2=l\xE4nge\r\n"); // a-umlaut
    EXPECT_EQ(Config.PtsFields[1], "PARTNAME");
    EXPECT_EQ(Config.PtsFields[2], "L\xC4NGE");
    EXPECT_EQ(Config.PtsQuotes[1], "");
}

TEST_F(CutListSettings, TildeAsksForQuotesAndIsRemoved)
{
    Load("Field1=~Name\r\nField2= ~ Name\r\nField3=Na~me\r\nField4=~~Name\r\n");
    EXPECT_EQ(Config.PtsFields[1], "NAME");
    EXPECT_EQ(Config.PtsQuotes[1], "\"");
    EXPECT_EQ(Config.PtsFields[2], "NAME");
    EXPECT_EQ(Config.PtsQuotes[2], "\"");
    EXPECT_EQ(Config.PtsFields[3], "NA~ME");
    EXPECT_EQ(Config.PtsQuotes[3], "");
    EXPECT_EQ(Config.PtsFields[4], "~NAME");
}

TEST_F(CutListSettings, FieldZeroIsReadAndIsNoColumn)
{
    Load("Field0=Width\r\n");
    EXPECT_EQ(Config.PtsFields[0], "WIDTH");
    EXPECT_EQ(Config.PtsFieldCount, 0);
}

TEST_F(CutListSettings, CountIsTheHighestNamedSlotOverEmptyOnes)
{
    Load("Field2=A\r\nField7=B\r\nField9=END.-\r\nField51=C\r\n");
    EXPECT_EQ(Config.PtsFieldCount, 7);
    EXPECT_EQ(Config.PtsFields[3], "");
    EXPECT_EQ(Config.PtsFields[9], "");
    Load("Field50=A\r\n");
    EXPECT_EQ(Config.PtsFieldCount, 50);
    EXPECT_EQ(Config.PtsFields[7], ""); // of the load before
    Load("");
    EXPECT_EQ(Config.PtsFieldCount, 0);
}

TEST_F(CutListSettings, NameIsCutAtANulByte)
{
    Load(std::string("Field1=ab\0cd\r\n", 14));
    EXPECT_EQ(Config.PtsFields[1], "AB");
}

TEST_F(CutListSettings, UnitWithAnMIsMetricAndAnyOtherInch)
{
    const std::vector<std::pair<std::string, bool>> rows = {
        {"M", true}, {"MM", true}, {"COM", true}, {"I", false}, {"D", false}, {"m", false},
    };
    for (const auto& [unit, metric] : rows) {
        Load("Unit=" + unit + "\r\n");
        EXPECT_EQ(Config.PTSMetric, metric) << unit;
    }
}

TEST_F(CutListSettings, MissingUnitChangesNothingAndIsMetricByDesign)
{
    Load("Path=C:\\PTS\\\r\nName=LIST\r\n");
    EXPECT_TRUE(Config.PTSMetric);
    EXPECT_EQ(Config.PTSPath, "C:\\PTS\\");
    EXPECT_EQ(Config.PTSName, "LIST");
    Config.PTSMetric = false;
    Load("Unit=\r\n");
    EXPECT_FALSE(Config.PTSMetric);
    EXPECT_EQ(Config.PTSPath, "");
    EXPECT_EQ(Config.PTSName, "");
}

using ToolSubstitutions = SettingsFolder;

TEST_F(ToolSubstitutions, RowsNeverUsedShowZeros)
{
    LoadToolSubstitutions();
    ASSERT_EQ(Config.ToolSubData.size(), 100u);
    for (const ToolSubstitution& row : Config.ToolSubData) {
        EXPECT_EQ(row.Enabled, "0");
        EXPECT_EQ(row.Tool, "0");
        EXPECT_EQ(row.ToolSub, "0");
    }
}

TEST_F(ToolSubstitutions, KeyNumbersBeginAtZeroAndMayHaveGaps)
{
    PutFile("KV90.INI", "[ToolSubData]\r\nEnabled0=1\r\nTool0=5\r\nToolSub0=7\r\n"
                        "Enabled99=1\r\nTool99=12\r\nToolSub99=13\r\nTool100=9\r\n");
    LoadToolSubstitutions();
    ASSERT_EQ(Config.ToolSubData.size(), 100u);
    EXPECT_EQ(Config.ToolSubData[0].Enabled, "1");
    EXPECT_EQ(Config.ToolSubData[0].Tool, "5");
    EXPECT_EQ(Config.ToolSubData[0].ToolSub, "7");
    EXPECT_EQ(Config.ToolSubData[1].Tool, "0");
    EXPECT_EQ(Config.ToolSubData[99].Tool, "12");
}

TEST_F(ToolSubstitutions, CellsHoldTheirNumberPrintedPlainly)
{
    PutFile("KV90.INI", "[ToolSubData]\r\nEnabled0= 01\r\nTool0=5 left\r\nToolSub0=T7\r\n"
                        "Enabled1=-1\r\nTool1=0.50\r\nToolSub1=123456789\r\nTool2=1e300\r\n");
    LoadToolSubstitutions();
    EXPECT_EQ(Config.ToolSubData[0].Enabled, "1");
    EXPECT_EQ(Config.ToolSubData[0].Tool, "5");
    EXPECT_EQ(Config.ToolSubData[0].ToolSub, "0");
    EXPECT_EQ(Config.ToolSubData[1].Enabled, "-1");
    EXPECT_EQ(Config.ToolSubData[1].Tool, ".5");
    EXPECT_EQ(Config.ToolSubData[1].ToolSub, "123456789");
    EXPECT_EQ(Config.ToolSubData[2].Tool, "0");
}

TEST_F(ToolSubstitutions, SavedRowsAreLoadedAgain)
{
    LoadToolSubstitutions();
    Config.ToolSubData[0] = {"1", "5", "7"};
    Config.ToolSubData[99] = {"1", "12", "0"};
    SaveToolSubstitutions();
    EXPECT_TRUE(BeginsWith(FileText("KV90.INI"), "[ToolSubData]\r\nEnabled0=1\r\nTool0=5\r\nToolSub0=7\r\n"
                                                 "Enabled1=0\r\nTool1=0\r\nToolSub1=0\r\n"));
    Config.ToolSubData.clear();
    LoadToolSubstitutions();
    EXPECT_EQ(Config.ToolSubData[0].ToolSub, "7");
    EXPECT_EQ(Config.ToolSubData[99].Tool, "12");
}

TEST_F(ToolSubstitutions, CancelledEditsVanishWithTheNextLoad)
{
    LoadToolSubstitutions();
    Config.ToolSubData[4].Tool = "8";
    LoadToolSubstitutions();
    EXPECT_EQ(Config.ToolSubData[4].Tool, "0");
}

using ProgramStart = SettingsFolder;

TEST_F(ProgramStart, LoadsEverySection)
{
    PutFile("KV90.INI", "[Configuration]\r\nGenesis=True\r\nSequence=GVHR\r\nOptimizer=1\r\n"
                        "[PTSDATA]\r\nField1=Name\r\n[ToolSubData]\r\nTool0=5\r\n");
    LoadAllSettings();
    EXPECT_EQ(SelectedSystem(), 1);
    EXPECT_EQ(Config.Sequence, "GVHR");
    EXPECT_TRUE(Config.OptimizerBox);
    EXPECT_EQ(Config.PtsFieldCount, 1);
    EXPECT_EQ(Config.ToolSubData.at(0).Tool, "5");
    EXPECT_TRUE(Config.HbdAvailable);
}

TEST_F(ProgramStart, WithoutANamedFolderTakesTheExecutablesOwn)
{
    ExeFolder.clear();
    LoadAllSettings();
    EXPECT_EQ(ExeFolder, FolderOf(ExeName()));
    EXPECT_EQ(IniPath, ExeFolder + "KV90.INI");
}

using SettingOverride = SettingsFolder;

TEST_F(SettingOverride, FindsTheKeysOfEveryTableWithoutCase)
{
    for (const auto& [key, value] : AllKeys) {
        EXPECT_TRUE(OverrideSetting(LowerCase(key), value)) << key;
        EXPECT_TRUE(OverrideSetting(UpperCase(key), value)) << key;
    }
    for (const char* const key :
         {"Sequence",     "Optimizer",      "DRAlternate",     "ListColumnWidth3", "ListColumnWidth6",
          "EditorPath",   "LineOrigin",     "RouteTolerance",  "Origin",           "SPDA",
          "Help",         "OLHelp",         "Viewer",          "PTSDATA.Path",     "ptsdata.name",
          "PTSDATA.Unit", "PTSDATA.Field0", "PTSDATA.field50", "Enabled0",         "tool99",
          "TOOLSUB7"})
        EXPECT_TRUE(OverrideSetting(key, "1")) << key;
}

TEST_F(SettingOverride, RefusesKeysThatNoSettingHas)
{
    for (const char* const key : {"", "SawKerf ", "Saw", "ListColumnWidth2", "ListColumnWidth7", "Path",
                                  "Field1", "PTSDATA.", "PTSDATA.Field51", "PTSDATA.Field01", "PTSDATA.Field",
                                  "PTSDATA.SawKerf", "Enabled100", "Tool-1", "Tool", "ToolSub", "Enabled00"})
        EXPECT_FALSE(OverrideSetting(key, "1")) << key;
}

TEST_F(SettingOverride, SetsTheFieldAsAFileOfAllKeysWould)
{
    for (const auto& [key, value] : AllKeys)
        ASSERT_TRUE(OverrideSetting(key, value)) << key;
    ExchangeSettings(true);
    EXPECT_EQ(FileText("KV90.INI"), FileOfAllKeys());
}

TEST_F(SettingOverride, WritesNoFile)
{
    EXPECT_TRUE(OverrideSetting("SawKerf", "5"));
    EXPECT_EQ(Config.SawKerf, "5");
    EXPECT_FALSE(FileStands("KV90.INI"));
}

TEST_F(SettingOverride, AppliesTheFixUps)
{
    OverrideSetting("SawKerf", "25");
    OverrideSetting("LineLimit", "150");
    OverrideSetting("GraphicDelay", "0");
    OverrideSetting("PrecisionMetric", "");
    OverrideSetting("PrecisionInch", "  ");
    OverrideSetting("HBDDestinationPath", "");
    OverrideSetting("UnitMode", "9");
    OverrideSetting("AutoStartTemp", "true");
    OverrideSetting("Winner90", "true");
    OverrideSetting("LeadS", "40000");
    EXPECT_EQ(Config.SawKerf, "20");
    EXPECT_EQ(Config.LineLimit, "600");
    EXPECT_EQ(Config.GraphicDelay, ".5");
    EXPECT_EQ(Config.PrecisionMetric, "2");
    EXPECT_EQ(Config.PrecisionInch, "3");
    EXPECT_EQ(Config.HBDDestinationPath, "C:\\Albatros\\Product\\");
    EXPECT_EQ(Config.UnitMode, "3");
    EXPECT_FALSE(Config.AutoStartTemp);
    EXPECT_TRUE(Config.Winner90);
    EXPECT_EQ(Config.LeadS, 0);
}

TEST_F(SettingOverride, FixesUpNoOtherField)
{
    Config.SawKerf = "25";
    OverrideSetting("LineLimit", "300");
    EXPECT_EQ(Config.SawKerf, "25");
}

TEST_F(SettingOverride, PathMayBeLongerThanAFileCanKeep)
{
    const std::string path = "/tmp/" + std::string(100, 'p') + "/";
    EXPECT_TRUE(OverrideSetting("DestinationPath90", path));
    EXPECT_EQ(Config.DestinationPath90, "\\tmp\\" + std::string(100, 'p') + "\\");
}

TEST_F(SettingOverride, OptimizerKeySetsItsBoxAndTheEvolutionClearsIt)
{
    OverrideSetting("Optimizer", "1");
    EXPECT_EQ(Config.Optimizer, "1");
    EXPECT_TRUE(Config.OptimizerBox);
    OverrideSetting("GenesisEV", "True");
    EXPECT_FALSE(Config.OptimizerBox);
    EXPECT_EQ(Config.Optimizer, "1");
}

TEST_F(SettingOverride, CutListKeysAreTakenAsTheirLoadTakesThem)
{
    OverrideSetting("PTSDATA.Field3", " ~ width");
    OverrideSetting("PTSDATA.Unit", "I");
    OverrideSetting("PTSDATA.Path", "/srv/pts/");
    OverrideSetting("PTSDATA.Name", "LIST");
    EXPECT_EQ(Config.PtsFields[3], "WIDTH");
    EXPECT_EQ(Config.PtsQuotes[3], "\"");
    EXPECT_EQ(Config.PtsFieldCount, 3);
    EXPECT_FALSE(Config.PTSMetric);
    EXPECT_EQ(Config.PTSPath, "\\srv\\pts\\");
    EXPECT_EQ(Config.PTSName, "LIST");
    OverrideSetting("PTSDATA.Field3", "");
    EXPECT_EQ(Config.PtsFieldCount, 0);
}

TEST_F(SettingOverride, ToolSubstitutionCellsArePlainNumbers)
{
    OverrideSetting("Enabled2", "1");
    OverrideSetting("Tool2", "05");
    OverrideSetting("ToolSub2", "x");
    ASSERT_EQ(Config.ToolSubData.size(), 100u);
    EXPECT_EQ(Config.ToolSubData[2].Enabled, "1");
    EXPECT_EQ(Config.ToolSubData[2].Tool, "5");
    EXPECT_EQ(Config.ToolSubData[2].ToolSub, "0");
    EXPECT_EQ(Config.ToolSubData[3].Tool, "0");
}

TEST_F(SettingOverride, FolderKeysAreKnown)
{
    for (const char* const key :
         {"sourcepath90", "SourcePathGen", "SourcePathEV", "DestinationPath90", "DestinationPathGen",
          "DestinationPathEV", "HBDDestinationPath", "EditorPath", "PTSDATA.Path"})
        EXPECT_TRUE(IsPathSetting(key)) << key;
    for (const char* const key : {"PTSDATA.Name", "SawKerf", "Path", "Nothing", ""})
        EXPECT_FALSE(IsPathSetting(key)) << key;
}

} // namespace
} // namespace kv

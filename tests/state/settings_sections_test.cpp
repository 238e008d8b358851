// The keys beside the exchange, the cut list's columns, the tool substitutions and the whole load at
// program start.
#include <string>
#include <utility>
#include <vector>

#include "platform/text.h"
#include "state/settings.h"
#include "state/settings_folder.h"

namespace kv {
namespace {

using OtherKeys = SettingsFolder;

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

} // namespace
} // namespace kv

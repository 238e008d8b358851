// The override of single keys for one process.
#include <string>

#include "platform/text.h"
#include "state/settings.h"
#include "state/settings_folder.h"
#include "state/settings_keys.h"

namespace kv {
namespace {

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

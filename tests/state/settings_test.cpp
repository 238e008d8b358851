// Single keys of KV90.INI and the small questions that the settings answer.
#include "state/settings.h"

#include <string>

#include "state/settings_folder.h"

namespace kv {
namespace {

using IniValue = SettingsFolder;

TEST_F(IniValue, MissingFileSectionOrKeyGivesAnEmptyText)
{
    EXPECT_EQ(GetIniValue("System", "Help"), "");
    PutFile("KV90.INI", "[System]\r\nOLHelp=x\r\n");
    EXPECT_EQ(GetIniValue("System", "Help"), "");
    EXPECT_EQ(GetIniValue("PTSDATA", "OLHelp"), "");
    EXPECT_EQ(GetIniValue("System", "OLHelp"), "x");
}

TEST_F(IniValue, EmptyValueAndTheEndMarkGiveAnEmptyText)
{
    PutFile("KV90.INI", "[System]\r\nA=\r\nB=END.-\r\nC=END.\r\nD=end.-\r\n");
    EXPECT_EQ(GetIniValue("System", "A"), "");
    EXPECT_EQ(GetIniValue("System", "B"), "");
    EXPECT_EQ(GetIniValue("System", "C"), "END.");
    EXPECT_EQ(GetIniValue("System", "D"), "end.-");
}

TEST_F(IniValue, ValueIsCutAtSeventyNineCharacters)
{
    PutFile("KV90.INI", "[System]\r\nA=" + std::string(79, 'x') + "y\r\nB=" + std::string(79, 'z') + "\r\n");
    EXPECT_EQ(GetIniValue("System", "A"), std::string(79, 'x'));
    EXPECT_EQ(GetIniValue("System", "B"), std::string(79, 'z'));
}

TEST_F(IniValue, SectionAndKeyAreFoundWithoutCase)
{
    PutFile("KV90.INI", "[CONFIGURATION]\r\nsawkerf=4\r\n");
    EXPECT_EQ(GetConfigValue("SawKerf"), "4");
}

TEST_F(IniValue, PutStartsTheSectionUnderItsWrittenSpelling)
{
    PutConfigValue("EditorPath", "C:\\ED\\");
    EXPECT_EQ(FileText("KV90.INI"), "[ConFiguration]\r\nEditorPath=C:\\ED\\\r\n");
    EXPECT_EQ(GetConfigValue("EditorPath"), "C:\\ED\\");
}

TEST_F(IniValue, PutGoesIntoTheSectionUnderItsReadSpelling)
{
    PutFile("KV90.INI", "[Configuration]\r\nA=1\r\n[System]\r\nHelp=x\r\n");
    PutConfigValue("A", "2");
    EXPECT_EQ(FileText("KV90.INI"), "[Configuration]\r\nA=2\r\n[System]\r\nHelp=x\r\n");
}

TEST_F(IniValue, FailedWriteIsNotNoticed)
{
    std::filesystem::create_directories(Folder / "KV90.INI"); // a folder in the file's place
    PutConfigValue("A", "2");
    EXPECT_EQ(GetConfigValue("A"), "");
}

TEST(TrueText, IsTrueInAnyCaseAndNothingElse)
{
    EXPECT_TRUE(IsTrueText("True"));
    EXPECT_TRUE(IsTrueText("true"));
    EXPECT_TRUE(IsTrueText("TRUE"));
    EXPECT_FALSE(IsTrueText(""));
    EXPECT_FALSE(IsTrueText("True "));
    EXPECT_FALSE(IsTrueText("1"));
    EXPECT_FALSE(IsTrueText("-1"));
}

using ProgramFolder = SettingsFolder;

TEST_F(ProgramFolder, EndsInABackslashAndHoldsTheIni)
{
    SetExeFolder("C:\\KV");
    EXPECT_EQ(ExeFolder, "C:\\KV\\");
    EXPECT_EQ(IniPath, "C:\\KV\\KV90.INI");
    SetExeFolder("D:\\Programs\\KV\\");
    EXPECT_EQ(IniPath, "D:\\Programs\\KV\\KV90.INI");
}

using ControlSystem = SettingsFolder;

TEST_F(ControlSystem, NoneSelectedIsTheFirst)
{
    EXPECT_EQ(SelectedSystem(), 0);
}

TEST_F(ControlSystem, TheLastSelectedOneCounts)
{
    Config.Winner90 = true;
    EXPECT_EQ(SelectedSystem(), 0);
    Config.Genesis = true;
    EXPECT_EQ(SelectedSystem(), 1);
    Config.GenesisEV = true;
    EXPECT_EQ(SelectedSystem(), 2);
    Config.Genesis = false;
    EXPECT_EQ(SelectedSystem(), 2);
}

TEST_F(ControlSystem, EachHasItsOwnFolders)
{
    Config.SourcePath90 = "S0";
    Config.SourcePathGen = "S1";
    Config.SourcePathEV = "S2";
    Config.DestinationPath90 = "D0";
    Config.DestinationPathGen = "D1";
    Config.DestinationPathEV = "D2";
    for (int system = 0; system < ControlSystems; ++system) {
        EXPECT_EQ(SourcePath(system), "S" + std::to_string(system));
        EXPECT_EQ(DestinationPath(system), "D" + std::to_string(system));
    }
    EXPECT_EQ(CurrentSourcePath(), "S0");
    Config.Genesis = true;
    EXPECT_EQ(CurrentSourcePath(), "S1");
    Config.GenesisEV = true;
    EXPECT_EQ(CurrentSourcePath(), "S2");
}

TEST(HbdAvailability, IsKeptAsTold)
{
    SetHbdAvailable(true);
    EXPECT_TRUE(Config.HbdAvailable);
    SetHbdAvailable(false);
    EXPECT_FALSE(Config.HbdAvailable);
}

TEST(Product, HasOneName)
{
    EXPECT_EQ(ProductName, "Korvanti");
}

} // namespace
} // namespace kv

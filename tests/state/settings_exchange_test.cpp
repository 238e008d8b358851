// The load and the save of all settings and their fix-ups.
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/text.h"
#include "state/settings.h"
#include "state/settings_folder.h"
#include "state/settings_keys.h"

namespace kv {
namespace {

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

TEST_F(SettingsExchange, UnitModeTakesOneOfFourAndElseStays)
{
    Load("UnitMode=1\r\n");
    EXPECT_EQ(Config.UnitMode, "1");
    for (const char* const other : {"UnitMode=5\r\n", "UnitMode=\r\n", "UnitMode=02\r\n", ""}) {
        Load(other);
        EXPECT_EQ(Config.UnitMode, "1") << other;
    }
    Load("UnitMode=3\r\n");
    EXPECT_EQ(Config.UnitMode, "3");
    Load("UnitMode=4\r\n");
    EXPECT_EQ(Config.UnitMode, "4");
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

TEST_F(SettingsExchange, EvolutionClearsTheOptimizerBoxAndStoresThat)
{
    Config.OptimizerBox = true;
    Config.Optimizer = "1";
    Load("Optimizer=1\r\nGenesisEV=True\r\n");
    EXPECT_FALSE(Config.OptimizerBox);
    EXPECT_EQ(Config.Optimizer, "0");
    EXPECT_EQ(GetConfigValue("Optimizer"), "0");
}

TEST_F(SettingsExchange, EvolutionStoresNothingWhenTheOptimizerBoxWasOff)
{
    const std::string lines = "Optimizer=1\r\nGenesisEV=True\r\n";
    Load(lines);
    EXPECT_FALSE(Config.OptimizerBox);
    EXPECT_EQ(FileText("KV90.INI"), "[Configuration]\r\n" + lines);
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

} // namespace
} // namespace kv

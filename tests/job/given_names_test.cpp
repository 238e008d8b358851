// What a drawing may name: files, and never folders, and nothing that Windows or the installation needs.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

#include "platform/paths.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"
#include "writers/program_writers.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

class GivenNames : public testing::Test {
  protected:
    static constexpr Int Genesis = 1, Evolution = 2;
    Scene Home;
    RunBlock& Run = kv::Run; // the test class has a Run of its own

    static std::string Panel(const std::string& texts)
    {
        return Drawing(texts + Rectangle("BORDER", 10, 20, 600, 400) + Circle("VBORE Z12", 110, 70, 4));
    }
    static std::string Named(const std::string& name) { return Panel(TextAt("NAME", 0, 0, name)); }
    static std::string Told(const std::string& name) { return Panel(Instructions({"NAME=" + name})); }

    // Files in the scratch folder and below, by their names in it.
    std::set<std::string> Files() const
    {
        std::set<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(Home.Folder))
            if (entry.is_regular_file() && !IsAgreement(entry.path()))
                names.insert(fs::relative(entry.path(), Home.Folder).generic_string());
        return names;
    }
    long RowsThatBegin(const std::string& head) const
    {
        const auto begins = [&](const std::string& row) { return BeginsWith(row, head); };
        return static_cast<long>(std::count_if(Home.Lines.begin(), Home.Lines.end(), begins));
    }
    std::string FolderPath(const std::string& name) const
    {
        fs::create_directories(Home.Folder / name);
        return FromHostPath((Home.Folder / name).string() + "/");
    }
};

TEST_F(GivenNames, AFolderInANameIsReportedAndLeftOut)
{
    for (const std::string folder : {"..\\..\\OUT\\", "C:\\PRG\\", "/tmp/", "X:", "A/B:"}) {
        for (const std::string& drawing : {Named(folder + "SIDE"), Told(folder + "SIDE")}) {
            fs::remove_all(Home.Programs / "SRG");
            ASSERT_TRUE(Home.Convert(drawing)) << Home.ReportText();
            EXPECT_TRUE(Home.HasProgram("SIDE")) << folder << Home.ReportText();
            EXPECT_TRUE(Home.Reported("NAME names a folder, which is left out: " + folder))
                << Home.ReportText();
        }
    }
    EXPECT_EQ(Files(), (std::set<std::string>{"DOOR.DXF", "prg/INDICE.PRG", "prg/SRG/S/IDE"}));
}

TEST_F(GivenNames, AFolderAloneLeavesTheDrawingsOwnName)
{
    ASSERT_TRUE(Home.Convert(Named("C:\\PRG\\"))) << Home.ReportText();
    EXPECT_TRUE(Home.HasProgram("DOOR"));
}

TEST_F(GivenNames, AFailedFolderOfANameSpoilsNoLaterJob)
{
    ASSERT_TRUE(Home.Convert(Named("\\NOWHERE\\SIDE"), "FIRST.DXF")) << Home.ReportText();
    ASSERT_TRUE(Home.Convert(Panel(""), "SECOND.DXF")) << Home.ReportText();
    EXPECT_TRUE(Home.HasProgram("SIDE"));
    EXPECT_TRUE(Home.HasProgram("SECOND"));
}

TEST_F(GivenNames, TheFolderOfTheJobHoldsWhateverTheTextsSay)
{
    const std::string out = FolderPath("OUT");
    std::ofstream(Home.Folder / "OUT" / "INDICE.PRG").close();
    for (const std::string name : {"SIDE", "..\\prg\\SIDE", "C:\\SIDE"}) {
        fs::remove_all(Home.Folder / "OUT" / "SRG");
        for (const std::string& output : {out, out + "FRONT"}) {
            ASSERT_TRUE(Home.Convert(Named(name), "DOOR.DXF", output)) << Home.ReportText();
            EXPECT_TRUE(fs::exists(Home.Folder / "OUT" / "SRG" / "S" / "IDE")) << name << Home.ReportText();
            ASSERT_TRUE(Home.Convert(Told(name), "DOOR.DXF", output)) << Home.ReportText();
        }
    }
    EXPECT_FALSE(fs::exists(Home.Programs / "SRG"));
}

TEST_F(GivenNames, CharactersThatNoFileCanHaveBecomeUnderscoresAndAreReportedOnce)
{
    Run.ControlType = Genesis;
    const std::string drawing =
        Panel(Instructions({"NAME=a<b"}) + TextAt("NAME", 0, 0, "x\"y") + TextAt("NAME", 0, 0, "s\x01t|u"));
    ASSERT_TRUE(Home.Convert(drawing)) << Home.ReportText();
    EXPECT_TRUE(fs::exists(Home.Programs / "s_t_u")) << Home.ReportText();
    EXPECT_EQ(RowsThatBegin("No file can have the name"), 1) << Home.ReportText();
    EXPECT_TRUE(Home.Reported("No file can have the name a<b; it is called a_b"));
    EXPECT_EQ(LastProgram.FileName, "s_t_u") << "as a viewer's command line has it";
    EXPECT_EQ(Run.PartName, "s_t_u");
    ASSERT_TRUE(Home.Convert(Named("x\"y"))) << Home.ReportText();
    EXPECT_EQ(RowsThatBegin("No file can have the name"), 1) << "for each drawing anew";
}

TEST_F(GivenNames, ACleanNameIsReportedAsEver)
{
    ASSERT_TRUE(Home.Convert(Told("SIDE"))) << Home.ReportText();
    EXPECT_TRUE(Home.Reported("SIDE  Assigned in drawing"));
    EXPECT_EQ(RowsThatBegin("No file"), 0);
    EXPECT_EQ(RowsThatBegin("NAME names"), 0);
}

TEST_F(GivenNames, DevicesOfWindowsAreNoPrograms)
{
    for (const Int system : {Genesis, Evolution}) {
        std::ofstream(Home.Folder / "EvHeader.dat", std::ios::binary) << "A\rB\rC\rD\rE\r";
        Run.ControlType = system;
        ASSERT_TRUE(Home.Convert(Named("NUL"))) << Home.ReportText();
        EXPECT_TRUE(Home.Reported("No file can have the name NUL; it is called NUL_")) << Home.ReportText();
        EXPECT_TRUE(fs::exists(Home.Programs / (system == Genesis ? "NUL_" : "NUL_.CNC")))
            << Home.ReportText();
        EXPECT_EQ(RowsThatBegin("No file can have the name"), 1) << Home.ReportText();
    }
}

TEST_F(GivenNames, UnderAnIndexTheFilesNameIsBehindTheFirstCharacter)
{
    const std::pair<const char*, const char*> rows[] = {
        {"ICON", "SRG/I/CON_"}, {"NUL", "SRG/N/UL_"}, {"CONE", "SRG/C/ONE"}};
    for (const auto& [name, place] : rows) {
        ASSERT_TRUE(Home.Convert(Named(name))) << Home.ReportText();
        EXPECT_TRUE(fs::exists(Home.Programs / place)) << name << Home.ReportText();
    }
}

TEST_F(GivenNames, ThePortionOfAProgramIsNoDeviceEither)
{
    Run.ControlType = Genesis;
    Config.LineLimit = "200";
    std::string bores;
    for (int i = 0; i < 250; ++i)
        bores += Circle("VBORE Z9", 20 + 2 * i, 70, 2);
    ASSERT_TRUE(
        Home.Convert(Drawing(TextAt("NAME", 0, 0, "COM") + Rectangle("BORDER", 10, 20, 600, 400) + bores)))
        << Home.ReportText();
    EXPECT_TRUE(fs::exists(Home.Programs / "COM1_")) << Home.ReportText();
    EXPECT_TRUE(fs::exists(Home.Programs / "COM2_"));
    EXPECT_FALSE(fs::exists(Home.Programs / "COM1"));
}

TEST_F(GivenNames, NoProgramReplacesAFileOfTheInstallation)
{
    const std::string settings = "[Configuration]\r\nSawKerf=4\r\n";
    DestinationPath(Genesis) = ExeFolder;
    for (const std::string file : {"KV90.INI", "DT.Par", "KVHBD.cfg", "INDICE.PRG", "readme"}) {
        if (file == "readme") // the same folder under another name
            DestinationPath(Genesis) = ExeFolder + "prg\\..\\";
        Home.Write(file, settings);
        Run.ControlType = Genesis;
        EXPECT_FALSE(Home.Convert(Named(file))) << Home.ReportText();
        EXPECT_EQ(Home.Read(Home.Folder / file), settings) << file;
        EXPECT_TRUE(Home.Reported(ShownPath(DestinationPath(Genesis) + file) +
                                  ": a file of Korvanti itself or of the control; it is not replaced"))
            << Home.ReportText();
    }
    for (int round = 0; round < 2; ++round) { // a program of its own it may replace
        Run.ControlType = Genesis;
        EXPECT_TRUE(Home.Convert(Named("SIDE"))) << Home.ReportText();
    }
    EXPECT_TRUE(BeginsWith(Home.Read(Home.Folder / "SIDE"), "G71X600"));
}

TEST_F(GivenNames, TheSettingsOfAnyFolderAreNoProgram)
{
    std::ofstream(Home.Programs / "KV90.INI") << "of another installation";
    Run.ControlType = Genesis;
    EXPECT_FALSE(Home.Convert(Named("kv90.ini"))) << Home.ReportText();
    EXPECT_EQ(Home.Read(Home.Programs / "KV90.INI"), "of another installation");
}

class GivenLists : public GivenNames {
  protected:
    GivenLists()
    {
        Config.PtsFields[1] = "NAME";
        Config.PtsFieldCount = 1;
        Config.PTSPath = FolderPath("LISTS");
        Config.PTSName = "PARTS";
    }
    bool ConvertWith(const std::vector<std::string>& lines)
    {
        return Home.Convert(Panel(Instructions(lines)));
    }
    std::set<std::string> Lists() const
    {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(Home.Folder / "LISTS"))
            if (!IsAgreement(entry.path()))
                names.insert(entry.path().filename().string());
        return names;
    }
};

TEST_F(GivenLists, FileNamesAListInTheFolderOfTheSettings)
{
    const std::string name = "PTS NAME=DOOR FRONT LEFT HAND";
    ASSERT_TRUE(ConvertWith({name, "PTS FILE=..\\prg\\KITCHEN"})) << Home.ReportText();
    ASSERT_TRUE(ConvertWith({name, "PTS FILE=C ON"})) << Home.ReportText();
    ASSERT_TRUE(ConvertWith({name, "PTS FILE=a?b"})) << Home.ReportText();
    ASSERT_TRUE(ConvertWith({name, "PTS =ELSEWHERE"})) << Home.ReportText();
    EXPECT_TRUE(Home.Reported("PTS without a field, passed over: PTS =ELSEWHERE")) << Home.ReportText();
    EXPECT_EQ(Lists(), (std::set<std::string>{"KITCHEN.PTS", "CON_.PTS", "a_b.PTS", "PARTS.PTS"}));
}

TEST_F(GivenLists, NoListReplacesAFileOfTheInstallation)
{
    Config.PTSPath = ExeFolder;
    for (const std::string file : {"KV90.INI", "DT.Par"}) {
        Home.Write(file, "as it was\r\n");
        EXPECT_FALSE(ConvertWith({"PTS NAME=DOOR FRONT LEFT HAND", "PTS FILE=" + file})) << Home.ReportText();
        EXPECT_EQ(Home.Read(Home.Folder / file), "as it was\r\n");
    }
}

} // namespace
} // namespace kv::test

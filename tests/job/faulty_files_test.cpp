// A file that is there and cannot be read fails the job with its name and the true cause, and is left as it
// is; a file that is not there does what it always did. A loop of links stands for what no person may
// read, since rights do not bind root.
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/paths.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"
#include "support/source_files.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

const std::string BarePanel = Rectangle("BORDERZ18", 0, 0, 600, 400);
const std::string PanelWithBore = Drawing(BarePanel + Circle("VBOREZ12", 100, 50, 4));
const std::string WordsOfALoop = "Too many levels of symbolic links";

class FaultyFiles : public testing::Test {
  protected:
    Scene Home;

    fs::path Door() const { return Home.Folder / "DOOR.DXF"; }
    static void Loop(const fs::path& place)
    {
        fs::remove(place);
        fs::create_directories(place.parent_path());
        fs::create_symlink(place.filename(), place);
    }
    // A failed job with one row about the file, in the words of the system.
    void ExpectTold(const fs::path& file, const std::string& cause)
    {
        const std::string line = file.string() + ": " + cause;
        EXPECT_TRUE(Home.ReportText().find(line) != std::string::npos) << line << "\n" << Home.ReportText();
        EXPECT_EQ(Home.ReportText().find("ot found"), std::string::npos) << Home.ReportText();
        EXPECT_EQ(Home.ReportText().find("NOT FOUND"), std::string::npos) << Home.ReportText();
        ASSERT_EQ(kv::Run.FailedFiles.size(), 2U); // element 0 is blank
        EXPECT_EQ(ShownPath(kv::Run.FailedFiles[1]), Door().string());
    }
};

TEST_F(FaultyFiles, SettingsThatCannotBeReadConvertNothingAndAreNotStored)
{
    Loop(Home.Folder / "KV90.INI");
    LoadAllSettings();
    EXPECT_EQ(SettingsFault.Cause, WordsOfALoop);
    DestinationPath(0) = FromHostPath(Home.Programs.string() + "/");
    EXPECT_FALSE(Home.Convert(PanelWithBore));
    ExpectTold(Home.Folder / "KV90.INI", WordsOfALoop);
    EXPECT_FALSE(Home.HasProgram());
    EXPECT_EQ(Home.Read(Home.Programs / "INDICE.PRG"), "");

    // It can be read again: still nothing is stored over what was never loaded.
    fs::remove(Home.Folder / "KV90.INI");
    Home.Write("KV90.INI", "[Configuration]\r\nSawKerf=7\r\n");
    ExchangeSettings(true);
    PutConfigValue("Optimizer", "1");
    SaveToolSubstitutions();
    EXPECT_EQ(Home.Read(Home.Folder / "KV90.INI"), "[Configuration]\r\nSawKerf=7\r\n");
    EXPECT_FALSE(Home.Convert(PanelWithBore));

    LoadAllSettings();
    EXPECT_TRUE(SettingsFault.Ok());
    EXPECT_EQ(Config.SawKerf, "7");
    DestinationPath(0) = FromHostPath(Home.Programs.string() + "/");
    EXPECT_TRUE(Home.Convert(PanelWithBore)) << Home.ReportText();
}

TEST_F(FaultyFiles, ADrawingOnALoopIsNotNotFound)
{
    Loop(Door());
    Home.Lines.clear();
    kv::Run.RunFailed = False;
    EXPECT_FALSE(Home.ConvertFile(Door()));
    ExpectTold(Door(), WordsOfALoop);
}

TEST_F(FaultyFiles, ATableOfDrillsThatCannotBeRead)
{
    Config.Optimizer = "1";
    Loop(Home.Folder / "DT.Par");
    EXPECT_FALSE(Home.Convert(PanelWithBore));
    ExpectTold(Home.Folder / "DT.Par", WordsOfALoop);
    fs::remove(Home.Folder / "DT.Par");
    EXPECT_TRUE(Home.Convert(PanelWithBore)) << "without the table";
}

TEST_F(FaultyFiles, ATableOfHorizontalToolsThatCannotBeRead)
{
    Config.MakeHBD = 1;
    Config.HBDDestinationPath = DestinationPath(0);
    SetHbdAvailable(true);
    Loop(Home.Folder / "KVHBD.cfg");
    EXPECT_FALSE(Home.Convert(PanelWithBore));
    ExpectTold(Home.Folder / "KVHBD.cfg", WordsOfALoop);
    fs::remove(Home.Folder / "KVHBD.cfg");
    EXPECT_TRUE(Home.Convert(PanelWithBore)) << "without the table\n" << Home.ReportText();
}

TEST_F(FaultyFiles, SortingThatCannotBeRead)
{
    Config.GenesisEV = true;
    kv::Run.ControlType = 2;
    Config.EvOptLR = true;
    fs::copy(SourceFolder / "examples" / "install" / "EvHeader.dat", Home.Folder / "EvHeader.dat");
    Loop(Home.Folder / "OptSettings.Dat");
    EXPECT_FALSE(Home.Convert(PanelWithBore));
    ExpectTold(Home.Folder / "OptSettings.Dat", WordsOfALoop);
}

TEST_F(FaultyFiles, AnEvolutionTemplateThatCannotBeRead)
{
    kv::Run.ControlType = 2;
    Loop(Home.Folder / "EvHeader.dat");
    EXPECT_FALSE(Home.Convert(PanelWithBore));
    ExpectTold(Home.Folder / "EvHeader.dat", WordsOfALoop);
    EXPECT_TRUE(Home.Boxes.empty()) << "not the box of a missing one";
}

TEST_F(FaultyFiles, ACutListThatCannotBeReadIsNotBegunAnew)
{
    Config.PtsFields[1] = "NAME";
    Config.PtsFieldCount = 1;
    Config.PTSPath = FromHostPath(Home.Folder.string() + "/");
    Config.PTSName = "CUTS";
    Loop(Home.Folder / "CUTS.PTS");
    EXPECT_FALSE(Home.Convert(Drawing(Instructions({"PTS NAME=DOOR"}) + BarePanel)));
    ExpectTold(Home.Folder / "CUTS.PTS", WordsOfALoop);
    EXPECT_TRUE(fs::is_symlink(Home.Folder / "CUTS.PTS"));
}

TEST_F(FaultyFiles, NotesThatCannotBeReadAreKept)
{
    const fs::path sorg = Home.Folder / "SORG";
    fs::create_directories(sorg);
    fs::copy(Home.Programs / "INDICE.PRG", sorg / "INDICE.PRG");
    DestinationPath(0) = FromHostPath(sorg.string() + "/");
    const fs::path notes = Home.Folder / "NOTE" / "NOC" / "D" / "OOR";
    Loop(notes);
    const std::string noted =
        Drawing(BarePanel + Circle("VBOREZ12", 100, 50, 4) + TextAt("CNCNOTES", 0, 0, "mind the veneer"));
    EXPECT_FALSE(Home.Convert(noted));
    ExpectTold(notes, WordsOfALoop);
    EXPECT_TRUE(fs::is_symlink(notes));
    fs::remove(notes);
    EXPECT_TRUE(Home.Convert(noted)) << Home.ReportText();
    EXPECT_TRUE(fs::exists(notes)) << "the drawing has notes";
}

TEST_F(FaultyFiles, AnIndexThatCannotBeReadIsNoMissingOne)
{
    Loop(Home.Programs / "INDICE.PRG");
    EXPECT_FALSE(Home.Convert(PanelWithBore));
    ExpectTold(Home.Programs / "INDICE.PRG", WordsOfALoop);
    EXPECT_FALSE(Home.HasProgram());
}

TEST_F(FaultyFiles, AProgramFolderOnALoopIsNoMissingOne)
{
    fs::create_symlink("loop", Home.Folder / "loop");
    DestinationPath(0) = FromHostPath((Home.Folder / "loop").string() + "/");
    EXPECT_FALSE(Home.Convert(PanelWithBore));
    EXPECT_NE(Home.ReportText().find(WordsOfALoop), std::string::npos) << Home.ReportText();
    EXPECT_EQ(Home.ReportText().find("not exist"), std::string::npos) << Home.ReportText();
}

} // namespace
} // namespace kv::test

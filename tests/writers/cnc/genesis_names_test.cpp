// GENESIS programs: names, places, and what an installation's folder changes.
#include "writers/cnc/genesis_names.h"

#include "writers/program_scene.h"

namespace kv {
namespace {

class GenesisProgram : public ProgramScene {
  protected:
    void SetUp() override
    {
        ProgramScene::SetUp();
        std::filesystem::create_directories(Folder / "GEN");
        Config.DestinationPathGen = PathOf("GEN\\");
        Run.ControlType = 1;
    }
    void WriteNamed(const std::string& name)
    {
        NewDrawing("DOOR");
        Run.PartName = name;
        AddBore();
        WriteCncProgram();
    }
};

TEST_F(GenesisProgram, ANameOfEightCharactersStays)
{
    EXPECT_EQ(GenesisFileName("Panel123", "Panel123"), "Panel123");
}

TEST_F(GenesisProgram, ALongNameHasAPointBehindItsEighthCharacter)
{
    EXPECT_EQ(GenesisFileName("PanelDoor12", "PanelDoor12"), "PANELDOO.R12");
    EXPECT_EQ(GenesisFileName("PANELDOOR123456", "PANELDOOR123456"), "PANELDOO.R12");
}

TEST_F(GenesisProgram, ANameWithAPointIsLeftAloneEvenWhenLong)
{
    EXPECT_EQ(GenesisFileName("Panel.door", "Panel.door"), "Panel.door");
    EXPECT_EQ(GenesisFileName("PanelDoor.Left", "PanelDoor.Left"), "PanelDoor.Le"); // the width
}

TEST_F(GenesisProgram, TheTestsLookAtTheWholeOutputName)
{
    EXPECT_EQ(GenesisFileName("C:\\OUT\\Door", "C:\\OUT\\Door"), "DOOR");
    EXPECT_EQ(GenesisFileName("C:\\A.B\\PanelDoor12", "C:\\A.B\\PanelDoor12"), "PanelDoor12");
    EXPECT_EQ(GenesisFileName("Panel123", "Panel1234"), "Panel1234"); // a portion's count is not counted
}

TEST_F(GenesisProgram, ItIsWrittenIntoItsFolderWithoutIndexHandOverOrNotes)
{
    Config.DestinationPathGen = PathOf("GEN\\");
    NewDrawing("PanelDoor12");
    Run.CncNotes = {"", "A"};
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(AllFiles(), (Texts{"GEN/PANELDOO.R12", "PROG/INDICE.PRG"}));
    EXPECT_EQ(Get("GEN/PANELDOO.R12"),
              FileOf({"G71X600Y400Z18T00N4L1", "G150(PanelDoor12)", "G81G90G55P5R54=8X100Y50Z12", "M2"}));
    EXPECT_EQ(Reported(), (Texts{"Processed in 2.5 Sec.", "Genesis", "CONVERSION COMPLETED.  4 Lines"}));
    EXPECT_EQ(Get("PROG/INDICE.PRG"), "");
    EXPECT_EQ(Run.ProgramFileName, "PANELDOO.R12");
    EXPECT_TRUE(ProgramList.empty());
}

TEST_F(GenesisProgram, AnOutputNameWithAFolderIsUsedAsItStands)
{
    std::filesystem::create_directories(Folder / "OUT");
    WriteNamed(PathOf("OUT\\PanelDoor12"));
    EXPECT_TRUE(Stands("OUT/PanelDoor12"));
    EXPECT_EQ(AllFiles(), (Texts{"OUT/PanelDoor12", "PROG/INDICE.PRG"}));
}

TEST_F(GenesisProgram, AllPortionsOfAnOutputNameWithAFolderGoToOneFile)
{
    std::filesystem::create_directories(Folder / "OUT");
    NewDrawing("DOOR");
    Run.PartName = PathOf("OUT\\DOOR");
    Config.LineLimit = "4";
    for (int i = 0; i < 4; ++i)
        VBores.Append(Bore(static_cast<Single>(i + 1), 0, 5, 8)); // lines 0 to 6
    WriteCncProgram();
    EXPECT_EQ(AllFiles(), (Texts{"OUT/DOOR", "PROG/INDICE.PRG"}));
    EXPECT_EQ(Get("OUT/DOOR"), FileOf({"G71X600Y400Z18T00N7L4", "G150(DOOR)", "G81G90G55P5R54=8X3Y0Z5",
                                       "G81G90G55P5R54=8X4Y0Z5", "M2"}));
    EXPECT_TRUE(WasReported("PORTION2 - " + ShownPath(PathOf("OUT\\DOOR2")) + " COMPLETED."));
}

TEST_F(GenesisProgram, PortionsOfAPlainNameAreFilesOfTheirOwn)
{
    NewDrawing("DOOR");
    Config.LineLimit = "4";
    for (int i = 0; i < 4; ++i)
        AddBore();
    WriteCncProgram();
    EXPECT_EQ(AllFiles(), (Texts{"GEN/DOOR1", "GEN/DOOR2", "PROG/INDICE.PRG"}));
}

TEST_F(GenesisProgram, AMissingFolderIsToldAndAbortsTheRun)
{
    Config.DestinationPathGen = PathOf("NOWHERE\\");
    WriteNamed("DOOR");
    EXPECT_EQ(Reported()[1], "ERROR: Destination Path Not Found.");
    EXPECT_EQ(Reported()[2], ShownPath(PathOf("NOWHERE\\DOOR")) + ": the folder does not exist");
    EXPECT_EQ(Reported().size(), 3U);
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_TRUE(Run.FailedFiles.empty());
}

TEST_F(GenesisProgram, NoFolderIsNeverTheCurrentOne)
{
    Config.DestinationPathGen = "";
    WriteNamed("DOOR");
    EXPECT_EQ(Reported()[1], "ERROR: Destination Path Not Found.");
    EXPECT_EQ(Run.RunFailed, True);
}

TEST_F(GenesisProgram, ADescriptionStandsWholeOnlyInAGenesisInstallation)
{
    const std::string description = "A DESCRIPTION OF EXACTLY 40 CHARACTERS!!";
    ASSERT_EQ(description.size(), 40U);
    const auto nameLine = [&] {
        NewDrawing("DOOR");
        Run.PartDescription = description;
        AddBore();
        WriteCncProgram();
        const std::string text = Get("GEN/DOOR");
        return text.substr(text.find("G150"), text.find(")") - text.find("G150") + 1);
    };
    EXPECT_EQ(nameLine(), "G150(" + description.substr(0, 25) + ")");
    ExeFolder = "C:\\Genesis\\Bin\\";
    EXPECT_EQ(nameLine(), "G150(" + description + ")");
}

TEST_F(GenesisProgram, CommentsAreKeptInAGenesisInstallation)
{
    Put("GEN/PANELDOO.R12", "*KEEP\r\n");
    WriteNamed("PanelDoor12");
    EXPECT_EQ(Get("GEN/PANELDOO.R12").find("*KEEP"), std::string::npos); // no index, so nothing is found

    Put("GEN/PANELDOO.R12", "*KEEP\r\n");
    ExeFolder = "C:\\GENESIS\\";
    WriteNamed("PanelDoor12");
    EXPECT_NE(Get("GEN/PANELDOO.R12").find("\r\n*KEEP\r\n"), std::string::npos);
}

} // namespace
} // namespace kv

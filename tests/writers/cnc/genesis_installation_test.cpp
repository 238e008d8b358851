// Two tests that are not the same: the control type of the drawing, and "GENESIS" in the path of the
// program's own folder. Each is tried without the other, and what neither changes.
#include "state/run.h"
#include "support/dxf.h"
#include "support/scene.h"
#include "writers/program_scene.h"

namespace kv {
namespace {

class GenesisInstallation : public ProgramScene {
  protected:
    void SetUp() override
    {
        ProgramScene::SetUp();
        std::filesystem::create_directories(Folder / "GEN");
        Config.DestinationPathGen = PathOf("GEN\\");
    }
    void WriteAs(Int controlType, const std::string& name = "DOOR")
    {
        NewDrawing(name);
        Run.ControlType = controlType;
        Run.PartDescription = Description;
        AddBore();
        WriteCncProgram();
    }
    static std::string LineOf(const std::string& text, int line)
    {
        std::size_t at = 0;
        for (; line > 0; --line)
            at = text.find("\r\n", at) + 2;
        return text.substr(at, text.find("\r\n", at) - at);
    }

    const std::string Description = "A DESCRIPTION OF EXACTLY 40 CHARACTERS!!";
    const std::string Whole = "G150(A DESCRIPTION OF EXACTLY 40 CHARACTERS!!)";
    const std::string Cut = "G150(A DESCRIPTION OF EXACTLY )";
};

TEST_F(GenesisInstallation, TheDescriptionFollowsTheInstallationNotTheControl)
{
    WriteAs(0);
    EXPECT_EQ(LineOf(Get("PROG/SRG/D/OOR"), 1), Cut);
    WriteAs(1);
    EXPECT_EQ(LineOf(Get("GEN/DOOR"), 1), Cut);
    ExeFolder = "D:\\apps\\MyGenesis2\\";
    WriteAs(0);
    EXPECT_EQ(LineOf(Get("PROG/SRG/D/OOR"), 1), Whole);
    WriteAs(1);
    EXPECT_EQ(LineOf(Get("GEN/DOOR"), 1), Whole);
}

TEST_F(GenesisInstallation, NamesAndPlacesFollowTheControlNotTheInstallation)
{
    ExeFolder = "C:\\GENESIS\\";
    WriteAs(0, "PanelDoor12");
    EXPECT_EQ(AllFiles(), (Texts{"PROG/INDICE.PRG", "PROG/SRG/P/ANELDOOR.12"}));
    EXPECT_EQ(Get("PROG/INDICE.PRG").size(), 82U);
    EXPECT_EQ(ProgramList.size(), 1U);
    ExeFolder = "C:\\KV90\\";
    WriteAs(1, "PanelDoor12");
    EXPECT_EQ(AllFiles(), (Texts{"GEN/PANELDOO.R12", "PROG/INDICE.PRG", "PROG/SRG/P/ANELDOOR.12"}));
    EXPECT_EQ(Get("PROG/INDICE.PRG").size(), 82U);
    EXPECT_EQ(ProgramList.size(), 1U);
}

TEST_F(GenesisInstallation, ItsCommentsComeFromTheFolderDirectly)
{
    ExeFolder = "C:\\GENESIS\\";
    Put("PROG/DOOR", "*DIRECT\r\n");
    Put("PROG/SRG/D/OOR", "*INDEXED\r\n");
    WriteAs(0);
    EXPECT_EQ(LineOf(Get("PROG/SRG/D/OOR"), 2), "*DIRECT");
    ExeFolder = "C:\\KV90\\";
    Put("PROG/SRG/D/OOR", "*INDEXED\r\n");
    WriteAs(0);
    EXPECT_EQ(LineOf(Get("PROG/SRG/D/OOR"), 2), "*INDEXED");
}

TEST_F(GenesisInstallation, ElsewhereAGenesisProgramLooksForItsCommentsUnderAnIndex)
{
    Put("GEN/DOOR", "*DIRECT\r\n");
    Put("GEN/SRG/D/OOR", "*INDEXED\r\n");
    WriteAs(1);
    EXPECT_EQ(LineOf(Get("GEN/DOOR"), 2), "G81G90G55P5R54=8X100Y50Z12"); // no index: neither is found
    Put("GEN/INDICE.PRG", "");
    WriteAs(1);
    EXPECT_EQ(LineOf(Get("GEN/DOOR"), 2), "*INDEXED");
    EXPECT_EQ(Get("GEN/INDICE.PRG"), ""); // read for that alone
}

TEST_F(GenesisInstallation, CommentsOfALongNameAreReadFromItsTwelveCharacters)
{
    ExeFolder = "C:\\GENESIS\\";
    Put("GEN/PANELDOO.R12", "*KEEP\r\n");
    WriteAs(1, "PanelDoor12345");
    EXPECT_EQ(LineOf(Get("GEN/PANELDOO.R12"), 2), "*KEEP");
}

TEST_F(GenesisInstallation, CommentsComeFromTheSettingsFolderWhateverTheOutputFolder)
{
    ExeFolder = "C:\\GENESIS\\";
    Put("GEN/DOOR", "*GEN\r\n");
    Put("OUT/DOOR", "*OUT\r\n");
    NewDrawing("DOOR");
    Run.ControlType = 1;
    Run.PartName = PathOf("OUT\\DOOR.1");
    Put("GEN/DOOR.1", "*POINT\r\n");
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LineOf(Get("OUT/DOOR.1"), 2), "*POINT");
}

TEST_F(GenesisInstallation, NeitherHandOverNorNotesAreMade)
{
    Config.DestinationPathGen = PathOf("CNC90\\");
    Put("CNC90/INDICE.PRG", "");
    Put("TMP/Navetta.cmd", "OLD");
    SetVariable("DIRTMP", (Folder / "TMP").string());
    NewDrawing("DOOR");
    Run.ControlType = 1;
    Run.CncNotes = {"", "A NOTE"};
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(Get("TMP/Navetta.cmd"), "OLD");
    EXPECT_EQ(Get("CNC90/INDICE.PRG"), "");
    EXPECT_EQ(AllFiles(), (Texts{"CNC90/DOOR", "CNC90/INDICE.PRG", "PROG/INDICE.PRG", "TMP/Navetta.cmd"}));
    EXPECT_EQ(Reported(), (Texts{"Processed in 2.5 Sec.", "Genesis", "CONVERSION COMPLETED.  4 Lines"}));
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(GenesisInstallation, BlocksAndHeaderAreThoseOfTheOtherControl)
{
    for (const Int controlType : {Int{0}, Int{1}}) {
        ResetWriters();
        NewDrawing("DOOR");
        Run.ControlType = controlType;
        AddBore();
        AddHBore(1);
        AddGroove();
        WriteCncProgram();
    }
    EXPECT_EQ(Get("GEN/DOOR"), Get("PROG/SRG/D/OOR"));
    EXPECT_EQ(LineOf(Get("GEN/DOOR"), 0), "G71X600Y400Z18T00N6L3");
}

TEST_F(GenesisInstallation, TheCountOfALongNamesPortionsFallsOffItsTwelfthCharacter)
{
    Config.LineLimit = "4";
    NewDrawing("PanelDoor12");
    Run.ControlType = 1;
    for (int i = 0; i < 4; ++i)
        VBores.Append(Bore(static_cast<Single>(i + 1), 0, 5, 8));
    WriteCncProgram();
    EXPECT_EQ(AllFiles(), (Texts{"GEN/PANELDOO.R12", "PROG/INDICE.PRG"})); // the second over the first
    EXPECT_EQ(LineOf(Get("GEN/PANELDOO.R12"), 2), "G81G90G55P5R54=8X3Y0Z5");
    EXPECT_TRUE(WasReported("PORTION1 - PanelDoor121 COMPLETED."));
    EXPECT_TRUE(WasReported("PORTION2 - PanelDoor122 COMPLETED."));
    EXPECT_EQ(Run.ProgramFileName, "PANELDOO.R12");
}

TEST_F(GenesisInstallation, TheLineLimitAppliesToBothControls)
{
    for (const Int controlType : {Int{0}, Int{1}}) {
        ForgetReport();
        Config.LineLimit = "4";
        NewDrawing("DOOR");
        Run.ControlType = controlType;
        for (int i = 0; i < 4; ++i)
            AddBore();
        WriteCncProgram();
        EXPECT_TRUE(WasReported("Breaking up into multiples...")) << controlType;
    }
}

TEST(GenesisDrawing, TheBordersFlagMakesAGenesisProgram)
{
    test::Scene place;
    std::filesystem::create_directories(place.Folder / "gen");
    DestinationPath(1) = FromHostPath((place.Folder / "gen").string() + "/");
    ASSERT_TRUE(place.Convert(
        test::Drawing(test::Rectangle("BORDER GE", 0, 0, 600, 400) + test::Circle("VBORE D5Z12", 64, 50, 4)),
        "PANELDOOR12.DXF"))
        << place.ReportText();
    EXPECT_EQ(
        place.Read(place.Folder / "gen" / "PANELDOO.R12"),
        FileOf({"G71X600Y400Z0T00N4L1", "G150(KORVANTI DXF IMPORT)", "G81G90G55P5R54=5X64Y50Z12", "M2"}));
    EXPECT_FALSE(place.HasProgram("PANELDOOR12"));
    EXPECT_TRUE(place.Reported("Genesis"));
}

} // namespace
} // namespace kv

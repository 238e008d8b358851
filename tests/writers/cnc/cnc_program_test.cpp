// The program as a whole: header, name line, comments, offsets, sequence, report, and what outlives a
// drawing.
#include <limits>

#include "writers/program_scene.h"

namespace kv {
namespace {

class CncProgramFile : public ProgramScene {
  protected:
    Texts LinesOf(const std::string& file = "PROG/SRG/D/OOR")
    {
        Texts lines;
        std::string text = Get(file);
        for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n")) {
            lines.push_back(text.substr(0, end));
            text.erase(0, end + 2);
        }
        EXPECT_EQ(text, "");
        return lines;
    }
    std::string LineOf(std::size_t number)
    {
        const Texts lines = LinesOf();
        return number < lines.size() ? lines[number] : std::string("no such line");
    }
};

TEST_F(CncProgramFile, ADrilledPanelByteForByte)
{
    AddBore();
    VBores[1].Feed = 3000;
    WriteCncProgram();
    EXPECT_EQ(Get("PROG/SRG/D/OOR"),
              FileOf({"G71X600Y400Z18T00N4L1", "G150(DOOR)", "G81G90F3000G55P5R54=8X100Y50Z12", "M2"}));
    EXPECT_EQ(Reported(),
              (Texts{"Processed in 2.5 Sec.", "CNC90/WINNER90", "CONVERSION COMPLETED.  4 Lines"}));
    EXPECT_EQ(MeterValue(Meter::PgmCode), 100);
    EXPECT_EQ(Run.RunFailed, False);
    EXPECT_EQ(Run.ProgramFileName, "DOOR");
    EXPECT_EQ(ProgramList, Texts{"DOOR"});
}

TEST_F(CncProgramFile, ADrawingWithoutOperationsGivesNoFile)
{
    WriteCncProgram();
    EXPECT_EQ(Reported(), Texts{" No Selected Operations found for PTP"});
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
    EXPECT_EQ(Get("PROG/INDICE.PRG"), "");
    EXPECT_EQ(Run.RunFailed, False);
}

TEST_F(CncProgramFile, TheHeaderNamesUnitOutfitAndFlags)
{
    Run.DrawingInInch = True;
    Run.SideWidth[5] = 23.62205F;
    Run.PartThickness = 0.75F;
    Run.Outfit = 12;
    Run.FlagMask = 5;
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LineOf(0), "G70X23.622Y400Z.75T12F5N4L1");
}

TEST_F(CncProgramFile, AnOutfitOfThreeDigitsKeepsTheLastTwo)
{
    Run.Outfit = 123;
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LineOf(0), "G71X600Y400Z18T23N4L1");
}

TEST_F(CncProgramFile, TheDescriptionIsCutAtTwentyFive)
{
    Run.PartDescription = "A DESCRIPTION OF 30 CHARACTERS";
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LineOf(1), "G150(A DESCRIPTION OF 30 CHARA)");
}

TEST_F(CncProgramFile, ABlankDescriptionIsFilledIn)
{
    Run.PartDescription = "  ";
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LineOf(1), "G150(KORVANTI DXF IMPORT)");
    EXPECT_EQ(Run.PartDescription, "KORVANTI DXF IMPORT");
}

TEST_F(CncProgramFile, VariablesFollowTheDescription)
{
    Run.HasVars = True;
    Run.VarNames = {"", "A", "V1", "", "RX"};
    Run.VarValues = {"", "100.5", "d+1", "", "=z"};
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LineOf(1), "G150(DOOR)A100.5V1=d+1 RX=z");
}

TEST_F(CncProgramFile, VariablesOfALowerCaseLetterAloneHaveTheSignAndTheBlank)
{
    Run.HasVars = True;
    Run.VarNames = {"", "A", "B", "C"};
    Run.VarValues = {"", "a", "z", "{"};
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LineOf(1), "G150(DOOR)A=a B=z C{");
}

TEST_F(CncProgramFile, OffsetsAreWrittenFromZToXWithAFixedWord)
{
    Run.OriginRight = True;
    Run.OffsetX = 10.125F;
    Run.OffsetZ = -0.5F;
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LineOf(2), "G92G54P5Z-.5X10.125"); // not rounded
    EXPECT_EQ(LineOf(3), "G81G90G57P5R54=8X100Y50Z12");
}

TEST_F(CncProgramFile, GCodeTextsStandAsTheyAreInTheirPlaces)
{
    Run.GCode1 = {"", "G4 X 2"};
    Run.GCode2 = {"", "M21 A"};
    Run.GCode3 = {"", "M22 B"};
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LinesOf(), (Texts{"G71X600Y400Z18T00N7L4", "G150(DOOR)", "G4 X 2", "G81G90G55P5R54=8X100Y50Z12",
                                "M21 A", "M22 B", "M2"}));
}

TEST_F(CncProgramFile, EachOriginHasItsOffsetWord)
{
    const struct {
        Int Right, Top;
        const char* Origin;
        const char* Word;
        Int TopBehind;
    } rows[] = {
        {False, True, "", "G54", True},  {False, False, "0", "G55", False}, {True, True, "x", "G56", True},
        {True, False, "", "G57", False}, {False, True, "1", "G55", False},  {False, False, "-1", "G54", True},
        {True, True, "1", "G57", False}, {True, False, ".5", "G56", True},
    };
    for (const auto& row : rows) {
        NewDrawing("DOOR");
        AddBore();
        Run.OriginRight = row.Right;
        Run.OriginTop = row.Top;
        Config.Origin = row.Origin;
        WriteCncProgram();
        EXPECT_EQ(LineOf(2), std::string("G81G90") + row.Word + "P5R54=8X100Y50Z12");
        EXPECT_EQ(Run.OriginTop, row.TopBehind);
    }
}

TEST_F(CncProgramFile, TheSequenceOfTheSettingOrdersTheBlocks)
{
    AddBore();
    AddGroove();
    AddHBore(1);
    Run.GCode2 = {"", "M21"};
    Config.Sequence = "RHGV";
    WriteCncProgram();
    const Texts expected{"M21", "G81G90G55P1R54=8X50Y9Z30", "G85G55P5T0160X10Y20Z8Q590",
                         "G81G90G55P5R54=8X100Y50Z12", "M2"};
    const Texts lines = LinesOf();
    EXPECT_EQ(Texts(lines.begin() + 2, lines.end()), expected);
}

TEST_F(CncProgramFile, TheSequenceOfTheDrawingWinsAndIsUsedUp)
{
    AddBore();
    AddHBore(1);
    Config.Sequence = "VGHR";
    Run.SequenceName = "HV  ";
    WriteCncProgram();
    EXPECT_EQ(LineOf(2).substr(8, 4), "5P1R");
    EXPECT_EQ(Run.SequenceName, "");
}

TEST_F(CncProgramFile, ASequenceOfOtherThanFourCharactersFallsBack)
{
    AddBore();
    AddHBore(1);
    Run.SequenceName = "HV";
    WriteCncProgram();
    EXPECT_EQ(LineOf(2), "G81G90G55P5R54=8X100Y50Z12");
}

TEST_F(CncProgramFile, ALetterGivenTwiceRunsItsBlockTwice)
{
    AddBore();
    AddGroove();
    Config.Sequence = "VVxR";
    WriteCncProgram();
    EXPECT_EQ(LinesOf(), (Texts{"G71X600Y400Z18T00N5L2", "G150(DOOR)", "G81G90G55P5R54=8X100Y50Z12",
                                "G81G90G55P5R54=8X100Y50Z12", "M2"}));
}

TEST_F(CncProgramFile, OnlyFourLettersOfTheSettingCount)
{
    AddBore();
    Config.Sequence = "GHRxV";
    WriteCncProgram();
    EXPECT_EQ(Reported(), Texts{" No Selected Operations found for PTP"});
}

TEST_F(CncProgramFile, ARowAlongYLeavesAnEmptyLineInTheFile)
{
    HeadPosition row;
    row.Tool = "0102";
    row.ChainSize = 2;
    row.Direction = -1;
    row.EndY = 32;
    row.Depth = 12;
    HeadPositions.Append(row);
    WriteCncProgram();
    EXPECT_EQ(Get("PROG/SRG/D/OOR"),
              FileOf({"G71X600Y400Z18T00N5L2", "G150(DOOR)", "", "G184G90G55P5T010102X0Y0Z12J32", "M2"}));
}

TEST_F(CncProgramFile, CommentsOfTheOldProgramAreKeptBehindTheNameLine)
{
    Put("PROG/SRG/D/OOR", "G71X1\r\n  * Oak only  \r\n- second "
                          "clamp\r\nG81\r\nx\r\nx\r\nx\r\nx\r\nx\r\n*tenth\r\n*eleventh\r\n");
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LinesOf(), (Texts{"G71X600Y400Z18T00N7L4", "G150(DOOR)", "* OAK ONLY", "- SECOND CLAMP",
                                "*TENTH", "G81G90G55P5R54=8X100Y50Z12", "M2"}));
}

TEST_F(CncProgramFile, CommentsSurviveEveryFurtherConversion)
{
    Put("PROG/SRG/D/OOR", "* OAK ONLY\r\n");
    for (int i = 0; i < 3; ++i) {
        NewDrawing("DOOR");
        AddBore();
        WriteCncProgram();
        EXPECT_EQ(LineOf(2), "* OAK ONLY");
        EXPECT_EQ(LinesOf().size(), 5U);
    }
}

TEST_F(CncProgramFile, CommentsAreLookedForInTheFirstThousandBytes)
{
    Put("PROG/SRG/D/OOR", std::string(993, 'x') + "\r\n*abcdefgh\r\n");
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LineOf(2), "*ABCD");
}

TEST_F(CncProgramFile, AProgramOfOneCharacterNeverFindsItsComments)
{
    NewDrawing("D");
    Put("PROG/SRG/00/D", "*OLD\r\n");
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LinesOf("PROG/SRG/00/D")[2], "G81G90G55P5R54=8X100Y50Z12");
}

TEST_F(CncProgramFile, CommentsComeFromTheFolderOfTheSettingsWhateverTheOutputFolder)
{
    Put("OUT/INDICE.PRG", "");
    Put("OUT/SRG/D/OOR", "*OUT\r\n");
    Put("PROG/SRG/D/OOR", "*PROG\r\n");
    Run.PartName = PathOf("OUT\\DOOR");
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LinesOf("OUT/SRG/D/OOR")[2], "*PROG");
}

TEST_F(CncProgramFile, AnOutputNameThatIsAFolderTakesTheSourcesNameAndItsComments)
{
    Put("OUT/INDICE.PRG", "");
    Put("OUT/SRG/D/OOR", "*OUT\r\n");
    Run.PartName = PathOf("OUT\\");
    Run.SourceName = "door.dxf";
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(LinesOf("OUT/SRG/D/OOR")[2], "*OUT");
    EXPECT_EQ(ProgramList, Texts{"DOOR"});
}

TEST_F(CncProgramFile, OutputFlagsAndSpeedOutliveTheDrawing)
{
    AddBore();
    VBores[1].Speed = 6000;
    AddHBore(2);
    WriteCncProgram();
    EXPECT_EQ(static_cast<unsigned char>(Get("PROG/INDICE.PRG")[72]), 0xB2);

    // Without operations, and yet a short program: the flags accumulate.
    NewDrawing("SIDE");
    WriteCncProgram();
    EXPECT_EQ(Get("PROG/SRG/S/IDE"), FileOf({"G71X600Y400Z18T00N3L0", "G150(SIDE)", "M2"}));
    const std::string index = Get("PROG/INDICE.PRG");
    EXPECT_EQ(static_cast<unsigned char>(index[82 + 72]), 0xB2); // the mask too
    EXPECT_EQ(index[82 + 74], 'S');                              // the horizontal flag does not

    NewDrawing("BACK");
    HeadPosition stop;
    stop.Tool = "01";
    stop.ChainSize = 1;
    HeadPositions.Append(stop);
    WriteCncProgram();
    EXPECT_EQ(LinesOf("PROG/SRG/B/ACK")[2], "G81G90G55P5T0101S6000X0Y0Z0");
}

TEST_F(CncProgramFile, HorizontalBoresAloneLeaveNothingForTheNextDrawing)
{
    AddHBore(1);
    WriteCncProgram();
    NewDrawing("SIDE");
    WriteCncProgram();
    EXPECT_FALSE(Stands("PROG/SRG/S/IDE"));
    EXPECT_TRUE(WasReported(" No Selected Operations found for PTP"));
}

TEST_F(CncProgramFile, ASubstitutionIsToldWithEveryLaterDrawing)
{
    Config.ToolSubData = {{"1", "60", "62"}};
    AddGroove();
    WriteCncProgram();
    EXPECT_EQ(LineOf(2), "G85G55P5T0162X10Y20Z8Q590");
    EXPECT_EQ(Reported().front(), "Tool Substitution Made.");
    ForgetReport();
    NewDrawing("SIDE");
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(Reported().front(), "Tool Substitution Made.");
}

TEST_F(CncProgramFile, SecondsAreRoundedAsCoordinatesAre)
{
    Run.RunStartTime = 1002.25F;
    Config.PrecisionMetric = "1";
    AddBore();
    WriteCncProgram();
    EXPECT_EQ(Reported().front(), "Processed in .3 Sec.");
}

TEST_F(CncProgramFile, AnAbortWritesNothing)
{
    AddBore();
    Run.RunState = 1;
    WriteCncProgram();
    EXPECT_EQ(Reported(), Texts{" USER ABORTED"}); // shown trimmed and centred
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_TRUE(Run.FailedFiles.empty());
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
}

TEST_F(CncProgramFile, AnOverflowIsErrorSixAndTheRunGoesOn)
{
    AddBore();
    VBores[1].X = std::numeric_limits<Single>::infinity();
    WriteCncProgram();
    ASSERT_EQ(Reported().size(), 2U);
    EXPECT_EQ(Reported()[0], "Unable to Process file. 6");
    EXPECT_EQ(Reported()[1].find(ShownPath(Run.SourceFile) + ": "), 0U);
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(Run.FailedFiles, (Texts{"", Run.SourceFile}));
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
}

TEST_F(CncProgramFile, ADepthCodeAboveTheCharactersIsErrorFive)
{
    AddBore();
    VBores[1].Depth = 300;
    WriteCncProgram();
    EXPECT_EQ(Reported()[0], "Unable to Process file. 5");
    EXPECT_NE(Reported()[1].find("300"), std::string::npos);
}

TEST_F(CncProgramFile, AProgramWithoutNameIsAPathThatIsNotFound)
{
    for (const std::string name : {"", "  ", "OUT\\ "}) {
        NewDrawing("DOOR");
        Run.PartName = name;
        AddBore();
        WriteCncProgram();
        EXPECT_TRUE(WasReported("Unable to Find Destination Path"));
        EXPECT_EQ(Run.RunFailed, True);
        EXPECT_EQ(Get("PROG/INDICE.PRG"), "");
        ForgetReport();
    }
}

TEST_F(CncProgramFile, DrillingsAndRoutesAlternateBySettingOrByDrawing)
{
    const auto convert = [&](const std::string& name) {
        NewDrawing(name);
        VBoreRecord router = Bore(1, 1, 5, 0);
        router.Tool = "70";
        VBores.Append(router);
        router.Tool = "71";
        VBores.Append(router);
        AddBore();
    };
    convert("PLAIN");
    WriteCncProgram();
    EXPECT_EQ(LinesOf("PROG/SRG/P/LAIN")[4].substr(0, 3), "G81");
    convert("BYDRAWING");
    Run.DrAlt = True;
    WriteCncProgram();
    EXPECT_EQ(LinesOf("PROG/SRG/B/YDRAWING")[3].substr(0, 3), "G81");
    convert("BYSETTING");
    Config.DRAlternate = "1";
    WriteCncProgram();
    EXPECT_EQ(LinesOf("PROG/SRG/B/YSETTING")[3].substr(0, 3), "G81");
}

} // namespace
} // namespace kv

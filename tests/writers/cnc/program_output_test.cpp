// Portions of long programs, their names, and the text of a file.
#include "writers/program_file.h"
#include "writers/program_scene.h"

namespace kv {
namespace {

class Portions : public ProgramScene {
  protected:
    void SetUp() override
    {
        ProgramScene::SetUp();
        Config.LineLimit = "6";
    }
    static void AddBores(int count)
    {
        for (int i = 1; i <= count; ++i)
            VBores.Append(Bore(static_cast<Single>(i), 50, 12, 8));
    }
    static std::string BoreLine(int i) { return "G81G90G55P5R54=8X" + std::to_string(i) + "Y50Z12"; }
};

TEST_F(Portions, AProgramOfExactlyTheLimitStaysWhole)
{
    AddBores(4); // lines 0 to 6
    WriteCncProgram();
    EXPECT_TRUE(Stands("PROG/SRG/D/OOR"));
    EXPECT_TRUE(WasReported("CONVERSION COMPLETED.  7 Lines"));
}

TEST_F(Portions, EachHasTheWholeProgramsHeaderAndEndsWithM2)
{
    AddBores(10); // lines 0 to 12
    WriteCncProgram();
    const std::string head = "G71X600Y400Z18T00N13L10";
    const std::string name = "G150(DOOR)";
    EXPECT_EQ(Get("PROG/SRG/D/OOR1"),
              FileOf({head, name, BoreLine(1), BoreLine(2), BoreLine(3), BoreLine(4), "M2"}));
    EXPECT_EQ(Get("PROG/SRG/D/OOR2"),
              FileOf({head, name, BoreLine(5), BoreLine(6), BoreLine(7), BoreLine(8), BoreLine(9), "M2"}));
    EXPECT_EQ(Get("PROG/SRG/D/OOR3"), FileOf({head, name, BoreLine(10), "M2"}));
    EXPECT_EQ(Reported(), (Texts{"Processed in 2.5 Sec.", "Breaking up into multiples...",
                                 "PORTION1 - DOOR1 COMPLETED.", "Breaking up into multiples...",
                                 "PORTION2 - DOOR2 COMPLETED.", "Breaking up into multiples...",
                                 "PORTION3 - DOOR3 COMPLETED.", "CONVERSION COMPLETED.  13 Lines"}));
    EXPECT_EQ(Get("PROG/INDICE.PRG").size(), 3 * 82U);
    EXPECT_EQ(ProgramList, (Texts{"DOOR1", "DOOR2", "DOOR3"}));
}

TEST_F(Portions, RowsOfTheHeadAreNoPlacesToCut)
{
    HeadPosition row;
    row.Tool = "0102";
    row.ChainSize = 2;
    row.Direction = 1;
    for (int i = 0; i < 10; ++i)
        HeadPositions.Append(row);
    WriteCncProgram();
    EXPECT_TRUE(WasReported("Breaking up into multiples..."));
    EXPECT_TRUE(WasReported("Too many segements in single route for portion"));
    EXPECT_TRUE(WasReported("Import Aborted"));
    EXPECT_FALSE(WasReported("CONVERSION COMPLETED.  13 Lines"));
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(Run.FailedFiles, (Texts{"", Run.SourceFile}));
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
}

TEST_F(Portions, ACutFallsBeforeTheOperationNotInsideItsLines)
{
    Run.GCode1 = {"", "A", "B"};
    AddBores(1); // H N A B bore
    Run.GCode2 = {"", "C", "D", "E", "F"};
    Config.LineLimit = "6";
    WriteCncProgram(); // lines: 0 H, 1 N, 2 A, 3 B, 4 bore, 5 C, 6 D, 7 E, 8 F, 9 M2
    EXPECT_EQ(Get("PROG/SRG/D/OOR1"), FileOf({"G71X600Y400Z18T00N10L7", "G150(DOOR)", "A", "B", "M2"}));
    EXPECT_EQ(Get("PROG/SRG/D/OOR2"),
              FileOf({"G71X600Y400Z18T00N10L7", "G150(DOOR)", BoreLine(1), "C", "D", "E", "F", "M2"}));
}

TEST_F(Portions, ALimitOfNothingCannotCutAndDoesNotHang)
{
    for (const std::string limit : {"", "0", "-5", "1"}) {
        NewDrawing("DOOR");
        AddBores(3);
        Config.LineLimit = limit;
        WriteCncProgram();
        EXPECT_EQ(Run.RunFailed, True) << limit;
        EXPECT_TRUE(WasReported("Too many segements in single route for portion")) << limit;
        ForgetReport();
    }
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
}

TEST_F(Portions, TheSmallestLimitThatCutsMakesAnEmptyPortionFirst)
{
    Config.LineLimit = "2";
    AddBores(2); // lines 0 to 4
    WriteCncProgram();
    EXPECT_EQ(Get("PROG/SRG/D/OOR1"), FileOf({"G71X600Y400Z18T00N5L2", "G150(DOOR)", "M2"}));
    EXPECT_EQ(Get("PROG/SRG/D/OOR2"), FileOf({"G71X600Y400Z18T00N5L2", "G150(DOOR)", BoreLine(1), "M2"}));
    EXPECT_EQ(Get("PROG/SRG/D/OOR3"), FileOf({"G71X600Y400Z18T00N5L2", "G150(DOOR)", BoreLine(2), "M2"}));
}

TEST_F(Portions, NamesOfTwelveCharactersKeepTheirLength)
{
    NewDrawing("CABINETDOOR9");
    AddBores(10);
    WriteCncProgram();
    EXPECT_EQ(ProgramList, (Texts{"CABINETDOOR1", "CABINETDOOR2", "CABINETDOOR3"}));
    EXPECT_TRUE(Stands("PROG/SRG/C/ABINETDO.OR2"));
}

TEST_F(Portions, EachDrawingCountsFromItsOwnName)
{
    AddBores(10);
    WriteCncProgram();
    const std::string first = Get("PROG/SRG/D/OOR1");
    NewDrawing("SIDE");
    AddBores(5);
    WriteCncProgram();
    EXPECT_EQ(Get("PROG/SRG/D/OOR1"), first);
    EXPECT_EQ(Get("PROG/SRG/S/IDE1").substr(0, 41), "G71X600Y400Z18T00N8L5\r\nG150(SIDE)\r\nG81G90");
    EXPECT_TRUE(WasReported("PORTION1 - SIDE1 COMPLETED."));
    EXPECT_EQ(ProgramList, (Texts{"DOOR1", "DOOR2", "DOOR3", "SIDE1", "SIDE2"}));
    EXPECT_EQ(Get("PROG/INDICE.PRG").size(), 5 * 82U);
}

TEST_F(Portions, TheNameWithItsFolderIsReported)
{
    Put("OUT/INDICE.PRG", "");
    Run.PartName = PathOf("OUT\\DOOR");
    AddBores(5);
    WriteCncProgram();
    EXPECT_TRUE(WasReported("PORTION1 - " + ShownPath(PathOf("OUT\\DOOR1")) + " COMPLETED."));
    EXPECT_TRUE(Stands("OUT/SRG/D/OOR1"));
}

TEST_F(Portions, AFailureStopsTheOnesThatFollow)
{
    Put("PROG/SRG/D/OOR2/in the way", "");
    AddBores(10);
    WriteCncProgram();
    EXPECT_TRUE(Stands("PROG/SRG/D/OOR1"));
    EXPECT_FALSE(Stands("PROG/SRG/D/OOR3"));
    EXPECT_TRUE(WasReported("75")); // a folder stands where the file belongs
    EXPECT_EQ(Run.RunFailed, True);
}

TEST(TextOfLines, EveryLineEndsInCarriageReturnAndLineFeed)
{
    EXPECT_EQ(TextOfLines({"A", "", "B"}), "A\r\n\r\nB\r\n");
    EXPECT_EQ(TextOfLines({}), "");
}

TEST(TextOfLines, LinesBehindTheTwentyFirstBufferAreDropped)
{
    // A line of 29999 and its end pass the 30000 of a buffer: one line a buffer.
    EXPECT_EQ(TextOfLines(Texts(21, std::string(29999, 'x'))).size(), 21 * 30001U);
    EXPECT_EQ(TextOfLines(Texts(30, std::string(29999, 'x'))).size(), 21 * 30001U);
    // Exactly 30000 do not pass it: the next line goes in too.
    EXPECT_EQ(TextOfLines(Texts(60, std::string(29998, 'x'))).size(), 42 * 30000U);
}

} // namespace
} // namespace kv

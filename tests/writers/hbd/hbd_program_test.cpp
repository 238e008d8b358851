// Programs of the horizontal drilling machine: the whole file, its fields and sides, the bores of the
// edge and their words. The panel is 600 by 400 by 18.
#include "state/run.h"
#include "writers/hbd/hbd_scene.h"

namespace kv {
namespace {

class HbdProgramFile : public HbdScene {};
class HbdEdgeBores : public HbdScene {};

TEST_F(HbdProgramFile, HoldsFieldsThenSides)
{
    HBores.Append(EdgeBore(1, 100, 30));
    AddFaceBore(100, 34, 13, 5);
    EXPECT_EQ(
        Written(),
        "TPA\\ALBATROS\\EDICAD\\00.00:1011:0;0\r\n$=DOOR\r\n\n::SIDE=1;5;\r\n::UNm DL=600 DH=400 DS=18\r\r\n"
        "VAR{\r\n}VAR\r\nOPTI{\r\n}OPTI\r\n"
        "SIDE#1{\r\n$=upper\r\n::LF=600 HF=400 SF=18\r\n"
        "W#82{ ::WTp\r\n#205=2 #1=100 #2=hf-34 #3=-13 #8015=0 #201=1 #1001=1 }W\r\n}SIDE\r\n"
        "SIDE#2{\r\n::LF=600 HF=400 SF=18\r\n}SIDE\r\n"
        "SIDE#3{\r\n::LF=600 HF=18 SF=400\r\n}SIDE\r\n"
        "SIDE#4{\r\n::LF=400 HF=18 SF=600\r\n}SIDE\r\n"
        "SIDE#5{\r\n$=Back\r\n::LF=600 HF=18 SF=400\r\nW#1501{ ::WT2\r\n"
        "#8020=100 #8021=9 #8022=-30 #8015=0 #1001=1 #1002=8 #8098=forspina.mcr #8117=1 #8132=1 #6=1 "
        "#8500=1\r\n"
        "#8501=0 #8502=0 #8525=1 #8526=1 #8530=1 #8531=1 #8532=0 }W\r\n}SIDE\r\n"
        "SIDE#6{\r\n::LF=400 HF=18 SF=600\r\n}SIDE\r\n\r\n");
}

TEST_F(HbdProgramFile, SidesAndSizesFollowTheEdge)
{
    for (const Long edge : {1, 2}) {
        HBores.Clear();
        HBores.Append(EdgeBore(edge, 100, 30));
        const std::string text = Written();
        EXPECT_NE(text.find("::UNm DL=600 DH=400 DS=18\r\r\n"), std::string::npos);
        EXPECT_EQ(SideOf(text, 1)[1], "::LF=600 HF=400 SF=18");
        EXPECT_EQ(SideOf(text, 2), (Texts{"::LF=600 HF=400 SF=18"}));
        EXPECT_EQ(SideOf(text, 3), (Texts{"::LF=600 HF=18 SF=400"}));
        EXPECT_EQ(SideOf(text, 4), (Texts{"::LF=400 HF=18 SF=600"}));
        EXPECT_EQ(SideOf(text, 5)[1], "::LF=600 HF=18 SF=400");
        EXPECT_EQ(SideOf(text, 6), (Texts{"::LF=400 HF=18 SF=600"}));
    }
    for (const Long edge : {3, 4}) {
        HBores.Clear();
        HBores.Append(EdgeBore(edge, 30, 100));
        const std::string text = Written();
        EXPECT_NE(text.find("::UNm DL=400 DH=600 DS=18\r\r\n"), std::string::npos);
        EXPECT_EQ(SideOf(text, 1)[1], "::LF=400 HF=600 SF=18");
        EXPECT_EQ(SideOf(text, 2), (Texts{"::LF=400 HF=600 SF=18"}));
        EXPECT_EQ(SideOf(text, 3), (Texts{"::LF=400 HF=18 SF=600"}));
        EXPECT_EQ(SideOf(text, 4), (Texts{"::LF=600 HF=18 SF=400"}));
        EXPECT_EQ(SideOf(text, 5)[1], "::LF=400 HF=18 SF=600");
        EXPECT_EQ(SideOf(text, 6), (Texts{"::LF=600 HF=18 SF=400"}));
    }
}

TEST_F(HbdProgramFile, AnEdgeFoundByABoreOfTheFaceTurnsThePanelAndSettlesItsSizes)
{
    AddFaceBore(30, 100);
    const std::string text = Written();
    EXPECT_NE(text.find("::UNm DL=400 DH=600 DS=18\r\r\n"), std::string::npos);
    EXPECT_EQ(SideOf(text, 5), (Texts{"$=Back"}));
    EXPECT_EQ(SideOf(text, 1)[1], "::LF=400 HF=600 SF=18");
    EXPECT_EQ(SideOf(text, 2), (Texts{"::LF=400 HF=600 SF=18"}));
    EXPECT_EQ(SideOf(text, 3), (Texts{"::LF=400 HF=18 SF=600"}));
    EXPECT_EQ(SideOf(text, 4), (Texts{"::LF=600 HF=18 SF=400"}));
    EXPECT_EQ(SideOf(text, 6), (Texts{"::LF=600 HF=18 SF=400"}));
    EXPECT_NE(text.find("\n\n::SIDE=1;5;\r"), std::string::npos); // side 5 holds its heading
}

TEST_F(HbdProgramFile, SizesOfAnEarlierDrawingAreForgotten)
{
    HBores.Append(EdgeBore(3, 30, 100));
    WriteHbdProgram();
    NewDrawing("NEXT");
    Run.SideWidth[5] = 900;
    AddFaceBore(300, 30);
    const std::string text = Written("NEXT");
    EXPECT_EQ(SideOf(text, 1)[1], "::LF=900 HF=400 SF=18");
    ResetWriters();
    NewDrawing("THIRD");
    Run.SideWidth[5] = 900;
    AddFaceBore(300, 30);
    const std::string name = "$=NEXT", fresh = "$=THIRD";
    std::string alone = Written("THIRD");
    ASSERT_NE(alone.find(fresh), std::string::npos);
    EXPECT_EQ(alone.replace(alone.find(fresh), fresh.size(), name), text);
}

TEST_F(HbdProgramFile, ASideThatIsNoEdgeHasNoSizes)
{
    HBores.Append(EdgeBore(1, 100, 30));
    WriteHbdProgram();
    NewDrawing("NEXT");
    Run.SideWidth[5] = 900;
    HBores.Append(EdgeBore(6, 100, 30));
    EXPECT_EQ(SideOf(Written("NEXT"), 5)[1], "::LF= HF= SF=");
}

TEST_F(HbdProgramFile, ABlankDescriptionBecomesTheConvertersName)
{
    Run.PartDescription = "  ";
    HBores.Append(EdgeBore(1, 100, 30));
    EXPECT_NE(Written().find("\r\n$=KORVANTI DXF IMPORT\r"), std::string::npos);
}

TEST_F(HbdProgramFile, AnInchPanelIsTold)
{
    Run.DrawingInInch = 1;
    Run.UnitFactor = 25.4F;
    Run.SideWidth[5] = 23.625F;
    HBores.Append(EdgeBore(1, 4, 1.25F));
    EXPECT_NE(Written().find("::UNi DL=23.625 DH=400 DS=18\r\r\n"), std::string::npos);
}

TEST_F(HbdProgramFile, RVariablesStandInTheirField)
{
    Run.HasVars = True;
    Run.VarNames = {"", "R12", "A", "R3"};
    Run.VarValues = {"", "7.5", "1", "4"};
    HBores.Append(EdgeBore(1, 100, 30));
    EXPECT_NE(Written().find("\r\nVAR{\r\n#12=7.5|7.5\r\n#3=4|4\r\n}VAR\r\n"), std::string::npos);
}

TEST_F(HbdProgramFile, APointAfterThePrecisionIsRounded)
{
    Run.SideWidth[5] = 600.126F;
    HBores.Append(EdgeBore(1, 100.126F, 0.126F, 9.126F));
    const Texts lines = EdgeLines();
    EXPECT_EQ(WordOf(lines, "#8020="), "#8020=100.13");
    EXPECT_EQ(WordOf(lines, "#8021="), "#8021=8.87");
    EXPECT_EQ(WordOf(lines, "#8022="), "#8022=-.13");
}

TEST_F(HbdEdgeBores, OfTheFirstBoresEdgeAloneAreWrittenAndTakenAway)
{
    HBores.Append(EdgeBore(4, 30, 100));
    HBores.Append(EdgeBore(2, 100, 30));
    HBores.Append(EdgeBore(4, 30, 200));
    const Texts lines = SideOf(Written(), 5);
    EXPECT_EQ(lines.size(), 2U + 2 * 3);
    EXPECT_EQ(HBores[1].Group, 0);
    EXPECT_EQ(HBores[2].Group, 1); // stays for the main writer
    EXPECT_EQ(HBores[3].Group, 0);
}

TEST_F(HbdEdgeBores, XAndYChangePlacesOnTheLeftAndRightEdge)
{
    const std::map<Long, Texts> expected = {{1, {"#8020=100", "#8022=-30"}},
                                            {2, {"#8020=100", "#8022=-30"}},
                                            {3, {"#8020=30", "#8022=-100"}},
                                            {4, {"#8020=30", "#8022=-100"}}};
    for (const auto& [side, words] : expected) {
        HBores.Clear();
        HBores.Append(EdgeBore(side, 100, 30));
        const Texts lines = EdgeLines();
        EXPECT_EQ(WordOf(lines, "#8020="), words[0]) << side;
        EXPECT_EQ(WordOf(lines, "#8022="), words[1]) << side;
    }
}

TEST_F(HbdEdgeBores, TheHeightCountsFromTheOtherFace)
{
    HBores.Append(EdgeBore(1, 100, 30, 4));
    EXPECT_EQ(WordOf(EdgeLines(), "#8021="), "#8021=14");
}

TEST_F(HbdEdgeBores, ANamedToolGoesBeforeTheTable)
{
    HBores.Append(EdgeBore(1, 100, 30));
    HBores[1].Tool = "03";
    const Texts lines = EdgeLines();
    EXPECT_EQ(WordOf(lines, "#8530="), "#8530=3");
    EXPECT_EQ(WordOf(lines, "#8531="), "#8531=0"); // row 3 glues and inserts nothing
    EXPECT_EQ(WordOf(lines, "#8532="), "#8532=1");
}

TEST_F(HbdEdgeBores, AToolOutsideTheTableHasEmptyWords)
{
    HBores.Append(EdgeBore(1, 100, 30));
    HBores[1].Tool = "61";
    const Texts lines = EdgeLines();
    EXPECT_EQ(lines[2], "#8501=0 #8502=0 #8525=1 #8526=1 #8530=61 #8531= #8532= }W");
}

TEST_F(HbdEdgeBores, TheToolIsFoundByTypeAndDiameterWithinAThousandth)
{
    const std::map<Single, std::string> expected = {
        {8.0F, "#8530=1"}, {8.0009F, "#8530=1"}, {7.9991F, "#8530=1"}, {10.0F, "#8530=3"}};
    for (const auto& [diameter, word] : expected) {
        HBores.Clear();
        HBores.Append(EdgeBore(1, 100, 30, 9, diameter));
        EXPECT_EQ(WordOf(EdgeLines(), "#8530="), word) << diameter;
    }
    for (const Single diameter : {8.0011F, 7.9989F, 5.0F, 4.0F, 12.0F}) { // 5 is vertical, 4 a saw
        HBores.Clear();
        HBores.Append(EdgeBore(1, 100, 30, 9, diameter));
        ForgetReport();
        WriteHbdProgram();
        EXPECT_EQ(HBores[1].Group, 1) << diameter;
        EXPECT_EQ(Reported(), (Texts{"HBD not indicated for \"DOOR\""})) << diameter;
    }
}

TEST_F(HbdEdgeBores, TheTableInHalfMillimetresIsComparedAsASingle)
{
    Put("KVHBD.cfg", "Horizontal\t8.2\t0\t0\r\nGroove\t4\t0\t0\r\n");
    HBores.Append(EdgeBore(1, 100, 30, 9, 8.2F));
    EXPECT_EQ(WordOf(EdgeLines(), "#8530="), "#8530=1");
}

TEST_F(HbdEdgeBores, TheToolInTheTablesLastRowIsNotFoundByItsDiameter)
{
    Put("KVHBD.cfg", "Vertical\t5\t0\t0\r\nHorizontal\t8\t0\t0\r\n");
    HBores.Append(EdgeBore(1, 100, 30));
    WriteHbdProgram();
    EXPECT_EQ(AllFiles(), (Texts{"KVHBD.cfg", "PROG/INDICE.PRG"}));
    Put("KVHBD.cfg", "Vertical\t5\t0\t0\r\nHorizontal\t8\t0\t0\r\n\r\n"); // an empty row behind it
    EXPECT_EQ(WordOf(EdgeLines(), "#8530="), "#8530=2");
}

TEST_F(HbdEdgeBores, TheToolInTheLastRowOfAFullTableIsFound)
{
    std::string table;
    for (int row = 1; row < 20; ++row)
        table += "\t\t0\t0\r\n";
    Put("KVHBD.cfg", table + "Horizontal\t8\t0\t0\r\n");
    HBores.Append(EdgeBore(1, 100, 30));
    EXPECT_EQ(WordOf(EdgeLines(), "#8530="), "#8530=20");
}

TEST_F(HbdEdgeBores, TheFirstHitEndsTheSearch)
{
    Put("KVHBD.cfg",
        "Groove\t8\t0\t0\r\nHorizontal\t8\t0\t1\r\nHorizontal\t8\t1\t0\r\nVertical\t8\t0\t0\r\n");
    HBores.Append(EdgeBore(1, 100, 30));
    EXPECT_EQ(WordOf(EdgeLines(), "#8530="), "#8530=2");
}

TEST_F(HbdEdgeBores, ABoreWithoutAToolIsSkippedAndTheNextOneMade)
{
    HBores.Append(EdgeBore(1, 100, 30, 9, 12));
    HBores.Append(EdgeBore(1, 200, 30));
    const Texts lines = SideOf(Written(), 5);
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(WordOf(lines, "#8020="), "#8020=200");
    EXPECT_EQ(HBores[1].Group, 1);
    EXPECT_EQ(HBores[2].Group, 0);
}

TEST_F(HbdEdgeBores, TheGroupIsNotAsked)
{
    HBores.Append(EdgeBore(1, 100, 30));
    HBores[1].Group = 0;
    EXPECT_EQ(EdgeLines().size(), 3U);
}

TEST_F(HbdEdgeBores, TheDiameterHasAZeroBeforeThePointAndIsLeftOutWhenZero)
{
    HBores.Append(EdgeBore(1, 100, 30, 9, 0.5F));
    HBores[1].Tool = "1";
    EXPECT_EQ(WordOf(EdgeLines(), "#1002="), "#1002=0.5");
    HBores[1].Diameter = 0;
    EXPECT_EQ(EdgeLines()[1], "#8020=100 #8021=9 #8022=-30 #8015=0 #1001=1 #8098=forspina.mcr #8117=1 "
                              "#8132=1 #6=1 #8500=1");
    HBores[1].Diameter = 8.126F; // not rounded
    EXPECT_EQ(WordOf(EdgeLines(), "#1002="), "#1002=8.126");
}

struct GlueRow {
    Int Bottom, GlueBox, DowelBox;
    std::string Words;
};

TEST_F(HbdEdgeBores, GlueAndDowelByTheBoresBottomOrTheBoxes)
{
    const std::string glued = "#8501=1 #8502=1", dowel = "#8501=1 #8502=0", plain = "#8501=0 #8502=0";
    const std::vector<GlueRow> rows = {
        {0, 0, 0, plain}, {1, 0, 0, plain}, {2, 0, 0, plain}, {3, 0, 0, plain},
        {4, 0, 0, dowel}, {5, 0, 0, glued}, {0, 1, 0, glued}, {0, 0, 1, dowel},
        {0, 1, 1, glued}, {3, 0, 1, dowel}, {4, 1, 0, glued}, {4, 0, 1, dowel},
        {4, 1, 1, glued}, {5, 1, 0, glued}, {5, 0, 1, glued}, {5, 1, 1, glued}};
    for (const GlueRow& row : rows) {
        HBores.Clear();
        HBores.Append(EdgeBore(1, 100, 30));
        HBores[1].Bottom = row.Bottom;
        Config.HBDGlue = row.GlueBox;
        Config.HBDDowel = row.DowelBox;
        const Texts lines = EdgeLines();
        ASSERT_EQ(lines.size(), 3U);
        EXPECT_TRUE(lines[2].starts_with(row.Words + " #8525=1"))
            << row.Bottom << row.GlueBox << row.DowelBox << ": " << lines[2];
    }
}

TEST_F(HbdEdgeBores, ABoreOnAnEdgeThatIsNotDrilledStaysForTheMainWriter)
{
    HBores.Append(EdgeBore(4, 30, 100));
    HBores.Append(EdgeBore(2, 100, 30));
    Config.MakeHBD = 1;
    Config.HbdAvailable = true;
    RunProgramWriters();
    EXPECT_EQ(Get("PROG/SRG/D/OOR"),
              FileOf({"G71X600Y400Z18T00N4L1", "G150(DOOR)", "G81G90G55P2R54=8X100Y30Z9", "M2"}));
}

} // namespace
} // namespace kv

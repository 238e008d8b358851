// What the reader makes of group pairs: which record takes which value, what is carried along a
// polyline, where the section ends. Small streams, the records worked out by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "drawing/dxf_reader.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "state/report.h"
#include "state/run.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

class Reader : public testing::Test {
  protected:
    RunBlock& Run = kv::Run; // the test class has a Run of its own
    Scene Home;

    std::string Put(const std::string& contents) const
    {
        return FromHostPath(Home.Write("READ.DXF", contents).string());
    }
    // Reads the file's bytes as they stand; returns the path behind the reading.
    std::string ReadBytes(const std::string& contents) const
    {
        std::string path = Put(contents);
        ReadDrawing(path);
        return path;
    }
    void Read(const std::string& entities) const { ReadBytes(Drawing(entities)); }
    std::string CauseOf(const std::string& contents) const
    {
        try {
            ReadBytes(contents);
        } catch (const RunError& error) {
            return error.Cause;
        }
        return "no error";
    }
    std::string Kinds() const
    {
        std::string kinds;
        for (Long i = 0; i <= Entities.Last(); ++i)
            kinds += "[" + std::string(Entities[i].Kind.Trimmed()) + "]";
        return kinds;
    }
    std::string Layers() const
    {
        std::string layers;
        for (Long i = 2; i < Entities.Last(); ++i)
            layers += "[" + std::string(Entities[i].Layer.Trimmed()) + "]";
        return layers;
    }
    std::string Sides() const
    {
        std::string sides;
        for (Long i = 2; i < Entities.Last(); ++i)
            sides += "[" + std::string(Entities[i].Side.Trimmed()) + "]";
        return sides;
    }
};

TEST_F(Reader, TheFirstEntityIsElementTwoAndTheTailIsBlank)
{
    Read(Line("A", 1, 2, 3, 4) + Point("B", 5, 6));
    EXPECT_EQ(Kinds(), "[][][LINE][POINT][]");
    for (const Long blank : {0, 1, 4}) {
        EXPECT_EQ(Entities[blank].Layer.Trimmed(), "") << blank;
        EXPECT_EQ(Entities[blank].X1, 0) << blank;
    }
    EXPECT_EQ(Entities[2].X1, 1);
    EXPECT_EQ(Entities[2].Y1, 2);
    EXPECT_EQ(Entities[2].X2, 3);
    EXPECT_EQ(Entities[2].Y2, 4);
    EXPECT_EQ(Entities[3].X1, 5);
}

TEST_F(Reader, AnEmptySectionLeavesOneBlankTail)
{
    Read("");
    EXPECT_EQ(Kinds(), "[][][]");
}

TEST_F(Reader, EachCallBeginsAnew)
{
    Read(TextAt("A", 0, 0, "ONE") + Line("A", 0, 0, 1, 1));
    Read(Point("B", 5, 6));
    EXPECT_EQ(Kinds(), "[][][POINT][]");
    EXPECT_EQ(EntityTexts.size(), 1U);
}

TEST_F(Reader, ValuesInFrontOfTheFirstEntityGoToElementOne)
{
    Read(Pair(8, "early") + Pair(10, 7.0) + Point("B", 5, 6));
    EXPECT_EQ(Entities[1].Layer.Trimmed(), "EARLY");
    EXPECT_EQ(Entities[1].X1, 7);
    EXPECT_EQ(Entities[1].Kind.Trimmed(), "");
    EXPECT_EQ(Entities[2].X1, 5);
}

TEST_F(Reader, EveryGroupCodeHasItsField)
{
    Read(Pair(0, " Ellipse ") + Pair(8, " layer 1 ") + Pair(10, 1.5) + Pair(20, 2.5) + Pair(11, 3.5) +
         Pair(21, 4.5) + Pair(30, 5.5) + Pair(31, 6.5) + Pair(38, 7.5) + Pair(39, 8.5) + Pair(40, 9.5) +
         Pair(41, 10.5) + Pair(42, 11.5) + Pair(50, 12.5) + Pair(51, 13.5) + Pair(62, "14") + Pair(70, "15") +
         Pair(66, "16") + Pair(75, "17"));
    const DxfEntity& entity = Entities[2];
    EXPECT_EQ(entity.Kind.Trimmed(), "ELLIPSE");
    EXPECT_EQ(entity.Layer.Trimmed(), "LAYER 1");
    EXPECT_EQ(entity.X1, 1.5F);
    EXPECT_EQ(entity.Y1, 2.5F);
    EXPECT_EQ(entity.X2, 3.5F);
    EXPECT_EQ(entity.Y2, 4.5F);
    EXPECT_EQ(entity.Z1, 5.5F);
    EXPECT_EQ(entity.Z2, 6.5F);
    EXPECT_EQ(entity.Elevation, 7.5F);
    EXPECT_EQ(entity.Thickness, 8.5F);
    EXPECT_EQ(entity.Radius, 9.5F);
    EXPECT_EQ(entity.EndWidth, 10.5F);
    EXPECT_EQ(entity.Bulge, 11.5F);
    EXPECT_EQ(entity.StartAngle, 12.5F);
    EXPECT_EQ(entity.EndAngle, 13.5F);
    EXPECT_EQ(entity.Color, 14);
    EXPECT_EQ(entity.Flags, 15);
    EXPECT_EQ(entity.FollowFlag, 16);
    EXPECT_EQ(entity.TextAlign, 17);
    EXPECT_EQ(entity.TextIndex, 0);
    EXPECT_EQ(entity.Side.Trimmed(), "");
    EXPECT_EQ(entity.ExtrusionZ, 0);
}

TEST_F(Reader, ASolidsFurtherCornersLandInRadiusWidthAndAngles)
{
    Read(Pair(0, "SOLID") + Pair(12, 1.0) + Pair(22, 2.0) + Pair(13, 3.0) + Pair(23, 4.0));
    EXPECT_EQ(Entities[2].Radius, 1);
    EXPECT_EQ(Entities[2].StartAngle, 2);
    EXPECT_EQ(Entities[2].EndWidth, 3);
    EXPECT_EQ(Entities[2].EndAngle, 4);
}

TEST_F(Reader, OtherGroupCodesArePassedOver)
{
    Read(Pair(0, "LINE") + Pair(5, "2F") + Pair(100, "AcDbLine") + Pair(6, "DASHED") + Pair(1000, "X") +
         Pair(1071, "99999999") + Pair(10, 4.0));
    EXPECT_EQ(Kinds(), "[][][LINE][]");
    EXPECT_EQ(Entities[2].X1, 4);
}

TEST_F(Reader, BlanksAndNulBytesAroundAGroupCodeDoNotCount)
{
    const std::string nul(1, '\0');
    Read("  0\nLINE\n  8\nA\n8 \nB\n" + nul + "10" + nul + "\n5\n1 1\n6\n");
    EXPECT_EQ(Entities[2].Layer.Trimmed(), "B");
    EXPECT_EQ(Entities[2].X1, 5);
    EXPECT_EQ(Entities[2].X2, 6);
}

TEST_F(Reader, AGroupCodeIsComparedAsATextSo08IsNotGroup8)
{
    Read("0\nLINE\n8\nA\n08\nB\n+8\nC\n-8\nD\n1000000\nE\n99999999999999999999\nF\n");
    EXPECT_EQ(Entities[2].Layer.Trimmed(), "A");
}

TEST_F(Reader, CommasBecomePointsInNumbersAndTexts)
{
    Read(Pair(0, "TEXT") + Pair(8, "A,B") + Pair(10, "1,5") + Pair(1, "OFFSET 10,20"));
    EXPECT_EQ(Entities[2].X1, 1.5F);
    EXPECT_EQ(Entities[2].Layer.Trimmed(), "A.B");
    EXPECT_EQ(EntityTexts[1], "OFFSET 10.20");
}

TEST_F(Reader, NumbersAreReadLenientlyAndRoundedToSingle)
{
    Read(Pair(0, "LINE") + Pair(10, "abc") + Pair(20, "  12.5mm") + Pair(11, "1.5D2") + Pair(21, "") +
         Pair(30, "-0.0") + Pair(31, "0.1"));
    EXPECT_EQ(Entities[2].X1, 0);
    EXPECT_EQ(Entities[2].Y1, 12.5F);
    EXPECT_EQ(Entities[2].X2, 150);
    EXPECT_EQ(Entities[2].Y2, 0);
    EXPECT_FALSE(std::signbit(Entities[2].Z1)) << "the sign of nothing would turn an arctangent";
    EXPECT_EQ(Entities[2].Z2, 0.1F);
}

TEST_F(Reader, WholeNumbersRoundHalvesToEven)
{
    Read(Pair(0, "LINE") + Pair(62, "2.5") + Pair(70, "3.5") + Pair(66, "-2.5") + Pair(0, "LINE") +
         Pair(62, "-32768.5") + Pair(70, "32767.4999") + Pair(66, "256"));
    EXPECT_EQ(Entities[2].Color, 2);
    EXPECT_EQ(Entities[2].Flags, 4);
    EXPECT_EQ(Entities[2].FollowFlag, -2);
    EXPECT_EQ(Entities[3].Color, -32768);
    EXPECT_EQ(Entities[3].Flags, 32767);
    EXPECT_EQ(Entities[3].FollowFlag, 256);
}

TEST_F(Reader, ByLayerIsKeptAsTheNumber256)
{
    Read(Pair(0, "LINE") + Pair(62, "256"));
    EXPECT_EQ(Entities[2].Color, 256);
}

TEST_F(Reader, Alignments72And73AddUpAnd75Replaces)
{
    Read(Pair(0, "TEXT") + Pair(72, "1") + Pair(73, "2") + Pair(0, "MTEXT") + Pair(72, "5") + Pair(75, "1") +
         Pair(73, "2.5"));
    EXPECT_EQ(Entities[2].TextAlign, 3);
    EXPECT_EQ(Entities[3].TextAlign, 4) << "1 + 2.5 is rounded once, to even";
}

TEST_F(Reader, TextsAreKeptForKindsThatHoldTextOnly)
{
    Read(Pair(0, "LINE") + Pair(1, "no") + Pair(0, "TEXT") + Pair(1, "one ") + Pair(0, "MTEXT") +
         Pair(1, "two") + Pair(0, "RTEXTX") + Pair(1, ""));
    EXPECT_EQ(EntityTexts, (std::vector<std::string>{"", "one ", "two", ""}));
    EXPECT_EQ(Entities[2].TextIndex, 0);
    EXPECT_EQ(Entities[3].TextIndex, 1);
    EXPECT_EQ(Entities[4].TextIndex, 2);
    EXPECT_EQ(Entities[5].TextIndex, 3);
}

TEST_F(Reader, ATextGivenTwiceKeepsBothAndPointsToTheLast)
{
    Read(Pair(0, "TEXT") + Pair(1, "one") + Pair(1, "two"));
    EXPECT_EQ(EntityTexts.size(), 3U);
    EXPECT_EQ(Entities[2].TextIndex, 2);
}

TEST_F(Reader, ALongKindIsCutToItsField)
{
    Read(Pair(0, "acad_proxy_entity"));
    EXPECT_EQ(Entities[2].Kind.Trimmed(), "ACAD_PROXY");
}

TEST_F(Reader, AnyValueThatHoldsEndsecEndsTheSection)
{
    for (const std::string word : {"ENDSEC", "endsec", " xEndSecy "}) {
        ReadBytes("ENTITIES\n0\nLINE\n0\n" + word + "\n0\nLINE\n0\nENDSEC\n");
        EXPECT_EQ(Kinds(), "[][][LINE][]") << word;
    }
}

TEST_F(Reader, EndsecUnderAnotherGroupCodeIsNoEnd)
{
    Read(Pair(0, "TEXT") + Pair(1, "ENDSEC") + Point("A", 1, 1));
    EXPECT_EQ(Kinds(), "[][][TEXT][POINT][]");
}

TEST_F(Reader, TheLastLineNeedsNoLineEnd)
{
    ReadBytes("ENTITIES\n0\nLINE\n0\nENDSEC");
    EXPECT_EQ(Kinds(), "[][][LINE][]");
}

TEST_F(Reader, LinesEndInCrLfOrLf)
{
    ReadBytes("ENTITIES\r\n0\r\nLINE\n8\nA\r\n0\nENDSEC\r\n");
    EXPECT_EQ(Kinds(), "[][][LINE][]");
    EXPECT_EQ(Entities[2].Layer.Trimmed(), "A");
}

TEST_F(Reader, ALineThatHoldsTheWordIsPassedOverWhereASectionHasTheName)
{
    const std::string before =
        "999\nHERE ARE THE ENTITIES.\n0\nSECTION\n2\nBLOCKS\n0\nCIRCLE\n8\nENTITIES\n0\n"
        "ENDSEC\n";
    for (const std::string head : {"0\nSECTION\n2\n", "  0 \r\nSECTION\r\n  2\r\n"}) {
        ReadBytes(before + head + "ENTITIES\n0\nLINE\n8\nDRAWN\n0\nENDSEC\n");
        EXPECT_EQ(Kinds(), "[][][LINE][]");
        EXPECT_EQ(Entities[2].Layer.Trimmed(), "DRAWN");
    }
}

TEST_F(Reader, TheNameOfASectionStandsBehindItsTwoAlone)
{
    for (const std::string head :
         {"0\nSECTION\n70\n", "2\nSECTION\n2\n", "0\nBLOCK\n2\n", "0\nSECTION\n2\nX\n"}) {
        ReadBytes(head + "ENTITIES\n0\nCIRCLE\n0\nSECTION\n2\nENTITIES\n0\nLINE\n0\nENDSEC\n");
        EXPECT_EQ(Kinds(), "[][][LINE][]") << head;
    }
}

TEST_F(Reader, WithoutASectionOfTheNameItBeginsBehindTheFirstLineThatHoldsTheWord)
{
    ReadBytes(
        "0\nSECTION\n2\nBLOCKS\n0\nCIRCLE\n999\nHERE ARE THE ENTITIES.\n0\nLINE\n8\nENTITIES\n0\nENDSEC\n");
    EXPECT_EQ(Kinds(), "[][][LINE][]") << "later lines are not filtered by the word";
    EXPECT_EQ(Entities[2].Layer.Trimmed(), "ENTITIES");
}

TEST_F(Reader, TheWordIsInCapitals)
{
    EXPECT_EQ(ReadBytes("0\nSECTION\n2\nEntities\n0\nENDSEC\n"), "~");
}

TEST_F(Reader, WithoutTheSectionThereIsABoxAndThePathIsATilde)
{
    const std::string path = Put("0\nEOF\n");
    EXPECT_EQ(ReadBytes("0\nEOF\n"), "~");
    EXPECT_EQ(Home.Boxes,
              std::vector<std::string>{"ENTITIES Section not found in  " + ShownPath(path) + "    "});
    EXPECT_EQ(Run.RunFailed, False);
    EXPECT_EQ(Kinds(), "[]");
}

// Instruction titles.

TEST_F(Reader, ATitleInAnyCaseNamesTheInstructionLayer)
{
    for (const std::string title : {"POST INSTRUCTIONS", "Post Instructions", "korvanti instructions"}) {
        Run.InstructionLayer.clear();
        Read(TextAt("my info", 0, 0, title));
        EXPECT_EQ(Run.InstructionLayer, "MYINFO") << title;
    }
}

TEST_F(Reader, ATitleWithBlanksAroundIsNone)
{
    for (const std::string title : {" POST INSTRUCTIONS", "POST INSTRUCTIONS ", "POST  INSTRUCTIONS",
                                    "POSTINSTRUCTIONS", "POST INSTRUCTION"}) {
        Read(TextAt("INFO", 0, 0, title));
        EXPECT_EQ(Run.InstructionLayer, "") << title;
    }
}

TEST_F(Reader, TheTitlesLayerMayStandBehindItsText)
{
    Read(Pair(0, "TEXT") + Pair(1, "POST INSTRUCTIONS") + Pair(8, "BEHIND") + Line("X", 0, 0, 1, 1));
    EXPECT_EQ(Run.InstructionLayer, "BEHIND");
}

TEST_F(Reader, OfTwoTitlesTheLaterLayerWins)
{
    Read(TextAt("ONE", 0, 0, "POST INSTRUCTIONS") + TextAt("TWO", 0, 0, "KORVANTI INSTRUCTIONS"));
    EXPECT_EQ(Run.InstructionLayer, "TWO");
}

TEST_F(Reader, ATitleAsTheLastEntityCounts)
{
    ReadBytes("ENTITIES\n0\nTEXT\n8\nLAST\n1\nPOST INSTRUCTIONS\n0\nENDSEC\n");
    EXPECT_EQ(Run.InstructionLayer, "LAST");
}

TEST_F(Reader, WithoutATitleTheInstructionLayerStays)
{
    Run.InstructionLayer = "OLD";
    Read(TextAt("NEW", 0, 0, "LEAD OFF"));
    EXPECT_EQ(Run.InstructionLayer, "OLD");
}

TEST_F(Reader, ATitleOnAnEntityThatIsNoTextIsNone)
{
    Read(Pair(0, "ATTDEF") + Pair(8, "X") + Pair(1, "POST INSTRUCTIONS"));
    EXPECT_EQ(Run.InstructionLayer, "");
}

// Polylines of the old form.

TEST_F(Reader, AllVerticesAndTheSeqendHaveThePolylinesLayer)
{
    Read(Pair(0, "POLYLINE") + Pair(8, "route1") + Pair(0, "VERTEX") + Pair(8, "0") + Pair(0, "VERTEX") +
         Pair(8, "OTHER") + Pair(0, "SEQEND") + Pair(8, "0") + Line("A", 0, 0, 1, 1));
    EXPECT_EQ(Layers(), "[ROUTE1][ROUTE1][ROUTE1][ROUTE1][A]");
}

TEST_F(Reader, AVertexAndSeqendWithoutLayerAreOnThatOfTheirPolyline)
{
    const std::string polyline =
        Pair(0, "POLYLINE") + Pair(8, "route1") + Pair(0, "VERTEX") + Pair(10, 1.0) + Pair(0, "SEQEND");
    Read(polyline + Pair(0, "VERTEX") + Pair(0, "SEQEND") + polyline + Pair(8, "OWN"));
    EXPECT_EQ(Layers(), "[ROUTE1][ROUTE1][ROUTE1][][][ROUTE1][ROUTE1][ROUTE1]");
}

TEST_F(Reader, ASeqendOfAnInsertHasItsOwnLayer)
{
    Read(Polyline("A", {{0, 0}, {1, 1}}) + Pair(0, "INSERT") + Pair(8, "B") + Pair(0, "ATTRIB") +
         Pair(8, "B") + Pair(0, "SEQEND") + Pair(8, "B"));
    EXPECT_EQ(Layers(), "[A][A][A][A][B][B][B]");
}

TEST_F(Reader, OtherRecordsWithoutLayerInsideAPolylineHaveNone)
{
    Read(Pair(0, "POLYLINE") + Pair(8, "ROUTE1") + Pair(0, "POINT") + Pair(0, "vertex") + Pair(0, "SEQEND"));
    EXPECT_EQ(Layers(), "[ROUTE1][][ROUTE1][ROUTE1]");
}

TEST_F(Reader, AVertexNamesTheLayerOfAPolylineWithoutOne)
{
    Read(Pair(0, "POLYLINE") + Pair(0, "VERTEX") + Pair(8, "FIRST") + Pair(0, "VERTEX") + Pair(8, "SECOND") +
         Pair(0, "SEQEND"));
    EXPECT_EQ(Layers(), "[][FIRST][FIRST][FIRST]");
}

TEST_F(Reader, WithoutSeqendTheLayerIsCarriedOn)
{
    Read(Pair(0, "POLYLINE") + Pair(8, "ROUTE1") + Pair(0, "VERTEX") + Pair(8, "ROUTE1") +
         Line("BORDER", 0, 0, 1, 1));
    EXPECT_EQ(Layers(), "[ROUTE1][ROUTE1][ROUTE1]");
}

TEST_F(Reader, AllVerticesHaveThePolylinesSide)
{
    Read(Pair(0, "POLYLINE") + Pair(8, "A") + Pair(210, "-1") + Pair(220, "0") + Pair(230, "0") +
         Pair(0, "VERTEX") + Pair(0, "VERTEX") + Pair(0, "SEQEND") + Line("A", 0, 0, 1, 1));
    EXPECT_EQ(Sides(), "[4][4][4][][]") << "SEQEND ends the carry";
}

TEST_F(Reader, APolylineWithoutExtrusionLeavesBlankSides)
{
    Read(Polyline("A", {{0, 0}, {1, 1}}) + Line("A", 0, 0, 1, 1));
    EXPECT_EQ(Sides(), "[][][][][]");
}

TEST_F(Reader, AnExtrusionOfAVertexWaitsForTheEndOfTheCarry)
{
    Read(Pair(0, "POLYLINE") + Pair(210, "1") + Pair(0, "VERTEX") + Pair(220, "-1") + Pair(0, "VERTEX") +
         Pair(0, "SEQEND") + Line("A", 0, 0, 1, 1));
    EXPECT_EQ(Sides(), "[3][3][3][2][]");
}

TEST_F(Reader, SeqendTakesTheColourReadLast)
{
    Read(Pair(0, "POLYLINE") + Pair(62, "3") + Pair(0, "VERTEX") + Pair(62, "5") + Pair(0, "SEQEND") +
         Pair(0, "LINE"));
    EXPECT_EQ(Entities[4].Kind.Trimmed(), "SEQEND");
    EXPECT_EQ(Entities[4].Color, 5);
    EXPECT_EQ(Entities[5].Color, 0);
}

TEST_F(Reader, SeqendTakesTheColourOfAnEarlierEntityWhereThePolylineHasNone)
{
    Read(Pair(0, "LINE") + Pair(62, "7") + Pair(0, "POLYLINE") + Pair(0, "VERTEX") + Pair(0, "SEQEND"));
    EXPECT_EQ(Entities[5].Color, 7);
}

// Sides by the extrusion.

TEST_F(Reader, TheDominantAxisOfTheExtrusionNamesTheSide)
{
    struct Row {
        const char *X, *Y, *Z, *Side;
    };
    const Row rows[] = {
        {"1", "0", "0", "3"},        {"-1", "0", "0", "4"},       {"0", "1", "0", "1"},
        {"0", "-1", "0", "2"},       {"0", "0", "1", "5"},        {"0", "0", "-1", "5"},
        {"0", "0", "0", ""},         {"1", "1", "1", "3"},        {"-1", "1", "1", "4"},
        {"0.5", "-0.6", "0.6", "2"}, {"0.5", "0.6", "-0.7", "5"},
    };
    for (const Row& row : rows) {
        Read(Pair(0, "LINE") + Pair(210, row.X) + Pair(220, row.Y) + Pair(230, row.Z));
        EXPECT_EQ(Sides(), "[" + std::string(row.Side) + "]") << row.X << " " << row.Y << " " << row.Z;
    }
}

TEST_F(Reader, OnePartOfAnExtrusionIsEnough)
{
    Read(Pair(0, "LINE") + Pair(230, "-1"));
    EXPECT_EQ(Entities[2].Side.Trimmed(), "5");
    EXPECT_EQ(Entities[2].ExtrusionZ, -1);
}

TEST_F(Reader, TheExtrusionIsUsedUpByItsEntity)
{
    Read(Pair(0, "LINE") + Pair(220, "1") + Pair(230, "0.4") + Line("A", 0, 0, 1, 1));
    EXPECT_EQ(Sides(), "[1][]");
    EXPECT_EQ(Entities[2].ExtrusionZ, 0);
}

TEST_F(Reader, ALineWithoutExtrusionHasABlankSide)
{
    Read(Line("A", 0, 0, 1, 1));
    EXPECT_EQ(Entities[2].Side.Padded(), " ");
}

// Lightweight polylines.

TEST_F(Reader, ALightweightPolylineBecomesTheOldForm)
{
    Read(Pair(0, "LWPOLYLINE") + Pair(8, "route1") + Pair(90, "2") + Pair(70, "1") + Pair(10, 1.0) +
         Pair(20, 2.0) + Pair(10, 3.0) + Pair(20, 4.0) + Line("A", 0, 0, 1, 1));
    EXPECT_EQ(Kinds(), "[][][POLYLINE][VERTEX][VERTEX][SEQEND][LINE][]");
    EXPECT_EQ(Layers(), "[ROUTE1][ROUTE1][ROUTE1][ROUTE1][A]");
    EXPECT_EQ(Entities[3].X1, 1);
    EXPECT_EQ(Entities[3].Y1, 2);
    EXPECT_EQ(Entities[4].X1, 3);
    EXPECT_EQ(Entities[4].Y1, 4);
    EXPECT_EQ(Entities[2].Flags, 1);
}

TEST_F(Reader, HeaderValuesOfALightweightPolylineStandInTheHeaderOnly)
{
    Read(Pair(0, "LWPOLYLINE") + Pair(62, "4") + Pair(70, "129") + Pair(38, -2.0) + Pair(39, 18.0) +
         Pair(8, "A") + Pair(10, 1.0) + Pair(20, 2.0) + Pair(10, 3.0) + Pair(20, 4.0));
    EXPECT_EQ(Entities[2].Color, 4);
    EXPECT_EQ(Entities[2].Flags, 129);
    EXPECT_EQ(Entities[2].Elevation, -2);
    EXPECT_EQ(Entities[2].Thickness, 18);
    for (Long i = 3; i <= 5; ++i) {
        EXPECT_EQ(Entities[i].Color, 0) << i;
        EXPECT_EQ(Entities[i].Flags, 0) << i;
        EXPECT_EQ(Entities[i].Elevation, 0) << i;
        EXPECT_EQ(Entities[i].Thickness, 0) << i;
    }
}

TEST_F(Reader, HeaderGroupsBehindTheFirstVertexGoToTheVertexInTheMaking)
{
    Read(Pair(0, "LWPOLYLINE") + Pair(10, 1.0) + Pair(20, 2.0) + Pair(62, "3") + Pair(39, 7.0) +
         Pair(10, 3.0) + Pair(20, 4.0));
    EXPECT_EQ(Entities[2].Color, 0);
    EXPECT_EQ(Entities[4].Color, 3);
    EXPECT_EQ(Entities[4].Thickness, 7);
}

TEST_F(Reader, WidthsAndBulgeStayWithTheVertexThatTheyFollow)
{
    Read(Pair(0, "LWPOLYLINE") + Pair(40, 9.0) + Pair(41, 8.0) + Pair(10, 1.0) + Pair(20, 2.0) +
         Pair(40, 1.5) + Pair(41, 2.5) + Pair(42, 0.5) + Pair(10, 3.0) + Pair(20, 4.0) + Pair(42, -1.0));
    EXPECT_EQ(Entities[2].Radius, 9);
    EXPECT_EQ(Entities[2].EndWidth, 8);
    EXPECT_EQ(Entities[3].Radius, 1.5F);
    EXPECT_EQ(Entities[3].EndWidth, 2.5F);
    EXPECT_EQ(Entities[3].Bulge, 0.5F);
    EXPECT_EQ(Entities[4].Bulge, -1);
    EXPECT_EQ(Entities[5].Bulge, 0);
}

TEST_F(Reader, ALightweightPolylineIsAlwaysSideFive)
{
    Read(Pair(0, "LWPOLYLINE") + Pair(8, "A") + Pair(210, "-1") + Pair(10, 1.0) + Pair(20, 2.0) +
         Line("B", 0, 0, 1, 1));
    EXPECT_EQ(Sides(), "[][][4][]") << "blank decodes as 5; the extrusion lands on the last placeholder";
}

TEST_F(Reader, ALightweightPolylineEndsItsOwnCarry)
{
    Read(Lwpolyline("ROUTE1", {{0, 0}, {5, 5}}) + Line("A", 0, 0, 1, 1) + Circle("B", 1, 1, 1));
    EXPECT_EQ(Layers(), "[ROUTE1][ROUTE1][ROUTE1][ROUTE1][A][B]");
}

TEST_F(Reader, ThePlaceholderSeqendTakesNoColour)
{
    Read(Pair(0, "LWPOLYLINE") + Pair(62, "4") + Pair(10, 1.0) + Pair(20, 2.0));
    EXPECT_EQ(Entities[4].Kind.Trimmed(), "SEQEND");
    EXPECT_EQ(Entities[4].Color, 0) << "it becomes SEQEND after the colour was given";
}

TEST_F(Reader, TwoLightweightPolylinesInARowStayApart)
{
    Read(Lwpolyline("A", {{1, 1}}) + Lwpolyline("B", {{2, 2}}));
    EXPECT_EQ(Kinds(), "[][][POLYLINE][VERTEX][SEQEND][POLYLINE][VERTEX][SEQEND][]");
    EXPECT_EQ(Layers(), "[A][A][A][B][B][B]");
}

// The event pump and the abort.

int PumpCalls = 0;

TEST_F(Reader, EventsRunOncePerPair)
{
    PumpCalls = 0;
    Events.Pump = [] { ++PumpCalls; };
    ReadBytes("ENTITIES\n0\nLINE\n8\nA\n999\nx\n0\nENDSEC\n");
    EXPECT_EQ(PumpCalls, 3) << "the pair that ends the section leaves the loop";
}

TEST_F(Reader, AnAbortIsSeenBehindThePair)
{
    PumpCalls = 0;
    Events.Pump = [] { kv::Run.RunState = ++PumpCalls == 3 ? Int{1} : Int{0}; };
    Read(Pair(0, "LINE") + Pair(8, "A") + Pair(10, 1.0) + Pair(20, 2.0));
    Events.Pump = nullptr;
    ReportMessage(2, "");
    EXPECT_EQ(Home.Lines, std::vector<std::string>{"USER ABORTED"});
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(Entities[2].X1, 1) << "the third pair was still taken";
    EXPECT_EQ(Entities[2].Y1, 0);
    EXPECT_NE(MeterValue(Meter::Parsing), 100);
}

TEST_F(Reader, OtherRunStatesDoNotStopIt)
{
    for (const Int state : {Int{-1}, Int{2}}) {
        Run.RunState = state;
        Read(Line("A", 0, 0, 1, 1));
        EXPECT_EQ(Kinds(), "[][][LINE][]");
    }
}

TEST_F(Reader, TheMeterRunsEvery25MsAndEndsAt100)
{
    static int interval = 0;
    static bool climbs = false;
    Events.Pump = [] {
        interval = MeterInterval();
        TickMeters();
        climbs |= MeterValue(Meter::Parsing) > 0 && MeterValue(Meter::Parsing) < 100;
    };
    Read(Line("A", 0, 0, 1, 1) + Line("A", 0, 0, 1, 1));
    EXPECT_EQ(interval, 25);
    EXPECT_TRUE(climbs);
    EXPECT_EQ(MeterValue(Meter::Parsing), 100);
    EXPECT_EQ(MeterInterval(), 1000);
}

TEST_F(Reader, AFailedReadingLeavesNoMeterBehind)
{
    EXPECT_THROW(ReadBytes("ENTITIES\n0\nLINE\n"), RunError);
    EXPECT_EQ(ReaderPercentDone, nullptr);
    EXPECT_EQ(MeterInterval(), 1000);
}

// What no reading survives; the words name the line and the record.

TEST_F(Reader, CausesNameTheLineAndTheRecord)
{
    const std::string head = "0\nSECTION\n2\nENTITIES\n";
    EXPECT_EQ(CauseOf(head + "0\nLINE\n8\nCUT\n62\n32767.5\n0\nENDSEC\n"),
              "Color 32767.5 out of range in line 10 of LINE on layer CUT");
    EXPECT_EQ(CauseOf(head + "0\nLINE\n8\nCUT\n70\n-40000\n0\nENDSEC\n"),
              "Flags -40000 out of range in line 10 of LINE on layer CUT");
    EXPECT_EQ(CauseOf(head + "0\nTEXT\n72\n32767\n73\n1\n0\nENDSEC\n"),
              "Alignment 1 out of range in line 10 of TEXT");
    EXPECT_EQ(CauseOf(head + "66\n99999\n0\nENDSEC\n"), "Flag 99999 out of range in line 6");
    EXPECT_EQ(CauseOf(head + "0\nLINE\n10\n1e39\n0\nENDSEC\n"), "Number 1e39 out of range in line 8 of LINE");
    EXPECT_EQ(CauseOf(head + "0\nLINE\nOOPS\nX\n0\nENDSEC\n"), "Group code \"OOPS\" in line 7 is no number");
    EXPECT_EQ(CauseOf(head + "0\nLINE\n\nX\n0\nENDSEC\n"), "Group code \"\" in line 7 is no number");
    EXPECT_EQ(CauseOf(head + "0\nLINE\n8\n"), "Cut in the middle of a pair behind line 7");
    EXPECT_EQ(CauseOf(head + "0\nLINE\n8\nA\n"), "The ENTITIES section has no ENDSEC");
    EXPECT_EQ(CauseOf(head), "The ENTITIES section has no ENDSEC");
}

TEST_F(Reader, TextsEndAt32767)
{
    std::string entities;
    for (int i = 1; i <= 32767; ++i)
        entities += "0\nTEXT\n1\nT\n";
    Read(entities);
    EXPECT_EQ(EntityTexts.size(), 32768U);
    EXPECT_EQ(Entities[32768].TextIndex, 32767);
    EXPECT_EQ(CauseOf(Drawing(entities + "0\nTEXT\n1\nT\n")), "More than 32767 texts");
}

TEST_F(Reader, MoreThan32767EntitiesAreFine)
{
    std::string entities;
    for (int i = 1; i <= 40000; ++i)
        entities += "0\nPOINT\n10\n" + std::to_string(i) + "\n";
    Read(entities);
    EXPECT_EQ(Entities.Last(), 40002);
    EXPECT_EQ(Entities[40001].X1, 40000);
}

TEST_F(Reader, BareCarriageReturnsAreNeverCopiedToAnotherFile)
{
    std::string text = Drawing(Line("A", 0, 0, 1, 1));
    for (char& c : text)
        if (c == '\n')
            c = '\r';
    while (text.size() < 40000)
        text.insert(0, "999\rfiller\r");
    EXPECT_EQ(CauseOf(text), "The lines end in bare carriage returns; no line feed found");
    for (const auto& entry : fs::directory_iterator(Home.Folder))
        EXPECT_TRUE(entry.path().filename() == "READ.DXF" || entry.path().filename() == "prg")
            << entry.path();
}

} // namespace
} // namespace kv::test

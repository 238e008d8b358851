// Renames of layers and colours that a drawing's instructions ask for, and the shift of a border that
// reaches below zero.
#include "drawing/instruction_renames.h"

#include "drawing/directives.h"

namespace kv {
namespace {

using test::Lines;
using LayerRenames = test::Directives;
using ColorRenames = test::Directives;
using BorderShift = test::Directives;

TEST_F(LayerRenames, AreUpperCasedAndTrimmed)
{
    Obey({"layer a =  Rout e 1 "}, test::Line("A", 0, 0, 1, 1) + test::Line("B", 0, 0, 1, 1));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"ROUT E 1", "B"}));
}

TEST_F(LayerRenames, AreIgnoredWithoutAnEqualsSign)
{
    Obey({"LAYER A"}, test::Line("A", 0, 0, 1, 1));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"A"}));
    EXPECT_EQ(kv::Run.NoteCount, 0);
}

TEST_F(LayerRenames, CompareTheLayerWithoutItsBlanks)
{
    Obey({"LAYER AB=C D"}, test::Line("A B", 0, 0, 1, 1));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"C D"}));
}

TEST_F(LayerRenames, AFromNameWithBlanksNeverMatches)
{
    Obey({"LAYER A B=C"}, test::Line("A B", 0, 0, 1, 1));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"A B"}));
}

TEST_F(LayerRenames, TheFirstMatchReplacesAndNoneFollows)
{
    Obey({"LAYER A=B", "LAYER A=C", "LAYER B=D"}, test::Line("A", 0, 0, 1, 1) + test::Line("B", 0, 0, 1, 1));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"B", "D"}));
}

TEST_F(LayerRenames, OfPolylinesTakeTheirVertices)
{
    Obey({"LAYER A=ROUTE1"}, test::Polyline("A", {{0, 0}, {1, 0}}));
    EXPECT_EQ(LayersOf("POLYLINE"), (Lines{"ROUTE1"}));
    EXPECT_EQ(LayersOf("VERTEX"), (Lines{"ROUTE1", "ROUTE1"}));
    EXPECT_EQ(LayersOf("SEQEND"), (Lines{"ROUTE1"}));
}

TEST_F(LayerRenames, AfterThemARenameByColour)
{
    Obey({"COLOR 3=C", "LAYER A=B"}, test::Line("A", 0, 0, 1, 1, Colored(3)));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"C"}));
}

TEST_F(ColorRenames, ByNumber)
{
    Obey({"color 3 =  route1z5"},
         test::Line("A", 0, 0, 1, 1, Colored(3)) + test::Line("B", 0, 0, 1, 1, Colored(4)));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"ROUTE1Z5", "B"}));
}

TEST_F(ColorRenames, WithoutANumberTakeTheTextsOwnColour)
{
    for (const char* line : {"COLOR=ROUTE1", "COLOR ROUTE1", "COLOR =ROUTE1"}) {
        ObeyDrawing(test::Instructions({}) + test::TextAt("INFO", 0, 0, line, Colored(4)) +
                    test::Line("A", 0, 0, 1, 1, Colored(4)) + test::Line("B", 0, 0, 1, 1));
        EXPECT_EQ(LayersOf("LINE"), (Lines{"ROUTE1", "B"})) << line;
        EXPECT_EQ(EntityTexts[2], "") << line;                          // the text itself is blanked
        EXPECT_EQ(LayersOf("TEXT"), (Lines{"INFO", "ROUTE1"})) << line; // and has that colour, too
    }
}

TEST_F(ColorRenames, ABlankNumberIsColourZero)
{
    ObeyDrawing(test::Instructions({}) + test::TextAt("INFO", 0, 0, "COLOR  =ROUTE1", Colored(4)) +
                test::Line("A", 0, 0, 1, 1, Colored(4)) + test::Line("B", 0, 0, 1, 1));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"A", "ROUTE1"}));
}

TEST_F(ColorRenames, BehindTheWordsEqualsSignANumberMayStand)
{
    Obey({"COLOR=3=ROUTE1"}, test::Line("A", 0, 0, 1, 1, Colored(3)));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"ROUTE1"}));
}

TEST_F(ColorRenames, TheFirstMatchWins)
{
    Obey({"COLOR 3=C", "COLOR 3=D"}, test::Line("A", 0, 0, 1, 1, Colored(3)));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"C"}));
}

TEST_F(ColorRenames, OfAPolylineCarryOverItsVerticesAndSeqend)
{
    Obey({"COLOR 3=ROUTE1"}, test::Polyline("A", {{0, 0}, {1, 0}}, Colored(3)) + test::Line("B", 0, 0, 1, 1));
    EXPECT_EQ(LayersOf("POLYLINE"), (Lines{"ROUTE1"}));
    EXPECT_EQ(LayersOf("VERTEX"), (Lines{"ROUTE1", "ROUTE1"}));
    EXPECT_EQ(LayersOf("SEQEND"), (Lines{"ROUTE1"}));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"B"}));
}

TEST_F(ColorRenames, CarryBeatsARenameOfTheVertexsOwnColour)
{
    const std::string polyline = test::Pair(0, "POLYLINE") + test::Pair(8, "A") + Colored(3) +
                                 test::Pair(0, "VERTEX") + test::Pair(8, "A") + Colored(4) +
                                 test::Pair(0, "SEQEND") + test::Pair(8, "A");
    Obey({"COLOR 4=OTHER", "COLOR 3=ROUTE1"}, polyline);
    EXPECT_EQ(LayersOf("VERTEX"), (Lines{"ROUTE1"}));
    EXPECT_EQ(LayersOf("SEQEND"), (Lines{"ROUTE1"}));
}

TEST_F(ColorRenames, ARecordThatIsNoVertexEndsTheCarryAndTakesTheNameItself)
{
    Obey({"COLOR 3=ROUTE1"}, test::Pair(0, "POLYLINE") + test::Pair(8, "A") + Colored(3) +
                                 test::Line("A", 0, 0, 1, 1, Colored(7)) +
                                 test::Line("B", 0, 0, 1, 1, Colored(7)));
    EXPECT_EQ(LayersOf("LINE").front(), "ROUTE1");
    EXPECT_NE(LayersOf("LINE").back(), "ROUTE1");
}

TEST_F(ColorRenames, APolylineUnderTheCarryStartsNone)
{
    const std::string open = test::Pair(0, "POLYLINE") + test::Pair(8, "A") + Colored(3) +
                             test::Pair(0, "VERTEX") + test::Pair(8, "A");
    Obey({"COLOR 3=ROUTE1"}, open + open);
    EXPECT_EQ(LayersOf("POLYLINE"), (Lines{"ROUTE1", "ROUTE1"}));
    EXPECT_EQ(LayersOf("VERTEX"), (Lines{"ROUTE1", "A"}));
}

TEST_F(BorderShift, MovesAllRecordsByTheLowestNegativeCorner)
{
    Obey({"LAYER OUT=BORDERLL"}, test::Line("OUT", -5.25, 100, 10, -3) + test::Line("A", 1, 2, 3, 4));
    const DxfEntity& border = Entities[4];
    EXPECT_EQ(border.X1, 0);
    EXPECT_EQ(border.Y1, 103);
    EXPECT_EQ(border.X2, 15.25F);
    EXPECT_EQ(border.Y2, 0);
    const DxfEntity& line = Entities[5];
    EXPECT_EQ(line.X1, 6.25F);
    EXPECT_EQ(line.Y1, 5);
    EXPECT_EQ(line.X2, 8.25F);
    EXPECT_EQ(line.Y2, 7);
    EXPECT_EQ(Entities[2].X1, 5.25F); // texts too, and their second point
    EXPECT_EQ(Entities[2].X2, 5.25F);
}

TEST_F(BorderShift, OnlyWithALayerRename)
{
    Obey({"COLOR 3=BORDER"}, test::Line("BORDER", -5, -3, 10, 10));
    EXPECT_EQ(Entities[Entities.Last() - 1].X1, -5);
    Obey({"LAYER X=Y"}, test::Line("BORDER", -5, -3, 10, 10)); // any will do
    EXPECT_EQ(Entities[Entities.Last() - 1].X1, 0);
    EXPECT_EQ(Entities[Entities.Last() - 1].Y1, 0);
}

TEST_F(BorderShift, IsTestedRounded)
{
    Obey({"LAYER X=Y"}, test::Line("BORDER", -.5, -.4, 10, 10)); // -.5 to even is 0
    EXPECT_EQ(Entities[Entities.Last() - 1].X1, -.5F);
    EXPECT_EQ(Entities[Entities.Last() - 1].Y1, -.4F);
}

TEST_F(BorderShift, IsSubtractedUnrounded)
{
    Obey({"LAYER X=Y"}, test::Line("BORDER", -.4, -3.75, 10, 10)); // Y alone is enough
    EXPECT_EQ(Entities[Entities.Last() - 1].X1, 0);
    EXPECT_EQ(Entities[Entities.Last() - 1].Y1, 0);
    EXPECT_EQ(Entities[Entities.Last() - 1].X2, 10.4F);
    EXPECT_EQ(Entities[Entities.Last() - 1].Y2, 13.75F);
}

TEST_F(BorderShift, DoesNotBringAFarBorderNearer)
{
    Obey({"LAYER X=Y"}, test::Line("BORDER", 5, 6, 10, 10));
    EXPECT_EQ(Entities[Entities.Last() - 1].X1, 5);
    EXPECT_EQ(Entities[Entities.Last() - 1].Y1, 6);
}

TEST_F(BorderShift, OfARenamedAwayBorderIsNone)
{
    Obey({"LAYER BORDER=A"}, test::Line("BORDER", -5, -6, 10, 10));
    EXPECT_EQ(Entities[Entities.Last() - 1].X1, -5);
}

} // namespace
} // namespace kv

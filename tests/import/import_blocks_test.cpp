// INSERTs opened: where a block's entities come to lie, on which layer and in which colour, and blocks that
// cannot be opened. Places are worked out by hand.
#include <cmath>

#include "import/import_scene.h"
#include "platform/run_error.h"

namespace kv::test {
namespace {

struct ImportBlocks : ImportScene {
    static void ExpectCircle(const DxfEntity& record, double x, double y, double radius)
    {
        EXPECT_EQ(record.Kind.Trimmed(), "CIRCLE");
        EXPECT_NEAR(record.X1, x, 1e-4);
        EXPECT_NEAR(record.Y1, y, 1e-4);
        EXPECT_NEAR(record.Radius, radius, 1e-4);
    }
};

TEST_F(ImportBlocks, EntitiesOfABlockStandWhereItsInsertIs)
{
    const auto records =
        Read({.Entities = Insert("0", "HINGE", 100, 22.5),
              .Blocks = Block("HINGE", Circle("VBORE", 0, 0, 17.5) + Circle("VBORE", 9.5, 22.5, 4))});
    ASSERT_EQ(records.size(), 2u);
    ExpectCircle(records[0], 100, 22.5, 17.5);
    ExpectCircle(records[1], 109.5, 45, 4);
    EXPECT_TRUE(Place.Reported("Layer 0: INSERT of HINGE was opened: 2 CIRCLE")) << Place.ReportText();
}

TEST_F(ImportBlocks, TheBasePointComesToTheInsertionPoint)
{
    const auto records = Read(
        {.Entities = Insert("0", "B", 100, 200), .Blocks = Block("B", Circle("VBORE", 12, 7, 4), 10, 5)});
    ASSERT_EQ(records.size(), 1u);
    ExpectCircle(records[0], 102, 202, 4);
}

TEST_F(ImportBlocks, AnInsertTurnsScalesAndMirrors)
{
    const std::string blocks = Block("B", Circle("VBORE", 10, 0, 4));
    auto records = Read({.Entities = Insert("0", "B", 100, 200, Pair(50, 90)), .Blocks = blocks});
    ASSERT_EQ(records.size(), 1u);
    ExpectCircle(records[0], 100, 210, 4);
    records = Read(
        {.Entities = Insert("0", "B", 100, 200, Pair(41, 2) + Pair(42, 2) + Pair(43, 2)), .Blocks = blocks});
    ASSERT_EQ(records.size(), 1u);
    ExpectCircle(records[0], 120, 200, 8);
    records = Read({.Entities = Insert("0", "B", 100, 200, Pair(41, -1)), .Blocks = blocks});
    ASSERT_EQ(records.size(), 1u);
    ExpectCircle(records[0], 90, 200, 4);
    EXPECT_TRUE(records[0].Side.Trimmed().empty()) << "it lies in the plane, with no extrusion left";
}

TEST_F(ImportBlocks, AMirroredArcSwapsItsEndsAndAMirroredBulgeItsSign)
{
    const auto records = Read({.Entities = Insert("0", "B", 0, 0, Pair(41, -1)),
                               .Blocks = Block("B", Arc("ROUTE1", 100, 50, 10, 0, 90) +
                                                        Lwpolyline("ROUTE2", {{10, 0, 0.5}, {20, 0}}))});
    ASSERT_EQ(KindsOf(records), "ARC POLYLINE VERTEX VERTEX SEQEND");
    EXPECT_NEAR(records[0].X1, -100, 1e-4);
    EXPECT_NEAR(records[0].StartAngle, 90, 1e-4); // the end at the top is now on the way to the left
    EXPECT_NEAR(records[0].EndAngle, 180, 1e-4);
    EXPECT_NEAR(records[2].X1, -10, 1e-4);
    EXPECT_NEAR(records[2].Bulge, -0.5, 1e-6);
}

TEST_F(ImportBlocks, RowsAndColumnsStepWithTheTurnAndNotWithTheScale)
{
    const auto records =
        Read({.Entities = Insert("0", "B", 100, 100,
                                 Pair(41, 2) + Pair(42, 2) + Pair(43, 2) + Pair(50, 90) + Pair(70, 2) +
                                     Pair(71, 3) + Pair(44, 32) + Pair(45, 50)),
              .Blocks = Block("B", Circle("VBORE", 0, 0, 4))});
    ASSERT_EQ(records.size(), 6u);
    ExpectCircle(records[0], 100, 100, 8);
    ExpectCircle(records[1], 100, 132, 8); // the column's step, turned
    ExpectCircle(records[2], 50, 100, 8);  // the row's step, turned
    ExpectCircle(records[5], 0, 132, 8);
}

TEST_F(ImportBlocks, BlocksInBlocksAreOpenedTwentyDeep)
{
    std::string blocks = Block("B0", Circle("VBORE", 1, 0, 4));
    for (int i = 1; i <= 20; ++i)
        blocks += Block("B" + std::to_string(i), Insert("0", "B" + std::to_string(i - 1), 10, 0));
    const auto records = Read({.Entities = Insert("0", "B20", 100, 50), .Blocks = blocks});
    ASSERT_EQ(records.size(), 1u);
    ExpectCircle(records[0], 301, 50, 4);
}

TEST_F(ImportBlocks, LayerZeroAndByBlockAreThoseOfTheInsert)
{
    const auto records =
        Read({.Entities = Insert("VBORE_Z10", "OUTER", 0, 0, Pair(62, 3)),
              .Blocks = Block("INNER", Circle("0", 1, 0, 4, Pair(62, 0)) +
                                           Circle("VBORE_Z5", 2, 0, 4, Pair(62, 5)) + Circle("0", 3, 0, 4)) +
                        Block("OUTER", Insert("0", "INNER", 0, 0, Pair(62, 0)))});
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(LayersOf(records), "VBORE_Z10 VBORE_Z5 VBORE_Z10");
    EXPECT_EQ(records[0].Color, 3);
    EXPECT_EQ(records[1].Color, 5);
    EXPECT_EQ(records[2].Color, 0) << "by its layer, as where no group 62 stands";
}

TEST_F(ImportBlocks, AttributesBecomeTextsAndTheirDefinitionsDoNot)
{
    const std::string attribute = Pair(0, "ATTRIB") + Pair(8, "NAME") + Pair(10, 5) + Pair(20, 6) +
                                  Pair(40, 3) + Pair(1, "LEFT DOOR") + Pair(2, "PART") + Pair(70, 0) +
                                  Pair(0, "SEQEND");
    const std::string open = Pair(0, "ATTDEF") + Pair(8, "NAME") + Pair(10, 0) + Pair(20, 0) + Pair(1, "?") +
                             Pair(2, "PART") + Pair(70, 0);
    const std::string constant = Pair(0, "ATTDEF") + Pair(8, "MAKER") + Pair(10, 0) + Pair(20, 0) +
                                 Pair(1, "OAK") + Pair(2, "WOOD") + Pair(70, 2);
    const auto records = Read({.Entities = Insert("0", "TITLE", 100, 0, Pair(66, 1)) + attribute,
                               .Blocks = Block("TITLE", open + constant)});
    ASSERT_EQ(KindsOf(records), "TEXT TEXT");
    EXPECT_EQ(TextOf(records[0]), "OAK");
    EXPECT_EQ(TextOf(records[1]), "LEFT DOOR");
    EXPECT_NEAR(records[1].X1, 5, 1e-6) << "an attribute is drawn where it is, not in the block";
    EXPECT_EQ(records[1].Layer.Trimmed(), "NAME");
}

TEST_F(ImportBlocks, ASqueezedCircleIsAnEllipseWithinTheTolerance)
{
    const auto records = Read({.Entities = Insert("0", "B", 100, 100, Pair(41, 2)),
                               .Blocks = Block("B", Circle("ROUTE1", 0, 0, 30))});
    ASSERT_GT(records.size(), 6u);
    EXPECT_EQ(records[0].Kind.Trimmed(), "POLYLINE");
    EXPECT_EQ(records[0].Flags, 1);
    for (const DxfEntity& vertex : records)
        if (vertex.Kind == "VERTEX") {
            EXPECT_NEAR(std::hypot((vertex.X1 - 100) / 60.0, (vertex.Y1 - 100) / 30.0), 1, 0.01 / 30);
        }
}

TEST_F(ImportBlocks, TheReportNamesLineAndHandleOfTheInsert)
{
    const WholeDrawing drawing{.Entities = Insert("0", "B", 100, 100, Pair(5, "3B")),
                               .Blocks = Block("B", Circle("VBORE", 0, 0, 4, Pair(5, "1F")))};
    const auto records = Read(drawing);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(HandleOf(records[0].Drawn), "3B");
    const std::string text = drawing.Text();
    const auto line =
        1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(text.find("INSERT")), '\n');
    EXPECT_EQ(DrawnEntities[records[0].Drawn].Line, line);
}

TEST_F(ImportBlocks, EntitiesBehindAnOpenedInsertKeepTheirLines)
{
    const WholeDrawing drawing{.Entities = Insert("0", "B", 100, 100) + Circle("VBORE", 7, 7, 4),
                               .Blocks = Block("B", Circle("VBORE", 0, 0, 4) + Circle("VBORE", 9, 0, 4))};
    const auto records = Read(drawing);
    ASSERT_EQ(records.size(), 3u);
    const std::string text = drawing.Text();
    const auto last = text.rfind("CIRCLE");
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(last), '\n');
    EXPECT_EQ(DrawnEntities[records[2].Drawn].Line, line);
}

// A depth by elevation is read from group 38, or from the height of an entity whose extrusion is written.
TEST_F(ImportBlocks, DepthsByElevationStay)
{
    const std::string up = Pair(210, 0) + Pair(220, 0) + Pair(230, 1),
                      border = Rectangle("BORDER_Z18", 0, 0, 600, 400);
    const std::string inside = Line("GROOVE", 10, 10, 110, 10, Pair(30, -7) + Pair(31, -7) + up) +
                               Line("GROOVE", 10, 50, 110, 50, Pair(38, -6)) +
                               Lwpolyline("GROOVE", {{10, 90}, {110, 90}}, Pair(39, -5));
    Config.Import = "plain";
    ASSERT_TRUE(Place.Convert(Drawing(border + inside))) << Place.ReportText();
    const auto plain = TakePrograms(Place);
    Config.Import = "full";
    ASSERT_TRUE(Place.Convert(
        WholeDrawing{.Entities = border + Insert("0", "B", 0, 0), .Blocks = Block("B", inside)}.Text()))
        << Place.ReportText();
    EXPECT_EQ(TakePrograms(Place), plain);
    for (const char* const depth : {"Y10Z7", "Y50Z6", "Y90Z5"})
        EXPECT_NE(plain.begin()->second.find(depth), std::string::npos) << plain.begin()->second;
}

// What cannot be opened.

TEST_F(ImportBlocks, ABlockThatHoldsItselfIsLeft)
{
    const auto records =
        Read({.Entities = Insert("0", "RING", 1, 0),
              .Blocks = Block("RING", Circle("VBORE", 0, 0, 4) + Insert("0", "RING", 5, 0))});
    EXPECT_EQ(records.size(), 1u);
    EXPECT_TRUE(Place.Reported("Layer 0: INSERT is left as it is: block RING holds itself"))
        << Place.ReportText();
}

TEST_F(ImportBlocks, ARingOfBlocksIsLeft)
{
    const auto records = Read({.Entities = Insert("0", "A", 1, 0),
                               .Blocks = Block("A", Insert("0", "B", 5, 0)) +
                                         Block("B", Circle("VBORE", 0, 0, 4) + Insert("0", "A", 5, 0))});
    EXPECT_EQ(records.size(), 1u);
    EXPECT_TRUE(Place.Reported("Layer 0: INSERT is left as it is: block A holds itself"))
        << Place.ReportText();
}

TEST_F(ImportBlocks, ABlockThatIsNotThereIsLeftWithItsInsert)
{
    const auto records = Read({.Entities = Insert("0", "GONE", 1, 0), .Blocks = Block("B", "")});
    ASSERT_EQ(KindsOf(records), "INSERT");
    EXPECT_TRUE(Place.Reported("Layer 0: INSERT is left as it is: block GONE is not in the drawing"))
        << Place.ReportText();
}

TEST_F(ImportBlocks, ABillionCopiesFailTheJobAndAreNamedWhereNothingIsChanged)
{
    const WholeDrawing drawing{.Entities = Insert("0", "B", 1, 0, Pair(70, 32767) + Pair(71, 1e9)),
                               .Blocks = Block("B", "")};
    try {
        Read(drawing);
        FAIL() << "no error";
    } catch (const RunError& error) {
        EXPECT_EQ(error.Cause, "INSERT in line 28 opens to more than 1000000 entities");
    }
    EXPECT_EQ(KindsOf(Read(drawing, "told")), "INSERT");
    EXPECT_TRUE(
        Place.Reported("What Import=full would do was not worked out: INSERT in line 28 opens to more than "
                       "1000000 entities"))
        << Place.ReportText();
}

TEST_F(ImportBlocks, BlocksThatGrowByTheirNestingFailTheJob)
{
    std::string blocks = Block("B0", Circle("VBORE", 1, 0, 4));
    for (int i = 1; i <= 20; ++i) {
        std::string inner;
        for (int k = 0; k < 10; ++k)
            inner += Insert("0", "B" + std::to_string(i - 1), 10 * k, 0);
        blocks += Block("B" + std::to_string(i), inner);
    }
    EXPECT_THROW(Read({.Entities = Insert("0", "B20", 0, 0), .Blocks = blocks}), RunError);
}

TEST_F(ImportBlocks, ABlockWithoutAnEndEndsWithTheNextOne)
{
    std::string endless = Block("A", Circle("VBORE", 0, 0, 4));
    endless.resize(endless.find("0\nENDBLK"));
    const auto records = Read({.Entities = Insert("0", "A", 5, 0) + Insert("0", "B", 9, 0),
                               .Blocks = endless + Block("B", Circle("VBORE", 0, 0, 3))});
    ASSERT_EQ(records.size(), 2u);
    ExpectCircle(records[0], 5, 0, 4);
    ExpectCircle(records[1], 9, 0, 3);
    EXPECT_TRUE(Place.Reported(
        "Layer 0: INSERT is left as it is: block A has no ENDBLK; it ends with the next block"))
        << Place.ReportText();
}

TEST_F(ImportBlocks, AScaleOfZeroIsNamed)
{
    const auto records = Read(
        {.Entities = Insert("0", "B", 5, 0, Pair(41, 0)), .Blocks = Block("B", Circle("VBORE", 0, 0, 4))});
    EXPECT_EQ(KindsOf(records), "INSERT");
    EXPECT_TRUE(Place.Reported("Layer 0: INSERT is left as it is: its scale is 0, or no number"))
        << Place.ReportText();
}

// The setting.

TEST_F(ImportBlocks, ToldChangesNothingAndSaysWhatFullWouldDo)
{
    const WholeDrawing drawing{.Entities = Insert("0", "B", 5, 0) + Insert("0", "B", 9, 0),
                               .Blocks = Block("B", Circle("VBORE", 0, 0, 4) + Line("ROUTE1", 0, 0, 5, 5))};
    EXPECT_EQ(KindsOf(Read(drawing, "told")), "INSERT INSERT");
    EXPECT_TRUE(Place.Reported(
        "Layer 0: 2 INSERT of B are not opened; Import=full would make 1 CIRCLE, 1 LINE of the first"))
        << Place.ReportText();
    EXPECT_EQ(KindsOf(Read(drawing, "plain")), "INSERT INSERT");
    EXPECT_TRUE(Place.Lines.empty()) << Place.ReportText();
}

TEST_F(ImportBlocks, AnotherWordCountsAsToldAndIsNamed)
{
    EXPECT_EQ(KindsOf(Read({.Entities = Insert("0", "B", 5, 0), .Blocks = Block("B", "")}, "all")), "INSERT");
    EXPECT_TRUE(Place.Reported("Setting Import: \"all\" is neither plain, told nor full, told is taken"))
        << Place.ReportText();
}

} // namespace
} // namespace kv::test

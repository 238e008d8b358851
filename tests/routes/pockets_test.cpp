// Rectangular pockets. Expected places are worked out by hand; outlines that are none and the circles
// have their own files.
#include <gtest/gtest.h>

#include <algorithm>

#include "routes/pocket_outlines.h"

namespace kv {
namespace {

using rows::ArcStep;
using rows::RoundedOutline;
using rows::Row;
using rows::RowsOf;
using rows::SquareOutline;
using rows::Step;
using Records = std::vector<RouteSegment>;
using Texts = std::vector<std::string>;

class RectanglePockets : public rows::PocketTest {};

Texts Part(const Texts& rows, std::size_t first, std::size_t count)
{
    const auto from = rows.begin() + static_cast<std::ptrdiff_t>(first);
    return {from, from + static_cast<std::ptrdiff_t>(count)};
}

// A loop against the way of four lines drawn counter-clockwise from the lower left.
Texts SquareLoop(double minX, double minY, double maxX, double maxY)
{
    const Records loop = {Step(-1, minX, minY), Step(1, minX, maxY),  Step(-1, minX, maxY),
                          Step(1, maxX, maxY),  Step(-1, maxX, maxY), Step(1, maxX, minY),
                          Step(-1, maxX, minY), Step(1, minX, minY)};
    return RowsOf(loop);
}

TEST_F(RectanglePockets, RectangleOfFourLinesIsEightLoopsAndItsMark)
{
    const Records made = Excavate(SquareOutline({100, 100, 200, 160}, -5, "G42 R5"));
    Texts expected;
    for (int loop = 0; loop < 7; ++loop) {
        const double d = 4.0 * loop;
        const Texts rows = SquareLoop(100 + d, 100 + d, 200 - d, 160 - d);
        expected.insert(expected.end(), rows.begin(), rows.end());
    }
    expected[0] = "-1 100 100 d-8";
    // Loop 7, inset 28: each first point lies 2.83 from an end of the middle line and is put 4 from it.
    const Texts rest = {"-1 127.172 127.172", "1 128 132", "-1 127.172 132.828", "1 172 132",
                        "-1 172.828 132.828", "1 172 128", "-1 172.828 127.172", "1 128 128",
                        "-4 166.323 128.424", "4 101 100"};
    expected.insert(expected.end(), rest.begin(), rest.end());
    EXPECT_EQ(RowsOf(made), expected);
    EXPECT_EQ(made.size(), 66U);
    for (const RouteSegment& record : made) {
        EXPECT_EQ(record.Comp, "G42 R5");
        EXPECT_EQ(record.OscZ, 0);
    }
    // The last loop is 4 wide, the tool 10; the wall begins in its corner.
    EXPECT_EQ(Lines, (Texts{rows::NarrowWays("X100 Y100"), rows::SharpStart("X100 Y100")}));
}

// The loops of the rounded rectangle (100, 100) to (220, 180) of radius 15 while its corners are arcs.
// The outline ends in the arc of the lower left corner; that goes to its beginning, so each loop begins
// with the lower side.
Texts RoundedLoop(double inset)
{
    const double r = 15 - inset;
    const double minX = 100 + inset, maxX = 220 - inset, minY = 100 + inset, maxY = 180 - inset;
    const Records loop = {
        Step(-1, 115, 115 - r),
        Step(1, 205, 115 - r),
        ArcStep(-3, 205, minY, 205, 115),
        ArcStep(3, maxX, 115, 270, 0, -1),
        Step(-1, maxX, 115),
        Step(1, maxX, 165),
        ArcStep(-3, maxX, 165, 205, 165),
        ArcStep(3, 205, maxY, 0, 90, -1),
        Step(-1, 205, maxY),
        Step(1, 115, maxY),
        ArcStep(-3, 115, maxY, 115, 165),
        ArcStep(3, minX, 165, 90, 180, -1),
        Step(-1, minX, 165),
        Step(1, minX, 115),
        ArcStep(-3, minX, 115, 115, 115),
        ArcStep(3, 115, minY, 180, 270, -1),
    };
    return RowsOf(loop);
}

TEST_F(RectanglePockets, RoundedCornersStayArcsUntilTheirRadiusReachesThePitch)
{
    const Texts made = RowsOf(Excavate(RoundedOutline({100, 100, 220, 180}, 15, -5, "G41")));
    // The middle line runs from (140, 140) to (180, 140): eleven loops, the last with inset 40.
    ASSERT_EQ(made.size(), 11U * 16 + 2);
    Texts first = RoundedLoop(0);
    first[0] += " d-8";
    EXPECT_EQ(Part(made, 0, 16), first);
    EXPECT_EQ(Part(made, 16, 16), RoundedLoop(4));
    EXPECT_EQ(Part(made, 32, 16), RoundedLoop(8));
    // Radius 3 is not above the pitch: all points lie at the corners of the inset box.
    const Texts shrunk = {"-1 112 112", "1 208 112", "-1 208 112", "1 208 112", "-1 208 112", "1 208 168",
                          "-1 208 168", "1 208 168", "-1 208 168", "1 112 168", "-1 112 168", "1 112 168",
                          "-1 112 168", "1 112 112", "-1 112 112", "1 112 112"};
    EXPECT_EQ(Part(made, 48, 16), shrunk);
    EXPECT_EQ(made.back(), "4 100 116");
}

TEST_F(RectanglePockets, RadiusThatEqualsThePitchHasShrunkAway)
{
    // Radius 8 and pitch 4: loop 1 would have radius 4, which is not above the pitch.
    const Texts made = RowsOf(Excavate(RoundedOutline({100, 100, 220, 180}, 8, -5, "")));
    EXPECT_EQ(made[0], "-1 108 100 d-8");
    EXPECT_EQ(made[16], "-1 104 104");
    EXPECT_EQ(made[17], "1 216 104");
    EXPECT_EQ(made[18], "-1 216 104");
    // Radius 8.5: 4.5 is above it.
    EXPECT_EQ(RowsOf(Excavate(RoundedOutline({100, 100, 220, 180}, 8.5, -5, "")))[16], "-1 108.5 104");
}

TEST_F(RectanglePockets, CornerSmallerThanThePitchIsAnArcOnTheWallAlone)
{
    const Texts made = RowsOf(Excavate(RoundedOutline({100, 100, 220, 180}, 3, -5, "G42 R2.9")));
    const Texts wall = {"-1 103 100 d-8", "1 217 100", "-3 217 100 217 103", "3 220 103 270 0 d-1"};
    EXPECT_EQ(Part(made, 0, 4), wall);
    const Texts second = {"-1 104 104", "1 216 104", "-1 216 104", "1 216 104"};
    EXPECT_EQ(Part(made, 16, 4), second);
}

TEST_F(RectanglePockets, CornerThatTheToolCannotCutIsTheBoxesOnTheWallAndFurtherIn)
{
    // Radius 3 and a tool of 3: the wall's corner is left round by the tool itself.
    const Texts made = RowsOf(Excavate(RoundedOutline({100, 100, 220, 180}, 3, -5, "G42 R3")));
    const Texts wall = {"-1 100 100 d-8", "1 220 100", "-1 220 100", "1 220 100", "-1 220 100", "1 220 180"};
    EXPECT_EQ(Part(made, 0, 6), wall);
    // Radius 15, tool 20, pitch 4: 11 is above the pitch, but the tool would run into the wall beside it.
    const Texts wide = RowsOf(Excavate(RoundedOutline({100, 100, 220, 180}, 15, -5, "G42 R20")));
    EXPECT_EQ(wide[0], "-1 100 100 d-8");
    EXPECT_EQ(wide[16], "-1 104 104");
    EXPECT_EQ(wide[18], "-1 216 104");
}

TEST_F(RectanglePockets, LineThatEndsBesideACornerGoesToTheCornerOfTheBox)
{
    // The lower line ends .01 in front of the corner's arc, the tolerance is .008.
    Records outline = RoundedOutline({100, 100, 220, 180}, 15, -5, "");
    outline[15].X = 115.01F;
    const Texts beside = RowsOf(Excavate(outline));
    EXPECT_EQ(beside[0], "-1 100 100 d-8");
    EXPECT_EQ(beside[1], "1 205 100"); // its other end still meets its corner
    outline[15].X = 115.0078125F;
    EXPECT_EQ(RowsOf(Excavate(outline))[0], "-1 115 100 d-8");
}

TEST_F(RectanglePockets, LineThatBeginsBesideACornerGoesToTheCornerOfTheBox)
{
    Records outline = RoundedOutline({100, 100, 220, 180}, 15, -5, "");
    outline[14].X = 204.99F;
    EXPECT_EQ(RowsOf(Excavate(outline))[1], "1 220 100");
    outline[14].X = 204.9921875F; // .0078125 away
    EXPECT_EQ(RowsOf(Excavate(outline))[1], "1 205 100");
}

TEST_F(RectanglePockets, ToleranceItselfStillMeetsTheCorner)
{
    kv::Run.RouteTolerance = 0.0078125F;
    Records outline = RoundedOutline({100, 100, 220, 180}, 15, -5, "");
    outline[14].X = 204.9921875F;
    outline[15].X = 115.0078125F;
    const Texts made = RowsOf(Excavate(outline));
    EXPECT_EQ(made[0], "-1 115 100 d-8");
    EXPECT_EQ(made[1], "1 205 100");
}

TEST_F(RectanglePockets, OutlineIsTurnedSoThatItsLoopsBeginWithALine)
{
    // The corner's arc comes first and the line that meets it last: its loops begin with the line's end,
    // at the start of the first arc. An outline that ends in the arc gives the same loops.
    Records outline = RoundedOutline({100, 100, 220, 180}, 15, -5, "");
    const Records wanted = Excavate(outline);
    std::rotate(outline.begin() + 2, outline.begin() + 16, outline.end());
    ASSERT_EQ(Row(outline[2]), "-3 115 100 115 115");
    const Records made = Excavate(outline);
    EXPECT_EQ(Row(made[0]), "-1 115 100 d-8");
    EXPECT_EQ(Row(made[16]), "-1 115 104");
    EXPECT_EQ(rows::Difference(made, wanted), "");
}

TEST_F(RectanglePockets, NoMoveJoinsALoopToTheNext)
{
    // As many records as the outline has, loop by loop, and each loop opens with a point.
    const Records made = Excavate(RoundedOutline({100, 100, 220, 180}, 15, -5, ""));
    ASSERT_EQ(made.size(), 11U * 16 + 2);
    for (std::size_t i = 0; i < 11; ++i) {
        EXPECT_EQ(made[16 * i].Kind, -1);
        EXPECT_EQ(made[16 * i + 1].Kind, 1);
    }
}

TEST_F(RectanglePockets, CounterClockwiseArcTurnsClockwise)
{
    // The same corners drawn as counter-clockwise arcs: their copies run clockwise.
    Records outline = RoundedOutline({100, 100, 220, 180}, 15, -5, "");
    for (RouteSegment& record : outline)
        if (record.Kind == 3)
            record.Dir = -1;
    const Texts made = RowsOf(Excavate(outline));
    EXPECT_EQ(made[15], "3 115 100 180 270");
    EXPECT_EQ(made[31], "3 115 104 180 270");
}

TEST_F(RectanglePockets, TallBoxHasAnUprightMiddleLine)
{
    // 60 by 100: ends at (130, 130) and (130, 170). Loop 7, inset 28: (128, 128) is 2.83 from the lower.
    const Texts made = RowsOf(Excavate(SquareOutline({100, 100, 160, 200}, -5, "")));
    ASSERT_EQ(made.size(), 66U);
    EXPECT_EQ(made[56], "-1 127.172 127.172");
    EXPECT_EQ(made[58], "-1 127.172 172.828");
    EXPECT_EQ(made[60], "-1 132.828 172.828");
    EXPECT_EQ(made[62], "-1 132.828 127.172");
    // The last one hit is the lower end; (100, 100) lies at 225 degrees of it.
    EXPECT_EQ(made[64], "-4 127.172 127.172");
}

TEST_F(RectanglePockets, SquareHasOneMiddlePointForBothEnds)
{
    // 60 by 60: both ends at (130, 130). Inset 28 reaches them at once, the first one gives the place.
    const Texts made = RowsOf(Excavate(SquareOutline({100, 100, 160, 160}, -5, "")));
    ASSERT_EQ(made.size(), 66U);
    EXPECT_EQ(made[56], "-1 127.172 127.172");
    EXPECT_EQ(made[57], "1 128 132");
    EXPECT_EQ(made[64], "-4 127.172 127.172");
}

TEST_F(RectanglePockets, NearSquareTakesTheFirstEndsPlaceAndTheLastEndsMark)
{
    // 64 by 60, K 10: ends at (130, 130) and (134, 130). Loop 2, inset 20: (120, 120) is 14.1 away; loop
    // 3, inset 30: (130, 130) is 0 from the first and 4 from the second end. It is put 10 from the first
    // on bearing 0; so is (134, 130), which lies on bearing 0 of the first as well.
    const Texts made = RowsOf(Excavate(SquareOutline({100, 100, 164, 160}, -11, "")));
    ASSERT_EQ(made.size(), 34U);
    EXPECT_EQ(made[24], "-1 140 130");
    EXPECT_EQ(made[28], "-1 140 130");
    EXPECT_EQ(made[25], "1 130 130"); // no first point stays where it is
    // 10 from (134, 130) towards (100, 100): 34, 30 over 45.343 is .74984, .66162.
    EXPECT_EQ(made[32], "-4 126.502 123.384");
}

TEST_F(RectanglePockets, CornerWithinAPitchOfTheMiddleEndsTheLoops)
{
    // 100 by 100, K 25 times the root of 2 would be 35.36; with K 50 loop 0 is 70.7 away, loop 1 is the
    // middle. With a box of 60 by 80 and K 50 the corner is 30, 30 from the end: 42.4, within the pitch.
    EXPECT_EQ(Excavate(SquareOutline({0, 0, 100, 100}, -51, "")).size(), 18U);
    EXPECT_EQ(Excavate(SquareOutline({0, 0, 60, 80}, -51, "")).size(), 10U);
}

TEST_F(RectanglePockets, PointExactlyAPitchAwayFromAnEndDoesNotReachIt)
{
    // 80 by 80 with corners of 40: the sides' points, (140, 100) and so on, lie exactly the pitch of 40
    // away from the middle. Loop 1, inset 40, has its corners on the middle itself.
    const Texts made = RowsOf(Excavate(RoundedOutline({100, 100, 180, 180}, 40, -41, "")));
    EXPECT_EQ(made[0], "-1 140 100 d-8");
    EXPECT_EQ(made.size(), 2U * 16 + 2);
}

TEST_F(RectanglePockets, ArcRecordWithoutItsOtherHalfIsASlantedStep)
{
    Records outline = RoundedOutline({100, 100, 220, 180}, 15, -5, "");
    outline[17].Kind = 1;
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    EXPECT_EQ(Lines, Texts{rows::NoRectangle("X100 Y115")});
}

TEST_F(RectanglePockets, PitchBiggerThanTheBoxIsOneLoopOnTheWall)
{
    // 10 by 6, K 20: ends (3, 3) and (7, 3), every corner within 20 of both. 20 away from an end is
    // outside the pocket, so the first points stay.
    const Texts made = RowsOf(Excavate(SquareOutline({0, 0, 10, 6}, -21, "")));
    ASSERT_EQ(made.size(), 10U);
    Texts wall = SquareLoop(0, 0, 10, 6);
    wall[0] += " d-8";
    EXPECT_EQ(Part(made, 0, 8), wall);
    EXPECT_TRUE(Lines.empty());
}

TEST_F(RectanglePockets, PitchOfAHundredthOfTheToolReachesTheMiddle)
{
    // 6 by 4, pitch .05: the corner is .0707 from the end with inset 1.95 and on it with 2.
    const Texts made = RowsOf(Excavate(SquareOutline({0, 0, 6, 4}, -1.05, "G42")));
    ASSERT_EQ(made.size(), 41U * 8 + 2);
    EXPECT_EQ(made[39 * 8 + 1], "1 1.95 2.05");
    EXPECT_TRUE(Lines.empty());
}

TEST_F(RectanglePockets, PocketAsWideAsItsToolIsNotToldAsNarrower)
{
    // Pitch 2: the wall is as wide as the tool, the loop of inset 2 has no width.
    Excavate(SquareOutline({0, 0, 8, 4}, -3, "G42 R2"));
    EXPECT_EQ(Lines,
              (Texts{rows::NarrowWays("X0 Y0") + " and cut outside of it", rows::SharpStart("X0 Y0")}));
    EXPECT_TRUE(Excavate(SquareOutline({0, 0, 8, 4}, -3, "G42 R2.01")).empty());
    EXPECT_EQ(Lines, Texts{rows::Told("X0 Y0", "is not cleared, it is narrower than its tool")});
    // Pitch 4 reaches both ends from the wall: the only loop, and the tool fits into it.
    Excavate(SquareOutline({0, 0, 8, 4}, -5, "G42 R2"));
    EXPECT_EQ(Lines, Texts{rows::SharpStart("X0 Y0")});
}

TEST_F(RectanglePockets, OutlineDrawnClockwiseIsCutOnTheOtherSide)
{
    // From the end (130, 130) the mark (100, 100) lies at 225 degrees; (100, 101) at 224.05.
    Records outline = SquareOutline({100, 100, 200, 160}, -5, "G42 R5");
    std::reverse(outline.begin() + 2, outline.end());
    for (std::size_t i = 2; i < outline.size(); ++i)
        outline[i].Kind = static_cast<Int>(-outline[i].Kind);
    outline[1].X = 100;
    outline[1].Y = 101;
    const Records made = Excavate(outline);
    EXPECT_EQ(Row(made[1]), "1 200 100"); // from (100, 100), against the way of the outline
    for (const RouteSegment& record : made)
        EXPECT_EQ(record.Comp, "G41 R5");
}

TEST_F(RectanglePockets, SideIsTheOutlinesOwnWhereverItsMarkPoints)
{
    // The outline runs counter-clockwise, its loops clockwise: the tool on the right. Marks from far
    // outside and from within, along the sides and against them.
    const double places[] = {0, 90, 99, 100, 101, 130, 160, 200, 300};
    for (const double x : places) {
        for (const double y : places) {
            Records outline = SquareOutline({100, 100, 200, 160}, -5, "G41 R5");
            outline[0].X = ToSingle(x);
            outline[0].Y = ToSingle(y);
            outline[1].X = outline[1].Y = 100;
            EXPECT_EQ(Excavate(outline)[0].Comp, "G42 R5") << x << " " << y;
        }
    }
}

TEST_F(RectanglePockets, FieldsComeFromTheRecordThatIsCopied)
{
    Records outline = SquareOutline({100, 100, 200, 160}, -5, "G41 R5");
    for (std::size_t i = 0; i < outline.size(); ++i) {
        outline[i].Z = ToSingle(static_cast<double>(i) + 1);
        outline[i].Feed = ToSingle(100 * (static_cast<double>(i) + 1));
        outline[i].Tool = "0" + WholeText(static_cast<long long>(i));
        outline[i].MCode = 3;
        outline[i].Aux1 = 7; // start width of the mark
    }
    const Records made = Excavate(outline);
    // The loop walks the records 10 to 3.
    for (std::size_t i = 0; i < 64; ++i) {
        EXPECT_EQ(made[i].Z, ToSingle(10 - static_cast<double>(i % 8)));
        EXPECT_EQ(made[i].Feed, 100 * made[i].Z);
        EXPECT_EQ(made[i].MCode, 3);
        EXPECT_EQ(made[i].Aux1, 0);
    }
    EXPECT_EQ(made[64].Z, 1);
    EXPECT_EQ(made[65].Z, 2);
    EXPECT_EQ(made[64].Aux1, 7); // the mark keeps its own
    EXPECT_EQ(made[65].Tool, "01");
    EXPECT_EQ(made[64].Comp, "G42 R5");
}

TEST_F(RectanglePockets, ShrunkCornerIsCopiedLastRecordFirst)
{
    Records outline = RoundedOutline({100, 100, 220, 180}, 15, -5, "");
    for (std::size_t i = 0; i < outline.size(); ++i)
        outline[i].Z = ToSingle(static_cast<double>(i) + 1);
    const Records made = Excavate(outline);
    EXPECT_EQ(made[14].Z, 17); // alive: centre record, then end record
    EXPECT_EQ(made[15].Z, 18);
    EXPECT_EQ(made[62].Z, 18);
    EXPECT_EQ(made[63].Z, 17);
    EXPECT_EQ(made[62].Aux1, 0);
    EXPECT_EQ(made[62].Aux2, 0);
    EXPECT_EQ(made[63].Aux1, 0);
    EXPECT_EQ(made[63].Aux2, 0);
}

TEST_F(RectanglePockets, PitchCodeOfZeroTakesTheToolsDiameter)
{
    // Radius 5: pitch 10, four loops; the fourth, inset 30, ends on (130, 130) itself.
    const Texts made = RowsOf(Excavate(SquareOutline({100, 100, 200, 160}, -1, "G42 R5")));
    ASSERT_EQ(made.size(), 34U);
    EXPECT_EQ(Part(made, 8, 8), SquareLoop(110, 110, 190, 150));
    EXPECT_EQ(Lines, (Texts{rows::NarrowWays("X100 Y100"), rows::SharpStart("X100 Y100"),
                            rows::Islands("X100 Y100")}));
}

TEST_F(RectanglePockets, ToolRadiusIsReadFromTheSixthCharacterOn)
{
    // "G42R12.5": the sixth character is the 2 of 2.5, so the pitch is 5.
    const Texts made = RowsOf(Excavate(SquareOutline({100, 100, 200, 160}, -1, "G42R12.5")));
    EXPECT_EQ(Part(made, 8, 8), SquareLoop(105, 105, 195, 155));
}

TEST_F(RectanglePockets, PitchOfALayerIsNotThatOfTheTool)
{
    const Texts made = RowsOf(Excavate(SquareOutline({100, 100, 200, 160}, -3, "G42 R5")));
    EXPECT_EQ(Part(made, 8, 8), SquareLoop(102, 102, 198, 158));
}

TEST_F(RectanglePockets, SixRecordsAreARectangle)
{
    // One tapered polyline with its width on the first point, and no mark in front: all six take part.
    // 60 by 60, K 35: in loop 0 the corners are 42.4 from the middle; the last record opens the loop.
    // (130, 100) is as near to the lower left corner as to the lower right one.
    Records outline = {Step(-4, 100, 100, -8), Step(5, 130, 100), Step(5, 160, 100),
                       Step(5, 160, 160),      Step(5, 100, 160), Step(5, 100, 100)};
    rows::MarkPocket(outline, -36, "G42");
    const Texts expected = {"-5 100 100 d-8", "5 100 160", "5 160 160", "5 160 100", "5 100 100", "5 100 100",
                            // Loop 1, inset 35: (135, 135) is 7.07 from the middle, and put 35 from it.
                            "-5 154.749 154.749", "5 135 125", "5 125 125", "5 125 135", "5 135 135",
                            "5 135 135",
                            // The mark: 35 from the middle towards (100, 100).
                            "-4 105.251 105.251", "5 130 100"};
    EXPECT_EQ(RowsOf(Excavate(outline)), expected);
}

TEST_F(RectanglePockets, PointAsNearToTwoCornersTakesTheLastOfThem)
{
    // (130, 100) is 30 from both lower corners, the lower left one comes last. The box's left side
    // middle is as near to the upper left as to the lower left; the upper middle goes to the right.
    Records outline = {Step(-4, 100, 100, -8), Step(5, 130, 100), Step(5, 160, 100),
                       Step(5, 160, 130),      Step(5, 160, 160), Step(5, 130, 160),
                       Step(5, 100, 160),      Step(5, 100, 130), Step(5, 100, 100)};
    rows::MarkPocket(outline, -46, "G42"); // reached in loop 0
    const Texts made = RowsOf(Excavate(outline));
    ASSERT_EQ(made.size(), 11U);
    EXPECT_EQ(made[1], "5 100 100"); // (100, 130)
    EXPECT_EQ(made[3], "5 160 160"); // (130, 160)
    EXPECT_EQ(made[5], "5 160 100"); // (160, 130)
    EXPECT_EQ(made[7], "5 100 100"); // (130, 100)
}

TEST_F(RectanglePockets, MarkTakesNoPartInTheBox)
{
    // The mark leads from far outside; the box and so the loops stay those of the lines.
    Records outline = SquareOutline({100, 100, 200, 160}, -5, "G42");
    outline[0].X = 0;
    outline[1].Y = 500;
    const Texts made = RowsOf(Excavate(outline));
    ASSERT_EQ(made.size(), 66U);
    EXPECT_EQ(made[8], "-1 104 104");
    EXPECT_EQ(made[65], "4 101 500");
}

TEST_F(RectanglePockets, LoopsEndHalfAPitchBeyondTheMiddle)
{
    // A polyline has one first point in each loop, so the other end is never reached: loops while the
    // inset is not above 10 + 5, with the pitch of 10 those of 0 and 10.
    Records outline = {Step(-4, 0, 0, -8), Step(5, 20, 0), Step(5, 40, 0),
                       Step(5, 40, 20),    Step(5, 0, 20), Step(5, 0, 0)};
    rows::MarkPocket(outline, -11, "");
    const Texts made = RowsOf(Excavate(outline));
    ASSERT_EQ(made.size(), 2U * 6 + 2);
    EXPECT_EQ(made[6], "-5 20 10"); // (10, 10) is the end itself: 10 from it on bearing 0
    EXPECT_EQ(made[7], "5 10 10");  // (0, 20): from the upper left corner
    // The last end reached is the first: 10 from (10, 10) towards (0, 0).
    EXPECT_EQ(made[12], "-4 2.929 2.929");
    EXPECT_TRUE(Lines.empty());
    // Pitch 20: (0, 0) reaches the first end from the wall, and 20 is not above 10 + 10.
    rows::MarkPocket(outline, -21, "");
    EXPECT_EQ(Excavate(outline).size(), 2U * 6 + 2);
    rows::MarkPocket(outline, -21.1, "");
    EXPECT_EQ(Excavate(outline).size(), 1U * 6 + 2);
}

TEST_F(RectanglePockets, OutlineThatReachesNoEndClosesAtTheFirst)
{
    // No record becomes the first point of a move: nothing is ever reached. 40 by 20, pitch 30: only the
    // wall is not beyond 10 + 15.
    Records outline = {Step(-4, 0, 0, -8), Step(5, 20, 0),  Step(-1, 40, 0),
                       Step(-1, 40, 20),   Step(-1, 0, 20), Step(-1, 0, 0)};
    rows::MarkPocket(outline, -31, "");
    outline[2].Kind = 0;
    const Texts made = RowsOf(Excavate(outline));
    ASSERT_EQ(made.size(), 6U + 2U);
    EXPECT_EQ(made[3], "5 40 0");             // a record of no kind counts as a polyline's
    EXPECT_EQ(made[6], "-4 -11.213 -11.213"); // 30 from (10, 10) at 225 degrees
}

} // namespace
} // namespace kv

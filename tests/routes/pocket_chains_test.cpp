// Which chains are taken for rectangular pockets, what stays a route and what is told about it.
#include <gtest/gtest.h>

#include <algorithm>

#include "routes/pocket_outlines.h"

namespace kv {
namespace {

using rows::Row;
using rows::RowsOf;
using rows::SquareOutline;
using rows::Step;
using rows::Together;
using Records = std::vector<RouteSegment>;
using Texts = std::vector<std::string>;

const Texts NotClearedLine = {rows::NotCleared("X100 Y100")};
const Texts NoRectangleLine = {rows::NoRectangle("X100 Y100")};
const Texts NoPitchLines = {"Excavation Pitch not specified! (Rectangle)", NotClearedLine[0]};

class PocketChains : public rows::PocketTest {};

TEST_F(PocketChains, PitchNotGivenIsToldAndTheOutlineStays)
{
    const Records outline = SquareOutline({100, 100, 200, 160}, -1, "G42");
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    EXPECT_EQ(Lines, NoPitchLines);
}

TEST_F(PocketChains, PitchBelowZeroIsNone)
{
    const Records outline = SquareOutline({100, 100, 200, 160}, -0.5, "G42 R5");
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    EXPECT_EQ(Lines, NoPitchLines);
    const Records negative = SquareOutline({100, 100, 200, 160}, -1, "G42 R-5");
    EXPECT_EQ(rows::Difference(Excavate(negative), negative), "");
    EXPECT_EQ(Lines, NoPitchLines);
}

TEST_F(PocketChains, OscillationWithoutANumberOnARouteIsNoPocketToTellOf)
{
    kv::Run.LayerTable[4] = "ROUTE \xEA"; // ROUTEOZ
    Records line = {Step(-1, 100, 100, -8), Step(1, 200, 100)};
    rows::MarkPocket(line, -1, "G42");
    EXPECT_EQ(rows::Difference(Excavate(line), line), "");
    EXPECT_EQ(Lines, Texts());
}

TEST_F(PocketChains, LayerOfAPocketIsNamedAsItWasDrawn)
{
    kv::Run.LayerTable[4] = "EXCAV \xE4"
                            "20"; // EXCAVLD20
    Records line = {Step(-1, 100, 100, -8), Step(1, 200, 100)};
    rows::MarkPocket(line, -5, "G42");
    Excavate(line);
    EXPECT_EQ(Lines, Texts{"Layer EXCAVLD20: the pocket at X100 Y100 is not cleared, its outline is open "
                           "at X200 Y100 by 100"});
}

TEST_F(PocketChains, EachOutlineWithoutPitchIsTold)
{
    Records second = SquareOutline({300, 100, 400, 160}, -1, "G41");
    rows::MarkPocket(second, -1, "G41", 2);
    Excavate(Together(SquareOutline({100, 100, 200, 160}, -1, "G42"), second));
    const Texts expected = {NoPitchLines[0], NoPitchLines[1], NoPitchLines[0],
                            "Layer EXCAV30: the pocket at X300 Y100 is not cleared"};
    EXPECT_EQ(Lines, expected);
}

TEST_F(PocketChains, FiveRecordsAreNoRectangle)
{
    // A closed polyline of four lines and a closing point.
    Records outline = {Step(-4, 100, 100, -8), Step(5, 200, 100), Step(5, 200, 160), Step(5, 100, 160),
                       Step(5, 100, 100)};
    rows::MarkPocket(outline, -5, "G42");
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    EXPECT_EQ(Lines,
              Texts{rows::Open("X100 Y100", "X100 Y100", "116.619")}); // behind the mark: from 200, 160
}

TEST_F(PocketChains, BoxWithoutAreaIsLeft)
{
    Records line = SquareOutline({100, 100, 200, 100}, -5, "G42 R5");
    EXPECT_EQ(rows::Difference(Excavate(line), line), "");
    EXPECT_EQ(Lines, NoRectangleLine);
    Records upright = SquareOutline({100, 100, 100, 200}, -5, "G42 R5");
    EXPECT_EQ(rows::Difference(Excavate(upright), upright), "");
    EXPECT_EQ(Lines, NoRectangleLine);
}

TEST_F(PocketChains, MarkInTheMiddleOfItsChainIsBroughtToTheFront)
{
    // The chain begins with two sides, then the mark, then the other two.
    Records outline = SquareOutline({100, 100, 200, 160}, -5, "G42 R5");
    const Records wanted = Excavate(outline);
    std::rotate(outline.begin(), outline.begin() + 6, outline.end());
    outline[0].Dir = -8;
    outline[4].Dir = 0;
    ASSERT_EQ(Row(outline[4]), "-4 100 100");
    const Records before = {Step(-1, 0, 0, -8), Step(1, 10, 0)};
    const Records behind = {Step(-1, 500, 0, -8), Step(1, 510, 0)};
    const Records made = Excavate(Together(Together(before, outline), behind));
    EXPECT_EQ(rows::Difference(made, Together(wanted, Together(before, behind))), "");
}

TEST_F(PocketChains, ChainAtTheListsHeadNeedsNoStart)
{
    Records outline = SquareOutline({100, 100, 200, 160}, -5, "G42 R5");
    const Records wanted = Excavate(outline);
    outline[0].Dir = 0;
    EXPECT_EQ(rows::Difference(Excavate(outline), wanted), "");
    // Nor does one whose mark comes later.
    outline[0].Dir = 0;
    std::rotate(outline.begin(), outline.begin() + 6, outline.end());
    EXPECT_EQ(rows::Difference(Excavate(outline), wanted), "");
}

TEST_F(PocketChains, ChainPutInOrderStaysSoWhenItIsNotCleared)
{
    Records chain = {Step(-1, 0, 0, -8), Step(1, 10, 0), Step(-4, 20, 0), Step(4, 30, 0)};
    rows::MarkPocket(chain, -5, "");
    const Texts expected = {"-4 20 0 d-8", "4 30 0", "-1 0 0", "1 10 0"};
    EXPECT_EQ(RowsOf(Excavate(chain)), expected);
    EXPECT_EQ(Lines, Texts{rows::Open("X20 Y0", "X10 Y0", "10")});
}

TEST_F(PocketChains, SecondMarkOfAChainIsPartOfTheOutline)
{
    // Only the first mark counts: no second set of loops begins at the other one, behind the lower side.
    Records outline = SquareOutline({100, 100, 200, 160}, -5, "");
    Records mark = {Step(-4, 150, 100), Step(4, 151, 100)};
    rows::MarkPocket(mark, -5, "");
    outline.insert(outline.begin() + 4, mark.begin(), mark.end());
    const Texts made = RowsOf(Excavate(outline));
    ASSERT_EQ(made.size(), 8U * 10 + 2);
    EXPECT_EQ(made[6], "-5 200 100"); // (151, 100), a polyline's point by its kind
    EXPECT_EQ(made[7], "5 100 100");  // (150, 100): as near to both, the lower left is last
    EXPECT_EQ(made[8], "-1 200 100");
}

TEST_F(PocketChains, RoutesBetweenPocketsStayAsTheyAre)
{
    const Records route = {Step(-4, 1, 1, -8), Step(4, 2, 1),  Step(-1, 3, 3),
                           Step(1, 4, 4),      Step(-1, 5, 5), Step(1, 6, 6)};
    const Records pocket = SquareOutline({100, 100, 200, 160}, -5, "G42 R5");
    const Records cleared = Excavate(pocket);
    const Records made = Excavate(Together(Together(route, pocket), Together(route, pocket)));
    EXPECT_EQ(rows::Difference(made, Together(Together(cleared, cleared), Together(route, route))), "");
    const Texts doubts = {rows::NarrowWays("X100 Y100"), rows::SharpStart("X100 Y100")};
    EXPECT_EQ(Lines, (Texts{doubts[0], doubts[1], doubts[0], doubts[1]}));
}

TEST_F(PocketChains, OscillatedRouteIsNoPocket)
{
    Records route = SquareOutline({100, 100, 200, 160}, 5, "G42 R5");
    EXPECT_EQ(rows::Difference(Excavate(route), route), "");
    EXPECT_TRUE(Lines.empty());
}

TEST_F(PocketChains, PocketWhoseMarkBecameALineStaysARouteAndIsTold)
{
    Records outline = SquareOutline({100, 100, 200, 160}, -5, "G42 R5");
    outline[0].Kind = -1;
    outline[1].Kind = 1;
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    EXPECT_EQ(Lines, Texts{rows::WithoutMark("X100 Y100")});
}

TEST_F(PocketChains, TinyPitchEndsAtTheLimitOfTheList)
{
    EXPECT_THROW(Excavate(SquareOutline({0, 0, 3000, 2000}, -1, "G42 R1E-9")), RunError);
    // An inset so small that it does not move the corners.
    EXPECT_THROW(Excavate(SquareOutline({1e30, 1e30, 3e30, 2e30}, -1, "G42 R1E-9")), RunError);
    EXPECT_THROW(Excavate(SquareOutline({0, 0, 3000, 2000}, -1, "G42 R1E-99")), RunError);
}

// Told from each other by their tools, in the order of the list.
Records WithTool(Records chain, int tool)
{
    for (RouteSegment& record : chain)
        record.ToolNo = static_cast<Int>(tool);
    return chain;
}
std::vector<int> ToolsOf(const Records& records)
{
    std::vector<int> tools;
    for (const RouteSegment& record : records)
        if (record.Dir == -8)
            tools.push_back(record.ToolNo);
    return tools;
}

TEST_F(PocketChains, PocketsStandInFrontOfTheRoutesByTool)
{
    const Records route = {Step(-1, 0, 0, -8), Step(1, 10, 0)};
    const Records square = SquareOutline({100, 100, 120, 120}, -5, "G42");
    const Records pair = rows::CircleOutline(100, 100, 10, -5, "G42");
    const Records uncleared = SquareOutline({100, 100, 120, 120}, -1, "G42");
    RouteCircle circle;
    circle.Radius = 10;
    circle.OscZ = -5;
    circle.Pass = 1;
    circle.ToolNo = 12;
    const Records list =
        Together(Together(WithTool(uncleared, 1), WithTool(square, 13)),
                 Together(WithTool(route, 2), Together(WithTool(pair, 11), WithTool(route, 3))));
    EXPECT_EQ(ToolsOf(Excavate(list, {circle})), (std::vector<int>{11, 12, 13, 1, 2, 3}));
    // Of equal tools the order of the list stays, circles of the circle list behind.
    circle.ToolNo = 11;
    circle.Comp = "G42 R1";
    const Records made = Excavate(list, {circle});
    EXPECT_EQ(ToolsOf(made), (std::vector<int>{11, 11, 13, 1, 2, 3}));
    EXPECT_EQ(made[0].Comp, "G42");
    EXPECT_EQ(made[14].Comp, "G42 R1");
}

TEST_F(PocketChains, PocketsOfANumberedListKeepTheirPlaces)
{
    kv::Run.MaxSequence = 20;
    const Records route = {Step(-1, 0, 0, -8), Step(1, 10, 0)};
    const Records square = SquareOutline({100, 100, 120, 120}, -5, "G42");
    RouteCircle circle;
    circle.Radius = 10;
    circle.OscZ = -5;
    circle.Pass = 1;
    circle.ToolNo = 12;
    RouteCircle other = circle;
    other.ToolNo = 11;
    const Records list =
        Together(Together(WithTool(square, 14), WithTool(square, 13)),
                 Together(WithTool(route, 2), Together(WithTool(square, 4), WithTool(route, 3))));
    EXPECT_EQ(ToolsOf(Excavate(list, {circle, other})), (std::vector<int>{14, 13, 11, 12, 2, 4, 3}));
    // Without a route they come behind all.
    EXPECT_EQ(ToolsOf(Excavate(WithTool(square, 14), {circle, other})), (std::vector<int>{14, 11, 12}));
}

TEST_F(PocketChains, OutlineOfARouteLayerIsNoPocket)
{
    kv::Run.LayerTable[4] = "ROUTE \xEA"; // ROUTEOZ
    const Records outline = SquareOutline({100, 100, 200, 160}, -1, "G42 R5");
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    EXPECT_TRUE(Lines.empty());
}

TEST_F(PocketChains, SideWithinTheToleranceIsStraightAndOneBeyondItIsSlanted)
{
    // The tolerance is .01 here; the upper left corner is drawn beside its place.
    Records outline = SquareOutline({100, 100, 200, 160}, -5, "G42");
    outline[7].X = outline[8].X = 100.0078125F;
    EXPECT_EQ(Excavate(outline).size(), 66U);
    outline[7].X = outline[8].X = 100.015625F;
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    EXPECT_EQ(Lines, NoRectangleLine);
    kv::Run.RouteTolerance = 0.015625F; // the wider of the two
    EXPECT_EQ(Excavate(outline).size(), 66U);
}

TEST_F(PocketChains, ArcThatRoundsNoCornerMakesNoRectangle)
{
    // A bay into the pocket: the arc's centre is the corner of the box.
    Records bay = rows::RoundedOutline({100, 100, 220, 180}, 15, -5, "");
    bay[4].Aux1 = 100;
    bay[4].Aux2 = 180;
    EXPECT_EQ(rows::Difference(Excavate(bay), bay), "");
    EXPECT_EQ(Lines, Texts{rows::NoRectangle("X100 Y115")});
}

TEST_F(PocketChains, CircleOfFourQuartersIsNoRectangle)
{
    Records quarters = rows::RoundedOutline({100, 100, 180, 180}, 40, -5, "");
    for (const int line : {14, 10, 6, 2})
        quarters.erase(quarters.begin() + line, quarters.begin() + line + 2);
    ASSERT_EQ(quarters.size(), 10U);
    EXPECT_EQ(rows::Difference(Excavate(quarters), quarters), "");
    EXPECT_EQ(Lines, Texts{rows::NoRectangle("X100 Y140")});
}

TEST_F(PocketChains, FullListTakesNoRecordMore)
{
    const Records outline = SquareOutline({100, 100, 200, 160}, -5, ""); // 66 records when cleared
    EXPECT_EQ(Excavate(Together(Records(32701, Step(1, 1, 1)), outline)).size(), 32767U);
    EXPECT_THROW(Excavate(Together(Records(32702, Step(1, 1, 1)), outline)), RunError);
}

TEST_F(PocketChains, EmptyListStaysEmpty)
{
    EXPECT_TRUE(Excavate({}).empty());
    EXPECT_EQ(kv::Run.SegmentCount, 0);
}

} // namespace
} // namespace kv

// Routes drawn in the views around the face, under each kind of control; the panel away from the
// drawing's origin, and the machine's origin in each corner.
#include "job/job_driver.h"
#include "routes/route_program.h"

namespace kv::test {
namespace {

// The face from (50, 50) on, 600 x 400 x 18, and a view of each edge at a distance of the thickness:
// above Y 468 to 486, below 14 to 32, left X 14 to 32, right 668 to 686.
const std::string Views = Rectangle("BORDERZ18", 50, 50, 600, 400) +
                          Rectangle("BORDERZ18", 50, 468, 600, 18) + Rectangle("BORDERZ18", 50, 14, 600, 18) +
                          Rectangle("BORDERZ18", 14, 50, 18, 400) + Rectangle("BORDERZ18", 668, 50, 18, 400);

// Cut in the order right, below, left, above, by nearness from (600, 400) on.
const std::string LinesInViews = Line("ROUTEZ5T71", 150, 472, 250, 472) +
                                 Line("ROUTEZ5T71", 160, 20, 260, 20) + Line("ROUTEZ5T71", 26, 150, 26, 250) +
                                 Line("ROUTEZ5T71", 675, 150, 675, 250);

const std::string Edge = "G88G90G55P";

class SideScene : public RouteProgram {
  protected:
    void ExpectViews(const std::string& entities, const ProgramText& operations)
    {
        ExpectOf(Views + entities, operations);
    }
    // The records that a writer of the third kind of control would get.
    std::vector<RouteSegment> FinalRecords(const std::string& entities)
    {
        std::vector<RouteSegment> records;
        Run.ControlType = 2;
        Stages.StopBeforeWriters = true;
        const AtStage look("final", [&] {
            for (Long i = 1; i <= RouteSegments.Last(); ++i)
                records.push_back(RouteSegments[i]);
        });
        EXPECT_TRUE(Home.Convert(Drawing(Views + entities))) << Home.ReportText();
        Stages.StopBeforeWriters = false;
        return records;
    }
};

// The plane's third axis is the depth in the view: the distance from the view's edge at the face.
const ProgramText ViewsOfAxes = {Edge + "4T0171X5Y100Z7",  "G1G90X5Y200Z7",  // right: 675 - 668
                                 Edge + "2T0171X110Y5Z12", "G1G90X210Y5Z12", // below: 32 - 20
                                 Edge + "3T0171X5Y100Z6",  "G1G90X5Y200Z6",  // left: 32 - 26
                                 Edge + "1T0171X100Y5Z4",  "G1G90X200Y5Z4"}; // above: 472 - 468

TEST_F(SideScene, LinesInTheViewsOfACnc90)
{
    ExpectViews(LinesInViews, ViewsOfAxes);
}

TEST_F(SideScene, LinesInTheViewsOfAGenesis)
{
    Run.ControlType = 1;
    ASSERT_TRUE(Home.Convert(Drawing(Views + LinesInViews))) << Home.ReportText();
    std::string text;
    for (const std::string& line : Around(ViewsOfAxes))
        text += line + "\r\n";
    EXPECT_EQ(Home.Read(Home.Programs / "DOOR"), text);
}

TEST_F(SideScene, LinesInTheViewsOfAnEvolution)
{
    // X along the edge, Y the height in the edge.
    const std::vector<RouteSegment> records = FinalRecords(LinesInViews);
    struct Row {
        Int Side;
        Single X, Y;
    };
    const Row rows[] = {
        {4, 100, 11}, {4, 200, 11}, // 668 + 18 - 675
        {2, 110, 6},  {2, 210, 6},  // 20 - 14
        {3, 100, 12}, {3, 200, 12}, // 26 - 14
        {1, 100, 14}, {1, 200, 14}, // 486 - 472
    };
    ASSERT_EQ(records.size(), std::size(rows));
    for (std::size_t i = 0; i < records.size(); ++i) {
        EXPECT_EQ(records[i].Side, rows[i].Side) << i;
        EXPECT_EQ(records[i].X, rows[i].X) << i;
        EXPECT_EQ(records[i].Y, rows[i].Y) << i;
    }
}

TEST_F(SideScene, AnArcAboveIsCutInThePlaneOfThatEdge)
{
    // From 180 to 0 degrees round (350, 472): the centre is 5 to the right of the start.
    ExpectViews(Arc("ROUTEZ5T71", 350, 472, 5, 0, 180), {Edge + "1T0171X295Y5Z4", "G2G90G18X305Z4I5K0"});
}

TEST_F(SideScene, AnArcBelowHasItsHeightTurned)
{
    // From (350, 25) to (355, 20) round (350, 20): J -5, so K 5; the end is 32 - 20 deep.
    ExpectViews(Arc("ROUTEZ5T71F3000", 350, 20, 5, 0, 90),
                {Edge + "2T0171X300Y5Z7", "G2G90G18F3000X305Z12I0K5"});
}

TEST_F(SideScene, AnArcAtTheLeftRunsInTheOtherPlane)
{
    ExpectViews(Arc("ROUTEZ5T71", 23, 250, 5, 0, 90), {Edge + "3T0171X5Y205Z9", "G2G90G19Y200Z4J-5K0"});
}

TEST_F(SideScene, AnArcAtTheRightRunsInTheOtherPlane)
{
    ExpectViews(Arc("ROUTEZ5T71", 677, 250, 5, 0, 90), {Edge + "4T0171X5Y205Z9", "G2G90G19Y200Z14J-5K0"});
}

TEST_F(SideScene, AnArcDrawnOnWithALineIsTurnedToo)
{
    // The line ends at the arc's end: counter-clockwise.
    ExpectViews(Line("ROUTEZ5T71", 295, 472, 345, 472) + Arc("ROUTEZ5T71", 350, 472, 5, 180, 0),
                {Edge + "1T0171X245Y5Z4", "G1G90X295Y5Z4", "G3G90G18X305Z4I5K0"});
}

TEST_F(SideScene, AnEvolutionsArcAboveChangesItsSense)
{
    // Height runs down there, so the stored clockwise arc is counter-clockwise on the edge.
    const std::vector<RouteSegment> records = FinalRecords(Arc("ROUTEZ5T71", 350, 472, 5, 0, 180));
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].Aux1, 300); // the centre goes with the points
    EXPECT_EQ(records[0].Aux2, 14);
    EXPECT_EQ(records[1].X, 305);
    EXPECT_EQ(records[1].Dir, -1);
    EXPECT_EQ(records[1].Aux1, 180); // its angles stay
    EXPECT_EQ(records[1].Aux2, 0);
}

TEST_F(SideScene, AnEvolutionsArcBelowKeepsItsSense)
{
    const std::vector<RouteSegment> records = FinalRecords(Arc("ROUTEZ5T71", 350, 20, 5, 0, 180));
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].Aux1, 300);
    EXPECT_EQ(records[0].Aux2, 6); // 20 - 14
    EXPECT_EQ(records[1].Dir, 0);
}

TEST_F(SideScene, AnEvolutionsPolylineAboveLeavesItsBulgesToTheWriter)
{
    const std::vector<RouteSegment> records =
        FinalRecords(Polyline("ROUTEZ5T71", {{150, 472, 0.5}, {160, 472, 0.25}, {170, 472}}));
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0].Aux2, 0.5F);
    EXPECT_EQ(records[1].Aux2, 0.25F);
}

TEST_F(SideScene, AnEvolutionsCompensationChangesHandsInTheMirroredViews)
{
    const std::string layer = "ROUTEZ5T71L3";
    const auto compOf = [&](double x, double y) {
        const std::vector<RouteSegment> records = FinalRecords(Line(layer, x, y, x + 2, y + 2));
        return records.empty() ? std::string() : std::string(records[0].Comp.Trimmed());
    };
    EXPECT_EQ(compOf(150, 472), "G42 R3"); // above
    EXPECT_EQ(compOf(150, 20), "G41 R3");
    EXPECT_EQ(compOf(20, 150), "G42 R3"); // left
    EXPECT_EQ(compOf(675, 150), "G41 R3");
    EXPECT_EQ(compOf(300, 200), "G41 R3");
}

TEST_F(SideScene, AChainGoesToTheSideOfMostOfItsPoints)
{
    // Three of the four points lie in the view above; the fourth goes with them. 444 - 468 is -24.
    ExpectViews(Line("ROUTEZ5T71", 150, 472, 250, 472) + Line("ROUTEZ5T71", 250, 472, 250, 444),
                {Edge + "1T0171X100Y5Z4", "G1G90X200Y5Z4", "G1G90X200Y5Z-24"});
}

TEST_F(SideScene, TiesGoToTheLowerSide)
{
    ExpectViews(Line("ROUTEZ5T71", 250, 472, 250, 444), {Edge + "1T0171X200Y5Z4", "G1G90X200Y5Z-24"});
}

TEST_F(SideScene, TheFaceTakesItsOriginOff)
{
    ExpectViews(Line("ROUTEZ5T71", 150, 250, 250, 250) + Circle("ROUTEZ5T71", 350, 250, 100),
                {Edge + "5T0171X100Y200Z5", "G1G90X200Y200Z5", "G37G90X300Y200A180.Z5"});
}

TEST_F(SideScene, AMachineOriginAtTheUpperRightMirrorsTheFace)
{
    // Both mirrored: the points from 600 and 400; the centre with them.
    const std::string panel = Rectangle("BORDERURZ18", 50, 50, 600, 400);
    ASSERT_TRUE(Home.Convert(
        Drawing(panel + Line("ROUTEZ5T71", 150, 250, 250, 250) + Arc("ROUTEZ5T71", 250, 300, 50, 270, 0))));
    EXPECT_EQ(Home.Program(),
              Around({"G88G90G56P5T0171X500Y200Z5", "G1G90X400Y200Z5", "G38G90X400Y150A0.00Z5"}));
}

} // namespace
} // namespace kv::test

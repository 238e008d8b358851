// Pockets drawn with their tool: the written program against the outline, in square millimetres. The
// tool has radius 3 and the loops are 4 apart, where nothing else is said. A sharp corner keeps what
// the tool's own radius leaves, (1 - pi / 4) times its square; and where the way begins in a sharp corner
// the tool comes down beside its first line, half of it outside, and takes that corner's rest along.
#include <algorithm>
#include <cmath>

#include "machine/cnc_reader.h"
#include "routes/pocket_outlines.h"
#include "routes/route_program.h"
#include "support/proof/beside_outline.h"

namespace kv::test {
namespace {

constexpr double CornerShare = 1 - 3.14159265358979323846 / 4;
constexpr double HalfTool = 3.14159265358979323846 / 2 * 9;
constexpr double Chords = 0.05; // mm2 that arcs drawn as chords may be off on a whole outline

class DrawnPocket : public RouteProgram {
  protected:
    const std::string Pocket = "EXCAVZ5K4T71R3";

    static std::string Mark(const std::string& layer, double x1, double y1, double x2, double y2)
    {
        return Polyline(layer, {{x1, y1}, {x2, y2}}, Arrow);
    }
    // 100 to 200 by 100 to 160, counter-clockwise from the lower left corner's end.
    static std::string Rounded(const std::string& layer, double r)
    {
        return Line(layer, 100 + r, 100, 200 - r, 100) + Arc(layer, 200 - r, 100 + r, r, 270, 0) +
               Line(layer, 200, 100 + r, 200, 160 - r) + Arc(layer, 200 - r, 160 - r, r, 0, 90) +
               Line(layer, 200 - r, 160, 100 + r, 160) + Arc(layer, 100 + r, 160 - r, r, 90, 180) +
               Line(layer, 100, 160 - r, 100, 100 + r) + Arc(layer, 100 + r, 100 + r, r, 180, 270) +
               Mark(layer, 99 + r, 100, 100 + r, 100);
    }
    static std::string Path(const std::string& layer, const std::vector<PathPoint>& points)
    {
        std::string text;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const PathPoint& to = points[(i + 1) % points.size()];
            text += Line(layer, points[i].X, points[i].Y, to.X, to.Y);
        }
        return text;
    }
    DrawnArea AreaOf(const std::string& entities, const Region& outline)
    {
        EXPECT_TRUE(Home.Convert(Drawing(Panel + entities))) << Home.ReportText();
        const DrawnArea area = AreaBeside(Home.Program(), outline);
        EXPECT_EQ(area.Fault, "");
        RecordProperty("CutOutside", std::to_string(area.CutOutside));
        RecordProperty("LeftInside", std::to_string(area.LeftInside));
        return area;
    }
    // Nothing outside, nothing left inside.
    void ExpectCleared(const std::string& entities, const Region& outline)
    {
        const DrawnArea area = AreaOf(entities, outline);
        EXPECT_EQ(area.CutOutside, 0) << area.Outside;
        EXPECT_LT(area.LeftInside, Chords) << area.Left;
    }
    // The way begins in one of four corners that the tool does not fill, sharp or rounded less than the
    // tool: the tool takes all of the first one along.
    void ExpectClearedFromACorner(const std::string& entities, const Region& outline, double cornerRadius = 0)
    {
        const DrawnArea area = AreaOf(entities, outline);
        const double beyond = CornerShare * cornerRadius * cornerRadius;
        EXPECT_NEAR(area.CutOutside, HalfTool + beyond, Chords) << area.Outside;
        EXPECT_NEAR(area.LeftInside, 3 * (CornerShare * 9 - beyond), Chords) << area.Left;
    }
    // The outline stays the route that it is, and one line says so.
    void ExpectUncleared(const std::string& entities, const ProgramText& operations, const std::string& told)
    {
        Expect(entities, operations, AcrossGaps);
        int lines = 0;
        for (const std::string& line : Home.Lines)
            lines += line.rfind("Layer ", 0) == 0 ? 1 : 0;
        EXPECT_EQ(lines, 1) << Home.ReportText();
        EXPECT_TRUE(Home.Reported(told)) << Home.ReportText();
    }
};

const Region Box = BoxOf({100, 100}, {200, 160});

TEST_F(DrawnPocket, RectangleKeepsItsSharpCornersAlone)
{
    ExpectClearedFromACorner(Rectangle(Pocket, 100, 100, 100, 60) + Mark(Pocket, 99, 100, 100, 100), Box);
}

TEST_F(DrawnPocket, RectangleIsClearedWhereverItsMarkPoints)
{
    for (const PathPoint& from :
         {PathPoint{99, 100}, {101, 100}, {100, 99}, {100, 101}, {130, 130}, {60, 80}})
        ExpectClearedFromACorner(
            Rectangle(Pocket, 100, 100, 100, 60) + Mark(Pocket, from.X, from.Y, 100, 100), Box);
}

TEST_F(DrawnPocket, ClockwiseRectangle)
{
    ExpectClearedFromACorner(Path(Pocket, {{100, 100}, {100, 160}, {200, 160}, {200, 100}}) +
                                 Mark(Pocket, 100, 99, 100, 100),
                             Box);
}

TEST_F(DrawnPocket, PolylineRectangle)
{
    ExpectClearedFromACorner(Polyline(Pocket, {{100, 100}, {200, 100}, {200, 160}, {100, 160}}, Closed) +
                                 Mark(Pocket, 99, 100, 100, 100),
                             Box);
}

TEST_F(DrawnPocket, PolylineRectangleWhereSeamsOfPolylinesLieInMidLine)
{
    Config.CornerComp = 1;
    ExpectClearedFromACorner(Polyline(Pocket, {{100, 100}, {200, 100}, {200, 160}, {100, 160}}, Closed) +
                                 Mark(Pocket, 99, 100, 100, 100),
                             Box);
}

TEST_F(DrawnPocket, CornersOf2KeepWhatAToolOf3Leaves)
{
    ExpectClearedFromACorner(Rounded(Pocket, 2), BoxOf({100, 100}, {200, 160}, 2), 2);
}

TEST_F(DrawnPocket, CornersOf5)
{
    ExpectCleared(Rounded(Pocket, 5), BoxOf({100, 100}, {200, 160}, 5));
}

TEST_F(DrawnPocket, CornersOf15)
{
    ExpectCleared(Rounded(Pocket, 15), BoxOf({100, 100}, {200, 160}, 15));
}

TEST_F(DrawnPocket, CornersOf28)
{
    ExpectCleared(Rounded(Pocket, 28), BoxOf({100, 100}, {200, 160}, 28));
}

TEST_F(DrawnPocket, CornersOf36WithAToolOf6)
{
    const std::string layer = "EXCAVZ5K8T71R6";
    ExpectCleared(Line(layer, 136, 100, 260, 100) + Arc(layer, 260, 136, 36, 270, 0) +
                      Line(layer, 296, 136, 296, 164) + Arc(layer, 260, 164, 36, 0, 90) +
                      Line(layer, 260, 200, 136, 200) + Arc(layer, 136, 164, 36, 90, 180) +
                      Line(layer, 100, 164, 100, 136) + Arc(layer, 136, 136, 36, 180, 270) +
                      Mark(layer, 126, 100, 136, 100),
                  BoxOf({100, 100}, {296, 200}, 36));
}

TEST_F(DrawnPocket, HalfCirclesFromAnyPointInBothTurnings)
{
    for (const bool counterClockwise : {false, true})
        for (const double begin : {90.0, 270.0, 180.0, 0.0, 45.0}) {
            // Arcs that are drawn are cut clockwise, so the chained records are exchanged.
            const AtStage look("chained", [&] {
                std::vector<RouteSegment> chain = rows::HalfCircles({100, 100}, 10, begin, counterClockwise);
                Long next = 0;
                for (RouteSegment& record : chain) {
                    RouteSegment drawn = RouteSegments[++next];
                    drawn.Kind = record.Kind;
                    drawn.X = record.X;
                    drawn.Y = record.Y;
                    drawn.Aux1 = record.Aux1;
                    drawn.Aux2 = record.Aux2;
                    drawn.Dir = record.Dir;
                    record = drawn;
                }
                rows::Hand(chain);
            });
            SCOPED_TRACE(begin);
            ExpectCleared(Arc(Pocket, 100, 100, 10, 270, 90) + Arc(Pocket, 100, 100, 10, 90, 270),
                          DiscOf({100, 100}, 10));
        }
}

TEST_F(DrawnPocket, HalfCirclesAsDrawn)
{
    for (const double begin : {90.0, 270.0, 180.0, 0.0, 45.0}) {
        const double other = begin >= 180 ? begin - 180 : begin + 180;
        ExpectCleared(Arc(Pocket, 100, 100, 10, begin, other) + Arc(Pocket, 100, 100, 10, other, begin),
                      DiscOf({100, 100}, 10));
    }
}

TEST_F(DrawnPocket, CircleOfTheCircleList)
{
    ExpectCleared(Circle(Pocket, 100, 100, 10), DiscOf({100, 100}, 10));
}

TEST_F(DrawnPocket, PitchOfTheToolsDiameterLeavesIslandsAtSharpCornersAlone)
{
    // 6 apart with a tool of 3: each of five loops leaves its corners, but the first corner is cut.
    const std::string layer = "EXCAVZ5T71R3";
    const DrawnArea area = AreaOf(Rectangle(layer, 100, 100, 100, 60) + Mark(layer, 99, 100, 100, 100), Box);
    EXPECT_NEAR(area.CutOutside, HalfTool, Chords);
    EXPECT_GT(area.LeftInside, 15 * CornerShare * 9);
    EXPECT_LT(area.LeftInside, 0.01 * 100 * 60);
}

TEST_F(DrawnPocket, PitchAboveTheToolCutsTheWallAlone)
{
    // 50 apart: the corners are nearer than that to the middle's ends, so the wall is the only loop, and
    // it begins and ends in its corner. Left inside are 88 by 48.
    const std::string layer = "EXCAVZ5K50T71R3";
    const DrawnArea area = AreaOf(Rectangle(layer, 100, 100, 100, 60) + Mark(layer, 99, 100, 100, 100), Box);
    EXPECT_NEAR(area.CutOutside, 2 * HalfTool, Chords);
    EXPECT_NEAR(area.LeftInside, 88 * 48 + 3 * CornerShare * 9, Chords);
}

TEST_F(DrawnPocket, PitchOfAHundredthOfTheTool)
{
    const std::string layer = "EXCAVZ5K.06T71R3";
    ExpectClearedFromACorner(Rectangle(layer, 100, 100, 24, 12) + Mark(layer, 99, 100, 100, 100),
                             BoxOf({100, 100}, {124, 112}, 0));
    EXPECT_TRUE(Home.Reported("Layer EXCAVZ5K.06T71R3: the pocket at X99 Y100 has ways that are narrower "
                              "than its tool"))
        << Home.ReportText();
}

TEST_F(DrawnPocket, ToolWiderThanThePocketIsNotCut)
{
    const std::string layer = "EXCAVZ5K4T71R3";
    const DrawnArea area =
        AreaOf(Rectangle(layer, 100, 100, 40, 5) + Mark(layer, 99, 100, 100, 100) +
                   Rectangle("EXCAVZ5K4T71R2", 200, 200, 40, 5) + Mark("EXCAVZ5K4T71R2", 199, 200, 200, 200),
               BoxOf({200, 200}, {240, 205}, 0));
    EXPECT_LT(area.CutOutside, 150); // of the other one alone, which the first one's place is far from
    EXPECT_FALSE(Holds(SweptFace(ReadCnc(Home.Program())), {120, 102.5}));
    EXPECT_TRUE(Home.Reported(
        "Layer EXCAVZ5K4T71R3: the pocket at X99 Y100 is not cleared, it is narrower than its tool"))
        << Home.ReportText();
}

// A sharp rectangle of 100 by 60 with its loops `pitch` apart; the report's lines about it.
class PocketDoubts : public DrawnPocket {
  protected:
    const std::string SharpBegin = "begins in a sharp corner and cuts into its wall";
    const std::string Islands = "leaves islands at its sharp corners";
    const std::string Wood = "leaves wood between its ways";
    const std::string Narrow = "has ways that are narrower than its tool";

    struct Drawn {
        DrawnArea Area;
        std::vector<std::string> Lines; // behind the pocket's place
    };
    Drawn DrawnOf(const std::string& entities, const Region& outline)
    {
        Drawn drawn{AreaOf(entities, outline), {}};
        for (const std::string& line : Home.Lines) {
            const std::size_t place = line.find("the pocket at ");
            if (place != std::string::npos)
                drawn.Lines.push_back(line.substr(line.find(' ', line.find(" Y", place) + 1) + 1));
        }
        return drawn;
    }
    static bool Holds(const Drawn& drawn, const std::string& line)
    {
        return std::find(drawn.Lines.begin(), drawn.Lines.end(), line) != drawn.Lines.end();
    }
    Drawn Sharp(double pitch, double radius, double width = 100, double height = 60)
    {
        const std::string layer = "EXCAVZ5K" + Number(pitch) + "T71R" + Number(radius);
        return DrawnOf(Rectangle(layer, 100, 100, width, height) + Mark(layer, 99, 100, 100, 100),
                       BoxOf({100, 100}, {100 + width, 100 + height}, 0));
    }
    Drawn Round(double pitch, double corner)
    {
        return DrawnOf(Rounded("EXCAVZ5K" + Number(pitch) + "T71R3", corner),
                       BoxOf({100, 100}, {200, 160}, corner));
    }
};

TEST_F(PocketDoubts, BeginningInASharpCornerIsToldAndARoundedOneIsNot)
{
    const Drawn sharp = Sharp(4, 3);
    EXPECT_TRUE(Holds(sharp, SharpBegin)) << Home.ReportText();
    EXPECT_NEAR(sharp.Area.CutOutside, HalfTool, Chords);
    const Drawn tight = Round(4, 2.9); // the tool does not fit into its corners
    EXPECT_TRUE(Holds(tight, SharpBegin)) << Home.ReportText();
    EXPECT_GT(tight.Area.CutOutside, 10);
    for (const double corner : {3.1, 5.0, 15.0}) {
        const Drawn round = Round(4, corner);
        EXPECT_FALSE(Holds(round, SharpBegin)) << Home.ReportText();
        EXPECT_EQ(round.Area.CutOutside, 0);
    }
}

TEST_F(PocketDoubts, APitchAbove1707RadiiLeavesIslandsAtSharpCorners)
{
    // 10 (1 + sqrt 0.5) is 17.071; a route tolerance of 0.1 is passed over. Radius 10 in 200 by 180.
    for (const double pitch : {12.0, 16.0, 17.0, 17.1})
        EXPECT_FALSE(Holds(Sharp(pitch, 10, 200, 180), Islands)) << pitch << Home.ReportText();
    for (const double pitch : {17.2, 18.0, 20.0})
        EXPECT_TRUE(Holds(Sharp(pitch, 10, 200, 180), Islands)) << pitch << Home.ReportText();
}

TEST_F(PocketDoubts, IslandsAreThereWhereTheyAreTold)
{
    // What three sharp corners of the wall keep, the first one being cut; all else are islands.
    const double corners = 3 * CornerShare * 100;
    for (const double pitch : {12.0, 16.0, 17.0}) {
        const Drawn drawn = Sharp(pitch, 10, 200, 180);
        EXPECT_NEAR(drawn.Area.LeftInside, corners, 3) << pitch;
    }
    for (const double pitch : {18.5, 20.0}) {
        const Drawn drawn = Sharp(pitch, 10, 200, 180);
        EXPECT_GT(drawn.Area.LeftInside, corners + 5) << pitch;
    }
}

TEST_F(PocketDoubts, RoundedCornersLeaveIslandsFromTheirSecondSharpLoopOn)
{
    // The pitch of the tool's diameter: corners of 15 are sharp from the third loop on.
    const Drawn wide = Round(6, 15);
    EXPECT_TRUE(Holds(wide, Islands)) << Home.ReportText();
    EXPECT_GT(wide.Area.LeftInside, 3);
    const Drawn narrow = Round(5, 15);
    EXPECT_FALSE(Holds(narrow, Islands)) << Home.ReportText();
    EXPECT_LT(narrow.Area.LeftInside, Chords);
}

TEST_F(PocketDoubts, APitchAboveTheDiameterLeavesWood)
{
    for (const double pitch : {6.2, 8.0, 10.0, 50.0}) {
        const Drawn drawn = Sharp(pitch, 3);
        EXPECT_TRUE(Holds(drawn, Wood)) << pitch << Home.ReportText();
        EXPECT_FALSE(Holds(drawn, Islands)) << pitch << Home.ReportText();
        EXPECT_GT(drawn.Area.LeftInside, pitch < 7 ? 40 : 400) << pitch;
    }
    const Drawn diameter = Sharp(6, 3);
    EXPECT_FALSE(Holds(diameter, Wood)) << Home.ReportText();
    EXPECT_TRUE(Holds(diameter, Islands)) << Home.ReportText();
    // One way around clears a pocket of two tools: nothing is left but the corners.
    const Drawn small = Sharp(20, 3, 40, 12);
    EXPECT_EQ(small.Lines, std::vector<std::string>{SharpBegin}) << Home.ReportText();
    EXPECT_LT(small.Area.LeftInside, 3 * CornerShare * 9 + Chords);
    EXPECT_TRUE(Holds(Sharp(20, 3, 40, 13), Wood)) << Home.ReportText();
}

TEST_F(PocketDoubts, CirclesWithAPitchAboveTheDiameterLeaveWood)
{
    for (const double radius : {7.0, 10.0, 12.0, 15.0, 30.0})
        for (const double pitch : {4.0, 6.0, 6.2, 8.0, 13.0, 30.0}) {
            const std::string layer = "EXCAVZ5K" + Number(pitch) + "T71R3";
            const std::string list = Circle(layer, 200, 200, radius);
            const std::string pair =
                Arc(layer, 200, 200, radius, 0, 180) + Arc(layer, 200, 200, radius, 180, 0);
            for (const std::string& circle : {list, pair}) {
                const Drawn drawn = DrawnOf(circle, DiscOf({200, 200}, radius));
                const bool isTold = pitch > 6.1 && (radius >= 12 || pitch > 2 * radius);
                EXPECT_EQ(Holds(drawn, Wood), isTold) << radius << " " << pitch << Home.ReportText();
                EXPECT_TRUE(!isTold || drawn.Area.LeftInside > 0) << radius << " " << pitch;
                // A core of a few square millimetres is all that the diameter itself can leave.
                EXPECT_TRUE(pitch > 6 || drawn.Area.LeftInside < 7) << radius << " " << pitch;
            }
        }
}

TEST_F(PocketDoubts, NarrowWaysThatCutOutsideAreToldAsSuch)
{
    // Width and step in pairs. The wall alone, beginning and ending in its corner, cuts two half discs.
    int cut = 0, kept = 0;
    for (const double height : {6.5, 8.0, 9.5, 10.0, 11.0, 12.5, 13.0, 16.0, 20.0, 30.0})
        for (const double pitch : {3.1, 4.0, 5.0, 6.0}) {
            const Drawn drawn = Sharp(pitch, 3, 50, height);
            const bool isTold = Holds(drawn, Narrow + " and cut outside of it");
            EXPECT_EQ(isTold, drawn.Area.CutOutside > 2 * HalfTool + Chords ||
                                  (Holds(drawn, Narrow) && drawn.Area.CutOutside > HalfTool + Chords))
                << height << " " << pitch << " " << drawn.Area.CutOutside << Home.ReportText();
            (isTold ? cut : kept) += 1;
        }
    EXPECT_GT(cut, 5);
    EXPECT_GT(kept, 5);
}

TEST_F(PocketDoubts, NarrowWaysOfCirclesThatCutOutsideAreToldAsSuch)
{
    for (const double radius : {3.2, 3.5, 4.0, 5.0, 6.0, 8.0, 12.0})
        for (const double pitch : {1.0, 2.0, 4.0, 5.0, 6.0}) {
            const std::string layer = "EXCAVZ5K" + Number(pitch) + "T71R3";
            const std::string pair =
                Arc(layer, 200, 200, radius, 0, 180) + Arc(layer, 200, 200, radius, 180, 0);
            for (const std::string& circle : {Circle(layer, 200, 200, radius), pair}) {
                const Drawn drawn = DrawnOf(circle, DiscOf({200, 200}, radius));
                // Half turns lie a little off the centre: what that alone moves out is not told.
                const bool isTold = Holds(drawn, Narrow + " and cut outside of it");
                EXPECT_TRUE(isTold ? drawn.Area.CutOutside > 0 : drawn.Area.CutOutside < 3)
                    << radius << " " << pitch << " " << drawn.Area.CutOutside << Home.ReportText();
            }
        }
}

TEST_F(PocketDoubts, NothingIsSaidWithoutTheToolsRadius)
{
    const std::string layer = "EXCAVZ5K8T71";
    EXPECT_TRUE(
        Home.Convert(Drawing(Panel + Rectangle(layer, 100, 100, 100, 60) + Mark(layer, 99, 100, 100, 100))));
    EXPECT_EQ(Home.ReportText().find("the pocket at"), std::string::npos) << Home.ReportText();
}

TEST_F(PocketDoubts, ARoundedPocketWithAFineStepHasTheReportItHad)
{
    EXPECT_EQ(Round(4, 15).Lines, std::vector<std::string>{Narrow}) << Home.ReportText();
    // 4.5 apart: the last loop, inset 27, is as wide as the tool.
    EXPECT_EQ(Round(4.5, 15).Lines, std::vector<std::string>()) << Home.ReportText();
}

const std::string NoRectangle = "Layer EXCAVZ5K4T71R3: the pocket at X99 Y100 is not cleared, its outline is "
                                "no rectangle";

ProgramText RouteAlong(const std::vector<PathPoint>& points)
{
    ProgramText program = {Start + "G42R3X100Y100Z5"};
    for (std::size_t i = 1; i <= points.size(); ++i) {
        const PathPoint& to = points[i % points.size()];
        program.push_back("G1G90X" + Number(to.X) + "Y" + Number(to.Y) + "Z5");
    }
    return program;
}

TEST_F(DrawnPocket, OutlinesOfOtherFormsStayRoutesAndAreTold)
{
    const std::vector<PathPoint> outlines[] = {
        {{100, 100}, {200, 100}, {200, 130}, {150, 130}, {150, 160}, {100, 160}}, // an L
        {{100, 100}, {150, 80}, {200, 100}, {200, 160}, {150, 180}, {100, 160}},  // a hexagon
        {{100, 100}, {200, 100}, {150, 160}},                                     // a triangle
        {{100, 100}, {200, 100}, {200, 160}, {100.2, 160}},                       // a slanted side
    };
    for (const std::vector<PathPoint>& points : outlines)
        ExpectUncleared(Path(Pocket, points) + Mark(Pocket, 99, 100, 100, 100), RouteAlong(points),
                        NoRectangle);
}

TEST_F(DrawnPocket, OpenOutlineStaysARouteAndIsTold)
{
    ExpectUncleared(Line(Pocket, 100, 100, 200, 100) + Line(Pocket, 200, 100, 200, 160) +
                        Line(Pocket, 200, 160, 100, 160) + Mark(Pocket, 99, 100, 100, 100),
                    {Start + "G42R3X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y160Z5", "G1G90X100Y160Z5"},
                    "Layer EXCAVZ5K4T71R3: the pocket at X99 Y100 is not cleared, its outline is open at "
                    "X100 Y160 by 60");
}

TEST_F(DrawnPocket, PolylineWithBulgesStaysARouteAndIsTold)
{
    // The upper side is a half circle outward.
    ExpectUncleared(Polyline(Pocket, {{100, 100}, {200, 100}, {200, 160, 1}, {100, 160}}, Closed) +
                        Mark(Pocket, 99, 100, 100, 100),
                    {Start + "G42R3X100Y100Z5", "G1G90X200Y100Z5", "G1G90X200Y160Z5", "G38G90X100Y160U50Z5",
                     "G1G90X100Y100Z5"},
                    NoRectangle);
}

TEST_F(DrawnPocket, ALensStaysARouteAndIsTold)
{
    // Two arcs of radius 10 whose centres lie 12 apart, 8 up and down from the middle to their ends.
    const double half = std::atan2(8, 6) / std::atan(1) * 45;
    const AtStage look("chained", [&] { ASSERT_EQ(RouteSegments.Last(), 4); });
    AreaOf(Arc(Pocket, 106, 100, 10, 180 - half, 180 + half) + Arc(Pocket, 94, 100, 10, -half, half),
           DiscOf({100, 100}, 10));
    EXPECT_EQ(Home.Program().size(), 3U + 3U) << Home.ReportText();
    EXPECT_TRUE(Home.ReportText().find("is not cleared, its two arcs are no circle") != std::string::npos)
        << Home.ReportText();
}

} // namespace
} // namespace kv::test

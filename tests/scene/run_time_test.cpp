// A program in figures, and the estimate of its time, worked out by hand.
#include "scene/run_time.h"

#include <gtest/gtest.h>

#include "machine/program_reader.h"

namespace kv::test {
namespace {

RunFigures FiguresOfLines(const std::string& lines, const std::string& header = "G71X600Y400Z20T00N4L1\n")
{
    return FiguresOf(SceneOf(ReadProgram(header + lines)));
}

TEST(RunTimes, AProgramWithoutWorkTakesNoTime)
{
    const RunFigures figures = FiguresOfLines("M2\n");
    EXPECT_EQ(figures.Bores + figures.Stops + figures.Saws + figures.Routes, 0U);
    EXPECT_EQ(figures.Seconds, 0);
    EXPECT_EQ(figures.PathLength, 0);
}

TEST(RunTimes, ABoreIsAStopAndTheWayToTheNextIsRapid)
{
    // 300 mm at 30,000 a minute: 0.6 s.
    const RunFigures figures = FiguresOfLines("G81G90G55P5R54=8X100Y50Z10\nG81G90G55P5R54=8X400Y50Z10\n");
    EXPECT_EQ(figures.Bores, 2U);
    EXPECT_EQ(figures.Stops, 2U);
    EXPECT_NEAR(figures.Seconds, 2.5 + 0.6 + 2.5, 1e-9);
    EXPECT_EQ(figures.PathLength, 0) << "a bore is no path";
}

TEST(RunTimes, FromPlaneToPlaneCountsATimeOfItsOwn)
{
    const RunFigures figures = FiguresOfLines("G81G90G55P5R54=8X100Y50Z10\nG81G90G55P1R54=8X100Y30Z4\n");
    EXPECT_NEAR(figures.Seconds, 2.5 + 3 + 2.5, 1e-9);
}

TEST(RunTimes, ARouteGoesByTheFeedOfEachMove)
{
    // 300 mm at 6,000 a minute: 3 s; 200 mm without a feed at 5,000: 2.4 s.
    const RunFigures figures = FiguresOfLines("G88G90G55P5T0171X10Y10Z5\nG1G90F6000X310Y10Z5\n"
                                              "G1G90X310Y210Z5\n");
    EXPECT_EQ(figures.Routes, 1U);
    EXPECT_NEAR(figures.PathLength, 500, 1e-9);
    EXPECT_NEAR(figures.Seconds, 2 + 3 + 2.4, 1e-9);
}

TEST(RunTimes, AnArcCountsAlongItsCircle)
{
    Move arc;
    arc.IsArc = true;
    arc.Centre = {100, 0};
    arc.From = {200, 0};
    arc.To = {100, 100};
    arc.Sweep = 90;
    EXPECT_NEAR(LengthOf(arc), 157.0796, 1e-4);
    arc.Sweep = -270;
    EXPECT_NEAR(LengthOf(arc), 471.2389, 1e-4);
    arc.IsArc = false;
    EXPECT_NEAR(LengthOf(arc), 141.4214, 1e-4);
}

TEST(RunTimes, ASawCutHasAFeedOfItsOwn)
{
    // 500 mm at 10,000 a minute: 3 s.
    MachineSteps steps;
    steps.Length = 600;
    steps.Width = 400;
    steps.Saws.push_back({{50, 100}, {550, 100}, 8, 4, 0, "61", 2});
    const RunFigures figures = FiguresOf(SceneOf(steps));
    EXPECT_EQ(figures.Saws, 1U);
    EXPECT_NEAR(figures.PathLength, 500, 1e-9);
    EXPECT_NEAR(figures.Seconds, 2 + 3, 1e-9);
}

TEST(RunTimes, AStopOfTheHeadIsOneStopHoweverManyDrillsItHas)
{
    MachineSteps steps;
    steps.Length = 600;
    steps.Width = 400;
    steps.Rows.push_back({{50, 100}, {242, 100}, 8, "01", 2});
    const RunFigures figures = FiguresOf(SceneOf(steps));
    EXPECT_EQ(figures.Stops, 1U);
    EXPECT_EQ(figures.Bores, 0U);
    EXPECT_NEAR(figures.Seconds, 2.5, 1e-9);
}

TEST(RunTimes, BoresOfOneLineAreDrilledTogether)
{
    // 300 mm from the last of the stop's drills to the lone bore: 0.6 s.
    MachineSteps steps;
    steps.Length = 600;
    steps.Width = 400;
    for (const double x : {36.0, 68.0, 100.0})
        steps.Bores.push_back({Plane::Surface, {x, 50}, 10, 5, "01", 2});
    steps.Bores.push_back({Plane::Surface, {400, 50}, 10, 5, "01", 3});
    const RunFigures figures = FiguresOf(SceneOf(steps));
    EXPECT_EQ(figures.Bores, 4U);
    EXPECT_EQ(figures.Stops, 2U);
    EXPECT_NEAR(figures.Seconds, 2.5 + 0.6 + 2.5, 1e-9);
}

TEST(RunTimes, WaysOfAProgramInInchesAreMillimetres)
{
    // 2 inches are 50.8 mm; at 5,080 a minute: 0.6 s.
    const RunFigures figures =
        FiguresOfLines("G88G90G55P5T0171X1Y1Z0.2\nG1G90F5080X3Y1Z0.2\n", "G70X20Y10Z1T00N4L1\n");
    EXPECT_NEAR(figures.PathLength, 50.8, 1e-9);
    EXPECT_NEAR(figures.Seconds, 2 + 0.6, 1e-9);
}

TEST(RunTimes, FiguresOfSeveralProgramsAddUp)
{
    RunFigures sum = FiguresOfLines("G81G90G55P5R54=8X100Y50Z10\n");
    sum.Add(FiguresOfLines("G88G90G55P5T0171X10Y10Z5\nG1G90F6000X310Y10Z5\n"));
    EXPECT_EQ(sum.Bores, 1U);
    EXPECT_EQ(sum.Routes, 1U);
    EXPECT_NEAR(sum.PathLength, 300, 1e-9);
    EXPECT_NEAR(sum.Seconds, 2.5 + 2 + 3, 1e-9);
}

} // namespace
} // namespace kv::test

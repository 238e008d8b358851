// The estimate of a program's time, held against times worked out by hand.
#include "scene/run_time.h"

#include <limits>

#include <gtest/gtest.h>

#include "machine/program_reader.h"

namespace kv::test {
namespace {

Scene TimedScene(const std::string& lines)
{
    return SceneOf(ReadProgram("G71X3000Y2000Z20T00N4L1\n" + lines));
}

TEST(RunTimes, AnEmptyProgramTakesNone)
{
    EXPECT_EQ(EstimatedSeconds(TimedScene("M2\n")), 0);
}

TEST(RunTimes, BoresAndTheWayBetweenThemAreCounted)
{
    TimeRates rates;
    rates.Plunge = 2;
    rates.RapidSpeed = 6000; // 100 mm a second
    const Scene scene = TimedScene("G81G90G55P5R54=8X100Y50Z20\nG81G90G55P5R54=8X600Y50Z20\n");
    ASSERT_EQ(scene.Items.size(), 2U);
    EXPECT_NEAR(EstimatedSeconds(scene, rates), 2 + 5 + 2, 1e-9);
}

TEST(RunTimes, ARouteTakesItsLengthByItsFeed)
{
    TimeRates rates;
    rates.Plunge = 0;
    const Scene scene = TimedScene("G88G90G55P5T0171G41R5X100Y100Z8\nG1G90F3000X1100Y100Z8\n");
    EXPECT_NEAR(EstimatedSeconds(scene, rates), 1000 / 3000.0 * 60, 1e-9);
}

TEST(RunTimes, AnArcCountsByTheLengthOfItsWay)
{
    Scene scene;
    SceneItem item;
    item.Shape = WorkShape::Route;
    Move half;
    half.IsArc = true;
    half.From = {100, 0};
    half.To = {-100, 0};
    half.Sweep = 180;
    half.Feed = 600; // 10 mm a second
    item.Way = {half};
    scene.Items = {item};
    TimeRates rates;
    rates.Plunge = 0;
    EXPECT_NEAR(EstimatedSeconds(scene, rates), 31.4159, 1e-3);
}

TEST(RunTimes, AFeedThatIsNotNamedIsThatOfTheRates)
{
    Scene scene;
    SceneItem item;
    item.Shape = WorkShape::Route;
    Move line;
    line.To = {500, 0};
    item.Way = {line};
    scene.Items = {item};
    TimeRates rates;
    rates.Plunge = 1;
    rates.FeedNotNamed = 1500;
    EXPECT_NEAR(EstimatedSeconds(scene, rates), 1 + 20, 1e-9);
}

TEST(RunTimes, TheTextSaysThatItIsAnEstimate)
{
    EXPECT_EQ(EstimateText(0), "about 0 s, an estimate");
    EXPECT_EQ(EstimateText(59.4), "about 59 s, an estimate");
    EXPECT_EQ(EstimateText(131), "about 2 min 10 s, an estimate");
    EXPECT_EQ(EstimateText(3599), "about 1 h 0 min, an estimate");
    EXPECT_EQ(EstimateText(7290), "about 2 h 2 min, an estimate");
    EXPECT_EQ(EstimateText(std::numeric_limits<double>::infinity()), "no estimate of the time");
}

} // namespace
} // namespace kv::test

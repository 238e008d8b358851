// The cutter's way up and down along a route. Expected depths are worked out by hand: panel 18 thick,
// amplitude 2, so a whole wave is 4 long and a move of 1 changes the depth by .5.
#include "routes/depth_passes.h"

#include <gtest/gtest.h>

#include <cmath>

#include "routes/segment_rows.h"
#include "support/scene.h"

namespace kv {
namespace {

using rows::Step;
using Records = std::vector<RouteSegment>;
using Texts = std::vector<std::string>;

const Texts ShallowWarning = {"OSCILLATION IN Z attempted on shallow route!"};

class OscillationInZ : public testing::Test {
  protected:
    void SetUp() override
    {
        test::ResetProcess();
        ResetRun();
        kv::Run.PartThickness = 18;
    }
    void TearDown() override { test::ResetProcess(); }

    std::vector<Single> Depths(const Records& records)
    {
        rows::Hand(records);
        const rows::ReportLines report;
        OscillateZ();
        Lines = rows::ReportLines::Shown();
        std::vector<Single> depths;
        for (const RouteSegment& record : rows::All())
            depths.push_back(record.Z);
        return depths;
    }
    Texts Lines;
};

// A polyline along X through these places, 20 deep.
Records Along(const std::vector<double>& places, double z = 20, double amplitude = 2)
{
    Records records;
    for (const double x : places)
        records.push_back(Step(records.empty() ? -5 : 5, x, 0, records.empty() ? -8 : 0));
    for (RouteSegment& record : records) {
        record.Z = ToSingle(z);
        record.OscZ = ToSingle(amplitude);
    }
    return records;
}

TEST_F(OscillationInZ, RouteThroughThePanelGoesDeeperAndBack)
{
    // Moves of 1: .5, 1, 1.5, 2; the fifth would reach 2.5 and turns; then back to 0 and over it.
    EXPECT_EQ(Depths(Along({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11})),
              (std::vector<Single>{20, 20.5F, 21, 21.5F, 22, 22, 21.5F, 21, 20.5F, 20, 20, 20.5F}));
    EXPECT_TRUE(Lines.empty());
}

TEST_F(OscillationInZ, RouteAsDeepAsThePanelIsNotOscillatedAndWarned)
{
    EXPECT_EQ(Depths(Along({0, 1, 2}, 18)), (std::vector<Single>{18, 18, 18}));
    EXPECT_EQ(Lines, ShallowWarning);
}

TEST_F(OscillationInZ, RouteDeeperByAThousandthIsOscillated)
{
    EXPECT_EQ(Depths(Along({0, 1, 2}, 18.001)),
              (std::vector<Single>{18.001F, ToSingle(18.001F + 0.5), ToSingle(18.001F + 1.0)}));
    EXPECT_TRUE(Lines.empty());
}

TEST_F(OscillationInZ, WarningComesOnceForAllRoutes)
{
    Records records = Along({0, 1}, 10);
    const Records second = Along({5, 6}, 12);
    const Records deep = Along({7, 8}, 20);
    records.insert(records.end(), second.begin(), second.end());
    records.insert(records.end(), deep.begin(), deep.end());
    EXPECT_EQ(Depths(records), (std::vector<Single>{10, 10, 12, 12, 20, 20.5F}));
    EXPECT_EQ(Lines, ShallowWarning);
}

TEST_F(OscillationInZ, ShallowRouteWithoutOscillationIsNotWarned)
{
    EXPECT_EQ(Depths(Along({0, 1}, 10, 0)), (std::vector<Single>{10, 10}));
    EXPECT_TRUE(Lines.empty());
    EXPECT_EQ(Depths(Along({0, 1}, 10, -5)), (std::vector<Single>{10, 10})); // a pocket that was left
    EXPECT_TRUE(Lines.empty());
}

TEST_F(OscillationInZ, DeepRouteWithoutOscillationStays)
{
    EXPECT_EQ(Depths(Along({0, 1, 2}, 20, 0)), (std::vector<Single>{20, 20, 20}));
    EXPECT_EQ(Depths(Along({0, 1, 2}, 20, -5)), (std::vector<Single>{20, 20, 20}));
    EXPECT_TRUE(Lines.empty());
}

TEST_F(OscillationInZ, FirstRecordOfARouteAloneSaysHowFar)
{
    Records records = Along({0, 1, 2}, 20, 2);
    records[1].OscZ = records[2].OscZ = 0;
    records[1].Z = 5; // shallow, but its route goes through
    EXPECT_EQ(Depths(records), (std::vector<Single>{20, 5.5F, 21}));
    EXPECT_TRUE(Lines.empty());
}

TEST_F(OscillationInZ, WaveBeginsAnewWithEachRoute)
{
    Records records = Along({0, 3}, 20);
    const Records second = Along({3, 4}, 20);
    records.insert(records.end(), second.begin(), second.end());
    EXPECT_EQ(Depths(records), (std::vector<Single>{20, 21.5F, 20, 20.5F}));
    const Records shallow = Along({4, 5}, 10); // no wave is left over from the one in front
    records.insert(records.end(), shallow.begin(), shallow.end());
    EXPECT_EQ(Depths(records), (std::vector<Single>{20, 21.5F, 20, 20.5F, 10, 10}));
}

TEST_F(OscillationInZ, DepthCodesArePassedBy)
{
    // 90 and more are codes; the move behind one is measured from its point.
    Records records = Along({0, 1, 2, 3}, 20);
    records[1].Z = 90;
    records[2].Z = 97;
    EXPECT_EQ(Depths(records), (std::vector<Single>{20, 90, 97, 20.5F}));
    records[1].Z = 89.5F;
    EXPECT_EQ(Depths(records), (std::vector<Single>{20, 90, 97, 21}));
}

TEST_F(OscillationInZ, RouteThatBeginsWithACodeGoesOnWithTheWaveInFront)
{
    Records records = Along({0, 1}, 20);
    Records second = Along({1, 2}, 20, 0);
    second[0].Z = 90;
    records.insert(records.end(), second.begin(), second.end());
    EXPECT_EQ(Depths(records), (std::vector<Single>{20, 20.5F, 90, 21}));
}

TEST_F(OscillationInZ, RecordsInFrontOfTheFirstRouteStay)
{
    Records records = Along({0, 1, 2}, 20);
    records[0].Dir = 0;
    EXPECT_EQ(Depths(records), (std::vector<Single>{20, 20, 20}));
    EXPECT_TRUE(Lines.empty());
}

TEST_F(OscillationInZ, TaperedRecordsAndFirstPointsArePassedBy)
{
    Records records = Along({0, 1, 2, 3, 4}, 20);
    records[1].Kind = 4;
    records[2].Kind = -4;
    records[3].Kind = -1;
    EXPECT_EQ(Depths(records), (std::vector<Single>{20, 20, 20, 20, 20.5F}));
}

TEST_F(OscillationInZ, LongMovesGoFromOneHeightToTheOther)
{
    // 8 is two waves: up to the amplitude, back to 0, and so on.
    EXPECT_EQ(Depths(Along({0, 8, 16, 24})), (std::vector<Single>{20, 22, 20, 22}));
}

TEST_F(OscillationInZ, LongMoveThatWouldStayLowGoesUp)
{
    // 3 long: offset 1.5. Then 8: held at 2, only .5 from where it was, so it goes to 0 instead, and on
    // from there: .5.
    EXPECT_EQ(Depths(Along({0, 3, 11, 12})), (std::vector<Single>{20, 21.5F, 20, 20.5F}));
}

TEST_F(OscillationInZ, LongMoveThatWouldStayHighGoesDown)
{
    // 5 long: held at 2. Then 3 back: .5. Then 8: held at 0, only .5 from where it was, so it goes to 2,
    // and on from there upward: 1.5.
    EXPECT_EQ(Depths(Along({0, 5, 8, 16, 17})), (std::vector<Single>{20, 22, 20.5F, 22, 21.5F}));
}

TEST_F(OscillationInZ, HalfTheAmplitudeIsFarEnough)
{
    // 2 long: offset 1. Then 8: held at 2, which is 1 away and not below half of 2: it stays there.
    EXPECT_EQ(Depths(Along({0, 2, 10, 11})), (std::vector<Single>{20, 21, 22, 21.5F}));
}

TEST_F(OscillationInZ, MoveOfOneWholeWaveIsNotLong)
{
    // 3 long: 1.5. Then 4, exactly one wave: held at 2, and stays.
    EXPECT_EQ(Depths(Along({0, 3, 7, 8})), (std::vector<Single>{20, 21.5F, 22, 21.5F}));
}

TEST_F(OscillationInZ, NextLineOrArcTakesTheDepthOver)
{
    Records records = Along({0, 1, 2, 3}, 20);
    records[1].Kind = 1;
    records[2].Kind = 1; // takes 20.5 over and adds its own 1
    records[3].Kind = 3; // takes 21.5 over and adds 1.5
    EXPECT_EQ(Depths(records), (std::vector<Single>{20, 20.5F, 21.5F, 23}));
}

TEST_F(OscillationInZ, NextPolylinePointOrStartKeepsItsOwnDepth)
{
    Records records = Along({0, 1, 2, 3, 4}, 20);
    records[1].Kind = 1;
    records[2].Kind = -1;
    records[3].Kind = 1;
    records[4].Kind = 5;
    EXPECT_EQ(Depths(records), (std::vector<Single>{20, 20.5F, 20, 21, 21.5F}));
    Records start = Along({0, 1, 2}, 20);
    start[2].Kind = 1; // of a route of its own
    start[2].Dir = -8;
    EXPECT_EQ(Depths(start), (std::vector<Single>{20, 20.5F, 20}));
}

TEST_F(OscillationInZ, NextRecordsCodeIsTakenOverToo)
{
    Records records = Along({0, 1, 2}, 20);
    records[2].Kind = 1;
    records[2].Z = 95;
    EXPECT_EQ(Depths(records), (std::vector<Single>{20, 20.5F, 21.5F}));
}

TEST_F(OscillationInZ, WaveIsKeptInFullPrecision)
{
    // Slanted steps, half of their length in depth: rounded only when a depth is stored.
    kv::Run.PartThickness = -1;
    Records records = Along(std::vector<double>(28, 0), 0);
    std::vector<Single> expected;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const double place = static_cast<double>(i) * 0.1;
        records[i].X = records[i].Y = ToSingle(place);
        expected.push_back(ToSingle(std::sqrt(2.0) * static_cast<double>(records[i].X) / 2));
    }
    EXPECT_EQ(Depths(records), expected);
}

TEST_F(OscillationInZ, EmptyListIsNotWarned)
{
    EXPECT_TRUE(Depths({}).empty());
    EXPECT_TRUE(Lines.empty());
}

} // namespace
} // namespace kv

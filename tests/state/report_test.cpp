// Rows as a front end gets them: marks, colours, centring, the held-back buffer and the meters.
#include "state/report.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/events.h"

namespace kv {
namespace {

std::vector<ReportRow> Shown;
std::vector<std::pair<Meter, int>> Moves;
int Pumps = 0;

using Colour = std::vector<int>;

Colour ColourOf(const ReportRow& row)
{
    return {row.Red, row.Green, row.Blue};
}

const Colour Black = {0, 0, 0};
const Colour Red = {155, 0, 0};
const Colour Green = {0, 155, 0};
const Colour Blue = {0, 0, 255};
const Colour Pink = {255, 0, 100};

class ProcessReport : public testing::Test {
  protected:
    void SetUp() override
    {
        ReportMessage(2, ""); // what an earlier test has left in the buffer
        ReportMessage(0, "");
        ZeroMeters();
        SetMeterInterval(0);
        ReaderPercentDone = nullptr;
        Shown.clear();
        Moves.clear();
        Pumps = 0;
        Report.ShowRow = [](const ReportRow& row) { Shown.push_back(row); };
        Report.ClearRows = [] { Shown.clear(); };
        Report.MeterMoved = [](Meter meter, int percent) { Moves.emplace_back(meter, percent); };
        Events.Pump = [] { ++Pumps; };
    }
    void TearDown() override
    {
        Report = {};
        Events = {};
        ReaderPercentDone = nullptr;
        SetMeterInterval(0);
        ZeroMeters();
    }
};

TEST_F(ProcessReport, BufferedLineIsShownByTheFlush)
{
    ReportMessage(1, "one");
    ReportMessage(1, "two");
    EXPECT_TRUE(Shown.empty());
    EXPECT_EQ(Pumps, 0);

    ReportMessage(2, "");
    ASSERT_EQ(Shown.size(), 2u); // the final carriage return begins no third row
    EXPECT_EQ(Shown[0].Text, "one");
    EXPECT_EQ(Shown[1].Text, "two");
    EXPECT_EQ(Pumps, 1);
}

TEST_F(ProcessReport, FlushEmptiesTheBuffer)
{
    ReportMessage(1, "one");
    ReportMessage(2, "");
    ReportMessage(2, "");
    EXPECT_EQ(Shown.size(), 1u);
}

TEST_F(ProcessReport, FlushOfAnEmptyBufferAddsNoRowAndLetsNoEventsRun)
{
    ReportMessage(2, "not shown");
    EXPECT_TRUE(Shown.empty());
    EXPECT_EQ(ReportRowCount(), 0);
    EXPECT_EQ(Pumps, 0);
}

TEST_F(ProcessReport, BufferedEmptyLineIsARow)
{
    ReportMessage(1, "");
    ReportMessage(2, "");
    ASSERT_EQ(Shown.size(), 1u);
    EXPECT_EQ(Shown[0].Text, "");
    EXPECT_FALSE(Shown[0].Centred);
}

TEST_F(ProcessReport, LineAddedWhileTheFlushLetsEventsRunIsLost)
{
    Events.Pump = [] { ReportMessage(1, "from an event"); };
    ReportMessage(1, "one");
    ReportMessage(2, "");
    ReportMessage(2, "");
    ASSERT_EQ(Shown.size(), 1u);
    EXPECT_EQ(Shown[0].Text, "one");
}

TEST_F(ProcessReport, CodeThreeShowsAtOnceAndLeavesTheBuffer)
{
    ReportMessage(1, "held");
    ReportMessage(3, "now");
    ASSERT_EQ(Shown.size(), 1u);
    EXPECT_EQ(Shown[0].Text, "now");
    EXPECT_EQ(Pumps, 1);

    ReportMessage(2, "");
    ASSERT_EQ(Shown.size(), 2u);
    EXPECT_EQ(Shown[1].Text, "held");
}

TEST_F(ProcessReport, ClearEmptiesTheRowsAndKeepsTheBuffer)
{
    ReportMessage(3, "old");
    ReportMessage(1, "held");
    ReportMessage(0, "");
    EXPECT_TRUE(Shown.empty());
    EXPECT_EQ(ReportRowCount(), 0);

    ReportMessage(2, "");
    ASSERT_EQ(Shown.size(), 1u);
    EXPECT_EQ(Shown[0].Text, "held");
    EXPECT_EQ(ReportRowCount(), 1);
}

TEST_F(ProcessReport, CodesAboveThreeAndBelowZeroAreIgnored)
{
    for (const int code : {4, 5, 99, -1})
        ReportMessage(code, "nothing");
    ReportMessage(2, "");
    EXPECT_TRUE(Shown.empty());
    EXPECT_EQ(Pumps, 0);
}

TEST_F(ProcessReport, EachMarkHasItsColour)
{
    ReportMessage(3, "\x80r");
    ReportMessage(3, "\x81g");
    ReportMessage(3, "\x82"
                     "b");
    ReportMessage(3, "\x83p");
    ASSERT_EQ(Shown.size(), 4u);
    EXPECT_EQ(ColourOf(Shown[0]), Red);
    EXPECT_EQ(ColourOf(Shown[1]), Green);
    EXPECT_EQ(ColourOf(Shown[2]), Blue);
    EXPECT_EQ(ColourOf(Shown[3]), Pink);
    EXPECT_EQ(Shown[0].Text, "r");
    EXPECT_EQ(Shown[3].Text, "p");
}

TEST_F(ProcessReport, MarkOnTheFirstLineColoursAllLinesOfItsText)
{
    ReportMessage(3, "\x80one\rtwo\rthree");
    ASSERT_EQ(Shown.size(), 3u);
    for (const ReportRow& row : Shown)
        EXPECT_EQ(ColourOf(row), Red) << row.Text;
    EXPECT_EQ(Shown[2].Text, "three");
}

TEST_F(ProcessReport, ColourGoesOnThroughAFlushUntilTheNextMark)
{
    ReportMessage(1, "plain");
    ReportMessage(1, "\x81green");
    ReportMessage(1, "still green");
    ReportMessage(1, "\x83pink");
    ReportMessage(2, "");
    ASSERT_EQ(Shown.size(), 4u);
    EXPECT_EQ(ColourOf(Shown[0]), Black);
    EXPECT_EQ(ColourOf(Shown[1]), Green);
    EXPECT_EQ(ColourOf(Shown[2]), Green);
    EXPECT_EQ(ColourOf(Shown[3]), Pink);
}

TEST_F(ProcessReport, ColourStartsBlackAtEachCall)
{
    ReportMessage(3, "\x80red");
    ReportMessage(3, "plain");
    ASSERT_EQ(Shown.size(), 2u);
    EXPECT_EQ(ColourOf(Shown[1]), Black);
}

TEST_F(ProcessReport, UnknownMarkIsRemovedAndLeavesTheColour)
{
    ReportMessage(3, "\x80red\r\x84still red\r\xFFtoo");
    ASSERT_EQ(Shown.size(), 3u);
    EXPECT_EQ(Shown[1].Text, "still red");
    EXPECT_EQ(ColourOf(Shown[1]), Red);
    EXPECT_EQ(Shown[2].Text, "too");
    EXPECT_EQ(ColourOf(Shown[2]), Red);
}

TEST_F(ProcessReport, LineThatBeginsWithAnAccentedLetterLosesIt)
{
    ReportMessage(3, "\xC4pfel.dxf"); // A-umlaut
    ASSERT_EQ(Shown.size(), 1u);
    EXPECT_EQ(Shown[0].Text, "pfel.dxf");
    EXPECT_EQ(ColourOf(Shown[0]), Black);
}

TEST_F(ProcessReport, OnlyTheFirstCharacterIsAMark)
{
    ReportMessage(3, "\x80\x81text \x82 end");
    ASSERT_EQ(Shown.size(), 1u);
    EXPECT_EQ(Shown[0].Text, "\x81text \x82 end");
    EXPECT_EQ(ColourOf(Shown[0]), Red);
}

TEST_F(ProcessReport, CharacterOneHundredTwentySevenIsNoMark)
{
    ReportMessage(3, "\x7Ftext");
    ASSERT_EQ(Shown.size(), 1u);
    EXPECT_EQ(Shown[0].Text, "\x7Ftext");
}

TEST_F(ProcessReport, BlankBehindTheMarkCentresTheTrimmedText)
{
    ReportMessage(3, "\x82  For  \rleft \r \x80");
    ASSERT_EQ(Shown.size(), 3u);
    EXPECT_TRUE(Shown[0].Centred);
    EXPECT_EQ(Shown[0].Text, "For");
    EXPECT_FALSE(Shown[1].Centred);
    EXPECT_EQ(Shown[1].Text, "left");
    EXPECT_TRUE(Shown[2].Centred); // a mark behind a blank is no mark
    EXPECT_EQ(Shown[2].Text, "\x80");
    EXPECT_EQ(ColourOf(Shown[2]), Blue);
}

TEST_F(ProcessReport, BlankLineIsAnEmptyCentredRow)
{
    ReportMessage(3, " ");
    ASSERT_EQ(Shown.size(), 1u);
    EXPECT_EQ(Shown[0].Text, "");
    EXPECT_TRUE(Shown[0].Centred);
}

TEST_F(ProcessReport, MarkAloneIsAnEmptyRow)
{
    ReportMessage(3, "\x80\rred");
    ASSERT_EQ(Shown.size(), 2u);
    EXPECT_EQ(Shown[0].Text, "");
    EXPECT_FALSE(Shown[0].Centred);
    EXPECT_EQ(ColourOf(Shown[1]), Red);
}

TEST_F(ProcessReport, RowCountGrowsByEachShownLine)
{
    ReportMessage(3, "one\rtwo");
    ReportMessage(1, "three");
    EXPECT_EQ(ReportRowCount(), 2);
    ReportMessage(2, "");
    EXPECT_EQ(ReportRowCount(), 3);
}

TEST_F(ProcessReport, WithoutAFrontEndRowsAreCountedAndGoNowhere)
{
    Report = {};
    Events = {};
    ReportMessage(3, "one");
    SetMeter(Meter::Processing, 10);
    EXPECT_EQ(ReportRowCount(), 1);
    EXPECT_EQ(MeterValue(Meter::Processing), 10);
    ReportMessage(0, "");
    EXPECT_EQ(ReportRowCount(), 0);
}

TEST_F(ProcessReport, FailedFilesAreListedUnderTheirHeading)
{
    ReportFailedFiles({"", "C:\\DXF\\A.DXF", "~"});
    ASSERT_EQ(Shown.size(), 3u);
    EXPECT_EQ(Shown[0].Text, "*** The Following files failed to process: ***");
    EXPECT_TRUE(Shown[0].Centred);
    EXPECT_EQ(Shown[1].Text, "C:\\DXF\\A.DXF");
    EXPECT_EQ(Shown[2].Text, "~");
    EXPECT_EQ(Pumps, 1);
}

TEST_F(ProcessReport, NoFailedFilesGiveNoHeading)
{
    ReportFailedFiles({});
    ReportFailedFiles({""}); // element 0 is blank and no file
    EXPECT_TRUE(Shown.empty());
}

using Meters = ProcessReport;

TEST_F(Meters, ValueIsHeldBetweenNothingAndAHundred)
{
    SetMeter(Meter::PgmCode, 140);
    EXPECT_EQ(MeterValue(Meter::PgmCode), 100);
    SetMeter(Meter::PgmCode, -3);
    EXPECT_EQ(MeterValue(Meter::PgmCode), 0);
}

TEST_F(Meters, FrontEndHearsOnlyOfChanges)
{
    SetMeter(Meter::Sequencing, 5);
    SetMeter(Meter::Sequencing, 5);
    SetMeter(Meter::Sequencing, 200);
    SetMeter(Meter::Sequencing, 100);
    const std::vector<std::pair<Meter, int>> expected = {{Meter::Sequencing, 5}, {Meter::Sequencing, 100}};
    EXPECT_EQ(Moves, expected);
}

TEST_F(Meters, AllAreZeroedAtTheEndOfAFile)
{
    SetMeter(Meter::Parsing, 100);
    SetMeter(Meter::PgmCode, 40);
    ZeroMeters();
    for (int i = 0; i < MeterCount; ++i)
        EXPECT_EQ(MeterValue(static_cast<Meter>(i)), 0) << i;
    EXPECT_EQ(Moves.size(), 4u); // two up, two down
}

TEST_F(Meters, FastTimerFollowsTheReader)
{
    ReaderPercentDone = [] { return 37; };
    SetMeter(Meter::Processing, 20);
    SetMeterInterval(25);
    TickMeters();
    EXPECT_EQ(MeterValue(Meter::Parsing), 37);
    EXPECT_EQ(MeterValue(Meter::Processing), 20);

    ReaderPercentDone = nullptr;
    TickMeters();
    EXPECT_EQ(MeterValue(Meter::Parsing), 37);
}

TEST_F(Meters, IntervalOfAHundredIsNoLongerFast)
{
    ReaderPercentDone = [] { return 37; };
    SetMeter(Meter::Processing, 20);
    SetMeterInterval(99);
    TickMeters();
    EXPECT_EQ(MeterValue(Meter::Parsing), 37);
    EXPECT_EQ(MeterValue(Meter::Processing), 20);

    ReaderPercentDone = [] { return 38; };
    SetMeterInterval(100);
    TickMeters();
    EXPECT_EQ(MeterValue(Meter::Parsing), 37);
    EXPECT_EQ(MeterValue(Meter::Processing), 21);
}

TEST_F(Meters, SlowTimerLetsStartedMetersCreepUpToAHundred)
{
    SetMeterInterval(1000);
    SetMeter(Meter::Parsing, 50);
    SetMeter(Meter::ReadingInfo, 1);
    SetMeter(Meter::SynLeads, 99);
    SetMeter(Meter::PgmCode, 98);
    TickMeters();
    TickMeters();
    EXPECT_EQ(MeterValue(Meter::Parsing), 50);    // the reader's own
    EXPECT_EQ(MeterValue(Meter::ReadingInfo), 3); // 1 and two ticks
    EXPECT_EQ(MeterValue(Meter::Processing), 0);  // not started
    EXPECT_EQ(MeterValue(Meter::SynLeads), 100);  // stays there
    EXPECT_EQ(MeterValue(Meter::PgmCode), 100);
}

TEST_F(Meters, StoppedTimerMovesNothing)
{
    ReaderPercentDone = [] { return 37; };
    SetMeter(Meter::Processing, 20);
    SetMeterInterval(0);
    TickMeters();
    EXPECT_EQ(MeterValue(Meter::Parsing), 0);
    EXPECT_EQ(MeterValue(Meter::Processing), 20);
    EXPECT_EQ(MeterInterval(), 0);
}

} // namespace
} // namespace kv

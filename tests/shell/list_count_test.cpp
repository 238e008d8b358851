// How far a list is: numbers with commas, the title, the last line.
#include "shell/list_count.h"

#include "shell/unattended.h"

namespace kv {
namespace {

using ListCounts = Unattended;

TEST_F(ListCounts, NumbersHaveCommasBetweenThousands)
{
    EXPECT_EQ(WithCommas(0), "0");
    EXPECT_EQ(WithCommas(999), "999");
    EXPECT_EQ(WithCommas(1000), "1,000");
    EXPECT_EQ(WithCommas(4951), "4,951");
    EXPECT_EQ(WithCommas(1234567), "1,234,567");
    EXPECT_EQ(WithCommas(-1234), "-1,234");
}

TEST_F(ListCounts, TheTitleNamesFailuresWhenThereAreSome)
{
    EXPECT_EQ(TitleOfRun(), "Korvanti");
    RunningList = {5000, 47, 0};
    EXPECT_EQ(TitleOfRun(), "Korvanti - 47 of 5,000");
    RunningList.Failed = 1;
    EXPECT_EQ(TitleOfRun(), "Korvanti - 47 of 5,000, 1 failed");
    RunningList = {};
}

TEST_F(ListCounts, TheLastLineHasCommas)
{
    const CountedList counted(5000);
    CountFinishedJob();
    TellListCount();
    ReportMessage(2, "");
    EXPECT_EQ(Here.Lines.back(), "1 written, 0 failed, 4,999 not begun");
}

TEST_F(ListCounts, ASingleDrawingIsNoList)
{
    const CountedList counted(1);
    CountFinishedJob();
    TellListCount();
    ReportMessage(2, "");
    EXPECT_EQ(TitleOfRun(), "Korvanti");
    EXPECT_TRUE(Here.Lines.empty());
}

TEST_F(ListCounts, TheTitleFollowsARunOfTheWindow)
{
    static Names titles;
    titles.clear();
    ShellWindow.Changed = [] {
        if (titles.empty() || titles.back() != TitleOfRun())
            titles.push_back(TitleOfRun());
    };
    Put("A.DXF", BoredPanel());
    Put("B.DXF", FailingDrawing());
    ListFiles({"A.DXF", "B.DXF"});
    PressStart();
    StartConversion();
    EXPECT_EQ(titles, (Names{"Korvanti", "Korvanti - 0 of 2", "Korvanti - 1 of 2",
                             "Korvanti - 2 of 2, 1 failed", "Korvanti"}));
    EXPECT_EQ(Here.Lines.back(), "1 written, 1 failed, 0 not begun");
}

TEST_F(ListCounts, AStoppedBatchNamesTenDrawingsAndCountsTheOthers)
{
    Config.AutoStartBatch = true;
    std::string lines;
    Put("D0.DXF", FailingDrawing());
    for (int i = 0; i < 13; ++i)
        lines += "D" + std::to_string(i) + "\r\n";
    WarmUp();
    Put("BATCH.LST", lines);
    Tick();
    EXPECT_EQ(
        Told("Not done: D0.DXF, D1.DXF, D2.DXF, D3.DXF, D4.DXF, D5.DXF, D6.DXF, D7.DXF, D8.DXF, D9.DXF and 3 "
             "more"),
        1)
        << Here.ReportText();
    EXPECT_EQ(Here.Lines.back(), "0 written, 1 failed, 12 not begun");
}

TEST_F(ListCounts, ABatchThatIsDoneNamesNothing)
{
    Config.AutoStartBatch = true;
    Put("A.DXF", BoredPanel());
    Put("B.DXF", BoredPanel());
    WarmUp();
    Put("BATCH.LST", "A\r\nB\r\n");
    Tick();
    EXPECT_EQ(Told("Not done"), 0) << Here.ReportText();
    EXPECT_EQ(Here.Lines.back(), "2 written, 0 failed, 0 not begun");
}

} // namespace
} // namespace kv

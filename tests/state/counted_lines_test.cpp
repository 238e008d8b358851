// Lines with numbers as a front end gets them, and many of one number on one layer as one line.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/dialogs.h"
#include "platform/events.h"
#include "state/report.h"

namespace kv {
namespace {

std::vector<ReportRow> RowsTold;

class CountedLines : public testing::Test {
  protected:
    void SetUp() override
    {
        ReportMessage(2, ""); // what an earlier test has left in the buffer
        RowsTold.clear();
        Report.ShowRow = [](const ReportRow& row) { RowsTold.push_back(row); };
    }
    void TearDown() override
    {
        Report = {};
        Events = {};
        Dialogs = {};
    }
    static void TellNarrow(const std::string& layer, int x)
    {
        Tell(Message::PocketTooNarrow,
             {{"layer", layer}, {"place", "X" + std::to_string(x) + " Y0"}, {"line", x}});
    }
    static std::vector<std::string> Texts()
    {
        ReportMessage(2, "");
        std::vector<std::string> texts;
        for (const ReportRow& row : RowsTold)
            texts.push_back(row.Text);
        return texts;
    }
};

std::string Narrow(const std::string& layer, int x)
{
    return "Layer " + layer + ": the pocket at X" + std::to_string(x) +
           " Y0 is not cleared, it is narrower than its tool";
}

TEST_F(CountedLines, RowHasNumberAndValuesOfItsLine)
{
    TellNarrow("A", 7);
    ReportMessage(1, "a frame");
    EXPECT_EQ(Texts(), (std::vector<std::string>{Narrow("A", 7), "a frame"}));
    EXPECT_EQ(RowsTold[0].Line.Number, Message::PocketTooNarrow);
    ASSERT_NE(FindValue(RowsTold[0].Line, "layer"), nullptr);
    EXPECT_EQ(FindValue(RowsTold[0].Line, "layer")->Text, "A");
    EXPECT_EQ(FindValue(RowsTold[0].Line, "line")->Text, "7");
    EXPECT_TRUE(RowsTold[1].Line.Empty());
}

TEST_F(CountedLines, ThreeOfALayerStayAsTheyAre)
{
    for (int x = 1; x <= 3; ++x)
        TellNarrow("A", x);
    EXPECT_EQ(Texts(), (std::vector<std::string>{Narrow("A", 1), Narrow("A", 2), Narrow("A", 3)}));
}

TEST_F(CountedLines, FourOfALayerAreOneLineInThePlaceOfTheFirst)
{
    Tell(Message::PolylinesToExplode);
    for (int x = 1; x <= 4; ++x)
        TellNarrow("A", x);
    Tell(Message::CutListOff);
    EXPECT_EQ(Texts(),
              (std::vector<std::string>{
                  "Explode Polylines for Excavation.",
                  "Layer A: 4 pockets are not cleared, they are narrower than their tool, the first at "
                  "X1 Y0",
                  "PTS File Generation Turned OFF in Drawing"}));
    const MessageLine& line = RowsTold[1].Line;
    EXPECT_EQ(line.Number, Message::PocketTooNarrow);
    EXPECT_EQ(FindValue(line, "count")->Text, "4");
    EXPECT_TRUE(FindValue(line, "count")->IsWhole);
    EXPECT_EQ(FindValue(line, "place")->Text, "X1 Y0");
}

TEST_F(CountedLines, LayersAndNumbersAreCountedApart)
{
    for (int x = 1; x <= 437; ++x) {
        TellNarrow("A", x);
        if (x <= 3)
            TellNarrow("B", x);
        if (x <= 5)
            Tell(Message::PocketLeavesWood, {{"layer", "A"}, {"place", "X0 Y" + std::to_string(x)}});
    }
    EXPECT_EQ(Texts(),
              (std::vector<std::string>{
                  "Layer A: 437 pockets are not cleared, they are narrower than their tool, the first "
                  "at X1 Y0",
                  Narrow("B", 1), "Layer A: 5 pockets leave wood between their ways, the first at X0 Y1",
                  Narrow("B", 2), Narrow("B", 3)}));
}

TEST_F(CountedLines, LinesWithoutALayerAndThoseWithACountOfTheirOwnStay)
{
    for (int i = 2; i < 7; ++i) {
        Tell(Message::CutListFieldUnknown, {{"field", "F"}});
        Tell(Message::EntitiesOfUnknownKind,
             {{"layer", "A"}, {"count", i}, {"kind", "KIND" + std::to_string(i)}});
    }
    const std::vector<std::string> texts = Texts();
    ASSERT_EQ(texts.size(), 10U);
    EXPECT_EQ(texts[1], "Layer A: 2 entities of kind KIND2 cannot be cut");
    EXPECT_EQ(texts[9], "Layer A: 6 entities of kind KIND6 cannot be cut");
}

TEST_F(CountedLines, LayerThatTheTextDoesNotNameCountsBehindTheFirstLine)
{
    for (int i = 1; i <= 5; ++i)
        Tell(Message::CutListFieldUnknown, {{"field", "F" + std::to_string(i)}, {"layer", "A"}});
    EXPECT_EQ(Texts(), std::vector<std::string>{"PTS Error: F1 (5 times)"});
}

TEST_F(CountedLines, EachShownBufferIsCountedByItself)
{
    for (int x = 1; x <= 3; ++x)
        TellNarrow("A", x);
    ReportMessage(2, "");
    TellNarrow("A", 4);
    EXPECT_EQ(Texts().back(), Narrow("A", 4));
    EXPECT_EQ(RowsTold.size(), 4U);
}

TEST_F(CountedLines, LineAtOnceHasTheColourOfItsPage)
{
    TellAtOnce(Message::TableNotSaved, {{"file", "F"}, {"cause", "C"}});
    ASSERT_EQ(RowsTold.size(), 1U);
    EXPECT_EQ(RowsTold[0].Text, "Unable to save F: C");
    EXPECT_EQ(RowsTold[0].Red, 155);
    EXPECT_EQ(RowsTold[0].Line.Number, Message::TableNotSaved);
}

TEST_F(CountedLines, BoxThatBecomesALineKeepsItsNumber)
{
    Dialogs.Box = [](std::string_view text, std::string_view title, BoxIcon) {
        EXPECT_EQ(title, "Title");
        BufferBoxText(text);
    };
    TellInABox(Message::FolderUnknown, {{"folder", "F"}, {"cause", "C"}}, "Title", BoxIcon::Warning);
    BufferBoxText("of no page");
    EXPECT_EQ(Texts(), (std::vector<std::string>{"F", "C", "of no page"}));
    EXPECT_EQ(RowsTold[0].Line.Number, Message::FolderUnknown);
    EXPECT_EQ(RowsTold[1].Line.Number, Message::FolderUnknown);
    EXPECT_TRUE(RowsTold[2].Line.Empty());
}

} // namespace
} // namespace kv

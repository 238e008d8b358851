// Row after row into cut lists of any form, against one row at a time through the whole text.
#include "writers/cut_list_text.h"

#include <gtest/gtest.h>

#include <random>

#include "support/random_rounds.h"

namespace kv {
namespace {

class RandomCutList : public testing::Test {
  protected:
    int Whole(int from, int to) { return std::uniform_int_distribution<int>(from, to)(Engine); }
    std::string Row()
    {
        std::string row;
        for (int i = Whole(0, 5); i > 0; --i)
            row += std::string(i > 1 ? "DOOR," : "600") + (Whole(0, 9) == 0 ? " " : "");
        return row;
    }
    std::string List()
    {
        const std::string ends[] = {"\r\n", "\r\n", "\r\n", "\n", "\r", "\r\n\r\n"};
        std::string list;
        if (Whole(0, 2) == 0)
            list += ends[Whole(0, 5)];
        if (Whole(0, 2) > 0)
            list += "2.00, " + std::to_string(Whole(0, 3)) + ",M" + ends[Whole(0, 5)];
        for (int i = Whole(0, 6); i > 0; --i)
            list += Row() + ends[Whole(0, 5)];
        if (Whole(0, 3) == 0)
            list += Row();
        return list;
    }

    std::mt19937 Engine;
};

TEST_F(RandomCutList, RowAfterRowIsWhatOneAtATimeGives)
{
    for (int round = 0; round < test::Rounds(4000); ++round) {
        Engine.seed(test::Seed(static_cast<unsigned>(round)));
        std::string plain = List();
        CutListText text(plain);
        for (int i = Whole(0, 8); i > 0; --i) {
            const std::string row = Row();
            const bool metric = Whole(0, 3) > 0;
            plain = CutListWith(plain, row, metric);
            text.Add(row, metric);
            if (Whole(0, 3) == 0) {
                ASSERT_EQ(text.Text(), plain) << test::RoundName(round);
            }
        }
        ASSERT_EQ(text.Text(), plain) << test::RoundName(round);
    }
}

TEST(CutListText, AListThatNoRowCameToStaysByteForByte)
{
    EXPECT_EQ(CutListText("\n\rANY,TEXT").Text(), "\n\rANY,TEXT");
}

TEST(CutListText, ARowTakesThePlaceOfItsEarlierSelf)
{
    const std::string list = "2.00, 3,M\r\nDOOR,600\r\nSIDE,700\r\nBACK,800\r\n";
    CutListText text(list);
    text.Replace("SIDE,700", "SIDE,750", true);
    EXPECT_EQ(text.Text(), "2.00, 3,M\r\nDOOR,600\r\nSIDE,750\r\nBACK,800\r\n");
    text.Add("TOP,900", true);
    text.Replace("BACK,800", "BACK,850", true);
    EXPECT_EQ(text.Text(), "2.00, 4,M\r\nDOOR,600\r\nSIDE,750\r\nBACK,850\r\nTOP,900\r\n");
}

TEST(CutListText, OfSeveralEqualRowsTheLastOneIsReplaced)
{
    CutListText text("2.00, 2,M\r\nDOOR,600\r\nDOOR,600\r\n");
    text.Replace("DOOR,600", "DOOR,650", true);
    EXPECT_EQ(text.Text(), "2.00, 2,M\r\nDOOR,600\r\nDOOR,650\r\n");
}

TEST(CutListText, ARowThatIsOnlyPartOfALineIsNotReplaced)
{
    CutListText text("2.00, 2,M\r\nOAK DOOR,600\r\nDOOR,6000\r\n");
    text.Replace("DOOR,600", "NEW,1", true);
    EXPECT_EQ(text.Text(), "2.00, 3,M\r\nOAK DOOR,600\r\nDOOR,6000\r\nNEW,1\r\n");
}

TEST(CutListText, ManyRowsBehindALongListAreNoWork)
{
    std::string list = "2.00, 100000,M\r\n";
    for (int i = 0; i < 100000; ++i)
        list += "PANEL,600,400\r\n";
    CutListText text(list);
    for (int i = 0; i < 10000; ++i) // one at a time through the whole text would take minutes
        text.Add("PANEL,600,400", true);
    EXPECT_EQ(text.Text().substr(0, 16), "2.00, 110000,M\r\n");
    EXPECT_EQ(text.Text().size(), list.size() + 10000 * 15);
}

} // namespace
} // namespace kv

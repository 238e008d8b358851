// Records put into indexes of any order, against the rule told step by step.
#include "writers/cnc/index_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "support/random_rounds.h"
#include "writers/cnc/plain_index.h"

namespace kv {
namespace {

class RandomIndex : public testing::Test {
  protected:
    int Whole(int from, int to) { return std::uniform_int_distribution<int>(from, to)(Engine); }
    // Few letters, so that names meet; blanks, NUL bytes and letters beyond ASCII among them.
    std::string Name(bool upperAlone)
    {
        using namespace std::string_view_literals;
        constexpr std::string_view letters = "AB \0Z\xC9\xDF"
                                             "abz\xE9"sv;
        constexpr int upper = 7, all = 11;
        std::string name;
        for (int i = Whole(0, 3); i > 0; --i)
            name += letters[static_cast<std::size_t>(Whole(0, (upperAlone ? upper : all) - 1))];
        return UpperCase(name) == name || !upperAlone ? Padded(name, IndexNameWidth)
                                                      : Padded(UpperCase(name), IndexNameWidth);
    }
    std::string Record(bool upperAlone)
    {
        std::string record = Name(upperAlone);
        record.resize(IndexRecordSize, static_cast<char>(Whole(0, 255)));
        return record;
    }
    std::string Index()
    {
        std::vector<std::string> records(static_cast<std::size_t>(Whole(0, 40)));
        for (std::string& record : records)
            record = Record(false);
        if (Whole(0, 1) == 0)
            std::sort(records.begin(), records.end());
        std::string index;
        for (const std::string& record : records)
            index += record;
        return index;
    }

    std::mt19937 Engine;
};

TEST_F(RandomIndex, RecordAfterRecordStandsWhereThePlainRulePutsIt)
{
    for (int round = 0; round < test::Rounds(4000); ++round) {
        Engine.seed(test::Seed(static_cast<unsigned>(round)));
        std::string plain = Index();
        IndexFile file(plain);
        for (int i = Whole(0, 30); i > 0; --i) {
            const std::string record = Record(true);
            plain = IndexWith(plain, record);
            file.Put(record);
        }
        ASSERT_EQ(file.Text(), plain) << test::RoundName(round);
    }
}

TEST_F(RandomIndex, TheTextOfOneIsTheStartOfTheNext)
{
    for (int round = 0; round < test::Rounds(500); ++round) {
        Engine.seed(test::Seed(static_cast<unsigned>(round)));
        std::string plain, kept;
        for (int flush = 0; flush < 5; ++flush) {
            IndexFile file(kept);
            for (int i = Whole(0, 10); i > 0; --i) {
                const std::string record = Record(true);
                plain = IndexWith(plain, record);
                file.Put(record);
            }
            kept = file.Text();
        }
        ASSERT_EQ(kept, plain) << test::RoundName(round);
    }
}

TEST(IndexFile, ManyRecordsIntoALongIndexAreNoWork)
{
    constexpr int Old = 100000, New = 10000;
    const auto name = [](const char letter, int i) {
        return Padded(letter + std::to_string(1000000 + i), IndexNameWidth);
    };
    std::string index;
    for (int i = 0; i < Old; ++i)
        index += Padded(name('M', i), IndexRecordSize);
    IndexFile file(index);
    for (int i = New; i > 0; --i) { // ten thousand walks through the index would take minutes
        for (const char letter : {'A', 'M', 'Z'})
            file.Put(Padded(name(letter, i), IndexRecordSize));
    }
    const std::string text = file.Text();
    ASSERT_EQ(text.size(), (Old + 2 * New) * IndexRecordSize); // those of M are there already
    EXPECT_EQ(text.substr(0, IndexNameWidth), name('A', 1));
    EXPECT_EQ(text.substr(New * IndexRecordSize, IndexNameWidth), name('M', 0));
    EXPECT_EQ(text.substr(text.size() - IndexRecordSize, IndexNameWidth), name('Z', New));
}

} // namespace
} // namespace kv

// A drawing's result and a stage's manifest as texts: what was written comes back, and a text that was
// damaged is none.
#include <gtest/gtest.h>

#include <random>

#include "job/converted_job.h"
#include "job/stage_folder.h"
#include "support/random_rounds.h"

namespace kv::test {
namespace {

class ConvertedJobs : public testing::Test {
  protected:
    int Below(int limit) { return static_cast<int>(Numbers() % static_cast<unsigned>(limit)); }
    std::string Text()
    {
        std::string text;
        for (int left = Below(4) == 0 ? Below(3000) : Below(12); left > 0; --left)
            text += static_cast<char>(Below(256));
        return text;
    }
    std::vector<std::string> Texts()
    {
        std::vector<std::string> texts(static_cast<std::size_t>(Below(4)));
        for (std::string& text : texts)
            text = Text();
        return texts;
    }
    MessageLine Line()
    {
        const auto pages = MessagePages();
        MessageLine line;
        if (Below(3) > 0)
            line.Number = pages[static_cast<std::size_t>(Below(static_cast<int>(pages.size())))].Number;
        for (int left = Below(4); left > 0; --left) {
            if (Below(2) == 0)
                line.Values.emplace_back(Text(), Text());
            else
                line.Values.emplace_back(Text(), Below(1000) - 500);
        }
        return line;
    }
    ConvertedJob Job()
    {
        ConvertedJob job;
        job.Drawing = Text();
        job.SourceFile = Text();
        job.OutputName = Text();
        job.System = static_cast<Int>(Below(3));
        job.Source = {Numbers(), ~std::uint64_t{Numbers()}};
        job.Failed = Below(2) == 0;
        job.FailedFiles = Texts();
        for (int left = Below(5); left > 0; --left)
            job.Rows.push_back({Text(), static_cast<unsigned char>(Below(256)),
                                static_cast<unsigned char>(Below(256)),
                                static_cast<unsigned char>(Below(256)), Below(2) == 0, Line()});
        job.Counts = {1, 0, Below(99)};
        job.Seconds = Below(1000) / 512.0;
        for (int left = Below(6); left > 0; --left)
            job.Steps.push_back(
                {static_cast<StepKind>(Below(StepKinds)), Text(), Text(), Text(), Texts(), Below(2) == 0});
        return job;
    }
    std::string Damaged(std::string text)
    {
        const auto at = static_cast<std::size_t>(Below(static_cast<int>(text.size())));
        switch (Below(3)) {
        case 0:
            return text.substr(0, at);
        case 1:
            return text.insert(at, 1, static_cast<char>('0' + Below(10)));
        default:
            return text.erase(at, 1);
        }
    }

    std::mt19937 Numbers{Seed(7300)};
};

TEST_F(ConvertedJobs, ComeBackAsTheyWere)
{
    for (int i = 0; i < Rounds(300); ++i) {
        const ConvertedJob job = Job();
        const std::string text = ConvertedJobText(job);
        const std::optional<ConvertedJob> read = ConvertedJobOf(text);
        ASSERT_TRUE(read) << RoundName(i);
        EXPECT_EQ(ConvertedJobText(*read), text) << RoundName(i);
        EXPECT_EQ(read->Drawing, job.Drawing);
        EXPECT_EQ(read->Source, job.Source);
        EXPECT_EQ(read->Failed, job.Failed);
        EXPECT_EQ(read->Seconds, job.Seconds);
        ASSERT_EQ(read->Rows.size(), job.Rows.size());
        for (std::size_t row = 0; row < job.Rows.size(); ++row) {
            EXPECT_EQ(read->Rows[row].Text, job.Rows[row].Text);
            EXPECT_EQ(read->Rows[row].Green, job.Rows[row].Green);
            EXPECT_EQ(read->Rows[row].Centred, job.Rows[row].Centred);
            EXPECT_EQ(read->Rows[row].Line.Number, job.Rows[row].Line.Number);
            ASSERT_EQ(read->Rows[row].Line.Values.size(), job.Rows[row].Line.Values.size());
            for (std::size_t value = 0; value < job.Rows[row].Line.Values.size(); ++value) {
                EXPECT_EQ(read->Rows[row].Line.Values[value].Name, job.Rows[row].Line.Values[value].Name);
                EXPECT_EQ(read->Rows[row].Line.Values[value].Text, job.Rows[row].Line.Values[value].Text);
                EXPECT_EQ(read->Rows[row].Line.Values[value].IsWhole,
                          job.Rows[row].Line.Values[value].IsWhole);
            }
        }
        ASSERT_EQ(read->Steps.size(), job.Steps.size());
        for (std::size_t step = 0; step < job.Steps.size(); ++step) {
            EXPECT_EQ(read->Steps[step].Kind, job.Steps[step].Kind);
            EXPECT_EQ(read->Steps[step].Text, job.Steps[step].Text);
            EXPECT_EQ(read->Steps[step].Lines, job.Steps[step].Lines);
            EXPECT_EQ(read->Steps[step].Metric, job.Steps[step].Metric);
        }
    }
}

TEST_F(ConvertedJobs, OfADifferentLengthAreNone)
{
    for (int i = 0; i < Rounds(2000); ++i) {
        const std::string text = ConvertedJobText(Job());
        const std::string damaged = Damaged(text);
        const std::optional<ConvertedJob> read = ConvertedJobOf(damaged);
        EXPECT_TRUE(!read || ConvertedJobText(*read) != text) << RoundName(i);
    }
}

TEST_F(ConvertedJobs, AManifestThatWasDamagedIsNone)
{
    for (int i = 0; i < Rounds(500); ++i) {
        StageManifest manifest;
        manifest.Version = Text();
        manifest.Number = Below(1000);
        manifest.Drawings = Below(1000);
        for (int left = Below(5); left > 0; --left)
            manifest.Marks.push_back({Text(), Text()});
        for (int left = Below(5); left > 0; --left)
            manifest.Parts.push_back({Numbers(), Numbers()});
        const std::string text = StageManifestText(manifest);
        std::string cause;
        const std::optional<StageManifest> read = StageManifestOf(text, cause);
        ASSERT_TRUE(read) << cause;
        EXPECT_EQ(StageManifestText(*read), text);
        EXPECT_EQ(read->Marks, manifest.Marks);
        EXPECT_EQ(cause, "");
        const std::string damaged = Damaged(text);
        if (damaged != text) {
            EXPECT_FALSE(StageManifestOf(damaged, cause)) << RoundName(i);
            EXPECT_NE(cause, "");
        }
    }
}

TEST_F(ConvertedJobs, OnlyMarksThatDifferAreNamed)
{
    const std::vector<SettingText> ours = {{"A", "1"}, {"B", "2"}, {"C", "3"},
                                           {"D", "4"}, {"E", "5"}, {"F", "6"}};
    EXPECT_EQ(DifferentMarks(ours, ours), "");
    std::vector<SettingText> theirs = ours;
    theirs[1].Value = "3";
    EXPECT_EQ(DifferentMarks(theirs, ours), "B");
    for (SettingText& mark : theirs)
        mark.Value += "0";
    EXPECT_EQ(DifferentMarks(theirs, ours), "A, B, C, D and 2 more");
    theirs = ours;
    theirs.pop_back();
    EXPECT_EQ(DifferentMarks(theirs, ours), "F");
    EXPECT_EQ(DifferentMarks(ours, theirs), "F");
}

} // namespace
} // namespace kv::test

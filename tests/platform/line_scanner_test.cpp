// The line scanner: line ends, the border between two fillings of its buffer, and its limits.
#include "platform/line_scanner.h"

#include <random>

#include "platform/run_error.h"
#include "platform/scratch_folder.h"
#include "support/random_rounds.h"

namespace kv {
namespace {

class Scanner : public ScratchFolder {
  protected:
    std::vector<std::string> LinesOf(const std::string& contents)
    {
        PutFile("drawing.dxf", contents);
        std::vector<std::string> lines;
        LineScanner scanner;
        std::string_view line = scanner.OpenAt(PathOf("drawing.dxf"), "");
        while (!scanner.AtEnd && scanner.Outcome.Ok()) {
            lines.emplace_back(line);
            EXPECT_EQ(scanner.LineNumber, lines.size());
            line = scanner.NextLine();
        }
        LastOutcome = scanner.Outcome;
        LastCut = scanner.CutLine;
        return lines;
    }

    FileOutcome LastOutcome;
    bool LastCut = false;
};

using Lines = std::vector<std::string>;

TEST_F(Scanner, LinesEndAtLfAndOneCrBeforeItIsDropped)
{
    EXPECT_EQ(LinesOf("a\r\nb\n\r\n\nc\r\r\n"), (Lines{"a", "b", "", "", "c\r"}));
    EXPECT_FALSE(LastCut);
}

TEST_F(Scanner, ABareCrEndsNoLine)
{
    EXPECT_EQ(LinesOf("0\rSECTION\r2\rENTITIES\r"), (Lines{"0\rSECTION\r2\rENTITIES\r"}));
    EXPECT_TRUE(LastCut);
}

TEST_F(Scanner, ALastLineWithoutLfIsGivenAndMarked)
{
    EXPECT_EQ(LinesOf("a\nb"), (Lines{"a", "b"}));
    EXPECT_TRUE(LastCut);
    EXPECT_EQ(LinesOf("a\nb\r"), (Lines{"a", "b\r"}));
    EXPECT_EQ(LinesOf("b"), (Lines{"b"}));
}

TEST_F(Scanner, AnEmptyFileHasNoLine)
{
    EXPECT_EQ(LinesOf(""), Lines{});
    EXPECT_TRUE(LastOutcome.Ok());
}

TEST_F(Scanner, NulBytesAreBytesOfTheLine)
{
    EXPECT_EQ(LinesOf(std::string("a\0b\nc", 5)), (Lines{std::string("a\0b", 3), "c"}));
}

TEST_F(Scanner, StandsOnTheFirstLineThatHoldsTheWord)
{
    PutFile("d", "0\nSECTION\n2\nENTITIES\n0\nENTITIES 2\n");
    LineScanner scanner;
    EXPECT_EQ(scanner.OpenAt(PathOf("d"), "ENTITIES"), "ENTITIES");
    EXPECT_EQ(scanner.LineNumber, 4u);
    EXPECT_EQ(scanner.NextLine(), "0");
    EXPECT_EQ(scanner.NextLine(), "ENTITIES 2");
    EXPECT_FALSE(scanner.AtEnd);
    EXPECT_EQ(scanner.NextLine(), "");
    EXPECT_TRUE(scanner.AtEnd);
    EXPECT_EQ(scanner.NextLine(), ""); // and so on
    EXPECT_EQ(scanner.LineNumber, 6u);
}

TEST_F(Scanner, WithoutTheWordItStandsAtTheEnd)
{
    PutFile("d", "0\nSECTION\n");
    LineScanner scanner;
    EXPECT_EQ(scanner.OpenAt(PathOf("d"), "ENTITIES"), "");
    EXPECT_TRUE(scanner.AtEnd);
    EXPECT_TRUE(scanner.Outcome.Ok());
    EXPECT_EQ(scanner.PercentDone(), 100);
}

TEST_F(Scanner, AFileThatCannotBeReadLeavesTheReason)
{
    LineScanner scanner;
    EXPECT_EQ(scanner.OpenAt(PathOf("none"), "x"), "");
    EXPECT_EQ(scanner.Outcome.Number, ErrorFileNotFound);
    EXPECT_EQ(scanner.OpenAt(PathOf(""), "x"), "");
    EXPECT_EQ(scanner.Outcome.Number, ErrorFileAccess);
    EXPECT_EQ(scanner.NextLine(), "");
}

TEST_F(Scanner, OneScannerReadsOneFileAfterAnother)
{
    PutFile("d", "a\nlast");
    LineScanner scanner;
    scanner.OpenAt(PathOf("d"), "last");
    EXPECT_TRUE(scanner.CutLine);
    EXPECT_EQ(scanner.OpenAt(PathOf("d"), ""), "a");
    EXPECT_EQ(scanner.LineNumber, 1u);
    EXPECT_FALSE(scanner.CutLine);
}

// Line after line over several fillings, every length of line at every place of the border.
TEST_F(Scanner, LinesAcrossTheBufferBorderStayWhole)
{
    std::mt19937 random(test::Seed(7));
    for (int round = 0; round < test::Rounds(1); ++round) {
        Lines expected;
        std::string contents;
        while (contents.size() < 12 * LongestLine) {
            const bool long_ = random() % 500 == 0;
            std::string line(random() % (long_ ? 200000 : 40), static_cast<char>('a' + expected.size() % 26));
            contents += line + (random() % 2 != 0 ? "\r\n" : "\n");
            expected.push_back(std::move(line));
        }
        ASSERT_EQ(LinesOf(contents), expected) << test::RoundName(round);
    }
}

TEST_F(Scanner, CrLfSplitByTheBorderIsOneLineEnd)
{
    // The CR is the last byte of each block of 64 KB, the LF the first byte of the next.
    constexpr std::size_t Block = 64 * 1024;
    constexpr std::size_t Count = 4 * 4 * LongestLine / Block;
    std::string contents(Block - 1, 'x');
    Lines expected{contents};
    contents += "\r\n";
    for (std::size_t i = 1; i < Count; ++i) {
        expected.emplace_back(Block - 2, static_cast<char>('a' + i % 26));
        contents += expected.back() + "\r\n";
    }
    EXPECT_EQ(LinesOf(contents), expected);
}

TEST_F(Scanner, ALineOf300KilobytesIsRefusedWhereverItStands)
{
    const std::string huge(300 * 1024, 'x');
    const std::string filler(3 * LongestLine, '\n');
    const std::string tail = "short\n" + std::string(5 * LongestLine, '\n');
    for (const std::string& contents :
         {huge, huge + "\n", huge + "\n" + tail, "a\n" + huge, filler + huge, filler + huge + "\n" + tail}) {
        const Lines lines = LinesOf(contents);
        EXPECT_EQ(LastOutcome.Number, ErrorFileAccess);
        const std::string place = "line " + std::to_string(lines.size() + 1) + " is longer than 262144 bytes";
        EXPECT_EQ(LastOutcome.Cause, place);
        for (const std::string& line : lines)
            EXPECT_LT(line.size(), huge.size());
    }
}

TEST_F(Scanner, TheLongestLinePasses)
{
    const std::string longest(LongestLine, 'x');
    EXPECT_EQ(LinesOf("a\n" + longest + "\nb\n" + longest), (Lines{"a", longest, "b", longest}));
}

TEST_F(Scanner, AWholeNumberIsTakenInOneStepOnlyWhereItStandsAlone)
{
    struct Row {
        std::string Line;
        int Number; // -1: left to the other way
    };
    const std::vector<Row> rows = {
        {"0", 0},    {"  8", 8},      {" 62\r", 62}, {"10  ", 10}, {"1000", 1000}, {"999999", 999999},
        {"", -1},    {"   ", -1},     {"-1", -1},    {"1.0", -1},  {"1 2", -1},    {"5E", -1},
        {"\t5", -1}, {"1000000", -1}, {"7\r\r", -1}, {"05", -1},   {"+3", -1},     {"LINE", -1},
    };
    std::string contents;
    for (const Row& row : rows)
        contents += row.Line + "\n";
    PutFile("d", "first\n" + contents + std::string(64, '\n'));
    LineScanner scanner;
    scanner.OpenAt(PathOf("d"), "first");
    for (const Row& row : rows) {
        const std::uint64_t before = scanner.LineNumber;
        int number = -1;
        if (!scanner.NextWholeNumber(number)) {
            EXPECT_EQ(scanner.LineNumber, before);
            const bool endsInCr = row.Line.ends_with('\r');
            EXPECT_EQ(scanner.NextLine(), row.Line.substr(0, row.Line.size() - (endsInCr ? 1 : 0)));
        }
        EXPECT_EQ(number, row.Number) << row.Line;
        EXPECT_EQ(scanner.LineNumber, before + 1);
    }
}

TEST_F(Scanner, WholeNumbersAndLinesGiveTheSameFile)
{
    std::string contents;
    for (int i = 0; contents.size() < 3 * 4 * LongestLine; ++i)
        contents += std::to_string(i) + (i % 3 == 0 ? "\r\n" : "\n");
    PutFile("d", contents);
    LineScanner scanner;
    scanner.OpenAt(PathOf("d"), "");
    for (int expected = 1;; ++expected) {
        int number = -1;
        if (!scanner.NextWholeNumber(number)) {
            const std::string_view line = scanner.NextLine();
            if (scanner.AtEnd)
                break;
            number = std::stoi(std::string(line));
        }
        ASSERT_EQ(number, expected);
        ASSERT_EQ(scanner.LineNumber, static_cast<std::uint64_t>(expected) + 1);
    }
    EXPECT_GT(scanner.LineNumber, 400000u);
}

TEST_F(Scanner, PercentDoneGrowsWithTheLines)
{
    std::string contents;
    for (int i = 0; i < 1000; ++i)
        contents += "0123456789\n";
    PutFile("d", contents);
    LineScanner scanner;
    scanner.OpenAt(PathOf("d"), "");
    EXPECT_EQ(scanner.PercentDone(), 0);
    for (int i = 1; i < 500; ++i)
        scanner.NextLine();
    EXPECT_EQ(scanner.PercentDone(), 50);
    for (int i = 0; i < 500; ++i)
        scanner.NextLine();
    EXPECT_EQ(scanner.PercentDone(), 100);
}

} // namespace
} // namespace kv

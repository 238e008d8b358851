// BATCH.LST as a text: its lines, commands and jobs, each form that a design program may write.
#include "shell/batch_file.h"

#include <gtest/gtest.h>

#include "state/run.h"

namespace kv {
namespace {

using Texts = std::vector<std::string>;

Texts TextsOf(std::string_view contents)
{
    Texts texts;
    for (const BatchLine& line : BatchLines(contents))
        texts.push_back(line.Text);
    return texts;
}

BatchJob Job(std::string_view line)
{
    return ReadBatchJob(line, "C:\\DXF\\", "C:\\PRG\\");
}

std::string Parts(std::string_view line)
{
    const BatchJob job = Job(line);
    return job.Input + " | " + job.OutputFolder + " | " + job.OutputName;
}

} // namespace

TEST(BatchFile, LinesAreUpperCasedAndTrimmedAtTheirRightEnd)
{
    EXPECT_EQ(TextsOf("door.dxf  \r\n side\r\n"), (Texts{"DOOR.DXF", " SIDE"}));
}

TEST(BatchFile, ALineIsKeptAsItStandsToo)
{
    const std::vector<BatchLine> lines = BatchLines("\"door.dxf\" q \r\n");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].Written, "\"door.dxf\" q ");
}

TEST(BatchFile, QuotesAreBlanks)
{
    EXPECT_EQ(TextsOf("\"a.dxf\""), (Texts{" A.DXF"}));
}

TEST(BatchFile, AnyLineEndEndsALine)
{
    EXPECT_EQ(TextsOf("a\r\nb\nc\rd"), (Texts{"A", "B", "C", "D"}));
}

TEST(BatchFile, BlankLinesCommandsAndJobsAreToldApart)
{
    const std::vector<BatchLine> lines = BatchLines("  \r\n\"\"\r\n!cncoff\r\n!other\r\ndoor");
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0].Kind, BatchLineKind::Blank);
    EXPECT_EQ(lines[1].Kind, BatchLineKind::Blank);
    EXPECT_EQ(lines[2].Kind, BatchLineKind::Command);
    EXPECT_EQ(lines[3].Kind, BatchLineKind::Command);
    EXPECT_EQ(lines[4].Kind, BatchLineKind::Job);
}

TEST(BatchFile, CountIsCarriageReturnsPlusOneOfTheTrimmedText)
{
    EXPECT_EQ(CountBatchLines("a\r\nb\r\nc"), 3);
    EXPECT_EQ(CountBatchLines("a\r\nb\r\nc\r\n"), 3); // the last line's end does not count
    EXPECT_EQ(CountBatchLines("  \r\na\r\n\r\nb\r\n \r\n"), 3);
    EXPECT_EQ(CountBatchLines("!CNCOFF\r\na"), 2); // commands count
    EXPECT_EQ(CountBatchLines("\"a\"\r\n\"\"\r\n"), 1);
    EXPECT_EQ(CountBatchLines(" \r\n"), 1);
}

TEST(BatchFile, CommandsSetTheirFlagAlone)
{
    kv::Run = RunBlock{};
    ObeyBatchCommand("!CNCOFF");
    EXPECT_EQ(kv::Run.CncOff, True);
    EXPECT_EQ(kv::Run.HbdOff, False);
    ObeyBatchCommand("!HBDOFF");
    ObeyBatchCommand("!CNCON");
    EXPECT_EQ(kv::Run.CncOff, False);
    EXPECT_EQ(kv::Run.HbdOff, True);
    ObeyBatchCommand("!HBDON");
    EXPECT_EQ(kv::Run.HbdOff, False);
}

TEST(BatchFile, AnyOtherCommandIsIgnored)
{
    kv::Run = RunBlock{};
    for (const char* const command : {"!", "!CNC", "!CNCOFFX", "!CNCOFF X", "CNCOFF"})
        ObeyBatchCommand(command);
    EXPECT_EQ(kv::Run.CncOff, False);
    EXPECT_EQ(kv::Run.HbdOff, False);
}

TEST(BatchFile, TheNameLosesWhatStandsBehindItsLastPoint)
{
    const BatchJob job = Job("C:\\X\\A.B.DXF^Q");
    EXPECT_EQ(job.Input, "C:\\X\\A.B");
    EXPECT_EQ(job.OutputFolder, "C:\\PRG\\");
    EXPECT_EQ(job.OutputName, "Q");
}

TEST(BatchFile, APointInAFolderStays)
{
    EXPECT_EQ(Parts("C:\\X.Y\\A"), "C:\\X.Y\\A | C:\\PRG\\ | A");
}

TEST(BatchFile, AnInputWithoutFolderComesFromTheSourceFolder)
{
    EXPECT_EQ(Parts("DOOR.DXF"), "C:\\DXF\\DOOR | C:\\PRG\\ | DOOR");
}

TEST(BatchFile, ABlankPartsInputAndOutput)
{
    EXPECT_EQ(Parts(" C:\\X\\DOOR.DXF   D:\\OUT\\FRONT "), "C:\\X\\DOOR | D:\\OUT\\ | FRONT");
}

TEST(BatchFile, WithACaretBlanksArePartOfThePaths)
{
    EXPECT_EQ(Parts("C:\\MY JOBS\\OAK DOOR.DXF ^ D:\\MY OUT\\FRONT 1"),
              "C:\\MY JOBS\\OAK DOOR | D:\\MY OUT\\ | FRONT 1");
}

TEST(BatchFile, AnOutputFolderAloneTakesTheInputsName)
{
    EXPECT_EQ(Parts("DOOR.DXF^D:\\OUT\\"), "C:\\DXF\\DOOR | D:\\OUT\\ | DOOR");
    EXPECT_EQ(Parts("DOOR.DXF^"), "C:\\DXF\\DOOR | C:\\PRG\\ | DOOR");
}

TEST(BatchFile, SlashesCountAsBackslashes)
{
    EXPECT_EQ(Parts("/SRV/DXF/DOOR.DXF /SRV/OUT/FRONT"), "\\SRV\\DXF\\DOOR | \\SRV\\OUT\\ | FRONT");
}

TEST(BatchFile, JobLineJoinsTheParts)
{
    EXPECT_EQ(JobLine(Job("DOOR.DXF^D:\\OUT\\FRONT")), "C:\\DXF\\DOOR\xFF"
                                                       "D:\\OUT\\FRONT");
}

TEST(BatchFile, NoByteOfALineCanBeTheSeparator)
{
    EXPECT_EQ(TextsOf("a\xFF"
                      "b"),
              (Texts{"A\x9F"
                     "B"}));
}

TEST(BatchFile, TheDrawingHasItsExtension)
{
    EXPECT_EQ(DrawingOf(Job("DOOR")), "C:\\DXF\\DOOR.DXF");
    EXPECT_EQ(DrawingOf(Job("A.DXF.BAK")), "C:\\DXF\\A.DXF"); // as the conversion reads it
}

} // namespace kv

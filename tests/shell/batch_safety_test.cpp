// BATCH.RUN and BATCH.OLD beside a batch: written whole, taken off, set aside, told.
#include "shell/batch_safety.h"

#include "platform/run_error.h"
#include "platform/scratch_folder.h"
#include "state/report.h"

namespace kv {
namespace {

using Texts = std::vector<std::string>;

Texts Rows;

class BatchSafety : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        Rows.clear();
        Report.ShowRow = [](const ReportRow& row) { Rows.push_back(row.Text); };
        At = PathOf("") + (PathOf("").ends_with('\\') ? "" : "\\");
    }
    void TearDown() override
    {
        Report = ReportHooks{};
        ScratchFolder::TearDown();
    }
    std::string Told(const std::string& count, const std::string& name) const
    {
        return "Unfinished batch: " + count + " lines kept in " + ShownPath(At + name);
    }

    std::string At;
};

TEST_F(BatchSafety, LinesStandAsTheyWereGiven)
{
    EXPECT_TRUE(KeepBatchLines(At, {"\"door.dxf\" q", "!cncoff"}).Ok());
    EXPECT_EQ(FileText("BATCH.RUN"), "\"door.dxf\" q\r\n!cncoff\r\n");
    EXPECT_EQ(Names(), (Texts{"BATCH.RUN"})); // nothing is left beside it
}

TEST_F(BatchSafety, FewerLinesReplaceTheFile)
{
    EXPECT_TRUE(KeepBatchLines(At, {"A", "B"}).Ok());
    EXPECT_TRUE(KeepBatchLines(At, {"B"}).Ok());
    EXPECT_EQ(FileText("BATCH.RUN"), "B\r\n");
}

TEST_F(BatchSafety, AReadOnlyFileOfAnotherProgramGivesWay)
{
    PutFile("BATCH.RUN", "A\r\nB\r\n");
    std::filesystem::permissions(Folder / "BATCH.RUN", std::filesystem::perms::owner_read);
    EXPECT_TRUE(KeepBatchLines(At, {"B"}).Ok());
    EXPECT_EQ(FileText("BATCH.RUN"), "B\r\n");
}

TEST_F(BatchSafety, AMissingFolderIsTold)
{
    EXPECT_EQ(KeepBatchLines(At + "GONE\\", {"A"}).Number, ErrorPathNotFound);
}

TEST_F(BatchSafety, DroppedLinesAreGone)
{
    EXPECT_TRUE(KeepBatchLines(At, {"A"}).Ok());
    EXPECT_TRUE(DropBatchLines(At).Ok());
    EXPECT_EQ(Names(), Texts{});
}

TEST_F(BatchSafety, WithoutUnfinishedBatchNothingIsTold)
{
    TellUnfinishedBatch(At);
    EXPECT_EQ(Rows, Texts{});
    PutFile("BATCH.OLD", "!CNCOFF\r\n\r\n"); // no job
    TellUnfinishedBatch(At);
    EXPECT_EQ(Rows, Texts{});
    EXPECT_EQ(Names(), (Texts{"BATCH.OLD"}));
}

TEST_F(BatchSafety, AnUnfinishedBatchThatWasSetAsideAtAnEndIsMentioned)
{
    PutFile("BATCH.OLD", "!CNCOFF\r\n\r\nA\r\n");
    TellUnfinishedBatch(At);
    const std::string place = ShownPath(At + "BATCH.OLD");
    EXPECT_EQ(Rows, (Texts{"Unfinished batch of an earlier run: 2 lines in " + place}));
    EXPECT_EQ(FileText("BATCH.OLD"), "!CNCOFF\r\n\r\nA\r\n");
    Rows.clear();
    std::filesystem::remove(Folder / "BATCH.OLD");
    std::filesystem::create_directories(Folder / "BATCH.OLD");
    TellUnfinishedBatch(At);
    EXPECT_EQ(Rows, (Texts{"Unfinished batch in " + place + " cannot be read: is a folder"}));
}

TEST_F(BatchSafety, AnUnfinishedBatchIsRenamedAndToldInOneLine)
{
    PutFile("BATCH.RUN", "A\r\n!CNCOFF\r\nB\r\n");
    TellUnfinishedBatch(At);
    EXPECT_EQ(Rows, (Texts{Told("3", "BATCH.OLD")}));
    EXPECT_EQ(FileText("BATCH.OLD"), "A\r\n!CNCOFF\r\nB\r\n");
    EXPECT_EQ(Names(), (Texts{"BATCH.OLD"}));
}

TEST_F(BatchSafety, OlderUnfinishedLinesStay)
{
    PutFile("BATCH.OLD", "A");
    PutFile("BATCH.RUN", "B\r\n");
    TellUnfinishedBatch(At);
    EXPECT_EQ(FileText("BATCH.OLD"), "A\r\nB\r\n");
    EXPECT_EQ(Rows, (Texts{Told("1", "BATCH.OLD")})); // of this batch
    EXPECT_EQ(Names(), (Texts{"BATCH.OLD"}));
}

TEST_F(BatchSafety, ProcessesThatEndInTheMiddleAddNothingTwice)
{
    PutFile("BATCH.OLD", "A\r\n!CNCOFF\r\nB\r\nB\r\n"); // it had been joined, and BATCH.RUN still stood
    PutFile("BATCH.RUN", "!CNCOFF\r\nB\r\nb\r\n");
    TellUnfinishedBatch(At);
    EXPECT_EQ(FileText("BATCH.OLD"), "A\r\n!CNCOFF\r\nB\r\nB\r\n");
    EXPECT_EQ(Rows, (Texts{Told("3", "BATCH.OLD")}));
    EXPECT_EQ(Names(), (Texts{"BATCH.OLD"}));
}

TEST_F(BatchSafety, CommandsHoldForTheLinesOfTheirOwnBatchAlone)
{
    PutFile("BATCH.OLD", "!CNCOFF\r\nA\r\n");
    PutFile("BATCH.RUN", "A\r\n!order 7\r\n!hbdoff\r\nB\r\n");
    TellUnfinishedBatch(At);
    EXPECT_EQ(FileText("BATCH.OLD"), "!CNCOFF\r\nA\r\n!CNCON\r\nA\r\n!order 7\r\n!HBDOFF\r\nB\r\n");
}

TEST_F(BatchSafety, ABatchWithoutJobsJustGoes)
{
    PutFile("BATCH.OLD", "A\r\n");
    for (const char* const text : {"", "\r\n", "!CNCOFF\r\n"}) {
        PutFile("BATCH.RUN", text);
        EXPECT_EQ(TextOf(SetUnfinishedBatchAside(At)), "") << text;
        EXPECT_EQ(FileText("BATCH.OLD"), "A\r\n");
        EXPECT_EQ(Names(), (Texts{"BATCH.OLD"}));
    }
}

TEST_F(BatchSafety, WhatCannotBeSetAsideIsToldWhereItStands)
{
    std::filesystem::create_directories(Folder / "BATCH.OLD");
    PutFile("BATCH.OLD/keep", "");
    PutFile("BATCH.RUN", "B\r\n");
    TellUnfinishedBatch(At);
    EXPECT_EQ(Rows, (Texts{Told("1", "BATCH.RUN") + ", " + ShownPath(At + "BATCH.OLD") +
                           " cannot be written: is a folder"}));
    EXPECT_EQ(FileText("BATCH.RUN"), "B\r\n");
}

} // namespace
} // namespace kv

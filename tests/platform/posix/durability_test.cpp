// The order in which files reach the disk, and what is swept of processes that have ended.
#include <sys/wait.h>
#include <unistd.h>

#include "platform/aside_names.h"
#include "platform/files.h"
#include "platform/scratch_folder.h"
#include "support/answers.h"

namespace kv {
namespace {

using Lines = std::vector<std::string>;

class FileDurability : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        EXPECT_TRUE(FlushFiles().Ok()); // whatever other tests moved
        DiskSteps = &Steps;
    }
    void TearDown() override
    {
        DiskSteps = nullptr;
        ScratchFolder::TearDown();
    }
    std::string Host(const std::string& name) const { return (Folder / name).string(); }

    Lines Steps;
};

// The number of a process that has ended.
pid_t EndedProcess()
{
    const pid_t child = fork();
    if (child == 0)
        _exit(0);
    waitpid(child, nullptr, 0);
    return child;
}

TEST_F(FileDurability, AReplacedFileIsFlushedThenMovedThenItsFolderIs)
{
    ASSERT_TRUE(ReplaceFile(PathOf("index"), "new").Ok());
    ASSERT_EQ(Steps.size(), 3U);
    EXPECT_TRUE(Steps[0].starts_with("flush " + Host(".kv-"))) << Steps[0];
    EXPECT_EQ(Steps[1], "move " + Host("index"));
    EXPECT_EQ(Steps[2], "flush folder " + Host(""));
    Steps.clear();
    EXPECT_TRUE(FlushFiles().Ok());
    EXPECT_TRUE(Steps.empty()); // nothing is left to flush
}

TEST_F(FileDurability, StagedFilesAreFlushedTogetherAndNotAgainWhenMoved)
{
    StagedFile files[3];
    StagedFile* places[3] = {&files[0], &files[1], &files[2]};
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(StageFile(PathOf("f" + std::to_string(i)), "x", files[i]).Ok());
    EXPECT_TRUE(Steps.empty());
    const Lines flushes = {"flush " + files[0].Aside, "flush " + files[1].Aside, "flush " + files[2].Aside};
    for (const FileOutcome& outcome : FlushStaged(places))
        EXPECT_TRUE(outcome.Ok());
    EXPECT_EQ(Steps, flushes);
    Steps.clear();
    for (StagedFile& file : files)
        EXPECT_TRUE(MoveStaged(file).Ok());
    EXPECT_TRUE(FlushFiles().Ok());
    EXPECT_EQ(Steps, (Lines{"move " + Host("f0"), "move " + Host("f1"), "move " + Host("f2"),
                            "flush folder " + Host("")}));
}

TEST_F(FileDurability, NothingIsMovedUnflushed)
{
    StagedFile staged;
    ASSERT_TRUE(StageFile(PathOf("index"), "x", staged).Ok());
    const std::string aside = staged.Aside;
    ASSERT_TRUE(MoveStaged(staged).Ok());
    EXPECT_EQ(Steps, (Lines{"flush " + aside, "move " + Host("index")}));
}

TEST_F(FileDurability, ACopyThatCannotBeFlushedIsNotMoved)
{
    PutFile("index", "old");
    StagedFile staged;
    ASSERT_TRUE(StageFile(PathOf("index"), "new", staged).Ok());
    std::filesystem::remove(staged.Aside); // taken away by a cleaner
    StagedFile* const places[] = {&staged};
    const std::vector<FileOutcome> outcomes = FlushStaged(places);
    ASSERT_EQ(outcomes.size(), 1U);
    EXPECT_EQ(outcomes[0].Cause, "No such file or directory");
    EXPECT_FALSE(staged.Flushed);
    EXPECT_FALSE(MoveStaged(staged).Ok());
    EXPECT_EQ(FileText("index"), "old");
    EXPECT_TRUE(Steps.empty());
}

TEST_F(FileDurability, ARenamedFileIsInItsFolderWithTheNextFlush)
{
    PutFile("a", "x");
    ASSERT_TRUE(RenameFile(PathOf("a"), PathOf("b")).Ok());
    ASSERT_TRUE(FlushFiles().Ok());
    EXPECT_EQ(Steps, (Lines{"move " + Host("b"), "flush folder " + Host("")}));
}

TEST_F(FileDurability, ANewFolderIsOnTheDiskWithItsEntryInTheOneAbove)
{
    ASSERT_TRUE(MakeFolders(PathOf("a\\b")).Ok());
    ASSERT_TRUE(MakeFolders(PathOf("a\\b")).Ok()); // nothing is new
    EXPECT_TRUE(FlushFiles().Ok());
    EXPECT_EQ(Steps, (Lines{"flush folder " + Host(""), "flush folder " + Host("a/")}));
}

TEST_F(FileDurability, CopiesOfEndedProcessesAreSweptAndNoOtherFile)
{
    const std::string ended = std::to_string(EndedProcess()), living = std::to_string(getpid());
    StagedFile staged;
    ASSERT_TRUE(StageFile(PathOf("index"), "x", staged).Ok());
    const std::string own = std::filesystem::path(staged.Aside).filename();
    const std::string tag = own.substr(own.find('-', 4) + 1, 8);
    const Lines kept = {own,
                        ".kv-" + living + "-1.tmp",
                        ".kv-" + living + "-" + tag + "-7.tmp",
                        ".kv-" + ended + "-00000000-1.tmp", // of another machine
                        ".kv-" + ended + ".tmp",
                        ".kv-" + ended + "-1.tmp.DXF",
                        ".kv-" + ended + "-x.tmp",
                        ".kv-x" + ended + "-1.tmp",
                        "kv-" + ended + "-1.tmp",
                        ".kv-INDEX.lock",
                        "door.dxf"};
    for (const std::string& name : kept)
        PutFile(name, "x");
    PutFile(".kv-" + ended + "-1.tmp", "x");
    PutFile(".kv-" + ended + "-" + tag + "-22.tmp", "x");
    PutFile(".kv-" + ended + "-00000000-2.tmp", "x");
    const auto twoDays = std::chrono::hours(48);
    std::filesystem::last_write_time(Folder / (".kv-" + ended + "-00000000-2.tmp"),
                                     std::filesystem::file_time_type::clock::now() - twoDays);
    int swept = 0;
    EXPECT_TRUE(SweepAsides(PathOf(""), swept).Ok());
    EXPECT_EQ(swept, 3);
    Lines wanted = kept;
    std::sort(wanted.begin(), wanted.end());
    EXPECT_EQ(Names(), wanted);
    DropStaged(staged);
}

TEST_F(FileDurability, AFolderThatIsNotThereHasNothingToSweep)
{
    int swept = 7;
    EXPECT_TRUE(SweepAsides(PathOf("none"), swept).Ok());
    EXPECT_EQ(swept, 0);
    std::filesystem::create_symlink("loop", Folder / "loop");
    EXPECT_EQ(SweepAsides(PathOf("loop"), swept).Cause, "Too many levels of symbolic links");
}

} // namespace
} // namespace kv

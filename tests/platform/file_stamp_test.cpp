// What tells a rewritten or replaced file, the tail of a file, and a file's new name in one step.
#include "platform/files.h"

#include "platform/scratch_folder.h"
#include "support/answers.h"

namespace kv {
namespace {

class FileStamps : public ScratchFolder {
  protected:
    std::string TailOf(const std::string& name, std::size_t length) const
    {
        std::string tail = "old";
        EXPECT_TRUE(ReadFileTail(PathOf(name), tail, length).Ok());
        return tail;
    }
};

TEST_F(FileStamps, AFileThatStaysHasTheSameStamp)
{
    PutFile("a", "text");
    EXPECT_EQ(test::StampOf(PathOf("a")), test::StampOf(PathOf("a")));
    EXPECT_EQ(test::StampOf(PathOf("a")).Size, 4U);
}

TEST_F(FileStamps, NoFileHasTheBlankStamp)
{
    EXPECT_EQ(test::StampOf(PathOf("gone")), FileStamp{});
}

TEST_F(FileStamps, ALongerFileHasAnother)
{
    PutFile("a", "text");
    const FileStamp before = test::StampOf(PathOf("a"));
    PutFile("a", "texts");
    EXPECT_NE(test::StampOf(PathOf("a")), before);
}

TEST_F(FileStamps, AReplacedFileOfTheSameSizeAndTimeHasAnother)
{
    PutFile("a", "text");
    const FileStamp before = test::StampOf(PathOf("a"));
    PutFile("b", "next");
    std::filesystem::last_write_time(Folder / "b", std::filesystem::last_write_time(Folder / "a"));
    std::filesystem::rename(Folder / "b", Folder / "a");
    EXPECT_NE(test::StampOf(PathOf("a")), before);
}

TEST_F(FileStamps, TheTailIsTheLastBytesOrTheWholeFile)
{
    PutFile("a", "0123456789");
    EXPECT_EQ(TailOf("a", 4), "6789");
    EXPECT_EQ(TailOf("a", 10), "0123456789");
    EXPECT_EQ(TailOf("a", 11), "0123456789");
    PutFile("empty", "");
    EXPECT_EQ(TailOf("empty", 4), "");
}

TEST_F(FileStamps, AMissingFileHasNoTail)
{
    std::string tail = "old";
    EXPECT_FALSE(ReadFileTail(PathOf("gone"), tail, 4).Ok());
    EXPECT_EQ(tail, "");
}

TEST_F(FileStamps, ARenamedFileTakesThePlaceOfAnother)
{
    PutFile("a", "new");
    PutFile("b", "old");
    EXPECT_TRUE(RenameFile(PathOf("a"), PathOf("b")).Ok());
    EXPECT_EQ(FileText("b"), "new");
    EXPECT_EQ(Names(), (std::vector<std::string>{"b"}));
    EXPECT_TRUE(FlushFiles().Ok());
}

TEST_F(FileStamps, ARefusedRenameLeavesBothAsTheyWere)
{
    PutFile("a", "new");
    std::filesystem::create_directories(Folder / "b");
    EXPECT_FALSE(RenameFile(PathOf("a"), PathOf("b")).Ok());
    EXPECT_FALSE(RenameFile(PathOf("gone"), PathOf("c")).Ok());
    EXPECT_EQ(FileText("a"), "new");
}

} // namespace
} // namespace kv

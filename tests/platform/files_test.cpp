// File access: reading, replacing whole, staging several files, folders.
#include "platform/files.h"

#include "platform/run_error.h"
#include "platform/scratch_folder.h"
#include "support/answers.h"

namespace kv {
namespace {

class Files : public ScratchFolder {};

using NameList = std::vector<std::string>;

TEST_F(Files, FilesAndFoldersAreToldApart)
{
    PutFile("file", "12345");
    std::filesystem::create_directory(Folder / "sub");
    EXPECT_TRUE(test::FileStands(PathOf("file")));
    EXPECT_FALSE(test::FileStands(PathOf("sub")));
    EXPECT_FALSE(test::FileStands(PathOf("none")));
    EXPECT_TRUE(test::FolderStands(PathOf("sub")));
    EXPECT_TRUE(test::FolderStands(PathOf("sub") + "\\"));
    EXPECT_FALSE(test::FolderStands(PathOf("file")));
    EXPECT_FALSE(test::FolderStands(PathOf("file") + "\\"));
    EXPECT_EQ(test::StampOf(PathOf("file")).Size, 5u);
    EXPECT_EQ(test::StampOf(PathOf("none")).Size, 0u);
}

TEST_F(Files, ReadsAFileWhole)
{
    const std::string bytes("a\r\n\0\xFF\x1A z", 8);
    PutFile("file", bytes);
    std::string contents = "old";
    EXPECT_TRUE(ReadWholeFile(PathOf("file"), contents).Ok());
    EXPECT_EQ(contents, bytes);
    PutFile("empty", "");
    EXPECT_TRUE(ReadWholeFile(PathOf("empty"), contents).Ok());
    EXPECT_EQ(contents, "");
}

TEST_F(Files, RefusesMoreThanTheLimit)
{
    PutFile("file", "12345");
    std::string contents;
    EXPECT_TRUE(ReadWholeFile(PathOf("file"), contents, 5).Ok());
    EXPECT_EQ(contents, "12345");
    const FileOutcome outcome = ReadWholeFile(PathOf("file"), contents, 4);
    EXPECT_EQ(outcome.Number, ErrorFileAccess);
    EXPECT_EQ(outcome.Cause, "is longer than 4 bytes");
    EXPECT_EQ(contents, "");
    EXPECT_TRUE(ReadWholeFile(PathOf("file"), contents, UINT64_MAX).Ok());
    EXPECT_EQ(contents, "12345");
}

TEST_F(Files, ReadsTheHeadOfAFile)
{
    PutFile("file", "12345");
    std::string contents;
    EXPECT_TRUE(ReadFileHead(PathOf("file"), contents, 3).Ok());
    EXPECT_EQ(contents, "123");
    EXPECT_TRUE(ReadFileHead(PathOf("file"), contents, 99).Ok());
    EXPECT_EQ(contents, "12345");
    EXPECT_TRUE(ReadFileHead(PathOf("file"), contents, 0).Ok());
    EXPECT_EQ(contents, "");
}

TEST_F(Files, AMissingFileIs53AndAMissingFolder76)
{
    PutFile("file", "x");
    std::string contents = "old";
    const FileOutcome missing = ReadWholeFile(PathOf("none"), contents);
    EXPECT_EQ(missing.Number, ErrorFileNotFound);
    EXPECT_NE(missing.Cause, "");
    EXPECT_EQ(contents, "");
    EXPECT_EQ(ReadWholeFile(PathOf("none\\file"), contents).Number, ErrorPathNotFound);
    EXPECT_EQ(ReadWholeFile(PathOf("file\\file"), contents).Number, ErrorPathNotFound); // below a file
    EXPECT_EQ(CheckWritable(PathOf("none")).Number, ErrorFileNotFound);
    EXPECT_EQ(CheckWritable(PathOf("none\\file")).Number, ErrorPathNotFound);
    EXPECT_EQ(ReplaceFile(PathOf("none\\file"), "x").Number, ErrorPathNotFound);
}

TEST_F(Files, AFolderIsNoFileToReadOrReplace)
{
    std::filesystem::create_directory(Folder / "sub");
    int handle = 0;
    std::uint64_t size = 7;
    const FileOutcome reading = OpenForReading(PathOf("sub"), handle, size);
    EXPECT_EQ(reading.Number, ErrorFileAccess);
    EXPECT_EQ(reading.Cause, "is a folder");
    EXPECT_EQ(handle, -1);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(ReplaceFile(PathOf("sub"), "x").Number, ErrorFileAccess);
    EXPECT_EQ(CheckWritable(PathOf("sub")).Number, ErrorFileAccess);
    EXPECT_NE(DeleteFile(PathOf("sub")).Number, 0);
    EXPECT_EQ(Names(), NameList{"sub"});
}

TEST_F(Files, ReadsInPiecesToTheEnd)
{
    PutFile("file", "1234567");
    int handle = -1;
    std::uint64_t size = 0;
    ASSERT_TRUE(OpenForReading(PathOf("file"), handle, size).Ok());
    EXPECT_GE(handle, 0);
    EXPECT_EQ(size, 7u);
    char piece[4];
    std::string contents;
    std::size_t got = 1;
    while (got > 0) {
        ASSERT_TRUE(ReadSome(handle, piece, sizeof piece, got).Ok());
        contents.append(piece, got);
    }
    CloseReading(handle);
    EXPECT_EQ(contents, "1234567");
    EXPECT_FALSE(ReadSome(handle, piece, sizeof piece, got).Ok()); // closed
    CloseReading(-1);
}

TEST_F(Files, ReplacesAndMakesFilesWithoutLeavingAnother)
{
    EXPECT_TRUE(ReplaceFile(PathOf("new"), "first").Ok());
    EXPECT_EQ(FileText("new"), "first");
    EXPECT_TRUE(ReplaceFile(PathOf("new"), "").Ok());
    EXPECT_EQ(FileText("new"), "");
    const std::string big(3'000'000, 'x');
    EXPECT_TRUE(ReplaceFile(PathOf("new"), big).Ok());
    EXPECT_EQ(FileText("new"), big);
    EXPECT_EQ(Names(), NameList{"new"});
}

TEST_F(Files, StagedFilesAreInPlaceOnlyWhenMoved)
{
    PutFile("index", "old index");
    StagedFile index, program;
    ASSERT_TRUE(StageFile(PathOf("index"), "new index", index).Ok());
    ASSERT_TRUE(StageFile(PathOf("program"), "new program", program).Ok());
    EXPECT_EQ(FileText("index"), "old index");
    EXPECT_EQ(Names().size(), 3u); // the index and two copies aside
    EXPECT_TRUE(MoveStaged(index).Ok());
    EXPECT_TRUE(MoveStaged(program).Ok());
    EXPECT_EQ(FileText("index"), "new index");
    EXPECT_EQ(FileText("program"), "new program");
    EXPECT_EQ(Names(), (NameList{"index", "program"}));
    EXPECT_TRUE(MoveStaged(index).Ok()); // nothing is staged any more
}

TEST_F(Files, DroppedStagedFilesDisappear)
{
    PutFile("index", "old index");
    StagedFile staged;
    ASSERT_TRUE(StageFile(PathOf("index"), "new index", staged).Ok());
    DropStaged(staged);
    EXPECT_EQ(FileText("index"), "old index");
    EXPECT_EQ(Names(), NameList{"index"});
    DropStaged(staged);
}

TEST_F(Files, AMoveThatFailsLeavesNothingAside)
{
    StagedFile staged;
    ASSERT_TRUE(StageFile(PathOf("program"), "new", staged).Ok());
    std::filesystem::create_directory(Folder / "program"); // in the way
    EXPECT_NE(MoveStaged(staged).Number, 0);
    EXPECT_EQ(Names(), NameList{"program"});
}

TEST_F(Files, AWritableFileIsFreeAndStaysAsItWas)
{
    PutFile("file", "12345");
    EXPECT_TRUE(CheckWritable(PathOf("file")).Ok());
    EXPECT_EQ(FileText("file"), "12345");
}

TEST_F(Files, FoldersAreMadeOneOrAll)
{
    EXPECT_TRUE(MakeFolder(PathOf("one")).Ok());
    EXPECT_TRUE(MakeFolder(PathOf("one")).Ok()); // stands already
    EXPECT_TRUE(MakeFolder(PathOf("two") + "\\").Ok());
    EXPECT_EQ(MakeFolder(PathOf("a\\b")).Number, ErrorPathNotFound);
    EXPECT_TRUE(MakeFolders(PathOf("a\\b\\c") + "\\").Ok());
    EXPECT_TRUE(MakeFolders(PathOf("a\\b\\c")).Ok());
    EXPECT_TRUE(test::FolderStands(PathOf("a\\b\\c\\")));
    EXPECT_TRUE(test::FolderStands(PathOf("two\\")));
}

TEST_F(Files, AFileInTheWayOfAFolderIsTold)
{
    PutFile("file", "x");
    const FileOutcome outcome = MakeFolder(PathOf("file"));
    EXPECT_EQ(outcome.Number, ErrorFileAccess);
    EXPECT_EQ(outcome.Cause, "is no folder");
    EXPECT_EQ(MakeFolders(PathOf("file\\sub\\deep")).Number, ErrorPathNotFound);
    EXPECT_EQ(FileText("file"), "x");
}

TEST_F(Files, DeletingWhatIsNotThereIsNoError)
{
    PutFile("file", "x");
    EXPECT_TRUE(DeleteFile(PathOf("file")).Ok());
    EXPECT_TRUE(DeleteFile(PathOf("file")).Ok());
    EXPECT_TRUE(DeleteFile(PathOf("none\\file")).Ok());
    EXPECT_TRUE(Names().empty());
}

} // namespace
} // namespace kv

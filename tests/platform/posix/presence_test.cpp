// The three answers on the POSIX host: what is there, what is known not to be there, and what cannot be
// told, with the system's words. Rights do not bind root, so the faults are loops of links, names that are
// too long and folders in the way; rights are tried in a process without them.
#include <functional>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/directory.h"
#include "platform/files.h"
#include "platform/run_error.h"
#include "platform/scratch_folder.h"

namespace kv {
namespace {

constexpr uid_t NoRoot = 65534;
const std::string LoopOfLinks = "Too many levels of symbolic links";

class ThreeAnswers : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        PutFile("file", "12345");
        std::filesystem::create_directory(Folder / "sub");
        std::filesystem::create_symlink("loop", Folder / "loop");
    }

    // Answers in a process that has no rights of root, as a letter for each.
    std::string AnswersOfNobody(const std::vector<std::function<FileAnswer()>>& questions) const
    {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0) {
            if (geteuid() == 0 && (setgid(NoRoot) != 0 || setuid(NoRoot) != 0))
                _exit(1);
            for (const auto& question : questions) {
                const FileAnswer answer = question();
                const bool denied = answer.Why.Cause == "Permission denied";
                const char letter = answer.Is == Presence::There      ? 't'
                                    : answer.Is == Presence::NotThere ? 'n'
                                    : denied                          ? 'd'
                                                                      : '?';
                if (write(ends[1], &letter, 1) != 1)
                    _exit(1);
            }
            _exit(0);
        }
        close(ends[1]);
        std::string letters(questions.size(), ' ');
        for (char& letter : letters)
            EXPECT_EQ(read(ends[0], &letter, 1), 1);
        close(ends[0]);
        int status = 1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        return letters;
    }
};

void ExpectIs(const FileAnswer& answer, Presence wanted)
{
    EXPECT_TRUE(answer.Is == wanted) << answer.Why.Cause;
    EXPECT_TRUE(answer.Why.Ok());
}

void ExpectCannotTell(const FileAnswer& answer, std::string_view words)
{
    EXPECT_TRUE(answer.Is == Presence::CannotTell);
    EXPECT_FALSE(answer.Why.Ok());
    EXPECT_EQ(answer.Why.Cause, words);
}

TEST_F(ThreeAnswers, FilesAndFoldersAreThereOrNot)
{
    ExpectIs(AskFile(PathOf("file")), Presence::There);
    ExpectIs(AskFile(PathOf("FILE")), Presence::There);
    ExpectIs(AskFile(PathOf("sub")), Presence::NotThere);
    ExpectIs(AskFile(PathOf("none")), Presence::NotThere);
    ExpectIs(AskFile(PathOf("none\\file")), Presence::NotThere);
    ExpectIs(AskFile(PathOf("file\\file")), Presence::NotThere); // below a file
    ExpectIs(AskFile(""), Presence::NotThere);
    ExpectIs(AskFile(PathOf("file") + "?"), Presence::NotThere); // no file can have it
    ExpectIs(AskFolder(PathOf("sub")), Presence::There);
    ExpectIs(AskFolder(PathOf("file")), Presence::NotThere);
}

TEST_F(ThreeAnswers, ALoopOfLinksCannotBeTold)
{
    ExpectCannotTell(AskFile(PathOf("loop")), LoopOfLinks);
    ExpectCannotTell(AskFile(PathOf("loop\\file")), LoopOfLinks);
    ExpectCannotTell(AskFile(PathOf("LOOP\\FILE")), LoopOfLinks);
    ExpectCannotTell(AskFolder(PathOf("loop")), LoopOfLinks);
    FileStamp stamp{1, 1, 1};
    ExpectCannotTell(AskStamp(PathOf("loop"), stamp), LoopOfLinks);
    EXPECT_EQ(stamp, FileStamp{});
}

TEST_F(ThreeAnswers, ANameThatIsTooLongCannotBeTold)
{
    const std::string longest(300, 'n');
    ExpectCannotTell(AskFile(PathOf(longest)), "File name too long");
    ExpectCannotTell(AskFolder(PathOf("sub\\" + longest + "\\deep")), "File name too long");
}

TEST_F(ThreeAnswers, AFileThatMayBeMissingIsReadOrMissingOrAtFault)
{
    std::string contents = "old";
    ExpectIs(ReadIfThere(PathOf("file"), contents), Presence::There);
    EXPECT_EQ(contents, "12345");
    ExpectIs(ReadIfThere(PathOf("none"), contents), Presence::NotThere);
    EXPECT_EQ(contents, "");
    ExpectIs(ReadIfThere(PathOf("none\\file"), contents), Presence::NotThere);
    ExpectCannotTell(ReadIfThere(PathOf("sub"), contents), "is a folder");
    ExpectCannotTell(ReadIfThere(PathOf("loop"), contents), LoopOfLinks);
    ExpectCannotTell(ReadIfThere(PathOf("file"), contents, 3), "is longer than 3 bytes");
    EXPECT_EQ(contents, "");
}

TEST_F(ThreeAnswers, AFaultWhileReadingIsTold)
{
    std::filesystem::create_symlink("/proc/self/mem", Folder / "mem"); // opens, and cannot be read at 0
    std::string contents = "old";
    int handle = -1;
    std::uint64_t size = 0;
    ASSERT_TRUE(OpenForReading(PathOf("mem"), handle, size).Ok());
    char byte = 0;
    std::size_t got = 0;
    EXPECT_EQ(ReadSome(handle, &byte, 1, got).Cause, "Input/output error");
    CloseReading(handle);
}

TEST_F(ThreeAnswers, AFolderThatIsClosedToThePersonCannotBeTold)
{
    std::filesystem::create_directory(Folder / "closed");
    PutFile("closed/file", "x");
    ASSERT_EQ(chmod(Folder.c_str(), 0755), 0);
    ASSERT_EQ(chmod((Folder / "closed").c_str(), 0), 0);
    const std::string file = PathOf("closed\\file"), folder = PathOf("closed"), none = PathOf("none");
    Long count = 7;
    std::string contents;
    EXPECT_EQ(AnswersOfNobody({[&] { return AskFile(file); }, [&] { return AskFolder(file + "\\"); },
                               [&] { return AskFolder(folder); }, [&] { return AskFile(none); },
                               [&] { return FCount(folder + "\\*.DXF", count); },
                               [&] { return ReadIfThere(file, contents); }}),
              "ddtndd");
    ASSERT_EQ(chmod((Folder / "closed").c_str(), 0755), 0);
}

// Nothing is there as it is spelled; whether "File" is there cannot be told where no name can be read.
TEST_F(ThreeAnswers, AnotherSpellingInAFolderThatCannotBeListedCannotBeTold)
{
    std::filesystem::create_directory(Folder / "unlisted");
    PutFile("unlisted/File", "x");
    ASSERT_EQ(chmod(Folder.c_str(), 0755), 0);
    ASSERT_EQ(chmod((Folder / "unlisted").c_str(), 0733), 0); // may be entered and written, not listed
    const std::string exact = PathOf("unlisted\\File"), other = PathOf("unlisted\\FILE");
    std::string contents;
    EXPECT_EQ(AnswersOfNobody({[&] { return AskFile(exact); }, [&] { return AskFile(other); },
                               [&] { return ReadIfThere(other, contents); },
                               [&] { return AnswerOf(ReplaceFile(other, "second")); },
                               [&] { return AnswerOf(MakeFolder(other)); },
                               [&] { return AnswerOf(DeleteFile(other)); }}),
              "tddddd");
    ASSERT_EQ(chmod((Folder / "unlisted").c_str(), 0755), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Folder / "unlisted"), {}), 1);
}

TEST_F(ThreeAnswers, AFolderOnALoopIsNoEmptyFolder)
{
    Long count = 7;
    ExpectCannotTell(FCount(PathOf("loop\\*.DXF"), count), LoopOfLinks);
    EXPECT_EQ(count, 0);
    std::vector<DirectoryEntry> entries(1);
    ExpectCannotTell(ReadFileX(PathOf("loop\\*.DXF"), 9, entries), LoopOfLinks);
    EXPECT_TRUE(entries.empty());
    ExpectCannotTell(AskPattern(PathOf("loop\\*.DXF")), LoopOfLinks);
    ExpectIs(FCount(PathOf("none\\*.DXF"), count), Presence::NotThere);
}

TEST_F(ThreeAnswers, ALinkIntoTheUnknownIsListedSoThatItsOpeningSaysWhy)
{
    std::filesystem::create_directory(Folder / "closed");
    PutFile("closed/real", "x");
    std::filesystem::create_symlink("closed/real", Folder / "a.dxf");
    ASSERT_EQ(chmod(Folder.c_str(), 0755), 0);
    ASSERT_EQ(chmod((Folder / "closed").c_str(), 0), 0);
    const std::string pattern = PathOf("") + "*.DXF";
    EXPECT_EQ(AnswersOfNobody({[&] {
                  std::vector<DirectoryEntry> entries;
                  const FileAnswer answer = ReadFileX(pattern, 9, entries);
                  return entries.size() == 1 && entries[0].Size == 0 ? answer : FileAnswer{};
              }}),
              "t");
    ASSERT_EQ(chmod((Folder / "closed").c_str(), 0755), 0);
}

} // namespace
} // namespace kv

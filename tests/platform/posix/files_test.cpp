// File access on the POSIX host: rights, locks, links, full disks and entries that are no files.
// What limits or rights of a process are needed for runs in a child, which answers by its exit code.
#include "platform/files.h"

#include <functional>

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/file_lock.h"
#include "platform/run_error.h"
#include "platform/scratch_folder.h"

namespace kv {
namespace {

constexpr int KilledBySignal = -1;
constexpr uid_t Nobody = 65534;

// Exit code of `work` in a process of its own.
int InChild(const std::function<int()>& work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : KilledBySignal;
}

// The same without the rights of root, for whom no rights check holds.
int InChildOfNobody(const std::function<int()>& work)
{
    return InChild([&work] {
        if (geteuid() == 0 && (setgid(Nobody) != 0 || setuid(Nobody) != 0))
            return 255;
        return work();
    });
}

class HostFiles : public ScratchFolder {
  protected:
    std::string Host(const std::string& name) const { return (Folder / name).string(); }
    void SetMode(const std::string& name, mode_t mode) const
    {
        ASSERT_EQ(chmod(Host(name).c_str(), mode), 0);
    }
    mode_t ModeOf(const std::string& name) const
    {
        struct stat status {};
        EXPECT_EQ(stat(Host(name).c_str(), &status), 0);
        return status.st_mode & 07777;
    }
};

using NameList = std::vector<std::string>;

TEST_F(HostFiles, AFileSizeLimitIsAFullDiskAndEndsNoProgram)
{
    PutFile("program", "old program");
    const std::string path = PathOf("program");
    const int code = InChild([&path] {
        const rlimit limit{1024, 1024};
        setrlimit(RLIMIT_FSIZE, &limit);
        const FileOutcome tooBig = ReplaceFile(path, std::string(10'000, 'x'));
        // Held back for the write only: afterwards the signal is neither blocked nor pending.
        sigset_t blocked, pending;
        sigprocmask(SIG_BLOCK, nullptr, &blocked);
        sigpending(&pending);
        if (sigismember(&blocked, SIGXFSZ) != 0 || sigismember(&pending, SIGXFSZ) != 0)
            return 1;
        return tooBig.Cause == "File too large" ? tooBig.Number : 2;
    });
    EXPECT_EQ(code, ErrorDiskFull);
    EXPECT_EQ(FileText("program"), "old program");
    EXPECT_EQ(Names(), NameList{"program"});
}

TEST_F(HostFiles, BehindAFullDiskASmallerFileIsWritten)
{
    const std::string path = PathOf("program");
    const int code = InChild([&path] {
        const rlimit limit{1024, 1024};
        setrlimit(RLIMIT_FSIZE, &limit);
        static_cast<void>(ReplaceFile(path, std::string(10'000, 'x')));
        return ReplaceFile(path, "short").Number;
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(FileText("program"), "short");
}

TEST_F(HostFiles, AFolderWithoutRightsKeepsTheOldFile)
{
    std::filesystem::create_directory(Folder / "srg");
    PutFile("srg/program", "old");
    SetMode("srg/program", 0666);
    SetMode("srg", 0555);
    const std::string path = PathOf("srg\\program"), fresh = PathOf("srg\\new"), sub = PathOf("srg\\sub");
    EXPECT_EQ(InChildOfNobody([&path] { return ReplaceFile(path, "new").Number; }), ErrorPermission);
    EXPECT_EQ(InChildOfNobody([&fresh] { return ReplaceFile(fresh, "new").Number; }), ErrorPermission);
    EXPECT_EQ(InChildOfNobody([&sub] { return MakeFolders(sub).Number; }), ErrorPermission);
    EXPECT_EQ(InChildOfNobody([&path] { return DeleteFile(path).Number; }), ErrorPermission);
    SetMode("srg", 0755);
    EXPECT_EQ(FileText("srg/program"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Folder / "srg"), {}), 1);
}

TEST_F(HostFiles, AReadOnlyFileIsNotReplaced)
{
    SetMode("", 0777);
    PutFile("index", "old");
    SetMode("index", 0444);
    const std::string path = PathOf("index");
    EXPECT_EQ(InChildOfNobody([&path] { return ReplaceFile(path, "new").Number; }), ErrorPermission);
    EXPECT_EQ(InChildOfNobody([&path] { return CheckWritable(path).Number; }), ErrorPermission);
    EXPECT_EQ(FileText("index"), "old");
    EXPECT_EQ(Names(), NameList{"index"});
}

TEST_F(HostFiles, AFileWithoutTheRightToReadIsTold)
{
    PutFile("drawing", "x");
    SetMode("drawing", 0);
    const std::string path = PathOf("drawing");
    const int code = InChildOfNobody([&path] {
        std::string contents;
        return ReadWholeFile(path, contents).Number;
    });
    EXPECT_EQ(code, ErrorPermission);
}

TEST_F(HostFiles, AReplacedFileKeepsItsRights)
{
    for (const mode_t mode : {0640u, 0666u, 0600u, 0755u}) {
        PutFile("index", "old");
        SetMode("index", mode);
        EXPECT_TRUE(ReplaceFile(PathOf("index"), "new").Ok());
        EXPECT_EQ(ModeOf("index"), mode);
    }
}

TEST_F(HostFiles, ANewFileFollowsTheUmask)
{
    const mode_t before = umask(027);
    EXPECT_TRUE(ReplaceFile(PathOf("index"), "new").Ok());
    umask(before);
    EXPECT_EQ(ModeOf("index"), 0640u);
}

TEST_F(HostFiles, AReplacedFileKeepsItsOwnerWhereRootWrites)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may give a file away";
    PutFile("index", "old");
    ASSERT_EQ(chown(Host("index").c_str(), Nobody, Nobody), 0);
    EXPECT_TRUE(ReplaceFile(PathOf("index"), "new").Ok());
    struct stat status {};
    ASSERT_EQ(stat(Host("index").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, Nobody);
    EXPECT_EQ(status.st_gid, Nobody);
}

TEST_F(HostFiles, AnotherPersonsFileIsReplacedWhereTheFolderAllows)
{
    SetMode("", 0777);
    PutFile("index", "old");
    SetMode("index", 0666);
    const std::string path = PathOf("index");
    EXPECT_EQ(InChildOfNobody([&path] { return ReplaceFile(path, "new").Number; }), 0);
    EXPECT_EQ(FileText("index"), "new");
    EXPECT_EQ(ModeOf("index"), 0666u);
}

TEST_F(HostFiles, ALinkStaysALinkAndItsFileIsReplaced)
{
    std::filesystem::create_directory(Folder / "real");
    PutFile("real/index", "old");
    std::filesystem::create_symlink("real/index", Folder / "middle");
    std::filesystem::create_symlink(Folder / "middle", Folder / "index");
    EXPECT_TRUE(ReplaceFile(PathOf("index"), "new").Ok());
    EXPECT_TRUE(std::filesystem::is_symlink(Folder / "index"));
    EXPECT_TRUE(std::filesystem::is_symlink(Folder / "middle"));
    EXPECT_FALSE(std::filesystem::is_symlink(Folder / "real/index"));
    EXPECT_EQ(FileText("real/index"), "new");
    EXPECT_EQ(Names(), (NameList{"index", "middle", "real"}));
}

TEST_F(HostFiles, ALinkWithoutAnEndGetsItsFile)
{
    std::filesystem::create_symlink("real", Folder / "index");
    EXPECT_TRUE(ReplaceFile(PathOf("index"), "new").Ok());
    EXPECT_TRUE(std::filesystem::is_symlink(Folder / "index"));
    EXPECT_EQ(FileText("real"), "new");
}

TEST_F(HostFiles, LinksThatRunInACircleAreRefused)
{
    std::filesystem::create_symlink("b", Folder / "a");
    std::filesystem::create_symlink("a", Folder / "b");
    EXPECT_NE(ReplaceFile(PathOf("a"), "new").Number, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(Folder / "a"));
    EXPECT_EQ(Names(), (NameList{"a", "b"}));
}

TEST_F(HostFiles, APipeIsRefusedAtOnce)
{
    ASSERT_EQ(mkfifo(Host("pipe").c_str(), 0666), 0);
    int handle = 0;
    std::uint64_t size = 0;
    const FileOutcome outcome = OpenForReading(PathOf("pipe"), handle, size); // would wait for a writer
    EXPECT_EQ(outcome.Number, ErrorFileAccess);
    EXPECT_EQ(outcome.Cause, "is no regular file");
    EXPECT_EQ(ReplaceFile(PathOf("pipe"), "x").Number, ErrorFileAccess);
    EXPECT_EQ(CheckWritable(PathOf("pipe")).Number, ErrorFileAccess);
    EXPECT_TRUE(std::filesystem::is_fifo(Folder / "pipe"));
}

TEST_F(HostFiles, ADeviceIsNeitherReadNorReplaced)
{
    std::string contents;
    EXPECT_EQ(ReadWholeFile("\\dev\\zero", contents).Number, ErrorFileAccess);
    std::filesystem::create_symlink("/dev/null", Folder / "index");
    EXPECT_EQ(ReplaceFile(PathOf("index"), "x").Number, ErrorFileAccess);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

// Takes a lock in a process of its own, then asks from this one.
FileOutcome CheckedWhileLocked(const std::string& host, const std::string& path,
                               const std::function<bool(int)>& lock)
{
    int ready[2], done[2];
    EXPECT_EQ(pipe(ready) + pipe(done), 0);
    const pid_t child = fork();
    if (child == 0) {
        const int file = open(host.c_str(), O_RDWR);
        char answer = lock(file) ? 'y' : 'n';
        const bool told = write(ready[1], &answer, 1) == 1;
        close(done[1]);
        _exit(told && read(done[0], &answer, 1) == 0 ? 0 : 1);
    }
    char answer = 'n';
    EXPECT_EQ(read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    const FileOutcome outcome = CheckWritable(path);
    for (const int end : {ready[0], ready[1], done[0], done[1]})
        close(end);
    int status = 0;
    waitpid(child, &status, 0);
    return outcome;
}

TEST_F(HostFiles, AFileLockedByAnotherProgramIsInUse)
{
    PutFile("index", "12345");
    const std::vector<std::function<bool(int)>> locks = {[](int file) { return flock(file, LOCK_EX) == 0; },
                                                         [](int file) { return flock(file, LOCK_SH) == 0; },
                                                         [](int file) {
                                                             struct flock whole {};
                                                             whole.l_type = F_WRLCK;
                                                             return fcntl(file, F_SETLK, &whole) == 0;
                                                         },
                                                         [](int file) {
                                                             struct flock record {};
                                                             record.l_type = F_RDLCK;
                                                             record.l_start = 2;
                                                             record.l_len = 1;
                                                             return fcntl(file, F_OFD_SETLK, &record) == 0;
                                                         }};
    for (const auto& lock : locks) {
        const FileOutcome outcome = CheckedWhileLocked(Host("index"), PathOf("index"), lock);
        EXPECT_EQ(outcome.Number, ErrorPermission);
        EXPECT_EQ(outcome.Cause, "in use by another program");
        EXPECT_TRUE(CheckWritable(PathOf("index")).Ok()); // free again
    }
    EXPECT_EQ(FileText("index"), "12345");
}

TEST_F(HostFiles, TheCheckLeavesNoLockBehind)
{
    PutFile("index", "12345");
    ASSERT_TRUE(CheckWritable(PathOf("index")).Ok());
    const int file = open(Host("index").c_str(), O_RDWR);
    ASSERT_GE(file, 0);
    EXPECT_EQ(flock(file, LOCK_EX | LOCK_NB), 0);
    close(file);
}

TEST_F(HostFiles, NoHandleIsLeftOpen)
{
    PutFile("index", "old");
    std::string contents;
    const auto openHandles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = openHandles();
    EXPECT_TRUE(ReadWholeFile(PathOf("index"), contents).Ok());
    EXPECT_FALSE(ReadWholeFile(PathOf(""), contents).Ok());
    EXPECT_TRUE(ReplaceFile(PathOf("index"), "new").Ok());
    EXPECT_FALSE(ReplaceFile(PathOf("none\\index"), "new").Ok());
    EXPECT_TRUE(CheckWritable(PathOf("index")).Ok());
    FileLock lock;
    EXPECT_TRUE(lock.TryLock(PathOf("index")).Is == LockState::Taken);
    lock.Release();
    int swept = 0;
    EXPECT_TRUE(SweepAsides(PathOf(""), swept).Ok());
    EXPECT_EQ(openHandles(), before);
}

} // namespace
} // namespace kv

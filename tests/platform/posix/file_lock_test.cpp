// Locks between processes: freed however a process ends, kept from the programs it starts.
#include "platform/file_lock.h"

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

#include "platform/scratch_folder.h"

namespace kv {
namespace {

class ProcessLocks : public ScratchFolder {
  protected:
    // Starts a process that takes the lock, starts a program of its own, and waits to be killed.
    pid_t Holder(const std::string& path)
    {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        if (child == 0) {
            FileLock lock;
            char answer = lock.TryLock(path).Is == LockState::Taken ? 'y' : 'n';
            if (fork() == 0) {
                execlp("sleep", "sleep", "1", nullptr);
                _exit(1);
            }
            if (write(ready[1], &answer, 1) != 1)
                _exit(1);
            for (;;)
                pause();
        }
        char answer = 'n';
        EXPECT_EQ(read(ready[0], &answer, 1), 1);
        EXPECT_EQ(answer, 'y');
        close(ready[0]);
        close(ready[1]);
        return child;
    }
};

TEST_F(ProcessLocks, AnotherProcessIsNamedAndItsEndFreesTheLock)
{
    const std::string path = PathOf("INDEX");
    const pid_t holder = Holder(path);
    FileLock lock;
    const LockAnswer held = lock.TryLock(path);
    EXPECT_TRUE(held.Is == LockState::Held);
    EXPECT_NE(held.Holder.find(", process " + std::to_string(holder) + " on "), std::string::npos)
        << held.Holder;
    kill(holder, SIGKILL);
    waitpid(holder, nullptr, 0);
    // The program that it started still runs for a second; it may not have begun before, and hold the lock so
    // long.
    bool taken = false;
    for (int tries = 0; tries < 50 && !taken; ++tries) {
        taken = lock.TryLock(path).Is == LockState::Taken;
        usleep(10'000);
    }
    EXPECT_TRUE(taken);
}

TEST_F(ProcessLocks, ThroughALinkTheRealFileIsLocked)
{
    std::filesystem::create_directory(Folder / "real");
    PutFile("real/INDEX", "x");
    std::filesystem::create_symlink("real/INDEX", Folder / "link");
    FileLock first, second;
    EXPECT_TRUE(first.TryLock(PathOf("real\\INDEX")).Is == LockState::Taken);
    EXPECT_TRUE(second.TryLock(PathOf("link")).Is == LockState::Held);
}

TEST_F(ProcessLocks, ALockFileThatIsALinkIsNotFollowed)
{
    PutFile("precious", "12345");
    std::filesystem::create_symlink("precious", Folder / ".kv-INDEX.lock");
    FileLock lock;
    EXPECT_TRUE(lock.TryLock(PathOf("INDEX")).Is == LockState::CannotBe);
    EXPECT_EQ(FileText("precious"), "12345");
}

} // namespace
} // namespace kv

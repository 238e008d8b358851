// Locks that processes agree on, as far as one process shows them.
#include "platform/file_lock.h"

#include "platform/scratch_folder.h"
#include "platform/text.h"
#include "platform/this_process.h"

namespace kv {
namespace {

class FileLocks : public ScratchFolder {};

TEST_F(FileLocks, ASecondLockOfTheSameProcessIsHeldOff)
{
    FileLock first, second;
    EXPECT_TRUE(first.TryLock(PathOf("INDEX")).Is == LockState::Taken);
    const LockAnswer answer = second.TryLock(PathOf("INDEX"));
    EXPECT_TRUE(answer.Is == LockState::Held);
    EXPECT_FALSE(second.IsTaken());
    first.Release();
    EXPECT_TRUE(second.TryLock(PathOf("INDEX")).Is == LockState::Taken);
}

TEST_F(FileLocks, TheHolderIsNamed)
{
    FileLock first, second;
    ASSERT_TRUE(first.TryLock(PathOf("INDEX")).Is == LockState::Taken);
    const std::string holder = second.TryLock(PathOf("INDEX")).Holder;
    EXPECT_TRUE(Holds(holder, FileNameOf(ExeName()))) << holder;
    EXPECT_TRUE(Holds(holder, ", process " + std::to_string(ProcessNumber()) + " on " + MachineName()))
        << holder;
    EXPECT_FALSE(Holds(holder, "\n"));
}

TEST_F(FileLocks, TheLockedFileItselfIsNotTouchedAndNeedNotBeThere)
{
    PutFile("index", "12345");
    FileLock lock, other;
    EXPECT_TRUE(lock.TryLock(PathOf("index")).Is == LockState::Taken);
    EXPECT_TRUE(other.TryLock(PathOf("none")).Is == LockState::Taken);
    EXPECT_EQ(FileText("index"), "12345");
    EXPECT_EQ(Names(), (std::vector<std::string>{".kv-INDEX.lock", ".kv-NONE.lock", "index"}));
}

TEST_F(FileLocks, TwoSpellingsOfAFileAreOneLock)
{
    FileLock first, second;
    EXPECT_TRUE(first.TryLock(PathOf("index")).Is == LockState::Taken);
    EXPECT_TRUE(second.TryLock(PathOf("Index")).Is == LockState::Held);
}

TEST_F(FileLocks, TheEndOfALockFreesIt)
{
    {
        FileLock lock;
        ASSERT_TRUE(lock.TryLock(PathOf("INDEX")).Is == LockState::Taken);
    }
    FileLock lock;
    EXPECT_TRUE(lock.TryLock(PathOf("INDEX")).Is == LockState::Taken);
    EXPECT_TRUE(lock.TryLock(PathOf("INDEX")).Is == LockState::Taken) << "its own lock is given back first";
}

TEST_F(FileLocks, WithoutAFolderThereIsNoLock)
{
    FileLock lock;
    const LockAnswer answer = lock.TryLock(PathOf("none\\INDEX"));
    EXPECT_TRUE(answer.Is == LockState::CannotBe);
    EXPECT_NE(answer.Why.Cause, "");
    EXPECT_FALSE(lock.IsTaken());
}

} // namespace
} // namespace kv

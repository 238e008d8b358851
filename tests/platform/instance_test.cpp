// One instance for each installation, with real second processes.
#include "platform/instance.h"

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

#include "platform/file_lock.h"
#include "platform/paths.h"
#include "platform/scratch_folder.h"

namespace kv {
namespace {

class OnlyInstance : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        std::filesystem::create_directories(Folder / "home");
        std::filesystem::create_directories(Folder / "other");
    }
    void TearDown() override
    {
        static_cast<void>(BecomeOnlyInstance(PathOf("left"))); // lets the others go
        ScratchFolder::TearDown();
    }
    std::string Home() const { return PathOf("home") + "\\"; }

    // What another process is told that starts in the folder, a second window that asks the first.
    static bool SecondStartIsOnly(const std::string& folder)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            const InstanceAnswer answer = BecomeOnlyInstance(folder);
            if (answer.SameHere)
                AskToFront(folder);
            ::_exit(answer.Only ? 1 : 0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status));
        return WEXITSTATUS(status) == 1;
    }
};

// A process that is the only instance of the folder until it is killed.
pid_t StartHolder(const std::string& folder)
{
    int ready[2] = {-1, -1};
    if (::pipe(ready) != 0)
        return -1;
    const pid_t child = ::fork();
    if (child == 0) {
        const char answer = BecomeOnlyInstance(folder).Only ? 'y' : 'n';
        if (::write(ready[1], &answer, 1) == 1)
            ::pause();
        ::_exit(0);
    }
    char answer = 'n';
    const bool told = ::read(ready[0], &answer, 1) == 1;
    ::close(ready[0]);
    ::close(ready[1]);
    EXPECT_TRUE(told && answer == 'y');
    return child;
}

TEST_F(OnlyInstance, ASecondStartAsksTheFirstToTheFront)
{
    ASSERT_TRUE(BecomeOnlyInstance(Home()).Only);
    EXPECT_FALSE(AskedToFront());
    EXPECT_FALSE(SecondStartIsOnly(Home()));
    EXPECT_TRUE(AskedToFront());
    EXPECT_FALSE(AskedToFront()); // once for each time
    EXPECT_FALSE(SecondStartIsOnly(Home()));
    EXPECT_TRUE(AskedToFront());
}

TEST_F(OnlyInstance, ASecondStartIsToldWhoIsThere)
{
    const pid_t first = StartHolder(Home());
    ASSERT_GT(first, 0);
    const InstanceAnswer answer = BecomeOnlyInstance(Home());
    EXPECT_FALSE(answer.Only);
    EXPECT_TRUE(answer.SameHere); // this program on this machine
    EXPECT_NE(answer.Holder.find(", process " + std::to_string(first) + " on "), std::string::npos)
        << answer.Holder;
    ::kill(first, SIGKILL);
    ::waitpid(first, nullptr, 0);
}

TEST_F(OnlyInstance, AnotherProgramOrAnotherMachineCannotComeToTheFront)
{
    const std::string own = HolderOf(LockHolderText());
    const std::string machine = own.substr(own.find(" on "));
    EXPECT_TRUE(HeldBy(own).SameHere);
    EXPECT_TRUE(HeldBy(FileNameOf(ExeName()) + ", process 7" + machine).SameHere);
    EXPECT_FALSE(HeldBy("korvanti, process 7" + machine).SameHere);
    EXPECT_FALSE(HeldBy(FileNameOf(ExeName()) + ", process 7" + machine + "2").SameHere);
    EXPECT_FALSE(HeldBy(HolderOf({})).SameHere);
}

TEST_F(OnlyInstance, ASecondStartLeavesSettingsAndLockAlone)
{
    PutFile("home/KV90.INI", "[Configuration]\r\n");
    ASSERT_TRUE(BecomeOnlyInstance(Home()).Only);
    const std::string lock = FileText("home/.kv-KORVANTI.lock");
    EXPECT_FALSE(SecondStartIsOnly(Home()));
    EXPECT_TRUE(AskedToFront());
    const std::filesystem::directory_iterator entries(Folder / "home");
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 2);
    EXPECT_EQ(FileText("home/KV90.INI"), "[Configuration]\r\n");
    EXPECT_EQ(FileText("home/.kv-KORVANTI.lock"), lock);
}

TEST_F(OnlyInstance, AnotherInstallationRunsBesideIt)
{
    ASSERT_TRUE(BecomeOnlyInstance(Home()).Only);
    EXPECT_TRUE(SecondStartIsOnly(PathOf("other") + "\\"));
    EXPECT_FALSE(AskedToFront());
}

TEST_F(OnlyInstance, AFolderIsTheSameHoweverItIsSpelled)
{
    std::filesystem::create_symlink("home", Folder / "link");
    ASSERT_TRUE(BecomeOnlyInstance(Home()).Only);
    EXPECT_FALSE(SecondStartIsOnly(PathOf("home")));
    EXPECT_FALSE(SecondStartIsOnly(PathOf("HOME") + "\\"));
    EXPECT_FALSE(SecondStartIsOnly(PathOf("link") + "\\"));
}

TEST_F(OnlyInstance, AKilledInstanceDoesNotBlockTheNextStart)
{
    const pid_t first = StartHolder(Home());
    ASSERT_GT(first, 0);
    EXPECT_FALSE(BecomeOnlyInstance(Home()).Only);
    EXPECT_FALSE(AskedToFront()); // that was this process's own question
    ::kill(first, SIGKILL);
    ::waitpid(first, nullptr, 0);
    EXPECT_TRUE(BecomeOnlyInstance(Home()).Only);
    EXPECT_FALSE(AskedToFront()); // what was asked of the killed one has gone with it
}

TEST_F(OnlyInstance, AProgramThatWasStartedDoesNotHoldTheInstallation)
{
    ASSERT_TRUE(BecomeOnlyInstance(Home()).Only);
    const pid_t viewer = ::fork();
    if (viewer == 0) {
        ::execl("/bin/sleep", "sleep", "60", nullptr);
        ::_exit(1);
    }
    // Until the new program has taken over, the copy of this process holds what this one held.
    bool only = false;
    for (int i = 0; i < 500 && !only; ++i) {
        static_cast<void>(BecomeOnlyInstance(PathOf("other") + "\\")); // gives the first one free
        only = BecomeOnlyInstance(Home()).Only;
        ::usleep(10'000);
    }
    EXPECT_TRUE(only);
    ::kill(viewer, SIGKILL);
    ::waitpid(viewer, nullptr, 0);
}

// Root may write everywhere, so it becomes an ordinary person; one who is ordinary already stays so.
struct AnotherPerson {
    AnotherPerson()
    {
        constexpr uid_t Nobody = 65534;
        if (::geteuid() == 0) {
            EXPECT_EQ(::seteuid(Nobody), 0);
        }
    }
    ~AnotherPerson()
    {
        if (::getuid() == 0) {
            EXPECT_EQ(::seteuid(0), 0);
        }
    }
    AnotherPerson(const AnotherPerson&) = delete;
    AnotherPerson& operator=(const AnotherPerson&) = delete;
};

TEST_F(OnlyInstance, APersonWhoMayOnlyLookIsToldWhoIsThere)
{
    const pid_t first = StartHolder(Home());
    ASSERT_GT(first, 0);
    std::filesystem::permissions(Folder / "home/.kv-KORVANTI.lock", std::filesystem::perms(0444));
    std::filesystem::permissions(Folder / "home", std::filesystem::perms(0555));
    {
        const AnotherPerson other;
        const InstanceAnswer answer = BecomeOnlyInstance(Home());
        EXPECT_FALSE(answer.Only);
        EXPECT_NE(answer.Holder.find(", process " + std::to_string(first) + " on "), std::string::npos)
            << answer.Holder;
    }
    std::filesystem::permissions(Folder / "home", std::filesystem::perms(0755));
    ::kill(first, SIGKILL);
    ::waitpid(first, nullptr, 0);
}

TEST_F(OnlyInstance, APersonWhoMayOnlyLookHoldsItForAll)
{
    std::filesystem::permissions(Folder / "home", std::filesystem::perms(0555));
    {
        const AnotherPerson other;
        EXPECT_TRUE(BecomeOnlyInstance(Home()).Only);
    }
    std::filesystem::permissions(Folder / "home", std::filesystem::perms(0755));
    EXPECT_FALSE(SecondStartIsOnly(Home()));
}

TEST_F(OnlyInstance, WithoutAnyPlaceForTheLockTheWorkGoesOn)
{
    EXPECT_TRUE(BecomeOnlyInstance(PathOf("gone") + "\\").Only);
    EXPECT_FALSE(AskedToFront());
}

TEST_F(OnlyInstance, NamesOfFoldersAreShortAndDiffer)
{
    EXPECT_EQ(InstanceName(""), "korvanti-cbf29ce484222325"); // the basis of the hash
    EXPECT_EQ(InstanceName("a"), "korvanti-af63dc4c8601ec8c");
    EXPECT_NE(InstanceName("/srv/a"), InstanceName("/srv/b"));
    EXPECT_LE(InstanceName(std::string(4000, 'x')).size(), 25U);
}

} // namespace
} // namespace kv

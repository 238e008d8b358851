// One instance for each installation, with real second processes.
#include "platform/instance.h"

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

#include "platform/scratch_folder.h"

namespace kv {
namespace {

class OnlyInstance : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        std::filesystem::create_directories(Folder / "run");
        std::filesystem::create_directories(Folder / "home");
        std::filesystem::create_directories(Folder / "other");
        SetVariable("XDG_RUNTIME_DIR", (Folder / "run").string());
    }
    void TearDown() override
    {
        BecomeOnlyInstance(PathOf("left")); // lets the others go
        ScratchFolder::TearDown();
    }
    std::string Home() const { return PathOf("home") + "\\"; }

    // What another process is told that starts in the folder.
    static bool SecondStartIsOnly(const std::string& folder)
    {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(BecomeOnlyInstance(folder) ? 1 : 0);
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
        const char answer = BecomeOnlyInstance(folder) ? 'y' : 'n';
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
    ASSERT_TRUE(BecomeOnlyInstance(Home()));
    EXPECT_FALSE(AskedToFront());
    EXPECT_FALSE(SecondStartIsOnly(Home()));
    EXPECT_TRUE(AskedToFront());
    EXPECT_FALSE(AskedToFront()); // once for each time
    EXPECT_FALSE(SecondStartIsOnly(Home()));
    EXPECT_TRUE(AskedToFront());
}

TEST_F(OnlyInstance, ASecondStartLeavesTheInstallationUntouched)
{
    PutFile("home/KV90.INI", "[Configuration]\r\n");
    ASSERT_TRUE(BecomeOnlyInstance(Home()));
    EXPECT_FALSE(SecondStartIsOnly(Home()));
    const std::filesystem::directory_iterator entries(Folder / "home");
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
    EXPECT_EQ(FileText("home/KV90.INI"), "[Configuration]\r\n");
}

TEST_F(OnlyInstance, AnotherInstallationRunsBesideIt)
{
    ASSERT_TRUE(BecomeOnlyInstance(Home()));
    EXPECT_TRUE(SecondStartIsOnly(PathOf("other") + "\\"));
    EXPECT_FALSE(AskedToFront());
}

TEST_F(OnlyInstance, AFolderIsTheSameHoweverItIsSpelled)
{
    std::filesystem::create_symlink("home", Folder / "link");
    ASSERT_TRUE(BecomeOnlyInstance(Home()));
    EXPECT_FALSE(SecondStartIsOnly(PathOf("home")));
    EXPECT_FALSE(SecondStartIsOnly(PathOf("HOME") + "\\"));
    EXPECT_FALSE(SecondStartIsOnly(PathOf("link") + "\\"));
}

TEST_F(OnlyInstance, AKilledInstanceDoesNotBlockTheNextStart)
{
    const pid_t first = StartHolder(Home());
    ASSERT_GT(first, 0);
    EXPECT_FALSE(BecomeOnlyInstance(Home()));
    EXPECT_FALSE(AskedToFront()); // that was this process's own question
    ::kill(first, SIGKILL);
    ::waitpid(first, nullptr, 0);
    EXPECT_TRUE(BecomeOnlyInstance(Home()));
    EXPECT_FALSE(AskedToFront()); // what was asked of the killed one has gone with it
}

TEST_F(OnlyInstance, AProgramThatWasStartedDoesNotHoldTheInstallation)
{
    ASSERT_TRUE(BecomeOnlyInstance(Home()));
    const pid_t viewer = ::fork();
    if (viewer == 0) {
        ::execl("/bin/sleep", "sleep", "60", nullptr);
        ::_exit(1);
    }
    // Until the new program has taken over, the copy of this process holds what this one held.
    bool only = false;
    for (int i = 0; i < 500 && !only; ++i) {
        BecomeOnlyInstance(PathOf("other") + "\\"); // gives the first one free
        only = BecomeOnlyInstance(Home());
        ::usleep(10'000);
    }
    EXPECT_TRUE(only);
    ::kill(viewer, SIGKILL);
    ::waitpid(viewer, nullptr, 0);
}

TEST_F(OnlyInstance, WithoutARuntimeFolderTheConfigurationFolderServes)
{
    SetVariable("XDG_RUNTIME_DIR", std::nullopt);
    SetVariable("XDG_CONFIG_HOME", (Folder / "config").string());
    ASSERT_TRUE(BecomeOnlyInstance(Home()));
    EXPECT_TRUE(std::filesystem::exists(Folder / "config" / "korvanti"));
    EXPECT_FALSE(SecondStartIsOnly(Home()));
    EXPECT_TRUE(AskedToFront());
}

TEST_F(OnlyInstance, WithoutAnyPlaceForTheLockTheWorkGoesOn)
{
    PutFile("blocked", "a file where a folder should be");
    SetVariable("XDG_RUNTIME_DIR", std::nullopt);
    SetVariable("XDG_CONFIG_HOME", (Folder / "blocked").string());
    EXPECT_TRUE(BecomeOnlyInstance(Home()));
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

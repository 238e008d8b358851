// One instance for each installation, with real second processes.
#include "platform/instance.h"

#include <chrono>
#include <thread>

#include <windows.h>

#include "platform/processes.h"
#include "platform/scratch_folder.h"
#include "platform/windows/second_process.h"

namespace kv {
namespace {

class WindowsInstance : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        for (const char* const folder : {"home", "other"})
            std::filesystem::create_directories(Folder / folder);
        Processes = SystemProcesses();
    }
    void TearDown() override
    {
        static_cast<void>(BecomeOnlyInstance(PathOf("left"))); // lets the others go
        Processes = {};
        ScratchFolder::TearDown();
    }
    std::string Home() const { return PathOf("home") + "\\"; }

    // What another process is told that starts in the folder.
    bool SecondStartIsOnly(const std::string& folder)
    {
        SetVariable(test::TaskVariable, "second " + folder);
        const Long handle = StartLine(test::SecondProcess());
        EXPECT_GT(handle, 0);
        while (ProcessExitCode(handle) == StillActive)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        const Long code = ProcessExitCode(handle);
        ForgetProcess(handle);
        EXPECT_TRUE(code == 0 || code == 1) << code;
        return code == 1;
    }
};

TEST_F(WindowsInstance, ASecondStartAsksTheFirstToTheFront)
{
    PutFile("home/KV90.INI", "[Configuration]\r\n");
    ASSERT_TRUE(BecomeOnlyInstance(Home()).Only);
    EXPECT_FALSE(AskedToFront());
    EXPECT_FALSE(SecondStartIsOnly(Home()));
    EXPECT_TRUE(AskedToFront());
    EXPECT_FALSE(AskedToFront()); // once for each time
    const std::filesystem::directory_iterator entries(Folder / "home");
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 2); // and the lock
    EXPECT_EQ(FileText("home/KV90.INI"), "[Configuration]\r\n");
}

TEST_F(WindowsInstance, AnotherInstallationRunsBesideIt)
{
    ASSERT_TRUE(BecomeOnlyInstance(Home()).Only);
    EXPECT_TRUE(SecondStartIsOnly(PathOf("other") + "\\"));
    EXPECT_FALSE(AskedToFront());
}

TEST_F(WindowsInstance, AFolderIsTheSameHoweverItIsSpelled)
{
    ASSERT_TRUE(BecomeOnlyInstance(Home()).Only);
    EXPECT_FALSE(SecondStartIsOnly(PathOf("HOME")));
    EXPECT_FALSE(SecondStartIsOnly(PathOf("other\\..\\home\\")));
}

TEST_F(WindowsInstance, AKilledInstanceDoesNotBlockTheNextStart)
{
    SetVariable(test::TaskVariable, "hold " + Home());
    SetVariable(test::SignVariable, (Folder / "sign").string());
    std::string line = test::SecondProcess();
    STARTUPINFOA look{};
    look.cb = sizeof look;
    PROCESS_INFORMATION first{};
    ASSERT_NE(
        CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &look, &first), 0);
    for (int i = 0; i < 1000 && FileText("sign").empty(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_EQ(FileText("sign"), "y");
    EXPECT_FALSE(BecomeOnlyInstance(Home()).Only);
    EXPECT_FALSE(AskedToFront()); // that was this process's own question
    TerminateProcess(first.hProcess, 1);
    WaitForSingleObject(first.hProcess, 10'000);
    CloseHandle(first.hProcess);
    CloseHandle(first.hThread);
    EXPECT_TRUE(BecomeOnlyInstance(Home()).Only);
    EXPECT_FALSE(AskedToFront()); // what was asked of the killed one has gone with it
}

} // namespace
} // namespace kv

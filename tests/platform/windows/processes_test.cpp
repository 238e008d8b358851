// Real programs on Windows: how they are found, what they are given, how they ended. The program that is
// started is this one.
#include "platform/processes.h"

#include <chrono>
#include <thread>

#include <windows.h>
// That header renames a function of ours.
#undef ReplaceFile

#include "platform/files.h"
#include "platform/instance.h"
#include "platform/scratch_folder.h"
#include "platform/windows/second_process.h"

namespace kv {

namespace test {

std::string SecondProcess()
{
    SetHostVariable("GTEST_TOTAL_SHARDS", "1"); // it is no part of a run
    SetHostVariable("GTEST_SHARD_INDEX", "0");
    return '"' + ExeName() +
           "\" --gtest_filter=SecondProcess.DISABLED_DoesItsTask --gtest_also_run_disabled_tests";
}

} // namespace test

namespace {

// Runs in the second process alone.
TEST(SecondProcess, DISABLED_DoesItsTask)
{
    const std::string task = Environment(test::TaskVariable);
    const std::string word = task.substr(0, task.find(' '));
    const std::string rest = task.substr(std::min(task.find(' '), task.size() - 1) + 1);
    if (word == "exit")
        ExitProcess(static_cast<UINT>(std::stoi(rest)));
    if (word == "second") {
        const InstanceAnswer answer = BecomeOnlyInstance(rest);
        if (answer.SameHere)
            AskToFront(rest);
        ExitProcess(answer.Only ? 1 : 0);
    }
    if (word == "hold") {
        const bool only = BecomeOnlyInstance(rest).Only;
        static_cast<void>(ReplaceFile(Environment(test::SignVariable), only ? "y" : "n"));
    }
    Sleep(60'000);
    ExitProcess(99);
}

class WindowsProcesses : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        Processes = SystemProcesses();
    }
    void TearDown() override
    {
        Processes = {};
        ScratchFolder::TearDown();
    }
    static Long EndOf(Long handle)
    {
        for (int i = 0; i < 3000 && ProcessExitCode(handle) == StillActive; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return ProcessExitCode(handle);
    }
    Long StartTask(const std::string& task)
    {
        SetVariable(test::TaskVariable, task);
        return StartLine(test::SecondProcess());
    }
};

TEST_F(WindowsProcesses, TheExitCodeIsToldAsOftenAsAsked)
{
    const Long handle = StartTask("exit 3");
    ASSERT_GT(handle, 0);
    EXPECT_EQ(EndOf(handle), 3);
    EXPECT_EQ(ProcessExitCode(handle), 3);
    ForgetProcess(handle);
    EXPECT_EQ(ProcessExitCode(handle), 0); // nobody waits for what is forgotten
}

TEST_F(WindowsProcesses, AProcessIsStillActiveWhileItRuns)
{
    const Long first = StartTask("wait");
    ASSERT_GT(first, 0);
    const Long second = StartTask("exit 4");
    ASSERT_GT(second, 0);
    EXPECT_NE(first, second);
    EXPECT_EQ(EndOf(second), 4);
    EXPECT_EQ(ProcessExitCode(first), StillActive);
    ForgetProcess(first);
    ForgetProcess(second);
}

TEST_F(WindowsProcesses, AProgramThatIsNotThereDoesNotStart)
{
    PutFile("notes.txt", "text");
    EXPECT_EQ(StartLine("no-such-program-of-this-name S N"), 0);
    EXPECT_EQ(StartLine(PathOf("PanEdit.exe")), 0);
    EXPECT_EQ(StartLine(PathOf("notes.txt")), 0);
    EXPECT_EQ(StartLine("Y:\\CNC90\\CNC90.EXE"), 0);
    EXPECT_EQ(StartLine(""), 0);
    EXPECT_EQ(StartLine("   "), 0);
}

TEST_F(WindowsProcesses, ABatchFileIsStartedWithItsArguments)
{
    PutFile("SETCNC.BAT", "@exit %2\r\n");
    const Long handle = StartLine(PathOf("SETCNC.BAT") + " S 7");
    ASSERT_GT(handle, 0);
    EXPECT_EQ(EndOf(handle), 7);
    ForgetProcess(handle);
}

TEST_F(WindowsProcesses, AnUnknownHandleHasEnded)
{
    EXPECT_EQ(ProcessExitCode(123456), 0);
    ForgetProcess(123456);
}

} // namespace
} // namespace kv

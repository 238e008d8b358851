// Real programs: how a command line is taken apart, what starts and what does not, how a program ended.
#include "platform/processes.h"

#include <chrono>
#include <csignal>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include "platform/scratch_folder.h"

namespace kv {
namespace {

class RealProcesses : public ScratchFolder {
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

    // Makes a script in the folder that people may run.
    void PutScript(const std::string& name, const std::string& lines) const
    {
        PutFile(name, "#!/bin/sh\n" + lines);
        std::filesystem::permissions(Folder / name, std::filesystem::perms::owner_all);
    }
    // Waits for the end, up to ten seconds.
    static Long EndOf(Long handle)
    {
        for (int i = 0; i < 1000 && ProcessExitCode(handle) == StillActive; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return ProcessExitCode(handle);
    }
    // Runs the command and forgets it.
    static Long Ended(const std::string& commandLine)
    {
        const Long handle = StartLine(commandLine);
        EXPECT_GT(handle, 0) << commandLine;
        const Long code = EndOf(handle);
        ForgetProcess(handle);
        return code;
    }
};

TEST_F(RealProcesses, TheExitCodeIsToldAsOftenAsAsked)
{
    const Long handle = StartLine("sh -c \"exit 3\"");
    ASSERT_GT(handle, 0);
    EXPECT_EQ(EndOf(handle), 3);
    EXPECT_EQ(ProcessExitCode(handle), 3);
    ForgetProcess(handle);
    EXPECT_EQ(ProcessExitCode(handle), 0); // nobody waits for what is forgotten
}

TEST_F(RealProcesses, AProcessIsStillActiveWhileItRuns)
{
    const std::string go = (Folder / "go").string();
    const Long waiting = StartLine("sh -c \"until [ -e '" + go + "' ]; do sleep 0.02; done; exit 4\"");
    ASSERT_GT(waiting, 0);
    EXPECT_EQ(ProcessExitCode(waiting), StillActive);
    EXPECT_EQ(ProcessExitCode(waiting), StillActive);
    PutFile("go", "");
    EXPECT_EQ(EndOf(waiting), 4);
    ForgetProcess(waiting);
}

TEST_F(RealProcesses, AProgramThatIsNotThereDoesNotStart)
{
    EXPECT_EQ(StartLine("no-such-program-of-this-name S N"), 0);
    EXPECT_EQ(StartLine(PathOf("PanEdit.exe")), 0);
    EXPECT_EQ(StartLine("/no/such/program"), 0);
    EXPECT_EQ(StartLine(""), 0);
    EXPECT_EQ(StartLine("   "), 0);
    EXPECT_EQ(StartLine("\"\""), 0);
}

TEST_F(RealProcesses, WhatMayNotBeRunDoesNotStart)
{
    PutFile("notes.txt", "text");
    EXPECT_EQ(StartLine(PathOf("notes.txt")), 0);
    EXPECT_EQ(StartLine(PathOf("")), 0); // a folder
}

TEST_F(RealProcesses, DoubleQuotesGroupTheWordsOfTheCommandLine)
{
    PutScript("show",
              "for word in \"$@\"; do echo \"<$word>\"; done > '" + (Folder / "words").string() + "'\n");
    EXPECT_EQ(Ended("\"" + PathOf("show") + "\"  one \"two words\" a\"b c\"d \"\" $HOME * \ttab"), 0);
    EXPECT_EQ(FileText("words"), "<one>\n<two words>\n<ab cd>\n<>\n<$HOME>\n<*>\n<tab>\n");
}

TEST_F(RealProcesses, AWordOfACommandArrivesAsItStands)
{
    PutScript("show",
              "for word in \"$@\"; do echo \"<$word>\"; done > '" + (Folder / "words").string() + "'\n");
    const Long handle = StartProcess({PathOf("show"), "a \" b", "", "$(c) 'd'", "\\"});
    ASSERT_GT(handle, 0);
    EXPECT_EQ(EndOf(handle), 0);
    ForgetProcess(handle);
    EXPECT_EQ(FileText("words"), "<a \" b>\n<>\n<$(c) 'd'>\n<\\>\n");
}

TEST_F(RealProcesses, AnOpenQuoteReachesToTheEnd)
{
    PutScript("show", "echo \"$#:$1\" > '" + (Folder / "words").string() + "'\n");
    EXPECT_EQ(Ended(PathOf("show") + " \"one two"), 0);
    EXPECT_EQ(FileText("words"), "1:one two\n");
}

TEST_F(RealProcesses, TheProgramsOwnPathIsABackslashPathAndTheOthersStandAsTheyAre)
{
    std::filesystem::create_directories(Folder / "Evol" / "Bin");
    PutScript("Evol/Bin/PanEdit", "echo \"$1\" > '" + (Folder / "words").string() + "'\n");
    EXPECT_EQ(Ended(PathOf("evol\\bin\\PANEDIT") + " C:\\PROGRAMS\\DOOR.CNC"), 0);
    EXPECT_EQ(FileText("words"), "C:\\PROGRAMS\\DOOR.CNC\n");
}

TEST_F(RealProcesses, AProgramOfADriveIsFoundThere)
{
    std::filesystem::create_directories(Folder / "c" / "CNC90");
    PutScript("c/CNC90/SETCNC.BAT", "exit 5\n");
    EXPECT_EQ(StartLine("C:\\CNC90\\SETCNC.BAT S N"), 0);
    SetVariable("KORVANTI_DRIVES", Folder.string());
    EXPECT_EQ(Ended("C:\\CNC90\\SETCNC.BAT S N"), 5);
    EXPECT_EQ(StartLine("D:\\CNC90\\SETCNC.BAT S N"), 0);
}

TEST_F(RealProcesses, WordsReachTheProgramInTheHostsEncoding)
{
    PutScript("show", "printf %s \"$1\" > '" + (Folder / "words").string() + "'\n");
    EXPECT_EQ(Ended(PathOf("show") + " T\xFCr"), 0);
    EXPECT_EQ(FileText("words"), "T\xC3\xBCr");
}

TEST_F(RealProcesses, TheEnvironmentIsInherited)
{
    SetVariable("KV_TEST_COLOUR", "blue");
    EXPECT_EQ(Ended("sh -c \"test $KV_TEST_COLOUR = blue && exit 6\""), 6);
}

TEST_F(RealProcesses, AProcessThatASignalEndedHasEnded)
{
    EXPECT_EQ(Ended("sh -c \"kill -9 $$\""), 137); // 128 and the signal
}

TEST_F(RealProcesses, HandlesAreNotUsedTwice)
{
    const Long first = StartLine("true");
    const Long second = StartLine("sh -c \"exit 2\"");
    ASSERT_GT(first, 0);
    ASSERT_GT(second, 0);
    EXPECT_NE(first, second);
    EXPECT_EQ(EndOf(first), 0);
    EXPECT_EQ(EndOf(second), 2);
    ForgetProcess(first);
    ForgetProcess(second);
    const Long third = StartLine("true");
    EXPECT_NE(third, first);
    EndOf(third);
    ForgetProcess(third);
}

TEST_F(RealProcesses, AForgottenProcessRunsOnAndLeavesNoZombie)
{
    const std::string go = (Folder / "go").string(), id = (Folder / "id").string();
    const Long handle =
        StartLine("sh -c \"echo $$ > '" + id + "'; until [ -e '" + go + "' ]; do sleep 0.02; done\"");
    ASSERT_GT(handle, 0);
    for (int i = 0; i < 500 && FileText("id").find('\n') == std::string::npos; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    const pid_t process = static_cast<pid_t>(std::stol(FileText("id")));
    ForgetProcess(handle);
    EXPECT_EQ(::kill(process, 0), 0); // it runs
    PutFile("go", "");
    bool gone = false;
    for (int i = 0; i < 500 && !gone; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        ProcessExitCode(handle); // any later call reaps it
        gone = ::kill(process, 0) != 0;
    }
    EXPECT_TRUE(gone);
}

TEST_F(RealProcesses, ChildrenOfOthersAreLeftToThem)
{
    const pid_t other = ::fork();
    if (other == 0)
        ::_exit(9);
    EXPECT_EQ(Ended("true"), 0);
    int status = 0;
    EXPECT_EQ(::waitpid(other, &status, 0), other);
    EXPECT_EQ(WEXITSTATUS(status), 9);
}

TEST_F(RealProcesses, AnUnknownHandleHasEnded)
{
    EXPECT_EQ(ProcessExitCode(123456), 0);
    ForgetProcess(123456);
}

} // namespace
} // namespace kv

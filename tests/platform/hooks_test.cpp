// The hooks of the front end: silent and safe without one, passed on with one.
#include <gtest/gtest.h>

#include <string>

#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/keys.h"
#include "platform/processes.h"

namespace kv {
namespace {

std::string Seen; // what the hooks of a test were given

class Hooks : public testing::Test {
  protected:
    void SetUp() override { Reset(); }
    void TearDown() override { Reset(); }

  private:
    static void Reset()
    {
        Dialogs = {};
        Events = {};
        Keys = {};
        Processes = {};
        Seen.clear();
    }
};

TEST_F(Hooks, WithoutAFrontEndAQuestionIsAnsweredNo)
{
    EXPECT_FALSE(AskYesNo("Delete?", "Korvanti"));
}

TEST_F(Hooks, WithoutAFrontEndNothingIsShownSentOrStarted)
{
    ShowBox("text", "title", BoxIcon::Error);
    SendKeystrokes("%F", true);
    DoEvents();
    ForgetProcess(1);
    EXPECT_EQ(FocusedTitleLength(), 0);
    EXPECT_EQ(StartLine("anything"), 0);
    EXPECT_NE(ProcessExitCode(1), StillActive); // else its caller would wait for ever
}

TEST_F(Hooks, BoxesAndQuestionsReachTheFrontEnd)
{
    Dialogs.Box = [](std::string_view text, std::string_view title, BoxIcon icon) {
        Seen = std::string(title) + "|" + std::string(text) + (icon == BoxIcon::Warning ? "|warning" : "");
    };
    Dialogs.Ask = [](std::string_view text, std::string_view, std::string_view) { return text == "Sure?"; };
    ShowBox("text", "title", BoxIcon::Warning);
    EXPECT_EQ(Seen, "title|text|warning");
    EXPECT_TRUE(AskYesNo("Sure?", "title"));
    EXPECT_FALSE(AskYesNo("Other?", "title"));
}

// As the programs of that system take their line apart: backslashes count double in front of a quote.
TEST(CommandLines, OnWindowsEachWordIsQuotedSoThatItArrives)
{
    EXPECT_EQ(WindowsCommandLine({"C:\\A.EXE", "X"}), "C:\\A.EXE X");
    EXPECT_EQ(WindowsCommandLine({"C:\\My Tools\\A.EXE", "C:\\My Prg\\"}),
              "\"C:\\My Tools\\A.EXE\" \"C:\\My Prg\\\\\"");
    EXPECT_EQ(WindowsCommandLine({"A", "B\" C", "D\\\" E", ""}), "A \"B\\\" C\" \"D\\\\\\\" E\" \"\"");
    EXPECT_EQ(WindowsCommandLine({}), "");
}

TEST(CommandLines, ABatchFileIsGivenNothingThatItsInterpreterWouldObey)
{
    EXPECT_EQ(WindowsCommandLine({"C:\\CNC90\\SETCNC.BAT", "S", "N"}), "C:\\CNC90\\SETCNC.BAT S N");
    EXPECT_EQ(WindowsCommandLine({"show.cmd", "A&B"}), "show.cmd \"A&B\"");
    EXPECT_EQ(WindowsCommandLine({"show.cmd", "A\"&del B"}), "");
    EXPECT_EQ(WindowsCommandLine({"show.bat", "%PATH%"}), "");
}

TEST(CommandLines, WhatAPersonTypesIsPartedByBlanksAndGroupedByQuotes)
{
    EXPECT_EQ(SplitCommand(" view  \"a b\" c\"d e\"f \"\" "), (ProgramCall{"view", "a b", "cd ef", ""}));
    EXPECT_EQ(CommandText({"view", "a b", ""}), "view \"a b\" \"\"");
    EXPECT_TRUE(SplitCommand("  ").empty());
}

TEST_F(Hooks, ProcessesAndKeysReachTheFrontEnd)
{
    Processes.Start = [](const ProgramCall& command) -> Long {
        return command == ProgramCall{"edit"} ? 7 : 0;
    };
    Processes.ExitCode = [](Long handle) -> Long { return handle == 7 ? StillActive : 3; };
    Processes.Forget = [](Long handle) { Seen += std::to_string(handle); };
    Keys.Send = [](std::string_view keys, bool wait) { Seen += wait ? keys : ""; };
    Keys.FocusedTitleLength = []() -> Long { return 12; };
    Events.Pump = [] { Seen += "pump"; };
    EXPECT_EQ(StartLine("edit"), 7);
    EXPECT_EQ(ProcessExitCode(7), StillActive);
    EXPECT_EQ(ProcessExitCode(8), 3);
    EXPECT_EQ(FocusedTitleLength(), 12);
    ForgetProcess(7);
    SendKeystrokes("%F", true);
    DoEvents();
    EXPECT_EQ(Seen, "7%Fpump");
}

} // namespace
} // namespace kv

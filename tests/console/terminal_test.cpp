// `korvanti` where a person watches: colours, what a drawing's text may do to a terminal, and an output that
// takes nothing more.
#include <pty.h>

#include "console/console_run.h"

using namespace console_test;

namespace {

class Terminal : public Console {
  protected:
    // A bare root without /dev/pts has no terminals to give.
    static bool HasTerminals()
    {
        const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
        const bool usable = terminal >= 0 && ::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0;
        if (terminal >= 0)
            ::close(terminal);
        return usable;
    }

    // With a terminal for all streams; what was shown is in Output.
    Ended RunOnTerminal(const Words& words, const Words& environment) const
    {
        int terminal = -1;
        const int child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0)
            Become(Folder, Call(words), environment);
        Ended ended;
        char piece[4096];
        ssize_t got = 0;
        while ((got = ::read(terminal, piece, sizeof piece)) > 0)
            ended.Output.append(piece, static_cast<std::size_t>(got));
        ended.Status = StatusOf(child);
        ::close(terminal);
        return ended;
    }
};

TEST_F(Terminal, MarkColoursOnATerminal)
{
    if (!HasTerminals())
        GTEST_SKIP() << "this system gives no pseudo-terminal";
    const std::string dashes =
        "---------------------------------------***------------------------------------";
    const Ended full = RunOnTerminal({"convert", "door.dxf"}, {"TERM=xterm", "COLORTERM=truecolor"});
    EXPECT_EQ(full.Status, 0);
    EXPECT_TRUE(Holds(full.Output, "\x1b[38;2;255;0;100m" + dashes + "\x1b[0m")) << full.Output;
    const Ended sixteen = RunOnTerminal({"convert", "door.dxf"}, {"TERM=xterm"});
    EXPECT_TRUE(Holds(sixteen.Output, "\x1b[35m" + dashes + "\x1b[0m")) << sixteen.Output;
}

TEST_F(Terminal, NoColoursOnATerminalThatWantsNone)
{
    if (!HasTerminals())
        GTEST_SKIP() << "this system gives no pseudo-terminal";
    for (const char* const wish : {"NO_COLOR=1", "TERM=dumb"}) {
        const Ended ended = RunOnTerminal({"convert", "door.dxf"}, {"TERM=xterm", wish});
        EXPECT_EQ(ended.Status, 0);
        EXPECT_TRUE(Holds(ended.Output, "***")) << wish;
        EXPECT_FALSE(Holds(ended.Output, "\x1b")) << wish;
    }
}

TEST_F(Terminal, ADrawingsTextCannotSteerTheTerminal)
{
    if (!HasTerminals())
        GTEST_SKIP() << "this system gives no pseudo-terminal";
    Put(Folder / "door.dxf", BoredPanel("0\nTEXT\n8\nDESCR\n10\n0\n20\n0\n1\nA\x1b[2JB\n"));
    const Ended ended = RunOnTerminal({"convert", "door.dxf"}, {"TERM=xterm"});
    EXPECT_FALSE(Holds(ended.Output, "\x1b[2J")) << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "A?[2JB")) << ended.Output;
}

TEST_F(Terminal, AListThatTakesLongSaysHowFarItIs)
{
    if (!HasTerminals())
        GTEST_SKIP() << "this system gives no pseudo-terminal";
    Words list = {"convert"};
    for (int i = 0; i < 4000; ++i) // more than a second on any machine
        list.push_back("door.dxf");
    const Ended ended = RunOnTerminal(list, {"TERM=xterm"});
    EXPECT_EQ(ended.Status, 0);
    const std::size_t shown = ended.Output.find(" of 4,000, about ");
    ASSERT_NE(shown, std::string::npos);
    EXPECT_TRUE(Holds(ended.Output.substr(shown, 40), " left")) << ended.Output.substr(shown, 40);
    EXPECT_FALSE(Holds(ended.Output, "Reading Info")); // a list has no meters
}

TEST_F(Terminal, AShortListShowsNoProgress)
{
    if (!HasTerminals())
        GTEST_SKIP() << "this system gives no pseudo-terminal";
    const Ended ended = RunOnTerminal({"convert", "door.dxf", "door.dxf"}, {"TERM=xterm"});
    EXPECT_FALSE(Holds(ended.Output, " of 2")) << ended.Output;
}

TEST_F(Terminal, OutputThatCannotBeWrittenIsNoSuccess)
{
    const int child = ::fork();
    if (child == 0) {
        ::dup2(::open("/dev/full", O_WRONLY), 1);
        ::dup2(::open((Folder / "stderr").c_str(), O_WRONLY | O_CREAT, 0600), 2);
        Become(Folder, Call({"convert", "door.dxf"}), {});
    }
    EXPECT_EQ(StatusOf(child), 1);
    EXPECT_TRUE(Holds(Contents(Folder / "stderr"), "standard output")) << Contents(Folder / "stderr");
}

} // namespace

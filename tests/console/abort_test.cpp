// Ctrl-C as the abort button: the first stops the list, the second ends the program at once.
#include <csignal>
#include <thread>

#include <sys/ioctl.h>

#include "console/console_run.h"

using namespace console_test;

namespace {

class Abort : public Console {
  protected:
    // Starts the program on many drawings with its standard output in a pipe that nobody empties.
    int StartLongList(std::size_t drawings = 2000)
    {
        Words words(drawings, "door.dxf");
        words.insert(words.begin(), "convert");
        EXPECT_EQ(::pipe2(Pipe, O_CLOEXEC), 0);
        ::fcntl(Pipe[1], F_SETPIPE_SZ, 4096);
        const int child = ::fork();
        if (child == 0) {
            ::dup2(Pipe[1], 1);
            ::dup2(::open((Folder / "stderr").c_str(), O_WRONLY | O_CREAT, 0600), 2);
            Become(Folder, Call(words), {});
        }
        ::close(Pipe[1]);
        WaitUntilFull();
        return child;
    }
    // The program stands still once the pipe takes no more.
    void WaitUntilFull() const
    {
        int held = 0, before = -1;
        while (held == 0 || held != before) {
            before = held;
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            ::ioctl(Pipe[0], FIONREAD, &held);
        }
    }
    std::string Drain() const
    {
        std::string text;
        char piece[4096];
        ssize_t got = 0;
        while ((got = ::read(Pipe[0], piece, sizeof piece)) > 0)
            text.append(piece, static_cast<std::size_t>(got));
        return text;
    }

    int Pipe[2] = {-1, -1};
};

TEST_F(Abort, TheFirstStopsTheListWithStatusOne)
{
    const int child = StartLongList();
    ::kill(child, SIGINT);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const std::string report = Drain();
    EXPECT_EQ(StatusOf(child), 1);
    EXPECT_TRUE(Holds(Contents(Folder / "stderr"), "korvanti: stopped before "))
        << Contents(Folder / "stderr");
    EXPECT_EQ(report.substr(0, 5), "door\n"); // what was done before is told
}

TEST_F(Abort, TheJsonReportCountsWhatWasNotBegun)
{
    constexpr std::size_t drawings = 30000; // more than in the two seconds until the first is placed
    const int child = ::fork();
    if (child == 0) {
        Words words(drawings, "door.dxf");
        words.insert(words.begin(), {"convert", "--report", "json"});
        ::dup2(::open((Folder / "stdout").c_str(), O_WRONLY | O_CREAT, 0600), 1);
        ::dup2(::open((Folder / "stderr").c_str(), O_WRONLY | O_CREAT, 0600), 2);
        Become(Folder, Call(words), {});
    }
    while (!fs::exists(Folder / "programs/SRG/D/OOR")) // the first one is placed
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    ::kill(child, SIGINT);
    EXPECT_EQ(StatusOf(child), 1);
    const nlohmann::json document = nlohmann::json::parse(Contents(Folder / "stdout"));
    ASSERT_TRUE(document.contains("notBegun"));
    EXPECT_EQ(document["drawings"].size() + document["notBegun"].get<std::size_t>(), drawings);
}

TEST_F(Abort, ATerminationRequestAndAClosedTerminalDoSoToo)
{
    for (const int signal : {SIGTERM, SIGHUP}) {
        const int child = StartLongList();
        ::kill(child, signal);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        Drain();
        EXPECT_EQ(StatusOf(child), 1) << signal;
        EXPECT_TRUE(Holds(Contents(Folder / "stderr"), "korvanti: stopped before ")) << signal;
        ::close(Pipe[0]);
        fs::remove(Folder / "stderr");
    }
}

TEST_F(Abort, OneThatWasStartedToOutliveItsTerminalDoesSo)
{
    struct sigaction ignored {};
    ignored.sa_handler = SIG_IGN;
    struct sigaction before {};
    ::sigaction(SIGHUP, &ignored, &before);
    const int child = StartLongList(200);
    ::sigaction(SIGHUP, &before, nullptr);
    ::kill(child, SIGHUP);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    Drain();
    EXPECT_EQ(StatusOf(child), 0);
}

TEST_F(Abort, TheSecondEndsTheProgram)
{
    const int child = StartLongList();
    ::kill(child, SIGINT);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, WNOHANG), 0); // held by the full pipe
    ::kill(child, SIGINT);
    EXPECT_EQ(StatusOf(child), 128 + SIGINT);
}

} // namespace

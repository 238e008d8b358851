// Processes of `--jobs` that are killed, cannot be started or cannot write; a list that is stopped; stages
// that are cut off. Nothing is lost, nothing is left behind, and the list goes on.
#include "console/spread_list.h"

#include <csignal>
#include <sstream>
#include <thread>

#include <sys/resource.h>

namespace console_test {
namespace {

class JobsFaults : public SpreadList {
  protected:
    static constexpr std::size_t RecordSize = 82, NameWidth = 12;

    // In the background; `prepare` runs in the new process.
    template <typename Prepare> int Start(const Words& words, const Prepare& prepare) const
    {
        const Words environment = Environment();
        fs::remove(Folder / "stdout"); // of an earlier call
        fs::remove(Folder / "stderr");
        const int child = ::fork();
        if (child == 0) {
            ::dup2(::open((Folder / "stdout").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
            ::dup2(::open((Folder / "stderr").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
            prepare();
            Become(Folder, Call(words), environment);
        }
        return child;
    }
    int Start(const Words& words) const
    {
        return Start(words, [] {});
    }
    Ended EndOf(int child) const
    {
        const int status = StatusOf(child);
        return {status, Contents(Folder / "stdout"), Contents(Folder / "stderr")};
    }
    static std::vector<int> ChildrenOf(int process)
    {
        const std::string number = std::to_string(process);
        std::istringstream text(Contents("/proc/" + number + "/task/" + number + "/children"));
        std::vector<int> children;
        for (int child = 0; text >> child;)
            children.push_back(child);
        return children;
    }
    static bool Runs(int process)
    {
        return fs::exists("/proc/" + std::to_string(process)) &&
               !Holds(Contents("/proc/" + std::to_string(process) + "/stat"), ") Z ");
    }
    static void Sleep(int milliseconds)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
    static bool WaitFor(const std::function<bool()>& condition)
    {
        for (int i = 0; i < 3000; ++i, Sleep(5))
            if (condition())
                return true;
        return false;
    }
    std::vector<int> WorkersOf(int process, std::size_t count) const
    {
        std::vector<int> workers;
        WaitFor([&] { return (workers = ChildrenOf(process)).size() >= count; });
        return workers;
    }
    // Panels of different names, each with one bore.
    Words Panels(int count, const std::string& more = "") const
    {
        Words words;
        for (int i = 0; i < count; ++i) {
            words.push_back("P" + Digits(i) + ".dxf");
            Put(Folder / words.back(), WithMore(RoutedPanel(""), more));
        }
        return words;
    }
    // Every program has its record and every record its program; gives their number.
    std::size_t ExpectWholeInstallation() const
    {
        const fs::path programs = Folder / "CNC90/SORG";
        const std::string index = Contents(programs / "INDICE.PRG");
        EXPECT_EQ(index.size() % RecordSize, 0U);
        std::size_t records = 0, files = 0;
        for (std::size_t at = 0; at + RecordSize <= index.size(); at += RecordSize, ++records) {
            const std::string name = index.substr(at, index.find(' ', at) - at);
            EXPECT_TRUE(fs::exists(programs / "SRG" / name.substr(0, 1) / name.substr(1))) << name;
        }
        if (fs::exists(programs / "SRG/P"))
            for (const auto& entry : fs::directory_iterator(programs / "SRG/P")) {
                EXPECT_FALSE(entry.path().filename().string().ends_with(".tmp")) << entry.path();
                ++files;
            }
        EXPECT_EQ(files, records);
        return records;
    }
};

TEST_F(JobsFaults, AKilledProcessLosesNothing)
{
    const Words names = MakeDrawings(kv::test::Rounds(150));
    const CallResult plain = ConvertAlone(names, {});
    ResetInstallation();
    const int list = Start(Joined({"convert", "--jobs", "2"}, names));
    const std::vector<int> workers = WorkersOf(list, 2);
    ASSERT_EQ(workers.size(), 2U);
    ::kill(workers[0], SIGKILL);
    const Ended ended = EndOf(list);
    CallResult made = Result(ended);
    const std::string told = "korvanti: a process that converts drawings has ended (signal 9); what it had "
                             "begun is converted once more\n";
    EXPECT_TRUE(Holds(made.Errors, told)) << made.Errors;
    made.Errors = plain.Errors;
    ExpectSame(made, plain, "killed");
    ExpectTidy();
}

TEST_F(JobsFaults, ADrawingWhoseProcessAlwaysEndsFailsAlone)
{
    const Words names = Panels(40);
    const int list = Start(Joined({"convert", "--jobs", "2"}, names));
    std::size_t killed = 0;
    while (Runs(list)) {
        for (const int worker : ChildrenOf(list))
            killed += ::kill(worker, SIGKILL) == 0 ? 1 : 0;
        Sleep(3);
    }
    const Ended ended = EndOf(list);
    EXPECT_GT(killed, 2U);
    const std::size_t programs = ExpectWholeInstallation();
    std::size_t failed = 0;
    for (const std::string& name : names)
        failed += Holds(ended.Errors, "korvanti: " + name + ": failed\n") ? 1 : 0;
    EXPECT_EQ(programs + failed, names.size()) << ended.Errors;
    EXPECT_EQ(ended.Status, failed > 0 ? 1 : 0);
    EXPECT_EQ(Holds(ended.Output, ": the process that converted it has ended twice (signal 9)"), failed > 0);
    ExpectTidy();
}

TEST_F(JobsFaults, WithoutOtherProcessesThisOneConverts)
{
    const Words names = MakeDrawings(20);
    const CallResult plain = ConvertAlone(names, {});
    ResetInstallation();
    Words environment = Environment();
    environment[1] = "TMPDIR=" + (Folder / "nowhere").string();
    CallResult made = Result(Run(Joined({"convert", "--jobs", "2"}, names), environment));
    const std::string told = "korvanti: no other process could be started; this one converts the drawings\n";
    EXPECT_EQ(made.Errors, told + plain.Errors);
    made.Errors = plain.Errors;
    ExpectSame(made, plain, "no folder");

    // A program that was deleted after its start cannot be started again.
    ResetInstallation();
    Words call = {"/bin/sh", "-c", "exec 3<k; rm k; exec /proc/self/fd/3 \"$@\"", "sh"};
    fs::copy_file(KORVANTI_CONSOLE, Folder / "k");
    const Words words = Call(Joined({"convert", "--jobs", "2"}, names));
    call.insert(call.end(), words.begin() + 1, words.end());
    made = Result(RunCall(call, Environment()));
    EXPECT_EQ(made.Errors, told + plain.Errors);
    made.Errors = plain.Errors;
    ExpectSame(made, plain, "no program");
    ExpectTidy();
}

// With the signal ignored a write beyond the limit fails, as on a full disk.
void LimitFiles(rlim_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {bytes, bytes};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

TEST_F(JobsFaults, WithoutRoomForResultsThisOneConverts)
{
    const Words names = Panels(32);
    // In portions, each of which has room; what a process makes of the drawing has not.
    std::string routes;
    for (int i = 0; i < 900; ++i)
        routes += kv::test::Line("ROUTE Z5T71", 20 + i % 30 * 16, 20 + i / 30 * 11, 30 + i % 30 * 16,
                                 25 + i / 30 * 11);
    Put(Folder / "P007.dxf", WithMore(RoutedPanel(""), routes));
    const CallResult plain = ConvertAlone(names, {});
    ASSERT_EQ(plain.Status, 0);
    ASSERT_TRUE(Holds(plain.Output, "PORTION2"));
    ResetInstallation();
    constexpr rlim_t room = 16000;
    std::uintmax_t largest = 0;
    for (const auto& [name, contents] : plain.Files)
        largest = std::max<std::uintmax_t>(largest, contents.size());
    ASSERT_LT(largest, room / 2);
    const int list = Start(Joined({"convert", "--jobs", "2"}, names), [] { LimitFiles(room); });
    ExpectSame(Result(EndOf(list)), plain, "no room");
    ExpectTidy();
}

TEST_F(JobsFaults, AFolderOfTheProcessesThatIsGoneStopsNothing)
{
    const Words names = MakeDrawings(kv::test::Rounds(120));
    const CallResult plain = ConvertAlone(names, {});
    ResetInstallation();
    const int list = Start(Joined({"convert", "--jobs", "2"}, names));
    ASSERT_EQ(WorkersOf(list, 2).size(), 2U);
    for (const auto& entry : fs::directory_iterator(Folder / "temporary"))
        while (fs::exists(entry.path()) && Runs(list)) {
            std::error_code error;
            fs::remove_all(entry.path(), error);
        }
    CallResult made = Result(EndOf(list));
    made.Errors = plain.Errors; // how far the processes had come is chance
    ExpectSame(made, plain, "gone");
}

TEST_F(JobsFaults, AStoppedListLeavesNoProcess)
{
    const Words names = Panels(600);
    for (const int signal : {SIGTERM, SIGINT}) {
        ResetInstallation();
        const int list = Start(Joined({"convert", "--jobs", "2"}, names));
        const std::vector<int> workers = WorkersOf(list, 2);
        ASSERT_EQ(workers.size(), 2U);
        WaitFor([&] { return !Contents(Folder / "stdout").empty(); });
        ::kill(list, signal);
        const Ended ended = EndOf(list);
        EXPECT_EQ(ended.Status, 1);
        EXPECT_TRUE(Holds(ended.Errors, "korvanti: stopped before ")) << ended.Errors;
        for (const int worker : workers)
            EXPECT_FALSE(Runs(worker));
        ExpectTidy();
        std::size_t told = 0;
        for (std::size_t at = 0; (at = ended.Output.find("CONVERSION COMPLETED", at)) != std::string::npos;
             ++at)
            ++told;
        EXPECT_EQ(ExpectWholeInstallation(), told);
        EXPECT_LT(told, names.size());
        EXPECT_TRUE(Holds(ended.Errors, "stopped before " + std::to_string(names.size() - told) + " more"))
            << told << ended.Errors;
    }
}

TEST_F(JobsFaults, ProcessesEndWithTheOneThatStartedThem)
{
    const int list = Start(Joined({"convert", "--jobs", "2"}, Panels(600)));
    const std::vector<int> workers = WorkersOf(list, 2);
    ASSERT_EQ(workers.size(), 2U);
    WaitFor([&] { return !Contents(Folder / "stdout").empty(); });
    ::kill(list, SIGKILL);
    EXPECT_EQ(StatusOf(list), 128 + SIGKILL);
    EXPECT_TRUE(WaitFor([&] { return !Runs(workers[0]) && !Runs(workers[1]); }));
    EXPECT_TRUE(WaitFor([&] { return fs::is_empty(Folder / "temporary"); }));
}

TEST_F(JobsFaults, AStageThatDoesNotFitIsNotMade)
{
    const Words names = Panels(4);
    for (const Words& options : {Words{}, Words{"--jobs", "2"}}) {
        const int call = Start(Joined(Joined({"convert", "--stage", "stages/s"}, options), names),
                               [] { LimitFiles(1500); });
        const Ended ended = EndOf(call);
        EXPECT_EQ(ended.Status, 1);
        EXPECT_TRUE(Holds(ended.Errors, "korvanti: stages/s: File too large; no stage was made\n"))
            << ended.Errors;
        EXPECT_TRUE(fs::is_empty(Folder / "stages"));
        ExpectTidy();
    }
}

TEST_F(JobsFaults, AStageThatIsCutOffIsNotThere)
{
    const Words names = Panels(600);
    for (const int signal : {SIGTERM, SIGKILL}) {
        const int call = Start(Joined({"convert", "--stage", "stages/s"}, names));
        WaitFor([&] { return fs::exists(Folder / "stages") && !fs::is_empty(Folder / "stages"); });
        ::kill(call, signal);
        const Ended ended = EndOf(call);
        EXPECT_EQ(ended.Status, signal == SIGTERM ? 1 : 128 + SIGKILL);
        EXPECT_FALSE(fs::exists(Folder / "stages/s"));
        EXPECT_EQ(fs::is_empty(Folder / "stages"), signal == SIGTERM);
    }
    EXPECT_EQ(Run({"convert", "--stage", "stages/t", "P000.dxf"}, Environment()).Status, 0);
    std::size_t left = 0;
    for (const auto& entry : fs::directory_iterator(Folder / "stages")) {
        EXPECT_EQ(entry.path().filename(), "t") << "what the killed one left goes with the next stage";
        ++left;
    }
    EXPECT_EQ(left, 1U);
}

TEST_F(JobsFaults, AStageWhoseFolderIsTakenAwayIsNotMade)
{
    const int call = Start(Joined({"convert", "--stage", "stages/s"}, Panels(600)));
    ASSERT_TRUE(WaitFor([&] { return fs::exists(Folder / "stages") && !fs::is_empty(Folder / "stages"); }));
    fs::remove_all(Folder / "stages");
    const Ended ended = EndOf(call);
    EXPECT_EQ(ended.Status, 1);
    EXPECT_TRUE(Holds(ended.Errors, "korvanti: stages/s: ")) << ended.Errors;
    EXPECT_TRUE(Holds(ended.Errors, "; no stage was made\n")) << ended.Errors;
    EXPECT_FALSE(fs::exists(Folder / "stages/s"));
}

TEST_F(JobsFaults, APlacingThatIsStoppedIsContinued)
{
    const Words names = Panels(300, Note("INFO", "POST INSTRUCTIONS") + Note("INFO", "PTS NAME=ROW"));
    const CallResult plain = ConvertAlone(names, {});
    ResetInstallation();
    ASSERT_EQ(Run(Joined({"convert", "--stage", "s"}, names), Environment()).Status, 0);
    const int call = Start({"place", "s"});
    WaitFor([&] { return !Contents(Folder / "stdout").empty(); });
    ::kill(call, SIGTERM);
    const Ended stopped = EndOf(call);
    EXPECT_EQ(stopped.Status, 1);
    ASSERT_TRUE(Holds(stopped.Errors, "korvanti: stopped before ")) << stopped.Errors;
    EXPECT_TRUE(fs::exists(Folder / "s/placed"));
    EXPECT_LT(ExpectWholeInstallation(), names.size());
    const Ended placed = Run({"place", "s"}, Environment());
    EXPECT_EQ(placed.Status, 0) << placed.Errors;
    EXPECT_TRUE(Holds(placed.Errors, " of 300 drawings were placed by an earlier call; the others follow"));
    CallResult both = Result(placed);
    both.Output = WithoutTimes(stopped.Output + placed.Output);
    both.Errors = plain.Errors;
    ExpectSame(both, plain, "continued");
}

} // namespace
} // namespace console_test

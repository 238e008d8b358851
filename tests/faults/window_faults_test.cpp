// The window program comes up and is asked to end, while one call about a file of its shop fails, the disk is
// full from a call on, or the process ends just before a call. Its settings are then those of an undisturbed
// life or the old ones, and in the report or on standard error a line names file and cause.
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <iostream>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include "faults/disturbed_shop.h"
#include "support/random_rounds.h"

namespace fault_test {
namespace {

constexpr int UsualTries = 8;
constexpr std::chrono::seconds LongestStart{3}; // until the stop, when no lock file says that it is up
constexpr std::chrono::milliseconds BetweenLooks{1};

// Folders of the desktop, which are not the shop's.
const char* const DesktopFolders[] = {"XDG_RUNTIME_DIR", "HOME", "XDG_CACHE_HOME"};

std::vector<int> ErrorsOfCall(const CountedCall& call)
{
    const std::string& name = call.Name;
    if (name == "flock" || name == "fcntl")
        return {ENOLCK};
    if (name == "write" || name == "pwrite" || name == "fsync" || name == "fdatasync" || name == "ftruncate")
        return {ENOSPC, EIO};
    if (name == "read" || name == "pread" || name == "readdir" || name == "close" || name == "fstat" ||
        name == "readlink")
        return {EIO};
    return call.Writing ? std::vector{ENOSPC, EACCES, EIO} : std::vector{EACCES, EIO};
}

class WindowFaults : public testing::Test {
  protected:
    void SetUp() override
    {
        Folder = fs::temp_directory_path() / ("kw" + std::to_string(::getpid()));
        fs::create_directories(Root());
        fs::create_directories(Folder / "desktop");
        Present = ListOfDrawings("cnc90", Root());
        Known.Before = Present.Before;
        PutDown(Known.Before, Root());
        Known.Before = TakeUp(Root());
        First = Live({}, true);
        ASSERT_EQ(First.Status, 0) << First.Said;
        ASSERT_GT(First.Calls.size(), 50U) << "the library did not see the program's calls";
        Known.Once = TakeUp(Root());
        ASSERT_NE(Known.Once.at(SettingsPlace), Known.Before.at(SettingsPlace)) << "nothing was stored";
        ASSERT_EQ(JudgeKept(Known, Known.Once), Findings{});
        ASSERT_EQ(StraysIn(Known, Known.Once), Findings{});
        Live({});
        ASSERT_EQ(JudgeDone(Known, TakeUp(Root())), Findings{}) << "a second life stores something else";
    }
    void TearDown() override
    {
        std::error_code ignored;
        fs::remove_all(Folder, ignored);
    }

    fs::path Root() const { return Folder / "r"; }
    fs::path LockFile() const { return Root() / "HOME/.kv-KORVANTI.lock"; }

    [[noreturn]] void BecomeWindow(const Disturbance& disturbance, bool lists) const
    {
        Words variables = VariablesOf(Present, Root(), disturbance);
        for (const char* const name : DesktopFolders)
            variables.push_back(name + ("=" + (Folder / "desktop").string()));
        variables.push_back("QT_QPA_PLATFORM=offscreen");
        variables.push_back("FAULT_HIT=" + (Folder / "hit").string());
        if (lists)
            variables.push_back("FAULT_LOG=" + (Folder / "log").string());
        BecomeDisturbed({KORVANTI_WINDOW_UNDER_TEST, "--home", (Root() / "HOME").string()}, variables,
                        Folder / "said");
    }

    // The stop comes as soon as the window's process holds the installation, and is obeyed when it is up.
    int EndOf(pid_t child) const
    {
        const auto start = std::chrono::steady_clock::now();
        bool asked = false;
        int status = 0;
        while (::waitpid(child, &status, WNOHANG) == 0) {
            const bool late = std::chrono::steady_clock::now() - start > LongestStart;
            if (!asked && (late || fs::exists(LockFile()))) {
                asked = true;
                ::kill(child, SIGTERM);
            }
            std::this_thread::sleep_for(BetweenLooks);
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    // From the start to the end of a window on the shop as it stands.
    Ran Live(const Disturbance& disturbance, bool lists = false) const
    {
        for (const char* const file : {"log", "hit", "said"})
            fs::remove(Folder / file);
        fs::remove(LockFile());
        const pid_t child = ::fork();
        if (child == 0)
            BecomeWindow(disturbance, lists);
        Ran ran;
        ran.Status = EndOf(child);
        ran.Said = FileBytes(Folder / "said");
        const std::vector<CountedCall> hit = CallsOf(FileBytes(Folder / "hit"));
        if (!hit.empty())
            ran.Hit = hit.front();
        if (lists)
            ran.Calls = CallsOf(FileBytes(Folder / "log"));
        return ran;
    }

    std::string PlaceOf(const CountedCall& call) const
    {
        const std::string place = fs::path(call.Path).lexically_relative(Root()).generic_string();
        const bool known = Known.Once.contains(place) || Known.Once.contains(place + "/");
        return known ? place : fs::path(place).parent_path().generic_string() + "/(own file)";
    }

    // Where a window stood on the screen is kept key by key for a person's comfort, and is no setting.
    static Findings OfTheShop(Findings findings)
    {
        std::erase_if(findings, [](const std::string& finding) {
            return finding.starts_with("CONFIG/") && finding.find("(own file)") == std::string::npos;
        });
        return findings;
    }

    void JudgeNextLife(FaultCount& count, const std::string& name) const
    {
        const Ran next = Live({});
        if (next.Status != 0)
            count.Found("after", name, "status " + std::to_string(next.Status));
        for (const std::string& finding : OfTheShop(JudgeDone(Known, TakeUp(Root()))))
            count.Found("after", name, finding);
    }

    void TryFault(FaultCount& count, const CountedCall& at, int error, bool lasting)
    {
        const std::string name = std::to_string(at.Number) + " " + at.Name + " " + ::strerrorname_np(error) +
                                 (lasting ? " lasting " : " ") + PlaceOf(at);
        if (FaultCount::PassedOver(name))
            return;
        PutDown(Known.Before, Root());
        const Ran ran = Live({at.Number, error, false, lasting});
        if (ran.Hit.Number == 0 || std::ranges::count(ErrorsOfCall(ran.Hit), error) == 0) {
            count.Missed(); // calls may differ a little from run to run
            return;
        }
        const int before = count.FindingCount();
        const Tree now = TakeUp(Root());
        // On a full disk any of the calls that fail may be the one that is named.
        const bool told =
            TellsCause(Known, ran.Said, lasting ? Root().string() : ran.Hit.Path, error, Root());
        if (ran.Status != 0)
            count.Found("ended", name, "status " + std::to_string(ran.Status));
        const Findings lost = OfTheShop(JudgeKept(Known, now));
        for (const std::string& finding : lost)
            count.Found("lost", name, finding);
        Findings undone = OfTheShop(JudgeDone(Known, now));
        std::erase_if(undone,
                      [](const std::string& finding) { return finding.ends_with("(own file): left over"); });
        if (lost.empty() && !told)
            for (const std::string& finding : undone)
                count.Found("silent", name, finding);
        JudgeNextLife(count, name);
        if (count.FindingCount() == before)
            undone.empty() ? count.Whole() : count.Reported();
        if (std::getenv("KORVANTI_FAULT") != nullptr)
            std::cout << name << "\nstatus " << ran.Status << "\n" << ran.Said << "\n";
    }

    std::vector<const CountedCall*> WritingCalls() const
    {
        std::vector<const CountedCall*> calls;
        for (const CountedCall& call : First.Calls) {
            if (call.Writing)
                calls.push_back(&call);
        }
        return calls;
    }

    static void Conclude(const FaultCount& count)
    {
        count.Print();
        // A program that watches may meet a tick less: three calls, and one of twenty.
        EXPECT_LE(count.MissCount() * 20, count.Tried() + 60) << "the calls differ too much from run to run";
        EXPECT_EQ(count.FindingCount(), 0) << count.Summary() << "\n" << count.Details(40);
    }

    fs::path Folder;
    Shop Present;
    Reference Known;
    Ran First; // undisturbed
};

TEST_F(WindowFaults, ACallThatFailsLeavesTheSettingsWholeOrIsTold)
{
    FaultCount count("failing calls, start and end of the window");
    std::vector<std::pair<const CountedCall*, int>> faults;
    for (const CountedCall& call : First.Calls) {
        for (const int error : ErrorsOfCall(call))
            faults.emplace_back(&call, error);
    }
    for (const std::size_t i : Picked(faults.size(), UsualTries))
        TryFault(count, *faults[i].first, faults[i].second, false);
    Conclude(count);
}

TEST_F(WindowFaults, AFullDiskLosesNoSetting)
{
    FaultCount count("disk full from a call on, start and end of the window");
    std::vector<const CountedCall*> writing = WritingCalls();
    std::erase_if(writing,
                  [](const CountedCall* call) { return call->Name == "close" || call->Name == "unlink"; });
    for (const std::size_t i : Picked(writing.size(), UsualTries / 2))
        TryFault(count, *writing[i], ENOSPC, true);
    Conclude(count);
}

TEST_F(WindowFaults, AKillLeavesTheSettingsWhole)
{
    FaultCount count("kills, start and end of the window");
    const std::vector<const CountedCall*> writing = WritingCalls();
    for (const std::size_t i : Picked(writing.size(), UsualTries / 2)) {
        const std::string name =
            std::to_string(i + 1) + " before " + writing[i]->Name + " " + PlaceOf(*writing[i]);
        if (FaultCount::PassedOver(name))
            continue;
        PutDown(Known.Before, Root());
        const Ran ran = Live({static_cast<long>(i) + 1, 0, true, false});
        EXPECT_EQ(ran.Status, 128 + SIGKILL) << name << ran.Said;
        const int before = count.FindingCount();
        for (const std::string& finding : OfTheShop(JudgeKept(Known, TakeUp(Root()))))
            count.Found("lost", name, finding);
        JudgeNextLife(count, name);
        if (count.FindingCount() == before)
            count.Whole();
    }
    Conclude(count);
}

} // namespace
} // namespace fault_test

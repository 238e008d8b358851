// One of the processes of `convert --jobs`: takes shares of the list until none is left, or the folder is
// gone, or the process that made it. Writes into that folder alone.
#include "console/calls.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>

#include "console/drawing_run.h"
#include "console/report_output.h"
#include "console/worker_pool.h"
#include "platform/clock.h"
#include "platform/folders.h"
#include "platform/text.h"
#include "platform/this_process.h"
#include "state/settings.h"

namespace kv {

namespace {

namespace fs = std::filesystem;

constexpr double IdleSeconds = 0.002;        // between the first two looks for an open share
constexpr double LongestIdleSeconds = 0.016; // between later ones

struct Work {
    fs::path Folder;
    WorkOrders Orders;
    long Worker = 0;
};

bool IsThere(const Work& work, const char* name)
{
    std::error_code error;
    return fs::exists(work.Folder / name, error);
}

// A process that was killed takes nobody with it; who finds it gone tidies up.
bool IsWanted(const Work& work)
{
    if (!IsThere(work, OrdersName))
        return false;
    if (ProcessRuns(work.Orders.Parent))
        return true;
    RemoveFolder(work.Folder);
    return false;
}

bool RenameOwn(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    fs::rename(from, to, error);
    return !error;
}

// Whole or not there.
bool WriteResult(const Work& work, const std::string& name, const std::string& text)
{
    const fs::path aside = work.Folder / ("writes-" + std::to_string(work.Worker));
    return WriteOwnFile(aside, text) && RenameOwn(aside, work.Folder / name);
}

std::string TextOfDrawing(const Work& work, std::size_t drawing)
{
    return ConvertedJobText(ConvertForLater(work.Orders.Drawings[drawing], work.Orders.OutputName,
                                            work.Orders.System, work.Orders.WithSource));
}

bool ConvertShare(const Work& work, std::size_t share)
{
    FieldsText result;
    const std::size_t end = FirstOfShare(work.Orders, share + 1);
    for (std::size_t drawing = FirstOfShare(work.Orders, share); drawing < end; ++drawing) {
        if (!IsWanted(work))
            return false;
        result.Put(TextOfDrawing(work, drawing));
    }
    if (!WriteResult(work, DoneShareName(share), result.Text))
        return false;
    std::error_code error;
    fs::remove(work.Folder / TakenShareName(share, work.Worker), error);
    return true;
}

long long NumberOfWord(const std::string& word)
{
    long long number = 0;
    std::from_chars(word.data(), word.data() + word.size(), number);
    return number;
}

bool Claim(const Work& work, std::size_t share)
{
    return RenameOwn(work.Folder / OpenShareName(share), work.Folder / TakenShareName(share, work.Worker));
}

// The first share that is open in the folder.
std::optional<std::size_t> FirstOpen(const Work& work)
{
    const std::string head = OpenShareName(0).substr(0, OpenShareName(0).size() - 1);
    std::optional<std::size_t> first;
    std::error_code error;
    fs::directory_iterator entries(work.Folder, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
        const std::u8string spelled = entries->path().filename().u8string();
        const std::string name(spelled.begin(), spelled.end());
        if (!BeginsWith(name, head))
            continue;
        const auto share = static_cast<std::size_t>(NumberOfWord(name.substr(head.size())));
        first = std::min(first.value_or(share), share);
    }
    return first;
}

// Shares are opened and taken in the order of the list. The next ones are tried first, since the folder is
// dearer to read; after a long drawing the other processes may be far ahead.
bool TakeShare(const Work& work, std::size_t& next)
{
    constexpr std::size_t quickTries = 4;
    const std::size_t shares = SharesOf(work.Orders);
    for (std::size_t share = next; share < std::min(shares, next + quickTries); ++share)
        if (Claim(work, share)) {
            next = share;
            return true;
        }
    for (std::size_t tries = 0; tries < OpenShares; ++tries) {
        const std::optional<std::size_t> share = FirstOpen(work);
        if (!share)
            return false;
        if (*share < shares && Claim(work, *share)) {
            next = *share;
            return true;
        }
    }
    return false;
}

int ConvertShares(const Work& work)
{
    double idle = IdleSeconds;
    for (std::size_t next = 0; IsWanted(work);) {
        const bool allOpen = IsThere(work, AllOpenName); // before the look, so that none is opened after it
        if (TakeShare(work, next)) {
            idle = IdleSeconds;
            if (!ConvertShare(work, next++))
                return ExitCannotWork;
        } else if (allOpen) {
            return ExitConverted;
        } else {
            PauseSeconds(idle);
            idle = std::min(2 * idle, LongestIdleSeconds);
        }
    }
    return ExitCannotWork;
}

// False where this process does not see what the one that started it saw.
bool PrepareWork(Work& work, const std::string& folder)
{
    std::error_code error;
    work.Folder = fs::temp_directory_path(error) / folder;
    std::string text;
    if (error || !ReadOwnFile(work.Folder / OrdersName, text))
        return false;
    std::optional<WorkOrders> orders = WorkOrdersOf(text);
    if (!orders)
        return false;
    work.Orders = std::move(*orders);
    SetExeFolder(work.Orders.Home);
    LoadAllSettings();
    CommandLine line;
    line.Overrides = work.Orders.Overrides;
    if (!TakeOverrides(line))
        return false;
    Config.CarryOver = "clean";
    return MarkOfInstallation() == work.Orders.Settings;
}

} // namespace

int WorkForPool(const CommandLine& line)
{
    Work work;
    if (line.Work.size() < 2 || !PrepareWork(work, line.Work[0]))
        return ExitCannotWork;
    work.Worker = static_cast<long>(NumberOfWord(line.Work[1]));
    OpenReport(false, false);
    CountOperationsOfDrawings();
    if (line.Work.size() < 3)
        return ConvertShares(work);
    const auto drawing = static_cast<std::size_t>(NumberOfWord(line.Work[2]));
    if (drawing >= work.Orders.Drawings.size())
        return ExitCannotWork;
    return WriteResult(work, DoneDrawingName(drawing), TextOfDrawing(work, drawing)) ? ExitConverted
                                                                                     : ExitCannotWork;
}

} // namespace kv

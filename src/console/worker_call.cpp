// One of the processes of `convert --jobs`: takes shares of the list until none is left, or the folder is
// gone, or the process that made it. Writes into that folder alone.
#include "console/calls.h"

#include <charconv>
#include <filesystem>
#include <system_error>

#include "console/drawing_run.h"
#include "console/report_output.h"
#include "console/worker_pool.h"
#include "platform/clock.h"
#include "platform/folders.h"
#include "platform/this_process.h"
#include "state/settings.h"

namespace kv {

namespace {

namespace fs = std::filesystem;

constexpr double IdleSeconds = 0.002; // between two looks for an open share

struct Work {
    fs::path Folder;
    WorkOrders Orders;
    long Worker = 0;
};

// A process that was killed takes nobody with it; who finds it gone tidies up.
bool IsWanted(const Work& work)
{
    std::error_code error;
    if (!fs::exists(work.Folder / OrdersName, error))
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
    const std::size_t first = share * work.Orders.Share;
    const std::size_t end = std::min(first + work.Orders.Share, work.Orders.Drawings.size());
    for (std::size_t drawing = first; drawing < end; ++drawing) {
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

// Shares are opened and taken in the order of the list; what was open before `next` is taken.
bool TakeShare(const Work& work, std::size_t& next)
{
    const std::size_t shares = (work.Orders.Drawings.size() + work.Orders.Share - 1) / work.Orders.Share;
    for (std::size_t share = next; share < std::min(shares, next + OpenShares); ++share) {
        if (!RenameOwn(work.Folder / OpenShareName(share), work.Folder / TakenShareName(share, work.Worker)))
            continue;
        next = share;
        return true;
    }
    return false;
}

int ConvertShares(const Work& work)
{
    for (std::size_t next = 0; IsWanted(work);) {
        if (!TakeShare(work, next))
            PauseSeconds(IdleSeconds);
        else if (!ConvertShare(work, next++))
            return ExitCannotWork;
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

long long NumberOfWord(const std::string& word)
{
    long long number = 0;
    std::from_chars(word.data(), word.data() + word.size(), number);
    return number;
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

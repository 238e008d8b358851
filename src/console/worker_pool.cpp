// Hands out the list and takes the results. Relies on renaming within a folder being done for one process
// alone; leaves no process and no folder.
#include "console/worker_pool.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "console/abort.h"
#include "console/drawing_run.h"
#include "console/report_output.h"
#include "job/placing.h"
#include "job/stage_folder.h"
#include "platform/clock.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/this_process.h"
#include "state/settings.h"

namespace kv {

namespace fs = std::filesystem;

namespace {

constexpr double LookSeconds = 0.001;   // between the first two looks for a share
constexpr double LongestLook = 0.008;   // between later ones; the last shares are not waited for so long
constexpr double EndSeconds = 5;        // longest wait for a process that was killed
constexpr std::size_t MostOfShare = 16; // drawings
constexpr std::size_t SharesEach = 16;  // at least, in a list that is long enough
constexpr std::size_t LastShares = 2;   // for each process, handed out in small ones at the end of the list
constexpr std::size_t SmallerShare = 4; // times
constexpr long MoreWorkers = 16;        // that may be started for those that have ended

bool IsInFolder(const fs::path& file)
{
    std::error_code error;
    return fs::exists(file, error);
}

void Remove(const fs::path& file)
{
    std::error_code error;
    fs::remove(file, error);
}

void TellOnErrors(const std::string& text)
{
    EraseProgress();
    WriteAtOnce("korvanti: " + text + "\n", stderr);
}

std::string HowItEnded(Long exitCode)
{
    constexpr Long signalBase = 128;
    if (exitCode > signalBase && exitCode <= signalBase + 64)
        return "signal " + WholeText(exitCode - signalBase);
    return "exit status " + WholeText(exitCode);
}

} // namespace

std::size_t SharesOf(const WorkOrders& orders)
{
    return (orders.Drawings.size() - orders.InLast) / orders.Share +
           (orders.InLast + orders.LastShare - 1) / orders.LastShare;
}

std::size_t FirstOfShare(const WorkOrders& orders, std::size_t share)
{
    const std::size_t count = orders.Drawings.size(), large = (count - orders.InLast) / orders.Share;
    if (share <= large)
        return share * orders.Share;
    return std::min(count, count - orders.InLast + (share - large) * orders.LastShare);
}

std::size_t ShareOf(const WorkOrders& orders, std::size_t drawing)
{
    const std::size_t inLarge = orders.Drawings.size() - orders.InLast;
    return drawing < inLarge ? drawing / orders.Share
                             : inLarge / orders.Share + (drawing - inLarge) / orders.LastShare;
}

std::string WorkOrdersText(const WorkOrders& orders)
{
    FieldsText fields;
    fields.Put(orders.Home);
    fields.PutNumber(static_cast<long long>(orders.Settings.Size));
    fields.PutNumber(static_cast<long long>(orders.Settings.Sum));
    fields.PutNumber(orders.System);
    fields.Put(orders.OutputName);
    fields.PutNumber(orders.WithSource ? 1 : 0);
    fields.PutNumber(orders.Parent);
    for (const std::size_t size : {orders.Share, orders.LastShare, orders.InLast})
        fields.PutNumber(static_cast<long long>(size));
    fields.PutNumber(static_cast<long long>(orders.Overrides.size()));
    for (const auto& [key, value] : orders.Overrides) {
        fields.Put(key);
        fields.Put(value);
    }
    fields.PutNumber(static_cast<long long>(orders.Drawings.size()));
    for (const std::string& drawing : orders.Drawings)
        fields.Put(drawing);
    return std::move(fields.Text);
}

std::optional<WorkOrders> WorkOrdersOf(std::string_view text)
{
    FieldsReader reader(text);
    WorkOrders orders;
    orders.Home = reader.Take();
    orders.Settings.Size = static_cast<std::uint64_t>(reader.TakeNumber());
    orders.Settings.Sum = static_cast<std::uint64_t>(reader.TakeNumber());
    orders.System = static_cast<int>(reader.TakeNumber());
    orders.OutputName = reader.Take();
    orders.WithSource = reader.TakeNumber() != 0;
    orders.Parent = reader.TakeNumber();
    for (std::size_t* const size : {&orders.Share, &orders.LastShare, &orders.InLast})
        *size = static_cast<std::size_t>(reader.TakeNumber());
    for (std::size_t left = reader.TakeCount(); left > 0; --left) {
        const std::string_view key = reader.Take();
        orders.Overrides.emplace_back(key, reader.Take());
    }
    for (std::size_t left = reader.TakeCount(); left > 0; --left)
        orders.Drawings.emplace_back(reader.Take());
    if (!reader.Ok || !reader.AtEnd() || orders.Share == 0 || orders.LastShare == 0 ||
        orders.InLast > orders.Drawings.size())
        return std::nullopt;
    return orders;
}

ContentsMark MarkOfInstallation()
{
    FieldsText fields;
    for (const SettingText& mark : InstallationMarks()) {
        fields.Put(mark.Key);
        fields.Put(mark.Value);
    }
    return MarkOf(fields.Text);
}

std::string OpenShareName(std::size_t share)
{
    return "open-" + std::to_string(share);
}

std::string TakenShareName(std::size_t share, long worker)
{
    return "taken-" + std::to_string(share) + "-" + std::to_string(worker);
}

std::string DoneShareName(std::size_t share)
{
    return "done-" + std::to_string(share);
}

std::string DoneDrawingName(std::size_t drawing)
{
    return "drawing-" + std::to_string(drawing);
}

WorkerPool::WorkerPool(const CommandLine& line, const std::string& outputName) : System(SystemProcesses())
{
    const auto jobs = static_cast<std::size_t>(line.Jobs);
    const std::size_t count = line.Drawings.size();
    Orders.Home = ExeFolder;
    Orders.Settings = MarkOfInstallation();
    Orders.System = line.System;
    Orders.OutputName = outputName;
    Orders.WithSource = !line.Stage.empty();
    Orders.Parent = ProcessNumber();
    Orders.Overrides = line.Overrides;
    Orders.Drawings = line.Drawings;
    PlanShares(jobs);
    Folder = MakeOwnFolder();
    if (!Folder.empty() && !WriteOwnFile(Folder / OrdersName, WorkOrdersText(Orders)))
        EndWorkers();
    OpenMore(0);
    Most = line.Jobs + MoreWorkers;
    bool started = !Folder.empty();
    for (std::size_t i = 0; started && i < std::min(jobs, count); ++i)
        started = StartWorker();
    if (Workers.empty()) {
        TellOnErrors("no other process could be started; this one converts the drawings");
        EndWorkers();
    }
}

WorkerPool::~WorkerPool()
{
    EndWorkers();
}

Long WorkerPool::StartProcessOf(long worker, const std::string& drawing)
{
    const std::u8string name = Folder.filename().u8string();
    ProgramCall call = {ExeName(), "work", std::string(name.begin(), name.end()), std::to_string(worker)};
    if (!drawing.empty())
        call.push_back(drawing);
    return System.Start(call);
}

bool WorkerPool::StartWorker()
{
    const Long handle = StartProcessOf(LastWorker + 1, {});
    if (handle == 0)
        return false;
    Workers.push_back({handle, ++LastWorker});
    return true;
}

// A process that takes the last share of a list works while the others have ended; so the last ones are
// small.
void WorkerPool::PlanShares(std::size_t jobs)
{
    const std::size_t count = Orders.Drawings.size();
    Orders.Share = std::clamp<std::size_t>(count / (jobs * SharesEach), 1, MostOfShare);
    Orders.LastShare = std::max<std::size_t>(Orders.Share / SmallerShare, 1);
    const std::size_t small = std::min(count, jobs * LastShares * Orders.Share);
    Orders.InLast = count - (count - small) / Orders.Share * Orders.Share; // the large ones are whole
}

// Not all of them at once, so that the folder stays small however long the list is.
void WorkerPool::OpenMore(std::size_t share)
{
    const std::size_t shares = SharesOf(Orders);
    if (Folder.empty() || Opened == shares)
        return;
    for (; Opened < std::min(shares, share + OpenShares); ++Opened)
        if (!WriteOwnFile(Folder / OpenShareName(Opened), {}))
            return;
    if (Opened == shares)
        (void)WriteOwnFile(Folder / AllOpenName, {}); // without it the processes end with this one
}

void WorkerPool::EndWorkers()
{
    for (const Worker& worker : Workers)
        System.Kill(worker.Handle);
    for (const Worker& worker : Workers) {
        for (double waited = 0; System.ExitCode(worker.Handle) == StillActive && waited < EndSeconds;
             waited += LookSeconds)
            PauseSeconds(LookSeconds);
        System.Forget(worker.Handle);
    }
    Workers.clear();
    if (!Folder.empty())
        RemoveFolder(Folder);
    Folder.clear();
}

std::optional<ConvertedJob> WorkerPool::Take(std::size_t drawing)
{
    const std::size_t share = ShareOf(Orders, drawing);
    if (!CurrentIsRead || Current != share) {
        Current = share;
        CurrentIsRead = true;
        Jobs.clear();
        OpenMore(share);
        if (!Folder.empty() && !Wait(share) && Lost.contains(share))
            ConvertSingly(share);
    }
    const std::size_t place = drawing - FirstOfShare(Orders, share);
    return place < Jobs.size() ? std::exchange(Jobs[place], std::nullopt) : std::nullopt;
}

// False: nobody converts the share, or the run is aborted.
bool WorkerPool::Wait(std::size_t share)
{
    const bool isLast = FirstOfShare(Orders, share) >= Orders.Drawings.size() - Orders.InLast;
    double pause = LookSeconds;
    while (!ReadShare(share)) {
        if (AbortAsked())
            return false;
        if (!IsInFolder(Folder / OrdersName)) {
            TellOnErrors("the folder of the processes is gone; this one converts the drawings that are left");
            EndWorkers();
            return false;
        }
        LookAtWorkers();
        if (Lost.contains(share) || Workers.empty())
            return ReadShare(share);
        ShowListProgress();
        PlaceWhileIdle();
        PauseSeconds(pause);
        pause = isLast ? LookSeconds : std::min(2 * pause, LongestLook);
    }
    return true;
}

bool WorkerPool::ReadShare(std::size_t share)
{
    const fs::path file = Folder / DoneShareName(share);
    std::string text;
    if (!IsInFolder(file) || !ReadOwnFile(file, text))
        return false;
    Remove(file);
    FieldsReader reader(text);
    while (reader.Ok && !reader.AtEnd())
        Jobs.push_back(ConvertedJobOf(reader.Take()));
    return true;
}

void WorkerPool::LookAtWorkers()
{
    const std::vector<Worker> before = std::exchange(Workers, {});
    for (const Worker& worker : before) {
        const Long exitCode = System.ExitCode(worker.Handle);
        if (exitCode == StillActive)
            Workers.push_back(worker);
        else
            TakeEnded(worker, exitCode);
    }
}

void WorkerPool::TakeEnded(const Worker& worker, Long exitCode)
{
    System.Forget(worker.Handle);
    if (exitCode == 0)
        return; // nothing was left to do
    for (std::size_t share = Current; share < Opened; ++share) {
        const fs::path taken = Folder / TakenShareName(share, worker.Number);
        if (!IsInFolder(taken))
            continue;
        if (!IsInFolder(Folder / DoneShareName(share)))
            Lost.insert(share);
        Remove(taken);
    }
    if (AbortAsked() || exitCode == ExitCannotWork)
        return;
    TellOnErrors("a process that converts drawings has ended (" + HowItEnded(exitCode) +
                 "); what it had begun is converted once more");
    if (LastWorker < Most)
        (void)StartWorker();
}

// Each drawing by a process of its own: one that ends its process takes no other one with it.
void WorkerPool::ConvertSingly(std::size_t share)
{
    const std::size_t end = FirstOfShare(Orders, share + 1);
    for (std::size_t drawing = FirstOfShare(Orders, share); drawing < end && !AbortAsked(); ++drawing)
        Jobs.push_back(ConvertAlone(drawing));
}

std::optional<ConvertedJob> WorkerPool::ConvertAlone(std::size_t drawing)
{
    const Long handle = StartProcessOf(++LastWorker, std::to_string(drawing));
    if (handle == 0)
        return std::nullopt;
    Long exitCode = StillActive;
    while ((exitCode = System.ExitCode(handle)) == StillActive) {
        if (AbortAsked())
            System.Kill(handle);
        PauseSeconds(LookSeconds);
    }
    System.Forget(handle);
    std::string text;
    const fs::path file = Folder / DoneDrawingName(drawing);
    if (exitCode == 0 && ReadOwnFile(file, text))
        return ConvertedJobOf(text);
    if (exitCode == 0 || exitCode == ExitCannotWork || AbortAsked())
        return std::nullopt;
    return FailedForLater(
        Orders.Drawings[drawing],
        {Message::ProcessEndedTwice,
         {{"drawing", ShownPath(FromHostPath(Orders.Drawings[drawing]))}, {"how", HowItEnded(exitCode)}}});
}

} // namespace kv

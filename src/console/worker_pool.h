// The processes of `convert --jobs N`. They convert the drawings of a list, some at a time, each share of the
// list as a file in a folder of this call; this process takes the results in the order of the list. What a
// process does not finish is converted by another one, or here.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "console/command_line.h"
#include "job/converted_job.h"
#include "platform/processes.h"

namespace kv {

// What the processes are told, as a file of the folder.
struct WorkOrders {
    std::string Home;      // backslash path
    ContentsMark Settings; // of the installation's marks
    int System = SystemOfSettings;
    std::string OutputName;
    bool WithSource = false;
    long long Parent = 0;      // process number
    std::size_t Share = 1;     // drawings of a share
    std::size_t LastShare = 1; // drawings of each of the last shares, so that all processes end together
    std::size_t InLast = 0;    // drawings at the end of the list that are handed out so
    std::vector<std::pair<std::string, std::string>> Overrides;
    std::vector<std::string> Drawings;
};
std::size_t SharesOf(const WorkOrders& orders);
std::size_t FirstOfShare(const WorkOrders& orders, std::size_t share); // after the last one: the end
std::size_t ShareOf(const WorkOrders& orders, std::size_t drawing);
std::string WorkOrdersText(const WorkOrders& orders);
std::optional<WorkOrders> WorkOrdersOf(std::string_view text);
ContentsMark MarkOfInstallation();

// Names in the folder. A share is open until a worker renames it for itself.
constexpr const char* OrdersName = "orders";
constexpr const char* AllOpenName = "all-open"; // no share will be opened any more
std::string OpenShareName(std::size_t share);
std::string TakenShareName(std::size_t share, long worker);
std::string DoneShareName(std::size_t share);
std::string DoneDrawingName(std::size_t drawing); // of a drawing that has a process of its own
constexpr std::size_t OpenShares = 128;           // at most, ahead of the one that is placed

constexpr int ExitCannotWork = 4; // of a worker; the others can convert no more than it

class WorkerPool {
  public:
    WorkerPool(const CommandLine& line, const std::string& outputName);
    ~WorkerPool(); // ends the processes and takes their folder away
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    // The drawing by its place in the list; called in their order. Nothing when it is to be converted here,
    // and when the run is aborted.
    std::optional<ConvertedJob> Take(std::size_t drawing);

  private:
    struct Worker {
        Long Handle = 0;
        long Number = 0; // as it is named in the folder
    };

    bool StartWorker();
    Long StartProcessOf(long worker, const std::string& drawing);
    void PlanShares(std::size_t jobs);
    void OpenMore(std::size_t share);
    bool Wait(std::size_t share);
    bool ReadShare(std::size_t share);
    void LookAtWorkers();
    void TakeEnded(const Worker& worker, Long exitCode);
    void ConvertSingly(std::size_t share);
    std::optional<ConvertedJob> ConvertAlone(std::size_t drawing);
    void EndWorkers();

    ProcessHooks System;
    std::filesystem::path Folder; // empty: no processes
    WorkOrders Orders;
    std::vector<Worker> Workers; // that run
    long LastWorker = 0;
    long Most = 0;              // processes that are started in all, for the shares
    std::size_t Opened = 0;     // shares that were opened
    std::set<std::size_t> Lost; // whose worker has ended
    std::size_t Current = 0;    // share whose drawings are in Jobs
    bool CurrentIsRead = false;
    std::vector<std::optional<ConvertedJob>> Jobs;
};

} // namespace kv

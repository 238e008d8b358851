#include "shell/list_count.h"

#include <algorithm>

#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"

namespace kv {

namespace {

constexpr std::size_t DigitsBetweenCommas = 3;

// The first entry of the list is none.
long long FailedOfRun()
{
    return Run.FailedDrawings.empty() ? 0 : static_cast<long long>(Run.FailedDrawings.size()) - 1;
}

} // namespace

ListCount RunningList;

CountedList::CountedList(long long total)
{
    RunningList = {};
    RunningList.Total = total > 1 ? total : 0;
    ShellChanged();
}

CountedList::~CountedList()
{
    RunningList = {};
    ShellChanged();
}

void CountFinishedJob()
{
    if (RunningList.Total == 0)
        return;
    RunningList.Done = std::min(RunningList.Done + 1, RunningList.Total);
    RunningList.Failed = std::min(FailedOfRun(), RunningList.Done);
    ShellChanged();
}

void TellListCount()
{
    if (RunningList.Total == 0)
        return;
    const long long failed = std::min(FailedOfRun(), RunningList.Done);
    Tell(Message::ListEnded, {{"written", WithCommas(RunningList.Done - failed)},
                              {"failed", WithCommas(failed)},
                              {"left", WithCommas(RunningList.Total - RunningList.Done)}});
}

std::string WithCommas(long long number)
{
    std::string text = std::to_string(number);
    const std::size_t first = text.front() == '-' ? 1 : 0;
    for (std::size_t at = text.size(); at > first + DigitsBetweenCommas; at -= DigitsBetweenCommas)
        text.insert(at - DigitsBetweenCommas, ",");
    return text;
}

std::string ListProgressText(const ListCount& count)
{
    std::string text = WithCommas(count.Done) + " of " + WithCommas(count.Total);
    if (count.Failed > 0)
        text += ", " + WithCommas(count.Failed) + " failed";
    return text;
}

std::string TitleOfRun()
{
    const std::string name(ProductName);
    return RunningList.Total == 0 ? name : name + " - " + ListProgressText(RunningList);
}

} // namespace kv

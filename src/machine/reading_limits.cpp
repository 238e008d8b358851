#include "machine/reading_limits.h"

#include <string>

#include "machine/text_lines.h"

namespace kv {

void AddUnread(MachineSteps& steps, std::size_t line, std::string_view text)
{
    ++steps.UnreadCount;
    if (steps.Unread.size() < MostUnreadLines)
        steps.Unread.push_back(UnreadLine(line, text));
}

void AddRestUnread(MachineSteps& steps, std::size_t line)
{
    ++steps.UnreadCount;
    if (steps.Unread.size() >= MostUnreadLines)
        steps.Unread.pop_back();
    steps.Unread.insert(steps.Unread.begin(),
                        UnreadLine(line, "the program has more than " + std::to_string(MostSteps) +
                                             " steps, the rest is not read"));
}

bool AreAllStepsTaken(const MachineSteps& steps, std::size_t moves)
{
    return steps.Cuts.size() + steps.Bores.size() + steps.Rows.size() + steps.Saws.size() + moves >=
           MostSteps;
}

} // namespace kv

// The page of one message, or all of them as the file of the documentation holds them. Relies on the table of
// messages alone: no installation is looked for.
#include <cstdio>

#include "console/calls.h"
#include "console/report_output.h"
#include "state/messages.h"

namespace kv {

int ExplainMessage(const CommandLine& line)
{
    const MessagePage* const page = FindPage(line.Explained);
    if (!line.ListsMessages && page == nullptr)
        return ExitUsage;
    WriteAtOnce(line.ListsMessages ? MessagesGuide() : PageText(*page), stdout);
    return ExitConverted;
}

} // namespace kv

// The first lines of the report: name and version, the controls that are served, and the notice.
// Relies on the report routine and its colour marks; leaves an empty message buffer.
#include "shell/banner.h"

#include <string>

#include "state/report.h"
#include "state/settings.h"

namespace kv {

void ShowBanner()
{
    const std::string red(1, MarkRed), green(1, MarkGreen), blue(1, MarkBlue);
    const std::string lines[] = {
        "",
        red + " " + std::string(ProductName) + " for Windows  Version " + std::string(ProductVersion),
        "",
        blue + " For",
        blue + " CNC90  WINNER90",
        blue + " GENESIS & Genesis Evolution",
        "",
        green + " Look at each program on the control before the machine runs it.",
        green + " Provided without warranty of any kind.",
        "",
    };
    for (const std::string& line : lines)
        ReportMessage(1, line);
    ReportMessage(2, "");
}

} // namespace kv

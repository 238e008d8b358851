#include "shell/control_tables.h"
namespace kv {
std::span<const ControlRow> ControlRows()
{
    return {};
}
const ControlRow* FindControl(std::string_view, std::string_view)
{
    return nullptr;
}
std::span<const TipRow> CursorTips()
{
    return {};
}
std::string TipText(const TipRow& row)
{
    return std::string(row.Text);
}
TipHooks Tips;
void InstallCursorTips(bool) {}
const std::string_view MeterTitles[6] = {"Parsing",    "Reading Info", "Processing",
                                         "Sequencing", "Syn Leads",    "Pgm Code"};
} // namespace kv

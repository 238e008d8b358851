// Looks up the tables of the controls and of their tips. The rows themselves stand in
// control_rows.cpp and cursor_tips.cpp. Relies on nothing but them; leaves the wish for tips with the
// window, which knows its widgets.
#include "shell/control_tables.h"

#include "state/settings.h"

namespace kv {

const std::string_view MeterTitles[6] = {"Parsing",    "Reading Info", "Processing",
                                         "Sequencing", "Syn Leads",    "Pgm Code"};

TipHooks Tips;

const ControlRow* FindControl(std::string_view form, std::string_view name)
{
    for (const ControlRow& row : ControlRows()) {
        if (row.Form == form && row.Name == name)
            return &row;
    }
    return nullptr;
}

std::string TipText(const TipRow& row)
{
    constexpr std::string_view place = "{product}";
    std::string text(row.Text);
    const std::size_t at = text.find(place);
    if (at != std::string::npos)
        text.replace(at, place.size(), ProductName);
    return text;
}

void InstallCursorTips(bool on)
{
    if (Tips.Install != nullptr)
        Tips.Install(on);
}

} // namespace kv

// The sort mode of Genesis Evolution programs: five radios, of which the settings hold one word each.
// Relies on the settings; leaves them for the writer, and the caption of the selected mode for the main
// window.
#include <array>

#include "shell/control_tables.h"
#include "shell/setup_rules.h"

namespace kv {

namespace {

// In the order of the radios, which is that of the sort's values.
constexpr std::array SortWords = {&Settings::EvOptOff, &Settings::EvOptLR, &Settings::EvOptRL,
                                  &Settings::EvOptGS, &Settings::EvOptSS};
constexpr int GenericSorting = 3;

// -1: none. A file can hold several; the last one wins.
int SelectedRadio()
{
    int selected = -1;
    for (std::size_t i = 0; i < SortWords.size(); ++i) {
        if (Config.*SortWords[i])
            selected = static_cast<int>(i);
    }
    return selected;
}

} // namespace

void ClickEvolutionSort(int index)
{
    if (index < 0 || index >= static_cast<int>(SortWords.size()))
        return;
    for (std::size_t i = 0; i < SortWords.size(); ++i)
        Config.*SortWords[i] = static_cast<int>(i) == index;
}

int EvolutionSort()
{
    const int selected = SelectedRadio();
    return selected < 0 ? 0 : selected;
}

std::string ShowSelectedEvolutionSort()
{
    const int selected = SelectedRadio();
    if (selected < 0)
        return {};
    const ControlRow* const radio = FindControl("OptSet", "EVOpt(" + WholeText(selected) + ")");
    return radio == nullptr ? std::string() : std::string(radio->Caption);
}

bool GenericSortingAvailable()
{
    return SelectedRadio() == GenericSorting;
}

} // namespace kv

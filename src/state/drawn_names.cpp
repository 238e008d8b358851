// The table behind the names of the report. Relies on the reader, which numbers what it meets, and on the
// layer rules, which say what became of it; leaves nothing to the next drawing.
#include "state/drawn_names.h"

#include <deque>
#include <unordered_map>

namespace kv {

namespace {

std::deque<std::string> Names; // from number 1; never moved, since the keys below look at them
std::unordered_map<std::string_view, Long> Numbers;
std::unordered_map<std::string, Long> DrawnLayers; // by rewritten names

} // namespace

void ForgetDrawnNames()
{
    DrawnLayers.clear();
    Numbers.clear();
    Names.clear();
}

Long NumberOfName(std::string_view name)
{
    if (name.empty())
        return 0;
    const auto known = Numbers.find(name);
    if (known != Numbers.end())
        return known->second;
    const auto number = static_cast<Long>(Names.size() + 1);
    Numbers.emplace(Names.emplace_back(name), number);
    return number;
}

std::string_view NameOfNumber(Long number)
{
    const auto count = static_cast<Long>(Names.size());
    return number < 1 || number > count ? std::string_view() : Names[static_cast<std::size_t>(number - 1)];
}

void NoteDrawnLayer(std::string_view rewritten, Long number)
{
    if (number > 0)
        DrawnLayers.try_emplace(std::string(rewritten), number);
}

std::string_view DrawnLayer(std::string_view rewritten)
{
    const auto drawn = DrawnLayers.find(std::string(rewritten));
    return drawn == DrawnLayers.end() ? std::string_view() : NameOfNumber(drawn->second);
}

} // namespace kv

// The words by which the passes choose, written down once more on purpose: what a pass leaves out shall be
// found without its own test.
#include "ledger/layer_words.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/text.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr std::string_view DrillingRow = "VBORE DRILLING"; // of the layer table
constexpr std::string_view EdgeBoreRow = "HBORE";
constexpr Long HeadLength = 5;

struct WorkRow {
    LayerWork Work;
    std::string_view Name, Kinds;
    std::array<std::string_view, 4> Takes;
};
constexpr WorkRow WorkRows[] = {
    {LayerWork::Nothing, "nothing", "", {}},
    {LayerWork::Border, "the panel's border", "LINE and POLYLINE", {"LINE", "POLYLINE", "LWPOLYLINE"}},
    {LayerWork::Panel, "the panel", "SOLID", {"SOLID"}},
    {LayerWork::Drilling, "vertical bores", "CIRCLE and POINT", {"CIRCLE", "POINT"}},
    {LayerWork::Groove, "grooves", "LINE and POLYLINE", {"LINE", "POLYLINE", "LWPOLYLINE"}},
    {LayerWork::EdgeBore,
     "bores in the edges",
     "LINE, POLYLINE and CIRCLE",
     {"LINE", "POLYLINE", "LWPOLYLINE", "CIRCLE"}},
    {LayerWork::Route, "routes", "LINE, ARC, CIRCLE and POLYLINE", {"LINE", "ARC", "CIRCLE", "POLYLINE"}},
    {LayerWork::Pocket, "pockets", "LINE, ARC, CIRCLE and POLYLINE", {"LINE", "ARC", "CIRCLE", "POLYLINE"}},
    {LayerWork::Text, "a text", "TEXT", {"TEXT", "MTEXT"}},
    {LayerWork::Instructions, "instructions", "TEXT", {"TEXT", "MTEXT"}},
};

const WorkRow& RowOf(LayerWork work)
{
    return WorkRows[static_cast<std::size_t>(work)];
}

bool IsRoute(std::string_view layer)
{
    return Holds(layer, "ROUT") || Holds(layer, "ROTAR") || Holds(layer, "EXCAV");
}

bool IsTextLayer(std::string_view layer)
{
    return layer == "NAME" || BeginsWith(layer, "DESCR") || Holds(layer, "CNCNOT") || layer == "GCODE1" ||
           layer == "GCODE2" || layer == "GCODE3";
}

bool IsInstructionLayer(std::string_view layer)
{
    return !Run.InstructionLayer.empty() && Holds(Compact(layer), Run.InstructionLayer);
}

// All that the name may mean, in the order in which it is asked.
std::vector<LayerWork> WorksOf(std::string_view layer)
{
    std::vector<LayerWork> works;
    const std::string head = Padded(layer, HeadLength);
    const auto add = [&](bool isSo, LayerWork work) {
        if (isSo)
            works.push_back(work);
    };
    add(IsRoute(layer) && Holds(layer, "EXCAV"), LayerWork::Pocket);
    add(IsRoute(layer) && !Holds(layer, "EXCAV"), LayerWork::Route);
    add(Holds(DrillingRow, head), LayerWork::Drilling);
    add(Holds(layer, "GROOVE"), LayerWork::Groove);
    add(Holds(layer, EdgeBoreRow), LayerWork::EdgeBore);
    add(Holds(layer, "BORDER"), LayerWork::Border);
    add(Holds(layer, "PANEL"), LayerWork::Panel);
    add(IsTextLayer(layer), LayerWork::Text);
    add(IsInstructionLayer(layer), LayerWork::Instructions);
    return works;
}

// One letter missing, added, changed, or exchanged with its neighbour.
bool IsOneSlip(std::string_view word, std::string_view typed)
{
    std::size_t same = 0;
    while (same < word.size() && same < typed.size() && word[same] == typed[same])
        ++same;
    const std::string_view word1 = word.substr(same), typed1 = typed.substr(same);
    const auto rest = [](std::string_view text, std::size_t from) {
        return text.substr(std::min(from, text.size()));
    };
    if (word1.empty() && typed1.empty())
        return false;
    if (word.size() == typed.size() && rest(word1, 1) == rest(typed1, 1))
        return true;
    if (word.size() == typed.size() + 1 && rest(word1, 1) == typed1)
        return true;
    if (typed.size() == word.size() + 1 && rest(typed1, 1) == word1)
        return true;
    return word1.size() == typed1.size() && word1.size() >= 2 && word1[0] == typed1[1] &&
           word1[1] == typed1[0] && rest(word1, 2) == rest(typed1, 2);
}

std::size_t LettersInFront(std::string_view name)
{
    const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
    return static_cast<std::size_t>(std::find_if_not(name.begin(), name.end(), isLetter) - name.begin());
}

std::string WithoutSecond(std::string_view name)
{
    return std::string(name.substr(0, 1)) + std::string(name.substr(std::min<std::size_t>(2, name.size())));
}

bool IsBorderFlag(std::string_view letters)
{
    constexpr std::string_view flags[] = {"LL", "UL", "UR", "LR", "GE", "EV",
                                          "NO", "OP", "OL", "OR", "GS", "SS"};
    return std::find(std::begin(flags), std::end(flags), letters) != std::end(flags);
}

// Whether a word of that length may end there; the name begins with so many letters.
bool IsEndOfWord(std::string_view name, std::size_t length, std::size_t letters)
{
    const bool isDigitNext = letters < name.size() && name[letters] >= '0' && name[letters] <= '9';
    return length == letters || (length + 1 == letters && isDigitNext) ||
           IsBorderFlag(name.substr(length, letters - length));
}

} // namespace

bool IsTextKind(std::string_view kind)
{
    return Holds(kind, "TEXT");
}

LayerWork WorkOfLayer(std::string_view layer, std::string_view kind)
{
    const std::vector<LayerWork> works = WorksOf(layer);
    for (const LayerWork work : works)
        if (TakesKind(work, kind))
            return work;
    return works.empty() ? LayerWork::Nothing : works.front();
}

bool AsksForWork(LayerWork work)
{
    return work == LayerWork::Drilling || work == LayerWork::Groove || work == LayerWork::EdgeBore ||
           work == LayerWork::Route || work == LayerWork::Pocket;
}

bool TakesKind(LayerWork work, std::string_view kind)
{
    const auto& takes = RowOf(work).Takes;
    return std::find(takes.begin(), takes.end(), kind) != takes.end();
}

std::string_view KindsOf(LayerWork work)
{
    return RowOf(work).Kinds;
}

std::string_view WorkName(LayerWork work)
{
    return RowOf(work).Name;
}

// Behind the word are codes with their numbers, or flags of a border: "VBROEZ12", "BODERLL". A piece of a
// longer plain word is no slip: "BORDEAUX" is not meant for a border.
std::string NearestWord(std::string_view layer)
{
    constexpr std::string_view words[] = {"BORDER", "PANEL", "VBORE", "DRILLING", "DRILL", "GROOVE",
                                          "HBORE",  "ROUTE", "EXCAV", "NAME",     "DESCR", "CNCNOT"};
    const std::string name = UpperCase(layer);
    const std::size_t letters = LettersInFront(name);
    for (const std::string_view word : words) {
        for (std::size_t length = word.size() - 1; length <= word.size() + 1; ++length)
            if (length <= letters && IsEndOfWord(name, length, letters) &&
                IsOneSlip(word, std::string_view(name).substr(0, length)))
                return std::string(word);
        if (letters == 1 && BeginsWith(WithoutSecond(name), word)) // "V-BORE"
            return std::string(word);
    }
    return {};
}

} // namespace kv

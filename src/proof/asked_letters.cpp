#include "proof/asked_letters.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace kv {

namespace {

constexpr std::size_t WordLength = 5; // of most operations
constexpr char LeadMarker = '\xE4', SwingMarker = '\xEA', TableMarker = '\xDF';
constexpr std::string_view VerticalWords = "VBORE DRILLING", HorizontalWord = "HBORE";

bool IsFigure(char c)
{
    return c >= '0' && c <= '9';
}

// Letters within the operation's own word mean nothing.
std::size_t FirstLetterOf(std::string_view layer)
{
    for (const std::string_view word : {"BORDER", "GROOVE", "DRILLING", "ROUTEROUTE"})
        if (layer.starts_with(word))
            return word.size();
    return WordLength;
}

std::size_t PlaceOf(std::string_view layer, char letter, std::size_t from)
{
    return layer.size() > from ? layer.find(letter, from) : std::string_view::npos;
}
std::size_t PlaceOf(std::string_view layer, char letter)
{
    return PlaceOf(layer, letter, FirstLetterOf(layer));
}

// The number behind a letter: figures with a point, or with P for it ("18P5"). Blanks may stand ahead.
double NumberBehind(std::string_view layer, std::size_t letter)
{
    std::size_t at = letter + 1;
    while (at < layer.size() && layer[at] == ' ')
        ++at;
    std::string number;
    if (at < layer.size() && (layer[at] == '-' || layer[at] == '+'))
        number += layer[at++];
    bool hasPoint = false;
    for (; at < layer.size(); ++at) {
        const bool isPoint = layer[at] == '.' || layer[at] == 'P';
        if (!IsFigure(layer[at]) && (!isPoint || hasPoint))
            break;
        hasPoint |= isPoint;
        number += isPoint ? '.' : layer[at];
    }
    return std::strtod(number.c_str(), nullptr);
}

// "ZD", "ZR5" and "Za" to "Zi" but "Zh" are depths that the machine knows.
bool IsDepthCode(std::string_view layer, std::size_t z)
{
    const char next = z + 1 < layer.size() ? layer[z + 1] : ' ';
    return next == 'D' || next == TableMarker || (next >= 'A' && next <= 'I' && next != 'H');
}

void TakeDepth(AskedLetters& letters, std::string_view layer)
{
    const std::size_t z = PlaceOf(layer, 'Z');
    if (z == std::string_view::npos)
        return;
    const double depth = NumberBehind(layer, z);
    constexpr double firstCode = 90; // and above: codes of the machine, as numbers
    letters.DepthIsCode = IsDepthCode(layer, z) || depth >= firstCode;
    letters.Depth = depth;
}

void TakeDiameter(AskedLetters& letters, std::string_view layer)
{
    std::size_t d = PlaceOf(layer, 'D');
    while (d != std::string_view::npos && layer[d - 1] == 'Z')
        d = PlaceOf(layer, 'D', d + 1);
    if (d != std::string_view::npos)
        letters.Diameter = NumberBehind(layer, d);
}

// Left wins over right.
void TakeToolSide(AskedLetters& letters, std::string_view layer)
{
    for (const auto& [letter, side] : {std::pair{'R', -1}, std::pair{'L', 1}})
        if (const std::size_t at = PlaceOf(layer, letter); at != std::string_view::npos) {
            letters.Side = side;
            letters.ToolRadius = NumberBehind(layer, at);
        }
}

bool BeginsWithin(std::string_view layer, std::string_view words)
{
    std::string first(layer.substr(0, WordLength));
    first.resize(WordLength, ' ');
    return words.find(first) != std::string_view::npos;
}

bool HasWord(std::string_view layer, std::string_view word)
{
    return layer.find(word) != std::string_view::npos;
}

} // namespace

AskedLetters AskedLettersOf(std::string_view layer)
{
    AskedLetters letters;
    TakeDepth(letters, layer);
    TakeDiameter(letters, layer);
    TakeToolSide(letters, layer);
    if (const std::size_t t = PlaceOf(layer, 'T'); t != std::string_view::npos)
        letters.Tool = static_cast<int>(NumberBehind(layer, t));
    if (const std::size_t k = PlaceOf(layer, 'K'); k != std::string_view::npos)
        letters.Step = std::max(0.0, NumberBehind(layer, k));
    if (const std::size_t lead = PlaceOf(layer, LeadMarker); lead != std::string_view::npos) {
        const double length = NumberBehind(layer, lead);
        constexpr double ofTheSettings = 999;
        letters.Lead = length == 0 ? ofTheSettings : length;
    }
    if (const std::size_t swing = PlaceOf(layer, SwingMarker); swing != std::string_view::npos)
        letters.Swing = std::fabs(NumberBehind(layer, swing));
    return letters;
}

LayerTask TaskOfLine(std::string_view layer)
{
    if (HasWord(layer, "BORDER"))
        return LayerTask::Border;
    if (HasWord(layer, "EXCAV"))
        return LayerTask::Pocket;
    if (HasWord(layer, "ROUT") || HasWord(layer, "ROTAR"))
        return LayerTask::Route;
    if (HasWord(layer, "GROOVE"))
        return LayerTask::Groove;
    return HasWord(layer, HorizontalWord) ? LayerTask::HorizontalBore : LayerTask::None;
}

LayerTask TaskOfCircle(std::string_view layer)
{
    if (HasWord(layer, "EXCAV"))
        return LayerTask::Pocket;
    if (HasWord(layer, "ROUT") || HasWord(layer, "ROTAR"))
        return LayerTask::Route;
    if (BeginsWithin(layer, VerticalWords))
        return LayerTask::VerticalBore;
    return BeginsWithin(layer, HorizontalWord) ? LayerTask::HorizontalBore : LayerTask::None;
}

int GrooveSideOf(std::string_view layer)
{
    constexpr std::size_t behindWord = 6;
    if (PlaceOf(layer, 'L', behindWord) != std::string_view::npos)
        return 1;
    return PlaceOf(layer, 'R', behindWord) != std::string_view::npos ? -1 : 0;
}

} // namespace kv

// Gathers the operations of a program by the side of the panel that they work on. Relies on the sides'
// numbers in the drawing; leaves one text for all sides, each between its own brackets.
#include "writers/side_text.h"

#include "platform/text.h"

namespace kv {

namespace {

constexpr std::string_view LineEndMark = "CR";

// The program's side for sides 1 to 6 of the drawing.
constexpr std::size_t SideOfDrawing[] = {5, 3, 6, 4, 1, 2};

} // namespace

void AppendSideText(SideTexts& sides, std::string_view s)
{
    std::string& text = sides.SideText[sides.CurrentSide];
    if (s.ends_with(LineEndMark)) {
        text += s.substr(0, s.size() - LineEndMark.size());
        text += "\r\n";
        return;
    }
    text += s;
    if (!s.empty() && s.back() != '\n')
        text += ' ';
}

void SelectSide(SideTexts& sides, Long drawingSide)
{
    if (drawingSide >= 1 && drawingSide <= static_cast<Long>(ProgramSides))
        sides.CurrentSide = SideOfDrawing[drawingSide - 1];
}

void AssembleSides(SideTexts& sides, const SideHeads& heads)
{
    sides.CurrentSide = 0;
    for (std::size_t n = 1; n <= ProgramSides; ++n) {
        AppendSideText(sides, "SIDE#" + WholeText(static_cast<Long>(n)) + "{CR");
        AppendSideText(sides, heads[n]);
        AppendSideText(sides, sides.SideText[n]);
        AppendSideText(sides, "}SIDECR");
    }
}

std::string SideList(const SideTexts& sides)
{
    std::string list = "::SIDE=";
    std::string lineFeeds;
    for (std::size_t n = 1; n <= ProgramSides; ++n) {
        if (sides.SideText[n].empty())
            continue;
        lineFeeds += '\n'; // each side puts its own in front: two sides, two line feeds
        list += WholeText(static_cast<Long>(n)) + ";";
    }
    return lineFeeds + list;
}

} // namespace kv

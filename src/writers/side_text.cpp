// Gathers the operations of a program by the side of the panel that they work on. Relies on the sides'
// numbers in the drawing; leaves one text for all sides, each between its own brackets.
#include "writers/side_text.h"

#include <algorithm>

#include "platform/text.h"

namespace kv {

namespace {

constexpr std::string_view LineEndMark = "CR";

// The program's side for sides 1 to 6 of the drawing.
constexpr std::size_t SideOfDrawing[] = {5, 3, 6, 4, 1, 2};

void AddLines(SideTexts& sides, std::string_view text, std::ptrdiff_t more)
{
    const auto ends = std::count(text.begin(), text.end(), '\n') + more;
    std::vector<Long>& lines = sides.DrawnOfLine[sides.CurrentSide];
    lines.insert(lines.end(), static_cast<std::size_t>(ends), sides.Drawn);
}

// A side's finished text behind what stands there.
void AppendSide(SideTexts& sides, std::size_t side)
{
    const std::size_t known = sides.DrawnOfLine[0].size();
    AppendSideText(sides, sides.SideText[side]);
    const std::vector<Long>& lines = sides.DrawnOfLine[side];
    std::copy(lines.begin(), lines.end(), sides.DrawnOfLine[0].begin() + static_cast<std::ptrdiff_t>(known));
}

} // namespace

void AppendSideText(SideTexts& sides, std::string_view s)
{
    std::string& text = sides.SideText[sides.CurrentSide];
    if (s.ends_with(LineEndMark)) {
        text += s.substr(0, s.size() - LineEndMark.size());
        text += "\r\n";
        AddLines(sides, s, 1);
        return;
    }
    text += s;
    AddLines(sides, s, 0);
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
    sides.Drawn = 0;
    for (std::size_t n = 1; n <= ProgramSides; ++n) {
        AppendSideText(sides, "SIDE#" + WholeText(static_cast<Long>(n)) + "{CR");
        AppendSideText(sides, heads[n]);
        AppendSide(sides, n);
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

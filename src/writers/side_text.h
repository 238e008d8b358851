// The operations of a program as one text for each side of the panel, words with a blank between them
// and one operation on a line.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/numbers.h"

namespace kv {

constexpr std::size_t ProgramSides = 6;

struct SideTexts {
    std::array<std::string, ProgramSides + 1> SideText; // by the program's side; 0: the finished text
    std::size_t CurrentSide = 0;
    Long Drawn = 0;                                              // of the record in hand; 0 between records
    std::array<std::vector<Long>, ProgramSides + 1> DrawnOfLine; // for each line of a side's text
};

// All text of the sides goes through this: "CR" at the end of a word becomes the end of the line, any
// other word gets a blank behind it.
void AppendSideText(SideTexts& sides, std::string_view s);
// Turns to the program's side for a side of the drawing; any other number leaves the side as it is.
void SelectSide(SideTexts& sides, Long drawingSide);

// A line in front of each side's text (its size, for one), ended by "CR"; empty: none.
using SideHeads = std::array<std::string, ProgramSides + 1>;
// Brings the sides together in SideText[0], behind what stands there.
void AssembleSides(SideTexts& sides, const SideHeads& heads = {});
// "::SIDE=" and the sides that have text, with one line feed in front for each of them.
std::string SideList(const SideTexts& sides);

} // namespace kv

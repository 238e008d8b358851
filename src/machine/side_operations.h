// The form that programs by panel sides share: sections in braces, in each side operations of words
// "#name=value" that may run over several lines.
#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "machine/steps.h"
#include "machine/text_lines.h"

namespace kv {

// Its words and texts lie in the lines of the program.
struct SideOperation {
    int Side = 0;     // of the program
    std::string Code; // "W#89"
    std::vector<std::pair<std::string_view, std::string_view>> Words;
    std::vector<std::string_view> Texts; // after the brace, a line each
    std::size_t Line = 0;                // where it begins, from 1
    bool IsClosed = false;               // of one that is not, words may be missing

    // Of words given twice the first; nullptr for one that is not there. Small letters count as capitals.
    const std::string_view* ValueOf(std::string_view word) const;
    bool Has(std::string_view word) const { return ValueOf(word) != nullptr; }
    std::string TextOf(std::string_view word) const; // empty for a word that is not there
    // Nothing for a word that is not there or no number.
    std::optional<double> NumberOf(std::string_view word) const;
    double NumberOr(std::string_view word, double other) const;
    // Whether all of these are numbers where they are there: words that an operation may lack.
    bool AreNumbers(std::initializer_list<std::string_view> words) const;
};

// What comes ahead of the sides.
struct SideSections {
    double Unit = 1;                             // millimetres
    double Length = 0, Width = 0, Thickness = 0; // mm
    std::map<int, double> Variables;             // R variables, in the program's unit
};

enum class SideTaken { Yes, NotUnderstood, Full };
using TakeSideOperation = std::function<SideTaken(const SideOperation&)>;

// Reads the sections and hands over the operations one by one; what is not understood goes to the steps'
// Unread. Small letters count as capitals, and blanks around a word's "=" count for nothing. An operation
// that is not closed ends where the next one begins. A further program in the same
// text is not read: it may be one of another panel.
void ReadSides(LineWalk lines, SideSections& sections, MachineSteps& steps, const TakeSideOperation& take);

enum class SideForm { None, Evolution, Hbd };
// By the size line, and by the names of the sides, their operations and sections.
SideForm SideFormOf(std::string_view text);

} // namespace kv

// The lines of a program as its machine gets them, and the numbers in them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

// Bytes of a line that is still taken apart; no control writes or reads such long ones.
constexpr std::size_t LongestProgramLine = 4096;

// Goes from line to line without copying any. A line of a text ends in LF, in CR LF or in a CR alone; several
// CRs ahead of an LF belong to its end. A byte order mark in front is no part of the first line, and an empty
// line after the last end does not count.
class LineWalk {
  public:
    explicit LineWalk(std::string_view text);
    explicit LineWalk(const std::vector<std::string>& lines) : Parted(&lines) {}
    bool Next(); // false after the last line
    std::string_view Line() const { return Current; }
    std::size_t Number() const { return Count; } // from 1

  private:
    std::string_view Rest, Current;
    const std::vector<std::string>* Parted = nullptr; // lines that came parted already
    std::size_t Count = 0;
};

std::vector<std::string> LinesOf(std::string_view text);
constexpr double LargestPlace = 1e7; // ten kilometres in millimetres: no machine reaches farther
// Of centres and radii: an arc that is all but straight has them far away.
constexpr double LargestRadius = 1e15;
// "-12.5", ".5", "45.", "+3"; a lone point is no number, and what is beyond the largest is none either.
std::optional<double> PlainNumber(std::string_view text, double largest = LargestPlace);
bool IsBlank(char c);
bool IsDecimalDigit(char c);
char CapitalOf(char c); // of ASCII letters alone
std::string CapitalsOf(std::string_view text);
bool SameLetters(std::string_view a, std::string_view b); // small or capital
std::string_view WithoutBlanksAround(std::string_view text);
// Up to `most` characters in capitals, blanks left out: by these lines are known.
std::string HeadOfLine(std::string_view line, std::size_t most);
// "7: G4F2", as MachineSteps names a line; a very long one is cut.
std::string UnreadLine(std::size_t number, std::string_view text);

} // namespace kv

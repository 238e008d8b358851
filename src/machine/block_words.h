// One line of a CNC90, WINNER90 or GENESIS program taken apart: a letter, and what follows up to the next.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kv {

struct BlockWords {
    int Code = -1;                   // 88 of "G88"
    std::string Tool;                // "0171" of "T0171", "01a3", "0205M66"; the letter is small always
    std::optional<double> Diameter;  // "R54=8"
    std::optional<char> DepthLetter; // "Z=a"
    bool EndsProgram = false;        // "M2" alone
    bool Sound = true;

    bool Has(char letter) const { return (Given >> Place(letter) & 1) != 0; }
    bool HasAll(std::string_view letters) const;
    double At(char letter) const { return Numbers[Place(letter)]; }
    double Or(char letter, double other) const { return Has(letter) ? At(letter) : other; }
    bool Chooses(int code) const; // of the words that only choose: "G41", "G90", "G55"

    // These are false for what is given twice already, or is no such word.
    bool SetNumber(char letter, double value);
    bool SetChoice(int code);

  private:
    static std::size_t Place(char letter) { return static_cast<std::size_t>(letter - 'A') & 31; }

    std::array<double, 32> Numbers{};
    std::uint32_t Given = 0;   // letters
    std::uint32_t Choices = 0; // places in the list of such codes
};

// Small and capital letters are the same, a code may have leading zeros, and blanks may stand between words
// and behind their letters. Blanks within a number are not understood: "X100 50" may lack its Y.
BlockWords WordsOfBlock(std::string_view line);

// "G71X600Y400Z18T00N9L6": the words of a panel and no others, whether its numbers are sound or not.
bool LooksLikeCncHeader(std::string_view line);
// "G150(DOOR)A600"
bool IsCncName(std::string_view line);

} // namespace kv

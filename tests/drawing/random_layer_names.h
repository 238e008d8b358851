// Layer names and notes as no designer writes them: words, codes, numbers and stray characters put
// together at random, the same ones for a seed each time. For comparisons of two implementations.
#pragma once

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace kv::test {

class RandomNames {
  public:
    explicit RandomNames(unsigned seed) : Engine(seed) {}

    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(Engine() % limit); }

    std::string Word()
    {
        static const std::vector<std::string> words = {"ROUTE",  "ROUTE",  "ROUTE", "ROUTE",    "ROUTEROUTE",
                                                       "EXCAV",  "EXECA",  "ROTAR", "VBORE",    "HBORE",
                                                       "GROOV",  "GROOVE", "DRILL", "DRILLING", "BORDER",
                                                       "BORDER", "PANEL",  "ROUT",  "X",        ""};
        return words[Below(words.size())];
    }

    std::string Number()
    {
        static const std::vector<std::string> numbers = {
            "",     "",    "0",    "00",    "000",    "1",    "2",    "5",  "7",    "12",
            "18",   "30",  "29.5", "012",   "05",     "1.5",  ".5",   "P5", "18P5", "0P4",
            "12.7", "-3",  "-P5",  "+4",    "1E2",    "3D4",  "5.",   "5E", "5D",   "1.2.3",
            "999",  "100", "6000", "18000", "123456", "7P25", "0.125"};
        return numbers[Below(numbers.size())];
    }

    // One code with its number, at times blanks and underscores around it.
    std::string Parameter()
    {
        static const std::vector<std::string> codes = {
            "FA", "FD", "FR", "LD", "RO", "RI", "PD", "ES", "EX",    "OZ", "XP", "YP",
            "ZR", "BB", "TB", "CB", "SB", "DI", "DG", "DO", "ROZ",   "ZD", "ZA", "ZH",
            "Z",  "Z",  "D",  "D",  "T",  "T",  "S",  "F",  "A",     "B",  "G",  "K",
            "M",  "R",  "L",  "E",  "O",  "P",  "V",  "X",  "ROUTE", "T1", "T12"};
        static const std::vector<std::string> gaps = {"", "", "", "", " ", "_", "__", "  ", " _"};
        return gaps[Below(gaps.size())] + codes[Below(codes.size())] + gaps[Below(gaps.size())] + Number();
    }

    std::string Stray()
    {
        static const std::string characters =
            "ABCDEFGHIKLMNOPRSTUVXYZ0123456789 ._-~@;:\xDF\xC4\xD6\xDC\xEE\xE4";
        return characters.substr(Below(characters.size()), 1);
    }

    // Upper-cased and at most 114 characters without blanks at the end, as a record holds it.
    std::string Layer(bool split = false)
    {
        std::string name = Word();
        if (Below(2) == 0)
            name += Number();
        for (std::size_t pieces = Below(9); pieces > 0; --pieces) {
            if (split && Below(4) == 0)
                name += "$" + (Below(4) == 0 ? Word() : std::string());
            name += Below(6) == 0 ? Stray() : Parameter();
        }
        if (Below(200) == 0)
            name.resize(114 - Below(3), "XZ7"[Below(3)]);
        name = name.substr(0, 114);
        return name.substr(0, name.find_last_not_of(' ') + 1);
    }

    // What a BORDER layer may say beside parameters.
    std::string Border()
    {
        static const std::vector<std::string> flags = {"LL", "UL", "UR",   "LR",  "NO", "OL", "OR",
                                                       "GS", "SS", "OF",   "OF3", "OP", "SQ", "_90",
                                                       "GE", "EV", "SQVH", "Z5",  "_",  " "};
        std::string name = "BORDER";
        for (std::size_t pieces = Below(6); pieces > 0; --pieces)
            name += flags[Below(flags.size())];
        return name.substr(0, name.find_last_not_of(' ') + 1);
    }

    // A note's text: without blanks, in either case, its two-letter codes as typed.
    std::string Note()
    {
        if (Below(3) == 0)
            return {};
        std::string note;
        for (std::size_t pieces = Below(5); pieces > 0; --pieces)
            note += Below(6) == 0 ? Stray() : Parameter();
        std::string text;
        for (const char c : note)
            if (c != ' ')
                text += Below(12) == 0 && c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
        return text;
    }

  private:
    std::mt19937 Engine;
};

} // namespace kv::test

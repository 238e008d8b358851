// The form that programs by panel sides share: sections in braces, in each side operations of words
// "#name=value" that may run over several lines.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kv {

struct SideOperation {
    int Side = 0;                             // of the program
    std::string Code;                         // "W#89"
    std::map<std::string, std::string> Words; // of words given twice the first
    std::string Text;
    std::size_t Line = 0; // where it begins, from 1

    bool Has(const std::string& word) const { return Words.count(word) > 0; }
    // Nothing for a word that is not there or no number.
    std::optional<double> NumberOf(const std::string& word) const;
    double NumberOr(const std::string& word, double other) const;
};

struct SideSections {
    double Unit = 1;                             // millimetres
    double Length = 0, Width = 0, Thickness = 0; // mm
    std::map<int, double> Variables;             // R variables, in the program's unit
    std::vector<SideOperation> Operations;
    std::vector<std::string> Unread;
};

SideSections SectionsOf(const std::vector<std::string>& lines);

} // namespace kv

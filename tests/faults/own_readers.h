// Readers of what a shop keeps: the program index, the saw's cut list, the operator's notes. They are
// written from the formats alone and share nothing with the program.
#pragma once

#include <cctype>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fault_test {

struct IndexRow {
    std::string Name;  // without the blanks behind it
    std::string Bytes; // the whole record
};

struct IndexFile {
    bool Whole = false; // records of 82 bytes that end in CR LF and have a name
    std::vector<IndexRow> Rows;
};

inline IndexFile ReadIndex(std::string_view bytes)
{
    constexpr std::size_t Width = 82, NameWidth = 12;
    IndexFile index;
    if (bytes.size() % Width != 0)
        return index;
    for (; !bytes.empty(); bytes.remove_prefix(Width)) {
        const std::string_view record = bytes.substr(0, Width);
        std::string name(record.substr(0, NameWidth));
        while (!name.empty() && name.back() == ' ')
            name.pop_back();
        if (name.empty() || name.find('\0') != std::string::npos || record.substr(Width - 2) != "\r\n")
            return index;
        index.Rows.push_back({name, std::string(record)});
    }
    index.Whole = true;
    return index;
}

// Below the folder of the index: blanks leave the name, its first letter is the folder, eight more the
// file, the rest its ending; a name of one letter stands in the folder "00".
inline std::string PlaceOfProgram(const std::string& name)
{
    std::string letters;
    for (const char c : name) {
        if (c != ' ')
            letters += c;
    }
    if (letters.size() < 2)
        return "SRG/00/" + letters;
    std::string place = "SRG/" + letters.substr(0, 1) + "/" + letters.substr(1, 8);
    if (letters.size() > 9)
        place += "." + letters.substr(9);
    return place;
}

struct CutList {
    bool Whole = false; // the head counts the rows, and every line is ended
    std::vector<std::string> Rows;
};

inline std::vector<std::string> LinesOf(std::string_view text, std::string_view end = "\r\n")
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t at = text.find(end);
        lines.emplace_back(text.substr(0, at));
        text.remove_prefix(at == std::string_view::npos ? text.size() : at + end.size());
    }
    return lines;
}

inline CutList ReadCutList(std::string_view bytes)
{
    CutList list;
    std::vector<std::string> lines = LinesOf(bytes);
    if (lines.empty() || !bytes.ends_with("\r\n"))
        return list;
    const std::string head = lines.front();
    list.Rows.assign(lines.begin() + 1, lines.end());
    list.Whole = head == "2.00, " + std::to_string(list.Rows.size()) + ",M";
    return list;
}

// Whether all lines stand in the text, in their order, with others between them or not.
inline bool HoldsLinesInOrder(std::string_view text, const std::vector<std::string>& wanted)
{
    std::size_t found = 0;
    for (const std::string& line : LinesOf(text)) {
        if (found < wanted.size() && line == wanted[found])
            ++found;
    }
    return found == wanted.size();
}

} // namespace fault_test

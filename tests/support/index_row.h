// A row of the program index as bytes, for tests that compare the index whole. Relies on nothing of the
// program.
#pragma once

#include <cstring>
#include <string>

namespace index_row {

struct Row {
    const char* Name;
    const char* Description;
    int Flags;
    char Unit;
    float Length, Width, Thickness;
    int Sides;
    char Kind;
};

inline std::string Bytes(const Row& row, const std::string& date)
{
    std::string bytes(82, '\0');
    const auto put = [&](std::size_t at, std::size_t width, std::string text) {
        text.resize(width, ' ');
        bytes.replace(at, width, text);
    };
    put(0, 12, row.Name);
    put(12, 1, " ");
    put(13, 25, row.Description);
    put(38, 8, date);
    put(46, 1, " ");
    bytes[47] = static_cast<char>(row.Flags);
    bytes[53] = row.Unit;
    std::memcpy(&bytes[54], &row.Length, 4);
    std::memcpy(&bytes[58], &row.Width, 4);
    std::memcpy(&bytes[62], &row.Thickness, 4);
    bytes[70] = 1;
    bytes[72] = static_cast<char>(row.Sides | 0xA0);
    bytes[74] = row.Kind;
    bytes[77] = '\xA0';
    bytes[79] = 'N';
    put(80, 2, "\r\n");
    return bytes;
}

} // namespace index_row

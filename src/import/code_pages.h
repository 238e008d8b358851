// The code pages that a drawing's header may name, as letters of Unicode.
#pragma once

#include <cstdint>
#include <string_view>

namespace kv {

// Of one byte for a letter: what the bytes from 0x80 on mean. 0xFFFD: nothing.
struct CodePage {
    std::string_view Name;
    std::uint16_t Letters[128];
};

enum class PageKind { Western, Table, DoubleByte, Utf8, Unknown };
struct DrawnPage {
    PageKind Kind = PageKind::Western;
    const CodePage* Table = nullptr;              // of PageKind::Table
    bool (*IsLead)(unsigned char byte) = nullptr; // of DoubleByte: whether another byte belongs to it
};
// By the name behind $DWGCODEPAGE, in any case; an empty name is Western (CP1252).
DrawnPage FindCodePage(std::string_view name);

} // namespace kv

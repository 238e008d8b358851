// Brings the letters of a drawing to CP1252: by its version, by its code page, and "\U+XXXX".
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "platform/numbers.h"

namespace kv {

// What a header says of a drawing's texts.
struct DrawnLetters {
    int Version = 0;      // of $ACADVER: 1009, 1021, ...; 0: none
    std::string CodePage; // of $DWGCODEPAGE
};
DrawnLetters LettersOfHeader(std::string_view text);

struct LettersTaken {
    bool IsChanged = false;    // a text was rewritten
    Long Foreign = 0;          // letters that CP1252 lacks; each became the nearest
    char32_t FirstForeign = 0; // of them
    std::string FirstNearest;
    std::set<std::string> Layers; // names, as they are read, that such a letter was in
    std::string UnknownPage;      // that the header names and nobody knows; CP1252 was taken
    bool IsNoUtf8 = false;        // the version says UTF-8, and the bytes are none; the code page was taken
};
// Rewrites the text in place, line by line: each line stays the line that it was. A file without a version
// and a code page whose bytes are UTF-8 from end to end is taken for that.
LettersTaken TakeLetters(std::string& text);
// Whether a file's first bytes are a mark of Unicode.
bool HasUnicodeMark(std::string_view head);
// UTF-8 of a file in UTF-16 with its mark, by that order of bytes; the mark goes. Any other text stays.
void DropUnicodeMark(std::string& text);

} // namespace kv

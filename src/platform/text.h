// Text as bytes in the Windows ANSI code page (CP1252). Positions count from 1.
#pragma once

#include <string>
#include <string_view>

#include "platform/numbers.h"

namespace kv {

// Upper and lower case of CP1252 (a-umlaut becomes A-umlaut and so on).
char UpperChar(char c);
char LowerChar(char c);
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);
bool EqualIgnoringCase(std::string_view a, std::string_view b);

// Blanks only; tabs and line ends stay.
std::string_view TrimLeft(std::string_view text);
std::string_view TrimRight(std::string_view text);
std::string_view Trim(std::string_view text);

bool Holds(std::string_view text, std::string_view part);
bool BeginsWith(std::string_view text, std::string_view head);

// Text from `position` (1-based) on, at most `length` characters; empty behind the end or at 0.
std::string_view Mid(std::string_view text, Long position, std::size_t length = std::string_view::npos);
// First place (1-based) of `part` at or behind `position`, 0 when there is none. An empty part is nowhere.
Long Find(Long position, std::string_view text, std::string_view part);
// First place (1-based) at or behind `position` of one of `characters`, 0 when there is none.
Long FindAnyOf(Long position, std::string_view text, std::string_view characters);

// The text from `position` to the next character that is one of `delimiters`; moves `position`
// behind that delimiter. At the end of the text gives what is left and sets `position` to 0.
// Called with position 0 it gives an empty text.
std::string_view ParseString(Long& position, std::string_view text, std::string_view delimiters);
// ParseString with "= ", repeated until the token is not empty or `position` is 0.
std::string_view NextToken(Long& position, std::string_view text);

// Without blanks and NUL bytes, also inside the text.
std::string Compact(std::string_view text);
// The writers' word for the same: NUL to blank, then all blanks out.
inline std::string StripBlanks(std::string_view text)
{
    return Compact(text);
}
void ReplaceChar(std::string& text, char old, char with);
Long InCount(std::string_view text, char c);
// Position of the last occurrence, 0 if none.
Long FindLast(std::string_view text, char c);
// Keeps the codes 43 to 58, 64 to 122 and the blank; trims; empties the argument.
std::string CleanText(std::string& text);
// "000" and the text, its last four characters.
std::string PadNumber(std::string_view text);

// Left part, cut or padded with blanks to `width`.
std::string Padded(std::string_view text, std::size_t width);

// Edges of the program only. What CP1252 does not hold becomes "?", which no file name can carry.
std::string AnsiFromUtf8(std::string_view utf8);
// With the real names of files that have stand-ins (platform/stand_ins). For people, not for calls of the
// host.
std::string Utf8FromAnsi(std::string_view ansi);
std::string HostFromAnsi(std::string_view ansi);  // the same for calls of the host, whatever its names hold
std::string Utf8OfLetters(std::string_view ansi); // letter by letter alone
char AnsiOfLetter(char32_t letter);               // "?": CP1252 does not hold it
// Takes one letter off a text in UTF-8. A byte that belongs to none is one of its own, U+FFFD.
char32_t TakeLetter(std::string_view utf8, std::size_t& at);

} // namespace kv

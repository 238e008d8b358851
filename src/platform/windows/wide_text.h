// Between the program's CP1252 and the wide text of the Windows calls.
#pragma once

#include <string>
#include <string_view>

namespace kv {

std::wstring WideFromUtf8(std::string_view utf8);
std::wstring WideFromAnsi(std::string_view ansi);
std::string Utf8FromWide(std::wstring_view wide);
std::string AnsiFromWide(std::wstring_view wide);
// With its drive and without "." and "..", however long; empty when the system knows no such path.
std::wstring FullWidePath(const std::wstring& path);
// A backslash path for a call of the system. The calls take 260 characters only, and folders 248, unless
// the path says that it is longer. Empty when the path leads nowhere.
std::wstring WidePath(std::string_view path);
std::string SystemWords(unsigned long error); // the system's text for an error, without its line end

} // namespace kv

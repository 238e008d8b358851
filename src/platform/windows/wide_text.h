// Between the program's CP1252 and the wide text of the Windows calls.
#pragma once

#include <string>
#include <string_view>

namespace kv {

std::wstring WideFromUtf8(std::string_view utf8);
std::wstring WideFromAnsi(std::string_view ansi);
std::string Utf8FromWide(std::wstring_view wide);
std::string AnsiFromWide(std::wstring_view wide);
// Of a name that the system gives, or a path: with stand-ins for what CP1252 does not hold. A name that is no
// text, half a pair of UTF-16, holds "?", which no path leads to.
std::string NameFromWide(std::wstring_view name);
std::string PathFromWide(std::wstring_view path);
// With its drive and without "." and "..", however long; empty when the system knows no such path.
std::wstring FullWidePath(const std::wstring& path);
// A host's path for a call of the system. The calls take 260 characters only, and folders 248, unless
// the path says that it is longer.
std::wstring WideCallPath(std::string_view host);
// The same of a backslash path. Empty when the path leads nowhere.
std::wstring WidePath(std::string_view path);
std::string SystemWords(unsigned long error); // the system's text for an error, without its line end

} // namespace kv

// Between the program's CP1252 and the wide text of the Windows calls.
#pragma once

#include <string>
#include <string_view>

namespace kv {

std::wstring WideFromAnsi(std::string_view ansi);
std::string AnsiFromWide(std::wstring_view wide);
std::string SystemWords(unsigned long error); // the system's text for an error, without its line end

} // namespace kv

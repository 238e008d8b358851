// CP1252 to the wide text of the Windows calls and back, by way of the converters in platform/text. In texts
// what CP1252 does not hold becomes "?", which no Windows file name can carry; names get stand-ins.
#include "platform/windows/wide_text.h"

#include <array>

#include <windows.h>

#include "platform/paths.h"
#include "platform/stand_ins.h"
#include "platform/text.h"

namespace kv {

std::wstring WideFromUtf8(std::string_view utf8)
{
    const int length = static_cast<int>(utf8.size());
    const int needed = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(needed), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), needed);
    return wide;
}

std::wstring WideFromAnsi(std::string_view ansi)
{
    return WideFromUtf8(Utf8FromAnsi(ansi));
}

std::string Utf8FromWide(std::wstring_view wide)
{
    const int length = static_cast<int>(wide.size());
    const int needed = WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), needed, nullptr, nullptr);
    return utf8;
}

std::string AnsiFromWide(std::wstring_view wide)
{
    return AnsiFromUtf8(Utf8FromWide(wide));
}

std::string NameFromWide(std::wstring_view name)
{
    const std::string utf8 = Utf8FromWide(name);
    return WideFromUtf8(utf8) == name ? NameFromUtf8(utf8) : "?" + AnsiFromUtf8(utf8);
}

std::string PathFromWide(std::wstring_view path)
{
    return PathFromUtf8(Utf8FromWide(path));
}

std::wstring FullWidePath(const std::wstring& path)
{
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

std::wstring WideCallPath(std::string_view host)
{
    constexpr std::size_t LongestPlain = 220; // a copy written aside has a longer name than its file
    std::wstring wide = WideFromUtf8(host);
    if (wide.size() <= LongestPlain || wide.starts_with(L"\\\\?\\"))
        return wide;
    const std::wstring full = FullWidePath(wide);
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

std::wstring WidePath(std::string_view path)
{
    return WideCallPath(ToHostPath(path));
}

std::string SystemWords(unsigned long error)
{
    std::array<wchar_t, 512> words{};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        error, 0, words.data(), static_cast<DWORD>(words.size()), nullptr);
    std::string text = AnsiFromWide(std::wstring_view(words.data(), length));
    while (!text.empty() && (text.back() == '\r' || text.back() == '\n' || text.back() == ' '))
        text.pop_back();
    return text;
}

} // namespace kv

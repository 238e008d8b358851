// Small settings of a person, in the registry of the person at the machine: one key per application
// and section, texts as values, where the programs of the shops keep such settings.
#include "platform/user_store.h"

#include <windows.h>

#include "platform/windows/host_files.h"
#include "platform/windows/wide_text.h"

namespace kv {

namespace {

constexpr const char* StoreFolder = "Software\\VB and VBA Program Settings\\";

std::wstring StoreKey(std::string_view application, std::string_view section)
{
    return WideFromAnsi(StoreFolder) + WideFromAnsi(application) + L"\\" + WideFromAnsi(section);
}

// Why a value could not be read, if so: what this process holds in its place is not the person's.
FileOutcome WhyUnread;

FileOutcome OutcomeOfKey(LSTATUS status)
{
    return HostOutcome(static_cast<unsigned long>(status));
}

} // namespace

std::string GetUserSetting(std::string_view application, std::string_view section, std::string_view key,
                           std::string_view missing)
{
    constexpr std::size_t LongestValue = 4096;
    std::wstring value(LongestValue, L'\0');
    DWORD bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
    const LSTATUS status =
        RegGetValueW(HKEY_CURRENT_USER, StoreKey(application, section).c_str(), WideFromAnsi(key).c_str(),
                     RRF_RT_REG_SZ, nullptr, value.data(), &bytes);
    const bool noText = status == ERROR_FILE_NOT_FOUND || status == ERROR_UNSUPPORTED_TYPE; // known
    if (status != ERROR_SUCCESS && !noText)
        WhyUnread = OutcomeOfKey(status);
    if (status != ERROR_SUCCESS)
        return std::string(missing);
    return AnsiFromWide(value.c_str()); // up to the zero that the registry keeps at the end
}

FileOutcome SaveUserSetting(std::string_view application, std::string_view section, std::string_view key,
                            std::string_view value)
{
    if (!WhyUnread.Ok())
        return {WhyUnread.Number, "could not be read: " + WhyUnread.Cause};
    const std::wstring wide = WideFromAnsi(value);
    const DWORD bytes = static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t));
    const LSTATUS status = RegSetKeyValueW(HKEY_CURRENT_USER, StoreKey(application, section).c_str(),
                                           WideFromAnsi(key).c_str(), REG_SZ, wide.c_str(), bytes);
    return status == ERROR_SUCCESS ? FileOutcome{} : OutcomeOfKey(status);
}

std::string UserStoreName()
{
    return std::string("HKEY_CURRENT_USER\\") + StoreFolder;
}

} // namespace kv

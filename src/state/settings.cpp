// The settings of the program in memory, and single keys of KV90.INI in the program's folder. The
// loads and the save of whole sections stand in settings_exchange.cpp. Relies on the INI reader;
// leaves the one Settings block that every pass reads.
#include "state/settings.h"

#include <chrono>
#include <optional>
#include <thread>
#include <utility>

#include "platform/file_lock.h"
#include "platform/ini_file.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/settings_ini.h"

namespace kv {

Settings Config;
FileOutcome SettingsFault, StoringFault;
std::string ExeFolder;
std::string IniPath;
constinit const std::string_view ProductVersion = KORVANTI_VERSION;

namespace {

constexpr std::string_view IniName = "KV90.INI";
constexpr std::string_view MissingMark = "END.-"; // no value can be this text
constexpr std::size_t ValueBuffer = 80;           // so a value is cut at 79 characters

constexpr std::chrono::milliseconds LongestHold{2000}, BetweenTries{10}; // another process stores some ms

// Of the reading that the loads share; none outside of one.
std::optional<std::string> SharedText;
std::string ToldUnkept; // the last line about settings that are not kept

bool ReadText(std::string& text)
{
    const FileAnswer answer = ReadProfileText(IniPath, text);
    if (answer.Is == Presence::CannotTell)
        SettingsFault = answer.Why;
    return answer.Is != Presence::CannotTell;
}

// No events meanwhile: a setting that is changed by one of them would be stored first and written over.
LockAnswer WaitForLock(FileLock& lock)
{
    const auto end = std::chrono::steady_clock::now() + LongestHold;
    LockAnswer answer = lock.TryLock(IniPath);
    while (answer.Is == LockState::Held && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(BetweenTries);
        answer = lock.TryLock(IniPath);
    }
    return answer;
}

// Where nobody can lock, nobody else stores by this rule either.
FileOutcome StoreEntries(std::string_view section, const std::vector<ProfileEntry>& entries)
{
    FileLock lock;
    const LockAnswer answer = WaitForLock(lock);
    if (answer.Is == LockState::Held)
        return {ErrorPermission, "in use by " + answer.Holder};
    return WriteProfileStrings(section, entries, IniPath);
}

} // namespace

SettingsReading::SettingsReading()
{
    SettingsFault = {};
    std::string text;
    if (ReadText(text))
        SharedText = std::move(text);
}

SettingsReading::~SettingsReading()
{
    SharedText.reset();
}

std::string VersionAndCommit()
{
    const std::string version(ProductVersion);
    return ProductCommit.empty() ? version : version + " (" + std::string(ProductCommit) + ")";
}

void SetExeFolder(std::string_view folder)
{
    ExeFolder = WithBackslash(folder);
    IniPath = ExeFolder + std::string(IniName);
    SettingsFault = {}; // of another file
    StoringFault = {};
    ToldUnkept.clear();
}

// Written under another spelling than it is read; sections are matched without case, so it is one.
void PutConfigValue(std::string_view key, std::string_view value)
{
    PutIniValues("ConFiguration", {{std::string(key), std::string(value)}});
}

std::string GetConfigValue(std::string_view key)
{
    return GetIniValue("Configuration", key);
}

std::string GetIniValue(std::string_view section, std::string_view key)
{
    std::vector<ProfileEntry> entries = {{std::string(key), {}}};
    return GetIniValues(section, entries) ? entries[0].Value : std::string();
}

// Within a shared reading that failed nothing is read again: one half of the settings from the file and
// one by design would be worse than none.
bool GetIniValues(std::string_view section, std::vector<ProfileEntry>& entries)
{
    std::string own;
    if (!SharedText && (!SettingsFault.Ok() || !ReadText(own)))
        return false;
    TakeProfileStrings(SharedText ? *SharedText : own, section, entries, MissingMark, ValueBuffer);
    for (ProfileEntry& entry : entries) {
        if (entry.Value == MissingMark)
            entry.Value.clear();
    }
    return true;
}

void PutIniValues(std::string_view section, const std::vector<ProfileEntry>& entries)
{
    if (!SettingsFault.Ok())
        return;
    StoringFault = StoreEntries(section, entries);
    if (StoringFault.Ok())
        ToldUnkept.clear();
    else
        TellUnkept(StoringFault);
}

MessageLine UnkeptLine(const FileOutcome& outcome)
{
    return {Message::SettingsNotKept, {{"file", ShownPath(IniPath)}, {"cause", outcome.Cause}}};
}

void TellUnkept(const FileOutcome& outcome)
{
    MessageLine line = UnkeptLine(outcome);
    const std::string text = TextOf(line);
    if (text == ToldUnkept)
        return;
    ToldUnkept = text;
    TellAtOnce(line.Number, std::move(line.Values));
}

bool IsTrueText(std::string_view text)
{
    return UpperCase(text) == "TRUE";
}

void SetHbdAvailable(bool flag)
{
    Config.HbdAvailable = flag;
}

Int SelectedSystem()
{
    if (Config.GenesisEV)
        return 2;
    return Config.Genesis ? 1 : 0;
}

std::string& SourcePath(int system)
{
    if (system == 2)
        return Config.SourcePathEV;
    return system == 1 ? Config.SourcePathGen : Config.SourcePath90;
}

std::string& DestinationPath(int system)
{
    if (system == 2)
        return Config.DestinationPathEV;
    return system == 1 ? Config.DestinationPathGen : Config.DestinationPath90;
}

std::string CurrentSourcePath()
{
    return SourcePath(SelectedSystem());
}

} // namespace kv

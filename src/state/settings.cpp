// The settings of the program in memory, and single keys of KV90.INI in the program's folder. The
// loads and the save of whole sections stand in settings_exchange.cpp. Relies on the INI reader;
// leaves the one Settings block that every pass reads.
#include "state/settings.h"

#include "platform/ini_file.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/settings_ini.h"

namespace kv {

Settings Config;
std::string ExeFolder;
std::string IniPath;
constinit const std::string_view ProductVersion = KORVANTI_VERSION;

namespace {

constexpr std::string_view IniName = "KV90.INI";
constexpr std::string_view MissingMark = "END.-"; // no value can be this text
constexpr std::size_t ValueBuffer = 80;           // so a value is cut at 79 characters

} // namespace

std::string VersionAndCommit()
{
    const std::string version(ProductVersion);
    return ProductCommit.empty() ? version : version + " (" + std::string(ProductCommit) + ")";
}

void SetExeFolder(std::string_view folder)
{
    ExeFolder = WithBackslash(folder);
    IniPath = ExeFolder + std::string(IniName);
}

// Written under another spelling than it is read; sections are matched without case, so it is one.
void PutConfigValue(std::string_view key, std::string_view value)
{
    WriteProfileString("ConFiguration", key, value, IniPath); // nobody is told of a failure
}

std::string GetConfigValue(std::string_view key)
{
    return GetIniValue("Configuration", key);
}

std::string GetIniValue(std::string_view section, std::string_view key)
{
    std::vector<ProfileEntry> entries = {{std::string(key), {}}};
    GetIniValues(section, entries);
    return entries[0].Value;
}

void GetIniValues(std::string_view section, std::vector<ProfileEntry>& entries)
{
    ReadProfileStrings(section, entries, MissingMark, ValueBuffer, IniPath);
    for (ProfileEntry& entry : entries) {
        if (entry.Value == MissingMark)
            entry.Value.clear();
    }
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

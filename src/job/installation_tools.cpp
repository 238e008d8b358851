#include "job/installation_tools.h"

#include <string_view>

#include "platform/files.h"
#include "platform/paths.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr std::string_view HeadTable = "DT.Par", ShopTable = "Tools.cfg";

std::string TextOfTable(std::string_view name, std::vector<std::string>& faults)
{
    const std::string path = WithBackslash(ExeFolder) + std::string(name);
    std::string text;
    if (const FileAnswer answer = ReadIfThere(path, text); answer.Is == Presence::CannotTell)
        faults.push_back(ShownPath(path) + ": " + answer.Why.Cause);
    return text;
}

} // namespace

InstallationTools ToolsOfInstallation()
{
    InstallationTools known;
    known.Tools.Head = ReadHeadTools(TextOfTable(HeadTable, known.Faults));
    std::vector<std::string> lines;
    known.Tools.Shop = ReadShopTools(TextOfTable(ShopTable, known.Faults), lines);
    for (const std::string& line : lines)
        known.Faults.push_back(std::string(ShopTable) + ", " + line);
    return known;
}

} // namespace kv

// The tools of the installation, for programs that are read back.
#pragma once

#include <string>
#include <vector>

#include "machine/tool_table.h"

namespace kv {

struct InstallationTools {
    ToolTable Tools;
    std::vector<std::string> Faults; // of its tables, with their files: "Tools.cfg, line 3: ..."
};

// From DT.Par and Tools.cfg of the program's folder. Of a table that is not there, or cannot be read, no tool
// is known; only the latter is a fault.
InstallationTools ToolsOfInstallation();

} // namespace kv

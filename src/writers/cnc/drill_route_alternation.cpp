// Moves drillings between the tool changes of the router, so that the machine drills while a router
// tool is being changed. Relies on the finished lines; leaves as many lines as there were.
#include <cmath>

#include "platform/text.h"
#include "writers/cnc/cnc_writer.h"

namespace kv {

namespace {

enum class LineRole : unsigned char { Other, Drilling, ToolChange };

// "G18" catches G183 and G184 too.
bool IsDrilling(std::string_view line)
{
    return BeginsWith(line, "G81") || BeginsWith(line, "G18");
}

// The number behind the first "T"; a tool in letter form gives its letter's number (a is 10).
double ToolKey(std::string_view line)
{
    const Long at = Find(1, line, "T");
    if (at == 0)
        return 0;
    std::string tool(Mid(line, at + 1));
    constexpr std::size_t Letter = 2; // behind the two group digits
    if (tool.size() > Letter && static_cast<unsigned char>(tool[Letter]) > 0x60)
        tool.replace(Letter, 1, WholeText(static_cast<unsigned char>(tool[Letter]) - 0x57));
    return Val(tool);
}

struct LineRoles {
    std::vector<LineRole> Role;
    std::vector<ProgramLine> Drillings;
    Long ToolChanges = 0;
};

LineRoles FindRoles(const std::vector<ProgramLine>& lines)
{
    LineRoles roles;
    roles.Role.assign(lines.size(), LineRole::Other);
    double lastKey = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (IsDrilling(lines[i].Text)) {
            roles.Role[i] = LineRole::Drilling;
            roles.Drillings.push_back(lines[i]);
            continue;
        }
        if (!BeginsWith(lines[i].Text, "G88"))
            continue;
        const double key = ToolKey(lines[i].Text);
        if (key != lastKey && lastKey > 0) {
            roles.Role[i] = LineRole::ToolChange;
            ++roles.ToolChanges;
        }
        lastKey = key;
    }
    return roles;
}

} // namespace

void AlternateDrillingsAndRoutes(std::vector<ProgramLine>& lines)
{
    const LineRoles roles = FindRoles(lines);
    if (roles.Drillings.empty() || roles.ToolChanges == 0)
        return;
    const std::size_t drillings = roles.Drillings.size();
    const std::size_t batch = static_cast<std::size_t>(
        std::nearbyint(static_cast<double>(drillings) / static_cast<double>(roles.ToolChanges)));

    std::vector<ProgramLine> rebuilt;
    std::size_t taken = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (roles.Role[i] == LineRole::Drilling)
            continue;
        for (std::size_t n = 0; roles.Role[i] == LineRole::ToolChange && n < batch && taken < drillings; ++n)
            rebuilt.push_back(roles.Drillings[taken++]);
        rebuilt.push_back(lines[i]);
    }
    // Drillings that no batch took are dropped, and for each of them one line at the end keeps its old
    // text, so the last line stands there again.
    for (std::size_t i = 0; i < rebuilt.size(); ++i)
        lines[i] = std::move(rebuilt[i]);
}

} // namespace kv

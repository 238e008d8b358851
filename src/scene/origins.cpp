// By the lines of the program alone: an item is all that its lines come from.
#include "scene/origins.h"

#include <algorithm>
#include <set>

#include "platform/paths.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr std::size_t MostNamed = 3; // entities in one sentence

// Each once, in the order of the lines.
std::vector<std::uint32_t> EntitiesOfItem(const SceneItem& item, const std::vector<LineOrigin>& lines)
{
    std::vector<std::uint32_t> entities;
    std::set<std::uint32_t> known;
    auto at = std::lower_bound(lines.begin(), lines.end(), item.Line,
                               [](const LineOrigin& each, std::size_t line) { return each.Line < line; });
    for (; at != lines.end() && at->Line <= std::max(item.Line, item.LastLine); ++at)
        if (known.insert(at->Entity).second)
            entities.push_back(at->Entity);
    return entities;
}

} // namespace

const ProgramOrigins* OriginsOfProgram(const DrawingOrigins& origins, std::string_view path)
{
    for (const ProgramOrigins& program : origins.Programs)
        if (EqualIgnoringCase(FileNameOf(program.Path), FileNameOf(path)))
            return &program;
    return nullptr;
}

void NameOrigins(Scene& scene, const DrawingOrigins& origins, const ProgramOrigins& program)
{
    for (SceneItem& item : scene.Items) {
        const std::vector<std::uint32_t> entities = EntitiesOfItem(item, program.Lines);
        for (std::size_t i = 0; i < entities.size(); ++i) {
            const OriginEntity& entity = origins.Entities[entities[i]];
            item.DrawnLines.push_back(entity.Line);
            if (i < MostNamed)
                item.From += (i > 0 ? "; " : "") + entity.Text;
        }
        if (entities.size() > MostNamed)
            item.From += "; and " + std::to_string(entities.size() - MostNamed) + " more";
    }
}

} // namespace kv

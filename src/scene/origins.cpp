// By the lines of the program alone: an item is all that its lines come from.
#include "scene/origins.h"

#include <algorithm>
#include <set>
#include <utility>

#include "platform/paths.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr std::size_t MostNamed = 3; // kinds and layers in one sentence

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

// "CIRCLE on VBORE_D5, line 340, handle 2A", or "6 LINE on ROUTE1, the first at line 200".
std::string TextOf(const OriginEntity& first, std::size_t count)
{
    std::string text = count > 1 ? std::to_string(count) + " " : "";
    text += first.What + (count > 1 ? ", the first at line " : ", line ") + std::to_string(first.Line);
    return first.Handle.empty() ? text : text + ", handle " + first.Handle;
}

// Those of one kind and layer together.
std::string TextOf(const std::vector<const OriginEntity*>& entities)
{
    std::vector<std::pair<const OriginEntity*, std::size_t>> kinds;
    for (const OriginEntity* const entity : entities) {
        const auto kind =
            std::ranges::find_if(kinds, [&](const auto& known) { return known.first->What == entity->What; });
        if (kind == kinds.end())
            kinds.emplace_back(entity, 1);
        else
            ++kind->second;
    }
    std::string text;
    for (std::size_t i = 0; i < std::min(kinds.size(), MostNamed); ++i)
        text += (i > 0 ? "; " : "") + TextOf(*kinds[i].first, kinds[i].second);
    return kinds.size() > MostNamed ? text + "; and others" : text;
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
        std::vector<const OriginEntity*> entities;
        for (const std::uint32_t entity : EntitiesOfItem(item, program.Lines)) {
            entities.push_back(&origins.Entities[entity]);
            item.DrawnLines.push_back(entities.back()->Line);
        }
        item.From = TextOf(entities);
    }
}

} // namespace kv

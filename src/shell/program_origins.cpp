// Takes the lines from the trace that the writers leave; entities that give no line are left out.
#include "shell/program_origins.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>

#include "platform/text.h"
#include "state/drawn_entities.h"
#include "writers/program_lines.h"

namespace kv {

namespace {

DrawingOrigins Taken;

OriginEntity OriginOf(Long drawn)
{
    return {static_cast<std::size_t>(DrawnEntities[drawn].Line),
            Utf8FromAnsi(DrawnKindOf(drawn) + " on " + DrawnLayerOf(drawn)), Utf8FromAnsi(HandleOf(drawn))};
}

} // namespace

std::string EntityText(Long drawn)
{
    const OriginEntity entity = OriginOf(drawn);
    const std::string text = entity.What + ", line " + std::to_string(entity.Line);
    return entity.Handle.empty() ? text : text + ", handle " + entity.Handle;
}

void ForgetOrigins()
{
    Taken = {};
}

DrawingOrigins OriginsOfRun()
{
    return std::exchange(Taken, {});
}

void TakeOrigins()
{
    DrawingOrigins& origins = Taken = {};
    std::map<Long, std::uint32_t> numbers; // of Entities, by the entity as it is drawn
    const auto numberOf = [&](Long drawn) {
        const auto [found, isNew] = numbers.try_emplace(drawn, static_cast<std::uint32_t>(numbers.size()));
        if (isNew)
            origins.Entities.push_back(OriginOf(drawn));
        return found->second;
    };
    for (const ProgramTrace& trace : ProgramTraces) {
        ProgramOrigins& program = origins.Programs.emplace_back();
        program.Path = trace.Path;
        if (trace.BackEdge >= 1 && trace.BackEdge <= 4)
            program.BackEdge = static_cast<Plane>(trace.BackEdge);
        for (std::size_t line = 0; line < trace.Drawn.size(); ++line)
            for (const Long drawn : EntitiesOf(trace.Drawn[line]))
                program.Lines.push_back({static_cast<std::uint32_t>(line + 1), numberOf(DrawnAs(drawn))});
    }
}

} // namespace kv

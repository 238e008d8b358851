// Sets of entities, kept until the next drawing. Relies on numbers that the reader gave.
#include "state/drawn_entities.h"

#include <algorithm>

namespace kv {

RecordArray<DrawnEntity> DrawnEntities;

namespace {

std::vector<std::vector<Long>> Sets; // that of number -1 first

void AppendEntities(Long drawn, std::vector<Long>& entities)
{
    if (drawn > 0) {
        entities.push_back(drawn);
    } else if (drawn < 0) {
        const std::vector<Long>& set = Sets[static_cast<std::size_t>(-drawn - 1)];
        entities.insert(entities.end(), set.begin(), set.end());
    }
}

} // namespace

void ForgetDrawnEntities()
{
    DrawnEntities.Clear();
    Sets.clear();
}

std::vector<Long> EntitiesOf(std::span<const Long> drawn)
{
    std::vector<Long> entities;
    for (const Long number : drawn)
        AppendEntities(number, entities);
    std::sort(entities.begin(), entities.end());
    entities.erase(std::unique(entities.begin(), entities.end()), entities.end());
    return entities;
}

std::vector<Long> EntitiesOf(Long drawn)
{
    return EntitiesOf(std::span(&drawn, 1));
}

Long DrawnTogether(std::span<const Long> drawn)
{
    std::vector<Long> entities = EntitiesOf(drawn);
    if (entities.size() < 2)
        return entities.empty() ? 0 : entities.front();
    Sets.push_back(std::move(entities));
    return -static_cast<Long>(Sets.size());
}

Long DrawnTogether(Long drawn, Long other)
{
    if (drawn == other || other == 0)
        return drawn;
    if (drawn == 0)
        return other;
    const Long both[] = {drawn, other};
    return DrawnTogether(both);
}

} // namespace kv

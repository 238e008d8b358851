// Sets of entities, kept until the next drawing. Relies on numbers that the reader gave.
#include "state/drawn_entities.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"
#include "state/drawn_names.h"
#include "state/run.h"

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

void NameDrawnEntities()
{
    Text<10> kind; // neighbours mostly share a kind
    Long kindNumber = 0;
    for (const DxfEntity& entity : Entities) {
        DrawnEntity& drawn = DrawnEntities[entity.Drawn];
        if (entity.Drawn == 0 || drawn.Kind != 0)
            continue;
        if (!(entity.Kind == kind)) {
            kind = entity.Kind;
            kindNumber = NumberOfName(kind.Trimmed());
        }
        drawn.Kind = entity.KindName != 0 ? entity.KindName : kindNumber;
        drawn.Layer = entity.LayerName;
    }
}

// Entities of one name mostly have one state: the last one of the name is asked first.
void NameLayerStates()
{
    std::vector<Long> lastOfName; // entities, by the number of their name
    for (Long i = 1; i <= Entities.Last(); ++i) {
        const DxfEntity& entity = Entities[i];
        const auto name = static_cast<std::size_t>(entity.LayerName);
        if (name >= lastOfName.size())
            lastOfName.resize(name + 1);
        const Long last = std::exchange(lastOfName[name], i);
        Long number = 0;
        if (last != 0 && Entities[last].Layer == entity.Layer) {
            number = DrawnEntities[Entities[last].Drawn].State;
        } else {
            number = NumberOfName(entity.Layer.Trimmed());
            NoteDrawnLayer(entity.Layer.Trimmed(), entity.LayerName);
        }
        DrawnEntities[entity.Drawn].State = number; // that of number 0 is nobody's
        DrawnEntities[entity.Drawn].Named = entity.LayerName;
    }
}

Long WholeOf(Long drawn)
{
    const Long owner = DrawnEntities[drawn].Owner;
    return owner != 0 ? owner : drawn;
}

Long DrawnAs(Long drawn)
{
    const Long whole = WholeOf(drawn);
    const Long first = DrawnEntities[whole].CopyOf;
    return first != 0 ? first : whole;
}

Long DrawnCopies::Of(Long drawn)
{
    if (drawn <= 0)
        return drawn;
    if (drawn == Last) // the records of a lightweight polyline are one entity
        return CopyOfLast;
    DrawnEntity copy = DrawnEntities[drawn];
    if (copy.Owner != 0 && copy.Owner == Whole)
        copy.Owner = CopyOfWhole;
    if (copy.CopyOf == 0)
        copy.CopyOf = drawn;
    DrawnEntities.Append(copy);
    Last = drawn;
    CopyOfLast = DrawnEntities.Last();
    if (copy.Owner == 0) {
        Whole = Last;
        CopyOfWhole = CopyOfLast;
    }
    return CopyOfLast;
}

std::string DrawnLayerOf(Long drawn)
{
    return std::string(NameOfNumber(DrawnEntities[drawn].Layer));
}

std::string DrawnKindOf(Long drawn)
{
    return std::string(NameOfNumber(DrawnEntities[drawn].Kind));
}

MessageValues WithPlace(MessageValues values, Long drawn)
{
    const std::vector<Long> entities = EntitiesOf(drawn);
    if (entities.empty())
        return values;
    // Who draws picks the polyline, not its vertex.
    const DrawnEntity& first = DrawnEntities[WholeOf(entities.front())];
    values.emplace_back("line", static_cast<long long>(first.Line));
    if (!first.Handle.Trimmed().empty())
        values.emplace_back("handle", first.Handle.Trimmed());
    return values;
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

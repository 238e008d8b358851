// Sets of entities, kept until the next drawing. Relies on numbers that the reader gave.
#include "state/drawn_entities.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>

#include "platform/text.h"
#include "state/drawn_names.h"
#include "state/run.h"

namespace kv {

RecordArray<DrawnEntity> DrawnEntities;

namespace {

std::vector<std::vector<Long>> Sets; // that of number -1 first

constexpr char LongHandle = '\x01'; // in front: the handle stands in LongHandles
constexpr std::size_t MostHandle = 16;
std::unordered_map<Long, std::string> LongHandles; // of entities as drawn

std::vector<EntityLook> Looks(1);
std::map<EntityLook, Long> LookNumbers;
Long LastFound = 0;          // look; neighbours mostly look alike
RecordArray<Long> Owners;    // of the parts of polylines, up to the last one
std::vector<Long> Originals; // of the entities from FirstCopy on
Long FirstCopy = 0;          // 0: none

Long NumberOfLook(const EntityLook& look)
{
    if (Looks[static_cast<std::size_t>(LastFound)] == look)
        return LastFound;
    const auto [number, isNew] = LookNumbers.try_emplace(look, static_cast<Long>(Looks.size()));
    if (isNew)
        Looks.push_back(look);
    LastFound = number->second;
    return LastFound;
}

Long OwnerOf(Long drawn)
{
    return drawn <= Owners.Last() ? Owners[drawn] : 0;
}

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
    LongHandles.clear();
    Looks.assign(1, {});
    LookNumbers.clear();
    LastFound = 0;
    Owners.Clear();
    Originals.clear();
    FirstCopy = 0;
}

const EntityLook& LookOfNumber(Long number)
{
    return Looks[static_cast<std::size_t>(number)];
}

const EntityLook& LookOf(Long drawn)
{
    return LookOfNumber(DrawnEntities[drawn].Look);
}

Long LastLook()
{
    return static_cast<Long>(Looks.size()) - 1;
}

void TakeHandle(std::string_view handle)
{
    const Long drawn = DrawnEntities.Last();
    Text<8>& kept = DrawnEntities[drawn].Handle;
    if (handle.size() <= kept.Padded().size()) {
        kept = handle;
        return;
    }
    kept = std::string(1, LongHandle);
    LongHandles[drawn] = handle.substr(0, MostHandle);
}

std::string HandleOf(Long drawn)
{
    const std::string_view kept = DrawnEntities[drawn].Handle.Trimmed();
    if (kept.empty() || kept.front() != LongHandle)
        return std::string(kept);
    const Long first = CopyOf(drawn);
    const auto handle = LongHandles.find(first != 0 ? first : drawn);
    return handle == LongHandles.end() ? std::string() : handle->second;
}

Long CopyOf(Long drawn)
{
    return FirstCopy == 0 || drawn < FirstCopy ? 0 : Originals[static_cast<std::size_t>(drawn - FirstCopy)];
}

void NameDrawn(Long drawn, Long kind, Long layer, Long named)
{
    DrawnEntities[drawn].Look = NumberOfLook({kind, layer, 0, named});
}

void RenameDrawn(Long drawn, Long named)
{
    if (drawn == 0)
        return;
    EntityLook look = LookOf(drawn);
    look.Named = named;
    DrawnEntities[drawn].Look = NumberOfLook(look);
}

// Entities of one look mostly have one state: the last one of the look is asked first.
void NameLayerStates()
{
    struct Known {
        Long Entity = 0; // the last one of a look
        Long Look = 0;   // what became of it
    };
    std::vector<Known> lastOfLook; // by the look before
    for (Long i = 1; i <= Entities.Last(); ++i) {
        const DxfEntity& entity = Entities[i];
        if (entity.Drawn == 0)
            continue;
        DrawnEntity& drawn = DrawnEntities[entity.Drawn];
        const auto place = static_cast<std::size_t>(drawn.Look);
        if (place >= lastOfLook.size())
            lastOfLook.resize(place + 1);
        Known& known = lastOfLook[place];
        if (known.Entity == 0 || !(Entities[known.Entity].Layer == entity.Layer)) {
            EntityLook named = LookOfNumber(drawn.Look);
            named.State = NumberOfName(entity.Layer.Trimmed());
            NoteDrawnLayer(entity.Layer.Trimmed(), named.Named);
            known.Look = NumberOfLook(named);
        }
        known.Entity = i;
        drawn.Look = known.Look;
    }
}

std::string_view UncutKind(const DxfEntity& entity)
{
    const std::string_view kind = entity.Kind.Trimmed();
    const bool isWhole = kind.size() < entity.Kind.Padded().size() || entity.Drawn == 0;
    return isWhole ? kind : NameOfNumber(LookOf(entity.Drawn).Kind);
}

void NoteOwner(Long drawn, Long owner)
{
    while (Owners.Last() < drawn)
        Owners.Append(0);
    Owners[drawn] = owner;
}

Long WholeOf(Long drawn)
{
    const Long owner = OwnerOf(drawn);
    return owner != 0 ? owner : drawn;
}

Long DrawnAs(Long drawn)
{
    const Long whole = WholeOf(drawn);
    const Long first = CopyOf(whole);
    return first != 0 ? first : whole;
}

Long DrawnCopies::Of(Long drawn)
{
    if (drawn <= 0)
        return drawn;
    if (drawn == Last) // the records of a lightweight polyline are one entity
        return CopyOfLast;
    const Long first = CopyOf(drawn);
    const Long owner = OwnerOf(drawn);
    DrawnEntities.Append(DrawnEntities[drawn]);
    Last = drawn;
    CopyOfLast = DrawnEntities.Last();
    if (owner != 0)
        NoteOwner(CopyOfLast, owner == Whole ? CopyOfWhole : owner);
    if (FirstCopy == 0)
        FirstCopy = CopyOfLast;
    Originals.push_back(first != 0 ? first : drawn);
    if (owner == 0) {
        Whole = Last;
        CopyOfWhole = CopyOfLast;
    }
    return CopyOfLast;
}

std::string DrawnLayerOf(Long drawn)
{
    return std::string(NameOfNumber(LookOf(drawn).Layer));
}

std::string DrawnKindOf(Long drawn)
{
    return std::string(NameOfNumber(LookOf(drawn).Kind));
}

MessageValues WithPlace(MessageValues values, Long drawn)
{
    const std::vector<Long> entities = EntitiesOf(drawn);
    if (entities.empty())
        return values;
    // Who draws picks the polyline, not its vertex.
    const Long first = WholeOf(entities.front());
    values.emplace_back("line", static_cast<long long>(DrawnEntities[first].Line));
    if (const std::string handle = HandleOf(first); !handle.empty())
        values.emplace_back("handle", handle);
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

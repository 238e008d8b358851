// Compares entities of one layer by all that places and shapes them, to the last bit: copies of a design
// program are exact. A line counts as the same in either direction. Needs rewritten layers; changes nothing.
#include "drawing/twice_drawn.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drawing/doubt_lines.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/drawn_names.h"
#include "state/report.h"
#include "state/run.h"

namespace kv {

namespace {

bool IsCut(std::string_view layer)
{
    return Holds(layer, "ROUT") || Holds(layer, "ROTAR") || Holds(layer, "EXCAV") || Holds(layer, "GROOVE");
}

void AppendNumber(std::string& key, Single number)
{
    if (number == 0)
        number = 0; // of either sign
    char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    key.append(bytes, sizeof bytes);
}

void AppendEntity(std::string& key, const DxfEntity& entity)
{
    std::array<Single, 6> ends = {entity.X1, entity.Y1, entity.Z1, entity.X2, entity.Y2, entity.Z2};
    if (entity.Kind == "LINE" &&
        std::lexicographical_compare(ends.begin() + 3, ends.end(), ends.begin(), ends.begin() + 3))
        std::swap_ranges(ends.begin(), ends.begin() + 3, ends.begin() + 3);
    for (const Single coordinate : ends)
        AppendNumber(key, coordinate);
    for (const Single value : {entity.Elevation, entity.Thickness, entity.Radius, entity.EndWidth,
                               entity.Bulge, entity.StartAngle, entity.EndAngle})
        AppendNumber(key, value);
    key += entity.Side.Padded();
}

bool IsPart(const DxfEntity& entity)
{
    return entity.Kind == "VERTEX" || entity.Kind == "SEQEND";
}

// All of an entity: a polyline with its vertices.
std::string KeyOf(Long first)
{
    const DxfEntity& entity = Entities[first];
    std::string key(entity.Layer.Trimmed());
    key += '\n';
    key += entity.Kind.Trimmed();
    AppendEntity(key, entity);
    if (entity.Kind == "POLYLINE")
        for (Long i = first + 1; i <= Entities.Last() && IsPart(Entities[i]); ++i)
            if (Entities[i].Kind == "VERTEX")
                AppendEntity(key, Entities[i]);
    return key;
}

bool CanBeCut(const EntityLook& look)
{
    const std::string_view kind = NameOfNumber(look.Kind);
    return (kind == "LINE" || kind == "ARC" || kind == "CIRCLE" || kind == "POLYLINE") &&
           IsCut(NameOfNumber(look.State));
}

// By number of the look, since a drawing has many entities and few looks.
std::vector<bool> LooksToBeCut()
{
    std::vector<bool> looks;
    for (Long number = 0; number <= LastLook(); ++number)
        looks.push_back(CanBeCut(LookOfNumber(number)));
    return looks;
}

void TellTwice(const DxfEntity& entity, Long at)
{
    const DxfEntity& placed = entity.Kind == "POLYLINE" && at < Entities.Last() ? Entities[at + 1] : entity;
    const double scale = Run.DrawingScale;
    Tell(Message::DrawnTwice, WithPlace({{"layer", LayerAsDrawn(entity.Drawn)},
                                         {"kind", DrawnKindOf(entity.Drawn)},
                                         {"place", PlaceText(static_cast<double>(placed.X1) * scale,
                                                             static_cast<double>(placed.Y1) * scale)}},
                                        entity.Drawn));
}

} // namespace

void TellDrawnTwice()
{
    std::unordered_map<std::string, Long> seen; // the whole entity as drawn
    const std::vector<bool> looks = LooksToBeCut();
    if (std::find(looks.begin(), looks.end(), true) == looks.end())
        return;
    for (Long i = 1; i <= Entities.Last(); ++i) {
        const DxfEntity& entity = Entities[i];
        if (!looks[static_cast<std::size_t>(DrawnEntities[entity.Drawn].Look)] || IsPart(entity))
            continue;
        const Long drawn = DrawnAs(entity.Drawn);
        const auto [place, isNew] = seen.try_emplace(KeyOf(i), drawn);
        if (!isNew && place->second != drawn) // else a further operation of the same one
            TellTwice(entity, i);
    }
}

} // namespace kv

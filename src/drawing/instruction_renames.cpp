// Rewrites layers of Entities by name and by colour. Relies on a SEQEND's having its polyline's
// colour; vertices need none, they go with their polyline.
#include "drawing/instruction_renames.h"

#include <algorithm>

#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/run.h"

namespace kv {

namespace {

void RenameLayers(const std::vector<LayerRename>& renames)
{
    for (Long i = 1; i <= Entities.Last(); ++i) {
        const std::string layer = Compact(Entities[i].Layer.Trimmed());
        for (const LayerRename& rename : renames) {
            if (layer != rename.From)
                continue;
            Entities[i].Layer = rename.To;
            RenameDrawn(Entities[i].Drawn, rename.Name);
            break;
        }
    }
}

// A border that a rename made may reach below zero, where no corner of the face would be found.
void ShiftBorder()
{
    Single lowX = 0;
    Single lowY = 0;
    for (Long i = 1; i <= Entities.Last(); ++i) {
        const DxfEntity& entity = Entities[i];
        if (!Holds(entity.Layer.Trimmed(), "BORDER"))
            continue;
        lowX = std::min({lowX, entity.X1, entity.X2});
        lowY = std::min({lowY, entity.Y1, entity.Y2});
    }
    if (ToLong(lowX) == 0 && ToLong(lowY) == 0)
        return; // tested rounded, subtracted unrounded
    for (Long i = 1; i <= Entities.Last(); ++i) {
        DxfEntity& entity = Entities[i];
        entity.X1 -= lowX;
        entity.X2 -= lowX;
        entity.Y1 -= lowY;
        entity.Y2 -= lowY;
    }
}

void RenameColors(const std::vector<ColorRename>& renames)
{
    bool carry = false;
    std::string carried;
    Long carriedName = 0;
    for (Long i = 1; i <= Entities.Last(); ++i) {
        DxfEntity& entity = Entities[i];
        if (carry) {
            entity.Layer = carried;
            RenameDrawn(entity.Drawn, carriedName);
            carry = entity.Kind == "VERTEX"; // a POLYLINE under the carry ends it and starts none
            continue;
        }
        for (const ColorRename& rename : renames) {
            if (Val(rename.Color) != entity.Color)
                continue;
            carried = TrimLeft(rename.To);
            carriedName = rename.Name;
            entity.Layer = carried;
            RenameDrawn(entity.Drawn, carriedName);
            carry = entity.Kind == "POLYLINE";
            break;
        }
    }
}

} // namespace

void ApplyRenames(const std::vector<LayerRename>& layers, const std::vector<ColorRename>& colors)
{
    if (!layers.empty()) {
        RenameLayers(layers);
        ShiftBorder();
    }
    if (!colors.empty())
        RenameColors(colors);
}

} // namespace kv

// The order of a block's way into the drawing: its base point to 0, scale, the copy's step, turn, insertion
// point, extrusion. Steps of copies turn with the INSERT and are not scaled.
#include "import/block_place.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/numbers.h"
#include "platform/text.h"

namespace kv {

EntityStyle StyleInBlock(const SourceRecord& record, const BlockPlace& place)
{
    constexpr int byBlock = 0;
    EntityStyle style = StyleOf(record);
    if (place.Depth == 0)
        return style;
    if (style.Layer == "0" || style.Layer.empty())
        style.Layer = place.Layer;
    if (style.Color == byBlock)
        style.Color = place.Color;
    style.Handle = place.Handle;
    style.Line = place.Line;
    return style;
}

bool HasUsableScale(const SourceRecord& insert)
{
    constexpr double least = 1e-9, most = 1e9;
    for (const int code : {41, 42, 43}) {
        const double factor = std::abs(insert.Number(code, 1));
        if (!(factor > least && factor < most))
            return false;
    }
    const bool isTurned = std::isfinite(insert.Number(50)) && IsFinite(insert.Extrusion());
    return isTurned && IsFinite(insert.Point(10)) && std::isfinite(insert.Number(44)) &&
           std::isfinite(insert.Number(45));
}

int CopiesOf(const SourceRecord& insert, int code)
{
    constexpr double most = std::numeric_limits<Long>::max();
    const double copies = std::floor(insert.Number(code, 1));
    return copies > 1 ? static_cast<int>(std::min(copies, most)) : 1;
}

Placement PlaceOfCopy(const Placement& outer, const SourceRecord& insert, const DrawnBlock& block, int column,
                      int row)
{
    const SpacePoint step{insert.Number(44) * column, insert.Number(45) * row, 0};
    const SpacePoint scale{insert.Number(41, 1), insert.Number(42, 1), insert.Number(43, 1)};
    return outer * SystemOf(insert.Extrusion()) * ShiftedBy(insert.Point(10)) * RotatedBy(insert.Number(50)) *
           ShiftedBy(step) * ScaledBy(scale) * ShiftedBy(block.Base * -1);
}

bool IsConstantText(const SourceRecord& definition)
{
    constexpr int constantFlag = 2;
    return (definition.Whole(70) & constantFlag) != 0;
}

std::string CountsText(const std::map<std::string, Long>& counts)
{
    std::string text;
    for (const auto& [kind, count] : counts)
        text += (text.empty() ? "" : ", ") + WholeText(count) + " " + kind;
    return text.empty() ? "nothing" : text;
}

} // namespace kv

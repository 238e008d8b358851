// Route records compared field by field and bit by bit: two zeros of unlike sign differ.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <tuple>
#include <vector>

#include "state/records.h"

namespace kv {

inline auto FieldsOf(const RouteSegment& r)
{
    const auto bits = [](Single value) { return std::bit_cast<std::uint32_t>(value); };
    return std::tuple(r.Pass, bits(r.X), bits(r.Y), bits(r.Z), bits(r.Diameter), r.Group, r.ToolNo,
                      r.Tool.Padded(), bits(r.Aux1), bits(r.Aux2), r.Kind, r.Dir, r.Speed, bits(r.Feed),
                      bits(r.FeedDown), bits(r.FeedRapid), bits(r.LeadIn), bits(r.RampOut), bits(r.RampIn),
                      r.Comp.Padded(), r.Sequence, bits(r.OscZ), r.MCode, r.Side, r.ExtraSlot, bits(r.ParamA),
                      bits(r.ParamB), r.Flag);
}

inline bool SameRecords(const std::vector<RouteSegment>& a, const std::vector<RouteSegment>& b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (FieldsOf(a[i]) != FieldsOf(b[i]))
            return false;
    return true;
}

} // namespace kv

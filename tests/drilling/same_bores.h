// Bores and stops compared field by field and bit by bit.
#pragma once

#include <bit>
#include <cstdint>
#include <tuple>
#include <vector>

#include "state/records.h"

namespace kv {

inline auto FieldsOf(const VBoreRecord& r)
{
    const auto bits = [](Single value) { return std::bit_cast<std::uint32_t>(value); };
    return std::tuple(bits(r.X), bits(r.Y), bits(r.Depth), bits(r.Diameter), r.Group, r.Speed, bits(r.Feed),
                      r.Tool.Padded(), bits(r.PeckDepth), r.Pitch, r.ExtraSlot, r.Bottom);
}

inline auto FieldsOf(const HeadPosition& r)
{
    const auto bits = [](Single value) { return std::bit_cast<std::uint32_t>(value); };
    return std::tuple(bits(r.X), bits(r.Y), bits(r.Depth), bits(r.Diameter), r.Tool.Padded(), r.ChainSize,
                      r.Pitch, r.Direction, bits(r.EndX), bits(r.EndY), bits(r.Feed), r.ExtraSlot, r.Side);
}

// Index of the first record that differs, the shorter list's end where it ends early; -1: all are the
// same.
template <typename Record> int FirstDifference(const std::vector<Record>& a, const std::vector<Record>& b)
{
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
        if (FieldsOf(a[i]) != FieldsOf(b[i]))
            return static_cast<int>(i);
    return a.size() == b.size() ? -1 : static_cast<int>(std::min(a.size(), b.size()));
}

} // namespace kv

// The boring head: a fixed pattern of vertical drills on a 32 mm grid that can come down together, as
// the file DT.Par in the program's folder describes it, one drill a line. Loaded afresh at each run of
// the optimizer; nothing else reads it. The two-digit drill numbers of programs are slots of DrillHead.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/numbers.h"

namespace kv {

constexpr std::string_view HeadFileName = "DT.Par";
constexpr int HighestSlot = 99; // of the head, and of every scan of it
constexpr Int VerticalDrill = 1, ThroughDrill = 2;

// One line of the file; lengths in mm.
struct DrillParameter {
    Single X = 0, Y = 0; // along and across the head
    Single Z = 0;        // kept, no rule reads it
    Single Diameter = 0;
    Int Kind = 0; // 1 vertical, 2 through, 3 horizontal drill, 4 groove, 5 router, 0 anything else
};

// A drill as the optimizer sees it.
struct HeadDrill {
    Single X = 0, Y = 0, Z = 0, Diameter = 0;
    Int Kind = 0;
    Int Row = 0; // 1 has its neighbours along X, -1 along Y, 0 drills no rows
};

extern std::vector<DrillParameter> DrillParameters;      // from 1
extern std::array<HeadDrill, HighestSlot + 1> DrillHead; // slot n is line n; slot 0 stays blank

// Reads the file up to its end or its first empty line. One that is missing or cannot be read is an
// empty head, without a message.
void LoadDrillHead();
// Puts the lines into their slots; what does not fit the head is left out.
void FillDrillHead();
// Finds out along which axis each drill has neighbours.
void ClassifyHeadRows();

// `diameter` in mm.
bool HasDiameter(const HeadDrill& drill, double diameter);

inline const HeadDrill& DrillAt(Long slot)
{
    return DrillHead[static_cast<std::size_t>(slot)];
}

} // namespace kv

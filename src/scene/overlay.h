// Two programs of one panel over each other: what both have, and what one of them alone has.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "machine/steps.h"
#include "scene/scene.h"

namespace kv {

struct NamedSteps {
    std::string Name; // UTF-8
    MachineSteps Steps;
};

bool AreOfOnePanel(const MachineSteps& a, const MachineSteps& b); // by length, width and thickness

// What both have is that of the first. Works are the same when kind, plane, way, depth, width and side of the
// tool agree within 0.01 mm, wherever they are in their program; names of tools and feeds count for nothing.
// Works of the second alone come last, with the lines of their own program. Rapids are left out, since most
// of them change with the order.
Scene OverlayOf(const NamedSteps& first, const NamedSteps& second);

// "2 bores, 1 route", or "nothing".
std::string WorksOnlyIn(const Scene& overlay, HeldIn held);

} // namespace kv

// What a reader keeps of a program at most, so that a text of any size takes memory that is known.
#pragma once

#include <cstddef>
#include <string_view>

#include "machine/steps.h"

namespace kv {

constexpr std::size_t MostSteps = 1'000'000;  // moves of cuts too; no machine takes so many
constexpr std::size_t MostUnreadLines = 1000; // that are kept; all are counted

void AddUnread(MachineSteps& steps, std::size_t line, std::string_view text);
// Says that nothing is read from this line on, ahead of the lines that are not understood.
void AddRestUnread(MachineSteps& steps, std::size_t line);
// Whether no further step may be added; `moves` are those of all cuts.
bool AreAllStepsTaken(const MachineSteps& steps, std::size_t moves);

} // namespace kv

// What the controls would make of one drawing, and how that is shown.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "scene/run_time.h"

namespace kv {

struct ComparedControl {
    std::string Control; // "CNC90"
    std::string Option;  // as --system takes it
    std::string Failure; // why there is no program, UTF-8; empty when there is one
    std::size_t Programs = 0, Lines = 0;
    RunFigures Figures;
    std::size_t Doubts = 0, Faults = 0;
    std::vector<std::string> Told;     // its doubts and faults, UTF-8
    std::vector<std::string> OnlyHere; // those of them that no other control has
};

struct Comparison {
    std::string Drawing; // as typed
    std::vector<ComparedControl> Rows;
};

std::string ComparisonText(const Comparison& comparison);
std::string ComparisonJson(const Comparison& comparison);
std::string ComparisonHeader(const Comparison& comparison); // HTML, ahead of the pictures

} // namespace kv

// What the letters of a layer's name ask for: a reading of its own, so that a mistake of the passes that work
// by the same letters is found.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kv {

// A name as the layer rules leave it: upper case, two-letter codes written as one marker. Lengths are in the
// drawing's unit.
struct AskedLetters {
    std::optional<double> Depth; // nothing: no Z
    bool DepthIsCode = false;    // a letter or number of the machine's own table, not a length
    double Diameter = 0;         // 0: no D, or none of use
    double ToolRadius = 0;       // behind R or L
    int Side = 0;                // 1: left of the way (L), -1: right (R), 0: on it
    int Tool = 0;                // T
    double Step = 0;             // K, of a pocket, and of a groove the saw's kerf
    std::optional<double> Lead;  // LD; 999: the length of the settings
    double Swing = 0;            // OZ, of the depth
};

AskedLetters AskedLettersOf(std::string_view layer);
// What the layer's name makes of an entity.
enum class LayerTask { None, Border, VerticalBore, HorizontalBore, Groove, Route, Pocket };
LayerTask TaskOfCircle(std::string_view layer);
LayerTask TaskOfLine(std::string_view layer);
// Whether the saw runs left (1) or right (-1) of the groove's line.
int GrooveSideOf(std::string_view layer);

} // namespace kv

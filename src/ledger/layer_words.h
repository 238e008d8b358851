// What the words of the layer language ask for, read off a layer's name alone, and the word that a name
// nearly spells.
#pragma once

#include <string>
#include <string_view>

namespace kv {

enum class LayerWork {
    Nothing,
    Border,
    Panel,
    Drilling,
    Groove,
    EdgeBore,
    Route,
    Pocket,
    Text,
    Instructions
};

// Of a name as the passes know it; of several the first that an entity of the kind can have. `kind` in
// upper case: "LINE".
LayerWork WorkOfLayer(std::string_view layer, std::string_view kind);
// Whether the layer's word asks for work at the machine, for whatever kind.
bool AsksForWork(LayerWork work);
bool TakesKind(LayerWork work, std::string_view kind);
std::string_view KindsOf(LayerWork work);  // "CIRCLE and POINT"
std::string_view WorkName(LayerWork work); // "vertical bores"
bool IsTextKind(std::string_view kind);

// The word that one slip of the pen makes of the name's beginning; empty: none.
std::string NearestWord(std::string_view layer);

} // namespace kv

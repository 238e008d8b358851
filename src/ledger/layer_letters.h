// The letters of a layer's name, each with the value that was read and where a value comes from that the name
// does not give.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ledger/layer_words.h"

namespace kv {

struct LayerValue {
    std::string Letter;  // "Z"
    std::string Meaning; // "depth"
    std::string Value;   // as text, drawing units
    std::string From;    // "name", "entity", "setting SawKerf", "instruction LEAD", "default"
};

// Of a layer as the passes know it. Reads by the passes' own readers, which may refuse a value: the value is
// then the cause. The run's parameters must be settled.
std::vector<LayerValue> ValuesOfLayer(std::string_view layer, LayerWork work);

} // namespace kv

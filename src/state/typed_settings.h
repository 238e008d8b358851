// What was typed for settings that are numbers, where what became of it does not show it any more.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

struct TypedSetting {
    std::string Key;
    std::string Text;    // as typed
    std::string Taken;   // the setting now
    bool OfCall = false; // by --set, else by KV90.INI
};
// A key of the section "Configuration".
TypedSetting SettingAsTyped(std::string_view key);
// Of the rows of the tool substitution that count: the cells that are no numbers as a whole.
std::vector<TypedSetting> PartlyReadTools();

} // namespace kv

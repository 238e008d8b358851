// Texts of settings that the setting now does not show: those that are no number as a whole, or whose number
// a rule has replaced. For the exchange of the settings alone; others ask typed_settings.h.
#pragma once

#include <string>
#include <string_view>

#include "state/typed_settings.h"

namespace kv {

// A text that is a number as a whole is kept until SettleTypedText knows its setting.
void KeepTypedText(TypedSetting typed);
// What became of it; drops a text that says the same.
void SettleTypedText(std::string_view key, std::string_view taken);
void ForgetTypedText(std::string_view key);
// Null where nothing is kept, or the setting has been given another value since.
const TypedSetting* FindTypedText(std::string_view key, std::string_view taken);

} // namespace kv

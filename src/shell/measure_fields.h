// Fields of the windows in which a person types a number: their units, and what a text in them is read as.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// Of a number field, by the settings as they are; empty for any other control. Metric or inch is the switch's
// word for the default settings; all else has one unit.
std::string UnitOfField(std::string_view form, std::string_view name);

struct FieldReading {
    std::string Text;    // "= 12.5 mm"
    bool IsWhole = true; // no text is left behind the number
};
FieldReading ReadField(std::string_view form, std::string_view name, std::string_view text);

// A typed number with its comma as a point, where the person's own decimal sign is a comma and the text holds
// no other doubt: one comma, no point, nothing but digits and a sign beside it. Else as typed.
std::string WithDecimalPoint(std::string_view typed, bool commaIsDecimal);

} // namespace kv

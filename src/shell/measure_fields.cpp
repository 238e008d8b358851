// The table of number fields. Relies on the unit switch of the default settings.
#include "shell/measure_fields.h"

#include <algorithm>

#include "platform/number_texts.h"
#include "platform/text.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr std::string_view BySwitch = "*"; // mm or in

struct UnitRow {
    std::string_view Form, Name, Unit;
};
constexpr UnitRow UnitRows[] = {
    {"Form1", "LLen", BySwitch},    {"Form1", "RHt", BySwitch},    {"Form1", "OSX", BySwitch},
    {"Form1", "OSY", BySwitch},     {"Form1", "OSZ", BySwitch},    {"SetUp", "BLim", "drawings"},
    {"SetUp", "PrcM", "decimals"},  {"SetUp", "PrcI", "decimals"}, {"SetUp", "GRDly", "s"},
    {"SetUp", "SawKerf", "mm"},     {"SetUp", "RadLim", "mm"},     {"SetUp", "SLim", "lines"},
    {"SetUp", "HBDVboreLim", "mm"},
};

// ".5" is half of something; people write "0.5".
std::string ForPeople(std::string number)
{
    const std::size_t point = number.find('.');
    if (point == 0 || (point == 1 && number[0] == '-'))
        number.insert(point, "0");
    return number;
}

} // namespace

std::string UnitOfField(std::string_view form, std::string_view name)
{
    const auto* const row =
        std::ranges::find_if(UnitRows, [&](const UnitRow& at) { return at.Form == form && at.Name == name; });
    if (row == std::end(UnitRows))
        return {};
    if (row->Unit != BySwitch)
        return std::string(row->Unit);
    return Config.Metric == "Inch" ? "in" : "mm";
}

FieldReading ReadField(std::string_view form, std::string_view name, std::string_view text)
{
    return {"= " + ForPeople(NumberTaken(text)) + " " + UnitOfField(form, name), IsReadToItsEnd(text)};
}

std::string WithDecimalPoint(std::string_view typed, bool commaIsDecimal)
{
    std::string text(typed);
    if (!commaIsDecimal || InCount(text, ',') != 1 || Holds(text, "."))
        return text;
    ReplaceChar(text, ',', '.');
    return IsReadToItsEnd(text) ? text : std::string(typed);
}

} // namespace kv

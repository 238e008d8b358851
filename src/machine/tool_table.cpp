// Head numbers are two digits, run together or as first and last with a "|" between; tool numbers may begin
// with a letter (a is 10) after the group's two digits.
#include "machine/tool_table.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <sstream>

#include "machine/reading_limits.h"
#include "machine/text_lines.h"

namespace kv {

namespace {

constexpr std::size_t GroupDigits = 2;
constexpr double DrillPlace = 0.05; // mm that places of drills and programs may differ
constexpr std::size_t HighestDrill = 99;
constexpr std::string_view Beyond200 = "M66"; // after the last two digits of a tool from 201 to 299

std::vector<std::string> PartedAt(const std::string& text, char mark)
{
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == mark)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

HeadTool HeadToolOf(const std::string& line)
{
    const std::vector<std::string> fields = PartedAt(line, '\t');
    HeadTool tool;
    if (fields.size() < 5)
        return tool;
    const auto number = [&](std::size_t field) { return PlainNumber(fields[field]).value_or(0); };
    tool.X = number(1);
    tool.Y = number(2);
    tool.Diameter = number(4);
    const std::string kind = CapitalsOf(fields[0]);
    tool.IsTool = !kind.empty() && kind != "NOT USED";
    tool.Drills = kind == "VERTICAL DRILL" || kind == "THROUGH DRILL";
    return tool;
}

std::optional<int> PairAt(std::string_view text, std::size_t at)
{
    if (at + 2 > text.size() || !IsDecimalDigit(text[at]) || !IsDecimalDigit(text[at + 1]))
        return std::nullopt;
    return (text[at] - '0') * 10 + (text[at + 1] - '0');
}

// "011617" are the drills 16 and 17 of group 1, "0101|08" the drills 1 to 8. Empty for what is neither, or
// more than a head has.
std::vector<int> DrillsOf(std::string_view tool)
{
    std::vector<int> drills;
    for (std::size_t at = GroupDigits; at < tool.size();) {
        if (drills.size() > HighestDrill)
            return {};
        if (tool[at] == '|' && !drills.empty()) {
            const std::optional<int> last = PairAt(tool, at + 1);
            if (!last)
                return {};
            for (int drill = drills.back() + 1; drill <= *last; ++drill)
                drills.push_back(drill);
            at += 3;
            continue;
        }
        const std::optional<int> drill = PairAt(tool, at);
        if (!drill)
            return {};
        drills.push_back(*drill);
        at += 2;
    }
    return drills;
}

// A tool's name with a group ahead; empty for one of a table that is not here.
std::string GroupedName(ToolNames names, const std::string& tool)
{
    if (names == ToolNames::WithGroup)
        return tool;
    if (names == ToolNames::OfTheMachine || tool.empty())
        return {};
    return std::string(tool.size() == 1 ? "010" : "01") + tool;
}

const HeadTool* DrillOf(const ToolTable& tools, int number)
{
    if (number < 1 || static_cast<std::size_t>(number) >= tools.Head.size())
        return nullptr;
    const HeadTool& drill = tools.Head[static_cast<std::size_t>(number)];
    return drill.Drills && drill.Diameter > 0 ? &drill : nullptr;
}

const ShopTool* ShopToolOf(const ToolTable& tools, std::string_view tool, char kind)
{
    const auto found = tools.Shop.find(ToolNumberOf(tool));
    return found != tools.Shop.end() && found->second.Kind == kind ? &found->second : nullptr;
}

double DiameterOf(const ToolTable& tools, const std::string& tool)
{
    const std::vector<int> drills = DrillsOf(tool);
    if (drills.size() == 1)
        if (const HeadTool* const drill = DrillOf(tools, drills.front()); drill != nullptr)
            return drill->Diameter;
    const ShopTool* const own = ShopToolOf(tools, tool, 'D');
    return own != nullptr ? own->Diameter : 0;
}

// The drills of a row by their places on the head: the first one is at the row's start, and one of the others
// at its end, which says how the head lies. Empty where the head does not fit the row.
std::vector<Bore> BoresOf(const BoreRow& row, const ToolTable& tools)
{
    const std::vector<int> numbers = DrillsOf(row.Tool);
    const bool alongX = std::fabs(row.To.X - row.From.X) >= std::fabs(row.To.Y - row.From.Y);
    const double length = alongX ? row.To.X - row.From.X : row.To.Y - row.From.Y;
    const auto along = [alongX](const HeadTool& drill) { return alongX ? drill.X : drill.Y; };
    std::vector<const HeadTool*> drills;
    for (const int number : numbers)
        if (drills.push_back(DrillOf(tools, number)); drills.back() == nullptr)
            return {};
    if (drills.empty())
        return {};
    // Drills of a stop that was joined to the row come behind its own.
    double sense = 0;
    for (std::size_t i = 1; i < drills.size() && sense == 0; ++i) {
        const double offset = along(*drills[i]) - along(*drills.front());
        if (std::fabs(std::fabs(offset) - std::fabs(length)) <= DrillPlace && offset != 0)
            sense = (offset > 0) == (length > 0) ? 1 : -1;
    }
    if (sense == 0)
        return {};
    std::vector<Bore> bores;
    for (const HeadTool* const drill : drills) {
        const double offset = sense * (along(*drill) - along(*drills.front()));
        Bore bore;
        bore.At = {row.From.X + (alongX ? offset : 0), row.From.Y + (alongX ? 0 : offset)};
        bore.Depth = row.Depth;
        bore.Diameter = drill->Diameter;
        bore.Tool = row.Tool;
        bore.Line = row.Line;
        bores.push_back(bore);
    }
    return bores;
}

void OpenRows(MachineSteps& steps, const ToolTable& tools)
{
    std::vector<BoreRow> unknown;
    for (const BoreRow& row : steps.Rows) {
        const std::vector<Bore> bores =
            steps.Bores.size() < MostSteps ? BoresOf(row, tools) : std::vector<Bore>();
        if (bores.empty())
            unknown.push_back(row);
        steps.Bores.insert(steps.Bores.end(), bores.begin(), bores.end());
    }
    steps.Rows = std::move(unknown);
}

// One word of a tool's line. False: it is none.
bool TakeToolWord(ShopTool& tool, const std::string& word)
{
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos)
        return false;
    const std::optional<double> value = PlainNumber(word.substr(equals + 1));
    const std::string name = CapitalsOf(word.substr(0, equals));
    constexpr double largest = 10000; // mm
    if (!value || !(*value > 0) || *value > largest)
        return false;
    if (name == "DIAMETER")
        tool.Diameter = *value;
    else if (name == "KERF")
        tool.Kerf = *value;
    else if (name == "DEPTH")
        tool.Deepest = *value;
    else
        return false;
    return true;
}

// What is wrong with the line; empty: nothing, or it is blank.
std::string TakeToolLine(const std::string& line, std::map<int, ShopTool>& tools)
{
    constexpr double highestNumber = 9999;
    std::istringstream words(line.substr(0, line.find('#')));
    std::string number, kind;
    if (!(words >> number))
        return {};
    const std::optional<double> value = PlainNumber(number);
    if (!value || *value != std::floor(*value) || *value < 1 || *value > highestNumber)
        return "\"" + number + "\" is no number of a tool";
    words >> kind;
    kind = CapitalsOf(kind);
    if (kind != "ROUTER" && kind != "SAW" && kind != "DRILL")
        return "a tool is a router, a saw or a drill";
    ShopTool tool;
    tool.Kind = kind[0];
    for (std::string word; words >> word;)
        if (!TakeToolWord(tool, word))
            return "\"" + word + "\" is none of diameter=, kerf=, depth= with millimetres";
    if (!tools.emplace(static_cast<int>(*value), tool).second)
        return "tool " + number + " is there twice";
    return {};
}

} // namespace

std::vector<HeadTool> ReadHeadTools(std::string_view text)
{
    std::vector<HeadTool> tools(1);
    LineWalk lines(text);
    while (lines.Next() && tools.size() <= HighestDrill) {
        const std::string_view line = lines.Line();
        if (line.find_first_not_of(' ') == std::string_view::npos)
            break;
        tools.push_back(HeadToolOf(std::string(line.substr(0, LongestProgramLine))));
    }
    return tools;
}

std::map<int, ShopTool> ReadShopTools(std::string_view text, std::vector<std::string>& faults)
{
    std::map<int, ShopTool> tools;
    LineWalk lines(text);
    while (lines.Next()) {
        const std::string fault = TakeToolLine(std::string(lines.Line()), tools);
        if (!fault.empty())
            faults.push_back("line " + std::to_string(lines.Number()) + ": " + fault);
    }
    return tools;
}

int ToolNumberOf(std::string_view tool)
{
    if (tool.size() <= GroupDigits)
        return -1;
    std::string_view text = tool.substr(GroupDigits);
    const bool beyond200 = text.ends_with(Beyond200);
    text.remove_suffix(beyond200 ? Beyond200.size() : 0);
    int number = beyond200 ? 2 : 0;
    if (beyond200 && (text.size() != 2 || !IsDecimalDigit(text[0])))
        return -1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i == 0 && text[i] >= 'a' && text[i] <= 'z')
            number = text[i] - 'a' + 10;
        else if (IsDecimalDigit(text[i]) && i < 4)
            number = number * 10 + (text[i] - '0');
        else
            return -1;
    }
    return number;
}

std::vector<int> ToolNumbersOf(ToolNames names, const std::string& tool)
{
    const std::string grouped = GroupedName(names, tool);
    std::vector<int> numbers = DrillsOf(grouped);
    if (numbers.empty() && ToolNumberOf(grouped) >= 0)
        numbers = {ToolNumberOf(grouped)};
    return numbers;
}

bool IsOnHead(const ToolTable& tools, int number)
{
    return number >= 1 && static_cast<std::size_t>(number) < tools.Head.size() &&
           tools.Head[static_cast<std::size_t>(number)].IsTool;
}

void FillTools(MachineSteps& steps, const ToolTable& tools)
{
    const auto name = [&steps](const std::string& tool) { return GroupedName(steps.Tools, tool); };
    for (Bore& bore : steps.Bores)
        if (bore.Diameter == 0)
            bore.Diameter = DiameterOf(tools, name(bore.Tool));
    for (RouterCut& cut : steps.Cuts)
        if (const ShopTool* const tool = ShopToolOf(tools, name(cut.Tool), 'R');
            tool != nullptr && cut.Radius == 0)
            cut.Radius = tool->Diameter / 2;
    for (SawCut& saw : steps.Saws)
        if (const ShopTool* const tool = ShopToolOf(tools, name(saw.Tool), 'S');
            tool != nullptr && saw.Width == 0)
            saw.Width = tool->Kerf;
    OpenRows(steps, tools);
}

} // namespace kv

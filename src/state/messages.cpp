// From a number and its arguments to a text. One pass over the text of the table puts each value in its
// place, so that nothing in a value is taken for a place itself.
#include "state/messages.h"

#include <algorithm>

#include "platform/text.h"

namespace kv {

namespace {

constexpr std::string_view CountName = "count";

struct RoomRow {
    int Hundred;
    std::string_view Title;
};
constexpr RoomRow RoomRows[] = {
    {1, "The drawing and its job"},
    {2, "Layers, instructions and texts"},
    {3, "Panel and drilling"},
    {4, "Routes, pockets and leads"},
    {5, "Programs and cut list"},
    {6, "Files and installation"},
    {7, "Batches, trigger files, lists and window"},
    {8, "What became of the entities"},
    {9, "What the programs cut"},
};

// Calls `take` with each stretch of plain text and each name, in their order.
void WalkText(std::string_view text, const auto& takePlain, const auto& takeName)
{
    while (!text.empty()) {
        const std::size_t open = text.find('{');
        const std::size_t close = text.find('}', std::min(open, text.size()));
        takePlain(text.substr(0, open));
        if (close == std::string_view::npos)
            return;
        takeName(text.substr(open + 1, close - open - 1));
        text.remove_prefix(close + 1);
    }
}

// A carriage return would begin a second row.
std::string ShownValue(std::string text)
{
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ')
            c = '?';
    return text;
}

std::string FilledText(std::string_view text, const MessageLine& line)
{
    std::string filled;
    WalkText(
        text, [&](std::string_view plain) { filled += plain; },
        [&](std::string_view name) {
            const MessageValue* const value = FindValue(line, name);
            filled += value == nullptr ? "?" : ShownValue(value->Text);
        });
    return filled;
}

bool IsOfOne(const MessageLine& line)
{
    const MessageValue* const count = FindValue(line, CountName);
    return count == nullptr || count->Text == "1";
}

std::string_view WantedText(const MessagePage& page, const MessageLine& line)
{
    return IsOfOne(line) || page.Many.empty() ? page.Text : page.Many;
}

std::string NumberText(const MessagePage& page)
{
    return WholeText(static_cast<long long>(page.Number));
}

// Line ends of a box as one line of a guide.
std::string OnOneLine(std::string_view text)
{
    std::string line;
    for (const char c : text) {
        if (c == '\n')
            line += " / ";
        else if (c != '\r')
            line += c;
    }
    return line;
}

std::string GuideOf(const MessagePage& page)
{
    std::string guide =
        "\n### " + NumberText(page) + " (" + std::string(SeverityName(page.Severity)) + ")\n\n";
    guide += "`" + OnOneLine(page.Text) + "`\n\n";
    if (!page.Many.empty())
        guide += "Of several: `" + OnOneLine(page.Many) + "`\n\n";
    guide += "**Cause.** " + std::string(page.Cause) + "\n\n";
    guide += "**Cure.** " + std::string(page.Cure) + "\n";
    return guide;
}

} // namespace

MessageValue::MessageValue(std::string_view name, long long number)
    : Name(name), Text(WholeText(number)), IsWhole(true)
{
}

std::string_view SeverityName(MessageSeverity severity)
{
    switch (severity) {
    case MessageSeverity::Doubt:
        return "doubt";
    case MessageSeverity::Fault:
        return "fault";
    case MessageSeverity::Note:
        break;
    }
    return "note";
}

const MessagePage* FindPage(long long number)
{
    const std::span<const MessagePage> pages = MessagePages();
    const auto place = std::ranges::lower_bound(
        pages, number, {}, [](const MessagePage& page) { return static_cast<long long>(page.Number); });
    return place != pages.end() && static_cast<long long>(place->Number) == number ? &*place : nullptr;
}

std::string_view RoomOfMessages(Message message)
{
    for (const RoomRow& row : RoomRows)
        if (row.Hundred == static_cast<int>(message) / 100)
            return row.Title;
    return {};
}

const MessageValue* FindValue(const MessageLine& line, std::string_view name)
{
    const auto found = std::ranges::find(line.Values, name, &MessageValue::Name);
    return found == line.Values.end() ? nullptr : &*found;
}

std::string TextOf(const MessageLine& line)
{
    const MessagePage* const page = FindPage(static_cast<long long>(line.Number));
    if (page == nullptr)
        return {};
    const std::string text = FilledText(WantedText(*page, line), line);
    const bool isCounted = !page->Many.empty() || page->Text.find("{count}") != std::string_view::npos;
    return IsOfOne(line) || isCounted ? text : text + FilledText(" ({count} times)", line);
}

std::vector<std::string> MissingValues(const MessageLine& line)
{
    std::vector<std::string> missing;
    const MessagePage* const page = FindPage(static_cast<long long>(line.Number));
    if (page == nullptr)
        return {"the page of " + WholeText(static_cast<long long>(line.Number))};
    WalkText(
        WantedText(*page, line), [](std::string_view) {},
        [&](std::string_view name) {
            if (FindValue(line, name) == nullptr)
                missing.emplace_back(name);
        });
    return missing;
}

std::string PageText(const MessagePage& page)
{
    std::string text = NumberText(page) + " " + std::string(SeverityName(page.Severity)) + " (" +
                       std::string(RoomOfMessages(page.Number)) + ")\n\n";
    text += "  " + OnOneLine(page.Text) + "\n";
    if (!page.Many.empty())
        text += "  " + OnOneLine(page.Many) + "\n";
    text += "\nCause: " + std::string(page.Cause) + "\nCure: " + std::string(page.Cure) + "\n";
    return text;
}

std::string MessagesGuide()
{
    std::string guide =
        "# Messages\n\n"
        "Each line of the report has a number, which it keeps in every later release; a number that is "
        "given\n"
        "up is not used again. `korvanti explain NUMBER` prints the page of a message, and the JSON report\n"
        "names the number, the severity and the arguments of each line\n"
        "([integrators-guide.md](integrators-guide.md#the-report-as-json)).\n\n"
        "| Severity | Says |\n"
        "|---|---|\n"
        "| note | how the run goes on |\n"
        "| doubt | the program may not be what the designer wants |\n"
        "| fault | a job or a file failed |\n\n"
        "More than three lines of one number on one layer are shown as one, with their count. This file is\n"
        "made by `korvanti explain --list`.\n";
    std::string_view room;
    for (const MessagePage& page : MessagePages()) {
        if (RoomOfMessages(page.Number) != room) {
            room = RoomOfMessages(page.Number);
            guide += "\n## " + std::string(room) + "\n";
        }
        guide += GuideOf(page);
    }
    return guide;
}

} // namespace kv

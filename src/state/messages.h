// The messages of the program: each has a number, a severity, a text with named arguments, its cause and its
// cure. A line that is told is a number and its arguments; the text is made for whoever reads it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "state/message_numbers.h"

namespace kv {

// Note: the course of the run. Doubt: the program may not be what the designer wants. Fault: a job or a file
// failed.
enum class MessageSeverity { Note, Doubt, Fault };
std::string_view SeverityName(MessageSeverity severity); // "note", "doubt", "fault"

// One page of the table. Arguments stand in the texts as {name}.
struct MessagePage {
    Message Number = Message::None;
    MessageSeverity Severity = MessageSeverity::Note;
    char Mark = '\0';       // of the report's colours; none: as the line before it
    std::string_view Text;  // with {count}: of one
    std::string_view Many;  // of {count}; may be empty where the text is the same, or no layer is named
    std::string_view Cause; // what brings it about, and what follows from it
    std::string_view Cure;
};
std::span<const MessagePage> MessagePages();      // in the order of their numbers
const MessagePage* FindPage(long long number);    // null: there is none
std::string_view RoomOfMessages(Message message); // what the hundred is about

struct MessageValue {
    std::string Name;
    std::string Text; // CP1252
    bool IsWhole = false;

    MessageValue(std::string_view name, std::string_view text) : Name(name), Text(text) {}
    MessageValue(std::string_view name, long long number);
};
// Further ones than the text has room for are welcome: "line" and "handle" of the entity, say.
using MessageValues = std::vector<MessageValue>;

struct MessageLine {
    Message Number = Message::None; // None: nothing is to be told
    MessageValues Values{};
    bool Empty() const { return Number == Message::None; }
};

// Null where the line has none of that name.
const MessageValue* FindValue(const MessageLine& line, std::string_view name);
// The line for people, without its mark. What a value holds is shown as it is, control characters as "?". A
// line that stands for several of its number has their {count}.
std::string TextOf(const MessageLine& line);
// The names that the text wants and the line does not give: empty for every line of this program.
std::vector<std::string> MissingValues(const MessageLine& line);

// A page as `korvanti explain` prints it, and all of them as docs/messages.md holds them.
std::string PageText(const MessagePage& page);
std::string MessagesGuide();

} // namespace kv

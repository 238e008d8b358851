// Keystrokes into the window that has the input, on Windows. The texts are taken apart into strokes, each
// with the modifiers that were noted before it, and typed as by a hand: programs that look at the state of
// the keyboard see the modifiers held.
#include "platform/keys.h"

#include <vector>

#include <windows.h>

#include "platform/events.h"
#include "platform/text.h"
#include "platform/windows/wide_text.h"

namespace kv {

namespace {

struct KeyName {
    std::string_view Name;
    WORD Key;
};

constexpr KeyName KeyNames[] = {
    {"TAB", VK_TAB},     {"ENTER", VK_RETURN},  {"ESC", VK_ESCAPE}, {"BACKSPACE", VK_BACK},
    {"BS", VK_BACK},     {"DELETE", VK_DELETE}, {"DEL", VK_DELETE}, {"INSERT", VK_INSERT},
    {"INS", VK_INSERT},  {"HOME", VK_HOME},     {"END", VK_END},    {"PGUP", VK_PRIOR},
    {"PGDN", VK_NEXT},   {"UP", VK_UP},         {"DOWN", VK_DOWN},  {"LEFT", VK_LEFT},
    {"RIGHT", VK_RIGHT}, {"F1", VK_F1},         {"F2", VK_F2},      {"F3", VK_F3},
    {"F4", VK_F4},       {"F5", VK_F5},         {"F6", VK_F6},      {"F7", VK_F7},
    {"F8", VK_F8},       {"F9", VK_F9},         {"F10", VK_F10},    {"F11", VK_F11},
    {"F12", VK_F12},
};

struct Modifiers {
    bool Shift = false, Ctrl = false, Alt = false;
    bool Any() const { return Shift || Ctrl || Alt; }
};

void AddEvent(std::vector<INPUT>& events, WORD key, WORD character, DWORD flags)
{
    INPUT event{};
    event.type = INPUT_KEYBOARD;
    event.ki.wVk = key;
    event.ki.wScan = character;
    event.ki.dwFlags = flags;
    events.push_back(event);
}

void AddModifiers(std::vector<INPUT>& events, const Modifiers& held, DWORD flags)
{
    if (held.Shift)
        AddEvent(events, VK_SHIFT, 0, flags);
    if (held.Ctrl)
        AddEvent(events, VK_CONTROL, 0, flags);
    if (held.Alt)
        AddEvent(events, VK_MENU, 0, flags);
}

void AddStroke(std::vector<INPUT>& events, WORD key, const Modifiers& held)
{
    AddModifiers(events, held, 0);
    AddEvent(events, key, 0, 0);
    AddEvent(events, key, 0, KEYEVENTF_KEYUP);
    AddModifiers(events, held, KEYEVENTF_KEYUP);
}

// A character of the text. With a modifier noted before it its key counts, not its own shift: "^S" is
// Ctrl and the key S.
void AddCharacter(std::vector<INPUT>& events, char c, Modifiers held)
{
    const WCHAR wide = WideFromAnsi(std::string_view(&c, 1))[0];
    const SHORT scanned = VkKeyScanW(wide);
    if (scanned == -1) { // not on this keyboard
        AddEvent(events, 0, wide, KEYEVENTF_UNICODE);
        AddEvent(events, 0, wide, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
        return;
    }
    const unsigned state = static_cast<unsigned>(scanned) >> 8;
    if (!held.Any())
        held = {(state & 1) != 0, (state & 2) != 0, (state & 4) != 0};
    AddStroke(events, static_cast<WORD>(static_cast<unsigned>(scanned) & 0xFF), held);
}

// The key of a name in braces; 0 when there is none of this name.
WORD KeyOf(std::string_view name)
{
    for (const KeyName& row : KeyNames) {
        if (EqualIgnoringCase(row.Name, name))
            return row.Key;
    }
    return 0;
}

// The text in braces that begins at `at`, without them; empty when no brace closes it.
std::string_view NameInBraces(std::string_view keys, std::size_t at)
{
    const std::size_t end = keys.find('}', at + 2); // "{}}" is a closing brace
    return end == std::string_view::npos ? std::string_view() : keys.substr(at + 1, end - at - 1);
}

bool TakeModifier(char c, Modifiers& held)
{
    held.Shift = held.Shift || c == '+';
    held.Ctrl = held.Ctrl || c == '^';
    held.Alt = held.Alt || c == '%';
    return c == '+' || c == '^' || c == '%';
}

void AddKey(std::vector<INPUT>& events, char c, const Modifiers& held)
{
    const unsigned char code = static_cast<unsigned char>(c);
    if (c == '\r') {
        AddStroke(events, VK_RETURN, held);
    } else if (code >= 1 && code <= 26) { // Ctrl and its letter
        AddStroke(events, static_cast<WORD>('A' + code - 1), {held.Shift, true, held.Alt});
    } else {
        AddCharacter(events, c, held);
    }
}

std::vector<INPUT> EventsOf(std::string_view keys)
{
    std::vector<INPUT> events;
    Modifiers held;
    for (std::size_t at = 0; at < keys.size(); ++at) {
        if (TakeModifier(keys[at], held))
            continue;
        const std::string_view name =
            keys[at] == '{' ? NameInBraces(keys, at) : std::string_view(); // an open brace is typed
        const WORD key = KeyOf(name);
        if (key != 0)
            AddStroke(events, key, held);
        else if (name.size() <= 1) // a longer name that is unknown types nothing
            AddKey(events, name.empty() ? keys[at] : name[0], held);
        at += name.empty() ? 0 : name.size() + 1;
        held = {};
    }
    return events;
}

// The input is handled when the window that has it answers again; one that hangs is not waited for.
void WaitUntilHandled()
{
    constexpr int Rounds = 3;          // the first strokes may open another window, which then has the input
    constexpr DWORD Settle = 50;       // ms
    constexpr UINT LongestWait = 5000; // ms
    for (int round = 0; round < Rounds; ++round) {
        DoEvents(); // it may be a window of this process
        Sleep(Settle);
        DWORD_PTR answer = 0;
        SendMessageTimeoutW(GetForegroundWindow(), WM_NULL, 0, 0, SMTO_ABORTIFHUNG, LongestWait, &answer);
    }
    DoEvents();
}

void Send(std::string_view keys, bool wait)
{
    std::vector<INPUT> events = EventsOf(keys);
    if (!events.empty())
        SendInput(static_cast<UINT>(events.size()), events.data(), sizeof(INPUT));
    if (wait)
        WaitUntilHandled();
}

// Of the window of this process that has the focus; none has it while another program has the input.
Long TitleLength()
{
    const HWND focused = GetFocus();
    return focused != nullptr ? static_cast<Long>(GetWindowTextLengthW(focused)) : 0;
}

} // namespace

KeyHooks SystemKeys()
{
    return {Send, TitleLength};
}

} // namespace kv

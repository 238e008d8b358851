// Every control of the windows with its caption, designed value and tip, as tables. The windows are
// made from them, and what a person sees can be held against them.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kv {

enum class ControlKind {
    Button,
    Check,
    Radio,
    Text,
    Combo,
    Label,
    Frame,
    Grid,
    Tab,
    Menu,
    Folder,
    Window,
    Meter
};

// Kinds whose caption or default stand for more than the words say:
//   Window  the form itself, under its own name; the caption is the window's.
//   Grid    the caption is the header of a grid with one column; wider grids have tables of their own.
//   Folder  the folder chooser behind a browse button, "SPB1.Browser"; caption its title, default its prompt.
//   Combo   the default is the text that is selected at first.
//   Menu    the heads "MnuHelp" and "Pop" with their items; separators are no rows.

struct ControlRow {
    std::string_view Form; // "Form1", "SetUp", "ToolSub", "OptSet", "About"
    std::string_view Name; // with its index: "DXFPath(0)"
    ControlKind Kind;
    std::string_view Caption; // of a text or combo: the label beside it
    std::string_view Default; // designed text; "on" for a selected check or radio
    bool ShownByDesign = true;
    std::string_view Mnemonic = {};   // letter of the caption for Alt, as spelled there; empty none
    std::string_view Accessible = {}; // name for a screen reader where the caption says too little
};

std::span<const ControlRow> ControlRows();
// Null when there is none.
const ControlRow* FindControl(std::string_view form, std::string_view name);

struct TipRow {
    std::string_view Form, Name;
    std::string_view Text; // with "{product}" where the product's name stands
};
std::span<const TipRow> CursorTips();
std::string TipText(const TipRow& row);

// Tells the window to set or clear all tips.
struct TipHooks {
    void (*Install)(bool on) = nullptr;
};
extern TipHooks Tips;
void InstallCursorTips(bool on);

constexpr std::string_view MeterCaption =
    "    Parsing         Reading Info    Processing       Sequencing      Syn Leads       Pgm Code     ";
extern const std::string_view MeterTitles[6];

} // namespace kv

// Start and end of the program, as far as they need no window: the installation's folder, all loads in
// their order, the registration with the control's editor, window positions.
#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"
#include "platform/numbers.h"

namespace kv {

// The folder of `home` (host path as typed, empty when not given), else of KORVANTI_HOME, else the
// executable's when a KV90.INI stands there, else the user's configuration folder. Empty when the named
// one is not there.
std::string InstallationFolder(std::string_view home);

// Whether the boxes of the window that make binaries are hidden: a folder of the other controls.
bool BinHidden();
// From the settings to the timers: all that start-up does behind the window's own making. SetExeFolder
// has been called; the command line stands in Shell.CommandLine.
void StartShell();
// The window goes: position apart, all that is saved and reset.
void StopShell();

// Letters of the boxes `Sq(0)` to `Sq(3)` as list places: 0 the blank entry, 1 V, 2 H, 3 G, 4 R.
std::string SequenceLetter(int place);
int SequencePlace(char letter); // -1: leaves the box alone
// A box changed: joins the four letters and stores them.
void StoreSequence(const int (&places)[4]);
// The check boxes "On" and "D R Alternate" changed.
void StoreOptimizerBox(bool on);
void StoreAlternation(bool on);

// In twips. Main window: application "ZLT", section "KVFrmMain"; the clamp turns negative into 500.
struct WindowPosition {
    Long Top = 500, Left = 500;
};
constexpr int TwipsPerPixel = 15; // at 96 dots an inch
WindowPosition LoadWindowPosition(std::string_view section, bool clamp);
// A failure is reported; whoever closes the report notes it as left.
bool HasWindowPosition(std::string_view section); // one is stored
FileOutcome SaveWindowPosition(std::string_view section, const WindowPosition& position);
std::string UnkeptPositionLine(const FileOutcome& outcome);
constexpr std::string_view MainPositionSection = "KVFrmMain";
constexpr std::string_view AboutPositionSection = "AboutFrmMain";

// Items of the Help menu: starts the command line of section "System", key "Help" or "OLHelp".
void StartHelp(std::string_view key);
// The guide that came with the program; empty: none was found.
std::string ShippedGuide();

} // namespace kv

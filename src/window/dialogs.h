// The dialogs of the main window. SetUp and OptSet are made once, at start, since their controls show
// live settings.
#pragma once

class QWidget;

namespace kv {

// Loaded hidden at program start; `parent` is the main window.
void LoadDialogs(QWidget& parent);
void ForgetDialogs();

// Modal; each comes back when it is closed.
void ShowSetup();
void ShowToolSub();
void ShowOptSet();
void ShowAbout();
// At start: closes by itself as soon as it has been seen. `whenActive` runs just before.
void ShowAboutAtStart(void (*whenActive)());

// Tips of the dialogs that stand: the part of the window's Tips.Install that is theirs.
void ShowDialogTips(bool on);

// Boxes and questions of the core in front of the window, and the folder browser.
void InstallBoxes(QWidget& parent);

} // namespace kv

#include "shell/forms/dialogs.h"
namespace kv {
void LoadDialogs(QWidget&) {}
void ForgetDialogs() {}
void ShowSetup() {}
void ShowToolSub() {}
void ShowOptSet() {}
void ShowAbout() {}
void ShowAboutAtStart(void (*)()) {}
void InstallBoxes(QWidget&) {}
} // namespace kv

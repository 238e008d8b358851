// The dialogs as the main window knows them. Setup and Optimizer Settings live from program start to its
// end, since their grids stay as they were left; the others are made anew.
#include "shell/forms/dialogs.h"

#include <QApplication>
#include <QPointer>

#include "shell/forms/about_dialog.h"
#include "shell/forms/controls.h"
#include "shell/forms/opt_set_dialog.h"
#include "shell/forms/setup_dialog.h"
#include "shell/forms/tool_sub_dialog.h"

namespace kv {

namespace {

// Theirs is the main window, which may be gone first.
QPointer<QDialog> Setup;
QPointer<QDialog> OptSet;
QPointer<QWidget> MainOne;

} // namespace

void LoadDialogs(QWidget& parent)
{
    ForgetDialogs();
    MainOne = &parent;
    Setup = new SetupDialog(parent);
    OptSet = new OptSetDialog(parent);
}

void ForgetDialogs()
{
    delete Setup.data();
    delete OptSet.data();
}

void ShowSetup()
{
    if (!Setup.isNull())
        static_cast<SetupDialog*>(Setup.data())->Open();
}

void ShowOptSet()
{
    if (!OptSet.isNull())
        static_cast<OptSetDialog*>(OptSet.data())->Open();
}

void ShowToolSub()
{
    ToolSubDialog(MainOne.data()).Open();
}

void ShowAbout()
{
    AboutDialog(MainOne.data(), nullptr).Open();
}

void ShowAboutAtStart(void (*whenActive)())
{
    AboutDialog(nullptr, whenActive).Open();
}

void ShowDialogTips(bool on)
{
    if (!Setup.isNull())
        ShowTips(*Setup, "SetUp", on);
}

} // namespace kv

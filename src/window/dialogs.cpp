// The dialogs as the main window knows them. Setup and Optimizer Settings live from program start to its
// end, since their grids stay as they were left; the others are made anew.
#include "window/dialogs.h"

#include <QApplication>
#include <QPointer>

#include "window/about_dialog.h"
#include "window/controls.h"
#include "window/opt_set_dialog.h"
#include "window/setup_dialog.h"
#include "window/tool_sub_dialog.h"

namespace kv {

namespace {

// Theirs is the main window, which may be gone first.
QPointer<QDialog> Setup;
QPointer<QDialog> OptSet;
QPointer<QWidget> DialogParent;

} // namespace

void LoadDialogs(QWidget& parent)
{
    ForgetDialogs();
    DialogParent = &parent;
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
    ToolSubDialog(DialogParent.data()).Open();
}

void ShowAbout()
{
    AboutDialog(DialogParent.data(), nullptr).Open();
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

// Boxes of the core as message boxes in front of the window that works at the moment. Texts come in
// CP1252 with CR LF between their lines and are shown as they are, never as rich text.
#include "window/boxes.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include "shell/list_count.h"
#include "state/report.h"
#include "state/shell_state.h"
#include "window/controls.h"
#include "window/dialogs.h"

namespace kv {

PersonHooks Person{TellInBox, AskInBox, ChooseFolderInBrowser};

namespace {

QPointer<QWidget> BoxParent; // in front of which a box stands while no window is active

QString BoxText(std::string_view text)
{
    QString shown = Shown(text);
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return shown;
}

QWidget* WindowInFront()
{
    QWidget* const active = QApplication::activeModalWidget() != nullptr ? QApplication::activeModalWidget()
                                                                         : QApplication::activeWindow();
    return active != nullptr ? active : BoxParent.data();
}

QMessageBox::Icon IconOf(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::Warning:
        return QMessageBox::Warning;
    case BoxIcon::Error:
        return QMessageBox::Critical;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

// A list of several drawings goes on: who started it may have left, and reads the boxes in the report.
bool HoldsUpNobody()
{
    return Shell.Unattended || Shell.Stopped || RunningList.Total > 0;
}

// One box for all that nobody has read: it shows the last text, the report holds each of them.
void LeaveBox(const QString& text, const QString& title, BoxIcon icon)
{
    static QPointer<QMessageBox> left;
    if (left.isNull()) {
        left = new QMessageBox(BoxParent.data());
        left->setAttribute(Qt::WA_DeleteOnClose);
        left->setAttribute(Qt::WA_ShowWithoutActivating);
        left->setTextFormat(Qt::PlainText);
        left->setModal(false);
    }
    left->setIcon(IconOf(icon));
    left->setWindowTitle(title);
    left->setText(text);
    left->show();
}

} // namespace

void TellInBox(const QString& text, const QString& title, BoxIcon icon)
{
    if (HoldsUpNobody()) {
        LeaveBox(text, title, icon);
        return;
    }
    QMessageBox box(IconOf(icon), title, text, QMessageBox::Ok, WindowInFront());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool AskInBox(const QString& text, const QString& title, const QString& detail)
{
    if (Shell.Stopped)
        return false;
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, WindowInFront());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    QString more = detail;
    if (Shell.Unattended) {
        more += (more.isEmpty() ? QString() : QStringLiteral("\n")) +
                QStringLiteral("No, when nobody answers within %1 seconds.").arg(LongestQuestion);
        QTimer::singleShot(LongestQuestion * 1000, &box, &QDialog::reject);
    }
    box.setInformativeText(more);
    return box.exec() == QMessageBox::Yes;
}

// The system's own chooser has no place for the prompt.
QString ChooseFolderInBrowser(QWidget* parent, const QString& title, const QString& prompt,
                              const QString& folder)
{
    QFileDialog browser(parent, title, folder);
    browser.setOption(QFileDialog::DontUseNativeDialog);
    browser.setFileMode(QFileDialog::Directory);
    browser.setOption(QFileDialog::ShowDirsOnly);
    browser.setLabelText(QFileDialog::LookIn, prompt);
    if (browser.exec() != QDialog::Accepted || browser.selectedFiles().isEmpty())
        return {};
    return browser.selectedFiles().first();
}

void InstallBoxes(QWidget& parent)
{
    BoxParent = &parent;
    Dialogs.Box = [](std::string_view text, std::string_view title, BoxIcon icon) {
        if (Shell.RunActive || HoldsUpNobody())
            BufferBoxText(text);
        Person.Tell(BoxText(text), Shown(title), icon);
    };
    Dialogs.Ask = [](std::string_view text, std::string_view title, std::string_view detail) {
        return Person.Ask(BoxText(text), Shown(title), BoxText(detail));
    };
}

} // namespace kv

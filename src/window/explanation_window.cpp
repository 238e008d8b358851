#include "window/explanation_window.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QKeyEvent>

#include "platform/paths.h"
#include "window/controls.h"

namespace kv {

namespace {

constexpr int WideLetters = 90, HighLines = 40; // of the first size

} // namespace

ExplanationWindow::ExplanationWindow(QWidget* parent) : QPlainTextEdit(parent)
{
    setWindowFlag(Qt::Window);
    setObjectName(QStringLiteral("Explanation"));
    setAccessibleName(QStringLiteral("Explanation of a drawing"));
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    resize(WideLetters * fontMetrics().averageCharWidth(), HighLines * fontMetrics().height());
    Looker.Done = [this](const std::string&, const DrawingLook& look) {
        setPlainText(look.Explanation.empty() ? QStringLiteral("Cannot be explained: ") + Shown(look.Fault)
                                              : QString::fromStdString(look.Explanation));
    };
}

void ExplanationWindow::Explain(const std::string& drawing)
{
    const QString name = ShownAsPath(FileNameOf(drawing));
    setWindowTitle(name + QStringLiteral(" - explained"));
    setPlainText(name + QStringLiteral(" is being read."));
    Looker.Look(drawing);
    show();
    raise();
    activateWindow();
}

void ExplanationWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QPlainTextEdit::keyPressEvent(event);
}

void ExplanationWindow::closeEvent(QCloseEvent* event)
{
    Looker.Forget();
    QPlainTextEdit::closeEvent(event);
}

} // namespace kv

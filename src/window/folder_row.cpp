#include "window/folder_row.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>

#include "state/shell_state.h"
#include "window/controls.h"

namespace kv {

namespace {

constexpr int FilterLetters = 20; // width of the field, in digits

} // namespace

FolderRow::FolderRow(QLabel* folder) : Filter(new QLineEdit), Recent(new QToolButton)
{
    Filter->setObjectName(QStringLiteral("ListFilter"));
    Filter->setPlaceholderText(QStringLiteral("Filter"));
    Filter->setAccessibleName(QStringLiteral("Filter of the file names"));
    Filter->setToolTip(QStringLiteral("Only names that hold these words are listed. Esc ends the filter."));
    Filter->setClearButtonEnabled(true);
    Filter->setFixedWidth(FilterLetters * Filter->fontMetrics().horizontalAdvance(QLatin1Char('0')));
    Filter->installEventFilter(this);
    auto* const menu = new QMenu(Recent);
    menu->setObjectName(QStringLiteral("RecentMenu"));
    Recent->setObjectName(QStringLiteral("RecentFolders"));
    Recent->setText(QStringLiteral("Folders"));
    Recent->setAccessibleName(QStringLiteral("Recent folders"));
    Recent->setToolTip(QStringLiteral("Source folders that were used last"));
    Recent->setPopupMode(QToolButton::InstantPopup);
    Recent->setFocusPolicy(Qt::StrongFocus);
    Recent->setMenu(menu);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { FillMenu(*menu); });
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (QWidget* const widget : std::initializer_list<QWidget*>{folder, Recent, Filter})
        row->addWidget(widget, widget == folder ? 1 : 0);
    Filter->hide();
    Recent->hide();
}

void FolderRow::FillMenu(QMenu& menu)
{
    menu.clear();
    for (const std::string& folder : Folders ? Folders() : std::vector<std::string>()) {
        // A name is no Alt letter.
        const QString text = ShownAsPath(folder).replace(QLatin1Char('&'), QLatin1String("&&"));
        connect(menu.addAction(text), &QAction::triggered, this, [this, folder] { FolderChosen(folder); });
    }
    if (menu.isEmpty())
        menu.addAction(QStringLiteral("No other folder was used yet"))->setEnabled(false);
}

bool FolderRow::eventFilter(QObject* object, QEvent* event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (object != Filter || !isKey || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape ||
        Shell.BtnAbortShown) // there the key aborts the run
        return QWidget::eventFilter(object, event);
    event->accept();
    if (event->type() == QEvent::ShortcutOverride)
        return true;
    Filter->clear();
    if (FilterLeft)
        FilterLeft();
    return true;
}

} // namespace kv

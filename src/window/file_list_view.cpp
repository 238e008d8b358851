// Rows are of one height and no row has a widget of its own, so that a long list stays fluid. A
// conversion never starts inside an event of the list: its rows may be rebuilt meanwhile.
#include "window/file_list_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include "platform/paths.h"
#include "shell/control_tables.h"
#include "shell/file_list.h"
#include "state/settings.h"
#include "window/controls.h"

namespace kv {

namespace {

constexpr int RebuiltColumn = 3; // a rebuilt list stands sorted by it
constexpr int NamesAt = 3;
constexpr int StateLetters = 22; // characters of the column's width

QAction* PopupItem(QMenu& menu, std::string_view name)
{
    const ControlRow* const row = FindControl("Form1", name);
    QAction* const item =
        menu.addAction(row != nullptr ? WithAltLetter(row->Caption, row->Mnemonic) : QString());
    item->setObjectName(Shown(name));
    return item;
}

std::vector<std::string> DrawingsOf(const QMimeData& mime)
{
    std::vector<std::string> paths;
    for (const QUrl& url : mime.urls()) {
        const QString file = url.toLocalFile();
        if (file.endsWith(QLatin1String(".dxf"), Qt::CaseInsensitive))
            paths.push_back(FromHostPath(file.toStdString()));
    }
    return paths;
}

void AskToDelete()
{
    FileList.DeleteAsked = true;
    FinishPopup();
}

} // namespace

FileListView::FileListView() : Pop(new QMenu(this))
{
    setModel(&Model);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setAcceptDrops(true);
    setColumnHidden(0, true);
    setColumnHidden(1, true);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    QHeaderView* const header = horizontalHeader();
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    header->setHighlightSections(false);
    header->setMinimumSectionSize(2 * CharacterWidth());
    header->moveSection(StateColumn - 1, NamesAt); // its number is the last, its place right of the names
    ShowWidths();
    MakePopup();

    connect(header, &QHeaderView::sectionClicked, this, [this](int section) { SortBy(section); });
    connect(header, &QHeaderView::sectionResized, this, [this](int section, int, int pixels) {
        if (!Showing)
            TakeWidth(section, pixels);
    });
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected, const QItemSelection& deselected) {
                TakeSelection(deselected, false);
                TakeSelection(selected, true);
            });
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
        if (!Showing)
            FileList.Current = current.isValid() ? Model.RowAt(current.row()) : -1;
    });
}

void FileListView::MakePopup()
{
    Pop->setObjectName(QStringLiteral("Pop"));
    connect(PopupItem(*Pop, "PopProcess"), &QAction::triggered, this,
            [this] { QTimer::singleShot(0, this, [this] { Process(); }); });
    Pop->addSeparator();
    connect(PopupItem(*Pop, "PopDelete"), &QAction::triggered, this, [] { FileList.DeleteAsked = true; });
    Pop->addSeparator();
    Explain = Pop->addAction(QStringLiteral("&Explain"));
    Explain->setObjectName(QStringLiteral("PopExplain"));
    Explain->setShortcut(QKeySequence(Qt::Key_F7));
    Undo = Pop->addAction(QStringLiteral("&Undo Delete"));
    Undo->setObjectName(QStringLiteral("PopUndo"));
    Undo->setShortcut(QKeySequence::Undo);
    for (QAction* const action : {Explain, Undo}) // also while the menu is closed
        addAction(action);
    Undo->setShortcutContext(Qt::WidgetShortcut);
    connect(Undo, &QAction::triggered, this, [] { UndoDelete(); });
    connect(Pop, &QMenu::aboutToShow, this, [this] { Undo->setEnabled(MayUndoDelete()); });
    connect(Pop, &QMenu::aboutToHide, this, [this] { Undo->setEnabled(true); }); // the key asks for itself
}

int FileListView::CharacterWidth() const
{
    return std::max(1, fontMetrics().horizontalAdvance(QLatin1Char('0')));
}

void FileListView::ShowRows()
{
    Showing = true;
    Model.ShowRows();
    horizontalHeader()->setSortIndicator(FileList.Rows.empty() ? -1 : RebuiltColumn - 1, Qt::AscendingOrder);
    Showing = false;
    ShowSelection();
}

void FileListView::ShowSelection()
{
    Showing = true;
    const int count = Model.rowCount();
    const auto isSelected = [this](int place) {
        const auto row = static_cast<std::size_t>(Model.RowAt(place));
        return row < FileList.Rows.size() && FileList.Rows[row].Selected;
    };
    QItemSelection marked;
    for (int place = 0; place < count; ++place) {
        const int first = place;
        while (place < count && isSelected(place))
            ++place;
        if (place > first)
            marked.select(Model.index(first, 0), Model.index(place - 1, StateColumn - 1));
    }
    selectionModel()->select(marked, QItemSelectionModel::ClearAndSelect);
    if (const int place = Model.PlaceOf(FileList.Current); place < count)
        selectionModel()->setCurrentIndex(Model.index(place, RebuiltColumn - 1),
                                          QItemSelectionModel::NoUpdate);
    Showing = false;
}

void FileListView::ShowWidths()
{
    Showing = true;
    for (int column = 0; column < FileColumns; ++column)
        setColumnWidth(column, static_cast<int>(std::lround(
                                   FileList.Widths[static_cast<std::size_t>(column)] * CharacterWidth())));
    setColumnWidth(StateColumn - 1, WidthOfStates());
    setColumnHidden(0, true);
    setColumnHidden(1, true);
    setColumnHidden(StateColumn - 1, !StateShown);
    StretchNames();
    Showing = false;
}

// The names take the room that the other columns leave, unless somebody has set their width.
void FileListView::StretchNames()
{
    if (Val(Config.ListColumnWidth.front()) > 0)
        return;
    const bool before = std::exchange(Showing, true);
    const int designed = static_cast<int>(std::lround(FileList.Widths[NamesAt - 1] * CharacterWidth()));
    const int room = viewport()->width() - (horizontalHeader()->length() - columnWidth(NamesAt - 1));
    setColumnWidth(NamesAt - 1, std::max(designed, room));
    Showing = before;
}

void FileListView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    StretchNames();
}

void FileListView::ShowStates()
{
    Model.ShowStates();
}

void FileListView::ShowStateColumn(bool on)
{
    StateShown = on;
    ShowWidths();
}

void FileListView::SetFilter(const QString& words)
{
    Showing = true;
    const int sorted = horizontalHeader()->sortIndicatorSection();
    const Qt::SortOrder order = horizontalHeader()->sortIndicatorOrder();
    Model.SetFilter(words);
    horizontalHeader()->setSortIndicator(sorted, order);
    Showing = false;
    ShowSelection();
}

int FileListView::WidthOfStates() const
{
    return StateLetters * CharacterWidth();
}

int FileListView::SelectedRow() const
{
    return Model.RowAt(currentIndex().row());
}

void FileListView::TakeSelection(const QItemSelection& rows, bool selected) const
{
    if (Showing)
        return;
    for (const QItemSelectionRange& range : rows) {
        for (int place = range.top(); place <= range.bottom(); ++place) {
            const auto row = static_cast<std::size_t>(Model.RowAt(place));
            if (row < FileList.Rows.size())
                FileList.Rows[row].Selected = selected;
        }
    }
}

void FileListView::SortBy(int section)
{
    SortFileList(section + 1);
    if (FileList.SortedColumn == 0)
        return;
    horizontalHeader()->setSortIndicator(FileList.SortedColumn - 1,
                                         FileList.SortOrder == 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
}

// What column 3 shows may change with its width; the order of the rows does not.
void FileListView::TakeWidth(int section, int pixels)
{
    if (section + 1 > FileColumns)
        return; // of the states: for this start alone
    const int sorted = horizontalHeader()->sortIndicatorSection();
    const Qt::SortOrder order = horizontalHeader()->sortIndicatorOrder();
    ResizeFileColumn(section + 1, static_cast<double>(pixels) / CharacterWidth());
    horizontalHeader()->setSortIndicator(sorted, order);
}

void FileListView::contextMenuEvent(QContextMenuEvent* event)
{
    QPoint place = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard)
        place = viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft());
    Pop->exec(place);
    FinishPopup();
}

void FileListView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
        MoveListIndexOn();
        ShowSelection();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        QTimer::singleShot(0, this, [this] { Process(); });
        return;
    case Qt::Key_Delete:
        AskToDelete();
        return;
    default:
        QTableView::keyPressEvent(event);
    }
}

void FileListView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid())
        QTimer::singleShot(0, this, [this] { Process(); });
}

void FileListView::dragEnterEvent(QDragEnterEvent* event)
{
    if (!DrawingsOf(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void FileListView::dragMoveEvent(QDragMoveEvent* event)
{
    event->acceptProposedAction();
}

void FileListView::dropEvent(QDropEvent* event)
{
    const std::vector<std::string> paths = DrawingsOf(*event->mimeData());
    if (paths.empty())
        return;
    // The other program waits for the drop to end, and a copy of the drawings is all that is taken.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    QTimer::singleShot(0, this, [this, paths] { Dropped(paths); });
}

} // namespace kv

// A report may have 100,000 rows of different heights, so heights are set only for the rows that
// are new or wrap anew in another width, and rows of one paint are added together.
#include "window/report_view.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPainter>
#include <QSaveFile>
#include <QStyledItemDelegate>

#include "platform/dialogs.h"
#include "platform/stand_ins.h"
#include "shell/control_tables.h"
#include "state/settings.h"
#include "window/controls.h"

namespace kv {

namespace {

constexpr int TextMargin = 4; // pixels left and right of a row's text
constexpr int RowSpace = 2;   // pixels that a row is higher than its lines
constexpr int FitDelay = 40;  // ms without another change of the width

class ReportDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem row = option;
        initStyleOption(&row, index);
        const QString text = row.text;
        row.text.clear();
        row.widget->style()->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);
        const bool selected = (row.state & QStyle::State_Selected) != 0;
        painter->setFont(row.font);
        painter->setPen(row.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
        const ReportLines& lines = static_cast<const ReportView*>(row.widget)->Lines;
        QRect line = row.rect.adjusted(TextMargin, RowSpace / 2, -TextMargin, 0);
        line.setHeight(lines.LineHeight());
        for (const QStringView part : lines.Wrap(text, line.width())) {
            painter->drawText(line, static_cast<int>(row.displayAlignment) | Qt::TextSingleLine,
                              part.toString());
            line.translate(0, lines.LineHeight());
        }
    }
};

} // namespace

ReportView::ReportView() : Lines(font()), Menu(new QMenu(this))
{
    setModel(&Model);
    setItemDelegate(new ReportDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // A bar that came and went would change the width, and the wrapping with it.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(Lines.LineHeight() + RowSpace);
    Model.SetBase(palette().color(QPalette::Base));

    Menu->addAction(QStringLiteral("&Copy"), QKeySequence(QKeySequence::Copy), this, [this] { Copy(); });
    Menu->addAction(QStringLiteral("&Save as..."), QKeySequence(QKeySequence::Save), this,
                    [this] { AskWhereToSave(); });
    for (QAction* const action : Menu->actions())
        action->setShortcutContext(Qt::WidgetShortcut); // shown in the menu; keyPressEvent obeys them

    connect(this, &QTableView::clicked, this, [this](const QModelIndex& row) { ChoosePlace(row); });
    ShowSoon.setSingleShot(true);
    connect(&ShowSoon, &QTimer::timeout, this, [this] { ShowWaiting(); });
    FitSoon.setSingleShot(true);
    FitSoon.setInterval(FitDelay);
    connect(&FitSoon, &QTimer::timeout, this, [this] { FitHeights(0); });
}

void ReportView::ChoosePlace(const QModelIndex& row) const
{
    if (!row.isValid() || !PlaceChosen)
        return;
    const RowPlace& place = Model.Rows[static_cast<std::size_t>(row.row())].Place;
    if (!place.IsNone())
        PlaceChosen(place);
}

void ReportView::Add(const ReportRow& row)
{
    Waiting.push_back(ShownRowOf(row));
    if (!ShowSoon.isActive())
        ShowSoon.start(0);
}

void ReportView::ShowWaiting()
{
    ShowSoon.stop();
    if (Waiting.empty())
        return;
    const int first = Model.rowCount();
    Model.Add(Waiting);
    Waiting.clear();
    FitHeights(first);
    selectionModel()->setCurrentIndex(Model.index(Model.rowCount() - 1), QItemSelectionModel::NoUpdate);
    scrollToBottom();
}

void ReportView::Clear()
{
    Waiting.clear();
    Model.Clear();
}

int ReportView::TextWidth() const
{
    return viewport()->width() - 2 * TextMargin;
}

void ReportView::FitHeights(int firstRow)
{
    const int width = TextWidth();
    if (firstRow == 0)
        FittedWidth = width;
    // While it may paint, the header finds the place of each row anew for each height.
    verticalHeader()->setUpdatesEnabled(false);
    for (int row = firstRow; row < Model.rowCount(); ++row) {
        const QString& text = Model.Rows[static_cast<std::size_t>(row)].Text;
        const int high = static_cast<int>(Lines.Wrap(text, width).size()) * Lines.LineHeight() + RowSpace;
        if (rowHeight(row) != high)
            setRowHeight(row, high);
    }
    verticalHeader()->setUpdatesEnabled(true);
}

QString ReportView::TextOf(bool selectedAlone) const
{
    QString text;
    for (int row = 0; row < Model.rowCount(); ++row) {
        if (!selectedAlone || selectionModel()->isRowSelected(row))
            text += Model.Rows[static_cast<std::size_t>(row)].Text + QLatin1Char('\n');
    }
    return text;
}

QString ReportView::ReportText() const
{
    return TextOf(selectionModel()->hasSelection());
}

void ReportView::Copy() const
{
    QGuiApplication::clipboard()->setText(ReportText());
}

bool ReportView::SaveTo(const QString& file) const
{
    QSaveFile place(file);
    return place.open(QIODevice::WriteOnly) && place.write(TextOf(false).toUtf8()) >= 0 && place.commit();
}

void ReportView::AskWhereToSave()
{
    const QString file = QFileDialog::getSaveFileName(this, QStringLiteral("Save Process Report"),
                                                      QStringLiteral("report.txt"),
                                                      QStringLiteral("Text files (*.txt);;All files (*)"));
    if (file.isEmpty() || SaveTo(file))
        return;
    TellInABox(Message::ReportNotWritten, {{"file", PathFromUtf8(file.toStdString())}}, ProductName,
               BoxIcon::Error);
}

void ReportView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        Model.SetBase(palette().color(QPalette::Base));
    if (event->type() != QEvent::FontChange)
        return;
    Lines = ReportLines(font());
    verticalHeader()->setDefaultSectionSize(Lines.LineHeight() + RowSpace);
    FitSoon.start();
}

void ReportView::contextMenuEvent(QContextMenuEvent* event)
{
    QPoint place = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard)
        place = viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft());
    Menu->exec(place);
}

void ReportView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy)) {
        Copy();
        return;
    }
    if (event->matches(QKeySequence::Save)) {
        AskWhereToSave();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        ChoosePlace(currentIndex());
    QTableView::keyPressEvent(event);
}

void ReportView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    if (TextWidth() != FittedWidth)
        FitSoon.start();
}

} // namespace kv

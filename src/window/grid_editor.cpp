// The cells' texts stand in the items: a flag's own text beside its tick, since any number but 0 is on
// and stays as it was written until somebody ticks the cell.
#include "window/grid_editor.h"

#include <algorithm>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpressionValidator>
#include <QStyledItemDelegate>
#include <QToolTip>

#include "platform/numbers.h"
#include "shell/control_tables.h"
#include "shell/measure_fields.h"
#include "window/controls.h"
#include "window/number_fields.h"
#include "window/wheel_guard.h"

namespace kv {

namespace {

constexpr int FlagText = Qt::UserRole;
constexpr int RowsInSight = 10;
constexpr int WidestInSight = 70; // characters

const QRegularExpression& NumberPicture()
{
    static const QRegularExpression picture(QStringLiteral("[-+]?[0-9]*[.]?[0-9]*"));
    return picture;
}

bool IsListed(const GridColumn& column, std::string_view text)
{
    return text == column.Default || std::ranges::find(column.Items, text) != column.Items.end();
}

// Takes the comma of the person's system as a point. Any other comma is refused with a word, since "12,5"
// would be left as 125.
class NumberTyping : public QRegularExpressionValidator {
  public:
    explicit NumberTyping(QLineEdit* editor)
        : QRegularExpressionValidator(NumberPicture(), editor), Editor(editor)
    {
    }
    State validate(QString& input, int& position) const override
    {
        if (CommaIsDecimal())
            input.replace(QLatin1Char(','), QLatin1Char('.'));
        else if (input.contains(QLatin1Char(',')))
            QToolTip::showText(Editor->mapToGlobal(QPoint(0, Editor->height())),
                               QStringLiteral("A number has a point, not a comma: 12.5"), Editor);
        return QRegularExpressionValidator::validate(input, position);
    }

  private:
    QLineEdit* Editor;
};

// Where the tick of a flag stands: the middle of its cell.
QRect TickPlace(const QStyleOptionViewItem& option, const QWidget* widget)
{
    const QStyle* const style = widget->style();
    const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, &option, widget),
                     style->pixelMetric(QStyle::PM_IndicatorHeight, &option, widget));
    return QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
}

class CellEditing : public QStyledItemDelegate {
  public:
    CellEditing(QObject* owner, std::span<const GridColumn> columns)
        : QStyledItemDelegate(owner), Columns(columns)
    {
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& at) const override
    {
        const GridColumn& column = ColumnAt(at);
        if (column.Kind == CellKind::List)
            return ListEditor(parent, column);
        auto* const number = new QLineEdit(parent);
        number->setFrame(false);
        number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        number->setValidator(new NumberTyping(number));
        number->setAccessibleName(Shown(column.Header));
        return number;
    }
    void setEditorData(QWidget* editor, const QModelIndex& at) const override
    {
        if (auto* const list = qobject_cast<QComboBox*>(editor))
            list->setCurrentText(at.data(Qt::EditRole).toString());
        else
            QStyledItemDelegate::setEditorData(editor, at);
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& at) const override
    {
        if (const auto* const list = qobject_cast<QComboBox*>(editor))
            model->setData(at, list->currentText());
        else
            QStyledItemDelegate::setModelData(editor, model, at);
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& at) const override
    {
        const CellKind kind = ColumnAt(at).Kind;
        if (kind == CellKind::Number)
            return QStyledItemDelegate::paint(painter, option, at);
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, at);
        const QStyle* const style = option.widget->style();
        if (kind == CellKind::Flag) {
            QStyleOptionViewItem tick = cell;
            cell.features &= ~QStyleOptionViewItem::HasCheckIndicator;
            style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, option.widget);
            tick.rect = TickPlace(option, option.widget);
            tick.state &= ~QStyle::State_HasFocus;
            tick.state |= tick.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
            style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &tick, painter, option.widget);
            return;
        }
        style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, option.widget);
        QStyleOption arrow = option;
        const int side = option.fontMetrics.height() / 2;
        arrow.rect = QRect(option.rect.right() - side - 3, option.rect.center().y() - side / 2, side, side);
        arrow.state = QStyle::State_Enabled;
        style->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter, option.widget);
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& at) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, at);
        const GridColumn& column = ColumnAt(at);
        if (column.Kind != CellKind::List)
            return size;
        int widest = 0; // the list opens in the cell, whatever stands there now
        for (const std::string_view item : column.Items)
            widest = std::max(widest, option.fontMetrics.horizontalAdvance(Shown(item)));
        size.setWidth(widest + 3 * option.fontMetrics.height());
        return size;
    }
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& at) override
    {
        if (ColumnAt(at).Kind != CellKind::Flag)
            return QStyledItemDelegate::editorEvent(event, model, option, at);
        bool toggles = false;
        if (event->type() == QEvent::MouseButtonRelease) {
            const auto* const mouse = static_cast<QMouseEvent*>(event);
            toggles = mouse->button() == Qt::LeftButton &&
                      TickPlace(option, option.widget).contains(mouse->position().toPoint());
        } else if (event->type() == QEvent::KeyPress) {
            toggles = static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
        }
        if (!toggles)
            return false;
        const bool on = at.data(Qt::CheckStateRole).toInt() != Qt::Checked;
        model->setData(at, on ? QStringLiteral("1") : QStringLiteral("0"), FlagText);
        return model->setData(at, on ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
    }

  private:
    const GridColumn& ColumnAt(const QModelIndex& at) const
    {
        return Columns[static_cast<std::size_t>(at.column())];
    }
    // Opens by itself, and what is picked is kept at once.
    QWidget* ListEditor(QWidget* parent, const GridColumn& column) const
    {
        auto* const list = new QComboBox(parent);
        if (std::ranges::find(column.Items, column.Default) == column.Items.end())
            list->addItem(Shown(column.Default)); // the way back to no entry
        for (const std::string_view item : column.Items)
            list->addItem(Shown(item));
        list->setAccessibleName(Shown(column.Header));
        auto* const self = const_cast<CellEditing*>(this); // the signals below belong to the object
        QObject::connect(list, &QComboBox::activated, self, [self, list] {
            Q_EMIT self->commitData(list);
            Q_EMIT self->closeEditor(list);
        });
        QMetaObject::invokeMethod(
            list, [list] { list->showPopup(); }, Qt::QueuedConnection);
        return list;
    }

    std::span<const GridColumn> Columns;
};

} // namespace

GridEditor::GridEditor(std::string_view form, std::string_view name, std::span<const GridColumn> columns,
                       int rows)
    : Columns(columns), DesignedRows(rows)
{
    setObjectName(Shown(name));
    if (const ControlRow* const row = FindControl(form, name))
        setAccessibleName(Shown(row->Accessible));
    setColumnCount(static_cast<int>(columns.size()));
    QStringList headers;
    for (const GridColumn& column : columns)
        headers += Shown(column.Header);
    setHorizontalHeaderLabels(headers);
    setItemDelegate(new CellEditing(this, columns));
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    ShowCells({});
    setCurrentCell(0, 0);
}

void GridEditor::ShowCells(const GridCells& cells)
{
    const int rows = std::max(DesignedRows, static_cast<int>(cells.size()));
    setRowCount(rows);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            const bool given = static_cast<std::size_t>(row) < cells.size() &&
                               static_cast<std::size_t>(column) < cells[static_cast<std::size_t>(row)].size();
            SetCellText(row, column,
                        given ? std::string_view(
                                    cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)])
                              : Columns[static_cast<std::size_t>(column)].Default);
        }
    }
    FitColumns();
}

GridCells GridEditor::Cells()
{
    CloseOpenEditor();
    GridCells cells(static_cast<std::size_t>(rowCount()));
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column)
            cells[static_cast<std::size_t>(row)].push_back(CellText(row, column));
    }
    return cells;
}

std::string GridEditor::CellText(int row, int column) const
{
    const QTableWidgetItem* const cell = item(row, column);
    if (cell == nullptr)
        return {};
    const bool flag = Columns[static_cast<std::size_t>(column)].Kind == CellKind::Flag;
    return Ansi(cell->data(flag ? int{FlagText} : int{Qt::EditRole}).toString());
}

void GridEditor::SetCellText(int row, int column, std::string_view text)
{
    const GridColumn& kind = Columns[static_cast<std::size_t>(column)];
    QTableWidgetItem* cell = item(row, column);
    if (cell == nullptr) {
        cell = new QTableWidgetItem;
        setItem(row, column, cell);
    }
    if (kind.Kind == CellKind::Flag) {
        cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        cell->setData(FlagText, Shown(text));
        cell->setCheckState(Val(text) != 0 ? Qt::Checked : Qt::Unchecked);
        return;
    }
    cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable);
    cell->setText(Shown(text));
    if (kind.Kind == CellKind::Number)
        cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void GridEditor::FitColumns()
{
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2 + 2);
    resizeColumnsToContents();
    const int narrowest = 6 * fontMetrics().averageCharWidth();
    for (int column = 0; column < columnCount(); ++column)
        setColumnWidth(column, std::max(columnWidth(column), narrowest));
}

QSize GridEditor::sizeHint() const
{
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this) + 2 * frameWidth();
    const int columns =
        std::min(horizontalHeader()->length(), WidestInSight * fontMetrics().averageCharWidth());
    const int rows = std::min(rowCount(), RowsInSight) * verticalHeader()->defaultSectionSize();
    return {verticalHeader()->sizeHint().width() + columns + bar,
            horizontalHeader()->sizeHint().height() + rows + bar};
}

void GridEditor::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        return CopyCells();
    if (event->matches(QKeySequence::Paste))
        return PasteCells();
    if (event->key() == Qt::Key_Delete)
        return ClearCells();
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && state() != EditingState && currentIndex().isValid()) {
        // The dialog's default button must not take it.
        if (currentItem() != nullptr && currentItem()->flags().testFlag(Qt::ItemIsEditable))
            editItem(currentItem());
        return event->accept();
    }
    QTableWidget::keyPressEvent(event);
}

// An editor gives its text to the cell when it loses the focus.
void GridEditor::CloseOpenEditor()
{
    const QWidget* const focus = QApplication::focusWidget();
    if (focus != nullptr && focus != viewport() && viewport()->isAncestorOf(focus))
        setFocus();
}

// As lines of tab-separated cells, the form of the grid's file and of spreadsheets.
void GridEditor::CopyCells() const
{
    const QList<QTableWidgetSelectionRange> ranges = selectedRanges();
    if (ranges.isEmpty())
        return;
    const QTableWidgetSelectionRange& range = ranges.first();
    QStringList lines;
    for (int row = range.topRow(); row <= range.bottomRow(); ++row) {
        QStringList texts;
        for (int column = range.leftColumn(); column <= range.rightColumn(); ++column)
            texts += Shown(CellText(row, column));
        lines += texts.join(QLatin1Char('\t'));
    }
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

// From the current cell on; what a cell cannot hold is passed over.
void GridEditor::PasteCells()
{
    QString text = QApplication::clipboard()->text();
    text.remove(QLatin1Char('\r'));
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size() && currentRow() + i < rowCount(); ++i) {
        const QStringList texts = lines[i].split(QLatin1Char('\t'));
        for (int j = 0; j < texts.size() && currentColumn() + j < columnCount(); ++j) {
            const int column = currentColumn() + j;
            const GridColumn& kind = Columns[static_cast<std::size_t>(column)];
            static const QRegularExpression number(
                QRegularExpression::anchoredPattern(NumberPicture().pattern()));
            const QString pasted = Shown(WithDecimalPoint(Ansi(texts[j].trimmed()), CommaIsDecimal()));
            const bool fits = kind.Kind == CellKind::List ? IsListed(kind, Ansi(texts[j]))
                                                          : number.match(pasted).hasMatch();
            if (fits)
                SetCellText(currentRow() + i, column, Ansi(kind.Kind == CellKind::List ? texts[j] : pasted));
        }
    }
}

void GridEditor::ClearCells()
{
    for (const QModelIndex& at : selectedIndexes())
        SetCellText(at.row(), at.column(), Columns[static_cast<std::size_t>(at.column())].Default);
}

} // namespace kv

// Rows may come and go while the list is being rebuilt and events run in between, so nothing here
// trusts that a row which a view knows of is still there.
#include "window/file_list_model.h"

#include <algorithm>

#include "shell/file_list.h"
#include "window/controls.h"

namespace kv {

namespace {

constexpr int LongColumn = 2, NameColumn = 3, SizeColumn = 4;

// A sign beside the words, so that a look over a long list finds what is left to do.
QString SignOf(DrawingIs state)
{
    switch (state) {
    case DrawingIs::Failed:
        return QStringLiteral("\u2717 ");
    case DrawingIs::WithoutProgram:
        return QStringLiteral("\u2013 ");
    case DrawingIs::Changed:
        return QStringLiteral("\u25CF ");
    case DrawingIs::Replaced:
        return QStringLiteral("\u2260 ");
    case DrawingIs::Written:
        return QStringLiteral("\u2713 ");
    case DrawingIs::New:
        break;
    }
    return {};
}

QString TextOf(const FileRow& row, int column)
{
    if (column == StateColumn)
        return SignOf(row.State.Is) + Shown(row.State.Text);
    return Shown(row.Cells[static_cast<std::size_t>(column - 1)]);
}

} // namespace

int FileListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Count;
}

int FileListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : StateColumn;
}

int FileListModel::RowAt(int place) const
{
    if (place < 0 || place >= Count)
        return -1;
    return IsFiltered() ? Places[static_cast<std::size_t>(place)] : place;
}

int FileListModel::PlaceOf(int row) const
{
    if (!IsFiltered())
        return row < Count ? row : -1;
    const auto place = std::ranges::lower_bound(Places, row);
    return place != Places.end() && *place == row ? static_cast<int>(place - Places.begin()) : -1;
}

QVariant FileListModel::data(const QModelIndex& index, int role) const
{
    const int row = index.isValid() ? RowAt(index.row()) : -1;
    if (row < 0 || static_cast<std::size_t>(row) >= FileList.Rows.size())
        return {};
    const int column = index.column() + 1;
    const FileRow& shown = FileList.Rows[static_cast<std::size_t>(row)];
    if (role == Qt::TextAlignmentRole && column == SizeColumn)
        return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole && column == NameColumn)
        return TextOf(shown, LongColumn);
    if (role == Qt::ToolTipRole && column == StateColumn)
        return TextOf(shown, StateColumn);
    if (role != Qt::DisplayRole)
        return {};
    ++Asked;
    return TextOf(shown, column);
}

QVariant FileListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= StateColumn)
        return {};
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((section + 1 == SizeColumn ? Qt::AlignRight : Qt::AlignLeft) |
                                Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    if (section + 1 == StateColumn)
        return QStringLiteral("State");
    return Shown(FileListHeaders[static_cast<std::size_t>(section)]);
}

void FileListModel::ShowRows()
{
    beginResetModel();
    ApplyFilter();
    endResetModel();
}

void FileListModel::ShowStates()
{
    if (Count > 0)
        Q_EMIT dataChanged(index(0, StateColumn - 1), index(Count - 1, StateColumn - 1),
                           {Qt::DisplayRole, Qt::ToolTipRole});
}

void FileListModel::SetFilter(const QString& words)
{
    Words = words.toCaseFolded().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    ShowRows();
}

bool FileListModel::Matches(const QString& name) const
{
    const QString folded = name.toCaseFolded();
    return std::ranges::all_of(Words, [&folded](const QString& word) { return folded.contains(word); });
}

void FileListModel::ApplyFilter()
{
    Places.clear();
    for (std::size_t row = 0; row < FileList.Rows.size(); ++row) {
        FileRow& each = FileList.Rows[row];
        each.Hidden = IsFiltered() && !Matches(TextOf(each, LongColumn));
        each.Selected = each.Selected && !each.Hidden;
        if (IsFiltered() && !each.Hidden)
            Places.push_back(static_cast<int>(row));
    }
    Count = static_cast<int>(IsFiltered() ? Places.size() : FileList.Rows.size());
    const auto current = static_cast<std::size_t>(FileList.Current);
    if (FileList.Current >= 0 && current < FileList.Rows.size() && FileList.Rows[current].Hidden)
        FileList.Current = -1;
}

} // namespace kv

// Rows may come and go while the list is being rebuilt and events run in between, so nothing here
// trusts that a row which a view knows of is still there.
#include "window/file_list_model.h"

#include "shell/file_list.h"
#include "window/controls.h"

namespace kv {

namespace {

constexpr int SizeColumn = 4;

} // namespace

int FileListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Count;
}

int FileListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : FileColumns;
}

QVariant FileListModel::data(const QModelIndex& index, int role) const
{
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row >= FileList.Rows.size())
        return {};
    if (role == Qt::TextAlignmentRole && index.column() + 1 == SizeColumn)
        return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    ++Asked;
    return Shown(FileList.Rows[row].Cells[static_cast<std::size_t>(index.column())]);
}

QVariant FileListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= FileColumns)
        return {};
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((section + 1 == SizeColumn ? Qt::AlignRight : Qt::AlignLeft) |
                                Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    return Shown(FileListHeaders[static_cast<std::size_t>(section)]);
}

void FileListModel::ShowRows()
{
    beginResetModel();
    Count = static_cast<int>(FileList.Rows.size());
    endResetModel();
}

} // namespace kv

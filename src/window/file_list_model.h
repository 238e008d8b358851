// The file list as a model: the rows stand in FileList and are read where they stand, so that 50,000
// of them cost nothing until they are on the screen.
#pragma once

#include <QAbstractTableModel>

namespace kv {

class FileListModel : public QAbstractTableModel {
  public:
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // FileList.Rows have changed.
    void ShowRows();
    // Texts asked for since the start: what a view costs.
    long AskedTexts() const { return Asked; }

  private:
    int Count = 0; // rows that the views know of
    mutable long Asked = 0;
};

} // namespace kv

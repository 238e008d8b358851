// The file list as a model: the rows stand in FileList and are read where they stand, so that 50,000
// of them cost nothing until they are on the screen. A filter leaves rows out.
#pragma once

#include <vector>

#include <QAbstractTableModel>
#include <QStringList>

namespace kv {

class FileListModel : public QAbstractTableModel {
  public:
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // FileList.Rows have changed. The filter is applied anew.
    void ShowRows();
    void ShowStates();
    // Rows whose name holds every word, in any case; without a word all. What is left out is not selected.
    void SetFilter(const QString& words);
    bool IsFiltered() const { return !Words.isEmpty(); }

    // Row of FileList that a view's row shows, and back; -1: none.
    int RowAt(int place) const;
    int PlaceOf(int row) const;
    // Texts asked for since the start: what a view costs.
    long AskedTexts() const { return Asked; }

  private:
    void ApplyFilter();
    bool Matches(const QString& name) const;

    int Count = 0;           // rows that the views know of
    QStringList Words;       // of the filter, without case
    std::vector<int> Places; // rows of the filter, ascending
    mutable long Asked = 0;
};

} // namespace kv

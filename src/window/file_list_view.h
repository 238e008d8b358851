// The grid List1: shows FileList, mirrors the selection into it and turns clicks, keys and drops into
// its actions.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QMenu>
#include <QTableView>

#include "window/file_list_model.h"

namespace kv {

class FileListView : public QTableView {
  public:
    FileListView();

    // What the window does for the list; both come from an empty event queue.
    std::function<void()> Process;
    std::function<void(const std::vector<std::string>&)> Dropped;

    void ShowRows();      // rows, order or texts of FileList have changed
    void ShowSelection(); // marks and list index of FileList have changed
    void ShowWidths();    // of FileList, in characters
    void ShowStates();    // of the drawings have changed
    // The column of the states, right of the names.
    void ShowStateColumn(bool on);
    // The names that hold these words.
    void SetFilter(const QString& words);
    int WidthOfStates() const; // pixels, of the column
    int SelectedRow() const;   // of FileList, that the list index is on; -1 none

    FileListModel Model;
    QMenu* Pop;
    QAction *Explain = nullptr,
            *Undo = nullptr; // of the popup, with their keys; what they do is the window's

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void MakePopup();
    void TakeSelection(const QItemSelection& rows, bool selected) const;
    void SortBy(int section);
    void TakeWidth(int section, int pixels);
    int CharacterWidth() const;
    void StretchNames();

    bool StateShown = false;
    bool Showing = false; // changes by Show... are nobody's click
};

} // namespace kv

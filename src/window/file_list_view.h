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

    FileListModel Model;
    QMenu* Pop;

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void MakePopup();
    void TakeSelection(const QItemSelection& rows, bool selected) const;
    void SortBy(int section);
    void TakeWidth(int section, int pixels);
    int CharacterWidth() const;

    bool Showing = false; // changes by Show... are nobody's click
};

} // namespace kv

// The row above the list: the folder, and what the View menu adds to it, a field that filters the names and
// the folders that were used last.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QWidget>

namespace kv {

class FolderRow : public QWidget {
  public:
    explicit FolderRow(QLabel* folder);

    // The folders in the menu, newest first; asked for when it opens.
    std::function<std::vector<std::string>()> Folders;
    std::function<void(const std::string&)> FolderChosen;
    // Escape in the filter, which is empty then.
    std::function<void()> FilterLeft;

    QLineEdit* Filter;   // hidden at first
    QToolButton* Recent; // likewise

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void FillMenu(QMenu& menu);
};

} // namespace kv

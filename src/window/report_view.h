// The grid List2: shows the process report, wraps what is long, and gives it to the clipboard or a file.
#pragma once

#include <functional>
#include <vector>

#include <QMenu>
#include <QTableView>
#include <QTimer>

#include "window/report_lines.h"
#include "window/report_model.h"

namespace kv {

class ReportView : public QTableView {
  public:
    ReportView();

    // Rows wait until ShowWaiting or the next look at the event queue, and are then shown together.
    void Add(const ReportRow& row);
    void ShowWaiting();
    void Clear();

    // The selected rows, or all where none is selected; one a line.
    QString ReportText() const;
    void Copy() const;
    void AskWhereToSave();
    bool SaveTo(const QString& file) const; // all rows, UTF-8

    // A row that says what it is about, by a click or Enter.
    std::function<void(const RowPlace&)> PlaceChosen;

    ReportModel Model;
    ReportLines Lines; // of the present font

  protected:
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QString TextOf(bool selectedAlone) const;
    void FitHeights(int firstRow);
    void ChoosePlace(const QModelIndex& row) const;
    int TextWidth() const;

    std::vector<ShownRow> Waiting;
    QTimer ShowSoon, FitSoon;
    QMenu* Menu;
    int FittedWidth = -1;
};

} // namespace kv

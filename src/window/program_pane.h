// Shows one program: its picture, which operation is which line, its text and its operations as a table.
#pragma once

#include <functional>
#include <string>

#include <QAbstractTableModel>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSlider>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

#include "window/scene_view.h"

namespace kv {

struct PaneContent {
    QString Drawing, Path; // as people see them; either may be empty
    QString State;         // "written 03:10, drawing unchanged"
    QString ToolFault;     // of the tables of tools
    Scene Picture;
    QStringList Programs; // names of all that the drawing has become, portions say; fewer than two: no choice
    int Program = 0;      // of these, the one that is shown
    QString Text;         // of the program
    double Unit = 1;      // mm of the program's unit
    std::size_t LinesUnread = 0; // that are not drawn
};

// The operations as rows: line, kind, tool, place, depth, feed.
class OperationsModel : public QAbstractTableModel {
  public:
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void Show(const Scene* scene, double unit); // which stays while it is shown; null: none

  private:
    const Scene* Shown = nullptr;
    double Unit = 1;
};

class ProgramPane : public QWidget {
  public:
    ProgramPane();
    // Its wrapped sentence must not make the window that it is in any higher.
    bool hasHeightForWidth() const override { return false; }

    void ShowProgram(const PaneContent& content);
    void ShowNothing(const QString& why); // in the place of the picture
    // Lights it everywhere, at its first line; NoItem: none is lit.
    void Select(std::size_t item);
    // The first operation of the entity at that line of the drawing's file, else the entity as it is drawn.
    // False: neither is shown.
    bool SelectEntity(std::size_t drawnLine);
    // The operation of a line of the program, and of a route the move. False: the line has none.
    bool SelectLine(std::size_t line);
    std::size_t SelectedLine() const { return Line; } // of the program; 0: none
    std::size_t Selected() const { return View->Look.Lit; }
    // By the letters at its end: .pdf, .svg, else an image. False: it could not be written.
    bool SavePicture(const QString& file) const;
    void AskWhereToSave();

    std::function<void(int)> ProgramChosen; // of Programs, by hand
    std::function<void()> Closed;           // by hand, where it is a window of its own

    SceneViewer* View;
    QLabel *Header, *State, *Sentence, *Cursor, *Time;
    QToolButton *FitAll, *Order, *Rapids, *Drawing, *ShowText, *ShowTable, *Picture, *Play;
    QComboBox *Speed, *Programs;
    QSlider* Place;
    QListWidget* Legend;
    QPlainTextEdit* Text;
    QTableView* Table;
    OperationsModel Operations;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QToolButton* Button(const QString& text, const QString& spoken, bool isSwitch);
    void MakeButtons(QLayout& row);
    void MakeSides(QLayout& row);
    void MakeLists();
    void LayOut();
    void Wire();
    void ShowContent();
    void ShowLegend();
    int LegendRowHeight() const;
    void TakeLegend(const QListWidgetItem& row);
    void TakeTextPlace();
    void LightLines();
    std::size_t ItemOfLine(std::size_t line) const;
    void ShowCursor(const PathPoint* at);
    void TogglePlay();
    void Step(int by);

    void ShowPlace(std::size_t line, std::size_t item);
    void ShowSentence();
    int LinesShown() const;

    PaneContent Content;
    std::size_t Line = 0;
    QTimer Clockwork;
    bool Showing = false; // changes by Select and ShowProgram are nobody's click
};

} // namespace kv

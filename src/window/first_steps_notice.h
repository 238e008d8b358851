// In the list's place while it lists nothing: what to do, with the buttons that do it.
#pragma once

#include <functional>

#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <QWidgetList>

namespace kv {

class FirstStepsNotice : public QWidget {
  public:
    explicit FirstStepsNotice(QWidget* list);

    // By the settings and the disk as they are now, or that the filter leaves nothing.
    void ShowSteps();
    void ShowNothingFound();
    QList<QWidget*> Buttons() const
    {
        return {Drawings, Control, Index, Order, Examples};
    } // in the order of Tab

    std::function<void()> ChooseDrawings, ChooseControl, MakeIndex, SetOrder, CopyExamples;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    QPushButton* Step(const char* name, const char* caption, std::function<void()>& act);
    void FillList();

    QLabel* Words;
    QPushButton *Drawings, *Control, *Index, *Order, *Examples;
};

} // namespace kv

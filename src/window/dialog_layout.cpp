// Layout that the dialogs share. Relies on the caption tables for the tabs; leaves pages that are as
// large as their contents where the screen has room for them.
#include "window/dialog_layout.h"

#include <algorithm>

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDialog>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>

#include "window/controls.h"

namespace kv {

namespace {

// A scroll area asks for little by itself; this one asks for what its page needs.
class PageArea : public QScrollArea {
  public:
    QSize sizeHint() const override { return widget()->sizeHint().expandedTo(widget()->minimumSizeHint()); }
};

} // namespace

void AddTab(QTabWidget& tabs, std::string_view form, int index, QLayout* content)
{
    auto* const page = new QWidget;
    page->setLayout(content);
    auto* const area = new PageArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(page);
    // The tab's own background shows through.
    area->viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
    tabs.addTab(area, CaptionOf(form, Indexed("Tab", index)));
}

void ShowRadio(QButtonGroup& group, int id)
{
    const bool before = group.blockSignals(true);
    group.setExclusive(false); // or the last one could not be cleared
    for (QAbstractButton* const button : group.buttons()) {
        const bool on = group.id(button) == id;
        button->setChecked(on);
        // The Tab key is to come to the one that is on, not to the first.
        const bool takesTab = on || group.button(id) == nullptr;
        button->setFocusPolicy(takesTab ? Qt::StrongFocus : Qt::ClickFocus);
    }
    group.setExclusive(true);
    group.blockSignals(before);
}

void CentreOnScreen(QDialog& dialog, QSize wanted)
{
    const QRect screen = dialog.screen()->availableGeometry();
    const QSize size = dialog.sizeHint().expandedTo(wanted).boundedTo(screen.size());
    dialog.resize(size);
    const QPoint middle(screen.x() + (screen.width() - size.width()) / 2,
                        screen.y() + (screen.height() - size.height()) / 2);
    dialog.move(std::max(screen.x(), middle.x()), std::max(screen.y(), middle.y()));
}

void ChainTabOrder(std::initializer_list<QWidget*> widgets)
{
    QWidget* before = nullptr;
    for (QWidget* const widget : widgets) {
        if (before != nullptr)
            QWidget::setTabOrder(before, widget);
        before = widget;
    }
}

} // namespace kv

// One filter for all guarded widgets; it lives as long as each of them.
#include "window/wheel_guard.h"

#include <QEvent>
#include <QObject>
#include <QWidget>

namespace kv {

namespace {

class WheelGuard : public QObject {
  public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus())
            return false;
        event->ignore();
        return true;
    }
};

} // namespace

void GuardFromWheel(QWidget* widget)
{
    widget->setFocusPolicy(Qt::StrongFocus); // by design the wheel would give it the focus first
    widget->installEventFilter(new WheelGuard(widget));
}

} // namespace kv

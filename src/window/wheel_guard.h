// A turn of the wheel is meant for what scrolls: no box on the way takes it for a choice.
#pragma once

class QWidget;

namespace kv {

// The widget takes the wheel while it has the focus alone, and the wheel does not give it the focus. What it
// does not take goes on to what it stands in.
void GuardFromWheel(QWidget* widget);

} // namespace kv

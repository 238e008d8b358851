// The caption of the frame is the run of the six titles, set for one font; here each title stands over
// its own meter.
#include "window/meters.h"

#include <QGridLayout>
#include <QLabel>

#include "shell/control_tables.h"
#include "window/controls.h"

namespace kv {

Meters::Meters() : StatusFrame(ControlMaker{"Form1"}.Frame("StatusFrame"))
{
    StatusFrame->setTitle({});
    auto* const grid = new QGridLayout(StatusFrame);
    grid->setContentsMargins(8, 4, 8, 6);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(2);
    for (int i = 0; i < MeterCount; ++i) {
        auto* const title = new QLabel(Shown(MeterTitles[i]));
        auto* const bar = new QProgressBar;
        bar->setObjectName(Shown(Indexed("ProgressBar", i)));
        const ControlRow* const row = FindControl("Form1", Indexed("ProgressBar", i));
        bar->setAccessibleName(row != nullptr ? Shown(row->Accessible) : title->text());
        bar->setRange(0, 100);
        bar->setValue(MeterValue(static_cast<Meter>(i)));
        bar->setTextVisible(false);
        bar->setMinimumWidth(title->sizeHint().width());
        bar->setFixedHeight(title->sizeHint().height());
        grid->addWidget(title, 0, i);
        grid->addWidget(bar, 1, i);
        grid->setColumnStretch(i, 1);
        Bars[static_cast<std::size_t>(i)] = bar;
    }
}

void Meters::Move(Meter meter, int percent) const
{
    Bars[static_cast<std::size_t>(meter)]->setValue(percent);
}

} // namespace kv

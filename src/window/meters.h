// The frame StatusFrame: six meters under their titles.
#pragma once

#include <array>

#include <QGroupBox>
#include <QProgressBar>

#include "state/report.h"

namespace kv {

struct Meters {
    Meters();
    void Move(Meter meter, int percent) const;

    QGroupBox* StatusFrame;
    std::array<QProgressBar*, MeterCount> Bars{};
};

} // namespace kv

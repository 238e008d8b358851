// Time of day, date and pauses; tests put a fake clock in place.
#pragma once

#include <string>

namespace kv {

struct ClockHooks {
    double (*SecondsSinceMidnight)() = nullptr; // local time, with fraction
    std::string (*TodayMmDdYy)() = nullptr;     // "mm/dd/yy", local time
    void (*Pause)(double seconds) = nullptr;    // lets events run while it waits
};
extern ClockHooks Clock; // null members stand for the system's own

double SecondsSinceMidnight();
std::string TodayMmDdYy();
void PauseSeconds(double seconds);

} // namespace kv

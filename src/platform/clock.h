// Time of day, date and pauses; tests put a fake clock in place.
#pragma once

#include <string>

namespace kv {

struct ClockHooks {
    double (*SecondsSinceMidnight)() = nullptr; // local time, with fraction
    std::string (*TodayMmDdYy)() = nullptr;     // "mm/dd/yy", local time
    std::string (*Now)() = nullptr;             // as LocalDateAndTime
    void (*Pause)(double seconds) = nullptr;    // lets events run while it waits
};
extern ClockHooks Clock; // null members stand for the system's own

double SecondsSinceMidnight();
std::string TodayMmDdYy();
std::string LocalDateAndTime(); // "2026-03-01 09:05:00"
void PauseSeconds(double seconds);

} // namespace kv

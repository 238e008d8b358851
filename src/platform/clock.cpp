// Time of day, date and pauses from the standard clocks, or from the hooks of a test.
// Local time by the host's time zone. A pause counts on the steady clock, so that setting the
// clock of the machine does not stretch it, and pumps events while it waits.
#include "platform/clock.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <thread>

#include "platform/events.h"

namespace kv {

ClockHooks Clock;

namespace {

using std::chrono::duration;
using std::chrono::steady_clock;
using std::chrono::system_clock;

constexpr duration<double> PumpInterval(0.01);  // seconds between two looks at the events
constexpr duration<double> LongestPause(86400); // one day; keeps the sum below the clock's range

std::tm LocalTime(system_clock::time_point now)
{
    const std::time_t seconds = system_clock::to_time_t(now);
    const std::tm* const local = std::localtime(&seconds);
    return local != nullptr ? *local : std::tm{};
}

std::string TwoDigits(int number)
{
    return {static_cast<char>('0' + number / 10 % 10), static_cast<char>('0' + number % 10)};
}

} // namespace

double SecondsSinceMidnight()
{
    if (Clock.SecondsSinceMidnight != nullptr)
        return Clock.SecondsSinceMidnight();
    const system_clock::time_point now = system_clock::now();
    const std::tm local = LocalTime(now);
    const duration<double> fraction = now - std::chrono::floor<std::chrono::seconds>(now);
    return local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec + fraction.count();
}

std::string TodayMmDdYy()
{
    if (Clock.TodayMmDdYy != nullptr)
        return Clock.TodayMmDdYy();
    const std::tm local = LocalTime(system_clock::now());
    return TwoDigits(local.tm_mon + 1) + '/' + TwoDigits(local.tm_mday) + '/' + TwoDigits(local.tm_year);
}

std::string LocalDateAndTime()
{
    if (Clock.Now != nullptr)
        return Clock.Now();
    const std::tm local = LocalTime(system_clock::now());
    return std::to_string(local.tm_year + 1900) + '-' + TwoDigits(local.tm_mon + 1) + '-' +
           TwoDigits(local.tm_mday) + ' ' + TwoDigits(local.tm_hour) + ':' + TwoDigits(local.tm_min) + ':' +
           TwoDigits(local.tm_sec);
}

void PauseSeconds(double seconds)
{
    if (Clock.Pause != nullptr) {
        Clock.Pause(seconds);
        return;
    }
    const duration<double> length = std::min(duration<double>(seconds), LongestPause);
    const steady_clock::time_point start = steady_clock::now();
    for (;;) {
        DoEvents();
        const duration<double> left = length - (steady_clock::now() - start);
        if (!(left.count() > 0))
            return;
        std::this_thread::sleep_for(std::min(left, PumpInterval));
    }
}

} // namespace kv

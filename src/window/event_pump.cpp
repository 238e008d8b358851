// Events run at most every 10 ms, and less often on a screen that is slow to paint, so that the
// conversion has nearly all of the time; but often enough for Abort.
#include "window/event_pump.h"

#include <algorithm>
#include <chrono>

#include <QCoreApplication>

namespace kv {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr steady_clock::duration ShortestWait = milliseconds(10);
constexpr steady_clock::duration LongestWait = milliseconds(200);
constexpr int WorkPerPaint = 20; // how much longer the work lasts than the look at the events

// Even the clock costs when it is asked for each pair. Calls that follow each other closely pass some
// looks at it; slow ones none.
constexpr int MostPassed = 15;
constexpr steady_clock::duration CloseCalls = milliseconds(1);

steady_clock::time_point NextLook, LastClock;
int Passed = 0;

bool PassesTheClock()
{
    if (Passed > 0) {
        --Passed;
        return true;
    }
    return false;
}

} // namespace

void PumpEvents(void (*before)())
{
    if (PassesTheClock())
        return;
    const steady_clock::time_point start = steady_clock::now();
    Passed = start - LastClock < CloseCalls ? MostPassed : 0;
    LastClock = start;
    if (start < NextLook)
        return;
    NextLook = start + ShortestWait; // for calls out of the events
    before();
    QCoreApplication::processEvents();
    const steady_clock::time_point end = steady_clock::now();
    LastClock = end;
    NextLook = end + std::clamp((end - start) * WorkPerPaint, ShortestWait, LongestWait);
}

} // namespace kv

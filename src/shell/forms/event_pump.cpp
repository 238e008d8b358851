// Events run at most every 10 ms, and less often on a screen that is slow to paint, so that the
// conversion has nearly all of the time; but often enough for Abort.
#include "shell/forms/event_pump.h"

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

steady_clock::time_point NextLook;

} // namespace

void PumpEvents(void (*before)())
{
    const steady_clock::time_point start = steady_clock::now();
    if (start < NextLook)
        return;
    NextLook = start + ShortestWait; // for calls out of the events
    before();
    QCoreApplication::processEvents();
    const steady_clock::time_point end = steady_clock::now();
    NextLook = end + std::clamp((end - start) * WorkPerPaint, ShortestWait, LongestWait);
}

} // namespace kv

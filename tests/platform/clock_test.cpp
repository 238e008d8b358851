// The clock: form and range of time and date, pauses that let events run, the hooks of a test.
#include "platform/clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <ctime>
#include <regex>

#include "platform/events.h"

namespace kv {
namespace {

int Pumps = 0;

class ClockTest : public testing::Test {
  protected:
    void TearDown() override
    {
        Clock = {};
        Events = {};
        Pumps = 0;
    }
};

double SecondsPaused(double seconds)
{
    const auto start = std::chrono::steady_clock::now();
    PauseSeconds(seconds);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST_F(ClockTest, TimeOfDayIsLocalTimeWithFraction)
{
    const std::time_t now = std::time(nullptr);
    const std::tm local = *std::localtime(&now);
    const double expected = local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
    const double seconds = SecondsSinceMidnight();
    const double apart = std::fmod(seconds - expected + 86400, 86400); // midnight may fall between
    EXPECT_LT(apart, 5);
    EXPECT_GE(seconds, 0);
    EXPECT_LT(seconds, 86401);
}

TEST_F(ClockTest, TodayHasTwoDigitsEach)
{
    EXPECT_TRUE(std::regex_match(TodayMmDdYy(), std::regex("(0[1-9]|1[0-2])/[0-3][0-9]/[0-9][0-9]")));
}

TEST_F(ClockTest, APauseLastsAndLetsEventsRun)
{
    Events.Pump = [] { ++Pumps; };
    EXPECT_GE(SecondsPaused(0.05), 0.05);
    EXPECT_GE(Pumps, 2);
}

TEST_F(ClockTest, APauseOfNothingEnds)
{
    EXPECT_LT(SecondsPaused(0), 0.5);
    EXPECT_LT(SecondsPaused(-5), 0.5);
    EXPECT_LT(SecondsPaused(std::nan("")), 0.5);
}

TEST_F(ClockTest, HooksStandInForTheSystem)
{
    Clock.SecondsSinceMidnight = [] { return 3661.5; };
    Clock.TodayMmDdYy = [] { return std::string("02/29/24"); };
    Clock.Pause = [](double seconds) { Pumps = static_cast<int>(seconds); };
    EXPECT_EQ(SecondsSinceMidnight(), 3661.5);
    EXPECT_EQ(TodayMmDdYy(), "02/29/24");
    EXPECT_LT(SecondsPaused(3600), 1);
    EXPECT_EQ(Pumps, 3600);
}

} // namespace
} // namespace kv

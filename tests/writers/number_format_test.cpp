// Number forms of the programs, against rounding done by hand on exact decimal digits.
#include "writers/number_format.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

#include "platform/run_error.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/random_rounds.h"

namespace kv {
namespace {

class NumberFormat : public testing::Test {
  protected:
    RunBlock& Run = kv::Run; // the test class has a Run of its own

    void SetUp() override
    {
        Config = Settings{};
        Run = RunBlock{};
        UseDecimals("2");
    }
    void TearDown() override
    {
        Config = Settings{};
        Run = RunBlock{};
    }
    static void UseDecimals(const std::string& text) { Config.PrecisionMetric = text; }
};

// The rule word for word: all the digits of the value, cut at n decimals, one more if the next digit
// is 5 or greater, read back as a Single.
Single RoundedByDigits(Single value, int decimals)
{
    char digits[400];
    std::snprintf(digits, sizeof digits, "%.200f", std::fabs(static_cast<double>(value)));
    std::string text(digits);
    const std::size_t kept = text.find('.') + 1 + static_cast<std::size_t>(decimals);
    const bool up = text[kept] >= '5';
    text.resize(kept);
    for (std::size_t i = text.size(); up && i > 0;) {
        --i;
        if (text[i] == '.')
            continue;
        if (text[i] != '9') {
            ++text[i];
            break;
        }
        text[i] = '0';
        if (i == 0)
            text.insert(0, "1");
    }
    const Single magnitude = std::strtof(text.c_str(), nullptr);
    return value < 0 ? -magnitude : magnitude;
}

TEST_F(NumberFormat, ZeroBeforeThePointIsLeftOut)
{
    EXPECT_EQ(FormatCoord(600), "600");
    EXPECT_EQ(FormatCoord(0.5F), ".5");
    EXPECT_EQ(FormatCoord(-0.25F), "-.25");
    EXPECT_EQ(FormatCoord(12.5F), "12.5");
    EXPECT_EQ(FormatCoord(0), "0");
}

TEST_F(NumberFormat, HalvesGoAwayFromZeroOnTheExactValue)
{
    EXPECT_EQ(FormatCoord(0.125F), ".13");
    EXPECT_EQ(FormatCoord(-0.125F), "-.13");
    EXPECT_EQ(FormatCoord(2.675F), "2.67"); // the Single is 2.6749999523...
    EXPECT_EQ(FormatCoord(0.995F), "1");    // the Single is 0.99500000476...
    EXPECT_EQ(FormatCoord(1.005F), "1");    // the Single is 1.00499999523...
}

TEST_F(NumberFormat, NothingLeftIsAZeroWithoutSign)
{
    EXPECT_EQ(FormatCoord(-0.004F), "0");
    EXPECT_FALSE(std::signbit(RoundToPrecision(-0.004F)));
}

TEST_F(NumberFormat, InchDrawingsUseTheirOwnDecimals)
{
    Config.PrecisionInch = "3";
    EXPECT_EQ(FormatCoord(0.0625F), ".06");
    Run.DrawingInInch = True;
    EXPECT_EQ(FormatCoord(0.0625F), ".063");
}

TEST_F(NumberFormat, DecimalsAreTheWholePartOfTheSettingAndNeverBelowNone)
{
    UseDecimals("1.9");
    EXPECT_EQ(FormatCoord(3.14159F), "3.1");
    UseDecimals("-3");
    EXPECT_EQ(FormatCoord(3.5F), "4");
    UseDecimals("");
    EXPECT_EQ(FormatCoord(3.4F), "3");
}

TEST_F(NumberFormat, MoreDecimalsThanAFloatHoldsKeepSevenDigits)
{
    UseDecimals("25.00");
    EXPECT_EQ(FormatCoord(123.456789F), "123.4568");
    EXPECT_EQ(RoundToPrecision(0.1F), 0.1F);
    EXPECT_EQ(RoundToPrecision(-1234.5678F), -1234.5678F);
    UseDecimals("1E300");
    EXPECT_EQ(RoundToPrecision(std::numeric_limits<Single>::denorm_min()),
              std::numeric_limits<Single>::denorm_min());
}

TEST_F(NumberFormat, BigNumbersStay)
{
    EXPECT_EQ(FormatCoord(16777216.0F), "16777220"); // seven digits
    EXPECT_EQ(RoundToPrecision(3.0e38F), 3.0e38F);
}

TEST_F(NumberFormat, ANumberThatIsNoneEndsTheRun)
{
    for (const Single bad :
         {std::numeric_limits<Single>::infinity(), -std::numeric_limits<Single>::infinity(),
          std::numeric_limits<Single>::quiet_NaN()}) {
        try {
            FormatCoord(bad);
            FAIL();
        } catch (const RunError& error) {
            EXPECT_EQ(error.Number, ErrorOverflow);
        }
        EXPECT_THROW(FormatAngle(bad), RunError);
    }
}

TEST_F(NumberFormat, AnglesAlwaysHaveAPoint)
{
    EXPECT_EQ(FormatAngle(0), "0.00");
    EXPECT_EQ(FormatAngle(45), "45.");
    EXPECT_EQ(FormatAngle(12.34567F), "12.346");
    EXPECT_EQ(FormatAngle(0.5F), ".5");
    EXPECT_EQ(FormatAngle(-90.25F), "-90.25");
    EXPECT_EQ(FormatAngle(359.9996F), "360.");
    EXPECT_EQ(FormatAngle(0.0625F), ".063");
}

TEST_F(NumberFormat, AnAngleThatRoundsToNothingIsZero)
{
    EXPECT_EQ(FormatAngle(0.0001F), "0.00");
    EXPECT_EQ(FormatAngle(-0.0001F), "0.00");
    EXPECT_EQ(FormatAngle(0.00049F), "0.00");
    EXPECT_EQ(FormatAngle(0.00051F), ".001");
    EXPECT_EQ(FormatAngle(-0.00051F), "-.001");
}

TEST_F(NumberFormat, RandomValuesAgreeWithTheirDigits)
{
    std::mt19937 random(test::Seed(20260704));
    std::uniform_real_distribution<double> place(-4000, 4000);
    std::uniform_int_distribution<std::uint32_t> bits;
    for (const int decimals : {0, 1, 2, 3, 4, 7, 8, 9, 12, 25, 60}) {
        UseDecimals(std::to_string(decimals));
        for (int i = 0; i < test::Rounds(4000); ++i) {
            const Single value = static_cast<Single>(place(random));
            ASSERT_EQ(RoundToPrecision(value), RoundedByDigits(value, decimals)) << value << " " << decimals;
            const Single any = std::bit_cast<Single>(bits(random));
            if (std::isfinite(any)) {
                ASSERT_EQ(RoundToPrecision(any), RoundedByDigits(any, decimals)) << any << " " << decimals;
            }
        }
    }
}

TEST_F(NumberFormat, HalvesOfEveryKindAgreeWithTheirDigits)
{
    for (const int decimals : {0, 1, 2, 3}) {
        UseDecimals(std::to_string(decimals));
        for (int sixteenths = -20000; sixteenths <= 20000; ++sixteenths) {
            const Single value = static_cast<Single>(sixteenths) / 16.0F;
            ASSERT_EQ(RoundToPrecision(value), RoundedByDigits(value, decimals)) << value << " " << decimals;
        }
    }
}

} // namespace
} // namespace kv

// Numbers: what Val reads from lenient text, the checked conversions and the plain text of a Single.
#include "platform/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

#include "platform/run_error.h"
#include "support/random_rounds.h"

namespace kv {
namespace {

struct ValRow {
    std::string_view Text;
    double Value;
};

void ExpectVals(const std::vector<ValRow>& rows)
{
    for (const ValRow& row : rows)
        EXPECT_EQ(Val(row.Text), row.Value) << '"' << row.Text << '"';
}

int ErrorOf(void (*call)())
{
    try {
        call();
    } catch (const RunError& error) {
        EXPECT_FALSE(error.Cause.empty());
        return error.Number;
    }
    return 0;
}

TEST(Val, PlainNumbers)
{
    ExpectVals(
        {{"0", 0}, {"7", 7}, {"-7", -7}, {"+5", 5}, {"12.5", 12.5}, {"-0.125", -0.125}, {"000012", 12}});
    ExpectVals({{".5", .5}, {"5.", 5}, {"-.5", -.5}, {"+.25", .25}, {"0.1", 0.1}, {"719.9999", 719.9999}});
}

TEST(Val, NoNumberIsZero)
{
    ExpectVals(
        {{"", 0}, {" ", 0}, {"-", 0}, {"+", 0}, {".", 0}, {"-.", 0}, {"abc", 0}, {"E5", 0}, {".E5", 0}});
    ExpectVals({{"--5", 0}, {"+-5", 0}, {"&H10", 0}, {"inf", 0}, {"nan", 0}, {",5", 0}});
}

TEST(Val, LeadingBlanksArePassedOverButNoTab)
{
    ExpectVals({{"   42", 42}, {"\t42", 0}, {" \t42", 0}});
}

TEST(Val, ABlankInsideEndsTheNumber)
{
    ExpectVals({{"1 2", 1}, {"- 5", 0}, {"5 E2", 5}, {"12\t3", 12}, {"7 ", 7}, {"7\r", 7}});
}

TEST(Val, TheSecondPointEndsTheNumber)
{
    ExpectVals({{"1.2.3", 1.2}, {"..5", 0}, {"5..", 5}});
}

TEST(Val, ExponentByEOrDInEitherCase)
{
    ExpectVals({{"1E+3", 1000}, {"1e3", 1000}, {"1d2", 100}, {"1D2", 100}, {"25E-1", 2.5}, {"1.5d+1", 15}});
    ExpectVals({{"5.E2", 500}, {".5E1", 5}, {"1E05", 1e5}});
}

TEST(Val, AnExponentWithoutDigitsEndsTheNumber)
{
    ExpectVals({{"5E", 5}, {"5E+", 5}, {"5D-", 5}, {"5EX", 5}, {"5E 2", 5}, {"2DO", 2}, {"1E2.5", 100}});
}

TEST(Val, BeyondADoubleIsInfinityAndBelowItIsZero)
{
    const double infinity = std::numeric_limits<double>::infinity();
    ExpectVals({{"1E309", infinity}, {"-1E309", -infinity}, {"1E99999999999999999999", infinity}});
    ExpectVals({{"1E-400", 0}, {"1E-99999999999999999999", 0}, {"0E999999999999", 0}, {"0.000E400", 0}});
    const std::string manyDigits(400, '9');
    EXPECT_EQ(Val(manyDigits), infinity);
    EXPECT_EQ(Val("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(Val("0." + std::string(400, '0') + "1E401"), 1);
    EXPECT_EQ(Val("1" + std::string(400, '0') + "E-400"), 1);
}

TEST(Val, ANegativeZeroIsPlainZero)
{
    for (const std::string_view text : {"-0", "-0.0", "-0E5", "-1E-400"})
        EXPECT_FALSE(std::signbit(Val(text))) << text;
}

TEST(Val, LongMantissasAreRoundedExactly)
{
    ExpectVals({{"9007199254740992", 9007199254740992.0}, // 2^53
                {"9007199254740993", 9007199254740992.0}, // halfway: to even
                {"9007199254740993.00000000000000000001", 9007199254740994.0},
                {"18446744073709551616", 18446744073709551616.0}, // 2^64
                {"0.1000000000000000055511151231257827021181583404541015625", 0.1},
                {"123456789012345678901234567890", 123456789012345678901234567890.0},
                {"2.2250738585072011E-308", 2.2250738585072011e-308}});
}

// The C library's reader is the judge; it knows the same form, D aside.
TEST(Val, AgreesWithTheCLibraryToTheLastBit)
{
    std::mt19937_64 random(test::Seed(20240611));
    for (int i = 0; i < test::Rounds(40000); ++i) {
        std::string text = random() % 2 != 0 ? "-" : "";
        const std::size_t whole = random() % 12, decimals = random() % 14;
        for (std::size_t k = 0; k < whole; ++k)
            text += static_cast<char>('0' + random() % 10);
        text += '.';
        for (std::size_t k = 0; k <= decimals; ++k)
            text += static_cast<char>('0' + random() % 10);
        if (random() % 3 == 0)
            text += "E" + std::to_string(static_cast<int>(random() % 80) - 40);
        ASSERT_EQ(Val(text), std::strtod(text.c_str(), nullptr)) << text << ", " << test::RoundName(i);
    }
}

TEST(Conversions, ToIntRoundsHalvesToEven)
{
    EXPECT_EQ(ToInt(0.5), 0);
    EXPECT_EQ(ToInt(1.5), 2);
    EXPECT_EQ(ToInt(2.5), 2);
    EXPECT_EQ(ToInt(-0.5), 0);
    EXPECT_EQ(ToInt(-1.5), -2);
    EXPECT_EQ(ToInt(2.51), 3);
    EXPECT_EQ(ToInt(32767.4), 32767);
    EXPECT_EQ(ToInt(-32768.5), -32768);
    EXPECT_EQ(ToLong(2147483647.4), 2147483647);
    EXPECT_EQ(ToLong(40000.5), 40000);
    EXPECT_EQ(ToLong(-2147483648.5), std::numeric_limits<Long>::min());
}

TEST(Conversions, OutOfRangeIsAnOverflow)
{
    EXPECT_EQ(ErrorOf([] { ToInt(32767.5); }), ErrorOverflow);
    EXPECT_EQ(ErrorOf([] { ToInt(-32769); }), ErrorOverflow);
    EXPECT_EQ(ErrorOf([] { ToInt(Val("1E400")); }), ErrorOverflow);
    EXPECT_EQ(ErrorOf([] { ToLong(2147483647.5); }), ErrorOverflow);
    EXPECT_EQ(ErrorOf([] { ToLong(-2147483649.0); }), ErrorOverflow);
    EXPECT_EQ(ErrorOf([] { ToSingle(1e39); }), ErrorOverflow);
    EXPECT_EQ(ErrorOf([] { ToSingle(-1e39); }), ErrorOverflow);
}

TEST(Conversions, NotANumberIsAnOverflow)
{
    EXPECT_EQ(ErrorOf([] { ToInt(std::nan("")); }), ErrorOverflow);
    EXPECT_EQ(ErrorOf([] { ToLong(std::nan("")); }), ErrorOverflow);
    EXPECT_EQ(ErrorOf([] { ToSingle(std::nan("")); }), ErrorOverflow);
    EXPECT_EQ(ErrorOf([] { PlainText(std::nanf("")); }), ErrorOverflow);
    EXPECT_EQ(ErrorOf([] { PlainText(std::numeric_limits<Single>::infinity()); }), ErrorOverflow);
}

TEST(Conversions, ASingleIsTheNearestOf32Bits)
{
    EXPECT_EQ(ToSingle(0.1), 0.1f);
    EXPECT_EQ(ToSingle(16777217), 16777216.0f);
    EXPECT_EQ(ToSingle(3.4028235e38), std::numeric_limits<Single>::max());
    // Nearer to the greatest Single than to the next step behind it, which no Single holds.
    EXPECT_EQ(ToSingle(3.40282356e38), std::numeric_limits<Single>::max());
    EXPECT_EQ(ErrorOf([] { ToSingle(3.40282357e38); }), ErrorOverflow);
    EXPECT_EQ(ToSingle(1e-50), 0.0f);
}

struct PlainRow {
    Single Value;
    std::string_view Text;
};

TEST(PlainText, SevenDigitsWithoutAZeroBeforeThePoint)
{
    for (const PlainRow& row : std::vector<PlainRow>{{0.0f, "0"},
                                                     {1.0f, "1"},
                                                     {-1.0f, "-1"},
                                                     {0.5f, ".5"},
                                                     {-0.5f, "-.5"},
                                                     {0.1f, ".1"},
                                                     {100.0f, "100"},
                                                     {12345.678f, "12345.68"},
                                                     {0.01f, ".01"},
                                                     {18.0f, "18"},
                                                     {719.5f, "719.5"},
                                                     {999999.9375f, "999999.9"},
                                                     {0.99999994f, ".9999999"},
                                                     {32767.0f, "32767"},
                                                     {-1234567.0f, "-1234567"}})
        EXPECT_EQ(PlainText(row.Value), row.Text);
}

TEST(PlainText, NeverAnExponent)
{
    EXPECT_EQ(PlainText(16777216.0f), "16777220");
    EXPECT_EQ(PlainText(1e10f), "10000000000");
    EXPECT_EQ(PlainText(1e-7f), ".0000001");
    EXPECT_EQ(PlainText(1.5e-5f), ".000015");
    EXPECT_EQ(PlainText(std::numeric_limits<Single>::max()), "3402823" + std::string(32, '0'));
}

TEST(PlainText, NeverANegativeZero)
{
    EXPECT_EQ(PlainText(-0.0f), "0");
}

TEST(WholeText, DigitsOnly)
{
    EXPECT_EQ(WholeText(0), "0");
    EXPECT_EQ(WholeText(-12), "-12");
    EXPECT_EQ(WholeText(std::numeric_limits<long long>::min()), "-9223372036854775808");
}

} // namespace
} // namespace kv

// What the environment may say of the random inputs, and what the tests make of it.
#include "support/random_rounds.h"

#include <cstdlib>
#include <limits>
#include <optional>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "support/host.h"

namespace kv::test {
namespace {

TEST(RandomRounds, WithoutAWishAllIsAsUsual)
{
    const RandomInputs inputs("", "");
    EXPECT_EQ(inputs.Rounds(4000), 4000);
    EXPECT_EQ(inputs.Seed(77), 77U);
    EXPECT_EQ(inputs.RoundName(12), "round 12");
}

TEST(RandomRounds, SoManyTimesTheUsualNumber)
{
    EXPECT_EQ(RandomInputs("10", "").Rounds(4000), 40000);
    EXPECT_EQ(RandomInputs("10", "").Rounds(1), 10);
    EXPECT_EQ(RandomInputs("1", "").Rounds(4000), 4000);
    EXPECT_EQ(RandomInputs("10", "").Seed(77), 77U);
}

TEST(RandomRounds, ANumberThatNoIntHoldsIsTheGreatestInt)
{
    EXPECT_EQ(RandomInputs("1000000", "").Rounds(4000), std::numeric_limits<int>::max());
}

TEST(RandomRounds, WhatIsNoNumberAsksForNothing)
{
    for (const char* text : {"0", "-3", "ten", "10x", " 10", "1.5", "+2", "99999999999"})
        EXPECT_EQ(RandomInputs(text, "").Rounds(4000), 4000) << text;
    for (const char* text : {"-3", "seven", "7x", " 7", "1.5", "99999999999"}) {
        EXPECT_EQ(RandomInputs("", text).Seed(77), 77U) << text;
        EXPECT_EQ(RandomInputs("", text).RoundName(12), "round 12") << text;
    }
}

TEST(RandomRounds, AnotherSeedGivesOtherInputsAndTheSameEachTime)
{
    const RandomInputs inputs("", "7");
    EXPECT_NE(inputs.Seed(77), 77U);
    EXPECT_EQ(inputs.Seed(77), RandomInputs("3", "7").Seed(77));
    EXPECT_NE(inputs.Seed(77), RandomInputs("", "8").Seed(77));
    EXPECT_EQ(inputs.Rounds(4000), 4000);
    EXPECT_EQ(inputs.RoundName(12), "round 12 of KORVANTI_SEED=7");
}

TEST(RandomRounds, SeedsInARowStayApart)
{
    std::set<unsigned> seeds;
    for (const char* other : {"", "1", "2", "7"})
        for (unsigned usual = 1; usual <= 1000; ++usual)
            seeds.insert(RandomInputs("", other).Seed(usual));
    EXPECT_EQ(seeds.size(), 4000U);
}

std::optional<std::string> VariableNow(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

TEST(RandomRounds, TheEnvironmentSaysItOnceForTheWholeProcess)
{
    const std::optional<std::string> random = VariableNow("KORVANTI_RANDOM");
    const std::optional<std::string> seed = VariableNow("KORVANTI_SEED");
    const int rounds = Rounds(4000);
    const unsigned first = Seed(77);
    SetHostVariable("KORVANTI_RANDOM", "10");
    SetHostVariable("KORVANTI_SEED", "123456");
    const RandomInputs asked = InputsOfTheEnvironment();
    SetHostVariable("KORVANTI_RANDOM", std::nullopt);
    SetHostVariable("KORVANTI_SEED", std::nullopt);
    const RandomInputs usual = InputsOfTheEnvironment();
    const int roundsBehind = Rounds(4000);
    const unsigned firstBehind = Seed(77);
    SetHostVariable("KORVANTI_RANDOM", random);
    SetHostVariable("KORVANTI_SEED", seed);
    EXPECT_EQ(asked.Rounds(4000), 40000);
    EXPECT_EQ(asked.RoundName(1), "round 1 of KORVANTI_SEED=123456");
    EXPECT_EQ(usual.Rounds(4000), 4000);
    EXPECT_EQ(usual.Seed(77), 77U);
    EXPECT_EQ(roundsBehind, rounds);
    EXPECT_EQ(firstBehind, first);
}

} // namespace
} // namespace kv::test

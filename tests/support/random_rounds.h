// How many random inputs the tests try, and which ones: the usual, the same in each run, unless the
// environment asks for more with KORVANTI_RANDOM, so many times the usual number, or for others with
// KORVANTI_SEED, any whole number. A test of random inputs takes its count and its seed from here.
#pragma once

#include <charconv>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace kv::test {

class RandomInputs {
  public:
    // As the environment has them, "" for what it has not. A text that is no whole number asks for nothing.
    RandomInputs(std::string_view random, std::string_view seed)
        : Times(WholeNumber(random).value_or(1)), Other(WholeNumber(seed))
    {
        if (Times == 0)
            Times = 1;
    }

    int Rounds(int usual) const
    {
        const long long rounds = static_cast<long long>(usual) * Times;
        constexpr int Most = std::numeric_limits<int>::max();
        return rounds < Most ? static_cast<int>(rounds) : Most;
    }

    // Two usual seeds stay two, and the seeds of one number lie far from those of the next: tests that take
    // seeds one after the other do not meet the same inputs again.
    unsigned Seed(unsigned usual) const
    {
        constexpr unsigned FarAndOdd = 2654435769U;
        return usual + Other.value_or(0) * FarAndOdd;
    }

    // With all that it takes to see the round again.
    std::string RoundName(long long round) const
    {
        const std::string name = "round " + std::to_string(round);
        return Other ? name + " of KORVANTI_SEED=" + std::to_string(*Other) : name;
    }

  private:
    static std::optional<unsigned> WholeNumber(std::string_view text)
    {
        unsigned number = 0;
        const char* const end = text.data() + text.size();
        const std::from_chars_result read = std::from_chars(text.data(), end, number);
        if (read.ec != std::errc() || read.ptr != end)
            return std::nullopt;
        return number;
    }

    unsigned Times;
    std::optional<unsigned> Other;
};

inline RandomInputs InputsOfTheEnvironment()
{
    const char* const random = std::getenv("KORVANTI_RANDOM");
    const char* const seed = std::getenv("KORVANTI_SEED");
    return {random != nullptr ? random : "", seed != nullptr ? seed : ""};
}

// Read once, so that no test can change it for those behind it.
inline const RandomInputs& InputsOfThisProcess()
{
    static const RandomInputs inputs = InputsOfTheEnvironment();
    return inputs;
}

inline int Rounds(int usual)
{
    return InputsOfThisProcess().Rounds(usual);
}

inline unsigned Seed(unsigned usual)
{
    return InputsOfThisProcess().Seed(usual);
}

inline std::string RoundName(long long round)
{
    return InputsOfThisProcess().RoundName(round);
}

} // namespace kv::test

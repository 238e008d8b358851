// Words of the program lines: tools, depths, groups.
#include "writers/cnc/cnc_words.h"

#include "platform/run_error.h"
#include "writers/program_scene.h"
#include "writers/number_format.h"
#include "writers/tool_code.h"
#include "writers/writer_memory.h"

namespace kv {
namespace {

class CncWords : public ProgramScene {};

TEST_F(CncWords, ToolNumbersByRange)
{
    EXPECT_EQ(ToolCode(0), "0");
    EXPECT_EQ(ToolCode(7), "7");
    EXPECT_EQ(ToolCode(99), "99");
    EXPECT_EQ(ToolCode(100), "a0");
    EXPECT_EQ(ToolCode(105), "a5");
    EXPECT_EQ(ToolCode(123), "c3");
    EXPECT_EQ(ToolCode(199), "j9");
    EXPECT_EQ(ToolCode(200), "a0");
    EXPECT_EQ(ToolCode(205), "05M66");
    EXPECT_EQ(ToolCode(212), "12M66");
    EXPECT_EQ(ToolCode(305), "05M66");
}

TEST_F(CncWords, TheEvolutionTakesPlainToolNumbers)
{
    Run.ControlType = 2;
    EXPECT_EQ(ToolCode(205), "205");
}

TEST_F(CncWords, TheFirstEnabledRowSubstitutesOnce)
{
    Config.ToolSubData = {{"0", "7", "50"}, {"1", "7", "8"}, {"1", "7", "9"}, {"1", "8", "60"}};
    EXPECT_EQ(ToolCode(7), "8");
    EXPECT_TRUE(Writers.ToolSubstituted);
}

TEST_F(CncWords, AToolMappedToNothingIsToolNothing)
{
    Config.ToolSubData = {{"-1", "7", ""}};
    EXPECT_EQ(ToolCode(7), "0");
}

TEST_F(CncWords, OtherToolsRaiseNoFlag)
{
    Config.ToolSubData = {{"1", "7", "8"}};
    EXPECT_EQ(ToolCode(9), "9");
    EXPECT_FALSE(Writers.ToolSubstituted);
}

TEST_F(CncWords, DepthsFromNinetyOnAreCodes)
{
    EXPECT_EQ(DepthWord(12.5F), "12.5");
    EXPECT_EQ(DepthWord(89.99F), "89.99");
    EXPECT_EQ(DepthWord(90), "=Z");
    EXPECT_EQ(DepthWord(97), "=a");
    EXPECT_EQ(DepthWord(97.5F), "=b"); // halves to even: 98
    EXPECT_EQ(DepthWord(98.5F), "=b");
    EXPECT_EQ(DepthWord(255), "=\xFF");
}

TEST_F(CncWords, ACodeThatIsNoCharacterIsAnInvalidCall)
{
    try {
        DepthWord(256);
        FAIL();
    } catch (const RunError& error) {
        EXPECT_EQ(error.Number, ErrorInvalidCall);
        EXPECT_NE(error.Cause.find("256"), std::string::npos);
    }
}

TEST_F(CncWords, GroupsHaveTheirLastTwoDigits)
{
    EXPECT_EQ(TwoDigits(1), "01");
    EXPECT_EQ(TwoDigits(12), "12");
    EXPECT_EQ(TwoDigits(123), "23");
}

TEST_F(CncWords, WordsOfNothingAreLeftOut)
{
    EXPECT_EQ(WholeWord("E", 0), "");
    EXPECT_EQ(WholeWord("E", -1), "E-1");
    EXPECT_EQ(PlainWord("F", 0), "");
    EXPECT_EQ(PlainWord("F", 2500.125F), "F2500.125"); // feeds are not rounded to the decimals
}

TEST_F(CncWords, OnlyRecordsWithASpeedRefreshIt)
{
    EXPECT_EQ(SpeedWord(18000), "S18000");
    EXPECT_EQ(SpeedWord(0), "");
    EXPECT_EQ(SpeedWord(-5), "");
    EXPECT_EQ(Writers.LastSpeed, 18000);
}

} // namespace
} // namespace kv

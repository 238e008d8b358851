// The main window without its toolkit: layout in twips, unit switch, boxes that clear each other.
#include "shell/main_window_rules.h"

#include <gtest/gtest.h>

#include <string>

#include "state/settings.h"

namespace kv {
namespace {

class MainWindowRules : public testing::Test {
  protected:
    void SetUp() override
    {
        Config = Settings{};
        ForgetMainWindowLayout();
    }
    void TearDown() override
    {
        Config = Settings{};
        ForgetMainWindowLayout();
    }
    // Behind the first call of all, which only marks the window as ready.
    static MainWindowLayout Arranged(int code, const MainWindowSizes& sizes)
    {
        ForgetMainWindowLayout();
        ArrangeMainWindow(4, sizes);
        return ArrangeMainWindow(code, sizes);
    }

    MainWindowSizes Sizes{10000, 9000, 2400, 2000, 855, 360, true};
};

TEST_F(MainWindowRules, FirstCallOnlyMarksTheWindowAsReady)
{
    EXPECT_FALSE(ArrangeMainWindow(3, Sizes).Applies);
    EXPECT_EQ(Config.FormState, 0);
    EXPECT_TRUE(ArrangeMainWindow(4, Sizes).Applies);
}

TEST_F(MainWindowRules, FramesAreAsWideAsTheWindowLess150)
{
    const MainWindowLayout layout = Arranged(4, Sizes);
    EXPECT_EQ(layout.FrameWidth, 9850);
    EXPECT_EQ(layout.Frame3Left, 7850);
}

TEST_F(MainWindowRules, UpperAreaEndsAboveTheDefaultSettings)
{
    const MainWindowLayout layout = Arranged(4, Sizes);
    EXPECT_TRUE(layout.SettingsShown);
    EXPECT_EQ(layout.UpperBottom, 5995); // 9000 - 2400 - 605
    EXPECT_EQ(layout.GridHeight, 4660);  // 5995 - 360 - 120 - 855
    EXPECT_EQ(layout.StatusTop, 5160);
    EXPECT_EQ(layout.ExitTop, 5260);
}

TEST_F(MainWindowRules, HiddenDefaultSettingsGiveTheirHeightToTheGrids)
{
    Config.FormState = -1;
    const MainWindowLayout layout = Arranged(4, Sizes);
    EXPECT_FALSE(layout.SettingsShown);
    EXPECT_EQ(layout.UpperBottom, 8250); // 9000 - 750
    EXPECT_EQ(layout.GridHeight, 6915);  // 8250 - 360 - 120 - 855
}

TEST_F(MainWindowRules, CodeThreeTogglesTheDefaultSettingsBackAndForth)
{
    EXPECT_FALSE(Arranged(3, Sizes).SettingsShown);
    EXPECT_EQ(Config.FormState, -1);
    EXPECT_TRUE(ArrangeMainWindow(3, Sizes).SettingsShown);
    EXPECT_EQ(Config.FormState, 0);
}

TEST_F(MainWindowRules, ReportTakesTheRestOfTheWidth)
{
    const MainWindowLayout layout = Arranged(4, Sizes);
    EXPECT_EQ(layout.ListWidth, 4695);
    EXPECT_EQ(layout.ReportLeft, 4935);
    EXPECT_EQ(layout.ReportWidth, 4765); // 9850 - 4935 - 150
}

TEST_F(MainWindowRules, ReportIsNeverWiderThan5995)
{
    Sizes.InnerWidth = 11230; // a rest of exactly 5995
    EXPECT_EQ(Arranged(4, Sizes).ReportWidth, 5995);
    Sizes.InnerWidth = 20000;
    EXPECT_EQ(Arranged(4, Sizes).ReportWidth, 5995);
}

TEST_F(MainWindowRules, ListTakesTheWidthOfAHiddenReport)
{
    Sizes.ReportShown = false;
    const MainWindowLayout layout = Arranged(4, Sizes);
    EXPECT_EQ(layout.ListWidth, 9460); // 4695 + 4765
    EXPECT_EQ(layout.ReportWidth, 0);
}

TEST_F(MainWindowRules, NoLengthGoesBelowZero)
{
    const MainWindowLayout layout = Arranged(4, {100, 100, 2400, 2000, 855, 360, true});
    EXPECT_EQ(layout.FrameWidth, 0);
    EXPECT_EQ(layout.Frame3Left, 0);
    EXPECT_EQ(layout.UpperBottom, 0);
    EXPECT_EQ(layout.GridHeight, 0);
    EXPECT_EQ(layout.ReportWidth, 0);
}

TEST_F(MainWindowRules, CodeOneChangesTheWidthsOfListAndReportAlone)
{
    Arranged(4, Sizes);
    Sizes.InnerWidth = 9000;
    Sizes.InnerHeight = 4000;
    const MainWindowLayout layout = ArrangeMainWindow(1, Sizes);
    EXPECT_TRUE(layout.Applies);
    EXPECT_EQ(layout.ReportWidth, 3765); // 8850 - 4935 - 150
    EXPECT_EQ(layout.FrameWidth, 9850);
    EXPECT_EQ(layout.GridHeight, 4660);
}

TEST_F(MainWindowRules, RepeatedCodeOneIsIgnored)
{
    EXPECT_TRUE(Arranged(1, Sizes).Applies);
    Sizes.InnerWidth = 9000;
    EXPECT_FALSE(ArrangeMainWindow(1, Sizes).Applies);
    EXPECT_TRUE(ArrangeMainWindow(4, Sizes).Applies);
    EXPECT_TRUE(ArrangeMainWindow(1, Sizes).Applies);
}

TEST_F(MainWindowRules, RepeatedLayoutIsNotIgnored)
{
    EXPECT_TRUE(Arranged(4, Sizes).Applies);
    EXPECT_TRUE(ArrangeMainWindow(4, Sizes).Applies);
}

TEST_F(MainWindowRules, MetricToInchAndBackIsNotExact)
{
    Config.LeadLength = "25.00";
    SwitchUnits();
    EXPECT_EQ(Config.Metric, "Inch");
    EXPECT_EQ(Config.LeadLength, " .98");
    SwitchUnits();
    EXPECT_EQ(Config.Metric, "Metric");
    EXPECT_EQ(Config.LeadLength, " 24.89");
}

TEST_F(MainWindowRules, UnitSwitchTakesAllFiveMeasures)
{
    Config.LeadLength = "25.4";
    Config.LeadRampHeight = "50.8";
    Config.OffsetX = "76.2";
    Config.OffsetY = "101.6";
    Config.OffsetZ = "127";
    SwitchUnits();
    EXPECT_EQ(Config.LeadLength, " 1");
    EXPECT_EQ(Config.LeadRampHeight, " 2");
    EXPECT_EQ(Config.OffsetX, " 3");
    EXPECT_EQ(Config.OffsetY, " 4");
    EXPECT_EQ(Config.OffsetZ, " 5");
}

TEST_F(MainWindowRules, UnitSwitchLeavesThePrecisions)
{
    Config.PrecisionMetric = "2";
    Config.PrecisionInch = "3";
    SwitchUnits();
    EXPECT_EQ(Config.PrecisionMetric, "2");
    EXPECT_EQ(Config.PrecisionInch, "3");
}

std::string InInch(const std::string& text)
{
    Config.Metric = "Metric";
    Config.OffsetX = text;
    SwitchUnits();
    return Config.OffsetX;
}

TEST_F(MainWindowRules, SwitchedMeasureIsPrintedPlainly)
{
    EXPECT_EQ(InInch("10.00"), " .39");    // .3937
    EXPECT_EQ(InInch("2540"), " 100");     // no point
    EXPECT_EQ(InInch("-5"), "-.2");        // -.19685; no blank before a sign
    EXPECT_EQ(InInch("-.05"), " 0");       // rounds to nothing, without sign
    EXPECT_EQ(InInch("1E6"), " 39370.08"); // 39370.0787
}

TEST_F(MainWindowRules, SwitchedMeasureIsRoundedAsPrinted)
{
    EXPECT_EQ(InInch("3.175"), " .13"); // prints as .125: a half goes away from zero
    EXPECT_EQ(InInch("-3.175"), "-.13");
}

TEST_F(MainWindowRules, BlankMeasureAndNoNumberSwitchToZero)
{
    EXPECT_EQ(InInch(""), " 0");
    EXPECT_EQ(InInch("wide"), " 0");
}

TEST_F(MainWindowRules, MeasureBeyondASingleIsLeftAlone)
{
    EXPECT_EQ(InInch("1E300"), "1E300");
    EXPECT_EQ(InInch("1E999"), "1E999");
}

TEST_F(MainWindowRules, AnyOtherUnitCaptionBecomesMetric)
{
    Config.Metric = "";
    Config.OffsetX = "2";
    SwitchUnits();
    EXPECT_EQ(Config.Metric, "Metric");
    EXPECT_EQ(Config.OffsetX, " 50.8");
}

TEST_F(MainWindowRules, ClickOnGlueClearsDowel)
{
    Config.HBDDowel = 1;
    ClickHbdGlue(true);
    EXPECT_EQ(Config.HBDGlue, 1);
    EXPECT_EQ(Config.HBDDowel, 0);
}

TEST_F(MainWindowRules, ClickOnDowelClearsGlue)
{
    Config.HBDGlue = 1;
    ClickHbdDowel(true);
    EXPECT_EQ(Config.HBDDowel, 1);
    EXPECT_EQ(Config.HBDGlue, 0);
}

TEST_F(MainWindowRules, ClickThatSwitchesABoxOffClearsTheOtherToo)
{
    Config.HBDGlue = Config.HBDDowel = 1; // a file can hold both
    ClickHbdGlue(false);
    EXPECT_EQ(Config.HBDGlue, 0);
    EXPECT_EQ(Config.HBDDowel, 0);
}

TEST_F(MainWindowRules, EvolutionHasFramesOfItsOwn)
{
    EXPECT_FALSE(EvolutionFramesShown());
    Config.Genesis = true;
    EXPECT_FALSE(EvolutionFramesShown());
    Config.GenesisEV = true;
    EXPECT_TRUE(EvolutionFramesShown());
}

} // namespace
} // namespace kv

// The settings' lengths, switches and offsets, and what a drawing's instructions put over them.
#include "drawing/run_parameters.h"

#include <gtest/gtest.h>

#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv {
namespace {

struct RunParameters : ::testing::Test {
    RunParameters() { test::ResetProcess(); }
    ~RunParameters() override { test::ResetProcess(); }
};

TEST_F(RunParameters, LengthsStayWhenTheDrawingHasTheSettingsUnit)
{
    Config.LeadLength = " 12.5";
    Config.LeadRampHeight = "3";
    Config.Metric = "Metric";
    SettleRunParameters();
    EXPECT_EQ(kv::Run.LeadLength, 12.5F);
    EXPECT_EQ(kv::Run.LeadRampHeight, 3);
    Config.Metric = "Inch";
    kv::Run.DrawingInInch = True;
    SettleRunParameters();
    EXPECT_EQ(kv::Run.LeadLength, 12.5F);
    EXPECT_EQ(kv::Run.LeadRampHeight, 3);
}

TEST_F(RunParameters, MetricLengthsAreDividedForAnInchDrawing)
{
    Config.LeadLength = "25.4";
    Config.LeadRampHeight = "10";
    Config.Metric = "Metric";
    kv::Run.DrawingInInch = True;
    SettleRunParameters();
    EXPECT_EQ(kv::Run.LeadLength, 1);
    EXPECT_EQ(kv::Run.LeadRampHeight, static_cast<Single>(10 / 25.4));
}

TEST_F(RunParameters, InchLengthsAreMultipliedForAMetricDrawing)
{
    Config.LeadLength = ".98";
    Config.LeadRampHeight = "2";
    Config.Metric = "Inch";
    SettleRunParameters();
    EXPECT_EQ(kv::Run.LeadLength, static_cast<Single>(.98 * 25.4));
    EXPECT_EQ(kv::Run.LeadRampHeight, 50.8F);
}

TEST_F(RunParameters, ABlankUnitCountsAsMetric)
{
    Config.LeadLength = "50.8";
    Config.Metric = "";
    kv::Run.DrawingInInch = True;
    SettleRunParameters();
    EXPECT_EQ(kv::Run.LeadLength, 2);
    kv::Run.DrawingInInch = False;
    SettleRunParameters();
    EXPECT_EQ(kv::Run.LeadLength, 50.8F);
}

TEST_F(RunParameters, ADrawingsLengthsReplaceUnconverted)
{
    Config.LeadLength = "25.4";
    Config.LeadRampHeight = "25.4";
    Config.Metric = "Metric";
    kv::Run.DrawingInInch = True;
    kv::Run.LeadLengthOverride = 3;
    kv::Run.RampHeightOverride = -2;
    SettleRunParameters();
    EXPECT_EQ(kv::Run.LeadLength, 3);
    EXPECT_EQ(kv::Run.LeadRampHeight, -2);
}

TEST_F(RunParameters, TextThatIsNoNumberIsZero)
{
    Config.LeadLength = "long";
    Config.LeadRampHeight = "";
    SettleRunParameters();
    EXPECT_EQ(kv::Run.LeadLength, 0);
    EXPECT_EQ(kv::Run.LeadRampHeight, 0);
}

TEST_F(RunParameters, SwitchesAreTheCheckBoxes)
{
    Config.LeadS = 1;
    Config.LeadRampOut = 1;
    SettleRunParameters();
    EXPECT_EQ(kv::Run.LeadsOn, True);
    EXPECT_EQ(kv::Run.RampInOn, False);
    EXPECT_EQ(kv::Run.RampOutOn, True);
    EXPECT_EQ(kv::Run.RemoveBorder, False);
    Config.LeadS = Config.LeadRampOut = 0;
    Config.LeadRampIn = Config.RemoveBorderRoute = 1;
    SettleRunParameters();
    EXPECT_EQ(kv::Run.LeadsOn, False);
    EXPECT_EQ(kv::Run.RampInOn, True);
    EXPECT_EQ(kv::Run.RampOutOn, False);
    EXPECT_EQ(kv::Run.RemoveBorder, True);
}

TEST_F(RunParameters, InstructionsSwitchOverTheCheckBoxes)
{
    Config.LeadS = Config.LeadRampIn = 1;
    kv::Run.LeadSwitch = kv::Run.RampInSwitch = -1;
    kv::Run.RampOutSwitch = kv::Run.RemBorderSwitch = 1;
    SettleRunParameters();
    EXPECT_EQ(kv::Run.LeadsOn, False);
    EXPECT_EQ(kv::Run.RampInOn, False);
    EXPECT_EQ(kv::Run.RampOutOn, True);
    EXPECT_EQ(kv::Run.RemoveBorder, True);
}

TEST_F(RunParameters, OffsetsAreTheSettingsAsTheyStand)
{
    Config.OffsetX = " 1.5";
    Config.OffsetY = "-2";
    Config.OffsetZ = "";
    Config.Metric = "Inch"; // no conversion
    SettleRunParameters();
    EXPECT_EQ(kv::Run.OffsetX, 1.5F);
    EXPECT_EQ(kv::Run.OffsetY, -2);
    EXPECT_EQ(kv::Run.OffsetZ, 0);
}

TEST_F(RunParameters, OffsetOfTheDrawingReplacesAllThreeAtOnce)
{
    Config.OffsetX = "1";
    Config.OffsetY = "2";
    Config.OffsetZ = "3";
    kv::Run.OffsetOverride = {5, 0, 0};
    SettleRunParameters(); // without its flag it is nothing
    EXPECT_EQ(kv::Run.OffsetX, 1);
    kv::Run.OffsetOverrideSet = True;
    SettleRunParameters();
    EXPECT_EQ(kv::Run.OffsetX, 5);
    EXPECT_EQ(kv::Run.OffsetY, 0);
    EXPECT_EQ(kv::Run.OffsetZ, 0);
}

TEST_F(RunParameters, ReachARunThroughADrawing)
{
    test::Scene scene;
    Config.LeadLength = "25";
    Config.LeadRampHeight = "10";
    Config.LeadS = 0;
    Config.LeadRampIn = 1;
    Config.OffsetY = "9";
    bool looked = false;
    const test::AtStage stage("border", [&] {
        looked = true;
        EXPECT_EQ(kv::Run.LeadLength, 30);
        EXPECT_EQ(kv::Run.LeadRampHeight, 4);
        EXPECT_EQ(kv::Run.LeadsOn, True);
        EXPECT_EQ(kv::Run.RampInOn, False);
        EXPECT_EQ(kv::Run.OffsetX, 10.2F); // its commas have become points
        EXPECT_EQ(kv::Run.OffsetY, 0);
        EXPECT_EQ(kv::Run.OffsetZ, 0);
    });
    scene.Convert(
        test::Drawing(test::Instructions({"LEAD=ON 30", "ZRAMP=4", "RAMPIN OFF", "OFFSET 10,20,30"}) +
                      test::PanelSolid("PANEL", 0, 0, 600, 400, 18)));
    EXPECT_TRUE(looked) << scene.ReportText();
}

} // namespace
} // namespace kv

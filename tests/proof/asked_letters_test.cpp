// What the check reads out of layers' names.
#include "proof/asked_letters.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

TEST(AskedLetters, DepthDiameterToolAndSideOfARoute)
{
    const AskedLetters letters = AskedLettersOf("ROUTE20Z18P2D12.5T71R6");
    EXPECT_DOUBLE_EQ(letters.Depth.value(), 18.2);
    EXPECT_DOUBLE_EQ(letters.Diameter, 12.5);
    EXPECT_EQ(letters.Tool, 71);
    EXPECT_EQ(letters.Side, -1);
    EXPECT_DOUBLE_EQ(letters.ToolRadius, 6);
    EXPECT_FALSE(letters.DepthIsCode);
}

TEST(AskedLetters, LeftWinsOverRight)
{
    EXPECT_EQ(AskedLettersOf("ROUTEZ5R3L4").Side, 1);
    EXPECT_DOUBLE_EQ(AskedLettersOf("ROUTEZ5R3L4").ToolRadius, 4);
    EXPECT_EQ(AskedLettersOf("ROUTEZ5").Side, 0);
}

TEST(AskedLetters, LettersOfTheWordItselfMeanNothing)
{
    EXPECT_EQ(AskedLettersOf("DRILLINGZ5").Side, 0);
    EXPECT_DOUBLE_EQ(AskedLettersOf("DRILLINGZ5").Diameter, 0);
    EXPECT_EQ(AskedLettersOf("BORDER_Z18").Side, 0);
    EXPECT_EQ(AskedLettersOf("ROUTEROUTEZ5").Tool, 0);
}

TEST(AskedLetters, ADepthMayBeACodeOfTheMachine)
{
    for (const char* const layer : {"ROUTEZD", "ROUTEZA",
                                    "ROUTEZ\xDF"
                                    "5",
                                    "ROUTEZ95"})
        EXPECT_TRUE(AskedLettersOf(layer).DepthIsCode) << layer;
    EXPECT_FALSE(AskedLettersOf("ROUTEZH").DepthIsCode);
    EXPECT_FALSE(AskedLettersOf("ROUTED8").Depth.has_value());
    EXPECT_DOUBLE_EQ(AskedLettersOf("ROUTEZD_D8").Diameter, 8);
}

TEST(AskedLetters, ALeadWithoutALengthIsThatOfTheSettings)
{
    EXPECT_DOUBLE_EQ(AskedLettersOf("ROUTEZ5 \xE4"
                                    "8")
                         .Lead.value(),
                     8);
    EXPECT_DOUBLE_EQ(AskedLettersOf("ROUTEZ5 \xE4").Lead.value(), 999);
    EXPECT_FALSE(AskedLettersOf("ROUTEZ5").Lead.has_value());
}

TEST(AskedLetters, TheTaskOfALayer)
{
    EXPECT_EQ(TaskOfCircle("VBORE_D5"), LayerTask::VerticalBore);
    EXPECT_EQ(TaskOfCircle("RILLI"), LayerTask::VerticalBore);
    EXPECT_EQ(TaskOfCircle("NOTES"), LayerTask::None);
    EXPECT_EQ(TaskOfCircle("HBORE"), LayerTask::HorizontalBore);
    EXPECT_EQ(TaskOfCircle("MYROUTEZ5"), LayerTask::Route);
    EXPECT_EQ(TaskOfLine("EXCAVZ5"), LayerTask::Pocket);
    EXPECT_EQ(TaskOfLine("GROOVE_D4"), LayerTask::Groove);
    EXPECT_EQ(TaskOfLine("XHBORE"), LayerTask::HorizontalBore);
    EXPECT_EQ(TaskOfLine("BORDER_ROUTE"), LayerTask::Border);
    EXPECT_EQ(GrooveSideOf("GROOVE_D4L"), 1);
    EXPECT_EQ(GrooveSideOf("GROOVE_D4R"), -1);
    EXPECT_EQ(GrooveSideOf("GROOVE_D4"), 0);
}

} // namespace
} // namespace kv

// What a reset clears and what a drawing leaves to the next one.
#include <gtest/gtest.h>

#include <cstring>

#include "state/run.h"
#include "support/scene.h"

namespace kv {
namespace {

class RunState : public testing::Test {
  protected:
    RunBlock& Run = kv::Run; // the test class has a Run of its own
    void SetUp() override { test::ResetProcess(); }
    void TearDown() override { test::ResetProcess(); }
};

TEST_F(RunState, PiIsALittleAbovePi)
{
    const Single pi = 3.1415930F;
    EXPECT_EQ(Run.Pi, pi);
    EXPECT_GT(static_cast<double>(Run.Pi), 3.14159265358979);
    EXPECT_EQ(Run.DegToRad, static_cast<Single>(static_cast<double>(pi) / 180));
}

TEST_F(RunState, ResetKeepsWhatADrawingLeavesToTheNext)
{
    Run.InstructionLayer = "INFO";
    Run.ControlType = 2;
    Run.Outfit = 7;
    Run.OptimizeFlag = True;
    Run.OptimizeSide = 3;
    Run.SequenceName = "RHGV";
    Run.MinSequence = -12;
    Run.CncOff = Run.HbdOff = True;
    ResetRun();
    EXPECT_EQ(Run.InstructionLayer, "INFO");
    EXPECT_EQ(Run.ControlType, 2);
    EXPECT_EQ(Run.Outfit, 7);
    EXPECT_EQ(Run.OptimizeFlag, True);
    EXPECT_EQ(Run.OptimizeSide, 3);
    EXPECT_EQ(Run.SequenceName, "RHGV");
    EXPECT_EQ(Run.MinSequence, -12);
    EXPECT_EQ(Run.CncOff, True);
    EXPECT_EQ(Run.HbdOff, True);
}

TEST_F(RunState, ResetKeepsTheJobAndTheShellsState)
{
    Run.RunStartTime = 1.5F;
    Run.SourceFile = "\\A\\B.DXF";
    Run.SourceName = "B.DXF";
    Run.PartName = "B";
    Run.RunState = 2;
    Run.RunFailed = True;
    AddFailedFile("X");
    ResetRun();
    EXPECT_EQ(Run.RunStartTime, 1.5F);
    EXPECT_EQ(Run.SourceFile, "\\A\\B.DXF");
    EXPECT_EQ(Run.SourceName, "B.DXF");
    EXPECT_EQ(Run.PartName, "B");
    EXPECT_EQ(Run.RunState, 2);
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(Run.FailedFiles, (std::vector<std::string>{"", "X"}));
}

TEST_F(RunState, ResetClearsPanelUnitAndJobNames)
{
    Run.OriginX = Run.OriginY = Run.PartThickness = Run.SideMarginX = Run.SideMarginY = 5;
    Run.OffsetX = Run.OffsetY = Run.OffsetZ = 5;
    Run.DrawingScale = Run.UnitFactor = Run.RouteTolerance = 5;
    Run.DrawingInInch = True;
    Run.PanelFound = 1;
    Run.SourceFolder = Run.PartDescription = Run.ProgramFileName = "X";
    Run.SideWidth.fill(5);
    Run.SideHeight.fill(5);
    Run.SidePresent.fill(True);
    ResetRun();
    for (const Single value : {Run.OriginX, Run.OriginY, Run.PartThickness, Run.SideMarginX, Run.SideMarginY,
                               Run.OffsetX, Run.OffsetY, Run.OffsetZ})
        EXPECT_EQ(value, 0);
    EXPECT_EQ(Run.DrawingScale, 1);
    EXPECT_EQ(Run.UnitFactor, 1);
    EXPECT_EQ(Run.RouteTolerance, 0.008F);
    EXPECT_EQ(Run.DrawingInInch, False);
    EXPECT_EQ(Run.PanelFound, 0);
    EXPECT_EQ(Run.SourceFolder, "");
    EXPECT_EQ(Run.PartDescription, "");
    EXPECT_EQ(Run.ProgramFileName, "");
    for (std::size_t side = 0; side <= 5; ++side) {
        EXPECT_EQ(Run.SideWidth[side], 0);
        EXPECT_EQ(Run.SideHeight[side], 0);
        EXPECT_EQ(Run.SidePresent[side], False);
        EXPECT_EQ(Run.SideMinX[side], 9999999.0F);
        EXPECT_EQ(Run.SideMinY[side], 9999999.0F);
        EXPECT_EQ(Run.SideMaxX[side], -9999999.0F);
        EXPECT_EQ(Run.SideMaxY[side], -9999999.0F);
    }
}

TEST_F(RunState, ResetClearsWhatInstructionsSet)
{
    Run.NoCode = Run.DrAlt = Run.HasVars = Run.OffsetOverrideSet = True;
    Run.CornerComp = Run.LeadSwitch = Run.RampInSwitch = Run.RampOutSwitch = Run.RemBorderSwitch = -1;
    Run.ArcSubstitution = 0;
    Run.FlagMask = 12;
    Run.OutfitDefault = 4;
    Run.LeadLengthOverride = Run.RampHeightOverride = 3;
    Run.OffsetOverride.fill(3);
    Run.VarNames = Run.VarValues = Run.OpStrings = {"", "A"};
    Run.PtsValues.fill("X");
    Run.NoteX = Run.NoteY = {0, 1};
    Run.NoteText = {"", "N"};
    Run.NoteCount = 1;
    ResetRun();
    for (const Int value :
         {Run.NoCode, Run.DrAlt, Run.HasVars, Run.OffsetOverrideSet, Run.CornerComp, Run.LeadSwitch,
          Run.RampInSwitch, Run.RampOutSwitch, Run.RemBorderSwitch, Run.NoteCount})
        EXPECT_EQ(value, 0);
    EXPECT_EQ(Run.ArcSubstitution, 1);
    EXPECT_EQ(Run.FlagMask, 0);
    EXPECT_EQ(Run.OutfitDefault, 0);
    EXPECT_EQ(Run.LeadLengthOverride, 0);
    EXPECT_EQ(Run.RampHeightOverride, 0);
    for (const Single value : Run.OffsetOverride)
        EXPECT_EQ(value, 0);
    EXPECT_TRUE(Run.VarNames.empty());
    EXPECT_TRUE(Run.VarValues.empty());
    EXPECT_TRUE(Run.OpStrings.empty());
    for (const std::string& value : Run.PtsValues)
        EXPECT_EQ(value, "");
    EXPECT_TRUE(Run.NoteX.empty());
    EXPECT_TRUE(Run.NoteY.empty());
    EXPECT_TRUE(Run.NoteText.empty());
}

TEST_F(RunState, ResetClearsTextsSequenceAndLayerTable)
{
    Run.CncNotes = Run.GCode1 = Run.GCode2 = Run.GCode3 = {"", "A"};
    Run.MaxSequence = 9;
    Run.SegmentCount = 3;
    Run.RoutePass = 5;
    Run.AnyLeadCode = True;
    Run.LayerTable.emplace_back("ROUTE1");
    ResetRun();
    EXPECT_TRUE(Run.CncNotes.empty());
    EXPECT_TRUE(Run.GCode1.empty());
    EXPECT_TRUE(Run.GCode2.empty());
    EXPECT_TRUE(Run.GCode3.empty());
    EXPECT_EQ(Run.MaxSequence, 0);
    EXPECT_EQ(Run.SegmentCount, 0);
    EXPECT_EQ(Run.RoutePass, 0);
    EXPECT_EQ(Run.AnyLeadCode, False);
    EXPECT_EQ(Run.LayerTable, (std::vector<std::string>{"BORDER", "VBORE DRILLING", "GROOVE", "HBORE"}));
}

TEST_F(RunState, ResetEmptiesOperationsAndKeepsTheReadersRecords)
{
    VBores.Append({});
    RouteSegments.Append({});
    RouteCircles.Append({});
    Grooves.Append({});
    GroovePasses.Append({});
    HBoreLines.Append({});
    HBores.Append({});
    HeadPositions.Append({});
    Entities.Append({});
    Entities.Append({});
    EntityTexts.emplace_back("TEXT");
    ResetRun();
    for (const Long last : {VBores.Last(), RouteSegments.Last(), RouteCircles.Last(), Grooves.Last(),
                            GroovePasses.Last(), HBoreLines.Last(), HBores.Last(), HeadPositions.Last()})
        EXPECT_EQ(last, 0);
    EXPECT_EQ(Entities.Last(), 2);
    EXPECT_EQ(EntityTexts.size(), 2U);
    EXPECT_EQ(Run.EntityCount, 2);
}

TEST_F(RunState, ReleaseEmptiesTheReadersRecordsToo)
{
    VBores.Append({});
    Entities.Append({});
    EntityTexts.emplace_back("TEXT");
    ReleaseRunArrays();
    EXPECT_EQ(VBores.Last(), 0);
    EXPECT_EQ(Entities.Last(), 0);
    EXPECT_EQ(EntityTexts, std::vector<std::string>(1));
}

TEST_F(RunState, FailedFilesCountFromOne)
{
    AddFailedFile("A.DXF");
    AddFailedFile("B.DXF");
    EXPECT_EQ(Run.FailedFiles, (std::vector<std::string>{"", "A.DXF", "B.DXF"}));
}

TEST_F(RunState, OnlyTheStateOneIsAnAbort)
{
    for (const Int state : {Int{0}, Int{-1}, Int{2}}) {
        Run.RunState = state;
        EXPECT_FALSE(UserAborted());
    }
    Run.RunState = 1;
    EXPECT_TRUE(UserAborted());
}

} // namespace
} // namespace kv

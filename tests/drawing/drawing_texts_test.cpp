// Part name, description, notes and literal G-code out of a drawing's texts.
#include "drawing/drawing_texts.h"

#include <gtest/gtest.h>

#include "job/job_driver.h"
#include "state/run.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv {
namespace {

using namespace test;
using Rows = std::vector<std::string>;

class DrawingTexts : public testing::Test {
  protected:
    const RunBlock& Read(const std::string& entities, const std::string& output = "")
    {
        Stages.StopBeforeWriters = true;
        const AtStage look("operations", [this] { Seen = kv::Run; });
        const std::string border = Rectangle("BORDERZ18", 100, 50, 600, 400);
        EXPECT_TRUE(Place.Convert(Drawing(border + entities), "DOOR.DXF", output)) << Place.ReportText();
        return Seen;
    }

    Scene Place;
    RunBlock Seen;
};

// Part name

TEST_F(DrawingTexts, TextOnNameIsThePartName)
{
    Read(TextAt("NAME", 0, 0, "Cupboard"));
    EXPECT_EQ(Seen.PartName, "Cupboard");
    EXPECT_EQ(Place.Lines, (Rows{"DOOR", "USING \"CUPBOARD\" FOR THE PART NAME"}));
}

TEST_F(DrawingTexts, NameThatDiffersInCaseAloneIsTakenWithoutALine)
{
    Read(TextAt("NAME", 0, 0, "Door"));
    EXPECT_EQ(Seen.PartName, "Door");
    EXPECT_EQ(Place.Lines, (Rows{"DOOR"}));
}

TEST_F(DrawingTexts, FolderOfThePartNameIsNotCompared)
{
    Read(TextAt("NAME", 0, 0, "shelf"), "KITCHEN\\SHELF");
    EXPECT_EQ(Seen.PartName, "KITCHEN\\shelf"); // the folder is the job's
    EXPECT_EQ(Place.Lines, (Rows{"SHELF"}));
}

TEST_F(DrawingTexts, LastNameWinsAndItsLineIsTheOneReported)
{
    Read(TextAt("NAME", 0, 0, "First") + TextAt("NAME", 0, 0, "Second"));
    EXPECT_EQ(Seen.PartName, "Second");
    EXPECT_EQ(Place.Lines, (Rows{"DOOR", "USING \"SECOND\" FOR THE PART NAME"}));
}

TEST_F(DrawingTexts, NameTextComesLaterThanTheInstructionAndWins)
{
    Read(Instructions({"NAME INSTRUCTED"}) + TextAt("NAME", 0, 0, "WRITTEN"));
    EXPECT_EQ(Seen.PartName, "WRITTEN");
    EXPECT_EQ(Place.Lines,
              (Rows{"DOOR", "INSTRUCTED  Assigned in drawing", "USING \"WRITTEN\" FOR THE PART NAME"}));
}

TEST_F(DrawingTexts, LayerMustBeNameAlone)
{
    Read(TextAt("NAMES", 0, 0, "A") + TextAt("MYNAME", 0, 0, "B"));
    EXPECT_EQ(Seen.PartName, "DOOR");
}

TEST_F(DrawingTexts, LineOfANameIsNotLeftToTheNextDrawing)
{
    Read(TextAt("NAME", 0, 0, "OTHER"));
    Read("");
    EXPECT_EQ(Place.Lines, (Rows{"DOOR"}));
}

// Description

TEST_F(DrawingTexts, TextOnDescrIsTheDescription)
{
    Read(TextAt("DESCRIPTION", 0, 0, "  BIG OAK DOOR  "));
    EXPECT_EQ(Seen.PartDescription, "BIG OAK DOOR");
    EXPECT_EQ(Place.Lines, (Rows{"DOOR", "Descr: BIG OAK DOOR"}));
}

TEST_F(DrawingTexts, DescriptionOnABorderLayerIsReportedAsALineOfItsOwn)
{
    Read(TextAt("BORDER", 0, 0, "DESCRIPTION OAK"));
    EXPECT_EQ(Seen.PartDescription, "OAK");
    EXPECT_EQ(Place.Lines, (Rows{"DOOR", "OAK", "Descr: OAK"}));
}

TEST_F(DrawingTexts, DescriptionOnABorderLayerStartsBehindItsFirstBlank)
{
    Read(TextAt("MYBORDERX", 0, 0, "  DESC: BIG OAK"));
    EXPECT_EQ(Seen.PartDescription, "BIG OAK");
}

TEST_F(DrawingTexts, OtherTextOnABorderLayerIsNothing)
{
    Read(TextAt("BORDER", 0, 0, "OAK"));
    EXPECT_EQ(Seen.PartDescription, "");
    EXPECT_EQ(Place.Lines, (Rows{"DOOR"}));
}

TEST_F(DrawingTexts, LinesFollowInTheOrderValueNameDescription)
{
    Read(TextAt("NAME", 0, 0, "OTHER") + TextAt("BORDER", 0, 0, "DESC OAK"));
    EXPECT_EQ(Place.Lines, (Rows{"DOOR", "OAK", "USING \"OTHER\" FOR THE PART NAME", "Descr: OAK"}));
}

// Lists

TEST_F(DrawingTexts, NotesStandAsTheyAre)
{
    // A comma has become a point in the reader.
    Read(TextAt("CNCNOTES", 0, 0, "  mind the veneer, please ") + TextAt("XCNCNOT", 0, 0, "two"));
    EXPECT_EQ(Seen.CncNotes, (Rows{"", "  mind the veneer. please ", "two"}));
}

TEST_F(DrawingTexts, GcodeTextsAreTrimmedAndKeepTheirOrder)
{
    Read(TextAt("GCODE1", 0, 0, " G0 X1 ") + TextAt("GCODE2", 0, 0, "M2") + TextAt("GCODE3", 0, 0, "M3") +
         TextAt("GCODE1", 0, 0, "G1 X2") + TextAt("GCODE4", 0, 0, "M4") + TextAt("GCODE11", 0, 0, "M5"));
    EXPECT_EQ(Seen.GCode1, (Rows{"", "G0 X1", "G1 X2"}));
    EXPECT_EQ(Seen.GCode2, (Rows{"", "M2"}));
    EXPECT_EQ(Seen.GCode3, (Rows{"", "M3"}));
}

TEST_F(DrawingTexts, ListsAndDescriptionAreEmptyForTheNextDrawing)
{
    Read(TextAt("GCODE1", 0, 0, "A") + TextAt("GCODE2", 0, 0, "B") + TextAt("GCODE3", 0, 0, "C") +
         TextAt("CNCNOT", 0, 0, "D") + TextAt("DESCR", 0, 0, "E"));
    Read("");
    EXPECT_TRUE(Seen.GCode1.empty());
    EXPECT_TRUE(Seen.GCode2.empty());
    EXPECT_TRUE(Seen.GCode3.empty());
    EXPECT_TRUE(Seen.CncNotes.empty());
    EXPECT_EQ(Seen.PartDescription, "");
}

TEST_F(DrawingTexts, FirstTestThatHoldsDecides)
{
    // Begins with DESCR and holds CNCNOT: a description, no note.
    Read(TextAt("DESCRCNCNOT", 0, 0, "OAK"));
    EXPECT_EQ(Seen.PartDescription, "OAK");
    EXPECT_TRUE(Seen.CncNotes.empty());
}

TEST_F(DrawingTexts, TextsOnOtherLayersAreIgnored)
{
    Read(TextAt("0", 0, 0, "OAK") + TextAt("GCODE", 0, 0, "M5"));
    EXPECT_EQ(Place.Lines, (Rows{"DOOR"}));
    EXPECT_TRUE(Seen.GCode1.empty());
}

} // namespace
} // namespace kv

// The directive language: each keyword with its oddities, and the notes that are no keyword.
#include "drawing/instructions.h"

#include <array>
#include <string>

#include "drawing/directives.h"
#include "state/settings.h"

namespace kv {
namespace {

using test::Directives;
using test::Lines;
using Variables = Directives;
using CutListValues = Directives;
using PinnedDirectives = Directives;

TEST_F(Directives, NeedTheTitle)
{
    ObeyDrawing(test::TextAt("INFO", 0, 0, "SCALE=2") + test::TextAt("INFO", 0, 0, "LAYER A=B") +
                test::Line("A", 0, 0, 1, 1));
    EXPECT_EQ(kv::Run.DrawingScale, 1);
    EXPECT_EQ(LayersOf("LINE"), (Lines{"A"}));
}

TEST_F(Directives, TakeTheProgramsNameAsTitleToo)
{
    ObeyDrawing(test::TextAt("INFO", 0, 0, "Korvanti Instructions") + test::TextAt("INFO", 0, 0, "SCALE=2"));
    EXPECT_EQ(kv::Run.DrawingScale, 2);
}

TEST_F(Directives, TitleLinesAreNoNotes)
{
    Obey({"post anything", "KORVANTI=SCALE=2"});
    EXPECT_EQ(kv::Run.NoteCount, 0);
    EXPECT_EQ(kv::Run.DrawingScale, 1);
}

TEST_F(Directives, BelongToEveryLayerThatHoldsTheTitlesLayer)
{
    ObeyDrawing(test::TextAt("INFO", 0, 0, "POST INSTRUCTIONS") +
                test::TextAt("My In fo 2", 0, 0, "SCALE=2") + test::TextAt("INF", 0, 0, "NOCODE"));
    EXPECT_EQ(kv::Run.DrawingScale, 2);
    EXPECT_EQ(kv::Run.NoCode, False);
}

TEST_F(Directives, LayerOfTheTitleSurvivesToADrawingWithoutOne)
{
    Obey({});
    ObeyDrawing(test::TextAt("INFO", 0, 0, "SCALE=4"));
    EXPECT_EQ(kv::Run.DrawingScale, 4);
}

TEST_F(Directives, PlainWords)
{
    Obey({"noarcsub", " NoCode", "DRALT"});
    EXPECT_EQ(kv::Run.ArcSubstitution, 0);
    EXPECT_EQ(kv::Run.NoCode, True);
    EXPECT_EQ(kv::Run.DrAlt, True);
    Obey({});
    EXPECT_EQ(kv::Run.ArcSubstitution, 1);
    EXPECT_EQ(kv::Run.NoCode, False);
    EXPECT_EQ(kv::Run.DrAlt, False);
}

TEST_F(Directives, NoCodeInTwoWordsDoesNothing)
{
    Obey({"NO CODE"});
    EXPECT_EQ(kv::Run.NoCode, False);
    EXPECT_EQ(kv::Run.NoteCount, 0);
}

TEST_F(Directives, FlagSetsABit)
{
    Obey({"FLAG=3"});
    EXPECT_EQ(kv::Run.FlagMask, 8);
    Obey({"FLAG=1", "FLAG X= 4", "FLAG=1"});
    EXPECT_EQ(kv::Run.FlagMask, 18);
    Obey({"FLAG=1 0"}); // its blanks do not count
    EXPECT_EQ(kv::Run.FlagMask, 1024);
    Obey({"FLAG=2.5"}); // to even
    EXPECT_EQ(kv::Run.FlagMask, 4);
    Obey({"FLAG=30"});
    EXPECT_EQ(kv::Run.FlagMask, 1073741824);
    Obey({"FLAG=-1"}); // a half rounds to nothing
    EXPECT_EQ(kv::Run.FlagMask, 0);
}

TEST_F(Directives, FlagWithoutAnEqualsSignSetsBitZero)
{
    Obey({"FLAG 3"});
    EXPECT_EQ(kv::Run.FlagMask, 1);
}

TEST_F(Directives, FlagBeyondALongEndsTheRun)
{
    EXPECT_EQ(ErrorOf("FLAG=31"), ErrorOverflow);
    EXPECT_EQ(ErrorOf("FLAG=99999"), ErrorOverflow);
}

TEST_F(Directives, DescriptionIsOneWord)
{
    Obey({"DESCR BIG OAK DOOR"});
    EXPECT_EQ(kv::Run.PartDescription, "BIG");
    Obey({"descr = Oak"});
    EXPECT_EQ(kv::Run.PartDescription, "Oak");
    Obey({"DESCR"});
    EXPECT_EQ(kv::Run.PartDescription, "");
}

TEST_F(Directives, NameOfThePartIsReported)
{
    kv::Run.PartName = "DOOR";
    Obey({"NAME Front 2"});
    EXPECT_EQ(kv::Run.PartName, "Front");
    EXPECT_EQ(Place.Lines, (Lines{"Front  Assigned in drawing"}));
}

TEST_F(Directives, NameAloneEmptiesTheName)
{
    kv::Run.PartName = "DOOR";
    Obey({"NAME"});
    EXPECT_EQ(kv::Run.PartName, "");
    EXPECT_EQ(Place.Lines, (Lines{"Assigned in drawing"})); // rows are shown trimmed
}

TEST_F(Directives, OperationStrings)
{
    Obey({"OP 5=Z5 T12 f3", "OP 2 =  X", "OP 3=   Z9"});
    ASSERT_EQ(kv::Run.OpStrings.size(), 6U); // grows only
    EXPECT_EQ(kv::Run.OpStrings[5], "Z5 T12 f3");
    EXPECT_EQ(kv::Run.OpStrings[2], "=  X"); // the number ended at the blank
    EXPECT_EQ(kv::Run.OpStrings[3], "Z9");
    EXPECT_EQ(kv::Run.OpStrings[4], "");
}

TEST_F(Directives, OperationStringBehindTwoBlanksIsNumberZero)
{
    Obey({"OP  5=Z5"});
    ASSERT_EQ(kv::Run.OpStrings.size(), 1U);
    EXPECT_EQ(kv::Run.OpStrings[0], "5=Z5");
}

TEST_F(Directives, OperationStringBelowZeroEndsTheRun)
{
    EXPECT_EQ(ErrorOf("OP -1=Z5"), ErrorSubscript);
}

TEST_F(Directives, RunErrorsFailTheJobWithOneLineAndListTheFile)
{
    for (const char* line : {"PTS 51=X", "OP -1=X", "FLAG=31"}) {
        EXPECT_FALSE(Place.Convert(
            test::Drawing(test::Instructions({line}) + test::PanelSolid("PANEL", 0, 0, 600, 400, 18))));
        ASSERT_FALSE(kv::Run.FailedFiles.empty());
        EXPECT_EQ(kv::Run.FailedFiles.back(), kv::Run.SourceFile);
        EXPECT_EQ(Place.Lines.size(), 2U) << Place.ReportText(); // the job's name, the cause
        EXPECT_FALSE(Place.HasProgram());
        EXPECT_EQ(Entities.Last(), 0);
    }
}

TEST_F(Directives, ScaleWithABlankLosesItsFirstCharacter)
{
    Obey({"SCALE 2.5"});
    EXPECT_EQ(kv::Run.DrawingScale, .5F);
}

TEST_F(Directives, ScaleWithAnEqualsSign)
{
    Obey({"SCALE=2.5"});
    EXPECT_EQ(kv::Run.DrawingScale, 2.5F);
    Obey({"SCALE = 2.5"});
    EXPECT_EQ(kv::Run.DrawingScale, 2.5F);
    Obey({"SCALE=-2"});
    EXPECT_EQ(kv::Run.DrawingScale, 2);
    Obey({"SCALE=2=5"});
    EXPECT_EQ(kv::Run.DrawingScale, 2);
    Obey({"SCALE=2 5"}); // its blanks are gone
    EXPECT_EQ(kv::Run.DrawingScale, 25);
}

TEST_F(Directives, ScaleOrOutfitAloneIsZero)
{
    Obey({"SCALE", "OUTFIT=5", "OUTFIT"});
    EXPECT_EQ(kv::Run.DrawingScale, 0);
    EXPECT_EQ(kv::Run.OutfitDefault, 0);
    Obey({"SCALE ", "SCALE  2"}); // position 7 of "SCALE2" is behind its end
    EXPECT_EQ(kv::Run.DrawingScale, 0);
}

TEST_F(Directives, OutfitIsRoundedToEven)
{
    Obey({"OUTFIT=3"});
    EXPECT_EQ(kv::Run.OutfitDefault, 3);
    Obey({"OUTFIT=2.5"});
    EXPECT_EQ(kv::Run.OutfitDefault, 2);
    Obey({"OUTFIT=-4"});
    EXPECT_EQ(kv::Run.OutfitDefault, 4);
    Obey({"OUTFIT 12"});
    EXPECT_EQ(kv::Run.OutfitDefault, 2); // the blank eats the 1
    EXPECT_EQ(ErrorOf("OUTFIT=3000000000"), ErrorOverflow);
}

TEST_F(Directives, LeadForms)
{
    const struct {
        const char* Line;
        Int Switch;
        Single Length;
    } rows[] = {
        {"LEAD=OFF", -1, 0},    {"LEAD off", -1, 0}, {"LEAD=ON", 1, 0},    {"LEAD=ON 5.5", 1, 5.5F},
        {"LEADS = on 7", 1, 7}, {"LEAD ON 7", 1, 7}, {"LEAD=ON -5", 1, 0}, {"LEAD=ON 0", 1, 0},
        {"LEAD=12", 0, 12},     {"LEAD 12", 0, 12},  {"LEAD=-12", 0, 12},  {"LEAD", 0, 0},
        {"LEAD ON=12", 0, 12}, // goes behind the "="
        {"LEAD=ON=6", 0, 6},   // behind the second one
        {"LEAD=MAYBE", 0, 0},
    };
    for (const auto& row : rows) {
        Obey({row.Line});
        EXPECT_EQ(kv::Run.LeadSwitch, row.Switch) << row.Line;
        EXPECT_EQ(kv::Run.LeadLengthOverride, row.Length) << row.Line;
    }
}

TEST_F(Directives, LeadLengthBehindASwitchLeavesTheSwitch)
{
    Obey({"LEAD=OFF", "LEAD=12"});
    EXPECT_EQ(kv::Run.LeadSwitch, -1);
    EXPECT_EQ(kv::Run.LeadLengthOverride, 12);
    Obey({"LEAD=12", "LEAD=ON 0"});
    EXPECT_EQ(kv::Run.LeadSwitch, 1);
    EXPECT_EQ(kv::Run.LeadLengthOverride, 12);
}

TEST_F(Directives, RampHeight)
{
    Obey({"ZRAMP=3.5"});
    EXPECT_EQ(kv::Run.RampHeightOverride, 3.5F);
    Obey({"ZRAMP  4"});
    EXPECT_EQ(kv::Run.RampHeightOverride, 4);
    Obey({"ZRAMP 9 = -3"}); // behind the first "="
    EXPECT_EQ(kv::Run.RampHeightOverride, -3);
}

TEST_F(Directives, Switches)
{
    Obey({"RAMPIN ON", "RAMPOUT OFF", "REMBORDER=on", "CORNERCOMP  Off"});
    EXPECT_EQ(kv::Run.RampInSwitch, 1);
    EXPECT_EQ(kv::Run.RampOutSwitch, -1);
    EXPECT_EQ(kv::Run.RemBorderSwitch, 1);
    EXPECT_EQ(kv::Run.CornerComp, -1);
    Obey({"RAMPIN OFF", "RAMPOUT = on", "REMBORDER OFF", "CORNERCOMP ON"});
    EXPECT_EQ(kv::Run.RampInSwitch, -1);
    EXPECT_EQ(kv::Run.RampOutSwitch, 1);
    EXPECT_EQ(kv::Run.RemBorderSwitch, -1);
    EXPECT_EQ(kv::Run.CornerComp, 1);
}

TEST_F(Directives, SwitchesAreLeftByAnyOtherWord)
{
    Obey({"RAMPIN ON", "RAMPIN MAYBE", "RAMPIN", "RAMPOUT OFF", "RAMPOUT ONE", "RAMPOUT"});
    EXPECT_EQ(kv::Run.RampInSwitch, 1);
    EXPECT_EQ(kv::Run.RampOutSwitch, -1);
}

TEST_F(Directives, RampOutCountsFromTheNinthCharacterOfTheTrimmedLine)
{
    Obey({"    RAMPOUT ON"});
    EXPECT_EQ(kv::Run.RampOutSwitch, 1);
    Obey({"RAMPOUT    = ON"});
    EXPECT_EQ(kv::Run.RampOutSwitch, 1);
}

TEST_F(Directives, OffsetsCommasHaveBecomePoints)
{
    Obey({"OFFSET 10,20,30"});
    EXPECT_EQ(kv::Run.OffsetOverrideSet, True);
    EXPECT_EQ(kv::Run.OffsetOverride, (std::array<Single, 3>{10.2F, 0, 0}));
}

TEST_F(Directives, OffsetForms)
{
    Obey({"OFFSET=-5"});
    EXPECT_EQ(kv::Run.OffsetOverride, (std::array<Single, 3>{-5, 0, 0}));
    Obey({"OFFSET = 10"}); // the token in front of the "=" is empty
    EXPECT_EQ(kv::Run.OffsetOverride, (std::array<Single, 3>{0, 0, 0}));
    EXPECT_EQ(kv::Run.OffsetOverrideSet, True);
    Obey({"OFFSET"});
    EXPECT_EQ(kv::Run.OffsetOverrideSet, True);
    Obey({});
    EXPECT_EQ(kv::Run.OffsetOverrideSet, False);
}

TEST_F(Directives, OffsetTakesThreeValuesWhereCommasStand)
{
    Obey({"OFFSET=X"});
    EntityTexts[2] = "OFFSET= 1, 2.5,-3"; // as no reader leaves it
    ReadInstructions();
    EXPECT_EQ(kv::Run.OffsetOverride, (std::array<Single, 3>{1, 2.5F, -3}));
}

TEST_F(Variables, NamesAreUpperCasedValuesLowerCasedBothWithoutBlanks)
{
    Obey({"VAR a 1 = X 5 Y", "VARIABLE V2=SIN(R1)"});
    EXPECT_EQ(kv::Run.VarNames, (Lines{"", "A1", "V2"}));
    EXPECT_EQ(kv::Run.VarValues, (Lines{"", "x5y", "sin(r1)"}));
    EXPECT_EQ(kv::Run.HasVars, True);
}

TEST_F(Variables, NamesThatAreTaken)
{
    for (const std::string name : {"A", "GZZ", "@A", "I", "V", "V99", "R5", "RX"}) {
        Obey({"VAR " + name + "=1"});
        EXPECT_EQ(kv::Run.VarNames, (Lines{"", name}));
    }
    for (const std::string name : {"@", "H", "H1", "I1", "J", "Q", "S", "U", "W", "Z", "5", ""}) {
        Obey({"VAR " + name + "=1"});
        EXPECT_TRUE(kv::Run.VarNames.empty()) << name;
        EXPECT_EQ(kv::Run.HasVars, False) << name;
    }
}

TEST_F(Variables, RefusedNamesDoNotCount)
{
    Obey({"VAR A=1", "VAR H=2", "VAR B=3"});
    EXPECT_EQ(kv::Run.VarNames, (Lines{"", "A", "B"}));
}

TEST_F(Variables, WithoutAValue)
{
    Obey({"VAR A"});
    EXPECT_EQ(kv::Run.VarNames, (Lines{"", "A"}));
    EXPECT_EQ(kv::Run.VarValues, (Lines{"", ""}));
}

TEST_F(Variables, AFlagInBetweenLeavesEmptySlots)
{
    Obey({"VAR A=1", "VAR B=2", "FLAG=5", "VAR C=3", "VAR D=4"});
    EXPECT_EQ(kv::Run.VarNames, (Lines{"", "A", "B", "", "", "", "C", "D"}));
    EXPECT_EQ(kv::Run.VarValues, (Lines{"", "1", "2", "", "", "", "3", "4"}));
}

TEST_F(Variables, AFlagInBetweenMayOverwriteAndDropThem)
{
    Obey({"VAR A=1", "VAR B=2", "FLAG=0", "VAR C=3"});
    EXPECT_EQ(kv::Run.VarNames, (Lines{"", "C"}));     // A overwritten, B dropped
    Obey({"VAR A=1", "VAR B=2", "FLAG 7", "VAR C=3"}); // without "=" its number is 0
    EXPECT_EQ(kv::Run.VarNames, (Lines{"", "C"}));
}

TEST_F(Variables, AnOperationStringInBetweenCountsToo)
{
    Obey({"VAR A=1", "VAR B=2", "VAR D=4", "OP 1=X", "VAR C=3"});
    EXPECT_EQ(kv::Run.VarNames, (Lines{"", "A", "C"}));
}

TEST_F(Variables, ACutListLineInBetweenCountsByItsField)
{
    Config.PtsFields[4] = "WIDTH";
    Obey({"PTS 2=X", "VAR A=1"});
    EXPECT_EQ(kv::Run.VarNames, (Lines{"", "", "", "A"}));
    Obey({"PTS WIDTH=X", "VAR A=1"}); // by name: the field found
    EXPECT_EQ(kv::Run.VarNames, (Lines{"", "", "", "", "", "A"}));
    Obey({"PTS 3XY=X", "VAR A=1"}); // not found: the number of the token
    EXPECT_EQ(kv::Run.VarNames, (Lines{"", "", "", "", "A"}));
    Obey({"VAR A=1", "PTS OFF", "PTS 7=X", "VAR B=1"}); // OFF leaves the counter
    EXPECT_EQ(kv::Run.VarNames, (Lines{"", "A", "B"}));
}

TEST_F(CutListValues, ByNumberNameTheField)
{
    Obey({"PTS 3=OAK 18", "PTS  12 = Pine "});
    EXPECT_EQ(kv::Run.PtsValues[3], "OAK 18");
    EXPECT_EQ(kv::Run.PtsValues[12], "Pine");
    EXPECT_EQ(Config.PtsFields[3], "FIELD3");
    EXPECT_EQ(Config.PtsFields[12], "FIELD12");
    EXPECT_EQ(kv::Run.PtsValues[0], "");
}

TEST_F(CutListValues, ByNumberKeepTheFieldsName)
{
    Config.PtsFields[3] = "WOOD";
    Obey({"PTS 3=OAK"});
    EXPECT_EQ(kv::Run.PtsValues[3], "OAK");
    EXPECT_EQ(Config.PtsFields[3], "WOOD");
}

TEST_F(CutListValues, ByNameInAnyCaseAndWithBlanks)
{
    Config.PtsFields[7] = "EDGETOP";
    Obey({"PTS Edge Top=2 mm"});
    EXPECT_EQ(kv::Run.PtsValues[7], "2 mm");
}

TEST_F(CutListValues, OtherFormsOfTheLine)
{
    Obey({".PTS 3=OAK", "PTS=4=ASH", "PTS 5=A=B", "PTS 6", "PTS 7x=ELM", "pts 8= =X"});
    EXPECT_EQ(kv::Run.PtsValues[3], "OAK");
    EXPECT_EQ(kv::Run.PtsValues[4], "ASH");
    EXPECT_EQ(kv::Run.PtsValues[5], "A=B"); // cut behind the first "="
    EXPECT_EQ(kv::Run.PtsValues[6], "6");   // no "=": nothing to cut
    EXPECT_EQ(kv::Run.PtsValues[7], "ELM"); // two characters are a number
    EXPECT_EQ(kv::Run.PtsValues[8], "=X");
    EXPECT_EQ(kv::Run.PtsValues[0], "");
}

TEST_F(CutListValues, UnknownNamesAreAnErrorInTheReport)
{
    Obey({"PTS Colour=RED", "PTS 3=OAK"});
    EXPECT_EQ(kv::Run.PtsValues[0], "ERROR");
    EXPECT_EQ(kv::Run.PtsValues[3], "OAK"); // later lines still count
    EXPECT_EQ(Place.Lines, (Lines{"PTS Error: Colour"}));
}

TEST_F(CutListValues, ThreeCharactersOrZeroAreNames)
{
    for (const char* line : {"PTS 003=X", "PTS 0=X", "PTS 100=X"}) {
        Obey({line});
        EXPECT_EQ(kv::Run.PtsValues[0], "ERROR") << line;
    }
}

TEST_F(CutListValues, OffEndsThemForThisDrawing)
{
    Obey({"PTS 2=ASH", "PTS off", "PTS 3=OAK", "PTS Colour=RED"});
    EXPECT_EQ(kv::Run.PtsValues[0], "OFF");
    EXPECT_EQ(kv::Run.PtsValues[2], "ASH");
    EXPECT_EQ(kv::Run.PtsValues[3], "");
    EXPECT_TRUE(Place.Lines.empty());
    Obey({"PTS 3=OAK"}); // the next drawing starts anew
    EXPECT_EQ(kv::Run.PtsValues[0], "");
    EXPECT_EQ(kv::Run.PtsValues[3], "OAK");
}

TEST_F(CutListValues, ALineWithoutAFieldIsReportedAndPassedOver)
{
    Obey({"PTS =C:\\LIST", "PTS =OFF", "PTS", "PTS 3=OAK"});
    EXPECT_EQ(kv::Run.PtsValues[0], "");
    EXPECT_EQ(kv::Run.PtsValues[3], "OAK");
    EXPECT_EQ(Place.Lines,
              (Lines{"PTS without a field, passed over: PTS =C:\\LIST",
                     "PTS without a field, passed over: PTS =OFF", "PTS without a field, passed over: PTS"}));
}

TEST_F(CutListValues, FileNamesTheListAndNoFolder)
{
    Obey({"PTS file=KITCHEN"});
    EXPECT_EQ(kv::Run.PtsValues[0], "KITCHEN");
    EXPECT_TRUE(Place.Lines.empty());
    for (const std::string folder : {"C:\\LISTS\\", "../", "C:", "a/b\\"}) {
        Obey({"PTS FILE=" + folder + "KITCHEN"});
        EXPECT_EQ(kv::Run.PtsValues[0], "KITCHEN");
        EXPECT_EQ(Place.Lines, (Lines{"PTS FILE names a folder, which is left out: " + folder}));
    }
}

TEST_F(CutListValues, NoOtherNameIsElementZero)
{
    Config.PtsFields[0] = "PATH";
    Obey({"PTS PATH=X"});
    EXPECT_EQ(kv::Run.PtsValues[0], "ERROR");
    EXPECT_EQ(Place.Lines, (Lines{"PTS Error: PATH"}));
    Config.PtsFields[2] = "FILE"; // a column of that name is the column
    Obey({"PTS FILE=X"});
    EXPECT_EQ(kv::Run.PtsValues[0], "");
    EXPECT_EQ(kv::Run.PtsValues[2], "X");
}

TEST_F(CutListValues, BeyondFiftyOrBelowZeroEndTheRun)
{
    EXPECT_EQ(ErrorOf("PTS 50=X"), 0);
    EXPECT_EQ(kv::Run.PtsValues[50], "X");
    EXPECT_EQ(ErrorOf("PTS 51=X"), ErrorSubscript);
    EXPECT_EQ(ErrorOf("PTS -1=X"), ErrorSubscript);
}

TEST_F(PinnedDirectives, AreLinesWhoseWordIsNoKeyword)
{
    ObeyDrawing(test::Instructions({}) +
                test::TextAt("INFO", 10, 20, " z5 Fa 3", test::Pair(11, 30) + test::Pair(21, 40)));
    EXPECT_EQ(kv::Run.NoteCount, 1);
    EXPECT_EQ(kv::Run.NoteText[1], "z5Fa3"); // its case stays
    EXPECT_EQ(kv::Run.NoteX[1], 10);
    EXPECT_EQ(kv::Run.NoteY[1], 20);
}

TEST_F(PinnedDirectives, WithAlignmentStandAtTheSecondPoint)
{
    ObeyDrawing(
        test::Instructions({}) +
        test::TextAt("INFO", 10, 20, "Z5", test::Pair(72, 1) + test::Pair(11, 30) + test::Pair(21, 40)));
    EXPECT_EQ(kv::Run.NoteX[1], 30);
    EXPECT_EQ(kv::Run.NoteY[1], 40);
}

TEST_F(PinnedDirectives, AreScaledAsTheScaleStandsAtThatMoment)
{
    ObeyDrawing(test::Instructions({}) + test::TextAt("INFO", 10, 20, "Z5") +
                test::TextAt("INFO", 0, 0, "SCALE=3") + test::TextAt("INFO", 10, 20, "Z6"));
    EXPECT_EQ(kv::Run.NoteCount, 2);
    EXPECT_EQ(kv::Run.NoteX[1], 10);
    EXPECT_EQ(kv::Run.NoteY[1], 20);
    EXPECT_EQ(kv::Run.NoteX[2], 30);
    EXPECT_EQ(kv::Run.NoteY[2], 60);
}

TEST_F(PinnedDirectives, KeywordsAreComparedAsWholeWords)
{
    Obey({"LAYERS A=B", "NOCODES", "SCAL=2", "=X"}, test::Line("A", 0, 0, 1, 1));
    EXPECT_EQ(kv::Run.NoteText, (Lines{"", "LAYERSA=B", "NOCODES", "SCAL=2", "=X"}));
    EXPECT_EQ(LayersOf("LINE"), (Lines{"A"}));
    EXPECT_EQ(kv::Run.NoCode, False);
}

TEST_F(PinnedDirectives, BlankLinesAndOtherEntitiesAreNone)
{
    Obey({"   ", ""}, test::Line("INFO", 0, 0, 1, 1));
    EXPECT_EQ(kv::Run.NoteCount, 0);
}

} // namespace
} // namespace kv

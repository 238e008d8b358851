// Numbered fields of a template and the texts of a program's sides.
#include <gtest/gtest.h>

#include "writers/side_text.h"
#include "writers/template_fields.h"

namespace kv {
namespace {

TEST(TemplateFields, FieldsCountFromOneAndKeepTheirLineFeed)
{
    const TemplateFields fields = CutFields("one\r\ntwo\r\nthree");
    EXPECT_EQ(fields.Count, 3);
    EXPECT_EQ(FieldText(fields, 1), "one");
    EXPECT_EQ(FieldText(fields, 2), "\ntwo");
    EXPECT_EQ(FieldText(fields, 3), "\nthree");
}

TEST(TemplateFields, JoinedFieldsAreTheTextAgain)
{
    for (const std::string text : {"", "\r", "a", "a\r", "\ra", "a\r\nb\r\n", "\r\r\n\r", "a\nb\rc"})
        EXPECT_EQ(JoinedFields(CutFields(text)), text);
}

TEST(TemplateFields, TextWithoutSeparatorIsOneField)
{
    EXPECT_EQ(CutFields("").Count, 1);
    EXPECT_EQ(CutFields("a\nb").Count, 1);
    EXPECT_EQ(FieldText(CutFields("a\nb"), 1), "a\nb");
}

TEST(TemplateFields, EightReturnsMakeNineFields)
{
    TemplateFields fields = CutFields(std::string(8, '\r'));
    EXPECT_EQ(fields.Count, 9);
    ReplaceField(fields, 8, "\n}OPTI");
    EXPECT_EQ(JoinedFields(fields), "\r\r\r\r\r\r\r\n}OPTI\r");
}

TEST(TemplateFields, AReplacedFieldSimplyTakesTheNewText)
{
    TemplateFields fields = CutFields("a\r\nb\r\nc");
    ReplaceField(fields, 2, "x\ry"); // its own return makes no new field
    EXPECT_EQ(fields.Count, 3);
    EXPECT_EQ(FieldText(fields, 2), "x\ry");
    ReplaceField(fields, 2, "z");
    EXPECT_EQ(JoinedFields(fields), "a\rz\r\nc");
}

TEST(TemplateFields, OutsideTheTextNothingIsReadOrReplaced)
{
    TemplateFields fields = CutFields("a\rb");
    for (const Long n : {-1, 0, 3}) {
        EXPECT_EQ(FieldText(fields, n), "");
        ReplaceField(fields, n, "x");
    }
    EXPECT_EQ(JoinedFields(fields), "a\rb");
}

TEST(TemplateFields, AFieldThatIsPutBehindTheEndIsAdded)
{
    TemplateFields fields = CutFields("a");
    PutField(fields, 4, "\nd");
    EXPECT_EQ(fields.Count, 4);
    EXPECT_EQ(JoinedFields(fields), "a\r\r\r\nd");
    PutField(fields, 2, "\nb");
    EXPECT_EQ(JoinedFields(fields), "a\r\nb\r\r\nd");
}

TEST(TemplateFields, TheFirstFieldThatHoldsATextIsFound)
{
    TemplateFields fields = CutFields("a\r\nVARV{\r\nVAR{ x\r\nVAR{");
    EXPECT_EQ(FieldHolding(fields, "VAR{"), 3);
    EXPECT_EQ(FieldHolding(fields, "VARV{"), 2);
    EXPECT_EQ(FieldHolding(fields, "var{"), 0);
    ReplaceField(fields, 3, "gone");
    EXPECT_EQ(FieldHolding(fields, "VAR{"), 4);
    ReplaceField(fields, 4, "\nVAR{");
    EXPECT_EQ(FieldHolding(fields, "VAR{"), 4);
    PutField(fields, 9, "VAR{");
    EXPECT_EQ(FieldHolding(fields, "VAR{"), 4);
    ReplaceField(fields, 4, "");
    EXPECT_EQ(FieldHolding(fields, "VAR{"), 9);
    ReplaceField(fields, 1, "VAR{");
    EXPECT_EQ(FieldHolding(fields, "VAR{"), 1);
    EXPECT_EQ(FieldHolding(fields, "VARV{"), 2);
}

TEST(TemplateFields, AReplacedFieldInFrontIsFoundBeforeTheSources)
{
    TemplateFields fields = CutFields("a\rb\rVAR{\rVAR{");
    ReplaceField(fields, 2, "VAR{");
    EXPECT_EQ(FieldHolding(fields, "VAR{"), 2);
}

TEST(TemplateFields, AnotherSeparatorCutsElsewhere)
{
    const TemplateFields fields = CutFields("a;b\r;c", ';');
    EXPECT_EQ(fields.Count, 3);
    EXPECT_EQ(FieldText(fields, 2), "b\r");
    EXPECT_EQ(JoinedFields(fields), "a;b\r;c");
}

std::string TextAfter(std::initializer_list<std::string_view> words)
{
    SideTexts sides;
    for (const std::string_view word : words)
        AppendSideText(sides, word);
    return sides.SideText[0];
}

TEST(SideText, WordsStandBlankSeparatedUpToTheOneThatEndsInCR)
{
    EXPECT_EQ(TextAfter({"W#81{", "#1=5", "}WCR", "W"}), "W#81{ #1=5 }W\r\nW ");
}

TEST(SideText, CRAloneIsAnEmptyLineAndSmallLettersAreText)
{
    EXPECT_EQ(TextAfter({"CR"}), "\r\n");
    EXPECT_EQ(TextAfter({"cr", "R"}), "cr R ");
}

TEST(SideText, NoBlankBehindALineFeedOrNothing)
{
    EXPECT_EQ(TextAfter({"", "a\n", ""}), "a\n");
}

TEST(SideText, SidesOfTheDrawingHaveOtherNumbersInTheProgram)
{
    const std::size_t expected[] = {5, 3, 6, 4, 1, 2};
    SideTexts sides;
    for (Long side = 1; side <= 6; ++side) {
        SelectSide(sides, side);
        EXPECT_EQ(sides.CurrentSide, expected[side - 1]) << side;
    }
}

TEST(SideText, ASideThatTheDrawingDoesNotHaveChangesNothing)
{
    SideTexts sides;
    SelectSide(sides, 3);
    for (const Long side : {-1, 0, 7}) {
        SelectSide(sides, side);
        EXPECT_EQ(sides.CurrentSide, 6U);
    }
}

TEST(SideText, TheSidesAreAssembledInOrderBehindWhatStandsThere)
{
    SideTexts sides;
    AppendSideText(sides, "\n");
    SelectSide(sides, 5);
    AppendSideText(sides, "faceCR");
    SelectSide(sides, 2);
    AppendSideText(sides, "edgeCR");
    SideHeads heads;
    heads[2] = "::LF=1CR";
    AssembleSides(sides, heads);
    EXPECT_EQ(sides.CurrentSide, 0U);
    EXPECT_EQ(sides.SideText[0], "\nSIDE#1{\r\nface\r\n}SIDE\r\nSIDE#2{\r\n::LF=1\r\n}SIDE\r\n"
                                 "SIDE#3{\r\nedge\r\n}SIDE\r\nSIDE#4{\r\n}SIDE\r\nSIDE#5{\r\n}SIDE\r\n"
                                 "SIDE#6{\r\n}SIDE\r\n");
}

TEST(SideText, EachSideInTheListPutsALineFeedInFront)
{
    SideTexts sides;
    EXPECT_EQ(SideList(sides), "::SIDE=");
    sides.SideText[1] = "x";
    EXPECT_EQ(SideList(sides), "\n::SIDE=1;");
    sides.SideText[0] = "x"; // no side
    sides.SideText[6] = "x";
    EXPECT_EQ(SideList(sides), "\n\n::SIDE=1;6;");
}

} // namespace
} // namespace kv

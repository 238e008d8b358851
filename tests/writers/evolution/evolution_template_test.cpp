// The template's fields: part, panel, offsets, variables, sorting and list of sides, and templates
// that do not hold what a drawing brings.
#include "writers/evolution/evolution_scene.h"

#include "state/settings_grids.h"

namespace kv {
namespace {

class EvolutionTemplate : public EvolutionScene {
  protected:
    void SetUp() override
    {
        EvolutionScene::SetUp();
        AddBore();
    }
    // Rows behind the five of every template.
    void PutRows(const std::string& rows) const { PutTemplate(PlainTemplate() + rows); }
    std::string RowsWritten()
    {
        const std::string head = WrittenHead();
        const std::string front = FilledHead("\n::SIDE=1;");
        EXPECT_EQ(head.substr(0, front.size()), front);
        return head.substr(front.size());
    }
    void AddVariable(const std::string& name, const std::string& value)
    {
        if (Run.VarNames.empty()) {
            Run.VarNames.resize(1);
            Run.VarValues.resize(1);
        }
        Run.VarNames.push_back(name);
        Run.VarValues.push_back(value);
        Run.HasVars = True;
    }
    // Rows "r1" to "rN", one a line.
    static std::string Rows(int count)
    {
        std::string text;
        for (int i = 1; i <= count; ++i)
            text += "r" + std::to_string(i) + "\r\n";
        return text;
    }
};

TEST_F(EvolutionTemplate, ABlankDescriptionIsTheProgramAndItsVersion)
{
    Run.PartDescription = "  ";
    const std::string expected = "HEAD\r\n$=KORVANTI " + std::string(ProductVersion) + "\r\n::SIDE=1;";
    EXPECT_EQ(WrittenHead().substr(0, expected.size()), expected);
    EXPECT_EQ(Run.PartDescription, "KORVANTI " + std::string(ProductVersion));
}

TEST_F(EvolutionTemplate, AnInchPanelSaysSo)
{
    Run.DrawingInInch = True;
    Run.SideWidth[5] = 23.625F;
    Run.SideHeight[5] = .5F;
    Run.PartThickness = .7505F; // the Single lies above the tie: three decimals round it up
    EXPECT_EQ(WrittenHead(), "HEAD\r\n$=DOOR\r\n::SIDE=1;\r\n::UNi DL=23.625 DH=.5 DS=.751\r\r\nEND\r\n");
}

TEST_F(EvolutionTemplate, TheSizesFieldEndsInAReturnOfItsOwn)
{
    EXPECT_NE(WrittenHead().find("DS=18\r\r\nEND"), std::string::npos);
}

TEST_F(EvolutionTemplate, MissingFieldsTwoAndFourAreAdded)
{
    PutTemplate("HEAD");
    EXPECT_EQ(WrittenHead(), "HEAD\r\n$=DOOR\r\r\n::UNm DL=600 DH=400 DS=18\r");
}

TEST_F(EvolutionTemplate, ATemplateWithoutBytesHoldsTheTwoFields)
{
    PutTemplate("");
    EXPECT_EQ(WrittenHead(), "\r\n$=DOOR\r\r\n::UNm DL=600 DH=400 DS=18\r");
}

TEST_F(EvolutionTemplate, OffsetsFillTheThreeFieldsBehindTheirMark)
{
    PutRows("xOFFS{x\r\n" + Rows(4));
    Run.OffsetX = 12.5F;
    Run.OffsetZ = -.25F;
    EXPECT_EQ(RowsWritten(), "xOFFS{x\r\n#0=12.5|12.5\r\n#1=0.0|0\r\n#2=-.25|-.25\r\nr4\r\n");
}

TEST_F(EvolutionTemplate, OneOffsetOfThreeIsEnough)
{
    PutRows("OFFS{\r\n" + Rows(3));
    Run.OffsetY = 7;
    EXPECT_EQ(RowsWritten(), "OFFS{\r\n#0=0.0|0\r\n#1=7|7\r\n#2=0.0|0\r\n");
    Run.OffsetY = 0;
    Run.OffsetZ = 1.0F / 3; // plain, not rounded to the drawing's decimals
    EXPECT_EQ(RowsWritten(), "OFFS{\r\n#0=0.0|0\r\n#1=0.0|0\r\n#2=.3333333|.3333333\r\n");
}

TEST_F(EvolutionTemplate, WithoutOffsetsTheRowsStay)
{
    PutRows("OFFS{\r\n" + Rows(3));
    EXPECT_EQ(RowsWritten(), "OFFS{\r\n" + Rows(3));
}

TEST_F(EvolutionTemplate, ATemplateWithoutOffsetRowsKeepsItsFields)
{
    PutRows("offs{\r\n" + Rows(3));
    Run.OffsetX = 5;
    EXPECT_EQ(RowsWritten(), "offs{\r\n" + Rows(3));
    EXPECT_EQ(Run.RunFailed, False);
}

TEST_F(EvolutionTemplate, OffsetRowsBeyondTheEndAreLeftOut)
{
    PutRows("OFFS{\r\nr1");
    Run.OffsetX = 5;
    EXPECT_EQ(RowsWritten(), "OFFS{\r\n#0=5|5");
}

TEST_F(EvolutionTemplate, LettersAToGAndVariablesOfVHaveFixedRows)
{
    PutRows("VARV{\r\n" + Rows(8));
    AddVariable("A", "w-5");
    AddVariable("C12", "2"); // the first letter alone counts
    AddVariable("G", "7");
    AddVariable("V3", "l/2");
    EXPECT_EQ(RowsWritten(),
              "VARV{\r\n#0=w-5|w-5\r\nr2\r\n#2=2|2\r\n#3=l/2|l/2\r\nr5\r\nr6\r\n#6=7|7\r\nr8\r\n");
}

TEST_F(EvolutionTemplate, VariableZeroOfVIsTheRowOfA)
{
    PutRows("VARV{\r\n" + Rows(8));
    AddVariable("A", "1");
    AddVariable("V0", "2");
    AddVariable("V", "3"); // no number is 0
    AddVariable("V6", "6");
    EXPECT_EQ(RowsWritten(), "VARV{\r\n#0=3|3\r\nr2\r\nr3\r\nr4\r\nr5\r\nr6\r\n#6=6|6\r\nr8\r\n");
}

TEST_F(EvolutionTemplate, VariablesWithoutARowAreIgnored)
{
    PutRows("VARV{\r\n" + Rows(30));
    for (const std::string name : {"I", "V7", "V20", "V22", "V99999999999", "", "Q", "a", "H"})
        AddVariable(name, "1");
    EXPECT_EQ(RowsWritten(), "VARV{\r\n" + Rows(30));
}

// Its row has the number of the letter V itself.
TEST_F(EvolutionTemplate, VariableTwentyOneOfVHasARow)
{
    PutRows("VARV{\r\n" + Rows(22));
    AddVariable("V21", "5");
    EXPECT_EQ(RowsWritten(), "VARV{\r\n" + Rows(21) + "#21=5|5\r\n");
}

// Nothing asks whether a row lies below the first one.
TEST_F(EvolutionTemplate, AVariableBelowVZeroWritesInFrontOfTheRows)
{
    PutRows("VARV{\r\n" + Rows(2));
    AddVariable("V-1", "5");
    EXPECT_EQ(RowsWritten(), "#-1=5|5\r\n" + Rows(2));
    Run.VarNames.back() = "V-99999999999";
    EXPECT_EQ(RowsWritten(), "VARV{\r\n" + Rows(2));
}

TEST_F(EvolutionTemplate, AMarkOfVariablesInTheLastFieldTakesNone)
{
    PutTemplate("HEAD\r\n\r\n::SIDE=\r\n\r\nVARV{");
    AddVariable("V-1", "5");
    EXPECT_EQ(WrittenHead(), "HEAD\r\n$=DOOR\r\n::SIDE=1;\r\n::UNm DL=600 DH=400 DS=18\r\r\nVARV{");
}

TEST_F(EvolutionTemplate, VariablesOfRAreAddedToTheirMark)
{
    PutRows("VAR{\r\n}VAR\r\n");
    AddVariable("R12", "l/2");
    AddVariable("Q", "9");
    AddVariable("R0", "3");
    AddVariable("A", "4");
    EXPECT_EQ(RowsWritten(), "VAR{\r\n#12=l/2|l/2\r\n#0=3|3\r\n}VAR\r\n");
}

TEST_F(EvolutionTemplate, TheMarkOfRMayStandInTheLastField)
{
    PutRows("VAR{");
    AddVariable("R1", "3");
    EXPECT_EQ(RowsWritten(), "VAR{\r\n#1=3|3");
}

TEST_F(EvolutionTemplate, TheRowsOfVAreNoMarkOfR)
{
    PutRows("VARV{\r\nr1\r\n");
    AddVariable("R1", "3");
    EXPECT_EQ(RowsWritten(), "VARV{\r\nr1\r\n");
}

TEST_F(EvolutionTemplate, EmptySlotsOfTheListArePassedOver)
{
    PutRows("VARV{\r\n" + Rows(2) + "VAR{\r\n");
    AddVariable("", "");
    AddVariable("B", "1");
    EXPECT_EQ(RowsWritten(), "VARV{\r\nr1\r\n#1=1|1\r\nVAR{\r\n");
}

TEST_F(EvolutionTemplate, TheSortModeOfTheDrawingFillsThirteenRows)
{
    PutRows("OPTI{\r\n" + Rows(14));
    Run.OptimizeSide = 2;
    std::string expected = "OPTI{\r\n::2\r\n";
    for (int i = 0; i < 6; ++i)
        expected += "::0;0;0;0;0;0;\r\n";
    for (int i = 0; i < 6; ++i)
        expected += "::0;0;0;0;0;0;0;\r\n";
    EXPECT_EQ(RowsWritten(), expected + "r14\r\n");
}

TEST_F(EvolutionTemplate, ARadioButtonSortsWhereTheDrawingDoesNot)
{
    PutRows("OPTI{\r\nr1\r\n");
    bool* const radios[] = {&Config.EvOptLR, &Config.EvOptRL, &Config.EvOptGS, &Config.EvOptSS};
    for (int i = 0; i < 4; ++i) {
        *radios[i] = true;
        EXPECT_EQ(RowsWritten().substr(0, 12), "OPTI{\r\n::" + std::to_string(i + 1) + "\r\n");
        *radios[i] = false;
        EXPECT_EQ(Run.OptimizeSide, 0) << "the radio's value is not the drawing's";
    }
    Config.EvOptSS = true;
    Run.OptimizeSide = 1;
    EXPECT_EQ(RowsWritten().substr(0, 12), "OPTI{\r\n::1\r\n");
}

TEST_F(EvolutionTemplate, NoSortingLeavesTheRows)
{
    PutRows("OPTI{\r\n" + Rows(13));
    Config.EvOptOff = true;
    EXPECT_EQ(RowsWritten(), "OPTI{\r\n" + Rows(13));
}

TEST_F(EvolutionTemplate, SortRowsBeyondTheEndAreLeftOut)
{
    PutRows("OPTI{\r\nr1\r\nr2");
    Run.OptimizeSide = 4;
    EXPECT_EQ(RowsWritten(), "OPTI{\r\n::4\r\n::0;0;0;0;0;0;");
    PutRows("OPTI{"); // the last field
    EXPECT_EQ(RowsWritten(), "OPTI{");
}

TEST_F(EvolutionTemplate, SortRowsAreThoseOfTheGrid)
{
    Put("HOME/OptSettings.Dat", "1\t2\t3\t4\t5\t6\t-\tHoles\tMillings\tAngle Milllings\tBlades\t0\tX -->\r\n"
                                "6\t5\t4\t3\t2\t1\tInsertions\t-\t-\t-\tHoles\t1\tX <--\r\n");
    const Texts rows = BuildOptimizerRows(3);
    ASSERT_EQ(rows.size(), 13U);
    EXPECT_EQ(rows[0], "::3");
    EXPECT_EQ(rows[1], "::1;2;3;4;5;6;");
    EXPECT_EQ(rows[2], "::6;5;4;3;2;1;");
    EXPECT_EQ(rows[3], "::0;0;0;0;0;0;");
    EXPECT_EQ(rows[6], "::0;0;0;0;0;0;");
    EXPECT_EQ(rows[7], "::0;81;89;91;95;0;0;");
    EXPECT_EQ(rows[8], "::50;0;0;0;81;1;1;");
    EXPECT_EQ(rows[12], "::0;0;0;0;0;0;0;");
}

TEST_F(EvolutionTemplate, TheSideListIsFoundInAnyCaseUpToFieldNine)
{
    PutTemplate("1\r\n\r\n3\r\n\r\n5\r\n6\r\n7\r\n8\r\nx::Side=y\r\n::SIDE=\r\n");
    EXPECT_EQ(
        WrittenHead(),
        "1\r\n$=DOOR\r\n3\r\n::UNm DL=600 DH=400 DS=18\r\r\n5\r\n6\r\n7\r\n8\r\n::SIDE=1;\r\n::SIDE=\r\n");
}

TEST_F(EvolutionTemplate, ASideListBehindFieldNineIsLeftUnchanged)
{
    PutTemplate("1\r\n\r\n3\r\n\r\n5\r\n6\r\n7\r\n8\r\n9\r\n::SIDE=old\r\n");
    EXPECT_EQ(WrittenHead(),
              "1\r\n$=DOOR\r\n3\r\n::UNm DL=600 DH=400 DS=18\r\r\n5\r\n6\r\n7\r\n8\r\n9\r\n::SIDE=old\r\n");
}

TEST_F(EvolutionTemplate, TheFirstOfTwoSideListsIsReplaced)
{
    PutTemplate("::SIDE=a\r\n\r\n::SIDE=b\r\n");
    EXPECT_EQ(WrittenHead(), "\n::SIDE=1;\r\n$=DOOR\r\n::SIDE=b\r\n::UNm DL=600 DH=400 DS=18\r");
}

TEST_F(EvolutionTemplate, TwoSidesPutTwoLineFeedsInFrontOfTheList)
{
    AddHBore(2);
    EXPECT_EQ(WrittenHead(), FilledHead("\n\n::SIDE=1;3;"));
}

TEST_F(EvolutionTemplate, AMissingTemplateIsABoxAndNothingElse)
{
    static Texts titles;
    static std::vector<BoxIcon> icons;
    titles.clear();
    icons.clear();
    std::filesystem::remove(Folder / "HOME" / "EvHeader.dat");
    Dialogs.Box = [](std::string_view text, std::string_view title, BoxIcon icon) {
        ShownBoxes->emplace_back(text);
        titles.emplace_back(title);
        icons.push_back(icon);
    };
    Run.PartDescription.clear();
    WriteEvolutionProgram();
    EXPECT_EQ(Boxes, Texts{"EvHeader.dat file not found"});
    EXPECT_EQ(titles, Texts{"Alert!"});
    EXPECT_EQ(icons, std::vector<BoxIcon>{BoxIcon::Error});
    EXPECT_EQ(Reported(), Texts{});
    EXPECT_EQ(Run.PartDescription, "");
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(Run.FailedFiles, (Texts{"", Run.SourceFile}));
}

TEST_F(EvolutionTemplate, ATemplateThatIsTooBigIsToldInOneLine)
{
    std::filesystem::resize_file(Folder / "HOME" / "EvHeader.dat", LargestTemplate + 1);
    WriteEvolutionProgram();
    ASSERT_EQ(Reported().size(), 1U);
    const std::string named = ShownPath(PathOf("HOME\\EvHeader.dat")) + ": ";
    EXPECT_EQ(Reported()[0].substr(0, named.size()), named);
    EXPECT_GT(Reported()[0].size(), named.size());
    EXPECT_EQ(Run.FailedFiles, (Texts{"", Run.SourceFile}));
    EXPECT_EQ(Boxes, Texts{});
    EXPECT_FALSE(Stands("PROG/DOOR.CNC"));
}

TEST_F(EvolutionTemplate, ATemplateOfFiftyMegabytesIsKept)
{
    const std::string tail(50 * 1024 * 1024, '\r'); // as many fields
    PutRows("OFFS{\r\nr1\r\nr2\r\nr3" + tail);
    Run.OffsetX = 1;
    Run.OptimizeSide = 1; // its mark is looked for to the end
    const std::string head = WrittenHead();
    const std::string front = FilledHead("\n::SIDE=1;") + "OFFS{\r\n#0=1|1\r\n#1=0.0|0\r\n#2=0.0|0";
    EXPECT_EQ(head.size(), front.size() + tail.size());
    EXPECT_EQ(head.substr(0, front.size()), front);
    EXPECT_TRUE(head.ends_with(tail));
}

} // namespace
} // namespace kv

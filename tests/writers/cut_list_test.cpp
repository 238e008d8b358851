// Rows of the saw's cut list.
#include "writers/cut_list.h"

#include "platform/run_error.h"
#include "writers/program_scene.h"

namespace kv {
namespace {

class CutList : public ProgramScene {
  protected:
    void SetUp() override
    {
        ProgramScene::SetUp();
        Config.PTSPath = PathOf("LIST\\");
        Config.PTSName = "PARTS";
        std::filesystem::create_directories(Folder / "LIST");
    }
    // A "~" in front marks a quoted column, as in the settings file.
    static void SetColumns(const Texts& columns)
    {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const bool quoted = columns[i].starts_with('~');
            Config.PtsFields[i + 1] = columns[i].substr(quoted ? 1 : 0);
            Config.PtsQuotes[i + 1] = quoted ? "\"" : "";
        }
        Config.PtsFieldCount = static_cast<Int>(columns.size());
    }
    void SetValues(const Texts& values)
    {
        for (std::size_t i = 0; i < values.size(); ++i)
            Run.PtsValues[i + 1] = values[i];
    }
    std::string RowOf(const Texts& columns, const Texts& values)
    {
        std::filesystem::remove(Folder / "LIST/PARTS.PTS");
        SetColumns(columns);
        SetValues(values);
        WriteCutListEntry();
        const std::string list = Get("LIST/PARTS.PTS");
        const std::size_t start = list.find('\n') + 1;
        return list.substr(start, list.size() - start - 2);
    }
    std::string ListAfter(const std::string& old, const std::string& value)
    {
        Put("LIST/PARTS.PTS", old);
        SetColumns({"NAME"});
        SetValues({value});
        WriteCutListEntry();
        return Get("LIST/PARTS.PTS");
    }
};

TEST_F(CutList, ANewFileGetsHeaderAndOneRow)
{
    SetColumns({"~NAME", "WIDTH", "LENGTH", "QTY"});
    SetValues({"DOOR", "", "", "2"});
    WriteCutListEntry();
    EXPECT_EQ(Get("LIST/PARTS.PTS"), "2.00, 1,M\r\n\"DOOR\",400,600,2\r\n");
    EXPECT_EQ(Reported(), Texts{"Entry to PTS: " + ShownPath(PathOf("LIST\\PARTS.PTS"))});
    EXPECT_EQ(Run.PtsValues, PtsTexts{});
}

TEST_F(CutList, ALaterRowRaisesTheCount)
{
    EXPECT_EQ(ListAfter("2.00, 1,M\r\nDOOR,600,400\r\n", "SIDE"), "2.00, 2,M\r\nDOOR,600,400\r\nSIDE\r\n");
}

TEST_F(CutList, AnInchListSaysSo)
{
    Config.PTSMetric = false;
    EXPECT_EQ(ListAfter("2.00, 1,M\r\nDOOR\r\n", "SIDE"), "2.00, 2,D\r\nDOOR\r\nSIDE\r\n");
}

TEST_F(CutList, AShortFirstRowWithoutHeaderIsTakenForOneAndLost)
{
    EXPECT_EQ(ListAfter("SHORT,FIRST,ROW,18\r\n", "SIDE"), "2.00, 1,M\r\nSIDE\r\n"); // 18 characters
    EXPECT_EQ(ListAfter("LONGER,FIRST,ROW,19\r\n", "SIDE"), "2.00, 2,M\r\nLONGER,FIRST,ROW,19\r\nSIDE\r\n");
}

TEST_F(CutList, BlankLinesAtTheEndAreDropped)
{
    EXPECT_EQ(ListAfter("2.00, 1,M\r\nDOOR\r\n\r\n\r\n\r\n", "SIDE"), "2.00, 2,M\r\nDOOR\r\nSIDE\r\n");
}

TEST_F(CutList, AnEmptyFileIsLikeNone)
{
    EXPECT_EQ(ListAfter("", "SIDE"), "2.00, 1,M\r\nSIDE\r\n");
    EXPECT_EQ(ListAfter("\r\n\r\n", "SIDE"), "2.00, 1,M\r\nSIDE\r\n");
}

TEST_F(CutList, AValueWithACommaIsNotProtected)
{
    EXPECT_EQ(RowOf({"NAME", "QTY"}, {"A,B", "2"}), "A,B,2");
}

TEST_F(CutList, EmptyValuesHaveTheirStandIns)
{
    Run.PartDescription = "OAK";
    EXPECT_EQ(RowOf({"POSTLAMINATIONFLAG", "DESCRIPTION", "~DESCRIPTION1", "X", "~Y", "Z"},
                    {"", "", "", "", "", "1"}),
              "12,OAK,\"OAK\",0,\" \",1");
}

TEST_F(CutList, GivenValuesStayAndSizesAreRounded)
{
    Run.PartDescription = "OAK";
    EXPECT_EQ(RowOf({"POSTLAMINATIONFLAG", "DESCRIPTION", "WIDTH", "HEIGHT", "LENGTH"},
                    {"3", "ELM", "12.345678", "", "100"}),
              "3,ELM,12.35,400,100");
}

TEST_F(CutList, SizesOfADrawingInInchesGoIntoAMetricListInMillimetres)
{
    Run.DrawingInInch = True;
    Run.SideHeight[5] = 15.5F;
    EXPECT_EQ(RowOf({"WIDTH", "LENGTH"}, {"", "10"}), "393.7,254");
}

TEST_F(CutList, MetricSizesGoIntoAnInchListInInches)
{
    Config.PTSMetric = false;
    EXPECT_EQ(RowOf({"WIDTH", "LENGTH"}, {"", "1000"}), "15.75,39.37"); // 400 * .03937 is 15.748
    Run.DrawingInInch = True;
    Run.SideHeight[5] = 15.5F;
    EXPECT_EQ(RowOf({"WIDTH", "LENGTH"}, {"", "10"}), "15.5,10");
}

TEST_F(CutList, ColumnsOfADrawingAboveTheHighestAreNotWritten)
{
    SetColumns({"NAME"});
    Config.PtsFields[7] = "FIELD7";
    Run.PtsValues[7] = "LOST";
    Run.PtsValues[1] = "DOOR";
    WriteCutListEntry();
    EXPECT_EQ(Get("LIST/PARTS.PTS"), "2.00, 1,M\r\nDOOR\r\n");
}

TEST_F(CutList, WithoutValuesThereIsNoRow)
{
    SetColumns({"NAME"});
    Run.PtsValues[0] = "OTHER";
    WriteCutListEntry();
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
    EXPECT_TRUE(Reported().empty());
    EXPECT_EQ(Run.PtsValues[0], "");
}

TEST_F(CutList, AnErrorOrOffMakesNoRowAndIsTold)
{
    SetColumns({"NAME"});
    SetValues({"DOOR"});
    Run.PtsValues[0] = "ERROR";
    WriteCutListEntry();
    SetValues({"DOOR"});
    Run.PtsValues[0] = "OFF";
    WriteCutListEntry();
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
    EXPECT_EQ(Reported(), (Texts{"Entry not made to PTS file due to Error",
                                 "PTS File Generation Turned OFF in Drawing"}));
    EXPECT_EQ(Run.PtsValues, PtsTexts{});
}

TEST_F(CutList, TheDrawingCanNameTheFile)
{
    std::filesystem::create_directories(Folder / "OTHER");
    SetColumns({"NAME"});
    const struct {
        std::string Given, File;
    } rows[] = {{"OAK", "LIST/OAK.PTS"},
                {"OAK.TXT", "LIST/OAK.TXT"},
                {PathOf("OTHER\\ELM"), "OTHER/ELM.PTS"},
                {PathOf("OTHER\\"), "OTHER/PARTS.PTS"},
                {" A SH ", "LIST/ASH.PTS"}};
    for (const auto& row : rows) {
        Run.PtsValues[0] = row.Given;
        SetValues({"DOOR"});
        WriteCutListEntry();
        EXPECT_EQ(Get(row.File), "2.00, 1,M\r\nDOOR\r\n") << row.Given;
    }
}

TEST_F(CutList, ThePlainFileNameAlwaysTakesItsEnding)
{
    Config.PTSName = "PARTS.OLD";
    SetColumns({"NAME"});
    SetValues({"DOOR"});
    WriteCutListEntry();
    EXPECT_TRUE(Stands("LIST/PARTS.OLD.PTS"));
}

TEST_F(CutList, AListThatCannotBeReplacedIsARunErrorThatNamesIt)
{
    std::filesystem::create_directories(Folder / "LIST/PARTS.PTS");
    SetColumns({"NAME"});
    SetValues({"DOOR"});
    try {
        WriteCutListEntry();
        FAIL();
    } catch (const RunError& error) {
        EXPECT_EQ(error.Cause.find(ShownPath(PathOf("LIST\\PARTS.PTS")) + ": "), 0U);
    }
    EXPECT_EQ(Run.PtsValues, PtsTexts{});
}

TEST_F(CutList, AMissingOrUnsetFolderIsARunError)
{
    SetColumns({"NAME"});
    for (const std::string& folder : {PathOf("NOWHERE\\"), std::string()}) {
        Config.PTSPath = folder;
        SetValues({"DOOR"});
        try {
            WriteCutListEntry();
            FAIL();
        } catch (const RunError& error) {
            EXPECT_EQ(error.Number, ErrorPathNotFound);
        }
    }
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
}

} // namespace
} // namespace kv

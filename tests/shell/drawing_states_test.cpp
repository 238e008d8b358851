// What has become of each drawing: written, changed, failed, replaced; kept in a file beside the settings, of
// which nonsense, another version and a disk that refuses lose nothing but the states.
#include "shell/drawing_states.h"

#include <algorithm>

#include "shell/unattended.h"

namespace kv {
namespace {

class DrawingStates : public Unattended {
  protected:
    void SetUp() override
    {
        Unattended::SetUp();
        Clock.Now = [] { return Time; };
        Time = "2036-03-01 09:05:00";
        LoadDrawingStates();
        Here.Lines.clear();
    }
    void TearDown() override
    {
        Clock.Now = nullptr;
        ForgetDrawingStates();
        Unattended::TearDown();
    }
    void Convert(const Names& names)
    {
        FileList = {};
        ListFiles(names);
        PressStart();
        StartConversion();
    }
    DrawingState StateOf(const std::string& name) const
    {
        const std::string path = FromHostPath(Source(name).string());
        DirectoryEntry entry;
        EXPECT_EQ(ReadEntryOf(path, entry).Is, Presence::There);
        return StateOfDrawing(path, StampOfDrawing(entry));
    }
    std::filesystem::path File() const { return Here.Folder / "KVSTATES.TXT"; }

    static inline std::string Time;
};

TEST_F(DrawingStates, ADrawingIsNewUntilItIsConverted)
{
    Put("A.DXF", BoredPanel());
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::New);
    EXPECT_EQ(StateOf("A.DXF").Text, "");
    Convert({"A.DXF"});
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::Written);
    EXPECT_EQ(StateOf("A.DXF").Text, "written 09:05");
}

TEST_F(DrawingStates, ATimeOfAnotherDayHasItsDate)
{
    Put("A.DXF", BoredPanel());
    Convert({"A.DXF"});
    Time = "2036-03-02 00:00:01";
    EXPECT_EQ(StateOf("A.DXF").Text, "written 2036-03-01 09:05");
}

TEST_F(DrawingStates, ADrawingThatIsSavedAgainIsChanged)
{
    Put("A.DXF", BoredPanel());
    Convert({"A.DXF"});
    Put("A.DXF", BoredPanel(test::Circle("VBORE_Z12F3000", 200, 50, 4)));
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::Changed);
    EXPECT_EQ(StateOf("A.DXF").Text, "changed");
    Convert({"A.DXF"});
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::Written);
}

// Nobody knows which of both was converted.
TEST_F(DrawingStates, ADrawingThatIsSavedWhileItRunsIsChanged)
{
    Put("A.DXF", BoredPanel());
    const test::AtStage look(
        "final", [this] { Put("A.DXF", BoredPanel(test::Circle("VBORE_Z12F3000", 200, 50, 4))); });
    Convert({"A.DXF"});
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::Changed);
}

TEST_F(DrawingStates, AFailureHasItsFirstFault)
{
    Put("A.DXF", FailingDrawing());
    Convert({"A.DXF"});
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::Failed);
    EXPECT_EQ(StateOf("A.DXF").Text, "failed: Part BORDER or BORDER Layer NOT Found!!!");
}

TEST_F(DrawingStates, ADrawingThatGivesNoProgramIsNotWritten)
{
    Put("A.DXF", test::Drawing(test::Polyline("BORDER_Z18", {{0, 0}, {600, 0}, {600, 400}, {0, 400}},
                                              test::Pair(70, "1")) +
                               test::Instructions({"NOCODE"})));
    Convert({"A.DXF"});
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::WithoutProgram) << Here.ReportText();
    EXPECT_EQ(StateOf("A.DXF").Text, "no program");
    LoadDrawingStates();
    EXPECT_EQ(StateOf("A.DXF").Text, "no program");
}

TEST_F(DrawingStates, AProgramOfTwoDrawingsIsTheLastOnes)
{
    const std::string name = test::Instructions({"NAME=SAME"});
    Put("A.DXF", BoredPanel(name));
    Put("B.DXF", BoredPanel(name));
    Convert({"A.DXF", "B.DXF"});
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::Replaced) << Here.ReportText();
    EXPECT_EQ(StateOf("A.DXF").Text, "same program as B.DXF");
    EXPECT_EQ(StateOf("B.DXF").Text, "written 09:05");
    LoadDrawingStates(); // the order is that of the file
    EXPECT_EQ(StateOf("A.DXF").Text, "same program as B.DXF");
    Convert({"A.DXF"});
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::Written);
    EXPECT_EQ(StateOf("B.DXF").Text, "same program as A.DXF");
}

TEST_F(DrawingStates, AreTheSameAtTheNextStart)
{
    Put("A.DXF", BoredPanel());
    Put("B.DXF", FailingDrawing());
    Convert({"A.DXF", "B.DXF"});
    LoadDrawingStates();
    EXPECT_EQ(StateOf("A.DXF").Text, "written 09:05");
    EXPECT_EQ(StateOf("B.DXF").Text, "failed: Part BORDER or BORDER Layer NOT Found!!!");
    const std::string text = Here.Read(File());
    EXPECT_TRUE(text.starts_with("Korvanti drawing states 1\n")) << text;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3) << text;
}

TEST_F(DrawingStates, JobsOfATriggerFileCount)
{
    Config.AutoStartBatch = true;
    Put("A.DXF", BoredPanel());
    WarmUp();
    Put("BATCH.LST", "A\r\n");
    Tick();
    EXPECT_EQ(StateOf("A.DXF").Text, "written 09:05");
    EXPECT_TRUE(std::filesystem::exists(File()));
}

TEST_F(DrawingStates, NonsenseIsReportedAndBegunAnew)
{
    Here.Write("KVSTATES.TXT", std::string("\0\x01\xFF nonsense\n\t\t\t", 16));
    Put("A.DXF", BoredPanel());
    LoadDrawingStates();
    EXPECT_EQ(Told("The states of the drawings are not known: "), 1) << Here.ReportText();
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::New);
    Convert({"A.DXF"});
    LoadDrawingStates();
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::Written);
}

TEST_F(DrawingStates, LinesOfNonsenseCostTheirDrawingAlone)
{
    Put("A.DXF", BoredPanel());
    Convert({"A.DXF"});
    const std::string text = Here.Read(File());
    const std::size_t line = text.find('\n') + 1;
    Here.Write("KVSTATES.TXT",
               text.substr(0, line) + "x\ty\n\t\t\twritten\t\n\na\tb\tc\tdone\te\n" + text.substr(line));
    Here.Lines.clear();
    LoadDrawingStates();
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::Written);
    EXPECT_TRUE(Here.Lines.empty()) << Here.ReportText();
}

TEST_F(DrawingStates, AFileThatIsCutAnywhereIsRead)
{
    Put("A.DXF", BoredPanel());
    Convert({"A.DXF"});
    const std::string text = Here.Read(File());
    for (std::size_t length = 0; length <= text.size(); ++length) {
        Here.Write("KVSTATES.TXT", text.substr(0, length));
        LoadDrawingStates();
        const DrawingIs is = StateOf("A.DXF").Is;
        EXPECT_TRUE(is == DrawingIs::New || is == DrawingIs::Written || is == DrawingIs::Changed) << length;
    }
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::Written);
}

TEST_F(DrawingStates, AFileOfAnotherVersionIsLeftAsItIs)
{
    const std::string other = "Korvanti drawing states 2\n{}\n";
    Here.Write("KVSTATES.TXT", other);
    LoadDrawingStates();
    EXPECT_EQ(Told("The states of the drawings are not known: "), 1);
    Put("A.DXF", BoredPanel());
    Convert({"A.DXF"});
    EXPECT_EQ(StateOf("A.DXF").Is, DrawingIs::Written); // of this start
    EXPECT_EQ(Here.Read(File()), other);
}

TEST_F(DrawingStates, AFolderInPlaceOfTheFileIsReportedOnce)
{
    std::filesystem::create_directories(File() / "x");
    LoadDrawingStates();
    EXPECT_EQ(Told("The states of the drawings are not known: "), 1);
    Put("A.DXF", BoredPanel());
    Convert({"A.DXF"});
    EXPECT_EQ(Told("The states of the drawings are not kept: "), 1) << Here.ReportText();
    Convert({"A.DXF"});
    EXPECT_EQ(Told("The states of the drawings are not kept: "), 1); // the report began anew
    EXPECT_TRUE(Here.HasProgram("A"));
}

#if !defined(_WIN32)
TEST_F(DrawingStates, NamesOfAnyScriptAreKnownAtTheNextStart)
{
    Put("\xD0\xB4\xD0\xB2\xD0\xB5\xD1\x80\xD1\x8C.dxf", BoredPanel());
    const std::string path = FromHostPath(Source("\xD0\xB4\xD0\xB2\xD0\xB5\xD1\x80\xD1\x8C.dxf").string());
    Convert({FileNameOf(path)});
    EXPECT_NE(Here.Read(File()).find("\xD0\xB4\xD0\xB2\xD0\xB5\xD1\x80\xD1\x8C.dxf\t"), std::string::npos);
    LoadDrawingStates();
    DirectoryEntry entry;
    ASSERT_EQ(ReadEntryOf(path, entry).Is, Presence::There);
    EXPECT_EQ(StateOfDrawing(path, StampOfDrawing(entry)).Is, DrawingIs::Written);
}
#endif

TEST_F(DrawingStates, NewAndChangedDrawingsAreSelectedAndNoOthers)
{
    for (const char* const name : {"A.DXF", "B.DXF", "C.DXF", "D.DXF"})
        Put(name, BoredPanel());
    Put("E.DXF", FailingDrawing());
    Convert({"A.DXF", "B.DXF", "E.DXF"});
    Put("B.DXF", BoredPanel(test::Circle("VBORE_Z12F3000", 200, 50, 4)));
    FileList = {};
    RefreshFileList();
    ASSERT_EQ(FileList.Rows.size(), 5U);
    FileList.Rows[3].Hidden = true; // D.DXF, by a filter
    FileList.Rows[0].Selected = true;
    SelectNewAndChanged();
    Names selected;
    for (const FileRow& row : FileList.Rows)
        if (row.Selected)
            selected.push_back(row.Cells[1]);
    EXPECT_EQ(selected, (Names{"B.DXF", "C.DXF"}));
}

TEST_F(DrawingStates, TheListSortsThemByWhatIsLeftToDo)
{
    for (const char* const name : {"A.DXF", "B.DXF", "C.DXF"})
        Put(name, BoredPanel());
    Put("D.DXF", FailingDrawing());
    Convert({"A.DXF", "B.DXF", "D.DXF"});
    Put("B.DXF", BoredPanel(test::Circle("VBORE_Z12F3000", 200, 50, 4)));
    FileList = {};
    RefreshFileList();
    const auto names = [] {
        Names listed;
        for (const FileRow& row : FileList.Rows)
            listed.push_back(row.Cells[1]);
        return listed;
    };
    SortFileList(StateColumn);
    EXPECT_EQ(names(), (Names{"D.DXF", "B.DXF", "C.DXF", "A.DXF"}));
    SortFileList(StateColumn);
    EXPECT_EQ(names(), (Names{"A.DXF", "C.DXF", "B.DXF", "D.DXF"}));
}

} // namespace
} // namespace kv

// What a list without a drawing offers, by the settings and the disk.
#include "shell/first_steps.h"

#include <algorithm>

#include "shell/unattended.h"

namespace kv {
namespace {

class FirstStepsOfList : public Unattended {
  protected:
    void SetUp() override
    {
        Unattended::SetUp();
        Programs = Here.Folder / "control";
        std::filesystem::create_directories(Programs);
        DestinationPath(0) = FromHostPath(Programs.string() + "/");
        Config.Sequence = "VGHR";
    }
    static bool Says(const std::string& line) { return std::ranges::count(FirstStepsNow().Lines, line) == 1; }
    std::filesystem::path Programs;
};

TEST_F(FirstStepsOfList, AnEmptyFolderOffersTheExamples)
{
    EXPECT_TRUE(Says("There is no DXF drawing in this folder."));
    EXPECT_EQ(FirstStepsNow().CopyExamples, !ExampleFolder().empty());
    EXPECT_FALSE(FirstStepsNow().ChooseControl);
}

TEST_F(FirstStepsOfList, AFolderThatIsNotThereIsToBeChosen)
{
    std::filesystem::remove_all(Source());
    EXPECT_TRUE(Says(ShownPath(SourcePath(0)) + " is not there."));
    EXPECT_TRUE(Says("Choose the folder of your drawings."));
    EXPECT_FALSE(FirstStepsNow().CopyExamples);
    SourcePath(0).clear();
    EXPECT_TRUE(Says("Choose the folder of your drawings."));
    EXPECT_EQ(FirstStepsNow().Lines.size(), 2U); // INDICE.PRG is the other one
}

TEST_F(FirstStepsOfList, TheControlsFolderIsToBeChosenWhereNoneIs)
{
    DestinationPath(0) = FromHostPath((Here.Folder / "gone").string());
    EXPECT_TRUE(FirstStepsNow().ChooseControl);
    EXPECT_FALSE(FirstStepsNow().MakeIndex);
    EXPECT_TRUE(Says("Choose the folder of the control (CNC90/WINNER90; Setup has the others)."));
    ChangeProgramFolder(FromHostPath(Programs.string()));
    EXPECT_EQ(DestinationPath(0), FromHostPath(Programs.string() + "/"));
    EXPECT_FALSE(FirstStepsNow().ChooseControl);
}

TEST_F(FirstStepsOfList, AnIndexIsMadeOnceAndForTheOldControlAlone)
{
    EXPECT_TRUE(FirstStepsNow().MakeIndex);
    MakeIndexFile();
    EXPECT_FALSE(FirstStepsNow().MakeIndex);
    EXPECT_EQ(Here.Read(Programs / "INDICE.PRG"), "");
    Here.Write("control/INDICE.PRG", "mine");
    MakeIndexFile();
    EXPECT_EQ(Here.Read(Programs / "INDICE.PRG"), "mine");
    std::filesystem::remove(Programs / "INDICE.PRG");
    Config.Winner90 = false;
    Config.Genesis = true;
    DestinationPath(1) = DestinationPath(0);
    EXPECT_FALSE(FirstStepsNow().MakeIndex);
}

TEST_F(FirstStepsOfList, AMadeIndexTakesThePrograms)
{
    MakeIndexFile();
    Put("A.DXF", BoredPanel());
    ListFiles({"A.DXF"});
    PressStart();
    StartConversion();
    EXPECT_EQ(Shell.FailedJobs, 0) << Here.ReportText();
    EXPECT_NE(Here.Read(Programs / "INDICE.PRG"), "");
}

TEST_F(FirstStepsOfList, AnEmptySequenceGetsTheUsualOrder)
{
    EXPECT_FALSE(FirstStepsNow().SetOrder);
    Config.Sequence = "  ";
    EXPECT_TRUE(FirstStepsNow().SetOrder);
    UseUsualOrder();
    EXPECT_EQ(Config.Sequence, "VGHR");
    EXPECT_FALSE(FirstStepsNow().SetOrder);
    Config.Sequence.clear();
    Config.Winner90 = false;
    Config.GenesisEV = true;
    EXPECT_FALSE(FirstStepsNow().SetOrder); // it has no sequence
}

TEST_F(FirstStepsOfList, ExamplesAreCopiedAndNoDrawingIsReplaced)
{
    ASSERT_FALSE(ExampleFolder().empty()); // the tree that the tests are built in
    Put("door.dxf", "mine");
    CopyExampleDrawings();
    EXPECT_EQ(TextOf("door.dxf"), "mine");
    EXPECT_TRUE(Stands("side.dxf"));
    EXPECT_TRUE(
        std::ranges::any_of(FileList.Rows, [](const FileRow& row) { return row.Cells[1] == "side.dxf"; }));
}

TEST_F(FirstStepsOfList, WhatCannotBeMadeIsReported)
{
    std::filesystem::create_directories(Source("side.dxf") / "folder");
    std::filesystem::create_directories(Programs / "INDICE.PRG" / "folder");
    MakeIndexFile();
    CopyExampleDrawings();
    EXPECT_EQ(Told(ShownPath(FromHostPath(Source("side.dxf").string())) + " cannot be made: "), 1)
        << Here.ReportText();
    EXPECT_TRUE(Stands("door.dxf"));
}

} // namespace
} // namespace kv

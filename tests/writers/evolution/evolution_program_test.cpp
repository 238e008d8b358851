// The Genesis Evolution's program as a whole: which operations it holds, where they stand, when and
// where it is written.
#include <algorithm>

#include "writers/evolution/evolution_scene.h"

namespace kv {
namespace {

class EvolutionFile : public EvolutionScene {
  protected:
    const std::string BoreLine = "W#81{ ::WTp WS=1 #1=100 #2=50 #3=-12 #8015=0 #201=1 #203=1 #1002=8 }W";

    // One operation of each class.
    static void AddEachClass()
    {
        AddBore();
        AddHBore(1);
        AddStart(10, 10);
        AddPoint(300, 10);
        AddGroove();
    }
    // First words of the lines of all sides.
    Texts Kinds()
    {
        const std::string program = Written();
        Texts kinds;
        for (int side = 1; side <= 6; ++side) {
            for (const std::string& line : SideOf(program, side))
                kinds.push_back(std::to_string(side) + line.substr(0, line.find('{')));
        }
        return kinds;
    }
};

TEST_F(EvolutionFile, TemplateThenSidesThenAnEmptyLine)
{
    AddBore();
    EXPECT_EQ(Written(), FilledHead("\n::SIDE=1;") + SidesWith(1, BoreLine + "\r\n") + "\r\n");
    EXPECT_EQ(Reported(), (Texts{"Genesis Evolution", "Processed in 2.5 Sec."}));
    EXPECT_EQ(Run.RunFailed, False);
    EXPECT_EQ(AllFiles(), (Texts{"HOME/EvHeader.dat", "PROG/DOOR.CNC", "PROG/INDICE.PRG"}));
}

TEST_F(EvolutionFile, ClassesStandAsBoresEdgesRoutesGrooves)
{
    AddEachClass();
    EXPECT_EQ(Kinds(), (Texts{"1W#81", "1W#89", "1W#2201", "1W#1050", "5W#81"}));
}

TEST_F(EvolutionFile, EachBoxLeavesItsClassOut)
{
    AddEachClass();
    Config.EvVBore = false;
    EXPECT_EQ(Kinds(), (Texts{"1W#89", "1W#2201", "1W#1050", "5W#81"}));
    Config.EvHBore = false;
    EXPECT_EQ(Kinds(), (Texts{"1W#89", "1W#2201", "1W#1050"}));
    Config.EvRoute = false;
    EXPECT_EQ(Kinds(), Texts{"1W#1050"});
    Config.EvRoute = true;
    Config.EvGroove = false;
    EXPECT_EQ(Kinds(), (Texts{"1W#89", "1W#2201"}));
}

TEST_F(EvolutionFile, NoBoxCheckedWritesNothingAndSaysSo)
{
    AddEachClass();
    Config.EvVBore = Config.EvHBore = Config.EvRoute = Config.EvGroove = false;
    WriteEvolutionProgram();
    EXPECT_EQ(Reported(), Texts{" No Selected Operations found for PTP"});
    EXPECT_EQ(AllFiles(), (Texts{"HOME/EvHeader.dat", "PROG/INDICE.PRG"}));
    EXPECT_EQ(Run.RunFailed, False);
}

TEST_F(EvolutionFile, NoOperationsWriteNothing)
{
    WriteEvolutionProgram();
    EXPECT_EQ(Reported(), Texts{" No Selected Operations found for PTP"});
    EXPECT_FALSE(Stands("PROG/DOOR.CNC"));
}

// The flag of written operations is never lowered.
TEST_F(EvolutionFile, ADrawingWithoutOperationsBehindOneWithWritesItsShortFile)
{
    AddBore();
    WriteEvolutionProgram();
    NextDrawing("EMPTY");
    EXPECT_EQ(Written("EMPTY"), "HEAD\r\n$=EMPTY\r::SIDE=\r\n::UNm DL=600 DH=400 DS=18\r\r\nEND\r\n" +
                                    SidesWith(0, "") + "\r\n");
}

TEST_F(EvolutionFile, TheFlagOfWrittenOperationsIsItsOwn)
{
    AddBore();
    Run.ControlType = 0;
    WriteCncProgram();
    NextDrawing("EMPTY");
    WriteEvolutionProgram();
    EXPECT_FALSE(Stands("PROG/EMPTY.CNC"));
    Run.RunFailed = False;
    NextDrawing("FULL");
    AddBore();
    WriteEvolutionProgram();
    EXPECT_TRUE(Stands("PROG/FULL.CNC"));
}

TEST_F(EvolutionFile, SidesOfOneDrawingDoNotReachTheNext)
{
    AddHBore(2);
    EXPECT_EQ(WrittenSide(3).size(), 1U);
    NextDrawing("DOOR");
    AddBore();
    EXPECT_EQ(Kinds(), Texts{"1W#81"});
}

TEST_F(EvolutionFile, TheFileIsReplacedWhole)
{
    Put("PROG/DOOR.CNC", std::string(100000, 'x'));
    AddBore();
    const std::string program = Written();
    EXPECT_EQ(program.find('x'), std::string::npos);
    EXPECT_EQ(program, Written());
}

TEST_F(EvolutionFile, TheNameIsTheFilePartOfTheOutputName)
{
    AddBore();
    Run.PartName = PathOf("ELSEWHERE\\") + "PANEL.LEFT 2";
    WriteEvolutionProgram();
    EXPECT_TRUE(Stands("PROG/PANEL.LEFT 2.CNC"));
    Run.PartName = PathOf("ELSEWHERE\\"); // completed by the source's name
    WriteEvolutionProgram();
    EXPECT_TRUE(Stands("PROG/DOOR.CNC"));
    EXPECT_FALSE(Stands("ELSEWHERE"));
}

TEST_F(EvolutionFile, ANameOfTwoHundredCharactersIsAFile)
{
    AddBore();
    Run.PartName = std::string(200, 'N');
    WriteEvolutionProgram();
    EXPECT_TRUE(Stands("PROG/" + std::string(200, 'N') + ".CNC"));
}

TEST_F(EvolutionFile, ADescriptionKeepsItsBytes)
{
    AddBore();
    Run.PartDescription = "T\xFCR \x80?";
    EXPECT_EQ(WrittenHead().substr(0, 14), "HEAD\r\n$=T\xFCR \x80?");
}

TEST_F(EvolutionFile, AMissingFolderIsTold)
{
    AddBore();
    Config.DestinationPathEV = PathOf("NONE");
    WriteEvolutionProgram();
    ASSERT_EQ(Reported().size(), 2U);
    const std::string path = ShownPath(PathOf("NONE\\DOOR.CNC"));
    EXPECT_EQ(Reported()[0], " Destination Path not Ready  " + path);
    EXPECT_EQ(Reported()[1], path + ": the folder does not exist");
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_FALSE(Stands("NONE"));
}

TEST_F(EvolutionFile, NoFolderSetIsToldAndNothingIsWrittenElsewhere)
{
    AddBore();
    Config.DestinationPathEV.clear();
    WriteEvolutionProgram();
    EXPECT_EQ(Reported().at(0), " Destination Path not Ready  DOOR.CNC");
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_FALSE(std::filesystem::exists("DOOR.CNC"));
}

TEST_F(EvolutionFile, AFolderInThePlaceOfTheProgramIsToldAndStays)
{
    AddBore();
    std::filesystem::create_directories(Folder / "PROG" / "DOOR.CNC" / "KEPT");
    WriteEvolutionProgram();
    EXPECT_EQ(Reported().at(0), " Destination Path not Ready  " + ShownPath(PathOf("PROG\\DOOR.CNC")));
    EXPECT_EQ(Reported().size(), 2U);
    EXPECT_TRUE(Stands("PROG/DOOR.CNC/KEPT"));
    EXPECT_EQ(AllFiles(), (Texts{"HOME/EvHeader.dat", "PROG/INDICE.PRG"})); // no copy written aside
}

TEST_F(EvolutionFile, AnAbortIsPolledAtEachRecordOfEachClass)
{
    static int calls = 0, allowed = 0;
    AddEachClass(); // a bore, an edge bore, two route records, a groove
    for (allowed = 0; allowed < 5; ++allowed) {
        calls = 0;
        Run.RunState = 0;
        Run.RunFailed = False;
        ForgetReport();
        Events.Pump = [] {
            if (++calls > allowed)
                kv::Run.RunState = 1;
        };
        WriteEvolutionProgram();
        Events = EventHooks{};
        EXPECT_EQ(calls, allowed + 1);
        EXPECT_EQ(Reported(), Texts{" USER ABORTED"}) << allowed; // shown trimmed and centred
        EXPECT_EQ(Run.RunFailed, True);
        EXPECT_FALSE(Stands("PROG/DOOR.CNC"));
    }
    Run.RunState = 0;
    EXPECT_TRUE(Run.FailedFiles.empty());
}

TEST_F(EvolutionFile, TheMeterCountsBoresEdgeBoresAndRouteRecords)
{
    static std::vector<int> percents;
    percents.clear();
    AddEachClass();
    AddArc({300, 10}, {350, 10}, {400, 10}, 180, 0, 1); // two records
    Report.MeterMoved = [](Meter meter, int percent) {
        if (meter == Meter::PgmCode)
            percents.push_back(percent);
    };
    WriteEvolutionProgram();
    EXPECT_EQ(percents, (std::vector<int>{16, 33, 50, 66, 83, 100}));
}

TEST_F(EvolutionFile, BoresMadeElsewhereAreLeftOut)
{
    AddBore();
    VBores[1].Group = 0;
    AddHBore(1);
    HBores[1].Group = 0;
    AddHBore(2);
    HBores[2].Group = 0;
    HBores[2].Tool = "105";
    WriteEvolutionProgram();
    EXPECT_EQ(Reported(), Texts{" No Selected Operations found for PTP"});
}

// More text than any buffer of the other programs holds.
TEST_F(EvolutionFile, ThirtyTwoThousandBoresStandWhole)
{
    for (int i = 1; i <= 32000; ++i)
        VBores.Append(Bore(static_cast<Single>(i), 50, 12, 8));
    const Texts lines = WrittenSide(1);
    ASSERT_EQ(lines.size(), 32000U);
    EXPECT_EQ(lines[31999], "W#81{ ::WTp WS=1 #1=32000 #2=50 #3=-12 #8015=0 #201=1 #203=1 #1002=8 }W");
}

} // namespace
} // namespace kv

// Names, places and report of programs of the horizontal drilling machine, and what happens where it
// has nothing to do or nowhere to write.
#include "platform/files.h"
#include "platform/run_error.h"
#include "state/run.h"
#include "support/answers.h"
#include "writers/hbd/hbd_scene.h"

namespace kv {
namespace {

std::vector<int>* MetersSeen = nullptr;
std::vector<ReportRow>* RowsSeen = nullptr;

class HbdNames : public HbdScene {
  protected:
    void WriteNamed(const std::string& name)
    {
        NewDrawing("DOOR");
        Run.PartName = name;
        HBores.Append(EdgeBore(1, 100, 30));
        WriteHbdProgram();
    }
    // The only file in the machine's folder.
    std::string OnlyProgram() const
    {
        Texts names;
        for (const auto& entry : std::filesystem::directory_iterator(Folder / "HBD"))
            if (entry.path().extension() != ".lock")
                names.push_back(entry.path().filename().string());
        EXPECT_EQ(names.size(), 1U);
        return names.empty() ? std::string() : names[0];
    }
    void ExpectNotReady(const std::string& path)
    {
        const Texts& all = Reported();
        ASSERT_EQ(all.size(), 3U);
        EXPECT_EQ(all[1], " Destination Path not Ready  " + ShownPath(path));
        EXPECT_TRUE(all[2].starts_with(ShownPath(path) + ": ")) << all[2];
        EXPECT_EQ(Run.RunFailed, True);
        EXPECT_TRUE(Run.FailedFiles.empty());
    }
};

TEST_F(HbdNames, APlainNameIsToldAsAdaptedToo)
{
    WriteNamed("DOOR");
    EXPECT_EQ(OnlyProgram(), "DOOR");
    EXPECT_EQ(Reported(), (Texts{"Part name adapted to \"DOOR\" for HBD."}));
}

TEST_F(HbdNames, TheFirstPointIsTakenOutOfAName)
{
    WriteNamed("A.B");
    EXPECT_EQ(OnlyProgram(), "AB");
    EXPECT_EQ(Reported(), (Texts{"Part name adapted to \"AB\" for HBD."}));
    std::filesystem::remove(Folder / "HBD" / "AB");
    WriteNamed("A.B.C");
    EXPECT_EQ(OnlyProgram(), "AB.C");
    std::filesystem::remove(Folder / "HBD" / "AB.C");
    WriteNamed(".AB");
    EXPECT_EQ(OnlyProgram(), "AB");
}

TEST_F(HbdNames, TheFolderOfAnOutputNameIsTakenOff)
{
    WriteNamed("C:\\A.B\\DOOR.12");
    EXPECT_EQ(OnlyProgram(), "DOOR12");
}

TEST_F(HbdNames, AnOutputNameThatIsAFolderIsCompletedByTheSources)
{
    WriteNamed("C:\\OUT\\");
    EXPECT_EQ(OnlyProgram(), "DOOR");
}

TEST_F(HbdNames, BlanksStay)
{
    WriteNamed("LEFT DOOR 1.A");
    EXPECT_EQ(OnlyProgram(), "LEFT DOOR 1A");
}

TEST_F(HbdNames, ALongNameStaysWhole)
{
    const std::string name(200, 'D');
    WriteNamed(name);
    EXPECT_EQ(OnlyProgram(), name);
    EXPECT_EQ(Reported(), (Texts{"Part name adapted to \"" + name + "\" for HBD."}));
}

TEST_F(HbdNames, ANameLongerThanTheDiskTakesIsTold)
{
    WriteNamed(std::string(300, 'D'));
    ExpectNotReady(PathOf("HBD\\" + std::string(300, 'D')));
}

TEST_F(HbdNames, LettersAboveAsciiAreKept)
{
    WriteNamed("T\xDCR"); // U-umlaut
    EXPECT_TRUE(test::FileStands(PathOf("HBD\\T\xDCR")));
    EXPECT_EQ(Reported(), (Texts{"Part name adapted to \"T\xDCR\" for HBD."}));
}

TEST_F(HbdNames, WhatTheCodePageDoesNotHoldBecomesAnUnderscore)
{
    WriteNamed(AnsiFromUtf8("T\xE6\x9D\xBFR")); // a letter of another script
    EXPECT_EQ(OnlyProgram(), "T_R");
    EXPECT_EQ(Reported(), (Texts{"No file can have the name T?R; it is called T_R",
                                 "Part name adapted to \"T_R\" for HBD."}));
}

TEST_F(HbdNames, ANameThatIsADeviceWithoutItsPointIsChanged)
{
    WriteNamed("C.ON");
    EXPECT_EQ(OnlyProgram(), "CON_");
}

TEST_F(HbdNames, NamesOfPointsHitNoFolder)
{
    for (const std::string name : {".", "..", "..."}) {
        ForgetReport();
        Run.RunFailed = False;
        WriteNamed(name);
        ExpectNotReady(PathOf("HBD\\" + name.substr(1)));
        EXPECT_EQ(AllFiles(), (Texts{"KVHBD.cfg", "PROG/INDICE.PRG"}));
    }
}

TEST_F(HbdNames, AFileIsReplacedOnEachRun)
{
    WriteNamed("DOOR");
    const std::string text = Get("HBD/DOOR");
    Put("HBD/DOOR", "an older and much longer program" + text);
    WriteNamed("DOOR");
    EXPECT_EQ(Get("HBD/DOOR"), text);
}

TEST_F(HbdNames, AFolderWithoutBackslashIsCompleted)
{
    Config.HBDDestinationPath = " " + PathOf("HBD") + " ";
    WriteNamed("DOOR");
    EXPECT_EQ(OnlyProgram(), "DOOR");
}

TEST_F(HbdNames, AFolderThatIsNotThereIsToldAndAbortsTheRun)
{
    Config.HBDDestinationPath = PathOf("NOWHERE\\");
    WriteNamed("DOOR");
    ExpectNotReady(PathOf("NOWHERE\\DOOR"));
    EXPECT_EQ(HBores[1].Group, 0); // taken away all the same
}

TEST_F(HbdNames, AFileInPlaceOfTheFolderIsTold)
{
    Put("FILE", "x");
    Config.HBDDestinationPath = PathOf("FILE\\");
    WriteNamed("DOOR");
    ExpectNotReady(PathOf("FILE\\DOOR"));
    EXPECT_EQ(Get("FILE"), "x");
}

TEST_F(HbdNames, AFolderInPlaceOfTheFileIsTold)
{
    std::filesystem::create_directories(Folder / "HBD" / "DOOR");
    WriteNamed("DOOR");
    ExpectNotReady(PathOf("HBD\\DOOR"));
}

TEST_F(HbdNames, NoFolderIsNeverTheCurrentOne)
{
    Config.HBDDestinationPath = "";
    WriteNamed("DOOR");
    ExpectNotReady("DOOR");
}

TEST_F(HbdNames, WithoutABoreForTheMachineNoFileIsWrittenAndTheMainWriterMakesAll)
{
    NewDrawing("DOOR.1");
    AddFaceBore(300, 200);
    Config.MakeHBD = 1;
    Config.HbdAvailable = true;
    RunProgramWriters();
    EXPECT_EQ(Reported()[0], "HBD not indicated for \"DOOR.1\""); // the name as it was
    EXPECT_TRUE(std::filesystem::is_empty(Folder / "HBD"));
    EXPECT_EQ(Get("PROG/SRG/D/OOR.1"),
              FileOf({"G71X600Y400Z18T00N4L1", "G150(DOOR.1)", "G81G90G55P5R54=8X300Y200Z12", "M2"}));
    EXPECT_EQ(Run.RunFailed, False);
}

TEST_F(HbdNames, AnOldProgramStaysWhereTheMachineIsNotIndicated)
{
    Put("HBD/DOOR", "OLD");
    WriteHbdProgram();
    EXPECT_EQ(Get("HBD/DOOR"), "OLD");
}

TEST_F(HbdNames, WhereAllBoresGoToTheMachineTheMainWriterHasNone)
{
    HBores.Append(EdgeBore(1, 100, 30));
    AddFaceBore(100, 34);
    Config.MakeHBD = 1;
    Config.HbdAvailable = true;
    RunProgramWriters();
    EXPECT_EQ(Reported()[0], "Part name adapted to \"DOOR\" for HBD.");
    EXPECT_EQ(Reported()[1], " No Selected Operations found for PTP");
    EXPECT_EQ(AllFiles(), (Texts{"HBD/DOOR", "KVHBD.cfg", "PROG/INDICE.PRG"}));
}

TEST_F(HbdNames, WithoutAToolTableOnlyNamedToolsDrill)
{
    std::filesystem::remove(Folder / "KVHBD.cfg");
    HBores.Append(EdgeBore(1, 100, 30));
    HBores.Append(EdgeBore(1, 200, 30));
    HBores[2].Tool = "01";
    const Texts lines = SideOf(Written(), 5);
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[4], "#8501=0 #8502=0 #8525=1 #8526=1 #8530=1 #8531= #8532= }W");
    EXPECT_EQ(HBores[1].Group, 1);
}

TEST_F(HbdNames, MarksColourTheirLineAndAllThatFollowInTheFlush)
{
    std::vector<ReportRow> rows;
    RowsSeen = &rows;
    Report.ShowRow = [](const ReportRow& row) { RowsSeen->push_back(row); };
    ReportMessage(1, "before");
    WriteHbdProgram();
    ReportMessage(1, "behind");
    ReportMessage(2, {});
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].Blue, 0);
    EXPECT_EQ(rows[1].Blue, 255); // 0x82
    EXPECT_EQ(rows[1].Text, "HBD not indicated for \"DOOR\"");
    EXPECT_EQ(rows[2].Blue, 255);
    rows.clear();
    WriteNamed("DOOR");
    ReportMessage(1, "behind");
    ReportMessage(2, {});
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].Green, 155); // 0x81
    EXPECT_EQ(rows[0].Blue, 0);
    EXPECT_EQ(rows[1].Green, 155);
}

TEST_F(HbdNames, TheMeterMovesTo40AndTo100)
{
    std::vector<int> seen;
    MetersSeen = &seen;
    ZeroMeters();
    Report.MeterMoved = [](Meter meter, int percent) {
        if (meter == Meter::PgmCode)
            MetersSeen->push_back(percent);
    };
    WriteHbdProgram();
    EXPECT_EQ(seen, (std::vector<int>{40, 100}));
    ZeroMeters();
    seen.clear();
    WriteNamed("DOOR");
    EXPECT_EQ(seen, (std::vector<int>{40, 100}));
    ZeroMeters();
}

TEST_F(HbdNames, ABlankNameEndsTheJobAsEverywhere)
{
    HBores.Append(EdgeBore(1, 100, 30));
    Run.PartName = " ";
    EXPECT_THROW(WriteHbdProgram(), RunError);
    EXPECT_TRUE(std::filesystem::is_empty(Folder / "HBD"));
}

} // namespace
} // namespace kv

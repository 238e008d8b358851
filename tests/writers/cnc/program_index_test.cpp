// INDICE.PRG, places of programs, and what is left when something cannot be written.
#include "writers/cnc/program_index.h"

#include <sys/file.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fcntl.h>

#include "platform/text.h"
#include "writers/program_scene.h"
#include "writers/writer_memory.h"

namespace kv {
namespace {

class ProgramIndex : public ProgramScene {
  protected:
    static std::string OldRecord(const std::string& name, char fill)
    {
        return Padded(name, 12) + std::string(68, fill) + "\r\n";
    }
    std::string NamesOf(const std::string& index)
    {
        EXPECT_EQ(index.size() % 82, 0U);
        std::string names;
        for (std::size_t at = 0; at < index.size(); at += 82)
            names += std::string(Trim(index.substr(at, 12))) + " ";
        return names;
    }
    void WriteNamed(const std::string& name)
    {
        NewDrawing(name);
        AddBore();
        WriteCncProgram();
    }
    // Runs the writer in a child process that may write no file longer than `bytes`.
    int WriteWithFileSizeLimit(rlim_t bytes)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            const rlimit limit{bytes, bytes};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            WriteCncProgram();
            const bool full = WasReported("61") || !Boxes.empty();
            ::_exit(kv::Run.RunFailed == True && full ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
};

TEST_F(ProgramIndex, ARecordByteForByte)
{
    Run.PartDescription = "OAK DOOR WITH A VERY LONG DESCRIPTION";
    Run.FlagMask = 0x1A5;
    Writers.SideMask = 0x13;
    Writers.TopDrillingWritten = true;
    using namespace std::string_literals;
    EXPECT_EQ(IndexRecord("DOOR        ", false), "DOOR         OAK DOOR WITH A VERY LONG07/04/26 \xA5"
                                                  "\0\0\0\0\0M\0\0\x16\x44\0\0\xC8\x43\0\0\x90\x41"
                                                  "\0\0\0\0\1\0\xB3\0S\0\0\xA0\0N\r\n"s);
}

TEST_F(ProgramIndex, ARecordOfAnInchDrawingSaysSo)
{
    Run.DrawingInInch = True;
    const std::string record = IndexRecord("DOOR        ", false);
    EXPECT_EQ(record.size(), IndexRecordSize);
    EXPECT_EQ(record[53], 'I');
    EXPECT_EQ(record[74], '\0'); // no work yet
}

TEST_F(ProgramIndex, TheKindLetterIsThatOfTheStrongestWork)
{
    Writers.RouteWritten = true;
    EXPECT_EQ(IndexRecord("D", false)[74], 'S');
    Writers.GrooveWritten = true;
    EXPECT_EQ(IndexRecord("D", false)[74], 's');
    EXPECT_EQ(IndexRecord("D", true)[74], 'N');
}

TEST_F(ProgramIndex, ANewNameMovesAllLaterRecordsDown)
{
    const std::string before = OldRecord("BACK", 'b');
    const std::string behind = OldRecord("SIDE", 's') + OldRecord("TOP", '\0');
    Put("PROG/INDICE.PRG", before + behind);
    WriteNamed("DOOR");
    const std::string index = Get("PROG/INDICE.PRG");
    EXPECT_EQ(index, before + IndexRecord("DOOR        ", false) + behind);
}

TEST_F(ProgramIndex, ANameBehindAllOthersIsAppended)
{
    Put("PROG/INDICE.PRG", OldRecord("BACK", 'b'));
    WriteNamed("DOOR");
    EXPECT_EQ(Get("PROG/INDICE.PRG"), OldRecord("BACK", 'b') + IndexRecord("DOOR        ", false));
}

TEST_F(ProgramIndex, AnEqualNameInAnyCaseIsReplaced)
{
    Put("PROG/INDICE.PRG", OldRecord("BACK", 'b') + OldRecord("dooR", 'd') + OldRecord("SIDE", 's'));
    WriteNamed("door");
    EXPECT_EQ(Get("PROG/INDICE.PRG"),
              OldRecord("BACK", 'b') + IndexRecord("DOOR        ", false) + OldRecord("SIDE", 's'));
}

TEST_F(ProgramIndex, InAnUnsortedFileTheFirstGreaterNameIsThePlace)
{
    Put("PROG/INDICE.PRG", OldRecord("SIDE", 's') + OldRecord("DOOR", 'd') + OldRecord("BACK", 'b'));
    WriteNamed("DOOR"); // a second DOOR: the old one stands behind the place
    EXPECT_EQ(NamesOf(Get("PROG/INDICE.PRG")), "DOOR SIDE DOOR BACK ");
}

TEST_F(ProgramIndex, NamesAreCutAtTwelveAndUpperCased)
{
    WriteNamed("Panel1234567890");
    EXPECT_EQ(Get("PROG/INDICE.PRG").substr(0, 13), "PANEL1234567 ");
    EXPECT_TRUE(Stands("PROG/SRG/P/ANEL1234.567"));
    EXPECT_EQ(ProgramList, Texts{"PANEL1234567"});
    EXPECT_EQ(Run.ProgramFileName, "PANEL1234567");
}

TEST_F(ProgramIndex, AnIndexOfEightyThreeBytesIsToldAndTheProgramIsWritten)
{
    const std::string broken(83, 'x');
    Put("PROG/INDICE.PRG", broken);
    WriteNamed("DOOR");
    EXPECT_EQ(Boxes, Texts{"!!! PROBLEM DETECTED WITH INDICE.PRG FILE !!!"});
    EXPECT_EQ(Get("PROG/INDICE.PRG"), broken);
    EXPECT_TRUE(Stands("PROG/SRG/D/OOR"));
    EXPECT_EQ(ProgramList, Texts{"DOOR"});
    EXPECT_EQ(Run.RunFailed, True) << "no control finds the program";
    EXPECT_EQ(Run.FailedFiles, (Texts{"", Run.SourceFile}));
}

TEST_F(ProgramIndex, WithoutIndexTheDrawingFails)
{
    std::filesystem::remove(Folder / "PROG/INDICE.PRG");
    WriteNamed("DOOR");
    EXPECT_EQ(Boxes,
              Texts{"CNC90/Winner90 Index File " + ShownPath(PathOf("PROG\\")) + "INDICE.PRG Not Found"});
    EXPECT_EQ(Reported(), (Texts{"Processed in 2.5 Sec.", "Import Failed"}));
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(Run.FailedFiles, (Texts{"", Run.SourceFile}));
    EXPECT_TRUE(AllFiles().empty());
}

TEST_F(ProgramIndex, AMissingProgramFolderIsNamed)
{
    Config.DestinationPath90 = PathOf("NOWHERE");
    WriteNamed("DOOR");
    EXPECT_EQ(Reported().back(), ShownPath(PathOf("NOWHERE\\")) + ": the program folder does not exist");
    EXPECT_EQ(Run.RunFailed, True);
}

TEST_F(ProgramIndex, NoProgramFolderIsNeverTheCurrentOne)
{
    Config.DestinationPath90 = " ";
    WriteNamed("DOOR");
    EXPECT_EQ(Boxes, Texts{"CNC90/Winner90 Index File INDICE.PRG Not Found"});
    EXPECT_EQ(Reported().back(), "No program folder is set");
    EXPECT_EQ(Run.RunFailed, True);
}

TEST_F(ProgramIndex, AFolderOfItsOwnServesItsJobAlone)
{
    Put("OUT/INDICE.PRG", "");
    NewDrawing("DOOR");
    Run.PartName = PathOf("OUT\\DOOR");
    AddBore();
    WriteCncProgram();
    WriteNamed("SIDE");
    EXPECT_TRUE(Stands("OUT/SRG/D/OOR"));
    EXPECT_TRUE(Stands("PROG/SRG/S/IDE"));
    EXPECT_EQ(NamesOf(Get("OUT/INDICE.PRG")), "DOOR ");
    EXPECT_EQ(NamesOf(Get("PROG/INDICE.PRG")), "SIDE ");
}

TEST_F(ProgramIndex, AChangedFolderOfTheSettingsHoldsFromTheNextJobOn)
{
    Put("OUT/INDICE.PRG", "");
    WriteNamed("DOOR");
    Config.DestinationPath90 = PathOf("OUT\\");
    WriteNamed("SIDE");
    EXPECT_EQ(NamesOf(Get("PROG/INDICE.PRG")), "DOOR ");
    EXPECT_EQ(NamesOf(Get("OUT/INDICE.PRG")), "SIDE ");
    EXPECT_TRUE(Stands("OUT/SRG/S/IDE"));
}

TEST_F(ProgramIndex, AFolderWithoutBackslashIsOneAllTheSame)
{
    Config.DestinationPath90 = PathOf("PROG");
    WriteNamed("DOOR");
    EXPECT_TRUE(Stands("PROG/SRG/D/OOR"));
}

TEST_F(ProgramIndex, PlacesByTheNamesLength)
{
    EXPECT_EQ(PlaceUnderIndex("PANEL1234567"), "SRG\\P\\ANEL1234.567");
    EXPECT_EQ(PlaceUnderIndex("PANEL1234"), "SRG\\P\\ANEL1234");
    EXPECT_EQ(PlaceUnderIndex("PA"), "SRG\\P\\A");
    EXPECT_EQ(PlaceUnderIndex("P"), "SRG\\00\\P");
}

TEST_F(ProgramIndex, BlanksOfANameAreNoPartOfItsPlace)
{
    WriteNamed("A DOOR LEFT");
    EXPECT_TRUE(Stands("PROG/SRG/A/DOORLEFT"));
    EXPECT_EQ(ProgramList, Texts{"A DOOR LEFT"});
}

TEST_F(ProgramIndex, AnIndexInUseEndsTheWriter)
{
    const std::string old = OldRecord("BACK", 'b');
    Put("PROG/INDICE.PRG", old);
    const int other = ::open((Folder / "PROG/INDICE.PRG").c_str(), O_RDWR);
    ASSERT_GE(other, 0);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    WriteNamed("DOOR");
    ::close(other);
    EXPECT_EQ(Boxes, Texts{"PROBLEM ACCESSING " + ShownPath(PathOf("PROG\\INDICE.PRG")) + " FOR WRITE"});
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(Run.FailedFiles, (Texts{"", Run.SourceFile}));
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
    EXPECT_EQ(Get("PROG/INDICE.PRG"), old);
    EXPECT_TRUE(ProgramList.empty());
    EXPECT_EQ(Reported().back().find(ShownPath(PathOf("PROG\\INDICE.PRG")) + ": "), 0U);

    ForgetReport();
    WriteNamed("SIDE"); // the process is sound
    EXPECT_EQ(Run.RunFailed, False);
    EXPECT_EQ(NamesOf(Get("PROG/INDICE.PRG")), "BACK SIDE ");
}

TEST_F(ProgramIndex, AFileInPlaceOfTheProgramFolderIsTold)
{
    Put("PROG/SRG", "");
    WriteNamed("DOOR");
    EXPECT_EQ(Reported()[1].find("Unable to "), 0U);
    EXPECT_EQ(Reported()[2].find(ShownPath(Run.SourceFile) + ": " + ShownPath(PathOf("PROG\\SRG\\D\\"))), 0U);
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(Get("PROG/INDICE.PRG"), "");
}

TEST_F(ProgramIndex, AFolderInPlaceOfTheProgramLeavesTheIndexWhole)
{
    std::filesystem::create_directories(Folder / "PROG/SRG/D/OOR");
    WriteNamed("DOOR");
    EXPECT_EQ(Reported()[1], "75");
    EXPECT_EQ(Reported()[2].find(ShownPath(PathOf("PROG\\SRG\\D\\OOR")) + ": "), 0U);
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_TRUE(Run.FailedFiles.empty());
    EXPECT_EQ(Get("PROG/INDICE.PRG"), "");
    EXPECT_TRUE(ProgramList.empty());
}

TEST_F(ProgramIndex, AFullDiskLeavesProgramAndIndexWhole)
{
    const std::string old = OldRecord("BACK", 'b');
    Put("PROG/INDICE.PRG", old);
    Put("PROG/SRG/D/OOR", "OLD\r\n");
    for (int i = 0; i < 100; ++i)
        AddBore();
    EXPECT_EQ(WriteWithFileSizeLimit(500), 0);
    EXPECT_EQ(Get("PROG/INDICE.PRG"), old);
    EXPECT_EQ(Get("PROG/SRG/D/OOR"), "OLD\r\n");
    EXPECT_EQ(AllFiles(), (Texts{"PROG/INDICE.PRG", "PROG/SRG/D/OOR"})); // nothing half written is left
}

TEST_F(ProgramIndex, ADiskThatIsFullForTheIndexLeavesTheOldProgram)
{
    std::string old;
    for (char name = 'A'; name < 'K'; ++name)
        old += OldRecord(std::string(1, name), name);
    Put("PROG/INDICE.PRG", old);
    Put("PROG/SRG/D/OOR", "OLD\r\n");
    AddBore();
    EXPECT_EQ(WriteWithFileSizeLimit(500), 0);
    EXPECT_EQ(Get("PROG/INDICE.PRG"), old);
    EXPECT_EQ(Get("PROG/SRG/D/OOR"), "OLD\r\n");
    EXPECT_EQ(AllFiles(), (Texts{"PROG/INDICE.PRG", "PROG/SRG/D/OOR"}));
}

} // namespace
} // namespace kv

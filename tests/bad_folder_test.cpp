// Program folders, indexes and disks that cannot be written. Each is told with the file and the cause and
// fails the job; old program, index and cut list stay byte for byte, and once the folder is mended the
// same process writes what a fresh one writes.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>

#include "state/settings.h"
#include "support/bad_input.h"

namespace kv::test {
namespace {

class BadFolder : public BadInput {
  protected:
    fs::path Index() const { return Home.Programs / "INDICE.PRG"; }
    fs::path ProgramFile() const { return Home.Programs / "SRG" / "B" / "AD"; }
    fs::path List() const { return Home.Folder / "LIST.PTS"; }

    // An older program, its index record and its cut list row.
    void MakeOldFiles()
    {
        Config.PTSPath = FromHostPath(Home.Folder.string() + "/");
        Config.PTSName = "LIST";
        Config.PtsFields[1] = "NAME";
        Config.PtsFieldCount = 1;
        ASSERT_TRUE(Home.Convert(Bad("OLD LEFT HAND DOOR FRONT", 50), "BAD.DXF")) << Home.ReportText();
        OldProgram = Home.Read(ProgramFile());
        OldIndex = Home.Read(Index());
        OldList = Home.Read(List());
        ASSERT_EQ(OldIndex.size(), 82U);
    }
    static std::string Bad(const std::string& name, double x)
    {
        return Drawing(Instructions({"PTS NAME=" + name}) + Rectangle("BORDER", 10, 20, 600, 400) +
                       Circle("VBORE Z12", x, 70, 4));
    }
    void ExpectOldFiles(bool andList = true) const
    {
        EXPECT_EQ(Home.Read(ProgramFile()), OldProgram);
        EXPECT_EQ(Home.Read(Index()), OldIndex);
        if (andList) {
            EXPECT_EQ(Home.Read(List()), OldList);
        }
        ExpectNoStrays();
    }
    void ExpectTold(const std::string& words) const
    {
        int named = 0;
        for (const std::string& line : Home.Lines)
            named += Holds(line, words) ? 1 : 0;
        EXPECT_EQ(named, 1) << words << "\n" << Home.ReportText();
        EXPECT_EQ(kv::Run.RunFailed, True);
    }
    // Behind a failure of the folder: mended, the process writes what a fresh one writes.
    void ExpectFitAgain()
    {
        EXPECT_TRUE(Home.Convert(GoodDrawing, "NEXT.DXF")) << Home.ReportText();
        EXPECT_EQ(Home.Read(Home.Programs / "SRG" / "N" / "EXT"), FreshProgram());
    }

    std::string OldProgram, OldIndex, OldList;
};

TEST_F(BadFolder, MissingProgramFolder)
{
    fs::remove_all(Home.Programs);
    EXPECT_FALSE(Home.Convert(GoodDrawing, "BAD.DXF"));
    ExpectTold("the program folder does not exist");
    EXPECT_TRUE(Home.Reported(Home.Programs.string() + "/: the program folder does not exist"))
        << Home.ReportText();
    ExpectListed();
    EXPECT_FALSE(fs::exists(Home.Programs)) << "a folder without index is never made";
    fs::create_directories(Home.Programs);
    std::ofstream(Index(), std::ios::binary).flush();
    ExpectFitAgain();
}

TEST_F(BadFolder, MissingIndex)
{
    fs::remove(Index());
    EXPECT_FALSE(Home.Convert(GoodDrawing, "BAD.DXF"));
    EXPECT_EQ(Home.Boxes, std::vector<std::string>{"CNC90/Winner90 Index File " + Home.Programs.string() +
                                                   "/INDICE.PRG Not Found"});
    ExpectTold("Import Failed");
    ExpectListed();
    EXPECT_FALSE(fs::exists(Home.Programs / "SRG"));
    std::ofstream(Index(), std::ios::binary).flush();
    ExpectFitAgain();
}

TEST_F(BadFolder, UnwritableProgramFolder)
{
    MakeOldFiles();
    const fs::path letters = Home.Programs / "SRG" / "B";
    fs::permissions(letters, fs::perms(0555));
    fs::permissions(Index(), fs::perms(0666));
    fs::permissions(Home.Programs, fs::perms(0777));
    fs::permissions(Home.Programs / "SRG", fs::perms(0755));
    fs::permissions(List(), fs::perms(0666));
    fs::permissions(Home.Folder, fs::perms(0777));
    const int status = InChild([&] {
        GiveUpRights();
        const bool converted = Home.Convert(Bad("NEW RIGHT HAND DOOR FRONT", 90), "BAD2.DXF", "BAD");
        EXPECT_FALSE(converted);
        ExpectTold(ProgramFile().string() + ": Permission denied");
        return true;
    });
    fs::permissions(letters, fs::perms(0755));
    EXPECT_EQ(status, 0);
    ExpectOldFiles(false); // the row of the cut list follows also when a program failed
    ExpectFitAgain();
}

TEST_F(BadFolder, AnIndexOfABrokenLengthIsToldAndLeftAlone)
{
    const std::string broken(100, 'X');
    Home.Write("prg/INDICE.PRG", broken);
    EXPECT_FALSE(Home.Convert(GoodDrawing, "BAD.DXF"));
    EXPECT_EQ(Home.Boxes, std::vector<std::string>{"!!! PROBLEM DETECTED WITH INDICE.PRG FILE !!!"});
    EXPECT_EQ(Home.Read(Index()), broken);
    EXPECT_TRUE(fs::exists(ProgramFile())) << "the program is still written";
    ExpectNoStrays();
    std::ofstream(Index(), std::ios::binary).flush();
    ExpectFitAgain();
}

TEST_F(BadFolder, AnIndexThatAnotherProgramHolds)
{
    MakeOldFiles();
    const int held = ::open(Index().c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(held, 0);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    EXPECT_FALSE(Home.Convert(Bad("NEW RIGHT HAND DOOR FRONT", 90), "BAD.DXF"));
    ::close(held);
    ExpectTold(Index().string() + ": in use by another program");
    EXPECT_EQ(Home.Boxes, std::vector<std::string>{"PROBLEM ACCESSING " + Index().string() + " FOR WRITE"});
    ExpectListed();
    ExpectOldFiles(false);
    ExpectFitAgain();
}

TEST_F(BadFolder, AnIndexThatAnotherProcessHoldsByARecordLock)
{
    MakeOldFiles();
    int ready[2], done[2];
    ASSERT_EQ(::pipe(ready), 0);
    ASSERT_EQ(::pipe(done), 0);
    const pid_t other = ::fork();
    if (other == 0) {
        const int file = ::open(Index().c_str(), O_RDWR);
        struct flock lock {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        char byte = ::fcntl(file, F_SETLK, &lock) == 0 ? 'k' : 'f';
        ::close(done[1]); // so that the end of the test is an end of file
        if (::write(ready[1], &byte, 1) == 1 && ::read(done[0], &byte, 1) >= 0)
            ::_exit(0);
        ::_exit(1);
    }
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    EXPECT_EQ(byte, 'k');
    EXPECT_FALSE(Home.Convert(Bad("NEW RIGHT HAND DOOR FRONT", 90), "BAD.DXF"));
    ::close(done[1]);
    ::close(done[0]);
    ::close(ready[0]);
    ::close(ready[1]);
    int status = -1;
    ::waitpid(other, &status, 0);
    EXPECT_EQ(status, 0);
    ExpectTold(Index().string() + ": in use by another program");
    ExpectOldFiles(false);
    ExpectFitAgain();
}

TEST_F(BadFolder, AnIndexThatIsNotWritable)
{
    MakeOldFiles();
    fs::permissions(Index(), fs::perms(0444));
    for (const fs::path& folder :
         {Home.Folder, Home.Programs, Home.Programs / "SRG", ProgramFile().parent_path()})
        fs::permissions(folder, fs::perms(0777));
    fs::permissions(ProgramFile(), fs::perms(0666));
    fs::permissions(List(), fs::perms(0666));
    const int status = InChild([&] {
        GiveUpRights();
        const bool converted = Home.Convert(Bad("NEW RIGHT HAND DOOR FRONT", 90), "BAD2.DXF", "BAD");
        EXPECT_FALSE(converted);
        EXPECT_EQ(Home.Boxes,
                  std::vector<std::string>{"PROBLEM ACCESSING " + Index().string() + " FOR WRITE"});
        ExpectTold(Index().string() + ": Permission denied");
        EXPECT_EQ(Run.FailedFiles.size(), 2U);
        return true;
    });
    EXPECT_EQ(status, 0);
    ExpectOldFiles(false);
    fs::permissions(Index(), fs::perms(0644));
    ExpectFitAgain();
}

TEST_F(BadFolder, ADiskThatFillsWhileTheProgramIsWritten)
{
    MakeOldFiles();
    std::string many =
        Instructions({"PTS NAME=NEW RIGHT HAND DOOR FRONT"}) + Rectangle("BORDER", 10, 20, 600, 400);
    for (int i = 0; i < 100; ++i)
        many += Circle("VBORE Z12", 20 + 5 * i, 70, 4);
    Home.Write("MANY.DXF", Drawing(many));
    const int status = InChild([&] {
        const rlimit limit{1024, 1024}; // bytes of a file: the program needs more, the index less
        ::setrlimit(RLIMIT_FSIZE, &limit);
        std::string job = FromHostPath(Place("MANY.DXF")) + "\xFF"
                                                            "BAD";
        Home.Lines.clear();
        ProcessDrawingFile(job);
        ReportMessage(2, "");
        ExpectTold(ProgramFile().string() + ": File too large");
        return true;
    });
    EXPECT_EQ(status, 0);
    ExpectOldFiles(false); // its row of the cut list still fits
    ExpectFitAgain();
}

TEST_F(BadFolder, ADiskWithoutAnyRoomLeavesAllThreeFiles)
{
    MakeOldFiles();
    Home.Write("NEW.DXF", Bad("NEW RIGHT HAND DOOR FRONT", 90));
    for (const rlim_t room : {rlim_t{0}, rlim_t{20}, rlim_t{32}}) {
        const int status = InChild([&] {
            const rlimit limit{room, room};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            std::string job = FromHostPath(Place("NEW.DXF")) + "\xFF"
                                                               "BAD";
            Home.Lines.clear();
            ProcessDrawingFile(job);
            ReportMessage(2, "");
            EXPECT_EQ(Run.RunFailed, True);
            EXPECT_TRUE(Holds(Home.ReportText(), ": File too large]")) << Home.ReportText();
            return true;
        });
        EXPECT_EQ(status, 0) << room;
        ExpectOldFiles();
    }
    ExpectFitAgain();
}

TEST_F(BadFolder, ADiskThatFillsWhileTheIndexIsWritten)
{
    MakeOldFiles();
    // 20 programs in the index: its new copy is longer than the program.
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(Home.Convert(GoodDrawing, "P" + std::to_string(i) + ".DXF"));
    OldIndex = Home.Read(Index());
    ASSERT_EQ(OldIndex.size(), 82U * 21);
    Home.Write("NEW.DXF", Bad("NEW RIGHT HAND DOOR FRONT", 90));
    const int status = InChild([&] {
        const rlimit limit{1024, 1024};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        std::string job = FromHostPath(Place("NEW.DXF")) + "\xFF"
                                                           "BAD";
        Home.Lines.clear();
        ProcessDrawingFile(job);
        ReportMessage(2, "");
        ExpectTold(Index().string() + ": File too large");
        return true;
    });
    EXPECT_EQ(status, 0);
    ExpectOldFiles(false);
    ExpectFitAgain();
}

TEST_F(BadFolder, AFullDiskAtTheCutListLeavesTheOldList)
{
    MakeOldFiles();
    const std::string name(600, 'N');
    Home.Write("NEW.DXF", Bad(name, 90));
    const int status = InChild([&] {
        const rlimit limit{512, 512};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        std::string job = FromHostPath(Place("NEW.DXF")) + "\xFF"
                                                           "OTHER";
        Home.Lines.clear();
        ProcessDrawingFile(job);
        ReportMessage(2, "");
        ExpectTold(Place("NEW.DXF") + ": " + List().string() + ": File too large");
        return true;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(Home.Read(List()), OldList);
    EXPECT_EQ(Home.Read(ProgramFile()), OldProgram);
    ExpectNoStrays();
}

} // namespace
} // namespace kv::test

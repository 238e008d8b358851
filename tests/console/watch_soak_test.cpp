// A dozen batches through the real `korvanti watch` with its real delays: failing drawings, a list and a
// drawing that are still being written, a trigger that comes too early, a folder that goes and comes
// back. No job is lost or done twice, each PROC.LST is right, and the process does not grow.
#include <csignal>

#include "console/watch_run.h"

using namespace console_test;

namespace {

constexpr long MostGrowth = 2048; // kB of resident memory between the third batch and the last

class WatchSoak : public Watch {
  protected:
    // One job more than once would stand twice in the report.
    int Converted() const
    {
        const std::string text = Contents(Output());
        int count = 0;
        for (std::size_t at = text.find("CONVERSION COMPLETED."); at != std::string::npos;
             at = text.find("CONVERSION COMPLETED.", at + 1))
            ++count;
        return count;
    }
    long ResidentKb() const
    {
        std::ifstream status("/proc/" + std::to_string(Child) + "/status");
        std::string word;
        long size = 0;
        while (status >> word)
            if (word == "VmRSS:")
                status >> size;
        return size;
    }
    // PROC.LST of a batch; what stood there before is taken away first.
    void ExpectProcessed(const std::string& processed, int converted)
    {
        ASSERT_TRUE(WaitForFile(Source("PROC.LST"))) << Contents(Output());
        ASSERT_EQ(Contents(Source("PROC.LST")), processed);
        Jobs += converted;
        fs::remove(Source("PROC.LST"));
    }
    bool Stands(const std::string& program) const
    {
        return fs::exists(Folder / "programs/SRG" / program.substr(0, 1) / program.substr(1));
    }

    int Jobs = 0; // that must have been converted so far
};

TEST_F(WatchSoak, TwelveBatchesLoseAndRepeatNoJob)
{
    Put(Source("bad.dxf"), "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
    StartWatch();
    PassWarmUp();
    // 1 and 2: plain, the second comes while the first runs.
    PutBatch("door.dxf ONE1\r\ndoor.dxf ONE2\r\ndoor.dxf ONE3\r\n");
    ASSERT_TRUE(WaitUntil([&] { return Stands("ONE1"); }));
    PutBatch("door.dxf TWO1\r\n");
    ExpectProcessed("ONE1\r\nONE2\r\nONE3\r\n", 3);
    ExpectProcessed("TWO1\r\n", 1);
    // 3: stops at its second job.
    PutBatch("door.dxf THREE1\r\nbad.dxf THREE2\r\ndoor.dxf THREE3\r\n");
    ExpectProcessed("THREE1\r\nTHREE2\r\n", 1);
    const long resident = ResidentKb();
    // 4: the list is written line by line, more slowly than the program looks.
    for (int i = 1; i <= 4; ++i) {
        std::ofstream(Source("BATCH.LST"), std::ios::app) << "door.dxf FOUR" + std::to_string(i) + "\r\n";
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
    ExpectProcessed("FOUR1\r\nFOUR2\r\nFOUR3\r\nFOUR4\r\n", 4);
    // 5: the drawing is written while its job waits for it.
    Put(Source("late.dxf"), BoredPanel().substr(0, 60));
    PutBatch("late.dxf FIVE1\r\n");
    ASSERT_TRUE(WaitForFile(Source("BATCH.RUN")));
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    Put(Source("late.dxf"), BoredPanel());
    ExpectProcessed("FIVE1\r\n", 1);
    // 6: the folder is away when the batch is due.
    fs::rename(Folder / "src", Folder / "away");
    Put(Folder / "away/BATCH.LST", "door.dxf SIX1\r\n");
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    EXPECT_FALSE(Stands("SIX1"));
    fs::rename(Folder / "away", Folder / "src");
    ExpectProcessed("SIX1\r\n", 1);
    // 7: the folder goes while it runs; what is not done is given back by hand as 8.
    Put(Source("slow.dxf"), BoredPanel().substr(0, 60)); // holds its job up for two seconds
    PutBatch("door.dxf SEVEN1\r\nslow.dxf SEVEN2\r\ndoor.dxf SEVEN3\r\n");
    ASSERT_TRUE(WaitForText(Source("BATCH.RUN"), "slow.dxf SEVEN2\r\ndoor.dxf SEVEN3\r\n"));
    fs::rename(Folder / "src", Folder / "away");
    ASSERT_TRUE(WaitForOutput("PROC.LST cannot be written")) << Contents(Output());
    Put(Folder / "away/slow.dxf", BoredPanel());
    fs::rename(Folder / "away", Folder / "src");
    fs::rename(Source("BATCH.RUN"), Source("BATCH.LST"));
    Jobs += 1;
    ExpectProcessed("SEVEN2\r\nSEVEN3\r\n", 2);
    // 9 to 12: one after the other as fast as it goes.
    for (int i = 9; i <= 12; ++i) {
        const std::string output = "LAST" + std::to_string(i);
        PutBatch("door.dxf " + output + "\r\n!HBDOFF\r\ndoor.dxf " + output + "B\r\n");
        ExpectProcessed(output + "\r\n" + output + "B\r\n", 2);
    }
    EXPECT_LE(ResidentKb(), resident + MostGrowth);
    ::kill(Child, SIGTERM);
    EXPECT_EQ(EndOf(Child), 1); // two jobs failed
    EXPECT_EQ(Converted(), Jobs) << Contents(Output());
    EXPECT_FALSE(Stands("THREE3"));
    for (const char* const program : {"ONE1", "ONE3", "TWO1", "THREE1", "FOUR4", "FIVE1", "SIX1", "SEVEN1",
                                      "SEVEN2", "SEVEN3", "LAST9", "LAST12B"})
        EXPECT_TRUE(Stands(program)) << program;
    EXPECT_FALSE(fs::exists(Source("BATCH.RUN")));
}

} // namespace

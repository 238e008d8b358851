// The judges themselves: each breach that they are there for is fed to them, and they find it.
#include "faults/judge.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "faults/memory_disk.h"
#include "faults/own_readers.h"
#include "faults/watch_ledger.h"
#include "support/index_row.h"

namespace fault_test {
namespace {

std::string Record(const char* name, const char* description = "OLD")
{
    return index_row::Bytes({name, description, 0, 'M', 1, 2, 3, 0x10, 'S'}, "01/02/25");
}

// A small shop before and after a run that replaces DOOR and makes SIDE.
class Judges : public testing::Test {
  protected:
    Judges()
    {
        Known.Before = {{IndexPlace, Record("ARCH") + Record("DOOR")},
                        {"CNC90/SORG/SRG/A/RCH", "arch"},
                        {"CNC90/SORG/SRG/D/OOR", "old door"},
                        {CutListPlace, "2.00, 1,M\r\nold row\r\n"},
                        {NotesPlace, "mine\r\n"},
                        {SettingsPlace, "settings"},
                        {"IN/BATCH.LST", "DOOR.DXF\r\nSIDE.DXF\r\n"}};
        Known.Once = Known.Before;
        Known.Once[IndexPlace] = Record("ARCH") + Record("DOOR", "NEW") + Record("SIDE");
        Known.Once["CNC90/SORG/SRG/D/OOR"] = "new door";
        Known.Once["CNC90/SORG/SRG/S/IDE"] = "side";
        Known.Once[CutListPlace] = "2.00, 2,M\r\nold row\r\nnew row\r\n";
        Known.Once[NotesPlace] = "mine\r\ntheirs\r\n";
        Known.OperatorLines = {"mine"};
        Now = Known.Once;
    }

    void ExpectFound(const std::string& finding) { EXPECT_EQ(JudgeKept(Known, Now), Findings{finding}); }

    Reference Known;
    Tree Now;
};

TEST_F(Judges, TakeBothUndisturbedTrees)
{
    EXPECT_EQ(JudgeKept(Known, Known.Before), Findings{});
    EXPECT_EQ(JudgeKept(Known, Known.Once), Findings{});
    EXPECT_EQ(JudgeDone(Known, Known.Once), Findings{});
    EXPECT_EQ(JudgeDone(Known, Known.Before).size(), 5U);
}

TEST_F(Judges, FindALostRecord)
{
    Now[IndexPlace] = Record("DOOR", "NEW") + Record("SIDE");
    ExpectFound(IndexPlace + ": record lost: ARCH");
}

TEST_F(Judges, FindAnIndexThatIsNotWhole)
{
    Now[IndexPlace].pop_back();
    ExpectFound(IndexPlace + ": holds no whole records");
    Now[IndexPlace] = std::string(164, '\0');
    ExpectFound(IndexPlace + ": holds no whole records");
    Now[IndexPlace] = "";
    EXPECT_EQ(JudgeKept(Known, Now).size(), 2U) << "two old records are lost";
}

TEST_F(Judges, FindARecordTwiceAndOneOutOfOrder)
{
    Now[IndexPlace] += Record("SIDE");
    ExpectFound(IndexPlace + ": two records: SIDE");
    Now[IndexPlace] = Record("SIDE") + Record("ARCH") + Record("DOOR", "NEW");
    ExpectFound(IndexPlace + ": records out of order");
}

TEST_F(Judges, FindARecordOfNoRun)
{
    Now[IndexPlace] = Record("ARCH") + Record("DOOR", "WRONG") + Record("SIDE");
    ExpectFound(IndexPlace + ": record of no run: DOOR");
}

TEST_F(Judges, FindARecordWithoutItsProgram)
{
    Now.erase("CNC90/SORG/SRG/S/IDE");
    ExpectFound(IndexPlace + ": record without its program: SIDE");
}

TEST_F(Judges, FindANewRecordOfAnOldProgram)
{
    Now["CNC90/SORG/SRG/D/OOR"] = "old door";
    ExpectFound(IndexPlace + ": new record, old program: DOOR");
}

TEST_F(Judges, FindPartsOfFilesAndFilesThatAreGone)
{
    Now["CNC90/SORG/SRG/D/OOR"] = "new d";
    ExpectFound("CNC90/SORG/SRG/D/OOR: bytes of no run (5)");
    Now = Known.Once;
    Now[SettingsPlace] = "";
    ExpectFound(SettingsPlace + ": bytes of no run (0)");
    Now.erase(SettingsPlace);
    ExpectFound(SettingsPlace + ": lost");
}

TEST_F(Judges, FindHalfAListOfStatesAndNoOther)
{
    const std::string place = "HOME/KVSTATES.TXT", head = "Korvanti drawing states 1\n";
    const std::string line = "IN/DOOR.DXF\t5 2026-01-01 00:00:00\t2026-01-01 00:00:01\twritten\t\tD/OOR\n";
    for (const std::string& whole : {head, head + line, head + line + line}) {
        Now[place] = whole;
        EXPECT_EQ(JudgeKept(Known, Now), Findings{}) << whole;
        EXPECT_EQ(StraysIn(Known, Now), Findings{}) << whole;
    }
    for (const std::string& half : {std::string(), head.substr(0, 9), head + line.substr(0, 20),
                                    head + line.substr(0, line.size() - 1), line, head + "\n"}) {
        Now[place] = half;
        ExpectFound(place + ": no whole list of states");
    }
}

TEST_F(Judges, FindLostRowsAndAHeadThatDoesNotCount)
{
    Now[CutListPlace] = "2.00, 1,M\r\nnew row\r\n";
    ExpectFound(CutListPlace + ": old rows lost");
    Now[CutListPlace] = "2.00, 1,M\r\nold row\r\nnew row\r\n";
    ExpectFound(CutListPlace + ": no whole list");
    Now[CutListPlace] = "2.00, 2,M\r\nold row\r\nnew r\r\n";
    ExpectFound(CutListPlace + ": row of no run: new r");
}

TEST_F(Judges, FindARowThatIsMissingOrTwice)
{
    Now[CutListPlace] = Known.Before[CutListPlace];
    EXPECT_EQ(JudgeDone(Known, Now), Findings{CutListPlace + ": row missing: new row"});
    Now[CutListPlace] = "2.00, 3,M\r\nold row\r\nnew row\r\nnew row\r\n";
    EXPECT_EQ(JudgeDone(Known, Now), Findings{CutListPlace + ": row 2 times: new row"});
    EXPECT_EQ(JudgeDone(Known, Now, 2, 2), Findings{});
}

TEST_F(Judges, FindTheOperatorsLinesLost)
{
    Known.Once[NotesPlace] = Now[NotesPlace] = "theirs\r\n"; // even if every run did it
    ExpectFound(NotesPlace + ": the operator's lines are lost");
}

TEST_F(Judges, FindWhatIsLeftOver)
{
    Now["CNC90/SORG/.kv-1-1.tmp"] = "";
    EXPECT_EQ(StraysIn(Known, Now), Findings{"CNC90/SORG/(own file): left over"});
    EXPECT_EQ(JudgeDone(Known, Now), Findings{"CNC90/SORG/(own file): left over"});
}

TEST_F(Judges, LeaveLocksAlone)
{
    Now["CNC90/SORG/.INDICE.PRG.lock"] = "7";
    EXPECT_EQ(StraysIn(Known, Now), Findings{});
    EXPECT_EQ(JudgeDone(Known, Now), Findings{});
}

TEST_F(Judges, WantTheFileAndTheSystemsWordsOnOneLine)
{
    const std::string index = "/r/" + IndexPlace;
    EXPECT_TRUE(TellsCause(Known, "x\n" + index + ": Permission denied\n", index, EACCES, "/r"));
    EXPECT_FALSE(TellsCause(Known, index + "\nPermission denied\n", index, EACCES, "/r"));
    EXPECT_FALSE(TellsCause(Known, index + ": NOT FOUND\n", index, EACCES, "/r"));
    EXPECT_FALSE(TellsCause(Known, "another.prg: Permission denied\n", index, EACCES, "/r"));
    EXPECT_TRUE(TellsCause(Known, index + ": Input/output error\n", "/r/CNC90/SORG/.kv-1-1.tmp", EIO, "/r"))
        << "of a file of the program's own the folder is enough";
}

TEST_F(Judges, FindALineOfABatchThatIsNowhere)
{
    Shop shop;
    shop.Jobs = {"DOOR.DXF", "SIDE.DXF"};
    shop.Programs = {"CNC90/SORG/SRG/D/OOR", "CNC90/SORG/SRG/S/IDE"};
    EXPECT_EQ(JudgeLedger(shop, Known, Known.Before, 0), Findings{});
    Now.erase("IN/BATCH.LST");
    EXPECT_EQ(JudgeLedger(shop, Known, Now, 0), Findings{});
    Now.erase("CNC90/SORG/SRG/S/IDE");
    EXPECT_EQ(JudgeLedger(shop, Known, Now, 0).size(), 1U);
    EXPECT_EQ(JudgeLedger(shop, Known, Now, 1).size(), 0U) << "it was reported as failed";
    Now["IN/BATCH.OLD"] = "side.dxf\r\n";
    EXPECT_EQ(JudgeLedger(shop, Known, Now, 0), Findings{});
}

// A file that is moved before it is flushed, and the same with the flush first.
TEST(MemoryDiskTest, ForgetsWhatWasNotFlushed)
{
    const Tree before = {{"a", "old"}};
    const DiskEvent make{'C', 7, 0, "t", "", ""}, write{'W', 7, 0, "t", "", "new!"},
        move{'R', 0, 0, "t", "a", ""}, flush{'F', 7, 0, "t", "", ""}, folder{'F', 1, 0, "", "", ""};
    MemoryDisk disk(before);
    disk.Do(make);
    disk.Do(write);
    disk.Do(move);
    EXPECT_EQ(disk.After(Forgets::Nothing, 0), (Tree{{"a", "new!"}}));
    EXPECT_EQ(disk.After(Forgets::AllUnflushed, 0), (Tree{{"a", "old"}}));
    EXPECT_EQ(disk.After(Forgets::UnflushedBytes, 0), (Tree{{"a", ""}}));
    EXPECT_EQ(disk.After(Forgets::BytesToZeros, 0), (Tree{{"a", std::string(4, '\0')}}));
    EXPECT_EQ(disk.After(Forgets::HalfOfBytes, 0), (Tree{{"a", "ne"}}));

    MemoryDisk careful(before);
    for (const DiskEvent& event : {make, write, flush, move})
        careful.Do(event);
    EXPECT_EQ(careful.After(Forgets::UnflushedBytes, 0), (Tree{{"a", "new!"}}));
    EXPECT_EQ(careful.After(Forgets::AllUnflushed, 0), (Tree{{"a", "old"}})) << "the folder is not flushed";
    careful.Do(folder);
    EXPECT_EQ(careful.After(Forgets::AllUnflushed, 0), (Tree{{"a", "new!"}}));
}

TEST(MemoryDiskTest, AFolderIsThereWhenTheOneAboveIsFlushed)
{
    MemoryDisk disk(Tree{});
    disk.Do({'D', 0, 0, "f", "", ""});
    disk.Do({'C', 7, 0, "f/a", "", ""});
    disk.Do({'F', 7, 0, "f/a", "", ""});
    disk.Do({'F', 8, 0, "f", "", ""});
    EXPECT_EQ(disk.After(Forgets::AllUnflushed, 0), Tree{});
    disk.Do({'F', 1, 0, "", "", ""});
    EXPECT_EQ(disk.After(Forgets::AllUnflushed, 0), (Tree{{"f/", ""}, {"f/a", ""}}));
}

} // namespace
} // namespace fault_test

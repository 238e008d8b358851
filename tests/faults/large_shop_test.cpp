// Shops that have grown for years: 100,000 records, 50,000 programs; and an index that a failed disk filled
// with NUL bytes. Looked at for what is written, not for the time it takes.
#include <algorithm>

#include "faults/disturbed_run.h"
#include "faults/own_readers.h"
#include "support/index_row.h"
#include "support/random_rounds.h"
#include "gtest/gtest.h"

namespace fault_test {
namespace {

class LargeShop : public testing::Test {
  protected:
    void SetUp() override { Present = ListOfDrawings("cnc90", Table.Root()); }

    // In the order of their names; half of them have their programs, all in a few folders.
    void Grow(int records)
    {
        std::string index;
        for (int i = 0; i < records; ++i) {
            const std::string number = std::to_string(1000000 + i).substr(1);
            const std::string name = std::string(1, static_cast<char>('A' + i * 26LL / records)) + number;
            index += index_row::Bytes({name.c_str(), "", 0, 'M', 1, 1, 1, 0x10, 'S'}, "01/02/25");
            if (i % 2 == 0)
                Present.Before["CNC90/SORG/SRG/" + name.substr(0, 1) + "/" + number] = "M2\r\n";
        }
        Present.Before[IndexPlace] = index;
    }

    std::string IndexNow() const { return FileBytes(Table.Root() / IndexPlace); }

    Bench Table;
    Shop Present;
};

TEST_F(LargeShop, KeepsEveryRecordAndSortsTheNewOnesIn)
{
    const int records = kv::test::Rounds(10000) >= 100000 ? 100000 : 10000;
    Grow(records);
    PutDown(Present.Before, Table.Root());
    const Ran ran = Table.Run(Present, Present.Call);
    EXPECT_EQ(ran.Status, 0) << ran.Said;

    const IndexFile before = ReadIndex(Present.Before[IndexPlace]), now = ReadIndex(IndexNow());
    ASSERT_TRUE(now.Whole);
    EXPECT_EQ(now.Rows.size(), static_cast<std::size_t>(records) + 4);
    std::size_t at = 0, fresh = 0;
    for (const IndexRow& row : now.Rows) {
        if (at < before.Rows.size() && row.Bytes == before.Rows[at].Bytes)
            ++at;
        else
            ++fresh;
    }
    EXPECT_EQ(at, before.Rows.size()) << "the old records, byte for byte, in their order";
    EXPECT_EQ(fresh, 4U);
    EXPECT_TRUE(std::is_sorted(now.Rows.begin(), now.Rows.end(),
                               [](const IndexRow& a, const IndexRow& b) { return a.Name < b.Name; }));
    for (const std::string& program : Present.Programs)
        EXPECT_TRUE(fs::exists(Table.Root() / program)) << program;
    std::cout << "[ FAULTS   ] " << records << " records: " << now.Rows.size() << " after 4 drawings\n";
}

// What a list asks of the disk for all its drawings, and not for each of them. Counted, since times say
// little on a machine that is busy.
TEST_F(LargeShop, AListReadsIndexFolderAndCutListForManyDrawingsTogether)
{
    constexpr long Drawings = 200;
    Grow(1000);
    const std::string panel = Present.Before["IN/side2.dxf"];
    Present.Call.resize(Present.Call.size() - Present.Jobs.size());
    for (int i = 0; i < Drawings; ++i) {
        const std::string name = "P" + std::to_string(1000 + i);
        std::string drawing = panel;
        const std::size_t at = drawing.find("NAME=SIDE2");
        ASSERT_NE(at, std::string::npos);
        drawing.replace(at, 10, "NAME=" + name);
        Present.Before["IN/" + name + ".dxf"] = drawing;
        Present.Call.push_back((Table.Root() / "IN" / (name + ".dxf")).string());
    }
    PutDown(Present.Before, Table.Root());
    const Ran ran = Table.Run(Present, Present.Call, {}, true);
    ASSERT_EQ(ran.Status, 0) << ran.Said;
    EXPECT_EQ(ReadIndex(IndexNow()).Rows.size(), 1000U + Drawings);
    const auto count = [&](const std::string& call, const std::string& place) {
        const std::string path = (Table.Root() / place).string();
        return std::count_if(ran.Calls.begin(), ran.Calls.end(), [&](const CountedCall& counted) {
            return counted.Name == call && counted.Path == path;
        });
    };
    // Every two seconds all that waits is placed: one journal each time.
    const auto placings = std::count_if(ran.Calls.begin(), ran.Calls.end(), [](const CountedCall& counted) {
        return counted.Name == "unlink" && counted.Path.ends_with("/.kv-INDICE.PRG.moves");
    });
    EXPECT_GE(placings, 1);
    EXPECT_LE(placings, Drawings / 10);
    for (const std::string& file : {IndexPlace, CutListPlace}) {
        EXPECT_GE(count("open", file), 1) << file;
        EXPECT_LE(count("open", file), 6 * placings + 2) << file;
        EXPECT_LE(count("read", file), 12 * placings + 4) << file;
    }
    EXPECT_GE(count("opendir", "CNC90/SORG/SRG/P"), 1);
    EXPECT_LE(count("opendir", "CNC90/SORG/SRG/P"), Drawings / 2);
    EXPECT_LE(count("opendir", "CNC90/SORG"), Drawings / 2);
    std::cout << "[ FAULTS   ] " << Drawings << " drawings: placed " << placings << " times, index opened "
              << count("open", IndexPlace) << " times, read " << count("read", IndexPlace)
              << " times, folder read " << count("opendir", "CNC90/SORG/SRG/P") << " times\n";
}

// Whole records of NUL bytes: no name of a record is above a new one, so the new ones come behind them.
TEST_F(LargeShop, AnIndexOfNulBytesKeepsItsLengthAndTakesTheNewRecords)
{
    const std::size_t old = 82U * static_cast<std::size_t>(std::min(kv::test::Rounds(100), 100000));
    Present.Before[IndexPlace] = std::string(old, '\0');
    PutDown(Present.Before, Table.Root());
    const Ran ran = Table.Run(Present, Present.Call);
    EXPECT_EQ(ran.Status, 0) << ran.Said;
    ASSERT_EQ(IndexNow().size(), old + 4 * 82U);
    EXPECT_EQ(IndexNow().substr(0, old), std::string(old, '\0'));
    const IndexFile fresh = ReadIndex(std::string_view(IndexNow()).substr(old));
    EXPECT_TRUE(fresh.Whole);
    for (const std::string& program : Present.Programs)
        EXPECT_TRUE(fs::exists(Table.Root() / program)) << program;
}

TEST_F(LargeShop, AnIndexOfNulBytesAndNoWholeRecordsIsLeftAndReported)
{
    Present.Before[IndexPlace] = std::string(4096, '\0');
    PutDown(Present.Before, Table.Root());
    const Ran ran = Table.Run(Present, Present.Call);
    EXPECT_EQ(IndexNow(), Present.Before[IndexPlace]);
    EXPECT_NE(ran.Said.find("PROBLEM DETECTED WITH INDICE.PRG FILE"), std::string::npos) << ran.Said;
    for (const std::string& program : Present.Programs)
        EXPECT_TRUE(fs::exists(Table.Root() / program)) << program;
}

} // namespace
} // namespace fault_test

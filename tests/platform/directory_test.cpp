// Listings of real folders: what a pattern counts, what an entry says, short names, order, drives.
#include "platform/directory.h"

#include <algorithm>
#include <ctime>

#include "platform/events.h"
#include "platform/listing_folder.h"
#include "support/answers.h"

namespace kv {
namespace {

class DirectoryListing : public ListingFolder {
  protected:
    std::vector<std::string> ShortNames(const std::string& pattern) const
    {
        std::vector<std::string> names;
        for (const DirectoryEntry& entry : Read(pattern))
            names.push_back(entry.ShortName);
        return names;
    }
};

TEST_F(DirectoryListing, APatternIsComparedWithoutCase)
{
    PutAll({"a.dxf", "B.DXF", "c.Dxf", "d.txt", "dxf"});
    EXPECT_EQ(Count("*.DXF"), 3);
    EXPECT_EQ(Count("*.dxf"), 3);
    EXPECT_EQ(LongNames("*.DXF"), (Texts{"B.DXF", "a.dxf", "c.Dxf"})); // in the order of the bytes
}

TEST_F(DirectoryListing, FoldersAreListedByThemselves)
{
    PutAll({"a.dxf", "D"});
    for (const char* const name : {"A", "b", "00"})
        std::filesystem::create_directory(Folder / name);
    Texts names;
    EXPECT_EQ(ReadFolders(PathOf(""), names).Is, Presence::There);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Texts{"00", "A", "b"}));
    EXPECT_EQ(ReadFolders(PathOf("none"), names).Is, Presence::NotThere);
    EXPECT_EQ(names, Texts{});
}

int PumpsOfListing = 0;

TEST_F(DirectoryListing, EventsRunWhileALargeFolderIsRead)
{
    for (int i = 0; i < 1000; ++i)
        PutFile("p" + std::to_string(i) + ".dxf", "x");
    Events.Pump = [] { ++PumpsOfListing; };
    EXPECT_EQ(Count("*.DXF"), 1000);
    const int atCount = PumpsOfListing;
    EXPECT_EQ(Read("*.DXF").size(), 1000U);
    Events.Pump = nullptr;
    EXPECT_EQ(atCount, 3);
    EXPECT_EQ(PumpsOfListing, 6);
}

TEST_F(DirectoryListing, StarsAndQuestionMarksStandForCharacters)
{
    PutAll({"CNC90", "CNC90.EXE", "CNC91.EXE", "XCNC90.EXE", "abcabd.t"});
    EXPECT_EQ(LongNames("CNC90*.*"), (Texts{"CNC90", "CNC90.EXE"}));
    EXPECT_EQ(LongNames("cnc9?.exe"), (Texts{"CNC90.EXE", "CNC91.EXE"}));
    EXPECT_EQ(LongNames("*abd*"), (Texts{"abcabd.t"}));
    EXPECT_EQ(LongNames("a*b?.t"), (Texts{"abcabd.t"}));
    EXPECT_EQ(Count("*.*"), 5);
    EXPECT_EQ(Count("*"), 5);
    EXPECT_EQ(Count("a*bx"), 0);
}

TEST_F(DirectoryListing, ALongerExtensionThatBeginsWithThePatternsIsCountedAndListedWithoutOne)
{
    PutAll({"a.dxf", "b.dxfx", "c.dxf~", "d.dx", "e.xdxf"});
    EXPECT_EQ(Count("*.DXF"), 3);
    const std::vector<DirectoryEntry> entries = Read("*.DXF");
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].Extension, "dxf");
    EXPECT_EQ(entries[1].LongName, "b.dxfx");
    EXPECT_EQ(entries[1].Extension, "");
    EXPECT_EQ(entries[2].Extension, "");
}

TEST_F(DirectoryListing, APatternThatNamesOneFileIsNotMetByALongerExtension)
{
    PutAll({"Temp.DXFX"});
    EXPECT_EQ(Count("Temp.DXF"), 0);
    EXPECT_FALSE(test::PatternStands(PathOf("Temp.DXF")));
}

TEST_F(DirectoryListing, AnEntrySaysSizeAndLocalTime)
{
    PutFile("a.dxf", std::string(70000, 'x'));
    std::tm local{};
    local.tm_year = 98; // 1998-07-04 13:05:09, on summer time where there is one
    local.tm_mon = 6;
    local.tm_mday = 4;
    local.tm_hour = 13;
    local.tm_min = 5;
    local.tm_sec = 9;
    test::StampFile(Folder / "a.dxf", local);
    DirectoryEntry expected;
    expected.ShortName = "A";
    expected.Extension = "dxf";
    expected.LongName = "a.dxf";
    expected.Year = 1998;
    expected.Month = 7;
    expected.Day = 4;
    expected.Hour = 13;
    expected.Minute = 5;
    expected.Second = 9;
    expected.Size = 70000;
    const std::vector<DirectoryEntry> entries = Read("*.dxf");
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_TRUE(entries[0] == expected);
}

TEST_F(DirectoryListing, AFileLargerThanALongStandsAsTheLargestLong)
{
    PutFile("big.dxf", "");
    std::filesystem::resize_file(Folder / "big.dxf", 5'000'000'000ULL); // a hole
    PutFile("edge.dxf", "");
    std::filesystem::resize_file(Folder / "edge.dxf", 2147483647ULL);
    const std::vector<DirectoryEntry> entries = Read("*.dxf");
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].Size, 2147483647);
    EXPECT_EQ(entries[1].Size, 2147483647);
}

TEST_F(DirectoryListing, ShortNamesAreUpperCaseWithoutBlanksAndPoints)
{
    PutAll({"Door.dxf", "a b.c.dxf", "eightchr.dxf"});
    EXPECT_EQ(ShortNames("*.dxf"), (Texts{"DOOR", "ABC", "EIGHTCHR"}));
}

TEST_F(DirectoryListing, LongBasesAreCutAndNumbered)
{
    PutAll({"kitchen door.dxf", "kitchen top.dxf", "kitchens.dxf", "ninechars.dxf"});
    EXPECT_EQ(ShortNames("*.dxf"), (Texts{"KITCHE~1", "KITCHE~2", "KITCHENS", "NINECH~1"}));
}

TEST_F(DirectoryListing, BeyondNineTheNumberTakesFurtherCharacters)
{
    for (int i = 10; i < 22; ++i)
        PutFile("Panelboard" + std::to_string(i) + ".dxf", "");
    PutFile("Panelforms.dxf", ""); // of another stem of six, of the same of five
    EXPECT_EQ(ShortNames("*.dxf"),
              (Texts{"PANELB~1", "PANELB~2", "PANELB~3", "PANELB~4", "PANELB~5", "PANELB~6", "PANELB~7",
                     "PANELB~8", "PANELB~9", "PANEL~10", "PANEL~11", "PANEL~12", "PANELF~1"}));
}

TEST_F(DirectoryListing, ShortNamesDifferWithinTheListing)
{
    PutAll({"A B.dxf", "AB.dxf", "ABCDEF~1.dxf", "abcdefghi.dxf", ".dxf"});
    // in the order of the bytes: ".dxf", "A B.dxf", "AB.dxf", "ABCDEF~1.dxf", "abcdefghi.dxf"
    EXPECT_EQ(ShortNames("*.dxf"), (Texts{"~1", "AB", "AB~1", "ABCDEF~1", "ABCDEF~2"}));
}

TEST_F(DirectoryListing, ThousandsOfLikeNamesGetThousandsOfShortNames)
{
    for (int i = 10000; i < 12500; ++i)
        PutFile("drawing no " + std::to_string(i) + ".dxf", "");
    Texts names = ShortNames("*.dxf");
    EXPECT_EQ(names[0], "DRAWIN~1");
    EXPECT_EQ(names[99], "DRAW~100");
    EXPECT_EQ(names[2499], "DRA~2500");
    std::sort(names.begin(), names.end());
    EXPECT_TRUE(std::adjacent_find(names.begin(), names.end()) == names.end());
}

TEST_F(DirectoryListing, FoldersAreNoFiles)
{
    std::filesystem::create_directories(Folder / "sub.dxf");
    PutFile("a.dxf", "x");
    EXPECT_EQ(Count("*.dxf"), 1);
    EXPECT_EQ(LongNames("*.dxf"), (Texts{"a.dxf"}));
    EXPECT_FALSE(test::PatternStands(PathOf("sub.dxf")));
    EXPECT_FALSE(test::PatternStands(PathOf("s*.dxf")));
}

TEST_F(DirectoryListing, AtMostSoManyEntriesAsAskedForAreRead)
{
    PutAll({"c.dxf", "a.dxf", "b.dxf"});
    EXPECT_EQ(LongNames("*.dxf", 2), (Texts{"a.dxf", "b.dxf"}));
    EXPECT_TRUE(LongNames("*.dxf", 0).empty());
    EXPECT_TRUE(LongNames("*.dxf", -1).empty());
}

TEST_F(DirectoryListing, AFolderThatIsNotThereHasNoFiles)
{
    EXPECT_EQ(Count("sub\\*.dxf"), 0);
    EXPECT_TRUE(Read("sub\\*.dxf").empty());
    EXPECT_FALSE(test::PatternStands(PathOf("") + "sub\\*.dxf"));
    EXPECT_EQ(test::Counted(""), 0);
}

TEST_F(DirectoryListing, TheFolderIsFoundWithoutCase)
{
    std::filesystem::create_directories(Folder / "Drawings");
    PutFile("Drawings/a.dxf", "x");
    EXPECT_EQ(Count("DRAWINGS\\*.DXF"), 1);
    EXPECT_TRUE(test::PatternStands(PathOf("") + "dRAWINGS\\A.DXF"));
}

TEST_F(DirectoryListing, ExistAnswersForNamesAndPatterns)
{
    PutAll({"BATCH.LST"});
    EXPECT_TRUE(test::PatternStands(PathOf("Batch.lst")));
    EXPECT_TRUE(test::PatternStands(PathOf("") + "*.LST"));
    EXPECT_TRUE(test::PatternStands(PathOf("") + "B?TCH.LST"));
    EXPECT_FALSE(test::PatternStands(PathOf("PROC.LST")));
    EXPECT_FALSE(test::PatternStands(PathOf("") + "P*.LST"));
    EXPECT_FALSE(test::PatternStands(""));
}

TEST_F(DirectoryListing, APathWithoutDriveStandsOnAGoodOne)
{
    EXPECT_TRUE(test::DriveStands("\\srv\\dxf\\"));
    EXPECT_TRUE(test::DriveStands("dxf"));
    EXPECT_TRUE(test::DriveStands(""));
}

} // namespace
} // namespace kv

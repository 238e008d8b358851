// Listings where a folder holds what Windows has not: links, pipes, names of any bytes, drives that are
// folders.
#include "platform/directory.h"

#include <sys/stat.h>

#include "platform/listing_folder.h"
#include "support/answers.h"

namespace kv {
namespace {

class PosixListing : public ListingFolder {};

TEST_F(PosixListing, ALinkIsWhatItLeadsTo)
{
    PutFile("real.txt", "12345");
    std::filesystem::create_directories(Folder / "sub");
    std::filesystem::create_symlink("real.txt", Folder / "file.dxf");
    std::filesystem::create_symlink("sub", Folder / "folder.dxf");
    std::filesystem::create_symlink("missing", Folder / "loose.dxf");
    EXPECT_EQ(Count("*.dxf"), 1);
    const std::vector<DirectoryEntry> entries = Read("*.dxf");
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].LongName, "file.dxf");
    EXPECT_EQ(entries[0].Size, 5);
}

TEST_F(PosixListing, APipeIsNoFile)
{
    ASSERT_EQ(::mkfifo((Folder / "pipe.dxf").c_str(), 0600), 0);
    EXPECT_EQ(Count("*.dxf"), 0);
    EXPECT_TRUE(Read("*.dxf").empty());
}

TEST_F(PosixListing, NamesThatNoPathOfTheProgramCanHoldAreLeftOut)
{
    PutAll({"T\xC3\xBCr.dxf", "\xD0\xB4.dxf", "back\\slash.dxf", "what?.dxf", "\xFF.dxf"});
    EXPECT_EQ(Count("*.dxf"), 3);
    EXPECT_EQ(LongNames("*.DXF"), (Texts{"T\xFCr.dxf", "_~7A0B824E.dxf", "d~9BC37E61.dxf"}));
    EXPECT_TRUE(test::PatternStands(PathOf("") + "t\xDCr.d*"));
}

TEST_F(PosixListing, ADriveIsGoodWhenItsFolderStands)
{
    std::filesystem::create_directories(Folder / "c");
    SetVariable("KORVANTI_DRIVES", Folder.string());
    EXPECT_TRUE(test::DriveStands("C:\\DXF\\"));
    EXPECT_TRUE(test::DriveStands("c:"));
    EXPECT_FALSE(test::DriveStands("D:\\DXF\\"));
    EXPECT_FALSE(test::DriveStands("1:\\"));
    SetVariable("KORVANTI_DRIVES", std::nullopt);
    EXPECT_FALSE(test::DriveStands("C:\\DXF\\"));
}

TEST_F(PosixListing, FilesOfADriveAreListed)
{
    std::filesystem::create_directories(Folder / "c" / "dxf");
    PutFile("c/dxf/a.dxf", "x");
    SetVariable("KORVANTI_DRIVES", Folder.string());
    EXPECT_EQ(test::Counted("C:\\DXF\\*.DXF"), 1);
}

} // namespace
} // namespace kv

// Many keys of a private-profile file at once: each as the single call would give and write it.
#include "platform/ini_file.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "state/settings_folder.h"

namespace kv {
namespace {

using IniEntries = SettingsFolder;

constexpr std::size_t Room = 80;

std::string Single(std::string_view key)
{
    std::string value;
    EXPECT_TRUE(ReadProfileString("ONE", key, "none", Room, IniPath, value).Is == Presence::There);
    return value;
}

TEST_F(IniEntries, AreReadAsSingleKeysAre)
{
    PutFile("KV90.INI",
            "A=before any section\r\n[ other ]\r\nA=other\r\n\r\n[ one ]\r\n;B=comment\r\n b  = two \r\n"
            "A=first\r\nA=second\r\nno key\r\nC=\r\n=nothing\r\n[Other]\r\nD=late\r\n[One]\r\nE=later\r\n");
    std::vector<ProfileEntry> entries = {{"a", ""}, {"B", "old"}, {"C", "old"}, {"D", "old"}, {"E", "old"}};
    EXPECT_TRUE(ReadProfileStrings("ONE", entries, "none", Room, IniPath).Is != Presence::CannotTell);
    EXPECT_EQ(entries[0].Value, "first");
    EXPECT_EQ(entries[1].Value, "two");
    EXPECT_EQ(entries[2].Value, "");
    EXPECT_EQ(entries[3].Value, "none");
    EXPECT_EQ(entries[4].Value, "none"); // the first section of a name counts
    for (const ProfileEntry& entry : entries)
        EXPECT_EQ(Single(entry.Key), entry.Value) << entry.Key;
}

TEST_F(IniEntries, OfAMissingFileAreTheMissingText)
{
    std::vector<ProfileEntry> entries = {{"A", "old"}};
    EXPECT_TRUE(ReadProfileStrings("One", entries, "none", 3, IniPath).Is != Presence::CannotTell);
    EXPECT_EQ(entries[0].Value, "no"); // cut like a value
}

TEST_F(IniEntries, AreWrittenInTheirOrderBehindTheSectionsLastLine)
{
    PutFile("KV90.INI", "[One]\r\nb=1\r\n\r\n[Two]\r\nC=9\r\n");
    EXPECT_TRUE(WriteProfileStrings("one", {{"A", "x"}, {"B", "2"}, {"C", "y"}}, IniPath).Ok());
    EXPECT_EQ(FileText("KV90.INI"), "[One]\r\nb=2\r\nA=x\r\nC=y\r\n\r\n[Two]\r\nC=9\r\n");
}

TEST_F(IniEntries, StartASectionOnce)
{
    EXPECT_TRUE(WriteProfileStrings("One", {{"A", "1"}, {"B", "2"}}, IniPath).Ok());
    EXPECT_EQ(FileText("KV90.INI"), "[One]\r\nA=1\r\nB=2\r\n");
}

TEST_F(IniEntries, ThatChangeNothingLeaveTheFileAlone)
{
    PutFile("KV90.INI", "[One]\r\nA=1\r\n");
    const auto before = std::filesystem::last_write_time(Folder / "KV90.INI") - std::chrono::hours(1);
    std::filesystem::last_write_time(Folder / "KV90.INI", before);
    EXPECT_TRUE(WriteProfileStrings("One", {{"A", "1"}}, IniPath).Ok());
    EXPECT_EQ(std::filesystem::last_write_time(Folder / "KV90.INI"), before);
    EXPECT_TRUE(WriteProfileStrings("One", {{"A", "2"}}, IniPath).Ok());
    EXPECT_NE(std::filesystem::last_write_time(Folder / "KV90.INI"), before);
}

TEST_F(IniEntries, AreRefusedWhereAFolderStands)
{
    std::filesystem::create_directories(Folder / "KV90.INI");
    EXPECT_FALSE(WriteProfileStrings("One", {{"A", "1"}}, IniPath).Ok());
}

} // namespace
} // namespace kv

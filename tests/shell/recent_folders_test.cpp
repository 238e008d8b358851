// The source folders that were used last, and the change to one of them.
#include "shell/recent_folders.h"

#include <algorithm>

#include "shell/unattended.h"

namespace kv {
namespace {

class RecentSourceFolders : public Unattended {
  protected:
    void SetUp() override
    {
        Unattended::SetUp();
#if !defined(_WIN32) // there it is the registry of the user who runs the tests
        ::setenv("XDG_CONFIG_HOME", (Here.Folder / "person").c_str(), 1);
#endif
    }
    void TearDown() override
    {
#if !defined(_WIN32)
        ::unsetenv("XDG_CONFIG_HOME");
#endif
        Unattended::TearDown();
    }
};

TEST_F(RecentSourceFolders, TheNewestComesFirstAndEachOnce)
{
    ASSERT_TRUE(NoteRecentFolder("C:\\ONE\\").Ok());
    ASSERT_TRUE(NoteRecentFolder("C:\\TWO").Ok());
    ASSERT_TRUE(NoteRecentFolder("c:\\one").Ok());
    const Names folders = RecentFolders();
    ASSERT_GE(folders.size(), 2U);
    EXPECT_EQ(folders[0], "c:\\one\\");
    EXPECT_EQ(folders[1], "C:\\TWO\\");
    EXPECT_EQ(std::ranges::count(folders, "C:\\ONE\\"), 0);
}

TEST_F(RecentSourceFolders, TenAreKept)
{
    for (int i = 0; i < 15; ++i)
        ASSERT_TRUE(NoteRecentFolder("C:\\D" + std::to_string(i) + "\\").Ok());
    const Names folders = RecentFolders();
    ASSERT_EQ(folders.size(), MostRecentFolders);
    EXPECT_EQ(folders.front(), "C:\\D14\\");
    EXPECT_EQ(folders.back(), "C:\\D5\\");
}

TEST_F(RecentSourceFolders, NoFolderIsNone)
{
    const Names before = RecentFolders();
    ASSERT_TRUE(NoteRecentFolder("  ").Ok());
    EXPECT_EQ(RecentFolders(), before);
}

TEST_F(RecentSourceFolders, ChangingToOneIsStoredAndListed)
{
    std::filesystem::create_directories(Here.Folder / "other");
    Here.Write("other/X.DXF", BoredPanel());
    ChangeSourceFolder(FromHostPath((Here.Folder / "other").string()));
    EXPECT_EQ(SourcePath(0), FromHostPath((Here.Folder / "other").string() + "/"));
    EXPECT_NE(Here.Read(Here.Folder / "KV90.INI").find("other"), std::string::npos);
    RefreshFileList();
    ASSERT_EQ(FileList.Rows.size(), 1U);
    EXPECT_EQ(FileList.Rows[0].Cells[1], "X.DXF");
}

TEST_F(RecentSourceFolders, NothingChangesWhileJobsRun)
{
    const std::string before = SourcePath(0);
    Shell.RunActive = true;
    ChangeSourceFolder("C:\\OTHER\\");
    EXPECT_EQ(SourcePath(0), before);
}

} // namespace
} // namespace kv

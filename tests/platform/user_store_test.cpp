// The user store: values come back by application, section and key; the folder is made when needed.
#include "platform/user_store.h"

#include "platform/scratch_folder.h"

namespace kv {
namespace {

class UserStore : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        SetVariable("XDG_CONFIG_HOME", (Folder / "config").string());
    }
};

TEST_F(UserStore, ValuesComeBackByApplicationSectionAndKey)
{
    EXPECT_EQ(GetUserSetting("ZLT", "KVFrmMain", "Top", "none"), "none");
    EXPECT_TRUE(SaveUserSetting("ZLT", "KVFrmMain", "Top", "120").Ok());
    EXPECT_TRUE(SaveUserSetting("ZLT", "AboutFrmMain", "Top", "-5").Ok());
    EXPECT_EQ(GetUserSetting("ZLT", "KVFrmMain", "Top", "none"), "120");
    EXPECT_EQ(GetUserSetting("ZLT", "AboutFrmMain", "Top", "none"), "-5");
    EXPECT_EQ(GetUserSetting("Other", "KVFrmMain", "Top", "none"), "none");
}

TEST_F(UserStore, AStoreThatCannotBeWrittenIsTold)
{
    PutFile("config", "a file where the folder should be");
    EXPECT_FALSE(SaveUserSetting("ZLT", "KVFrmMain", "Top", "120").Ok());
    EXPECT_EQ(GetUserSetting("ZLT", "KVFrmMain", "Top", "none"), "none");
}

TEST_F(UserStore, AfterAValueThatCouldNotBeReadNothingIsStored)
{
    std::filesystem::create_directories(Folder / "config" / "korvanti");
    std::filesystem::create_symlink("user.ini", Folder / "config" / "korvanti" / "user.ini");
    EXPECT_EQ(GetUserSetting("ZLT", "KVFrmMain", "Top", "none"), "none");
    std::filesystem::remove(Folder / "config" / "korvanti" / "user.ini"); // it can be read from now on
    EXPECT_FALSE(SaveUserSetting("ZLT", "KVFrmMain", "Top", "500").Ok());
    EXPECT_FALSE(std::filesystem::exists(Folder / "config" / "korvanti" / "user.ini"));
}

} // namespace
} // namespace kv

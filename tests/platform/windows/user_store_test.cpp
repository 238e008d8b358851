// The registry of the person at the machine, and a person who may not write there.
#include "platform/user_store.h"

#include <random>
#include <string>

#include <windows.h>

#include <gtest/gtest.h>

namespace kv {
namespace {

class RegistryStore : public testing::Test {
  protected:
    // An application that no program is.
    const std::string Application = "KVTest" + std::to_string(std::random_device{}());
    std::wstring KeyOf() const
    {
        return L"Software\\VB and VBA Program Settings\\" +
               std::wstring(Application.begin(), Application.end());
    }
    void TearDown() override { RegDeleteTreeW(HKEY_CURRENT_USER, KeyOf().c_str()); }
};

TEST_F(RegistryStore, ValuesComeBackByApplicationSectionAndKey)
{
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "500");
    EXPECT_TRUE(SaveUserSetting(Application, "KVFrmMain", "Top", "120"));
    EXPECT_TRUE(SaveUserSetting(Application, "AboutFrmMain", "Top", "-5"));
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "120");
    EXPECT_EQ(GetUserSetting(Application, "AboutFrmMain", "top", "500"), "-5"); // without case
    EXPECT_EQ(GetUserSetting(Application + "x", "KVFrmMain", "Top", "500"), "500");
    EXPECT_TRUE(SaveUserSetting(Application, "KVFrmMain", "Top", "T\xFCr"));
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "T\xFCr");
    EXPECT_TRUE(SaveUserSetting(Application, "KVFrmMain", "Top", ""));
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "");
}

TEST_F(RegistryStore, AValueStandsAsATextInTheApplicationsSection)
{
    EXPECT_TRUE(SaveUserSetting(Application, "KVFrmMain", "Left", "77"));
    wchar_t value[16] = {};
    DWORD bytes = sizeof value, type = 0;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, (KeyOf() + L"\\KVFrmMain").c_str(), L"Left", RRF_RT_ANY, &type,
                           value, &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(std::wstring(value), L"77");
}

TEST_F(RegistryStore, AValueThatIsNoTextIsMissing)
{
    const DWORD number = 7;
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, (KeyOf() + L"\\KVFrmMain").c_str(), L"Top", REG_DWORD,
                              &number, sizeof number),
              ERROR_SUCCESS);
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "500");
}

// The person's part of the registry is one that refuses every call.
TEST_F(RegistryStore, WithoutRightsNothingIsSavedAndTheMissingTextIsRead)
{
    HKEY gone = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, KeyOf().c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                              KEY_ALL_ACCESS, nullptr, &gone, nullptr),
              ERROR_SUCCESS);
    ASSERT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, KeyOf().c_str()), ERROR_SUCCESS);
    ASSERT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, gone), ERROR_SUCCESS);
    const bool saved = SaveUserSetting(Application, "KVFrmMain", "Top", "120");
    const std::string read = GetUserSetting(Application, "KVFrmMain", "Top", "500");
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(gone);
    EXPECT_FALSE(saved);
    EXPECT_EQ(read, "500");
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "500");
}

} // namespace
} // namespace kv

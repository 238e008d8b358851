// The registry of the person at the machine, and a person who may not write there.
#include "platform/user_store.h"

#include <random>
#include <string>

#include <windows.h>

#include <sddl.h>

#include <gtest/gtest.h>

#include "shell/start_up.h"

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

    // Of everybody, to a key that stands.
    static constexpr const wchar_t* NobodyMay = L"D:P(D;;KA;;;WD)";
    static constexpr const wchar_t* AllMayRead = L"D:P(A;;KR;;;WD)";
    static constexpr const wchar_t* AllMay = L"D:P(A;;KA;;;WD)";
    static void SetRights(const std::wstring& path, const wchar_t* rights)
    {
        HKEY key = nullptr; // the owner may always change them
        ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, WRITE_DAC, &key), ERROR_SUCCESS);
        PSECURITY_DESCRIPTOR described = nullptr;
        ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &described,
                                                                       nullptr),
                  0);
        EXPECT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, described), ERROR_SUCCESS);
        LocalFree(described);
        RegCloseKey(key);
    }
};

TEST_F(RegistryStore, ValuesComeBackByApplicationSectionAndKey)
{
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "500");
    EXPECT_TRUE(SaveUserSetting(Application, "KVFrmMain", "Top", "120").Ok());
    EXPECT_TRUE(SaveUserSetting(Application, "AboutFrmMain", "Top", "-5").Ok());
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "120");
    EXPECT_EQ(GetUserSetting(Application, "AboutFrmMain", "top", "500"), "-5"); // without case
    EXPECT_EQ(GetUserSetting(Application + "x", "KVFrmMain", "Top", "500"), "500");
    EXPECT_TRUE(SaveUserSetting(Application, "KVFrmMain", "Top", "T\xFCr").Ok());
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "T\xFCr");
    EXPECT_TRUE(SaveUserSetting(Application, "KVFrmMain", "Top", "").Ok());
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "");
}

TEST_F(RegistryStore, AValueStandsAsATextInTheApplicationsSection)
{
    EXPECT_TRUE(SaveUserSetting(Application, "KVFrmMain", "Left", "77").Ok());
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

TEST_F(RegistryStore, WithoutRightsNothingIsSavedAndTheMissingTextIsRead)
{
    ASSERT_TRUE(SaveUserSetting(Application, "KVFrmMain", "Top", "120").Ok());
    SetRights(KeyOf() + L"\\KVFrmMain", NobodyMay);
    EXPECT_FALSE(SaveUserSetting(Application, "KVFrmMain", "Top", "240").Ok());
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "500");
    SetRights(KeyOf() + L"\\KVFrmMain", AllMay);
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "120");
}

TEST_F(RegistryStore, WithTheRightToReadAloneTheOldValueStays)
{
    ASSERT_TRUE(SaveUserSetting(Application, "KVFrmMain", "Top", "120").Ok());
    SetRights(KeyOf() + L"\\KVFrmMain", AllMayRead);
    EXPECT_FALSE(SaveUserSetting(Application, "KVFrmMain", "Top", "240").Ok());
    EXPECT_EQ(GetUserSetting(Application, "KVFrmMain", "Top", "500"), "120");
    SetRights(KeyOf() + L"\\KVFrmMain", AllMay);
}

// The whole of the person's part refuses: the end reports it, the window stands where none was kept.
TEST_F(RegistryStore, AWindowWithoutRightsOpensAndClosesInItsDesignedPlace)
{
    HKEY closed = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, KeyOf().c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                              KEY_ALL_ACCESS, nullptr, &closed, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(closed);
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, KeyOf().c_str(), 0, KEY_QUERY_VALUE, &closed), ERROR_SUCCESS);
    ASSERT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, closed), ERROR_SUCCESS);
    EXPECT_FALSE(SaveWindowPosition("KVFrmMain", {120, 240}).Ok());
    const WindowPosition position = LoadWindowPosition("KVFrmMain", true);
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(closed);
    EXPECT_EQ(position.Top, 500); // twips
    EXPECT_EQ(position.Left, 500);
}

} // namespace
} // namespace kv

// The system's own private-profile calls and the program's understand each other's files: the shop's files
// were written by those calls, and the control's programs read with them what stands in TPA.INI.
#include "platform/ini_file.h"

#include <windows.h>
// That header renames the functions of ours.
#undef WriteProfileString

#include "platform/scratch_folder.h"

namespace kv {
namespace {

class SystemProfile : public ScratchFolder {
  protected:
    std::string Place() const { return (Folder / "TPA.INI").string(); }
    std::string SystemRead(const char* section, const char* key) const
    {
        char value[80] = {};
        GetPrivateProfileStringA(section, key, "END.-", value, sizeof value, Place().c_str());
        return value;
    }
    std::string ReadHere(const char* section, const char* key, const char* missing, std::size_t size) const
    {
        std::string value;
        EXPECT_TRUE(ReadProfileString(section, key, missing, size, PathOf("TPA.INI"), value).Is !=
                    Presence::CannotTell);
        return value;
    }
};

TEST_F(SystemProfile, ReadsWhatTheProgramWrites)
{
    PutFile("TPA.INI", "; control 4\r\n[edigraf-exec]\r\nExec=1\r\n\r\n[TPA]\r\nPath=C:\\TPA\r\n");
    EXPECT_TRUE(WriteProfileString("edigraf-exec", "Exec", "0", PathOf("TPA.INI")).Ok());
    EXPECT_TRUE(WriteProfileString("edigraf-conv", "Name", "DOOR 7", PathOf("TPA.INI")).Ok());
    EXPECT_TRUE(WriteProfileString("ConFiguration", "HBDGlue", " 1", PathOf("TPA.INI")).Ok());
    EXPECT_EQ(SystemRead("EDIGRAF-EXEC", "exec"), "0");
    EXPECT_EQ(SystemRead("edigraf-conv", "Name"), "DOOR 7");
    EXPECT_EQ(SystemRead("Configuration", "HBDGlue"), "1");
    EXPECT_EQ(SystemRead("TPA", "Path"), "C:\\TPA");
    EXPECT_EQ(SystemRead("TPA", "None"), "END.-");
    EXPECT_TRUE(FileText("TPA.INI").starts_with("; control 4\r\n"));
}

TEST_F(SystemProfile, WritesWhatTheProgramReads)
{
    ASSERT_NE(WritePrivateProfileStringA("Configuration", "LeadLength", "25.00", Place().c_str()), 0);
    ASSERT_NE(WritePrivateProfileStringA("Configuration", "MakeHBD", " 1", Place().c_str()), 0);
    ASSERT_NE(WritePrivateProfileStringA("PTSDATA", "Field1", "~Name", Place().c_str()), 0);
    const auto read = [&](const char* section, const char* key) {
        return ReadHere(section, key, "END.-", 80);
    };
    EXPECT_EQ(read("ConFiguration", "leadlength"), "25.00");
    EXPECT_EQ(read("ConFiguration", "MakeHBD"), "1");
    EXPECT_EQ(read("PTSDATA", "Field1"), "~Name");
    EXPECT_EQ(read("PTSDATA", "Field2"), "END.-");
}

TEST_F(SystemProfile, BothCutAt79Characters)
{
    PutFile("TPA.INI", "[A]\r\nlong=" + std::string(100, 'x') + "\r\n");
    EXPECT_EQ(SystemRead("A", "long"), std::string(79, 'x'));
    EXPECT_EQ(ReadHere("A", "long", "", 80), std::string(79, 'x'));
}

TEST_F(SystemProfile, AFileThatAnotherProgramHoldsForEverIsNotWritten)
{
    PutFile("TPA.INI", "[A]\r\nk=1\r\n");
    const HANDLE held = CreateFileW((Folder / "TPA.INI").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(WriteProfileString("A", "k", "2", PathOf("TPA.INI")).Ok());
    CloseHandle(held);
    EXPECT_EQ(FileText("TPA.INI"), "[A]\r\nk=1\r\n");
    EXPECT_EQ(Names(), std::vector<std::string>{"TPA.INI"});
}

TEST_F(SystemProfile, AReadOnlyFileIsNotWritten)
{
    PutFile("TPA.INI", "[A]\r\nk=1\r\n");
    SetFileAttributesW((Folder / "TPA.INI").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(WriteProfileString("A", "k", "2", PathOf("TPA.INI")).Ok());
    EXPECT_EQ(ReadHere("A", "k", "", 80), "1");
    SetFileAttributesW((Folder / "TPA.INI").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(Names(), std::vector<std::string>{"TPA.INI"});
}

} // namespace
} // namespace kv

// Settings that several processes store at the same time: each of their keys is there afterwards.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include "platform/file_lock.h"
#include "platform/paths.h"
#include "state/report.h"
#include "state/settings.h"
#include "support/scene.h"

using namespace kv;

namespace {

constexpr int Processes = 4, KeysOfEach = 40;

std::string KeyOf(int process, int number)
{
    return "Key" + std::to_string(process) + "x" + std::to_string(number);
}

[[noreturn]] void StoreKeys(int process)
{
    for (int number = 0; number < KeysOfEach; ++number)
        PutConfigValue(KeyOf(process, number), "1");
    ::_exit(StoringFault.Ok() ? 0 : 1);
}

std::string Told;

class SettingsProcesses : public testing::Test {
  protected:
    void SetUp() override
    {
        Place.Write("KV90.INI", "; of the shop\r\n[Configuration]\r\nLeadS= 1\r\n");
        SetExeFolder(Place.Folder.string());
        Told.clear();
        Report.ShowRow = [](const ReportRow& row) { Told += row.Text + "\n"; };
    }
    void TearDown() override
    {
        Report = {};
        SetExeFolder(Place.Folder.string()); // and no fault of this test
    }
    std::string Ini() const { return Place.Read(Place.Folder / "KV90.INI"); }

    test::Scene Place;
};

TEST_F(SettingsProcesses, NoneTakesAwayAKeyOfAnother)
{
    std::vector<int> children;
    for (int process = 0; process < Processes; ++process) {
        children.push_back(::fork());
        if (children.back() == 0)
            StoreKeys(process);
    }
    for (const int child : children) {
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const std::string ini = Ini();
    for (int process = 0; process < Processes; ++process)
        for (int number = 0; number < KeysOfEach; ++number)
            EXPECT_NE(ini.find("\r\n" + KeyOf(process, number) + "=1\r\n"), std::string::npos)
                << KeyOf(process, number);
    EXPECT_EQ(ini.find("; of the shop\r\n[Configuration]\r\nLeadS= 1\r\n"), 0U);
}

TEST_F(SettingsProcesses, AFileThatAnotherOneHoldsForLongIsLeftAndTold)
{
    const std::string before = Ini();
    FileLock other;
    ASSERT_EQ(other.TryLock(IniPath).Is, LockState::Taken);
    PutConfigValue("LeadS", " 0");
    EXPECT_EQ(Ini(), before);
    EXPECT_NE(Told.find("No setting is kept: " + ShownPath(IniPath) + ": in use by "), std::string::npos)
        << Told;
    other.Release();
    PutConfigValue("LeadS", " 0");
    EXPECT_TRUE(StoringFault.Ok());
    EXPECT_NE(Ini().find("LeadS= 0\r\n"), std::string::npos);
}

} // namespace

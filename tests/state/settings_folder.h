// A program folder of its own for each test that reads or writes settings files, and a Settings
// block as at program start; both are put back behind the test.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "platform/paths.h"
#include "state/settings.h"

namespace kv {

class SettingsFolder : public testing::Test {
  protected:
    void SetUp() override
    {
        const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
        Folder = std::filesystem::temp_directory_path() /
                 (std::string("kvset-") + test.test_suite_name() + "-" + test.name() + "-" +
                  std::to_string(std::random_device{}())); // the same test may run twice at once
        std::filesystem::create_directories(Folder);
        FolderBefore = ExeFolder;
        SetExeFolder(FromHostPath(Folder.string()));
        Config = Settings{};
    }
    void TearDown() override
    {
        Config = Settings{};
        SetExeFolder(FolderBefore);
        std::filesystem::remove_all(Folder);
    }

    void PutFile(const std::string& name, const std::string& contents) const
    {
        std::ofstream(Folder / name, std::ios::binary) << contents;
    }
    std::string FileText(const std::string& name) const
    {
        std::ifstream file(Folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    bool FileStands(const std::string& name) const { return std::filesystem::exists(Folder / name); }

    std::filesystem::path Folder;

  private:
    std::string FolderBefore;
};

} // namespace kv

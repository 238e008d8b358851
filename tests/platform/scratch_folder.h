// An empty folder of its own for each test that touches the disk, gone behind the test; the
// environment variables that a test sets are put back.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "platform/paths.h"
#include "support/host.h"

namespace kv {

class ScratchFolder : public testing::Test {
  protected:
    void SetUp() override
    {
        const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
        Folder = std::filesystem::canonical(std::filesystem::temp_directory_path()) /
                 (std::string("kvscratch-") + test.test_suite_name() + "-" + test.name() + "-" +
                  std::to_string(std::random_device{}())); // two runs at a time keep apart
        std::filesystem::create_directories(Folder);
    }
    void TearDown() override
    {
        for (const auto& [name, value] : VariablesBefore)
            test::SetHostVariable(name, value);
        std::filesystem::remove_all(Folder);
    }

    // Backslash path of an entry of the folder.
    std::string PathOf(const std::string& name) const { return FromHostPath((Folder / name).string()); }

    void PutFile(const std::string& name, const std::string& contents) const
    {
        std::ofstream(Folder / name, std::ios::binary) << contents;
    }
    std::string FileText(const std::string& name) const
    {
        std::ifstream file(Folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    // All names in the folder, so that a file left behind is seen.
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(Folder))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    void SetVariable(const std::string& name, const std::optional<std::string>& value)
    {
        const char* const before = std::getenv(name.c_str());
        VariablesBefore.try_emplace(name,
                                    before != nullptr ? std::optional<std::string>(before) : std::nullopt);
        test::SetHostVariable(name, value);
    }

    std::filesystem::path Folder;

  private:
    std::map<std::string, std::optional<std::string>> VariablesBefore;
};

} // namespace kv

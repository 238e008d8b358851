// Replays the fuzz corpus, what the fuzzer once found included, through the fuzz target's own entry.
// Behind each input a good drawing must still give its program: the process stays fit for work.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "../fuzz/convert_bytes.h"
#include "support/scene.h"
#include "support/source_files.h"

namespace kv {
namespace {

namespace fs = std::filesystem;
using test::FileBytes;
using test::SourceFolder;

std::vector<fs::path> Corpus()
{
    std::vector<fs::path> inputs;
    for (const fs::directory_entry& entry : fs::directory_iterator(SourceFolder / "fuzz" / "corpus"))
        inputs.push_back(entry.path());
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

class FuzzCorpus : public testing::Test {
  protected:
    void SetUp() override
    {
        const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
        Home = fs::temp_directory_path() / (std::string("kvfuzz-") + test.name());
        FolderBefore = ExeFolder;
    }
    void TearDown() override
    {
        test::ResetProcess();
        SetExeFolder(FolderBefore);
        fs::remove_all(Home);
    }

    fs::path Home;

  private:
    std::string FolderBefore;
};

TEST_F(FuzzCorpus, EveryInputLeavesTheProcessFitForTheNextDrawing)
{
    const std::vector<fs::path> inputs = Corpus();
    ASSERT_GE(inputs.size(), 20U);
    const std::string door = FileBytes(SourceFolder / "fuzz" / "corpus" / "door.dxf");
    fuzz::ConvertBytes(door, Home, 0);
    const std::string program = FileBytes(Home / "SORG" / "SRG" / "I" / "NPUT");
    ASSERT_FALSE(program.empty());
    for (const fs::path& input : inputs) {
        const std::string bytes = FileBytes(input);
        for (int system = 0; system < ControlSystems; ++system)
            fuzz::ConvertBytes(bytes, Home, system);
        fuzz::ConvertBytes(door, Home, 0);
        EXPECT_EQ(FileBytes(Home / "SORG" / "SRG" / "I" / "NPUT"), program) << input.filename();
    }
}

TEST_F(FuzzCorpus, DrawingsOfTheExamplesGiveTheirPrograms)
{
    for (const char* const name : {"door", "side", "bottom", "bottom_views", "panel_solid", "inch"}) {
        fuzz::ConvertBytes(FileBytes(SourceFolder / "fuzz" / "corpus" / (std::string(name) + ".dxf")), Home,
                           0);
        EXPECT_GT(FileBytes(Home / "SORG" / "INDICE.PRG").size(), 0U) << name;
        EXPECT_TRUE(fs::exists(Home / "SORG" / "SRG" / "I" / "NPUT")) << name;
    }
}

} // namespace
} // namespace kv

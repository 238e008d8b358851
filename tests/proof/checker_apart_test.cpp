// The checker shares nothing with what it checks: no file of it reads one of src/, by whatever way.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>

#include "support/source_files.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

struct IncludeWalk {
    std::set<fs::path> Seen;
    std::set<std::string> OfTheProduct;

    void Follow(const fs::path& file)
    {
        static const std::regex quoted(R"re(^#include "([^"]+)".*)re");
        if (!Seen.insert(file).second)
            return;
        std::ifstream text(file);
        std::smatch found;
        for (std::string line; std::getline(text, line);)
            if (std::regex_match(line, found, quoted)) {
                const std::string name = found[1];
                if (fs::exists(SourceFolder / "tests" / name))
                    Follow(SourceFolder / "tests" / name);
                else if (name.starts_with("machine/")) // reads programs back, and is walked too
                    Follow(SourceFolder / "src" / name);
                else
                    OfTheProduct.insert(file.filename().string() + " reads " + name);
            }
    }
};

TEST(CheckerApart, ReadersAndRegionsIncludeNothingOfTheProduct)
{
    IncludeWalk walk;
    for (const fs::path folder : {"src/machine", "tests/support/proof"})
        for (const auto& entry : fs::directory_iterator(SourceFolder / folder))
            walk.Follow(entry.path());
    EXPECT_GT(walk.Seen.size(), 15U);
    EXPECT_EQ(walk.OfTheProduct, std::set<std::string>());
}

TEST(CheckerApart, AnIncludeOfTheProductIsSeen)
{
    IncludeWalk walk;
    walk.Follow(SourceFolder / "tests" / "support" / "program_checker.h");
    EXPECT_EQ(walk.OfTheProduct, std::set<std::string>{"program_checker.h reads state/run.h"});
}

} // namespace
} // namespace kv::test

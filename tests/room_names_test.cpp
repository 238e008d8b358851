// Names within a room: the files of a folder may be compiled in one batch, where a function of one file
// could take the calls that another file means for its own. So no two of them define one name.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/source_files.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

// A function that begins a line with its return type: the layout that clang-format gives all of them.
const std::regex Definition(R"(^[A-Za-z_][A-Za-z0-9_:<>,*& ]*[ *&]([A-Z]\w*)\(.*)");

// Names of the functions that a file keeps to itself or defines for others.
std::vector<std::string> FunctionsOf(std::istream& contents)
{
    std::vector<std::string> names;
    std::string line;
    while (std::getline(contents, line)) {
        std::smatch found;
        if (line.empty() || line.back() == ';' || line.starts_with("TEST") || line.starts_with("return ") ||
            !std::regex_match(line, found, Definition))
            continue;
        names.push_back(found[1]);
    }
    return names;
}

std::vector<std::string> FunctionsOfText(const std::string& text)
{
    std::istringstream contents(text);
    return FunctionsOf(contents);
}

TEST(RoomNames, NoTwoFilesOfARoomDefineOneFunction)
{
    int functions = 0;
    for (const char* const tree : {"src", "tests"}) {
        std::map<std::string, std::string> files; // by room and function
        for (const auto& entry : fs::recursive_directory_iterator(test::SourceFolder / tree)) {
            if (entry.path().extension() != ".cpp")
                continue;
            std::ifstream contents(entry.path());
            const std::string file = entry.path().filename().string();
            for (const std::string& name : FunctionsOf(contents)) {
                ++functions;
                const std::string key = entry.path().parent_path().generic_string() + " " + name;
                const auto known = files.try_emplace(key, file).first;
                EXPECT_EQ(known->second, file)
                    << key << " is defined in both; name one more closely, or share it";
            }
        }
    }
    EXPECT_GT(functions, 1000); // else it looked in the wrong place
}

// Types of all rooms are in one namespace: two headers with one name would be one type to the linker.
TEST(RoomNames, NoTwoHeadersDefineOneType)
{
    const std::regex definition(R"(^(?:struct|class|enum class) (\w+)(?: final)?(?: : .*)? \{.*)");
    std::map<std::string, std::string> headers; // by type
    for (const auto& entry : fs::recursive_directory_iterator(test::SourceFolder / "src")) {
        if (entry.path().extension() != ".h")
            continue;
        std::ifstream contents(entry.path());
        std::string line;
        while (std::getline(contents, line)) {
            std::smatch found;
            if (!std::regex_match(line, found, definition))
                continue;
            const std::string file = entry.path().generic_string();
            EXPECT_EQ(headers.try_emplace(found[1], file).first->second, file) << found[1];
        }
    }
    EXPECT_GT(headers.size(), 100u); // else it looked in the wrong place
}

TEST(RoomNames, DefinitionsAreSeenAndCallsAreNot)
{
    EXPECT_EQ(FunctionsOfText("bool Touches(const PlanePoint& a, const GridPoint& b)\n{\n"),
              std::vector<std::string>{"Touches"});
    EXPECT_EQ(FunctionsOfText("std::vector<Piece> FindPieces()\n"), std::vector<std::string>{"FindPieces"});
    EXPECT_EQ(FunctionsOfText("QVBoxLayout* Column(QGroupBox* frame)\n"), std::vector<std::string>{"Column"});
    EXPECT_EQ(FunctionsOfText("Linking Begin(std::vector<Path>& paths,\n"),
              std::vector<std::string>{"Begin"});
    EXPECT_TRUE(FunctionsOfText("bool Declared(int a);\n    Touches(a, b)\n    return Place(x)\n"
                                "TEST(Suite, Name)\n")
                    .empty());
}

} // namespace
} // namespace kv

// The sources and the table of messages: each line that is told has a page, each page is told somewhere, and
// whoever tells one gives the values that its text wants.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "state/messages.h"
#include "support/source_files.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

std::string SourceText(const fs::path& path)
{
    return test::FileBytes(path);
}

std::map<std::string, long long> NumbersByName()
{
    std::map<std::string, long long> numbers;
    const std::string text = SourceText(test::SourceFolder / "src/state/message_numbers.h");
    const std::regex row(R"((\w+) = (\d+),)");
    for (std::sregex_iterator at(text.begin(), text.end(), row), end; at != end; ++at)
        numbers[(*at)[1]] = std::stoll((*at)[2]);
    return numbers;
}

// By the name of a message: the texts of all files that name it, together.
std::map<std::string, std::string> CallersByName()
{
    std::map<std::string, std::string> callers;
    const std::regex name(R"(Message::(\w+))");
    for (const auto& entry : fs::recursive_directory_iterator(test::SourceFolder / "src")) {
        const std::string file = entry.path().filename().string();
        if (!entry.is_regular_file() || file == "message_table.cpp")
            continue;
        const std::string text = SourceText(entry.path());
        std::set<std::string> names;
        for (std::sregex_iterator at(text.begin(), text.end(), name), end; at != end; ++at)
            names.insert((*at)[1]);
        for (const std::string& one : names)
            callers[one] += text;
    }
    callers.erase("None");
    return callers;
}

// Those that add what they know to the lines of others.
std::string SharedTellers()
{
    return SourceText(test::SourceFolder / "src/routes/pocket_values.cpp") +
           SourceText(test::SourceFolder / "src/drawing/doubt_lines.cpp") +
           SourceText(test::SourceFolder / "src/shell/trigger_files.cpp") +
           SourceText(test::SourceFolder / "src/shell/batch_safety.cpp");
}

TEST(MessageCalls, EachNumberHasAPageAndEachPageANumber)
{
    std::set<long long> numbers;
    for (const auto& [name, number] : NumbersByName()) {
        if (name == "None")
            continue;
        EXPECT_TRUE(numbers.insert(number).second) << name << " has the number of another";
        EXPECT_NE(FindPage(number), nullptr) << name;
    }
    EXPECT_EQ(numbers.size(), MessagePages().size());
}

TEST(MessageCalls, EachPageIsToldAndWhatIsToldHasAPage)
{
    const std::map<std::string, long long> numbers = NumbersByName();
    const std::map<std::string, std::string> callers = CallersByName();
    for (const auto& [name, number] : numbers)
        EXPECT_TRUE(name == "None" || callers.contains(name)) << name << " is told nowhere";
    for (const auto& [name, text] : callers)
        EXPECT_TRUE(numbers.contains(name)) << name;
    EXPECT_GT(callers.size(), 100U);
}

TEST(MessageCalls, WhoTellsAPageNamesItsValues)
{
    const std::string shared = SharedTellers();
    const std::regex place(R"(\{([a-z]+)\})");
    const std::map<std::string, long long> numbers = NumbersByName();
    for (const auto& [name, text] : CallersByName()) {
        const MessagePage* const page = FindPage(numbers.at(name));
        ASSERT_NE(page, nullptr) << name;
        const std::string wanted(page->Text);
        for (std::sregex_iterator at(wanted.begin(), wanted.end(), place), end; at != end; ++at) {
            const std::string value = "\"" + (*at)[1].str() + "\"";
            EXPECT_TRUE(text.find(value) != std::string::npos || shared.find(value) != std::string::npos)
                << name << " without " << value;
        }
    }
}

TEST(MessageCalls, LinesWithoutANumberAreBlankOrTheFrame)
{
    int calls = 0;
    const std::regex call(R"(ReportMessage\(\s*[13],\s*([^;]*)\);)");
    for (const auto& entry : fs::recursive_directory_iterator(test::SourceFolder / "src")) {
        if (!entry.is_regular_file() || entry.path().extension() != ".cpp")
            continue;
        const std::string text = SourceText(entry.path());
        for (std::sregex_iterator at(text.begin(), text.end(), call), end; at != end; ++at) {
            ++calls;
            const std::string line = (*at)[1];
            EXPECT_TRUE(line == "\"\"" || line.find("----***----") != std::string::npos)
                << entry.path() << ": " << line;
        }
    }
    EXPECT_EQ(calls, 2);
}

} // namespace
} // namespace kv

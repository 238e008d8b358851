// The floors of the house: a file includes only its own floor and those below, the platform layer
// nothing but itself and the standard library, and each outside library stays in its place.
// The checker is plain text work, so the last tests feed it breaches and see it tell them.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace kv {
namespace {

struct FloorRow {
    std::string_view Start; // of the path below src/
    int Floor;
};

// The first row that fits counts.
constexpr FloorRow Floors[] = {
    {"platform/", 1},       {"conversion/records.", 2},
    {"conversion/run.", 2}, {"shell/settings", 2}, // settings.*, settings_exchange.*, settings_grids.*
    {"shell/report.", 2},   {"conversion/job_driver.", 5},
    {"conversion/", 3},     {"geometry/", 3},
    {"optimizer/", 3},      {"writers/", 4},
    {"shell/forms/", 7},    {"shell/", 6},
    {"toolchain/", 6},      {"console/", 7},
    {"window/", 7},
};
constexpr int NoFloor = 0;

constexpr std::string_view StandardHeaders[] = {
    "algorithm",
    "any",
    "array",
    "atomic",
    "barrier",
    "bit",
    "bitset",
    "cassert",
    "cctype",
    "cerrno",
    "cfenv",
    "cfloat",
    "charconv",
    "chrono",
    "cinttypes",
    "climits",
    "cmath",
    "compare",
    "complex",
    "concepts",
    "condition_variable",
    "csignal",
    "cstdarg",
    "cstddef",
    "cstdint",
    "cstdio",
    "cstdlib",
    "cstring",
    "ctime",
    "deque",
    "exception",
    "filesystem",
    "forward_list",
    "fstream",
    "functional",
    "future",
    "initializer_list",
    "iomanip",
    "ios",
    "iosfwd",
    "iostream",
    "istream",
    "iterator",
    "limits",
    "list",
    "locale",
    "map",
    "memory",
    "memory_resource",
    "mutex",
    "new",
    "numbers",
    "numeric",
    "optional",
    "ostream",
    "queue",
    "random",
    "ranges",
    "ratio",
    "regex",
    "set",
    "shared_mutex",
    "source_location",
    "span",
    "sstream",
    "stack",
    "stdexcept",
    "streambuf",
    "string",
    "string_view",
    "system_error",
    "thread",
    "tuple",
    "type_traits",
    "typeinfo",
    "unordered_map",
    "unordered_set",
    "utility",
    "valarray",
    "variant",
    "vector",
    "version",
};

struct LibraryRow {
    std::string_view Start;  // of the header's name
    std::string_view Folder; // below src/, where it is at home
};

constexpr LibraryRow Libraries[] = {
    {"CLI/", "console/"},
    {"nlohmann/", "console/"},
    {"Q", "shell/forms/"},
    {"Q", "window/"},
};

constexpr std::string_view Backends[] = {"platform/posix/", "platform/windows/"};

// Names by which a preprocessor line asks which system it is.
constexpr std::string_view SystemNames[] = {
    "WIN32",      "WIN64",    "__linux",   "__unix",      "__APPLE__",   "__MACH__", "__MINGW",
    "__CYGWIN__", "_MSC_VER", "__ANDROID", "__FreeBSD__", "__OpenBSD__", "_POSIX_",  "Q_OS_",
};

int FloorOf(std::string_view file)
{
    for (const FloorRow& row : Floors) {
        if (file.starts_with(row.Start))
            return row.Floor;
    }
    return NoFloor;
}

std::string_view BackendOf(std::string_view file)
{
    for (const std::string_view backend : Backends) {
        if (file.starts_with(backend))
            return backend;
    }
    return {};
}

std::string FaultOfOwnHeader(std::string_view file, std::string_view header)
{
    const int floor = FloorOf(header);
    if (floor == NoFloor)
        return "includes a header that stands on no floor";
    if (floor > FloorOf(file))
        return "includes a higher floor";
    if (!BackendOf(header).empty() && BackendOf(header) != BackendOf(file))
        return "includes a header of a backend";
    return {};
}

std::string FaultOfLibraryHeader(std::string_view file, std::string_view header)
{
    if (!BackendOf(file).empty())
        return {};
    if (std::find(std::begin(StandardHeaders), std::end(StandardHeaders), header) !=
        std::end(StandardHeaders))
        return {};
    bool known = false;
    for (const LibraryRow& row : Libraries) {
        if (!header.starts_with(row.Start))
            continue;
        known = true;
        if (file.starts_with(row.Folder))
            return {};
    }
    return known ? "includes a library outside of its folder" : "includes a system's header";
}

// What the line breaks; empty when nothing.
std::string FaultOfLine(std::string_view file, std::string_view line)
{
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (!line.starts_with('#'))
        return {};
    line.remove_prefix(std::min(line.find_first_not_of("# \t"), line.size()));
    if (line.starts_with("include")) {
        const std::size_t open = line.find_first_of("\"<");
        const std::size_t close = line.find_last_of("\">");
        if (open == std::string_view::npos || close <= open)
            return "includes by a macro";
        const std::string_view header = line.substr(open + 1, close - open - 1);
        return line[open] == '"' ? FaultOfOwnHeader(file, header) : FaultOfLibraryHeader(file, header);
    }
    for (const std::string_view name : SystemNames) {
        if (line.find(name) != std::string_view::npos && BackendOf(file).empty())
            return "asks which system it is";
    }
    return {};
}

// One line for each breach: file, line, fault, the line itself.
std::vector<std::string> Breaches(std::string_view file, std::istream& contents)
{
    std::vector<std::string> breaches;
    if (FloorOf(file) == NoFloor)
        breaches.push_back(std::string(file) + ": stands on no floor");
    std::string line;
    for (int number = 1; std::getline(contents, line); ++number) {
        const std::string fault = FaultOfLine(file, line);
        if (!fault.empty())
            breaches.push_back(std::string(file) + ":" + std::to_string(number) + ": " + fault + ": " + line);
    }
    return breaches;
}

TEST(Floors, NoFileIncludesAHigherFloor)
{
    const std::filesystem::path root = std::filesystem::path(KORVANTI_SOURCE_DIR) / "src";
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        const std::string extension = entry.path().extension().string();
        if (!entry.is_regular_file() || (extension != ".h" && extension != ".cpp"))
            continue;
        ++files;
        std::ifstream contents(entry.path());
        ASSERT_TRUE(contents.good()) << entry.path().filename();
        for (const std::string& breach :
             Breaches(entry.path().lexically_relative(root).generic_string(), contents))
            ADD_FAILURE() << breach;
    }
    EXPECT_GT(files, 30); // else it looked in the wrong place
}

// Breaches of a file with one line.
std::vector<std::string> BreachesOf(std::string_view file, const std::string& line)
{
    std::istringstream contents(line + "\n");
    return Breaches(file, contents);
}

struct CheckRow {
    std::string_view File;
    std::string Line;
    std::string_view Fault; // empty: none
};

TEST(Floors, TheCheckerFindsEachKindOfBreach)
{
    const std::vector<CheckRow> rows = {
        {"platform/text.cpp", "#include \"conversion/run.h\"", "higher floor"},
        {"conversion/run.h", "#include \"conversion/border.h\"", "higher floor"},
        {"conversion/border.cpp", "  #  include \"writers/number_format.h\" // why not", "higher floor"},
        {"geometry/leads.cpp", "#include \"conversion/job_driver.h\"", "higher floor"},
        {"writers/cut_list.cpp", "#include \"conversion/job_driver.h\"", "higher floor"},
        {"conversion/job_driver.cpp", "#include \"shell/file_list.h\"", "higher floor"},
        {"shell/file_list.cpp", "#include \"console/calls.h\"", "higher floor"},
        {"geometry/leads.cpp", "#include \"leads.h\"", "no floor"},
        {"geometry/leads.cpp", "#include \"../writers/cut_list.h\"", "no floor"},
        {"geometry/leads.cpp", "#include <unistd.h>", "system's header"},
        {"platform/files.cpp", "#include <sys/stat.h>", "system's header"},
        {"shell/file_list.cpp", "#include <windows.h>", "system's header"},
        {"platform/paths.cpp", "#include \"platform/windows/wide_text.h\"", "of a backend"},
        {"platform/posix/paths.cpp", "#include \"platform/windows/wide_text.h\"", "of a backend"},
        {"shell/file_list.cpp", "#include <QWidget>", "outside of its folder"},
        {"shell/file_list.cpp", "#include <CLI/CLI.hpp>", "outside of its folder"},
        {"writers/cut_list.cpp", "#include <nlohmann/json.hpp>", "outside of its folder"},
        {"geometry/leads.cpp", "#include HEADER", "by a macro"},
        {"platform/clock.cpp", "#ifdef _WIN32", "which system"},
        {"console/main.cpp", "#if defined(__linux__)", "which system"},
        {"console/main.cpp", "#  elif _MSC_VER > 1900", "which system"},
    };
    for (const CheckRow& row : rows) {
        const std::vector<std::string> breaches = BreachesOf(row.File, row.Line);
        ASSERT_EQ(breaches.size(), 1u) << row.File << ' ' << row.Line;
        EXPECT_TRUE(breaches[0].starts_with(std::string(row.File) + ":1: ")) << breaches[0];
        EXPECT_NE(breaches[0].find(row.Fault), std::string::npos) << breaches[0];
    }
    EXPECT_EQ(BreachesOf("basement/a.cpp", "").size(), 1u);
}

TEST(Floors, TheCheckerLetsTheRestPass)
{
    const std::vector<CheckRow> rows = {
        {"platform/text.cpp", "#include \"platform/numbers.h\"", ""},
        {"platform/text.cpp", "#include <array>", ""},
        {"platform/posix/files.cpp", "#include <sys/stat.h>", ""},
        {"platform/windows/files.cpp", "#include \"platform/windows/wide_text.h\"", ""},
        {"platform/windows/files.cpp", "#ifdef _WIN32", ""},
        {"conversion/border.cpp", "#include \"shell/report.h\"", ""},
        {"conversion/border.cpp", "#include \"conversion/layer_rules.h\"", ""},
        {"writers/notes.cpp", "#include \"writers/program_file.h\"", ""},
        {"conversion/job_driver.cpp", "#include \"writers/cut_list.h\"", ""},
        {"console/main.cpp", "#include <CLI/CLI.hpp>", ""},
        {"shell/forms/main_window.cpp", "#include <QWidget>", ""},
        {"geometry/leads.cpp", "// #include \"writers/cut_list.h\"", ""},
        {"geometry/leads.cpp", "#pragma once", ""},
    };
    for (const CheckRow& row : rows)
        EXPECT_TRUE(BreachesOf(row.File, row.Line).empty()) << row.File << ' ' << row.Line;
}

} // namespace
} // namespace kv

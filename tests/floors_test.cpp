// The floors of the house: a file includes only its own room and those of the floors below, the
// platform layer nothing but itself and the standard library, and each outside library is in its place.
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
    std::string_view Room; // folder below src/, with all below it
    int Floor;
};

constexpr FloorRow Floors[] = {
    {"platform/", 1}, {"state/", 2},   {"geometry/", 3}, {"drawing/", 3}, {"import/", 4}, {"routes/", 4}, {"drilling/", 4},
    {"writers/", 5},  {"machine/", 5}, {"proof/", 6},    {"scene/", 6},   {"ledger/", 6}, {"toolchain/", 6},
    {"job/", 7},      {"shell/", 8},   {"console/", 9},  {"window/", 9},
};

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
    {"boost/polygon/", "geometry/"},
    {"boost/polygon/", "proof/"},
    {"CLI/", "console/"},
    {"nlohmann/", "console/"},
    {"Q", "window/"},
};

constexpr std::string_view Backends[] = {"platform/posix/", "platform/windows/"};

// Inner rooms: their headers are for their own files alone. What two of them share stands in the room
// around them.
constexpr std::string_view InnerRooms[] = {"platform/posix/", "platform/windows/", "writers/cnc/",
                                           "writers/evolution/", "writers/hbd/"};

// Names by which a preprocessor line asks which system it is.
constexpr std::string_view SystemNames[] = {
    "WIN32",      "WIN64",    "__linux",   "__unix",      "__APPLE__",   "__MACH__", "__MINGW",
    "__CYGWIN__", "_MSC_VER", "__ANDROID", "__FreeBSD__", "__OpenBSD__", "_POSIX_",  "Q_OS_",
};

const FloorRow* RoomOf(std::string_view file)
{
    for (const FloorRow& row : Floors) {
        if (file.starts_with(row.Room))
            return &row;
    }
    return nullptr;
}

bool IsOfBackend(std::string_view file)
{
    for (const std::string_view backend : Backends) {
        if (file.starts_with(backend))
            return true;
    }
    return false;
}

std::string FaultOfOwnHeader(std::string_view file, std::string_view header)
{
    const FloorRow* const room = RoomOf(file);
    const FloorRow* const other = RoomOf(header);
    if (other == nullptr)
        return "includes a header that is on no floor";
    if (room != nullptr && room != other && other->Floor >= room->Floor)
        return other->Floor > room->Floor ? "includes a higher floor" : "includes another room of its floor";
    for (const std::string_view inner : InnerRooms) {
        if (header.starts_with(inner) && !file.starts_with(inner))
            return "includes a header of an inner room";
    }
    return {};
}

std::string FaultOfLibraryHeader(std::string_view file, std::string_view header)
{
    if (IsOfBackend(file))
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
        if (line.find(name) != std::string_view::npos && !IsOfBackend(file))
            return "asks which system it is";
    }
    return {};
}

// One line for each breach: file, line, fault, the line itself.
std::vector<std::string> Breaches(std::string_view file, std::istream& contents)
{
    std::vector<std::string> breaches;
    if (RoomOf(file) == nullptr)
        breaches.push_back(std::string(file) + ": is on no floor");
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
        {"platform/text.cpp", "#include \"state/run.h\"", "higher floor"},
        {"state/run.h", "#include \"drawing/border.h\"", "higher floor"},
        {"drawing/border.cpp", "  #  include \"writers/number_format.h\" // why not", "higher floor"},
        {"routes/leads.cpp", "#include \"job/job_driver.h\"", "higher floor"},
        {"writers/cut_list.cpp", "#include \"job/job_driver.h\"", "higher floor"},
        {"job/job_driver.cpp", "#include \"shell/file_list.h\"", "higher floor"},
        {"shell/file_list.cpp", "#include \"console/calls.h\"", "higher floor"},
        {"drawing/border.cpp", "#include \"geometry/angles.h\"", "another room"},
        {"drilling/drill_tour.cpp", "#include \"routes/leads.h\"", "another room"},
        {"window/main.cpp", "#include \"console/calls.h\"", "another room"},
        {"writers/evolution/evolution_program.cpp", "#include \"writers/cnc/cnc_words.h\"", "inner room"},
        {"writers/program_file.cpp", "#include \"writers/cnc/cnc_writer.h\"", "inner room"},
        {"toolchain/viewers.cpp", "#include \"writers/hbd/hbd_scene.h\"", "inner room"},
        {"routes/leads.cpp", "#include \"leads.h\"", "no floor"},
        {"routes/leads.cpp", "#include \"../writers/cut_list.h\"", "no floor"},
        {"routes/leads.cpp", "#include <unistd.h>", "system's header"},
        {"platform/files.cpp", "#include <sys/stat.h>", "system's header"},
        {"shell/file_list.cpp", "#include <windows.h>", "system's header"},
        {"platform/paths.cpp", "#include \"platform/windows/wide_text.h\"", "inner room"},
        {"platform/posix/paths.cpp", "#include \"platform/windows/wide_text.h\"", "inner room"},
        {"shell/file_list.cpp", "#include <QWidget>", "outside of its folder"},
        {"shell/file_list.cpp", "#include <CLI/CLI.hpp>", "outside of its folder"},
        {"writers/cut_list.cpp", "#include <nlohmann/json.hpp>", "outside of its folder"},
        {"routes/leads.cpp", "#include HEADER", "by a macro"},
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
        {"drawing/border.cpp", "#include \"state/report.h\"", ""},
        {"drawing/border.cpp", "#include \"drawing/layer_rules.h\"", ""},
        {"writers/notes.cpp", "#include \"writers/program_file.h\"", ""},
        {"job/job_driver.cpp", "#include \"writers/cut_list.h\"", ""},
        {"writers/cnc/notes.cpp", "#include \"writers/cnc/cnc_words.h\"", ""},
        {"writers/cnc/notes.cpp", "#include \"writers/program_file.h\"", ""},
        {"drilling/drill_tour.cpp", "#include \"geometry/angles.h\"", ""},
        {"console/main.cpp", "#include <CLI/CLI.hpp>", ""},
        {"window/main_window.cpp", "#include <QWidget>", ""},
        {"routes/leads.cpp", "// #include \"writers/cut_list.h\"", ""},
        {"routes/leads.cpp", "#pragma once", ""},
    };
    for (const CheckRow& row : rows)
        EXPECT_TRUE(BreachesOf(row.File, row.Line).empty()) << row.File << ' ' << row.Line;
}

} // namespace
} // namespace kv

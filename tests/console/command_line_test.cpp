// The words of `korvanti` itself: help, version and wrong usage.
#include "console/console_run.h"

#include <regex>

using namespace console_test;

namespace {

class CommandLine : public Console {};

TEST_F(CommandLine, VersionOnOneLineWithTheCommitWhereItIsKnown)
{
    const Ended ended = Run({"--version"});
    EXPECT_EQ(ended.Status, 0);
    EXPECT_TRUE(std::regex_match(ended.Output,
                                 std::regex("korvanti [0-9]+\\.[0-9]+\\.[0-9]+( \\([0-9a-f]+\\+?\\))?\n")))
        << ended.Output;
}

TEST_F(CommandLine, HelpNamesCallsFolderAndExitStatus)
{
    const Ended ended = Run({"--help"});
    EXPECT_EQ(ended.Status, 0);
    EXPECT_EQ(ended.Errors, "");
    for (const char* const word :
         {"convert", "trace", "watch", "--home", "--version", "KORVANTI_HOME", "KV90.INI", "Ctrl-C"})
        EXPECT_TRUE(Holds(ended.Output, word)) << word;
}

TEST_F(CommandLine, HelpOfACallNamesItsOptions)
{
    const Ended convert = Run({"convert", "--help"});
    EXPECT_EQ(convert.Status, 0);
    for (const char* const word :
         {"DRAWING", "--output", "--system", "cnc90", "--set", "KEY=VALUE", "--report"})
        EXPECT_TRUE(Holds(convert.Output, word)) << word;
    const Ended trace = Run({"trace", "--help"});
    EXPECT_EQ(trace.Status, 0);
    for (const char* const word : {"--after", "entities layers border operations routes chained pockets tour "
                                              "optimized leads final"})
        EXPECT_TRUE(Holds(trace.Output, word)) << word;
}

TEST_F(CommandLine, WrongUsageIsTwoAndTellsWhereHelpIs)
{
    const std::vector<std::pair<Words, std::string>> wrong = {
        {{}, "korvanti --help"},
        {{"watch", "/X"}, "korvanti watch --help"},
        {{"--colour", "convert"}, "--colour"},
        {{"convert"}, "korvanti convert --help"},
        {{"trace"}, "korvanti trace --help"},
        {{"convert", "door.dxf", "--report", "xml"}, "xml"},
        {{"convert", "door.dxf", "--set"}, "--set"},
        {{"convert", "door.dxf", "-o"}, "--output"},
        {{"convert", "door.dxf", "-o", "a", "-o", "b"}, "--output"},
        {{"convert", "door.dxf", "--after", "final"}, "--after"},
    };
    for (const auto& [words, named] : wrong) {
        const Ended ended = Run(words);
        EXPECT_EQ(ended.Status, 2) << named;
        EXPECT_EQ(ended.Output, "") << named;
        EXPECT_TRUE(Holds(ended.Errors, named)) << ended.Errors;
    }
}

TEST_F(CommandLine, OneValueForEachSetSoThatDrawingsMayFollow)
{
    EXPECT_EQ(Run({"convert", "--set", "SawKerf=4", "door.dxf"}).Status, 0);
    EXPECT_TRUE(fs::exists(Folder / "programs/SRG/D/OOR"));
}

} // namespace

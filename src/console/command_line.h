// What a person typed, as plain fields: the calls of `korvanti`, their options and their help.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kv {

enum class Call {
    None,
    Convert,
    Place,
    Trace,
    Explain,
    Draw,
    Compare,
    Check,
    Prepare,
    Watch,
    Work
}; // None: help or version was shown, or the usage was wrong

constexpr int ExitConverted = 0;
constexpr int ExitSomeFailed = 1;
constexpr int ExitUsage = 2;
constexpr int SystemOfSettings = -1;

struct CommandLine {
    Call Asked = Call::None;
    int ExitStatus = ExitConverted; // for Call::None
    std::string Home;               // host path, empty when not given
    std::vector<std::string> Drawings;
    std::string Output; // as typed, empty when not given
    int System = SystemOfSettings;
    std::vector<std::pair<std::string, std::string>> Overrides; // setting key and value
    bool ReportJson = false;
    bool Strict = false;               // in Overrides too
    bool Check = false;                // in Overrides too
    std::string Program;               // to be checked instead of the drawing's, as typed
    double Tolerance = 0.1;            // of the check, mm
    int Jobs = 0;                      // processes of a list; 0: this one alone
    std::string Stage;                 // folder to be made, as typed
    long long Number = 1;              // of that stage in the list
    std::vector<std::string> Stages;   // to be placed, as typed
    bool AllowGaps = false;            // between their numbers
    std::vector<std::string> Work;     // words of a process of --jobs
    std::vector<std::string> After;    // stages of a trace; empty: all
    long long Explained = 0;           // number of a message
    bool ListsMessages = false;        // all of them instead
    std::string Page;                  // HTML file of explained drawings, as typed
    std::string Origin = "LL";         // corner that a drawn program counts from, where it does not say so
    int HbdEdge = 1;                   // that a drawn program of the horizontal drilling machine drills
    bool Over = false;                 // two drawn programs over each other
    std::vector<std::string> Switches; // of the unattended mode, as typed
};

// The words behind the program's name, in UTF-8.
CommandLine ReadCommandLine(std::vector<std::string> typed);

// Tells wrong usage on standard error, with the call whose help tells more.
void TellUsage(std::string_view cause, Call call);

} // namespace kv

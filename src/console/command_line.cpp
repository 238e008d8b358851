// The command line by CLI11: each call is a subcommand, each option has its line of help. Leaves the
// fields of CommandLine; help, version and wrong usage are told here and end the program.
#include "console/command_line.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <map>
#include <system_error>

#include "console/report_output.h"
#include "console/trace_stages.h"
#include "state/messages.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr const char* MainText = "Korvanti turns DXF panel drawings into programs for woodworking machines.";
constexpr const char* MainFooter =
    "\nThe program's folder holds KV90.INI: it is --home, else the variable KORVANTI_HOME, else the\n"
    "folder of the program when a KV90.INI stands there, else the user's configuration folder.\n"
    "Exit status: 0 all drawings converted (also those that give no program), 1 some failed (each is named\n"
    "on standard error), 2 wrong usage. Ctrl-C aborts the drawing and the list; a second Ctrl-C ends the\n"
    "program.";

constexpr const char* ConvertText = "Converts each drawing and prints the process report.";
constexpr const char* ConvertFooter =
    "\nOUTPUT is a program name (FRONT), a path with a name (out/FRONT) or a folder (out/), in which the\n"
    "program gets the drawing's name. With several drawings it must be a folder. Without it programs\n"
    "go to the folder that the settings name.\n"
    "KEY is a key of KV90.INI, such as SawKerf or DestinationPath90; the file stays as it is.\n"
    "With --jobs N processes convert the drawings; this one places them in the order of the list. With\n"
    "--stage nothing is placed: DIR, which is made, holds what `korvanti place` brings to its places. Both\n"
    "set CarryOver=clean: each drawing is converted as in a fresh process.\n"
    "After -- every word is a drawing, also one that begins with a dash.";

constexpr const char* PlaceText = "Brings drawings that convert --stage has converted to their places.";
constexpr const char* PlaceFooter =
    "\nThe drawings are placed in the order of the list: by the numbers of the stages (--number), within a\n"
    "stage as they were named. Programs, index, notes and cut lists become what one `korvanti convert` of\n"
    "the whole list would make of them. Nothing is placed when a stage was made by another version of the\n"
    "program or with other settings, is not whole, was placed before, or when numbers are missing between\n"
    "the stages. A stage whose placing was stopped is continued by the next call.";

constexpr const char* TraceText = "Prints the records of a conversion as they stand after its stages.";
constexpr const char* TraceFooter =
    "\nConverts each drawing up to the writers and prints the records and run variables as they stand\n"
    "after the named stages (all but the last, where none is named) as one JSON document; several drawings\n"
    "give an array of documents, in order. Records name the lines and handles of the entities that they "
    "come\n"
    "from. The last stage, programs, shows each line of the programs with the entities that it comes from.\n"
    "No file is written; report lines go to standard error.\n"
    "Behind -- every word is a drawing, also one that begins with a dash.\n"
    "Stages:";

constexpr const char* ExplainText =
    "Explains what became of each entity of a drawing, or what a message of the report means.";
constexpr const char* ExplainFooter = "\nDRAWING is converted in memory and nothing is written: the panel "
                                      "comes first, then each layer with the\n"
                                      "values that were read from its name and what became of its entities, "
                                      "texts, tools, programs, doubts and\n"
                                      "the sum. NUMBER prints the page of a message: its cause and its cure; "
                                      "the JSON report names the number of\n"
                                      "each line (convert --report json). --list prints the pages of all "
                                      "messages as docs/messages.md holds them.\n"
                                      "A drawing whose name is a number is written with its .DXF. Exit "
                                      "status: 0, or 1 when a drawing could not\n"
                                      "be converted.";

constexpr const char* DrawText = "Draws what programs make the machine do.";
constexpr const char* DrawFooter =
    "\nWHAT is a program of any control, or a DXF drawing: that is converted in memory, nothing is placed, "
    "and\n"
    "its programs are drawn. The face of the panel is drawn with its edges folded out beside it: bores in\n"
    "their diameter (filled through the panel, pale where they are not), saw cuts in their width, routes as\n"
    "what the tool sweeps, with leads, directions and rapid ways.\n"
    "FILE.svg is one picture (of further programs FILE-2.svg and so on), FILE.html a page with all of them,\n"
    "a slider over the program's lines, a legend and the text.\n"
    "With --over two programs of one panel (two drawings, or one of each) lie over each other: what only "
    "the\n"
    "first has is red and solid, what only the second has red and dashed, and standard output has the "
    "counts.\n"
    "Diameters that a program does not name are taken from DT.Par and Tools.cfg of the program's folder.\n"
    "A line that is not understood is named on standard error, and the rest is drawn. Exit status: 0, or 1\n"
    "when something could not be read, understood or written.";

constexpr const char* CheckText = "Proves that programs cut what their drawings ask for.";
constexpr const char* CheckFooter =
    "\nDRAWING is converted in memory, nothing is placed. Its programs are read back, and the wood that "
    "they\n"
    "cut is held against the wood that the drawing asks for: what is left standing and what is cut away is\n"
    "named with its place, depth and millimetres. What cannot be judged is named too.\n"
    "--program checks another program against the drawing, one that was edited by hand say.\n"
    "Exit status: 0, with --strict 1 when anything was found, or 1 when a drawing could not be converted.";

constexpr const char* CompareText = "Shows what each control would make of a drawing, side by side.";
constexpr const char* CompareFooter =
    "\nConverts DRAWING in memory for CNC90, GENESIS and Genesis Evolution and prints for each its "
    "programs,\n"
    "lines, bores, stops of the drills, saw cuts, routes, path length and an estimate of the time, the\n"
    "doubts and faults of its report, and those of them that the other controls do not have. Nothing is\n"
    "placed. With -o a page for a browser is written that has the table and the pictures of the programs.\n"
    "The time is an estimate from feeds and fixed times, good for comparing, not for a calendar.\n"
    "Exit status: 0, or 1 when a control could not be converted for.";

constexpr const char* PrepareText = "Writes what the import makes of a drawing, for a design program.";
constexpr const char* PrepareFooter =
    "\nCLEAN.dxf is a drawing of release 12 in which blocks are opened, splines and ellipses are lines and\n"
    "tangent arcs, mirrored entities lie in the plane, hidden ones are left out, and the border begins at\n"
    "zero or above: what `convert --import full` reads. Entities keep their handles; further ones of a "
    "block\n"
    "get new ones. What no program could use, dimensions say, is left out and counted.\n"
    "Exit status: 0, or 1 when the drawing could not be read or CLEAN.dxf not be written.";

constexpr const char* WatchText = "Runs the trigger files of the source folders without a window.";
constexpr const char* WatchFooter =
    "\nLooks every 500 ms for Temp.DXF or BATCH.LST in the source folders, runs what the settings allow and\n"
    "prints the process report as it comes. Ends with Ctrl-C or SIGTERM, or as its switches say:\n"
    "  /S  looks for BATCH.LST whatever the settings say, also for one that stood there before; the\n"
    "      program ends behind the first look\n"
    "  /K  ends the program after a batch\n"
    "  /V  shows the graphic after each job\n"
    "Any switch makes the program end after its fourth look at the folders, when nothing else did.\n"
    "Exit status: 0, or 1 when a job failed or was left, or when another watcher or a window uses the\n"
    "installation.";

struct Words {
    std::string Report = "text";
    std::string System;
    std::string Import;
    std::vector<std::string> Settings;
    std::vector<std::string> Explained;
};

const std::map<std::string, int> SystemNames = {{"cnc90", 0}, {"genesis", 1}, {"evolution", 2}};

void AddSpreading(CLI::App& convert, CommandLine& line)
{
    constexpr int MostJobs = 256;
    convert.add_option("--jobs", line.Jobs, "Processes that convert at the same time")
        ->type_name("N")
        ->check(CLI::Range(1, MostJobs));
    CLI::Option* const stage =
        convert.add_option("--stage", line.Stage, "Folder to make instead of placing anything")
            ->type_name("DIR");
    convert.add_option("--number", line.Number, "Place of this call in a list of stages; 1 when not given")
        ->type_name("K")
        ->check(CLI::NonNegativeNumber)
        ->needs(stage);
}

void AddStrict(CLI::App& call, CommandLine& line)
{
    call.add_flag("--strict", line.Strict,
                  "Fails each drawing with a doubt in its report; nothing of it is written");
}

void AddImport(CLI::App& call, Words& words)
{
    call.add_option("--import", words.Import,
                    "Blocks, splines and the like: read as they stand, reported, or brought in")
        ->check(CLI::IsMember({"plain", "told", "full"}));
}

void AddConvert(CLI::App& app, CommandLine& line, Words& words)
{
    CLI::App* const convert = app.add_subcommand("convert", ConvertText);
    convert->footer(ConvertFooter);
    convert->add_option("DRAWING", line.Drawings, "DXF drawings; .DXF is added to a name without it")
        ->required();
    convert->add_option("-o,--output", line.Output, "Name, path or folder of the program");
    convert->add_option("--system", words.System, "Machine control, instead of the one in the settings")
        ->check(CLI::IsMember({"cnc90", "genesis", "evolution"}));
    convert->add_option("--set", words.Settings, "Sets one setting for this call; may be given again")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    convert->add_option("--report", words.Report, "Form of the process report")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    AddStrict(*convert, line);
    convert->add_flag("--check", line.Check,
                      "Reads the programs back and reports where they do not cut what the drawing asks for");
    AddImport(*convert, words);
    AddSpreading(*convert, line);
}

void AddPlace(CLI::App& app, CommandLine& line, Words& words)
{
    CLI::App* const place = app.add_subcommand("place", PlaceText);
    place->footer(PlaceFooter);
    place->add_option("DIR", line.Stages, "Folders that convert --stage has made, in any order")->required();
    place->add_flag("--allow-gaps", line.AllowGaps,
                    "Places stages although numbers between theirs are missing");
    AddStrict(*place, line);
    place->add_option("--set", words.Settings, "Sets one setting for this call; may be given again")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    place->add_option("--report", words.Report, "Form of the process report")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
}

// Not for people: without a line of help.
void AddWork(CLI::App& app, CommandLine& line)
{
    CLI::App* const work = app.add_subcommand("work", "")->group("");
    work->add_option("WORDS", line.Work)->required();
}

// Under which a drawing is converted, for calls that write nothing.
void AddConditions(CLI::App& call, CommandLine& line, Words& words)
{
    call.add_option("-o,--output", line.Output, "Name, path or folder that the programs would go to");
    call.add_option("--system", words.System, "Machine control, instead of the one in the settings")
        ->check(CLI::IsMember({"cnc90", "genesis", "evolution"}));
    call.add_option("--set", words.Settings, "Sets one setting for this call; may be given again")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    AddImport(call, words);
}

void AddTrace(CLI::App& app, CommandLine& line, Words& words)
{
    CLI::App* const trace = app.add_subcommand("trace", TraceText);
    std::string footer = TraceFooter;
    for (const std::string& name : StageNames())
        footer += " " + name;
    trace->footer(footer);
    trace->add_option("DRAWING", line.Drawings, "DXF drawings; .DXF is added to a name without it")
        ->required();
    trace->add_option("--after", line.After, "Stage to show; may be given again")
        ->type_name("STAGE")
        ->allow_extra_args(false);
    AddConditions(*trace, line, words);
}

void AddExplain(CLI::App& app, CommandLine& line, Words& words)
{
    CLI::App* const explain = app.add_subcommand("explain", ExplainText);
    explain->footer(ExplainFooter);
    CLI::Option* const what =
        explain->add_option("WHAT", words.Explained, "Number of a message, or DXF drawings")->type_name("");
    explain->add_flag("--list", line.ListsMessages, "Prints the pages of all messages")->excludes(what);
    explain->add_option("--report", words.Report, "Form of the explanation of drawings")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    explain->add_option("--html", line.Page, "Writes the explanation of drawings as a page for a browser")
        ->type_name("FILE");
    AddConditions(*explain, line, words);
}

void AddDraw(CLI::App& app, CommandLine& line, Words& words)
{
    CLI::App* const draw = app.add_subcommand("draw", DrawText);
    draw->footer(DrawFooter);
    draw->add_option("WHAT", line.Drawings, "Programs, or DXF drawings by their names with .DXF")->required();
    draw->add_option("-o,--output", line.Output, "The picture: FILE.svg or FILE.html")
        ->type_name("FILE")
        ->required();
    draw->add_flag("--over", line.Over,
                   "Lays two programs of one panel over each other, with what differs in red");
    draw->add_option("--origin", line.Origin,
                     "Corner that a program counts from, where it does not say so (Genesis Evolution, HBD)")
        ->check(CLI::IsMember({"LL", "UL", "UR", "LR"}))
        ->capture_default_str();
    draw->add_option("--edge", line.HbdEdge, "Edge that a program of the horizontal drilling machine drills")
        ->type_name("N")
        ->check(CLI::Range(1, 4))
        ->capture_default_str();
    draw->add_option("--system", words.System,
                     "Machine control for drawings, instead of the one in the settings")
        ->check(CLI::IsMember({"cnc90", "genesis", "evolution"}));
    draw->add_option("--set", words.Settings, "Sets one setting for this call; may be given again")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    AddImport(*draw, words);
}

void AddCompare(CLI::App& app, CommandLine& line, Words& words)
{
    CLI::App* const compare = app.add_subcommand("compare", CompareText);
    compare->footer(CompareFooter);
    compare->add_option("DRAWING", line.Drawings, "DXF drawing; .DXF is added to a name without it")
        ->required()
        ->expected(1);
    compare->add_option("-o,--output", line.Output, "The page: FILE.html")->type_name("FILE");
    compare->add_option("--set", words.Settings, "Sets one setting for this call; may be given again")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    compare->add_option("--report", words.Report, "Form of the comparison")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    AddImport(*compare, words);
}

void AddCheck(CLI::App& app, CommandLine& line, Words& words)
{
    constexpr double leastTolerance = 0.02, mostTolerance = 10; // mm
    CLI::App* const check = app.add_subcommand("check", CheckText);
    check->footer(CheckFooter);
    check->add_option("DRAWING", line.Drawings, "DXF drawings; .DXF is added to a name without it")
        ->required();
    check->add_option("--program", line.Program, "Program to check instead of the drawing's own")
        ->type_name("FILE");
    check->add_option("--tolerance", line.Tolerance, "Millimetres that may be left or cut beyond")
        ->type_name("MM")
        ->check(CLI::Range(leastTolerance, mostTolerance))
        ->capture_default_str();
    check->add_option("--report", words.Report, "Form of the findings")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    check->add_flag("--strict", line.Strict, "Exit status 1 when anything was found");
    AddConditions(*check, line, words);
}

void AddPrepare(CLI::App& app, CommandLine& line, Words& words)
{
    CLI::App* const prepare = app.add_subcommand("prepare", PrepareText);
    prepare->footer(PrepareFooter);
    prepare->add_option("DRAWING", line.Drawings, "DXF drawing; .DXF is added to a name without it")
        ->required()
        ->expected(1);
    prepare->add_option("-o,--output", line.Output, "The drawing to write")
        ->type_name("CLEAN.dxf")
        ->required();
    prepare->add_option("--set", words.Settings, "Sets one setting for this call; may be given again")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
}

bool IsPageFile(const std::string& name)
{
    const std::string small = CLI::detail::to_lower(name);
    return small.ends_with(".html") || small.ends_with(".htm");
}

bool IsPictureFile(const std::string& name)
{
    return IsPageFile(name) || CLI::detail::to_lower(name).ends_with(".svg");
}

void AddWatch(CLI::App& app, CommandLine& line)
{
    CLI::App* const watch = app.add_subcommand("watch", WatchText);
    watch->footer(WatchFooter);
    watch->add_option("SWITCH", line.Switches, "/S, /K or /V, in any case and order")
        ->check(CLI::IsMember({"/S", "/K", "/V"}, CLI::ignore_case));
}

// Empty when all is well, else what is wrong.
std::string TakeSettings(const std::vector<std::string>& typed, CommandLine& line)
{
    for (const std::string& text : typed) {
        const std::size_t equals = text.find('=');
        if (equals == std::string::npos || equals == 0)
            return "--set takes KEY=VALUE, not \"" + text + "\"";
        line.Overrides.emplace_back(text.substr(0, equals), text.substr(equals + 1));
    }
    return {};
}

std::string TakeStages(const std::vector<std::string>& typed)
{
    const std::vector<std::string>& known = StageNames();
    for (const std::string& name : typed) {
        if (std::find(known.begin(), known.end(), name) != known.end())
            continue;
        std::string cause = "there is no stage \"" + name + "\"; stages are";
        for (const std::string& stage : known)
            cause += " " + stage;
        return cause;
    }
    return {};
}

bool IsNumber(const std::string& word)
{
    return !word.empty() &&
           std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string TakeExplained(const std::vector<std::string>& typed, CommandLine& line)
{
    if (line.ListsMessages)
        return {};
    if (typed.empty())
        return "the number of a message or a drawing is missing, or --list";
    const std::string& first = typed.front();
    if (typed.size() > 1 || !IsNumber(first)) {
        line.Drawings = typed;
        return {};
    }
    const char* const end = first.data() + first.size();
    const auto [rest, fault] = std::from_chars(first.data(), end, line.Explained);
    if (fault != std::errc() || rest != end || FindPage(line.Explained) == nullptr)
        return "there is no message \"" + first + "\"; explain --list prints all";
    return {};
}

CommandLine Refused(std::string_view cause, Call call)
{
    TellUsage(cause, call);
    CommandLine refused;
    refused.ExitStatus = ExitUsage;
    return refused;
}

Call CallOf(const CLI::App& app)
{
    if (app.got_subcommand("convert"))
        return Call::Convert;
    if (app.got_subcommand("watch"))
        return Call::Watch;
    if (app.got_subcommand("place"))
        return Call::Place;
    if (app.got_subcommand("work"))
        return Call::Work;
    if (app.got_subcommand("explain"))
        return Call::Explain;
    if (app.got_subcommand("draw"))
        return Call::Draw;
    if (app.got_subcommand("compare"))
        return Call::Compare;
    if (app.got_subcommand("check"))
        return Call::Check;
    if (app.got_subcommand("prepare"))
        return Call::Prepare;
    return app.got_subcommand("trace") ? Call::Trace : Call::None;
}

// A word that fits nowhere says more than what is missing for its sake.
std::string WhatIsWrong(const CLI::App& app, const CLI::ParseError& error)
{
    const std::vector<std::string> strays = app.remaining(true);
    if (strays.empty())
        return error.what();
    return "\"" + strays.front() + "\" is no word of this call" +
           (strays.front()[0] == '-' ? "; drawings that begin with a dash stand behind --" : "");
}

CommandLine ReadParsed(const CLI::App& app, CommandLine line, const Words& words)
{
    const Call call = CallOf(app);
    if (call == Call::None)
        return Refused("a call is missing, such as convert", call);
    std::string cause;
    if (call == Call::Explain)
        cause = TakeExplained(words.Explained, line);
    if (call == Call::Draw && !IsPictureFile(line.Output))
        cause = "-o of draw is FILE.svg or FILE.html, not \"" + line.Output + "\"";
    if (call == Call::Draw && cause.empty() && line.Over && line.Drawings.size() != 2)
        cause = "--over takes two programs or drawings, not " + std::to_string(line.Drawings.size());
    if (call == Call::Compare && !line.Output.empty() && !IsPageFile(line.Output))
        cause = "-o of compare is FILE.html, not \"" + line.Output + "\"";
    if (call == Call::Trace)
        cause = TakeStages(line.After);
    if (cause.empty())
        cause = TakeSettings(words.Settings, line);
    if (!cause.empty())
        return Refused(cause, call);
    if (call == Call::Check && !line.Program.empty() && line.Drawings.size() != 1)
        return Refused("--program goes with one drawing", call);
    if (line.Strict && call != Call::Check)
        line.Overrides.emplace_back("Strict", "yes");
    if (!words.Import.empty())
        line.Overrides.emplace_back("Import", words.Import);
    if (line.Check || call == Call::Check)
        line.Overrides.emplace_back("Check", "yes");
    line.Asked = call;
    line.ReportJson = words.Report == "json";
    if (!words.System.empty())
        line.System = SystemNames.at(words.System);
    return line;
}

} // namespace

void TellUsage(std::string_view cause, Call call)
{
    struct NameRow {
        Call Asked;
        const char* Name;
    };
    constexpr NameRow names[] = {{Call::Convert, " convert"}, {Call::Place, " place"},
                                 {Call::Trace, " trace"},     {Call::Explain, " explain"},
                                 {Call::Draw, " draw"},       {Call::Compare, " compare"},
                                 {Call::Check, " check"},     {Call::Watch, " watch"}};
    std::string text = "korvanti: ";
    text += cause;
    text += "\nkorvanti";
    for (const NameRow& row : names)
        text += row.Asked == call ? row.Name : "";
    text += " --help tells how it is called.\n";
    WriteAtOnce(text, stderr);
}

CommandLine ReadCommandLine(std::vector<std::string> typed)
{
    CommandLine line;
    Words words;
    CLI::App app(MainText, "korvanti");
    app.footer(MainFooter);
    app.set_version_flag("--version", "korvanti " + VersionAndCommit(),
                         "Prints version and commit of the source");
    app.add_option("--home", line.Home, "The program's folder")->type_name("DIR");
    app.require_subcommand(0, 1);
    app.allow_windows_style_options(false);
    AddConvert(app, line, words);
    AddPlace(app, line, words);
    AddWork(app, line);
    AddTrace(app, line, words);
    AddExplain(app, line, words);
    AddDraw(app, line, words);
    AddCompare(app, line, words);
    AddCheck(app, line, words);
    AddPrepare(app, line, words);
    AddWatch(app, line);
    try {
        std::reverse(typed.begin(), typed.end()); // taken from the back
        app.parse(std::move(typed));
    } catch (const CLI::Success& shown) { // help or version
        line.ExitStatus = app.exit(shown);
        return line;
    } catch (const CLI::ParseError& wrong) {
        return Refused(WhatIsWrong(app, wrong), CallOf(app));
    }
    return ReadParsed(app, std::move(line), words);
}

} // namespace kv

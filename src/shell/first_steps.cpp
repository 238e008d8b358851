#include "shell/first_steps.h"

#include "platform/directory.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "shell/control_tables.h"
#include "shell/file_list.h"
#include "shell/main_window_rules.h"
#include "shell/setup_rules.h"
#include "shell/start_up.h"
#include "state/report.h"
#include "state/settings.h"
#include "state/shell_state.h"

namespace kv {

namespace {

constexpr std::string_view IndexName = "INDICE.PRG";
constexpr Long MostExamples = 1000;

bool IsThere(const std::string& folder)
{
    return !folder.empty() && AskFolder(folder).Is != Presence::NotThere;
}

std::string SourceOfList()
{
    return WithBackslash(Trim(CurrentSourcePath()));
}

std::string ProgramFolder()
{
    return WithBackslash(Trim(DestinationPath(SelectedSystem())));
}

std::string NotThereLine(const std::string& folder)
{
    return folder.empty() ? std::string() : ShownPath(folder) + " is not there.";
}

std::string_view NameOfControl()
{
    return FindControl("SetUp", "FlgDDS(" + WholeText(SelectedSystem()) + ")")->Caption;
}

void TellNotMade(const std::string& path, const std::string& cause)
{
    TellAtOnce(Message::FileNotMade, {{"file", ShownPath(path)}, {"cause", cause}});
}

void CopyExample(const std::string& from, const std::string& to)
{
    if (AskFile(to).Is != Presence::NotThere)
        return;
    std::string contents;
    FileOutcome outcome = ReadWholeFile(from, contents);
    if (outcome.Ok())
        outcome = ReplaceFile(to, contents);
    if (!outcome.Ok())
        TellNotMade(to, outcome.Cause);
}

} // namespace

FirstSteps FirstStepsNow()
{
    FirstSteps steps;
    const std::string source = SourceOfList(), programs = ProgramFolder();
    const auto add = [&steps](const std::string& line) {
        if (!line.empty())
            steps.Lines.push_back(line);
    };
    if (IsThere(source)) {
        add("There is no DXF drawing in this folder.");
        steps.CopyExamples = !ExampleFolder().empty();
    } else {
        add(NotThereLine(source));
        add("Choose the folder of your drawings.");
    }
    steps.ChooseControl = !IsThere(programs);
    if (steps.ChooseControl) {
        add(NotThereLine(programs));
        add("Choose the folder of the control (" + std::string(NameOfControl()) + "; Setup has the others).");
    }
    steps.MakeIndex = !steps.ChooseControl && SelectedSystem() == 0 &&
                      AskFile(programs + std::string(IndexName)).Is == Presence::NotThere;
    if (steps.MakeIndex)
        add("The folder of the control has no INDICE.PRG.");
    steps.SetOrder = !EvolutionFramesShown() && Trim(Config.Sequence).empty();
    if (steps.SetOrder)
        add("No operation has a place in the sequence: programs would be empty.");
    return steps;
}

void UseUsualOrder()
{
    StoreSequence({SequencePlace('V'), SequencePlace('G'), SequencePlace('H'), SequencePlace('R')});
}

void ChangeProgramFolder(std::string_view folder)
{
    if (Shell.RunActive || Trim(folder).empty())
        return;
    DestinationPath(SelectedSystem()) = WithBackslash(Trim(folder));
    ExchangeSettings(true);
    TellIfNotWhole();
    ShellChanged();
}

void MakeIndexFile()
{
    const std::string path = ProgramFolder() + std::string(IndexName);
    if (!IsThere(ProgramFolder()) || AskFile(path).Is != Presence::NotThere)
        return;
    if (const FileOutcome outcome = ReplaceFile(path, {}); !outcome.Ok())
        TellNotMade(path, outcome.Cause);
}

void CopyExampleDrawings()
{
    const std::string from = ExampleFolder(), to = SourceOfList();
    std::vector<DirectoryEntry> drawings;
    if (Shell.RunActive || from.empty() || !IsThere(to) ||
        ReadFileX(from + "*.DXF", MostExamples, drawings).Is != Presence::There)
        return;
    for (const DirectoryEntry& drawing : drawings)
        CopyExample(from + drawing.LongName, to + drawing.LongName);
    RefreshFileList();
}

std::string ExampleFolder()
{
    // Beside the program, where a package of the system puts them, and in the tree that it was built in.
    constexpr std::string_view places[] = {"Example\\drawings\\", "..\\share\\korvanti\\examples\\drawings\\",
                                           "..\\..\\examples\\drawings\\",
                                           "..\\..\\..\\examples\\drawings\\"};
    for (const std::string_view place : places)
        if (std::string folder = FolderOf(ExeName()) + std::string(place);
            AskFolder(folder).Is == Presence::There)
            return folder;
    return {};
}

} // namespace kv

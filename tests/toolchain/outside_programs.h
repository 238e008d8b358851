// Programs, keys, pauses, questions and boxes of a test in one log, in the order in which they come.
#pragma once

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/keys.h"
#include "platform/numbers.h"
#include "platform/processes.h"
#include "platform/scratch_folder.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "toolchain/viewers.h"
#include "writers/program_writers.h"

namespace kv {

using LogLines = std::vector<std::string>;

struct OutsideWorld {
    LogLines Log, Report;
    Long NextHandle = 7;               // 0: nothing can be started
    std::string Starts;                // what alone can be started; empty: everything
    ProgramCall Words;                 // of the last start
    int PollsUntilEnd = 0;             // how often a started program is still active
    std::deque<Long> TitleLengths;     // answers of the focus test; 0 when empty
    std::deque<bool> Answers;          // of questions; No when empty
    std::function<void()> InTheEvents; // what happens while events run
};
inline OutsideWorld Outside;

// A folder of installations below drive C, and every hook in place.
class OutsidePrograms : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        SetVariable("KORVANTI_DRIVES", Folder.string());
        FolderBefore = ExeFolder;
        std::filesystem::create_directories(Folder / "c");
        Outside = OutsideWorld{};
        Config = Settings{};
        Config.GraphicDelay = "2";
        kv::Run = RunBlock{};
        Shell = ShellState{};
        SetExeFolder("C:\\KV90\\");
        LastProgram = {"DOOR", "C:\\PRG\\SRG\\D\\OOR", "OAK DOOR"};
        ResetViewers();
        ReportMessage(2, "");
        SetHooks();
    }
    void TearDown() override
    {
        ReportMessage(2, "");
        Processes = ProcessHooks{};
        Keys = KeyHooks{};
        Clock = ClockHooks{};
        Dialogs = DialogHooks{};
        Events = EventHooks{};
        Report = ReportHooks{};
        ShellWindow = ShellHooks{};
        Shell = ShellState{};
        kv::Run = RunBlock{};
        Config = Settings{};
        LastProgram = WrittenProgram{};
        ProgramList.clear();
        ResetViewers();
        SetExeFolder(FolderBefore);
        ScratchFolder::TearDown();
    }

    // `name` below drive C, with slashes.
    void Put(const std::string& name, const std::string& contents = "") const
    {
        std::filesystem::create_directories((Folder / "c" / name).parent_path());
        std::ofstream(Folder / "c" / name, std::ios::binary) << contents;
    }
    void MakeFolder(const std::string& name) const
    {
        std::filesystem::create_directories(Folder / "c" / name);
    }
    std::string Get(const std::string& name) const
    {
        std::ifstream file(Folder / "c" / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    bool Stands(const std::string& name) const { return std::filesystem::exists(Folder / "c" / name); }

  private:
    static void SetHooks()
    {
        Processes.Start = [](const ProgramCall& command) {
            const std::string line = CommandText(command);
            Outside.Log.push_back("start " + line);
            Outside.Words = command;
            const bool starts = Outside.Starts.empty() || line.starts_with(Outside.Starts);
            return starts ? Outside.NextHandle : Long{0};
        };
        Processes.ExitCode = [](Long handle) {
            Outside.Log.push_back("poll " + WholeText(handle));
            return Outside.PollsUntilEnd-- > 0 ? StillActive : Long{0};
        };
        Processes.Forget = [](Long handle) { Outside.Log.push_back("forget " + WholeText(handle)); };
        Keys.Send = [](std::string_view keys, bool wait) {
            Outside.Log.push_back("keys " + Spelled(keys) + (wait ? "" : " without waiting"));
        };
        Keys.FocusedTitleLength = [] {
            Outside.Log.push_back("focus");
            return TakeFirst(Outside.TitleLengths, Long{0});
        };
        Clock.Pause = [](double seconds) { Outside.Log.push_back("pause " + PlainText(ToSingle(seconds))); };
        Dialogs.Ask = [](std::string_view text, std::string_view title, std::string_view) {
            Outside.Log.push_back("ask " + std::string(title) + ": " + Spelled(text));
            return TakeFirst(Outside.Answers, false);
        };
        Dialogs.Box = [](std::string_view text, std::string_view title, BoxIcon) {
            Outside.Log.push_back("box " + std::string(title) + ": " + Spelled(text));
        };
        Events.Pump = [] {
            if (Outside.InTheEvents)
                Outside.InTheEvents();
        };
        Report.ShowRow = [](const ReportRow& row) { Outside.Report.push_back(row.Text); };
        ShellWindow.Changed = [] { Outside.Log.push_back(Shell.Form1Shown ? "shown" : "hidden"); };
    }
    template <typename Value> static Value TakeFirst(std::deque<Value>& values, Value otherwise)
    {
        if (values.empty())
            return otherwise;
        const Value first = values.front();
        values.pop_front();
        return first;
    }
    // Control characters as <15>.
    static std::string Spelled(std::string_view text)
    {
        std::string spelled;
        for (const char c : text) {
            if (static_cast<unsigned char>(c) < ' ')
                spelled += "<" + std::to_string(static_cast<int>(c)) + ">";
            else
                spelled += c;
        }
        return spelled;
    }

    std::string FolderBefore;
};

} // namespace kv

// An installation with real source folders for the run without a hand: a clock that does not wait, a
// list of its pauses, things that happen in a pause or between two events, programs that only pretend
// to start. Puts the shell's state back behind each test.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#if !defined(_WIN32)
#include <unistd.h>
#endif

#include "platform/clock.h"
#include "platform/events.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "shell/autostart.h"
#include "shell/conversion_start.h"
#include "shell/file_list.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "support/dxf.h"
#include "support/scene.h"
#include "toolchain/viewers.h"

namespace kv {

using Names = std::vector<std::string>;

// A panel 600 by 400 by 18 with one bore.
inline std::string BoredPanel(std::string_view more = "", std::string_view border = "BORDER_Z18")
{
    return test::Drawing(
        test::Polyline(border, {{0, 0}, {600, 0}, {600, 400}, {0, 400}}, test::Pair(70, "1")) +
        test::Circle("VBORE_Z12F3000", 100, 50, 4) + std::string(more));
}
// No border: its job fails.
inline std::string FailingDrawing()
{
    return test::Drawing(test::Circle("VBORE_Z12F3000", 100, 50, 4));
}

class Unattended : public testing::Test {
  protected:
    void SetUp() override
    {
        Now = this;
        ResetShell();
        std::filesystem::create_directories(Here.Folder / "src");
        for (int system = 0; system < ControlSystems; ++system)
            SourcePath(system) = FromHostPath((Here.Folder / "src").string() + "/");
        Config.Winner90 = true;
        Config.Genesis = Config.GenesisEV = false;
        Config.AutoStartTemp = Config.AutoStartBatch = false;
        Config.EditorPath = "C:\\CNC90\\";
        Config.Viewer = "view %1";
        Config.BatchLimit = "0";
        Config.GraphicAfterAuto = Config.GraphicAfterMan = Config.PauseForMessages = 0;
        Clock.Pause = [](double seconds) { Now->WhilePaused(seconds); };
        Clock.SecondsSinceMidnight = [] { return Now->Seconds; };
        Events.Pump = [] {
            if (Now->InTheEvents)
                Now->InTheEvents();
        };
        // Only the viewer of the settings is there.
        Processes.Start = [](const ProgramCall& command) {
            if (command.empty() || command[0] != "view")
                return Long{0};
            Now->Started.push_back(CommandText(command));
            return Long{7};
        };
        Processes.ExitCode = [](Long) { return Now->ExitCode; };
        Processes.Forget = [](Long handle) { Now->Forgotten.push_back(handle); };
        ShellWindow.Focus = [](FocusPlace place) { Now->Focused.push_back(place); };
    }
    void TearDown() override
    {
        ResetShell();
        Processes = ProcessHooks{};
        Now = nullptr;
    }

    static void ResetShell()
    {
        Shell = ShellState{};
        ShellWindow = ShellHooks{};
        FileList = FileListState{};
        FileListWindow = FileListHooks{};
        ResetAutostart();
        ResetViewers();
    }

    void WhilePaused(double seconds)
    {
        Pauses.push_back(seconds);
        Seconds += seconds;
        if (InThePause)
            InThePause(seconds);
        DoEvents();
    }

    // 500 ms and a tick.
    void Tick(int count = 1)
    {
        for (int i = 0; i < count; ++i) {
            Seconds += 0.5;
            AutostartTick();
        }
    }
    // The ticks after which jobs begin.
    void WarmUp() { Tick(3); }

    std::filesystem::path Source(const std::string& name = "") const { return Here.Folder / "src" / name; }
    void Put(const std::string& name, const std::string& contents) const
    {
        Here.Write("src/" + name, contents);
    }
    bool Stands(const std::string& name) const { return std::filesystem::exists(Source(name)); }
    std::string TextOf(const std::string& name) const { return Here.Read(Source(name)); }
    // How often a row of the report begins with the text.
    int Told(std::string_view head) const
    {
        int count = 0;
        for (const std::string& line : Here.Lines)
            count += line.starts_with(head) ? 1 : 0;
        return count;
    }
    // A folder of its own for a system.
    std::filesystem::path OwnFolder(int system, const std::string& name)
    {
        std::filesystem::create_directories(Here.Folder / name);
        SourcePath(system) = FromHostPath((Here.Folder / name).string() + "/");
        return Here.Folder / name;
    }
    void ListFiles(const Names& names)
    {
        for (const std::string& name : names) {
            FileRow row;
            row.Cells[1] = name;
            row.Selected = true;
            FileList.Rows.push_back(row);
        }
    }

    test::Scene Here;
    double Seconds = 36000; // since midnight
    std::vector<double> Pauses;
    std::function<void(double)> InThePause;
    std::function<void()> InTheEvents;
    Names Started;     // command lines
    Long ExitCode = 0; // of what was started
    std::vector<Long> Forgotten;
    std::vector<FocusPlace> Focused;

    static inline Unattended* Now = nullptr;

#if !defined(_WIN32) // where rights are no bits
    // Nothing can be made or deleted in the source folder while it lives, not even by root: root becomes
    // an ordinary person, to whom all of the scene belongs.
    struct ReadOnlyFolder {
        explicit ReadOnlyFolder(const Unattended& test) : Place(test.Source())
        {
            if (::geteuid() == 0) {
                for (const auto& entry : std::filesystem::recursive_directory_iterator(test.Here.Folder))
                    EXPECT_EQ(::lchown(entry.path().c_str(), Nobody, Nobody), 0);
                EXPECT_EQ(::seteuid(Nobody), 0);
            }
            std::filesystem::permissions(Place, std::filesystem::perms::owner_read |
                                                    std::filesystem::perms::owner_exec);
        }
        ~ReadOnlyFolder()
        {
            std::filesystem::permissions(Place, std::filesystem::perms::owner_all);
            if (::getuid() == 0) {
                EXPECT_EQ(::seteuid(0), 0);
            }
        }
        ReadOnlyFolder(const ReadOnlyFolder&) = delete;
        ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

        static constexpr uid_t Nobody = 65534;
        std::filesystem::path Place;
    };
#endif
};

} // namespace kv

// `korvanti watch` as a child of the test, with a source folder, its rows in a file, and waits with a
// limit for what it does.
#pragma once

#include <chrono>
#include <functional>
#include <thread>

#include "console/console_run.h"

namespace console_test {

class Watch : public Console {
  protected:
    void SetUp() override
    {
        Console::SetUp();
        fs::create_directories(Folder / "src");
        SetUpViewer("");
        fs::rename(Folder / "door.dxf", Source("door.dxf"));
    }
    void TearDown() override
    {
        if (Child > 0) { // a test that failed in the middle
            ::kill(Child, SIGKILL);
            EndOf(Child);
        }
        Console::TearDown();
    }

    // The settings, with the command line of the viewer.
    void SetUpViewer(const std::string& viewer) const
    {
        std::string keys = "[Configuration]\r\nWinner90=True\r\nAutoStartBatch=True\r\n";
        for (const char* const key : {"SourcePath90", "SourcePathGen", "SourcePathEV"})
            keys += std::string(key) + "=" + Source("").string() + "\r\n";
        keys += "DestinationPath90=" + (Folder / "programs").string() + "/\r\nEditorPath=C:\\CNC90\\\r\n";
        Put(Folder / "home/KV90.INI", keys + "[System]\r\nViewer=" + viewer + "\r\n");
    }

    fs::path Source(const std::string& name) const { return Folder / "src" / name; }
    fs::path Output() const { return Folder / "stdout"; }

    // In one step, as a careful program would.
    void PutBatch(const std::string& lines) const
    {
        Put(Source("BATCH.NEW"), lines);
        fs::rename(Source("BATCH.NEW"), Source("BATCH.LST"));
    }

    void StartWatch(const Words& switches = {})
    {
        Words words = {"watch"};
        words.insert(words.end(), switches.begin(), switches.end());
        std::ofstream(Output(), std::ios::trunc).flush();
        Child = ::fork();
        if (Child == 0) {
            ::dup2(::open(Output().c_str(), O_WRONLY | O_APPEND, 0600), 1);
            ::dup2(::open((Folder / "stderr").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
            // A sanitizer would keep what was freed, and the process would seem to grow.
            Become(Folder, Call(words),
                   {"ASAN_OPTIONS=quarantine_size_mb=0:thread_local_quarantine_size_kb=0"});
        }
    }
    int EndOf(int& child)
    {
        const int status = StatusOf(child);
        child = 0;
        return status;
    }

    static bool WaitUntil(const std::function<bool()>& holds, int seconds = 20)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
        while (!holds()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return true;
    }
    bool WaitForOutput(const std::string& part) const
    {
        return WaitUntil([&] { return Holds(Contents(Output()), part); });
    }
    static bool WaitForFile(const fs::path& path)
    {
        return WaitUntil([&] { return fs::exists(path); });
    }
    static bool WaitForText(const fs::path& path, const std::string& text)
    {
        return WaitUntil([&] { return Contents(path) == text; });
    }
    // Triggers that stand at start are set aside on the second tick, so nothing is put before.
    void PassWarmUp() const
    {
        Put(Source("BATCH.LST"), "\r\n");
        EXPECT_TRUE(WaitForOutput("Left from an earlier start and not run: BATCH.LST, which names no job"));
    }

    int Child = 0;
};

} // namespace console_test

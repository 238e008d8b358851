// A source folder with real files, the list as at program start and everything that the list tells a
// window, kept for the test.
#pragma once

#include <gtest/gtest.h>

#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "platform/dialogs.h"
#include "platform/events.h"
#include "shell/file_list.h"
#include "state/report.h"
#include "state/settings_folder.h"
#include "state/shell_state.h"
#include "support/host.h"

namespace kv {

class FileListScene : public SettingsFolder {
  protected:
    void SetUp() override
    {
        SettingsFolder::SetUp();
        Forget();
        MakeSource("dxf");
        UseSource("dxf");
        FileListWindow.RowsChanged = [] { ++RowsTold; };
        FileListWindow.SelectionChanged = [] { ++SelectionsTold; };
        Events.Pump = [] {
            ++Pumps;
            if (OnPump)
                OnPump();
        };
        Report.ShowRow = [](const ReportRow& row) { Lines.push_back(row.Text); };
        Dialogs.Ask = [](std::string_view text, std::string_view title, std::string_view detail) {
            Asked.push_back(std::string(title) + "|" + std::string(text));
            Details.emplace_back(detail);
            if (OnQuestion)
                OnQuestion();
            return Answer;
        };
        Dialogs.Box = [](std::string_view text, std::string_view title, BoxIcon) {
            Boxes.push_back(std::string(title) + "|" + std::string(text));
        };
        ShellWindow.Focus = [](FocusPlace place) { Focused.push_back(place); };
    }
    void TearDown() override
    {
        Forget();
        SettingsFolder::TearDown();
    }

    std::filesystem::path Source(const std::string& name) const { return Folder / name; }
    void MakeSource(const std::string& name) const { std::filesystem::create_directories(Source(name)); }
    void UseSource(const std::string& name) const
    {
        Config.SourcePath90 = FromHostPath(Source(name).string() + "/");
    }
    // A drawing of the folder "dxf".
    void PutDrawing(const std::string& name, std::size_t size = 1) const
    {
        PutFile("dxf/" + name, std::string(size, 'x'));
    }
    void RemoveDrawing(const std::string& name) const { std::filesystem::remove(Source("dxf") / name); }
    bool DrawingStands(const std::string& name) const { return FileStands("dxf/" + name); }
    // Local time of the last change.
    void StampDrawing(const std::string& name, int year, int month, int day, int hour, int minute,
                      int second) const
    {
        std::tm local{};
        local.tm_year = year - 1900;
        local.tm_mon = month - 1;
        local.tm_mday = day;
        local.tm_hour = hour;
        local.tm_min = minute;
        local.tm_sec = second;
        test::StampFile(Source("dxf") / name, local);
    }

    static std::vector<std::string> Column(std::size_t column)
    {
        std::vector<std::string> texts;
        for (const FileRow& row : FileList.Rows)
            texts.push_back(row.Cells[column - 1]);
        return texts;
    }
    static void Select(const std::string& longName)
    {
        for (FileRow& row : FileList.Rows)
            row.Selected = row.Selected || row.Cells[1] == longName;
    }
    static void PopupDelete()
    {
        FileList.DeleteAsked = true;
        FinishPopup();
    }

    using Texts = std::vector<std::string>;
    static inline int RowsTold, SelectionsTold, Pumps;
    static inline bool Answer;
    static inline std::function<void()> OnPump, OnQuestion;
    static inline Texts Lines, Asked, Details, Boxes; // details of what was asked
    static inline std::vector<FocusPlace> Focused;

  private:
    static void Forget()
    {
        FileList = {};
        FileListWindow = {};
        ShellWindow = {};
        Events = {};
        Report = {};
        Dialogs = {};
        RowsTold = SelectionsTold = Pumps = 0;
        Answer = false;
        OnPump = OnQuestion = nullptr;
        Lines.clear();
        Asked.clear();
        Details.clear();
        Boxes.clear();
        Focused.clear();
    }
};

} // namespace kv

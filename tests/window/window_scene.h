// The main window on an installation of its own: a source folder with drawings, a program folder of
// the control, a person who answers boxes, and pauses that only let events run.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <QApplication>
#include <QHeaderView>
#include <QTest>

#include "platform/clock.h"
#include "platform/events.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "shell/autostart.h"
#include "shell/control_tables.h"
#include "shell/conversion_start.h"
#include "shell/file_list.h"
#include "shell/start_up.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "support/dxf.h"
#include "support/scene.h"
#include "toolchain/viewers.h"
#include "window/boxes.h"
#include "window/controls.h"
#include "window/dialogs.h"
#include "window/main_window.h"

namespace kv {

struct PersonAtWindow {
    bool Yes = false;
    std::vector<std::string> Questions, Told; // texts
};
inline PersonAtWindow AtWindow;

class WindowTest : public testing::Test {
  protected:
    void SetUp() override
    {
        namespace fs = std::filesystem;
        Drawings = Place.Folder / "dxf";
        Programs = Place.Folder / "WINNER90";
        fs::create_directories(Drawings);
        fs::create_directories(Programs);
        std::ofstream(Programs / "INDICE.PRG", std::ios::binary).flush();
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString((Place.Folder / "config").string()));
        PutIni("Winner90=True\r\n");
        AtWindow = {};
        Person.Tell = [](const QString& text, const QString&, BoxIcon) {
            AtWindow.Told.push_back(text.toStdString());
        };
        Person.Ask = [](const QString& text, const QString&, const QString&) {
            AtWindow.Questions.push_back(text.toStdString());
            return AtWindow.Yes;
        };
        Clock.Pause = [](double) { DoEvents(); };
        FileList = {};
        Shell = {};
        Processes = {};
        ResetAutostart();
        ResetViewers();
        FontBefore = QApplication::font();
    }

    void TearDown() override
    {
        Window.reset();
        QApplication::setFont(FontBefore);
        Person = {TellInBox, AskInBox, ChooseFolderInBrowser};
        FileList = {};
        Shell = {};
        Processes = {};
    }

    // More lines of section "Configuration" beside the folders.
    void PutIni(const std::string& lines) const
    {
        const std::string programs = Programs.string() + "/", drawings = Drawings.string() + "/";
        std::string text = "[Configuration]\r\nMetric=Metric\r\nLeadLength=25.00\r\nLeadRampHeight=10.00\r\n"
                           "OffsetX=0.00\r\nOffsetY=0.00\r\nOffsetZ=0.00\r\nSequence=VHGR\r\n" +
                           lines;
        for (const char* const system : {"90", "Gen", "EV"})
            text += std::string("SourcePath") + system + "=" + drawings + "\r\nDestinationPath" + system +
                    "=" + programs + "\r\n";
        Place.Write("KV90.INI", text);
    }

    void PutDrawing(const std::string& name, const std::string& more = {}) const
    {
        using namespace test;
        const std::string border =
            Polyline("BORDER_Z18", {{0, 0}, {600, 0}, {600, 400}, {0, 400}}, Pair(70, "1"));
        std::ofstream(Drawings / name, std::ios::binary)
            << Drawing(border + Circle("VBORE_Z12F3000", 100, 50, 4) + more);
    }

    // As RunWindow does behind the About window, at a size that fits a screen of 1024 by 768.
    void Open(QSize size = {1024, 735})
    {
        Window = std::make_unique<MainWindow>();
        LoadDialogs(*Window);
        StartShell();
        Window->ShowLoaded();
        Window->resize(size);
        Window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window.get()));
        RefreshFileList();
        QApplication::processEvents();
    }

    // Row by its text in column "File"; -1 none.
    int RowOf(const std::string& name) const
    {
        for (int row = 0; row < Window->List1->Model.rowCount(); ++row) {
            if (Text(row, 3) == name)
                return row;
        }
        return -1;
    }
    std::string Text(int row, int column) const
    {
        return Ansi(Window->List1->Model.index(row, column - 1).data().toString());
    }
    QPoint PointOf(int row) const
    {
        return Window->List1->visualRect(Window->List1->Model.index(row, 2)).center();
    }
    void ClickRow(const std::string& name, Qt::KeyboardModifiers keys = {}) const
    {
        ASSERT_GE(RowOf(name), 0) << name;
        QTest::mouseClick(Window->List1->viewport(), Qt::LeftButton, keys, PointOf(RowOf(name)));
    }

    template <class Widget> Widget* Find(std::string_view name) const
    {
        return Window->findChild<Widget*>(Shown(name));
    }

    std::vector<std::string> ReportLines() const
    {
        QApplication::processEvents();
        std::vector<std::string> lines;
        for (const ShownRow& row : Window->List2->Model.Rows)
            lines.push_back(Ansi(row.Text));
        return lines;
    }
    bool Reported(const std::string& part) const
    {
        for (const std::string& line : ReportLines()) {
            if (line.find(part) != std::string::npos)
                return true;
        }
        return false;
    }

    bool HasProgram(const std::string& letter, const std::string& rest) const
    {
        return std::filesystem::exists(Programs / "SRG" / letter / rest);
    }

    std::string Ini() const { return Place.Read(Place.Folder / "KV90.INI"); }

    test::Scene Place;
    std::filesystem::path Drawings, Programs;
    std::unique_ptr<MainWindow> Window;
    QFont FontBefore;
};

} // namespace kv

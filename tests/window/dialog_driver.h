// Opens the modal dialogs as a person does and works them with mouse and keys; what a person would
// answer to boxes stands in Answers. Each test has an installation of its own.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "platform/dialogs.h"
#include "shell/control_tables.h"
#include "state/run.h"
#include "state/settings_folder.h"
#include "state/settings_grids.h"
#include "state/shell_state.h"
#include "window/boxes.h"
#include "window/controls.h"
#include "window/dialogs.h"
#include "window/grid_editor.h"

namespace kv {

struct PersonsAnswers {
    bool Yes = false;
    QString Folder;                     // of the browser; empty: cancelled
    std::vector<std::string> Questions; // text, as asked
    std::vector<std::string> Told;
    QString BrowserTitle, BrowserPrompt, BrowserStart;
};
inline PersonsAnswers Answers;

class DialogTest : public SettingsFolder {
  protected:
    void SetUp() override
    {
        SettingsFolder::SetUp();
        ConfigHomeBefore = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(Folder.string()));
        FontBefore = QApplication::font();
        kv::Run = RunBlock{};
        Shell = ShellState{};
        Answers = PersonsAnswers{};
        Person.Tell = [](const QString& text, const QString&, BoxIcon) {
            Answers.Told.push_back(text.toStdString());
        };
        Person.Ask = [](const QString& text, const QString&, const QString&) {
            Answers.Questions.push_back(text.toStdString());
            return Answers.Yes;
        };
        Person.ChooseFolder = [](QWidget*, const QString& title, const QString& prompt,
                                 const QString& folder) {
            Answers.BrowserTitle = title;
            Answers.BrowserPrompt = prompt;
            Answers.BrowserStart = folder;
            return Answers.Folder;
        };
        Tips.Install = ShowDialogTips;
        InstallBoxes(Main);
        Main.resize(300, 200);
        Main.show();
    }
    void TearDown() override
    {
        ForgetDialogs();
        Person = {TellInBox, AskInBox, ChooseFolderInBrowser};
        Tips = TipHooks{};
        Dialogs = DialogHooks{};
        Shell = ShellState{};
        kv::Run = RunBlock{};
        QApplication::setFont(FontBefore);
        if (ConfigHomeBefore.isNull())
            qunsetenv("XDG_CONFIG_HOME");
        else
            qputenv("XDG_CONFIG_HOME", ConfigHomeBefore);
        SettingsFolder::TearDown();
    }
    // As the program's start: the dialogs, then the settings of KV90.INI.
    void Start()
    {
        LoadDialogs(Main);
        ExchangeSettings(false);
        LoadCutListSettings();
        LoadToolSubstitutions();
    }
    void ScaleFont(double factor)
    {
        QFont font = FontBefore;
        font.setPointSizeF(font.pointSizeF() * factor);
        QApplication::setFont(font);
    }
    std::string Sub(const std::string& name) const // a folder of the test, in the program's form
    {
        return FromHostPath((Folder / name).string());
    }

    QWidget Main;
    QFont FontBefore;
    QByteArray ConfigHomeBefore;
};

// Opens a modal dialog, lets `act` work it and closes it, should it still stand.
inline void InDialog(void (*open)(), const std::function<void(QDialog&)>& act)
{
    bool acted = false;
    QTimer::singleShot(0, qApp, [&] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
        act(*dialog);
        acted = true;
        if (dialog->isVisible())
            dialog->reject();
    });
    open();
    EXPECT_TRUE(acted);
}

template <class Widget> Widget& Get(QWidget& root, const char* name)
{
    auto* const widget = root.findChild<Widget*>(QLatin1String(name));
    EXPECT_NE(widget, nullptr) << name;
    return *widget;
}

inline void Click(QWidget& root, const char* name)
{
    auto& button = Get<QAbstractButton>(root, name);
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
}

inline void Type(QWidget& root, const char* name, const std::string& text)
{
    auto& edit = Get<QLineEdit>(root, name);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClick(&edit, Qt::Key_Delete);
    QTest::keyClicks(&edit, QString::fromStdString(text));
}

inline std::string TextOf(QWidget& root, const char* name)
{
    return Get<QLineEdit>(root, name).text().toStdString();
}

inline bool IsOn(QWidget& root, const char* name)
{
    return Get<QAbstractButton>(root, name).isChecked();
}

// Types into a cell as the keyboard does: walk there, type, Enter.
inline void TypeCell(GridEditor& grid, int row, int column, const char* text)
{
    grid.setFocus();
    grid.setCurrentCell(row, column);
    QTest::keyClick(&grid, Qt::Key_F2);
    auto* const editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QLatin1String(text));
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents(); // the cell takes the text behind the key
}

inline std::string WithoutAltKey(QString caption)
{
    caption.replace(QLatin1String("&&"), QLatin1String("\x01"));
    caption.remove(QLatin1Char('&'));
    caption.replace(QLatin1Char('\x01'), QLatin1Char('&'));
    return caption.toStdString();
}

inline bool HiddenByDesign(const QWidget& widget)
{
    return widget.isHidden() && widget.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

// The label whose Alt key leads to a text.
inline QLabel* LabelOf(QWidget& root, const QWidget& field)
{
    for (QLabel* const label : root.findChildren<QLabel*>()) {
        if (label->buddy() == &field)
            return label;
    }
    return nullptr;
}

inline void ExpectControl(QDialog& dialog, const ControlRow& row)
{
    SCOPED_TRACE(std::string(row.Name));
    if (row.Kind == ControlKind::Window) {
        EXPECT_EQ(dialog.windowTitle().toStdString(), row.Caption);
        return;
    }
    if (row.Kind == ControlKind::Tab) {
        const auto& tabs = *dialog.findChild<QTabWidget*>();
        EXPECT_EQ(WithoutAltKey(tabs.tabText(row.Name[4] - '0')), row.Caption);
        return;
    }
    if (row.Kind == ControlKind::Folder)
        return; // seen by the browse tests
    auto* const widget = dialog.findChild<QWidget*>(Shown(row.Name));
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(HiddenByDesign(*widget), !row.ShownByDesign);
    EXPECT_TRUE(!widget->accessibleName().isEmpty() || row.Kind == ControlKind::Label ||
                (row.Caption.empty() && row.Accessible.empty()));
    if (const auto* const button = qobject_cast<QAbstractButton*>(widget)) {
        EXPECT_EQ(WithoutAltKey(button->text()), row.Caption);
        EXPECT_EQ(button->isChecked(), row.Default == "on");
    } else if (const auto* const text = qobject_cast<QLineEdit*>(widget)) {
        EXPECT_EQ(text->text().toStdString(), row.Default);
        const QLabel* const label = LabelOf(dialog, *widget);
        EXPECT_EQ(label == nullptr ? "" : WithoutAltKey(label->text()), row.Caption);
    } else if (const auto* const frame = qobject_cast<QGroupBox*>(widget)) {
        EXPECT_EQ(WithoutAltKey(frame->title()), row.Caption);
    } else if (const auto* const label = qobject_cast<QLabel*>(widget)) {
        EXPECT_EQ(WithoutAltKey(label->text()).substr(0, row.Caption.size()), row.Caption);
    } else {
        EXPECT_EQ(row.Kind, ControlKind::Grid);
        EXPECT_NE(dynamic_cast<GridEditor*>(widget), nullptr);
    }
}

inline int ExpectControls(QDialog& dialog, std::string_view form)
{
    int rows = 0;
    for (const ControlRow& row : ControlRows()) {
        if (row.Form != form)
            continue;
        ExpectControl(dialog, row);
        ++rows;
    }
    return rows;
}

inline bool HasWords(const QWidget& widget)
{
    if (qobject_cast<const QAbstractItemView*>(widget.parentWidget()) != nullptr ||
        qobject_cast<const QToolButton*>(&widget) != nullptr)
        return false; // corner of a grid, arrows of the tabs
    return qobject_cast<const QLabel*>(&widget) != nullptr ||
           qobject_cast<const QAbstractButton*>(&widget) != nullptr;
}

// No word of what is in sight is cut, no control covers another or sticks out of its frame.
inline int ExpectUncut(QDialog& dialog)
{
    QApplication::processEvents();
    int seen = 0;
    for (const QWidget* const widget : dialog.findChildren<QWidget*>()) {
        const bool text = qobject_cast<const QLineEdit*>(widget) != nullptr;
        if (!widget->isVisible() || !(HasWords(*widget) || text))
            continue;
        SCOPED_TRACE(widget->objectName().toStdString());
        ++seen;
        const QSize wanted = text ? widget->minimumSizeHint() : widget->sizeHint();
        EXPECT_GE(widget->width(), wanted.width());
        EXPECT_GE(widget->height(), wanted.height());
        EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry()));
        for (const QWidget* const other :
             widget->parentWidget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (other == widget || !other->isVisible() || other->isWindow())
                continue;
            EXPECT_FALSE(other->geometry().intersects(widget->geometry()))
                << other->objectName().toStdString();
        }
    }
    return seen;
}

inline bool TakesTab(const QWidget& widget)
{
    if (!widget.isVisible() || !widget.isEnabled() || widget.focusProxy() != nullptr ||
        qobject_cast<const QAbstractItemView*>(widget.parentWidget()) != nullptr)
        return false;
    const auto* const radio = qobject_cast<const QRadioButton*>(&widget);
    if (radio == nullptr)
        return (widget.focusPolicy() & Qt::TabFocus) != 0;
    return radio->isChecked(); // of a group the Tab key takes the one that is on, arrows the others
}

// Every control in sight is reached by the Tab key.
inline int ExpectTabReachesAll(QDialog& dialog)
{
    std::set<const QWidget*> reached;
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached.insert(QApplication::focusWidget());
    }
    int wanted = 0;
    for (const QWidget* const widget : dialog.findChildren<QWidget*>()) {
        if (!TakesTab(*widget))
            continue;
        ++wanted;
        EXPECT_TRUE(reached.contains(widget)) << widget->objectName().toStdString();
    }
    return wanted;
}

} // namespace kv

// About at start and from the menu.
#include "dialog_driver.h"

#include <QElapsedTimer>
#include <QScreen>

#include "shell/start_up.h"

namespace kv {
namespace {

using AboutDialogForm = DialogTest;

int TimesActive = 0;
std::string StartLabel;

void NoteActive()
{
    ++TimesActive;
    const QWidget* const about = QApplication::activeModalWidget();
    ASSERT_NE(about, nullptr);
    const auto* const label = about->findChild<QLabel*>(QStringLiteral("lblInit"));
    ASSERT_NE(label, nullptr);
    StartLabel = label->isVisible() ? label->text().toStdString() : "";
    EXPECT_FALSE(about->findChild<QPushButton*>()->isVisible());
}

TEST_F(AboutDialogForm, ClosesItselfWhenItHasBecomeActive)
{
    TimesActive = 0;
    QElapsedTimer clock;
    clock.start();
    ShowAboutAtStart(NoteActive);
    EXPECT_LT(clock.elapsed(), 5000);
    EXPECT_EQ(TimesActive, 1);
    EXPECT_EQ(StartLabel, "Initializing...   Please Wait...");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(AboutDialogForm, MenuShowsTheVersionAndAButton)
{
    InDialog(ShowAbout, [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle().toStdString(), "About ");
        EXPECT_EQ(Get<QLabel>(dialog, "lblVersion").text().toStdString(),
                  "Version " + std::string(ProductVersion));
        EXPECT_FALSE(Get<QWidget>(dialog, "lblInit").isVisible());
        EXPECT_GE(ExpectUncut(dialog), 3);
        Click(dialog, "OkButton");
        EXPECT_FALSE(dialog.isVisible());
    });
}

TEST_F(AboutDialogForm, EveryControlOfTheTableStands)
{
    InDialog(ShowAbout, [](QDialog& dialog) {
        for (const char* const name : {"lblInit", "lblVersion", "OkButton"}) {
            const ControlRow* const row = FindControl("About", name);
            ASSERT_NE(row, nullptr);
            const auto* const label = qobject_cast<QLabel*>(&Get<QWidget>(dialog, name));
            const QString shown = label != nullptr ? label->text() : Get<QPushButton>(dialog, name).text();
            EXPECT_EQ(WithoutAltKey(shown).substr(0, row->Caption.size()), row->Caption);
        }
    });
}

TEST_F(AboutDialogForm, KeepsItsPosition)
{
    ASSERT_TRUE(SaveWindowPosition(AboutPositionSection, {1500, 3000}).Ok());
    InDialog(ShowAbout, [](QDialog& dialog) {
        EXPECT_EQ(dialog.pos(), QPoint(200, 100)); // 15 twips a pixel
        dialog.move(240, 120);
        Click(dialog, "OkButton");
    });
    const WindowPosition kept = LoadWindowPosition(AboutPositionSection, false);
    EXPECT_EQ(kept.Left, 3600);
    EXPECT_EQ(kept.Top, 1800);
}

TEST_F(AboutDialogForm, PlaceOffTheScreensIsNotTaken)
{
    // Kept as it stands, without a clamp.
    ASSERT_TRUE(SaveWindowPosition(AboutPositionSection, {-90000, -90000}).Ok());
    InDialog(ShowAbout, [](QDialog& dialog) {
        EXPECT_TRUE(dialog.screen()->availableGeometry().contains(dialog.geometry()));
    });
}

} // namespace
} // namespace kv

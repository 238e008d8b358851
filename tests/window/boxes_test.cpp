// Boxes, questions and the browser as they come to the screen.
#include "dialog_driver.h"

#include <QFileDialog>
#include <QMessageBox>

#include "state/report.h"

namespace kv {
namespace {

class BoxesForm : public DialogTest {
  protected:
    void SetUp() override
    {
        DialogTest::SetUp();
        Person = {TellInBox, AskInBox, ChooseFolderInBrowser}; // the real ones
    }
};

// Waits for the box that the call below opens.
void InBox(const std::function<void(QMessageBox&)>& act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(box));
        act(*box);
        if (box->isVisible())
            box->close();
    });
}

TEST_F(BoxesForm, BoxShowsTextTitleAndIcon)
{
    bool seen = false;
    InBox([&](QMessageBox& box) {
        seen = true;
        EXPECT_EQ(box.text().toStdString(), "Caf\xC3\xA9 <b>\nsecond"); // CP1252 and CR LF, no rich text
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle().toStdString(), "Title");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.parentWidget(), &Main);
        QTest::keyClick(&box, Qt::Key_Return);
        EXPECT_FALSE(box.isVisible());
    });
    ShowBox("Caf\xE9 <b>\r\nsecond", "Title", BoxIcon::Warning);
    EXPECT_TRUE(seen);
}

TEST_F(BoxesForm, EnterAndEscapeAnswerNo)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        InBox([key](QMessageBox& box) { QTest::keyClick(&box, key); });
        EXPECT_FALSE(AskYesNo("Sure?", "Title"));
    }
}

TEST_F(BoxesForm, YesIsYes)
{
    InBox([](QMessageBox& box) { QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton); });
    EXPECT_TRUE(AskYesNo("Sure?", "Title"));
}

// The rows of the report, as its lines.
std::vector<std::string> Told;

TEST_F(BoxesForm, ABoxOfAnUnattendedRunIsALineOfTheReportAndHoldsUpNothing)
{
    Told.clear();
    Report.ShowRow = [](const ReportRow& row) { Told.push_back(row.Text); };
    Shell.Unattended = true;
    ShowBox("First\r\nline two", "Title", BoxIcon::Warning); // would wait for ever
    ShowBox("Second", "Title", BoxIcon::Warning);
    ReportMessage(2, "");
    Report.ShowRow = nullptr;
    EXPECT_EQ(Told, (std::vector<std::string>{"First", "line two", "Second"}));
    const QList<QMessageBox*> left = Main.findChildren<QMessageBox*>();
    ASSERT_EQ(left.size(), 1); // for whoever comes
    EXPECT_TRUE(left[0]->isVisible());
    EXPECT_FALSE(left[0]->isModal());
    EXPECT_EQ(left[0]->text().toStdString(), "Second");
    left[0]->close();
}

TEST_F(BoxesForm, AQuestionOfAnUnattendedRunSaysThatItAnswersItself)
{
    Shell.Unattended = true;
    InBox([](QMessageBox& box) {
        EXPECT_TRUE(box.informativeText().contains(QString::number(LongestQuestion)));
        QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton);
    });
    EXPECT_TRUE(AskYesNo("Sure?", "Title"));
}

TEST_F(BoxesForm, BrowserShowsThePromptAndGivesTheChosenFolder)
{
    std::filesystem::create_directories(Folder / "in");
    const QString start = QString::fromStdString(Folder.string());
    for (const bool taken : {true, false}) {
        bool seen = false;
        QTimer::singleShot(0, qApp, [&] {
            auto* const browser = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(browser, nullptr);
            seen = true;
            EXPECT_EQ(browser->windowTitle().toStdString(), "Path Browser");
            EXPECT_EQ(browser->labelText(QFileDialog::LookIn).toStdString(), "Select it.");
            EXPECT_EQ(browser->directory().absolutePath(), start);
            browser->selectFile(start + QStringLiteral("/in"));
            static_cast<QDialog*>(browser)->done(taken ? QDialog::Accepted : QDialog::Rejected);
        });
        const QString chosen =
            Person.ChooseFolder(&Main, QStringLiteral("Path Browser"), QStringLiteral("Select it."), start);
        EXPECT_TRUE(seen);
        EXPECT_EQ(chosen, taken ? start + QStringLiteral("/in") : QString());
    }
}

} // namespace
} // namespace kv

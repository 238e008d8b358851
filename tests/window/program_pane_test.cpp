// The pane of a program: whatever lights an operation moves all the rest, the legend hides, pictures are
// saved as real files, and a program that cannot be read leaves the pane alive.
#include "window/program_pane.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QTest>
#include <QTextBlock>

#include "machine/program_reader.h"
#include "platform/paths.h"
#include "shell/program_pictures.h"
#include "support/scene.h"
#include "window/controls.h"

namespace kv {
namespace {

constexpr std::string_view PaneProgram = "G71X600Y400Z20T00N4L1\n"
                                         "G81G90G55P5R54=30X100Y300Z20\n"
                                         "G81G90G55P5R54=30X200Y300Z2\n"
                                         "G81G90G55P2R54=8X100Y30Z4\n"
                                         "G88G90G55P5T0171G41R5X300Y100Z5\nG1G90F3000X500Y100Z5\n";

PaneContent ContentOf(std::string_view program)
{
    PaneContent content;
    content.Drawing = QStringLiteral("door.dxf");
    content.Path = QStringLiteral("/WINNER90/A0000001.PRG");
    content.Picture = SceneOf(ReadProgram(program));
    content.Text = QString::fromUtf8(program.data(), static_cast<qsizetype>(program.size()));
    return content;
}

std::unique_ptr<ProgramPane> OpenPane()
{
    auto pane = std::make_unique<ProgramPane>();
    pane->resize(900, 800);
    pane->show();
    pane->ShowProgram(ContentOf(PaneProgram));
    QApplication::processEvents();
    return pane;
}

std::string SentenceOf(const ProgramPane& pane)
{
    return pane.Sentence->text().toStdString();
}

TEST(ProgramPaneTest, TheHeaderNamesDrawingProgramAndPanel)
{
    const auto pane = OpenPane();
    EXPECT_EQ(pane->Header->text(), QStringLiteral("door.dxf \u2192 /WINNER90/A0000001.PRG"));
    EXPECT_EQ(pane->State->text(), QStringLiteral("Panel 600 x 400 x 20 mm"));
    EXPECT_TRUE(pane->Time->text().endsWith(QStringLiteral("an estimate")));
}

TEST(ProgramPaneTest, TheSliderLightsOperationLineAndRow)
{
    const auto pane = OpenPane();
    ASSERT_EQ(pane->Place->maximum(), 5) << "six lines";
    pane->Place->setValue(4);
    EXPECT_EQ(pane->Selected(), 3U);
    EXPECT_EQ(pane->SelectedLine(), 5U);
    EXPECT_EQ(SentenceOf(*pane).substr(0, 20), "Lines 5 to 6: route,");
    EXPECT_EQ(pane->Text->textCursor().blockNumber(), 4);
    ASSERT_EQ(pane->Text->extraSelections().size(), 2) << "the operation, and its line";
    EXPECT_TRUE(pane->Text->extraSelections()[0].cursor.selectedText().contains(QStringLiteral("F3000")));
    EXPECT_FALSE(pane->Text->extraSelections()[1].cursor.selectedText().contains(QStringLiteral("F3000")));
    EXPECT_EQ(pane->Table->currentIndex().row(), 3);
    pane->Place->setValue(5);
    EXPECT_EQ(pane->Selected(), 3U);
    EXPECT_EQ(SentenceOf(*pane).substr(0, 23), "Line 6 of 5 to 6: route");
    EXPECT_EQ(pane->View->Look.LitLine, 6U);
    pane->Place->setValue(0);
    EXPECT_EQ(pane->Selected(), NoItem) << "the header is no operation";
    EXPECT_EQ(SentenceOf(*pane), "Line 1");
    EXPECT_EQ(pane->Text->textCursor().blockNumber(), 0);
}

TEST(ProgramPaneTest, TextTableAndPictureLightTheSlidersOperation)
{
    const auto pane = OpenPane();
    pane->Text->setTextCursor(QTextCursor(pane->Text->document()->findBlockByNumber(5)));
    EXPECT_EQ(pane->Place->value(), 5);
    EXPECT_EQ(pane->Selected(), 3U);
    EXPECT_EQ(pane->Text->textCursor().blockNumber(), 5) << "the reader's place is kept";
    pane->Table->setCurrentIndex(pane->Operations.index(1, 0));
    EXPECT_EQ(pane->Place->value(), 2);
    QTest::mouseClick(pane->View, Qt::LeftButton, {}, pane->View->Place.PixelOf({100, 300}).toPoint());
    EXPECT_EQ(pane->Selected(), 0U);
    EXPECT_EQ(pane->Place->value(), 1);
    EXPECT_EQ(SentenceOf(*pane), "Line 2: bore, diameter 30, 20 deep (through)");
    QTest::mouseClick(pane->View, Qt::LeftButton, {}, pane->View->Place.PixelOf({50, 50}).toPoint());
    EXPECT_EQ(pane->Selected(), NoItem);
    EXPECT_EQ(SentenceOf(*pane), "");
}

TEST(ProgramPaneTest, LeftAndRightGoOneLineFromThePicture)
{
    const auto pane = OpenPane();
    pane->View->setFocus();
    QTest::keyClick(pane->View, Qt::Key_Right);
    EXPECT_EQ(pane->Selected(), 0U);
    QTest::keyClick(pane->View, Qt::Key_Right);
    EXPECT_EQ(pane->Selected(), 1U);
    QTest::keyClick(pane->View, Qt::Key_Left);
    EXPECT_EQ(pane->Selected(), 0U);
    QTest::keyClick(pane->View, Qt::Key_Left);
    QTest::keyClick(pane->View, Qt::Key_Left);
    EXPECT_EQ(pane->SelectedLine(), 1U) << "not beyond the first";
}

TEST(ProgramPaneTest, SpacePlaysToTheLastOperationAndStops)
{
    const auto pane = OpenPane();
    pane->Speed->setCurrentIndex(pane->Speed->count() - 1);
    QTest::keyClick(pane->View, Qt::Key_Space);
    EXPECT_TRUE(pane->Play->isChecked());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !pane->Play->isChecked(); }, 5000));
    EXPECT_EQ(pane->Selected(), 3U);
    QTest::keyClick(pane->View, Qt::Key_Space);
    EXPECT_EQ(pane->SelectedLine(), 1U) << "from the end it begins anew";
    QTest::keyClick(pane->View, Qt::Key_Space);
    EXPECT_FALSE(pane->Play->isChecked());
}

TEST(ProgramPaneTest, TheLegendCountsAndHides)
{
    const auto pane = OpenPane();
    ASSERT_EQ(pane->Legend->count(), 4);
    EXPECT_EQ(pane->Legend->item(0)->text(), QStringLiteral("1 x bore, diameter 30, 20 deep (through)"));
    pane->Legend->item(0)->setCheckState(Qt::Unchecked);
    EXPECT_TRUE(pane->View->Look.Hides(0));
    EXPECT_EQ(pane->View->ItemAtPixel(pane->View->Place.PixelOf({100, 300})), NoItem);
    pane->Legend->item(0)->setCheckState(Qt::Checked);
    EXPECT_EQ(pane->View->ItemAtPixel(pane->View->Place.PixelOf({100, 300})), 0U);
    pane->Legend->setCurrentRow(2);
    EXPECT_EQ(pane->View->Look.LitGroup, 2U);
}

TEST(ProgramPaneTest, ButtonsShowWhatTheySay)
{
    const auto pane = OpenPane();
    EXPECT_TRUE(pane->View->Look.Rapids);
    pane->Rapids->click();
    EXPECT_FALSE(pane->View->Look.Rapids);
    pane->Order->click();
    EXPECT_TRUE(pane->View->Look.Order);
    EXPECT_TRUE(pane->Text->isHidden());
    pane->ShowText->click();
    EXPECT_TRUE(pane->Text->isVisible());
    pane->ShowTable->click();
    EXPECT_TRUE(pane->Table->isVisible());
    const double fitted = pane->View->Place.Scale;
    pane->findChild<QToolButton*>(QStringLiteral("Side3"))->click();
    EXPECT_NE(pane->View->Place.Scale, fitted);
}

TEST(ProgramPaneTest, TheTableHasAllOfAnOperation)
{
    const auto pane = OpenPane();
    const auto cell = [&](int row, int column) {
        return pane->Operations.data(pane->Operations.index(row, column), Qt::DisplayRole)
            .toString()
            .toStdString();
    };
    EXPECT_EQ(cell(0, 0), "2");
    EXPECT_EQ(cell(0, 1), "bore");
    EXPECT_EQ(cell(0, 3), "X 100, Y 300 mm");
    EXPECT_EQ(cell(0, 4), "20 (through)");
    EXPECT_EQ(cell(2, 3), "side 2: 100 mm along, 4 mm below the face");
    EXPECT_EQ(cell(3, 1), "route");
    EXPECT_EQ(cell(3, 5), "3000");
}

TEST(ProgramPaneTest, TheCursorsPlaceIsInTheProgramsUnit)
{
    const auto pane = OpenPane();
    PaneContent inches = ContentOf(PaneProgram);
    inches.Unit = 25.4;
    pane->ShowProgram(inches);
    const PathPoint at{254, 127};
    pane->View->CursorMoved(&at);
    EXPECT_EQ(pane->Cursor->text(), QStringLiteral("X 10, Y 5 in"));
    pane->View->CursorMoved(nullptr);
    EXPECT_TRUE(pane->Cursor->text().isEmpty());
}

TEST(ProgramPaneTest, EveryControlHasASpokenName)
{
    const auto pane = OpenPane();
    for (QWidget* const widget : pane->findChildren<QWidget*>()) {
        const bool isControl = qobject_cast<QToolButton*>(widget) != nullptr || widget == pane->View ||
                               widget == pane->Place || widget == pane->Legend || widget == pane->Text ||
                               widget == pane->Table || widget == pane->Speed;
        if (isControl && widget->objectName() != QLatin1String("qt_toolbar_ext_button")) {
            EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
        }
    }
}

// The through bore is dark in the middle of where it belongs: found again by its place on the sheet.
TEST(ProgramPaneTest, ASavedPictureIsAnImageWithTheBoresInTheirPlaces)
{
    const test::Scene folder;
    const auto pane = OpenPane();
    const std::string file = (folder.Folder / "door.png").string();
    ASSERT_TRUE(pane->SavePicture(QString::fromStdString(file)));
    const QImage image(QString::fromStdString(file));
    ASSERT_EQ(image.width(), 2400);
    const QRgb hole = ColoursOfScene(false).Hole.rgb();
    double count = 0, x = 0;
    for (int row = 0; row < image.height(); ++row)
        for (int column = 0; column < image.width(); ++column)
            if (image.pixel(column, row) == hole) {
                ++count;
                x += column;
            }
    // The page shows the sheet a little smaller, below its titles: by its scale from the hole's own size.
    const double scale = std::sqrt(count / 3.14159265) / 15;
    const SheetBox& sheet = pane->View->Shown().Sheet;
    ASSERT_GT(count, 500);
    EXPECT_NEAR(x / count, 1200 + (100 - sheet.X - sheet.Width / 2) * scale, 20);
}

TEST(ProgramPaneTest, PdfAndSvgAreSuchFiles)
{
    const test::Scene folder;
    const auto pane = OpenPane();
    for (const auto& [name, begin] : {std::pair{"door.pdf", "%PDF-1"}, std::pair{"door.svg", "<"}}) {
        const std::filesystem::path file = folder.Folder / name;
        ASSERT_TRUE(pane->SavePicture(QString::fromStdString(file.string()))) << name;
        EXPECT_EQ(folder.Read(file).substr(0, std::string(begin).size()), begin);
        EXPECT_GT(std::filesystem::file_size(file), 1000U) << name;
    }
    EXPECT_NE(folder.Read(folder.Folder / "door.svg").find("data-line=\"5\""), std::string::npos);
    EXPECT_FALSE(pane->SavePicture(QString::fromStdString((folder.Folder / "none" / "door.png").string())));
}

TEST(ProgramPaneTest, WithoutAProgramTheReasonIsShownAndNothingCanBeSaved)
{
    const auto pane = OpenPane();
    pane->ShowNothing(QStringLiteral("door.dxf: has no program"));
    EXPECT_EQ(pane->View->Empty, QStringLiteral("door.dxf: has no program"));
    EXPECT_FALSE(pane->Place->isEnabled());
    EXPECT_FALSE(pane->Picture->isEnabled());
    EXPECT_EQ(pane->Legend->count(), 0);
    EXPECT_FALSE(pane->SavePicture(QStringLiteral("none.png")));
    QTest::keyClick(pane->View, Qt::Key_Right);
    QTest::keyClick(pane->View, Qt::Key_Space);
    EXPECT_EQ(pane->Selected(), NoItem);
}

// Cut off, beyond reason, arcs of radius 0, and what is no text.
TEST(ProgramPaneTest, BadProgramsArePaintedOrRefusedButNeverEndThePane)
{
    const test::Scene folder;
    const std::vector<std::string> programs = {
        "",
        std::string(1000, '\0'),
        "G71X600",
        "G71X600Y400Z20T00N4L1\nG81G90G55P5R54=1e300X1e300Y-1e300Z1e300\n",
        "G71X1e12Y1e12Z1e12T00N4L1\nG88G90G55P5T0171G41R5X0Y0Z5\nG2G90X0Y0I0J0\nG1G90X1e15Y1e15\n",
        "G71X600Y400Z20T00N4L1\nG88G90G55P5T0171G41R999999X10Y10Z5\nG3G90X10Y10I0J0U0\nG1G90X500Y100Z5\n"};
    ProgramPane pane;
    pane.resize(900, 800);
    pane.show();
    for (std::size_t i = 0; i < programs.size(); ++i) {
        const std::filesystem::path file = folder.Folder / "bad.prg";
        std::ofstream(file, std::ios::binary) << programs[i];
        const ProgramPicture picture = ReadProgramPicture(FromHostPath(file.string()));
        EXPECT_TRUE(i > 2 || !picture.Fault.empty()) << i;
        if (!picture.Fault.empty()) {
            pane.ShowNothing(Shown(picture.Fault));
        } else {
            PaneContent content;
            content.Picture = picture.Content.Picture;
            content.Text = QString::fromStdString(picture.Content.Text);
            pane.ShowProgram(content);
        }
        for (int k = 0; k < 40; ++k)
            pane.View->ZoomBy(1.6, {100, 100});
        pane.Place->setValue(pane.Place->maximum());
        EXPECT_FALSE(pane.grab().isNull());
    }
    pane.ShowProgram(ContentOf(PaneProgram));
    EXPECT_EQ(pane.Legend->count(), 4);
}

} // namespace
} // namespace kv

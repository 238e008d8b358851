// The default settings under a person's hands: the wheel, the question of the sequence, and what the number
// fields show of what is typed.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QSlider>
#include <QWheelEvent>

#include "window/number_fields.h"
#include "window/window_scene.h"

namespace kv {
namespace {

class DefaultSettingsTest : public WindowTest {
  protected:
    void TearDown() override
    {
        QLocale::setDefault(QLocale::c());
        WindowTest::TearDown();
    }
    // One notch down over the middle of the widget.
    static void Wheel(QWidget& over)
    {
        const QPointF at = over.rect().center();
        QWheelEvent turn(at, over.mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
        QApplication::sendEvent(&over, &turn);
        QApplication::processEvents();
    }
    void Choose(const char* name, int place) const
    {
        auto* const box = Find<QComboBox>(name);
        box->setFocus();
        box->setCurrentIndex(place);
        Q_EMIT box->activated(place);
    }
    void Leave() const
    {
        Window->List1->setFocus();
        QTest::qWait(50);
    }
    void Type(const char* name, const QString& text) const
    {
        auto* const field = Find<QLineEdit>(name);
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    QString Reading(const char* name) const { return ReadingOf(Find<QLineEdit>(name))->text(); }
};

TEST_F(DefaultSettingsTest, TheWheelTurnsNoBoxThatIsNotInUse)
{
    Open();
    for (QComboBox* const box : Window->findChildren<QComboBox*>()) {
        if (!box->isVisible())
            continue;
        ASSERT_FALSE(box->hasFocus()) << box->objectName().toStdString();
        const int before = box->currentIndex();
        Wheel(*box);
        EXPECT_EQ(box->currentIndex(), before) << box->objectName().toStdString();
        EXPECT_FALSE(box->hasFocus()) << box->objectName().toStdString();
        EXPECT_FALSE((box->focusPolicy() & Qt::WheelFocus) == Qt::WheelFocus);
    }
    EXPECT_EQ(Config.Sequence, "VHGR");
    EXPECT_NE(Ini().find("Sequence=VHGR"), std::string::npos);
    auto* const first = Find<QComboBox>("Sq(0)");
    first->setFocus();
    Wheel(*first); // in use it is meant
    EXPECT_EQ(Config.Sequence, "HHGR");
}

TEST_F(DefaultSettingsTest, ASequenceThatLosesALetterIsAskedAboutWhenTheBoxesAreLeft)
{
    Open();
    AtWindow.Yes = false;
    Choose("Sq(0)", 3);
    Choose("Sq(1)", 3);
    EXPECT_TRUE(AtWindow.Questions.empty()) << "on the way from one order to another";
    Leave();
    ASSERT_EQ(AtWindow.Questions.size(), 1U);
    EXPECT_EQ(AtWindow.Questions[0],
              "The sequence \"GGGR\" leaves out bores of the face (V), bores of the edges (H).\nWhat is left "
              "out gets into no program.\nDo you wish to leave the sequence so?");
    EXPECT_EQ(Config.Sequence, "VHGR");
    EXPECT_NE(Ini().find("Sequence=VHGR"), std::string::npos) << Ini();
    EXPECT_EQ(Find<QComboBox>("Sq(0)")->currentIndex(), 1);

    AtWindow.Yes = true;
    Choose("Sq(0)", 3);
    Leave();
    EXPECT_EQ(AtWindow.Questions.size(), 2U);
    EXPECT_EQ(Config.Sequence, "GHGR");
    Find<QComboBox>("Sq(0)")->setFocus(); // and not again
    Leave();
    EXPECT_EQ(AtWindow.Questions.size(), 2U);
}

TEST_F(DefaultSettingsTest, AnotherOrderOfAllLettersIsNotAskedAbout)
{
    Open();
    Choose("Sq(0)", 2);
    Choose("Sq(1)", 1);
    Leave();
    EXPECT_TRUE(AtWindow.Questions.empty());
    EXPECT_EQ(Config.Sequence, "HVGR");
}

TEST_F(DefaultSettingsTest, AClickOnProcessAsksFirstAndConvertsByTheAnswer)
{
    PutDrawing("door.dxf");
    Open();
    ClickRow("door.dxf");
    Choose("Sq(0)", 3);
    AtWindow.Yes = false;
    QTest::mouseClick(Window->Start, Qt::LeftButton);
    EXPECT_EQ(AtWindow.Questions.size(), 1U);
    EXPECT_TRUE(HasProgram("D", "OOR"));
    EXPECT_FALSE(Reported("the sequence")) << "the bore has its letter again";
}

TEST_F(DefaultSettingsTest, ANumberFieldShowsWhatItIsReadAs)
{
    Open({1400, 800});
    EXPECT_TRUE(ReadingOf(Find<QLineEdit>("LLen"))->isVisible());
    EXPECT_EQ(Reading("LLen"), QStringLiteral("= 25 mm"));
    Type("LLen", QStringLiteral("12,5"));
    EXPECT_EQ(Reading("LLen"), QStringLiteral("= 12 mm !"));
    EXPECT_EQ(Config.LeadLength, "12,5");
    const QColor colour = ReadingOf(Find<QLineEdit>("LLen"))->palette().color(QPalette::WindowText);
    EXPECT_GT(colour.red(), 2 * std::max(colour.green(), colour.blue()));
    EXPECT_EQ(Find<QLineEdit>("LLen")->palette().color(QPalette::Text), colour);
    EXPECT_TRUE(Find<QLineEdit>("LLen")->accessibleDescription().contains(QStringLiteral("not all of it")));
    Type("LLen", QStringLiteral(".5"));
    EXPECT_EQ(Reading("LLen"), QStringLiteral("= 0.5 mm"));
    QTest::mouseClick(Find<QPushButton>("MetIn"), Qt::LeftButton);
    EXPECT_EQ(Reading("RHt"), QStringLiteral("= 0.39 in"));
}

TEST_F(DefaultSettingsTest, TheCommaOfThePersonsSystemIsAPoint)
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    Open({1400, 800});
    Type("OSX", QStringLiteral("12,5"));
    EXPECT_EQ(Config.OffsetX, "12.5");
    EXPECT_EQ(Reading("OSX"), QStringLiteral("= 12.5 mm"));
    Type("OSY", QStringLiteral("1.200,5")); // which of both is it?
    EXPECT_EQ(Config.OffsetY, "1.200,5");
    EXPECT_EQ(Reading("OSY"), QStringLiteral("= 1.2 mm !"));
}

TEST_F(DefaultSettingsTest, ReadingsGiveWayToASmallWindow)
{
    Open({1400, 800});
    const int wide = Window->Defaults.Frame2->minimumSizeHint().width();
    Window->resize(1024, 735);
    QApplication::processEvents();
    EXPECT_EQ(Window->width(), 1024);
    EXPECT_FALSE(ReadingOf(Find<QLineEdit>("LLen"))->isVisible());
    EXPECT_LE(Window->Defaults.Frame2->minimumSizeHint().width(), wide);
    Window->resize(1400, 800);
    QApplication::processEvents();
    EXPECT_TRUE(ReadingOf(Find<QLineEdit>("LLen"))->isVisible());
}

} // namespace
} // namespace kv

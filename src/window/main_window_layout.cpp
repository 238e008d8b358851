// Where the parts of the main window stand. The rules are in twips of a screen with a small font; the
// window stretches them by its own font, and leaves to layouts what the rules do not say.
#include <algorithm>
#include <cmath>

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include "shell/main_window_rules.h"
#include "shell/start_up.h"
#include "window/main_window.h"

namespace kv {

namespace {

constexpr double DesignedDigit = 6;                // pixels of a "0" where the twips were taken
constexpr int ListGap = 240;                       // twips between list and report
constexpr int WidestInside = 4935 + 5995;          // twips to the right end of the widest report
constexpr int DesignedLines = 6;                   // rows of the grids in a window of the smallest height
constexpr int LeastWidth = 640, LeastHeight = 400; // pixels; below the window's contents it scrolls
constexpr int RoomyLines = 25;                     // and of the first height, where the screen has the room
constexpr int Edge = 8;                            // pixels

} // namespace

int MainWindow::Pixels(double twips) const
{
    const double stretch = std::max(1.0, fontMetrics().horizontalAdvance(QLatin1Char('0')) / DesignedDigit);
    return static_cast<int>(std::lround(twips / TwipsPerPixel * stretch));
}

int MainWindow::Twips(int pixels) const
{
    const double stretch = std::max(1.0, fontMetrics().horizontalAdvance(QLatin1Char('0')) / DesignedDigit);
    return static_cast<int>(std::lround(pixels * TwipsPerPixel / stretch));
}

void MainWindow::LayOut()
{
    LabDXFPath->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    LabDXFPath->setTextFormat(Qt::PlainText);
    LabDXFPath->setMinimumHeight(LabDXFPath->fontMetrics().height());
    const ControlMaker make{"Form1"};
    make.Dress(List1, "List1");
    make.Dress(List2, "List2");
    const int line = fontMetrics().height() + 2;
    List1->setMinimumHeight(DesignedLines * line);
    List2->setMinimumWidth(Pixels(ListGap * 10));

    auto* const grids = Grids = new QHBoxLayout;
    grids->setSpacing(Pixels(ListGap));
    grids->addWidget(List1);
    grids->addWidget(List2, 1);
    grids->addStretch();

    // When Abort comes the meters give it the room, so that no other button moves under the pointer.
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(Status.StatusFrame, 1);
    for (QPushButton* const button : {BtnAbort, Start, CmdDF, EX1})
        buttons->addWidget(button);

    auto* const upper = new QVBoxLayout(Frame1);
    upper->setContentsMargins(Edge, Edge, Edge, Edge);
    upper->addWidget(Folder);
    upper->addLayout(grids, 1);
    upper->addLayout(buttons);

    auto* const inside = new QWidget;
    auto* const whole = new QVBoxLayout(inside);
    whole->setContentsMargins(Edge, Edge, Edge, Edge);
    whole->addWidget(Frame1, 1);
    whole->addWidget(Defaults.Frame2);
    // A screen that is too small for all of it scrolls.
    auto* const area = new QScrollArea;
    area->setObjectName(QStringLiteral("WholeArea"));
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(inside);
    Inside = inside;
    setCentralWidget(area);
    setMinimumSize(LeastWidth, LeastHeight);
}

void MainWindow::Arrange(int code)
{
    MainWindowSizes sizes;
    sizes.InnerWidth = Twips(width());
    sizes.InnerHeight = Twips(height());
    sizes.Frame2Height = Twips(Defaults.Frame2->sizeHint().height());
    sizes.Frame3Width = Twips(Defaults.Frame3->sizeHint().width());
    sizes.StatusHeight = Twips(Status.StatusFrame->sizeHint().height());
    sizes.GridTop = Twips(List1->y());
    const MainWindowLayout layout = ArrangeMainWindow(code, sizes);
    if (!layout.Applies)
        return;
    List1->setFixedWidth(Pixels(layout.ListWidth) + RoomForStates(layout));
    List2->setMaximumWidth(std::max(List2->minimumWidth(), Pixels(layout.ReportWidth)));
    Defaults.Frame2->setVisible(layout.SettingsShown);
}

// Of the band right of the report, where the window is wide: the rules leave it empty.
int MainWindow::RoomForStates(const MainWindowLayout& layout) const
{
    if (StateShown == nullptr || !StateShown->isChecked())
        return 0;
    const int band = Frame1->width() - Pixels(layout.ListWidth) -
                     std::max(List2->minimumWidth(), Pixels(layout.ReportWidth)) - 3 * Grids->spacing();
    return std::clamp(band, 0, List1->WidthOfStates());
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    Defaults.FitReadings(event->size().width());
    Arrange(4);
    PlaceProgramPane();
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        Arrange(4);
}

QSize MainWindow::LeastSize() const
{
    const QSize inside = Inside->minimumSizeHint();
    return {inside.width(), inside.height() + menuBar()->sizeHint().height()};
}

// Wide enough for the widest report and no wider, high where the screen is.
void MainWindow::CentreOnScreen()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const int line = fontMetrics().height() + 2;
    const QSize least = LeastSize();
    const int wide = std::max(least.width(), Pixels(WidestInside) + 4 * Edge);
    const int high = least.height() + (RoomyLines - DesignedLines) * line;
    resize(std::min(wide, screen.width()), std::min(high, screen.height() - 2 * line));
    move(std::max(0, screen.x() + (screen.width() - width()) / 2),
         std::max(0, screen.y() + (screen.height() - height()) / 2));
}

// The stored place, or as near to it as the window can be taken by its title bar.
void MainWindow::RestorePosition()
{
    const WindowPosition stored = LoadWindowPosition(MainPositionSection, true);
    const QPoint place(stored.Left / TwipsPerPixel, stored.Top / TwipsPerPixel);
    const QScreen* const under = QGuiApplication::screenAt(place);
    const QRect screen = (under != nullptr ? under : QGuiApplication::primaryScreen())->availableGeometry();
    const int title = 2 * fontMetrics().height();
    const int left =
        std::clamp(place.x(), screen.left(), std::max(screen.left(), screen.right() - width() + 1));
    const int top =
        std::clamp(place.y(), screen.top(), std::max(screen.top(), screen.bottom() - height() - title + 1));
    move(left, top);
    RestoreSize();
}

void MainWindow::ComeToFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

} // namespace kv

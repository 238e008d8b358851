// Layout and life of the About window. A start without a hand must never wait for it: a screen that
// activates no window lets it go as well.
#include "window/about_dialog.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include "shell/start_up.h"
#include "state/settings.h"
#include "window/controls.h"
#include "window/dialog_layout.h"

namespace kv {

namespace {

constexpr int LongestStart = 1000; // ms

QLabel* Heading()
{
    auto* const heading = new QLabel(Shown(ProductName));
    QFont font = heading->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.5);
    heading->setFont(font);
    return heading;
}

// Where it stood last, unless the screen of that place is gone; in the middle while it has no place of its
// own.
void Place(QDialog& dialog)
{
    CentreOnScreen(dialog);
    if (!HasWindowPosition(AboutPositionSection))
        return;
    const WindowPosition kept = LoadWindowPosition(AboutPositionSection, false);
    const QRect place(QPoint(kept.Left / TwipsPerPixel, kept.Top / TwipsPerPixel), dialog.size());
    for (const QScreen* const screen : QGuiApplication::screens()) {
        if (screen->availableGeometry().contains(place)) {
            dialog.move(place.topLeft());
            return;
        }
    }
}

} // namespace

AboutDialog::AboutDialog(QWidget* parent, void (*whenActive)())
    : QDialog(parent), WhenActive(whenActive), AtStart(whenActive != nullptr)
{
    const ControlMaker maker{"About"};
    setObjectName(QStringLiteral("About"));
    setWindowTitle(CaptionOf("About", "About"));
    QLabel* const preparing = maker.Label("lblInit");
    QLabel* const version = maker.Label("lblVersion");
    QPushButton* const ok = maker.Button("OkButton");
    version->setText(version->text() + Shown(ProductVersion));
    version->setAccessibleName(version->text());
    preparing->setVisible(AtStart);
    ok->setVisible(!AtStart);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, [this] { accept(); });
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(30, 24, 30, 24);
    whole->setSpacing(14);
    for (QWidget* const widget : std::initializer_list<QWidget*>{Heading(), version, preparing, ok})
        whole->addWidget(widget, 0, Qt::AlignHCenter);
}

void AboutDialog::Open()
{
    Place(*this);
    if (AtStart)
        QTimer::singleShot(LongestStart, this, [this] { Leave(); });
    exec();
    if (AtStart)
        Leave(); // closed by hand before it was active
}

bool AboutDialog::event(QEvent* event)
{
    if (AtStart && event->type() == QEvent::WindowActivate)
        QTimer::singleShot(0, this, [this] { Leave(); });
    return QDialog::event(event);
}

void AboutDialog::Leave()
{
    if (WhenActive == nullptr)
        return;
    WhenActive();
    WhenActive = nullptr;
    accept();
}

void AboutDialog::done(int result)
{
    if (isVisible())
        static_cast<void>( // reported
            SaveWindowPosition(AboutPositionSection, {y() * TwipsPerPixel, x() * TwipsPerPixel}));
    QDialog::done(result);
}

} // namespace kv

// The boxes and their question. A question while a mouse button is down would take away the click that left
// the boxes, so it waits for the button.
#include "window/sequence_boxes.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QTimer>

#include "platform/dialogs.h"
#include "shell/control_tables.h"
#include "shell/sequence_rules.h"
#include "shell/start_up.h"
#include "state/settings.h"
#include "window/controls.h"

namespace kv {

namespace {

constexpr int SequencePlaces = 5;   // entries of a box: blank and four letters
constexpr int MouseButtonLook = 20; // ms

// A screen reader says what the letter stands for.
std::string LetterForEars(int place)
{
    constexpr std::string_view words[SequencePlaces] = {"none", "V, vertical bores", "H, horizontal bores",
                                                        "G, grooves", "R, routes"};
    return std::string(place >= 0 && place < SequencePlaces ? words[place] : words[0]);
}

} // namespace

SequenceBoxes::SequenceBoxes(QHBoxLayout& row) : QObject(nullptr)
{
    constexpr ControlMaker make{"Form1"};
    for (int i = 0; i < static_cast<int>(Boxes.size()); ++i) {
        QComboBox* const box = make.Combo(Indexed("Sq", i));
        for (int place = 0; place < SequencePlaces; ++place)
            box->addItem(Shown(SequenceLetter(place)));
        for (int place = 0; place < SequencePlaces; ++place)
            box->setItemData(place, Shown(LetterForEars(place)), Qt::AccessibleTextRole);
        const QString name = box->accessibleName();
        connect(box, &QComboBox::currentIndexChanged, box, [box, name](int place) {
            box->setAccessibleName(name + QStringLiteral(": ") + Shown(LetterForEars(place)));
        });
        box->setAccessibleName(name + QStringLiteral(": ") + Shown(LetterForEars(box->currentIndex())));
        connect(box, &QComboBox::activated, this, [this] { Store(); });
        Boxes[static_cast<std::size_t>(i)] = box;
        row.addWidget(box);
    }
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget* from, const QWidget* to) { FocusMoved(from, to); });
}

std::array<int, 4> SequenceBoxes::Places() const
{
    std::array<int, 4> places{};
    for (std::size_t i = 0; i < Boxes.size(); ++i)
        places[i] = Boxes[i]->currentIndex();
    return places;
}

void SequenceBoxes::Store()
{
    const std::array<int, 4> places = Places();
    StoreSequence({places[0], places[1], places[2], places[3]});
}

void SequenceBoxes::ShowStored()
{
    for (std::size_t i = 0; i < Boxes.size() && i < Config.Sequence.size(); ++i) {
        const int place = SequencePlace(Config.Sequence[i]);
        if (place >= 0)
            Boxes[i]->setCurrentIndex(place);
    }
}

// A box's list is a window of its own.
bool SequenceBoxes::Holds(const QWidget* widget) const
{
    for (; widget != nullptr; widget = widget->parentWidget()) {
        for (const QComboBox* const box : Boxes) {
            if (widget == box)
                return true;
        }
    }
    return false;
}

void SequenceBoxes::FocusMoved(const QWidget* from, const QWidget* to)
{
    if (Holds(to) && !Open) {
        Open = true;
        Entered = Places();
        EnteredSequence = Config.Sequence;
    }
    const bool isLeft = to != nullptr && !Holds(to) && Holds(from); // another program is no leaving
    if (isLeft)
        SettleSoon();
}

void SequenceBoxes::SettleSoon()
{
    const bool pressed = QApplication::mouseButtons() != Qt::NoButton;
    QTimer::singleShot(pressed ? MouseButtonLook : 0, this, [this] {
        if (QApplication::mouseButtons() != Qt::NoButton)
            SettleSoon();
        else
            Settle();
    });
}

void SequenceBoxes::Settle()
{
    if (!Open)
        return;
    Open = Holds(QApplication::focusWidget());
    const std::string left = LettersLeftOut(Config.Sequence);
    const bool isWorse = left.find_first_not_of(LettersLeftOut(EnteredSequence)) != std::string::npos;
    if (!isWorse) {
        EnteredSequence = Config.Sequence;
        Entered = Places();
        return;
    }
    const std::string asked = std::exchange(EnteredSequence, Config.Sequence); // the question lets events in
    const std::array<int, 4> before = std::exchange(Entered, Places());
    if (AskYesNo(SequenceQuestion(Config.Sequence), ProductName))
        return;
    for (std::size_t i = 0; i < Boxes.size(); ++i)
        Boxes[i]->setCurrentIndex(before[i]);
    Store();
    EnteredSequence = asked;
    Entered = before;
}

} // namespace kv

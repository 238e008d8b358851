#include "window/first_steps_notice.h"

#include <QEvent>
#include <QVBoxLayout>

#include "shell/first_steps.h"
#include "window/controls.h"

namespace kv {

FirstStepsNotice::FirstStepsNotice(QWidget* list) : QWidget(list), Words(new QLabel)
{
    setObjectName(QStringLiteral("FirstSteps"));
    Words->setObjectName(QStringLiteral("FirstStepsWords"));
    Words->setTextFormat(Qt::PlainText);
    Words->setWordWrap(true);
    Words->setAlignment(Qt::AlignHCenter);
    auto* const column = new QVBoxLayout(this);
    column->addStretch();
    column->addWidget(Words);
    Drawings = Step("FirstDrawings", "Choose Drawings...", ChooseDrawings);
    Control = Step("FirstControl", "Choose Control...", ChooseControl);
    Index = Step("FirstIndex", "Make INDICE.PRG", MakeIndex);
    Order = Step("FirstOrder", "Use V G H R", SetOrder);
    Examples = Step("FirstExamples", "Copy the Examples Here", CopyExamples);
    for (QWidget* const button : Buttons())
        column->addWidget(button, 0, Qt::AlignHCenter);
    column->addStretch();
    list->installEventFilter(this);
    hide();
}

bool FirstStepsNotice::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(object, event);
}

QPushButton* FirstStepsNotice::Step(const char* name, const char* caption, std::function<void()>& act)
{
    auto* const button = new QPushButton(QLatin1String(caption));
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, [this, &act] {
        act();
        if (isVisible())
            ShowSteps();
    });
    return button;
}

void FirstStepsNotice::ShowSteps()
{
    const FirstSteps steps = FirstStepsNow();
    QString words;
    for (const std::string& line : steps.Lines)
        words += (words.isEmpty() ? QString() : QStringLiteral("\n")) + Shown(line);
    Words->setText(words);
    Drawings->setVisible(true);
    Control->setVisible(steps.ChooseControl);
    Index->setVisible(steps.MakeIndex);
    Order->setVisible(steps.SetOrder);
    Examples->setVisible(steps.CopyExamples);
    FillList();
}

void FirstStepsNotice::ShowNothingFound()
{
    Words->setText(QStringLiteral("No name holds these words."));
    for (QWidget* const button : Buttons())
        button->hide();
    FillList();
}

void FirstStepsNotice::FillList()
{
    setGeometry(parentWidget()->rect());
    show();
}

} // namespace kv

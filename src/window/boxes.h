// Message boxes, questions and the folder browser in front of the window. Each is shown through a
// pointer, so that a test can answer in a person's place. A box of a run is also lines of the report. Where
// perhaps nobody is there (Shell.Unattended), and while a list of several drawings runs, it holds up nothing;
// where perhaps nobody is there a question without an answer is answered No, at once when the program is
// stopped.
#pragma once

#include <QString>

#include "platform/dialogs.h"

class QWidget;

namespace kv {

struct PersonHooks {
    void (*Tell)(const QString& text, const QString& title, BoxIcon icon);
    // Yes. The detail says what exactly is asked about.
    bool (*Ask)(const QString& text, const QString& title, const QString& detail);
    // The chosen folder in the host's form; empty when the browse was cancelled.
    QString (*ChooseFolder)(QWidget* parent, const QString& title, const QString& prompt,
                            const QString& folder);
};
extern PersonHooks Person;

constexpr int LongestQuestion = 60; // seconds that an unattended run waits for an answer

// What stands there at program start.
void TellInBox(const QString& text, const QString& title, BoxIcon icon);
bool AskInBox(const QString& text, const QString& title, const QString& detail);
QString ChooseFolderInBrowser(QWidget* parent, const QString& title, const QString& prompt,
                              const QString& folder);

} // namespace kv

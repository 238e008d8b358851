// Message boxes, questions and the folder browser in front of the window. Each is shown through a
// pointer, so that a test can answer in a person's place. Where perhaps nobody is there (Shell.Unattended)
// a box is also lines of the report and holds up nothing, and a question without an answer is answered No; at
// once when the program is stopped.
#pragma once

#include <QString>

#include "platform/dialogs.h"

class QWidget;

namespace kv {

struct PersonHooks {
    void (*Tell)(const QString& text, const QString& title, BoxIcon icon);
    bool (*Ask)(const QString& text, const QString& title); // Yes
    // The chosen folder in the host's form; empty when the browse was cancelled.
    QString (*ChooseFolder)(QWidget* parent, const QString& title, const QString& prompt,
                            const QString& folder);
};
extern PersonHooks Person;

constexpr int LongestQuestion = 60; // seconds that an unattended run waits for an answer

// What stands there at program start.
void TellInBox(const QString& text, const QString& title, BoxIcon icon);
bool AskInBox(const QString& text, const QString& title);
QString ChooseFolderInBrowser(QWidget* parent, const QString& title, const QString& prompt,
                              const QString& folder);

} // namespace kv

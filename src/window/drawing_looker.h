// Looks at drawings that have no program, each in a process of its own: a job leaves values to the next one,
// and none of those may come from a mere look.
#pragma once

#include <functional>
#include <memory>

#include <QByteArray>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QTimer>

#include "shell/drawing_look.h"

namespace kv {

class DrawingLooker : public QObject {
  public:
    DrawingLooker();
    ~DrawingLooker() override;

    // After a moment, so that a walk through a list starts one process and not a hundred. What was asked
    // before is forgotten. The settings are those that hold now.
    void Look(const std::string& drawing);
    void Forget();

    // With the drawing as it was asked for. Never called within Look.
    std::function<void(const std::string&, const DrawingLook&)> Done;
    QString Program; // that is started with --look; this one at first

  private:
    void Start();
    void TakeAnswer();
    void Fail(const QString& why);

    std::string Drawing;
    QTimer Wait, Patience;
    std::unique_ptr<QProcess> Looking;
};

// The other end: reads what is asked for from standard input and answers on standard output.
int AnswerLook();

} // namespace kv

// The explanation of one drawing: what became of each layer, text and entity, as a text to read and copy.
#pragma once

#include <string>

#include <QPlainTextEdit>

#include "window/drawing_looker.h"

namespace kv {

class ExplanationWindow : public QPlainTextEdit {
  public:
    explicit ExplanationWindow(QWidget* parent);

    // Converts the drawing in a process of its own, and comes to the front.
    void Explain(const std::string& drawing);

    DrawingLooker Looker;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
};

} // namespace kv

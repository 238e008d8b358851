// The About window: the product and its version; at program start the word that it is being prepared.
// Keeps its position with the person's own settings.
#pragma once

#include <QDialog>

namespace kv {

class AboutDialog : public QDialog {
  public:
    // `whenActive`: the window of the program start, which calls it as soon as it has been seen and
    // closes; null for the menu's.
    AboutDialog(QWidget* parent, void (*whenActive)());

    void Open();
    void done(int result) override;

  protected:
    bool event(QEvent* event) override;

  private:
    void Leave();

    void (*WhenActive)();
    const bool AtStart;
};

} // namespace kv

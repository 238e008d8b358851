// A row of widgets that goes on in a further row where it is too narrow for all of them.
#pragma once

#include <memory>
#include <vector>

#include <QLayout>

namespace kv {

class FlowLayout : public QLayout {
  public:
    explicit FlowLayout(int gap); // pixels between widgets and between rows
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override; // takes it
    int count() const override { return static_cast<int>(Items.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize minimumSize() const override; // of the widest widget
    QSize sizeHint() const override;    // all in one row
    void setGeometry(const QRect& area) override;

  private:
    int Arrange(const QRect& area, bool isMeant) const; // gives the height

    std::vector<std::unique_ptr<QLayoutItem>> Items;
    int Gap;
};

} // namespace kv

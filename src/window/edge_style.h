// The system's style, with edges of check boxes and radio buttons that can be seen on a dark screen too: at
// least 3 to 1 against the window.
#pragma once

#include <QColor>
#include <QPalette>
#include <QProxyStyle>

namespace kv {

class EdgeStyle : public QProxyStyle {
  public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

// The colour of such an edge; invalid where the style's own edge serves, on light screens.
QColor EdgeOn(const QPalette& palette);

} // namespace kv

#include "window/edge_style.h"

#include <QPainter>
#include <QStyleOption>

#include "window/report_model.h"

namespace kv {

namespace {

constexpr double LeastContrast = 3.0;
constexpr double DarkWindow = 4.5; // white text reads by more than that

} // namespace

QColor EdgeOn(const QPalette& palette)
{
    const QColor window = palette.color(QPalette::Window), base = palette.color(QPalette::Base);
    if (Contrast(Qt::white, window) < DarkWindow)
        return {};
    QColor edge = window;
    for (int lightness = window.lightness(); lightness <= 255; ++lightness) {
        edge.setHsl(window.hslHue(), window.hslSaturation(), lightness);
        if (Contrast(edge, window) >= LeastContrast && Contrast(edge, base) >= LeastContrast)
            break;
    }
    return edge;
}

void EdgeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isRadio = element == PE_IndicatorRadioButton;
    if (!isRadio && element != PE_IndicatorCheckBox)
        return;
    const QColor edge = EdgeOn(option->palette);
    if (!edge.isValid())
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, isRadio);
    painter->setPen(edge);
    painter->setBrush(Qt::NoBrush);
    const QRect box = option->rect.adjusted(0, 0, -1, -1);
    if (isRadio)
        painter->drawEllipse(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5));
    else
        painter->drawRect(box);
    painter->restore();
}

} // namespace kv

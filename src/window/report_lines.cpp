// Greedy wrapping by the widths of the single characters.
#include "window/report_lines.h"

#include <QFontMetricsF>

namespace kv {

ReportLines::ReportLines(const QFont& font) : Font(font)
{
    const QFontMetricsF metrics(font);
    for (std::size_t i = 0; i < Advances.size(); ++i)
        Advances[i] = metrics.horizontalAdvance(QChar(static_cast<char16_t>(i)));
    Height = QFontMetrics(font).height();
}

double ReportLines::AdvanceOf(QChar character) const
{
    return character.unicode() < Advances.size() ? Advances[character.unicode()]
                                                 : QFontMetricsF(Font).horizontalAdvance(character);
}

std::vector<QStringView> ReportLines::Wrap(const QString& text, double width) const
{
    const QStringView whole(text);
    std::vector<QStringView> lines;
    qsizetype start = 0, behindBlank = 0; // of the line; where it may end
    double used = 0, usedAtBlank = 0;
    for (qsizetype i = 0; i < whole.size(); ++i) {
        const double advance = AdvanceOf(whole[i]);
        if (used + advance > width && i > start) {
            const bool byWord = behindBlank > start;
            const qsizetype end = byWord ? behindBlank : i;
            lines.push_back(whole.sliced(start, end - start));
            used = byWord ? used - usedAtBlank : 0;
            start = end;
        }
        used += advance;
        if (whole[i] == QLatin1Char(' ')) {
            behindBlank = i + 1;
            usedAtBlank = used;
        }
    }
    lines.push_back(whole.sliced(start));
    return lines;
}

} // namespace kv

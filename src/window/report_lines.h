// Where a row of the report wraps. A report may have 100,000 rows and each may wrap anew when the
// window changes, which the toolkit's own text layout is a hundred times too slow for.
#pragma once

#include <array>
#include <vector>

#include <QFont>
#include <QString>
#include <QStringView>

namespace kv {

class ReportLines {
  public:
    explicit ReportLines(const QFont& font);

    // Words stay whole where they can; a path longer than the row breaks anywhere. At least one line.
    std::vector<QStringView> Wrap(const QString& text, double width) const;
    int LineHeight() const { return Height; }

  private:
    double AdvanceOf(QChar character) const;

    QFont Font;
    std::array<double, 256> Advances{}; // pixels, of nearly all characters that CP1252 knows
    int Height = 0;
};

} // namespace kv

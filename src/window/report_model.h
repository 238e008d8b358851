// The process report as a model, and the colours of its marks on the screen's own background.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QColor>

#include "state/report.h"

namespace kv {

// What a line is about, where it says so.
struct RowPlace {
    std::string Drawing;         // the one that ran
    std::size_t DrawnLine = 0;   // of its file: where the entity stands; 0: about none
    std::string Program;         // as the report shows it
    std::size_t ProgramLine = 0; // 0: about none
    bool IsNone() const { return DrawnLine == 0 && ProgramLine == 0; }
};

struct ShownRow {
    QString Text;
    QColor Colour; // of the mark; invalid for black, which stands for the screen's own text colour
    bool Centred = false;
    RowPlace Place{};
};

class ReportModel : public QAbstractListModel {
  public:
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void Add(const std::vector<ShownRow>& rows);
    void Clear();
    void SetBase(const QColor& base); // background of the view

    std::vector<ShownRow> Rows;

  private:
    QColor Base = Qt::white;
};

ShownRow ShownRowOf(const ReportRow& row); // of the job that runs
// Ratio of the luminances of text and background, 1 to 21.
double Contrast(const QColor& a, const QColor& b);
// On a dark base the colour is made lighter until it can be read; on a light one it stays.
QColor ReadableOn(const QColor& base, const QColor& colour);

} // namespace kv

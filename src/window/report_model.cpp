// Rows are kept as they are shown, since every repaint asks for them.
#include "window/report_model.h"

#include <cmath>
#include <cstdlib>

#include "shell/control_tables.h"
#include "state/run.h"
#include "window/controls.h"

namespace kv {

namespace {

constexpr double ReadableContrast = 4.5;
constexpr double DarkLuminance = 0.18; // below it white text reads better than black

double Linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour)
{
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
           0.0722 * Linear(colour.blueF());
}

std::size_t LineIn(const MessageLine& line, std::string_view name)
{
    const MessageValue* const value = FindValue(line, name);
    return value != nullptr && value->IsWhole ? std::strtoul(value->Text.c_str(), nullptr, 10) : 0;
}

RowPlace PlaceOf(const MessageLine& line)
{
    RowPlace place;
    place.DrawnLine = LineIn(line, "line");
    const MessageValue* const program = FindValue(line, "program");
    if (program != nullptr && !program->Text.empty()) {
        place.Program = program->Text;
        place.ProgramLine = LineIn(line, "at");
    }
    if (!place.IsNone())
        place.Drawing = Run.SourceFile;
    return place;
}

} // namespace

double Contrast(const QColor& a, const QColor& b)
{
    const double first = Luminance(a) + 0.05;
    const double second = Luminance(b) + 0.05;
    return first > second ? first / second : second / first;
}

QColor ReadableOn(const QColor& base, const QColor& colour)
{
    if (Luminance(base) >= DarkLuminance)
        return colour;
    QColor lifted = colour;
    for (int lightness = colour.lightness(); lightness <= 255; ++lightness) {
        lifted.setHsl(colour.hslHue(), colour.hslSaturation(), lightness);
        if (Contrast(lifted, base) >= ReadableContrast)
            break;
    }
    return lifted;
}

ShownRow ShownRowOf(const ReportRow& row)
{
    const bool black = row.Red == 0 && row.Green == 0 && row.Blue == 0;
    return {Shown(row.Text), black ? QColor() : QColor(row.Red, row.Green, row.Blue), row.Centred,
            PlaceOf(row.Line)};
}

int ReportModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(Rows.size());
}

QVariant ReportModel::data(const QModelIndex& index, int role) const
{
    const auto place = static_cast<std::size_t>(index.row());
    if (!index.isValid() || place >= Rows.size())
        return {};
    const ShownRow& row = Rows[place];
    if (role == Qt::DisplayRole)
        return row.Text;
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((row.Centred ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role == Qt::ForegroundRole && row.Colour.isValid())
        return ReadableOn(Base, row.Colour);
    return {};
}

QVariant ReportModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const ControlRow* const row = FindControl("Form1", "List2");
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section != 0 || row == nullptr)
        return {};
    return Shown(row->Caption);
}

void ReportModel::Add(const std::vector<ShownRow>& rows)
{
    if (rows.empty())
        return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(rows.size()) - 1);
    Rows.insert(Rows.end(), rows.begin(), rows.end());
    endInsertRows();
}

void ReportModel::Clear()
{
    beginResetModel();
    Rows.clear();
    endResetModel();
}

void ReportModel::SetBase(const QColor& base)
{
    if (base == Base)
        return;
    Base = base;
    if (!Rows.empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::ForegroundRole});
}

} // namespace kv

// Route records for tests of passes over whole routes: short ways to write them, to hand them to a
// pass, to read them back as rows of text, and to compare them in every field.
#pragma once

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "state/report.h"
#include "state/run.h"
#include "support/same_records.h"

namespace kv::rows {

inline RouteSegment Step(int kind, double x, double y, int dir = 0)
{
    RouteSegment record;
    record.Kind = static_cast<Int>(kind);
    record.X = ToSingle(x);
    record.Y = ToSingle(y);
    record.Dir = static_cast<Int>(dir);
    return record;
}

inline RouteSegment ArcStep(int kind, double x, double y, double aux1, double aux2, int dir = 0)
{
    RouteSegment record = Step(kind, x, y, dir);
    record.Aux1 = ToSingle(aux1);
    record.Aux2 = ToSingle(aux2);
    return record;
}

inline void Hand(const std::vector<RouteSegment>& records)
{
    RouteSegments.Clear();
    for (const RouteSegment& record : records)
        RouteSegments.Append(record);
    Run.SegmentCount = -77; // a pass that stores its list sets it
}

inline std::vector<RouteSegment> All()
{
    return {RouteSegments.begin() + 1, RouteSegments.end()};
}

// At most three decimals, no zeros behind them.
inline std::string Short(Single value)
{
    return PlainText(ToSingle(std::round(static_cast<double>(value) * 1000) / 1000));
}

// "-1 104 104", and for arcs the centre or the angles: "3 100 96 90 270"; a Dir that is not 0 follows
// as "d-8".
inline std::string Row(const RouteSegment& record)
{
    std::string text = WholeText(record.Kind) + " " + Short(record.X) + " " + Short(record.Y);
    if (record.Kind == 3 || record.Kind == -3)
        text += " " + Short(record.Aux1) + " " + Short(record.Aux2);
    if (record.Dir != 0)
        text += " d" + WholeText(record.Dir);
    return text;
}

inline std::vector<std::string> RowsOf(const std::vector<RouteSegment>& records)
{
    std::vector<std::string> rows;
    for (const RouteSegment& record : records)
        rows.push_back(Row(record));
    return rows;
}

// The first place where two lists differ, or an empty text.
inline std::string Difference(const std::vector<RouteSegment>& got, const std::vector<RouteSegment>& wanted)
{
    if (got.size() != wanted.size())
        return WholeText(static_cast<long long>(got.size())) + " records, not " +
               WholeText(static_cast<long long>(wanted.size()));
    for (std::size_t i = 0; i < got.size(); ++i)
        if (FieldsOf(got[i]) != FieldsOf(wanted[i]))
            return "record " + WholeText(static_cast<long long>(i) + 1) + ": " + Row(got[i]) + ", not " +
                   Row(wanted[i]);
    return "";
}

// The report while the object lives, each line of it.
struct ReportLines {
    ReportLines()
    {
        Lines().clear();
        Report.ShowRow = [](const ReportRow& row) { Lines().push_back(row.Text); };
        Report.MostEqualLines = std::numeric_limits<std::size_t>::max();
    }
    ~ReportLines()
    {
        Report.ShowRow = nullptr;
        Report.MostEqualLines = ReportHooks().MostEqualLines;
    }
    ReportLines(const ReportLines&) = delete;
    ReportLines& operator=(const ReportLines&) = delete;

    static std::vector<std::string>& Lines()
    {
        static std::vector<std::string> lines;
        return lines;
    }
    static std::vector<std::string> Shown()
    {
        ReportMessage(2, "");
        return Lines();
    }
};

} // namespace kv::rows

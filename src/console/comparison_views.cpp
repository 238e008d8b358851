// One table for all three: the text fills its columns with blanks, the page has it as a table.
#include "console/comparison_views.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include <nlohmann/json.hpp>

#include "scene/svg_picture.h"

namespace kv {

namespace {

constexpr const char* EstimateNote =
    "The time is an estimate from feeds and fixed times; tool changes are left out.";
constexpr std::size_t Columns = 11;
using TableRow = std::array<std::string, Columns>;
const TableRow ColumnNames = {"Control", "Programs", "Lines", "Bores",  "Stops", "Saw cuts",
                              "Routes",  "Path m",   "Time",  "Doubts", "Faults"};

std::string Rounded(double value, int decimals)
{
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return text.data();
}

TableRow CellsOf(const ComparedControl& row)
{
    const auto number = [](std::size_t count) { return std::to_string(count); };
    TableRow cells;
    cells.fill("-");
    cells[0] = row.Control;
    cells[9] = number(row.Doubts);
    cells[10] = number(row.Faults);
    if (!row.Failure.empty())
        return cells;
    const RunFigures& figures = row.Figures;
    const TableRow done = {row.Control,
                           number(row.Programs),
                           number(row.Lines),
                           number(figures.Bores),
                           number(figures.Stops),
                           number(figures.Saws),
                           number(figures.Routes),
                           Rounded(figures.PathLength / 1000, 3),
                           TimeForPeople(figures.Seconds),
                           cells[9],
                           cells[10]};
    return done;
}

// The first column to the left, numbers to the right.
std::string TextRow(const TableRow& cells, const std::array<std::size_t, Columns>& widths)
{
    std::string text;
    for (std::size_t i = 0; i < Columns; ++i) {
        const std::string blanks(widths[i] - cells[i].size(), ' ');
        text += i == 0 ? cells[i] + blanks : "  " + blanks + cells[i];
    }
    return text + "\n";
}

nlohmann::ordered_json JsonOfRow(const ComparedControl& row)
{
    nlohmann::ordered_json object{{"control", row.Option}, {"name", row.Control}};
    if (row.Failure.empty())
        object.update({{"programs", row.Programs},
                       {"lines", row.Lines},
                       {"bores", row.Figures.Bores},
                       {"stops", row.Figures.Stops},
                       {"sawCuts", row.Figures.Saws},
                       {"routes", row.Figures.Routes},
                       {"pathMillimetres", row.Figures.PathLength},
                       {"estimatedSeconds", row.Figures.Seconds}});
    else
        object["failure"] = row.Failure;
    object["doubts"] = row.Doubts;
    object["faults"] = row.Faults;
    object["onlyHere"] = row.OnlyHere;
    return object;
}

std::string HtmlRow(const TableRow& cells, const std::string& tag)
{
    std::string text = "<tr>";
    for (const std::string& cell : cells)
        text += "<" + tag + ">" + XmlText(cell) + "</" + tag + ">";
    return text + "</tr>\n";
}

// What the table has no column for; empty for a control that has nothing of it.
std::vector<std::string> Remarks(const ComparedControl& row)
{
    std::vector<std::string> remarks;
    if (!row.Failure.empty())
        remarks.push_back("no program: " + row.Failure);
    for (const std::string& line : row.OnlyHere)
        if (line != row.Failure)
            remarks.push_back("only here: " + line);
    return remarks;
}

} // namespace

std::string ComparisonText(const Comparison& comparison)
{
    std::vector<TableRow> table = {ColumnNames};
    for (const ComparedControl& row : comparison.Rows)
        table.push_back(CellsOf(row));
    std::array<std::size_t, Columns> widths{};
    for (const TableRow& cells : table)
        for (std::size_t i = 0; i < Columns; ++i)
            widths[i] = std::max(widths[i], cells[i].size());
    std::string text = comparison.Drawing + "\n";
    for (const TableRow& cells : table)
        text += TextRow(cells, widths);
    for (const ComparedControl& row : comparison.Rows)
        for (const std::string& remark : Remarks(row))
            text += row.Control + ": " + remark + "\n";
    return text + EstimateNote + "\n";
}

std::string ComparisonJson(const Comparison& comparison)
{
    nlohmann::ordered_json document{{"drawing", comparison.Drawing},
                                    {"controls", nlohmann::ordered_json::array()}};
    for (const ComparedControl& row : comparison.Rows)
        document["controls"].push_back(JsonOfRow(row));
    return document.dump(1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

std::string ComparisonHeader(const Comparison& comparison)
{
    std::string text = "<header><h1>" + XmlText(comparison.Drawing) + "</h1>\n<table class=\"figures\">" +
                       HtmlRow(ColumnNames, "th");
    for (const ComparedControl& row : comparison.Rows)
        text += HtmlRow(CellsOf(row), "td");
    text += "</table>\n<p>" + std::string(EstimateNote) + "</p>\n<ul>\n";
    for (const ComparedControl& row : comparison.Rows)
        for (const std::string& remark : Remarks(row))
            text += "<li>" + XmlText(row.Control + ": " + remark) + "</li>\n";
    return text + "</ul></header>\n";
}

} // namespace kv

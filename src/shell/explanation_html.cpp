// The explanation as a page: plain tables, readable on a tablet beside the machine, in light and dark. A
// telephone has no room for four columns: there the cells of a row stand below each other.
#include "platform/paths.h"
#include "platform/stand_ins.h"
#include "platform/text.h"
#include "shell/explanation_views.h"

namespace kv {

namespace {

constexpr std::string_view PageHead = R"(<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Korvanti: drawings explained</title>
<style>
:root { color-scheme: light dark; --edge: #8886; --doubt: #b0451b; --good: #2e7d4f; }
@media (prefers-color-scheme: dark) { :root { --doubt: #ff9d6b; --good: #7fd3a0; } }
body { font: 16px/1.45 system-ui, sans-serif; max-width: 62rem; margin: 0 auto; padding: 1rem; }
h1 { font-size: 1.35rem; overflow-wrap: anywhere; } h2 { font-size: 1.05rem; margin: 1.4rem 0 .3rem; }
table { border-collapse: collapse; width: 100%; }
td, th { border-top: 1px solid var(--edge); padding: .35rem .5rem; text-align: left; vertical-align: top;
  overflow-wrap: anywhere; }
.number { overflow-wrap: normal; white-space: nowrap; }
.layer, .entities { min-width: 9rem; } .means { min-width: 6rem; }
.doubt { color: var(--doubt); } .good { color: var(--good); } .sum { font-weight: 600; }
article + article { border-top: 3px solid var(--edge); margin-top: 2rem; }
@media (max-width: 40rem) {
  th { display: none; }
  td { display: block; border: 0; padding: .1rem 0; }
  td:first-child { border-top: 1px solid var(--edge); padding-top: .5rem; }
  .layer, .number { font-weight: 600; white-space: normal; }
}
</style></head><body>
)";

std::string Escaped(std::string_view ansi)
{
    std::string text;
    for (const char c : ansi) {
        switch (c) {
        case '&':
            text += "&amp;";
            break;
        case '<':
            text += "&lt;";
            break;
        case '>':
            text += "&gt;";
            break;
        case '"':
            text += "&quot;";
            break;
        default:
            text += static_cast<unsigned char>(c) < ' ' || c == '\x7F' ? '?' : c;
        }
    }
    return Utf8FromAnsi(text);
}

std::string TableCell(std::string_view ansi, std::string_view style = {})
{
    std::string cell = "<td";
    if (!style.empty())
        cell += " class=\"" + std::string(style) + "\"";
    return cell + ">" + Escaped(ansi) + "</td>";
}

std::string_view FateStyle(const ExplainedKind& kind)
{
    switch (kind.Fate) {
    case EntityFate::Machined:
        return kind.Why == Message::None ? "good" : "doubt";
    case EntityFate::Left:
    case EntityFate::Lost:
    case EntityFate::Unreached:
        return "doubt";
    case EntityFate::Border:
    case EntityFate::Read:
    case EntityFate::MeansNothing:
        break;
    }
    return {};
}

std::string LayerRows(const ExplainedLayer& layer)
{
    std::string rows;
    for (const ExplainedState& state : layer.States) {
        std::string entities;
        for (const ExplainedKind& kind : state.Kinds) {
            entities += "<div";
            if (const std::string_view style = FateStyle(kind); !style.empty())
                entities += " class=\"" + std::string(style) + "\"";
            entities += ">" + Escaped(KindSentence(kind)) + "</div>";
        }
        rows += "<tr>" + TableCell(layer.Name, "layer") +
                TableCell(StateTitle(layer, state), layer.Nearest.empty() ? "means" : "means doubt") +
                TableCell(ValuesSentence(state)) + "<td class=\"entities\">" + entities + "</td></tr>\n";
    }
    return rows;
}

std::string Rows(const std::vector<std::string>& texts)
{
    std::string rows;
    for (const std::string& text : texts)
        rows += "<tr>" + TableCell(text) + "</tr>\n";
    return rows;
}

std::string Section(const std::string& title, const std::string& rows)
{
    return rows.empty() ? std::string() : "<h2>" + title + "</h2>\n<table>\n" + rows + "</table>\n";
}

std::string DoubtRows(const std::vector<ReportRow>& report)
{
    std::string rows;
    for (const ReportRow& row : report) {
        const MessagePage* const page = FindPage(static_cast<long long>(row.Line.Number));
        if (page == nullptr || !NeedsAttention(*page))
            continue;
        rows += "<tr>" + TableCell(WholeText(static_cast<long long>(page->Number)), "number") +
                TableCell(row.Text + PlaceSentence(row.Line), "doubt") + TableCell(page->Cure) + "</tr>\n";
    }
    return rows;
}

std::string Article(const ExplainedDrawing& drawing)
{
    const Explanation& what = drawing.What;
    std::string layers = "<tr><th>Layer</th><th>Means</th><th>Values</th><th>Entities</th></tr>\n";
    for (const ExplainedLayer& layer : what.Layers)
        layers += LayerRows(layer);
    std::vector<std::string> texts, tools, programs;
    for (const ExplainedText& text : what.Texts)
        texts.push_back("Line " + WholeText(text.Line) + ", read as " + text.As + ": " + text.Text);
    for (const ExplainedTool& tool : what.Tools)
        tools.push_back(ToolSentence(tool, what.HasHead));
    for (const ExplainedProgram& program : what.Programs)
        programs.push_back(ShownPath(program.Path) + ": " + Counted(program.Lines, "line") + " from " +
                           Counted(program.Entities, "entity"));
    return "<article>\n<h1>" + Escaped(PathFromUtf8(drawing.Drawing)) + "</h1>\n<p>" +
           Escaped(PanelSentence(what.Panel)) + "</p>\n<p class=\"sum\">" + Escaped(SumSentence(what)) +
           "</p>\n" + Section("Doubts and faults", DoubtRows(drawing.Rows)) + Section("Layers", layers) +
           Section("Texts", Rows(texts)) + Section("Tools", Rows(tools)) +
           Section("Programs", Rows(programs)) + "</article>\n";
}

} // namespace

std::string ExplanationPage(const std::vector<ExplainedDrawing>& drawings)
{
    std::string page(PageHead);
    for (const ExplainedDrawing& drawing : drawings)
        page += Article(drawing);
    return page + "</body></html>\n";
}

} // namespace kv

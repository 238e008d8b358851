// The explanation as one JSON object for each drawing.
#include "console/explanation_json.h"
#include "console/list_report.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace kv {

namespace {

using Json = nlohmann::ordered_json;

Json ShownKind(const ExplainedKind& kind)
{
    Json shown = {{"kind", Utf8FromAnsi(kind.Kind)}, {"count", kind.Count}, {"answer", FateName(kind.Fate)}};
    if (kind.Why != Message::None)
        shown["message"] = static_cast<int>(kind.Why);
    shown["line"] = kind.FirstLine;
    if (!kind.Handle.empty())
        shown["handle"] = Utf8FromAnsi(kind.Handle);
    return shown;
}

Json ShownState(const ExplainedState& state)
{
    Json values = Json::array(), kinds = Json::array();
    for (const LayerValue& value : state.Values)
        values.push_back({{"letter", value.Letter},
                          {"meaning", value.Meaning},
                          {"value", Utf8FromAnsi(value.Value)},
                          {"from", value.From}});
    for (const ExplainedKind& kind : state.Kinds)
        kinds.push_back(ShownKind(kind));
    Json shown = {
        {"work", WorkName(state.Work)}, {"values", std::move(values)}, {"entities", std::move(kinds)}};
    if (!state.Renamed.empty())
        shown["renamed"] = Utf8FromAnsi(state.Renamed);
    return shown;
}

Json ShownLayer(const ExplainedLayer& layer)
{
    Json operations = Json::array();
    for (const ExplainedState& state : layer.States)
        operations.push_back(ShownState(state));
    Json shown = {{"layer", Utf8FromAnsi(layer.Name)}, {"operations", std::move(operations)}};
    if (!layer.Nearest.empty())
        shown["nearest"] = layer.Nearest;
    return shown;
}

Json ShownSingle(Single value)
{
    return std::stod(PlainText(value)); // the digits of a Single
}

Json ShownPanel(const ExplainedPanel& panel)
{
    if (!panel.IsKnown)
        return nullptr;
    Json from = Json::array();
    for (const ExplainedKind& kind : panel.From)
        from.push_back(ShownKind(kind));
    Json shown = {{"length", ShownSingle(panel.Length)},
                  {"width", ShownSingle(panel.Width)},
                  {"thickness", ShownSingle(panel.Thickness)},
                  {"x", ShownSingle(panel.X)},
                  {"y", ShownSingle(panel.Y)},
                  {"unit", panel.IsInch ? "inch" : "mm"},
                  {"layer", Utf8FromAnsi(panel.BorderLayer)},
                  {"from", std::move(from)}};
    if (!panel.DrawnUnit.empty())
        shown["insunits"] = panel.DrawnUnit;
    return shown;
}

} // namespace

nlohmann::ordered_json ExplanationJson(const ExplainedDrawing& drawing)
{
    const Explanation& what = drawing.What;
    Json layers = Json::array(), texts = Json::array(), tools = Json::array(), programs = Json::array();
    for (const ExplainedLayer& layer : what.Layers)
        layers.push_back(ShownLayer(layer));
    for (const ExplainedText& text : what.Texts)
        texts.push_back(
            {{"line", text.Line}, {"as", Utf8FromAnsi(text.As)}, {"text", Utf8FromAnsi(text.Text)}});
    for (const ExplainedTool& tool : what.Tools)
        tools.push_back(
            {{"tool", Utf8FromAnsi(tool.Tool)}, {"entities", tool.Entities}, {"inHead", tool.IsInHead}});
    for (const ExplainedProgram& program : what.Programs)
        programs.push_back({{"path", Utf8FromAnsi(ShownPath(program.Path))},
                            {"lines", program.Lines},
                            {"entities", program.Entities}});
    return {{"drawing", drawing.Drawing},
            {"outcome", drawing.Outcome},
            {"panel", ShownPanel(what.Panel)},
            {"layers", std::move(layers)},
            {"texts", std::move(texts)},
            {"tools", std::move(tools)},
            {"programs", std::move(programs)},
            {"sum", {{"asking", what.Asking}, {"worked", what.Worked}}},
            {"lines", ShownReportLines(drawing.Rows)}};
}

} // namespace kv

// The explanation as lines of text, from the panel to the sum.
#include "shell/explanation_views.h"

#include <set>

#include "platform/paths.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr std::size_t MostIdleLayers = 20; // that mean nothing

class Lines {
  public:
    void Add(std::size_t indent, const std::string& ansi)
    {
        std::string shown = ansi; // a name must not steer the terminal
        for (char& c : shown)
            if (static_cast<unsigned char>(c) < ' ' || c == '\x7F')
                c = '?';
        Text += std::string(indent, ' ') + Utf8FromAnsi(shown) + "\n";
    }
    std::string Text;
};

bool IsIdle(const ExplainedLayer& layer)
{
    for (const ExplainedState& state : layer.States)
        if (state.Work != LayerWork::Nothing)
            return false;
    return layer.Nearest.empty();
}

void AddLayer(Lines& lines, const ExplainedLayer& layer)
{
    const std::string name = layer.Name.empty() ? "(no layer)" : layer.Name;
    for (const ExplainedState& state : layer.States) {
        lines.Add(2, name + ": " + StateTitle(layer, state));
        if (const std::string values = ValuesSentence(state); !values.empty())
            lines.Add(4, values);
        for (const ExplainedKind& kind : state.Kinds)
            lines.Add(4, KindSentence(kind));
    }
}

void AddLayers(Lines& lines, const Explanation& what)
{
    lines.Add(0, "Layers");
    std::size_t idle = 0;
    for (const ExplainedLayer& layer : what.Layers)
        if (!IsIdle(layer) || ++idle <= MostIdleLayers)
            AddLayer(lines, layer);
    if (idle > MostIdleLayers)
        lines.Add(2, WholeText(static_cast<Long>(idle - MostIdleLayers)) + " further layers mean nothing");
}

void AddReport(Lines& lines, const std::vector<ReportRow>& rows)
{
    bool any = false;
    std::set<Message> shown; // cures, each once
    for (const ReportRow& row : rows) {
        const MessagePage* const page = FindPage(static_cast<long long>(row.Line.Number));
        if (page == nullptr || !NeedsAttention(*page))
            continue;
        if (!any)
            lines.Add(0, "Doubts and faults");
        any = true;
        lines.Add(2,
                  WholeText(static_cast<long long>(page->Number)) + " " + row.Text + PlaceSentence(row.Line));
        if (shown.insert(page->Number).second && HasCure(*page))
            lines.Add(6, "Cure: " + std::string(page->Cure));
    }
}

} // namespace

std::string ExplanationText(const ExplainedDrawing& drawing)
{
    const Explanation& what = drawing.What;
    Lines lines;
    lines.Add(0, PanelSentence(what.Panel));
    AddLayers(lines, what);
    if (!what.Texts.empty())
        lines.Add(0, "Texts");
    for (const ExplainedText& text : what.Texts)
        lines.Add(2, "line " + WholeText(text.Line) + ", read as " + text.As + ": " + text.Text);
    if (!what.Tools.empty())
        lines.Add(0, "Tools");
    for (const ExplainedTool& tool : what.Tools)
        lines.Add(2, ToolSentence(tool, what.HasHead));
    if (!what.Programs.empty())
        lines.Add(0, "Programs (none is written by this call)");
    for (const ExplainedProgram& program : what.Programs)
        lines.Add(2, ShownPath(program.Path) + ": " + Counted(program.Lines, "line") + " from " +
                         Counted(program.Entities, "entity"));
    AddReport(lines, drawing.Rows);
    lines.Add(0, SumSentence(what));
    return drawing.Drawing + "\n" + lines.Text;
}

} // namespace kv

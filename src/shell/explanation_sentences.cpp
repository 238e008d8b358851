// Plain sentences about panel, layers, tools and the sum.
#include <algorithm>

#include "platform/text.h"
#include "shell/explanation_views.h"

namespace kv {

namespace {

std::string_view FirstSentence(std::string_view text)
{
    const std::size_t end = text.find(". ");
    return text.substr(0, end == std::string_view::npos ? text.size() : end + 1);
}

// "the setting LeadLength", nothing for what the name itself gives.
std::string FromText(const LayerValue& value)
{
    if (value.From == "name")
        return {};
    if (value.From == "entity")
        return " (from the drawing)";
    return " (" + value.From + ")";
}

} // namespace

std::string Counted(Long count, const std::string& word)
{
    if (count == 1)
        return "1 " + word;
    const bool endsInY = word.ends_with("y");
    return WholeText(count) + " " + (endsInY ? word.substr(0, word.size() - 1) + "ies" : word + "s");
}

std::string PanelSentence(const ExplainedPanel& panel)
{
    if (!panel.IsKnown)
        return "No panel was found.";
    std::string text = "Panel " + PlainText(panel.Length) + " x " + PlainText(panel.Width) + " x " +
                       PlainText(panel.Thickness) + (panel.IsInch ? " inch" : " mm") + " at (" +
                       PlainText(panel.X) + ", " + PlainText(panel.Y) + ")";
    std::string from;
    for (const ExplainedKind& kind : panel.From)
        from += (from.empty() ? "" : " and ") + Counted(kind.Count, kind.Kind);
    if (!from.empty())
        text += ", from " + from + " on " + panel.BorderLayer;
    text += panel.IsInch ? "; taken for inch" : "; taken for mm";
    if (!panel.DrawnUnit.empty())
        text += "; $INSUNITS says " + panel.DrawnUnit;
    return text;
}

std::string KindSentence(const ExplainedKind& kind)
{
    std::string text = WholeText(kind.Count) + " " + kind.Kind + ": ";
    switch (kind.Fate) {
    case EntityFate::Machined:
        return text +
               (kind.Why == Message::None ? "machined" : "machined as a route, the pocket is not cleared");
    case EntityFate::Border:
        return text + "the panel's border";
    case EntityFate::Read:
        return text + (IsTextKind(kind.Kind) ? "read" : "a start mark, read");
    case EntityFate::Left:
        break;
    case EntityFate::MeansNothing:
        return text + "nothing";
    case EntityFate::Unreached:
        return text + "the conversion ended before it";
    case EntityFate::Lost:
        return text + "lost, by a fault of Korvanti";
    }
    const MessagePage* const page = FindPage(static_cast<long long>(kind.Why));
    text += "left out";
    if (page != nullptr)
        text += ", message " + WholeText(static_cast<long long>(kind.Why)) + ": " +
                std::string(FirstSentence(page->Cause));
    return text + " First at line " + WholeText(kind.FirstLine) +
           (kind.Handle.empty() ? "" : ", handle " + kind.Handle);
}

std::string ValuesSentence(const ExplainedState& state)
{
    std::string text;
    for (const LayerValue& value : state.Values)
        text += (text.empty() ? "" : "; ") + value.Letter + " " + value.Meaning + ": " + value.Value +
                FromText(value);
    return text;
}

std::string StateTitle(const ExplainedLayer& layer, const ExplainedState& state)
{
    std::string title;
    if (!state.Renamed.empty())
        title = "renamed " + state.Renamed + " by an instruction, ";
    if (state.Work == LayerWork::Nothing)
        return title + "means nothing" + (layer.Nearest.empty() ? std::string() : "; " + layer.Nearest + "?");
    if (layer.States.size() > 1)
        title += "operation " + WholeText(static_cast<Long>(&state - layer.States.data() + 1)) + ": ";
    return title + std::string(WorkName(state.Work));
}

std::string SumSentence(const Explanation& explanation)
{
    if (!explanation.IsWhole)
        return "The conversion ended before the programs were written.";
    return WholeText(explanation.Worked) + " of " + WholeText(explanation.Asking) +
           (explanation.Asking == 1 ? " entity" : " entities") + " on machined layers became work.";
}

std::string PlaceSentence(const MessageLine& line)
{
    const MessageValue* const inFile = FindValue(line, "line");
    if (inFile == nullptr)
        return {};
    const MessageValue* const handle = FindValue(line, "handle");
    return " (line " + inFile->Text + (handle == nullptr ? "" : ", handle " + handle->Text) + ")";
}

bool HasCure(const MessagePage& page)
{
    return !page.Cure.empty() && !BeginsWith(page.Cure, "Nothing is to be done");
}

bool NeedsAttention(const MessagePage& page)
{
    return page.Severity != MessageSeverity::Note || HasCure(page);
}

std::string ToolSentence(const ExplainedTool& tool, bool hasHead)
{
    std::string text = "T" + tool.Tool + ": " + Counted(tool.Entities, "entity");
    if (tool.IsInHead)
        text += ", a drill of DT.Par";
    else if (hasHead)
        text += ", not in DT.Par";
    return text;
}

} // namespace kv

// An explained drawing as text for a terminal or a window, and as a page for a browser.
#pragma once

#include <string>
#include <vector>

#include "ledger/explanation.h"
#include "state/report.h"

namespace kv {

struct ExplainedDrawing {
    std::string Drawing; // as typed, UTF-8
    std::string Outcome; // of its conversion
    Explanation What;
    std::vector<ReportRow> Rows;
};

std::string ExplanationText(const ExplainedDrawing& drawing); // UTF-8
// One page that needs nothing from elsewhere.
std::string ExplanationPage(const std::vector<ExplainedDrawing>& drawings);

// Sentences that all views share; CP1252.
std::string PanelSentence(const ExplainedPanel& panel);
std::string KindSentence(const ExplainedKind& kind);
std::string ValuesSentence(const ExplainedState& state);
std::string StateTitle(const ExplainedLayer& layer, const ExplainedState& state);
std::string SumSentence(const Explanation& explanation);
std::string ToolSentence(const ExplainedTool& tool, bool hasHead);
// " (line 256, handle BAD1)" of the drawing's file; empty where the line names none. CP1252.
std::string PlaceSentence(const MessageLine& line);
bool HasCure(const MessagePage& page);        // that is more than "nothing is to be done"
bool NeedsAttention(const MessagePage& page); // doubts and faults, and notes that have a cure
// Of a count: "1 bore", "2 bores".
std::string Counted(Long count, const std::string& word);

} // namespace kv

// One drawing of a list: converted here, converted for later, or placed from what another process made of it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "job/converted_job.h"
#include "platform/numbers.h"
#include "state/report.h"

namespace kv {

// What the writers were given.
struct OperationCounts {
    Long Bores = 0, Grooves = 0, HorizontalBores = 0, Routes = 0, HeadPositions = 0;
};

struct DoneDrawing {
    std::string Drawing; // as typed
    std::string Outcome; // as RunJob gives it
    std::vector<ReportRow> Rows;
    std::vector<std::string> Files; // host paths
    OperationCounts Counts;
    double Seconds = 0;
};

void CountOperationsOfDrawings(); // from now on

DoneDrawing ConvertHere(const std::string& drawing, const std::string& outputName, int system);
// Nothing is written. `withSource` marks the drawing's file, so that a later reader knows it again.
ConvertedJob ConvertForLater(const std::string& drawing, const std::string& outputName, int system,
                             bool withSource);
// What a list shows of it before it is placed.
DoneDrawing ShownOf(const ConvertedJob& job);
// Nothing: the installation is not as it was taken to be, and the drawing is to be converted at its turn.
std::optional<DoneDrawing> PlaceHere(const ConvertedJob& job);
// The conversion at its turn, far from the call that named the drawing. It fails where the drawing is not
// there any more, or is another one.
DoneDrawing ConvertAtItsTurn(const ConvertedJob& job);
// A drawing that came to nothing, with a line for the report.
ConvertedJob FailedForLater(const std::string& drawing, const MessageLine& line);

} // namespace kv

// What a drawing asks of an installation and gives to it, as steps that can be repeated: by another process,
// later and elsewhere. While steps are recorded no question is asked that only the installation can answer
// at its turn; each step says which answer was taken for granted. Whoever repeats the steps learns by the
// first one that does not fit that the drawing must be converted there.
#pragma once

#include <string>
#include <vector>

#include "platform/numbers.h"

namespace kv {

enum class StepKind {
    Comments, // Lines: the comment lines of the program at Path, where the index at Folder is there
    Index,    // there is an index at Path
    Folders,  // the folder Path and those above it
    Program,  // Text at Path, in the installation Folder
    Record,   // Text in the index at Path, in the installation Folder
    HandOver, // Text is the name of the last program, in the installation Folder
    Notes,    // Lines, from 1, at Path, in the installation Folder
    Name,     // Text for ProgramList
    CutList,  // the row Text in the list at Path
    Wanted,   // the drawing's program is at Path, made or not; Text is its name, Lines its form and wish
};
constexpr int StepKinds = 10;

struct OutputStep {
    StepKind Kind = StepKind::Name;
    std::string Folder, Path, Text;
    std::vector<std::string> Lines;
    bool Metric = true; // of the cut list
};

// For as long as it lives, drawings hand nothing over: their steps are in Outputs.Steps.
struct StepsRecorded {
    StepsRecorded();
    ~StepsRecorded();
    StepsRecorded(const StepsRecorded&) = delete;
    StepsRecorded& operator=(const StepsRecorded&) = delete;
};
// Of those who hand over: true when the step was recorded and nothing else is to be done.
bool IsRecorded(OutputStep step);

// Does what the steps say, for the drawing that runs. False at the first one that comes out otherwise than
// it was recorded; what the steps before it handed over is still there then.
bool RepeatSteps(const std::vector<OutputStep>& steps);

} // namespace kv

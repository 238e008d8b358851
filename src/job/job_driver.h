// One job: from a job line to the drawing's programs. The only file that knows every pass.
#pragma once

#include <string>
#include <string_view>

namespace kv {

constexpr char PartSeparator = '\xFF'; // between drawing and output of a job line

// Told when a stage of the conversion is done; `trace` looks at the arrays there.
struct StageHooks {
    void (*Done)(std::string_view stage) = nullptr;
    bool StopBeforeWriters = false;
};
extern StageHooks Stages;

// The whole job. The outcome is in Run.RunFailed, the report and Run.FailedFiles. The job line is
// trimmed and its bytes 0xFF become "^". Nothing is thrown.
void ProcessDrawingFile(std::string& jobLine);
// The 23 steps on what the reader left.
void ConvertDrawing();

} // namespace kv

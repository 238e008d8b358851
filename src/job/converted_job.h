// What one process made of a drawing, for the process that brings it to its place: the steps to the
// installation, the report and the outcome. It holds nothing that depends on the drawings around it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/numbers.h"
#include "state/report.h"
#include "writers/job_output.h"

namespace kv {

struct ConvertedJob {
    std::string Drawing;    // as typed
    std::string SourceFile; // full path
    std::string OutputName; // of the job line
    Int System = 0;         // before the drawing was read
    ContentsMark Source;    // of the drawing's file
    bool Failed = false;
    std::vector<std::string> FailedFiles;
    std::vector<ReportRow> Rows;
    std::vector<Long> Counts; // of the front end
    double Seconds = 0;
    std::vector<OutputStep> Steps;
};

// Numbers and texts one behind the other, each led by its length.
class FieldsText {
  public:
    void Put(std::string_view field);
    void PutNumber(long long number);
    std::string Text;
};
class FieldsReader {
  public:
    explicit FieldsReader(std::string_view text) : Rest(text) {}
    std::string_view Take();
    long long TakeNumber();
    // How many fields follow; never more than the text can hold.
    std::size_t TakeCount();
    std::size_t Left() const { return Rest.size(); } // bytes
    bool AtEnd() const { return Rest.empty(); }
    bool Ok = true; // false once something did not fit; all that is taken then is empty

  private:
    std::string_view Rest;
};

std::string ConvertedJobText(const ConvertedJob& job);
// Nothing when the text is not one.
std::optional<ConvertedJob> ConvertedJobOf(std::string_view text);

// Hands over what the other process made, as the next job of this one, and shows its report. False when
// the installation is not as that process took it to be: then nothing is done, and the drawing is to be
// converted here.
bool PlaceConvertedJob(const ConvertedJob& job);

} // namespace kv

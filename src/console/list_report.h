// What a list of drawings shows: rows as they come, or one JSON document at the end; and the exit status.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "console/drawing_run.h"

namespace kv {

// Lines of the report for scripts: number, severity, text, colour and arguments.
nlohmann::ordered_json ShownReportLines(const std::vector<ReportRow>& rows);

class ListReport {
  public:
    // Sets the hooks of the report and of placing. One at a time. Of so many drawings; 0: not known.
    ListReport(bool json, std::size_t drawings);
    ListReport(const ListReport&) = delete;
    ListReport& operator=(const ListReport&) = delete;

    // The next drawing; what is known by now of drawings that could not be placed is shown too.
    void Show(const DoneDrawing& done);
    // The list was stopped before so many more.
    void ShowStop(std::size_t left);
    void Fail() { Status = 1; } // something beside the drawings
    // Behind the list, when all is placed. Gives the exit status.
    int Finish();

  private:
    void ShowUnplaced();
    void FailDrawing();

    bool AsJson;
    long First; // job number of the list's first drawing
    int Status = 0;
    std::size_t Failed = 0;         // drawings
    std::size_t NotBegun = 0;       // drawings that a stop has left
    std::vector<std::string> Names; // of the drawings so far
    nlohmann::ordered_json Drawings = nlohmann::ordered_json::array();
};

} // namespace kv

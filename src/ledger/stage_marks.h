// In which records and program lines each entity of the drawing stands after each stage of a run. It is
// read off the records themselves, so that a pass that drops something is found without its help.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/numbers.h"

namespace kv {

// In the order of the run.
enum class RunStage { Operations, Routes, Chained, Pockets, Tour, Optimized, Leads, Final, Programs };
constexpr int RunStages = 9;
// What an entity was for the writers, at the stage before the programs.
enum class WorkKind { Bore, EdgeBore, Groove, Circle, Route };
constexpr int WorkKinds = 5;

// A bore before the optimizer joins bores into stops.
struct BorePlace {
    Single X = 0, Y = 0, Diameter = 0, Depth = 0;
    Long Drawn = 0;
};

struct StageMarks {
    std::vector<std::uint16_t> Of; // by entity: bits for stages, kinds of work, start marks, pockets
    int Reached = 0;               // stages that the run has come to
    std::string Sequence;          // of the blocks, as the writers found it
    std::vector<BorePlace> Bores;  // at the stage of the tour

    bool Has(Long drawn, RunStage stage) const;
    bool HasRecord(Long drawn) const;     // at any stage
    RunStage LastStage(Long drawn) const; // the last one at which it had a record
    bool Has(Long drawn, WorkKind kind) const;
    bool IsUncleared(Long drawn) const; // on the layer of a pocket, and cut as a plain route
    bool IsStartMark(Long drawn) const; // a tapered polyline that says where a route or pocket begins

  private:
    bool HasBit(Long drawn, int bit) const;
};
extern StageMarks RunMarks; // of the drawing that runs

// Before a drawing is read.
void ForgetMarks();
// When the driver is done with a stage; others than those above are passed over.
void MarkStage(std::string_view stage);

} // namespace kv

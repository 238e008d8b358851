// Relies on the driver's calling while the records of a stage still stand. Records that nobody will take are
// left out: those of kind 0, bores whose group is 0, stops without tools, circles that became leads.
#include "ledger/stage_marks.h"

#include <array>

#include "routes/pocket_values.h"
#include "state/drawn_entities.h"
#include "state/run.h"
#include "writers/program_families.h"
#include "writers/program_lines.h"

namespace kv {

StageMarks RunMarks;

namespace {

constexpr std::array<std::string_view, RunStages> StageWords = {
    "operations", "routes", "chained", "pockets", "tour", "optimized", "leads", "final", "programs"};

constexpr int FirstKindBit = RunStages;
constexpr int StartMarkBit = FirstKindBit + WorkKinds;
constexpr int UnclearedBit = StartMarkBit + 1;
constexpr Int StartMark = -4; // kind of record

// Sets one bit. Neighbouring records mostly come from the same entities.
class Marker {
  public:
    explicit Marker(int bit) : Bit(static_cast<std::uint16_t>(1U << static_cast<unsigned>(bit))) {}
    void Take(Long drawn)
    {
        if (drawn == Last)
            return;
        Last = drawn;
        if (drawn > 0)
            Set(drawn);
        else if (drawn < 0)
            for (const Long entity : EntitiesOf(drawn))
                Set(entity);
    }

  private:
    void Set(Long entity) { RunMarks.Of[static_cast<std::size_t>(entity)] |= Bit; }

    std::uint16_t Bit;
    Long Last = 0;
};

template <typename Record> void MarkAll(Marker& marker, RecordArray<Record>& records)
{
    for (const Record& record : records)
        marker.Take(record.Drawn);
}

template <typename Record, typename IsAlive>
void MarkAll(Marker& marker, RecordArray<Record>& records, const IsAlive& isAlive)
{
    for (const Record& record : records)
        if (isAlive(record))
            marker.Take(record.Drawn);
}

void MarkBores(Marker& marker)
{
    MarkAll(marker, VBores, [](const VBoreRecord& bore) { return bore.Group > 0; });
}

void MarkHorizontalBores(Marker& marker)
{
    MarkAll(marker, HBores, [](const HBoreRecord& bore) { return bore.Group > 0; });
}

void MarkSegments(Marker& marker)
{
    MarkAll(marker, RouteSegments, [](const RouteSegment& record) { return record.Kind != 0; });
}

void MarkCircles(Marker& marker)
{
    MarkAll(marker, RouteCircles, [](const RouteCircle& circle) { return circle.Pass > 0; });
}

void MarkRoutes(Marker& marker)
{
    MarkSegments(marker);
    MarkCircles(marker);
}

void MarkStartMarks()
{
    Marker marker(StartMarkBit);
    MarkAll(marker, RouteSegments, [](const RouteSegment& record) { return record.Kind == StartMark; });
}

// What is cleared has lost the mark of a pocket.
void MarkUncleared()
{
    Marker marker(UnclearedBit);
    MarkAll(marker, RouteSegments, [](const RouteSegment& record) {
        return record.Kind != 0 && record.Kind != StartMark && MarksPocket(record.OscZ, record.Pass);
    });
    MarkAll(marker, RouteCircles, [](const RouteCircle& circle) {
        return circle.Pass > 0 && MarksPocket(circle.OscZ, circle.Pass);
    });
}

void KeepBorePlaces()
{
    for (const VBoreRecord& bore : VBores)
        if (bore.Drawn != 0)
            RunMarks.Bores.push_back({bore.X, bore.Y, bore.Diameter, bore.Depth, bore.Drawn});
}

void MarkHeadPositions(Marker& marker)
{
    MarkAll(marker, HeadPositions, [](const HeadPosition& stop) { return !stop.Tool.Trimmed().empty(); });
}

void MarkKind(WorkKind kind, void (*mark)(Marker& marker))
{
    Marker marker(FirstKindBit + static_cast<int>(kind));
    mark(marker);
}

void MarkKinds()
{
    MarkKind(WorkKind::Bore, [](Marker& marker) {
        MarkBores(marker);
        MarkHeadPositions(marker);
    });
    MarkKind(WorkKind::EdgeBore, MarkHorizontalBores);
    MarkKind(WorkKind::Groove, [](Marker& marker) { MarkAll(marker, GroovePasses); });
    MarkKind(WorkKind::Circle, MarkCircles);
    MarkKind(WorkKind::Route, MarkSegments);
}

void MarkPrograms(Marker& marker)
{
    for (const ProgramTrace& trace : ProgramTraces)
        for (const Long drawn : trace.Drawn)
            marker.Take(drawn);
}

void MarkRecordsOf(RunStage stage, Marker& marker)
{
    switch (stage) {
    case RunStage::Operations:
        MarkBores(marker);
        MarkAll(marker, Grooves);
        MarkAll(marker, HBoreLines);
        MarkAll(marker, HBores); // one in no view has no group yet
        return;
    case RunStage::Chained:
        MarkAll(marker, GroovePasses);
        MarkHorizontalBores(marker);
        MarkRoutes(marker);
        return;
    case RunStage::Tour:
        MarkBores(marker);
        KeepBorePlaces();
        return;
    case RunStage::Optimized:
        MarkBores(marker);
        MarkHeadPositions(marker);
        return;
    case RunStage::Final:
        MarkBores(marker);
        MarkHeadPositions(marker);
        MarkAll(marker, GroovePasses);
        MarkHorizontalBores(marker);
        MarkRoutes(marker);
        MarkKinds();
        RunMarks.Sequence = SequenceInForce();
        return;
    case RunStage::Programs:
        MarkPrograms(marker);
        return;
    case RunStage::Routes:
        MarkRoutes(marker);
        MarkStartMarks();
        return;
    case RunStage::Pockets:
        MarkRoutes(marker);
        MarkUncleared();
        return;
    case RunStage::Leads:
        MarkRoutes(marker);
        return;
    }
}

} // namespace

bool StageMarks::HasBit(Long drawn, int bit) const
{
    const auto at = static_cast<std::size_t>(drawn);
    return at < Of.size() && ((Of[at] >> static_cast<unsigned>(bit)) & 1U) != 0;
}

bool StageMarks::Has(Long drawn, RunStage stage) const
{
    return HasBit(drawn, static_cast<int>(stage));
}

bool StageMarks::Has(Long drawn, WorkKind kind) const
{
    return HasBit(drawn, FirstKindBit + static_cast<int>(kind));
}

RunStage StageMarks::LastStage(Long drawn) const
{
    int last = 0;
    for (int stage = 0; stage < RunStages; ++stage)
        if (HasBit(drawn, stage))
            last = stage;
    return static_cast<RunStage>(last);
}

bool StageMarks::IsStartMark(Long drawn) const
{
    return HasBit(drawn, StartMarkBit);
}

bool StageMarks::IsUncleared(Long drawn) const
{
    return HasBit(drawn, UnclearedBit);
}

bool StageMarks::HasRecord(Long drawn) const
{
    const auto at = static_cast<std::size_t>(drawn);
    return at < Of.size() && Of[at] != 0;
}

void ForgetMarks()
{
    RunMarks = StageMarks{};
}

void MarkStage(std::string_view stage)
{
    for (int i = 0; i < RunStages; ++i) {
        if (StageWords[static_cast<std::size_t>(i)] != stage)
            continue;
        RunMarks.Of.resize(static_cast<std::size_t>(DrawnEntities.Last()) + 1);
        RunMarks.Reached = i + 1;
        Marker marker(i);
        MarkRecordsOf(static_cast<RunStage>(i), marker);
    }
}

} // namespace kv

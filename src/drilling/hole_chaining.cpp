// Duplicates, the search for chains and their sizes. Relies on DrillHead and on the bores in tour order;
// leaves marks, sizes and pitches in VBores. The first hit in list order wins and nothing better is
// looked for; an index finds that very hit without a walk over all bores.
#include "drilling/hole_chaining.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "drilling/drill_head.h"
#include "geometry/point_grid.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr double DuplicateTolerance = 0.2;  // drawing units, inches too
constexpr double AxisTolerance = 0.1;       // mm
constexpr double DirectionTolerance = 0.05; // mm
constexpr Single DistanceTolerance = 0.3F;  // mm; the comparisons use the rounded value
constexpr int Pitches = 4;                  // 32, 64, 96 and 128 mm
constexpr std::size_t DrillNumberWidth = 2;
constexpr Long NoBore = 0;
constexpr double FarTolerance = 1; // mm; the index looks a little farther than any match

std::vector<GridPoint> ScaledPointsOfBores(double factor)
{
    std::vector<GridPoint> points;
    points.reserve(static_cast<std::size_t>(VBores.Last()) + 1);
    for (Long i = 1; i <= VBores.Last(); ++i)
        points.push_back({VBores[i].X * factor, VBores[i].Y * factor});
    return points;
}

bool Near(double a, double b)
{
    return std::fabs(a - b) < DuplicateTolerance;
}

// Whether a box may hold a point that stands on one axis with `from`, nearer than `limit` in mm.
bool MayStandOnAxis(const GridBox& box, const GridPoint& from, double limit)
{
    const GridPoint nearest = box.Nearest(from.X, from.Y);
    const double dx = std::fabs(nearest.X - from.X);
    const double dy = std::fabs(nearest.Y - from.Y);
    return (dx < AxisTolerance || dy < AxisTolerance) && dx < limit && dy < limit;
}

bool MatchesPitch(double distance, int pitch)
{
    return std::fabs(distance - pitch) < static_cast<double>(DistanceTolerance);
}

// How one bore stands to another.
struct Step {
    double DX = 0, DY = 0; // mm

    Step(const GridPoint& a, const GridPoint& b) : DX(std::fabs(a.X - b.X)), DY(std::fabs(a.Y - b.Y)) {}
    bool OnAxis() const { return DX < AxisTolerance || DY < AxisTolerance; }
    double Distance() const { return std::sqrt(DX * DX + DY * DY); }
    Int Direction() const { return DX < DirectionTolerance ? Int{-1} : Int{1}; } // -1: above each other
};

bool SameDrill(const VBoreRecord& a, const VBoreRecord& b)
{
    return a.Diameter == b.Diameter && a.Tool == b.Tool;
}

struct Partner {
    Long Bore = NoBore;
    int Pitch = 0;
    Int Direction = 0;
};

// The smallest pitch that has a bore behind `seed`, and the first such bore. It may belong to another
// chain already, which then loses it. The grid holds the bores behind the seed alone.
Partner FindPartner(const PointGrid& grid, Long seed)
{
    const GridPoint& from = grid.At(seed - 1);
    std::array<Long, Pitches> first{};
    const auto reaches = [&](const GridBox& box) {
        return MayStandOnAxis(box, from, Pitches * PitchUnit + FarTolerance);
    };
    grid.Walk(reaches, [&](Long point) {
        const Step step(from, grid.At(point));
        if (!step.OnAxis() || !SameDrill(VBores[point + 1], VBores[seed]))
            return false;
        const double distance = step.Distance();
        for (int pitch = 1; pitch <= Pitches; ++pitch) {
            Long& best = first[static_cast<std::size_t>(pitch) - 1];
            if ((best == NoBore || point + 1 < best) && MatchesPitch(distance, pitch * PitchUnit))
                best = point + 1;
        }
        return false;
    });
    for (int pitch = 1; pitch <= Pitches; ++pitch) {
        const Long bore = first[static_cast<std::size_t>(pitch) - 1];
        if (bore != NoBore)
            return {bore, pitch * PitchUnit, Step(from, grid.At(bore - 1)).Direction()};
    }
    return {};
}

// Two drills of a row, one pitch apart by their slots.
bool HeadHasPair(const Partner& partner, double diameter)
{
    const int apart = partner.Pitch / PitchUnit;
    for (int h = 1; h <= HighestSlot - apart; ++h) {
        const HeadDrill& one = DrillAt(h);
        const HeadDrill& other = DrillAt(h + apart);
        if (one.Row == partner.Direction && other.Row == partner.Direction && HasDiameter(one, diameter) &&
            HasDiameter(other, diameter))
            return true;
    }
    return false;
}

void Mark(PointGrid& unchained, Long bore, Long seed, const Partner& partner)
{
    unchained.Remove(bore - 1);
    VBores[bore].Group = static_cast<Int>(seed * partner.Direction);
    VBores[bore].Pitch = static_cast<Int>(partner.Pitch);
}

// The first bore behind `after` in the list that the chain can take from `end`; NoBore when there is
// none. The grid holds the bores without a chain alone.
Long NextOfChain(const PointGrid& grid, Long seed, const Partner& partner, Long end, Long after)
{
    const GridPoint& from = grid.At(end - 1);
    Long next = NoBore;
    const auto reaches = [&](const GridBox& box) {
        return MayStandOnAxis(box, from, partner.Pitch + FarTolerance);
    };
    // A match of 32 mm and more is no bore on the end itself, so that needs no test of its own.
    grid.Walk(reaches, [&](Long point) {
        const Long bore = point + 1;
        if (bore <= after || (next != NoBore && bore > next))
            return false;
        const Step step(from, grid.At(point));
        if (step.OnAxis() && MatchesPitch(step.Distance(), partner.Pitch) &&
            step.Direction() == partner.Direction && SameDrill(VBores[bore], VBores[seed]))
            next = bore;
        return false;
    });
    return next;
}

// The chain grows from its partner's end alone: what lies on the far side of the seed is not collected.
// Scans run in list order from the bore that joined last, and whole scans follow until one finds none.
void GrowChain(PointGrid& unchained, Long seed, const Partner& partner)
{
    Long end = partner.Bore;
    Long after = 0;
    bool joined = false;
    for (;;) {
        const Long next = NextOfChain(unchained, seed, partner, end, after);
        if (next == NoBore && !joined)
            return;
        joined = next != NoBore;
        after = next; // NoBore: a new scan from the start of the list
        if (!joined)
            continue;
        Mark(unchained, next, seed, partner);
        end = next;
    }
}

std::size_t CompactLength(const Text<30>& tool)
{
    std::size_t length = 0;
    for (const char c : tool.Padded())
        length += c != ' ' && c != '\0' ? 1 : 0;
    return length;
}

} // namespace

void RemoveDuplicateBores()
{
    PointGrid grid(ScaledPointsOfBores(1));
    std::vector<char> isDuplicate(static_cast<std::size_t>(VBores.Last()) + 1, 0);
    std::vector<Long> found;
    for (Long i = 1; i <= VBores.Last(); ++i) {
        if (isDuplicate[static_cast<std::size_t>(i)] != 0)
            continue;
        grid.Remove(i - 1);
        const VBoreRecord& first = VBores[i];
        found.clear();
        const auto reaches = [&](const GridBox& box) {
            const GridPoint nearest = box.Nearest(first.X, first.Y);
            return Near(nearest.X, first.X) && Near(nearest.Y, first.Y);
        };
        grid.Walk(reaches, [&](Long point) { // what was taken out stands before i or is out already
            const VBoreRecord& bore = VBores[point + 1];
            if (Near(bore.X, first.X) && Near(bore.Y, first.Y) && Near(bore.Diameter, first.Diameter))
                found.push_back(point);
            return false;
        });
        for (const Long point : found) {
            grid.Remove(point);
            isDuplicate[static_cast<std::size_t>(point) + 1] = 1;
        }
    }
    Long kept = 0;
    for (Long i = 1; i <= VBores.Last(); ++i)
        if (isDuplicate[static_cast<std::size_t>(i)] == 0)
            VBores[++kept] = VBores[i];
    VBores.CutTo(kept);
}

void ClearChains()
{
    for (Long i = 1; i <= VBores.Last(); ++i) {
        VBoreRecord& bore = VBores[i];
        bore.Group = bore.Speed = 0;
        for (char& c : bore.Tool.Characters)
            if (c == '\0')
                c = ' ';
        if (!bore.Tool.Trimmed().empty())
            bore.Diameter = 0;
    }
}

void FindChains()
{
    PointGrid behind(ScaledPointsOfBores(Run.UnitFactor));
    PointGrid unchained = behind;
    for (Long i = 1; i < VBores.Last(); ++i) {
        behind.Remove(i - 1);
        if (VBores[i].Group != 0)
            continue;
        const Partner partner = FindPartner(behind, i);
        // Without a pair of drills at this pitch the bore stays alone: no larger pitch is tried.
        if (partner.Bore == NoBore ||
            !HeadHasPair(partner, static_cast<double>(VBores[i].Diameter) * Run.UnitFactor))
            continue;
        Mark(unchained, i, i, partner);
        Mark(unchained, partner.Bore, i, partner);
        GrowChain(unchained, i, partner);
    }
}

void CountChainSizes()
{
    std::vector<Int> members(static_cast<std::size_t>(VBores.Last()) + 1, 0); // by the chain's first bore
    for (Long i = 1; i <= VBores.Last(); ++i)
        ++members[static_cast<std::size_t>(std::abs(VBores[i].Group))];
    for (Long i = 1; i <= VBores.Last(); ++i) {
        VBoreRecord& bore = VBores[i];
        const std::size_t length = CompactLength(bore.Tool);
        const bool namesOneDrill = length > 0 && length <= DrillNumberWidth;
        bore.Speed = namesOneDrill || bore.Group == 0
                         ? Int{1}
                         : members[static_cast<std::size_t>(std::abs(bore.Group))];
    }
}

} // namespace kv

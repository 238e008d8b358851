// One stop for each chain and each lone bore, its ends in the program's coordinates, its drills, and the
// lone bores that ride along with a row. Relies on gathered bores, on DrillHead and on the origin corner;
// leaves HeadPositions in the order of the chains, and no bores.
#include "drilling/head_positions.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drilling/drill_head.h"
#include "drilling/hole_chaining.h"
#include "platform/events.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr double SmallestStart = 99999; // nothing beyond counts as the smallest coordinate
constexpr double LargestStart = 0;      // and nothing up to here as the largest
constexpr std::size_t PairWidth = 2;    // a drill number is two digits
constexpr std::size_t LongestPlainList = 5;
constexpr char RangeSign = '|';

// Bores of a chain with the smallest and the largest coordinate. Where no coordinate is above 0 (or none
// below 99999), the bore of the stop before serves; for the first stop it is the blank element 0.
struct ChainEnds {
    Long Smallest = 0, Largest = 0;
};

void FindChainEnds(Long first, ChainEnds& ends)
{
    const bool alongX = VBores[first].Group > 0;
    double smallest = SmallestStart;
    double largest = LargestStart;
    for (Long i = first; i < first + VBores[first].Speed; ++i) {
        const double coordinate = alongX ? VBores[i].X : VBores[i].Y;
        if (coordinate < smallest) {
            smallest = coordinate;
            ends.Smallest = i;
        }
        if (coordinate > largest) {
            largest = coordinate;
            ends.Largest = i;
        }
    }
}

Single Mirrored(Single extent, Single coordinate)
{
    return ToSingle(static_cast<double>(extent) - static_cast<double>(coordinate));
}

HeadPosition StopOf(const VBoreRecord& start, const VBoreRecord& end)
{
    HeadPosition stop;
    stop.X = start.X;
    stop.Y = start.Y;
    stop.EndX = end.X;
    stop.EndY = end.Y;
    // Behind the search for the ends, so that X may be greater than EndX.
    if (Run.OriginRight != False) {
        stop.X = Mirrored(Run.SideWidth[5], stop.X);
        stop.EndX = Mirrored(Run.SideWidth[5], stop.EndX);
    }
    if (Run.OriginTop != False) {
        stop.Y = Mirrored(Run.SideHeight[5], stop.Y);
        stop.EndY = Mirrored(Run.SideHeight[5], stop.EndY);
    }
    stop.Depth = start.Depth;
    stop.Diameter = start.Diameter;
    stop.Tool = start.Tool.Trimmed();
    stop.ChainSize = start.Speed;
    stop.Pitch = start.Pitch;
    stop.Direction = start.Group > 0 ? Int{1} : start.Group < 0 ? Int{-1} : Int{0};
    stop.ExtraSlot = start.ExtraSlot;
    stop.Side = start.Bottom;
    return stop;
}

Long DrawnOfChain(Long first)
{
    std::vector<Long> drawn;
    for (Long i = first; i < first + VBores[first].Speed; ++i)
        drawn.push_back(VBores[i].Drawn);
    return DrawnTogether(drawn);
}

void BuildStops()
{
    ChainEnds ends;
    for (Long i = 1; i <= VBores.Last(); i += std::max<Long>(1, VBores[i].Speed)) {
        if (VBores[i].Speed <= 0)
            continue;
        FindChainEnds(i, ends);
        HeadPosition& stop =
            Grow(HeadPositions, "head positions", StopOf(VBores[ends.Smallest], VBores[ends.Largest]));
        stop.Drawn = DrawnOfChain(i);
    }
    VBores.Clear();
}

double DistanceToStart(const HeadPosition& from, const HeadPosition& to)
{
    const double dx = static_cast<double>(to.X) - static_cast<double>(from.EndX);
    const double dy = static_cast<double>(to.Y) - static_cast<double>(from.EndY);
    return std::sqrt(dx * dx + dy * dy);
}

double DistanceToEnd(const HeadPosition& from, const HeadPosition& to)
{
    const double dx = static_cast<double>(to.EndX) - static_cast<double>(from.EndX);
    const double dy = static_cast<double>(to.EndY) - static_cast<double>(from.EndY);
    return std::sqrt(dx * dx + dy * dy);
}

// A row along X behind another one begins at its nearer end. Rows along Y are left as they are.
void OrderRowEnds()
{
    for (Long i = 1; i < HeadPositions.Last(); ++i) {
        const HeadPosition& row = HeadPositions[i];
        HeadPosition& next = HeadPositions[i + 1];
        if (row.Direction != 1 || next.Direction != 1 ||
            !(DistanceToStart(row, next) > DistanceToEnd(row, next)))
            continue;
        std::swap(next.X, next.EndX);
        std::swap(next.Y, next.EndY);
    }
}

std::string TwoDigitText(Long number)
{
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

Long NumberAt(std::string_view list, std::size_t at)
{
    return static_cast<Long>(Val(list.substr(at, PairWidth)));
}

// The walk for the drills of one stop. Prev and Last are slots that carry over from stop to stop.
struct DrillWalk {
    Long Prev = 0; // fitting drill before
    Long Last = 0; // drill taken last

    int Apart = 0; // slots between two drills of the row
    Int Direction = 0;
    Int Wanted = 0;
    double Diameter = 0; // mm
    bool Reverse = false;

    std::string List;
    Int Taken = 0;
    int Phase = 0;

    void Add(Long slot) { List = Reverse ? TwoDigitText(slot) + List : List + TwoDigitText(slot); }
    void NextPhase()
    {
        if (--Phase == 0)
            Phase = Apart;
    }
    void Empty(int phase)
    {
        List.clear();
        Phase = phase;
        Taken = 0;
    }
};

// Each Apart-th drill of the row is taken. Returns whether the stop has all its drills.
bool TakeFittingDrill(DrillWalk& walk, Long slot)
{
    if (slot > walk.Prev + walk.Apart) // a gap in the row of drills
        walk.Empty(walk.Apart);
    walk.Prev = slot;
    if (walk.Phase == walk.Apart) {
        if (walk.Taken == 0)
            walk.List.clear(); // of its makeshift
        walk.Add(slot);
        ++walk.Taken;
        walk.Last = slot;
    }
    return walk.Taken == walk.Wanted;
}

// A drill of the diameter in a row the other way serves for want of a better one, and at once for a lone
// bore. Otherwise the row of drills may end here: with two and more the stop takes what it has, with fewer
// the walk goes back behind the drill taken last and starts over. Returns whether the walk is at its end.
bool PassUnfittingDrill(DrillWalk& walk, Long& slot)
{
    const HeadDrill& drill = DrillAt(slot);
    if (walk.List.empty() && HasDiameter(drill, walk.Diameter) && drill.Row != 0 &&
        drill.Row != walk.Direction && walk.Diameter > 0) {
        walk.List = TwoDigitText(slot);
        return walk.Direction == 0;
    }
    if (walk.Last != slot - walk.Apart || walk.Last <= 0)
        return false;
    if (walk.Taken >= 2)
        return true;
    slot = walk.Last;
    walk.Empty(walk.Apart + 1);
    walk.Last = 0;
    return false;
}

void WalkHead(DrillWalk& walk)
{
    for (Long slot = 1; slot <= HighestSlot; ++slot) {
        const HeadDrill& drill = DrillAt(slot);
        const bool fits = HasDiameter(drill, walk.Diameter) && drill.Row != 0 && drill.Row == walk.Direction;
        if (fits ? TakeFittingDrill(walk, slot) : PassUnfittingDrill(walk, slot))
            return;
        walk.NextPhase();
    }
}

// The bore names its drills: neither their diameters nor their rows are asked.
void WalkNamedDrills(DrillWalk& walk, std::string_view digits)
{
    Long low = NumberAt(digits, 0);
    Long high = NumberAt(digits, digits.size() < PairWidth ? 0 : digits.size() - PairWidth);
    if (low > high)
        std::swap(low, high);
    for (Long slot = low; slot <= high; ++slot) {
        if (walk.Phase == walk.Apart) {
            walk.Add(slot);
            ++walk.Taken;
        }
        walk.NextPhase();
        if (walk.Taken == walk.Wanted)
            return;
    }
}

std::string ReversedPairs(std::string_view list)
{
    std::string reversed;
    for (std::size_t at = list.size(); at >= PairWidth; at -= PairWidth)
        reversed += list.substr(at - PairWidth, PairWidth);
    return reversed;
}

std::string InRangeForm(const std::string& list)
{
    if (list.size() <= LongestPlainList)
        return list;
    for (std::size_t at = PairWidth; at < list.size(); at += PairWidth)
        if (NumberAt(list, at) != NumberAt(list, at - PairWidth) + 1)
            return list;
    return list.substr(0, PairWidth) + RangeSign + list.substr(list.size() - PairWidth);
}

std::string DigitsOf(std::string_view text)
{
    std::string digits;
    for (const char c : text)
        if (c >= '0' && c <= '9')
            digits += c;
    return digits;
}

// A row along Y that the head drills from its other end: by as much as the row is long, also in an inch
// drawing, where that length is in mm all the same.
void FlipRow(HeadPosition& stop, DrillWalk& walk)
{
    const double length = (stop.ChainSize - 1.0) * PitchUnit * walk.Apart;
    stop.Y = ToSingle(stop.Y - length);
    stop.EndY = ToSingle(stop.EndY + length);
    walk.List = ReversedPairs(walk.List);
}

void ChooseDrills(bool originFlip)
{
    DrillWalk walk;
    for (Long i = 1; i <= HeadPositions.Last(); ++i) {
        HeadPosition& stop = HeadPositions[i];
        walk.Apart = stop.Pitch / PitchUnit;
        walk.Direction = stop.Direction;
        walk.Wanted = stop.ChainSize;
        walk.Diameter = static_cast<double>(stop.Diameter) * Run.UnitFactor;
        walk.Reverse = originFlip ? stop.Y < stop.EndY : stop.Direction != 0 && stop.Y > stop.EndY;
        walk.Empty(walk.Apart);
        const std::string digits = DigitsOf(stop.Tool.Trimmed());
        if (digits.empty())
            WalkHead(walk);
        else
            WalkNamedDrills(walk, digits);
        if (walk.List.empty())
            walk.List = "00";
        if (stop.Direction == -1 && Run.OriginTop != False && originFlip)
            FlipRow(stop, walk);
        stop.Tool = InRangeForm(walk.List);
    }
}

// The first drill that stands over the lone bore while the row's first drill, or the one that has come in
// its place, stands over the row's start. 0: none.
Long RidingDrill(const HeadPosition& row, const HeadPosition& lone, const HeadDrill& first)
{
    const Single offset = ToSingle(static_cast<double>(row.Y) - static_cast<double>(lone.Y));
    for (Long n = 1; n <= HighestSlot; ++n) {
        const HeadDrill& drill = DrillAt(n);
        const double y = static_cast<double>(offset) + static_cast<double>(drill.Y);
        if (y == static_cast<double>(first.Y) && drill.Diameter == first.Diameter && drill.Kind == first.Kind)
            return n;
    }
    return 0;
}

// The whole head one drill on: the row's drills become their followers, which must be alike to the row's
// first drill. A range form cannot be shifted: its sign reads as part of a number.
bool ShiftDrills(std::string& list, const HeadDrill& first)
{
    if (Holds(list, std::string_view(&RangeSign, 1)))
        return false;
    std::string shifted;
    for (std::size_t at = 0; at < list.size(); at += PairWidth) {
        const Long slot = NumberAt(list, at) + 1;
        if (slot > HighestSlot)
            return false;
        const HeadDrill& drill = DrillAt(slot);
        if (drill.Kind != first.Kind || drill.Diameter != first.Diameter)
            return false;
        shifted += TwoDigitText(slot);
    }
    list = shifted;
    return true;
}

// Lets the lone bore come down with the row. One that rides already may ride again: it is asked for its
// place and diameter alone.
void LetRide(HeadPosition& row, HeadPosition& lone)
{
    if (lone.X != row.X || lone.Diameter != row.Diameter)
        return;
    std::string list(row.Tool.Trimmed());
    const HeadDrill& first = DrillAt(NumberAt(list, 0));
    Long riding = RidingDrill(row, lone, first);
    while (riding == 0) {
        if (!ShiftDrills(list, first))
            return;
        riding = RidingDrill(row, lone, DrillAt(NumberAt(list, 0)));
    }
    row.Tool = list + TwoDigitText(riding); // the drills as shifted
    row.Drawn = DrawnTogether(row.Drawn, lone.Drawn);
    lone.Tool = "";
}

void LetLoneBoresRide()
{
    for (Long r = 1; r <= HeadPositions.Last(); ++r) {
        if (HeadPositions[r].Direction != -1)
            continue;
        DoEvents(); // many rows and many lone bores take seconds
        if (UserAborted())
            return; // the writers end the job
        for (Long b = 1; b <= HeadPositions.Last(); ++b)
            if (HeadPositions[b].Direction == 0)
                LetRide(HeadPositions[r], HeadPositions[b]);
    }
}

} // namespace

void PlanHeadPositions(bool originFlip)
{
    BuildStops();
    OrderRowEnds();
    ChooseDrills(originFlip);
    LetLoneBoresRide();
}

} // namespace kv

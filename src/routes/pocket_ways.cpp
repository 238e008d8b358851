// Joins the loops of a pocket from the middle outward. From one loop to the next the way turns toward the
// wall and rolls back on an arc of the tool's radius: the tool stays between both loops and comes to the
// outer one along its way.
#include "routes/pocket_ways.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "routes/pocket_rings.h"
#include "routes/pocket_way_builder.h"
#include "routes/pocket_way_check.h"

namespace kv {

namespace {

constexpr double WallChords = 0.0002; // of the tool's radius: how far chords leave the walls' arcs
constexpr double OpenJoint = 0.0002;  // of the radius: what may lie beside a piece's ends
constexpr double LeastHair = 0.0002;  // of the radius: a slot of the tool's own width is none
constexpr double NarrowRise = 0.05;   // of the radius: what counts as a place of its own
constexpr double RampSlope = 5;       // lengths to one down
constexpr int MostRampTurns = 8;
// Loops a little elsewhere seldom have the same tight places.
constexpr int MostTries = 5;
constexpr double PitchOfTry = 0.97;
constexpr double HairOfTry = 1.1;
constexpr std::size_t NoRing = static_cast<std::size_t>(-1);
constexpr double WidestRoll = 2.9; // radians; from half a turn on a control takes the other side

// Where a join reaches a ring.
struct RingJoint {
    std::size_t RingNumber = 0, Piece = 0;
    PlanePoint At;
    double Angle = std::numeric_limits<double>::infinity(); // clockwise around the join's corner
};

// The end of a part: any place that is not its last point.
PlanePoint OffPoint(const PlanePoint& point, double aside)
{
    return {point.X + aside, point.Y};
}

class RingJoiner {
  public:
    // The mark serves for that ring, where a way begins in it.
    RingJoiner(const std::vector<RingLevel>& levels, const PocketTask& task, const ToolReach& reach,
               std::size_t marked = NoRing)
        : Task(task), Reach(reach), Builder(Reach, task.MostPerWay), Marked(marked)
    {
        for (std::size_t level = 0; level < levels.size(); ++level)
            for (const InsetLoop& loop : levels[level].Rings) {
                Rings.push_back({});
                Rings.back().Pieces = loop;
                Rings.back().Level = level;
            }
    }
    PocketWays Join();
    // Once joined: of the rings in which ways began the one that is nearest to the point.
    std::size_t NearestBeginning(const PlanePoint& point) const;

  private:
    struct EndedWay {
        PocketWay Way;
        std::vector<WayCut> Cuts;
        std::size_t Level = 0; // of its last ring
    };

    bool IsMarked(const Ring& ring) const { return Marked != NoRing && &ring == &Rings[Marked]; }
    bool IsFull() const { return Total + Builder.Points.size() > Task.MostPoints; }
    EndedWay EndAt(const Ring& ring)
    {
        Total += Builder.Points.size();
        EndedWay ended{{std::move(Builder.Points), ring.Entry}, Builder.Cuts, ring.Level};
        Builder.Points.clear();
        return ended;
    }
    void BeginAlone(Ring& ring);
    void AddRamp(const Ring& ring);
    RingJoint NextRing(const Ring& ring, const PlanePoint& corner) const;
    EndedWay WayFrom(std::size_t number);
    void AddInParts(const EndedWay& way, std::vector<PocketWay>& ways) const;

    const PocketTask& Task;
    ToolReach Reach;
    WayBuilder Builder;
    std::size_t Marked;
    std::vector<std::size_t> Leaves; // rings in which ways began
    std::size_t Total = 0;           // points of the ways that have ended
    std::vector<Ring> Rings;         // from the walls to the middle
};

std::size_t RingJoiner::NearestBeginning(const PlanePoint& point) const
{
    std::size_t nearest = NoRing;
    double least = std::numeric_limits<double>::infinity();
    for (const std::size_t leaf : Leaves)
        for (const PathSpan& piece : Rings[leaf].Pieces) {
            const double distance = Distance(NearestOnSpan(piece, point), point);
            if (distance >= least)
                continue;
            least = distance;
            nearest = leaf;
        }
    return nearest;
}

// Away from corners: in the middle of the longest line, or as near to the mark as it goes.
void RingJoiner::BeginAlone(Ring& ring)
{
    double best = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < ring.Pieces.size(); ++i) {
        const PathSpan& piece = ring.Pieces[i];
        PlanePoint place = MiddleOf(piece);
        double worth = LengthOfPiece(piece);
        if (piece.IsArc) // clockwise it may be a corner of the wall
            worth *= piece.CounterClockwise ? 0.5 : 0.1;
        if (IsMarked(ring)) {
            const PlanePoint nearest = NearestOnSpan(piece, *Task.Mark);
            worth = -Distance(nearest, *Task.Mark);
            const double fromEnds = std::min(Distance(nearest, piece.From), Distance(nearest, piece.To));
            if (fromEnds > Reach.Hair) // else it is a corner
                place = nearest;
        }
        if (worth <= best)
            continue;
        best = worth;
        ring.EntryPiece = i;
        ring.Entry = place;
    }
    ring.IsEntered = true;
}

// As many turns as an easy slope takes, the last one at full depth following.
void RingJoiner::AddRamp(const Ring& ring)
{
    double length = 0;
    for (const PathSpan& piece : ring.Pieces)
        length += LengthOfPiece(piece);
    const double turnsNeeded = std::ceil(RampSlope * Task.Depth / length);
    const int turns = static_cast<int>(std::clamp(turnsNeeded, 1.0, double(MostRampTurns)));
    for (int turn = 0; turn < turns; ++turn)
        Builder.AddTurn(ring, static_cast<double>(turn) / turns, static_cast<double>(turn + 1) / turns);
}

RingJoint RingJoiner::NextRing(const Ring& ring, const PlanePoint& corner) const
{
    const double begin = AngleAround(corner, ring.Entry);
    const double open = OpenJoint * Reach.Radius;
    const PathSpan roll{ring.Entry, ring.Entry, true, false, corner, Reach.Aside()};
    RingJoint nearest;
    for (std::size_t number = 0; number < Rings.size(); ++number) {
        const Ring& outer = Rings[number];
        if (outer.Level >= ring.Level || outer.Level + 2 < ring.Level)
            continue;
        for (std::size_t i = 0; i < outer.Pieces.size(); ++i)
            for (const PlanePoint& point : CrossingsOfWholes(outer.Pieces[i], roll)) {
                // Beyond the piece's end a rest of it would run backward.
                const PlanePoint place = NearestOnSpan(outer.Pieces[i], point);
                if (Distance(point, place) > open)
                    continue;
                const double angle = CounterClockwiseFrom(AngleAround(corner, point), begin);
                if (angle < nearest.Angle)
                    nearest = {number, i, place, angle};
            }
    }
    return nearest;
}

RingJoiner::EndedWay RingJoiner::WayFrom(std::size_t number)
{
    BeginAlone(Rings[number]);
    Leaves.push_back(number);
    const bool hasRamp = Task.Depth > 0 && !IsMarked(Rings[number]);
    const Ring& first = Rings[number];
    Builder.Begin(first.Pieces[first.EntryPiece], first.Entry, hasRamp ? 0 : 1);
    if (hasRamp)
        AddRamp(first);
    for (;;) {
        const Ring& ring = Rings[number];
        Builder.AddTurn(ring, 1, 1);
        if (ring.Level == 0 || IsFull())
            return EndAt(ring);
        const PlanePoint corner = WayBeside(ring.Pieces[ring.EntryPiece], ring.Entry, Reach.Aside());
        const RingJoint joint = NextRing(ring, corner);
        if (!(joint.Angle < WidestRoll) || Rings[joint.RingNumber].IsEntered)
            return EndAt(ring); // another way goes on from there
        number = joint.RingNumber;
        Ring& outer = Rings[number];
        outer.IsEntered = true;
        outer.EntryPiece = joint.Piece;
        outer.Entry = joint.At;
        Builder.AddJoin(joint.At, outer.Pieces[joint.Piece]);
    }
}

PocketWays RingJoiner::Join()
{
    std::vector<EndedWay> ended;
    for (std::size_t number = Rings.size(); number-- > 0 && !IsFull();)
        if (!Rings[number].IsEntered)
            ended.push_back(WayFrom(number));
    // What ends further in is cleared before the loops around it.
    std::stable_sort(ended.begin(), ended.end(),
                     [](const EndedWay& a, const EndedWay& b) { return a.Level > b.Level; });
    PocketWays ways;
    ways.IsTooMuch = IsFull();
    for (const EndedWay& way : ended)
        AddInParts(way, ways.Ways);
    return ways;
}

// As few parts as their cuts allow.
void RingJoiner::AddInParts(const EndedWay& way, std::vector<PocketWay>& ways) const
{
    const std::vector<WayPoint>& points = way.Way.Points;
    const auto at = [&points](std::size_t i) { return points.begin() + static_cast<std::ptrdiff_t>(i); };
    std::size_t first = 0;
    PocketWay part;
    const auto goTo = [&](std::size_t end) {
        part.Points.insert(part.Points.end(), at(first), at(end));
        first = end - 1;
    };
    for (std::size_t i = 0; i < way.Cuts.size(); ++i) {
        const WayCut& cut = way.Cuts[i];
        const std::size_t next = i + 1 < way.Cuts.size() ? way.Cuts[i + 1].Count : points.size();
        if (Task.MostPerWay == 0 || next - first + part.Points.size() < Task.MostPerWay ||
            cut.Count == points.size())
            continue;
        goTo(cut.Count);
        part.Leaves = OffPoint(part.Points.back().At, Reach.Aside());
        ways.push_back(std::move(part));
        part = {};
        part.Points.push_back(cut.Before);
    }
    goTo(points.size());
    part.Leaves = way.Way.Leaves;
    ways.push_back(std::move(part));
}

PocketWays WaysIn(const InsetField& field, const ToolReach& reach, const PocketTask& task)
{
    const std::vector<RingLevel> levels = RingLevelsOf(field, reach, task.Pitch, task.MostPoints);
    RingJoiner joiner(levels, task, reach);
    PocketWays ways = joiner.Join();
    if (task.Mark)
        ways = RingJoiner(levels, task, reach, joiner.NearestBeginning(*task.Mark)).Join();
    ways.IsUnsound = !TurnOnce(levels);
    return ways;
}

bool IsSound(const PocketWays& ways, double toolRadius)
{
    return !ways.IsUnsound &&
           std::all_of(ways.Ways.begin(), ways.Ways.end(),
                       [toolRadius](const PocketWay& way) { return CanBeCompensated(way, toolRadius); });
}

PocketWays SoundWaysIn(const InsetField& field, ToolReach reach, PocketTask task)
{
    PocketWays ways;
    for (int i = 0; i < MostTries; ++i) {
        ways = WaysIn(field, reach, task);
        if (ways.IsTooMuch || IsSound(ways, reach.Radius))
            return ways;
        task.Pitch = PitchOfTry * std::min(task.Pitch, LargestStep(reach.Radius));
        reach.Hair *= HairOfTry;
    }
    ways.IsUnsound = true;
    return ways;
}

} // namespace

PocketWays WaysOf(const PocketTask& task)
{
    const double tolerance = WallChords * task.ToolRadius;
    // Walls a hair apart may meet as chords.
    if (const std::vector<PathMeeting> meetings = MeetingsOf(FlatPaths(task.Walls, tolerance));
        !meetings.empty()) {
        PocketWays none;
        none.Meeting = meetings.front().At;
        return none;
    }
    const InsetField field(task.Walls, tolerance);
    const ToolReach reach = ReachOf(task.ToolRadius, field.Deepest());
    PocketWays ways;
    if (field.Deepest() > reach.Aside() && reach.Hair > LeastHair * reach.Radius)
        ways = SoundWaysIn(field, reach, task);
    ways.Narrow = field.NarrowerThan(reach.Aside(), NarrowRise * task.ToolRadius);
    return ways;
}

} // namespace kv

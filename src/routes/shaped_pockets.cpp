// Which outlines of an EXCAV layer are walls and which are islands, and the ways of the tool as records.
// Relies on linked chains and on circles that no path took; leaves the circles used that are cleared.
#include "routes/shaped_pockets.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "geometry/point_grid.h"
#include "platform/text.h"
#include "routes/drawn_outlines.h"
#include "routes/pocket_rings.h"
#include "routes/pocket_values.h"
#include "routes/pocket_ways.h"
#include "state/drawn_entities.h"
#include "state/pocket_setting.h"
#include "state/report.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr std::string_view AnyShapeWord = "any", FormsWord = "told";
constexpr Int WayOpens = -5, WayGoesOn = 5, EndMarkOpens = -4, EndMarkEnds = 4;
constexpr double FlatShare = 0.0002; // of the tool's radius: how far chords leave the arcs
constexpr double UnknownTool = 1;    // drawing units, for the chords where no radius is given
constexpr Single DepthCodes = 90;    // a depth from here on is a code

constexpr std::size_t NoParent = static_cast<std::size_t>(-1);

// One closed outline of a layer, and what has become of it.
struct PocketShape {
    DrawnOutline Outline;
    Long Circle = 0; // of the circle list; 0 for one of the route list
    GridBox Box;
    double Area = 0; // without sign
    int Depth = 0;   // how many others lie around it
    std::size_t Parent = NoParent;
    std::size_t PartOf = NoParent; // the shape that begins its outline
    bool IsCleared = false;
    std::vector<std::vector<RouteSegment>> Ways;
};

// What stays as it is drawn, or the shapes of one chain.
struct DrawnChain {
    ChainSpan Records;
    std::size_t FirstShape = 0, EndShape = 0;
    bool IsPlain() const { return FirstShape == EndShape; }
};

// A program with more lines than its control takes is cut between routes, never within one.
std::size_t MostPointsOfARoute()
{
    constexpr Long otherLines = 20; // of a portion
    const Long limit = ToLong(Val(Config.LineLimit));
    return static_cast<std::size_t>(std::max<Long>(limit - otherLines, otherLines));
}

GridBox BoxOfPath(const ClosedPath& path)
{
    GridBox box;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const PlanePoint& at = path[i].At;
        box.Widen({at.X, at.Y});
        if (path[i].Bulge == 0)
            continue;
        const PathSpan span = SpanBetween(path[i], path[(i + 1) % path.size()].At);
        box.Widen({span.Centre.X - span.Radius, span.Centre.Y - span.Radius});
        box.Widen({span.Centre.X + span.Radius, span.Centre.Y + span.Radius});
    }
    return box;
}

bool Covers(const GridBox& box, const PlanePoint& point)
{
    return point.X >= box.MinX && point.X <= box.MaxX && point.Y >= box.MinY && point.Y <= box.MaxY;
}

ClosedPath Mirrored(const ClosedPath& path)
{
    ClosedPath mirrored = path;
    for (PathVertex& vertex : mirrored) {
        vertex.At.X = -vertex.At.X;
        vertex.Bulge = -vertex.Bulge;
    }
    return mirrored;
}

ClosedPath Turning(const ClosedPath& path, bool counterClockwise)
{
    return (SignedArea(path) > 0) == counterClockwise ? path : ReversedPath(path);
}

// The shapes of one layer.
class LayerPockets {
  public:
    LayerPockets(std::vector<PocketShape>& all, const std::vector<std::size_t>& own) : All(all), Own(own) {}
    void Clear();

  private:
    void JoinParts();
    void FindMeetings(const FlatPaths& paths);
    void FindParents(const FlatPaths& paths);
    void FindUnread(const FlatPaths& paths);
    void ClearShape(std::size_t number);
    bool IsClearable(const PocketShape& outer, const std::vector<std::size_t>& islands) const;
    PocketTask TaskFor(const PocketShape& outer, const std::vector<std::size_t>& islands) const;
    std::optional<PlanePoint> MarkOf(const PocketShape& outer) const;
    Long DrawnFor(std::size_t number, const std::vector<std::size_t>& islands) const;
    void ReportStrayMarks() const;

    std::vector<PocketShape>& All;
    const std::vector<std::size_t>& Own; // in the order of the drawing
    std::vector<PlanePoint> FreeMarks;   // that touch no outline
    std::vector<std::size_t> Walls;      // those of Own that have a path
};

PlanePoint PlaceOfShape(const PocketShape& shape)
{
    return PointOf(shape.Outline.Pattern);
}

PocketSpot SpotOfShape(const PocketShape& shape)
{
    return PocketAt(shape.Outline.Pattern);
}

// A radius serves for the chords alone.
double ChordTolerance(const PocketShape& shape)
{
    const double radius = ToolRadiusOf(shape.Outline.Pattern.Comp);
    return FlatShare * (radius > 0 ? radius : UnknownTool);
}

double DistanceFromPath(const ClosedPath& path, const PlanePoint& point)
{
    double nearest = Distance(path.front().At, point);
    for (std::size_t i = 0; i < path.size(); ++i) {
        const PathSpan span = SpanBetween(path[i], path[(i + 1) % path.size()].At);
        nearest = std::min(nearest, Distance(NearestOnSpan(span, point), point));
    }
    return nearest;
}

// Whether the point lies inside the outline or on it.
bool LeadsInto(const PocketShape& shape, const PlanePoint& point)
{
    const ClosedPath& path = shape.Outline.Path;
    return IsInside(FlatPaths({path}, ChordTolerance(shape)), 0, point) ||
           DistanceFromPath(path, point) <= OutlineTolerance();
}

void LayerPockets::JoinParts()
{
    std::vector<DrawnOutline*> outlines;
    for (const std::size_t number : Own)
        outlines.push_back(&All[number].Outline);
    std::vector<std::pair<std::size_t, std::size_t>> joined;
    JoinOpenWays(outlines, joined);
    for (const auto& [part, first] : joined)
        All[Own[part]].PartOf = Own[first];
}

void LayerPockets::Clear()
{
    JoinParts();
    std::vector<ClosedPath> paths;
    for (const std::size_t number : Own) {
        const DrawnOutline& outline = All[number].Outline;
        if (outline.IsMarkAlone() && outline.Mark)
            FreeMarks.push_back(*outline.Mark);
        if (outline.Path.empty())
            continue;
        Walls.push_back(number);
        paths.push_back(outline.Path);
    }
    if (!Walls.empty()) {
        const FlatPaths flat(paths, ChordTolerance(All[Walls.front()]));
        FindMeetings(flat);
        FindParents(flat);
        FindUnread(flat);
    }
    for (const std::size_t number : Own)
        ClearShape(number);
    ReportStrayMarks();
}

// Each mark that leads to no outline.
void LayerPockets::ReportStrayMarks() const
{
    for (const std::size_t number : Own) {
        const DrawnOutline& mark = All[number].Outline;
        if (!mark.IsMarkAlone() || !mark.Mark)
            continue;
        const bool isUsed = std::any_of(Walls.begin(), Walls.end(), [&](std::size_t wall) {
            return All[wall].Depth % 2 == 0 && LeadsInto(All[wall], *mark.Mark);
        });
        if (!isUsed)
            Tell(Message::StartMarkOutside,
                 {{"layer", ShownLayerOfPass(mark.Pattern.Pass)}, {"place", ShownPlace(*mark.Mark)}});
    }
}

// What cannot be read could be an island: nothing around it is cleared.
void LayerPockets::FindUnread(const FlatPaths& paths)
{
    for (const std::size_t number : Own) {
        const PocketShape& shape = All[number];
        if (shape.Outline.Fault.Empty() || !shape.Outline.Path.empty() || shape.PartOf != NoParent)
            continue;
        const PlanePoint at = PlaceOfShape(shape);
        for (std::size_t k = 0; k < Walls.size(); ++k) {
            PocketShape& around = All[Walls[k]];
            if (around.Outline.Fault.Empty() && Covers(around.Box, at) &&
                IsInside(paths, static_cast<std::int32_t>(k), at))
                around.Outline.Fault = {Message::PocketInnerOpen, {{"inside", ShownPlace(at)}}};
        }
    }
}

void LayerPockets::FindMeetings(const FlatPaths& paths)
{
    for (const PathMeeting& meeting : MeetingsOf(paths)) {
        const bool isOwn = meeting.FirstPath == meeting.SecondPath;
        for (const std::int32_t path : {meeting.FirstPath, meeting.SecondPath}) {
            MessageLine& fault = All[Walls[static_cast<std::size_t>(path)]].Outline.Fault;
            if (fault.Empty())
                fault = {isOwn ? Message::PocketCrossesItself : Message::PocketCrossesAnother,
                         {{"where", ShownPlace(meeting.At)}}};
        }
    }
}

void LayerPockets::FindParents(const FlatPaths& paths)
{
    for (const std::size_t number : Walls) {
        PocketShape& shape = All[number];
        shape.Box = BoxOfPath(shape.Outline.Path);
        shape.Area = std::fabs(SignedArea(shape.Outline.Path));
    }
    for (const std::size_t number : Walls) {
        PocketShape& shape = All[number];
        const PlanePoint& point = shape.Outline.Path.front().At;
        for (std::size_t k = 0; k < Walls.size(); ++k) {
            const PocketShape& around = All[Walls[k]];
            if (Walls[k] == number || around.Area < shape.Area || !Covers(around.Box, point) ||
                !IsInside(paths, static_cast<std::int32_t>(k), point))
                continue;
            ++shape.Depth;
            if (shape.Parent == NoParent || around.Area < All[shape.Parent].Area)
                shape.Parent = Walls[k];
        }
    }
}

bool LayerPockets::IsClearable(const PocketShape& outer, const std::vector<std::size_t>& islands) const
{
    const RouteSegment& pattern = outer.Outline.Pattern;
    MessageLine fault = outer.Outline.Fault;
    for (const std::size_t island : islands)
        if (fault.Empty())
            fault = All[island].Outline.Fault;
    if (fault.Empty() && !(ToolRadiusOf(pattern.Comp) > 0))
        fault = {Message::PocketToolUnknown};
    if (fault.Empty() && !(PocketPitch(pattern.OscZ, pattern.Comp) > 0))
        fault = {Message::PocketPitchUnknown};
    if (!fault.Empty())
        ReportUncleared(SpotOfShape(outer), fault);
    return fault.Empty();
}

// The outline's own mark, else a free one inside it. One that lies outside is reported.
std::optional<PlanePoint> LayerPockets::MarkOf(const PocketShape& outer) const
{
    const std::optional<PlanePoint>& own = outer.Outline.Mark;
    if (own && LeadsInto(outer, *own))
        return own;
    if (own)
        TellOfPocket(SpotOfShape(outer), {Message::PocketMarkOutside, {{"mark", ShownPlace(*own)}}});
    for (const PlanePoint& mark : FreeMarks)
        if (LeadsInto(outer, mark))
            return mark;
    return std::nullopt;
}

// With the tool left of its way; for the other side the whole pocket is seen in a mirror.
PocketTask LayerPockets::TaskFor(const PocketShape& outer, const std::vector<std::size_t>& islands) const
{
    const RouteSegment& pattern = outer.Outline.Pattern;
    PocketTask task;
    task.ToolRadius = ToolRadiusOf(pattern.Comp);
    task.Pitch = PocketPitch(pattern.OscZ, pattern.Comp);
    task.Depth = pattern.Z > 0 && pattern.Z < DepthCodes ? static_cast<double>(pattern.Z) : 0;
    task.Mark = MarkOf(outer);
    task.MostPoints = MaxIndex;
    task.MostPerWay = MostPointsOfARoute();
    task.Walls.push_back(outer.Outline.Path);
    for (const std::size_t island : islands)
        task.Walls.push_back(All[island].Outline.Path);
    return task;
}

// What is drawn for a pocket: its walls, the parts of its outline, and marks that stand alone.
Long LayerPockets::DrawnFor(std::size_t number, const std::vector<std::size_t>& islands) const
{
    std::vector<Long> drawn;
    const auto add = [&](std::size_t shape) {
        const DrawnOutline& outline = All[shape].Outline;
        drawn.push_back(outline.Pattern.Drawn);
        for (const RouteSegment& record : outline.Records)
            drawn.push_back(record.Drawn);
    };
    add(number);
    for (const std::size_t island : islands)
        add(island);
    for (const std::size_t other : Own)
        if (All[other].Outline.IsMarkAlone() || All[other].PartOf == number)
            add(other);
    return DrawnTogether(drawn);
}

bool RunsOnRight(const RouteSegment& pattern)
{
    return pattern.Comp.Padded().substr(0, 3) == "G42";
}

void TurnWalls(PocketTask& task, bool isMirrored)
{
    for (std::size_t i = 0; i < task.Walls.size(); ++i) {
        if (isMirrored)
            task.Walls[i] = Mirrored(task.Walls[i]);
        task.Walls[i] = Turning(task.Walls[i], i == 0);
    }
    if (isMirrored && task.Mark)
        task.Mark->X = -task.Mark->X;
}

// A polyline with bulges, and behind it a start mark, which nothing is cut by: it keeps leads away.
std::vector<RouteSegment> RecordsOf(const PocketWay& way, const RouteSegment& pattern)
{
    const bool isMirrored = RunsOnRight(pattern);
    const double sense = isMirrored ? -1 : 1;
    RouteSegment record = pattern;
    record.Comp = CompOnSide(pattern.Comp, isMirrored ? PocketSide::Right : PocketSide::Left);
    record.OscZ = record.ParamA = record.ParamB = record.Aux1 = record.Aux2 = 0;
    record.Kind = WayOpens;
    record.Dir = RouteStart;
    std::vector<RouteSegment> records;
    for (const WayPoint& point : way.Points) {
        PlaceAt(record, {sense * point.At.X, point.At.Y});
        record.Z = ToSingle(static_cast<double>(pattern.Z) * point.DepthShare);
        record.Aux2 = ToSingle(sense * point.Bulge);
        records.push_back(record);
        record.Kind = WayGoesOn;
        record.Dir = 0;
    }
    record.Aux2 = 0;
    PlaceAt(record, {sense * way.Leaves.X, way.Leaves.Y});
    for (const Int kind : {EndMarkOpens, EndMarkEnds}) {
        record.Kind = kind;
        records.push_back(record);
    }
    return records;
}

void ReportDoubts(const PocketShape& outer, const PocketTask& task, const PocketWays& ways)
{
    const PocketSpot spot = SpotOfShape(outer);
    const bool isMirrored = RunsOnRight(outer.Outline.Pattern);
    if (task.Pitch > 2 * task.ToolRadius)
        TellOfPocket(spot, {Message::PocketPitchAboveTool,
                            {{"step", PlainText(ToSingle(LargestStep(task.ToolRadius)))}}});
    for (const OutlineGap& gap : outer.Outline.ClosedGaps)
        TellOfPocket(spot,
                     {Message::PocketGapClosed, {{"gap", ShownPlace(gap.From)}, {"length", ShownGap(gap)}}});
    if (!ways.Ways.empty() && !ways.Narrow.empty()) {
        const PlanePoint& place = ways.Narrow.front().At;
        TellOfPocket(spot, {Message::PocketNarrowPlaces,
                            {{"where", ShownPlace({isMirrored ? -place.X : place.X, place.Y})}}});
    }
}

void LayerPockets::ClearShape(std::size_t number)
{
    PocketShape& outer = All[number];
    const bool isIsland = outer.Depth % 2 == 1;
    if (isIsland || outer.PartOf != NoParent || outer.Outline.IsMarkAlone())
        return;
    std::vector<std::size_t> islands;
    for (const std::size_t other : Walls)
        if (All[other].Parent == number && All[other].Depth % 2 == 1)
            islands.push_back(other);
    if (!IsClearable(outer, islands))
        return;
    PocketTask task = TaskFor(outer, islands);
    TurnWalls(task, RunsOnRight(outer.Outline.Pattern));
    const PocketWays ways = WaysOf(task);
    if (ways.Meeting) {
        const double sense = RunsOnRight(outer.Outline.Pattern) ? -1 : 1;
        ReportUncleared(SpotOfShape(outer),
                        {Message::PocketCrossesAnother,
                         {{"where", ShownPlace({sense * ways.Meeting->X, ways.Meeting->Y})}}});
        return;
    }
    if (ways.IsTooMuch) {
        ReportUncleared(SpotOfShape(outer), {Message::PocketWaysTooMany});
        return;
    }
    if (ways.IsUnsound) {
        ReportUncleared(SpotOfShape(outer), {Message::PocketWithoutSoundWay});
        return;
    }
    ReportDoubts(outer, task, ways);
    if (ways.Ways.empty())
        ReportUncleared(SpotOfShape(outer), {Message::PocketTooNarrow});
    RouteSegment pattern = outer.Outline.Pattern;
    pattern.Drawn = DrawnFor(number, islands);
    for (const PocketWay& way : ways.Ways)
        outer.Ways.push_back(RecordsOf(way, pattern));
    outer.IsCleared = true;
    for (const std::size_t island : islands)
        All[island].IsCleared = true;
    for (const std::size_t other : Own) {
        const std::size_t first = All[other].PartOf;
        if (first != NoParent && All[first].IsCleared)
            All[other].IsCleared = true;
    }
}

bool HoldsPocket(ChainSpan chain)
{
    return std::any_of(chain.begin(), chain.end(),
                       [](const RouteSegment& record) { return MarksPocket(record.OscZ, record.Pass); });
}

void AddCircleShapes(std::vector<PocketShape>& shapes)
{
    for (Long i = 1; i <= RouteCircles.Last(); ++i) {
        const RouteCircle& circle = RouteCircles[i];
        if (circle.Pass <= 0 || circle.Used != False || !MarksPocket(circle.OscZ, circle.Pass) ||
            !(circle.Radius > 0))
            continue;
        PocketShape shape;
        shape.Circle = i;
        shape.Outline.Pattern = SegmentOfCircle(circle);
        shape.Outline.Path = PathOfCircle(circle);
        shapes.push_back(std::move(shape));
    }
}

// Free marks of a layer that has a cleared pocket have served.
void DropFreeMarks(std::vector<PocketShape>& shapes, const std::vector<std::size_t>& layer)
{
    const bool isAnyCleared =
        std::any_of(layer.begin(), layer.end(), [&](std::size_t i) { return shapes[i].IsCleared; });
    for (const std::size_t i : layer)
        if (shapes[i].Outline.IsMarkAlone())
            shapes[i].IsCleared = isAnyCleared;
}

void AddShape(const PocketShape& shape, bool beginsChain, PocketList& list)
{
    for (const std::vector<RouteSegment>& way : shape.Ways) {
        CopyChain(way, list.Records);
        list.EndChain(true, shape.Circle > 0);
    }
    if (shape.IsCleared || shape.Circle > 0)
        return;
    const std::size_t first = list.Records.size();
    CopyChain(shape.Outline.Records, list.Records);
    if (!beginsChain)
        list.Records[first].Dir = RouteStart;
    list.EndChain(false);
}

} // namespace

bool ClearsAnyShape()
{
    if (WantsPocketsOfAnyShape())
        return true;
    const std::string_view word = Trim(Config.Pockets);
    if (!word.empty() && UpperCase(word) != UpperCase(FormsWord))
        Tell(Message::PocketsSettingUnknown, {{"word", word}, {"forms", FormsWord}, {"any", AnyShapeWord}});
    return false;
}

PocketList ClearAnyShapes(ChainSpan drawn)
{
    std::vector<DrawnChain> chains;
    std::vector<PocketShape> shapes;
    for (const ChainSpan chain : ChainsOf(drawn)) {
        const std::size_t first = shapes.size();
        if (HoldsPocket(chain))
            for (DrawnOutline& outline : OutlinesOf(chain)) {
                shapes.emplace_back();
                shapes.back().Outline = std::move(outline);
            }
        chains.push_back({chain, first, shapes.size()});
    }
    const std::size_t firstCircle = shapes.size();
    AddCircleShapes(shapes);
    std::map<Long, std::vector<std::size_t>> layers;
    for (std::size_t i = 0; i < shapes.size(); ++i)
        layers[shapes[i].Outline.Pattern.Pass].push_back(i);
    for (const auto& [pass, layer] : layers) {
        LayerPockets(shapes, layer).Clear();
        DropFreeMarks(shapes, layer);
    }
    PocketList list;
    for (const DrawnChain& chain : chains) {
        if (chain.IsPlain()) {
            CopyChain(chain.Records, list.Records);
            list.EndChain(false);
        }
        for (std::size_t i = chain.FirstShape; i < chain.EndShape; ++i)
            AddShape(shapes[i], i == chain.FirstShape, list);
    }
    for (std::size_t i = firstCircle; i < shapes.size(); ++i) {
        AddShape(shapes[i], true, list);
        if (!shapes[i].IsCleared)
            continue;
        RouteCircles[shapes[i].Circle].Used = True;
        RouteCircles[shapes[i].Circle].Pass = 0;
    }
    return list;
}

} // namespace kv

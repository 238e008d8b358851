// Lays the steps out and groups them. An edge is folded out along its line with the face, so that the side of
// the face is next to the face.
#include "scene/scene.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <tuple>

#include "machine/tool_way.h"

namespace kv {

namespace {

constexpr double MostGap = 300;   // mm between the face and a folded edge
constexpr double SheetRim = 20;   // mm around all
constexpr double Hairline = 0.01; // mm: depths and places of programs are rounded

// From a plane's own places to the sheet: turned and moved, or mirrored and moved.
class FoldedPlane {
  public:
    FoldedPlane(Plane plane, const Scene& scene) : On(plane), Panel(scene) {}
    PathPoint Place(const PathPoint& p) const
    {
        switch (On) {
        case Plane::Edge1:
            return {p.X, Panel.Width + Panel.EdgeGap + Panel.Thickness - p.Y};
        case Plane::Edge2:
            return {p.X, p.Y - Panel.EdgeGap - Panel.Thickness};
        case Plane::Edge3:
            return {p.Y - Panel.EdgeGap - Panel.Thickness, p.X};
        case Plane::Edge4:
            return {Panel.Length + Panel.EdgeGap + Panel.Thickness - p.Y, p.X};
        case Plane::Surface:
            break;
        }
        return p;
    }
    // Edge 1 is turned over, edge 3 has its axes exchanged.
    bool Mirrors() const { return On == Plane::Edge1 || On == Plane::Edge3; }
    Move Placed(Move move) const
    {
        move.From = Place(move.From);
        move.To = Place(move.To);
        move.Centre = Place(move.Centre);
        if (Mirrors())
            move.Sweep = -move.Sweep;
        return move;
    }
    std::vector<Move> Placed(std::vector<Move> moves) const
    {
        for (Move& move : moves)
            move = Placed(move);
        return moves;
    }

  private:
    Plane On;
    const Scene& Panel;
};

SheetBox BoxOfView(Plane plane, const Scene& scene)
{
    const double far = scene.EdgeGap + scene.Thickness;
    switch (plane) {
    case Plane::Edge1:
        return {0, scene.Width + scene.EdgeGap, scene.Length, scene.Thickness};
    case Plane::Edge2:
        return {0, -far, scene.Length, scene.Thickness};
    case Plane::Edge3:
        return {-far, 0, scene.Thickness, scene.Width};
    case Plane::Edge4:
        return {scene.Length + scene.EdgeGap, 0, scene.Thickness, scene.Width};
    case Plane::Surface:
        break;
    }
    return {0, 0, scene.Length, scene.Width};
}

bool IsThrough(Plane plane, double depth, const Scene& scene)
{
    return plane == Plane::Surface && scene.Thickness > 0 && depth >= scene.Thickness - Hairline;
}

Move LineBetween(const PathPoint& from, const PathPoint& to, double depth, std::size_t line)
{
    Move move;
    move.From = from;
    move.To = to;
    move.DepthFrom = move.DepthTo = depth;
    move.Line = line;
    return move;
}

bool Meet(const PathPoint& a, const PathPoint& b)
{
    return std::hypot(b.X - a.X, b.Y - a.Y) <= Hairline;
}

// A closed contour between its first and last move: these lead in and out.
void FindLeads(const RouterCut& cut, SceneItem& item)
{
    const std::size_t moves = cut.Moves.size();
    if (moves < 3 || cut.Side == 0)
        return;
    const PathPoint& start = cut.Moves[1].From;
    if (Meet(start, cut.Moves[moves - 2].To)) {
        item.LeadIn = item.LeadOut = 1;
    } else if (Meet(start, cut.Moves.back().To)) {
        item.LeadIn = 1;
    } else if (Meet(cut.Moves.front().From, cut.Moves[moves - 2].To)) {
        item.LeadOut = 1;
    }
}

SceneItem ItemOf(const Bore& bore, const Scene& scene)
{
    SceneItem item;
    item.Shape = WorkShape::Bore;
    item.On = bore.On;
    item.Depth = bore.Depth;
    item.Width = bore.Diameter;
    item.Tool = bore.Tool;
    item.Line = item.LastLine = bore.Line;
    item.At = FoldedPlane(bore.On, scene).Place(bore.At);
    return item;
}

SceneItem ItemOf(const BoreRow& row)
{
    SceneItem item;
    item.Shape = WorkShape::BoreRow;
    item.Depth = row.Depth;
    item.Tool = row.Tool;
    item.Line = item.LastLine = row.Line;
    item.At = row.From;
    item.Way = {LineBetween(row.From, row.To, row.Depth, row.Line)};
    return item;
}

SceneItem ItemOf(const SawCut& saw)
{
    SceneItem item;
    item.Shape = WorkShape::Saw;
    item.Depth = saw.Depth;
    item.Width = saw.Width;
    item.Tool = saw.Tool;
    item.Side = saw.Side;
    item.Line = item.LastLine = saw.Line;
    item.At = saw.From;
    item.Way = {LineBetween(saw.From, saw.To, saw.Depth, saw.Line)};
    item.Swept = item.Way;
    const double length = std::hypot(saw.To.X - saw.From.X, saw.To.Y - saw.From.Y);
    if (saw.Side != 0 && length > 0) {
        const double aside = saw.Side * saw.Width / 2 / length;
        const double dx = -(saw.To.Y - saw.From.Y) * aside, dy = (saw.To.X - saw.From.X) * aside;
        for (PathPoint* const end : {&item.Swept[0].From, &item.Swept[0].To})
            *end = {end->X + dx, end->Y + dy};
    }
    return item;
}

double DeepestOf(const RouterCut& cut)
{
    double depth = cut.StartDepth;
    for (const Move& move : cut.Moves)
        depth = std::max({depth, move.DepthFrom, move.DepthTo});
    return depth;
}

SceneItem ItemOf(const RouterCut& cut, const Scene& scene)
{
    const FoldedPlane fold(cut.On, scene);
    SceneItem item;
    item.Shape = cut.Moves.empty() ? WorkShape::Plunge : WorkShape::Route;
    item.On = cut.On;
    item.Depth = DeepestOf(cut);
    item.Width = 2 * cut.Radius;
    item.Side = cut.Side;
    item.Tool = cut.Tool;
    item.Line = item.LastLine = cut.Line;
    for (const Move& move : cut.Moves) {
        item.LastLine = std::max(item.LastLine, move.Line);
        item.Feed = std::max(item.Feed, move.Feed);
    }
    item.At = fold.Place(cut.Start);
    item.Way = fold.Placed(cut.Moves);
    item.Swept = fold.Placed(WayOf(cut).Pieces);
    FindLeads(cut, item);
    return item;
}

std::vector<SceneItem> ItemsOf(const MachineSteps& steps, const Scene& scene)
{
    std::vector<SceneItem> items;
    for (const Bore& bore : steps.Bores)
        items.push_back(ItemOf(bore, scene));
    for (const BoreRow& row : steps.Rows)
        items.push_back(ItemOf(row));
    for (const SawCut& saw : steps.Saws)
        items.push_back(ItemOf(saw));
    for (const RouterCut& cut : steps.Cuts)
        items.push_back(ItemOf(cut, scene));
    for (SceneItem& item : items)
        item.IsThrough = IsThrough(item.On, item.Depth, scene);
    std::stable_sort(items.begin(), items.end(),
                     [](const SceneItem& a, const SceneItem& b) { return a.Line < b.Line; });
    return items;
}

// Rounded, since a program's places and depths are.
double Rounded(double value)
{
    return std::round(value * 1000) / 1000;
}

PathPoint EndOf(const SceneItem& item)
{
    return item.Way.empty() ? item.At : item.Way.back().To;
}

// On one plane; from plane to plane the way is the machine's own.
void FindRapids(Scene& scene)
{
    for (std::size_t i = 1; i < scene.Items.size(); ++i) {
        const SceneItem& before = scene.Items[i - 1];
        const SceneItem& item = scene.Items[i];
        const bool isOneStop =
            before.Line == item.Line && item.Line > 0; // the drills of a head go down together
        if (before.On == item.On && !isOneStop && !Meet(EndOf(before), item.At))
            scene.Rapids.push_back({EndOf(before), item.At, item.Line});
    }
}

struct Extent {
    double MinX = std::numeric_limits<double>::infinity(), MinY = MinX, MaxX = -MinX, MaxY = -MinX;
    void Add(const PathPoint& point, double by = 0)
    {
        if (!std::isfinite(point.X) || !std::isfinite(point.Y))
            return;
        MinX = std::min(MinX, point.X - by);
        MinY = std::min(MinY, point.Y - by);
        MaxX = std::max(MaxX, point.X + by);
        MaxY = std::max(MaxY, point.Y + by);
    }
    void Add(const SheetBox& box)
    {
        Add(PathPoint{box.X, box.Y});
        Add(PathPoint{box.X + box.Width, box.Y + box.Height});
    }
};

// The ends are added by themselves; of the circle's four outermost points those that the arc passes.
void AddArc(Extent& extent, const Move& arc, double by)
{
    const double radius = Between(arc.Centre, arc.From);
    const double start = DirectionTo(arc.Centre, arc.From);
    for (int quarter = 0; quarter < 4; ++quarter) {
        const double angle = quarter * 90.0;
        double turn = std::fmod(arc.Sweep > 0 ? angle - start : start - angle, 360);
        turn += turn < 0 ? 360 : 0;
        if (turn <= std::fabs(arc.Sweep))
            extent.Add({arc.Centre.X + radius * std::cos(angle * Degree),
                        arc.Centre.Y + radius * std::sin(angle * Degree)},
                       by);
    }
}

void AddWay(Extent& extent, const std::vector<Move>& way, double by)
{
    for (const Move& move : way) {
        extent.Add(move.From, by);
        extent.Add(move.To, by);
        if (move.IsArc)
            AddArc(extent, move, by);
    }
}

void AddItem(Extent& extent, const SceneItem& item)
{
    extent.Add(item.At, item.Width / 2);
    AddWay(extent, item.Way, 0);
    AddWay(extent, item.Swept, item.Width / 2);
}

// Leads and contours around the panel reach beyond its face; the edges are folded clear of them.
double GapFor(const MachineSteps& steps, const std::vector<SceneItem>& items)
{
    constexpr double clear = 10; // mm
    Extent extent;
    extent.Add(PathPoint{0, 0});
    extent.Add(PathPoint{steps.Length, steps.Width});
    for (const SceneItem& item : items)
        if (item.On == Plane::Surface)
            AddItem(extent, item);
    const double beyond =
        std::max({-extent.MinX, -extent.MinY, extent.MaxX - steps.Length, extent.MaxY - steps.Width});
    return std::clamp(beyond + clear, LeastEdgeGap, MostGap);
}

SheetBox SheetAround(const Scene& scene)
{
    Extent extent;
    for (const SceneView& view : scene.Views)
        extent.Add(view.Box);
    for (const SceneItem& item : scene.Items)
        AddItem(extent, item);
    return {extent.MinX - SheetRim, extent.MinY - SheetRim, extent.MaxX - extent.MinX + 2 * SheetRim,
            extent.MaxY - extent.MinY + 2 * SheetRim};
}

} // namespace

void GroupItems(Scene& scene)
{
    using Key = std::tuple<WorkShape, std::string, double, double, std::string>;
    std::map<Key, std::size_t> known;
    scene.Groups.clear();
    for (SceneItem& item : scene.Items) {
        const Key key{item.Shape, item.Tool, Rounded(item.Depth), Rounded(item.Width), item.OnlyIn};
        const auto [place, isNew] = known.try_emplace(key, scene.Groups.size());
        if (isNew)
            scene.Groups.push_back({item.Shape, item.Tool, Rounded(item.Depth), Rounded(item.Width),
                                    item.IsThrough, 0, item.OnlyIn});
        item.Group = place->second;
        ++scene.Groups[item.Group].Count;
    }
}

SheetBox BoxAround(const SheetBox& a, const SheetBox& b)
{
    Extent extent;
    extent.Add(a);
    extent.Add(b);
    return {extent.MinX, extent.MinY, extent.MaxX - extent.MinX, extent.MaxY - extent.MinY};
}

Scene SceneOf(const MachineSteps& steps, double leastGap)
{
    Scene scene;
    scene.Length = steps.Length;
    scene.Width = steps.Width;
    scene.Thickness = steps.Thickness;
    scene.Origin = steps.From;
    scene.EdgeGap =
        std::max(leastGap, GapFor(steps, ItemsOf(steps, scene))); // the face lies alike whatever the gap
    scene.Items = ItemsOf(steps, scene);
    for (const Plane plane : {Plane::Surface, Plane::Edge1, Plane::Edge2, Plane::Edge3, Plane::Edge4}) {
        const auto isOn = [plane](const SceneItem& item) { return item.On == plane; };
        scene.Views.push_back(
            {plane, BoxOfView(plane, scene),
             static_cast<std::size_t>(std::count_if(scene.Items.begin(), scene.Items.end(), isOn))});
    }
    GroupItems(scene);
    FindRapids(scene);
    scene.Sheet = SheetAround(scene);
    return scene;
}

} // namespace kv

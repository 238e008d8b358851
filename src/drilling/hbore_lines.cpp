// In plan a bore in an edge is a T: its axis comes in from the edge, and a line as long as the bore is
// wide lies across the inner end. Relies on the face's extents and the origin; leaves the bores in
// HBores, edge by edge, each edge walked from bore to nearest bore, and no lines.
#include "drilling/hbore_lines.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "geometry/point_grid.h"
#include "state/drawn_entities.h"
#include "state/report.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr double Reach = 0.01; // drawing units, between places that are one
constexpr Int NoEdge = 0, Top = 1, Bottom = 2, Left = 3, Right = 4;
constexpr Int UsedAxis = -1;

using EdgeOfLine = std::vector<Int>; // by line, NoEdge where it crosses no axis

bool Meet(double a, double b)
{
    return std::abs(a - b) < Reach;
}

bool Spans(double from, double to, double place)
{
    return std::min(from, to) - place < Reach && place - std::max(from, to) < Reach;
}

struct EdgeTest {
    Int Edge;
    double Limit;
    Single HBoreLineRecord::*First;
    Single HBoreLineRecord::*Second;
};

// A line whose second end stands at the edge is turned round in that one coordinate alone.
void FindEdge(HBoreLineRecord& line, const EdgeTest (&tests)[4])
{
    for (const EdgeTest& test : tests) {
        const bool firstEnd = Meet(line.*test.First, test.Limit);
        if (!firstEnd && !Meet(line.*test.Second, test.Limit))
            continue;
        line.Edge = test.Edge;
        if (!firstEnd)
            std::swap(line.*test.First, line.*test.Second);
        return;
    }
}

void FindEdges()
{
    const double originX = Run.OriginX;
    const double originY = Run.OriginY;
    const EdgeTest tests[] = {
        {Right, Run.SideMaxX[Face] - originX, &HBoreLineRecord::X1, &HBoreLineRecord::X2},
        {Left, Run.SideMinX[Face] - originX, &HBoreLineRecord::X1, &HBoreLineRecord::X2},
        {Top, Run.SideMaxY[Face] - originY, &HBoreLineRecord::Y1, &HBoreLineRecord::Y2},
        {Bottom, Run.SideMinY[Face] - originY, &HBoreLineRecord::Y1, &HBoreLineRecord::Y2},
    };
    for (Long i = 1; i <= HBoreLines.Last(); ++i)
        FindEdge(HBoreLines[i], tests);
}

// The inner end of the axis lies on the cross line: in its middle (T) or at an end (L, U).
bool EndsOn(const HBoreLineRecord& axis, const HBoreLineRecord& cross)
{
    const bool upright = Meet(axis.X2, cross.X1) && Meet(axis.X2, cross.X2);
    const bool level = Meet(axis.Y2, cross.Y1) && Meet(axis.Y2, cross.Y2);
    return (upright && Spans(cross.Y1, cross.Y2, axis.Y2)) || (level && Spans(cross.X1, cross.X2, axis.X2));
}

std::vector<Long> LinesFromEdges()
{
    std::vector<Long> axes;
    for (Long i = 1; i <= HBoreLines.Last(); ++i) {
        if (HBoreLines[i].Edge > NoEdge)
            axes.push_back(i);
    }
    return axes;
}

// No axis can end on a slanted line, which would make a wide box for the search.
bool IsSlanted(const HBoreLineRecord& line)
{
    return std::abs(static_cast<double>(line.X1) - line.X2) > 2 * Reach &&
           std::abs(static_cast<double>(line.Y1) - line.Y2) > 2 * Reach;
}

// The axes, by their place in the list, whose inner ends lie on a line; the first in drawing order is
// the lowest.
std::vector<Long> AxesOn(const HBoreLineRecord& cross, const std::vector<Long>& axes, const PointGrid& ends)
{
    std::vector<Long> found;
    const GridBox line{std::min(cross.X1, cross.X2), std::min(cross.Y1, cross.Y2),
                       std::max(cross.X1, cross.X2), std::max(cross.Y1, cross.Y2)};
    const auto reaches = [&](const GridBox& box) {
        return box.MinX - line.MaxX < Reach && line.MinX - box.MaxX < Reach && box.MinY - line.MaxY < Reach &&
               line.MinY - box.MaxY < Reach;
    };
    ends.Walk(reaches, [&](Long axis) {
        if (EndsOn(HBoreLines[axes[static_cast<std::size_t>(axis)]], cross))
            found.push_back(axis);
        return false;
    });
    return found;
}

// The first axis gives a cross line its edge; all that end on it are used up.
EdgeOfLine PairLines()
{
    EdgeOfLine edges(static_cast<std::size_t>(HBoreLines.Last()) + 1, NoEdge);
    const std::vector<Long> axes = LinesFromEdges();
    std::vector<GridPoint> points;
    points.reserve(axes.size());
    for (const Long axis : axes)
        points.push_back({HBoreLines[axis].X2, HBoreLines[axis].Y2});
    PointGrid ends(std::move(points));
    for (Long i = 1; i <= HBoreLines.Last(); ++i) {
        if (HBoreLines[i].Edge != NoEdge || IsSlanted(HBoreLines[i]))
            continue;
        const std::vector<Long> found = AxesOn(HBoreLines[i], axes, ends);
        if (found.empty())
            continue;
        const Long first = *std::min_element(found.begin(), found.end());
        edges[static_cast<std::size_t>(i)] = HBoreLines[axes[static_cast<std::size_t>(first)]].Edge;
        for (const Long axis : found) {
            HBoreLineRecord& stem = HBoreLines[axes[static_cast<std::size_t>(axis)]];
            stem.Edge = UsedAxis;
            HBoreLines[i].Drawn = DrawnTogether(HBoreLines[i].Drawn, stem.Drawn);
            ends.Remove(axis);
        }
    }
    return edges;
}

// Stems without a bar and bars without a stem: that they are not drilled must be seen.
void TellUnpaired(const EdgeOfLine& edges)
{
    Long unpaired = 0, first = 0;
    for (Long i = 1; i <= HBoreLines.Last(); ++i)
        if (HBoreLines[i].Edge != UsedAxis && edges[static_cast<std::size_t>(i)] == NoEdge && ++unpaired == 1)
            first = HBoreLines[i].Drawn;
    if (unpaired == 0)
        return;
    MessageValues values = WithPlace({{"count", unpaired}}, first);
    if (const std::vector<Long> entities = EntitiesOf(first); !entities.empty())
        values.emplace_back("layer", DrawnLayerOf(entities.front()));
    Tell(Message::EdgeLinesWithoutBore, std::move(values));
}

// Coordinates along the edge and into the panel: ends of the line, place of the bore, and the panel.
struct EdgeAxes {
    Single HBoreLineRecord::*Along1;
    Single HBoreLineRecord::*Along2;
    Single HBoreLineRecord::*Inward1;
    Single HBoreLineRecord::*Inward2;
    Single HBoreRecord::*PosAlong;
    Single HBoreRecord::*PosInward;
};
constexpr EdgeAxes AlongX{&HBoreLineRecord::X1, &HBoreLineRecord::X2, &HBoreLineRecord::Y1,
                          &HBoreLineRecord::Y2, &HBoreRecord::PosX,   &HBoreRecord::PosY};
constexpr EdgeAxes AlongY{&HBoreLineRecord::Y1, &HBoreLineRecord::Y2, &HBoreLineRecord::X1,
                          &HBoreLineRecord::X2, &HBoreRecord::PosY,   &HBoreRecord::PosX};

// The place inward is the depth from the edge that the axis touches.
HBoreRecord BoreOf(const HBoreLineRecord& cross, Int edge)
{
    const bool level = edge == Top || edge == Bottom;
    const EdgeAxes& axes = level ? AlongX : AlongY;
    const double limit = level ? Run.SideMaxY[Face] - static_cast<double>(Run.OriginY)
                               : Run.SideMaxX[Face] - static_cast<double>(Run.OriginX);
    const bool inOrder = cross.*axes.Along1 <= cross.*axes.Along2;
    const double from = cross.*(inOrder ? axes.Along1 : axes.Along2);
    const double to = cross.*(inOrder ? axes.Along2 : axes.Along1);
    const double inward = cross.*(inOrder ? axes.Inward1 : axes.Inward2);

    HBoreRecord bore;
    bore.Drawn = cross.Drawn;
    bore.Side = edge;
    bore.*axes.PosAlong = ToSingle((from + to) / 2);
    bore.*axes.PosInward = ToSingle(edge == Top || edge == Right ? limit - inward : inward);
    bore.Diameter = ToSingle(to - from);
    bore.Z = cross.Depth;
    bore.Tool = cross.Tool;
    bore.Group = cross.Group;
    bore.Speed = cross.Speed;
    bore.Feed = cross.Feed;
    bore.ExtraSlot = cross.ExtraSlot;
    bore.Bottom = cross.Bottom;
    return bore;
}

void MakeBores(const EdgeOfLine& edges)
{
    for (const Int edge : {Top, Right, Bottom, Left}) {
        for (Long i = 1; i <= HBoreLines.Last(); ++i) {
            if (edges[static_cast<std::size_t>(i)] == edge)
                Grow(HBores, "horizontal bores", BoreOf(HBoreLines[i], edge));
        }
    }
}

double DistanceOf(const GridPoint& a, const GridPoint& b)
{
    const double dx = a.X - b.X;
    const double dy = a.Y - b.Y;
    return std::sqrt(dx * dx + dy * dy);
}

// Appends the bores of one edge to `sorted`, each the nearest to the one before. False without any.
bool WalkEdge(Int edge, GridPoint from, std::vector<HBoreRecord>& sorted)
{
    std::vector<Long> bores;
    std::vector<GridPoint> points;
    for (Long i = 1; i <= HBores.Last(); ++i) {
        if (HBores[i].Side != edge)
            continue;
        bores.push_back(i);
        points.push_back({HBores[i].PosX, HBores[i].PosY});
    }
    PointGrid grid(std::move(points));
    for (std::size_t taken = 0; taken < bores.size(); ++taken) {
        const Long next =
            grid.Lowest([&](const GridBox& box) { return DistanceOf(box.Nearest(from.X, from.Y), from); },
                        [&](Long bore) { return DistanceOf(grid.At(bore), from); });
        sorted.push_back(HBores[bores[static_cast<std::size_t>(next)]]);
        from = grid.At(next);
        grid.Remove(next);
    }
    return !bores.empty();
}

struct EdgeStart {
    Int Edge;
    GridPoint Corner;
};

// Round the panel from the upper right corner. An edge is begun where the edge before ended, at a
// corner only where that one had no bores. Blank records belong to no edge and are dropped.
void OrderByEdges()
{
    const double width = Run.SideWidth[Face];
    const double height = Run.SideHeight[Face];
    const EdgeStart starts[] = {
        {Right, {width, height}}, {Bottom, {width, 0}}, {Left, {0, 0}}, {Top, {0, height}}};
    std::vector<HBoreRecord> sorted;
    bool hadBores = false;
    for (const EdgeStart& start : starts) {
        const GridPoint from = hadBores ? GridPoint{sorted.back().PosX, sorted.back().PosY} : start.Corner;
        hadBores = WalkEdge(start.Edge, from, sorted);
    }
    std::copy(sorted.begin(), sorted.end(), HBores.begin() + 1);
    HBores.CutTo(static_cast<Long>(sorted.size()));
}

} // namespace

void BuildHorizontalBores()
{
    FindEdges();
    const EdgeOfLine edges = PairLines();
    TellUnpaired(edges);
    MakeBores(edges);
    OrderByEdges();
    HBoreLines.Clear();
}

} // namespace kv

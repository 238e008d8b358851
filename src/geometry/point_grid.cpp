#include "geometry/point_grid.h"

#include <algorithm>

namespace kv {

namespace {
constexpr std::int32_t PointsOfALeaf = 8;
} // namespace

PointGrid::PointGrid(std::vector<GridPoint> points) : Points(std::move(points))
{
    Taken.assign(Points.size(), 0);
    LeafOf.assign(Points.size(), 0);
    if (Points.empty())
        return;
    std::vector<Placed> placed;
    placed.reserve(Points.size());
    for (const GridPoint& point : Points)
        placed.push_back({point, static_cast<Long>(placed.size())});
    Cells.emplace_back();
    Cells[0].Count = static_cast<std::int32_t>(Points.size());
    // Cells are appended behind the one that is halved, so one walk builds them all.
    for (std::size_t cell = 0; cell < Cells.size(); ++cell)
        Build(static_cast<std::int32_t>(cell), placed);
    Order.reserve(placed.size());
    for (const Placed& point : placed)
        Order.push_back(point.Index);
    Restore();
}

void PointGrid::Build(std::int32_t at, std::vector<Placed>& placed)
{
    Cell cell = Cells[static_cast<std::size_t>(at)];
    const auto first = placed.begin() + cell.First;
    const auto last = first + cell.Count;
    cell.LowestPoint = first->Index;
    for (auto point = first; point != last; ++point) {
        cell.Box.Widen(point->At);
        cell.LowestPoint = std::min(cell.LowestPoint, point->Index);
    }
    if (cell.Count <= PointsOfALeaf) {
        for (auto point = first; point != last; ++point)
            LeafOf[static_cast<std::size_t>(point->Index)] = at;
        Cells[static_cast<std::size_t>(at)] = cell;
        return;
    }
    const bool acrossX = cell.Box.MaxX - cell.Box.MinX >= cell.Box.MaxY - cell.Box.MinY;
    const auto before = [acrossX](const Placed& a, const Placed& b) {
        const double u = acrossX ? a.At.X : a.At.Y;
        const double v = acrossX ? b.At.X : b.At.Y;
        return u < v || (u == v && a.Index < b.Index);
    };
    const std::int32_t half = cell.Count / 2;
    std::nth_element(first, first + half, last, before);
    cell.Half = static_cast<std::int32_t>(Cells.size());
    Cells[static_cast<std::size_t>(at)] = cell;
    Cell child;
    child.Parent = at;
    child.First = cell.First;
    child.Count = half;
    Cells.push_back(child);
    child.First = cell.First + half;
    child.Count = cell.Count - half;
    Cells.push_back(child);
}

void PointGrid::Remove(Long point)
{
    char& taken = Taken[static_cast<std::size_t>(point)];
    if (taken != 0)
        return;
    taken = 1;
    for (std::int32_t at = LeafOf[static_cast<std::size_t>(point)]; at >= 0;
         at = Cells[static_cast<std::size_t>(at)].Parent)
        --Cells[static_cast<std::size_t>(at)].Live;
}

void PointGrid::Return(Long point)
{
    char& taken = Taken[static_cast<std::size_t>(point)];
    if (taken == 0)
        return;
    taken = 0;
    for (std::int32_t at = LeafOf[static_cast<std::size_t>(point)]; at >= 0;
         at = Cells[static_cast<std::size_t>(at)].Parent)
        ++Cells[static_cast<std::size_t>(at)].Live;
}

void PointGrid::Restore()
{
    std::fill(Taken.begin(), Taken.end(), char{0});
    for (Cell& cell : Cells)
        cell.Live = cell.Count;
}

} // namespace kv

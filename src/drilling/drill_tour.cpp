// Nearest-neighbour tours from the panel's far corner, tried with ten weights of the X axis; the
// shortest one becomes the order of VBores. Rows along X are favoured once the tour is in the lower
// half, and bores of the upper half while it is there.
// A tour and its reverse differ in the last bit only, and that bit decides: distances are plain
// double arithmetic, summed in visiting order.
#include "drilling/drill_tour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "geometry/point_grid.h"
#include "platform/events.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr std::array<double, 10> AttemptWeights = {0.2, 0.4, 0.6, 0.8, 1.0, 1.2, 1.4, 1.6, 1.8, 2.0};
constexpr double LowerHalfFactor = 1.5; // on the weight, from the first step in the lower half on
constexpr double UpperHalfFactor = 0.6; // on the distance between two points of the upper half
constexpr double FirstAttemptLead = 10; // the best length to beat is the first one plus this

struct Tour {
    std::vector<Long> Order; // bores from 0, in list order
    double Length = 0;
};

double PlainDistance(double x, double y, double toX, double toY)
{
    const double dx = toX - x;
    const double dy = toY - y;
    return std::sqrt(dx * dx + dy * dy);
}

double WeightedDistance(double x, double y, double toX, double toY, double weight)
{
    const double dx = (toX - x) * weight;
    const double dy = toY - y;
    return std::sqrt(dy * dy + dx * dx);
}

// The free bore with the lowest weighted distance from a point.
Long NextBore(const PointGrid& grid, double x, double y, double weight, double half)
{
    const bool above = y > half;
    const auto bound = [&](const GridBox& box) {
        const GridPoint nearest = box.Nearest(x, y);
        const double distance = WeightedDistance(x, y, nearest.X, nearest.Y, weight);
        return above && box.MaxY > half ? distance * UpperHalfFactor : distance;
    };
    const auto score = [&](Long bore) {
        const GridPoint& point = grid.At(bore);
        const double distance = WeightedDistance(x, y, point.X, point.Y, weight);
        return above && point.Y > half ? distance * UpperHalfFactor : distance;
    };
    return grid.Lowest(bound, score);
}

// lookedAtY is the Y of the bore looked at last: the last free one of the search before, be it that of
// the attempt before.
Tour TryTour(PointGrid& grid, Long bores, double attemptWeight, double& lookedAtY)
{
    const double startX = Run.SideWidth[5];
    const double startY = Run.SideHeight[5];
    const double half = startY / 2;
    Tour tour;
    tour.Order.reserve(static_cast<std::size_t>(bores));
    grid.Restore();
    std::vector<char> isTaken(static_cast<std::size_t>(bores), 0);
    double x = startX;
    double y = startY;
    double weight = attemptWeight;
    Long lastFree = bores - 1; // the last free bore of the list
    for (Long step = 1; step <= bores; ++step) {
        if (y < half && lookedAtY < half)
            weight = attemptWeight * LowerHalfFactor;
        const Long next = NextBore(grid, x, y, weight, half);
        lookedAtY = grid.At(lastFree).Y;
        const GridPoint point = grid.At(next);
        tour.Length += PlainDistance(x, y, point.X, point.Y);
        tour.Order.push_back(next);
        grid.Remove(next);
        isTaken[static_cast<std::size_t>(next)] = 1;
        while (lastFree > 0 && isTaken[static_cast<std::size_t>(lastFree)] != 0)
            --lastFree;
        x = point.X;
        y = point.Y;
        SetMeter(Meter::Sequencing, static_cast<int>(100 * static_cast<std::int64_t>(step) / bores));
        DoEvents();
    }
    tour.Length += PlainDistance(x, y, startX, startY);
    return tour;
}

std::vector<GridPoint> PointsOfBores()
{
    std::vector<GridPoint> points;
    points.reserve(static_cast<std::size_t>(VBores.Last()));
    for (Long i = 1; i <= VBores.Last(); ++i)
        points.push_back({VBores[i].X, VBores[i].Y});
    return points;
}

void PutInOrder(const std::vector<Long>& order)
{
    std::vector<VBoreRecord> sorted;
    sorted.reserve(order.size());
    for (const Long bore : order)
        sorted.push_back(VBores[bore + 1]);
    std::copy(sorted.begin(), sorted.end(), VBores.begin() + 1);
}

} // namespace

// Hoare's partition; equals change places, so the order of equal bores is this sort's own.
void SortBoresByY(RecordArray<VBoreRecord>& list, Long low, Long high)
{
    const Single pivot = list[(low + high) / 2].Y;
    Long i = low;
    Long j = high;
    do {
        while (list[i].Y < pivot)
            ++i;
        while (list[j].Y > pivot)
            --j;
        if (i <= j) {
            std::swap(list[i], list[j]);
            ++i;
            --j;
        }
    } while (i <= j);
    if (low < j)
        SortBoresByY(list, low, j);
    if (i < high)
        SortBoresByY(list, i, high);
}

void OrderBores()
{
    const Long bores = VBores.Last();
    if (bores < 1)
        return;
    SortBoresByY(VBores, 1, bores);
    PointGrid grid(PointsOfBores());
    double bestLength = 0;
    double lookedAtY = 0;   // before the first search: that of the blank element 0
    std::vector<Long> best; // empty: the order by Y stays
    for (const double weight : AttemptWeights) {
        Tour tour = TryTour(grid, bores, weight, lookedAtY);
        if (weight == AttemptWeights.front())
            bestLength = tour.Length + FirstAttemptLead;
        if (!(tour.Length < bestLength))
            continue;
        bestLength = tour.Length;
        best = std::move(tour.Order);
    }
    if (!best.empty())
        PutInOrder(best);
}

} // namespace kv

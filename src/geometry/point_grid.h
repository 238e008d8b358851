// The spatial index of the passes. Its cells are halved across their longer side until each holds a
// few points, so rows, clusters and evenly spread points cost about the same. Points can be taken
// out; cells without a point left are passed over.
//
// A search is exact: the caller's Bound must be computed on the nearest point of a cell with the very
// operations that Score uses on a point. Rounding keeps the order of each operation, so a bound never
// exceeds a score by a last bit, and ties go to the lowest index as in a plain walk.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "platform/numbers.h"

namespace kv {

struct GridPoint {
    double X = 0, Y = 0;
};

struct GridBox {
    double MinX = std::numeric_limits<double>::infinity();
    double MinY = std::numeric_limits<double>::infinity();
    double MaxX = -std::numeric_limits<double>::infinity();
    double MaxY = -std::numeric_limits<double>::infinity();

    void Widen(const GridPoint& point)
    {
        MinX = std::min(MinX, point.X);
        MinY = std::min(MinY, point.Y);
        MaxX = std::max(MaxX, point.X);
        MaxY = std::max(MaxY, point.Y);
    }
    // The point of the box that is nearest to (x, y).
    GridPoint Nearest(double x, double y) const
    {
        return {std::clamp(x, MinX, MaxX), std::clamp(y, MinY, MaxY)};
    }
};

class PointGrid {
  public:
    static constexpr Long None = -1;

    // Points count from 0; none of their coordinates may be a NaN.
    explicit PointGrid(std::vector<GridPoint> points);

    void Remove(Long point);
    void Return(Long point); // undoes its Remove
    void Restore();          // all points back
    // Walks the points of the cells for which `reaches(box)` holds, in no particular order, until
    // `visit(point)` returns true; returns whether it did. `reaches` may hold for too many boxes, never
    // for too few.
    template <typename Reaches, typename Visit> bool Walk(const Reaches& reaches, const Visit& visit) const
    {
        return !Cells.empty() && WalkCell(0, reaches, visit);
    }
    const GridPoint& At(Long point) const { return Points[static_cast<std::size_t>(point)]; }

    // The point with the lowest Score, the lowest index among equals; None when all are taken out.
    template <typename Bound, typename Score> Long Lowest(const Bound& bound, const Score& score) const
    {
        Best best;
        if (!Cells.empty())
            Search(0, bound(Cells[0].Box), bound, score, best);
        return best.Point;
    }

  private:
    struct Cell {
        GridBox Box;
        std::int32_t Parent = -1;
        std::int32_t Half = -1;            // first of two neighbouring cells; -1 for a leaf
        std::int32_t First = 0, Count = 0; // in Order
        std::int32_t Live = 0;
        std::int32_t LowestPoint = 0;
    };
    struct Best {
        double Score = std::numeric_limits<double>::infinity();
        Long Point = None;
    };

    // A point on its way into the cells.
    struct Placed {
        GridPoint At;
        Long Index = 0;
    };

    void Build(std::int32_t cell, std::vector<Placed>& placed);

    template <typename Bound, typename Score>
    void Search(std::int32_t at, double lower, const Bound& bound, const Score& score, Best& best) const
    {
        const Cell& cell = Cells[static_cast<std::size_t>(at)];
        if (cell.Live == 0 || lower > best.Score)
            return;
        if (lower == best.Score && best.Point != None && cell.LowestPoint > best.Point)
            return;
        if (cell.Half < 0) {
            for (std::int32_t i = cell.First; i < cell.First + cell.Count; ++i)
                Try(Order[static_cast<std::size_t>(i)], score, best);
            return;
        }
        const double first = bound(Cells[static_cast<std::size_t>(cell.Half)].Box);
        const double second = bound(Cells[static_cast<std::size_t>(cell.Half) + 1].Box);
        if (first <= second) {
            Search(cell.Half, first, bound, score, best);
            Search(cell.Half + 1, second, bound, score, best);
        } else {
            Search(cell.Half + 1, second, bound, score, best);
            Search(cell.Half, first, bound, score, best);
        }
    }

    template <typename Reaches, typename Visit>
    bool WalkCell(std::int32_t at, const Reaches& reaches, const Visit& visit) const
    {
        const Cell& cell = Cells[static_cast<std::size_t>(at)];
        if (cell.Live == 0 || !reaches(cell.Box))
            return false;
        if (cell.Half >= 0)
            return WalkCell(cell.Half, reaches, visit) || WalkCell(cell.Half + 1, reaches, visit);
        for (std::int32_t i = cell.First; i < cell.First + cell.Count; ++i) {
            const Long point = Order[static_cast<std::size_t>(i)];
            if (Taken[static_cast<std::size_t>(point)] == 0 && visit(point))
                return true;
        }
        return false;
    }

    template <typename Score> void Try(Long point, const Score& score, Best& best) const
    {
        if (Taken[static_cast<std::size_t>(point)] != 0)
            return;
        const double value = score(point);
        if (value < best.Score || (value == best.Score && (best.Point == None || point < best.Point)))
            best = {value, point};
    }

    std::vector<GridPoint> Points;
    std::vector<Long> Order;          // points, cell by cell
    std::vector<char> Taken;          // by point
    std::vector<std::int32_t> LeafOf; // by point
    std::vector<Cell> Cells;
};

} // namespace kv

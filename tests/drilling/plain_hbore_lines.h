// The bores of drawing lines as the rule is told, line against line and bore against bore, each edge
// written out. The pass is held against it on random lines.
#pragma once

#include <cmath>
#include <utility>
#include <vector>

#include "state/run.h"

namespace kv::plain {

inline bool Same(double a, double b)
{
    return std::fabs(a - b) < 0.01;
}

// In the order told: X1, X2 at the right, X1, X2 at the left, Y1, Y2 above, Y1, Y2 below.
inline void ClassifyHBoreLine(HBoreLineRecord& line)
{
    const double right = double(Run.SideMaxX[5]) - double(Run.OriginX);
    const double left = double(Run.SideMinX[5]) - double(Run.OriginX);
    const double above = double(Run.SideMaxY[5]) - double(Run.OriginY);
    const double below = double(Run.SideMinY[5]) - double(Run.OriginY);
    if (Same(line.X1, right)) {
        line.Edge = 4;
    } else if (Same(line.X2, right)) {
        line.Edge = 4;
        std::swap(line.X1, line.X2);
    } else if (Same(line.X1, left)) {
        line.Edge = 3;
    } else if (Same(line.X2, left)) {
        line.Edge = 3;
        std::swap(line.X1, line.X2);
    } else if (Same(line.Y1, above)) {
        line.Edge = 1;
    } else if (Same(line.Y2, above)) {
        line.Edge = 1;
        std::swap(line.Y1, line.Y2);
    } else if (Same(line.Y1, below)) {
        line.Edge = 2;
    } else if (Same(line.Y2, below)) {
        line.Edge = 2;
        std::swap(line.Y1, line.Y2);
    }
}

// Whether a place stands between two others, 0.01 more either way.
inline bool Between(double place, double a, double b)
{
    return a < b ? place > a - 0.01 && place < b + 0.01 : place > b - 0.01 && place < a + 0.01;
}

inline std::vector<int> PairHBoreLines(std::vector<HBoreLineRecord>& lines)
{
    std::vector<int> edges(lines.size(), 0);
    for (std::size_t a = 0; a < lines.size(); ++a) {
        if (lines[a].Edge != 0)
            continue;
        for (HBoreLineRecord& b : lines) {
            if (b.Edge <= 0)
                continue;
            const bool xAtBoth = Same(b.X2, lines[a].X1) && Same(b.X2, lines[a].X2);
            const bool yAtBoth = Same(b.Y2, lines[a].Y1) && Same(b.Y2, lines[a].Y2);
            const bool touches = (xAtBoth && Between(b.Y2, lines[a].Y1, lines[a].Y2)) ||
                                 (yAtBoth && Between(b.X2, lines[a].X1, lines[a].X2));
            if (!touches)
                continue;
            if (edges[a] == 0)
                edges[a] = b.Edge;
            b.Edge = -1;
        }
    }
    return edges;
}

inline HBoreRecord HBoreOfLine(HBoreLineRecord line, int edge)
{
    HBoreRecord bore;
    bore.Side = edge;
    bore.Tool = line.Tool;
    bore.Z = line.Depth;
    bore.Group = line.Group;
    bore.Speed = line.Speed;
    bore.Feed = line.Feed;
    bore.ExtraSlot = line.ExtraSlot;
    bore.Bottom = line.Bottom;
    if (edge == 1 || edge == 2) {
        if (line.X1 > line.X2) {
            std::swap(line.X1, line.X2);
            std::swap(line.Y1, line.Y2);
        }
        bore.PosX = Single((double(line.X1) + double(line.X2)) / 2);
        bore.Diameter = Single(double(line.X2) - double(line.X1));
        const double limit = double(Run.SideMaxY[5]) - double(Run.OriginY);
        bore.PosY = edge == 1 ? Single(limit - double(line.Y1)) : line.Y1;
    } else {
        if (line.Y1 > line.Y2) {
            std::swap(line.X1, line.X2);
            std::swap(line.Y1, line.Y2);
        }
        bore.PosY = Single((double(line.Y1) + double(line.Y2)) / 2);
        bore.Diameter = Single(double(line.Y2) - double(line.Y1));
        const double limit = double(Run.SideMaxX[5]) - double(Run.OriginX);
        bore.PosX = edge == 4 ? Single(limit - double(line.X1)) : line.X1;
    }
    return bore;
}

inline std::vector<HBoreRecord> OrderHBores(const std::vector<HBoreRecord>& bores)
{
    const double w = Run.SideWidth[5], h = Run.SideHeight[5];
    const double corners[5][2] = {{0, 0}, {0, h}, {w, 0}, {0, 0}, {w, h}}; // by edge
    std::vector<HBoreRecord> ordered;
    std::vector<bool> marked(bores.size());
    bool anyBefore = false;
    for (const int edge : {4, 2, 3, 1}) {
        double x = anyBefore ? double(ordered.back().PosX) : corners[edge][0];
        double y = anyBefore ? double(ordered.back().PosY) : corners[edge][1];
        anyBefore = false;
        for (;;) {
            std::size_t best = bores.size();
            double shortest = 0;
            for (std::size_t i = 0; i < bores.size(); ++i) {
                if (marked[i] || bores[i].Side != edge)
                    continue;
                const double dx = double(bores[i].PosX) - x, dy = double(bores[i].PosY) - y;
                const double distance = std::sqrt(dx * dx + dy * dy);
                if (best == bores.size() || distance < shortest) {
                    best = i;
                    shortest = distance;
                }
            }
            if (best == bores.size())
                break;
            marked[best] = true;
            ordered.push_back(bores[best]);
            x = bores[best].PosX;
            y = bores[best].PosY;
            anyBefore = true;
        }
    }
    return ordered;
}

inline std::vector<HBoreRecord> BuildHorizontalBores(std::vector<HBoreLineRecord> lines,
                                                     std::vector<HBoreRecord> bores)
{
    for (HBoreLineRecord& line : lines)
        ClassifyHBoreLine(line);
    const std::vector<int> edges = PairHBoreLines(lines);
    for (const int edge : {1, 4, 2, 3})
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (edges[i] == edge)
                bores.push_back(HBoreOfLine(lines[i], edge));
    return OrderHBores(bores);
}

} // namespace kv::plain

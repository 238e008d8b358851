// The panel out of border points as the rule is told, step by step and on its own arrays. The border
// pass is held against it on random drawings.
#pragma once

#include <cmath>
#include <vector>

#include "state/run.h"

namespace kv::plain {

struct BorderLine {
    Single X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
};

enum class BorderOutcome { Found, NoPoint, NotInFours, BadSide };

struct Border {
    BorderOutcome Outcome = BorderOutcome::Found;
    std::vector<Single> X, Y; // the distinct points, from 0
    SideSingles MinX, MinY, MaxX, MaxY, Width, Height;
    Int Present[6] = {0, 0, 0, 0, 0, 0};
    Single MarginX = 0, MarginY = 0;
    Single FallbackThickness = 0;
};

inline void AddBorderPoint(Border& border, Single x, Single y)
{
    for (std::size_t i = 0; i < border.X.size(); ++i)
        if (std::fabs(double(border.X[i]) - double(x)) < double(0.008F) &&
            std::fabs(double(border.Y[i]) - double(y)) < double(0.008F))
            return;
    border.X.push_back(x);
    border.Y.push_back(y);
}

inline void WidenBorder(Border& border, std::size_t side, Single x, Single y)
{
    if (x < border.MinX[side])
        border.MinX[side] = x;
    if (y < border.MinY[side])
        border.MinY[side] = y;
    if (x > border.MaxX[side])
        border.MaxX[side] = x;
    if (y > border.MaxY[side])
        border.MaxY[side] = y;
}

// Writes the face's corners over the overall extents, and the margins.
inline void FindFace(Border& border)
{
    const Single midX = Single((double(border.MinX[5]) + double(border.MaxX[5])) / 2);
    const Single midY = Single((double(border.MinY[5]) + double(border.MaxY[5])) / 2);
    Single lx = 0, rx = 9999999, ly = 0, uy = 9999999;
    Single faceMinX = 0, faceMinY = 0, faceMaxX = 0, faceMaxY = 0;
    for (std::size_t i = 0; i < border.X.size(); ++i) {
        const Single x = border.X[i], y = border.Y[i];
        if (x >= lx && x < midX && y >= ly && y < midY) {
            faceMinX = x;
            faceMinY = y;
            lx = x;
            ly = y;
        }
        if (x >= lx && x < midX && y <= uy && y > midY) {
            lx = x;
            uy = y;
        }
        if (x <= rx && x > midX && y >= ly && y < midY) {
            rx = x;
            ly = y;
        }
        if (x <= rx && x > midX && y <= uy && y > midY) {
            faceMaxX = x;
            faceMaxY = y;
            rx = x;
            uy = y;
        }
    }
    border.MarginX = Single((double(faceMinX) - double(border.MinX[5])) / 4);
    border.MarginY = Single((double(faceMinY) - double(border.MinY[5])) / 4);
    border.MinX[5] = faceMinX;
    border.MinY[5] = faceMinY;
    border.MaxX[5] = faceMaxX;
    border.MaxY[5] = faceMaxY;
    border.Present[5] = -1;
}

inline void SortPointsIntoSides(Border& border)
{
    int count[5] = {0, 0, 0, 0, 0};
    std::size_t last = 0;
    for (std::size_t i = 0; i < border.X.size(); ++i) {
        const Single x = border.X[i], y = border.Y[i];
        const bool hits[5] = {false, double(y) > double(border.MaxY[5]) + double(border.MarginY),
                              double(y) < double(border.MinY[5]) - double(border.MarginY),
                              double(x) < double(border.MinX[5]) - double(border.MarginX),
                              double(x) > double(border.MaxX[5]) + double(border.MarginX)};
        for (std::size_t side = 1; side <= 4; ++side) {
            if (!hits[side])
                continue;
            WidenBorder(border, side, x, y);
            if (count[side] < 6)
                ++count[side];
            last = side;
        }
        if (last != 0)
            border.Present[last] = -1;
    }
    for (std::size_t side = 1; side <= 4; ++side)
        if (count[side] != 0 && count[side] != 4)
            border.Outcome = BorderOutcome::BadSide;
}

inline Border AnalyseBorder(const std::vector<BorderLine>& lines)
{
    Border border;
    border.MinX.fill(9999999);
    border.MinY.fill(9999999);
    border.MaxX.fill(-9999999);
    border.MaxY.fill(-9999999);
    border.Width.fill(0);
    border.Height.fill(0);
    for (const BorderLine& line : lines) {
        WidenBorder(border, 5, line.X1, line.Y1);
        WidenBorder(border, 5, line.X2, line.Y2);
        AddBorderPoint(border, line.X1, line.Y1);
        AddBorderPoint(border, line.X2, line.Y2);
    }
    if (border.X.empty()) {
        border.Outcome = BorderOutcome::NoPoint;
        return border;
    }
    if (border.X.size() % 4 != 0) {
        border.Outcome = BorderOutcome::NotInFours;
        return border;
    }
    FindFace(border);
    if (border.X.size() > 4)
        SortPointsIntoSides(border);
    if (border.Outcome != BorderOutcome::Found)
        return border;
    for (std::size_t side = 1; side <= 5; ++side) {
        if (border.Present[side] == 0)
            continue;
        border.Width[side] = border.MaxX[side] - border.MinX[side];
        border.Height[side] = border.MaxY[side] - border.MinY[side];
        if (side == 1 || side == 2)
            border.FallbackThickness = border.Height[side];
        if (side == 3 || side == 4)
            border.FallbackThickness = border.Width[side];
    }
    return border;
}

} // namespace kv::plain

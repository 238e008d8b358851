// Where the panel is. The face is the innermost rectangle of the border points, the views of its
// edges lie around it: side 1 above, 2 below, 3 left, 4 right, 5 the face. Needs decoded layers;
// leaves extents, sides, origin, thickness, unit and tolerance in Run, and the route layers in the
// layer table.
#include "drawing/border.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "drawing/drawing_facts.h"
#include "drawing/layer_rules.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr double InchWidth = 200; // a drawing below both measures is read as inch
constexpr double InchHeight = 100;
constexpr Single MillimetresPerInch = 25.4F;
constexpr Single DefaultRouteTolerance = 0.1F; // mm
constexpr int HighestSideCount = 6;            // a side's count of points stops here

std::vector<BorderPoint> BorderPoints;
std::vector<BorderVertex> BorderVertices;
Single BorderThickness = 0;
Single ShownThickness = 0; // of the panel, had it no hidden entities
PanelSources Sources;

bool Fail(std::initializer_list<MessageLine> lines)
{
    for (const MessageLine& line : lines)
        Tell(line);
    Tell(Message::ConversionAborted);
    AddFailedFile(Run.SourceFile);
    Run.RunFailed = True;
    return false;
}

void WidenSide(std::size_t side, BorderPoint point)
{
    Run.SideMinX[side] = std::min(Run.SideMinX[side], point.X);
    Run.SideMinY[side] = std::min(Run.SideMinY[side], point.Y);
    Run.SideMaxX[side] = std::max(Run.SideMaxX[side], point.X);
    Run.SideMaxY[side] = std::max(Run.SideMaxY[side], point.Y);
}

// Of the border's points the one at that place, which may be new.
std::size_t AppendDistinct(const BorderPoint& point)
{
    const double tolerance = Run.RouteTolerance;
    for (std::size_t i = 0; i < BorderPoints.size(); ++i) {
        BorderPoint& known = BorderPoints[i];
        if (std::abs(static_cast<double>(known.X) - point.X) < tolerance &&
            std::abs(static_cast<double>(known.Y) - point.Y) < tolerance) {
            known.IsShown |= point.IsShown;
            ++known.Times;
            return i;
        }
    }
    if (BorderPoints.size() >= MaxIndex)
        throw RunError{ErrorOverflow, "More than " + WholeText(MaxIndex) + " border points on layer " +
                                          ShownLayer(CurrentEntity.Layer)};
    BorderPoints.push_back(point);
    return BorderPoints.size() - 1;
}

// Whether a person sees CurrentEntity. One that is hidden is kept, and each polyline of such once.
bool NoteSource()
{
    const Long drawn = CurrentEntity.Drawn;
    if (Sources.First == 0)
        Sources.First = drawn;
    const bool isShown = SightOf(drawn) == Sight::Shown;
    if (!isShown)
        Sources.Hidden.push_back(drawn);
    return isShown;
}

void NoteBelowZero(BorderPoint point)
{
    if (point.X >= 0 && point.Y >= 0)
        return;
    if (Sources.BelowZero == 0)
        Sources.BelowZero = CurrentEntity.Drawn;
    Sources.LowestX = std::min(Sources.LowestX, point.X);
    Sources.LowestY = std::min(Sources.LowestY, point.Y);
}

using PanelState = std::array<Single, 5>;

PanelState StateOfPanel()
{
    return {Run.SideMinX[5], Run.SideMinY[5], Run.SideMaxX[5], Run.SideMaxY[5], Run.PartThickness};
}

void TakeBorderPoints(bool isLine)
{
    Run.BorderDrawn.push_back(CurrentEntity.Drawn);
    const PanelState before = StateOfPanel();
    const bool isShown = NoteSource();
    const Long drawn = CurrentEntity.Drawn;
    const BorderPoint first{CurrentEntity.X1, CurrentEntity.Y1, isShown, isLine, 1, drawn};
    const BorderPoint second{CurrentEntity.X2, CurrentEntity.Y2, isShown, isLine, 1, drawn};
    NoteBelowZero(first);
    if (isLine)
        NoteBelowZero(second);
    WidenSide(5, first);
    if (isLine)
        WidenSide(5, second);
    Run.PartThickness = ReadDepth();
    if (Run.PartThickness == 0)
        Run.PartThickness = BorderThickness;
    if (isShown)
        ShownThickness = Run.PartThickness;
    else if (Run.PanelFound != 0 && StateOfPanel() != before) // a solid's face can still be widened
        Sources.HiddenChangedIt = true;
    const std::size_t point = AppendDistinct(first);
    if (isLine)
        AppendDistinct(second);
    else
        BorderVertices.push_back({drawn, point});
}

void KeepBorderThickness()
{
    BorderThickness = CurrentEntity.Thickness != 0 ? CurrentEntity.Thickness : std::abs(CurrentEntity.Z1);
}

void TakeBorderPolyline(Long& index)
{
    KeepBorderThickness();
    const std::string layer = CurrentEntity.Layer;
    for (;;) {
        const std::string kind = index <= Entities.Last() ? Compact(Entities[index].Kind.Trimmed()) : "";
        if (kind == "SEQEND")
            return;
        if (kind != "VERTEX")
            throw RunError{ErrorSubscript, "Polyline without SEQEND on layer " + ShownLayer(layer)};
        DecodeEntity(index);
        TakeBorderPoints(false);
    }
}

// False when the solid has no area. Group 22, the third corner's Y, is not scaled by the drawing's
// SCALE, as the other three are.
bool TakePanelSolid()
{
    Run.BorderDrawn.push_back(CurrentEntity.Drawn);
    Sources = {}; // it alone gives the face
    NoteSource();
    Sources.HiddenChangedIt = !Sources.Hidden.empty();
    Run.SideMinX[5] = CurrentEntity.X1;
    Run.SideMinY[5] = CurrentEntity.StartAngle;
    Run.SideMaxX[5] = CurrentEntity.X2;
    Run.SideMaxY[5] = CurrentEntity.Y1;
    if (Run.SideMinX[5] > Run.SideMaxX[5])
        std::swap(Run.SideMinX[5], Run.SideMaxX[5]);
    if (Run.SideMinY[5] > Run.SideMaxY[5])
        std::swap(Run.SideMinY[5], Run.SideMaxY[5]);
    Run.SideWidth[5] = Run.SideMaxX[5] - Run.SideMinX[5];
    Run.SideHeight[5] = Run.SideMaxY[5] - Run.SideMinY[5];
    Run.PartThickness = CurrentEntity.Thickness;
    if (Run.SideWidth[5] == 0 || Run.SideHeight[5] == 0)
        return Fail({{Message::NoPanel}});
    Run.PanelFound = 1;
    return true;
}

bool IsRouteLayer(std::string_view layer)
{
    return Holds(layer, "ROUT") || Holds(layer, "ROTAR") || Holds(layer, "EXCAV");
}

void CollectRouteLayer(std::string_view layer)
{
    if (!IsRouteLayer(layer))
        return;
    if (std::find(Run.LayerTable.begin() + 1, Run.LayerTable.end(), layer) != Run.LayerTable.end())
        return;
    if (Run.LayerTable.size() > MaxIndex)
        throw RunError{ErrorOverflow, "More than " + WholeText(MaxIndex) + " route layers"};
    Run.LayerTable.emplace_back(layer);
}

// Of the border points that lie in a quadrant around the middle, the nearest in both axes.
struct FaceCorners {
    BorderPoint LowerLeft, UpperRight; // (0, 0) when no point passes
    bool HasLowerLeft = false;
};

FaceCorners FindFaceCorners()
{
    const Single midX = static_cast<Single>((static_cast<double>(Run.SideMinX[5]) + Run.SideMaxX[5]) / 2);
    const Single midY = static_cast<Single>((static_cast<double>(Run.SideMinY[5]) + Run.SideMaxY[5]) / 2);
    FaceCorners corners;
    // Shared by the four tests: a point that passes one changes what the next one sees.
    Single left = 0;
    Single right = 9999999.0F;
    Single lower = 0;
    Single upper = 9999999.0F;
    for (const BorderPoint& point : BorderPoints) {
        if (point.X >= left && point.X < midX && point.Y >= lower && point.Y < midY) {
            corners.LowerLeft = point;
            corners.HasLowerLeft = true;
            left = point.X;
            lower = point.Y;
        }
        if (point.X >= left && point.X < midX && point.Y <= upper && point.Y > midY) {
            left = point.X;
            upper = point.Y;
        }
        if (point.X <= right && point.X > midX && point.Y >= lower && point.Y < midY) {
            right = point.X;
            lower = point.Y;
        }
        if (point.X <= right && point.X > midX && point.Y <= upper && point.Y > midY) {
            corners.UpperRight = point;
            right = point.X;
            upper = point.Y;
        }
    }
    return corners;
}

bool LiesOnSide(std::size_t side, BorderPoint point)
{
    switch (side) {
    case 1:
        return point.Y > static_cast<double>(Run.SideMaxY[5]) + Run.SideMarginY;
    case 2:
        return point.Y < static_cast<double>(Run.SideMinY[5]) - Run.SideMarginY;
    case 3:
        return point.X < static_cast<double>(Run.SideMinX[5]) - Run.SideMarginX;
    default:
        return point.X > static_cast<double>(Run.SideMaxX[5]) + Run.SideMarginX;
    }
}

// Sorts the points into the edge views. False when a view has other than four points.
bool SortIntoSides()
{
    std::array<int, 5> counts{};
    std::size_t lastHit = 0;
    for (BorderPoint& point : BorderPoints) {
        for (std::size_t side = 1; side <= 4; ++side) {
            if (!LiesOnSide(side, point))
                continue;
            point.View = static_cast<Int>(side);
            WidenSide(side, point);
            counts[side] = std::min(counts[side] + 1, HighestSideCount);
            lastHit = side;
        }
        if (lastHit > 0)
            Run.SidePresent[lastHit] = True; // a point that hits two sides marks the last one alone
    }
    return std::all_of(counts.begin(), counts.end(), [](int count) { return count % 4 == 0; });
}

// Returns the thickness that the edge views show, 0 without any.
Single MeasureSides()
{
    Single thickness = 0;
    for (std::size_t side = 1; side <= 5; ++side) {
        if (Run.SidePresent[side] == False)
            continue;
        Run.SideWidth[side] = Run.SideMaxX[side] - Run.SideMinX[side];
        Run.SideHeight[side] = Run.SideMaxY[side] - Run.SideMinY[side];
        if (side <= 2)
            thickness = Run.SideHeight[side];
        else if (side <= 4)
            thickness = Run.SideWidth[side];
    }
    return thickness;
}

void SettleFace()
{
    const FaceCorners corners = FindFaceCorners();
    Run.SideMarginX = static_cast<Single>((static_cast<double>(corners.LowerLeft.X) - Run.SideMinX[5]) / 4);
    Run.SideMarginY = static_cast<Single>((static_cast<double>(corners.LowerLeft.Y) - Run.SideMinY[5]) / 4);
    Run.SideMinX[5] = corners.LowerLeft.X;
    Run.SideMinY[5] = corners.LowerLeft.Y;
    Run.SideMaxX[5] = corners.UpperRight.X;
    Run.SideMaxY[5] = corners.UpperRight.Y;
    Run.SidePresent[5] = True;
    Sources.CornerMissed = !corners.HasLowerLeft;
}

// A hidden entity counts where a point or the thickness is its alone.
bool HiddenChangedBorder()
{
    return !Sources.Hidden.empty() && (ShownThickness != Run.PartThickness ||
                                       std::any_of(BorderPoints.begin(), BorderPoints.end(),
                                                   [](const BorderPoint& p) { return !p.IsShown; }));
}

} // namespace

bool FindPanel()
{
    BorderPoints.clear();
    BorderVertices.clear();
    BorderThickness = ShownThickness = 0;
    Sources = {};
    std::string lastLayer;
    for (Long i = 1; i <= Entities.Last();) {
        const std::string_view layer = Entities[i].Layer.Trimmed();
        if (layer != lastLayer) {
            CollectRouteLayer(layer);
            lastLayer = layer;
        }
        const std::string kind = Compact(Entities[i].Kind.Trimmed());
        if (kind == "EOF")
            break;
        if (kind != "LINE" && kind != "POLYLINE" && kind != "SOLID") {
            ++i;
            continue;
        }
        DecodeEntity(i);
        const bool onBorder = Holds(CurrentEntity.Layer, "BORDER");
        if (kind == "LINE" && onBorder) {
            KeepBorderThickness();
            TakeBorderPoints(true);
        } else if (kind == "POLYLINE" && onBorder && CurrentEntity.Flags != 4) {
            TakeBorderPolyline(i);
        } else if (kind == "SOLID" && Holds(CurrentEntity.Layer, "PANEL") && !TakePanelSolid()) {
            return false;
        }
    }
    return true;
}

bool AnalyseBorder()
{
    Single sideThickness = 0;
    if (Run.PanelFound == 0) {
        if (BorderPoints.empty())
            return Fail({{Message::NoBorder}});
        Sources.HiddenChangedIt = HiddenChangedBorder();
        if (BorderPoints.size() % 4 != 0)
            return Fail(
                {{Message::BorderNotRectangular},
                 {Message::StrayBorderEntities, {{"points", static_cast<long long>(BorderPoints.size())}}}});
        SettleFace();
        if (BorderPoints.size() > 4 && !SortIntoSides())
            return Fail({{Message::BorderSides}});
        sideThickness = MeasureSides();
    }
    if (Run.PartThickness == 0)
        Run.PartThickness = sideThickness;
    return true;
}

const std::vector<BorderPoint>& PointsOfBorder()
{
    return BorderPoints;
}

const std::vector<BorderVertex>& VerticesOfBorder()
{
    return BorderVertices;
}

const PanelSources& SourcesOfPanel()
{
    return Sources;
}

namespace {

// Another unit than the two, or none, leaves the size to decide.
void TakeUnitOfDrawing()
{
    constexpr int inch = 1, millimetre = 4; // of $INSUNITS
    if (DrawnUnits() == inch)
        Run.DrawingInInch = True;
    if (DrawnUnits() == millimetre)
        Run.DrawingInInch = False;
}

} // namespace

void SettleOriginAndUnits()
{
    Run.OriginX = Run.SideMinX[5];
    Run.OriginY = Run.SideMinY[5];
    Run.DrawingInInch = Run.SideWidth[5] < InchWidth && Run.SideHeight[5] < InchHeight ? True : False;
    if (Config.UnitMode == "1")
        Run.DrawingInInch = True;
    if (Config.UnitMode == "2")
        Run.DrawingInInch = False;
    if (Config.UnitMode == "4")
        TakeUnitOfDrawing();
    Run.UnitFactor = Run.DrawingInInch != False ? MillimetresPerInch : 1.0F;
    Run.RouteTolerance = ToSingle(Val(Config.RouteTolerance));
    if (Run.RouteTolerance == 0)
        Run.RouteTolerance = DefaultRouteTolerance;
    Run.RouteTolerance /= Run.UnitFactor;
}

} // namespace kv

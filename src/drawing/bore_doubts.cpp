// Looks at each record of the drawing once. Needs the panel with its views; changes nothing.
#include "drawing/bore_doubts.h"

#include <algorithm>
#include <string>

#include "drawing/doubt_lines.h"
#include "drawing/panel_places.h"
#include "platform/text.h"
#include "state/run.h"

namespace kv {

namespace {

void TellOfBore(const VBoreRecord& bore)
{
    const double x = static_cast<double>(bore.X) + Run.OriginX;
    const double y = static_cast<double>(bore.Y) + Run.OriginY;
    const DoubtedWork work{bore.Drawn, "bore", x, y};
    TellDepthDoubts(work, bore.Depth, Run.PartThickness);
    if (!Meets(RectangleOfFace(), {x, y, x, y}))
        TellDoubt(Message::BoreOffPanel, work);
}

void TellOfGroove(const GrooveRecord& groove)
{
    const double originX = Run.OriginX, originY = Run.OriginY;
    const Stretch line{groove.X1 + originX, groove.Y1 + originY, groove.X2 + originX, groove.Y2 + originY};
    const DoubtedWork work{groove.Drawn, "groove", line.X1, line.Y1};
    TellDepthDoubts(work, groove.Depth, Run.PartThickness);
    const double halfWidth = std::max({groove.Width, groove.Kerf, Single{0}}) / 2.0;
    if (!Meets(Widened(RectangleOfFace(), halfWidth), line))
        TellDoubt(Message::WorkOffPanel, work);
}

// How an edge lies: along it, and across it in the thickness. A view may be drawn smaller than the edge, and
// bores drawn in plan are measured by the panel, so the larger of the two counts.
struct EdgeSizes {
    double Length = 0, Thickness = 0, Across = 0;
};

EdgeSizes SizesOfEdge(std::size_t side)
{
    const bool isLevel = side <= 2;
    const double width = Run.SideWidth[Face], height = Run.SideHeight[Face];
    EdgeSizes sizes{isLevel ? width : height, Run.PartThickness, isLevel ? height : width};
    const PanelRectangle view = RectangleOfSide(side);
    if (view.MinX > view.MaxX) // not drawn
        return sizes;
    const double viewWidth = view.MaxX - view.MinX, viewHeight = view.MaxY - view.MinY;
    sizes.Length = std::max(sizes.Length, isLevel ? viewWidth : viewHeight);
    sizes.Thickness = std::max(sizes.Thickness, isLevel ? viewHeight : viewWidth);
    return sizes;
}

void TellOfEdgePlace(const DoubtedWork& work, const HBoreRecord& bore, const EdgeSizes& sizes)
{
    const double along = bore.Side <= 2 ? bore.PosX : bore.PosY;
    const double reach = PlaceReach();
    if (along < -reach || along > sizes.Length + reach)
        TellDoubt(
            Message::EdgeBoreOffEdge, work,
            {{"along", LengthText(Millimetres(along))}, {"length", LengthText(Millimetres(sizes.Length))}});
    const bool isInside = bore.Z > reach && bore.Z < sizes.Thickness - reach;
    if (isInside || !(sizes.Thickness > 0) || TellDepthCode(work, bore.Z))
        return;
    TellDoubt(Message::EdgeBoreOffThickness, work,
              {{"height", LengthText(Millimetres(bore.Z))},
               {"thickness", LengthText(Millimetres(sizes.Thickness))}});
}

void TellOfEdgeBore(const HBoreRecord& bore)
{
    if (bore.Side < 1 || bore.Side > 4)
        return;
    const DoubtedWork work{bore.Drawn, "bore in edge " + WholeText(bore.Side), bore.PosX, bore.PosY};
    const EdgeSizes sizes = SizesOfEdge(static_cast<std::size_t>(bore.Side));
    TellLengthDoubts(work, bore.Side <= 2 ? bore.PosY : bore.PosX, sizes.Across);
    TellOfEdgePlace(work, bore, sizes);
}

} // namespace

void TellFaceDoubts()
{
    for (Long i = 1; i <= VBores.Last(); ++i)
        TellOfBore(VBores[i]);
    for (Long i = 1; i <= Grooves.Last(); ++i)
        TellOfGroove(Grooves[i]);
}

void TellEdgeBoreDoubts()
{
    for (Long i = 1; i <= HBores.Last(); ++i)
        TellOfEdgeBore(HBores[i]);
}

} // namespace kv

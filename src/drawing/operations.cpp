// One walk over all entities: drilling, groove and horizontal layers become records relative to the
// origin, texts are taken on the way. Route layers are left for the route passes. Needs the panel
// and the origin; leaves VBores, Grooves, HBoreLines and HBores.
#include "drawing/operations.h"

#include <cmath>
#include <string>

#include "drawing/drawing_texts.h"
#include "drawing/layer_rules.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/report.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr std::size_t VBoreRow = 1; // of the layer table
constexpr std::size_t HBoreRow = 3;
constexpr double SideReach = 0.5;   // drawing units from an edge of the face
constexpr int LinesOfAPolyline = 4; // horizontal drilling lines that one polyline gives at most

std::string PartNameRead; // from a text; empty: none

// The first five characters of the layer occur in the row, so "RILLI" is a drilling layer too.
bool HeadOccursIn(std::size_t row)
{
    return Holds(Run.LayerTable[row], Padded(CurrentEntity.Layer, 5));
}

std::string KindAt(Long index)
{
    return index <= Entities.Last() ? Compact(Entities[index].Kind.Trimmed()) : std::string();
}

// The walks along a polyline's vertices need its end.
void RequireSeqend(Long index)
{
    while (KindAt(index) == "VERTEX")
        ++index;
    if (KindAt(index) != "SEQEND")
        throw RunError{ErrorSubscript, "Polyline without SEQEND on layer " + ShownLayer(CurrentEntity.Layer)};
}

Int GroupOrOne()
{
    const Int group = ReadGroup();
    return group != 0 ? group : Int{1};
}

void AddVerticalBore(Single diameter, Single depth)
{
    VBoreRecord& bore = Grow(VBores, "vertical bores");
    bore.Drawn = CurrentEntity.Drawn;
    bore.X = CurrentEntity.X1 - Run.OriginX;
    bore.Y = CurrentEntity.Y1 - Run.OriginY;
    bore.Depth = depth;
    bore.Diameter = diameter;
    bore.Group = GroupOrOne();
    bore.Speed = ReadSpeed();
    bore.Feed = ReadFeedDown();
    if (bore.Feed == 0)
        bore.Feed = ReadFeed();
    bore.Tool = ReadToolString();
    bore.PeckDepth = ReadPeckDepth();
    bore.ExtraSlot = ReadExtraSlot();
    bore.Bottom = ReadBottom();
}

template <typename Record> void ReadToolOfHorizontal(Record& record)
{
    record.Tool = ReadToolString();
    record.Group = GroupOrOne();
    record.Feed = ReadFeed();
    record.Speed = ReadSpeed();
    record.ExtraSlot = ReadExtraSlot();
    record.Bottom = ReadBottom();
}

bool IsNear(Single value, Single limit)
{
    return std::abs(static_cast<double>(value) - limit) < SideReach;
}

// A circle's normal may point inwards; the edge that it lies on decides.
Int SideByPosition(Int side)
{
    const DecodedEntity& circle = CurrentEntity;
    if (side == 1 && IsNear(circle.Y1, Run.SideMinY[5]))
        return 2;
    if (side == 2 && IsNear(circle.Y1, Run.SideMaxY[5]))
        return 1;
    if (side == 3 && IsNear(circle.X1, Run.SideMaxX[5]))
        return 4;
    if (side == 4 && IsNear(circle.X1, Run.SideMinX[5]))
        return 3;
    return side;
}

void AddBoreInEdge()
{
    const DecodedEntity& circle = CurrentEntity;
    HBoreRecord& bore = Grow(HBores, "horizontal bores");
    bore.Drawn = circle.Drawn;
    bore.Side = SideByPosition(circle.Side);
    const bool alongX = bore.Side <= 2;
    bore.PosX = alongX ? circle.X1 - Run.OriginX : circle.Thickness;
    bore.PosY = alongX ? circle.Thickness : circle.Y1 - Run.OriginY;
    bore.Diameter = 2 * circle.Radius;
    bore.Z = circle.Elevation;
    ReadToolOfHorizontal(bore);
}

void TakeDrillingCircle()
{
    DecodedEntity& circle = CurrentEntity;
    if (Run.PanelFound != 0) {
        // A panel in the negative quadrant: bring back the sign that decoding took away.
        if (Run.OriginX < 0 && circle.X1 > 0)
            circle.X1 = -circle.X1;
        if (Run.OriginY < 0 && circle.Y1 > 0)
            circle.Y1 = -circle.Y1;
    }
    if (circle.Side != 0 && circle.Side != 5) {
        AddBoreInEdge();
        return;
    }
    const Single coded = ReadDiameter();
    Single depth = ReadDepth();
    if (depth == 0)
        depth = std::abs(circle.Thickness);
    AddVerticalBore(coded > 0 ? coded : 2 * circle.Radius, depth);
}

// The first edge view that holds the point; 0 when none does.
std::size_t ViewOfPoint()
{
    const DecodedEntity& circle = CurrentEntity;
    const double marginX = Run.SideMarginX;
    const double marginY = Run.SideMarginY;
    for (std::size_t side = 1; side <= 4; ++side)
        if (circle.X1 > Run.SideMinX[side] - marginX && circle.X1 < Run.SideMaxX[side] + marginX &&
            circle.Y1 > Run.SideMinY[side] - marginY && circle.Y1 < Run.SideMaxY[side] + marginY)
            return side;
    return 0;
}

void TakeCircleInView()
{
    const DecodedEntity& circle = CurrentEntity;
    HBoreRecord& bore = Grow(HBores, "horizontal bores");
    bore.Drawn = circle.Drawn;
    const std::size_t side = ViewOfPoint();
    if (side == 0)
        return; // dropped; its empty record stays
    bore.Side = static_cast<Long>(side);
    const Single depth = ReadDepth();
    const Single alongX = circle.X1 - Run.SideMinX[side];
    const Single alongY = circle.Y1 - Run.SideMinY[side];
    switch (side) {
    case 1:
        bore.PosX = alongX;
        bore.PosY = depth;
        bore.Z = alongY;
        break;
    case 2:
        bore.PosX = alongX;
        bore.PosY = depth;
        bore.Z = Run.SideMaxY[2] - circle.Y1;
        break;
    case 3:
        bore.PosX = depth;
        bore.PosY = alongY;
        bore.Z = Run.SideMaxX[3] - circle.X1;
        break;
    default:
        bore.PosX = depth;
        bore.PosY = alongY;
        bore.Z = alongX;
        break;
    }
    bore.Diameter = 2 * circle.Radius;
    ReadToolOfHorizontal(bore);
}

Long GrooveTool()
{
    const double tool = Val(ReadToolString());
    if (!(tool < 2147483647.5))
        throw RunError{ErrorOverflow, "Tool number out of range on layer " + ShownLayer(CurrentEntity.Layer)};
    return ToLong(tool);
}

Single GrooveKerf()
{
    const Single kerf = ReadExcav();
    return kerf > 0 ? kerf : ToSingle(Val(Config.SawKerf) / Run.UnitFactor);
}

// Both ends of CurrentEntity, from the origin.
template <typename Record> void TakeEnds(Record& record)
{
    record.Drawn = CurrentEntity.Drawn;
    record.X1 = CurrentEntity.X1 - Run.OriginX;
    record.Y1 = CurrentEntity.Y1 - Run.OriginY;
    record.X2 = CurrentEntity.X2 - Run.OriginX;
    record.Y2 = CurrentEntity.Y2 - Run.OriginY;
}

// A Genesis Evolution program keeps left and right of a groove where a mirroring turns them.
void TellOfTurnedSide(const GrooveRecord& groove)
{
    constexpr Int evolution = 2;
    const bool isMirrored = (Run.OriginRight != 0) != (Run.OriginTop != 0);
    if (Run.ControlType != evolution || !isMirrored || groove.GrooveSide == 0 || groove.Width < 0)
        return;
    Tell(Message::GrooveOnOtherSide, WithPlace({{"layer", ShownLayer(CurrentEntity.Layer)},
                                                {"place", "X" + PlainText(groove.X1 + Run.OriginX) + " Y" +
                                                              PlainText(groove.Y1 + Run.OriginY)}},
                                               groove.Drawn));
}

void TakeGrooveLine()
{
    GrooveRecord& groove = Grow(Grooves, "grooves");
    const Single coded = ReadDiameter();
    groove.Width = coded > 0 ? coded : CurrentEntity.Radius;
    TakeEnds(groove);
    groove.Depth = ReadDepth();
    if (groove.Depth == 0)
        groove.Depth = std::abs(CurrentEntity.Elevation);
    groove.Kerf = GrooveKerf();
    groove.GrooveSide = ReadGrooveSide();
    groove.ToolNumber = GrooveTool();
    TellOfTurnedSide(groove);
}

void ReadGrooveVertex(GrooveRecord& groove, Single headerThickness)
{
    groove.FeedDown = ReadFeedDown();
    groove.Feed = ReadFeed();
    groove.Kerf = GrooveKerf();
    groove.GrooveSide = ReadGrooveSide();
    groove.Depth = ReadDepth();
    if (groove.Depth == 0)
        groove.Depth = std::abs(headerThickness);
}

// The first two vertices of a polyline make its groove; `index` stands behind the header.
void TakeGroovePolyline(Long& index)
{
    if (KindAt(index) != "VERTEX")
        return;
    RequireSeqend(index);
    const DecodedEntity header = CurrentEntity;
    GrooveRecord& groove = Grow(Grooves, "grooves");
    const bool isEven = header.StartWidth == header.EndWidth;
    groove.Width = isEven ? header.StartWidth : -1;
    DecodeEntity(index);
    TakeEnds(groove);
    ReadGrooveVertex(groove, header.Thickness);
    groove.ToolNumber = GrooveTool();
    if (KindAt(index) == "VERTEX") {
        DecodeEntity(index);
        groove.Drawn = DrawnTogether(groove.Drawn, CurrentEntity.Drawn);
        groove.X2 = CurrentEntity.X1 - Run.OriginX;
        groove.Y2 = CurrentEntity.Y1 - Run.OriginY;
        ReadGrooveVertex(groove, header.Thickness);
    }
    TellOfTurnedSide(groove);
    if (!isEven && header.StartWidth == 0) {
        groove.X2 = groove.X1;
        groove.Y2 = groove.Y1;
    }
}

void ReadHBoreLine(HBoreLineRecord& line)
{
    line.Depth = ReadDepth();
    if (line.Depth == 0)
        line.Depth = std::abs(CurrentEntity.Elevation);
    ReadToolOfHorizontal(line);
}

void TakeHBoreLine()
{
    HBoreLineRecord& line = Grow(HBoreLines, "horizontal drilling lines");
    TakeEnds(line);
    ReadHBoreLine(line);
}

// Each pair of neighbouring vertices is a line; the second one's values win.
void TakeHBorePolyline(Long& index)
{
    if (KindAt(index) != "VERTEX")
        return;
    RequireSeqend(index);
    DecodeEntity(index);
    for (int lines = 0; lines < LinesOfAPolyline && KindAt(index) == "VERTEX"; ++lines) {
        HBoreLineRecord line;
        TakeEnds(line);
        DecodeEntity(index);
        line.Drawn = DrawnTogether(line.Drawn, CurrentEntity.Drawn);
        line.X2 = CurrentEntity.X1 - Run.OriginX;
        line.Y2 = CurrentEntity.Y1 - Run.OriginY;
        ReadHBoreLine(line);
        Grow(HBoreLines, "horizontal drilling lines", line);
    }
}

void TakeLineOperation()
{
    if (Holds(CurrentEntity.Layer, "GROOVE"))
        TakeGrooveLine();
    if (Holds(CurrentEntity.Layer, "HBORE"))
        TakeHBoreLine();
}

void TakePolyline(Long& index)
{
    if (Holds(CurrentEntity.Layer, "GROOVE"))
        TakeGroovePolyline(index);
    else if (Holds(CurrentEntity.Layer, "HBORE"))
        TakeHBorePolyline(index);
}

void TakeCircleOperation()
{
    if (HeadOccursIn(VBoreRow))
        TakeDrillingCircle();
    else if (HeadOccursIn(HBoreRow))
        TakeCircleInView();
}

void TakePoint()
{
    if (!HeadOccursIn(VBoreRow))
        return;
    const Single diameter = ReadDiameter(); // the first of two bad values is the one that is named
    AddVerticalBore(diameter, ReadDepth());
}

} // namespace

void ReadOperations()
{
    PartNameRead.clear();
    for (Long i = 1; i <= Entities.Last() && Run.NoCode == False;) {
        const std::string kind = KindAt(i);
        if (kind == "EOF")
            return;
        if (kind != "TEXT" && kind != "POINT" && kind != "CIRCLE" && kind != "LINE" && kind != "POLYLINE") {
            ++i;
            continue;
        }
        DecodeEntity(i);
        if (kind == "TEXT")
            TakeDrawingText(PartNameRead);
        else if (kind == "POINT")
            TakePoint();
        else if (kind == "CIRCLE")
            TakeCircleOperation();
        else if (kind == "LINE")
            TakeLineOperation();
        else
            TakePolyline(i);
    }
}

void ReportPartNameLine()
{
    if (!PartNameRead.empty())
        Tell(Message::PartNameFromText, {{"name", PartNameRead}});
    PartNameRead.clear();
}

} // namespace kv

// Values are read as the drawing's reader reads them, in double. An entity with a number beyond what a Single
// holds is not taken apart: the reader refuses it with its line.
#include "import/flat_entity.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "drawing/group_codes.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr int MeshFlags = 16 | 64; // of a POLYLINE
constexpr int SpaceFlag = 8;

VertexPoint PointOfRecord(const SourceRecord& record, int code)
{
    const SpacePoint at = record.Point(code);
    VertexPoint point;
    point.X = at.X;
    point.Y = at.Y;
    point.Z = at.Z;
    return point;
}

void TakeCorners(const SourceRecord& record, FlatEntity& flat)
{
    for (int code = 10; code <= 13; ++code)
        if (record.Has(code))
            flat.Points.push_back(PointOfRecord(record, code));
}

void TakeRound(const SourceRecord& record, FlatEntity& flat)
{
    flat.Points.push_back(PointOfRecord(record, 10));
    flat.Radius = record.Number(40);
    flat.StartAngle = record.Number(50);
    flat.EndAngle = record.Number(51);
}

void TakeWords(const SourceRecord& record, FlatEntity& flat)
{
    flat.Points.push_back(PointOfRecord(record, 10));
    if (record.Has(11))
        flat.Points.push_back(PointOfRecord(record, 11));
    flat.Radius = record.Number(40);
    flat.StartAngle = record.Number(50);
    flat.Flags = record.Whole(72);
    flat.Upright = record.Whole(73);
    if (const SourcePair* const words = record.Find(1))
        flat.Words = words->Value;
}

void TakeVertices(const SourceEntity& entity, FlatEntity& flat)
{
    flat.StartWidth = entity.Head.Number(40);
    flat.EndWidth = entity.Head.Number(41);
    flat.IsInSpace = (flat.Flags & SpaceFlag) != 0;
    const double elevation = entity.Head.Number(30);
    for (const SourceRecord& part : entity.Parts) {
        if (part.Kind != "VERTEX")
            continue;
        VertexPoint point = PointOfRecord(part, 10);
        if (!flat.IsInSpace)
            point.Z = elevation;
        point.Bulge = part.Number(42);
        point.StartWidth = part.Number(40);
        point.EndWidth = part.Number(41);
        point.Flags = part.Whole(70);
        flat.Points.push_back(point);
    }
}

// Of an LWPOLYLINE: a vertex is complete with its Y, and what follows is that vertex's.
void TakeLightVertices(const SourceRecord& head, FlatEntity& flat)
{
    double x = 0;
    for (const SourcePair& pair : head.Pairs) {
        const double number = NumberOfValue(pair.Value);
        VertexPoint* const last = flat.Points.empty() ? nullptr : &flat.Points.back();
        if (pair.Code == 10) {
            x = number;
        } else if (pair.Code == 20) {
            VertexPoint point;
            point.X = x;
            point.Y = number;
            flat.Points.push_back(point);
        } else if (pair.Code == 42 && last != nullptr) {
            last->Bulge = number;
        } else if (pair.Code == 40 && last != nullptr) {
            last->StartWidth = number;
        } else if (pair.Code == 41 && last != nullptr) {
            last->EndWidth = number;
        }
    }
}

double ElevationOf(const SourceRecord& head, const FlatEntity& flat)
{
    const bool isWritten = head.Has(210) || head.Has(220) || head.Has(230);
    const bool isLevel = IsUpward(flat.Extrusion) || IsDownward(flat.Extrusion);
    return isWritten && isLevel && !flat.Points.empty() ? std::abs(flat.Points.front().Z) : head.Number(38);
}

bool IsUsable(double number)
{
    return std::abs(number) <= std::numeric_limits<Single>::max();
}

bool HasUsableNumbers(const FlatEntity& flat)
{
    const bool points = std::all_of(flat.Points.begin(), flat.Points.end(), [](const VertexPoint& p) {
        return IsUsable(p.X) && IsUsable(p.Y) && IsUsable(p.Z) && IsUsable(p.Bulge) &&
               IsUsable(p.StartWidth) && IsUsable(p.EndWidth);
    });
    return points && IsUsable(flat.Radius) && IsUsable(flat.Thickness) && IsUsable(flat.Elevation) &&
           IsUsable(flat.StartAngle) && IsUsable(flat.EndAngle) && IsFinite(flat.Extrusion);
}

// False for a kind that is not taken apart.
bool TakeByKind(const SourceEntity& entity, FlatEntity& flat)
{
    const SourceRecord& head = entity.Head;
    if (head.Kind == "LINE" || head.Kind == "SOLID") {
        flat.Kind = head.Kind == "LINE" ? FlatKind::Line : FlatKind::Solid;
        TakeCorners(head, flat);
    } else if (head.Kind == "POINT") {
        flat.Kind = FlatKind::Point;
        flat.Points.push_back(PointOfRecord(head, 10));
    } else if (head.Kind == "CIRCLE" || head.Kind == "ARC") {
        flat.Kind = head.Kind == "CIRCLE" ? FlatKind::Circle : FlatKind::Arc;
        TakeRound(head, flat);
    } else if (head.Kind == "TEXT" || head.Kind == "ATTRIB" || head.Kind == "ATTDEF") {
        flat.Kind = FlatKind::Text;
        TakeWords(head, flat);
    } else if (head.Kind == "POLYLINE" || head.Kind == "LWPOLYLINE") {
        flat.Kind = FlatKind::Polyline;
        flat.Flags = head.Whole(70);
        if ((flat.Flags & MeshFlags) != 0)
            return false;
        if (head.Kind == "POLYLINE")
            TakeVertices(entity, flat);
        else
            TakeLightVertices(head, flat);
    } else {
        return false;
    }
    return true;
}

} // namespace

double NumberOfValue(std::string_view value)
{
    double number = 0;
    if (ReadPlainNumber(value, number))
        return number;
    std::string text(value);
    ReplaceChar(text, ',', '.');
    return Val(text);
}

const SourcePair* SourceRecord::Find(int code) const
{
    const auto pair =
        std::find_if(Pairs.begin(), Pairs.end(), [&](const SourcePair& p) { return p.Code == code; });
    return pair == Pairs.end() ? nullptr : &*pair;
}

double SourceRecord::Number(int code, double without) const
{
    const SourcePair* const pair = Find(code);
    return pair == nullptr ? without : NumberOfValue(pair->Value);
}

int SourceRecord::Whole(int code, int without) const
{
    const double number = std::nearbyint(Number(code, without));
    return std::abs(number) <= std::numeric_limits<Int>::max() ? static_cast<int>(number) : 0;
}

std::string_view SourceRecord::Word(int code) const
{
    const SourcePair* const pair = Find(code);
    return pair == nullptr ? std::string_view() : Trim(pair->Value);
}

SpacePoint SourceRecord::Point(int code) const
{
    return {Number(code), Number(code + 10), Number(code + 20)};
}

SpacePoint SourceRecord::Extrusion() const
{
    const bool given = Has(210) || Has(220) || Has(230);
    const SpacePoint extrusion = given ? SpacePoint{Number(210), Number(220), Number(230)} : SpacePoint{};
    return LengthOf(extrusion) > 0 ? extrusion : SpacePoint{0, 0, 1};
}

EntityStyle StyleOf(const SourceRecord& record)
{
    EntityStyle style;
    style.Layer = record.Word(8);
    if (record.Has(62))
        style.Color = record.Whole(62);
    style.Handle = record.Word(5);
    style.Line = record.Line + 1; // where its kind stands
    return style;
}

std::optional<FlatEntity> FlatOf(const SourceEntity& entity)
{
    FlatEntity flat;
    flat.Style = StyleOf(entity.Head);
    flat.Extrusion = entity.Head.Extrusion();
    flat.Thickness = entity.Head.Number(39);
    if (!TakeByKind(entity, flat))
        return std::nullopt;
    flat.Elevation = ElevationOf(entity.Head, flat);
    if (!HasUsableNumbers(flat))
        return std::nullopt;
    return flat;
}

} // namespace kv

// Numbers have at most ten decimals: far below what a Single of the records holds, and never an exponent.
#include "import/pair_writer.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/numbers.h"

namespace kv {

namespace {

constexpr int Decimals = 10;

} // namespace

std::string_view KindWord(FlatKind kind)
{
    switch (kind) {
    case FlatKind::Line:
        return "LINE";
    case FlatKind::Point:
        return "POINT";
    case FlatKind::Circle:
        return "CIRCLE";
    case FlatKind::Arc:
        return "ARC";
    case FlatKind::Polyline:
        return "POLYLINE";
    case FlatKind::Text:
        return "TEXT";
    case FlatKind::Solid:
        return "SOLID";
    }
    return {};
}

void PairWriter::Pair(int code, std::string_view value)
{
    Drawing.Text += WholeText(code);
    Drawing.Text += '\n';
    Drawing.Text += value;
    Drawing.Text += '\n';
    Lines += 2;
}

void PairWriter::Pair(int code, double number)
{
    char text[512]; // a double in plain digits has at most 309 before the point
    const std::to_chars_result end =
        std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, Decimals);
    std::string_view digits(text, static_cast<std::size_t>(end.ptr - text));
    while (digits.ends_with('0'))
        digits.remove_suffix(1);
    if (digits.ends_with('.'))
        digits.remove_suffix(1);
    Pair(code, digits == "-0" ? "0" : digits);
}

void PairWriter::WritePoint(int code, const VertexPoint& point)
{
    Pair(code, point.X);
    Pair(code + 10, point.Y);
    Pair(code + 20, point.Z);
}

void PairWriter::Begin(std::string_view kind, const FlatEntity& flat)
{
    Drawing.Origins.push_back({Lines + 1, flat.Style.Line, false});
    Pair(0, kind);
    if (!flat.Style.Handle.empty())
        Pair(5, flat.Style.Handle);
    Pair(8, flat.Style.Layer);
    if (flat.Style.Color)
        Pair(62, WholeText(*flat.Style.Color));
    if (flat.Elevation != 0)
        Pair(38, flat.Elevation);
    if (flat.Thickness != 0)
        Pair(39, flat.Thickness);
}

void PairWriter::WriteExtrusion(const FlatEntity& flat)
{
    if (IsUpward(flat.Extrusion))
        return;
    Pair(210, flat.Extrusion.X);
    Pair(220, flat.Extrusion.Y);
    Pair(230, flat.Extrusion.Z);
}

void PairWriter::WritePolyline(const FlatEntity& flat)
{
    Pair(66, "1");
    VertexPoint elevation;
    if (!flat.Points.empty() && !flat.IsInSpace)
        elevation.Z = flat.Points.front().Z;
    WritePoint(10, elevation);
    if (flat.Flags != 0)
        Pair(70, WholeText(flat.Flags));
    if (flat.StartWidth != 0 || flat.EndWidth != 0) {
        Pair(40, flat.StartWidth);
        Pair(41, flat.EndWidth);
    }
    WriteExtrusion(flat);
    for (const VertexPoint& point : flat.Points) {
        Pair(0, "VERTEX");
        Pair(8, flat.Style.Layer);
        WritePoint(10, point);
        if (point.StartWidth != 0 || point.EndWidth != 0) {
            Pair(40, point.StartWidth);
            Pair(41, point.EndWidth);
        }
        if (point.Bulge != 0)
            Pair(42, point.Bulge);
        if (point.Flags != 0)
            Pair(70, WholeText(point.Flags));
    }
    Pair(0, "SEQEND");
    Pair(8, flat.Style.Layer);
}

void PairWriter::WriteText(const FlatEntity& flat)
{
    WritePoint(10, flat.Points.front());
    Pair(40, flat.Radius);
    Pair(1, flat.Words);
    if (flat.StartAngle != 0)
        Pair(50, flat.StartAngle);
    if (flat.Flags != 0)
        Pair(72, WholeText(flat.Flags));
    if (flat.Points.size() > 1)
        WritePoint(11, flat.Points[1]);
    WriteExtrusion(flat);
    if (flat.Upright != 0)
        Pair(73, WholeText(flat.Upright));
}

void PairWriter::Write(const FlatEntity& flat)
{
    if (flat.Points.empty() && flat.Kind != FlatKind::Polyline)
        return;
    Begin(KindWord(flat.Kind), flat);
    if (flat.Kind == FlatKind::Polyline) {
        WritePolyline(flat);
        return;
    }
    if (flat.Kind == FlatKind::Text) {
        WriteText(flat);
        return;
    }
    int code = 10;
    for (const VertexPoint& point : flat.Points)
        WritePoint(code++, point);
    if (flat.Kind == FlatKind::Circle || flat.Kind == FlatKind::Arc)
        Pair(40, flat.Radius);
    if (flat.Kind == FlatKind::Arc) {
        Pair(50, flat.StartAngle);
        Pair(51, flat.EndAngle);
    }
    WriteExtrusion(flat);
}

void PairWriter::Copy(const SourceEntity& entity)
{
    Drawing.Origins.push_back({Lines + 1, entity.Head.Line, true});
    Drawing.Text += entity.Text;
    Lines += static_cast<Long>(std::count(entity.Text.begin(), entity.Text.end(), '\n'));
    if (!entity.Text.ends_with('\n')) {
        Drawing.Text += '\n';
        ++Lines;
    }
}

} // namespace kv

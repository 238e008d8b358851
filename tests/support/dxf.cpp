#include "support/dxf.h"

#include <charconv>

namespace kv::test {

namespace {

std::string PairUnlessZero(int code, double value)
{
    return value != 0 ? Pair(code, value) : std::string();
}

// Coordinates first: in the new form what follows them belongs to the finished vertex.
std::string VertexGroups(const Vertex& vertex)
{
    return Pair(10, vertex.X) + Pair(20, vertex.Y) + PairUnlessZero(30, vertex.Z) +
           PairUnlessZero(40, vertex.StartWidth) + PairUnlessZero(41, vertex.EndWidth) +
           PairUnlessZero(42, vertex.Bulge);
}

} // namespace

std::string Number(double value)
{
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

std::string Pair(int code, std::string_view value)
{
    return std::to_string(code) + "\n" + std::string(value) + "\n";
}

std::string Pair(int code, double value)
{
    return Pair(code, Number(value));
}

std::string Line(std::string_view layer, double x1, double y1, double x2, double y2, std::string_view more)
{
    return Pair(0, "LINE") + Pair(8, layer) + Pair(10, x1) + Pair(20, y1) + Pair(11, x2) + Pair(21, y2) +
           std::string(more);
}

std::string Circle(std::string_view layer, double x, double y, double radius, std::string_view more)
{
    return Pair(0, "CIRCLE") + Pair(8, layer) + Pair(10, x) + Pair(20, y) + Pair(40, radius) +
           std::string(more);
}

std::string Arc(std::string_view layer, double x, double y, double radius, double startAngle, double endAngle,
                std::string_view more)
{
    return Pair(0, "ARC") + Pair(8, layer) + Pair(10, x) + Pair(20, y) + Pair(40, radius) +
           Pair(50, startAngle) + Pair(51, endAngle) + std::string(more);
}

std::string Point(std::string_view layer, double x, double y, std::string_view more)
{
    return Pair(0, "POINT") + Pair(8, layer) + Pair(10, x) + Pair(20, y) + std::string(more);
}

std::string TextAt(std::string_view layer, double x, double y, std::string_view text, std::string_view more)
{
    return Pair(0, "TEXT") + Pair(8, layer) + Pair(10, x) + Pair(20, y) + Pair(1, text) + std::string(more);
}

std::string Polyline(std::string_view layer, const std::vector<Vertex>& vertices, std::string_view header)
{
    std::string text = Pair(0, "POLYLINE") + Pair(8, layer) + Pair(66, "1") + std::string(header);
    for (const Vertex& vertex : vertices)
        text += Pair(0, "VERTEX") + Pair(8, layer) + VertexGroups(vertex);
    return text + Pair(0, "SEQEND") + Pair(8, layer);
}

std::string Lwpolyline(std::string_view layer, const std::vector<Vertex>& vertices, std::string_view header)
{
    std::string text = Pair(0, "LWPOLYLINE") + Pair(8, layer) + std::string(header);
    for (const Vertex& vertex : vertices)
        text += VertexGroups(vertex);
    return text;
}

std::string PanelSolid(std::string_view layer, double x, double y, double width, double height,
                       double thickness)
{
    return Pair(0, "SOLID") + Pair(8, layer) + Pair(10, x) + Pair(20, y + height) + Pair(11, x + width) +
           Pair(21, y + height) + Pair(12, x) + Pair(22, y) + Pair(13, x + width) + Pair(23, y) +
           Pair(39, thickness);
}

std::string Rectangle(std::string_view layer, double x, double y, double width, double height)
{
    return Line(layer, x, y, x + width, y) + Line(layer, x + width, y, x + width, y + height) +
           Line(layer, x + width, y + height, x, y + height) + Line(layer, x, y + height, x, y);
}

std::string Instructions(const std::vector<std::string>& lines, std::string_view layer)
{
    std::string text = TextAt(layer, 0, 0, "POST INSTRUCTIONS");
    for (const std::string& line : lines)
        text += TextAt(layer, 0, 0, line);
    return text;
}

std::string Drawing(std::string_view entities)
{
    return Pair(0, "SECTION") + Pair(2, "ENTITIES") + std::string(entities) + Pair(0, "ENDSEC") +
           Pair(0, "EOF");
}

} // namespace kv::test

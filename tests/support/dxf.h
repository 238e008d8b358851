// Drawings as text, entity by entity, for tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv::test {

// A number as a drawing would hold it (shortest text that reads back).
std::string Number(double value);
// One group pair.
std::string Pair(int code, std::string_view value);
std::string Pair(int code, double value);

// What is 0 is not written.
struct Vertex {
    double X = 0, Y = 0;
    double Bulge = 0;
    double StartWidth = 0, EndWidth = 0;
    double Z = 0;
};

std::string Line(std::string_view layer, double x1, double y1, double x2, double y2,
                 std::string_view more = "");
std::string Circle(std::string_view layer, double x, double y, double radius, std::string_view more = "");
// Angles in degrees, counter-clockwise from start to end.
std::string Arc(std::string_view layer, double x, double y, double radius, double startAngle, double endAngle,
                std::string_view more = "");
std::string Point(std::string_view layer, double x, double y, std::string_view more = "");
std::string TextAt(std::string_view layer, double x, double y, std::string_view text,
                   std::string_view more = "");
// Old-form polyline with vertices and SEQEND, all on the layer; `header` stands behind the layer.
std::string Polyline(std::string_view layer, const std::vector<Vertex>& vertices,
                     std::string_view header = "");
std::string Lwpolyline(std::string_view layer, const std::vector<Vertex>& vertices,
                       std::string_view header = "");
// A SOLID on the layer whose corners are those of the rectangle, thickness in group 39.
std::string PanelSolid(std::string_view layer, double x, double y, double width, double height,
                       double thickness);
// Four lines around a rectangle.
std::string Rectangle(std::string_view layer, double x, double y, double width, double height);
// Title and directive lines, one TEXT each, on the layer.
std::string Instructions(const std::vector<std::string>& lines, std::string_view layer = "INFO");
// The ENTITIES section around the entities.
std::string Drawing(std::string_view entities);

} // namespace kv::test

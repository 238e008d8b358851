// The kinds of entities that the drawing's reader knows, as numbers that can be moved, turned and mirrored.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "import/placement.h"
#include "platform/numbers.h"

namespace kv {

// A pair as it stands in the drawing.
struct SourcePair {
    int Code = 0;
    std::string_view Value; // with its blanks
};
// A record of the drawing: an entity, or a part of one.
struct SourceRecord {
    std::string Kind;              // upper case, trimmed
    std::vector<SourcePair> Pairs; // behind its group 0
    std::string_view Text;         // all its lines
    Long Line = 0;                 // of the drawing, where its group 0 stands

    const SourcePair* Find(int code) const; // the first one; null: none
    bool Has(int code) const { return Find(code) != nullptr; }
    double Number(int code, double without = 0) const;
    int Whole(int code, int without = 0) const; // 0 beyond the numbers that flags and counts have
    std::string_view Word(int code) const;      // trimmed
    SpacePoint Point(int code) const;           // groups code, code + 10, code + 20
    SpacePoint Extrusion() const;               // 0, 0, 1 where it gives none
};
double NumberOfValue(std::string_view value); // commas are points, as for the drawing's reader

// An entity with the records that belong to it: vertices, attributes, the SEQEND.
struct SourceEntity {
    SourceRecord Head;
    std::vector<SourceRecord> Parts;
    std::string_view Text; // all lines of all records
};

struct VertexPoint {
    double X = 0, Y = 0, Z = 0;
    double Bulge = 0; // of the way to the next point; 1 is half a circle
    double StartWidth = 0, EndWidth = 0;
    int Flags = 0; // of a VERTEX
};

enum class FlatKind { Line, Point, Circle, Arc, Polyline, Text, Solid };

// Layer, colour and what else an entity of any kind has.
struct EntityStyle {
    std::string Layer;
    std::optional<int> Color; // as drawn, 0 for BYBLOCK; none: that of the layer
    std::string Handle;
    Long Line = 0;
};

struct FlatEntity {
    FlatKind Kind = FlatKind::Line;
    EntityStyle Style;
    SpacePoint Extrusion{0, 0, 1};
    double Thickness = 0;
    // Group 38, a depth to the layer rules; also the height of an entity whose extrusion is written, which
    // counts as that. Without sign of a side.
    double Elevation = 0;
    std::vector<VertexPoint> Points;     // corners, ends, vertices; the middle of a circle or an arc
    double Radius = 0;                   // of a circle or an arc; height of a text
    double StartAngle = 0, EndAngle = 0; // degrees, counter-clockwise; of a text StartAngle is its turn
    int Flags = 0;                       // of a polyline; of a text 72
    int Upright = 0;                     // of a text 73
    double StartWidth = 0, EndWidth = 0; // of a polyline's head
    bool IsInSpace = false;              // a polyline whose points are not in an object system
    std::string Words;                   // of a text

    bool IsClosed() const { return (Flags & 1) != 0; }
};

// Null for a kind that is not listed above, for a mesh, and where a number is missing or no number.
std::optional<FlatEntity> FlatOf(const SourceEntity& entity);
EntityStyle StyleOf(const SourceRecord& record);

} // namespace kv

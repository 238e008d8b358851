// What all families of writers remember from drawing to drawing.
#pragma once

#include <string>
#include <string_view>

#include "state/carry_over.h"
#include "state/run.h"
#include "writers/number_format.h"

namespace kv {

// Words of the plane in which a route is cut, as the last record set them.
struct PlaneWords {
    std::string Side = "P5";
    std::string Code = "G17";
    std::string X, Y, Z, I, J, K; // letter and value; empty on the face

    bool operator==(const PlaneWords&) const = default;
};

constexpr Int TopBit = 0x10; // of the side mask

// Working variables that outlive a drawing on purpose; ResetWriters() alone brings them back.
struct WriterMemory {
    // Raised by the blocks and never lowered: a drawing without operations behind one with
    // operations writes its short program.
    bool TopDrillingWritten = false, GrooveWritten = false, RouteWritten = false;
    Int SideMask = 0;             // TopBit work on top, 0x01 to 0x08 bores in sides 1 to 4
    bool ToolSubstituted = false; // told again with every later drawing
    Int LastSpeed = 0;            // head positions have no speed of their own and print this one
    std::string ToolWord;         // one for all blocks; a route that names no tool keeps the last
    Int RouteSide = Face;         // of the last record that opened a route
    PlaneWords Plane;             // a panel from a solid leaves them as they stand
    Single FitX = 0, FitY = 0;    // where the last arc through fit points began
    // Of the Genesis Evolution alone.
    bool EvolutionWritten = false; // as the flags above
    Single EvolutionDiameter = 0;  // last bore's that has one; a route names it too
    Single EvolutionFeed = 0;      // last vertical bore's; bores in the edges by router name it
};
extern WriterMemory Writers;
extern WriterMemory WritersAlone; // as it would be had this drawing been the first of the process

// Everything that is written into the memory goes through this.
template <typename T, typename V> void Remember(T WriterMemory::*field, const V& value)
{
    Writers.*field = value;
    WritersAlone.*field = value;
}

// Values as the report shows them.
inline std::string ShownValue(bool value)
{
    return value ? "on" : "off";
}
inline std::string ShownValue(Int value)
{
    return WholeText(value);
}
inline std::string ShownValue(Single value)
{
    return PlainText(value);
}
inline std::string ShownValue(const std::string& value)
{
    return value;
}
inline std::string ShownValue(const PlaneWords& value)
{
    return value.Side + " " + value.Code;
}

// The value for the program. One that an earlier drawing left is noted by `what`.
template <typename T> const T& Recall(T WriterMemory::*field, std::string_view what)
{
    if (Writers.*field != WritersAlone.*field)
        NoteTakenOver(what, ShownValue(Writers.*field));
    return Writers.*field;
}
// Work was written; sides are bits of SideMask.
void RememberSides(Int sides);
void RememberWork(bool WriterMemory::*written, Int sides);

} // namespace kv

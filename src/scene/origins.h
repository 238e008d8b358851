// What of the drawing each line of a program comes from, for whoever looks at an operation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "scene/scene.h"

namespace kv {

struct OriginEntity {
    std::size_t Line = 0; // of the drawing's file
    std::string What;     // UTF-8: "CIRCLE on VBORE_D5"
    std::string Handle;   // empty: the drawing gives none
};

struct LineOrigin {
    std::uint32_t Line = 0;   // of the program, from 1
    std::uint32_t Entity = 0; // of DrawingOrigins::Entities
};

struct ProgramOrigins {
    std::string Path;
    std::vector<LineOrigin> Lines; // in the order of the lines; a line may come from several entities
    // That the horizontal machine drills; other programs name their edges.
    Plane BackEdge = Plane::Edge1;
};

struct DrawingOrigins {
    std::vector<OriginEntity> Entities;
    std::vector<ProgramOrigins> Programs;
};

// Null: none of that name; folders and letters' case do not count.
const ProgramOrigins* OriginsOfProgram(const DrawingOrigins& origins, std::string_view path);
// Fills the items' From and DrawnLines.
void NameOrigins(Scene& scene, const DrawingOrigins& origins, const ProgramOrigins& program);

} // namespace kv

// A drawing that has no program yet, as it would be converted now: its panel, its entities and the programs
// that it would become. Nothing reaches the disk.
#pragma once

#include <string>
#include <vector>

#include "platform/numbers.h"
#include "scene/origins.h"
#include "scene/scene.h"
#include "shell/program_pictures.h"

namespace kv {

struct ProgramNow {
    std::string Path; // where it would be placed
    std::string Text; // CP1252
};

struct DrawingLook {
    std::string Fault;                           // CP1252: why there is no panel; empty: there is one
    double Length = 0, Width = 0, Thickness = 0; // of the panel, mm
    Corner From;                                 // that the programs count from
    std::vector<DrawnShape> Drawn;
    std::vector<ProgramNow> Programs;
    DrawingOrigins Origins;
    std::string Explanation; // UTF-8: what became of each entity, also of a drawing without a panel
};

// Runs a job: what it leaves to the next one must not go into a program, so this is for a process that
// writes none. The line may name an output behind the drawing, as that of a job.
DrawingLook LookAtDrawing(const std::string& jobLine, Int system);

// What lies where the drawing's programs would be placed: of an earlier time, or of another drawing.
struct ProgramsFound {
    ProgramsOfDrawing Programs;
    bool AreAsNow = true; // byte for byte what the drawing would become now
};
ProgramsFound FindPrograms(const std::string& drawing, const DrawingLook& look);
// Of the programs as they would be now, in their order, with the drawing over them.
std::vector<ProgramPicture> PicturesOfLook(const DrawingLook& look);
// The panel and the drawing on it, without work.
Scene SceneOfDrawing(const DrawingLook& look);

} // namespace kv

// A drawing with directive lines, read and obeyed in a scratch folder: what the tests of instructions
// and of their renames start from. Drawings go through the reader, so commas have become points as in
// a real job.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "drawing/dxf_reader.h"
#include "drawing/instructions.h"
#include "platform/paths.h"
#include "state/report.h"
#include "state/run.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv::test {

using Lines = std::vector<std::string>;

struct Directives : ::testing::Test {
    Scene Place;

    // Reads a drawing and lets its instructions act.
    void ObeyDrawing(const std::string& entities)
    {
        std::string path = FromHostPath(Place.Write("DOOR.DXF", Drawing(entities)).string());
        Place.Lines.clear();
        ReadDrawing(path);
        ResetRun();
        ReadInstructions();
        ReportMessage(2, "");
    }
    void Obey(const Lines& lines, const std::string& more = "") { ObeyDrawing(Instructions(lines) + more); }
    // The number of the run error that one line ends in; 0 for none.
    int ErrorOf(const std::string& line)
    {
        try {
            Obey({line});
        } catch (const RunError& error) {
            return error.Number;
        }
        return 0;
    }
    // Layers of the records of a kind.
    static Lines LayersOf(std::string_view kind)
    {
        Lines layers;
        for (Long i = 1; i <= Entities.Last(); ++i)
            if (Entities[i].Kind == kind)
                layers.emplace_back(Entities[i].Layer.Trimmed());
        return layers;
    }
    static std::string Colored(int color) { return Pair(62, color); }
};

} // namespace kv::test

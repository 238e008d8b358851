// Writes random drawings into a folder, the same ones in each run: FOLDER/0/D0.dxf and so on, a hundred in
// each sub-folder. Half of them have routes of all kinds; the other half are panels with bores, grooves,
// edge bores and contours whose numbers have all the digits that a rotated drawing has.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/random_drawings.h"

namespace {

using namespace kv::test;

constexpr unsigned Drawings = 1000;
constexpr unsigned InAFolder = 100;

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("random_drawings FOLDER\n", stderr);
        return 2;
    }
    for (unsigned seed = 0; seed < Drawings; ++seed) {
        const std::filesystem::path folder =
            std::filesystem::path(argv[1]) / std::to_string(seed / InAFolder);
        std::filesystem::create_directories(folder);
        std::ofstream file(folder / ("D" + std::to_string(seed) + ".dxf"), std::ios::binary);
        file << RandomDrawing(seed);
        if (!file.flush()) {
            std::fputs("random_drawings: a drawing cannot be written\n", stderr);
            return 1;
        }
    }
    return 0;
}

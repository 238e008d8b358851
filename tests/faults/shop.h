// Shops to be disturbed: installations in which every file that the program keeps is in use, and the calls
// that change them. All paths are below one folder.
#pragma once

#include <string>
#include <vector>

#include "faults/shop_tree.h"

namespace fault_test {

using Words = std::vector<std::string>;

struct Shop {
    std::string Name;
    Tree Before;
    Words Call;      // behind the program's name
    Words ProbeCall; // converts one more drawing
    Words Environment;
    Words OperatorLines; // of the notes, in their order
    Words Programs;      // paths of the programs that the call makes
    Words Jobs;          // words at the end of the call, or lines of the batch
    bool Watches = false;
};

// The shop with the jobs of a mask alone.
Shop WithJobs(Shop shop, unsigned mask);

// Control: "cnc90", "genesis" or "evolution". `root` is where the shop will stand.
Shop ListOfDrawings(const std::string& control, const fs::path& root);
// Temp.DXF stands in the source folder.
Shop WatchedDrawing(const fs::path& root);
// BATCH.LST with three lines stands in the source folder.
Shop WatchedBatch(const fs::path& root);

// Paths in a tree.
inline const std::string IndexPlace = "CNC90/SORG/INDICE.PRG";
inline const std::string NotesPlace = "CNC90/NOTE/NOC/D/F597";
inline const std::string CutListPlace = "CUT/CUTLIST.PTS";
inline const std::string SettingsPlace = "HOME/KV90.INI";

} // namespace fault_test

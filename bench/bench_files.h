// Drawings and folders that the benchmarks make for themselves, in one scratch folder that goes when
// the program ends.
#pragma once

#include <cstddef>
#include <filesystem>

namespace kv::bench {

// Made at the first call, in the folder that KORVANTI_BENCH_FOLDER names; else on the memory file system
// where there is one.
const std::filesystem::path& ScratchFolder();
void RemoveScratchFolder();

// A drawing of LINEs, CIRCLEs and LWPOLYLINEs as CAD programs write them, with handles, owners,
// subclass markers and colours; ends at the first entity past `bytes`. Coordinates have at most
// `decimals` decimals: 3 as drawn by hand or by a cabinet program, 12 as after a rotation.
std::filesystem::path LargeDrawing(std::size_t bytes, int decimals);

// A panel as a shop knows it: border, four system rows, dowels, cups, grooves, edge bores and the
// drawing's own lines on layers that are passed over: 200 entities in all.
void WriteTypicalPanel(const std::filesystem::path& path);

} // namespace kv::bench

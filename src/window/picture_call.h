// `KV90WIN --picture`: programs and drawings as picture files, without a window.
#pragma once

#include <string>
#include <vector>

namespace kv {

constexpr int WidthOfPicture = 1920; // pixels of a PNG
constexpr int LeastWidth = 200, MostWidth = 16000;

struct PictureCall {
    std::string Of, Output; // UTF-8, as typed: a program or drawing; FILE.png, .pdf or .svg
    int Width = WidthOfPicture;
};

// UTF-8, one line each, with the file's name.
struct PictureFiles {
    std::vector<std::string> Written, Faults;
};

bool IsPictureFile(const std::string& file); // by its name
// With the settings and tools of the program's folder. A drawing is converted in memory: nothing is placed.
PictureFiles DrawPictureFiles(const PictureCall& call);

} // namespace kv

// Pictures of programs as one page for a browser: it needs nothing from elsewhere and works without a
// network.
#pragma once

#include <string>
#include <vector>

#include "scene/scene.h"
#include "scene/svg_picture.h"

namespace kv {

struct PictureOfProgram {
    PictureTitle Title;
    Scene Picture;
    std::string Text; // of the program, UTF-8
};

// `opening` is HTML, ahead of the pictures.
std::string PicturePage(const std::vector<PictureOfProgram>& pictures, const std::string& opening = {});

} // namespace kv

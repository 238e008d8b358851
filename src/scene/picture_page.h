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

std::string PicturePage(const std::vector<PictureOfProgram>& pictures);

} // namespace kv

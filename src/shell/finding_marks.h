// What the check of a job has found, as marks on its picture.
#pragma once

#include <vector>

#include "scene/scene.h"

namespace kv {

// Red crosses on the face, of the drawing that ran last. None where it was not checked.
void AddFindingMarks(std::vector<DrawnShape>& drawn);

} // namespace kv

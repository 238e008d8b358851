// The binary files of the Winner90, made by driving its editor with keystrokes.
#pragma once

namespace kv {

void MakeBinaries();

} // namespace kv

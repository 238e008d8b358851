// Settings whose text is more than the number that is read from it.
#pragma once

namespace kv {

// One line for each that the drawing that runs is converted by. Called when its records are whole.
void TellMisreadSettings();

} // namespace kv

// The first lines of the report, by which the program names itself and its version.
#pragma once

namespace kv {

void ShowBanner();

} // namespace kv

// EXCAV layers: rectangle and circle pockets become clearing paths.
#pragma once

namespace kv {

void ExcavatePockets();

} // namespace kv

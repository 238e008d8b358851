// Whether the drawing that was read holds anything that an import would change.
#pragma once

namespace kv {

// From Entities as the reader has left them, quickly: a yes may still come to nothing.
bool AsksForImport();

} // namespace kv

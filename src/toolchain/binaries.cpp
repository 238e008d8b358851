#include "toolchain/binaries.h"
namespace kv {
void MakeBinaries() {}
} // namespace kv

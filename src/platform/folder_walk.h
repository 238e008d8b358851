// What a backend gives of a folder; the listings of directory.h are made from it.
#pragma once

#include <functional>
#include <string_view>

#include "platform/directory.h"
#include "platform/files.h"

namespace kv {

enum class Listed { Name, NameDateAndSize }; // LongName, or with the fields of date and size

// Hands each file that the pattern counts to `take`, in the folder's own order, until `take` answers false.
// "Cannot tell" when the folder cannot be read to its end; `take` may have had some of its files.
FileAnswer WalkFolder(std::string_view pattern, Listed listed,
                      const std::function<bool(DirectoryEntry&)>& take);

} // namespace kv

// Where a drawing's entities begin.
#pragma once

#include <string>

#include "platform/line_scanner.h"

namespace kv {

// Stands on the line that names the section. A file that names none is read from the first line that
// holds the word, whatever that is. False where no line does.
bool OpenAtEntities(LineScanner& scanner, const std::string& path);

} // namespace kv

// Where a drawing's entities begin.
#pragma once

#include "platform/line_scanner.h"

namespace kv {

// Goes from the scanner's first line to the one that names the section. A file that names none is read from
// the first line that holds the word, whatever that is. False where no line does.
bool FindEntities(LineScanner& scanner);

} // namespace kv

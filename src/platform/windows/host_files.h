// What the Windows backends share about files of the host.
#pragma once

#include "platform/files.h"

namespace kv {

FileOutcome HostOutcome(unsigned long error); // of the system; a missing file is a missing path

} // namespace kv

// The one exception of the program. It is thrown by checked helpers (number conversions, array
// growth, file access that nobody handles nearer) and caught where a job ends: the job fails with
// one clear line and the process goes on to the next job.
#pragma once

#include <string>

namespace kv {

// Numbers that reports show to an operator; they are those of the control's own manuals.
constexpr int ErrorInvalidCall = 5;
constexpr int ErrorOverflow = 6;
constexpr int ErrorSubscript = 9;
constexpr int ErrorFileNotFound = 53;
constexpr int ErrorDeviceIo = 57;
constexpr int ErrorDiskFull = 61;
constexpr int ErrorPermission = 70;
constexpr int ErrorFileAccess = 75;
constexpr int ErrorPathNotFound = 76;

struct RunError {
    int Number = 0;    // one of the numbers above
    std::string Cause; // what went wrong, in words; names the layer, entity or file where there is one
};

} // namespace kv

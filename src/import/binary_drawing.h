// The binary form of DXF as the pairs of lines of its ASCII form.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// Whether a file's first bytes are those of the binary form.
bool IsBinaryDrawing(std::string_view head);
// Lines as a design program would have saved them; numbers with all digits that they need. Handles and the
// chunks of binary data are there too, in hexadecimal. Throws RunError that names the byte where a file ends
// in the middle of a pair, or where a group code has no known form.
std::string AsciiOfBinary(std::string_view bytes);

} // namespace kv

// The libFuzzer target: any bytes as a drawing, converted for one of the three machine controls, by one of
// the three words of the setting Import. A crash, a sanitizer's complaint, an exception or a hang is a
// finding; a failed job is none.
#include <cstdint>
#include <string>

#include <unistd.h>

#include "convert_bytes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t length)
{
    // One folder for each process, so that several can run side by side.
    static const std::filesystem::path home =
        kv::fuzz::ScratchRoot() / ("korvanti-fuzz-" + std::to_string(::getpid()));
    const std::string_view drawing(reinterpret_cast<const char*>(bytes), length);
    kv::fuzz::ConvertBytes(drawing, home, static_cast<int>(length % 3), kv::fuzz::ImportWord(length / 3));
    return 0;
}

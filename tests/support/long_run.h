// For tests of thousands of jobs in one process: what the heap holds, and a scene on the memory disk.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>

#include <malloc.h>
#include <unistd.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KORVANTI_COUNTED_HEAP 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define KORVANTI_COUNTED_HEAP 1
#endif
#if defined(KORVANTI_COUNTED_HEAP)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace kv::test {

// Bytes; the sanitizers keep an account of their own.
inline std::size_t HeapInUse()
{
#if defined(KORVANTI_COUNTED_HEAP)
    return __sanitizer_get_current_allocated_bytes();
#else
    return ::mallinfo2().uordblks;
#endif
}

// A real disk would flush each of tens of thousands of files. Made before the scene, whose folder then
// lies on the memory disk, where there is one.
struct OnMemoryDisk {
    OnMemoryDisk()
    {
        const char* const before = std::getenv("TMPDIR");
        Before = before != nullptr ? before : "";
        constexpr const char* MemoryDisk = "/dev/shm";
        if (::access(MemoryDisk, W_OK) == 0)
            ::setenv("TMPDIR", MemoryDisk, 1);
    }
    ~OnMemoryDisk()
    {
        if (Before.empty())
            ::unsetenv("TMPDIR");
        else
            ::setenv("TMPDIR", Before.c_str(), 1);
    }
    OnMemoryDisk(const OnMemoryDisk&) = delete;
    OnMemoryDisk& operator=(const OnMemoryDisk&) = delete;

    std::string Before;
};

} // namespace kv::test

// What the tests ask of the host in its own way: environment variables, the time of a file, a pipe that
// stands as a file.
#pragma once

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

namespace kv::test {

// Sets a variable of this process, or takes it away.
inline void SetHostVariable(const std::string& name, const std::optional<std::string>& value)
{
#if defined(_WIN32)
    ::_putenv_s(name.c_str(), value.value_or("").c_str()); // an empty one is none
#else
    if (value)
        ::setenv(name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(name.c_str());
#endif
}

// Time of the last change, local.
inline void StampFile(const std::filesystem::path& file, std::tm local)
{
    local.tm_isdst = -1;
    const auto time = std::chrono::system_clock::from_time_t(std::mktime(&local));
    std::filesystem::last_write_time(file, std::chrono::file_clock::from_sys(time));
}

// False on a host that has none.
inline bool MakePipe([[maybe_unused]] const std::filesystem::path& place)
{
#if defined(_WIN32)
    return false;
#else
    return ::mkfifo(place.c_str(), 0600) == 0;
#endif
}

} // namespace kv::test

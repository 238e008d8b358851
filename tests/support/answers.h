// Yes or no about files, for tests that know which it must be: a question that cannot be answered fails.
#pragma once

#include <string_view>

#include <gtest/gtest.h>

#include "platform/directory.h"
#include "platform/files.h"

namespace kv::test {

inline bool IsYes(const FileAnswer& answer)
{
    EXPECT_TRUE(answer.Is != Presence::CannotTell) << answer.Why.Cause;
    return answer.Is == Presence::There;
}

inline bool FileStands(std::string_view path)
{
    return IsYes(AskFile(path));
}

inline bool FolderStands(std::string_view path)
{
    return IsYes(AskFolder(path));
}

inline bool PatternStands(std::string_view pattern)
{
    return IsYes(AskPattern(pattern));
}

inline bool DriveStands(std::string_view path)
{
    return IsYes(AskDrive(path));
}

// All 0 when there is no file.
inline FileStamp StampOf(std::string_view path)
{
    FileStamp stamp;
    IsYes(AskStamp(path, stamp));
    return stamp;
}

// Files that the pattern counts; none when the folder is not there.
inline Long Counted(std::string_view pattern)
{
    Long count = 0;
    IsYes(FCount(pattern, count));
    return count;
}

} // namespace kv::test

// The parts of a backslash path.
#include "platform/paths.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

TEST(FileNameOf, ThePartBehindTheLastBackslash)
{
    EXPECT_EQ(FileNameOf("C:\\dxf\\door.dxf"), "door.dxf");
    EXPECT_EQ(FileNameOf("C:\\dxf\\"), "");
    EXPECT_EQ(FileNameOf("\\door"), "door");
    EXPECT_EQ(FileNameOf(""), "");
}

TEST(FileNameOf, OfATextWithoutABackslashIsTheText)
{
    EXPECT_EQ(FileNameOf("door.dxf"), "door.dxf");
    EXPECT_EQ(FileNameOf("a/door.dxf"), "a/door.dxf"); // a slash is no backslash
}

TEST(FolderOf, UpToAndIncludingTheLastBackslash)
{
    EXPECT_EQ(FolderOf("C:\\dxf\\door.dxf"), "C:\\dxf\\");
    EXPECT_EQ(FolderOf("C:\\dxf\\"), "C:\\dxf\\");
    EXPECT_EQ(FolderOf("\\door"), "\\");
}

TEST(FolderOf, OfATextWithoutABackslashIsEmpty)
{
    EXPECT_EQ(FolderOf("door.dxf"), "");
    EXPECT_EQ(FolderOf(""), "");
}

TEST(WithBackslash, AddsOneWhereNoneStands)
{
    EXPECT_EQ(WithBackslash("C:\\dxf"), "C:\\dxf\\");
    EXPECT_EQ(WithBackslash("C:\\dxf\\"), "C:\\dxf\\");
    EXPECT_EQ(WithBackslash(""), "");
}

} // namespace
} // namespace kv

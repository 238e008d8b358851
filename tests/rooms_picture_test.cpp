// The picture of rooms and floors is the one that the includes give today, and the script that draws it
// sees an include, and a room that is on no floor.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/scratch_folder.h"
#include "support/source_files.h"

namespace kv {
namespace {

struct Drawn {
    int Status = -1;
    std::string Output; // errors too
};

Drawn DrawRooms(const std::filesystem::path& tree)
{
    const std::string script = (test::SourceFolder / "docs" / "pictures" / "draw_rooms.sh").string();
    Drawn drawn;
    std::FILE* const pipe = ::popen(("sh '" + script + "' '" + tree.string() + "' 2>&1").c_str(), "r");
    if (pipe == nullptr)
        return drawn;
    std::array<char, 4096> part{};
    for (std::size_t count = 0; (count = std::fread(part.data(), 1, part.size(), pipe)) > 0;)
        drawn.Output.append(part.data(), count);
    drawn.Status = WEXITSTATUS(::pclose(pipe));
    return drawn;
}

class RoomsPicture : public ScratchFolder {
  protected:
    void Put(const std::string& name, const std::string& contents) const
    {
        std::filesystem::create_directories((Folder / name).parent_path());
        PutFile(name, contents);
    }
    // A tree of two rooms on two floors.
    void SetUp() override
    {
        ScratchFolder::SetUp();
        Put("tests/floors_test.cpp",
            "constexpr FloorRow Floors[] = {\n    {\"ground/\", 1}, {\"upper/\", 2},\n};\n");
        Put("src/ground/a.h", "#pragma once\n");
        Put("src/upper/b.cpp", "#include <string>\n");
    }
    static std::size_t Count(const std::string& text, const std::string& part)
    {
        std::size_t count = 0;
        for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size())
            ++count;
        return count;
    }
};

TEST_F(RoomsPicture, IsTheOneOfTheIncludes)
{
    const Drawn drawn = DrawRooms(test::SourceFolder);
    EXPECT_EQ(drawn.Status, 0);
    EXPECT_TRUE(drawn.Output == test::FileBytes(test::SourceFolder / "docs" / "pictures" / "rooms.svg"))
        << "remake it: docs/pictures/draw_rooms.sh >docs/pictures/rooms.svg";
}

TEST_F(RoomsPicture, AnIncludeFromRoomToRoomChangesItAndACommentDoesNot)
{
    const Drawn without = DrawRooms(Folder);
    EXPECT_EQ(without.Status, 0) << without.Output;
    EXPECT_EQ(Count(without.Output, ">ground<"), 1U);
    EXPECT_EQ(Count(without.Output, ">upper<"), 1U);
    Put("src/upper/b.cpp", "// #include \"ground/a.h\"\n#include <string>\n");
    EXPECT_EQ(DrawRooms(Folder).Output, without.Output);
    Put("src/upper/b.cpp", "#include \"ground/a.h\"\n");
    const Drawn with = DrawRooms(Folder);
    EXPECT_EQ(with.Status, 0) << with.Output;
    EXPECT_EQ(Count(without.Output, "<path "), 0U);
    EXPECT_EQ(Count(with.Output, "<path "), 2U); // the line and its head
}

TEST_F(RoomsPicture, ARoomOnNoFloorIsAnError)
{
    Put("src/cellar/c.h", "#pragma once\n");
    const Drawn drawn = DrawRooms(Folder);
    EXPECT_EQ(drawn.Status, 1);
    EXPECT_NE(drawn.Output.find("cellar"), std::string::npos) << drawn.Output;
}

} // namespace
} // namespace kv

// The hand-over file of a CNC90 control.
#include "writers/cnc/navetta.h"

#include "platform/text.h"
#include "writers/program_scene.h"

namespace kv {
namespace {

class Navetta : public ProgramScene {
  protected:
    void SetUp() override
    {
        ProgramScene::SetUp();
        Put("Cnc90/INDICE.PRG", "");
        Config.DestinationPath90 = PathOf("Cnc90\\");
        SetVariable("DIRTMP", (Folder / "TMP").string());
        SetVariable("ROOT", "D:\\CNC90\\");
    }
    static std::string Handed(std::string record, const std::string& name, const std::string& root)
    {
        record.replace(40, 12, Padded(name, 12));
        record.replace(158, 40, Padded(root, 40));
        record.replace(198, 12, "NOP.BAT     ");
        record.replace(280, 2, std::string("\1\0", 2));
        return record;
    }
    void WriteNamed(const std::string& name)
    {
        NewDrawing(name);
        AddBore();
        WriteCncProgram();
    }
};

TEST_F(Navetta, NameRootAndCommandAreSetAndAllElseStays)
{
    const std::string old(372, '\xEE');
    Put("TMP/Navetta.cmd", old);
    WriteNamed("door");
    EXPECT_EQ(Get("TMP/Navetta.cmd"), Handed(old, "DOOR", "D:\\CNC90"));
}

TEST_F(Navetta, AShortFileIsFilledAndALongOneKeepsItsTail)
{
    Put("TMP/Navetta.cmd", "ABC");
    WriteNamed("DOOR");
    EXPECT_EQ(Get("TMP/Navetta.cmd"), Handed("ABC" + std::string(369, '\0'), "DOOR", "D:\\CNC90"));
    Put("TMP/Navetta.cmd", std::string(380, 'x'));
    WriteNamed("DOOR");
    EXPECT_EQ(Get("TMP/Navetta.cmd"), Handed(std::string(380, 'x'), "DOOR", "D:\\CNC90"));
}

TEST_F(Navetta, NoneIsMade)
{
    std::filesystem::create_directories(Folder / "TMP");
    WriteNamed("DOOR");
    EXPECT_FALSE(Stands("TMP/Navetta.cmd"));
    EXPECT_TRUE(Stands("Cnc90/SRG/D/OOR"));
}

TEST_F(Navetta, OtherControlsAreHandedNothing)
{
    Put("TMP/Navetta.cmd", "ABC");
    Config.DestinationPath90 = PathOf("PROG\\");
    WriteNamed("DOOR");
    EXPECT_EQ(Get("TMP/Navetta.cmd"), "ABC");
}

TEST_F(Navetta, TheVariablesAreReadAtEachProgram)
{
    Put("TMP/Navetta.cmd", "");
    Put("TMP2/Navetta.cmd", "");
    WriteNamed("DOOR");
    SetVariable("DIRTMP", (Folder / "TMP2").string() + "/");
    SetVariable("ROOT", "E:");
    WriteNamed("SIDE");
    EXPECT_EQ(Get("TMP/Navetta.cmd").substr(40, 12), "DOOR        ");
    EXPECT_EQ(Get("TMP2/Navetta.cmd").substr(40, 12), "SIDE        ");
    EXPECT_EQ(Get("TMP2/Navetta.cmd").substr(158, 40), Padded("E:", 40));
}

TEST_F(Navetta, WithoutVariablesTheControlsOwnFoldersServe)
{
    SetVariable("DIRTMP", "");
    SetVariable("ROOT", "");
    SetVariable("KORVANTI_DRIVES", (Folder / "drives").string());
    Put("drives/c/CNC90/MOD1/TMP/Navetta.cmd", "");
    WriteNamed("DOOR");
    EXPECT_EQ(Get("drives/c/CNC90/MOD1/TMP/Navetta.cmd"),
              Handed(std::string(372, '\0'), "DOOR", "C:\\CNC90"));
}

TEST_F(Navetta, EachPortionIsHandedOver)
{
    Put("TMP/Navetta.cmd", "");
    Config.LineLimit = "4";
    NewDrawing("DOOR");
    for (int i = 0; i < 5; ++i)
        AddBore();
    WriteCncProgram();
    EXPECT_EQ(Get("TMP/Navetta.cmd").substr(40, 12), Padded(ProgramList.back(), 12));
}

} // namespace
} // namespace kv

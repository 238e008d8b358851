// The last written program, by which a viewer finds it when the drawing is done with.
#include "writers/evolution/evolution_scene.h"

namespace kv {
namespace {

class LastWritten : public EvolutionScene {
  protected:
    void SetUp() override
    {
        EvolutionScene::SetUp();
        std::filesystem::create_directories(Folder / "GEN");
        Config.DestinationPathGen = PathOf("GEN\\");
        ExeFolder = "C:\\KV90\\";
    }
    void Write(Int control, const std::string& name, const std::string& description)
    {
        NewDrawing(name);
        Run.ControlType = control;
        Run.PartDescription = description;
        AddBore();
        RunProgramWriters();
    }
    static void ExpectLast(const std::string& name, const std::string& path, const std::string& description)
    {
        EXPECT_EQ(LastProgram.FileName, name);
        EXPECT_EQ(LastProgram.Path, path);
        EXPECT_EQ(LastProgram.Description, description);
    }
};

TEST_F(LastWritten, AtProgramStartThereIsNone)
{
    ExpectLast("", "", "");
}

TEST_F(LastWritten, AnIndexedProgramHasItsNameOfTheIndexAndItsPlaceBelowIt)
{
    Write(0, "PanelDoor1234", "OAK DOOR");
    ExpectLast("PANELDOOR123", PathOf("PROG\\SRG\\P\\ANELDOOR.123"), "OAK DOOR");
    EXPECT_TRUE(Stands("PROG/SRG/P/ANELDOOR.123"));
}

TEST_F(LastWritten, AGenesisProgramHasTheNameOfItsFile)
{
    Write(1, "PanelDoor12", "OAK DOOR");
    ExpectLast("PANELDOO.R12", PathOf("GEN\\PANELDOO.R12"), "OAK DOOR");
    EXPECT_TRUE(Stands("GEN/PANELDOO.R12"));
}

TEST_F(LastWritten, AnEvolutionProgramHasTheNameOfItsFile)
{
    ExeFolder = PathOf("HOME\\");
    Write(2, "PanelDoor12", "OAK DOOR");
    ExpectLast("PanelDoor12.CNC", PathOf("PROG\\PanelDoor12.CNC"), "OAK DOOR");
    EXPECT_TRUE(Stands("PROG/PanelDoor12.CNC"));
}

TEST_F(LastWritten, OfPortionsItIsTheLastOne)
{
    NewDrawing("DOOR");
    Run.ControlType = 0;
    Config.LineLimit = "4";
    for (int i = 0; i < 4; ++i)
        AddBore();
    RunProgramWriters();
    ExpectLast("DOOR2", PathOf("PROG\\SRG\\D\\OOR2"), "DOOR");
}

TEST_F(LastWritten, ItOutlivesItsDrawing)
{
    Write(0, "DOOR", "OAK DOOR");
    ReleaseRunArrays();
    NewDrawing("SIDE");
    ExpectLast("DOOR", PathOf("PROG\\SRG\\D\\OOR"), "OAK DOOR");
}

TEST_F(LastWritten, AProgramThatCannotBeWrittenLeavesTheOneBefore)
{
    Write(0, "DOOR", "OAK DOOR");
    Config.DestinationPathGen = PathOf("NOWHERE\\");
    Write(1, "SIDE", "OAK SIDE");
    EXPECT_EQ(Run.RunFailed, True);
    ExpectLast("DOOR", PathOf("PROG\\SRG\\D\\OOR"), "OAK DOOR");
}

TEST_F(LastWritten, ADrawingWhoseProgramIsSwitchedOffLeavesTheOneBefore)
{
    Write(0, "DOOR", "OAK DOOR");
    Run.CncOff = True;
    Write(0, "SIDE", "OAK SIDE");
    ExpectLast("DOOR", PathOf("PROG\\SRG\\D\\OOR"), "OAK DOOR");
}

} // namespace
} // namespace kv

// Which writer runs for a drawing.
#include <array>

#include "writers/program_scene.h"

namespace kv {
namespace {

class ChosenWriter : public ProgramScene {
  protected:
    const std::string Closing =
        " ---------------------------------------***------------------------------------";
    const std::string NoHbd = "HBD not indicated for \"DOOR\"";
};

TEST_F(ChosenWriter, TheControlTypeDecides)
{
    AddBore();
    RunProgramWriters();
    EXPECT_TRUE(Stands("PROG/SRG/D/OOR"));
    Run.ControlType = 1;
    RunProgramWriters();
    EXPECT_TRUE(Stands("PROG/DOOR"));
}

TEST_F(ChosenWriter, AClosingLineEndsTheReport)
{
    RunProgramWriters();
    EXPECT_EQ(Reported(),
              (Texts{" No Selected Operations found for PTP", Closing, "No program was written"}));
}

TEST_F(ChosenWriter, AnEvolutionDrawingWithoutATemplateFailsAndSaysWhy)
{
    AddBore();
    Run.ControlType = 2;
    RunProgramWriters();
    EXPECT_EQ(Boxes, Texts{"EvHeader.dat file not found"});
    EXPECT_EQ(Reported(), Texts{Closing});
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(Run.FailedFiles, (Texts{"", Run.SourceFile}));
}

TEST_F(ChosenWriter, OtherControlTypesWriteNothing)
{
    AddBore();
    Run.ControlType = 3;
    RunProgramWriters();
    EXPECT_EQ(Reported(), (Texts{Closing, "No program was written"}));
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
}

TEST_F(ChosenWriter, TheBatchCanTurnTheProgramOff)
{
    AddBore();
    for (const Int type : std::array<Int, 3>{0, 1, 2}) {
        Run.ControlType = type;
        Run.CncOff = True;
        RunProgramWriters();
    }
    EXPECT_EQ(Reported(), (Texts{Closing, Closing, Closing}));
    EXPECT_EQ(AllFiles(), Texts{"PROG/INDICE.PRG"});
    EXPECT_EQ(Run.RunFailed, False);
}

TEST_F(ChosenWriter, TheHbdProgramComesBeforeTheControls)
{
    AddBore();
    Config.MakeHBD = 1;
    Config.HbdAvailable = true;
    RunProgramWriters();
    EXPECT_EQ(Reported().front(), NoHbd);
    EXPECT_EQ(VBores[1].Group, 1); // no bore is taken away where the machine has nothing to do
    EXPECT_TRUE(Stands("PROG/SRG/D/OOR"));
    EXPECT_EQ(Run.RunFailed, False);
}

TEST_F(ChosenWriter, HbdNeedsItsBoxItsMachineAndTheBatchsLeave)
{
    Config.MakeHBD = 1;
    RunProgramWriters();
    Config.HbdAvailable = true;
    Run.HbdOff = True;
    RunProgramWriters();
    Run.HbdOff = False;
    Config.MakeHBD = 0;
    RunProgramWriters();
    EXPECT_FALSE(WasReported(NoHbd));
    Config.MakeHBD = 1;
    RunProgramWriters();
    EXPECT_TRUE(WasReported(NoHbd));
}

TEST_F(ChosenWriter, WithTheProgramOffTheHbdProgramIsMadeAlone)
{
    AddBore();
    Config.MakeHBD = 1;
    Config.HbdAvailable = true;
    Run.CncOff = True;
    RunProgramWriters();
    EXPECT_EQ(Reported(), (Texts{NoHbd, Closing, "No program was written"}));
}

} // namespace
} // namespace kv

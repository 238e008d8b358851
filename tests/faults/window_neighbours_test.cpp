// The open window runs a batch while other processes convert in the same installation: no program, index
// record or cut list row of any of them is missing or there twice.
#include "faults/neighbours.h"
#include "support/random_rounds.h"

namespace fault_test {
namespace {

constexpr int UsualDrawings = 5; // of each process
constexpr int Window = 0;        // among the processes

class WindowNeighbours : public Neighbours {
  protected:
    std::string Keys() const override
    {
        const std::string drawings = FolderIn("in") + "\r\n";
        return "AutoStartBatch=True\r\nSourcePath90=" + drawings + "SourcePathGen=" + drawings +
               "SourcePathEV=" + drawings;
    }

    void ConvertBeside(int consoles)
    {
        const int drawings = std::min(kv::test::Rounds(UsualDrawings), MostDrawings);
        std::string batch;
        for (int drawing = 0; drawing < drawings; ++drawing) {
            PutDrawing(Window, drawing);
            batch += NameOf(Window, drawing) + ".dxf " + NameOf(Window, drawing) + "\r\n";
        }
        PutBytes(Folder / "in/BATCH.LST", batch);
        std::vector<pid_t> children = {StartCalls({CallOf(KORVANTI_WINDOW_PROGRAM, {"/S", "/K"})})};
        for (int process = 1; process <= consoles; ++process) {
            std::vector<Words> calls;
            for (int drawing = 0; drawing < drawings; ++drawing)
                calls.push_back(ConvertCall({PutDrawing(process, drawing)}));
            children.push_back(StartCalls(calls));
        }
        for (const pid_t child : children)
            EXPECT_EQ(EndedWith(child), 0) << Failures();
        CountAll("the window beside " + std::to_string(consoles) + " processes, " + std::to_string(drawings) +
                     " drawings each",
                 Window, consoles, drawings);
        for (const auto& [path, bytes] : TakeUp(Folder))
            EXPECT_FALSE(path.starts_with("in/BATCH.")) << path;
    }
};

TEST_F(WindowNeighbours, TheWindowAndTwoMissNothing)
{
    ConvertBeside(2);
}

TEST_F(WindowNeighbours, TheWindowAndEightMissNothing)
{
    ConvertBeside(8);
}

} // namespace
} // namespace fault_test

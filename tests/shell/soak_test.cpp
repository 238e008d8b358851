// Five hundred batches in one process, on a clock that does not wait: drawings that fail, lists and
// drawings that are still being written, triggers that come too early, a source folder that goes away
// and comes back. Each job is done exactly once, each PROC.LST is right, and memory does not grow.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <random>

#include "shell/unattended.h"
#include "support/long_run.h"

namespace kv {
namespace {

constexpr int Batches = 500;
constexpr int MostJobs = 20;
constexpr int FirstLook = 50, LastLook = 450; // batches between which memory must not grow
constexpr std::size_t HeapSlack = 64 * 1024;  // bytes; far below what one leak a job would add

struct Batch {
    std::string Text;           // BATCH.LST
    Names Outputs;              // of all lines
    std::size_t FailsAt = 1000; // index of the job that fails
    std::size_t Tried() const { return std::min(Outputs.size(), FailsAt + 1); }
    std::string Processed() const
    {
        std::string text;
        for (std::size_t i = 0; i < Tried(); ++i)
            text += Outputs[i] + "\r\n";
        return text;
    }
};

class Soak : private test::OnMemoryDisk, public Unattended {
  protected:
    void SetUp() override
    {
        Unattended::SetUp();
        Config.AutoStartBatch = true;
        Put("GOOD.DXF", BoredPanel());
        Put("BAD.DXF", FailingDrawing());
        ReadWhole = std::make_unique<test::AtStage>("entities", [this] { ++Done[kv::Run.PartName]; });
        WarmUp();
    }
    void TearDown() override
    {
        ReadWhole.reset();
        Unattended::TearDown();
    }

    int Chance(int sides) { return static_cast<int>(Random() % static_cast<unsigned>(sides)); }

    // Lines in the forms that a design program may write.
    Batch MakeBatch(int number)
    {
        Batch batch;
        const int jobs = 1 + Chance(MostJobs);
        if (Chance(6) == 0)
            batch.FailsAt = static_cast<std::size_t>(Chance(jobs));
        for (int i = 0; i < jobs; ++i) {
            const std::string output = "N" + std::to_string(number) + "J" + std::to_string(i);
            const bool fails = static_cast<std::size_t>(i) == batch.FailsAt;
            const std::string drawing = fails ? "bad.dxf" : "good.dxf";
            const int form = Chance(4);
            if (form == 0)
                batch.Text += "\"" + drawing + "\" " + output + "\r\n\r\n";
            else if (form == 1)
                batch.Text += Source(drawing).string() + "^" + output + "\r\n";
            else if (form == 2)
                batch.Text += "!CNCON\r\n" + drawing + " ^ " + output + " \r\n";
            else
                batch.Text += drawing + " " + output + "\r\n";
            batch.Outputs.push_back(output);
        }
        if (Chance(3) == 0)
            batch.Text.resize(batch.Text.find_last_not_of("\r\n") + 1);
        return batch;
    }

    // As after the last batch: nothing done, no programs.
    void Sweep()
    {
        std::filesystem::remove_all(Here.Programs / "SRG");
        Here.Write("prg/INDICE.PRG", "");
        std::filesystem::remove(Source("PROC.LST"));
        Done.clear();
        Here.Lines.clear();
        Here.Lines.shrink_to_fit();
        Here.Boxes.clear();
        Pauses = {};
        Focused = {};
        Started.clear();
    }

    // Every job that was tried was done once, every other one not at all.
    void ExpectDone(const Batch& batch)
    {
        ASSERT_EQ(TextOf("PROC.LST"), batch.Processed()) << batch.Text;
        for (std::size_t i = 0; i < batch.Outputs.size(); ++i) {
            const std::string& output = batch.Outputs[i];
            const bool tried = i < batch.Tried();
            ASSERT_EQ(Done[TriedName(output)], tried ? 1 : 0) << batch.Text << Here.ReportText();
            ASSERT_EQ(Here.HasProgram(output), tried && i != batch.FailsAt) << output;
        }
        ASSERT_FALSE(Stands("BATCH.RUN"));
        ASSERT_FALSE(Shell.RunActive);
    }
    // A part name carries the program folder.
    static std::string TriedName(const std::string& output) { return DestinationPath(0) + output; }

    void Plain(const Batch& batch)
    {
        Put("BATCH.LST", batch.Text);
        Tick();
        ASSERT_FALSE(Stands("BATCH.LST"));
        ExpectDone(batch);
    }

    // The list grows in the first pauses.
    void StillWritten(const Batch& batch)
    {
        const std::size_t half = batch.Text.size() / 2;
        Put("BATCH.LST", batch.Text.substr(0, half));
        int looks = 0;
        InThePause = [&](double) {
            if (++looks <= 2)
                std::ofstream(Source("BATCH.LST"), std::ios::binary | std::ios::app)
                    << batch.Text.substr(looks == 1 ? half : half + 1, looks == 1 ? 1 : std::string::npos);
        };
        Tick(2);
        ASSERT_TRUE(Stands("BATCH.LST"));
        ASSERT_TRUE(Done.empty());
        Tick();
        InThePause = nullptr;
        ExpectDone(batch);
    }

    // The next list comes while this one runs.
    void Overlapping(const Batch& batch, const Batch& next)
    {
        bool put = false;
        InThePause = [&](double seconds) {
            if (!put && seconds != 0.5)
                Put("BATCH.LST", next.Text);
            put = put || seconds != 0.5;
        };
        Put("BATCH.LST", batch.Text);
        Tick();
        InThePause = nullptr;
        ExpectDone(batch);
        ASSERT_TRUE(Stands("BATCH.LST"));
        Tick();
        ASSERT_FALSE(Stands("BATCH.LST"));
        ExpectDone(next);
        for (const std::string& output : batch.Outputs)
            ASSERT_LE(Done[TriedName(output)], 1);
    }

    // The drawing of the batch is being written when its job comes.
    void DrawingStillWritten(const Batch& batch)
    {
        const std::string drawing = BoredPanel();
        Put("GOOD.DXF", drawing.substr(0, drawing.size() / 3));
        InThePause = [&](double seconds) {
            if (seconds == 0.1)
                Put("GOOD.DXF", drawing);
        };
        Put("BATCH.LST", batch.Text);
        Tick();
        InThePause = nullptr;
        Put("GOOD.DXF", drawing);
        ExpectDone(batch);
    }

    void FolderAwayWhileIdle(const Batch& batch)
    {
        Put("BATCH.LST", batch.Text);
        std::filesystem::rename(Source(), Here.Folder / "away");
        Tick(3);
        ASSERT_TRUE(Done.empty());
        ASSERT_FALSE(std::filesystem::exists(Source()));
        std::filesystem::rename(Here.Folder / "away", Source());
        Tick();
        ExpectDone(batch);
    }

    // It goes behind the first job; what was not done is kept, and the operator gives it back.
    void FolderAwayWhileItRuns(const Batch& batch)
    {
        bool gone = false;
        InThePause = [&](double seconds) {
            if (seconds == 0.3 && !gone)
                std::filesystem::rename(Source(), Here.Folder / "away");
            gone = gone || seconds == 0.3;
        };
        Put("BATCH.LST", batch.Text);
        Tick();
        InThePause = nullptr;
        std::filesystem::rename(Here.Folder / "away", Source());
        ASSERT_FALSE(Stands("PROC.LST"));
        ASSERT_TRUE(Stands("BATCH.RUN"));
        const bool nothingLeft = TextOf("BATCH.RUN").empty();
        if (nothingLeft) {
            ASSERT_EQ(batch.Outputs.size(), 1U); // done before the folder went
        }
        std::filesystem::rename(Source("BATCH.RUN"), Source("BATCH.LST"));
        Tick();
        std::string left = batch.Processed();
        if (batch.FailsAt != 0)
            left.erase(0, left.find('\n') + 1); // the first one was done
        ASSERT_EQ(Stands("PROC.LST"), !nothingLeft);
        if (!nothingLeft) {
            ASSERT_EQ(TextOf("PROC.LST"), left) << batch.Text;
        }
        for (std::size_t i = 0; i < batch.Outputs.size(); ++i) {
            const bool tried = i < batch.Tried();
            ASSERT_EQ(Here.HasProgram(batch.Outputs[i]), tried && i != batch.FailsAt) << batch.Text;
            ASSERT_EQ(Done[TriedName(batch.Outputs[i])], !tried ? 0 : i == batch.FailsAt && i == 0 ? 2 : 1);
        }
    }

    // A drawing that comes in two pieces beside the batches.
    void TempBetween()
    {
        Config.AutoStartBatch = false;
        Config.AutoStartTemp = true;
        const std::string drawing = BoredPanel();
        Put("Temp.DXF", drawing.substr(0, drawing.size() / 2));
        Tick(2);
        ASSERT_TRUE(Stands("Temp.DXF"));
        Put("Temp.DXF", drawing);
        Tick(2);
        ASSERT_FALSE(Stands("Temp.DXF"));
        ASSERT_TRUE(Here.HasProgram("TEMP")) << Here.ReportText();
        ASSERT_EQ(Done["Temp"], 1);
        Config.AutoStartBatch = true;
        Config.AutoStartTemp = false;
    }

    std::mt19937 Random{20};
    std::map<std::string, int> Done; // jobs by their part name
    std::unique_ptr<test::AtStage> ReadWhole;
};

TEST_F(Soak, FiveHundredBatchesLoseAndRepeatNoJob)
{
    std::size_t heapBefore = 0;
    int kinds[7] = {};
    for (int number = 1; number <= Batches; ++number) {
        Sweep();
        const Batch batch = MakeBatch(number);
        const int kind = Chance(7);
        ++kinds[kind];
        if (kind == 1)
            StillWritten(batch);
        else if (kind == 2)
            Overlapping(batch, MakeBatch(++number));
        else if (kind == 3)
            DrawingStillWritten(batch);
        else if (kind == 4)
            FolderAwayWhileIdle(batch);
        else if (kind == 5)
            FolderAwayWhileItRuns(batch);
        else
            Plain(batch);
        if (kind == 6)
            TempBetween();
        if (HasFatalFailure())
            FAIL() << "batch " << number << " of kind " << kind;
        if (heapBefore == 0 && number >= FirstLook) {
            Sweep();
            heapBefore = test::HeapInUse();
        }
        if (number >= LastLook) {
            Sweep();
            EXPECT_LE(test::HeapInUse(), heapBefore + HeapSlack) << "batch " << number;
        }
    }
    for (const int count : kinds)
        EXPECT_GE(count, 20); // all of it happened
}

} // namespace
} // namespace kv

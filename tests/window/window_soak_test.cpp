// Five hundred batches through an open window, on a clock that does not wait: drawings that fail,
// triggers that come while a batch runs, a source folder that goes away and comes back. Each job is done
// exactly once, each PROC.LST is right, the window shows the last batch, and memory does not grow.
#include "window_scene.h"

#include <map>
#include <random>

#include "state/report.h"
#include "support/long_run.h"

namespace kv {
namespace {

constexpr int Batches = 500;
constexpr int MostJobs = 20;
constexpr int KindsOfDrawing = 6;
constexpr int FirstLook = 50, LastLook = 450; // batches between which memory must not grow
constexpr std::size_t HeapSlack = 64 * 1024;  // bytes; far below what one leak a job would add

class WindowSoak : private test::OnMemoryDisk, public WindowTest {
  protected:
    struct Batch {
        std::string List, Processed;
    };

    // Upper-cased, as a batch spells it; every seventh batch meets a drawing without a border.
    Batch NextBatch(int number)
    {
        Batch batch;
        const int jobs = std::uniform_int_distribution<int>(1, MostJobs)(Chance);
        const int failing = number % 7 == 3 ? std::uniform_int_distribution<int>(0, jobs - 1)(Chance) : jobs;
        for (int job = 0; job < jobs; ++job) {
            const std::string kind =
                std::to_string(std::uniform_int_distribution<int>(1, KindsOfDrawing)(Chance));
            const std::string output = "P" + std::to_string(job + 1);
            batch.List += (job == failing ? "scrap" : "panel" + kind) + "^" + output + "\r\n";
            if (job > failing)
                continue;
            batch.Processed += output + "\r\n";
            if (job < failing)
                ++Expected[output];
        }
        return batch;
    }

    void Drop(const std::string& list) const
    {
        std::ofstream(Drawings / "BATCH.TMP", std::ios::binary) << list;
        std::filesystem::rename(Drawings / "BATCH.TMP", Drawings / "BATCH.LST");
    }

    std::string Processed() const
    {
        std::ifstream file(Drawings / "PROC.LST", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::mt19937 Chance{2026};
    std::map<std::string, int> Expected, Done;
};

TEST_F(WindowSoak, FiveHundredBatchesLoseNoJobAndDoNoneTwice)
{
    PutIni("Winner90=True\r\nAutoStartBatch=True\r\n");
    for (int kind = 1; kind <= KindsOfDrawing; ++kind)
        PutDrawing("panel" + std::to_string(kind) + ".dxf");
    std::ofstream(Drawings / "scrap.dxf") << "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n";
    Open();
    Window->Timer1.stop(); // the test ticks
    Window->LoadDr.stop();
    for (int warmUp = 0; warmUp < 3; ++warmUp)
        AutostartTick();
    std::string waiting; // dropped while the batch runs, to be taken by the tick behind it
    const test::AtStage look("final", [&] {
        ++Done[kv::Run.PartName.substr(kv::Run.PartName.rfind('\\') + 1)];
        if (!waiting.empty())
            Drop(waiting);
        waiting.clear();
    });
    std::size_t heapBefore = 0;
    for (int number = 1; number <= Batches; ++number) {
        const Batch batch = NextBatch(number);
        const bool twoAtOnce = number % 5 == 0 && number % 7 != 3;
        Drop(batch.List);
        if (number % 50 == 25) { // nobody finds the folder for a while
            std::filesystem::rename(Drawings, Place.Folder / "gone");
            AutostartTick();
            RefreshFileList();
            ASSERT_TRUE(FileList.Rows.empty());
            std::filesystem::rename(Place.Folder / "gone", Drawings);
        }
        Batch second;
        if (twoAtOnce) {
            second = NextBatch(number % 7 == 3 ? number + 1 : number);
            waiting = second.List;
        }
        AutostartTick();
        ASSERT_EQ(Processed(), batch.Processed) << "batch " << number << '\n' << batch.List;
        if (twoAtOnce) {
            AutostartTick();
            ASSERT_EQ(Processed(), second.Processed) << "behind batch " << number << '\n' << second.List;
        }
        ASSERT_FALSE(std::filesystem::exists(Drawings / "BATCH.LST"));
        ASSERT_FALSE(std::filesystem::exists(Drawings / "BATCH.RUN"));
        RefreshFileList();
        QApplication::processEvents();
        ReportMessage(0, ""); // rows of the last batch, few or many
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // there is no loop above
        if (number == FirstLook)
            heapBefore = test::HeapInUse();
        if (number == LastLook) {
            EXPECT_LE(test::HeapInUse(), heapBefore + HeapSlack);
        }
    }
    EXPECT_EQ(Done, Expected);
    EXPECT_TRUE(Window->Start->isEnabled());
    EXPECT_FALSE(Window->BtnAbort->isVisible());
}

} // namespace
} // namespace kv

// The same drawing gives the same program in a process of its own, in one list with others, and in lists of
// several processes at once, where CarryOver is clean.
#include "console/console_run.h"

#include <algorithm>
#include <map>
#include <thread>

#include "support/leaving_drawings.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace console_test {
namespace {

class CarryOverProcesses : public Console {
  protected:
    void SetUp() override
    {
        Console::SetUp();
        for (int i = 0; i < kv::test::Rounds(10); ++i) {
            const std::string name = "Q" + std::to_string(1000 + i) + ".dxf";
            Put(Folder / name,
                kv::test::LeavingDrawing(kv::test::Seed(4200) + static_cast<unsigned>(i)).Drawn());
            Drawings.push_back(name);
        }
    }

    // An installation of its own; gives its folder.
    fs::path Installation(const std::string& name) const
    {
        const fs::path folder = Folder / name;
        fs::create_directories(folder / "home");
        fs::create_directories(folder / "programs");
        Put(folder / "home/KV90.INI",
            "[Configuration]\r\nWinner90=True\r\nCarryOver=clean\r\nDestinationPath90=" +
                (folder / "programs").string() + "/\r\n");
        Put(folder / "programs/INDICE.PRG", "");
        return folder;
    }
    void ConvertIn(const fs::path& installation, const Words& drawings) const
    {
        Words call = {KORVANTI_CONSOLE, "--home", (installation / "home").string(), "convert"};
        call.insert(call.end(), drawings.begin(), drawings.end());
        RunIn(Folder, call, {}, installation / "stdout", installation / "stderr");
    }
    // Programs by their places and records by their names, without their dates.
    static std::map<std::string, std::string> MadeIn(const fs::path& installation)
    {
        std::map<std::string, std::string> made;
        const fs::path programs = installation / "programs";
        for (const auto& entry : fs::recursive_directory_iterator(programs))
            if (entry.is_regular_file() && entry.path().filename() != "INDICE.PRG" &&
                !kv::test::IsAgreement(entry.path()))
                made[fs::relative(entry.path(), programs).string()] = Contents(entry.path());
        constexpr std::size_t RecordSize = 82, DateAt = 38, DateWidth = 8;
        const std::string index = Contents(programs / "INDICE.PRG");
        for (std::size_t at = 0; at + RecordSize <= index.size(); at += RecordSize)
            made[index.substr(at, 12)] = index.substr(at, RecordSize).replace(DateAt, DateWidth, "");
        return made;
    }

    Words Drawings;
};

TEST_F(CarryOverProcesses, AloneInAListAndInListsOfProcessesAtOnce)
{
    std::map<std::string, std::string> alone;
    for (const std::string& drawing : Drawings) {
        const fs::path installation = Installation("alone" + drawing);
        ConvertIn(installation, {drawing});
        for (const auto& [name, contents] : MadeIn(installation))
            alone[name] = contents;
    }
    ASSERT_GT(alone.size(), Drawings.size()) << "programs and their records";

    std::vector<fs::path> installations;
    std::vector<std::thread> processes;
    for (unsigned i = 0; i < 3; ++i) {
        const fs::path installation = Installation("list" + std::to_string(i));
        installations.push_back(installation);
        Words order = Drawings;
        if (i > 0)
            std::shuffle(order.begin(), order.end(), std::mt19937(kv::test::Seed(4300 + i)));
        processes.emplace_back([this, order, installation] { ConvertIn(installation, order); });
    }
    for (std::thread& process : processes)
        process.join();
    for (const fs::path& installation : installations)
        EXPECT_EQ(MadeIn(installation), alone) << installation.filename();
}

} // namespace
} // namespace console_test

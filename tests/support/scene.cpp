#include "support/scene.h"

#include <fstream>
#include <iterator>
#include <random>

#include <gtest/gtest.h>

#include "drawing/layer_rules.h"
#include "job/job_driver.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/program_writers.h"

namespace kv::test {

namespace {

Scene* Current = nullptr;
std::map<std::string, std::function<void()>> Looks;

void KeepRow(const ReportRow& row)
{
    if (Current != nullptr)
        Current->Lines.push_back(row.Text);
}

void KeepBox(std::string_view text, std::string_view, BoxIcon)
{
    if (Current != nullptr)
        Current->Boxes.emplace_back(text);
}

void LookAt(std::string_view stage)
{
    const auto look = Looks.find(std::string(stage));
    if (look != Looks.end())
        look->second();
}

// "PANEL1234567" is SRG\P\ANEL1234.567, "A" is SRG\00\A.
std::filesystem::path ProgramPlace(std::string name)
{
    name = UpperCase(name);
    if (name.size() == 1)
        return std::filesystem::path("SRG") / "00" / name;
    std::string file = name.substr(1, 8);
    if (name.size() > 9)
        file += "." + name.substr(9);
    return std::filesystem::path("SRG") / name.substr(0, 1) / file;
}

bool RunJobLine(Scene& scene, std::string job)
{
    scene.Lines.clear();
    scene.Boxes.clear();
    Run.RunFailed = False;
    ProcessDrawingFile(job);
    ReportMessage(2, "");
    return Run.RunFailed == False;
}

} // namespace

void ResetProcess()
{
    ReleaseRunArrays();
    Run = RunBlock{};
    CurrentEntity = DecodedEntity{};
    Config = Settings{};
    Clock = ClockHooks{};
    Dialogs = DialogHooks{};
    Events = EventHooks{};
    Report = ReportHooks{};
    Stages = StageHooks{};
    ReportMessage(2, "");
    ResetWriters();
    ZeroMeters();
}

Scene::Scene()
{
    ResetProcess();
    static const std::string process = std::to_string(std::random_device{}()); // two runs at once keep apart
    static int count = 0;
    Folder =
        std::filesystem::temp_directory_path() / ("korvanti-test-" + process + "-" + std::to_string(++count));
    Programs = Folder / "prg";
    std::filesystem::create_directories(Programs);
    std::ofstream(Programs / "INDICE.PRG", std::ios::binary).flush();
    SetExeFolder(FromHostPath(Folder.string() + "/"));
    ExchangeSettings(false);
    DestinationPath(0) = FromHostPath(Programs.string() + "/");
    DestinationPath(1) = DestinationPath(0);
    DestinationPath(2) = DestinationPath(0);
    Current = this;
    Report.ShowRow = KeepRow;
    Dialogs.Box = KeepBox;
}

Scene::~Scene()
{
    Current = nullptr;
    ResetProcess();
    std::error_code ignored;
    std::filesystem::remove_all(Folder, ignored);
}

std::filesystem::path Scene::Write(std::string_view name, std::string_view contents) const
{
    const std::filesystem::path place = Folder / name;
    std::ofstream file(place, std::ios::binary);
    file.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    return place;
}

std::string Scene::Read(const std::filesystem::path& place) const
{
    std::ifstream file(place, std::ios::binary);
    EXPECT_TRUE(file.good()) << place.filename() << " is not there\n" << ReportText();
    return {std::istreambuf_iterator<char>(file), {}};
}

bool Scene::Convert(std::string_view drawing, std::string_view name, std::string_view output)
{
    std::string job = FromHostPath(Write(name, drawing).string());
    if (!output.empty())
        job += '\xFF' + std::string(output);
    return RunJobLine(*this, job);
}

bool Scene::ConvertFile(const std::filesystem::path& drawing)
{
    return RunJobLine(*this, FromHostPath(drawing.string()));
}

std::vector<std::string> Scene::Program(std::string_view name) const
{
    const std::string text = Read(Programs / ProgramPlace(std::string(name)));
    std::vector<std::string> lines;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = text.find("\r\n", at);
        EXPECT_NE(end, std::string::npos) << "a line without CR LF";
        if (end == std::string::npos)
            break;
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

bool Scene::HasProgram(std::string_view name) const
{
    return std::filesystem::exists(Programs / ProgramPlace(std::string(name)));
}

bool Scene::Reported(std::string_view line) const
{
    for (const std::string& shown : Lines)
        if (shown == line)
            return true;
    return false;
}

std::string Scene::ReportText() const
{
    std::string text = "Report:\n";
    for (const std::string& line : Lines)
        text += "  [" + line + "]\n";
    return text;
}

AtStage::AtStage(std::string stage, std::function<void()> look)
{
    Looks[std::move(stage)] = std::move(look);
    Stages.Done = LookAt;
}

AtStage::~AtStage()
{
    Looks.clear();
    Stages.Done = nullptr;
}

} // namespace kv::test

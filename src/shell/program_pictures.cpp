// Reads a program with what the installation knows of its tools. Relies on the records of the job that has
// just run; leaves what it noted until the process ends.
#include "shell/program_pictures.h"

#include <algorithm>
#include <deque>

#include "job/installation_tools.h"
#include "job/placing.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "shell/drawing_overlay.h"
#include "shell/finding_marks.h"
#include "shell/program_origins.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr std::uint64_t LargestProgram = std::uint64_t{64} << 20; // bytes that are read for a picture
constexpr std::size_t MostNoted = 1000;                           // drawings; the oldest is forgotten
constexpr std::size_t MostDrawn = 50;                             // of these, with their shapes
constexpr std::size_t MostEntities = 400'000;                     // that all of those have together
constexpr double MillimetresOfInch = 25.4;

std::deque<ProgramsOfDrawing> Noted;
std::size_t NotedCount = 0;

// A batch of large drawings must not fill the memory: of the oldest the programs alone are kept.
void ForgetMostDrawn()
{
    std::size_t kept = 0, entities = 0;
    for (auto programs = Noted.rbegin(); programs != Noted.rend(); ++programs) {
        entities += programs->Drawn.size() + programs->Origins.Entities.size();
        if (++kept == 1 || (kept <= MostDrawn && entities <= MostEntities))
            continue;
        programs->Drawn = {};
        programs->Origins.Entities = {};
        for (ProgramOrigins& program : programs->Origins.Programs)
            program.Lines = {}; // its edge stays
    }
}

bool IsInInches(std::string_view text)
{
    const std::size_t header = text.find("G70");
    return FamilyOf(text) == ProgramFamily::Cnc && header != std::string_view::npos &&
           text.substr(0, header).find("G71") == std::string_view::npos;
}

} // namespace

ProgramPicture ReadProgramPicture(const std::string& path, const ProgramFacts& facts)
{
    std::string text;
    if (const FileOutcome outcome = ReadWholeFile(path, text, LargestProgram); !outcome.Ok()) {
        ProgramPicture picture;
        picture.Path = path;
        picture.Fault = ShownPath(path) + ": " + outcome.Cause;
        return picture;
    }
    return PictureOfText(path, text, facts);
}

ProgramPicture PictureOfText(const std::string& path, const std::string& text, const ProgramFacts& facts)
{
    ProgramPicture picture;
    picture.Path = path;
    if (FamilyOf(text) == ProgramFamily::Unknown) {
        picture.Fault = ShownPath(path) + ": is no program of a known machine";
        return picture;
    }
    MachineSteps steps = ReadProgram(text, facts);
    const InstallationTools known = ToolsOfInstallation();
    FillTools(steps, known.Tools); // sizes that are not known the picture leaves open
    if (!known.Faults.empty())
        picture.ToolFault = known.Faults.front();
    picture.LinesUnread = steps.UnreadCount;
    picture.Unit = IsInInches(text) ? MillimetresOfInch : 1;
    picture.Content.Picture = SceneOf(steps);
    picture.Content.Text = Utf8FromAnsi(text);
    picture.Content.Title.Name = Utf8FromAnsi(FileNameOf(path));
    if (!(picture.Content.Picture.Length > 0 && picture.Content.Picture.Width > 0))
        picture.Fault = ShownPath(path) + ": names no panel";
    return picture;
}

void NoteProgramsOfJob(std::string_view drawing)
{
    std::vector<DrawnShape> drawn = DrawnShapesOfRun();
    DrawingOrigins origins = OriginsOfRun();
    if (!JobGaveProgram())
        return;
    ProgramsOfDrawing programs;
    programs.Drawn = std::move(drawn);
    AddFindingMarks(programs.Drawn);
    programs.Origins = std::move(origins);
    programs.Drawing = drawing;
    for (const std::string& file : JobFiles())
        if (const std::string path = FromHostPath(file);
            std::ranges::find(programs.Files, path) == programs.Files.end()) // one may replace another
            programs.Files.push_back(path);
    programs.Facts.From = {Run.OriginRight != 0, Run.OriginTop != 0};
    programs.Facts.UpperAndLowerExchanged = Val(Config.Origin) != 0;
    programs.Number = ++NotedCount;
    Noted.push_back(std::move(programs));
    ForgetMostDrawn();
    if (Noted.size() > MostNoted)
        Noted.pop_front();
}

const ProgramsOfDrawing* FindProgramsOf(std::string_view drawing)
{
    for (auto programs = Noted.rbegin(); programs != Noted.rend(); ++programs)
        if (EqualIgnoringCase(programs->Drawing, drawing))
            return &*programs;
    return nullptr;
}

const ProgramsOfDrawing* LastProgramsNoted()
{
    return Noted.empty() ? nullptr : &Noted.back();
}

void ForgetNotedPrograms()
{
    Noted.clear();
}

ProgramFacts FactsOfProgram(const ProgramsOfDrawing& programs, const std::string& path)
{
    ProgramFacts facts = programs.Facts;
    if (const ProgramOrigins* const origins = OriginsOfProgram(programs.Origins, path))
        facts.HbdEdge = origins->BackEdge;
    return facts;
}

void LayDrawingOver(ProgramPicture& picture, const ProgramsOfDrawing& programs)
{
    picture.Content.Picture.Drawn = programs.Drawn;
    if (const ProgramOrigins* const origins = OriginsOfProgram(programs.Origins, picture.Path))
        NameOrigins(picture.Content.Picture, programs.Origins, *origins);
}

std::string NumberedFile(const std::string& file, std::size_t number)
{
    if (number == 1)
        return file;
    const std::size_t dot = file.rfind('.');
    return file.substr(0, dot) + "-" + std::to_string(number) + file.substr(dot);
}

std::vector<ProgramPicture> PicturesOfFiles(const ProgramsOfDrawing& programs)
{
    std::vector<ProgramPicture> pictures;
    ProgramPicture fault;
    fault.Fault = ShownPath(programs.Drawing) + ": has no program";
    bool isFirst = true;
    for (const std::string& file : programs.Files) {
        ProgramPicture picture = ReadProgramPicture(file, FactsOfProgram(programs, file));
        if (picture.Fault.empty()) {
            LayDrawingOver(picture, programs);
            pictures.push_back(std::move(picture));
        } else if (isFirst) {
            fault = std::move(picture);
            isFirst = false;
        }
    }
    if (pictures.empty())
        pictures.push_back(std::move(fault));
    return pictures;
}

} // namespace kv

// One picture for each program of a drawing, as it would be converted now; the panel with the drawing on it
// where it gives none. Changes nothing of the installation, so that a window may be open on it.
#include "window/picture_call.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "shell/drawing_look.h"
#include "shell/program_pictures.h"
#include "state/settings.h"
#include "window/picture_file.h"
#include "window/scene_painter.h"
#include "writers/output_names.h"

namespace kv {

namespace {

constexpr char OutputMark = '\xFF'; // between drawing and output of a job line

bool EndsIn(const std::string& text, std::string_view letters)
{
    return text.size() > letters.size() &&
           EqualIgnoringCase(std::string_view(text).substr(text.size() - letters.size()), letters);
}

void WriteOne(const PictureCall& call, const PictureTitle& title, const Scene& scene, PictureFiles& files)
{
    const std::string file = NumberedFile(call.Output, files.Written.size() + 1);
    const ScenePainter painter(scene);
    PictureToWrite picture{painter.Picture, {QString::fromStdString(title.Name)}, {}, {}};
    for (const std::string& line : title.Lines)
        picture.Titles.append(QString::fromStdString(line));
    picture.ImageSize = ImageSizeByWidth(scene.Sheet, call.Width);
    picture.PaintSheet = [&](QPainter& on, const QRectF& area) {
        painter.Paint(on, area, PlaceToShow(scene.Sheet, area), {}, ColoursOfScene(false),
                      PaintWith::FullCare);
    };
    if (const QString cause = WritePicture(QString::fromStdString(file), picture); !cause.isEmpty())
        files.Faults.push_back(file + ": " + cause.toStdString());
    else
        files.Written.push_back(file);
}

// `name` stands above the picture. Lines and tables that could not be read are told, and the rest is drawn.
void WriteProgram(const PictureCall& call, const std::string& name, const ProgramPicture& program,
                  PictureFiles& files)
{
    if (!program.Fault.empty()) {
        files.Faults.push_back(Utf8FromAnsi(program.Fault));
        return;
    }
    const Scene& scene = program.Content.Picture;
    WriteOne(call, {name, TitleLines(scene, program.LinesUnread)}, scene, files);
    if (program.LinesUnread > 0)
        files.Faults.push_back(name + ": " + UnreadText(program.LinesUnread));
    if (const std::string fault = Utf8FromAnsi(program.ToolFault);
        !fault.empty() && std::ranges::find(files.Faults, fault) == files.Faults.end())
        files.Faults.push_back(fault);
}

// Where no folder of programs is set, the drawing's own names them.
std::string JobLineOf(const std::string& drawing)
{
    const std::string path = FromHostPath(drawing);
    if (!Trim(ProgramFolder(SelectedSystem())).empty())
        return path;
    return path + OutputMark + WithBackslash(FolderOf(path));
}

void WriteDrawing(const PictureCall& call, PictureFiles& files)
{
    if (!SettingsFault.Ok()) {
        files.Faults.push_back(Utf8FromAnsi(ShownPath(IniPath) + ": " + SettingsFault.Cause));
        return;
    }
    const DrawingLook look = LookAtDrawing(JobLineOf(call.Of), SelectedSystem());
    if (!look.Fault.empty()) {
        files.Faults.push_back(call.Of + ": " + Utf8FromAnsi(look.Fault));
        return;
    }
    for (const ProgramPicture& program : PicturesOfLook(look))
        WriteProgram(call, call.Of + ": " + program.Content.Title.Name, program, files);
    if (look.Programs.empty()) {
        const Scene scene = SceneOfDrawing(look);
        WriteOne(call, {call.Of, TitleLines(scene, 0)}, scene, files);
    }
}

} // namespace

bool IsPictureFile(const std::string& file)
{
    constexpr std::array<std::string_view, 3> kinds = {".png", ".pdf", ".svg"};
    return std::ranges::any_of(kinds, [&](std::string_view kind) { return EndsIn(file, kind); });
}

PictureFiles DrawPictureFiles(const PictureCall& call)
{
    PictureFiles files;
    LoadAllSettings();
    Config.CarryOver = "clean";
    if (EndsIn(call.Of, ".dxf"))
        WriteDrawing(call, files);
    else
        WriteProgram(call, call.Of, ReadProgramPicture(FromHostPath(call.Of)), files);
    return files;
}

} // namespace kv

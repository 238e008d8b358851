// A text's meaning comes from its layer; the first test that holds applies. Needs CurrentEntity;
// leaves part name, description, notes and literal G-code in Run.
#include "drawing/drawing_texts.h"

#include "drawing/layer_rules.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/given_names.h"
#include "state/report.h"

namespace kv {

namespace {

void TakePartName(std::string& partNameRead)
{
    const std::string before = UpperCase(FileNameOf(Run.PartName));
    Run.PartName = PartNameBy(CurrentEntity.Text);
    const std::string upper = UpperCase(FileNameOf(Run.PartName));
    if (upper != before)
        partNameRead = upper;
}

void AppendLine(std::vector<std::string>& lines, std::string_view line)
{
    if (lines.empty())
        lines.emplace_back(); // lines count from 1
    lines.emplace_back(line);
}

void NoteRead(std::string_view as)
{
    Run.TextsRead.push_back({CurrentEntity.Drawn, std::string(as), CurrentEntity.Text});
}

} // namespace

void TakeDrawingText(std::string& partNameRead)
{
    const std::string_view layer = Trim(CurrentEntity.Layer);
    const std::string_view text = CurrentEntity.Text;
    if (layer == "NAME") {
        NoteRead("part name");
        TakePartName(partNameRead);
    } else if (BeginsWith(layer, "DESCR")) {
        NoteRead("description");
        Run.PartDescription = Trim(text);
    } else if (Holds(layer, "BORDER") && BeginsWith(TrimLeft(text), "DESC")) {
        NoteRead("description");
        const std::string_view line = TrimLeft(text);
        const std::size_t blank = line.find(' ');
        Run.PartDescription = blank == std::string_view::npos ? line : line.substr(blank + 1);
        Tell(Message::BorderDescription, {{"description", Run.PartDescription}});
    } else if (Holds(layer, "CNCNOT")) {
        NoteRead("note of the program");
        AppendLine(Run.CncNotes, text);
    } else if (layer == "GCODE1") {
        NoteRead("lines of the program before the operations");
        AppendLine(Run.GCode1, Trim(text));
    } else if (layer == "GCODE2") {
        NoteRead("lines of the program before the routes");
        AppendLine(Run.GCode2, Trim(text));
    } else if (layer == "GCODE3") {
        NoteRead("lines of the program after the routes");
        AppendLine(Run.GCode3, Trim(text));
    }
}

} // namespace kv

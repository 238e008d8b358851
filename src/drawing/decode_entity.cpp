// Loads one record into CurrentEntity: scaled, brought from its object system to panel-view values,
// with the sequence of its name and the note pinned to its points. Every walk over Entities advances
// through here or by single steps.
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "drawing/layer_rules.h"
#include "platform/text.h"
#include "state/report.h"

namespace kv {

DecodedEntity CurrentEntity;

namespace {

constexpr double NoteReach = 0.01; // drawing units between a note and its point
constexpr double HighestSequence = 10000;
constexpr double HighestLooseSequence = 1000; // behind blanks or underscores

void LoadFields(const DxfEntity& entity)
{
    DecodedEntity& current = CurrentEntity;
    const Single scale = Run.DrawingScale;
    current.Sequence = 0;
    current.Kind = entity.Kind.Trimmed();
    current.Text = EntityTexts[static_cast<std::size_t>(entity.TextIndex)];
    current.Layer = entity.Layer.Trimmed();
    current.X1 = entity.X1 * scale;
    current.Y1 = entity.Y1 * scale;
    current.X2 = entity.X2 * scale;
    current.Y2 = entity.Y2 * scale;
    current.Z1 = entity.Z1;
    current.Z2 = entity.Z2;
    current.Elevation = entity.Elevation;
    current.Thickness = std::abs(entity.Thickness) * scale;
    current.SideThickness = current.Thickness;
    current.Radius = entity.Radius * scale;
    current.StartWidth = current.Radius;
    current.EndWidth = entity.EndWidth;
    current.Bulge = entity.Bulge;
    current.StartAngle = entity.StartAngle;
    current.EndAngle = entity.EndAngle;
    current.Color = entity.Color;
    current.Flags = entity.Flags;
    current.TextAlign = entity.TextAlign;
    current.ExtrusionZ = entity.ExtrusionZ;
    current.FollowFlag = entity.FollowFlag;
    current.Drawn = entity.Drawn;
}

// Coordinates of an entity with a side normal are in its object system.
void MapView(const DxfEntity& entity)
{
    DecodedEntity& current = CurrentEntity;
    const Single x1 = std::abs(current.X1);
    const Single y1 = std::abs(current.Y1);
    const Single z1 = std::abs(current.Z1);
    current.Side = ToInt(Val(entity.Side.Trimmed()));
    switch (current.Side) {
    case 1:
    case 2:
        current.X1 = x1;
        current.Y1 = z1;
        break;
    case 3:
    case 4:
        current.X1 = z1;
        current.Y1 = x1;
        break;
    case 5:
        current.X1 = x1;
        current.X2 = std::abs(current.X2);
        current.Y2 = std::abs(current.Y2); // Y1 keeps its sign
        current.Elevation = z1;
        return;
    default:
        current.Side = 5;
        return;
    }
    current.X2 = std::abs(current.X2);
    current.Y2 = std::abs(current.Y2);
    current.Elevation = y1;
}

// A number behind the layer's word; D and E end it.
double NumberBehind(std::string_view text)
{
    std::string number(text.substr(0, text.find_first_of("DE")));
    return Val(number);
}

Int SequenceOf(std::string_view layer)
{
    constexpr std::string_view words[] = {"ROUTE", "VBORE", "HBORE", "GROOV", "DRILL"};
    const std::string word = UpperCase(Mid(layer, 1, 5));
    if (std::find(std::begin(words), std::end(words), word) == std::end(words))
        return 0;
    const std::string_view behind = Mid(layer, 6);
    constexpr double lowest = std::numeric_limits<Long>::min();
    double number = std::nearbyint(NumberBehind(behind));
    if (number > HighestSequence || number < lowest)
        return 0;
    if (number == 0) {
        const std::size_t loose = behind.find_first_not_of(" _");
        if (loose == std::string_view::npos)
            return 0;
        number = std::nearbyint(NumberBehind(behind.substr(loose)));
        if (number > HighestLooseSequence || number < lowest)
            return 0;
    }
    return ToInt(number);
}

bool NoteAt(Single x, Single y, std::size_t note)
{
    return std::abs(static_cast<double>(y) - Run.NoteY[note]) < NoteReach &&
           std::abs(static_cast<double>(x) - Run.NoteX[note]) < NoteReach;
}

// A note that is the number of an operation string stands for that string.
std::string NoteMeaning(const std::string& note)
{
    const Int number = ToInt(Val(note));
    const auto index = static_cast<std::size_t>(number);
    if (number > 0 && index < Run.OpStrings.size() && !Run.OpStrings[index].empty())
        return Run.OpStrings[index];
    return note;
}

// The last note that matches one of the entity's two points wins.
void LookUpNote()
{
    DecodedEntity& current = CurrentEntity;
    current.NoteText.clear();
    for (std::size_t note = 1; note < Run.NoteText.size(); ++note) {
        if (Run.NoteText[note].empty())
            continue;
        if (NoteAt(current.X1, current.Y1, note) || NoteAt(current.X2, current.Y2, note))
            current.NoteText = NoteMeaning(Run.NoteText[note]);
    }
    if (!current.NoteText.empty())
        current.Sequence = ToInt(Val(current.NoteText));
    current.SearchNotes = False;
}

void MoveMeter(Long index)
{
    if (index % 10 != 0 || Entities.Last() <= 0)
        return;
    const int percent = static_cast<int>(static_cast<double>(index) / Entities.Last() * 30);
    if (percent > MeterValue(Meter::Processing))
        SetMeter(Meter::Processing, percent);
}

} // namespace

void DecodeEntity(Long& index)
{
    DecodedEntity& current = CurrentEntity;
    const DxfEntity& entity = Entities[index];
    LoadFields(entity);
    MapView(entity);
    if (BeginsWith(current.Layer, "RO") && current.Kind == "VERTEX" && current.Side == 5) {
        current.Thickness = 0;
        current.Elevation = 0;
    }
    current.Sequence = SequenceOf(current.Layer);
    const std::string& row = Run.LayerTable[static_cast<std::size_t>(Run.RoutePass)];
    if (BeginsWith(current.Layer, row) && current.StartWidth == current.EndWidth) {
        if (current.SearchNotes != False && Run.NoteCount > 0)
            LookUpNote();
        Run.MaxSequence = std::max<Long>(Run.MaxSequence, current.Sequence);
        Run.MinSequence = std::min<Long>(Run.MinSequence, current.Sequence);
        Run.Alone.MinSequence = std::min<Long>(Run.Alone.MinSequence, current.Sequence);
    }
    ++index;
    MoveMeter(index);
}

} // namespace kv

// Turns group pairs into flat records. It knows pairs, not sections or blocks: what stands outside
// ENTITIES is never seen. Relies on the line scanner; leaves Entities (the first entity is element 2,
// the record that ENDSEC opens stays blank and counts), EntityTexts and, where the drawing has an
// instruction title, InstructionLayer.
// A file with bare carriage returns is not repaired here: it holds no second line, and is told so.
#include "drawing/dxf_reader.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

#include "drawing/block_facts.h"
#include "drawing/drawing_facts.h"
#include "drawing/group_codes.h"
#include "drawing/section_search.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/line_scanner.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/drawn_names.h"
#include "state/report.h"
#include "state/run.h"

namespace kv {

namespace {

// The carried layer of a polyline whose layer is not read yet; no layer name can be this.
constexpr std::string_view LayerToCome = "\x01";
constexpr std::string_view Titles[] = {"POST INSTRUCTIONS", "KORVANTI INSTRUCTIONS"};
constexpr std::string_view BinarySentinel = "AutoCAD Binary DXF"; // first bytes of the binary form
// Kinds that no rule of the reader looks at; nearly every record is one.
constexpr std::string_view PlainKinds[] = {"LINE", "CIRCLE", "VERTEX", "POINT", "ARC"};

struct ReaderState {
    LineScanner Scanner;
    std::string Path;
    Long Current = 1;
    Long Polyline = 0; // the drawn entity whose vertices follow; 0: none
    std::string CarriedLayer;
    Long CarriedName = 0;             // as the drawing spells that layer
    Long KindName = 0, LayerName = 0; // of the current record, as the drawing spells them
    bool HasLayerOfPolyline = false;  // the current record is a SEQEND whose layer is its polyline's
    Text<1> CarriedSide;
    bool PolylineCarry = false;
    bool Lightweight = false; // inside an LWPOLYLINE
    bool FirstVertexDone = false;
    bool ExtrusionPending = false;
    Single Nx = 0, Ny = 0, Nz = 0;
    Int LastColor = 0;
    Long IdleRun = 0;       // records in a row of which no pass reads anything
    bool TitleSeen = false; // the current record's layer is the instruction layer
    std::string Changed;    // a value whose commas became points
    std::string Upper;      // a layer in upper case
    std::string LayerRead;  // the line of the last plain layer, and what became of it
    Text<114> LayerField;
    Long LayerReadName = 0;
    std::string NameRead; // the last layer's line, and the number of the name in it
    Long NameNumber = 0;
    bool IsText = false;             // brought to what the reader knows; the file may be of another form
    std::vector<SourceLine> Origins; // of a text; empty: its lines are the drawing's
    std::size_t Origin = 0;          // of the line that was read last, or one before it
    std::string KindRead;            // the last kind, and the number of its name
    Long KindNumber = 0;
};

ReaderState* Running = nullptr;

int RunningPercent()
{
    return Running != nullptr ? Running->Scanner.PercentDone() : 100;
}

// The cause in the words of the file's true trouble: its head tells binary and line-end troubles.
[[noreturn]] void Refuse(const ReaderState& state, const std::string& cause)
{
    if (state.IsText)
        throw RunError{ErrorFileAccess, cause};
    std::string head;
    static_cast<void>(ReadFileHead(state.Path, head, 4096)); // else the cause stands as it is
    if (BeginsWith(head, BinarySentinel))
        throw RunError{ErrorFileAccess, "Binary DXF; save the drawing as ASCII DXF"};
    if (Holds(head, "\r") && !Holds(head, "\n"))
        throw RunError{ErrorFileAccess, "The lines end in bare carriage returns; no line feed found"};
    throw RunError{ErrorFileAccess, cause};
}

// Of the drawing; lines are asked for in rising order, or once for a failure.
Long LineInDrawing(ReaderState& state)
{
    const auto line = static_cast<Long>(state.Scanner.LineNumber);
    if (state.Origins.empty())
        return line;
    while (state.Origin + 1 < state.Origins.size() && state.Origins[state.Origin + 1].At <= line)
        ++state.Origin;
    const SourceLine& origin = state.Origins[state.Origin];
    return origin.IsLineByLine ? origin.Line + (line - origin.At) : origin.Line;
}

std::string AtLine(ReaderState& state)
{
    return "line " + WholeText(LineInDrawing(state));
}

// The layer of the current record, as the drawing spells it.
Long NameOfLayer(const ReaderState& state)
{
    return state.Lightweight ? state.CarriedName : state.LayerName;
}

// " of LINE on layer X" for messages about the current record.
std::string OfRecord(const ReaderState& state)
{
    const DxfEntity& entity = Entities[state.Current];
    if (entity.Kind.Trimmed().empty())
        return {};
    std::string text = " of ";
    text += state.Lightweight ? entity.Kind.Trimmed() : NameOfNumber(state.KindName);
    const std::string_view layer = NameOfNumber(NameOfLayer(state));
    if (!entity.Layer.Trimmed().empty() && !layer.empty())
        text += " on layer " + std::string(layer);
    return text;
}

[[noreturn]] void RefuseValue(ReaderState& state, std::string_view what, std::string_view value)
{
    throw RunError{ErrorOverflow, std::string(what) + " " + std::string(value.substr(0, 40)) +
                                      " out of range in " + AtLine(state) + OfRecord(state)};
}

// Commas become points, in numbers and texts alike. A NUL byte would end a text unseen.
std::string_view GroupValue(ReaderState& state, std::string_view line)
{
    bool comma = false, foreign = false;
    for (const char c : line) {
        if (c == '\0')
            Refuse(state, "NUL byte in " + AtLine(state));
        comma |= c == ',';
        foreign |= static_cast<unsigned char>(c) >= 0x80 || c == '\\';
    }
    if (foreign)
        NoteForeignLetters();
    if (!comma)
        return line;
    state.Changed.assign(line);
    ReplaceChar(state.Changed, ',', '.');
    return state.Changed;
}

double NumberOf(ReaderState& state, std::string_view line)
{
    double number = 0;
    return ReadPlainNumber(line, number) ? number : Val(GroupValue(state, line));
}

Single NumberField(ReaderState& state, std::string_view line)
{
    const double number = NumberOf(state, line);
    if (!(std::abs(number) <= std::numeric_limits<Single>::max()))
        RefuseValue(state, "Number", line);
    return static_cast<Single>(number);
}

Int IntField(ReaderState& state, std::string_view what, double number, std::string_view value)
{
    // Halves round to even, so 32767.5 is already beyond.
    if (!(number >= -32768.5 && number < 32767.5))
        RefuseValue(state, what, value);
    return ToInt(number);
}

void GrowEntities(ReaderState& state)
{
    static const DxfEntity blank;
    Entities.Append(blank);
    ++state.Current;
}

// Of a kind that no pass knows, without layer, colour and text.
bool IsIdle(const ReaderState& state)
{
    if (state.LayerName != 0 || state.Lightweight)
        return false;
    const DxfEntity& entity = Entities[state.Current];
    static constexpr std::string_view kinds[] = {"POLYLINE", "VERTEX", "SEQEND", "SOLID", "EOF"};
    const std::string_view kind = entity.Kind.Trimmed();
    const auto isKind = [&](std::string_view known) { return kind == known; };
    return entity.Color == 0 && entity.TextIndex == 0 &&
           std::none_of(std::begin(PlainKinds), std::end(PlainKinds), isKind) &&
           std::none_of(std::begin(kinds), std::end(kinds), isKind) && !kind.empty();
}

// A damaged file may hold millions of such records, each fifty times larger in memory than in the file: after
// many in a row one stands for all that follow. The list of drawn entities has each of them.
void BeginSlot(ReaderState& state)
{
    constexpr Long most = 1000;
    state.IdleRun = IsIdle(state) ? state.IdleRun + 1 : 0;
    if (state.IdleRun > most)
        Entities[state.Current] = DxfEntity{};
    else
        GrowEntities(state);
}

// Neighbours mostly are of one kind.
Long NumberOfKind(ReaderState& state, std::string_view kind)
{
    if (kind != state.KindRead) {
        state.KindRead.assign(kind);
        state.KindNumber = NumberOfName(kind);
    }
    return state.KindNumber;
}

// The record that begins with the line just read. The vertices of an LWPOLYLINE are the same entity.
void NoteDrawnEntity(ReaderState& state, std::string_view kind, Long owner)
{
    DrawnEntity drawn;
    drawn.Line = LineInDrawing(state);
    DrawnEntities.Append(drawn);
    Entities[state.Current].Drawn = DrawnEntities.Last();
    if (owner != 0)
        NoteOwner(DrawnEntities.Last(), owner);
    state.KindName = NumberOfKind(state, kind);
    state.LayerName = 0;
}

// The panel side that the record's extrusion names, or the side its polyline carries.
void FinishExtrusion(ReaderState& state)
{
    DxfEntity& entity = Entities[state.Current];
    if (entity.Kind == "SEQEND")
        state.PolylineCarry = false;
    if (state.PolylineCarry) {
        entity.Side = state.CarriedSide;
        return;
    }
    Single largest = 0;
    if (std::abs(state.Nx) > largest) {
        largest = std::abs(state.Nx);
        entity.Side = state.Nx < 0 ? "4" : "3";
    }
    if (std::abs(state.Ny) > largest) {
        largest = std::abs(state.Ny);
        entity.Side = state.Ny < 0 ? "2" : "1";
    }
    if (std::abs(state.Nz) > largest)
        entity.Side = "5";
    entity.ExtrusionZ = IntField(state, "Extrusion", state.Nz, PlainText(state.Nz));
    if (entity.ExtrusionZ == -1)
        NoteMirrored();
    state.Nx = state.Ny = state.Nz = 0;
    state.ExtrusionPending = false;
    if (entity.Kind == "POLYLINE") {
        state.CarriedSide = entity.Side;
        state.PolylineCarry = true;
    }
}

void EndRecord(ReaderState& state)
{
    DxfEntity& entity = Entities[state.Current];
    if (std::min({entity.X1, entity.Y1, entity.X2, entity.Y2}) < 0)
        NoteNegative();
    if (entity.Drawn != 0)
        NameDrawn(entity.Drawn, state.KindName, state.LayerName, NameOfLayer(state));
    if (Holds(entity.Kind.Trimmed(), "SEQEND"))
        entity.Color = state.LastColor;
    if (state.ExtrusionPending || state.PolylineCarry)
        FinishExtrusion(state);
    if (state.TitleSeen) {
        Run.InstructionLayer = Run.Alone.InstructionLayer = Compact(entity.Layer.Trimmed());
        state.TitleSeen = false;
    }
    if (state.Lightweight) {
        entity.Kind = "SEQEND"; // the placeholder behind the last vertex
        state.CarriedLayer.clear();
    }
}

// A vertex or SEQEND is where its polyline is, so that renames and passes take it along. Its own
// group 8 may be missing or name another layer.
void TakeLayerOfPolyline(ReaderState& state)
{
    if (state.CarriedLayer.empty() || state.CarriedLayer == LayerToCome)
        return;
    Entities[state.Current].Layer = Trim(state.CarriedLayer);
    state.LayerName = state.CarriedName;
}

// Group 0. False at ENDSEC.
bool BeginRecord(ReaderState& state, std::string_view value)
{
    EndRecord(state);
    BeginSlot(state);
    state.HasLayerOfPolyline = false;
    if (std::find(std::begin(PlainKinds), std::end(PlainKinds), value) != std::end(PlainKinds)) {
        state.Lightweight = false;
        Entities[state.Current].Kind = value;
        const bool isVertex = value == "VERTEX";
        if (!isVertex)
            state.Polyline = 0;
        NoteDrawnEntity(state, value, state.Polyline);
        if (isVertex)
            TakeLayerOfPolyline(state);
        return true;
    }
    const std::string word = UpperCase(value);
    if (Holds(word, "ENDSEC"))
        return false;
    const bool isPolyline = Holds(word, "POLYLINE");
    const bool isPart = word == "SEQEND" || word == "VERTEX";
    state.Lightweight = isPolyline && Holds(word, "LWPOLYLINE");
    NoteDrawnEntity(state, state.Lightweight ? "POLYLINE" : Trim(word), isPart ? state.Polyline : 0);
    if (!isPart)
        state.Polyline = isPolyline ? DrawnEntities.Last() : 0;
    if (isPolyline) {
        state.CarriedLayer = LayerToCome;
        state.CarriedName = 0;
    }
    if (Holds(word, "SEQEND")) {
        TakeLayerOfPolyline(state);
        state.HasLayerOfPolyline = !state.CarriedLayer.empty() && state.CarriedLayer != LayerToCome;
        state.CarriedLayer.clear();
    }
    if (!state.Lightweight) {
        Entities[state.Current].Kind = Trim(word);
        if (Entities[state.Current].Kind == "VERTEX")
            TakeLayerOfPolyline(state);
        return true;
    }
    state.CarriedLayer = LayerToCome;
    state.FirstVertexDone = false;
    Entities[state.Current].Kind = "POLYLINE";
    GrowEntities(state);
    Entities[state.Current].Kind = "VERTEX";
    Entities[state.Current].Drawn = DrawnEntities.Last();
    return true;
}

void TakeText(ReaderState& state, std::string_view value)
{
    if (!Holds(Entities[state.Current].Kind.Trimmed(), "TEXT"))
        return;
    if (EntityTexts.size() > MaxIndex)
        throw RunError{ErrorOverflow, "More than " + WholeText(MaxIndex) + " texts"};
    EntityTexts.emplace_back(value);
    Entities[state.Current].TextIndex = static_cast<Int>(EntityTexts.size() - 1);
    for (const std::string_view title : Titles)
        if (EqualIgnoringCase(value, title))
            state.TitleSeen = true;
}

// The number of a layer's name by its line. Neighbours mostly share a layer.
Long NumberOfLayer(ReaderState& state, std::string_view line)
{
    if (line != state.NameRead) {
        state.NameRead.assign(line);
        state.NameNumber = NumberOfName(Trim(line));
    }
    return state.NameNumber;
}

void TakeLayer(ReaderState& state, std::string_view line)
{
    if (state.HasLayerOfPolyline)
        return;
    const bool isPlain = state.CarriedLayer.empty() && !state.Lightweight;
    if (isPlain && line == state.LayerRead) { // neighbours mostly share a layer
        Entities[state.Current].Layer = state.LayerField;
        state.LayerName = state.LayerReadName;
        return;
    }
    const std::string_view value = GroupValue(state, line);
    const Long name = NumberOfLayer(state, line);
    std::string& upper = state.Upper; // its room is used again
    upper.assign(value);
    for (char& c : upper)
        c = UpperChar(c);
    if (state.CarriedLayer == LayerToCome) {
        state.CarriedLayer = upper;
        state.CarriedName = name;
    }
    Entities[state.Current].Layer = Trim(state.CarriedLayer.empty() ? upper : state.CarriedLayer);
    if (state.Lightweight)
        Entities[state.Current - 1].Layer = Trim(upper);
    else
        state.LayerName = state.CarriedLayer.empty() ? name : state.CarriedName;
    if (state.Lightweight && !state.FirstVertexDone)
        state.LayerName = name;
    if (isPlain) {
        state.LayerRead.assign(line);
        state.LayerField = Entities[state.Current].Layer;
        state.LayerReadName = name;
    }
}

// A vertex of an LWPOLYLINE is complete with its Y.
void FinishLightweightVertex(ReaderState& state)
{
    GrowEntities(state);
    Entities[state.Current].Kind = "VERTEX";
    Entities[state.Current].Drawn = DrawnEntities.Last();
    Entities[state.Current].Layer = Trim(state.CarriedLayer);
    state.FirstVertexDone = true;
}

// Group 2: of an INSERT the name of its block.
void TakeName(const ReaderState& state, std::string_view line)
{
    if (Entities[state.Current].Kind == "INSERT")
        NoteInsert(DrawnEntities.Last(), Trim(line));
}

// 1: the entity is on a sheet of paper, not in the model.
void TakeSpace(std::string_view line)
{
    if (Trim(line) == "1")
        NotePaperSpace(DrawnEntities.Last());
}

void TakeExtrusion(ReaderState& state, Single& component, std::string_view line)
{
    component = NumberField(state, line);
    state.ExtrusionPending = true;
}

void TakeNumber(ReaderState& state, int code, std::string_view line)
{
    DxfEntity& own = Entities[state.Current];
    // Widths and bulge that follow a vertex's coordinates stay with that vertex; header lines that
    // stand before the first vertex go to the header.
    DxfEntity& before = state.Lightweight ? Entities[state.Current - 1] : own;
    DxfEntity& header = state.Lightweight && !state.FirstVertexDone ? before : own;
    switch (code) {
    case 10:
        own.X1 = NumberField(state, line);
        break;
    case 20:
        own.Y1 = NumberField(state, line);
        if (state.Lightweight)
            FinishLightweightVertex(state);
        break;
    case 11:
        own.X2 = NumberField(state, line);
        break;
    case 21:
        own.Y2 = NumberField(state, line);
        break;
    case 30:
        own.Z1 = NumberField(state, line);
        break;
    case 31:
        own.Z2 = NumberField(state, line);
        break;
    case 38:
        header.Elevation = NumberField(state, line);
        break;
    case 39:
        header.Thickness = NumberField(state, line);
        break;
    case 40:
    case 12:
        before.Radius = NumberField(state, line);
        break;
    case 41:
    case 13:
        before.EndWidth = NumberField(state, line);
        break;
    case 42:
        before.Bulge = NumberField(state, line);
        break;
    case 50:
    case 22:
        own.StartAngle = NumberField(state, line);
        break;
    case 51:
    case 23:
        own.EndAngle = NumberField(state, line);
        break;
    case 62:
        header.Color = IntField(state, "Color", NumberOf(state, line), line);
        state.LastColor = header.Color;
        break;
    case 70:
        header.Flags = IntField(state, "Flags", NumberOf(state, line), line);
        break;
    case 72:
    case 73:
        own.TextAlign = IntField(state, "Alignment", own.TextAlign + NumberOf(state, line), line);
        break;
    case 75:
        own.TextAlign = IntField(state, "Alignment", NumberOf(state, line), line);
        break;
    case 66:
        own.FollowFlag = IntField(state, "Flag", NumberOf(state, line), line);
        break;
    case 210:
        TakeExtrusion(state, state.Nx, line);
        break;
    case 220:
        TakeExtrusion(state, state.Ny, line);
        break;
    case 230:
        TakeExtrusion(state, state.Nz, line);
        break;
    default:
        break;
    }
}

int NextGroupCode(ReaderState& state)
{
    int code = 0;
    if (state.Scanner.NextWholeNumber(code))
        return code;
    const std::string_view line = state.Scanner.NextLine();
    code = GroupCode(line);
    if (code != NoNumber)
        return code;
    if (state.Scanner.AtEnd)
        Refuse(state, "The ENTITIES section has no ENDSEC");
    if (!state.Scanner.Outcome.Ok())
        Refuse(state, state.Scanner.Outcome.Cause);
    code = UnusualGroupCode(line);
    if (code == NoNumber)
        Refuse(state, "Group code \"" + std::string(line.substr(0, 40)) + "\" in " + AtLine(state) +
                          " is no number");
    return code;
}

// One pair. False at ENDSEC.
bool ReadPair(ReaderState& state)
{
    const int code = NextGroupCode(state);
    const std::string_view raw = state.Scanner.NextLine();
    if (raw.empty() && state.Scanner.AtEnd)
        Refuse(state, "Cut in the middle of a pair behind " + AtLine(state));
    if (!state.Scanner.Outcome.Ok())
        Refuse(state, state.Scanner.Outcome.Cause);
    if (!IsKeptGroup(code))
        return true;
    if (code == 0)
        return BeginRecord(state, GroupValue(state, raw));
    if (code == 1)
        TakeText(state, GroupValue(state, raw));
    else if (code == 5)
        TakeHandle(Trim(raw));
    else if (code == 8)
        TakeLayer(state, raw);
    else if (code == 67)
        TakeSpace(raw);
    else if (code == 2)
        TakeName(state, raw);
    else
        TakeNumber(state, code, raw);
    return true;
}

// All pairs up to ENDSEC. False when the user aborted.
bool ReadPairs(ReaderState& state)
{
    while (ReadPair(state)) {
        DoEvents();
        if (UserAborted())
            return false;
    }
    return true;
}

// The reader's meter follows the scanner while this stands, whatever ends the reading.
struct MeterWatch {
    explicit MeterWatch(ReaderState& state)
    {
        Running = &state;
        ReaderPercentDone = RunningPercent;
        SetMeterInterval(25);
    }
    ~MeterWatch()
    {
        ReaderPercentDone = nullptr;
        Running = nullptr;
        SetMeterInterval(1000);
    }
    MeterWatch(const MeterWatch&) = delete;
    MeterWatch& operator=(const MeterWatch&) = delete;
};

void ForgetLastDrawing()
{
    Entities.Clear();
    EntityTexts.assign(1, {});
    ForgetDrawnEntities();
    ForgetDrawnNames();
    ForgetDrawingFacts();
    ForgetBlocks();
}

// From the scanner's first line on.
void ReadScanned(ReaderState& state, std::string& path)
{
    const bool found = FindEntities(state.Scanner);
    if (!state.Scanner.Outcome.Ok())
        Refuse(state, state.Scanner.Outcome.Cause);
    if (!found) {
        TellInABox(Message::NoEntities, {{"drawing", ShownPath(path)}}, "Korvanti", BoxIcon::Warning);
        path = "~";
        return;
    }
    const MeterWatch watch(state);
    Entities.Append(DxfEntity{}); // element 1 stays blank
    if (!ReadPairs(state)) {
        Tell(Message::UserAborted);
        Run.RunFailed = True;
        return;
    }
    SetMeter(Meter::Parsing, 100);
}

} // namespace

void ReadDrawing(std::string& path)
{
    ForgetLastDrawing();
    ReaderState state;
    state.Path = path;
    state.Scanner.Open(path);
    ReadScanned(state, path);
}

void ReadDrawingText(std::string& path, DrawingText drawing)
{
    ForgetLastDrawing();
    ReaderState state;
    state.Path = path;
    state.IsText = true;
    state.Origins = std::move(drawing.Origins);
    state.Scanner.OpenText(std::move(drawing.Text));
    ReadScanned(state, path);
}

} // namespace kv

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

#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/line_scanner.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"

namespace kv {

namespace {

// The carried layer of a polyline whose layer is not read yet; no layer name can be this.
constexpr std::string_view LayerToCome = "\x01";
constexpr std::string_view Titles[] = {"POST INSTRUCTIONS", "KORVANTI INSTRUCTIONS"};
constexpr std::string_view SectionWord = "ENTITIES";              // holds what is drawn
constexpr std::string_view BinarySentinel = "AutoCAD Binary DXF"; // first bytes of the binary form
// Kinds that no rule of the reader looks at; nearly every record is one.
constexpr std::string_view PlainKinds[] = {"LINE", "CIRCLE", "VERTEX", "POINT", "ARC"};
constexpr int OtherGroup = -1;
constexpr int NoNumber = -2;

struct ReaderState {
    LineScanner Scanner;
    std::string Path;
    Long Current = 1;
    std::string CarriedLayer;
    Text<1> CarriedSide;
    bool PolylineCarry = false;
    bool Lightweight = false; // inside an LWPOLYLINE
    bool FirstVertexDone = false;
    bool ExtrusionPending = false;
    Single Nx = 0, Ny = 0, Nz = 0;
    Int LastColor = 0;
    bool TitleSeen = false; // the current record's layer is the instruction layer
    std::string Changed;    // a value whose commas became points
    std::string Upper;      // a layer in upper case
    std::string LayerRead;  // the last layer as the file spells it, and what became of it
    Text<114> LayerField;
};

ReaderState* Running = nullptr;

int RunningPercent()
{
    return Running != nullptr ? Running->Scanner.PercentDone() : 100;
}

// The cause in the words of the file's true trouble: its head tells binary and line-end troubles.
[[noreturn]] void Refuse(const ReaderState& state, const std::string& cause)
{
    std::string head;
    static_cast<void>(ReadFileHead(state.Path, head, 4096)); // else the cause stands as it is
    if (BeginsWith(head, BinarySentinel))
        throw RunError{ErrorFileAccess, "Binary DXF; save the drawing as ASCII DXF"};
    if (Holds(head, "\r") && !Holds(head, "\n"))
        throw RunError{ErrorFileAccess, "The lines end in bare carriage returns; no line feed found"};
    throw RunError{ErrorFileAccess, cause};
}

std::string AtLine(const ReaderState& state)
{
    return "line " + WholeText(static_cast<long long>(state.Scanner.LineNumber));
}

// " of LINE on layer X" for messages about the current record.
std::string OfRecord(const ReaderState& state)
{
    const DxfEntity& entity = Entities[state.Current];
    if (entity.Kind.Trimmed().empty())
        return {};
    std::string text = " of " + std::string(entity.Kind.Trimmed());
    if (!entity.Layer.Trimmed().empty())
        text += " on layer " + std::string(entity.Layer.Trimmed());
    return text;
}

[[noreturn]] void RefuseValue(const ReaderState& state, std::string_view what, std::string_view value)
{
    throw RunError{ErrorOverflow, std::string(what) + " " + std::string(value.substr(0, 40)) +
                                      " out of range in " + AtLine(state) + OfRecord(state)};
}

// A group code is compared as a text without blanks and NUL bytes, so "08" is not group 8.
int GroupCode(std::string_view line)
{
    std::size_t at = 0;
    while (at < line.size() && line[at] == ' ')
        ++at;
    const std::size_t first = at;
    int code = 0;
    for (; at < line.size() && line[at] >= '0' && line[at] <= '9'; ++at)
        if (code < 100000) // none that long is kept, whatever its last digits
            code = code * 10 + (line[at] - '0');
    const std::size_t digits = at - first;
    while (at < line.size() && line[at] == ' ')
        ++at;
    if (at != line.size() || digits == 0)
        return NoNumber;
    return digits > 1 && line[first] == '0' ? OtherGroup : code;
}

// The rare forms: NUL bytes or blanks within the code, a sign.
int UnusualGroupCode(std::string_view line)
{
    const std::string code = Compact(line);
    const int plain = GroupCode(code);
    if (plain != NoNumber)
        return plain;
    const bool isSigned = code.size() > 1 && (code[0] == '-' || code[0] == '+');
    if (isSigned && code.find_first_not_of("0123456789", 1) == std::string::npos)
        return OtherGroup;
    return NoNumber;
}

// Commas become points, in numbers and texts alike. A NUL byte would end a text unseen.
std::string_view GroupValue(ReaderState& state, std::string_view line)
{
    bool comma = false;
    for (const char c : line) {
        if (c == '\0')
            Refuse(state, "NUL byte in " + AtLine(state));
        comma |= c == ',';
    }
    if (!comma)
        return line;
    state.Changed.assign(line);
    ReplaceChar(state.Changed, ',', '.');
    return state.Changed;
}

// What nearly all numbers of a drawing are: blanks, a sign, at most 15 digits, a point among them.
// Both factors are exact in a double then, so the quotient is the nearest double, as Val gives it.
bool ReadPlainNumber(std::string_view line, double& number)
{
    constexpr double powersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                      1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char* at = line.data();
    const char* const end = at + line.size();
    while (at < end && *at == ' ')
        ++at;
    const bool isNegative = at < end && *at == '-';
    if (isNegative)
        ++at;
    if (end - at > 16 || at == end)
        return false;
    std::int64_t digits = 0;
    const char* const first = at;
    while (at < end && *at >= '0' && *at <= '9')
        digits = digits * 10 + (*at++ - '0');
    std::ptrdiff_t count = at - first;
    std::ptrdiff_t decimals = 0;
    if (at < end && *at == '.') {
        const char* const point = ++at;
        while (at < end && *at >= '0' && *at <= '9')
            digits = digits * 10 + (*at++ - '0');
        decimals = at - point;
        count += decimals;
    }
    if (at != end || count == 0 || count > 15)
        return false;
    const double magnitude = static_cast<double>(digits) / powersOfTen[decimals];
    number = isNegative && digits != 0 ? -magnitude : magnitude; // "-0" is 0
    return true;
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

Int IntField(const ReaderState& state, std::string_view what, double number, std::string_view value)
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

// A vertex or SEQEND without a group 8 is where its polyline is, so that renames and passes take it
// along.
void TakeLayerOfPolyline(ReaderState& state)
{
    if (!state.CarriedLayer.empty() && state.CarriedLayer != LayerToCome)
        Entities[state.Current].Layer = Trim(state.CarriedLayer);
}

// Group 0. False at ENDSEC.
bool BeginRecord(ReaderState& state, std::string_view value)
{
    EndRecord(state);
    GrowEntities(state);
    if (std::find(std::begin(PlainKinds), std::end(PlainKinds), value) != std::end(PlainKinds)) {
        state.Lightweight = false;
        Entities[state.Current].Kind = value;
        if (!state.CarriedLayer.empty() && value == "VERTEX")
            TakeLayerOfPolyline(state);
        return true;
    }
    const std::string word = UpperCase(value);
    if (Holds(word, "ENDSEC"))
        return false;
    const bool isPolyline = Holds(word, "POLYLINE");
    if (isPolyline)
        state.CarriedLayer = LayerToCome;
    if (Holds(word, "SEQEND")) {
        TakeLayerOfPolyline(state);
        state.CarriedLayer.clear();
    }
    state.Lightweight = isPolyline && Holds(word, "LWPOLYLINE");
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

void TakeLayer(ReaderState& state, std::string_view value)
{
    // Neighbours mostly share a layer.
    const bool isPlain = state.CarriedLayer.empty() && !state.Lightweight;
    if (isPlain && value == state.LayerRead) {
        Entities[state.Current].Layer = state.LayerField;
        return;
    }
    std::string& upper = state.Upper; // its room is used again
    upper.assign(value);
    for (char& c : upper)
        c = UpperChar(c);
    if (state.CarriedLayer == LayerToCome)
        state.CarriedLayer = upper;
    Entities[state.Current].Layer = Trim(state.CarriedLayer.empty() ? upper : state.CarriedLayer);
    if (state.Lightweight)
        Entities[state.Current - 1].Layer = Trim(upper);
    if (isPlain) {
        state.LayerRead.assign(value);
        state.LayerField = Entities[state.Current].Layer;
    }
}

// A vertex of an LWPOLYLINE is complete with its Y.
void FinishLightweightVertex(ReaderState& state)
{
    GrowEntities(state);
    Entities[state.Current].Kind = "VERTEX";
    Entities[state.Current].Layer = Trim(state.CarriedLayer);
    state.FirstVertexDone = true;
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

bool IsKept(int code)
{
    switch (code) {
    case 0:
    case 1:
    case 8:
    case 10:
    case 11:
    case 12:
    case 13:
    case 20:
    case 21:
    case 22:
    case 23:
    case 30:
    case 31:
    case 38:
    case 39:
    case 40:
    case 41:
    case 42:
    case 50:
    case 51:
    case 62:
    case 66:
    case 70:
    case 72:
    case 73:
    case 75:
    case 210:
    case 220:
    case 230:
        return true;
    default:
        return false;
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
    if (!IsKept(code))
        return true;
    if (code == 0)
        return BeginRecord(state, GroupValue(state, raw));
    if (code == 1)
        TakeText(state, GroupValue(state, raw));
    else if (code == 8)
        TakeLayer(state, GroupValue(state, raw));
    else
        TakeNumber(state, code, raw);
    return true;
}

// The three lines in front of a section's name: "0", "SECTION", "2".
class SectionHead {
  public:
    bool IsComplete() const { return Seen == 3; }
    void Take(std::string_view line)
    {
        constexpr std::size_t longest = 16; // with its blanks; nearly every line that is none is longer
        const std::string_view word = line.size() <= longest ? Trim(line) : std::string_view();
        if (Seen == 1 && word == "SECTION")
            Seen = 2;
        else if (Seen == 2 && word == "2")
            Seen = 3;
        else
            Seen = word == "0" ? 1 : 0;
    }

  private:
    int Seen = 0;
};

// Stands on the line that names the section. A file that names none is read from the first line that
// holds the word, whatever that is. False where no line does.
bool OpenAtSection(ReaderState& state)
{
    LineScanner& scanner = state.Scanner;
    SectionHead head;
    scanner.Open(state.Path);
    bool isHeld = false;
    while (!scanner.AtEnd && scanner.Outcome.Ok()) {
        const std::string_view line = scanner.NextLine();
        if (Holds(line, SectionWord)) {
            if (head.IsComplete())
                return true;
            isHeld = true;
        }
        head.Take(line);
    }
    return isHeld && !scanner.OpenAt(state.Path, SectionWord).empty();
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

} // namespace

void ReadDrawing(std::string& path)
{
    Entities.Clear();
    EntityTexts.assign(1, {});
    ReaderState state;
    state.Path = path;
    const bool found = OpenAtSection(state);
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

} // namespace kv

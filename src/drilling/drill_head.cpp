// DT.Par and the rows of the head. Relies on the program's folder; leaves DrillParameters and DrillHead.
// The file is written by hand, so whatever it holds gives some head: what is no number stays 0, what is
// no known kind is kind 0.
#include "drilling/drill_head.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "platform/files.h"
#include "platform/needed_files.h"
#include "platform/number_texts.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/settings.h"

namespace kv {

std::vector<DrillParameter> DrillParameters(1);
std::array<HeadDrill, HighestSlot + 1> DrillHead;

namespace {

constexpr std::size_t LongestHeadFile = std::size_t{1} << 20; // bytes; far more than a head can have
constexpr int LastRowSlot = 27;                               // drills behind it drill no rows
constexpr double SameXTolerance = 3.0;                        // mm
constexpr double DiameterTolerance = 0.2;                     // mm

struct KindName {
    std::string_view Name;
    Int Kind;
};
constexpr KindName Kinds[] = {{"VERTICAL DRILL", VerticalDrill},
                              {"THROUGH DRILL", ThroughDrill},
                              {"HORIZONTAL DRILL", 3},
                              {"GROOVE", 4},
                              {"ROUTER", 5},
                              {"NOT USED", 0}};

Int KindOfText(std::string_view text)
{
    const std::string name = UpperCase(text);
    for (const KindName& kind : Kinds)
        if (kind.Name == name)
            return kind.Kind;
    return 0;
}

// The next line without its end: CR LF, LF or CR.
std::string_view TakeLine(std::string_view& rest)
{
    const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    const std::string_view line = rest.substr(0, end);
    const bool pair = rest.substr(end).starts_with("\r\n");
    rest.remove_prefix(std::min(rest.size(), end + (pair ? 2 : 1)));
    return line;
}

// A line is one text item: a comma ends it, and a pair of quotes around it is not part of it.
std::string_view TextItem(std::string_view line)
{
    std::string_view item = line.substr(0, line.find(','));
    if (item.size() >= 2 && item.front() == '"' && item.back() == '"')
        item = item.substr(1, item.size() - 2);
    return item;
}

std::size_t DigitsAt(std::string_view text, std::size_t at)
{
    const std::size_t end = text.find_first_not_of("0123456789", at);
    return std::min(end, text.size()) - std::min(at, text.size());
}

std::size_t SignAt(std::string_view text, std::size_t at)
{
    return at < text.size() && (text[at] == '+' || text[at] == '-') ? 1 : 0;
}

// The text as a whole, not only its head.
bool IsNumber(std::string_view text)
{
    std::size_t at = SignAt(text, 0);
    std::size_t digits = DigitsAt(text, at);
    at += digits;
    if (at < text.size() && text[at] == '.') {
        const std::size_t decimals = DigitsAt(text, at + 1);
        digits += decimals;
        at += 1 + decimals;
    }
    if (digits == 0)
        return false;
    if (at < text.size() && (text[at] == 'E' || text[at] == 'e')) {
        ++at;
        at += SignAt(text, at);
        const std::size_t power = DigitsAt(text, at);
        if (power == 0)
            return false;
        at += power;
    }
    return at == text.size();
}

// The field with what a comma has cut off behind it, and its line in the file.
struct HeadField {
    std::string_view Text, CutOff;
    long long Row = 0; // 0: of a drill that is not used
};

void TellPartlyRead(const HeadField& field, Single taken)
{
    if (field.Row == 0)
        return;
    Tell(Message::CellPartlyRead, {{"file", ShownPath(ExeFolder + std::string(HeadFileName))},
                                   {"row", field.Row},
                                   {"written", std::string(Trim(field.Text)) + std::string(field.CutOff)},
                                   {"taken", PlainText(taken)}});
}

// What is no number, or none that a Single holds, leaves the field as it is.
void TakeNumber(const HeadField& field, Single& value)
{
    const std::string_view text = Trim(field.Text);
    if (!IsNumber(text)) {
        if (!text.empty())
            TellPartlyRead(field, value);
        return;
    }
    const auto number = static_cast<Single>(Val(text));
    if (std::isfinite(number))
        value = number;
    if (!field.CutOff.empty())
        TellPartlyRead(field, value);
}

// The piece of the line with the comma that ends its item, as far as the next tab; empty where nothing else
// is in it.
std::string_view CutOffBehind(std::string_view line)
{
    std::string_view piece = line.substr(std::min(line.find(','), line.size()));
    piece = piece.substr(0, piece.find('\t'));
    return Trim(piece).size() > 1 ? piece : std::string_view();
}

DrillParameter ParseDrill(std::string_view line, long long row)
{
    const std::string_view item = TextItem(line);
    Long position = 1;
    DrillParameter drill;
    drill.Kind = KindOfText(ParseString(position, item, "\t"));
    for (Single* const value : {&drill.X, &drill.Y, &drill.Z, &drill.Diameter}) {
        const bool isThere = position > 0;
        HeadField field = {ParseString(position, item, "\t"), {}, drill.Kind == 0 ? 0 : row};
        if (isThere && position <= 0)
            field.CutOff = CutOffBehind(line);
        TakeNumber(field, *value);
    }
    return drill;
}

} // namespace

void LoadDrillHead()
{
    DrillParameters.assign(1, {});
    std::string contents;
    const std::string path = ExeFolder + std::string(HeadFileName);
    const FileOutcome outcome = ReadFileHead(path, contents, LongestHeadFile);
    if (outcome.Missing)
        return;
    ThrowUnlessOk(path, outcome);
    std::string_view rest = contents;
    for (long long row = 1; !rest.empty(); ++row) {
        const std::string_view line = TakeLine(rest);
        if (Trim(TextItem(line)).empty())
            return; // whatever stands behind it
        DrillParameters.push_back(ParseDrill(line, row));
    }
}

void FillDrillHead()
{
    DrillHead.fill({});
    const std::size_t drills = std::min(DrillParameters.size(), DrillHead.size());
    for (std::size_t n = 1; n < drills; ++n) {
        const DrillParameter& drill = DrillParameters[n];
        DrillHead[n] = {drill.X, drill.Y, drill.Z, drill.Diameter, drill.Kind, 0};
    }
}

// Only the X of direct neighbours in the file counts, and only the kind of the left one of a pair. The
// last drill is compared with the empty slot behind it.
void ClassifyHeadRows()
{
    for (int i = 1; i <= LastRowSlot; ++i)
        DrillHead[static_cast<std::size_t>(i)].Row = 1;
    // Slot 27 is never examined itself: it keeps its row whatever its kind, empty or not.
    for (int i = 1; i < LastRowSlot; ++i) {
        HeadDrill& left = DrillHead[static_cast<std::size_t>(i)];
        HeadDrill& right = DrillHead[static_cast<std::size_t>(i) + 1];
        if (left.Kind != VerticalDrill && left.Kind != ThroughDrill) {
            left.Row = 0;
            continue;
        }
        const double apart = std::fabs(static_cast<double>(left.X) - static_cast<double>(right.X));
        if (apart < SameXTolerance)
            left.Row = right.Row = -1;
    }
}

bool HasDiameter(const HeadDrill& drill, double diameter)
{
    return std::fabs(static_cast<double>(drill.Diameter) - diameter) < DiameterTolerance;
}

} // namespace kv

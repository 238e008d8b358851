// Codes begin with a backslash; those that take a value end it with a semicolon. Braces bound the reach of a
// code and show nothing.
#include "import/multiline_text.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/text.h"

namespace kv {

namespace {

constexpr double LineSpacing = 5.0 / 3; // heights of a letter from line to line

class MtextReader {
  public:
    explicit MtextReader(std::string_view contents) : Contents(contents) {}
    std::vector<std::string> Read();

  private:
    void TakeCode();
    void TakeCaret();
    void TakeStack();
    void EndLine();
    std::string_view UpToSemicolon();

    std::string_view Contents;
    std::size_t At = 0;
    std::string Line;
    std::vector<std::string> Lines;
};

void MtextReader::EndLine()
{
    if (!Trim(Line).empty())
        Lines.emplace_back(Trim(Line));
    Line.clear();
}

std::string_view MtextReader::UpToSemicolon()
{
    const std::size_t end = std::min(Contents.find(';', At), Contents.size());
    const std::string_view value = Contents.substr(At, end - At);
    At = std::min(end + 1, Contents.size());
    return value;
}

// "1/2", "1#2" or "1^2" stands as a fraction, one above the other.
void MtextReader::TakeStack()
{
    std::string stack(UpToSemicolon());
    const std::size_t divider = stack.find_first_of("/#^");
    if (divider != std::string::npos)
        stack[divider] = '/';
    Line += stack;
}

void MtextReader::TakeCode()
{
    if (At >= Contents.size()) {
        Line += '\\';
        return;
    }
    const char code = Contents[At++];
    switch (code) {
    case 'P':
    case 'X':
    case 'N':
        EndLine();
        return;
    case '~':
        Line += ' ';
        return;
    case '\\':
    case '{':
    case '}':
        Line += code;
        return;
    case 'S':
        TakeStack();
        return;
    case 'L':
    case 'l':
    case 'O':
    case 'o':
    case 'K':
    case 'k':
        return;
    case 'A':
    case 'C':
    case 'c':
    case 'F':
    case 'f':
    case 'H':
    case 'p':
    case 'Q':
    case 'T':
    case 'W':
        UpToSemicolon();
        return;
    default: // no code: a folder's name, say
        Line += '\\';
        Line += code;
    }
}

// "^I" is a tab, "^J" a line end, "^M" nothing, "^ " the caret itself.
void MtextReader::TakeCaret()
{
    const char next = At < Contents.size() ? Contents[At] : '\0';
    if (next == 'I')
        Line += ' ';
    else if (next == 'J')
        EndLine();
    else if (next == ' ')
        Line += '^';
    else if (next != 'M') {
        Line += '^';
        return;
    }
    ++At;
}

std::vector<std::string> MtextReader::Read()
{
    while (At < Contents.size()) {
        const char c = Contents[At++];
        if (c == '\\')
            TakeCode();
        else if (c == '^')
            TakeCaret();
        else if (c != '{' && c != '}')
            Line += c;
    }
    EndLine();
    return std::move(Lines);
}

// Degrees, from its direction where it has one.
double TurnOfMtext(const SourceRecord& mtext)
{
    if (mtext.Has(11))
        return std::atan2(mtext.Number(21), mtext.Number(11)) * 180 / std::numbers::pi;
    return mtext.Number(50);
}

} // namespace

std::vector<std::string> LinesOfMtext(std::string_view contents)
{
    return MtextReader(contents).Read();
}

std::string ContentsOfMtext(const SourceRecord& mtext)
{
    std::string contents;
    for (const SourcePair& pair : mtext.Pairs)
        if (pair.Code == 3 || pair.Code == 1)
            contents += pair.Value;
    return contents;
}

std::vector<FlatEntity> TextsOfMtext(const SourceRecord& mtext)
{
    const std::vector<std::string> lines = LinesOfMtext(ContentsOfMtext(mtext));
    const double height = mtext.Number(40, 1);
    const double spacing = height * LineSpacing * mtext.Number(44, 1);
    const int attachment = std::clamp(mtext.Whole(71, 1), 1, 9);
    const double turn = TurnOfMtext(mtext) * std::numbers::pi / 180;
    const double all = height + spacing * (static_cast<double>(lines.size()) - 1);
    const int row = (attachment - 1) / 3; // top, middle, bottom
    double below = row == 0 ? -height : row == 1 ? all / 2 - height : all - height;
    std::vector<FlatEntity> texts;
    for (const std::string& line : lines) {
        FlatEntity text;
        text.Kind = FlatKind::Text;
        text.Style = StyleOf(mtext);
        text.Extrusion = mtext.Extrusion();
        text.Radius = height;
        text.StartAngle = TurnOfMtext(mtext);
        text.Flags = (attachment - 1) % 3; // left, centred, right
        text.Words = line;
        const SpacePoint corner = mtext.Point(10);
        VertexPoint place;
        place.X = corner.X - std::sin(turn) * below;
        place.Y = corner.Y + std::cos(turn) * below;
        place.Z = corner.Z;
        text.Points = {place};
        if (text.Flags != 0)
            text.Points.push_back(place); // what such a text is placed by
        texts.push_back(std::move(text));
        below -= spacing;
    }
    return texts;
}

} // namespace kv

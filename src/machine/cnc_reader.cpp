#include "machine/cnc_reader.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <utility>

#include "machine/arcs.h"
#include "machine/text_lines.h"

namespace kv {

namespace {

constexpr double MillimetresPerInch = 25.4;

bool IsLetter(char c)
{
    return c >= 'A' && c <= 'Z';
}

// A line as its control takes it apart: a letter, and what stands up to the next one.
struct Words {
    std::string Code;               // "G88"
    std::set<std::string> Others;   // "G41", "M66"
    std::map<char, double> Numbers; // "X100"
    std::string Tool;               // "T0171", as it stands
    std::optional<double> Diameter; // "R54=8"
    std::optional<char> DepthLetter;
    bool Sound = true;

    bool Has(char letter) const { return Numbers.count(letter) > 0; }
    bool HasAll(const std::string& letters) const
    {
        return std::all_of(letters.begin(), letters.end(), [this](char c) { return Has(c); });
    }
    double Or(char letter, double other) const { return Has(letter) ? Numbers.at(letter) : other; }
};

void TakeCodeWord(Words& words, const std::string& word)
{
    if (words.Code.empty() && word[0] == 'G')
        words.Code = word;
    else
        words.Sound = words.Others.insert(word).second && words.Sound;
}

void TakeNumberWord(Words& words, char letter, const std::string& text)
{
    static const std::string letters = "FEBSXYZIJKUACVQRPNL";
    const std::optional<double> value = PlainNumber(text);
    words.Sound = words.Sound && value && letters.find(letter) != std::string::npos &&
                  words.Numbers.emplace(letter, *value).second;
}

Words WordsOfBlock(const std::string& line)
{
    Words words;
    for (std::size_t at = 0; at < line.size();) {
        std::size_t end = at + 1;
        if (line.compare(at, 2, "Z=") == 0)
            end = std::min(at + 3, line.size()); // the letter of a depth is any
        else
            while (end < line.size() && !IsLetter(line[end]))
                ++end;
        const std::string word = line.substr(at, end - at);
        at = end;
        while (at < line.size() && line[at] == ' ') // as in front of the end of a groove
            ++at;
        const std::string text = word.substr(1);
        if (word[0] == 'G' || word[0] == 'M')
            TakeCodeWord(words, word);
        else if (word[0] == 'T')
            words.Tool = text;
        else if (word.rfind("R54=", 0) == 0)
            words.Sound = (words.Diameter = PlainNumber(word.substr(4))) && words.Sound;
        else if (word.rfind("Z=", 0) == 0 && word.size() == 3)
            words.DepthLetter = word[2];
        else
            TakeNumberWord(words, word[0], text);
    }
    return words;
}

struct CncProgram {
    CncReading How;
    MachineSteps Steps;
    std::size_t Number = 0;
    double Unit = 1; // millimetres
    bool Open = false;
    bool Ended = false;
    Plane On = Plane::Surface;
    Corner From;
    double X = 0, Y = 0, Z = 0; // as in the program, in millimetres
    double Feed = 0;            // of the line

    bool AlongX() const { return On == Plane::Edge1 || On == Plane::Edge2; }
    bool AlongY() const { return On == Plane::Edge3 || On == Plane::Edge4; }
    bool OnFace() const { return On == Plane::Surface; }

    double Mirrored(bool mirrored, double size, double value) const
    {
        return mirrored ? size - value : value;
    }
    // The place in its plane, in panel coordinates; heights of an edge count from the face down.
    PathPoint Place(double x, double y, double z) const
    {
        const double px = Mirrored(From.Right, Steps.Length, x), py = Mirrored(From.Top, Steps.Width, y);
        if (OnFace())
            return {px, py};
        return {AlongX() ? px : py, Steps.Thickness - z};
    }
    PathPoint At() const { return Place(X, Y, Z); }
    double Depth() const { return OnFace() ? Z : AlongX() ? Y : X; }
    // Seen from outside, edges 1 and 3 run against X and Y.
    int Sense() const { return On == Plane::Edge1 || On == Plane::Edge3 ? -1 : 1; }

    bool TakeDepthLetter(const Words& words)
    {
        if (!words.DepthLetter)
            return true;
        const auto known = How.Depths.find(*words.DepthLetter);
        Z = known == How.Depths.end() ? 0 : known->second * Unit;
        return known != How.Depths.end();
    }
    bool MoveTo(const Words& words)
    {
        X = words.Has('X') ? words.Numbers.at('X') * Unit : X;
        Y = words.Has('Y') ? words.Numbers.at('Y') * Unit : Y;
        Z = words.Has('Z') ? words.Numbers.at('Z') * Unit : Z;
        return TakeDepthLetter(words);
    }
    bool TakePlane(const Words& words)
    {
        const double side = words.Or('P', 5);
        if (side != 1 && side != 2 && side != 3 && side != 4 && side != 5)
            return false;
        On = static_cast<Plane>(static_cast<int>(side));
        int corners = 0;
        const auto take = [&](const char* word, bool top, bool right) {
            if (words.Others.count(word) == 0)
                return;
            ++corners;
            From.Top = top != How.UpperAndLowerExchanged;
            From.Right = right;
        };
        take("G54", true, false);
        take("G55", false, false);
        take("G56", true, true);
        take("G57", false, true);
        return corners == 1;
    }
    static bool HasPlace(const Words& words)
    {
        return words.HasAll("XY") && (words.Has('Z') || words.DepthLetter);
    }

    bool TakeHeader(const std::string& line);
    bool TakeStart(const Words& words);
    bool TakeBore(const Words& words);
    bool TakeRow(const Words& words);
    bool TakeGroove(const Words& words);
    Move& AddMove();
    bool TakeLine(const Words& words);
    bool TakeAngleArc(const Words& words, bool left);
    bool TakeRadiusArc(const Words& words, bool left);
    bool TakeCentreArc(const Words& words, bool left);
    bool TakeThreePointArc(const Words& words, bool left);
    bool TakeMove(const Words& words);
    bool TakeBlock(const Words& words);
    void Take(const std::string& line);
};

bool CncProgram::TakeHeader(const std::string& line)
{
    const Words words = WordsOfBlock(line);
    if (words.Code != "G71" && words.Code != "G70")
        return false;
    Unit = words.Code == "G70" ? MillimetresPerInch : 1;
    Steps.Length = words.Or('X', 0) * Unit;
    Steps.Width = words.Or('Y', 0) * Unit;
    Steps.Thickness = words.Or('Z', 0) * Unit;
    return words.Sound && words.HasAll("XYZ");
}

int SideOf(const Words& words)
{
    return words.Others.count("G41") > 0 ? 1 : words.Others.count("G42") > 0 ? -1 : 0;
}

bool CncProgram::TakeStart(const Words& words)
{
    if (!TakePlane(words) || !HasPlace(words))
        return false;
    const bool known = MoveTo(words);
    RouterCut cut;
    cut.On = On;
    cut.Side = SideOf(words) * Sense();
    cut.Radius = words.Or('R', words.Diameter.value_or(0) / 2) * Unit;
    cut.Start = At();
    cut.StartDepth = Depth();
    cut.Tool = words.Tool;
    cut.Line = Number;
    Steps.Cuts.push_back(cut);
    Open = true;
    return known && (cut.Side == 0 || cut.Radius > 0);
}

bool CncProgram::TakeBore(const Words& words)
{
    if (!TakePlane(words) || !HasPlace(words))
        return false;
    const bool known = MoveTo(words);
    Steps.Bores.push_back({On, At(), Depth(), words.Diameter.value_or(0) * Unit, words.Tool, Number});
    return known;
}

bool CncProgram::TakeRow(const Words& words)
{
    const bool alongX = words.Code == "G183";
    if (!TakePlane(words) || !HasPlace(words) || !OnFace() || !words.Has(alongX ? 'I' : 'J'))
        return false;
    const bool known = MoveTo(words);
    const PathPoint end =
        alongX ? Place(words.Numbers.at('I') * Unit, Y, Z) : Place(X, words.Numbers.at('J') * Unit, Z);
    Steps.Rows.push_back({At(), end, Z, words.Tool, Number});
    return known;
}

bool CncProgram::TakeGroove(const Words& words)
{
    if (!TakePlane(words) || !HasPlace(words) || !OnFace() || !words.Has('Q'))
        return false;
    const bool known = MoveTo(words);
    const double end = words.Numbers.at('Q') * Unit;
    SawCut saw;
    saw.From = At();
    saw.To = words.Code == "G85" ? Place(end, Y, Z) : Place(X, end, Z);
    saw.Depth = Z;
    saw.Side = SideOf(words);
    saw.Tool = words.Tool;
    saw.Line = Number;
    Steps.Saws.push_back(saw);
    return known;
}

// From where the tool is; the rest is the caller's.
Move& CncProgram::AddMove()
{
    RouterCut& cut = Steps.Cuts.back();
    Move move;
    move.From = cut.Moves.empty() ? cut.Start : cut.Moves.back().To;
    move.DepthFrom = cut.Moves.empty() ? cut.StartDepth : cut.Moves.back().DepthTo;
    move.Feed = Feed;
    move.Line = Number;
    cut.Moves.push_back(move);
    return cut.Moves.back();
}

bool CncProgram::TakeLine(const Words& words)
{
    if (!HasPlace(words))
        return false;
    const bool known = MoveTo(words);
    Move& move = AddMove();
    move.To = At();
    move.DepthTo = Depth();
    return known;
}

bool CncProgram::TakeAngleArc(const Words& words, bool left)
{
    if (!HasPlace(words) || !OnFace())
        return false;
    const bool known = MoveTo(words);
    Move& move = AddMove();
    TurnToAngle(move, At(), words.Numbers.at('A'), left);
    move.DepthTo = Depth();
    X = Mirrored(From.Right, Steps.Length, move.To.X); // mirroring twice is none
    Y = Mirrored(From.Top, Steps.Width, move.To.Y);
    return known && Between(move.From, move.Centre) > 0;
}

bool CncProgram::TakeRadiusArc(const Words& words, bool left)
{
    if (!HasPlace(words) || !words.Has('U'))
        return false;
    const bool known = MoveTo(words);
    Move& move = AddMove();
    move.DepthTo = Depth();
    return TurnByRadius(move, At(), words.Numbers.at('U') * Unit, left == (Sense() > 0)) && known;
}

bool CncProgram::TakeCentreArc(const Words& words, bool left)
{
    const std::string plane = AlongX() ? "G18" : AlongY() ? "G19" : "G17";
    const std::string letters = AlongX() ? "XIK" : AlongY() ? "YJK" : "XYIJ";
    if (words.Others.count(plane) == 0 || !words.HasAll(letters))
        return false;
    const PathPoint centre =
        Place(X + words.Or('I', 0) * Unit, Y + words.Or('J', 0) * Unit, Z + words.Or('K', 0) * Unit);
    const bool known = MoveTo(words);
    Move& move = AddMove();
    move.DepthTo = Depth();
    return TurnAround(move, centre, At(), left == (Sense() > 0)) && known;
}

bool CncProgram::TakeThreePointArc(const Words& words, bool left)
{
    if (!HasPlace(words) || !OnFace() || !words.HasAll("IJ"))
        return false;
    const PathPoint middle = Place(words.Numbers.at('I') * Unit, words.Numbers.at('J') * Unit, Z);
    const bool known = MoveTo(words);
    Move& move = AddMove();
    move.DepthTo = Depth();
    // The three places alone make the arc; a mirrored plane turns them the other way.
    const bool sound = TurnThrough(move, middle, At());
    return sound && known && (move.Sweep > 0) == (left == (From.Right == From.Top));
}

bool CncProgram::TakeMove(const Words& words)
{
    if (!Open)
        return false;
    const std::string& code = words.Code;
    if (code == "G1")
        return TakeLine(words);
    if (code == "G2" || code == "G3")
        return TakeCentreArc(words, code == "G3");
    if (code == "G112" || code == "G113")
        return TakeThreePointArc(words, code == "G113");
    if (code == "G37" || code == "G38")
        return words.Has('A') ? TakeAngleArc(words, code == "G38") : TakeRadiusArc(words, code == "G38");
    return false;
}

bool CncProgram::TakeBlock(const Words& words)
{
    if (!words.Sound)
        return false;
    Feed = words.Or('F', 0);
    const std::string& code = words.Code;
    const bool groove = code == "G85" || code == "G86", row = code == "G183" || code == "G184";
    Open = Open && !groove && !row && code != "G81";
    if (code == "G92")
        return true; // where the panel lies on the machine
    if (groove)
        return TakeGroove(words);
    if (words.Others.count("G90") == 0)
        return false;
    if (row)
        return TakeRow(words);
    return code == "G88" ? TakeStart(words) : code == "G81" ? TakeBore(words) : TakeMove(words);
}

void CncProgram::Take(const std::string& line)
{
    ++Number;
    const bool comment = line.empty() || line[0] == '*' || line[0] == '-';
    const bool description = Number == 2 && line.rfind("G150(", 0) == 0;
    if (description || comment)
        return;
    if (line == "M2")
        Ended = true;
    else if (!(Number == 1 ? TakeHeader(line) : !Ended && TakeBlock(WordsOfBlock(line))))
        Steps.Unread.push_back(UnreadLine(Number, line));
}

} // namespace

MachineSteps ReadCnc(const std::vector<std::string>& lines, const CncReading& how)
{
    CncProgram program;
    program.How = how;
    for (const std::string& line : lines)
        program.Take(line);
    program.Steps.From = program.From;
    return program.Steps;
}

} // namespace kv

#include "machine/cnc_reader.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "machine/arcs.h"
#include "machine/block_words.h"
#include "machine/reading_limits.h"
#include "machine/text_lines.h"

namespace kv {

namespace {

constexpr double MillimetresPerInch = 25.4;
constexpr double SamePanel = 0.001; // mm, of the sizes that the headers of portions state

struct CncProgram {
    CncReading How;
    MachineSteps Steps;
    std::size_t Number = 0, Moves = 0;
    double Unit = 1; // millimetres
    bool HasHeader = false, WantsName = false;
    bool Open = false;
    bool Ended = false, Full = false;
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

    bool TakeDepthLetter(const BlockWords& words)
    {
        if (!words.DepthLetter)
            return true;
        const auto known = How.Depths.find(*words.DepthLetter);
        Z = known == How.Depths.end() ? 0 : known->second * Unit;
        return known != How.Depths.end();
    }
    bool MoveTo(const BlockWords& words)
    {
        X = words.Has('X') ? words.At('X') * Unit : X;
        Y = words.Has('Y') ? words.At('Y') * Unit : Y;
        Z = words.Has('Z') ? words.At('Z') * Unit : Z;
        return TakeDepthLetter(words);
    }
    bool TakePlane(const BlockWords& words)
    {
        const double side = words.Or('P', 5);
        if (side != 1 && side != 2 && side != 3 && side != 4 && side != 5)
            return false;
        On = static_cast<Plane>(static_cast<int>(side));
        int corners = 0;
        for (const int corner : {54, 55, 56, 57}) {
            if (!words.Chooses(corner))
                continue;
            ++corners;
            From.Top = (corner == 54 || corner == 56) != How.UpperAndLowerExchanged;
            From.Right = corner == 56 || corner == 57;
        }
        return corners == 1;
    }
    static bool HasPlace(const BlockWords& words)
    {
        return words.HasAll("XY") && (words.Has('Z') || words.DepthLetter);
    }

    bool TakeHeader(const BlockWords& words);
    bool TakeNextHeader(const BlockWords& words);
    bool TakeStart(const BlockWords& words);
    bool TakeBore(const BlockWords& words);
    bool TakeRow(const BlockWords& words);
    bool TakeGroove(const BlockWords& words);
    Move& AddMove();
    bool TakeLine(const BlockWords& words);
    bool TakeAngleArc(const BlockWords& words, bool left);
    bool TakeRadiusArc(const BlockWords& words, bool left);
    bool TakeCentreArc(const BlockWords& words, bool left);
    bool TakeThreePointArc(const BlockWords& words, bool left);
    void KeepRapid(const BlockWords& words);
    bool TakeMove(const BlockWords& words);
    bool TakeBlock(const BlockWords& words);
    bool TakeOperation(const BlockWords& words);
    bool TakeCode(std::string_view line);
    bool Take(const LineWalk& lines);
};

bool IsHeader(const BlockWords& words)
{
    return words.Sound && (words.Code == 70 || words.Code == 71) && words.HasAll("XYZ");
}

// Of a header that is not sound the unit and the sizes that it has all the same.
bool CncProgram::TakeHeader(const BlockWords& words)
{
    HasHeader = WantsName = true;
    if (words.Code != 71 && words.Code != 70)
        return false;
    Unit = words.Code == 70 ? MillimetresPerInch : 1;
    Steps.Length = words.Or('X', 0) * Unit;
    Steps.Width = words.Or('Y', 0) * Unit;
    Steps.Thickness = words.Or('Z', 0) * Unit;
    return IsHeader(words);
}

// Each portion of a long program begins with the header of the whole. That of another panel ends the program:
// its places would be drawn on the wrong one.
bool CncProgram::TakeNextHeader(const BlockWords& words)
{
    const double unit = words.Code == 70 ? MillimetresPerInch : 1;
    const auto same = [&](char letter, double size) {
        return std::fabs(words.Or(letter, 0) * unit - size) <= SamePanel;
    };
    const bool portion =
        IsHeader(words) && same('X', Steps.Length) && same('Y', Steps.Width) && same('Z', Steps.Thickness);
    Open = false;
    Ended = !portion;
    WantsName = portion;
    Unit = portion ? unit : Unit;
    return portion;
}

int SideOf(const BlockWords& words)
{
    return words.Chooses(41) ? 1 : words.Chooses(42) ? -1 : 0;
}

bool CncProgram::TakeStart(const BlockWords& words)
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

bool CncProgram::TakeBore(const BlockWords& words)
{
    if (!TakePlane(words) || !HasPlace(words))
        return false;
    const bool known = MoveTo(words);
    Steps.Bores.push_back({On, At(), Depth(), words.Diameter.value_or(0) * Unit, words.Tool, Number});
    return known;
}

bool CncProgram::TakeRow(const BlockWords& words)
{
    const bool alongX = words.Code == 183;
    if (!TakePlane(words) || !HasPlace(words) || !OnFace() || !words.Has(alongX ? 'I' : 'J'))
        return false;
    const bool known = MoveTo(words);
    const PathPoint end = alongX ? Place(words.At('I') * Unit, Y, Z) : Place(X, words.At('J') * Unit, Z);
    Steps.Rows.push_back({At(), end, Z, words.Tool, Number});
    return known;
}

bool CncProgram::TakeGroove(const BlockWords& words)
{
    if (!TakePlane(words) || !HasPlace(words) || !OnFace() || !words.Has('Q'))
        return false;
    const bool known = MoveTo(words);
    const double end = words.At('Q') * Unit;
    SawCut saw;
    saw.From = At();
    saw.To = words.Code == 85 ? Place(end, Y, Z) : Place(X, end, Z);
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
    ++Moves;
    return cut.Moves.back();
}

bool CncProgram::TakeLine(const BlockWords& words)
{
    if (!HasPlace(words))
        return false;
    const bool known = MoveTo(words);
    Move& move = AddMove();
    move.To = At();
    move.DepthTo = Depth();
    return known;
}

bool CncProgram::TakeAngleArc(const BlockWords& words, bool left)
{
    if (!HasPlace(words) || !OnFace())
        return false;
    const bool known = MoveTo(words);
    Move& move = AddMove();
    TurnToAngle(move, At(), words.At('A'), left);
    move.DepthTo = Depth();
    X = Mirrored(From.Right, Steps.Length, move.To.X); // mirroring twice is none
    Y = Mirrored(From.Top, Steps.Width, move.To.Y);
    return known && Between(move.From, move.Centre) > 0;
}

bool CncProgram::TakeRadiusArc(const BlockWords& words, bool left)
{
    if (!HasPlace(words) || !words.Has('U'))
        return false;
    const bool known = MoveTo(words);
    Move& move = AddMove();
    move.DepthTo = Depth();
    return TurnByRadius(move, At(), words.At('U') * Unit, left == (Sense() > 0)) && known;
}

bool CncProgram::TakeCentreArc(const BlockWords& words, bool left)
{
    const int plane = AlongX() ? 18 : AlongY() ? 19 : 17;
    const std::string_view letters = AlongX() ? "XIK" : AlongY() ? "YJK" : "XYIJ";
    if (!words.Chooses(plane) || !words.HasAll(letters))
        return false;
    const PathPoint centre =
        Place(X + words.Or('I', 0) * Unit, Y + words.Or('J', 0) * Unit, Z + words.Or('K', 0) * Unit);
    const bool known = MoveTo(words);
    Move& move = AddMove();
    move.DepthTo = Depth();
    return TurnAround(move, centre, At(), left == (Sense() > 0)) && known;
}

bool CncProgram::TakeThreePointArc(const BlockWords& words, bool left)
{
    if (!HasPlace(words) || !OnFace() || !words.HasAll("IJ"))
        return false;
    const PathPoint middle = Place(words.At('I') * Unit, words.At('J') * Unit, Z);
    const bool known = MoveTo(words);
    Move& move = AddMove();
    move.DepthTo = Depth();
    // The three places alone make the arc; a mirrored plane turns them the other way.
    const bool sound = TurnThrough(move, middle, At());
    return sound && known && (move.Sweep > 0) == (left == (From.Right == From.Top));
}

// The route goes on from where it was: whether the control came back there nobody knows.
void CncProgram::KeepRapid(const BlockWords& words)
{
    const RouterCut& cut = Steps.Cuts.back();
    const double wasX = X, wasY = Y, wasZ = Z;
    RapidMove rapid;
    rapid.On = On;
    rapid.From = cut.Moves.empty() ? cut.Start : cut.Moves.back().To;
    rapid.Depth = cut.Moves.empty() ? cut.StartDepth : cut.Moves.back().DepthTo;
    rapid.Line = Number;
    if (MoveTo(words)) {
        rapid.To = At();
        rapid.Depth = std::max(rapid.Depth, Depth());
        Steps.Rapids.push_back(rapid);
        ++Moves;
    }
    X = wasX;
    Y = wasY;
    Z = wasZ;
}

bool CncProgram::TakeMove(const BlockWords& words)
{
    if (!Open)
        return false;
    switch (words.Code) {
    case 1:
        return TakeLine(words);
    case 2:
    case 3:
        return TakeCentreArc(words, words.Code == 3);
    case 112:
    case 113:
        return TakeThreePointArc(words, words.Code == 113);
    case 37:
    case 38:
        return words.Has('A') ? TakeAngleArc(words, words.Code == 38)
                              : TakeRadiusArc(words, words.Code == 38);
    default:
        return false;
    }
}

bool CncProgram::TakeOperation(const BlockWords& words)
{
    switch (words.Code) {
    case 88:
        return TakeStart(words);
    case 81:
        return TakeBore(words);
    case 85:
    case 86:
        return TakeGroove(words);
    case 183:
    case 184:
        return TakeRow(words);
    default:
        return false;
    }
}

bool CncProgram::TakeBlock(const BlockWords& words)
{
    const int code = words.Code;
    const bool groove = code == 85 || code == 86;
    const bool begins = groove || code == 81 || code == 88 || code == 183 || code == 184;
    // Moves after an operation that is not understood do not belong to the route before it.
    Open = Open && !begins;
    if (!words.Sound || (words.Chooses(41) && words.Chooses(42)))
        return false;
    if (code == 92)
        return true; // where the panel lies on the machine
    if (code == 0 && Open && !AreAllStepsTaken(Steps, Moves))
        KeepRapid(words);
    Feed = words.Or('F', 0);
    if (!groove && !words.Chooses(90))
        return false;
    if (AreAllStepsTaken(Steps, Moves))
        return Full = true;
    return begins ? TakeOperation(words) : TakeMove(words);
}

// A line that is no comment.
bool CncProgram::TakeCode(std::string_view line)
{
    if (line.size() > LongestProgramLine) {
        Open = false; // it may begin another route
        WantsName = !HasHeader;
        HasHeader = true;
        return false;
    }
    const bool isName = WantsName && IsCncName(line);
    WantsName = false;
    if (isName)
        return true;
    const BlockWords words = WordsOfBlock(line);
    if (!HasHeader)
        return TakeHeader(words);
    if (LooksLikeCncHeader(line))
        return TakeNextHeader(words);
    if (words.Sound && words.EndsProgram)
        return Ended = true;
    return !Ended && TakeBlock(words);
}

// False where nothing more is read.
bool CncProgram::Take(const LineWalk& lines)
{
    const std::string_view line = WithoutBlanksAround(lines.Line());
    Number = lines.Number();
    if (line.empty() || line.front() == '*' || line.front() == '-')
        return true;
    if (!TakeCode(line))
        AddUnread(Steps, Number, line);
    if (Full)
        AddRestUnread(Steps, Number);
    return !Full;
}

MachineSteps CncStepsOf(LineWalk lines, const CncReading& how)
{
    CncProgram program;
    program.How = how;
    while (lines.Next() && program.Take(lines)) {
    }
    program.Steps.From = program.From;
    return std::move(program.Steps);
}

} // namespace

MachineSteps ReadCnc(const std::vector<std::string>& lines, const CncReading& how)
{
    return CncStepsOf(LineWalk(lines), how);
}

MachineSteps ReadCncText(std::string_view text, const CncReading& how)
{
    return CncStepsOf(LineWalk(text), how);
}

} // namespace kv

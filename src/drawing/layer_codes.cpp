// Rewrites the two-letter codes of layer names into one-character markers and reads the flags of
// BORDER layers on the way. Runs before any layer is decoded; leaves each name stable, the control,
// the origin corner and the optimizer's wishes in Run.
#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <unordered_map>

#include "drawing/layer_rules.h"
#include "platform/text.h"
#include "state/drawn_names.h"
#include "state/settings.h"

namespace kv {

namespace {

struct LayerCode {
    std::string_view Pair;
    char First, Second; // what stands in its place
};

// In the order in which a walk looks for them.
constexpr LayerCode LayerCodes[] = {
    {"FA", ' ', MarkFeedArc},   {"FD", ' ', MarkFeedDown},  {"FR", ' ', MarkFeedRapid},
    {"LD", ' ', MarkLeadIn},    {"RO", ' ', MarkRampOut},   {"RI", ' ', MarkRampIn},
    {"PD", ' ', MarkPeckDepth}, {"ES", ' ', MarkExtraSlot}, {"EX", ' ', MarkExtraSlot},
    {"OZ", ' ', MarkOscZ},      {"XP", ' ', 'Z'},           {"YP", ' ', 'Z'},
    {"ZR", 'Z', MarkZTable},    {"BB", ' ', MarkBottom0},   {"TB", ' ', MarkBottom1},
    {"CB", ' ', MarkBottom2},   {"SB", ' ', MarkBottom3},   {"DI", ' ', MarkBottom4},
    {"DG", ' ', MarkBottom5},
};

// What a walk makes of one name.
struct RewrittenName {
    std::string Layer;
    bool Repeats = false; // a code occurs again: one more walk
    bool HasLead = false;
};

// "ROZ" is R with an OZ, and a second ROUTE is a word.
bool IsNoRampOut(std::string_view layer, Long start, Long place)
{
    return Find(start, layer, "ROZ") == place || Find(start, layer, "ROUTE") == place;
}

RewrittenName RewriteName(std::string_view layer)
{
    RewrittenName result;
    result.Layer = layer;
    const Long start = FirstCodePosition(layer);
    for (const LayerCode& code : LayerCodes) {
        const Long place = Find(start, result.Layer, code.Pair);
        if (place == 0 || (code.Pair == "RO" && IsNoRampOut(result.Layer, start, place)))
            continue;
        const auto at = static_cast<std::size_t>(place - 1);
        result.Layer[at] = code.First;
        result.Layer[at + 1] = code.Second;
        if (code.Pair == "LD")
            result.HasLead = true;
        // "DI" looks for "DO": a second DI stays unless another code forces one more walk.
        const std::string_view again = code.Pair == "DI" ? "DO" : code.Pair;
        if (Find(place, result.Layer, again) > 0)
            result.Repeats = true;
    }
    return result;
}

void SetOrigin(Int right, Int top)
{
    Run.OriginRight = right;
    Run.OriginTop = top;
}

struct OriginCorner {
    std::string_view Word;
    Int Right, Top;
};
// In the order of the tests; the last one present wins.
constexpr OriginCorner OriginCorners[] = {
    {"LL", False, False}, {"UL", False, True}, {"UR", True, True}, {"LR", True, False}};

void SetDefaultOrigin()
{
    SetOrigin(False, False);
    for (const OriginCorner& corner : OriginCorners)
        if (Config.LineOrigin == corner.Word)
            SetOrigin(corner.Right, corner.Top);
}

struct NumberedFlag {
    std::string_view Word;
    Int Value;
};
constexpr NumberedFlag OptimizeSides[] = {{"OL", 1}, {"OR", 2}, {"GS", 3}, {"SS", 4}};
constexpr NumberedFlag ControlTypes[] = {{"_90", 0}, {"GE", 1}, {"EV", 2}};

// The marks are letters of the code page: an umlaut in a drawn name must not become one.
bool IsMarkLetter(char c)
{
    constexpr char marks[] = {MarkBottom2, MarkBottom3, MarkBottom4, MarkBottom5, MarkZTable};
    return std::find(std::begin(marks), std::end(marks), c) != std::end(marks);
}

// Names are in upper case, so the marks that are small letters cannot stand in them.
void HideMarkLetters()
{
    constexpr char noCode = '\xB7'; // a raised point
    for (Long i = 1; i <= Entities.Last(); ++i) {
        const std::string_view drawn = Entities[i].Layer.Trimmed();
        if (std::none_of(drawn.begin(), drawn.end(), IsMarkLetter))
            continue;
        std::string layer(drawn);
        std::replace_if(layer.begin(), layer.end(), IsMarkLetter, noCode);
        Entities[i].Layer = layer;
    }
}

// One walk over all names. True when a name holds a code twice.
bool RewriteOnce()
{
    std::unordered_map<std::string, RewrittenName> seen; // a drawing has few names and many entities
    bool repeats = false;
    for (Long i = 1; i <= Entities.Last(); ++i) {
        const std::string layer(Entities[i].Layer.Trimmed());
        auto place = seen.find(layer);
        if (place == seen.end())
            place = seen.emplace(layer, RewriteName(layer)).first;
        const RewrittenName& name = place->second;
        Entities[i].Layer = name.Layer;
        repeats |= name.Repeats;
        if (name.HasLead)
            Run.AnyLeadCode = True;
        if (BeginsWith(name.Layer, "BORDER"))
            ReadBorderFlags(name.Layer);
    }
    return repeats;
}

} // namespace

std::string ShownLayer(std::string_view layer)
{
    std::string shown(DrawnLayer(TrimRight(layer)));
    for (char& c : shown)
        if (static_cast<unsigned char>(c) < ' ') // a carriage return would begin a second row
            c = '?';
    if (!shown.empty())
        return shown;
    shown = TrimRight(layer);
    for (std::size_t i = 0; i + 1 < shown.size(); ++i)
        for (const LayerCode& code : LayerCodes)
            if (code.Second != 'Z' && shown[i] == code.First && shown[i + 1] == code.Second)
                shown.replace(i, code.Pair.size(), code.Pair);
    return shown;
}

Long FirstCodePosition(std::string_view layer)
{
    constexpr std::string_view longWords[] = {"BORDER", "GROOVE", "DRILLING", "ROUTEROUTE"};
    for (const std::string_view word : longWords)
        if (BeginsWith(layer, word))
            return static_cast<Long>(word.size()) + 1;
    return 6;
}

void ReadBorderFlags(std::string_view layer)
{
    const std::string_view flags = Mid(layer, FirstCodePosition(layer));
    SetDefaultOrigin(); // so the last BORDER record decides
    for (const OriginCorner& corner : OriginCorners)
        if (Holds(flags, corner.Word))
            SetOrigin(corner.Right, corner.Top);
    if (Holds(flags, "NO"))
        Run.NoCode = True;
    Run.OptimizeSide = 0;
    for (const NumberedFlag& side : OptimizeSides)
        if (Holds(flags, side.Word))
            Run.OptimizeSide = side.Value;
    Run.Alone.OptimizeSide = Run.OptimizeSide;
    const Long outfit = Find(1, flags, "OF");
    Run.Outfit = Run.Alone.Outfit = outfit > 0 ? ToLong(Val(Mid(flags, outfit + 2))) : Run.OutfitDefault;
    Run.OptimizeFlag = Run.Alone.OptimizeFlag = Holds(flags, "OP") ? True : False;
    const Long sequence = Find(1, flags, "SQ");
    if (sequence > 0)
        Run.SequenceName = Run.Alone.SequenceName = Padded(UpperCase(Mid(flags, sequence + 2, 4)), 4);
    for (const NumberedFlag& control : ControlTypes)
        if (Holds(flags, control.Word))
            Run.ControlType = control.Value;
}

void RewriteLayerCodes()
{
    Run.AnyLeadCode = False;
    SetDefaultOrigin();
    HideMarkLetters();
    while (RewriteOnce()) {
    }
}

} // namespace kv

// The "$" of a layer opens the parameters of a further pass over the same entity. The record keeps
// the name up to the "$"; a copy at the end of Entities gets the next number and inherits depth,
// group and tool. Numbered routes are renumbered first, which leaves room for the passes.
#include <algorithm>
#include <string>

#include "drawing/layer_rules.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/drawn_names.h"

namespace kv {

namespace {

constexpr Long NumberPlace = 6;
constexpr std::size_t NumberWidth = 3;

// A number of up to three characters at position 6. D and E end it.
struct NameNumber {
    Int Value = 0;
    Long Start = 0;         // position of its text in the name
    std::size_t Length = 0; // sign, digits, point
};

NameNumber ReadNameNumber(std::string_view name)
{
    std::string text(Mid(name, NumberPlace, NumberWidth));
    ReplaceChar(text, 'D', '~');
    ReplaceChar(text, 'E', '~');
    NameNumber number;
    number.Value = ToInt(Val(text));
    std::size_t at = text.find_first_not_of(' ');
    if (at == std::string::npos)
        return number;
    number.Start = NumberPlace + static_cast<Long>(at);
    const std::size_t first = at;
    if (text[at] == '+' || text[at] == '-')
        ++at;
    bool behindPoint = false;
    for (; at < text.size(); ++at) {
        if (text[at] == '.' && !behindPoint)
            behindPoint = true;
        else if (text[at] < '0' || text[at] > '9')
            break;
    }
    number.Length = at - first;
    return number;
}

// BORDER$...: the border is cut, too.
void SplitBorders()
{
    const Long last = Entities.Last();
    DrawnCopies copies;
    for (Long i = 1; i <= last; ++i) {
        const std::string name(Entities[i].Layer.Trimmed());
        const std::size_t split = name.find('$');
        if (!BeginsWith(name, "BORDER") || split == std::string::npos)
            continue;
        DxfEntity& copy = Entities.Append(Entities[i]);
        copy.Drawn = copies.Of(copy.Drawn);
        copy.Layer = "ROUTE" + name.substr(split + 1);
        Entities[i].Layer = name.substr(0, split);
    }
}

std::string Renumbered(std::string name)
{
    NameNumber number = ReadNameNumber(name);
    const std::string_view behind = Mid(name, NumberPlace);
    const std::size_t zeros = BeginsWith(behind, "00") ? 2 : BeginsWith(behind, "0") ? 1 : 0;
    if (zeros > 0) {
        name = Compact(name.replace(NumberPlace - 1, zeros, zeros, ' '));
        number.Length -= std::min(zeros, number.Length); // the rest of its text
        number.Start = NumberPlace;
    }
    if (number.Value == 0)
        return name;
    const int value = 10 * number.Value + 10;
    return name.replace(static_cast<std::size_t>(number.Start - 1), number.Length, WholeText(value));
}

void RenumberRoutes()
{
    for (Long i = 1; i <= Entities.Last(); ++i) {
        const std::string_view name = Entities[i].Layer.Trimmed();
        if (BeginsWith(name, "EXCAV") || BeginsWith(name, "ROUTE"))
            Entities[i].Layer = Renumbered(std::string(name));
    }
}

struct PassWord {
    std::string_view Head; // first five characters of the name
    std::string_view Word; // of the further pass
    bool Numbered;
};
// "EXECA" is spelled so: EXCAV names keep their "$".
constexpr PassWord PassWords[] = {{"VBORE", "VBORE", false},  {"HBORE", "HBORE", false},
                                  {"ROUTE", "ROUTE", true},   {"EXECA", "EXECA", true},
                                  {"GROOV", "GROOVE", false}, {"DRILL", "DRILLING", false}};

const PassWord* PassWordOf(std::string_view name)
{
    for (const PassWord& word : PassWords)
        if (BeginsWith(name, word.Head))
            return &word;
    return nullptr;
}

std::string_view WithoutHead(std::string_view text, std::string_view head)
{
    return BeginsWith(text, head) ? text.substr(head.size()) : text;
}

// What the pass does not state it inherits from the name in front of the "$".
std::string InheritedParts(std::string_view pass, std::string_view shortened, const PassWord& word)
{
    CurrentEntity.NoteText = pass;
    CurrentEntity.Layer = shortened;
    const Int tool = ReadToolNumber();
    const Single depth = ReadDepth();
    const Int group = ReadGroup();
    std::string parts;
    if (!Holds(pass, "Z"))
        parts += "Z" + PlainText(depth);
    if (group != 0)
        parts += "G" + WholeText(group);
    if (!Holds(pass, "T") && word.Word == "ROUTE")
        parts += "T" + WholeText(tool);
    return parts;
}

// Splits the first pass off a record's name. True when the copy holds a further "$".
bool SplitPass(Long index, const PassWord& word, DrawnCopies& copies)
{
    std::string name(Entities[index].Layer.Trimmed());
    std::string next;
    if (word.Numbered) {
        const Int number = ReadNameNumber(name).Value;
        if (number == 0)
            name.insert(NumberPlace - 1, "1");
        next = WholeText(number == 0 ? 2 : number + 1);
    }
    const std::size_t split = name.find('$');
    const std::size_t second = name.find('$', split + 1);
    const std::string shortened = name.substr(0, split);
    const std::string tail = second == std::string::npos ? "" : name.substr(second);
    std::string_view pass = TrimRight(std::string_view(name).substr(split + 1, second - split - 1));
    pass = WithoutHead(WithoutHead(WithoutHead(pass, word.Head), "_"), " ");
    DxfEntity copy = Entities[index];
    copy.Drawn = copies.Of(copy.Drawn);
    NoteDrawnLayer(shortened, LookOf(copy.Drawn).Named); // a value that is refused names it
    copy.Layer =
        std::string(word.Word) + next + std::string(pass) + InheritedParts(pass, shortened, word) + tail;
    Entities[index].Layer = shortened;
    Entities.Append(copy);
    return !tail.empty();
}

bool SplitPasses()
{
    bool more = false;
    DrawnCopies copies;
    const Long last = Entities.Last();
    for (Long i = 1; i <= last; ++i) {
        const std::string_view name = Entities[i].Layer.Trimmed();
        const PassWord* const word = Holds(name, "$") ? PassWordOf(name) : nullptr;
        if (word != nullptr)
            more |= SplitPass(i, *word, copies);
    }
    return more;
}

} // namespace

void ExpandLayerPasses()
{
    SplitBorders();
    RenumberRoutes();
    while (SplitPasses()) {
    }
    NameLayerStates();
    CurrentEntity.NoteText.clear();
    Run.EntityCount = Entities.Last();
}

} // namespace kv

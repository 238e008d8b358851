// A plain twin of the layer name rules: the parameter readers, the sequence of a name, the rewrite of
// two-letter codes with the flags of BORDER layers, the "$" split. Text by text, copy by copy, with
// positions that count from 1; slow and literal, so that the fast readers can be held against it.
// Leans on nothing of the program, not even its reading of numbers.
#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <regex>
#include <string>
#include <vector>

namespace kv::plain {

// A value that its field cannot hold.
struct Overflow {};

constexpr int LayerWidth = 114;

inline std::string MidOf(const std::string& text, int from, int count = 9999)
{
    const auto start = static_cast<std::size_t>(from - 1);
    return start >= text.size() ? "" : text.substr(start, static_cast<std::size_t>(count));
}

inline int InStr(int from, const std::string& text, const std::string& part)
{
    const std::size_t at = text.find(part, static_cast<std::size_t>(from - 1));
    return at == std::string::npos ? 0 : static_cast<int>(at) + 1;
}

inline bool Starts(const std::string& text, const std::string& head)
{
    return MidOf(text, 1, static_cast<int>(head.size())) == head;
}

inline std::string WithoutBlanks(const std::string& text)
{
    std::string kept;
    for (const char c : text)
        if (c != ' ')
            kept += c;
    return kept;
}

inline std::string CutRight(std::string text)
{
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return text;
}

inline std::string CutLeft(std::string text)
{
    while (!text.empty() && text.front() == ' ')
        text.erase(0, 1);
    return text;
}

// As the layer's field keeps it.
inline std::string Stored(const std::string& name)
{
    return CutRight(MidOf(name, 1, LayerWidth));
}

inline bool IsDigit(const std::string& c)
{
    return !c.empty() && c[0] >= '0' && c[0] <= '9';
}

inline double Number(const std::string& text)
{
    int at = 1;
    while (MidOf(text, at, 1) == " ")
        ++at;
    std::string number;
    if (MidOf(text, at, 1) == "+" || MidOf(text, at, 1) == "-")
        number += MidOf(text, at++, 1);
    for (bool point = false; IsDigit(MidOf(text, at, 1)) || (MidOf(text, at, 1) == "." && !point); ++at) {
        point = point || MidOf(text, at, 1) == ".";
        number += MidOf(text, at, 1);
    }
    const std::string letter = MidOf(text, at, 1);
    if (letter == "E" || letter == "e" || letter == "D" || letter == "d") {
        std::string exponent = "e";
        ++at;
        if (MidOf(text, at, 1) == "+" || MidOf(text, at, 1) == "-")
            exponent += MidOf(text, at++, 1);
        if (IsDigit(MidOf(text, at, 1)))
            number += exponent;
        for (; number.find('e') != std::string::npos && IsDigit(MidOf(text, at, 1)); ++at)
            number += MidOf(text, at, 1);
    }
    return std::strtod(number.c_str(), nullptr); // 0 where no digit stands
}

inline double HalfEven(double value)
{
    const double low = std::floor(value);
    const double part = value - low;
    if (part != 0.5)
        return part < 0.5 ? low : low + 1;
    return std::fmod(low, 2) == 0 ? low : low + 1;
}

inline int AsInt(double value)
{
    const double whole = HalfEven(value);
    if (!(whole >= -32768 && whole <= 32767))
        throw Overflow{};
    return static_cast<int>(whole);
}

inline float AsSingle(double value)
{
    if (!(std::fabs(value) <= 3.402823e38))
        throw Overflow{};
    return static_cast<float>(value);
}

// At most seven digits, no exponent, no zero before the point.
inline std::string Shown(float value)
{
    if (value == 0)
        return "0";
    char text[80];
    std::snprintf(text, sizeof text, "%.6e", static_cast<double>(value));
    const int exponent = std::atoi(std::string(text).substr(std::string(text).find('e') + 1).c_str());
    std::string digits;
    for (const char* c = text; *c != 'e'; ++c)
        if (*c >= '0' && *c <= '9')
            digits += *c;
    std::string shown = value < 0 ? "-" : "";
    if (exponent >= 6)
        shown += digits + std::string(static_cast<std::size_t>(exponent - 6), '0');
    else if (exponent >= 0)
        shown += digits.substr(0, static_cast<std::size_t>(exponent) + 1) + "." +
                 digits.substr(static_cast<std::size_t>(exponent) + 1);
    else
        shown += "." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    if (shown.find('.') != std::string::npos) {
        while (shown.back() == '0')
            shown.pop_back();
        if (shown.back() == '.')
            shown.pop_back();
    }
    return shown;
}

// A code never begins inside the layer's own word.
inline int FirstPlace(const std::string& source)
{
    if (Starts(source, "BORDER") || Starts(source, "GROOVE"))
        return 7;
    if (Starts(source, "DRILLING"))
        return 9;
    return Starts(source, "ROUTEROUTE") ? 11 : 6;
}

// One entity's note and layer, and what is read from them.
struct Reader {
    std::string Note, Layer;
    bool DepthFromEntity = false;

    std::string SourceOf(const std::string& code) const
    {
        return InStr(1, Note, code) > 0 ? "      " + Note : Layer;
    }

    // The text behind the code; `position` stays 0 when it is not found.
    std::string Behind(const std::string& code, int& position, bool fromFifth = false) const
    {
        std::string source = SourceOf(code);
        const int first = FirstPlace(source);
        const int d = InStr(first, source, "D");
        if (d > 0)
            source.replace(static_cast<std::size_t>(d - 1), 1, "~");
        const int place = InStr(fromFifth && first == 6 ? 5 : first, source, code);
        position = place > 0 ? place + 1 : 0;
        return place > 0 ? MidOf(source, position) : "";
    }

    double Fraction(int position) const
    {
        std::string layer = Layer;
        layer.resize(LayerWidth, ' ');
        int next = 0;
        int point = 0;
        for (int at = position; at <= LayerWidth; ++at) {
            const std::string c = MidOf(layer, at, 1);
            if (next == 0 && InStr(1, " DEFGIKLMORSTVXYZ\xE6\xE7\xE4\xE5\xE8\xE9", c) > 0)
                next = at;
            if (point == 0 && (c == "P" || c == "."))
                point = at;
        }
        if (point == 0 || !(point + 1 < next))
            return 0;
        for (int at = position; at <= LayerWidth; ++at) {
            const std::string c = MidOf(layer, at, 1);
            if (c != "D" && c != "E")
                continue;
            layer.replace(static_cast<std::size_t>(at - 1), 1, "~");
            break;
        }
        return Number("." + MidOf(layer, point + 1));
    }

    double WholeAndFraction(const std::string& text, int position) const
    {
        return std::floor(Number(text)) + Fraction(position);
    }

    float Value(const std::string& code) const
    {
        int position = 0;
        const std::string text = Behind(code, position);
        return position == 0 ? 0 : AsSingle(WholeAndFraction(text, position));
    }

    float Depth()
    {
        std::string source = SourceOf("Z");
        const int first = FirstPlace(source);
        for (int at = InStr(first, source, "D"); at > 0; at = InStr(first, source, "D"))
            source.replace(static_cast<std::size_t>(at - 1), 1, "~");
        const int place = InStr(first, source, "Z");
        DepthFromEntity = place == 0;
        if (place == 0)
            return 0;
        const std::string text = MidOf(source, place + 1);
        const std::string c = MidOf(text, 1, 1);
        if (c == "~")
            return 100;
        if (c == "\xDF")
            return AsSingle(std::floor(Number(MidOf(text, 2))) + 200);
        const int symbol = InStr(1, "ABCDEFGI", c);
        const int small = InStr(1, "abcdefgi", c);
        if (!c.empty() && symbol + small > 0)
            return static_cast<float>("abcdefgi"[symbol + small - 1]);
        return AsSingle(WholeAndFraction(text, place + 1));
    }

    float Diameter() const
    {
        const std::string source = SourceOf("D");
        for (int at = InStr(FirstPlace(source), source, "D"); at > 0; at = InStr(at + 1, source, "D")) {
            const std::string before = at > 1 ? MidOf(source, at - 1, 1) : "";
            if (before != "Z" && before != "z")
                return AsSingle(WholeAndFraction(MidOf(source, at + 1), at + 1));
        }
        return 0;
    }

    int Whole(const std::string& code) const
    {
        int position = 0;
        const std::string text = Behind(code, position, true);
        return position == 0 ? 0 : AsInt(Number(text));
    }
    int ToolNumber() const { return Whole("T"); }
    int Group() const { return Whole("G"); }

    int Speed() const
    {
        int position = 0;
        const std::string text = Behind("S", position);
        if (position == 0)
            return 0;
        const double speed = Number(text);
        return AsInt(speed < 30 ? speed * 1000 : speed);
    }

    float Feed() const { return Value("F"); }
    float FeedArc() const
    {
        int position = 0;
        Behind("\xFC", position);
        return position > 0 ? Value("\xFC") : Feed();
    }
    float FeedDown() const { return Value("\xE6"); }
    float FeedRapid() const { return Value("\xE7"); }
    float ParamA() const { return Value("A"); }
    float ParamB() const { return Value("B"); }
    float Excav() const
    {
        const float count = Value("K");
        return count < 0 ? 0 : count;
    }

    float LeadIn() const
    {
        int position = 0;
        Behind("\xE4", position);
        const float value = Value("\xE4");
        return position > 0 && value == 0 ? 999 : value;
    }
    float Ramp(const std::string& code) const
    {
        int position = 0;
        const std::string text = Behind(code, position);
        const float value = Value(code);
        if (position == 0 || value != 0)
            return value;
        return MidOf(CutLeft(text), 1, 1) == "0" ? 0 : 999;
    }
    float RampOut() const { return Ramp("\xE5"); }
    float RampIn() const { return Ramp("\xE8"); }

    float Positive(const std::string& code) const
    {
        int position = 0;
        Behind(code, position);
        const float value = std::fabs(Value(code));
        return position > 0 && value == 0 ? -1 : value;
    }
    float PeckDepth() const { return Positive("\xE9"); }
    float OscZ() const { return Positive("\xEA"); }

    int ExtraSlot() const
    {
        int position = 0;
        const std::string text = Behind("\xEB", position);
        if (position == 0)
            return 0;
        const int slot = AsInt(std::fabs(std::floor(Number(text))));
        return slot == 0 ? -1 : slot;
    }
    int MCode() const
    {
        int position = 0;
        const std::string text = Behind("M", position);
        const int code = position == 0 ? 0 : AsInt(Number(text));
        return code < 2 ? 0 : code;
    }

    std::string OneHand(const std::string& code, const std::string& prefix) const
    {
        int position = 0;
        Behind(code, position);
        if (position == 0)
            return "";
        const float radius = Value(code);
        return prefix + (radius != 0 ? "R" + Shown(radius) : "");
    }
    std::string Comp() const
    {
        std::string comp = OneHand("R", "G42 ");
        const std::string left = OneHand("L", "G41 ");
        if (!left.empty())
            comp = left;
        return CutRight(comp);
    }

    int Bottom() const
    {
        const std::string marks[] = {"\xEE", "\xEC", "\xC4", "\xC5", "\xD6", "\xDC"};
        for (int i = 0; i < 6; ++i)
            if (InStr(1, Layer, marks[i]) > 0)
                return i;
        return 0;
    }
    int GrooveSide() const
    {
        if (InStr(7, Layer, "L") > 0)
            return -1;
        return InStr(7, Layer, "R") > 0 ? 1 : 0;
    }

    std::string ToolString() const
    {
        std::string source;
        if (InStr(1, Note, "T") > 0) {
            source = "      " + Note;
        } else {
            for (const char c : WithoutBlanks(Layer)) {
                const int code = static_cast<unsigned char>(c);
                if ((code >= 0x2B && code <= 0x3A) || (code >= 0x40 && code <= 0x7A))
                    source += c;
            }
        }
        std::string tools;
        for (int t = FirstPlace(source); t <= static_cast<int>(source.size()); ++t) {
            if (MidOf(source, t, 1) != "T")
                continue;
            std::string pending;
            for (int at = t + 1; at <= static_cast<int>(source.size()); ++at) {
                const std::string c = MidOf(source, at, 1);
                if (c[0] < 0x30 || c[0] > 0x40) {
                    if (!pending.empty())
                        tools += "0" + pending;
                    pending.clear();
                    break;
                }
                pending += c;
                if (pending.size() == 2) {
                    tools += pending;
                    pending.clear();
                }
            }
            tools += pending;
        }
        return tools;
    }
};

// The sequence that a name gives its entities; 0 is none.
inline int Sequence(const std::string& layer)
{
    const std::string word = MidOf(layer, 1, 5);
    if (word != "ROUTE" && word != "VBORE" && word != "HBORE" && word != "GROOV" && word != "DRILL")
        return 0;
    std::string behind = MidOf(layer, 6);
    for (char& c : behind)
        if (c == 'D' || c == 'E')
            c = '~';
    double n = HalfEven(Number(behind));
    if (n > 10000 || n < -2147483648.0)
        return 0;
    if (n == 0) {
        while (!behind.empty() && (behind[0] == ' ' || behind[0] == '_'))
            behind.erase(0, 1);
        n = HalfEven(Number(behind));
        if (n > 1000 || n < -2147483648.0)
            return 0;
    }
    return AsInt(n);
}

// What the names of a drawing say of the run.
struct Flags {
    bool LeadCode = false, OriginRight = false, OriginTop = false;
    bool NoCode = false, Optimize = false;
    int OptimizeSide = 0, ControlType = 0;
    long Outfit = 0;
    std::string SequenceName;
};

inline void SetOrigin(Flags& flags, const std::string& corner)
{
    flags.OriginRight = corner == "UR" || corner == "LR";
    flags.OriginTop = corner == "UL" || corner == "UR";
}

// Names are in upper case but for the markers, which the order of a sequence may hold.
inline std::string UpperMarkers(std::string text)
{
    for (char& c : text)
        if (InStr(1, "\xE4\xE5\xE6\xE7\xE8\xE9\xEA\xEB\xEC\xEE\xFC", std::string(1, c)) > 0)
            c = static_cast<char>(c - 32);
    return text;
}

inline void ReadFlags(Flags& flags, const std::string& name, const std::string& lineOrigin, long outfit)
{
    const std::string text = MidOf(name, 7);
    SetOrigin(flags, lineOrigin);
    if (InStr(1, text, "LL") > 0)
        SetOrigin(flags, "LL");
    if (InStr(1, text, "UL") > 0)
        SetOrigin(flags, "UL");
    if (InStr(1, text, "UR") > 0)
        SetOrigin(flags, "UR");
    if (InStr(1, text, "LR") > 0)
        SetOrigin(flags, "LR");
    if (InStr(1, text, "NO") > 0)
        flags.NoCode = true;
    flags.OptimizeSide = 0;
    if (InStr(1, text, "OL") > 0)
        flags.OptimizeSide = 1;
    if (InStr(1, text, "OR") > 0)
        flags.OptimizeSide = 2;
    if (InStr(1, text, "GS") > 0)
        flags.OptimizeSide = 3;
    if (InStr(1, text, "SS") > 0)
        flags.OptimizeSide = 4;
    flags.Outfit = outfit;
    if (const int at = InStr(1, text, "OF"); at > 0) {
        const double number = HalfEven(Number(MidOf(text, at + 2)));
        if (!(std::fabs(number) < 2147483648.0))
            throw Overflow{};
        flags.Outfit = static_cast<long>(number);
    }
    flags.Optimize = InStr(1, text, "OP") > 0;
    if (const int at = InStr(1, text, "SQ"); at > 0)
        flags.SequenceName = UpperMarkers(MidOf(MidOf(text, at + 2) + "    ", 1, 4));
    if (InStr(1, text, "_90") > 0)
        flags.ControlType = 0;
    if (InStr(1, text, "GE") > 0)
        flags.ControlType = 1;
    if (InStr(1, text, "EV") > 0)
        flags.ControlType = 2;
}

// Upper-cased names in, rewritten names out.
inline void Rewrite(std::vector<std::string>& names, Flags& flags, const std::string& lineOrigin, long outfit)
{
    const std::string codes[][2] = {{"FA", " \xFC"}, {"FD", " \xE6"}, {"FR", " \xE7"}, {"LD", " \xE4"},
                                    {"RO", " \xE5"}, {"RI", " \xE8"}, {"PD", " \xE9"}, {"ES", " \xEB"},
                                    {"EX", " \xEB"}, {"OZ", " \xEA"}, {"XP", " Z"},    {"YP", " Z"},
                                    {"ZR", "Z\xDF"}, {"BB", " \xEE"}, {"TB", " \xEC"}, {"CB", " \xC4"},
                                    {"SB", " \xC5"}, {"DI", " \xD6"}, {"DG", " \xDC"}};
    for (std::string& name : names) // letters that a person typed are no marks
        for (char& letter : name)
            if (std::string("\xC4\xC5\xD6\xDC\xDF").find(letter) != std::string::npos)
                letter = '\xB7';
    flags.LeadCode = false;
    SetOrigin(flags, lineOrigin);
    bool stable = false;
    while (!stable) {
        stable = true;
        for (std::string& name : names) {
            const int first = FirstPlace(name);
            for (const auto& code : codes) {
                const int place = InStr(first, name, code[0]);
                if (place == 0)
                    continue;
                if (code[0] == "RO" &&
                    (InStr(first, name, "ROZ") == place || InStr(first, name, "ROUTE") == place))
                    continue;
                name.replace(static_cast<std::size_t>(place - 1), 2, code[1]);
                if (code[0] == "LD")
                    flags.LeadCode = true;
                if (InStr(place, name, code[0] == "DI" ? "DO" : code[0]) > 0)
                    stable = false;
            }
            name = Stored(name);
            if (Starts(name, "BORDER"))
                ReadFlags(flags, name, lineOrigin, outfit);
        }
    }
}

// A record by its name, and the record of the drawing that it was copied from.
struct Record {
    std::string Name;
    int Source = 0;
};

inline std::string HideDE(std::string text)
{
    for (char& c : text)
        if (c == 'D' || c == 'E')
            c = '~';
    return text;
}

inline std::string Renumber(std::string name)
{
    static const std::regex form("^( *)([+-]?[0-9]*\\.?[0-9]*)");
    const std::string three = HideDE(MidOf(name, 6, 3));
    const int n = AsInt(Number(three));
    std::smatch found;
    std::regex_search(three, found, form);
    std::size_t start = 5 + static_cast<std::size_t>(found[1].length());
    std::size_t length = static_cast<std::size_t>(found[2].length());
    const int zeros = MidOf(name, 6, 2) == "00" ? 2 : MidOf(name, 6, 1) == "0" ? 1 : 0;
    if (zeros > 0) {
        name = WithoutBlanks(MidOf(name, 1, 5) + MidOf(name, 6 + zeros));
        length -= static_cast<std::size_t>(zeros);
        start = 5;
    }
    if (n != 0)
        name.replace(start, length, std::to_string(10 * n + 10));
    return name;
}

inline std::string WordOf(const std::string& name)
{
    const std::string five = MidOf(name, 1, 5);
    if (five == "GROOV")
        return "GROOVE";
    if (five == "DRILL")
        return "DRILLING";
    return five == "VBORE" || five == "HBORE" || five == "ROUTE" || five == "EXECA" ? five : "";
}

// Splits one record at its first "$"; the copy goes to the end. True when a second "$" stood there.
inline bool SplitOne(std::vector<Record>& records, std::size_t index)
{
    std::string name = records[index].Name;
    const std::string word = WordOf(name);
    std::string next;
    if (word == "ROUTE" || word == "EXECA") {
        const int n = AsInt(Number(HideDE(MidOf(name, 6, 3))));
        next = std::to_string(n == 0 ? 2 : n + 1);
        if (n == 0)
            name = MidOf(name, 1, 5) + "1" + MidOf(name, 6);
    }
    const int first = InStr(1, name, "$");
    const int second = InStr(first + 1, name, "$");
    const std::string tail = second > 0 ? MidOf(name, second) : "";
    std::string pass = CutRight(MidOf(name, first + 1, second > 0 ? second - first - 1 : 9999));
    if (Starts(pass, MidOf(word, 1, 5)))
        pass = MidOf(pass, 6);
    if (Starts(pass, "_"))
        pass = MidOf(pass, 2);
    if (Starts(pass, " "))
        pass = MidOf(pass, 2);
    Reader reader{pass, MidOf(name, 1, first - 1)};
    const int tool = reader.ToolNumber();
    const float depth = reader.Depth();
    const int group = reader.Group();
    const std::string z = InStr(1, pass, "Z") > 0 ? "" : "Z" + Shown(depth);
    const std::string t = InStr(1, pass, "T") == 0 && word == "ROUTE" ? "T" + std::to_string(tool) : "";
    const std::string g = group != 0 ? "G" + std::to_string(group) : "";
    records.push_back({Stored(word + next + pass + z + g + t + tail), records[index].Source});
    records[index].Name = Stored(reader.Layer);
    return second > 0;
}

inline void Expand(std::vector<Record>& records)
{
    const std::size_t drawn = records.size();
    for (std::size_t i = 0; i < drawn; ++i) {
        const std::string name = records[i].Name;
        const int split = InStr(1, name, "$");
        if (!Starts(name, "BORDER") || split == 0)
            continue;
        records.push_back({Stored("ROUTE" + MidOf(name, split + 1)), records[i].Source});
        records[i].Name = Stored(MidOf(name, 1, split - 1));
    }
    for (Record& record : records)
        if (Starts(record.Name, "EXCAV") || Starts(record.Name, "ROUTE"))
            record.Name = Stored(Renumber(record.Name));
    bool more = true;
    while (more) {
        more = false;
        const std::size_t last = records.size();
        for (std::size_t i = 0; i < last; ++i)
            if (InStr(1, records[i].Name, "$") > 0 && !WordOf(records[i].Name).empty())
                more = SplitOne(records, i) || more;
    }
}

} // namespace kv::plain

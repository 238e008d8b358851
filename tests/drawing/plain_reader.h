// The reader's rule as plainly as it can be said: every line of the text, one after another, codes
// compared as texts, records in a vector, fields as strings. Slow and without any short cut, so
// that the real reader can be held against it. Relies on Val and the text helpers alone.
#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "platform/numbers.h"
#include "platform/text.h"

namespace kv::test {

struct PlainEntity {
    std::string Kind, Layer, Side;
    Int TextIndex = 0;
    Single X1 = 0, Y1 = 0, X2 = 0, Y2 = 0, Z1 = 0, Z2 = 0;
    Single Elevation = 0, Thickness = 0, Radius = 0, EndWidth = 0, Bulge = 0, StartAngle = 0, EndAngle = 0;
    Int Color = 0, Flags = 0, TextAlign = 0, FollowFlag = 0, ExtrusionZ = 0;
};

struct PlainDrawing {
    std::vector<PlainEntity> Entities{1}; // element 0 is blank
    std::vector<std::string> Texts{1};
    bool HasTitle = false;
    std::string InstructionLayer; // where HasTitle
    bool NoSection = false;       // no line holds ENTITIES
    bool Failed = false;          // no ENDSEC, a code that is no number, a value out of range, a NUL byte
};

class PlainReader {
  public:
    explicit PlainReader(const std::string& file) : Lines(LinesOf(file)) {}

    PlainDrawing Read()
    {
        std::size_t at = Section();
        if (at == Lines.size()) {
            Drawing.NoSection = true;
            return Drawing;
        }
        Drawing.Entities.emplace_back(); // element 1
        for (++at; at + 1 < Lines.size(); at += 2) {
            if (!IsNumber(Compact(Lines[at]))) {
                Drawing.Failed = true;
                return Drawing;
            }
            if (TakePair(Compact(Lines[at]), Lines[at + 1]) || Drawing.Failed)
                return Drawing;
        }
        Drawing.Failed = true;
        return Drawing;
    }

  private:
    // The first line that holds the word and names a section, else the first that holds it.
    std::size_t Section() const
    {
        std::size_t first = Lines.size();
        for (std::size_t at = 0; at < Lines.size(); ++at) {
            if (Lines[at].find("ENTITIES") == std::string::npos)
                continue;
            first = std::min(first, at);
            if (at >= 3 && Trim(Lines[at - 1]) == "2" && Trim(Lines[at - 2]) == "SECTION" &&
                Trim(Lines[at - 3]) == "0")
                return at;
        }
        return first;
    }
    static std::vector<std::string> LinesOf(const std::string& file)
    {
        std::vector<std::string> lines;
        std::string line;
        bool open = false; // a line without a line feed behind it
        for (const char c : file) {
            open = c != '\n';
            if (open) {
                line += c;
                continue;
            }
            if (line.ends_with('\r'))
                line.pop_back();
            lines.push_back(line);
            line.clear();
        }
        if (open)
            lines.push_back(line);
        return lines;
    }
    // As a field of that many characters holds it.
    static std::string Fixed(const std::string& text, std::size_t width)
    {
        return std::string(TrimRight(Trim(text).substr(0, width)));
    }
    static bool IsNumber(const std::string& code)
    {
        const std::size_t sign = code.starts_with('-') || code.starts_with('+') ? 1 : 0;
        if (code.size() == sign)
            return false;
        for (std::size_t i = sign; i < code.size(); ++i)
            if (code[i] < '0' || code[i] > '9')
                return false;
        return true;
    }
    static bool IsOneOf(const std::string& code, std::initializer_list<const char*> codes)
    {
        for (const char* const one : codes)
            if (code == one)
                return true;
        return false;
    }

    Single Coordinate(const std::string& value)
    {
        const double number = Val(value);
        if (!(std::fabs(number) < 3.402823e38))
            Drawing.Failed = true;
        return Drawing.Failed ? Single(0) : static_cast<Single>(number);
    }
    Int Rounded(double number)
    {
        double whole = std::floor(number);
        const double rest = number - whole;
        if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2) != 0))
            whole += 1;
        if (!(whole >= -32768 && whole <= 32767))
            Drawing.Failed = true;
        return Drawing.Failed ? Int(0) : static_cast<Int>(whole);
    }

    PlainEntity& Now() { return Drawing.Entities[Current]; }
    // The record before the current one inside an LWPOLYLINE, else the current one.
    PlainEntity& Before() { return Drawing.Entities[LightMode ? Current - 1 : Current]; }
    void Grow()
    {
        Drawing.Entities.emplace_back();
        ++Current;
    }

    void FinishExtrusion()
    {
        if (Now().Kind == "SEQEND")
            SideCarried = false;
        if (SideCarried) {
            Now().Side = CarriedSide;
            return;
        }
        Single largest = 0;
        if (std::fabs(Nx) > largest) {
            Now().Side = Nx < 0 ? "4" : "3";
            largest = std::fabs(Nx);
        }
        if (std::fabs(Ny) > largest) {
            Now().Side = Ny < 0 ? "2" : "1";
            largest = std::fabs(Ny);
        }
        if (std::fabs(Nz) > largest)
            Now().Side = "5";
        Now().ExtrusionZ = Rounded(static_cast<double>(Nz));
        Nx = Ny = Nz = 0;
        Pending = false;
        if (Now().Kind == "POLYLINE") {
            CarriedSide = Now().Side;
            SideCarried = true;
        }
    }

    bool EndOrBegin(const std::string& value)
    {
        if (Now().Kind.find("SEQEND") != std::string::npos)
            Now().Color = LastColor;
        if (Pending || SideCarried)
            FinishExtrusion();
        if (Title) {
            Drawing.HasTitle = true;
            Drawing.InstructionLayer = Compact(Now().Layer);
            Title = false;
        }
        if (LightMode) {
            Now().Kind = "SEQEND";
            Carried.clear();
        }
        Grow();
        const std::string word = UpperCase(value);
        if (word.find("ENDSEC") != std::string::npos)
            return true;
        if (word.find("POLYLINE") != std::string::npos)
            Carried = Marker;
        const bool ofPolyline = word.find("SEQEND") != std::string::npos || Fixed(word, 10) == "VERTEX";
        if (ofPolyline && Carried != Marker)
            Now().Layer = Fixed(Carried, 114);
        EndsPolyline = word.find("SEQEND") != std::string::npos && !Carried.empty() && Carried != Marker;
        if (word.find("SEQEND") != std::string::npos)
            Carried.clear();
        if (word.find("LWPOLYLINE") != std::string::npos) {
            Carried = Marker;
            LightMode = true;
            VertexDone = false;
            Now().Kind = "POLYLINE";
            Grow();
            Now().Kind = "VERTEX";
        } else {
            LightMode = false;
            Now().Kind = Fixed(word, 10);
        }
        return false;
    }

    void TakeText(const std::string& value)
    {
        if (Now().Kind.find("TEXT") == std::string::npos)
            return;
        Drawing.Texts.push_back(value);
        Now().TextIndex = static_cast<Int>(Drawing.Texts.size() - 1);
        const std::string upper = UpperCase(value);
        if (upper == "POST INSTRUCTIONS" || upper == "KORVANTI INSTRUCTIONS")
            Title = true;
    }

    void TakeLayer(const std::string& value)
    {
        if (EndsPolyline)
            return;
        const std::string upper = UpperCase(value);
        if (Carried == Marker)
            Carried = upper;
        Now().Layer = Fixed(Carried.empty() ? upper : Carried, 114);
        if (LightMode)
            Before().Layer = Fixed(upper, 114);
    }

    // True at ENDSEC.
    bool TakePair(const std::string& code, const std::string& line)
    {
        std::string value = line;
        ReplaceChar(value, ',', '.');
        const bool inHeader = LightMode && !VertexDone;
        PlainEntity& header = inHeader ? Before() : Now();
        const std::string kept[] = {"0",  "1",  "8",  "10", "11", "12", "13",  "20",  "21", "22",
                                    "23", "30", "31", "38", "39", "40", "41",  "42",  "50", "51",
                                    "62", "66", "70", "72", "73", "75", "210", "220", "230"};
        for (const std::string& one : kept)
            if (code == one && value.find('\0') != std::string::npos)
                Drawing.Failed = true;
        if (Drawing.Failed)
            return false;
        if (code == "0")
            return EndOrBegin(value);
        if (code == "1")
            TakeText(value);
        if (code == "8")
            TakeLayer(value);
        if (code == "10")
            Now().X1 = Coordinate(value);
        if (code == "20") {
            Now().Y1 = Coordinate(value);
            if (LightMode) {
                Grow();
                Now().Kind = "VERTEX";
                Now().Layer = Fixed(Carried, 114);
                VertexDone = true;
            }
            return false;
        }
        if (code == "11")
            Now().X2 = Coordinate(value);
        if (code == "21")
            Now().Y2 = Coordinate(value);
        if (code == "30")
            Now().Z1 = Coordinate(value);
        if (code == "31")
            Now().Z2 = Coordinate(value);
        if (code == "38")
            header.Elevation = Coordinate(value);
        if (code == "39")
            header.Thickness = Coordinate(value);
        if (IsOneOf(code, {"40", "12"}))
            Before().Radius = Coordinate(value);
        if (IsOneOf(code, {"41", "13"}))
            Before().EndWidth = Coordinate(value);
        if (code == "42")
            Before().Bulge = Coordinate(value);
        if (IsOneOf(code, {"50", "22"}))
            Now().StartAngle = Coordinate(value);
        if (IsOneOf(code, {"51", "23"}))
            Now().EndAngle = Coordinate(value);
        if (code == "62")
            LastColor = header.Color = Rounded(Val(value));
        if (code == "70")
            header.Flags = Rounded(Val(value));
        if (IsOneOf(code, {"72", "73"}))
            Now().TextAlign = Rounded(Now().TextAlign + Val(value));
        if (code == "75")
            Now().TextAlign = Rounded(Val(value));
        if (code == "66")
            Now().FollowFlag = Rounded(Val(value));
        if (code == "210")
            Nx = Coordinate(value);
        if (code == "220")
            Ny = Coordinate(value);
        if (code == "230")
            Nz = Coordinate(value);
        if (IsOneOf(code, {"210", "220", "230"}))
            Pending = true;
        return false;
    }

    static inline const std::string Marker = "\x01";
    std::vector<std::string> Lines;
    PlainDrawing Drawing;
    std::size_t Current = 1;
    std::string Carried, CarriedSide;
    bool SideCarried = false, LightMode = false, VertexDone = false, Pending = false, Title = false;
    bool EndsPolyline = false;
    Single Nx = 0, Ny = 0, Nz = 0;
    Int LastColor = 0;
};

} // namespace kv::test

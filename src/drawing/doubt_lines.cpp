// The rules for one depth. Relies on the panel, the unit and the control; leaves lines in the report alone.
#include "drawing/doubt_lines.h"

#include <algorithm>
#include <cmath>

#include "drawing/layer_rules.h"
#include "platform/text.h"
#include "state/drawn_entities.h"
#include "state/drawn_names.h"
#include "state/report.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr Int Evolution = 2;             // control system
constexpr double FirstVariable = 200;    // of that control: from here on a depth names a variable
constexpr double NoDepth = 0.005;        // mm; no tool cuts less
constexpr double SamePlane = 0.01;       // mm, between a depth and the panel's lower face
constexpr double HighestCharacter = 255; // a code is one character

// A cut-out goes through with 1 to 3 mm in the spoil board. The boards that machines have are 6 to 25 mm
// thick, so 5 mm cuts no table; what goes deeper has another panel's depth or a slip of the pen.
constexpr double UsualThrough = 5; // mm

void TellBeyond(const DoubtedWork& work, double depth, double size)
{
    const double over = Millimetres(depth - size);
    if (!(size > 0) || !(over > SamePlane))
        return;
    TellDoubt(over > UsualThrough + SamePlane ? Message::DepthBeyondPanel : Message::DepthThroughPanel, work,
              {{"over", LengthText(over)}, {"size", LengthText(Millimetres(size))}});
}

bool TellNoDepth(const DoubtedWork& work, double depth)
{
    if (!IsNoDepth(depth))
        return false;
    TellDoubt(Message::DepthOfNothing, work);
    return true;
}

MessageValue DepthValue(double depth)
{
    return {"depth", ShownNumber(depth)};
}

} // namespace

std::string ShownNumber(double value)
{
    constexpr double highest = 3e38; // that a Single holds
    return std::isnan(value) ? "?" : PlainText(static_cast<Single>(std::clamp(value, -highest, highest)));
}

std::string PlaceText(double x, double y)
{
    constexpr double steps = 10000;
    const auto text = [](double value) { return ShownNumber(std::round(value * steps) / steps); };
    return "X" + text(x) + " Y" + text(y);
}

double Millimetres(double length)
{
    return length * static_cast<double>(Run.UnitFactor);
}

bool IsNoDepth(double depth)
{
    return std::fabs(Millimetres(depth)) < NoDepth;
}

std::string LengthText(double millimetres)
{
    constexpr double steps = 100;
    return ShownNumber(std::round(millimetres * steps) / steps);
}

std::string LayerAsDrawn(Long drawn)
{
    const Long first = drawn > 0 ? drawn : drawn < 0 ? EntitiesOf(drawn).front() : 0;
    return std::string(NameOfNumber(LookOf(first).Layer));
}

void TellDoubt(Message number, const DoubtedWork& work, MessageValues values)
{
    if (work.Drawn == 0)
        return;
    MessageValues all = {
        {"layer", LayerAsDrawn(work.Drawn)}, {"work", work.Name}, {"place", PlaceText(work.X, work.Y)}};
    all.insert(all.end(), values.begin(), values.end());
    Tell(number, WithPlace(std::move(all), work.Drawn));
}

// ZA to ZI, ZD and ZR are written on purpose; a number of 90 and more may be a slip of the pen.
bool IsWrittenAsCode(Long drawn)
{
    constexpr std::string_view codes = "ABCDEFGI\xDF"; // the last one is that of ZR by now
    const std::vector<Long> entities = EntitiesOf(drawn);
    const std::string layer = UpperCase(NameOfNumber(LookOf(entities.front()).State));
    const Long depth = Find(FirstCodePosition(layer), layer, "Z");
    const std::string_view next = depth == 0 ? std::string_view() : Mid(layer, depth + 1, 1);
    return !next.empty() && codes.find(next.front()) != std::string_view::npos;
}

bool TellDepthCode(const DoubtedWork& work, double depth)
{
    if (!(depth >= FirstDoubtedCode) || work.Drawn == 0)
        return false;
    if (Run.ControlType == Evolution) {
        if (depth < FirstVariable)
            return false;
        TellDoubt(IsWrittenAsCode(work.Drawn) ? Message::DepthByVariable : Message::DepthOfVariable, work,
                  {DepthValue(depth), {"variable", "R" + ShownNumber(depth - FirstVariable)}});
        return true;
    }
    const double code = std::nearbyint(depth);
    if (code > HighestCharacter) // refused by the writer
        return false;
    TellDoubt(IsWrittenAsCode(work.Drawn) ? Message::DepthByCode : Message::DepthOfCode, work,
              {DepthValue(depth), {"code", "=" + std::string(1, static_cast<char>(static_cast<int>(code)))}});
    return true;
}

void TellDepthDoubts(const DoubtedWork& work, double depth, double size)
{
    if (!TellDepthCode(work, depth))
        TellLengthDoubts(work, depth, size);
}

void TellLengthDoubts(const DoubtedWork& work, double depth, double size)
{
    if (TellNoDepth(work, depth))
        return;
    if (depth >= FirstDoubtedCode)
        TellDoubt(Message::DepthOf90, work, {DepthValue(depth)});
    TellBeyond(work, depth, size);
}

} // namespace kv

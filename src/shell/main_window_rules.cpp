// The main window without its toolkit: where its parts stand for a given inner size, what the unit
// switch does to the default measures, which boxes exclude each other. Relies on the settings, which
// are the controls' values; leaves them changed for the window to show.
#include "shell/main_window_rules.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "state/settings.h"

namespace kv {

namespace {

// Twips.
constexpr Long SideMargin = 150;
constexpr Long SettingsMargin = 605; // below the area above the default settings, when these show
constexpr Long BottomMargin = 750;   // the same without them
constexpr Long GridGap = 240;
constexpr Long StatusDrop = 500, ExitDrop = 600;
constexpr Long ListWidth = 4695;
constexpr Long ReportLeft = 4935;
constexpr Long WidestReport = 5995;

constexpr int WidthsCode = 1, ToggleCode = 3;

struct Arrangement {
    bool Ready = false;
    int LastCode = 0;
    MainWindowLayout Layout;
};
Arrangement Last;

void LayWidths(const MainWindowSizes& sizes, MainWindowLayout& layout)
{
    layout.ListWidth = ListWidth;
    layout.ReportLeft = ReportLeft;
    const Long rest = sizes.InnerWidth - SideMargin - ReportLeft; // within Frame1
    layout.ReportWidth = std::clamp(rest - SideMargin, Long{0}, WidestReport);
    if (sizes.ReportShown)
        return;
    layout.ListWidth += layout.ReportWidth;
    layout.ReportWidth = 0;
}

MainWindowLayout LayOut(const MainWindowSizes& sizes)
{
    MainWindowLayout layout;
    LayWidths(sizes, layout);
    layout.FrameWidth = std::max(Long{0}, sizes.InnerWidth - SideMargin);
    layout.Frame3Left = std::max(Long{0}, layout.FrameWidth - sizes.Frame3Width);
    layout.SettingsShown = Config.FormState == 0;
    const Long below = layout.SettingsShown ? sizes.Frame2Height + SettingsMargin : BottomMargin;
    layout.UpperBottom = std::max(Long{0}, sizes.InnerHeight - below);
    layout.GridHeight =
        std::max(Long{0}, layout.UpperBottom - sizes.GridTop - GridGap / 2 - sizes.StatusHeight);
    layout.StatusTop = layout.GridHeight + StatusDrop;
    layout.ExitTop = layout.GridHeight + ExitDrop;
    return layout;
}

// Two decimals, half away from zero, on the exact value of the number whose digits are printed.
double RoundedToCents(double value)
{
    constexpr double wholeFrom = 1e7; // a printed Single has no decimals from here on
    const double magnitude = std::fabs(value);
    if (magnitude >= wholeFrom)
        return value;
    const double scaled = magnitude * 100;
    const double lost = std::fma(magnitude, 100, -scaled); // what the product above rounded away
    const double whole = std::floor(scaled);
    const double part = scaled - whole;
    const bool up = part > 0.5 || (part == 0.5 && lost >= 0);
    return std::copysign((whole + (up ? 1 : 0)) / 100, value);
}

// A measure that no Single holds is left as it stands.
void SwitchMeasure(std::string& field, Single factor)
{
    const double product = Val(field) * factor;
    if (!(std::fabs(product) <= std::numeric_limits<Single>::max()))
        return;
    const std::string printed = PlainText(ToSingle(product));
    const std::string rounded = PlainText(ToSingle(RoundedToCents(Val(printed))));
    field = (rounded[0] == '-' ? "" : " ") + rounded;
}

} // namespace

MainWindowLayout ArrangeMainWindow(int code, const MainWindowSizes& sizes)
{
    const bool repeated = code == WidthsCode && Last.LastCode == WidthsCode;
    if (!Last.Ready || repeated) {
        Last.Ready = true;
        MainWindowLayout kept = Last.Layout;
        kept.Applies = false;
        return kept;
    }
    Last.LastCode = code;
    if (code == WidthsCode) {
        LayWidths(sizes, Last.Layout);
        return Last.Layout;
    }
    if (code == ToggleCode)
        Config.FormState = Config.FormState == 0 ? Int{-1} : Int{0};
    Last.Layout = LayOut(sizes);
    return Last.Layout;
}

void ForgetMainWindowLayout()
{
    Last = Arrangement{};
}

void SwitchUnits()
{
    const bool toInch = Config.Metric == "Metric";
    Config.Metric = toInch ? "Inch" : "Metric";
    const Single factor = ToSingle(toInch ? 1 / 25.4 : 25.4);
    for (std::string* const field :
         {&Config.LeadLength, &Config.LeadRampHeight, &Config.OffsetX, &Config.OffsetY, &Config.OffsetZ})
        SwitchMeasure(*field, factor);
}

// Any click clears the other box, one that switches its own box off too.
void ClickHbdGlue(bool on)
{
    Config.HBDGlue = on ? 1 : 0;
    Config.HBDDowel = 0;
}

void ClickHbdDowel(bool on)
{
    Config.HBDDowel = on ? 1 : 0;
    Config.HBDGlue = 0;
}

bool EvolutionFramesShown()
{
    return SelectedSystem() == 2;
}

} // namespace kv

// Rules of the main window that need no toolkit: its layout in twips, the unit switch, the boxes that
// clear each other, the frames of each control system.
#pragma once

#include "platform/numbers.h"

namespace kv {

// Sizes that the window knows and the layout needs, in twips.
struct MainWindowSizes {
    Long InnerWidth = 0, InnerHeight = 0;
    Long Frame2Height = 0, Frame3Width = 0, StatusHeight = 0, GridTop = 0; // the grids' top within Frame1
    bool ReportShown = true;
};

struct MainWindowLayout {
    Long FrameWidth = 0;       // of Frame1 and Frame2
    Long Frame3Left = 0;       // within Frame2
    bool SettingsShown = true; // Frame2 and Frame3
    Long GridHeight = 0;
    Long ListWidth = 0, ReportLeft = 0, ReportWidth = 0;
    // Within Frame1. Both hang below the grids: 500 and 600 added to the measure that gives the grids
    // their height, so that the status frame ends about where the area above the default settings does
    // and the button stands on the height of the meters.
    Long StatusTop = 0, ExitTop = 0;
    Long UpperBottom = 0; // of the area above the default settings
    bool Applies = true;  // false: the window keeps what it has
};

// Code 1: widths alone (the layout differs from the last one only there), 3: toggles FormState first, 4:
// as it stands. No length is below 0. The first call of all only marks the window as ready, and code 1
// behind code 1 changes nothing.
MainWindowLayout ArrangeMainWindow(int code, const MainWindowSizes& sizes);
// A window that is made anew: its first call is the first of all again.
void ForgetMainWindowLayout();

// MetIn: Metric to Inch and back, with the five default measures. Not exact, and meant so.
void SwitchUnits();

// A click on the boxes of the HBD programs.
void ClickHbdGlue(bool on);
void ClickHbdDowel(bool on);

// Whether the frames of the Genesis Evolution (EvOptFr, EvOptSelFr) show, instead of FrameOpt and DRAlt.
bool EvolutionFramesShown();

} // namespace kv

// What has become of each drawing of the shop: written, changed since, failed, or its program replaced by
// another drawing's. Noted at the end of each job of the window and of the unattended mode, and kept in a
// file beside the settings.
#pragma once

#include <string>
#include <string_view>

#include "platform/directory.h"

namespace kv {

constexpr std::string_view StatesFile = "KVSTATES.TXT"; // beside KV90.INI

enum class DrawingIs {
    Failed,
    WithoutProgram,
    Changed,
    New,
    Replaced,
    Written
}; // as a list sorted by state has them

struct DrawingState {
    DrawingIs Is = DrawingIs::New;
    std::string Text; // CP1252: "written 03:10", "changed", "failed: ...", "no program", "same program as
                      // ..."; of new ones none
};

// Size and local time of the last writing, as one text: two of a file are equal while it is not rewritten.
std::string StampOfDrawing(const DirectoryEntry& entry);
// Of the drawing of that full path, as it lies on the disk now.
DrawingState StateOfDrawing(std::string_view path, std::string_view stamp);

// Of the file as it lies on the disk; empty where none is there.
std::string StampOnDisk(const std::string& drawing);

// The job of the drawing has ended. `before`: its stamp before the job. Of a drawing that was saved meanwhile
// it is not known what was converted.
void NoteStateOfJob(const std::string& drawing, const std::string& before);
// Drawings of the run whose files could not be placed after all have failed.
void NoteLateFailures();
void ForgetDrawingStates(); // as before the start
// Reads the file at program start; what cannot be read is reported.
void LoadDrawingStates();
// Writes what is not written yet. Large files wait for half a minute between two writings, unless `now`.
void KeepDrawingStates(bool now);
// Counts the changes, for whoever shows states.
unsigned long StatesNoted();

} // namespace kv

// The Winner90 wants binary files beside its programs, and only its own editor makes them, by hand
// alone. So this types what a hand would: opens each program of the list and saves it. Relies on the
// list of written programs and on the keystrokes of the platform; leaves the files to the editor.
#include "toolchain/binaries.h"

#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/ini_file.h"
#include "platform/keys.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "toolchain/viewers.h"
#include "writers/program_writers.h"

namespace kv {

namespace {

constexpr double FocusSeconds = 0.1;  // between two programs, and behind the editor's end
constexpr double LastSaveSeconds = 3; // the editor still compiles the last program

bool MayMakeBinaries()
{
    return Config.MakeBinaries != 0 && Holds(UpperCase(ExeFolder), "WINNER90") && !ProgramList.empty();
}

bool GoOnAfterFailedFiles()
{
    if (Run.FailedFiles.size() < 2) // the first failed file stands at index 1
        return true;
    return AskYesNo("Some files failed to process.\r\nDo you wish to Continue with Binaries?", ProductName);
}

// Opens and saves one program. The name goes as it stands: "+", "^", "%" and "{" in it are taken as
// keys to hold.
void TypeProgram(const std::string& name)
{
    SendKeystrokes("\x0FYN+{TAB}" + name, true);
    SendKeystrokes("\r", true);
    SendKeystrokes("\r", true);
    SendKeystrokes("^S\rN", true);
}

// The first program from `start` on behind which a window of this process had the focus, so that keys
// went astray; the size of the list when there was none.
std::size_t TypePrograms(const std::vector<std::string>& programs, std::size_t start)
{
    for (std::size_t i = start; i < programs.size(); ++i) {
        TypeProgram(programs[i]);
        const Long titleLength = FocusedTitleLength(); // 0: the editor has the focus
        PauseSeconds(FocusSeconds);
        if (titleLength != 0)
            return i;
    }
    return programs.size();
}

bool GoOnBehind(const std::string& name)
{
    return AskYesNo("Binary Processing was stopped at " + name + "\r\nDo You Wish to Continue Processing?",
                    ProductName);
}

} // namespace

void MakeBinaries()
{
    if (!MayMakeBinaries() || !GoOnAfterFailedFiles())
        return;
    // The editor's settings are read and their number is used nowhere.
    std::string unused;
    static_cast<void>(
        ReadProfileString("edigraf-edit", "PincoPalla", "END.-", 80, ExeFolder + "TPA.INI", unused));
    // Into the current folder, not the control's: no folder was ever given here.
    static_cast<void>(WriteProfileString("edigraf-exec", "Exec", "0", FromHostPath("TPA.INI")));
    PauseSeconds(Val(Config.GraphicDelay));

    const std::vector<std::string> programs = ProgramList; // whatever the events do meanwhile
    for (std::size_t start = 0; start < programs.size();) {
        const Long handle = LaunchProgram({ExeFolder + "Edigraf.exe"});
        const std::size_t stopped = TypePrograms(programs, start);
        if (stopped == programs.size()) {
            PauseSeconds(LastSaveSeconds);
            SendKeystrokes("%{F4}", true);
        }
        WaitForExternalProgram(handle);
        PauseSeconds(FocusSeconds);
        const bool moreToDo = stopped + 1 < programs.size();
        if (!moreToDo || Shell.Ended || !GoOnBehind(programs[stopped]))
            return;
        start = stopped + 1;
    }
}

} // namespace kv

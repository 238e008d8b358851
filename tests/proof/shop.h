// A converter for one control whose programs are read back.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "machine/cnc_reader.h"
#include "machine/evolution_reader.h"
#include "machine/hbd_reader.h"
#include "machine/text_lines.h"
#include "platform/paths.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/proof/deviations.h"
#include "support/proof/tame_panels.h"
#include "support/scene.h"

namespace kv::test {

// The tool of layers that name no radius, in millimetres.
constexpr double UnnamedRadius = 3;

struct Shop {
    Scene Home;
    Control For;

    explicit Shop(Control control) : For(control)
    {
        Config.PrecisionMetric = "5"; // rounding takes nothing of the tolerance
        Config.LineLimit = "9999";    // in one piece
        kv::Run.ControlType = static_cast<Int>(control);
        if (control == Control::Evolution)
            Home.Write("EvHeader.dat", "HEAD\r\n\r\n::SIDE=\r\n\r\nEND\r\n");
    }
    // Drills one edge of each panel; no bores of the face.
    void AddHorizontalMachine() const
    {
        std::filesystem::create_directories(Home.Folder / "hbd");
        Config.HBDDestinationPath = FromHostPath((Home.Folder / "hbd").string() + "/");
        Config.HBDVBoreLimit = "0";
        Config.MakeHBD = 1;
        SetHbdAvailable(true);
        Home.Write(
            "KVHBD.cfg",
            "Horizontal\t5\t1\t0\r\nHorizontal\t6\t1\t0\r\nHorizontal\t8\t1\t0\r\nHorizontal\t10\t1\t0\r\n"
            "Groove\t4\t0\t0\r\n");
    }
    // The corner is the one that the drawing's border names.
    MachineSteps StepsOf(const std::string& drawing, const Corner& origin = {})
    {
        EXPECT_TRUE(Home.Convert(drawing)) << Home.ReportText();
        return StepsOfTheProgram(origin);
    }
    // Where nothing of the drawing can be machined, there is no program.
    MachineSteps StepsOf(const TamePanel& panel)
    {
        if (!AsksForNothing(panel.Asked, panel.Model))
            return StepsOf(panel.Drawing, panel.Origin);
        EXPECT_TRUE(Home.Convert(panel.Drawing)) << Home.ReportText();
        EXPECT_FALSE(HasProgram()) << Home.ReportText();
        MachineSteps none; // on the same panel
        none.Length = panel.Model.Length;
        none.Width = panel.Model.Width;
        none.Thickness = panel.Model.Thickness;
        return none;
    }

  private:
    bool HasProgram() const
    {
        if (For == Control::Cnc90)
            return Home.HasProgram();
        return std::filesystem::exists(Home.Programs / (For == Control::Evolution ? "DOOR.CNC" : "DOOR"));
    }
    MachineSteps StepsOfTheProgram(const Corner& origin) const
    {
        if (For == Control::Evolution)
            return ReadEvolution(LinesOf(Home.Read(Home.Programs / "DOOR.CNC")), {.From = origin});
        if (For == Control::Genesis)
            return ReadCnc(LinesOf(Home.Read(Home.Programs / "DOOR")));
        return ReadCnc(Home.Program());
    }
};

inline const char* ShownControl(Control control)
{
    return control == Control::Evolution ? "Evolution" : control == Control::Genesis ? "GENESIS" : "CNC90";
}

// The deviations for which neither the drawing nor the report gives a reason.
inline std::vector<Deviation> WrongIn(const std::vector<AskedCut>& asked, const DrawnPanel& panel,
                                      const MachineSteps& steps, const std::vector<std::string>& report)
{
    std::vector<Deviation> wrong;
    for (Deviation& deviation : DeviationsOf(asked, panel, steps))
        if ((ReasonOf(deviation) == Doubt::None || IsSilent(deviation, report)) &&
            !IsTold(deviation, report, CutsOf(deviation.Feature, asked, steps)))
            wrong.push_back(std::move(deviation));
    return wrong;
}

} // namespace kv::test

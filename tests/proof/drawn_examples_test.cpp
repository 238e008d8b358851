// The drawings of examples/ and of the guide's pictures on each control: the router follows what is drawn,
// on its side, as deep as asked, and cuts nothing else.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "proof/shop.h"
#include "support/proof/drawn_routes.h"
#include "support/proof/picture.h"
#include "support/source_files.h"

namespace kv::test {
namespace {

// Where a layer leaves its tool's radius to the control, no program can be drawn: here it has one.
std::string WithRadius(std::string drawing)
{
    for (const std::string side : {"_L_", "_R_"})
        for (std::size_t at = drawing.find(side); at != std::string::npos; at = drawing.find(side, at + 1))
            drawing.insert(at + 2, "3");
    return drawing;
}

struct DrawnExample {
    const char* File;
    int Features; // that the router makes
};

class DrawnExamples : public testing::TestWithParam<std::tuple<DrawnExample, Control>> {};

TEST_P(DrawnExamples, AreCutAsDrawn)
{
    const auto& [example, control] = GetParam();
    const std::string drawing = WithRadius(FileBytes(SourceFolder / example.File));
    DrawnPanel panel = PanelDrawnIn(drawing, UnnamedRadius);
    const std::vector<AskedCut> asked = AskedCuts(panel);
    EXPECT_EQ(static_cast<int>(asked.size()), example.Features);
    Shop shop(control);
    const MachineSteps steps = shop.StepsOf(drawing);
    panel.Bores = steps.Bores; // this reading is of the router's entities alone
    for (const Deviation& deviation : WrongIn(asked, panel, steps, shop.Home.Lines))
        ADD_FAILURE() << example.File << ", " << ShownControl(control) << ": " << deviation.Text;
    KeepPicture(std::filesystem::path(example.File).stem().string() + "_" + ShownControl(control), panel,
                asked, steps);
}

INSTANTIATE_TEST_SUITE_P(
    All, DrawnExamples,
    testing::Combine(testing::Values(DrawnExample{"examples/drawings/routed_door.dxf", 5},
                                     DrawnExample{"examples/drawings/countertop.dxf", 4},
                                     DrawnExample{"examples/drawings/nested_sheet.dxf", 64},
                                     DrawnExample{"examples/drawings/edge_views.dxf", 5},
                                     DrawnExample{"examples/drawings/t_lines.dxf", 1},
                                     DrawnExample{"docs/pictures/chain.dxf", 2},
                                     DrawnExample{"docs/pictures/circle_pocket.dxf", 2},
                                     DrawnExample{"docs/pictures/depth_passes.dxf", 1},
                                     DrawnExample{"docs/pictures/leads_border.dxf", 5},
                                     DrawnExample{"docs/pictures/leads_closed.dxf", 5},
                                     DrawnExample{"docs/pictures/order.dxf", 4},
                                     DrawnExample{"docs/pictures/rectangle_pocket.dxf", 2}),
                     testing::Values(Control::Cnc90, Control::Genesis, Control::Evolution)));

} // namespace
} // namespace kv::test

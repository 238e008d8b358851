// Drawings with one mistake each, as designers make them: the report has a line that leads to the mistake,
// with its layer and, where the line is of one entity, the entity's line in the file and its handle.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "job/job_driver.h"
#include "platform/paths.h"
#include "proof/shop.h"
#include "state/report.h"
#include "state/settings.h"
#include "support/source_files.h"

namespace kv::test {
namespace {

const std::filesystem::path MistakeFolder = SourceFolder / "examples" / "mistakes" / "drawings";

struct Mistake {
    const char* Name;
    std::vector<int> Numbers; // of the lines that must be there
    const char* Layer = "";   // that the first of them names
    bool NamesEntity = false; // by line and handle
};

std::vector<MessageLine> KeptLines;

// What a file of the drawings is called, by its mistake.
std::map<std::string, std::string> FilesOfMistakes()
{
    std::map<std::string, std::string> files;
    std::ifstream index(MistakeFolder / "mistakes.txt");
    std::string row;
    while (std::getline(index, row)) {
        const std::size_t first = row.find(' ');
        const std::size_t second = row.find_first_of(" \r", first + 1);
        files[row.substr(first + 1, second - first - 1)] = row.substr(0, first);
    }
    return files;
}

std::string MistakenDrawing(const std::string& name)
{
    return FileBytes(MistakeFolder / (FilesOfMistakes().at(name) + ".dxf"));
}

std::vector<MessageLine> LinesOfMistake(const std::string& name)
{
    Shop shop(name == "optimizer_with_evolution" ? Control::Evolution : Control::Cnc90);
    if (name == "alternation_loses_bores")
        Config.DRAlternate = "1";
    KeptLines.clear();
    const auto before = Report.ShowRow;
    Report.ShowRow = [](const ReportRow& row) { KeptLines.push_back(row.Line); };
    std::string job = FromHostPath(shop.Home.Write("PART.DXF", MistakenDrawing(name)).string());
    ProcessDrawingFile(job);
    ReportMessage(2, "");
    Report.ShowRow = before;
    return KeptLines;
}

const MessageLine* FindNumber(const std::vector<MessageLine>& lines, int number)
{
    const auto found = std::find_if(lines.begin(), lines.end(), [number](const MessageLine& line) {
        return static_cast<int>(line.Number) == number;
    });
    return found == lines.end() ? nullptr : &*found;
}

std::string ValueText(const MessageLine& line, std::string_view name)
{
    const MessageValue* const value = FindValue(line, name);
    return value == nullptr ? std::string("(none)") : value->Text;
}

// The line of the file with the kind of the entity at fault, which stands two above its handle's pair.
std::string LineOfMistake(const std::string& drawing)
{
    const std::vector<std::string> lines = LinesOf(drawing);
    const auto handle = std::find_if(lines.begin(), lines.end(),
                                     [](const std::string& line) { return line.starts_with("BAD1"); });
    return std::to_string(handle - lines.begin() + 1 - 2);
}

class OneMistake : public testing::TestWithParam<Mistake> {};

TEST_P(OneMistake, IsLedToByTheReport)
{
    const Mistake& mistake = GetParam();
    const std::vector<MessageLine> lines = LinesOfMistake(mistake.Name);
    for (const int number : mistake.Numbers)
        EXPECT_NE(FindNumber(lines, number), nullptr) << number;
    const MessageLine* const first = FindNumber(lines, mistake.Numbers.front());
    ASSERT_NE(first, nullptr);
    if (*mistake.Layer != '\0') {
        EXPECT_EQ(ValueText(*first, "layer"), mistake.Layer);
    }
    if (mistake.NamesEntity) {
        EXPECT_EQ(ValueText(*first, "handle"), "BAD1");
        EXPECT_EQ(ValueText(*first, "line"), LineOfMistake(MistakenDrawing(mistake.Name)));
    }
}

const Mistake Mistakes[] = {
    {"depth_of_zero", {330}, "VBORE_D5", true},
    {"too_deep", {334}, "VBORE_D5_Z31", true},
    {"z_typed_as_120", {332}, "VBORE_D5_Z120", true},
    {"off_the_panel", {340}, "VBORE_D5_Z13", true},
    {"route_off_the_panel", {341}, "ROUTE1_Z8_T71_D12", true},
    {"misspelt_bore", {830}, "VBOR_D5_Z13", true},
    {"misspelt_groove", {830}, "GROVE_Z8", true},
    {"misspelt_route", {830}, "RUOTE1_Z8_T71_D12", true},
    {"layer_of_120_letters", {217, 330}, "", true},
    {"bore_of_two_arcs", {811}, "VBORE_D35_Z13", true},
    {"bore_as_ellipse", {811}, "VBORE_D35_Z13", true},
    {"bore_as_block", {811}, "VBORE_D35_Z13", true},
    {"spline_on_a_route", {212}, "ROUTE1_Z8_T71_D12", true},
    {"block_on_layer_0", {824}, "0", true},
    {"contour_open_with_r", {351}, "ROUTE2_Z19_T71_R6_LD20"},
    {"line_drawn_twice", {352}, "ROUTE1_Z8_T71_D12", true},
    {"route_without_tool", {350}, "ROUTE1_Z8", true},
    {"tapered_polyline", {214}, "ROUTE1_Z8_T71_D12", true},
    {"lead_longer_than_contour", {462}, "ROUTE2_Z19_T71_L6_LD200", true},
    {"negative_tool", {401}, "ROUTE2_Z8_T-71", true},
    {"line_of_no_length", {207}, "ROUTE1_Z8_T71_D12", true},
    {"border_below_zero", {320}, "BORDER_Z19", true},
    {"border_open", {326, 303, 304, 306}, "BORDER_Z19"},
    {"border_with_a_stray_line", {326, 304, 303, 306}, "BORDER_Z19", true},
    {"paper_space_frame", {323, 305, 306}, "BORDER_Z19", true},
    {"border_on_frozen_layer", {324, 303, 304, 306}, "BORDER_OLD_Z19", true},
    {"no_border", {302, 306}},
    {"panel_solid_without_area", {301, 306}},
    {"no_thickness", {322}, "BORDER", true},
    {"small_metric_part", {321}, "BORDER_Z19", true},
    {"inch_drawing_that_says_mm", {321}, "BORDER_Z0.75", true},
    {"pocket_without_start_mark", {426}, "EXCAV_Z8_T103_R6_K8"},
    {"pocket_without_pitch", {410, 431}, "EXCAV_Z8_T103"},
    {"pocket_outline_open", {411}, "EXCAV_Z8_T103_R6_K8"},
    {"pocket_narrower_than_tool", {421}, "EXCAV_Z8_T103_R6_K8"},
    {"sequence_without_v", {818}, "VBORE_D5_Z13"},
    {"alternation_loses_bores", {822}, "VBORE_D5_Z13"},
    {"optimizer_with_evolution", {312}},
    {"name_of_13_letters", {578}},
    {"name_with_a_folder", {112}},
    {"pts_with_unknown_field", {205, 502}},
    {"text_nocode", {110}},
    {"groove_askew", {813}, "GROOVE_D8_Z8", true},
    {"edge_bore_without_bar", {311}, "HBORE_Z9", true},
    {"name_as_mtext", {850}, "NAME", true},
    {"edge_circle_in_no_view", {815}, "HBORE_Z30", true},
};
INSTANTIATE_TEST_SUITE_P(Each, OneMistake, testing::ValuesIn(Mistakes),
                         [](const auto& named) { return std::string(named.param.Name); });

TEST(OneMistakeOfTwo, TheSecondDrawingOfANameReplacesTheProgramOfTheFirst)
{
    Shop shop(Control::Cnc90);
    EXPECT_TRUE(shop.Home.Convert(MistakenDrawing("same_name_a"), "A.DXF"));
    EXPECT_TRUE(shop.Home.Convert(MistakenDrawing("same_name_b"), "B.DXF"));
    EXPECT_TRUE(std::any_of(shop.Home.Lines.begin(), shop.Home.Lines.end(), [](const std::string& line) {
        return line.find(" is replaced; it was the program of ") != std::string::npos;
    })) << shop.Home.ReportText();
}

TEST(MistakeDrawings, ACommaInALayerIsReadAsAPoint)
{
    Shop shop(Control::Cnc90);
    EXPECT_TRUE(shop.Home.Convert(MistakenDrawing("comma_as_point")));
    const std::vector<std::string> program = shop.Home.Program();
    EXPECT_TRUE(std::any_of(program.begin(), program.end(), [](const std::string& line) {
        return line.find("Z12.5") != std::string::npos;
    })) << shop.Home.ReportText();
}

TEST(MistakeDrawings, AreFortyAndMore)
{
    const std::map<std::string, std::string> files = FilesOfMistakes();
    EXPECT_GE(files.size(), 40U);
    for (const auto& [mistake, file] : files)
        EXPECT_TRUE(std::filesystem::exists(MistakeFolder / (file + ".dxf"))) << mistake;
}

} // namespace
} // namespace kv::test

// Each line of a program that cuts something knows the entities of the drawing that it comes from, and no
// other line does: on all example drawings, for each control.
#include "writers/program_lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "proof/shop.h"
#include "state/drawn_entities.h"
#include "support/dxf.h"
#include "support/source_files.h"

namespace kv::test {
namespace {

struct TracedProgram {
    std::string File;                        // by its host path
    std::vector<std::vector<Long>> Entities; // of each line
};

struct TracedDrawing {
    std::vector<TracedProgram> Programs;
    std::vector<DrawnEntity> Drawn; // from 1
};

TracedDrawing Traced(Shop& shop, const std::string& drawing)
{
    TracedDrawing traced;
    const AtStage look("programs", [&] {
        for (const ProgramTrace& trace : ProgramTraces) {
            TracedProgram program{ToHostPath(trace.Path), {}};
            for (const Long drawn : trace.Drawn)
                program.Entities.push_back(EntitiesOf(drawn));
            traced.Programs.push_back(std::move(program));
        }
        traced.Drawn.assign(DrawnEntities.begin(), DrawnEntities.end());
    });
    EXPECT_TRUE(shop.Home.Convert(drawing)) << shop.Home.ReportText();
    return traced;
}

bool Works(const std::string& line)
{
    static const std::vector<std::string> words{"G81", "G88", "G183", "G184", "G85",  "G86",  "G1G",
                                                "G2G", "G3G", "G37G", "G38G", "G112", "G113", "W#"};
    return std::any_of(words.begin(), words.end(),
                       [&](const std::string& word) { return line.starts_with(word); });
}

std::string Bare(std::string line)
{
    line.erase(0, line.find_first_not_of(" \t"));
    line.erase(line.find_last_not_of(" \r\t") + 1);
    return line;
}

// The value of the first group of that code after an entity's kind.
std::string GroupAfter(const std::vector<std::string>& file, std::size_t kindLine, const std::string& code)
{
    for (std::size_t i = kindLine; i + 1 < file.size() && Bare(file[i]) != "0"; i += 2)
        if (Bare(file[i]) == code)
            return Bare(file[i + 1]);
    return {};
}

std::vector<std::filesystem::path> Examples()
{
    std::vector<std::filesystem::path> all;
    for (const auto& entry : std::filesystem::directory_iterator(SourceFolder / "examples" / "drawings"))
        all.push_back(entry.path());
    std::sort(all.begin(), all.end());
    return all;
}

class ProgramTracesOf : public testing::TestWithParam<Control> {};

TEST_P(ProgramTracesOf, LinesThatWorkNameTheirEntitiesAndOthersNone)
{
    int lines = 0;
    for (const std::filesystem::path& path : Examples()) {
        SCOPED_TRACE(path.filename());
        Shop shop(GetParam());
        shop.AddHorizontalMachine();
        const TracedDrawing traced = Traced(shop, FileBytes(path));
        ASSERT_FALSE(traced.Programs.empty());
        for (const TracedProgram& program : traced.Programs) {
            const std::vector<std::string> text = LinesOf(FileBytes(program.File));
            ASSERT_GE(text.size(), program.Entities.size());
            ASSERT_LE(text.size(), program.Entities.size() + 1); // the end of a program by sides
            bool goesOn = false;                                 // an operation of several lines
            for (std::size_t i = 0; i < program.Entities.size(); ++i) {
                if (text[i].empty()) // in front of a row of bores along Y
                    continue;
                EXPECT_EQ(goesOn || Works(text[i]), !program.Entities[i].empty())
                    << program.File << ": " << text[i];
                goesOn = (goesOn || text[i].starts_with("W#")) && !text[i].ends_with("}W");
                ++lines;
            }
        }
    }
    EXPECT_GT(lines, 500);
}

TEST_P(ProgramTracesOf, EntitiesStandWhereTheirNumbersSay)
{
    const std::set<std::string> kinds{"LINE", "CIRCLE", "ARC", "POLYLINE", "VERTEX", "LWPOLYLINE", "POINT"};
    std::set<Long> seen;
    for (const std::filesystem::path& path : Examples()) {
        SCOPED_TRACE(path.filename());
        Shop shop(GetParam());
        const std::string drawing = FileBytes(path);
        const std::vector<std::string> file = LinesOf(drawing);
        const TracedDrawing traced = Traced(shop, drawing);
        for (const TracedProgram& program : traced.Programs)
            for (const std::vector<Long>& entities : program.Entities)
                for (const Long number : entities) {
                    const DrawnEntity& entity = traced.Drawn.at(static_cast<std::size_t>(number));
                    const auto line = static_cast<std::size_t>(entity.Line);
                    ASSERT_LE(line, file.size());
                    EXPECT_EQ(kinds.count(Bare(file[line - 1])), 1U) << file[line - 1] << ", line " << line;
                    EXPECT_EQ(GroupAfter(file, line, "5"), entity.Handle.Trimmed());
                    seen.insert(entity.Line);
                }
    }
    EXPECT_GT(seen.size(), 100U);
}

INSTANTIATE_TEST_SUITE_P(AllControls, ProgramTracesOf,
                         testing::Values(Control::Cnc90, Control::Genesis, Control::Evolution),
                         [](const auto& named) { return std::string(ShownControl(named.param)); });

// A bore that becomes part of a row, and one that rides along with it.
TEST(ProgramTraces, ARowOfBoresNamesEachOfThem)
{
    Shop shop(Control::Cnc90);
    Config.Optimizer = "1";
    shop.Home.Write("DT.Par", FileBytes(SourceFolder / "examples" / "install" / "DT.Par"));
    std::string bores;
    for (int i = 0; i < 4; ++i)
        bores += Circle("VBORE Z12", 100 + 32 * i, 100, 2.5);
    const TracedDrawing traced = Traced(shop, Drawing(Rectangle("BORDERLL Z19", 0, 0, 600, 400) + bores));
    ASSERT_EQ(traced.Programs.size(), 1U);
    std::set<Long> all;
    for (const std::vector<Long>& entities : traced.Programs[0].Entities)
        all.insert(entities.begin(), entities.end());
    EXPECT_EQ(all.size(), 4U);
}

// What a table of tools or an alternation takes away stands in no line.
TEST(ProgramTraces, ABoreThatTheAlternationDropsIsInNoLine)
{
    Shop shop(Control::Cnc90);
    Config.DRAlternate = "1";
    std::string drawn = Rectangle("BORDERLL Z19", 0, 0, 600, 400);
    for (int i = 0; i < 10; ++i)
        drawn += Circle("VBORE Z12", 50 + 30 * i, 50, 4);
    for (int i = 0; i < 5; ++i)
        drawn += Line("ROUTE_Z5_T10" + std::to_string(i + 1), 100, 100 + 40 * i, 300, 100 + 40 * i);
    const TracedDrawing traced = Traced(shop, Drawing(drawn));
    ASSERT_EQ(traced.Programs.size(), 1U);
    std::set<Long> all;
    for (const std::vector<Long>& entities : traced.Programs[0].Entities)
        all.insert(entities.begin(), entities.end());
    // Four changes, so two bores at a time, and two are left over.
    EXPECT_EQ(all.size(), 13U) << shop.Home.ReportText();
}

} // namespace
} // namespace kv::test

// Makes the benchmarks' drawings. Coordinates come from a fixed sequence, so every run reads the same
// bytes; the text of an entity follows what CAD programs of the year 2010 on put out.
#include "bench_files.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <system_error>

#include "child_process.h"

namespace kv::bench {

namespace fs = std::filesystem;

namespace {

// A plain linear congruence: the same numbers on every machine.
struct Numbers {
    std::uint32_t State = 12345;
    double Grid = 1; // steps to a unit

    double Next(double below)
    {
        State = State * 1664525U + 1013904223U;
        return std::floor(static_cast<double>(State >> 8) / 16777216.0 * below * Grid) / Grid;
    }
};

struct DrawingText {
    std::string Text;
    unsigned Handle = 0x30;

    void Pair(const char* code, std::string_view value)
    {
        Text.append(code).append("\r\n").append(value).append("\r\n");
    }
    // Shortest text that reads back, with a point, as CAD programs print.
    void Pair(const char* code, double value)
    {
        char digits[40];
        const auto written = std::to_chars(digits, digits + sizeof digits, value);
        std::string text(digits, written.ptr);
        if (text.find('.') == std::string::npos)
            text += ".0";
        Pair(code, text);
    }
    void Start()
    {
        Pair("  0", "SECTION");
        Pair("  2", "HEADER");
        Pair("  9", "$ACADVER");
        Pair("  1", "AC1024");
        Pair("  0", "ENDSEC");
        Pair("  0", "SECTION");
        Pair("  2", "ENTITIES");
    }
    void End()
    {
        Pair("  0", "ENDSEC");
        Pair("  0", "EOF");
    }
    void Entity(std::string_view kind, std::string_view layer)
    {
        char digits[16];
        const auto written = std::to_chars(digits, digits + sizeof digits, Handle++, 16);
        Pair("  0", kind);
        Pair("  5", std::string_view(digits, static_cast<std::size_t>(written.ptr - digits)));
        Pair("330", "1F");
        Pair("100", "AcDbEntity");
        Pair("  8", layer);
        Pair(" 62", "     7");
    }
    void Line(std::string_view layer, double x1, double y1, double x2, double y2)
    {
        Entity("LINE", layer);
        Pair("100", "AcDbLine");
        Pair(" 10", x1);
        Pair(" 20", y1);
        Pair(" 30", 0.0);
        Pair(" 11", x2);
        Pair(" 21", y2);
        Pair(" 31", 0.0);
    }
    void Circle(std::string_view layer, double x, double y, double radius)
    {
        Entity("CIRCLE", layer);
        Pair("100", "AcDbCircle");
        Pair(" 10", x);
        Pair(" 20", y);
        Pair(" 30", 0.0);
        Pair(" 40", radius);
    }
    void Rectangle(std::string_view layer, double x, double y, double width, double height)
    {
        Entity("LWPOLYLINE", layer);
        Pair("100", "AcDbPolyline");
        Pair(" 90", "        4");
        Pair(" 70", "     1");
        Pair(" 43", 0.0);
        const double corners[4][2] = {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
        for (const auto& corner : corners) {
            Pair(" 10", corner[0]);
            Pair(" 20", corner[1]);
        }
    }
};

fs::path ScratchRoot()
{
    if (const char* const named = std::getenv("KORVANTI_BENCH_FOLDER"))
        return named;
    std::error_code refused;
    const fs::path memory = "/dev/shm";
    return fs::is_directory(memory, refused) ? memory : fs::temp_directory_path();
}

} // namespace

const fs::path& ScratchFolder()
{
    static const fs::path folder = [] {
        const fs::path made = ScratchRoot() / ("korvanti-bench-" + std::to_string(OwnProcessNumber()));
        fs::create_directories(made);
        return made;
    }();
    return folder;
}

void RemoveScratchFolder()
{
    std::error_code ignored; // what is left is in the temporary folder
    fs::remove_all(ScratchFolder(), ignored);
}

fs::path LargeDrawing(std::size_t bytes, int decimals)
{
    const fs::path path = ScratchFolder() / ("large-" + std::to_string(decimals) + ".dxf");
    if (fs::exists(path))
        return path;
    std::ofstream file(path, std::ios::binary);
    DrawingText drawing;
    Numbers numbers;
    numbers.Grid = std::pow(10, decimals);
    drawing.Start();
    std::size_t written = 0;
    for (int i = 0; written + drawing.Text.size() < bytes; ++i) {
        const double x = numbers.Next(2800), y = numbers.Next(2070);
        if (i % 5 < 2)
            drawing.Line("ROUTE1_Z18_D10_T71", x, y, x + 32, y + 7.25);
        else if (i % 5 < 4)
            drawing.Circle("VBORE_D5_Z12P5_T05", x, y, 2.5);
        else
            drawing.Rectangle("GROOVE_D8_Z9", x, y, 400.125, 8);
        if (drawing.Text.size() < 1000000)
            continue;
        file << drawing.Text;
        written += drawing.Text.size();
        drawing.Text.clear();
    }
    drawing.End();
    file << drawing.Text;
    return path;
}

void WriteTypicalPanel(const fs::path& path)
{
    DrawingText drawing;
    drawing.Start();
    drawing.Rectangle("BORDER_Z19", 0, 0, 2000, 560);
    int entities = 1;
    for (const double rowY : {37.0, 261.0, 299.0, 523.0}) {
        for (int hole = 0; hole < 36; ++hole, ++entities)
            drawing.Circle("VBORE_T05_Z13_S6_FD3000", 440 + 32 * hole, rowY, 2.5);
    }
    for (const double x : {9.5, 1990.5}) {
        for (int dowel = 0; dowel < 10; ++dowel, ++entities)
            drawing.Circle("VBORE_D8_Z12P5", x, 30 + 55 * dowel, 4);
    }
    for (int cup = 0; cup < 5; ++cup, ++entities)
        drawing.Circle("VBORE_D35_Z13_FD1500", 100 + 450 * cup, 22.5, 17.5);
    for (const double y : {545.0, 12.0}) {
        drawing.Line("GROOVE_D8_K4_Z9", 0, y, 2000, y);
        ++entities;
    }
    for (; entities < 200; ++entities) // what the designer drew for the eye
        drawing.Line("DIMENSIONS", 10.0 * entities, 600, 10.0 * entities, 640);
    drawing.End();
    std::ofstream(path, std::ios::binary) << drawing.Text;
}

} // namespace kv::bench

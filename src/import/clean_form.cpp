// Release 12 needs no classes, no objects and no owners, and has all that the converter reads.
#include "import/clean_form.h"

#include <charconv>

#include "platform/numbers.h"

namespace kv {

namespace {

void WriteVariable(PairWriter& writer, std::string_view name, int code, std::string_view value)
{
    writer.Pair(9, name);
    writer.Pair(code, value);
}

void WriteSection(PairWriter& writer, std::string_view name)
{
    writer.Pair(0, "SECTION");
    writer.Pair(2, name);
}

void WriteLineTypes(PairWriter& writer)
{
    writer.Pair(0, "TABLE");
    writer.Pair(2, "LTYPE");
    writer.Pair(70, "1");
    writer.Pair(0, "LTYPE");
    writer.Pair(2, "CONTINUOUS");
    writer.Pair(70, "0");
    writer.Pair(3, "Solid line");
    writer.Pair(72, "65");
    writer.Pair(73, "0");
    writer.Pair(40, "0");
    writer.Pair(0, "ENDTAB");
}

void WriteLayers(PairWriter& writer, const std::set<std::string>& layers)
{
    writer.Pair(0, "TABLE");
    writer.Pair(2, "LAYER");
    writer.Pair(70, WholeText(static_cast<long long>(layers.size())));
    for (const std::string& layer : layers) {
        writer.Pair(0, "LAYER");
        writer.Pair(2, layer);
        writer.Pair(70, "0");
        writer.Pair(62, "7");
        writer.Pair(6, "CONTINUOUS");
    }
    writer.Pair(0, "ENDTAB");
}

} // namespace

void WriteReadingHead(PairWriter& writer, std::string_view units)
{
    if (!units.empty()) {
        WriteSection(writer, "HEADER");
        WriteVariable(writer, "$INSUNITS", 70, units);
        writer.Pair(0, "ENDSEC");
    }
    WriteSection(writer, "ENTITIES");
}

void WriteReadingFoot(PairWriter& writer)
{
    writer.Pair(0, "ENDSEC");
    writer.Pair(0, "EOF");
}

std::string HexText(std::size_t number)
{
    char digits[32];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, number, 16);
    std::string text(digits, end.ptr);
    for (char& c : text)
        c = c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c;
    return text;
}

std::string CleanDrawing(const std::set<std::string>& layers, std::string_view units,
                         std::size_t highestHandle, std::string_view entities)
{
    PairWriter writer;
    WriteSection(writer, "HEADER");
    WriteVariable(writer, "$ACADVER", 1, "AC1009");
    WriteVariable(writer, "$DWGCODEPAGE", 3, "ANSI_1252");
    if (!units.empty())
        WriteVariable(writer, "$INSUNITS", 70, units);
    WriteVariable(writer, "$HANDLING", 70, "1");
    WriteVariable(writer, "$HANDSEED", 5, HexText(highestHandle + 1));
    writer.Pair(0, "ENDSEC");
    WriteSection(writer, "TABLES");
    WriteLineTypes(writer);
    WriteLayers(writer, layers);
    writer.Pair(0, "ENDSEC");
    WriteSection(writer, "ENTITIES");
    writer.Written().Text += entities;
    WriteReadingFoot(writer);
    return std::move(writer.Written().Text);
}

} // namespace kv

// Binary drawings: written here from the pairs of ASCII ones, in both forms, and read back to the same
// programs; cut at each byte, and filled with nonsense.
#include <bit>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>

#include "import/binary_drawing.h"
#include "import/import_scene.h"
#include "platform/run_error.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

template <typename Number> void PutNumber(std::string& bytes, Number number)
{
    char raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    if constexpr (std::endian::native == std::endian::big)
        std::reverse(raw, raw + sizeof raw);
    bytes.append(raw, sizeof raw);
}

// The groups that these drawings have, as the reference of the format lists them.
void PutValue(std::string& bytes, int code, const std::string& value)
{
    if (code >= 10 && code <= 59)
        PutNumber(bytes, std::stod(value));
    else if ((code >= 110 && code <= 149) || (code >= 210 && code <= 239))
        PutNumber(bytes, std::stod(value));
    else if ((code >= 60 && code <= 79) || (code >= 170 && code <= 179) || (code >= 270 && code <= 289) ||
             (code >= 370 && code <= 389))
        PutNumber(bytes, static_cast<std::int16_t>(std::stoi(value)));
    else if (code >= 290 && code <= 299)
        bytes += static_cast<char>(std::stoi(value));
    else if (code >= 90 && code <= 99)
        PutNumber(bytes, static_cast<std::int32_t>(std::stol(value)));
    else
        bytes += value + '\0';
}

std::string BinaryOf(const std::string& ascii, bool wideCodes)
{
    std::string bytes("AutoCAD Binary DXF\r\n\x1a\0", 22);
    std::istringstream lines(ascii);
    std::string code, value;
    while (std::getline(lines, code) && std::getline(lines, value)) {
        if (!value.empty() && value.back() == '\r')
            value.pop_back();
        const int number = std::stoi(code);
        if (number == 999) // binary drawings have no comments
            continue;
        if (wideCodes) {
            PutNumber(bytes, static_cast<std::uint16_t>(number));
        } else if (number < 255) {
            bytes += static_cast<char>(number);
        } else {
            bytes += '\xFF';
            PutNumber(bytes, static_cast<std::uint16_t>(number));
        }
        PutValue(bytes, number, value);
    }
    return bytes;
}

std::string BytesOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

struct ImportBinary : ImportScene {};

TEST_F(ImportBinary, ExamplesInBothBinaryFormsGiveTheirPrograms)
{
    int compared = 0;
    for (const auto& entry :
         fs::directory_iterator(fs::path(KORVANTI_SOURCE_DIR) / "examples" / "drawings")) {
        const std::string ascii = BytesOf(entry.path());
        Place.Convert(ascii);
        const auto programs = TakePrograms(Place);
        if (programs.empty())
            continue;
        for (const bool wide : {false, true}) {
            for (const std::string_view mode : {"plain", "told", "full"}) {
                Config.Import = mode;
                ASSERT_TRUE(Place.Convert(BinaryOf(ascii, wide))) << entry.path() << Place.ReportText();
                EXPECT_EQ(TakePrograms(Place), programs) << entry.path();
                ++compared;
            }
        }
        Config.Import = "";
    }
    EXPECT_GE(compared, 30);
}

TEST_F(ImportBinary, AFileCutAnywhereFailsWithItsByte)
{
    const std::string whole =
        BinaryOf(Drawing(Rectangle("BORDER_Z18", 0, 0, 600, 400) + Circle("VBORE_Z10", 50, 50, 4)), true);
    int failed = 0;
    for (std::size_t length = 22; length < whole.size(); ++length) {
        try {
            ReadBytes(whole.substr(0, length));
        } catch (const RunError& error) {
            ++failed;
            EXPECT_TRUE(error.Cause.starts_with("Binary DXF: the file is cut at byte ") ||
                        error.Cause == "The ENTITIES section has no ENDSEC")
                << error.Cause;
        }
    }
    EXPECT_GT(failed, 300);
}

TEST_F(ImportBinary, AnUnknownGroupIsNamed)
{
    std::string bytes = BinaryOf(Drawing(Circle("VBORE", 1, 1, 4)), true);
    bytes.insert(22 + 2 + 8, std::string("\x51\x01", 2)); // group 337 is a text; 600 is none
    bytes[22 + 2 + 8] = '\x58';
    bytes[22 + 2 + 8 + 1] = '\x02';
    try {
        ReadBytes(bytes);
        FAIL() << "no error";
    } catch (const RunError& error) {
        EXPECT_EQ(error.Cause, "Binary DXF: group code 600 is unknown at byte 34");
    }
}

TEST_F(ImportBinary, ALineEndInATextMakesNoPair)
{
    std::string bytes = BinaryOf(Drawing(TextAt("NAME", 0, 0, "A#B")), true);
    bytes[bytes.find('#')] = '\n';
    const auto records = ReadBytes(bytes);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(TextOf(records[0]), "A B");
}

TEST_F(ImportBinary, NonsenseBehindTheHeadEndsAsOneError)
{
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string bytes("AutoCAD Binary DXF\r\n\x1a\0", 22);
        for (auto length = random() % 200; length > 0; --length)
            bytes += static_cast<char>(random());
        try {
            AsciiOfBinary(bytes);
        } catch (const RunError& error) {
            EXPECT_TRUE(error.Cause.starts_with("Binary DXF: ")) << error.Cause;
        }
    }
}

} // namespace
} // namespace kv::test

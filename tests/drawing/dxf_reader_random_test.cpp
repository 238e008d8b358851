// Thousands of random streams of group pairs, odd codes and values among them: the reader must leave
// what the plain reader leaves, every field of every record, to the last bit.
#include <gtest/gtest.h>

#include <bit>
#include <iterator>
#include <random>

#include "drawing/dxf_reader.h"
#include "drawing/plain_reader.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "state/run.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv::test {
namespace {

class RandomStreams {
  public:
    explicit RandomStreams(unsigned seed) : Random(seed) {}

    std::string Make()
    {
        std::string text = Chance(40) ? "" : "0\nSECTION\n2\nENTITIES\n";
        const std::string end = Chance(3) ? "\r\n" : "\n";
        const int pairs = static_cast<int>(Below(60));
        for (int i = 0; i < pairs; ++i) {
            const std::string code = Code();
            text += Disguised(code) + end + Value(Compact(code)) + end;
        }
        if (!Chance(30))
            text += "0" + end + Pick({"ENDSEC", "endsec", "XENDSECX"}) + end + "0" + end + "EOF";
        return text;
    }

  private:
    std::size_t Below(std::size_t limit) { return Random() % limit; }
    bool Chance(std::size_t inSo) { return Below(inSo) == 0; }
    std::string Pick(const std::vector<std::string>& from) { return from[Below(from.size())]; }

    std::string Code()
    {
        if (Chance(4))
            return "0";
        if (Chance(300))
            return Pick({"", "x", "1.0", "5E", "-", "\t8", "0x0A"});
        return Pick({"1",   "8",   "8",  "8",  "10", "10", "20",   "20",   "20",      "11",  "21",
                     "30",  "31",  "38", "39", "40", "41", "42",   "12",   "22",      "13",  "23",
                     "50",  "51",  "62", "62", "70", "72", "73",   "75",   "66",      "210", "220",
                     "230", "100", "5",  "08", "-1", "+8", "1000", "1070", "1234567", "00",  "62 "});
    }
    std::string Disguised(const std::string& code)
    {
        if (Chance(3))
            return "  " + code;
        if (Chance(20))
            return code + "   ";
        if (Chance(50))
            return code + std::string(1, '\0');
        if (Chance(50) && code.size() > 1)
            return code.substr(0, 1) + " " + code.substr(1);
        return code;
    }
    std::string Value(const std::string& code)
    {
        if (Chance(400))
            return std::string("A\0B", 3);
        if (code == "0")
            return Pick({"LINE",
                         "POLYLINE",
                         "POLYLINE",
                         "VERTEX",
                         "VERTEX",
                         "SEQEND",
                         "SEQEND",
                         "LWPOLYLINE",
                         "LWPOLYLINE",
                         "TEXT",
                         "MTEXT",
                         "CIRCLE",
                         "ARC",
                         "SOLID",
                         "POINT",
                         "INSERT",
                         "lwpolyline",
                         " Line ",
                         "xSEQENDx",
                         "POLYLINESEQEND",
                         "LWPOLYLINESEQEND",
                         "ACAD_PROXY_ENTITY",
                         "CONTEXT TEXT",
                         "",
                         "seqend  ",
                         "A,B"});
        if (code == "8")
            return Pick({"BORDER", "route1z5", "0", " inner blank ", "", "VBORE D5,5", "\xE4\xF6",
                         std::string(120, 'L'), "  ", "info"});
        if (code == "1")
            return Pick({"POST INSTRUCTIONS", "post instructions", "Korvanti Instructions",
                         " POST INSTRUCTIONS", "LEAD OFF", "10,5", ""});
        if (code == "62" || code == "70" || code == "72" || code == "73" || code == "75" || code == "66")
            return Pick({"0", "1", "7", "256", "-3", "2.5", "3.5", "1,5", "", "x", "  12  ",
                         Chance(40) ? "40000" : "4", Chance(40) ? "32767.5" : "32767"});
        if (code == "210" || code == "220" || code == "230")
            return Pick(
                {"0", "1", "-1", "0.5", "-0.5", "0.0", "-0.0", "1.0", "-2.5", Chance(60) ? "99999" : "3"});
        return Pick({"0",
                     "-0",
                     "-0.0",
                     "1",
                     "12.5",
                     "1,5",
                     "  7.25",
                     "7.25  ",
                     "-.5",
                     "+3",
                     "5.",
                     ".",
                     "-",
                     "abc",
                     "",
                     "1e3",
                     "1D-2",
                     "5E",
                     "123456789012345",
                     "1234567890123456",
                     "0.1",
                     "0.12345678901234567",
                     "100.000000000001",
                     "-33.333333333333336",
                     "1 2",
                     "00012.50",
                     Chance(100) ? "1e39" : "9",
                     "1e-60",
                     "16777217",
                     "\t5"});
    }

    std::mt19937 Random;
};

std::uint32_t Bits(Single value)
{
    return std::bit_cast<std::uint32_t>(value);
}

void ExpectSame(const DxfEntity& entity, const PlainEntity& plain)
{
    EXPECT_EQ(entity.Kind.Trimmed(), plain.Kind);
    EXPECT_EQ(entity.Layer.Trimmed(), plain.Layer);
    EXPECT_EQ(entity.Side.Trimmed(), plain.Side);
    EXPECT_EQ(entity.TextIndex, plain.TextIndex);
    const Single numbers[] = {entity.X1,      entity.Y1,       entity.X2,        entity.Y2,
                              entity.Z1,      entity.Z2,       entity.Elevation, entity.Thickness,
                              entity.Radius,  entity.EndWidth, entity.Bulge,     entity.StartAngle,
                              entity.EndAngle};
    const Single plainNumbers[] = {plain.X1,      plain.Y1,       plain.X2,        plain.Y2,
                                   plain.Z1,      plain.Z2,       plain.Elevation, plain.Thickness,
                                   plain.Radius,  plain.EndWidth, plain.Bulge,     plain.StartAngle,
                                   plain.EndAngle};
    for (std::size_t i = 0; i < std::size(numbers); ++i)
        EXPECT_EQ(Bits(numbers[i]), Bits(plainNumbers[i])) << "number " << i << ": " << numbers[i];
    EXPECT_EQ(entity.Color, plain.Color);
    EXPECT_EQ(entity.Flags, plain.Flags);
    EXPECT_EQ(entity.TextAlign, plain.TextAlign);
    EXPECT_EQ(entity.FollowFlag, plain.FollowFlag);
    EXPECT_EQ(entity.ExtrusionZ, plain.ExtrusionZ);
    EXPECT_EQ(entity.Reserved.Trimmed(), "");
}

TEST(RandomReader, RandomStreamsGiveTheRecordsOfThePlainReader)
{
    const Scene home;
    int whole = 0, failed = 0, without = 0;
    std::size_t records = 0;
    for (int round = 1; round <= Rounds(4000); ++round) {
        const std::string text = RandomStreams(Seed(static_cast<unsigned>(round))).Make();
        const PlainDrawing plain = PlainReader(text).Read();
        kv::Run.InstructionLayer = "BEFORE";
        bool threw = false;
        std::string path;
        try {
            path = FromHostPath(home.Write("READ.DXF", text).string());
            ReadDrawing(path);
        } catch (const RunError&) {
            threw = true;
        }
        ASSERT_EQ(threw, plain.Failed) << RoundName(round) << "\n" << text;
        ASSERT_EQ(path == "~", plain.NoSection) << RoundName(round);
        failed += plain.Failed;
        without += plain.NoSection;
        if (plain.Failed || plain.NoSection)
            continue;
        ++whole;
        EXPECT_EQ(kv::Run.InstructionLayer, plain.HasTitle ? plain.InstructionLayer : "BEFORE");
        EXPECT_EQ(EntityTexts, plain.Texts);
        ASSERT_EQ(static_cast<std::size_t>(Entities.Last()) + 1, plain.Entities.size()) << RoundName(round);
        for (std::size_t i = 0; i < plain.Entities.size(); ++i)
            ExpectSame(Entities[static_cast<Long>(i)], plain.Entities[i]);
        records += plain.Entities.size();
        ASSERT_FALSE(HasFailure()) << RoundName(round) << "\n" << text;
    }
    EXPECT_GT(whole, 2000);
    EXPECT_GT(failed, 200);
    EXPECT_GT(without, 40);
    EXPECT_GT(records, 20000U);
}

} // namespace
} // namespace kv::test

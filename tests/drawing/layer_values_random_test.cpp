// All parameter readers against their plain twin, on random layer names and notes.
#include "drawing/layer_rules.h"

#include <array>
#include <charconv>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "drawing/plain_layer_values.h"
#include "drawing/random_layer_names.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

// Each reader's result as a text, the real one's and the plain twin's.
std::string Exact(float value)
{
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::hex).ptr;
    return {text, end};
}
std::string Exact(int value)
{
    return std::to_string(value);
}
std::string Exact(const std::string& value)
{
    return "\"" + value + "\"";
}

struct ReaderPair {
    const char* Name;
    std::string (*Real)();
    std::string (*Plain)(plain::Reader&);
};

// With what a depth says of the entity's own.
std::string RealDepth()
{
    const std::string depth = Exact(ReadDepth());
    return DepthFromEntity != False ? depth + " entity" : depth;
}
std::string PlainDepth(plain::Reader& reader)
{
    const std::string depth = Exact(reader.Depth());
    return reader.DepthFromEntity ? depth + " entity" : depth;
}

const ReaderPair ReaderPairs[] = {
    {"Depth", RealDepth, PlainDepth},
    {"Diameter", [] { return Exact(ReadDiameter()); }, [](auto& r) { return Exact(r.Diameter()); }},
    {"ToolNumber", [] { return Exact(ReadToolNumber()); }, [](auto& r) { return Exact(r.ToolNumber()); }},
    {"ToolString", [] { return Exact(ReadToolString()); }, [](auto& r) { return Exact(r.ToolString()); }},
    {"Speed", [] { return Exact(ReadSpeed()); }, [](auto& r) { return Exact(r.Speed()); }},
    {"Feed", [] { return Exact(ReadFeed()); }, [](auto& r) { return Exact(r.Feed()); }},
    {"FeedArc", [] { return Exact(ReadFeedArc()); }, [](auto& r) { return Exact(r.FeedArc()); }},
    {"FeedDown", [] { return Exact(ReadFeedDown()); }, [](auto& r) { return Exact(r.FeedDown()); }},
    {"FeedRapid", [] { return Exact(ReadFeedRapid()); }, [](auto& r) { return Exact(r.FeedRapid()); }},
    {"ParamA", [] { return Exact(ReadParamA()); }, [](auto& r) { return Exact(r.ParamA()); }},
    {"ParamB", [] { return Exact(ReadParamB()); }, [](auto& r) { return Exact(r.ParamB()); }},
    {"Group", [] { return Exact(ReadGroup()); }, [](auto& r) { return Exact(r.Group()); }},
    {"Excav", [] { return Exact(ReadExcav()); }, [](auto& r) { return Exact(r.Excav()); }},
    {"LeadIn", [] { return Exact(ReadLeadIn()); }, [](auto& r) { return Exact(r.LeadIn()); }},
    {"RampOut", [] { return Exact(ReadRampOut()); }, [](auto& r) { return Exact(r.RampOut()); }},
    {"RampIn", [] { return Exact(ReadRampIn()); }, [](auto& r) { return Exact(r.RampIn()); }},
    {"PeckDepth", [] { return Exact(ReadPeckDepth()); }, [](auto& r) { return Exact(r.PeckDepth()); }},
    {"OscZ", [] { return Exact(ReadOscZ()); }, [](auto& r) { return Exact(r.OscZ()); }},
    {"ExtraSlot", [] { return Exact(ReadExtraSlot()); }, [](auto& r) { return Exact(r.ExtraSlot()); }},
    {"MCode", [] { return Exact(ReadMCode()); }, [](auto& r) { return Exact(r.MCode()); }},
    {"Comp", [] { return Exact(ReadComp()); }, [](auto& r) { return Exact(r.Comp()); }},
    {"Bottom", [] { return Exact(ReadBottom()); }, [](auto& r) { return Exact(r.Bottom()); }},
    {"GrooveSide", [] { return Exact(ReadGrooveSide()); }, [](auto& r) { return Exact(r.GrooveSide()); }},
};

std::string RealValue(const ReaderPair& reader)
{
    try {
        return reader.Real();
    } catch (const RunError& error) {
        return error.Number == ErrorOverflow ? "overflow" : "error";
    }
}

std::string PlainValue(const ReaderPair& reader, plain::Reader& plain)
{
    try {
        return reader.Plain(plain);
    } catch (const plain::Overflow&) {
        return "overflow";
    }
}

TEST(LayerValuesAtRandom, AgreeWithThePlainTwin)
{
    test::ResetProcess();
    test::RandomNames random(test::Seed(20260415));
    std::array<int, std::size(ReaderPairs)> told{}; // cases in which a reader had something to tell
    for (int i = 0; i < test::Rounds(10000); ++i) {
        std::vector<std::string> names = {random.Layer()};
        const std::string note = random.Note();
        if (i % 8 != 0) { // some names as typed
            plain::Flags flags;
            try {
                plain::Rewrite(names, flags, "", 0);
            } catch (const plain::Overflow&) {
                continue;
            }
        }
        CurrentEntity.Layer = names[0];
        CurrentEntity.NoteText = note;
        plain::Reader plain{note, names[0]};
        for (std::size_t r = 0; r < std::size(ReaderPairs); ++r) {
            const std::string real = RealValue(ReaderPairs[r]);
            ASSERT_EQ(real, PlainValue(ReaderPairs[r], plain))
                << ReaderPairs[r].Name << " of layer [" << names[0] << "] note [" << note << "] "
                << test::RoundName(i);
            told[r] += real != "0" && real != "\"\"" && real != "0 entity" && real != "0p+0" &&
                       real != "0p+0 entity";
        }
    }
    test::ResetProcess();
    for (std::size_t r = 0; r < std::size(ReaderPairs); ++r)
        EXPECT_GT(told[r], 150) << ReaderPairs[r].Name << " was hardly tried";
}

} // namespace
} // namespace kv

// Which jobs the drill optimizer runs in.
#include <gtest/gtest.h>

#include <string>

#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv::test {
namespace {

// A row of bores that the boring head would join into one stop.
const std::string RowOfBores =
    Circle("VBOREZ12", 100, 200, 4) + Circle("VBOREZ12", 132, 200, 4) + Circle("VBOREZ12", 164, 200, 4);
const std::string OptimizerTold =
    "The drill optimizer is not used for Genesis Evolution; every bore is drilled singly";

std::string OptimizedPanel(const std::string& flags)
{
    return Rectangle("BORDER" + flags + "Z18", 0, 0, 600, 400);
}

Long CountIn(const std::string& text, const std::string& part)
{
    Long count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

struct OptimizerOfAnEvolution : testing::Test {
    Scene Home;

    void SetUp() override
    {
        Home.Write("EvHeader.dat", "HEAD\r\n\r\n::SIDE=\r\n\r\nEND\r\n");
        kv::Run.ControlType = 2;
    }
    Long BoresWritten() const { return CountIn(Home.Read(Home.Programs / "DOOR.CNC"), "W#81{"); }
};

TEST_F(OptimizerOfAnEvolution, DoesNotRunAndOneLineSaysSo)
{
    Config.Optimizer = "1";
    ASSERT_TRUE(Home.Convert(Drawing(OptimizedPanel("") + RowOfBores)));
    EXPECT_EQ(BoresWritten(), 3);
    EXPECT_EQ(CountIn(Home.ReportText(), OptimizerTold), 1) << Home.ReportText();
    // The drawing's own word counts like the setting.
    Config.Optimizer = "0";
    ASSERT_TRUE(Home.Convert(Drawing(OptimizedPanel("OP") + RowOfBores)));
    EXPECT_EQ(BoresWritten(), 3);
    EXPECT_TRUE(Home.Reported(OptimizerTold)) << Home.ReportText();
}

TEST_F(OptimizerOfAnEvolution, IsNotToldOfWhereItWouldNotHaveRun)
{
    Config.Optimizer = "1";
    ASSERT_TRUE(Home.Convert(Drawing(OptimizedPanel("") + Line("ROUTEZ5T71", 300, 200, 400, 200))));
    EXPECT_FALSE(Home.Reported(OptimizerTold));
    Config.Optimizer = "0";
    ASSERT_TRUE(Home.Convert(Drawing(OptimizedPanel("") + RowOfBores)));
    EXPECT_FALSE(Home.Reported(OptimizerTold));
    EXPECT_EQ(BoresWritten(), 3);
}

} // namespace
} // namespace kv::test

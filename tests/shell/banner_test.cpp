// The first lines of the report.
#include "shell/banner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "state/report.h"
#include "state/settings.h"

namespace kv {
namespace {

std::vector<ReportRow> Shown;

TEST(Banner, NamesProgramVersionAndControlsInTheirColours)
{
    ReportMessage(2, "");
    Shown.clear();
    Report = {};
    Report.ShowRow = [](const ReportRow& row) { Shown.push_back(row); };
    ShowBanner();
    Report = {};

    ASSERT_EQ(Shown.size(), 10u);
    EXPECT_EQ(Shown[0].Text, "");
    EXPECT_EQ(Shown[1].Text, "Korvanti for Windows  Version " + std::string(ProductVersion));
    EXPECT_EQ(Shown[1].Red, 155);
    EXPECT_TRUE(Shown[1].Centred);
    EXPECT_EQ(Shown[2].Text, "");
    EXPECT_EQ(Shown[3].Text, "For");
    EXPECT_EQ(Shown[4].Text, "CNC90  WINNER90");
    EXPECT_EQ(Shown[5].Text, "GENESIS & Genesis Evolution");
    for (int i = 3; i <= 5; ++i)
        EXPECT_EQ(Shown[static_cast<std::size_t>(i)].Blue, 255) << i;
    EXPECT_EQ(Shown[6].Text, "");
    for (int i = 7; i <= 8; ++i) {
        EXPECT_EQ(Shown[static_cast<std::size_t>(i)].Green, 155) << i;
        EXPECT_NE(Shown[static_cast<std::size_t>(i)].Text, "") << i;
    }
    EXPECT_EQ(Shown[9].Text, "");
}

TEST(Banner, VersionIsThreeNumbersJoinedByPoints)
{
    const std::string version(ProductVersion);
    EXPECT_EQ(std::count(version.begin(), version.end(), '.'), 2);
    EXPECT_EQ(version.find_first_not_of("0123456789."), std::string::npos);
    EXPECT_NE(version.front(), '.');
    EXPECT_NE(version.back(), '.');
}

} // namespace
} // namespace kv

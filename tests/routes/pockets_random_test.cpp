// Pockets held against the rules worked in place, on random lists of outlines, routes and circles.
#include "routes/pockets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "routes/plain_pockets.h"
#include "routes/pocket_outlines.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

using Records = std::vector<RouteSegment>;

class RandomPockets : public testing::Test {
  protected:
    void SetUp() override { test::ResetProcess(); }
    void TearDown() override { test::ResetProcess(); }

    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(Engine); }
    bool OneOf(int count) { return Pick(1, count) == 1; }
    double Place() { return Pick(-2000, 2000) * 0.37; }
    std::string AnyComp()
    {
        const char* const comps[] = {"", "G41", "G42", "G41 R5", "G42 R7.5", "G42R12.5", "G41 R0", "G42 R33"};
        return comps[Pick(0, 7)];
    }
    // Mostly the mark of a pocket with a pitch that fits the outlines.
    double AnyMark()
    {
        if (OneOf(6))
            return OneOf(2) ? -1 : Pick(-2, 2) * 0.5;
        return -1 - Pick(3, 90) * 0.5;
    }

    double AnyBearing() { return OneOf(2) ? Pick(0, 7) * 45 : Pick(0, 3599) * 0.1; }

    Records AnyOutline()
    {
        const double x = Place();
        const double y = Place();
        const rows::Corners box{x, y, x + Pick(0, 300) * 0.5, y + Pick(0, 300) * 0.5};
        if (OneOf(2))
            return rows::SquareOutline(box, AnyMark(), AnyComp());
        const double radius = std::min(box.MaxX - box.MinX, box.MaxY - box.MinY) / Pick(2, 9);
        return rows::RoundedOutline(box, radius, AnyMark(), AnyComp());
    }

    // Against its way, or from another record on, or without its mark, or as a polyline.
    void Turn(Records& outline)
    {
        if (OneOf(3)) {
            std::reverse(outline.begin() + 2, outline.end());
            for (auto record = outline.begin() + 2; record != outline.end(); ++record) {
                record->Kind = static_cast<Int>(-record->Kind);
                if (record->Kind == 3)
                    record->Dir = static_cast<Int>(Pick(-1, 0));
            }
            for (auto start = outline.begin() + 2; start + 1 < outline.end(); ++start)
                if (start->Kind == -3) { // centre and angles stay on their records
                    std::swap(start->Aux1, (start + 1)->Aux1);
                    std::swap(start->Aux2, (start + 1)->Aux2);
                    std::swap((start + 1)->Aux1, (start + 1)->Aux2);
                }
        }
        if (OneOf(3))
            std::rotate(outline.begin() + 2, outline.begin() + Pick(2, static_cast<int>(outline.size()) - 1),
                        outline.end());
        if (OneOf(5)) // a polyline without a mark of its own
            for (std::size_t i = 1; i < outline.size(); ++i)
                outline[i].Kind = 5;
        if (OneOf(3))
            std::rotate(outline.begin(), outline.begin() + Pick(0, static_cast<int>(outline.size()) - 1),
                        outline.end());
    }

    Records AnyChain()
    {
        Records chain;
        const int form = Pick(1, 10);
        if (form <= 6) {
            chain = AnyOutline();
            Turn(chain);
        } else if (form <= 8) {
            chain = rows::HalfCircles({Place(), Place()}, Pick(0, 200) * 0.5, AnyBearing(), OneOf(2));
            rows::MarkPocket(chain, AnyMark(), AnyComp());
            if (OneOf(6)) // as far round as it comes, but no longer a circle
                chain.back().Dir = chain[1].Dir == 0 ? -1 : 0;
        } else {
            for (int i = Pick(1, 9); i > 0; --i)
                chain.push_back(rows::ArcStep(Pick(-5, 5), Place(), Place(), Place(), Place(), Pick(-1, 0)));
            rows::MarkPocket(chain, AnyMark(), AnyComp());
        }
        for (int faults = OneOf(5) ? Pick(1, 3) : 0; faults > 0; --faults)
            Spoil(chain[static_cast<std::size_t>(Pick(0, static_cast<int>(chain.size()) - 1))]);
        for (RouteSegment& record : chain)
            if (record.Dir == -8)
                record.Dir = 0;
        if (!OneOf(30))
            chain.front().Dir = -8;
        Number(chain);
        return chain;
    }

    void Spoil(RouteSegment& record)
    {
        switch (Pick(1, 6)) {
        case 1:
            record.Kind = static_cast<Int>(Pick(-5, 5));
            break;
        case 2:
            record.X += ToSingle(Pick(-4, 4) * 0.004);
            break;
        case 3:
            record.Y += ToSingle(Pick(-20, 20) * 1.3);
            break;
        case 4:
            record.OscZ = ToSingle(AnyMark());
            break;
        case 5:
            record.Comp = AnyComp();
            break;
        default:
            record.Aux2 = ToSingle(Pick(-720, 720) * 0.5);
        }
    }

    // Every record can be told from the others.
    void Number(Records& chain)
    {
        const Int tool = static_cast<Int>(Pick(70, 73));
        const int pass = Pick(1, 3); // a chain is of one layer
        for (RouteSegment& record : chain) {
            record.Pass = OneOf(200) ? Pick(1, 3) : pass;
            record.ToolNo = tool;
            record.Z = ToSingle(Pick(1, 3000) * 0.01);
            record.Feed = ToSingle(++Count);
            record.Tool = "12";
            record.MCode = static_cast<Int>(Pick(0, 3));
        }
    }

    RouteCircle AnyCircle()
    {
        RouteCircle circle;
        circle.X = ToSingle(Place());
        circle.Y = ToSingle(Place());
        circle.Radius = ToSingle(Pick(-5, 200) * 0.3);
        circle.OscZ = ToSingle(AnyMark());
        circle.Comp = AnyComp();
        circle.Pass = static_cast<Int>(OneOf(8) ? 0 : Pick(1, 3));
        circle.Used = OneOf(8) ? True : False;
        circle.Z = ToSingle(Pick(1, 3000) * 0.01);
        circle.Feed = ToSingle(++Count);
        circle.Tool = "0912";
        circle.ToolNo = static_cast<Int>(Pick(70, 73));
        return circle;
    }

    std::mt19937 Engine{test::Seed(20240)};
    int Count = 0;
};

// What loops leave where they begin is no rule of lists: programs are drawn for it, on random panels too.
std::vector<std::string> WithoutRestsOfLoops(std::vector<std::string> lines)
{
    std::erase_if(
        lines, [](const std::string& line) { return line.ends_with("leaves wood where its turns begin"); });
    return lines;
}

TEST_F(RandomPockets, ListsAsTheRulesAreTold)
{
    std::size_t recordsSeen = 0, linesSeen = 0, grown = 0;
    for (int round = 0; round < test::Rounds(4000); ++round) {
        ResetRun();
        kv::Run.LayerTable = {"BORDER",  "VBORE DRILLING", "GROOVE",   "HBORE",
                              "EXCAV20", "ROUTEZ5 ",       "EXCAV40Z5"};
        kv::Run.MaxSequence = OneOf(3) ? 4 : 0;
        Records list;
        for (int chains = Pick(1, 5); chains > 0; --chains)
            list = rows::Together(list, AnyChain());
        std::vector<RouteCircle> circles;
        for (int count = Pick(0, 3); count > 0; --count)
            circles.push_back(AnyCircle());

        rows::Hand(list);
        RouteCircles.Clear();
        for (const RouteCircle& circle : circles)
            RouteCircles.Append(circle);
        const rows::ReportLines report;
        ExcavatePockets();

        const std::size_t given = list.size();
        list.insert(list.begin(), RouteSegment{});
        const std::vector<std::string> lines = plain_pockets::ExcavatePockets(list, circles);
        list.erase(list.begin());
        ASSERT_EQ(rows::Difference(rows::All(), list), "") << test::RoundName(round);
        ASSERT_EQ(WithoutRestsOfLoops(rows::ReportLines::Shown()), lines) << test::RoundName(round);
        for (std::size_t i = 0; i < circles.size(); ++i) {
            ASSERT_EQ(RouteCircles[static_cast<Long>(i) + 1].Used, circles[i].Used) << test::RoundName(round);
            ASSERT_EQ(RouteCircles[static_cast<Long>(i) + 1].Pass, circles[i].Pass) << test::RoundName(round);
        }
        recordsSeen += list.size();
        linesSeen += lines.size();
        grown += static_cast<std::size_t>(list.size() > given);
    }
    EXPECT_GT(recordsSeen, 200000U);
    EXPECT_GT(linesSeen, 2000U);
    EXPECT_GT(grown, 2500U); // pockets that are narrower than their tool go
}

} // namespace
} // namespace kv

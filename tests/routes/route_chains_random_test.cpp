// The order and the chaining of routes against the same rules told plainly: thousands of small lists
// on a coarse grid, where ends meet in every way, and a few big sheets. All fields, bit for bit.
#include "routes/route_chains.h"

#include <bit>
#include <cmath>
#include <random>
#include <sstream>

#include "routes/depth_passes.h"
#include "routes/route_chain_scene.h"
#include "support/random_rounds.h"

namespace kv {
namespace {

template <typename Value> bool Same(const Value& a, const Value& b)
{
    if constexpr (std::is_same_v<Value, Single>)
        return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
    else
        return a == b;
}

// Name and values of the first field that differs; empty when none does.
class FieldsDiffer {
  public:
    template <typename Value> FieldsDiffer& In(const char* name, const Value& a, const Value& b)
    {
        if (!Found.empty() || Same(a, b))
            return *this;
        std::ostringstream text;
        text.precision(9);
        text << name;
        if constexpr (std::is_arithmetic_v<Value>)
            text << ' ' << a << ", by the rule " << b;
        Found = text.str();
        return *this;
    }
    std::string Found;
};

std::string Difference(const RouteSegment& a, const RouteSegment& b)
{
    FieldsDiffer fields;
    fields.In("Kind", a.Kind, b.Kind).In("X", a.X, b.X).In("Y", a.Y, b.Y).In("Z", a.Z, b.Z);
    fields.In("Pass", a.Pass, b.Pass).In("Diameter", a.Diameter, b.Diameter).In("Group", a.Group, b.Group);
    fields.In("ToolNo", a.ToolNo, b.ToolNo).In("Tool", a.Tool, b.Tool);
    fields.In("Aux1", a.Aux1, b.Aux1).In("Aux2", a.Aux2, b.Aux2).In("Dir", a.Dir, b.Dir);
    fields.In("Speed", a.Speed, b.Speed).In("Feed", a.Feed, b.Feed).In("FeedDown", a.FeedDown, b.FeedDown);
    fields.In("FeedRapid", a.FeedRapid, b.FeedRapid).In("LeadIn", a.LeadIn, b.LeadIn);
    fields.In("RampOut", a.RampOut, b.RampOut).In("RampIn", a.RampIn, b.RampIn).In("Comp", a.Comp, b.Comp);
    fields.In("Sequence", a.Sequence, b.Sequence).In("OscZ", a.OscZ, b.OscZ).In("MCode", a.MCode, b.MCode);
    fields.In("Side", a.Side, b.Side).In("ExtraSlot", a.ExtraSlot, b.ExtraSlot);
    fields.In("ParamA", a.ParamA, b.ParamA).In("ParamB", a.ParamB, b.ParamB).In("Flag", a.Flag, b.Flag);
    return fields.Found;
}

std::string Listed(const std::vector<RouteSegment>& records)
{
    std::ostringstream text;
    text.precision(9);
    for (std::size_t i = 1; i < records.size(); ++i) {
        const RouteSegment& r = records[i];
        text << "  " << i << ": kind " << r.Kind << " pass " << r.Pass << " (" << r.X << ' ' << r.Y << ") z "
             << r.Z << " aux " << r.Aux1 << ' ' << r.Aux2 << " dir " << r.Dir << " tool " << r.ToolNo
             << " seq " << r.Sequence << " a " << r.ParamA << " b " << r.ParamB << '\n';
    }
    return text.str();
}

std::string Listed(const std::vector<RouteCircle>& circles)
{
    std::ostringstream text;
    text.precision(9);
    for (std::size_t i = 1; i < circles.size(); ++i) {
        const RouteCircle& c = circles[i];
        text << "  circle " << i << ": pass " << c.Pass << " (" << c.X << ' ' << c.Y << ") r " << c.Radius
             << " comp '" << c.Comp.Trimmed() << "' used " << c.Used << " oscz " << c.OscZ << " lead "
             << c.LeadIn << '\n';
    }
    return text.str();
}

std::vector<RouteSegment> AllSegments()
{
    return {RouteSegments.begin(), RouteSegments.end()};
}

std::vector<RouteCircle> AllCircles()
{
    return {RouteCircles.begin(), RouteCircles.end()};
}

// What the passes and the rules made of one drawing, told apart record by record.
std::string Differences(const std::vector<RouteSegment>& segments, const std::vector<RouteCircle>& circles,
                        const std::vector<RouteSegment>& told, const std::vector<RouteCircle>& toldCircles)
{
    std::ostringstream text;
    if (segments.size() != told.size())
        text << segments.size() << " records, by the rule " << told.size() << '\n';
    for (std::size_t i = 0; i < std::min(segments.size(), told.size()); ++i) {
        const std::string field = Difference(segments[i], told[i]);
        if (!field.empty()) {
            text << "record " << i << ": " << field << '\n';
            break;
        }
    }
    if (circles.size() != toldCircles.size())
        text << circles.size() << " circles, by the rule " << toldCircles.size() << '\n';
    for (std::size_t i = 0; i < std::min(circles.size(), toldCircles.size()); ++i)
        if (circles[i].Used != toldCircles[i].Used || circles[i].Pass != toldCircles[i].Pass)
            text << "circle " << i << ": used " << circles[i].Used << " pass " << circles[i].Pass
                 << ", by the rule " << toldCircles[i].Used << ' ' << toldCircles[i].Pass << '\n';
    return text.str();
}

class RandomRoutes : public chain_test::RouteChainTest {
  protected:
    std::mt19937 Engine{test::Seed(1)};

    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(Engine); }
    bool OneIn(int n) { return Pick(1, n) == 1; }
    template <typename Value> Value OneOf(std::initializer_list<Value> values)
    {
        return values.begin()[Pick(0, static_cast<int>(values.size()) - 1)];
    }

    // How a round draws.
    int Cells = 3;      // the grid's
    int OffsetsIn = 8;  // one coordinate in so many lies a little off it
    int OddKindsIn = 3; // one path in so many is no line
    int Passes = 1;
    int Copies = 0;       // at most so many of each path and circle, at the very same place
    bool Damaged = false; // paths without followers, records without a path

    Single Coordinate()
    {
        const double place = 10.0 * Pick(0, Cells);
        if (!OneIn(OffsetsIn))
            return static_cast<Single>(place);
        const double off = OneOf({0.0005, 0.00099, 0.001, 0.0011, 0.004, 0.005, 0.0051, 0.02, 0.049, 0.05,
                                  0.051, 0.0707, 0.071, 0.099, 0.1, 0.101, 0.2});
        return static_cast<Single>(OneIn(2) ? place + off : place - off);
    }

    void Dress(RouteSegment& record)
    {
        record.Z = OneOf<Single>({0, 5, 18.5F, 91});
        record.Diameter = static_cast<Single>(Pick(0, 2));
        record.Group = static_cast<Int>(Pick(1, 3));
        record.ToolNo = OneIn(20) ? Int(-1) : static_cast<Int>(Pick(0, 2));
        record.Tool = OneOf({"", "01", "0203"});
        record.Speed = static_cast<Int>(Pick(0, 30000));
        record.Feed = static_cast<Single>(Pick(0, 9));
        record.FeedDown = static_cast<Single>(Pick(0, 9));
        record.FeedRapid = static_cast<Single>(Pick(0, 9));
        record.LeadIn = static_cast<Single>(Pick(0, 9));
        record.RampOut = static_cast<Single>(Pick(0, 9));
        record.RampIn = static_cast<Single>(Pick(0, 9));
        record.Comp = OneOf({"", "G41", "G42 R2"});
        record.Sequence = OneIn(3) ? static_cast<Int>(Pick(-4, 5)) : Int(0);
        record.OscZ = OneIn(5) ? 3.0F : 0.0F;
        record.MCode = static_cast<Int>(Pick(0, 2));
        record.Side = 5;
        record.ExtraSlot = static_cast<Int>(Pick(0, 9));
        record.ParamA = OneIn(2) ? 0.0F : static_cast<Single>(Pick(1, 9));
        record.ParamB = OneIn(2) ? 0.0F : 1.0F;
    }

    RouteSegment Record(int kind, Long pass)
    {
        RouteSegment record = chain_test::Segment(static_cast<Int>(kind), Coordinate(), Coordinate());
        Dress(record);
        record.Pass = pass;
        return record;
    }

    void AddPath(chain_test::Segments& list)
    {
        const Long pass = Pick(1, Passes);
        const int kind = !OneIn(OddKindsIn) ? 1 : OneOf({1, 2, 3, 3, 3, 4, 4, 5, 5});
        const std::size_t begin = list.size();
        list.push_back(Record(-kind, pass));
        const int further = kind == 1 || kind == 3 ? 1 : kind == 2 ? Pick(1, 3) : Pick(1, 4);
        const int follow = kind == 4 ? (OneIn(3) ? 4 : 5) : kind;
        for (int i = 0; i < further; ++i)
            list.push_back(Record(follow, pass));
        if (kind == 3)
            ShapeArc(list[begin], list.back());
        if (kind >= 4 && OneIn(3)) { // closed
            list.back().X = list[begin].X;
            list.back().Y = list[begin].Y;
        }
        if (kind == 5)
            list[begin].Aux2 = OneIn(3) ? 0.5F : 0.0F;
        if (Damaged && OneIn(8))
            list.resize(begin + 1);
        if (Damaged && OneIn(12))
            list.push_back(Record(0, pass));
        if (Damaged && OneIn(12))
            list.push_back(Record(OneOf({1, 5}), pass));
    }

    // Of the last path, told apart by their slots.
    void AddCopies(chain_test::Segments& list)
    {
        std::size_t begin = list.size() - 1;
        while (begin > 0 && list[begin].Kind >= 0)
            --begin;
        const chain_test::Segments path(list.begin() + static_cast<std::ptrdiff_t>(begin), list.end());
        for (int copies = Pick(0, Copies); copies > 0; --copies)
            for (RouteSegment record : path) {
                record.ExtraSlot = static_cast<Int>(Pick(10, 99));
                list.push_back(record);
            }
    }

    void ShapeArc(RouteSegment& start, RouteSegment& end)
    {
        start.Aux1 = Coordinate();
        start.Aux2 = Coordinate();
        end.Aux1 = static_cast<Single>(Pick(0, 8) * 45);
        end.Aux2 = static_cast<Single>(OneIn(4) ? Pick(-100, 400) : Pick(0, 8) * 45);
        end.Dir = OneIn(4) ? True : False;
        if (OneIn(4))
            return;
        const double radius = OneOf({10.0, 20.0, 14.1421356});
        start.X = static_cast<Single>(start.Aux1 + radius * std::cos(end.Aux1 * Run.DegToRad));
        start.Y = static_cast<Single>(start.Aux2 + radius * std::sin(end.Aux1 * Run.DegToRad));
        end.X = static_cast<Single>(start.Aux1 + radius * std::cos(end.Aux2 * Run.DegToRad));
        end.Y = static_cast<Single>(start.Aux2 + radius * std::sin(end.Aux2 * Run.DegToRad));
    }

    RouteCircle AnyCircle()
    {
        RouteCircle circle = chain_test::Circle({Coordinate(), Coordinate()},
                                                OneOf<Single>({10, 10, 10, 20, 14.142136F, 5, 10.03F, 0}),
                                                OneOf({"", "", "G41", "G42", "G42 R2"}));
        circle.Pass = static_cast<Int>(Pick(1, Passes));
        circle.Z = OneOf<Single>({0, 4, 12.5F});
        circle.ToolNo = OneIn(20) ? Int(-2) : static_cast<Int>(Pick(0, 2));
        circle.Sequence = OneIn(4) ? static_cast<Int>(Pick(-5, 6)) : Int(0);
        circle.Diameter = static_cast<Single>(Pick(0, 3));
        circle.Speed = static_cast<Int>(Pick(0, 30000));
        circle.Tool = OneOf({"", "05", "123456789012"});
        circle.Feed = static_cast<Single>(Pick(0, 9));
        circle.LeadIn = OneOf<Single>({0, 0, 999, 3, -2, 50});
        circle.RampOut = OneOf<Single>({0, 0, -999, 999, 2, -4});
        circle.RampIn = OneOf<Single>({0, 0, -999, 999, 2, -4});
        circle.OscZ = OneIn(8) ? -5.0F : 0.0F;
        circle.MCode = static_cast<Int>(Pick(0, 2));
        circle.ExtraSlot = static_cast<Int>(Pick(0, 9));
        return circle;
    }

    void SetRun()
    {
        Run.SideWidth[5] = OneIn(40) ? 6.0F : OneIn(3) ? 30.0F : 1000.0F;
        Run.SideHeight[5] = 25;
        Run.RouteTolerance = OneOf<Single>({0.1F, 0.1F, 0.1F, 0.008F, 0.3F, 12});
        Run.LeadLength = OneOf<Single>({0, 5, 2.7F});
        Run.LeadsOn = OneIn(2) ? True : False;
        Run.AnyLeadCode = OneIn(2) ? True : False;
        Run.RampInOn = OneIn(2) ? True : False;
        Run.RampOutOn = OneIn(2) ? True : False;
        Run.LeadRampHeight = OneOf<Single>({0, 3});
        Run.MinSequence = OneIn(4) ? -6 : OneIn(30) ? -90003 : 0;
        Run.MaxSequence = OneIn(4) ? 9 : 0;
        Config.SPDA = OneOf({"", "NO", "no", "YES", " NO"});
    }

    // One drawing through the passes and through the rules.
    void Compare(const chain_test::Segments& segments, const chain_test::Circles& circles, bool closeLone)
    {
        const Single width = Run.SideWidth[5], height = Run.SideHeight[5], tolerance = Run.RouteTolerance;
        const Long least = Run.MinSequence;
        const RunBlock kept = Run;
        chain_test::LayRoutes(segments, circles);
        Run = kept;
        ASSERT_EQ(width, Run.SideWidth[5]);
        plain::Routes told{AllSegments(), AllCircles(), Run.MaxSequence, least};
        const plain::Routes drawn = told;
        plain::DropDead(told);
        DropDeadSegments();
        if (closeLone) {
            plain::CloseCircles(told);
            CloseLoneCircles();
        }
        const bool anySegment = told.Last() > 0;
        plain::ChainRoutes(told);
        const bool done = ChainRoutes();
        const std::vector<RouteSegment> segmentsNow = AllSegments();
        const std::vector<RouteCircle> circlesNow = AllCircles();
        const Long most = Run.MaxSequence;
        const Long leastNow = Run.MinSequence;
        const Int count = Run.SegmentCount;
        StoreSegments({told.Segments.begin() + 1, told.Segments.end()});
        ReverseClosedPolylines();
        const std::vector<RouteSegment> toldNow = AllSegments();
        const std::string differences = Differences(segmentsNow, circlesNow, toldNow, told.Circles);
        EXPECT_TRUE(done);
        EXPECT_EQ(most, told.MaxSequence);
        EXPECT_EQ(leastNow, told.MinSequence);
        EXPECT_EQ(count, anySegment ? static_cast<Int>(segmentsNow.size() - 1) : 0);
        EXPECT_EQ(differences, "");
        if (HasFailure() && segments.size() < 100) {
            ADD_FAILURE() << "panel " << width << " x " << height << " tolerance " << tolerance << " SPDA '"
                          << Config.SPDA << "' lead " << Run.LeadLength << '\n'
                          << "drawn:\n"
                          << Listed(drawn.Segments) << Listed(drawn.Circles) << "passes:\n"
                          << Listed(segmentsNow) << "by the rule:\n"
                          << Listed(toldNow);
        }
        Chains +=
            static_cast<std::size_t>(std::count_if(segmentsNow.begin(), segmentsNow.end(), StartsRoute));
        Records += segmentsNow.size() - 1;
    }
    std::size_t Chains = 0, Records = 0; // seen in all rounds

    void CompareMany(int usual, int paths, int circles)
    {
        for (int round = 0; round < test::Rounds(usual) && !HasFailure(); ++round) {
            SCOPED_TRACE(test::RoundName(round));
            chain_test::Segments segments;
            for (int i = Pick(paths > 0 ? 1 : 0, paths); i > 0; --i) {
                AddPath(segments);
                AddCopies(segments);
            }
            chain_test::Circles discs;
            for (int i = Pick(0, circles); i > 0; --i) {
                discs.push_back(AnyCircle());
                for (int copies = Pick(0, Copies); copies > 0; --copies)
                    discs.push_back(discs.back());
            }
            std::shuffle(discs.begin(), discs.end(), Engine);
            SetRun();
            Compare(segments, discs, OneIn(2));
        }
    }
};

TEST_F(RandomRoutes, OrderAlone)
{
    Passes = 2;
    Damaged = true;
    for (int round = 0; round < test::Rounds(4000) && !HasFailure(); ++round) {
        Cells = Pick(1, 5);
        OddKindsIn = Pick(1, 3);
        chain_test::Segments segments;
        for (int i = Pick(1, 10); i > 0; --i)
            AddPath(segments);
        chain_test::LayRoutes(segments);
        Config.SPDA = OneOf({"", "NO", "No", "YES"});
        std::vector<RouteSegment> told = AllSegments();
        const std::vector<RouteSegment> drawn = told;
        plain::OrderChains(told);
        OrderRouteChains();
        ASSERT_EQ(Differences(AllSegments(), {}, told, {}), "")
            << test::RoundName(round) << " SPDA " << Config.SPDA << '\n'
            << Listed(drawn) << "passes:\n"
            << Listed(AllSegments()) << "by the rule:\n"
            << Listed(told);
    }
}

TEST_F(RandomRoutes, LinesOnACoarseGrid)
{
    OddKindsIn = 1000;
    for (Cells = 1; Cells <= 4; ++Cells)
        CompareMany(1000, 4 * Cells, 0);
    EXPECT_LT(Chains * 2, Records); // lines have linked
}

TEST_F(RandomRoutes, PathsOfAllKinds)
{
    OddKindsIn = 1;
    Passes = 2;
    for (Cells = 1; Cells <= 4; ++Cells)
        CompareMany(1500, 9, 0);
}

TEST_F(RandomRoutes, CirclesAndLines)
{
    OddKindsIn = 4;
    for (Cells = 2; Cells <= 5; ++Cells)
        CompareMany(1500, 7, 5);
}

TEST_F(RandomRoutes, CirclesAndPathsOfAllKinds)
{
    OddKindsIn = 1;
    Passes = 2;
    Cells = 3;
    CompareMany(4000, 7, 6);
}

TEST_F(RandomRoutes, DrawingsCopiedOntoThemselves)
{
    Copies = 3;
    Passes = 2;
    Cells = 2;
    CompareMany(3000, 4, 3);
    OddKindsIn = 1;
    CompareMany(3000, 3, 3);
}

TEST_F(RandomRoutes, CirclesAlone)
{
    Cells = 2;
    CompareMany(1500, 0, 5);
}

TEST_F(RandomRoutes, DamagedLists)
{
    OddKindsIn = 2;
    Damaged = true;
    CompareMany(3000, 8, 2);
}

TEST_F(RandomRoutes, EndsAtAFewPlacesAnywhere)
{
    // Angles and distances without a round value, near the origin and far from it.
    for (int round = 0; round < test::Rounds(3000) && !HasFailure(); ++round) {
        SCOPED_TRACE(test::RoundName(round));
        const double reach = OneOf({30.0, 3000.0, 100000.0});
        chain_test::Points places;
        for (int i = Pick(2, 6); i > 0; --i)
            places.push_back({static_cast<Single>(reach * Pick(-99999, 99999) / 99999),
                              static_cast<Single>(reach * Pick(-99999, 99999) / 99999)});
        const auto place = [&] {
            chain_test::Point point =
                places[static_cast<std::size_t>(Pick(0, static_cast<int>(places.size()) - 1))];
            if (OneIn(6))
                point.X += static_cast<Single>(Pick(-12, 12)) * 0.01F;
            return point;
        };
        chain_test::Segments segments;
        for (int i = Pick(1, 9); i > 0; --i) {
            chain_test::Segments path = OneIn(5) ? chain_test::Polyline({place(), place(), place()})
                                                 : chain_test::Line(place(), place());
            if (OneIn(4)) {
                const Single angle = static_cast<Single>(Pick(0, 36000)) * 0.01F;
                path = chain_test::Arc(place(), place(), place(), angle, static_cast<Single>(Pick(0, 360)));
            }
            chain_test::Add(segments, path);
        }
        chain_test::Circles circles;
        for (int i = Pick(0, 4); i > 0; --i) {
            const chain_test::Point centre = place(), rim = place();
            circles.push_back(
                chain_test::Circle(centre,
                                   static_cast<Single>(std::hypot(double(rim.X) - double(centre.X),
                                                                  double(rim.Y) - double(centre.Y))),
                                   OneOf({"", "G41", "G42"})));
        }
        SetRun();
        Compare(segments, circles, OneIn(2));
    }
}

// ---- Sheets

TEST_F(RandomRoutes, NestedPartsOutOfLines)
{
    for (int round = 0; round < test::Rounds(1) && !HasFailure(); ++round) {
        SCOPED_TRACE(test::RoundName(round));
        // 500 rectangles of four lines, drawn in a shuffled order and direction.
        std::vector<chain_test::Segments> lines;
        for (int part = 0; part < 500; ++part) {
            const Single x = static_cast<Single>(part % 25) * 110 + 5,
                         y = static_cast<Single>(part / 25) * 70 + 5;
            const chain_test::Point corners[] = {{x, y}, {x + 100, y}, {x + 100, y + 60}, {x, y + 60}};
            for (int i = 0; i < 4; ++i)
                lines.push_back(OneIn(2) ? chain_test::Line(corners[i], corners[(i + 1) % 4])
                                         : chain_test::Line(corners[(i + 1) % 4], corners[i]));
        }
        std::shuffle(lines.begin(), lines.end(), Engine);
        chain_test::Segments segments;
        for (const chain_test::Segments& line : lines)
            chain_test::Add(segments, line);
        chain_test::LayRoutes({});
        Run.SideWidth[5] = 2800;
        Run.SideHeight[5] = 1500;
        const std::size_t before = Chains;
        Compare(segments, {}, true);
        EXPECT_EQ(Chains - before, 500U);
    }
}

TEST_F(RandomRoutes, HatchWithAllLinesOnOneColumn)
{
    // Zigzag of 1000 lines, then their turns, so that every end meets at the two columns.
    chain_test::Segments segments;
    for (int i = 0; i < 1000; ++i) {
        const Single y = static_cast<Single>(i) * 1.5F;
        chain_test::Add(segments, chain_test::Line({0, y}, {500, y}));
    }
    for (int i = 0; i + 1 < 1000; ++i) {
        const Single y = static_cast<Single>(i) * 1.5F, x = i % 2 == 0 ? 500.0F : 0.0F;
        chain_test::Add(segments, chain_test::Line({x, y}, {x, y + 1.5F}));
    }
    chain_test::LayRoutes({});
    Run.SideWidth[5] = 600;
    Run.SideHeight[5] = 1600;
    Compare(segments, {}, true);
    EXPECT_EQ(Chains, 1U);
}

TEST_F(RandomRoutes, BigMixedSheet)
{
    Cells = 40;
    OddKindsIn = 3;
    Passes = 3;
    for (int round = 0; round < test::Rounds(1) && !HasFailure(); ++round) {
        SCOPED_TRACE(test::RoundName(round));
        chain_test::Segments segments;
        for (int i = 0; i < 1000; ++i)
            AddPath(segments);
        chain_test::Circles circles;
        for (int i = 0; i < 300; ++i)
            circles.push_back(AnyCircle());
        chain_test::LayRoutes({});
        Run.LeadLength = 5;
        Run.LeadsOn = True;
        Compare(segments, circles, true);
    }
}

TEST_F(RandomRoutes, ManyLinesThroughOnePlace)
{
    for (int round = 0; round < test::Rounds(1) && !HasFailure(); ++round) {
        SCOPED_TRACE(test::RoundName(round));
        // A star of 600 lines, some drawn towards the middle, in two passes, and circles around it.
        chain_test::Segments segments;
        for (int i = 0; i < 600; ++i) {
            const double angle = Pick(0, 359) * 0.0174533;
            const double reach = 10.0 * Pick(1, 20);
            const chain_test::Point far{static_cast<Single>(250 + reach * std::cos(angle)),
                                        static_cast<Single>(250 + reach * std::sin(angle))};
            const chain_test::Segments line =
                OneIn(2) ? chain_test::Line({250, 250}, far) : chain_test::Line(far, {250, 250});
            chain_test::Add(segments, chain_test::OnPass(Pick(1, 2), line));
        }
        chain_test::Circles circles;
        for (int i = 1; i <= 20; ++i)
            circles.push_back(
                chain_test::Circle({250, 250}, static_cast<Single>(10 * i), i % 2 == 0 ? "G41" : ""));
        chain_test::LayRoutes({});
        Compare(segments, circles, true);
    }
}

} // namespace
} // namespace kv

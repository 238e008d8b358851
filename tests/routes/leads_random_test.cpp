// Leads of thousands of random routes: contours at corners and smooth seams, of lines, arcs and bulges,
// and routes that end at the border. What every lead must be is checked on the moves of the machine, and
// the records are held against the plain rules.
#include <random>

#include "routes/lead_moves.h"
#include "routes/lead_routes.h"
#include "routes/plain_leads.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv::lead_test {
namespace {

using Random = std::mt19937;

double Between(Random& random, double low, double high)
{
    return std::uniform_real_distribution<double>(low, high)(random);
}

int OneOf(Random& random, int count)
{
    return std::uniform_int_distribution<int>(0, count - 1)(random);
}

struct Span {
    PlanePoint From, To;
    double Bulge = 0;
    bool Vertex = false; // of a polyline
};

PlanePoint Stored(const PlanePoint& p)
{
    return {double(Single(p.X)), double(Single(p.Y))};
}

Route RecordsOf(const Span& span)
{
    if (span.Vertex)
        return Polyline({{span.From.X, span.From.Y, span.Bulge}, {span.To.X, span.To.Y}});
    if (span.Bulge == 0)
        return Lines({span.From, span.To});
    const Move move = BulgeMove(span.From, span.To, span.Bulge);
    return {Record(-3, span.From.X, span.From.Y, move.Centre.X, move.Centre.Y),
            Record(3, span.To.X, span.To.Y, Left(DirectionOf(move.Centre, span.From)),
                   Left(DirectionOf(move.Centre, span.To)), span.Bulge > 0 ? -1 : 0)};
}

// Mostly loose elements, sometimes one polyline from end to end.
Route RouteOf(Random& random, const std::vector<Span>& spans, std::string_view comp, bool closed)
{
    if (OneOf(random, 3) > 0) {
        std::vector<Route> elements;
        for (const Span& span : spans)
            elements.push_back(RecordsOf(span));
        return Join(elements, comp);
    }
    std::vector<Vertex> vertices;
    for (const Span& span : spans)
        vertices.push_back({span.From.X, span.From.Y, span.Bulge});
    vertices.push_back({spans.back().To.X, spans.back().To.Y, closed ? spans.front().Bulge : 0});
    return Join({Polyline(vertices)}, comp);
}

double RandomBulge(Random& random)
{
    const int kind = OneOf(random, 4);
    if (kind == 0)
        return 0;
    const double size = kind == 1 ? Between(random, 0.02, 0.3) : Between(random, 0.3, kind == 2 ? 1 : 2.5);
    return OneOf(random, 2) == 0 ? size : -size;
}

// Step lengths from a fraction of the lead to many times it.
PlanePoint NextPoint(Random& random, const PlanePoint& from)
{
    for (;;) {
        const double length = OneOf(random, 3) == 0 ? Between(random, 2, 15) : Between(random, 15, 200);
        const PlanePoint to = Stored(OnCircle(from, length, Between(random, 0, 360)));
        if (to.X > 20 && to.X < 580 && to.Y > 20 && to.Y < 380)
            return to;
    }
}

std::vector<Span> RandomSpans(Random& random, PlanePoint from, int count)
{
    std::vector<Span> spans;
    for (int i = 0; i < count; ++i) {
        const PlanePoint to = NextPoint(random, from);
        spans.push_back({from, to, RandomBulge(random), OneOf(random, 3) == 0});
        from = to;
    }
    return spans;
}

Route RandomContour(Random& random, std::string_view comp)
{
    const PlanePoint start = Stored({Between(random, 60, 540), Between(random, 60, 340)});
    if (OneOf(random, 10) == 0) {
        const double angle = OneOf(random, 2) == 0 ? 90 : Between(random, 0, 360);
        return Join({Arc(start, Between(random, 1, 60), angle, angle, OneOf(random, 2) == 0)}, comp);
    }
    for (;;) {
        std::vector<Span> spans = RandomSpans(random, start, 2 + OneOf(random, 4));
        Span last{spans.back().To, start, RandomBulge(random), OneOf(random, 3) == 0};
        if (std::hypot(last.To.X - last.From.X, last.To.Y - last.From.Y) < 2)
            continue;
        if (OneOf(random, 3) == 0) { // a seam without a corner
            const double in = MovesOf(Join({RecordsOf(spans.front())}, "")).front().StartDirection;
            const double turn = 2 * lead_test::Between(DirectionOf(last.From, last.To), in);
            if (std::fabs(turn) < 5 || std::fabs(turn) > 280)
                continue;
            last.Bulge = std::tan(turn / 4 * TruePi / 180);
        }
        spans.push_back(last);
        return RouteOf(random, spans, comp, true);
    }
}

struct Wish {
    double Length = 20, RampIn = 0, RampOut = 0;
};

Wish RandomWish(Random& random)
{
    Wish wish;
    wish.Length = double(Single(Between(random, 5, 40)));
    wish.RampIn = OneOf(random, 2) * 4.0;
    wish.RampOut = OneOf(random, 2) * 6.0;
    return wish;
}

void Ask(Route& route, const Wish& wish)
{
    route.front().LeadIn = static_cast<Single>(wish.Length);
    route.front().RampIn = static_cast<Single>(wish.RampIn);
    route.front().RampOut = static_cast<Single>(wish.RampOut);
}

// The route's records within the list behind the pass: how many were put in front and behind.
struct Led {
    Route All;
    std::vector<Move> Own, Moves; // of the route as it was, of the list
    std::size_t InFront = 0;      // moves
    std::size_t Behind() const { return Moves.size() - Own.size() - InFront; }
};

// Own records are unchanged, save what their new place in the path asks of the first and the last.
void ExpectOwnRecords(const Route& route, const Route& led, std::size_t front)
{
    for (std::size_t i = 0; i < route.size(); ++i) {
        RouteSegment want = route[i];
        const RouteSegment& got = led[front + i];
        if (i == 0 && front > 0) {
            want.Dir = 0;
            if (led.front().Kind == -1 && want.Kind != -3) // a line leads on to it
                want.Kind = static_cast<Int>(std::abs(want.Kind));
        }
        if (i + 1 == route.size() && want.Kind != 3) {
            want.Aux1 = got.Aux1;
            want.Aux2 = got.Aux2;
        }
        EXPECT_TRUE(SameRecord(got, want)) << "own record " << i + 1;
    }
}

Led LeadAndRead(const Route& route)
{
    Led led;
    led.Own = MovesOf(route);
    led.All = WithLeads(route);
    led.Moves = MovesOf(led.All);
    const RouteSegment& first = led.All.front();
    std::size_t front = 0; // records
    if (first.X != route.front().X || first.Y != route.front().Y) {
        led.InFront = 1;
        front = first.Kind == -3 ? 2 : route.front().Kind == -3 ? 2 : 1;
    }
    ExpectOwnRecords(route, led.All, front);
    EXPECT_GE(led.Moves.size(), led.Own.size() + led.InFront);
    for (std::size_t i = 0; i < led.Own.size(); ++i) {
        const Move &own = led.Own[i], &now = led.Moves[led.InFront + i];
        EXPECT_TRUE(own.From.X == now.From.X && own.To.Y == now.To.Y && own.Radius == now.Radius &&
                    own.Sense == now.Sense)
            << "own move " << i + 1;
    }
    return led;
}

// How far the point lies to the told side of a way through p in this direction.
double SideOf(const PlanePoint& p, double direction, const PlanePoint& point, int side)
{
    const double a = direction * TruePi / 180;
    return side * (std::cos(a) * (point.Y - p.Y) - std::sin(a) * (point.X - p.X));
}

double LengthOf(const Move& move)
{
    return std::hypot(move.To.X - move.From.X, move.To.Y - move.From.Y);
}

constexpr double Tangent = 0.05; // degrees

bool IsShort(const Move& element, double length, int side)
{
    return element.Radius < length && !(element.Arc && element.Sense == -side);
}

void ExpectQuarterArc(const Move& arc, double length, int side)
{
    EXPECT_TRUE(arc.Arc);
    EXPECT_NEAR(arc.Radius, length, 0.01);
    EXPECT_NEAR(arc.Sweep, 90, Tangent);
    EXPECT_EQ(arc.Sense, side);
}

// The tool's room at the seam is the angle, on its side, from the way out to the way back in.
struct SeamFigures {
    double In = 0, Out = 0, Room = 0, Capped = 0;
    int Side = 1;
};

void ExpectStraight(const Move& lead, const PlanePoint& seam, const PlanePoint& far, double length,
                    const SeamFigures& s, bool closed)
{
    EXPECT_FALSE(lead.Arc);
    EXPECT_NEAR(LengthOf(lead), closed ? s.Capped : length, 0.01);
    const double bearing = DirectionOf(seam, far);
    if (closed) { // across the way's end, on the tool's side
        EXPECT_NEAR(lead_test::Between(s.Out + 90 * s.Side, bearing), 0, Tangent);
        EXPECT_GT(SideOf(seam, s.Out, far, s.Side), 0);
    } else { // in the middle of the room
        EXPECT_NEAR(lead_test::Between(s.In + s.Side * s.Room / 2, bearing), 0, Tangent);
        EXPECT_GT(SideOf(seam, s.In, far, s.Side), 0);
        EXPECT_GT(SideOf(seam, s.Out, far, s.Side), 0);
    }
}

void ExpectRampedOut(const Move& out, const Led& led, const SeamFigures& s, double length)
{
    const Move& first = led.Own.front();
    EXPECT_NEAR(lead_test::Between(s.In, out.StartDirection), 0, Tangent);
    EXPECT_EQ(out.Arc, first.Arc);
    if (!first.Arc) {
        EXPECT_NEAR(LengthOf(out), s.Capped, 0.01);
        return;
    }
    EXPECT_NEAR(out.Radius, first.Radius, 0.01 * (1 + first.Radius / 50));
    EXPECT_EQ(out.Sense, first.Sense);
    const double rim = 2 * TruePi * first.Radius;
    const double whole = first.Radius * first.Sweep * TruePi / 180;
    const bool byCentre = led.All[led.All.size() - 2].Kind == -3;
    const double want = !byCentre ? std::min(length, whole) : rim > length ? length : rim / 18;
    EXPECT_NEAR(out.Radius * out.Sweep * TruePi / 180, want, 0.02);
}

void CheckContour(const Route& route, const Wish& wish, int side)
{
    const Led led = LeadAndRead(route);
    ASSERT_EQ(led.InFront, 1U);
    ASSERT_EQ(led.Behind(), 1U);
    const Move &in = led.Moves.front(), &out = led.Moves.back();
    const Move &first = led.Own.front(), &last = led.Own.back();
    const PlanePoint seam = first.From;
    SeamFigures s;
    s.Side = side;
    s.In = first.StartDirection;
    s.Out = last.EndDirection;
    s.Room = Left(side * (s.Out + 180 - s.In));
    const double reach = LengthOf(first) < 0.008 ? first.Radius : LengthOf(first);
    s.Capped = std::min(reach, wish.Length);
    const bool smooth = std::fabs(lead_test::Between(s.In, s.Out)) < 0.01;
    const bool closed = smooth || s.Room > 180;
    EXPECT_EQ(led.All.front().Z, wish.RampIn != 0 ? Single(-wish.RampIn) : route.front().Z);
    EXPECT_EQ(led.All.back().Z, wish.RampOut != 0 ? Single(-wish.RampOut) : route.back().Z);

    if (wish.RampOut != 0) {
        ExpectRampedOut(out, led, s, wish.Length);
    } else if (closed && !IsShort(last, wish.Length, side)) {
        ExpectQuarterArc(out, wish.Length, side);
        EXPECT_NEAR(lead_test::Between(s.Out, out.StartDirection), 0, Tangent);
        EXPECT_GT(SideOf(seam, s.Out, out.Centre, side), 0);
        EXPECT_NEAR(SideOf(seam, s.Out, out.To, side), wish.Length, 0.05);
    } else {
        ExpectStraight(out, seam, out.To, wish.Length, s, closed);
    }

    const bool byCentre = route.front().Kind == -3;
    const bool shortFirst = IsShort(first, wish.Length, side);
    if (closed ? shortFirst : !byCentre || shortFirst) {
        ExpectStraight(in, seam, in.From, wish.Length, s, closed);
        return;
    }
    ExpectQuarterArc(in, wish.Length, side);
    EXPECT_NEAR(lead_test::Between(s.In, in.EndDirection), 0, Tangent);
    EXPECT_GT(SideOf(seam, s.In, in.Centre, side), 0);
    EXPECT_NEAR(SideOf(seam, s.In, in.From, side), wish.Length, 0.05);
}

// Near these bounds the last digits decide, which the rule does not promise.
bool IsOnTheEdgeOfARule(const Route& route, const Wish& wish)
{
    const std::vector<Move> moves = MovesOf(route);
    const double turn =
        std::fabs(lead_test::Between(moves.back().EndDirection, moves.front().StartDirection));
    if ((turn > 0.005 && turn < 0.1) || turn > 179.9)
        return true;
    for (const Move* move : {&moves.front(), &moves.back()})
        if (std::fabs(move->Radius - wish.Length) < 0.01 || move->Radius < 0.5)
            return true;
    return std::fabs(2 * TruePi * moves.front().Radius - wish.Length) < 0.01;
}

class LeadsOfRandomRoutes : public testing::Test {
  protected:
    void SetUp() override
    {
        test::ResetProcess();
        LayPanel();
    }
    void TearDown() override { test::ResetProcess(); }
};

TEST_F(LeadsOfRandomRoutes, ContoursAreLedOnTheToolsSideAndTangentToTheirWay)
{
    Random random(test::Seed(20240611));
    int checked = 0;
    for (int i = 0; i < test::Rounds(6000) && !HasFailure(); ++i) {
        const int side = OneOf(random, 2) == 0 ? 1 : -1;
        Route route = RandomContour(random, side == 1 ? "G41" : "G42");
        const Wish wish = RandomWish(random);
        Ask(route, wish);
        if (IsOnTheEdgeOfARule(route, wish))
            continue;
        ++checked;
        CheckContour(route, wish, side);
        if (HasFailure())
            ADD_FAILURE() << test::RoundName(i) << ", lead " << wish.Length << "\n"
                          << TextOf(route) << "becomes\n"
                          << TextOf(WithLeads(route));
    }
    EXPECT_GT(checked, 5000);
}

// A point of the border with its outward direction; now and then a corner, or a little off the line.
struct BorderPoint {
    PlanePoint At;
    double Outward = 0;
    bool Corner = false;
};

BorderPoint RandomBorderPoint(Random& random)
{
    const int edge = OneOf(random, 4);
    const double off = OneOf(random, 3) == 0 ? Between(random, -0.006, 0.006) : 0;
    BorderPoint p;
    p.Corner = OneOf(random, 8) == 0;
    const bool alongX = edge % 2 == 1;
    double along = Between(random, 1, alongX ? 599 : 399);
    if (p.Corner)
        along = OneOf(random, 2) == 0 ? 0 : alongX ? 600 : 400;
    const double across = edge == 0 ? 600 + off : edge == 1 ? 400 + off : -off;
    p.Outward = edge * 90;
    p.At = Stored(alongX ? PlanePoint{along, across} : PlanePoint{across, along});
    return p;
}

double Outside(const PlanePoint& p)
{
    return std::max({-p.X, p.X - 600, -p.Y, p.Y - 400});
}

// `lead` runs outward from the end: read backward it is a lead-in.
void CheckBorderLead(const Move& lead, const Move& element, bool atStart, const BorderPoint& border,
                     double length, bool byCentre)
{
    const PlanePoint end = atStart ? element.From : element.To;
    const PlanePoint far = atStart ? lead.From : lead.To;
    const double way = atStart ? element.StartDirection : element.EndDirection;
    const double met = atStart ? lead.EndDirection : lead.StartDirection;
    EXPECT_NEAR(lead_test::Between(way, met), 0, Tangent);
    const double outward = border.Outward;
    const double ext = atStart ? way + 180 : way;
    const bool along =
        !element.Arc && std::fabs(std::cos((ext - outward) * TruePi / 180)) * LengthOf(element) < 0.008;
    const bool arc = !border.Corner && (byCentre || along);
    EXPECT_EQ(lead.Arc, arc);
    EXPECT_GT(Outside(far), -0.02);
    if (!arc) {
        EXPECT_NEAR(LengthOf(lead), length, 0.01);
        return;
    }
    EXPECT_NEAR(lead.Radius, length, 0.01);
    EXPECT_NEAR(lead.Sweep, 90, 0.06);
    EXPECT_GT(Outside(far), std::min(length, Outside(end) + 1));
    if (along) {
        EXPECT_NEAR(Outside(far), length, 0.02);
    }
}

bool LeavesOutward(const Move& element, bool atStart, const BorderPoint& border)
{
    const double ext = atStart ? element.StartDirection + 180 : element.EndDirection;
    const double turned = std::fabs(lead_test::Between(ext, border.Outward));
    if (border.Corner) // out through one of its two edges is enough, but it must not come back in
        return Outside(OnCircle(atStart ? element.From : element.To, 10, ext)) > 1;
    // Not next to a right angle from the border, where the last digits tell the arc's side.
    return turned < 89.5 && (turned > 0.1 || !element.Arc || turned < 1e-5);
}

Span FirstSpanAlong(Random& random, const BorderPoint& p)
{
    const double step = OneOf(random, 2) == 0 ? 0.25 : -0.25;
    const bool alongX = p.Outward == 90 || p.Outward == 270;
    const PlanePoint to = alongX ? PlanePoint{p.At.X + step, p.At.Y} : PlanePoint{p.At.X, p.At.Y + step};
    return {p.At, Stored(to), 0, OneOf(random, 2) == 0};
}

TEST_F(LeadsOfRandomRoutes, RoutesAtTheBorderLeaveThePartAlongTheirWay)
{
    Random random(test::Seed(7151));
    int leads = 0, arcs = 0;
    for (int i = 0; i < test::Rounds(9000) && !HasFailure(); ++i) {
        const bool startOn = OneOf(random, 3) > 0, endOn = OneOf(random, 3) > 0;
        const BorderPoint from = RandomBorderPoint(random), to = RandomBorderPoint(random);
        const PlanePoint inside = {Between(random, 100, 500), Between(random, 100, 300)};
        std::vector<Span> spans;
        if (startOn && !from.Corner && OneOf(random, 4) == 0)
            spans.push_back(FirstSpanAlong(random, from));
        const PlanePoint head = !spans.empty() ? spans.back().To : startOn ? from.At : Stored(inside);
        const std::vector<Span> more = RandomSpans(random, head, 1 + OneOf(random, 3));
        spans.insert(spans.end(), more.begin(), more.end());
        if (endOn)
            spans.push_back({spans.back().To, to.At, RandomBulge(random), OneOf(random, 3) == 0});
        Route route = RouteOf(random, spans, OneOf(random, 2) == 0 ? "G41" : "", false);
        Wish wish = RandomWish(random);
        Ask(route, wish);
        const std::vector<Move> own = MovesOf(route);
        const bool alongStart = spans.front().Bulge == 0 && std::fabs(LengthOf(own.front()) - 0.25) < 0.001;
        if ((startOn && !alongStart && !LeavesOutward(own.front(), true, from)) ||
            (endOn && !LeavesOutward(own.back(), false, to)))
            continue;
        const Led led = LeadAndRead(route);
        EXPECT_EQ(led.InFront, startOn ? 1U : 0U);
        EXPECT_EQ(led.Behind(), endOn ? 1U : 0U);
        if (startOn && led.InFront == 1)
            CheckBorderLead(led.Moves.front(), own.front(), true, from, wish.Length,
                            route.front().Kind == -3);
        if (endOn && led.Behind() == 1)
            CheckBorderLead(led.Moves.back(), own.back(), false, to, wish.Length, route.back().Kind == 3);
        leads += int(led.InFront + led.Behind());
        arcs += led.All.front().Kind == -3 && led.InFront == 1 ? 1 : 0;
        EXPECT_TRUE(led.All.front().Z == 12 && led.All.back().Z == 12);
        if (HasFailure())
            ADD_FAILURE() << test::RoundName(i) << ", lead " << wish.Length << "\n"
                          << TextOf(route) << "becomes\n"
                          << TextOf(led.All);
    }
    EXPECT_GT(leads, 4000);
    EXPECT_GT(arcs, 500);
}

// Records that no drawing would give, too: every kind at any place, values that meet by chance.
Route WildRoute(Random& random)
{
    const Int kinds[] = {-1, 1, -3, 3, -5, 5, -4, 4, 0, 1, 5, 3};
    const Single places[] = {0, 0.005F, 600, 400, 100, 110, 200, 100, 0.01F, 300};
    Route route;
    const int count = 1 + OneOf(random, 7);
    for (int i = 0; i < count; ++i) {
        RouteSegment r =
            Record(kinds[OneOf(random, 12)], places[OneOf(random, 10)], places[OneOf(random, 10)]);
        r.Aux1 = static_cast<Single>(OneOf(random, 9) * 45 - 45);
        r.Aux2 =
            static_cast<Single>(OneOf(random, 3) == 0 ? OneOf(random, 9) * 45 - 45 : OneOf(random, 5) - 2);
        r.Dir = static_cast<Int>(-OneOf(random, 2));
        r.Side = static_cast<Int>(OneOf(random, 6));
        r.Comp = OneOf(random, 3) == 0 ? "" : OneOf(random, 2) == 0 ? "G41" : "G42 R3";
        route.push_back(r);
    }
    if (OneOf(random, 2) == 0) {
        route.back().X = route.front().X;
        route.back().Y = route.front().Y;
    }
    if (OneOf(random, 10) > 0)
        route.front().Dir = -8;
    return route;
}

// The end of a ramp along a nearly straight span is worked out by its chord, in the plain rule from its
// centre, which lies too far away for that. The ramp turns by less than 0.003 there.
bool SameButForAFlatSpansEnd(const RouteSegment& got, const RouteSegment& want, const RouteSegment& before)
{
    if (SameRecord(got, want))
        return true;
    RouteSegment moved = want;
    moved.X = got.X;
    moved.Y = got.Y;
    return got.Kind == 5 && before.Aux2 != 0 && std::fabs(before.Aux2) < 0.003 / 4 &&
           SameRecord(got, moved) && std::fabs(got.X - want.X) < 0.03 && std::fabs(got.Y - want.Y) < 0.03;
}

void ExpectThePlainRules(const Route& list)
{
    plain::List plainly = list;
    plainly.insert(plainly.begin(), RouteSegment{});
    plain::SynthesizeLeads(plainly);
    plainly.erase(plainly.begin());
    const Route led = WithLeads(list);
    bool same = led.size() == plainly.size();
    for (std::size_t i = 0; same && i < led.size(); ++i)
        same = SameButForAFlatSpansEnd(led[i], plainly[i], i == 0 ? led[i] : led[i - 1]);
    EXPECT_TRUE(same) << TextOf(list) << "becomes\n" << TextOf(led) << "plainly\n" << TextOf(plainly);
}

void RandomDefaults(Random& random)
{
    LayPanel();
    kv::Run.LeadsOn = OneOf(random, 4) == 0 ? False : True;
    kv::Run.AnyLeadCode = OneOf(random, 2) == 0 ? False : True;
    kv::Run.LeadLength = static_cast<Single>(OneOf(random, 6) * 5);
    kv::Run.LeadRampHeight = static_cast<Single>(OneOf(random, 3) * 4);
    kv::Run.RampInOn = OneOf(random, 2) == 0 ? False : True;
    kv::Run.RampOutOn = OneOf(random, 2) == 0 ? False : True;
    kv::Run.OriginX = OneOf(random, 3) == 0 ? 100.0F : 0.0F;
    kv::Run.OriginY = OneOf(random, 3) == 0 ? 100.0F : 0.0F;
    for (std::size_t side = 1; side <= 4; ++side) {
        kv::Run.SideMinX[side] = kv::Run.SideMinY[side] = static_cast<Single>(OneOf(random, 3) * 100);
        kv::Run.SideMaxX[side] = kv::Run.SideMaxY[side] = 300;
    }
}

void AskWildly(Random& random, Route& route)
{
    const Single values[] = {0, 0, 999, 8, 30};
    route.front().LeadIn = values[OneOf(random, 5)];
    route.front().RampIn = values[OneOf(random, 5)];
    route.front().RampOut = values[OneOf(random, 5)];
}

TEST_F(LeadsOfRandomRoutes, AreThePlainRulesToTheBit)
{
    Random random(test::Seed(99));
    for (int i = 0; i < test::Rounds(20000) && !HasFailure(); ++i) {
        RandomDefaults(random);
        Route list;
        const int routes = 1 + OneOf(random, 3);
        for (int k = 0; k < routes; ++k) {
            Route route =
                OneOf(random, 2) == 0 ? WildRoute(random)
                : OneOf(random, 2) == 0
                    ? RandomContour(random, OneOf(random, 2) == 0 ? "G41" : "G42")
                    : RouteOf(random, RandomSpans(random, RandomBorderPoint(random).At, 2), "G42", false);
            AskWildly(random, route);
            list.insert(list.end(), route.begin(), route.end());
        }
        SCOPED_TRACE(test::RoundName(i));
        ExpectThePlainRules(list);
    }
}

} // namespace
} // namespace kv::lead_test

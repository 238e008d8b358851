// Sine, cosine, tangent and arctangent from sums and products alone, with about 11 bits more than a double
// holds. Run time libraries round these functions differently in the last bit, and the program of a drawing
// must be the same on every machine. Relies on expressions that are not contracted. Each function steps to
// the nearest sixteenth in a table and goes the rest by a short series.
#include "platform/trigonometry.h"

#include <cmath>
#include <limits>

namespace kv {

namespace {

// A number as the sum of two: what a double holds, and what it had to leave.
struct Pair {
    double High = 0, Low = 0;
};

constexpr int Steps = 16; // table rows for each unit

constexpr Pair HalfPi = {0x1.921fb54442d18p+0, 0x1.1a62633145c07p-54};
// Pi / 2 in parts: the first two have 33 bits, so that their products with a small whole number are exact.
constexpr double HalfPiParts[] = {0x1.921fb54400000p+0, 0x1.0b4611a600000p-34, 0x1.3198a2e037073p-69};

// Arctangent of k / 16.
constexpr Pair ArcTangents[Steps + 1] = {
    {0, 0},
    {0x1.ff55bb72cfdeap-5, -0x1.c934d86d23f1dp-60},
    {0x1.fd5ba9aac2f6ep-4, -0x1.cd37686760c17p-59},
    {0x1.7b97b4bce5b02p-3, 0x1.347b0b4f881cap-58},
    {0x1.f5b75f92c80ddp-3, 0x1.8ab6e3cf7afbdp-57},
    {0x1.362773707ebccp-2, -0x1.963a544b672d8p-57},
    {0x1.6f61941e4def1p-2, -0x1.c63aae6f6e918p-56},
    {0x1.a64eec3cc23fdp-2, -0x1.24dec1b50b7ffp-56},
    {0x1.dac670561bb4fp-2, 0x1.a2b7f222f65e2p-56},
    {0x1.0657e94db30d0p-1, -0x1.d5b495f6349e6p-56},
    {0x1.1e00babdefeb4p-1, -0x1.928df287a668fp-58},
    {0x1.345f01cce37bbp-1, 0x1.1021137c71102p-55},
    {0x1.4978fa3269ee1p-1, 0x1.2419a87f2a458p-56},
    {0x1.5d58987169b18p-1, 0x1.0028e4bc5e7cap-57},
    {0x1.700a7c5784634p-1, -0x1.8c34d25aadef6p-56},
    {0x1.819d0b7158a4dp-1, -0x1.bf76229d3b917p-56},
    {0x1.921fb54442d18p-1, 0x1.1a62633145c07p-55},
};

// Sine and cosine of k / 16, up to Pi / 4.
struct SineRow {
    Pair Sine, Cosine;
};
constexpr SineRow SineRows[] = {
    {{0, 0}, {0x1.0000000000000p+0, 0}},
    {{0x1.ffaaaeeed4edbp-5, -0x1.2d16d32684b69p-59}, {0x1.ff0015549f4d3p-1, 0x1.328387b99426fp-55}},
    {{0x1.feaaeee86ee36p-4, -0x1.afcb2bcc6f03bp-59}, {0x1.fc015527d5bd3p-1, 0x1.b68f35094efb8p-55}},
    {{0x1.7dc102fbaf2b5p-3, 0x1.5ab50e23c97c3p-59}, {0x1.f706bdf9ece1cp-1, -0x1.698c80c36dcb4p-55}},
    {{0x1.faaeed4f31577p-3, -0x1.15d88508e32b8p-57}, {0x1.f01549f7deea1p-1, 0x1.d3c1e99e5cafdp-55}},
    {{0x1.3ad129769d3d8p-2, 0x1.03d550487839ap-63}, {0x1.e733ea0193d40p-1, -0x1.6428b3546ce13p-55}},
    {{0x1.7710255764214p-2, -0x1.6ead7314bb6cep-57}, {0x1.dc6b7eb995912p-1, 0x1.4b364776dcd35p-58}},
    {{0x1.b1d8305321617p-2, -0x1.ae242cb99f519p-56}, {0x1.cfc6cfa52ad9fp-1, 0x1.8b5b5508f2a0dp-55}},
    {{0x1.eaee8744b05f0p-2, -0x1.789b43c9b027dp-58}, {0x1.c1528065b7d50p-1, -0x1.892111312e828p-55}},
    {{0x1.110d0c4b69c3bp-1, 0x1.d918998809981p-55}, {0x1.b11d04162a4c6p-1, 0x1.1dd561efbc0c2p-56}},
    {{0x1.2b91dea88421ep-1, -0x1.fa371db216ab0p-55}, {0x1.9f368ed912f85p-1, -0x1.1d200c5791606p-55}},
    {{0x1.44eb381cf386bp-1, -0x1.3ed6c1e6a5505p-55}, {0x1.8bb105a5dc900p-1, 0x1.863e03e9474c1p-55}},
    {{0x1.5cffc16bf8f0dp-1, 0x1.96cb370eb578ap-55}, {0x1.769fec655211fp-1, -0x1.827d5cf8c68c5p-57}},
    {{0x1.73b7680dea578p-1, -0x1.2248306dc12a2p-56}, {0x1.6018526f563dfp-1, 0x1.46ca5e0e432d0p-55}},
};

Pair SumOf(double a, double b)
{
    const double sum = a + b;
    const double back = sum - a;
    return {sum, (a - (sum - back)) + (b - back)};
}

Pair Halves(double a) // each with so few bits that products of two are exact
{
    const double scaled = a * 134217729; // 2 ^ 27 + 1
    const double high = scaled - (scaled - a);
    return {high, a - high};
}

Pair ProductOf(double a, double b)
{
    const double product = a * b;
    const Pair x = Halves(a), y = Halves(b);
    const double left = x.High * y.High - product + x.High * y.Low + x.Low * y.High + x.Low * y.Low;
    return {product, left};
}

Pair QuotientOf(const Pair& a, const Pair& b)
{
    const double quotient = a.High / b.High;
    const Pair back = ProductOf(quotient, b.High);
    const double rest = (a.High - back.High) - back.Low + a.Low - quotient * b.Low;
    return {quotient, rest / b.High};
}

// Of 0 to 1.
Pair SmallArcTangent(const Pair& x)
{
    const int row = static_cast<int>(x.High * Steps + 0.5);
    const double step = static_cast<double>(row) / Steps;
    const Pair above = SumOf(x.High - step, x.Low); // the difference is exact
    Pair below = ProductOf(step, x.High);
    const Pair one = SumOf(1, below.High);
    below = {one.High, one.Low + below.Low + step * x.Low};
    const Pair t = QuotientOf(above, below);
    const double s = t.High * t.High;
    const double series =
        s * (-1.0 / 3 + s * (1.0 / 5 + s * (-1.0 / 7 + s * (1.0 / 9 + s * (-1.0 / 11 + s * (1.0 / 13))))));
    const Pair sum = SumOf(ArcTangents[row].High, t.High);
    return {sum.High, sum.Low + (ArcTangents[row].Low + t.Low + t.High * series)};
}

// The angle less the nearest multiple of Pi / 2, and how many quarter turns that was, 0 to 3.
Pair WithinEighth(double angle, int& quarters)
{
    constexpr double Furthest = 1e6; // radians; beyond it the quarter turns have too many digits
    constexpr double FullTurn = 4 * HalfPi.High;
    if (std::fabs(angle) > Furthest)
        angle = std::fmod(angle, FullTurn);
    const double turns = std::nearbyint(angle / HalfPi.High);
    quarters = static_cast<int>(turns) & 3;
    const Pair first = SumOf(angle, -turns * HalfPiParts[0]);
    const Pair second = SumOf(first.High, -turns * HalfPiParts[1]);
    const Pair third = SumOf(second.High, -turns * HalfPiParts[2]);
    return SumOf(third.High, third.Low + (second.Low + first.Low));
}

// Of an angle within Pi / 4 either way.
SineRow SmallSineRow(const Pair& angle)
{
    const double sign = angle.High < 0 ? -1 : 1;
    const Pair x = {sign * angle.High, sign * angle.Low};
    const int number = static_cast<int>(x.High * Steps + 0.5);
    const SineRow& row = SineRows[number];
    const Pair t = SumOf(x.High - static_cast<double>(number) / Steps, x.Low);
    const double s = t.High * t.High;
    // What the sine lacks to t, and the cosine to 1.
    const double less =
        t.High * s * (-1.0 / 6 + s * (1.0 / 120 + s * (-1.0 / 5040 + s * (1.0 / 362880)))) + t.Low;
    const double lessThanOne =
        s * (-1.0 / 2 + s * (1.0 / 24 + s * (-1.0 / 720 + s * (1.0 / 40320 + s * (-1.0 / 3628800)))));
    const Pair ahead = ProductOf(row.Cosine.High, t.High), aside = ProductOf(row.Sine.High, -t.High);
    const Pair sine = SumOf(row.Sine.High, ahead.High), cosine = SumOf(row.Cosine.High, aside.High);
    const double sineRest = ahead.Low + row.Sine.Low + row.Cosine.Low * t.High + row.Cosine.High * less +
                            row.Sine.High * lessThanOne;
    const double cosineRest = aside.Low + row.Cosine.Low - row.Sine.Low * t.High - row.Sine.High * less +
                              row.Cosine.High * lessThanOne;
    const Pair whole = SumOf(sine.High, sine.Low + sineRest);
    return {{sign * whole.High, sign * whole.Low}, SumOf(cosine.High, cosine.Low + cosineRest)};
}

Pair Minus(const Pair& x)
{
    return {-x.High, -x.Low};
}

SineRow SineRowOf(double angle)
{
    if (!std::isfinite(angle)) {
        constexpr double none = std::numeric_limits<double>::quiet_NaN();
        return {{none, none}, {none, none}};
    }
    int quarters = 0;
    const SineRow row = SmallSineRow(WithinEighth(angle, quarters));
    switch (quarters) {
    case 1:
        return {row.Cosine, Minus(row.Sine)};
    case 2:
        return {Minus(row.Sine), Minus(row.Cosine)};
    case 3:
        return {Minus(row.Cosine), row.Sine};
    default:
        return row;
    }
}

double Whole(const Pair& x)
{
    return x.High + x.Low;
}

constexpr double Tiny = 1e-8; // below it the functions are the angle itself, in a double

} // namespace

double Sine(double angle)
{
    return std::fabs(angle) < Tiny ? angle : Whole(SineRowOf(angle).Sine);
}

double Cosine(double angle)
{
    return Whole(SineRowOf(angle).Cosine);
}

double Tangent(double angle)
{
    if (std::fabs(angle) < Tiny)
        return angle;
    const SineRow row = SineRowOf(angle);
    return Whole(QuotientOf(row.Sine, row.Cosine));
}

double ArcTangent(double slope)
{
    const double steep = std::fabs(slope);
    if (!(steep >= Tiny)) // or no number
        return slope;
    constexpr double Upright = 1e17; // the quarter turn itself, in a double
    double angle = HalfPi.High;
    if (steep <= 1) {
        angle = Whole(SmallArcTangent({steep, 0}));
    } else if (steep < Upright) {
        const Pair left = SmallArcTangent(QuotientOf({1, 0}, {steep, 0}));
        const Pair sum = SumOf(HalfPi.High, -left.High);
        angle = sum.High + (sum.Low + (HalfPi.Low - left.Low));
    }
    return slope < 0 ? -angle : angle;
}

} // namespace kv

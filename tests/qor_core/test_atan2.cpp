// Atan2: special points, its two ways and where their steps meet, errors; and the
// scalar arctangents of the float kernels.
#include <support/oracle.hpp>
#include <support/samples.hpp>
#include <support/special_values.hpp>

#include <common/ext.hpp>

using namespace qorkes;
using namespace qorkes::test;

namespace {

template <class T> using Angles = void (*)(int n, const T* a, const T* b, T* y);

/// Zeros, infinities, the ends of the range and 1, each with each. The scalar routine
/// of the float kernels has pi/4 an ulp too low where it computes it.
template <class T> std::vector<SpecialPair<T>> specialPoints() {
    using Limits = std::numeric_limits<T>;
    Oracle oracle("Atan2");
    std::vector<SpecialPair<T>> points;
    const T magnitudes[] = {0, Limits::denorm_min(), Limits::min(),
                            1, Limits::max(),        Limits::infinity()};
    for (const T a : magnitudes)
        for (const T b : magnitudes) {
            if (sizeof(T) == 4 && a == b && a != 0 && std::isfinite(a)) continue;
            for (const T x : {a, -a})
                for (const T y : {b, -b})
                    points.push_back(
                        {bitsOf(x), bitsOf(y), bitsOf(oracle.rounded(x, y))});
        }
    return points;
}

TEST(Angle, SpecialPoints) {
    expectSpecialPairs<double>(_qordAtan2_HA, "", specialPoints<double>());
    expectSpecialPairs<float>(_qorsAtan2_HA, "", specialPoints<float>());
    expectSpecialPairs<float>(_qorsAtan2_21, "", specialPoints<float>());
    for (const uint64_t nan : {0x7FF0000000000001, 0x7FF8000000000001})
        expectSpecialPairs<double>(_qordAtan2_HA, "",
                                   {{nan, 0, 0x7FF8000000000001},
                                    {0x7FF0000000000000, nan, 0x7FF8000000000001}});
    for (const Angles<float> angles : {_qorsAtan2_HA, _qorsAtan2_21})
        expectSpecialPairs<float>(
            angles, "",
            {{0x7F800001, 0, 0x7FC00001}, {0x7F800000, 0x7FC00001, 0x7FC00001}});
}

struct Point {
    double a, b;
};

/// The angle of a point beside three others.
double angleBeside(Point point, Point other) {
    const double a[4] = {other.a, point.a, other.a, other.a};
    const double b[4] = {other.b, point.b, other.b, other.b};
    double y[4];
    _qordAtan2_HA(4, a, b, y);
    return y[1];
}

double angleAlone(Point point) {
    double y;
    _qordAtan2_HA(1, &point.a, &point.b, &y);
    return y;
}

/// A group with a number beyond the guard comes from fpatan, ordinary points included:
/// seen by a point for which the two ways differ.
TEST(Angle, GuardHandsWholeGroupsToTheProcessor) {
    const std::vector<double> a = draw<double>({0.1, 10, Sign::both}, 1000, 7);
    const std::vector<double> b = draw<double>({0.1, 10, Sign::both}, 1000, 8);
    Point witness = {};
    double processors = 0, own = 0;
    for (std::size_t i = 0; i < a.size() && own == processors; ++i) {
        witness = {a[i], b[i]};
        processors = round64(angleOf(a[i], b[i]));
        own = angleBeside(witness, {1, 1});
    }
    ASSERT_NE(own, processors);

    const auto number = [](uint32_t high, uint32_t low) {
        double x;
        setWords(x, high, low);
        return x;
    };
    constexpr uint32_t ones = 0xFFFFFFFF;
    for (const double x : {number(0x00200000, 0), number(0x7FB00000, ones)})
        for (const Point other : {Point{x, 1}, Point{1, -x}, Point{-x, x}})
            EXPECT_EQ(angleBeside(witness, other), own) << x;
    for (const double x : {0.0, number(0x001FFFFF, ones), number(0x7FB00001, 0),
                           HUGE_VAL, std::numeric_limits<double>::quiet_NaN()})
        for (const Point other : {Point{x, 1}, Point{1, -x}})
            EXPECT_EQ(angleBeside(witness, other), processors) << x;
}

/// Groups find intervals by a quicker way than single points, if the magnitudes allow;
/// four equal points take the steps of one.
TEST(Angle, GroupsAgreeWithSinglePoints) {
    for (const double bound : {0.4375, 0.6875, 1.1875, 2.4375})
        for (int distance = 0; distance < 40; ++distance)
            for (const double sign : {1.0, -1.0})
                for (const double b : draw<double>({1, 2, Sign::both}, 8, 9)) {
                    const double ratio = bound + sign * std::ldexp(1, -53 + distance);
                    const Point point = {ratio * b, b};
                    const double angle = angleAlone(point);
                    EXPECT_EQ(angle, angleBeside(point, point)) << ratio << ' ' << b;
                    for (const int scale :
                         {-1000, -140, -100, -98, 98, 100, 140, 1000}) {
                        const Point scaled = {std::ldexp(point.a, scale),
                                              std::ldexp(point.b, scale)};
                        EXPECT_EQ(angle, angleBeside(scaled, scaled)) << scale;
                    }
                }
}

// ---- Scalar routines ---------------------------------------------------------------

TEST(ScalarArctangents, AreGoodToOneInHundredMillion) {
    std::vector<float> numbers = draw<float>({1e-30, 1e30, Sign::both}, 3000, 11);
    for (const float bound : {0.375f, 1.0f, 2.6875f})
        for (const float towards : {0.0f, bound, HUGE_VALF})
            numbers.push_back(std::nextafter(bound, towards));
    for (const float x : numbers) {
        const long double exact = atanl(x);
        EXPECT_LE(std::fabs(_qorsatan_scalar(x) / exact - 1), 1e-8L) << x;
    }
    const std::vector<float> others = draw<float>({1e-3, 1e3, Sign::both}, 3000, 12);
    for (std::size_t i = 0; i < others.size(); ++i) {
        const long double exact = atan2l(numbers[i], others[i]);
        EXPECT_LE(std::fabs(_qorsatan2_scalar(numbers[i], others[i]) / exact - 1),
                  1.6e-8L);
    }
    // A tie counts as steep: pi/2 less a series that is too large at 1.
    EXPECT_LT(_qorsatan2_scalar(1, 1), atanl(1));
    EXPECT_GT(_qorsatan2_scalar(std::nextafter(1.0f, 0.0f), 1) + 0x1p-25L, atanl(1));
}

// ---- Errors ------------------------------------------------------------------------

template <class T>
double angleError(Angles<T> angles, const Range& aRange, const Range& bRange) {
    Oracle oracle("Atan2");
    const std::vector<T> a = draw<T>(aRange, 10000, 5), b = draw<T>(bRange, 10000, 6);
    std::vector<T> y(a.size());
    angles(static_cast<int>(a.size()), a.data(), b.data(), y.data());
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, oracle.ulps(y[i], a[i], b[i]));
    return largest;
}

TEST(Angle, Errors) {
    constexpr Range moderate = {1e-3, 1e3, Sign::both},
                    wide = {1e-37, 1e37, Sign::both};
    EXPECT_LE(angleError<double>(_qordAtan2_HA, moderate, moderate), 0.60);
    EXPECT_LE(angleError<double>(_qordAtan2_HA, wide, moderate), 0.60);
    EXPECT_LE(angleError<double>(_qordAtan2_HA, {1e-159, 1e-155, Sign::both},
                                 {1e150, 1e151, Sign::positive}),
              0.51); // around the least normal number
    constexpr Range tiny = {1.2e-38, 5e-38, Sign::both},
                    huge = {1e38, 3e38, Sign::both};
    for (const Range& range : {moderate, wide, tiny, huge}) {
        EXPECT_LE(angleError<float>(_qorsAtan2_HA, range, range), 1.1);
        EXPECT_LE(angleError<float>(_qorsAtan2_21, range, range), 3.5);
    }
    // Near pi, where its low part is a quarter of an ulp.
    EXPECT_LE(angleError<double>(_qordAtan2_HA, {1e-9, 1e-3, Sign::both},
                                 {1, 2, Sign::negative}),
              0.51);
}

} // namespace

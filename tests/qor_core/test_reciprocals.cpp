// Inv and Div: special quotients, groups that share a division and groups that cannot.
#include <qorkes/qor.h>
#include <support/compare.hpp>
#include <support/fpu.hpp>
#include <support/oracle.hpp>
#include <support/special_values.hpp>

#include <common/ext.hpp>

#include <array>
#include <random>

using namespace qorkes;
using namespace qorkes::test;

namespace {

template <class T> struct Quotient {
    T a, b, y;
    std::optional<int> status = {};
};

template <class T>
void expectQuotients(void (*divide)(int n, const T* a, const T* b, T* y),
                     const char* name) {
    constexpr T infinity = std::numeric_limits<T>::infinity();
    constexpr T none = -std::numeric_limits<T>::quiet_NaN();
    constexpr T tiny = std::numeric_limits<T>::denorm_min();
    const Quotient<T> rows[] = {{1, 0, infinity, 2},        {-1, 0, -infinity, 2},
                                {1, -0.0, -infinity, 2},    {0, -0.0, none, 2},
                                {infinity, 0, infinity, 2}, {infinity, -infinity, none},
                                {infinity, -1, -infinity},  {-1, infinity, -0.0},
                                {1, tiny, infinity},        {3 * tiny, 2, 2 * tiny}};
    std::vector<SpecialPair<T>> pairs;
    for (const auto& [a, b, y, status] : rows)
        pairs.push_back({bitsOf(a), bitsOf(b), bitsOf(y), status});
    expectSpecialPairs(divide, name, pairs);
}

TEST(Div, SpecialValues) {
    expectQuotients(_qordDiv_HA, "_qordDiv_HA");
    expectQuotients(_qorsDiv_HA, "_qorsDiv_HA");
    // A zero divisor is reported for a NaN, too, of doubles and not of floats.
    expectSpecialPairs<double>(
        _qordDiv_HA, "_qordDiv_HA",
        {{0x7FF8000000000123, 0x0000000000000000, 0x7FF8000000000123, 2},
         {0xFFF0000000000123, 0x8000000000000000, 0xFFF8000000000123, 2},
         {0x7FF8000000000123, 0x3FF0000000000000, 0x7FF8000000000123},
         {0x3FF0000000000000, 0x7FF0000000000123, 0x7FF8000000000123}});
    expectSpecialPairs<float>(_qorsDiv_HA, "_qorsDiv_HA",
                              {{0x7FC00123, 0x00000000, 0x7FC00123},
                               {0xFF800123, 0x80000000, 0xFFC00123},
                               {0x7FC00123, 0x3F800000, 0x7FC00123},
                               {0x3F800000, 0x7F800123, 0x7FC00123}});
}

/// The zero divisors of one group, among them one that only some reports are for.
TEST(Div, ReportsOfOneGroupComeInOrder) {
    const float a[] = {1, NAN, 0, 4, -5}, b[] = {0, 0, -0.0f, 2, 0};
    float y[5];
    Reports reports;
    _qorsDiv_HA(5, a, b, y);
    ASSERT_EQ(reports.seen.size(), 3u);
    EXPECT_EQ(reports.seen[0].index, 0);
    EXPECT_EQ(reports.seen[1].index, 2);
    EXPECT_EQ(reports.seen[1].argument2, 0);
    EXPECT_EQ(reports.seen[2].index, 4);
    EXPECT_EQ(reports.seen[2].argument1, -5);
    EXPECT_EQ(y[3], 2);
}

/// Whether the product of four divisors, as a float, is a number other than 0.
bool canShare(const double* b) {
    const float product = round32(ext{b[0]} * b[1] * (ext{b[2]} * b[3]));
    return std::isfinite(product) && product != 0;
}

/// The four quotients that one shared division gives.
void divideTogether(const double* a, const double* b, double* y) {
    const ext b0 = b[0], b1 = b[1], b2 = b[2], b3 = b[3];
    const ext first = b0 * b1, second = b2 * b3, inverse = 1 / (first * second);
    y[0] = round64(second * inverse * b1 * a[0]);
    y[1] = round64(second * inverse * b0 * a[1]);
    y[2] = round64(first * inverse * b3 * a[2]);
    y[3] = round64(first * inverse * b2 * a[3]);
}

struct Divisors {
    std::array<double, 4> b;
    bool share;
};

/// The last divisors whose product rounds to no float other than 0, and the first ones
/// within, going from `outside` to `inside` with the last divisor.
std::vector<Divisors> divisorsAtLimit(double outside, double inside) {
    std::array<double, 4> b = {-1.1, 2.3, 1.7, outside}, before = b;
    for (; !canShare(b.data()); b[3] = std::nextafter(b[3], inside)) before = b;
    return {{before, false}, {b, true}};
}

/// Groups on either side of the limits of sharing give what they should, bit for bit,
/// and elements near enough to be exact on both sides.
TEST(Div, GroupsShareADivisionIfTheProductFitsAFloat) {
    std::vector<Divisors> groups = {
        {{3.1, -7.7, 11.3, 13.9}, true},
        {{1e20, 3e20, 1e20, 7e20}, false},
        {{1e-20, 3e-20, 1e-20, 7e-20}, false},
        // Divisors are extreme, the product is not.
        {{0x1.5p1023, 0x1.7p-1022, 0x1.3p1023, 0x1.9876543210fedp-1021}, true},
        {{0x7p-1074, 0x1.8p1000, 0x1.1p-900, 0x1.3456789abcdefp900}, true},
    };
    // What rounds to infinity begins half a spacing above the largest float, what
    // rounds to 0 ends at half of the least one.
    const double others = 1.1 * 2.3 * 1.7;
    const double infinite = 0x1.ffffffp127 / others, zero = 0x1p-150 / others;
    for (const auto& limit : {divisorsAtLimit(infinite * (1 + 0x1p-48), 1),
                              divisorsAtLimit(zero * (1 - 0x1p-48), 1)})
        groups.insert(groups.end(), limit.begin(), limit.end());

    std::mt19937_64 random(3);
    Oracle quotient("Div"), reciprocal("Inv");
    for (const auto& [divisors, share] : groups) {
        const double* b = divisors.data();
        SCOPED_TRACE(testing::Message()
                     << b[0] << ' ' << b[1] << ' ' << b[2] << ' ' << b[3]);
        ASSERT_EQ(canShare(b), share);
        int differences = 0;
        double y[4];
        for (int repetition = 0; repetition < 20000; ++repetition) {
            double a[4], together[4], alone[4];
            for (int i = 0; i < 4; ++i) {
                a[i] = static_cast<double>(random() >> 11) * 0x1p-90;
                alone[i] = round64(ext{a[i]} / b[i]);
            }
            divideTogether(a, b, together);
            differences += !sameBits(alone, together, 4);
            _qordDiv_HA(4, a, b, y);
            ASSERT_TRUE(sameBits(share ? together : alone, y, 4));
            for (int i = 0; i < 4 && repetition < 500; ++i)
                ASSERT_LE(quotient.ulps(y[i], a[i], b[i]), 0.51);
        }
        EXPECT_GT(differences, 0) << "nothing tells the two ways apart";
        _qordInv_HA(4, b, y);
        for (int i = 0; i < 4; ++i) ASSERT_LE(reciprocal.ulps(y[i], b[i]), 0.51);
    }
}

/// Exponents at random, denormal arguments and results included.
TEST(Div, IsAccurateOverTheWholeRange) {
    std::mt19937_64 random(4);
    Oracle divide("Div"), invert("Inv");
    for (int repetition = 0; repetition < 5000; ++repetition) {
        double a[5], b[5], y[5], inverse[5];
        float s[5], t[5], u[5], singleInverse[5];
        for (int i = 0; i < 5; ++i) {
            // Neither infinity nor NaN.
            setBits(a[i], random() & 0xFFEFFFFFFFFFFFFF);
            setBits(b[i], random() & 0xFFEFFFFFFFFFFFFF);
            // Most groups of float range, half of them shared.
            if (repetition % 4)
                b[i] = std::ldexp(b[i], -std::ilogb(b[i]) + i * 20 - 40);
            setBits(s[i], static_cast<uint32_t>(random()) & 0xFF7FFFFF);
            setBits(t[i], static_cast<uint32_t>(random()) & 0xFF7FFFFF);
        }
        _qordDiv_HA(5, a, b, y);
        _qordInv_HA(5, b, inverse);
        _qorsDiv_HA(5, s, t, u);
        _qorsInv_HA(5, t, singleInverse);
        for (int i = 0; i < 5; ++i) {
            ASSERT_LE(divide.ulps(y[i], a[i], b[i]), 0.51) << a[i] << " / " << b[i];
            ASSERT_LE(invert.ulps(inverse[i], b[i]), 0.51) << b[i];
            const float quotient = divide.rounded(s[i], t[i]);
            const float reciprocal = invert.rounded(t[i]);
            ASSERT_TRUE(sameBits(&quotient, &u[i], 1)) << s[i] << " / " << t[i];
            ASSERT_TRUE(sameBits(&reciprocal, &singleInverse[i], 1)) << t[i];
        }
    }
}

} // namespace

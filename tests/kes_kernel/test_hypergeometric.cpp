// Hypergeometric variates: the kept table and the kept envelope, and what is drawn from
// them, for all four ways to fold a lot.
#include "setups.hpp"

#include <gsl/gsl_randist.h>

#include <array>

using namespace qorkes::test;

namespace {

struct Hypergeometric {
    int32_t l, s, m;
    bool table;
    static constexpr int id = 6, words = 81, block = 512;
    static constexpr int cumulative = 3, entries = 64, up = 48;

    int32_t few() const { return std::min(m, l - m); }
    int32_t many() const { return l - few(); }
    int32_t sample() const { return std::min(s, l - s); }
    int32_t mode() const {
        return truncated((sample() + 1.0L) * (few() + 1.0L) / (l + 2.0L));
    }
    int32_t last() const { return std::min(few(), sample()); }
    int32_t unfolded(int32_t x) const {
        const int32_t marked = m <= l - m ? x : sample() - x;
        return l > 2 * s ? marked : m - marked;
    }
    ext probability(int32_t x) const {
        if (x < 0 || x > last()) return 0;
        return std::exp(logChoose(few(), x) + logChoose(many(), sample() - x) -
                        logChoose(l, sample()));
    }
    double exact(int32_t x) const {
        return gsl_ran_hypergeometric_pdf(unsigned(x), unsigned(m), unsigned(l - m),
                                          unsigned(s));
    }
    std::pair<int32_t, int32_t> range() const { return {0, std::min(s, m)}; }
    std::string name() const {
        return std::to_string(l) + ", " + std::to_string(s) + ", " + std::to_string(m);
    }
    int draw(StreamState* stream, int n, int32_t* r) const {
        return _kesiRngHypergeometric(0, stream, n, r, l, s, m);
    }

    Value attempt(const double* c, double first, double second) const {
        const ext u = first * ext{c[5]}, v = second;
        if (u <= c[3]) return accepted(c, truncated(u + c[6]), v);
        if (u <= c[4]) {
            const int32_t y = truncated(std::log(v) * c[14] + c[6]);
            return y < 0 ? Value{} : accepted(c, y, (u - c[3]) * c[12] * v);
        }
        const int32_t y = truncated(-std::log(v) * c[15] + c[7]);
        return y > last() ? Value{} : accepted(c, y, (u - c[4]) * c[13] * v);
    }

    /// By the exact ratio, but for small values that are far below the mode: all of
    /// them pass as the first one beyond the kept ratios does.
    Value accepted(const double*, int32_t y, ext v) const {
        const bool far = mode() - y > 32 && (mode() < 100 || y <= 200);
        const ext f = ratio(*this, far ? mode() - 33 : y);
        return y == mode() || v <= f ? Value{y} : Value{};
    }
};

// The four foldings with a table, and with an envelope.
constexpr Hypergeometric laws[] = {{100, 20, 30, true},
                                   {100, 20, 70, true},
                                   {100, 80, 30, true},
                                   {100, 80, 70, true},
                                   {10, 5, 5, true},
                                   {40, 15, 18, true},
                                   {1000, 300, 130, true},
                                   {100000, 4000, 984, true},
                                   {2000, 999, 79, true},
                                   {2000, 1000, 80, false},
                                   {1000, 200, 400, false},
                                   {1000, 200, 600, false},
                                   {1000, 800, 400, false},
                                   {1000, 800, 600, false},
                                   {100000, 6000, 1000, false},
                                   {4000, 1700, 1900, false},
                                   {300000, 9000, 90000, false}};

// Values far below these modes are too likely.
constexpr Hypergeometric distorted[] = {
    {1000, 300, 400, false}, {100000, 10000, 2400, false}, {2000, 990, 398, false}};

TEST(Hypergeometric, AgreesWithItsRecomputation) {
    expectAgreement(laws, 0xE211373470C05A9E);
    expectAgreement(distorted, 0x85EB4F23266ABCC1);
    for (const auto& law : laws) EXPECT_EQ(law.table, law.mode() < 40) << law.name();
}

TEST(Hypergeometric, FitsItsDistribution) { expectFits(laws); }

TEST(Hypergeometric, DepartsForSomeModes) {
    expectDeparture(Hypergeometric{100000, 10000, 2330, false}, 0.0145);
}

TEST(Hypergeometric, KeepsItsSetup) {
    expectKept(laws[0], laws[10]);
    expectKept(laws[10], laws[0]);
    for (const auto& [l, s, m] :
         {std::array{1001, 200, 400}, {1000, 201, 400}, {1000, 200, 401}})
        expectKept(laws[10], Hypergeometric{l, s, m, false});
}

TEST(Hypergeometric, OneResultTakesNoUniforms) {
    const struct {
        int32_t l, s, m, result;
    } rows[] = {{9, 9, 4, 4}, {9, 9, 5, 5}, {9, 4, 0, 0}, {9, 4, 9, 4}, {9, 0, 4, 0},
                {9, 0, 6, 0}, {0, 0, 0, 0}, {9, 6, 0, 0}, {9, 6, 9, 6}};
    for (const auto& [l, s, m, result] : rows) {
        const Stream stream = scriptedStream({0.5});
        std::vector<int32_t> r(11);
        EXPECT_EQ(_kesiRngHypergeometric(0, stream.get(), 11, r.data(), l, s, m), 0);
        EXPECT_EQ(r, std::vector<int32_t>(11, result)) << l << ' ' << s << ' ' << m;
        EXPECT_TRUE(script.counts.empty());
    }
}

} // namespace

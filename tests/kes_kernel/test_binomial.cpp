// Binomial variates: the kept table and the kept envelope, and what is drawn from them.
#include "setups.hpp"

#include <gsl/gsl_randist.h>

using namespace qorkes::test;

namespace {

struct Binomial {
    int32_t trials;
    double p;
    bool table;
    static constexpr int id = 5, words = 85, block = 512;
    static constexpr int cumulative = 4, entries = 64, up = 52;

    ext rare() const { return p < 0.5 ? ext{p} : 1 - ext{p}; }
    ext odds() const { return rare() / (1 - rare()); }
    int32_t mode() const { return truncated((trials + 1) * rare()); }
    int32_t last() const { return trials; }
    int32_t unfolded(int32_t x) const { return p < 0.5 ? x : trials - x; }
    ext probability(int32_t x) const {
        if (x < 0 || x > trials) return 0;
        return std::exp(logChoose(trials, x) + x * std::log(rare()) +
                        (trials - x) * std::log1p(-rare()));
    }
    double exact(int32_t x) const {
        return gsl_ran_binomial_pdf(unsigned(x), p, unsigned(trials));
    }
    std::pair<int32_t, int32_t> range() const { return {0, trials}; }
    std::string name() const {
        return std::to_string(trials) + ", " + std::to_string(p);
    }
    int draw(StreamState* stream, int n, int32_t* r) const {
        return _kesiRngBinomial(0, stream, n, r, trials, p);
    }

    Value attempt(const double* c, double first, double second) const {
        const ext u = first * ext{c[8]}, v = second;
        if (u <= c[5]) return truncated(c[9] + u - c[5] * v);
        if (u <= c[6]) {
            const ext x = c[10] + (u - c[5]) * c[17];
            const ext height = v * c[16] + 1 - std::fabs(c[9] - x) * c[18];
            return height > 1 ? Value{} : accepted(c, truncated(x), height);
        }
        if (u <= c[7]) {
            const int32_t y = truncated(std::log(v) * c[14] + c[10]);
            return y < 0 ? Value{} : accepted(c, y, (u - c[6]) * c[12] * v);
        }
        const int32_t y = truncated(-std::log(v) * c[15] + c[11]);
        return y > trials ? Value{} : accepted(c, y, (u - c[7]) * c[13] * v);
    }

    /// By the exact ratio with two exceptions. Where the kept ratios are walked on from
    /// downwards, the walk begins and ends one value too low. Where the squeeze leaves
    /// it to Stirling's series, those of y have the sign that those of the mode have.
    Value accepted(const double* c, int32_t y, ext v) const {
        const ext npq = c[2], k = std::abs(mode() - y);
        ext f = ratio(*this, y);
        if (k > 20 && k < npq / 2 - 1) {
            const ext rho = k / npq * ((k * (k / 3 + 0.625L) + 1 / 6.0L) / npq + 0.5L);
            const auto series = [](ext z) { return (z - z * z * z / 30) / 12; };
            f *= std::exp(2 *
                          (series(1 / (y + 1.0L)) + series(1 / (trials + 1.0L - y))));
            f = std::min(f, std::exp(rho - k * k / (2 * npq)));
        } else if (mode() - y > 32) {
            f = v > c[52] ? 0 : c[52];
            const ext a = odds() * (trials + 1.0L);
            for (ext j = mode() - 33; j >= y; --j) f *= j / (a - odds() * j);
        }
        return y == mode() || v <= f ? Value{y} : Value{};
    }
};

// A mean of 30 is the first with an envelope; 100 * 0.3, with 0.3 rounded, is below it.
constexpr Binomial laws[] = {
    {5, 0.05, true},       {10, 0.5, true},      {10, 0.8, true},
    {50, 0.3, true},       {62, 0.4, true},      {63, 0.4, true},
    {64, 0.4, true},       {100, 0.3, true},     {100000, 0.000299, true},
    {120, 0.25, false},    {60, 0.5, false},     {120, 0.75, false},
    {66000, 0.001, false}, {150, 0.7, false},    {10000, 0.25, false},
    {1000, 0.9, false},    {1000000, 0.5, false}};

TEST(Binomial, AgreesWithItsRecomputation) {
    expectAgreement(laws, 0x10D4DC0D17EF0A01);
    expectDraws(laws[12], 400000); // walks beyond the kept ratios are rare
}

/// A left tail's value that the exact ratio accepts; the mode comes next.
TEST(Binomial, TheWalkDownIsOneValueTooLow) {
    const Binomial& law = laws[12];
    const Stream stream = scriptedStream({});
    EXPECT_EQ(law.draw(stream.get(), 0, nullptr), KesStatusOk);
    const double* c = keptBy(stream, law);
    const int32_t y = 20;
    const ext v = std::exp((y + 0.5L - c[10]) * c[12]);
    const ext u = c[6] + 0.8L * ratio(law, y) / (c[12] * v);
    script.numbers = {double(u / c[8]), double(v), 0, 0};
    int32_t r = -7;
    EXPECT_EQ(law.draw(stream.get(), 1, &r), KesStatusOk);
    EXPECT_EQ(r, law.mode());
    EXPECT_EQ(script.counts, (std::vector{2, 2}));
}

TEST(Binomial, FitsItsDistribution) { expectFits(laws); }

TEST(Binomial, KeepsItsSetup) {
    expectKept(laws[3], laws[14]);
    expectKept(laws[14], laws[3]);
    expectKept(laws[14], Binomial{10001, 0.25, false});
    expectKept(laws[14], Binomial{10000, 0.26, false});
}

TEST(Binomial, NoTrialsMatchTheKeyOfANewSetup) {
    const Stream stream = scriptedStream({0.5});
    int32_t r = -7;
    EXPECT_EQ(_kesiRngBinomial(0, stream.get(), 1, &r, 0, 0), KesStatusOk);
    EXPECT_EQ(r, 0);
}

} // namespace

// Negative binomial variates: the kept table and the kept envelope, and what is drawn
// from them.
#include "setups.hpp"

#include <gsl/gsl_randist.h>

using namespace qorkes::test;

namespace {

struct Negbinomial {
    double a, p;
    bool table;
    static constexpr int id = 4, words = 163, block = 256;
    static constexpr int cumulative = 2, entries = 128, up = 71;

    ext q() const { return 1 - ext{p}; }
    ext peak() const { return (ext{a} - 1) * q() / p; }
    int32_t mode() const { return truncated(peak()); }
    int32_t last() const { return 0x7FFFFFFF; }
    int32_t unfolded(int32_t x) const { return x; }
    ext probability(int32_t x) const {
        if (p == 1) return x == 0;
        return std::exp(std::lgamma(ext{a} + x) - std::lgamma(ext{a}) -
                        std::lgamma(x + 1.0L) + x * std::log(q()) +
                        a * std::log(ext{p}));
    }
    double exact(int32_t x) const {
        return gsl_ran_negative_binomial_pdf(unsigned(x), p, a);
    }
    std::pair<int32_t, int32_t> range() const { return {0, int(5 * a / p) + 2000}; }
    std::string name() const { return std::to_string(a) + ", " + std::to_string(p); }
    int draw(StreamState* stream, int n, int32_t* r) const {
        return _kesiRngNegbinomial(0, stream, n, r, a, p);
    }

    /// The logarithm of f with the corrections' signs as they are: neither is that of
    /// Stirling's series.
    ext g(ext x) const {
        const ext less = ext{a} - 1, w = 1 / x, v = 1 / (x + less);
        return less * std::log(x + less) + (0.5L + x) * std::log(q() + less * q() * w) +
               (1 - w * w * (1 - w * w * 30 / 105) / 30) * w / 12 -
               (1 + v * v * (1 + v * v * 30 / 105) / 30) * v / 12;
    }
    Value attempt(const double* c, double u, double v) const {
        const bool right = u <= c[3] ? c[137] * ext{u} + c[138] > mode() + 0.5L
                                     : u <= c[4] || (u > c[5] && u <= c[6]);
        if (u <= c[5]) {
            ext x = c[137] * ext{u} + c[138], height = v;
            const double* bound = c + (right ? 139 : 141);
            if (u > c[3]) {
                const double* side = c + (right ? 143 : 150);
                const ext t = std::sqrt(ext{side[0]} * u + side[1]);
                height = t * v * side[4];
                x = side[2] - t * side[3];
                bound = side + 5;
            }
            if (height <= ext{bound[0]} * x + bound[1]) return truncated(x);
            return accepted(c, right, truncated(x), height);
        }
        const double* tail = c + (right ? 157 : 160);
        const int32_t y = truncated(ext{tail[0]} * std::log(ext{v}) + tail[1]);
        if (y < (right ? mode() : 0)) return {}; // on the right: beyond all integers
        return accepted(c, right, y, (u - ext{c[right ? 5 : 6]}) * v * tail[2]);
    }

    /// By the exact ratio near the mode and in the walk down, else by g. On the right,
    /// the mode has the farthest ratio below it for its own.
    Value accepted(const double* c, bool right, int32_t y, ext v) const {
        const bool exactly = right ? y <= mode() + 64 : y >= mode() - 64 || y < 150;
        ext f = exactly ? ratio(*this, y) : std::exp(g(y) - c[136]);
        if (y == mode()) f = right ? c[71] : 1;
        return v <= f ? Value{y} : Value{};
    }
};

// A mode of 100 is the first with an envelope; 401 and 0.8, rounded, are below it. 2
// and 0.005: a large mode without one.
constexpr Negbinomial laws[] = {
    {5, 0.3, true},    {0.5, 0.01, true}, {2, 0.005, true},  {100.9, 0.5, true},
    {401, 0.8, true},  {101, 0.5, false}, {50, 0.2, false},  {3, 0.01, false},
    {10, 0.05, false}, {100, 0.1, false}, {20, 0.02, false}, {200, 0.3, false},
    {1000, 0.4, false}};

// For p above one half the regions do not cover the law. For p = 1 all results are 0.
constexpr Negbinomial others[] = {
    {301, 0.75, false}, {1000, 0.9, false}, {40.5, 0.001, false}, {7.5, 1, true}};

TEST(Negbinomial, AgreesWithItsRecomputation) {
    expectAgreement(laws, 0x141EF493B3EB5FA2);
    expectAgreement(others, 0x351DB5E8849A7A1E);
}

TEST(Negbinomial, FitsItsDistribution) { expectFits(laws); }

TEST(Negbinomial, DepartsForLargeP) {
    expectDeparture(others[0], 0.0125);
    expectDeparture(others[1], 0.074);
    expectDeparture(Negbinomial{20000, 0.99, false}, 0.352);
}

TEST(Negbinomial, KeepsItsSetup) {
    expectKept(laws[0], laws[6]);
    expectKept(laws[6], laws[0]);
    expectKept(laws[2], laws[7]);
    expectKept(laws[6], Negbinomial{51, 0.2, false});
    expectKept(laws[6], Negbinomial{50, 0.21, false});
}

} // namespace

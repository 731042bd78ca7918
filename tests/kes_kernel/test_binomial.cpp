// Binomial variates: the kept table and the kept envelope, and what is drawn from them.
#include "setups.hpp"

#include <gsl/gsl_randist.h>

using namespace qorkes::test;

namespace {

using ext = long double;

struct Binomial {
    int32_t trials;
    double p;
    bool table;
    static constexpr int id = 5, words = 85, block = 512;

    ext rare() const { return p < 0.5 ? ext{p} : 1 - ext{p}; }
    ext common() const { return p < 0.5 ? 1 - ext{p} : ext{p}; }
    bool isTable() const { return table; }
    int draw(StreamState* stream, int n, int32_t* r) const {
        return _kesiRngBinomial(0, stream, n, r, trials, p);
    }
    int32_t unfolded(int32_t x) const { return p < 0.5 ? x : trials - x; }
    double probability(int32_t x) const {
        return gsl_ran_binomial_pdf(static_cast<unsigned>(x), p,
                                    static_cast<unsigned>(trials));
    }
    std::string name() const {
        return std::to_string(trials) + " trials of " + std::to_string(p);
    }

    Words setup() const {
        Words c(words, unsaid);
        c[0] = trials;
        c[1] = p;
        const double s = rounded(rare() / common());
        if (table) {
            c[2] = rounded(s * (trials + 1.0L));
            c[3] = s;
            double t[65] = {};
            const double q = rounded(common());
            _qordPowx_HA(1, &q, trials, t);
            for (int k = 1; k < 64 && k <= trials; ++k)
                t[k] = rounded(t[k - 1] * (ext{c[2]} / k - s));
            for (int k = 62; k >= 0; --k) t[k] = rounded(ext{t[k]} + t[k + 1]);
            for (int k = 0; k < 64; ++k) c[4 + k] = rounded(ext{t[0]} - t[k + 1]);
            return c;
        }
        const ext p_ = rare(), q_ = common(), a = s * (trials + 1.0L);
        c[2] = rounded(trials * p_ * q_);
        c[3] = rounded(trials * p_ + p_);
        c[4] = truncated(c[3]);
        c[5] = truncated(ext{2.195} * root(c[2]) - ext{4.6} * q_) + 0.5;
        c[16] = rounded(ext{0.134} + ext{20.5} / (ext{15.3} + c[4]));
        c[9] = c[4] + 0.5;
        c[10] = c[9] - c[5];
        c[11] = c[9] + c[5];
        const ext al = (ext{c[3]} - c[10]) / (c[3] - c[10] * p_);
        const ext ar = (ext{c[11]} - c[3]) / (c[11] * q_);
        c[12] = rounded(al * (1 + 0.5L * al));
        c[13] = rounded(ar * (1 + 0.5L * ar));
        c[6] = rounded(c[5] * (1 + 2 * ext{c[16]}));
        c[7] = rounded(c[6] + ext{c[16]} / c[12]);
        c[8] = rounded(c[7] + ext{c[16]} / c[13]);
        for (const auto& [to, of] :
             {std::pair{14, 12}, {15, 13}, {17, 16}, {18, 5}, {19, 2}})
            c[to] = rounded(1 / ext{c[of]});
        c[20] = s;
        ext up = 1, down = 1;
        for (int i = 0; i < 32; ++i) {
            const ext j = ext{c[4]} - i;
            c[21 + i] = rounded(down *= j / (a - s * j));
            c[53 + i] = rounded(up *= a / (ext{c[4]} + i + 1) - s);
        }
        return c;
    }

    Value attempt(const double* c, const double* uniform) const {
        if (table) {
            const auto next = [&](int32_t x, ext term) {
                return term * (ext{c[2]} / (x + 1) - c[3]);
            };
            return searched(c + 4, std::min(trials + 1, 64), *uniform, trials, next);
        }
        const ext u = ext{uniform[0]} * c[8];
        ext v = uniform[1];
        int32_t y;
        if (u <= c[5]) return truncated(u + c[9] - c[5] * v);
        if (u <= c[6]) {
            const ext x = (u - c[5]) * c[17] + c[10];
            v = v * c[16] + 1 - std::fabs(c[9] - x) * c[18];
            if (v > 1) return {};
            y = truncated(x);
        } else if (u <= c[7]) {
            y = truncated(ln(v) * c[14] + c[10]);
            if (y < 0) return {};
            v = (u - c[6]) * c[12] * v;
        } else {
            y = truncated(-ln(v) * c[15] + c[11]);
            if (y > trials) return {};
            v = (u - c[7]) * c[13] * v;
        }
        return passes(c, y, v) ? Value{y} : Value{};
    }

    bool passes(const double* c, int32_t y, ext v) const {
        const ext n = trials, s = c[20], a = s * (n + 1), m = c[4],
                  k = std::fabs(y - m);
        const auto kk = static_cast<int>(k);
        if (kk == 0) return true;
        if (k <= 20 || k >= 0.5L * c[2] - 1) {
            if (kk <= 32) return v <= c[y < m ? 20 + kk : 52 + kk];
            ext w = c[y < m ? 52 : 84];
            if (v > w) return false;
            for (ext j = m - 33; j >= y; --j) w *= j / (a - s * j);
            for (ext j = m + 33; j <= y; ++j) w *= a / j - s;
            return v <= w;
        }
        const ext rho =
            k * c[19] *
            ((k * (k * rounded(1 / 3.0L) + 0.625L) + rounded(1 / 6.0L)) * c[19] + 0.5L);
        const ext t = -k * k * 0.5L * c[19];
        if (ln(v) < t - rho || ln(v) > t + rho) return ln(v) < t - rho;
        const auto e = [](ext z) {
            ext sum = 0;
            for (const int d : {1188, 1680, 1260, 360, 12})
                sum = rounded(1 / ext(d)) - z * z * sum;
            return z * sum;
        };
        const ext f1 = 1 + m, f2 = 1 + n - m, w1 = 1 / ext(y + 1), w2 = 1 / (1 + n - y);
        return ln(v) <= e(1 / f1) + e(1 / f2) + (n + 0.5L - m) * ln(f2 * w2) + e(w1) +
                            e(w2) + c[9] * ln(f1 * w1) +
                            (y - m) * ln((1 + n - y) * w1 * s);
    }
};

// A mean of 30 as doubles round it is not yet one: 100 * 0.3 is below it.
constexpr Binomial laws[] = {
    {5, 0.05, true},       {10, 0.5, true},      {10, 0.8, true},
    {50, 0.3, true},       {62, 0.4, true},      {63, 0.4, true},
    {64, 0.4, true},       {100, 0.3, true},     {100000, 0.000299, true},
    {120, 0.25, false},    {60, 0.5, false},     {120, 0.75, false},
    {40000, 0.001, false}, {150, 0.7, false},    {10000, 0.25, false},
    {1000, 0.9, false},    {1000000, 0.5, false}};

TEST(Binomial, AgreesWithItsRecomputation) {
    for (const Binomial& law : laws) {
        SCOPED_TRACE(law.name());
        expectRecomputed(law);
        expectFailure(law);
    }
}

TEST(Binomial, FitsItsDistribution) {
    for (const Binomial& law : laws) expectFits(law, 0, law.trials);
}

TEST(Binomial, KeepsItsSetup) {
    expectKept(laws[3], laws[14]);
    expectKept(laws[14], laws[3]);
}

TEST(Binomial, NoTrialsOnANewStreamMatchItsEmptyKey) {
    const Stream stream = newStream(KesBrngMT19937, {1});
    EXPECT_EQ(drawn(stream, Binomial{0, 0, true}, 3), std::vector<int32_t>(3, 0));
}

} // namespace

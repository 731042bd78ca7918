// Hypergeometric variates: the kept table and the kept envelope, and what is drawn from
// them, for all four ways to fold a lot.
#include "setups.hpp"

#include <gsl/gsl_randist.h>

using namespace qorkes::test;

namespace {

using ext = long double;

/// ln(i!), by Stirling's formula from 16 on.
ext logFactorial(int32_t i) {
    if (i < 16) return rounded(std::lgamma(i + 1.0L));
    const ext x = i, w = 1 / x;
    return (0.5L + x) * ln(x) + 0x1.d67f1c864beb5p-1 - x +
           w * (rounded(1 / 12.0L) - rounded(1 / 360.0L) * w * w);
}

ext exponential(ext x) {
    double y = rounded(x);
    _qordExp_HA(1, &y, &y);
    return y;
}

struct Hypergeometric {
    int32_t l, s, m;
    bool table;
    static constexpr int id = 6, words = 81, block = 512;

    int32_t few() const { return std::min(m, l - m); }
    int32_t many() const { return std::max(m, l - m); }
    int32_t sample() const { return std::min(s, l - s); }
    int32_t apart() const { return many() - sample(); }
    int32_t greatest() const { return std::min(few(), sample()); }
    int32_t mode() const {
        return truncated((sample() + 1.0L) * (few() + 1.0L) / (l + 2.0L));
    }
    bool isTable() const { return table; }
    int draw(StreamState* stream, int n, int32_t* r) const {
        return _kesiRngHypergeometric(0, stream, n, r, l, s, m);
    }
    /// Marked items in the sample, from few ones in the smaller part.
    int32_t unfolded(int32_t x) const {
        const int32_t inPart = m <= l - m ? x : sample() - x;
        return l > 2 * s ? inPart : m - inPart;
    }
    double probability(int32_t x) const {
        return gsl_ran_hypergeometric_pdf(
            static_cast<unsigned>(x), static_cast<unsigned>(m),
            static_cast<unsigned>(l - m), static_cast<unsigned>(s));
    }
    std::string name() const {
        return std::to_string(s) + " of " + std::to_string(l) + ", " +
               std::to_string(m) + " marked";
    }

    ext logFactorials(int32_t x) const {
        const int32_t v[] = {x, few() - x, sample() - x, x + apart()};
        ext sum = 0, inverses = 0, cubes = 0;
        if (*std::min_element(v, v + 4) < 16) {
            for (const int32_t i : v) sum += logFactorial(i);
            return sum;
        }
        for (const ext i : v) {
            sum += (0.5L + i) * ln(i);
            double w[] = {rounded(i), rounded(i * i * i)};
            _qordInv_HA(2, w, w);
            inverses += w[0];
            cubes += w[1];
        }
        return sum + 0x1.d67f1c864beb5p1 + rounded(1 / 12.0L) * inverses - l -
               rounded(1 / 360.0L) * cubes;
    }
    ext up(ext f, ext x) const {
        return f * (few() - x) * (sample() - x) / ((1 + x) * (1 + apart() + x));
    }
    ext down(ext f, ext x) const {
        return f * (apart() + x) * x / ((few() + 1 - x) * (sample() + 1 - x));
    }

    Words setup() const {
        Words c(words, unsaid);
        c[0] = l;
        c[1] = m;
        c[2] = s;
        if (table) {
            ext term = exponential(logFactorial(many()) + logFactorial(l - sample()) -
                                   logFactorial(apart()) - logFactorial(l));
            ext sum = 0;
            for (int x = 0; x < std::min(greatest() + 1, 64); ++x) {
                c[3 + x] = rounded(sum += term);
                term = up(term, x);
            }
            return c;
        }
        const ext k = sample(), n1 = few(), n2 = many(), mode_ = mode();
        const ext d =
            truncated(1.5L * root((l - k) * k * n1 * n2 / (l - 1)) / l) + 0.5L;
        c[6] = rounded(mode_ + 0.5L - d);
        c[7] = rounded(mode_ + 0.5L + d);
        c[8] = rounded(mode_ + 0.5L);
        c[9] = rounded(0.5L - mode_ + n1);
        c[10] = rounded(0.5L - mode_ + k);
        c[11] = rounded(0.5L + mode_ + (n2 - k));
        c[16] = rounded(logFactorials(mode()));
        const ext xl = c[6], xr = c[7];
        c[12] = rounded(-ln((n2 - k + xl) * xl / (1 + n1 - xl) * (1 / (1 + k - xl))));
        c[13] = rounded(-ln((1 + n1 - xr) * (1 + k - xr) / xr * (1 / (xr + n2 - k))));
        const ext fl = exponential(c[16] - logFactorials(truncated(xl)));
        const ext fr = exponential(c[16] - logFactorials(truncated(xr) - 1));
        c[3] = rounded(2 * d);
        c[4] = rounded(c[3] + fl / c[12]);
        c[5] = rounded(c[4] + fr / c[13]);
        c[14] = rounded(1 / ext{c[12]});
        c[15] = rounded(1 / ext{c[13]});
        ext f = 1, g = 1;
        for (int i = 0; i < 32; ++i) {
            c[17 + i] = rounded(f = down(f, mode_ - i));
            c[49 + i] = rounded(g = up(g, mode_ + i));
        }
        return c;
    }

    Value attempt(const double* c, const double* uniform) const {
        if (table) {
            const auto next = [&](ext x, ext term) {
                return (few() - x) * (sample() - x) * term /
                       ((x + 1 + apart()) * (x + 1));
            };
            return searched(c + 3, std::min(greatest() + 1, 64), *uniform, greatest(),
                            next);
        }
        const ext u = ext{uniform[0]} * c[5];
        ext v = uniform[1];
        int32_t y;
        if (u <= c[3]) {
            y = truncated(u + c[6]);
        } else if (u <= c[4]) {
            y = truncated(ln(v) * c[14] + c[6]);
            if (y < 0) return {};
            v = (u - c[3]) * c[12] * v;
        } else {
            y = truncated(-ln(v) * c[15] + c[7]);
            if (y > greatest()) return {};
            v = (u - c[4]) * c[13] * v;
        }
        return (mode() >= 100 && y > 200 ? squeezed(c, y, v) : walked(c, y, v))
                   ? Value{y}
                   : Value{};
    }

    bool walked(const double* c, int32_t y, ext v) const {
        const int32_t e = y - mode();
        if (e == 0) return true;
        if (std::abs(e) <= 32) return v <= c[e < 0 ? 16 - e : 48 + e];
        if (e < 0) return v <= down(c[48], mode() - 32); // one step, however far
        ext f = c[80];
        for (int32_t x = mode() + 32; x < y; ++x)
            if (v > (f = up(f, x))) return false;
        return true;
    }

    bool squeezed(const double* c, ext y, ext v) const {
        const ext m_ = mode(), e = y - m_;
        const ext x1 = y + 1, z = 1 - y + few(), w = 1 - y + sample(), h = apart() + x1;
        const ext third = rounded(1 / 3.0L);
        const ext t = z * w / (x1 * h) - 1, g = t * (1 - 0.5L * t + t * t * third);
        const ext gl = g - 0.25L * (t * t * (t * t)) / (t < 0 ? 1 + t : 1);
        const ext a[] = {-e / x1, e / z, e / w, -e / h};
        ext upper = g * y + 0.0034 - gl * m_, rest = 0;
        for (int i = 0; i < 4; ++i) {
            upper += c[8 + i] * (a[i] * (a[i] * (a[i] * third - 0.5L) + 1));
            const ext d = c[8 + i] * (a[i] * a[i] * (a[i] * a[i]));
            rest += d < 0 ? d / (1 + d) : d;
        }
        if (ln(v) > upper) return false;
        return ln(v) < (y + m_) * (gl - g) - 0.0078 + upper - 0.25L * rest ||
               ln(v) <= c[16] - logFactorials(static_cast<int32_t>(y));
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
                                   {400, 200, 160, false},
                                   {4000, 1700, 1900, false},
                                   {300000, 9000, 90000, false}};

// The walk of one step makes values far below these modes too likely.
constexpr Hypergeometric distorted[] = {
    {1000, 300, 400, false}, {20000, 4000, 500, false}, {2000, 990, 398, false}};

void expectAgreement(const Hypergeometric& law) {
    SCOPED_TRACE(law.name());
    EXPECT_EQ(law.table, law.mode() < 40) << law.mode();
    expectRecomputed(law);
    expectFailure(law);
}

TEST(Hypergeometric, AgreesWithItsRecomputation) {
    for (const Hypergeometric& law : laws) expectAgreement(law);
    for (const Hypergeometric& law : distorted) expectAgreement(law);
}

TEST(Hypergeometric, FitsItsDistribution) {
    for (const Hypergeometric& law : laws) expectFits(law, 0, law.m);
}

TEST(Hypergeometric, KeepsItsSetup) {
    expectKept(laws[0], laws[10]);
    expectKept(laws[10], laws[0]);
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

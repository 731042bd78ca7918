// Poisson and PoissonV: one value at a time by the methods' steps on the library's own
// kernels, the chunk that method 0 keeps, and the laws.
#include "goodness.hpp"
#include "mapping_errors.hpp"
#include "scripted.hpp"

#include <qorkes/qor.h>

#include <gsl/gsl_randist.h>

using namespace qorkes::test;

namespace {

using Ext = long double;
using Ints = std::vector<int32_t>;

Stream twister() { return newStream(KesBrngMT19937, {1907}); }

Ints poisson(int method, const Stream& stream, int n, double lambda) {
    Ints r(static_cast<std::size_t>(n));
    EXPECT_EQ(_kesiRngPoisson(method, stream.get(), n, r.data(), lambda), KesStatusOk);
    return r;
}

double applied(void (*kernel)(int, const double*, double*), Ext x) {
    double y = static_cast<double>(x);
    kernel(1, &y, &y);
    return y;
}
double ln(Ext x) { return applied(_qordLn_HA, x); }

float rounded(Ext x) { return static_cast<float>(x); }
double toDouble(Ext x) { return static_cast<double>(x); }
int truncated(Ext x) { return static_cast<int>(toDouble(x)); }

/// Method 0 by its steps. The set-up stands in c as in the chunk.
struct PlainPtpe {
    double c[84] = {};

    void setUpSearch(double lambda) {
        double t[32], s[33] = {};
        t[0] = applied(_qordExp_HA, -lambda);
        for (int k = 1; k < 32; ++k) t[k] = toDouble(t[k - 1] * (Ext(lambda) / k));
        for (int k = 31; k >= 0; --k) s[k] = toDouble(Ext(s[k + 1]) + t[k]);
        for (int k = 0; k < 32; ++k) c[52 + k] = toDouble(Ext(s[0]) - s[k + 1]);
        c[51] = lambda;
    }

    int searched(double u) const {
        for (int k = 0; k < 32; ++k)
            if (u < c[52 + k]) return k;
        Ext term = Ext(c[83]) - c[82], sum = c[83];
        int j = 32;
        for (Ext before = -1; u >= sum && sum != before; ++j) {
            term = term * c[51] / j;
            before = sum;
            sum += term;
        }
        return j - 1;
    }

    void setUpRejection(double lambda) {
        const Ext L = lambda, m = truncated(lambda);
        c[0] = lambda;
        c[1] = toDouble(m);
        c[2] = toDouble(1 / m);
        c[3] = toDouble(1 / (m * m * m));
        c[4] = ln(m / L);
        c[5] = truncated(Ext(2.195) * applied(_qordSqrt_HA, m) - Ext(2.2)) + 0.5;
        c[9] = toDouble(0.133 + 8.56 / (6.83 + L));
        c[10] = toDouble(1 / Ext(c[9]));
        c[11] = toDouble(1 / Ext(c[5]));
        c[12] = toDouble(m + 0.5L);
        c[13] = toDouble(Ext(c[12]) - c[5]);
        c[14] = toDouble(Ext(c[12]) + c[5]);
        const Ext al = (L - c[13]) / L, ar = (c[14] - L) / c[14];
        c[15] = toDouble(al * (0.5L * al + 1));
        c[16] = toDouble(ar * (0.5L * ar + 1));
        c[17] = toDouble(1 / Ext(c[15]));
        c[18] = toDouble(1 / Ext(c[16]));
        c[6] = toDouble(c[5] * (2 * Ext(c[9]) + 1));
        c[7] = toDouble(c[6] + (0.109 + 8.25 / (10.86 + L)) / c[15]);
        c[8] = toDouble(c[7] + Ext(c[9]) / c[16]);
        Ext down = 1, up = 1;
        for (int k = 1; k <= 16; ++k) {
            c[18 + k] = toDouble(down *= (m - (k - 1)) / L);
            c[34 + k] = toDouble(up *= L / (m + k));
        }
    }

    bool bySqueeze(int y, float v) const {
        const Ext L = c[0], M = c[1], x = 1 / Ext(y), del = x * (L - y), hy = y + 0.5L;
        const Ext B =
            (1 + del * (del * (1.0 / 3) - 0.5L)) * hy * del + (y + (Ext(0.00084) - L));
        const Ext A = ln(v);
        if (A > B) return false;
        Ext E = hy * (del * del) * (del * del) / 4;
        if (del < 0) E = E / (1 + del);
        if (A < B - Ext(0.004) - E) return true;
        return A <= hy * ln(L * x) + y + (0.5L + M) * c[4] - M +
                        (c[2] - x) * (1.0 / 12) + (x * x * x - c[3]) * (1.0 / 360);
    }

    bool byRatio(int y, float v) const {
        const int M = static_cast<int>(c[1]), k = std::abs(y - M);
        const double* table = c + (y > M ? 34 : 18);
        if (k == 0) return v <= 1;
        if (k <= 16) return v <= table[k];
        if (v > table[16]) return false;
        Ext f = table[16];
        if (y > M)
            for (int j = M + 17; j <= y; ++j) f = f * c[0] / j;
        else
            for (int j = M - 16; j > y; --j) f = f * j / c[0];
        return v <= f;
    }

    /// One attempt; below 0 if it is rejected.
    int attempted(float U, float v) const {
        const float u = rounded(U * Ext(c[8]));
        int y;
        if (u <= c[5]) return truncated(u + Ext(c[12]) - Ext(c[5]) * v);
        if (u <= c[6]) {
            const Ext x = (u - Ext(c[5])) * c[10] + c[13];
            v = rounded(Ext(v) * c[9] + 1 - std::fabs(c[12] - x) * c[11]);
            if (v > 1) return -1;
            y = truncated(x);
        } else if (const Ext L = ln(v); u <= c[7]) {
            const Ext w = L * c[17] + c[13];
            if (w < 0) return -1;
            y = truncated(w);
            v = rounded((u - Ext(c[6])) * v * c[15]);
        } else {
            y = truncated(-L * c[18] + c[14]);
            v = rounded((u - Ext(c[7])) * v * c[16]);
        }
        return (c[1] >= 100 && y > 50 ? bySqueeze(y, v) : byRatio(y, v)) ? y : -1;
    }

    Ints draw(const Stream& stream, int n, double lambda) {
        Ints r;
        if (lambda < 27) {
            if (lambda != c[51]) setUpSearch(lambda);
            for (const double u : take<double>(stream, n)) r.push_back(searched(u));
            return r;
        }
        if (lambda != c[0]) setUpRejection(lambda);
        while (static_cast<int>(r.size()) < n) {
            const auto pair = take<float>(stream, 2);
            if (const int y = attempted(pair[0], pair[1]); y >= 0) r.push_back(y);
        }
        return r;
    }
};

std::vector<double> chunk3(const Stream& stream) {
    const auto* c = static_cast<const double*>(__kesSearchChunk(stream.get(), 3));
    return c ? std::vector<double>(c, c + 84) : std::vector<double>();
}

constexpr double means[] = {1e-5,   0.5,   3,     26.99, 27,    27.7, 60.2,
                            99.999, 100.0, 100.5, 150.9, 1000., 5e6};

TEST(PoissonExact, GivesWhatItsStepsGive) {
    for (const double mean : means)
        for (const int n : {1, 99, 100, 255, 256, 257, 1500, 20000}) {
            const Stream own = twister(), plain = twister();
            PlainPtpe reference;
            EXPECT_EQ(poisson(0, own, n, mean), reference.draw(plain, n, mean))
                << mean << ", " << n;
            EXPECT_EQ(take<double>(own, 3), take<double>(plain, 3)) << mean;
        }
}

TEST(PoissonExact, KeepsTheSetUpOfASmallAndALargeMean) {
    const Stream stream = twister();
    PlainPtpe reference;
    EXPECT_TRUE(chunk3(stream).empty());
    poisson(0, stream, 0, 3.5);
    reference.setUpSearch(3.5);
    EXPECT_EQ(chunk3(stream), std::vector<double>(reference.c, reference.c + 84));
    for (const double mean : {120.25, 0.125, 27.0, 3.5}) {
        poisson(0, stream, 10, mean);
        mean < 27 ? reference.setUpSearch(mean) : reference.setUpRejection(mean);
        EXPECT_EQ(chunk3(stream), std::vector<double>(reference.c, reference.c + 84));
    }
    EXPECT_EQ(__kesGetNumChunks(stream.get()), 1);

    // The stored set-up is used as it is while its mean is asked for.
    auto* c = static_cast<double*>(__kesSearchChunk(stream.get(), 3));
    std::fill(c + 52, c + 84, 0.0);
    c[59] = 2;
    EXPECT_EQ(poisson(0, stream, 3, 3.5), Ints(3, 7));
    poisson(0, stream, 3, 40);
    EXPECT_EQ(poisson(0, stream, 3, 3.5), Ints(3, 7));
    poisson(0, stream, 3, 3.25);
    reference.setUpSearch(3.25);
    reference.setUpRejection(40);
    EXPECT_EQ(chunk3(stream), std::vector<double>(reference.c, reference.c + 84));
}

TEST(PoissonExact, GoesOnInCopiesAndFiles) {
    for (const double mean : {3.0, 300.0}) {
        StreamState* raw = nullptr;
        Stream stream = twister();
        poisson(0, stream, 77, mean);
        const std::string name = testing::TempDir() + "poisson.stream";
        ASSERT_EQ(__kesSaveStreamF(stream.get(), name.c_str(), -1), KesStatusOk);
        ASSERT_EQ(__kesLoadStreamF(&raw, name.c_str()), KesStatusOk);
        const Stream loaded(raw);
        EXPECT_EQ(chunk3(loaded), chunk3(stream));
        EXPECT_EQ(poisson(0, loaded, 500, mean), poisson(0, stream, 500, mean));
        ASSERT_EQ(__kesCopyStream(&raw, stream.get()), KesStatusOk);
        EXPECT_EQ(__kesSearchChunk(raw, 3), __kesSearchChunk(stream.get(), 3));
        const Stream copy(raw);
        EXPECT_EQ(poisson(0, copy, 500, mean), poisson(0, stream, 500, mean));
        stream->Chunks = 0; // shared with the copy, which frees them
    }
}

TEST(PoissonExact, EndsItsSearchesBeyondTheTable) {
    for (const int n : {1, 300}) {
        const std::size_t count = static_cast<std::size_t>(n);
        EXPECT_EQ(poisson(0, scriptedStream({0, 0.5, 1 - 0x1p-53, 1}), n, 0),
                  Ints(count, 0));
        for (const double mean : {0.001, 3.0, 20.0, 26.999})
            for (const double u : {1 - 0x1p-20, 1 - 0x1p-53, 1.0, 1.5}) {
                PlainPtpe reference;
                reference.setUpSearch(mean);
                EXPECT_EQ(poisson(0, scriptedStream({u}), n, mean),
                          Ints(count, reference.searched(u)))
                    << mean << ", " << u;
            }
    }
    const Ints far = poisson(0, scriptedStream({1 - 0x1p-40}), 1, 26.999);
    const auto beyond = [](int k) { // the probability
        return gsl_cdf_poisson_Q(static_cast<unsigned>(k), 26.999);
    };
    EXPECT_LT(beyond(far[0]), 0x1p-40);
    EXPECT_GE(beyond(far[0] - 1), 0x1p-40);
}

TEST(PoissonExact, EndsAtAFailingDraw) {
    Ints r(1200);
    for (const double mean : {2.0, 200.0}) {
        for (int failing = 0; failing < 3; ++failing) {
            const Stream stream = scriptedStream({0.3, 0.4});
            script.failAt = failing;
            r.assign(1200, -5);
            EXPECT_EQ(_kesiRngPoisson(0, stream.get(), 1200, r.data(), mean),
                      script.status);
            const auto written =
                static_cast<std::size_t>(failing * (mean < 27 ? 512 : 256));
            EXPECT_EQ(std::find(r.begin(), r.end(), -5) - r.begin(),
                      static_cast<int>(written));
        }
        const Stream stream = scriptedStream({0.3, 0.4});
        poisson(0, stream, 0, mean);
        EXPECT_TRUE(script.counts.empty());
        poisson(0, stream, 600, mean);
        EXPECT_EQ(script.counts, mean < 27 ? (std::vector<int>{512, 88})
                                           : (std::vector<int>{512, 512, 176}));
    }
}

TEST(PoissonExact, FollowsItsLaw) {
    for (const double mean :
         {0.7, 9.5, 26.9, 27.0, 45.3, 99.99, 100.0, 260.0, 12345.6}) {
        const int spread = static_cast<int>(8 * std::sqrt(mean)) + 8,
                  low = std::max(0, static_cast<int>(mean) - spread);
        expectFit(chiSquare(poisson(0, twister(), 1000000, mean), low,
                            static_cast<int>(mean) + spread,
                            [=](int k) {
                                return gsl_ran_poisson_pdf(static_cast<unsigned>(k),
                                                           mean);
                            }),
                  std::to_string(mean).c_str());
    }
}

/// Single-precision steps: each operation is rounded.
float sum(float a, float b) { return rounded(Ext(a) + b); }
float product(float a, float b) { return rounded(Ext(a) * b); }

std::vector<float> normals(const Stream& stream, int n, float mean = 0,
                           float deviation = 1) {
    std::vector<float> g(static_cast<std::size_t>(n));
    EXPECT_EQ(_kessRngGaussian(1, stream.get(), n, g.data(), mean, deviation),
              KesStatusOk);
    return g;
}

/// Value of a polynomial, constant term first.
Ext valueAt(Ext x, const double* c, int degree) {
    Ext y = c[degree];
    while (degree > 0) y = y * x + c[--degree];
    return y;
}

Ints plainMethod1(const Stream& stream, int n, double lambda) {
    const double* D = qorkes::normal_mapping::_kesiPoissonPoisnormD;
    Ints r;
    if (lambda >= D[0]) {
        const Ext w = 1 / Ext(lambda);
        const float mean = rounded(D[1] + Ext(lambda) + valueAt(w, D + 2, 2) * w),
                    deviation = rounded(applied(
                        _qordSqrt_HA, lambda + Ext(D[5]) + w * valueAt(w, D + 6, 2))),
                    b1 = rounded(w * valueAt(w, D + 9, 4)),
                    b2 = rounded(w * valueAt(w, D + 14, 4)),
                    b3 = rounded(w * valueAt(w, D + 19, 4));
        for (const float g : normals(stream, n, mean, deviation)) {
            const float e = sum(g, -mean);
            float y = sum(product(e, b3), b2);
            y = product(sum(product(y, e), b1), e);
            y = sum(sum(y, g), 1);
            r.push_back(y > 0 ? truncated(y) : 0);
        }
    } else if (lambda >= 1) {
        const int exponent = std::ilogb(lambda);
        const double* R = D + 24 + 23 * exponent;
        const Ext x = sum(rounded(std::ldexp(lambda, -exponent)), -1);
        float c[6] = {rounded(valueAt(x, R, 2))};
        for (int i = 1; i < 6; ++i) c[i] = rounded(valueAt(x, R + 4 * i - 1, 3));
        for (const float g : normals(stream, n)) {
            float t = sum(product(g, c[5]), c[4]);
            t = sum(product(t, g), c[3]);
            t = product(g, sum(product(t, g), c[2]));
            const float y = sum(sum(product(t, c[1]), 1), c[0]);
            r.push_back(y > 0 ? truncated(y) : 0);
        }
    } else {
        const float end = rounded(valueAt(lambda, D + 185, 7));
        for (const float u : take<float>(stream, n, {0, end})) {
            float s = 1;
            Ext term = 1;
            int k = 0;
            while (k < 11 && u > s) {
                term = term * lambda / ++k;
                s = rounded(s + term);
            }
            r.push_back(k);
        }
    }
    return r;
}

TEST(PoissonFromNormals, Method1GivesWhatItsStepsGive) {
    for (const double mean : {0.0, 1e-3, 0.5, 0.999999, 1.0, 1.9999999999, 2.0, 17.3,
                              63.9, 64.0, 99.9999, 100.0, 100.7, 2000.0, 1e6}) {
        const Stream own = twister(), plain = twister();
        for (const int n : {1, 2, 6, 1023, 5000})
            EXPECT_EQ(poisson(1, own, n, mean), plainMethod1(plain, n, mean))
                << mean << ", " << n;
    }
    EXPECT_EQ(poisson(1, scriptedStream({0, 0.5, 0x1.fffffep-1}), 3, 0), Ints(3, 0));
}

int plainVector(float z, double L) {
    const double* T = qorkes::vector_mapping::_kesdPoissonTab;
    if (L < 0.0625) {
        float u = rounded(Ext(z) * T[4]);
        _qorsErf_HA(1, &u, &u);
        const Ext w = std::fabs(u) * valueAt(L, T, 3);
        Ext s = 1, term = 1;
        int k = 0;
        while (k < 11 && w > s) {
            term = term * L / ++k;
            s += term;
        }
        return k;
    }
    const int exponent = std::ilogb(L);
    const double* C = T + 5 + 20 * std::min(exponent + 4, 17);
    const Ext x = std::ldexp(L, -exponent) - 1.0L;
    const Ext A = L + Ext(C[0]) + x * C[1];
    const Ext Dv = applied(_qordSqrt_HA, L) + Ext(C[2]) + C[3] * x;
    Ext P[4];
    for (int i = 0; i < 4; ++i) P[i] = valueAt(x, C + 4 + 4 * i, 3);
    const Ext y = z * (P[0] + (P[1] + (P[2] + P[3] * z) * z) * z) * Dv + (1 + A);
    return y > 0 ? truncated(y) : 0;
}

TEST(PoissonFromNormals, EachMeanHasItsOwnRow) {
    std::vector<double> some = {0,   1e-5, std::nextafter(0.0625, 0.0), 1e5, 0x1p21,
                                1e8, 3e8};
    for (double mean = 0x1p-4; mean < 0x1p14; mean *= 2) {
        some.push_back(mean);
        some.push_back(1.37 * mean);
        some.push_back(std::nextafter(2 * mean, 0.0));
    }
    for (const int n : {1, 255, 256, 257, 3001}) {
        std::vector<double> each;
        for (int i = 0; i < n; ++i)
            each.push_back(some[static_cast<std::size_t>(i) % some.size()]);
        const Stream own = twister(), plain = twister();
        Ints r(each.size()), expected;
        ASSERT_EQ(_kesiRngPoissonV(0, own.get(), n, r.data(), each.data()),
                  KesStatusOk);
        const auto z = normals(plain, n);
        for (std::size_t i = 0; i < each.size(); ++i)
            expected.push_back(plainVector(z[i], each[i]));
        EXPECT_EQ(r, expected) << n;
    }
}

TEST(PoissonFromNormals, SharesTheSpareNormalAndEndsAtAFailingDraw) {
    const Stream own = twister(), plain = twister();
    normals(own, 3);
    normals(plain, 3);
    EXPECT_EQ(poisson(1, own, 4, 5), plainMethod1(plain, 4, 5));
    EXPECT_EQ(normals(own, 2), normals(plain, 2));

    const std::vector<double> threes(4, 3.0);
    const auto drawn = [&](const Stream& stream, int row, int32_t* r) {
        return row < 3 ? _kesiRngPoisson(1, stream.get(), 4, r,
                                         row == 0   ? 0.5
                                         : row == 1 ? 5
                                                    : 500)
                       : _kesiRngPoissonV(0, stream.get(), 4, r, threes.data());
    };
    for (int row = 0; row < 4; ++row) {
        const Stream stream = scriptedStream({0.5});
        script.failAt = 0;
        Ints r(4, -5);
        EXPECT_EQ(drawn(stream, row, r.data()), script.status) << row;
        EXPECT_EQ(r, Ints(4, -5)) << row;
    }
}

TEST(PoissonFromNormals, ComesNearTheLaw) {
    const struct {
        MappingError (*errorOf)(double);
        double low, high, totalVariation;
    } ranges[] = {{errorOfMethod1, 0x1p-8, 16, 1.0e-3},
                  {errorOfMethod1, 16, 2000, 3e-4},
                  {errorOfVectorForm, 0x1p-8, 16, 1.0e-3},
                  {errorOfVectorForm, 16, 8192, 3e-4}};
    for (const auto& [errorOf, low, high, totalVariation] : ranges) {
        const MappingError error = largestError(errorOf, low, high, 25);
        EXPECT_LE(error.totalVariation, totalVariation) << low;
        EXPECT_LE(error.farOff, 1e-5) << low;
    }
}

} // namespace

// Poisson and PoissonV: method 0 by its kept set-ups and exact probabilities, the
// others one value at a time by their steps on the library's own kernels, and the laws.
#include "mapping_errors.hpp"
#include "setups.hpp"

#include <gsl/gsl_randist.h>

using namespace qorkes::test;
using qorkes::round32;
using qorkes::round64;

namespace {

using Ints = std::vector<int32_t>;

Stream twister() { return newStream(KesBrngMT19937, {1907}); }

Ints poisson(int method, const Stream& stream, int n, double lambda) {
    Ints r(static_cast<std::size_t>(n));
    EXPECT_EQ(_kesiRngPoisson(method, stream.get(), n, r.data(), lambda), KesStatusOk);
    return r;
}

// ---- Method 0 ----------------------------------------------------------------------

struct Poisson {
    double mean;
    bool table;
    static constexpr int id = 3, words = 84, block = 512;
    static constexpr int cumulative = 52, entries = 32, up = 34;

    int32_t mode() const { return truncated(mean); }
    int32_t last() const { return mean == 0 ? 0 : 0x7FFFFFFF; }
    int32_t unfolded(int32_t x) const { return x; }
    ext probability(int32_t x) const {
        if (x == 0) return std::exp(-ext{mean});
        return std::exp(x * std::log(ext{mean}) - mean - std::lgamma(x + 1.0L));
    }
    double exact(int32_t x) const { return gsl_ran_poisson_pdf(unsigned(x), mean); }
    std::pair<int32_t, int32_t> range() const {
        const int32_t spread = int32_t(8 * std::sqrt(mean)) + 8;
        return {std::max(mode() - spread, 0), mode() + spread};
    }
    std::string name() const { return std::to_string(mean); }
    int draw(StreamState* stream, int n, int32_t* r) const {
        return _kesiRngPoisson(0, stream, n, r, mean);
    }

    /// On floats: those of the stream, the place in the areas, and the height.
    Value attempt(const double* c, double first, double second) const {
        const ext u = round32(round32(first) * ext{c[8]}), v = round32(second);
        if (u <= c[5]) return truncated(u + c[12] - c[5] * v);
        if (u <= c[6]) {
            const ext x = (u - c[5]) * c[10] + c[13];
            const ext height = v * c[9] + 1 - std::fabs(c[12] - x) * c[11];
            return round32(height) > 1 ? Value{} : accepted(truncated(x), height);
        }
        if (u <= c[7]) {
            const ext x = std::log(v) * c[17] + c[13];
            return x < 0 ? Value{} : accepted(truncated(x), (u - c[6]) * v * c[15]);
        }
        return accepted(truncated(-std::log(v) * c[18] + c[14]),
                        (u - c[7]) * v * c[16]);
    }
    Value accepted(int32_t x, ext height) const {
        return round32(height) <= ratio(*this, x) ? Value{x} : Value{};
    }
};

// The first mean with an envelope is 27, the first mode with a squeeze 100.
constexpr Poisson laws[] = {{0.7, true},  {9.5, true},   {26.999, true},
                            {27, false},  {45.3, false}, {99.999, false},
                            {100, false}, {260, false},  {12345.6, false}};

TEST(PoissonExact, AgreesWithItsRecomputation) {
    expectAgreement(laws, 0x885804AD4404B254);
    constexpr Poisson extremes[] = {{0, true}, {1e-5, true}, {1e5, false}};
    expectAgreement(extremes, 0x17CEE5CBDAB27E3B);
}

TEST(PoissonExact, FitsItsDistribution) { expectFits(laws); }

TEST(PoissonExact, KeepsItsSetup) {
    expectKept(laws[0], laws[1]);
    expectKept(laws[4], laws[7]);
    // One of either kind beside the other.
    const Stream stream = scriptedStream({0.5});
    poisson(0, stream, 0, 3.5);
    auto* c = static_cast<double*>(__kesSearchChunk(stream.get(), Poisson::id));
    std::fill(c + 52, c + 84, 0.0);
    c[59] = 2;
    poisson(0, stream, 3, 40);
    EXPECT_EQ(poisson(0, stream, 3, 3.5), Ints(3, 7));
}

TEST(PoissonExact, EndsItsSearchesBeyondTheTable) {
    const int32_t far = poisson(0, scriptedStream({1 - 0x1p-40}), 1, 26.999)[0];
    const auto beyond = [](int32_t k) { // the probability
        return gsl_cdf_poisson_Q(unsigned(k), 26.999);
    };
    EXPECT_LT(beyond(far), 0x1p-40);
    EXPECT_GE(beyond(far - 1), 0x1p-40);
    for (const double u : {1.0, 1.5})
        EXPECT_GT(poisson(0, scriptedStream({u}), 1, 26.999)[0], far);
}

// ---- From normal numbers -----------------------------------------------------------

double squareRoot(ext x) {
    double y = round64(x);
    _qordSqrt_HA(1, &y, &y);
    return y;
}

/// Single-precision steps: each operation is rounded.
float sum(float a, float b) { return round32(ext(a) + b); }
float product(float a, float b) { return round32(ext(a) * b); }

std::vector<float> normals(const Stream& stream, int n, float mean = 0,
                           float deviation = 1) {
    std::vector<float> g(static_cast<std::size_t>(n));
    EXPECT_EQ(_kessRngGaussian(1, stream.get(), n, g.data(), mean, deviation),
              KesStatusOk);
    return g;
}

/// Value of a polynomial, constant term first.
ext valueAt(ext x, const double* c, int degree) {
    ext y = c[degree];
    while (degree > 0) y = y * x + c[--degree];
    return y;
}

Ints plainMethod1(const Stream& stream, int n, double lambda) {
    const double* D = qorkes::normal_mapping::_kesiPoissonPoisnormD;
    Ints r;
    if (lambda >= D[0]) {
        const ext w = 1 / ext(lambda);
        const float mean = round32(D[1] + ext(lambda) + valueAt(w, D + 2, 2) * w),
                    deviation = round32(
                        squareRoot(lambda + ext(D[5]) + w * valueAt(w, D + 6, 2))),
                    b1 = round32(w * valueAt(w, D + 9, 4)),
                    b2 = round32(w * valueAt(w, D + 14, 4)),
                    b3 = round32(w * valueAt(w, D + 19, 4));
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
        const ext x = sum(round32(std::ldexp(lambda, -exponent)), -1);
        float c[6] = {round32(valueAt(x, R, 2))};
        for (int i = 1; i < 6; ++i) c[i] = round32(valueAt(x, R + 4 * i - 1, 3));
        for (const float g : normals(stream, n)) {
            float t = sum(product(g, c[5]), c[4]);
            t = sum(product(t, g), c[3]);
            t = product(g, sum(product(t, g), c[2]));
            const float y = sum(sum(product(t, c[1]), 1), c[0]);
            r.push_back(y > 0 ? truncated(y) : 0);
        }
    } else {
        const float end = round32(valueAt(lambda, D + 185, 7));
        for (const float u : take<float>(stream, n, {0, end})) {
            float s = 1;
            ext term = 1;
            int k = 0;
            while (k < 11 && u > s) {
                term = term * lambda / ++k;
                s = round32(s + term);
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
        float u = round32(ext(z) * T[4]);
        _qorsErf_HA(1, &u, &u);
        const ext w = std::fabs(u) * valueAt(L, T, 3);
        ext s = 1, term = 1;
        int k = 0;
        while (k < 11 && w > s) {
            term = term * L / ++k;
            s += term;
        }
        return k;
    }
    const int exponent = std::ilogb(L);
    const double* C = T + 5 + 20 * std::min(exponent + 4, 17);
    const ext x = std::ldexp(L, -exponent) - 1.0L;
    const ext A = L + ext(C[0]) + x * C[1];
    const ext Dv = squareRoot(L) + ext(C[2]) + C[3] * x;
    ext P[4];
    for (int i = 0; i < 4; ++i) P[i] = valueAt(x, C + 4 + 4 * i, 3);
    const ext y = z * (P[0] + (P[1] + (P[2] + P[3] * z) * z) * z) * Dv + (1 + A);
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

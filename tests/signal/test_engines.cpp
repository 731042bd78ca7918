#include "precisions.hpp"
#include "reference.hpp"

#include <numeric>

using namespace qorkes::test;

namespace {

template <class T> struct Engines;

#define ENGINES(bits, letter)                                                          \
    static constexpr auto initBase = zubs_initTabTwdBase_##bits##f;                    \
    static constexpr auto initTwiddles = zubs_initTabTwd_L1_##bits##f;                 \
    static constexpr auto reverse = zubs_BitRev1_##letter;                             \
    static constexpr auto reverseTo = zubs_BitRev2_##letter;                           \
    static constexpr auto toReal = zubs_cRealRecombine_##bits##f;                      \
    static constexpr auto toComplex = zubs_cCcsRecombine_##bits##f;                    \
    static constexpr auto scale = zubs_rbMpy1_##bits##f

template <> struct Engines<double> {
    ENGINES(64, Z);
    static constexpr int smallest = 2;
    static void core(int sign, double* x, int n, const double* table, double*) {
        (sign < 0 ? zubs_cRadix4Fwd_64fc : zubs_cRadix4Inv_64fc)(x, n, table);
    }
};
template <> struct Engines<float> {
    ENGINES(32, C);
    static constexpr int smallest = 3;
    static void core(int sign, float* x, int n, const float* table, float* buffer) {
        (sign < 0 ? zubs_cRadix4Fwd_32fc : zubs_cRadix4Inv_32fc)(x, n, table, buffer,
                                                                 1);
    }
};
#undef ENGINES

template <class T> struct ComplexEngines : testing::Test {};
TYPED_TEST_SUITE(ComplexEngines, Precisions);

template <class T> std::vector<Complex> complexOf(const std::vector<T>& pairs) {
    std::vector<Complex> z(pairs.size() / 2);
    for (size_t i = 0; i < z.size(); ++i) z[i] = {pairs[2 * i], pairs[2 * i + 1]};
    return z;
}
std::vector<Exact> pairsOf(const std::vector<Complex>& z) {
    std::vector<Exact> pairs;
    for (const Complex& v : z) pairs.insert(pairs.end(), {v.real(), v.imag()});
    return pairs;
}

TYPED_TEST(ComplexEngines, CoresOfEverySize) {
    using E = Engines<TypeParam>;
    for (int order = E::smallest; order <= 10; ++order) {
        const int n = 1 << order;
        std::vector<TypeParam> base(257 * 2), table(size_t(n) * 3 + 12),
            buffer(2 * size_t(n));
        E::initBase(11, base.data());
        E::initTwiddles(order, base.data(), 11, table.data());
        std::vector<int32_t> reversal(size_t(n) / 4 + 1);
        zubs_initTabBitRev(order, reversal.data());
        const auto x = randomNumbers<TypeParam>(2 * size_t(n));
        for (int sign : {-1, 1}) {
            auto y = x, other = x;
            E::reverse(y.data(), n, reversal.data());
            E::reverseTo(x.data(), other.data(), n, reversal.data());
            EXPECT_EQ(y, other) << n;
            E::core(sign, y.data(), n, table.data(), buffer.data());
            const auto expected = pairsOf(transform(complexOf(x), sign));
            EXPECT_LE(relativeError(y, expected),
                      Zubs<TypeParam>::errorPerRootOfOrder * std::sqrt(Exact(order)))
                << n << ' ' << sign;
        }
    }
}

TEST(BitReversal, TablesAsLaidOut) {
    // Four middle bits: 6, 9 and 15 are their own reversals.
    int32_t table[17];
    zubs_initTabBitRev(6, table);
    const int32_t expected[17] = {4,  32, 8,  16, 12, 48, 20, 40, 28,
                                  56, 44, 52, 0,  60, 36, 24, 0};
    EXPECT_TRUE(std::equal(table, table + 17, expected));
    int32_t fused[9] = {-1, -1, -1, -1, -1, -1, -1, -1, -1};
    zubs_initTabBitRevNorm(5, fused);
    const int32_t expectedFused[9] = {0, 8, 4, 12, 2, 10, 6, 14, 0};
    EXPECT_TRUE(std::equal(fused, fused + 9, expectedFused));
}

// The spectrum of reals from the transform with the positive exponent, and back.
TYPED_TEST(ComplexEngines, MirroredRecombination) {
    using E = Engines<TypeParam>;
    constexpr int n = 16;
    const auto x = randomNumbers<TypeParam>(2 * n);
    // The pairs of sine and cosine; the float tables have real parts of four together.
    alignas(16) TypeParam forReal[n], forComplex[n];
    for (int k = 0; k < n / 2; ++k) {
        const bool split = sizeof(TypeParam) == 4;
        const int re = split ? k / 4 * 8 + k % 4 : 2 * k, im = split ? re + 4 : re + 1;
        const Exact t = twoPi * (k + split) / (2 * n);
        forReal[re] = TypeParam(std::cos(t) / 2);
        forReal[im] = TypeParam(0.5L - std::sin(t) / 2);
        forComplex[re] = TypeParam(std::cos(t));
        forComplex[im] = TypeParam(-std::sin(t));
    }

    auto z = pairsOf(transform(complexOf(x), 1));
    std::vector<TypeParam> data(z.begin(), z.end()), back(2 * n);
    E::toReal(data.data(), n, -1, forReal);
    auto expected = pairsOf(transform({x.begin(), x.end()}, 1));
    for (int i = 2; i < 2 * n; ++i)
        EXPECT_NEAR(double(data[size_t(i)]), double(expected[size_t(i)]),
                    double(40 * Zubs<TypeParam>::epsilon));
    E::toComplex(data.data(), back.data(), n, 1, forComplex);
    for (int i = 2; i < 2 * n; ++i)
        EXPECT_NEAR(double(back[size_t(i)]), 2 * double(z[size_t(i)]),
                    double(80 * Zubs<TypeParam>::epsilon));
}

TYPED_TEST(ComplexEngines, ScalingStopsAtTheEnds) {
    for (int count : {0, 1, 3, 8, 9, 31})
        for (int start = 1; start < 5; ++start) {
            std::vector<TypeParam> x(48);
            std::iota(x.begin(), x.end(), TypeParam(1));
            auto expected = x;
            for (int i = start; i < start + count; ++i)
                expected[size_t(i)] *= TypeParam(0.5);
            Engines<TypeParam>::scale(TypeParam(0.5), x.data() + start, count);
            EXPECT_EQ(x, expected) << start << ' ' << count;
        }
}

} // namespace

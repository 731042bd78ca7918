// Gaussian by method 1: the pair that a stream carries from call to call. GaussianMV:
// the forms of its factor.
#include "continuous.hpp"

#include <support/platform.hpp>

#include <limits>

using namespace qorkes;
using namespace qorkes::test;

#if defined(__SANITIZE_ADDRESS__)
/// The sanitizer is to refuse a block too large as malloc does, not to stop.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}
#endif

namespace {

using Counts = std::vector<int>;

template <class T> constexpr int pairChunk = std::is_same_v<T, double> ? 2 : 1;

Stream twister() { return newStream(KesBrngMT19937, {1898}); }

template <class T>
std::vector<T> gaussian1(const Stream& stream, int n, double a = 0, double sigma = 1) {
    return variates<T>("gaussian", 1, stream, n, {a, sigma});
}

/// The values of a pair that two calls share.
template <class T> Pair<T> halves(T u, T v) { return pairOf(u, v, false); }

template <class T> std::vector<T> carriedPair(const Stream& stream) {
    const auto* pair = static_cast<T*>(__kesSearchChunk(stream.get(), pairChunk<T>));
    return pair ? std::vector<T>(pair, pair + 2) : std::vector<T>();
}

template <class T> struct Pairs : testing::Test {};
using Precisions = testing::Types<double, float>;
TYPED_TEST_SUITE(Pairs, Precisions);

TYPED_TEST(Pairs, MakeOneSequenceOfAnyCalls) {
    using T = TypeParam;
    const auto wanted = gaussian1<T>(twister(), 5000, 2, 3);
    const Stream stream = twister();
    std::vector<T> r;
    for (const int n : {1, 1, 2, 1, 4, 3, 1024, 1025, 1023, 1, 511, 2, 1402}) {
        const auto part = gaussian1<T>(stream, n, 2, 3);
        r.insert(r.end(), part.begin(), part.end());
    }
    ASSERT_EQ(r.size(), wanted.size());
    constexpr T lastPlaces = 16 * std::numeric_limits<T>::epsilon();
    for (std::size_t i = 0; i < wanted.size(); ++i)
        EXPECT_NEAR(r[i], wanted[i], lastPlaces * 10) << i;
}

TYPED_TEST(Pairs, AreKeptAsUniformsUntilTheirSecondHalfIsDelivered) {
    using T = TypeParam;
    const Stream stream = scriptedStream({0.25, 0.125, 0.5, 0.75});
    const std::vector<T> none = {-1, -1};
    EXPECT_TRUE(carriedPair<T>(stream).empty());
    EXPECT_EQ(gaussian1<T>(stream, 1, 2, 3)[0],
              scaled(halves<T>(0.25, 0.125).sine, T(3), T(2)));
    EXPECT_EQ(carriedPair<T>(stream), (std::vector<T>{0.25, 0.125}));
    EXPECT_EQ(gaussian1<T>(stream, 1, 5, 7)[0],
              scaled(halves<T>(0.25, 0.125).cosine, T(7), T(5)));
    EXPECT_EQ(carriedPair<T>(stream), none);
    gaussian1<T>(stream, 2);
    EXPECT_EQ(carriedPair<T>(stream), none);
    EXPECT_EQ(script.counts, (Counts{2, 2}));
    EXPECT_EQ(__kesGetNumChunks(stream.get()), 1);
    const auto* chunk =
        reinterpret_cast<const Chunk*>(static_cast<intptr_t>(stream->Chunks));
    EXPECT_EQ(chunk->size, int{2 * sizeof(T)});
}

TYPED_TEST(Pairs, ArePassedToLognormalAndNotToOtherPrecisionsOrMethod0) {
    using T = TypeParam;
    using Other = std::conditional_t<std::is_same_v<T, double>, float, double>;
    const Stream stream = scriptedStream({0.25, 0.125, 0.5, 0.75});
    gaussian1<T>(stream, 1);
    EXPECT_EQ(gaussian1<Other>(stream, 1)[0], halves<Other>(0.5, 0.75).sine);
    EXPECT_EQ(variates<T>("gaussian", 0, stream, 1, {0, 1})[0],
              halves<T>(0.25, 0.125).sine);
    EXPECT_EQ(variates<T>("lognormal", 0, stream, 1, {0, 1, 0, 1})[0],
              exponentialOf(halves<T>(0.25, 0.125).cosine));
    EXPECT_EQ(gaussian1<Other>(stream, 1)[0], halves<Other>(0.5, 0.75).cosine);
    EXPECT_EQ(script.counts, (Counts{2, 2, 2}));
}

TYPED_TEST(Pairs, AreSharedByCopiesAndSavedInFiles) {
    using T = TypeParam;
    const Stream single = twister(), stream = twister();
    gaussian1<T>(single, 1);
    const auto sequence = gaussian1<T>(single, 3);
    gaussian1<T>(stream, 1);

    EXPECT_EQ(gaussian1<T>(reloaded(stream), 3), sequence);
    const Stream copy = copyOf(stream);
    EXPECT_EQ(gaussian1<T>(copy, 1)[0], sequence[0]);
    EXPECT_EQ(gaussian1<T>(stream, 2),
              std::vector<T>(sequence.begin() + 1, sequence.end()));
    copy->Chunks = 0; // they go with the original
}

TYPED_TEST(Pairs, AreUsedUpWhenALaterDrawFails) {
    using T = TypeParam;
    const Stream stream = scriptedStream({0.25, 0.125, 0.5, 0.75});
    gaussian1<T>(stream, 1);
    script.failAt = 1;
    T r[3] = {};
    EXPECT_EQ(variates("gaussian", 1, stream, 3, r, {2, 3}), -77);
    EXPECT_EQ(r[0], halves<T>(0.25, 0.125).cosine); // not scaled
    EXPECT_NE(carriedPair<T>(stream), (std::vector<T>{0.25, 0.125}));
}

// ---- GaussianMV --------------------------------------------------------------------

int vectors(int method, StreamState* s, int n, double* r, int dimen, int mstorage,
            const double* a, const double* t) {
    return _kesdRngGaussianMV(method, s, n, r, dimen, mstorage, a, t);
}
int vectors(int method, StreamState* s, int n, float* r, int dimen, int mstorage,
            const float* a, const float* t) {
    return _kessRngGaussianMV(method, s, n, r, dimen, mstorage, a, t);
}

template <class T> constexpr T factorElement(int i, int j) {
    return static_cast<T>(i == j ? 1.5 + i : 0.25 * i - j);
}

/// The factor in this form; what must not be read is NaN.
template <class T> std::vector<T> factor(int dimen, int mstorage) {
    const bool isPacked = mstorage == KesMatrixStoragePacked;
    std::vector<T> t;
    for (int major = 0; major < dimen; ++major)
        for (int minor = 0; minor < dimen; ++minor) {
            const int i = isPacked ? minor : major, j = isPacked ? major : minor;
            if (mstorage == KesMatrixStorageDiagonal ? i == j : i >= j)
                t.push_back(factorElement<T>(i, j));
            else if (mstorage == KesMatrixStorageFull)
                t.push_back(std::numeric_limits<T>::quiet_NaN());
        }
    return t;
}

/// Element i of a + T z.
template <class T> T mixedElement(int i, int mstorage, const T* z, const T* a) {
    const auto t = [=](int j) { return factorElement<T>(i, j); };
    if (mstorage == KesMatrixStorageDiagonal) return scaled(z[i], t(i), a[i]);
    if (mstorage > KesMatrixStorageDiagonal) return z[i];
    T sum;
    storeRounded(sum, ext{t(0)} * z[0]);
    for (int j = 1; j <= i; ++j) sum = scaled(z[j], t(j), sum);
    storeRounded(sum, ext{sum} + a[i]);
    return sum;
}

template <class T> struct Vectors : testing::Test {};
TYPED_TEST_SUITE(Vectors, Precisions);

TYPED_TEST(Vectors, AreMixedByEveryFormOfFactor) {
    using T = TypeParam;
    constexpr int n = 150;
    for (const int method : {0, 1})
        for (const int dimen : {2, 3, 9})
            for (const int mstorage : {0, 1, 2, 3}) {
                const auto t = factor<T>(dimen, mstorage);
                std::vector<T> a, r(static_cast<std::size_t>(n * dimen)), wanted;
                for (int i = 0; i < dimen; ++i) a.push_back(static_cast<T>(10 * i));
                EXPECT_EQ(vectors(method, twister().get(), n, r.data(), dimen, mstorage,
                                  a.data(), t.data()),
                          KesStatusOk);
                const auto z =
                    variates<T>("gaussian", method, twister(), n * dimen, {0, 1});
                for (int k = 0; k < n * dimen; ++k)
                    wanted.push_back(mixedElement(
                        k % dimen, mstorage,
                        &z[static_cast<std::size_t>(k / dimen * dimen)], a.data()));
                EXPECT_TRUE(sameBits(wanted.data(), r.data(), n * dimen))
                    << method << ' ' << dimen << ' ' << mstorage;
            }
}

TYPED_TEST(Vectors, OfOneDimensionAreGaussian) {
    using T = TypeParam;
    const T a = 5, t = 7;
    std::vector<T> r(100);
    EXPECT_EQ(vectors(1, twister().get(), 100, r.data(), 1, 3, &a, &t), KesStatusOk);
    EXPECT_EQ(r, gaussian1<T>(twister(), 100, a, t));
}

TYPED_TEST(Vectors, AreLeftUnmixedWithoutDrawsOrMemory) {
    using T = TypeParam;
    const T a[2] = {}, t[4] = {};
    T r[4] = {};
    const Stream stream = scriptedStream({0.25, 0.125});
    script.failAt = 0;
    EXPECT_EQ(vectors(0, stream.get(), 2, r, 2, 0, a, t), -77);
    script.failAt = -1;
    constexpr int tooMany = (1 << 30) - 1;
    if (hasSmallAddresses) {
        EXPECT_EQ(vectors(0, stream.get(), 0, r, tooMany, 0, a, t), KesStatusNoMemory);
    }
}

} // namespace

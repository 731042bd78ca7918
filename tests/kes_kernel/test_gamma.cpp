// Gamma variates: each method against variates made one at a time, the attempt that
// waits from call to call, failures, and fit.
#include <kes_kernel/attempts.hpp>
#include <kes_kernel/goodness.hpp>

#include <cstdio>
#include <deque>

using namespace qorkes;
using namespace qorkes::test;

namespace {

int gamma(StreamState* stream, int n, double* r, double alpha, double a = 0,
          double beta = 1) {
    return _kesdRngGamma(0, stream, n, r, alpha, a, beta);
}
int gamma(StreamState* stream, int n, float* r, float alpha, float a = 0,
          float beta = 1) {
    return _kessRngGamma(0, stream, n, r, alpha, a, beta);
}

template <class T> struct OneAtATime : Uniforms<T> {
    using Uniforms<T>::next;
    std::deque<std::pair<T, T>> attempts; // normals with their uniforms

    T cube(T alpha) {
        const ext d = ext{alpha} - T(0x1.5555555555555p-2);
        const T c = squareRootOf(T(1 / (ext{alpha} * 9 - 3)));
        for (;;) {
            if (attempts.empty()) addAttempts();
            const auto [x, u] = attempts.front();
            attempts.pop_front();
            const ext t = ext{x} * c + 1, v = t * t * t, xx = ext{x} * x;
            if (t <= 0) continue;
            if (u < 1 - T(0.0331) * xx * xx) return T(v * d);
            const T lnV = logarithmOf(T(v)), lnU = logarithmOf(u);
            if (0.5L * xx + (1 + ext{lnV} - v) * d > lnU) return T(v * d);
        }
    }

    void addAttempts() {
        const T p0 = next(), p1 = next(), p2 = next(), p3 = next();
        T angle = T(p2 * ext{T(0x1.921fb54442d18p+2)}), sine;
        quickSineCosine(1, &angle, &sine, &angle);
        const T distance = squareRootOf(T(-2 * ext{logarithmOf(p0)}));
        attempts.emplace_back(T(ext{distance} * sine), p1);
        attempts.emplace_back(T(ext{distance} * angle), p3);
    }

    T belowWeibull(T alpha) {
        const ext rest = 1 - ext{alpha};
        const ext w = rest * exponentialOf(T(alpha / rest * logarithmOf(alpha)));
        for (;;) {
            const T e1 = -logarithmOf(next()), e2 = -logarithmOf(next());
            const T x = powerOf(e1, T(1 / ext{alpha}));
            if (w + x <= ext{e1} + e2) return x;
        }
    }

    T powerOfExponential(T alpha) {
        const ext ia = 1 / ext{alpha}, b = 1 - ext{alpha};
        for (;;) {
            const T u = next(), e = -logarithmOf(next());
            const T y = u <= b ? 0 : -logarithmOf(T((1 - ext{u}) * ia));
            const T x = powerOf(u <= b ? u : T(y * ext{alpha} + b), T(ia));
            if (u <= b ? x <= e : ext{y} + e >= x) return x;
        }
    }

    T exponential(T) { return T(-ext{logarithmOf(next())}); }
};

template <class T> struct Gamma : testing::Test {};
using Types = testing::Types<double, float>;
TYPED_TEST_SUITE(Gamma, Types);

TYPED_TEST(Gamma, EveryShapeHasItsMethod) {
    using T = TypeParam;
    using Plain = OneAtATime<T>;
    struct Case {
        T alpha;
        T (Plain::*method)(T);
    };
    for (const auto& [alpha, method] : std::initializer_list<Case>{
             {T(0.01), &Plain::powerOfExponential},
             {T(0.5), &Plain::powerOfExponential},
             {std::nextafter(T(0.6), T(0)), &Plain::powerOfExponential},
             {T(0.6), &Plain::belowWeibull},
             {std::nextafter(T(1), T(0)), &Plain::belowWeibull},
             {T(1), &Plain::exponential},
             {std::nextafter(T(1), T(2)), &Plain::cube},
             {T(1.5), &Plain::cube},
             {T(100), &Plain::cube}}) {
        SCOPED_TRACE(alpha);
        const Stream stream = randomStream();
        Plain plain;
        const T a = T(1.25), beta = T(0.7);
        expectOneAtATime<T>(
            stream,
            [&](auto* s, int n, T* r) { return gamma(s, n, r, alpha, a, beta); }, plain,
            [&] { return scaled((plain.*method)(alpha), beta, a); });
    }
}

TYPED_TEST(Gamma, DrawsBlocksOfWhatIsMissing) {
    using T = TypeParam;
    struct Call {
        int n;
        std::vector<int> counts;
    };
    const auto expectCounts = [](T alpha, const std::vector<Call>& calls) {
        const Stream stream = scriptedStream({0.5, 0.01, 0.3, 0.02});
        for (const Call& call : calls)
            EXPECT_EQ(countsOf<T>(
                          stream,
                          [=](auto* s, int n, T* r) { return gamma(s, n, r, alpha); },
                          call.n),
                      call.counts)
                << "shape " << alpha << ", " << call.n;
    };
    for (const T alpha : {T(0.3), T(0.8)})
        expectCounts(alpha, {{0, {}}, {1, {2}}, {512, {1024}}, {513, {1024, 2}}});
    expectCounts(1, {{0, {0}}, {513, {513}}});
    expectCounts(100, {{0, {}},
                       {1, {4}},
                       {0, {}},
                       {1, {}},
                       {511, {1024}},
                       {513, {1024}},
                       {514, {1024, 4}},
                       {2, {4}},
                       {1025, {1024, 1024, 4}},
                       {1024, {1024, 1024}}});
}

TYPED_TEST(Gamma, AnAttemptWaitsWithTheStream) {
    using T = TypeParam;
    const std::string path = testing::TempDir() + "qorkes-gamma.stream";
    const auto one = [](StreamState* stream, T alpha) {
        T x = 0;
        EXPECT_EQ(gamma(stream, 1, &x, alpha), KesStatusOk);
        return x;
    };
    const Stream stream = scriptedStream({0.5, 0.01, 0.3, 0.02});
    one(stream.get(), T(0.8));
    EXPECT_EQ(__kesGetNumChunks(stream.get()), 0);
    OneAtATime<T> plain;
    plain.taken = script.next;
    EXPECT_EQ(one(stream.get(), T(1.5)), plain.cube(T(1.5)));
    const auto* waiting = static_cast<const T*>(
        __kesSearchChunk(stream.get(), std::is_same_v<T, double> ? 7 : 8));
    ASSERT_TRUE(waiting);
    EXPECT_EQ(waiting[0], plain.attempts.front().second);
    EXPECT_EQ(waiting[1], plain.attempts.front().first);
    ASSERT_EQ(__kesSaveStreamF(stream.get(), path.c_str(), -1), KesStatusOk);

    const Stream copy = copyOf(stream);
    StreamState* loaded = nullptr;
    ASSERT_EQ(__kesLoadStreamF(&loaded, path.c_str()), KesStatusOk);
    std::remove(path.c_str());
    const T second = plain.cube(T(30));
    EXPECT_EQ(one(loaded, T(30)), second);
    EXPECT_EQ(one(copy.get(), T(30)), second);
    EXPECT_EQ(script.next, plain.taken);
    EXPECT_LT(waiting[0], 0);
    one(stream.get(), T(30));
    EXPECT_EQ(script.next, plain.taken + 4) << "a copy shares the attempt";
    __kesDeleteStream(&loaded);
    copy->Chunks = 0;
}

TYPED_TEST(Gamma, KeepsWhatItHasWhenADrawFails) {
    using T = TypeParam;
    for (const T alpha : {T(0.3), T(0.8), T(1.1)}) {
        SCOPED_TRACE(alpha);
        expectFailures<T>(
            [=](auto* s, int n, T* r) { return gamma(s, n, r, alpha); },
            [=](auto* s, int n, T* r) { return gamma(s, n, r, alpha, 3, 2); },
            [](int) { return T(-7); });
    }
}

TEST(Gamma, EndsForShapesWithoutVariates) {
    const Stream stream = newStream(KesBrngMCG59, {1});
    double r[512];
    EXPECT_EQ(gamma(stream.get(), 512, r, NAN), KesStatusOk);
    EXPECT_TRUE(std::ranges::all_of(r, [](double x) { return std::isnan(x); }));
}

TYPED_TEST(Gamma, FitsEveryShape) {
    using T = TypeParam;
    constexpr int n = std::is_same_v<T, double> ? 1000000 : 100000;
    const Stream stream = newStream(KesBrngMT19937, {20});
    std::vector<T> r(n);
    for (const T alpha : {T(0.3), T(0.8), T(1), T(1.1), T(100)}) {
        ASSERT_EQ(gamma(stream.get(), n, r.data(), alpha, 0, 2), KesStatusOk);
        const double p = kolmogorovSmirnov(
            r, [=](double x) { return gsl_cdf_gamma_P(x, alpha, 2); });
        expectFit(p, ("shape " + std::to_string(alpha)).c_str());
    }
}

} // namespace

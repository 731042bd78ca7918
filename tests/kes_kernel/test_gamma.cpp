// Gamma variates: each method against variates made one at a time, the attempt that
// waits from call to call, and failures.
#include "attempts.hpp"

#include <deque>

using namespace qorkes;
using namespace qorkes::test;

namespace {

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
    const auto expectMethod = [](T alpha, T (Plain::*method)(T)) {
        const Stream stream = newStream(KesBrngMT19937, {5});
        Plain plain{{stream}, {}};
        const T a = T(1.25), beta = T(0.7);
        expectOneAtATime<T>("gamma", {alpha, a, beta}, stream,
                            [&] { return scaled((plain.*method)(alpha), beta, a); });
    };
    expectMethod(T(0.01), &Plain::powerOfExponential);
    expectMethod(T(0.5), &Plain::powerOfExponential);
    expectMethod(std::nextafter(T(0.6), T(0)), &Plain::powerOfExponential);
    expectMethod(T(0.6), &Plain::belowWeibull);
    expectMethod(std::nextafter(T(1), T(0)), &Plain::belowWeibull);
    expectMethod(T(1), &Plain::exponential);
    expectMethod(std::nextafter(T(1), T(2)), &Plain::cube);
    expectMethod(T(1.5), &Plain::cube);
    expectMethod(T(100), &Plain::cube);
}

/// Every attempt is accepted.
Stream easyStream() { return scriptedStream({0.5, 0.01, 0.3, 0.02}); }

TYPED_TEST(Gamma, DrawsBlocksOfWhatIsMissing) {
    struct Call {
        int n;
        Counts counts;
    };
    const auto expectCounts = [](double alpha, const std::vector<Call>& calls) {
        const Stream stream = easyStream();
        for (const auto& [n, counts] : calls)
            EXPECT_EQ(countsOf<TypeParam>("gamma", stream, n, {alpha, 0, 1}), counts)
                << "shape " << alpha << ", " << n;
    };
    for (const double alpha : {0.3, 0.8})
        expectCounts(alpha, {{0, {}}, {512, {1024}}, {513, {1024, 2}}});
    expectCounts(1, {{0, {0}}, {513, {513}}});
    expectCounts(100, {{0, {}},
                       {1, {4}},
                       {0, {}},
                       {1, {}},
                       {511, {1024}},
                       {513, {1024}},
                       {514, {1024, 4}},
                       {1025, {1024, 1024, 4}},
                       {1024, {1024, 1024}}});
}

TYPED_TEST(Gamma, AnAttemptWaitsWithTheStream) {
    using T = TypeParam;
    const auto one = [](const Stream& stream, double alpha) {
        return variates<T>("gamma", 0, stream, 1, {alpha, 0, 1})[0];
    };
    const Stream plainStream = easyStream();
    OneAtATime<T> plain{{plainStream}, {}};
    const T first = plain.cube(T(1.5)), second = plain.cube(30);

    const Stream stream = easyStream();
    EXPECT_EQ(one(stream, 1.5), first);
    const auto* waiting = static_cast<const T*>(
        __kesSearchChunk(stream.get(), std::is_same_v<T, double> ? 7 : 8));
    ASSERT_TRUE(waiting);
    EXPECT_EQ(waiting[0], T(0.02));

    EXPECT_EQ(one(reloaded(stream), 30), second);
    const Stream copy = copyOf(stream);
    EXPECT_EQ(one(copy, 30), second);
    copy->Chunks = 0;
    EXPECT_EQ(script.next, 4u);
    EXPECT_LT(waiting[0], 0) << "a copy shares the attempt";
    one(stream, 30);
    EXPECT_EQ(script.next, 8u);
}

TYPED_TEST(Gamma, KeepsWhatItHasWhenADrawFails) {
    for (const double alpha : {0.3, 0.8, 1.1})
        expectFailures<TypeParam>("gamma", {alpha, 3, 2}, {alpha, 0, 1},
                                  [](int) { return TypeParam(-7); });
}

TEST(Gamma, EndsForShapesWithoutVariates) { expectNoNumbers("gamma", {NAN, 0, 1}); }

} // namespace

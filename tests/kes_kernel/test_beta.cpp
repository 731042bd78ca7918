// Beta variates: each method against variates made one at a time, failures, and fit.
#include <kes_kernel/attempts.hpp>
#include <kes_kernel/goodness.hpp>

using namespace qorkes;
using namespace qorkes::test;

namespace {

template <class T> struct Shapes { T p, q; };

int beta(StreamState* stream, int n, double* r, Shapes<double> s, double a = 0,
         double beta = 1) {
    return _kesdRngBeta(0, stream, n, r, s.p, s.q, a, beta);
}
int beta(StreamState* stream, int n, float* r, Shapes<float> s, float a = 0,
         float beta = 1) {
    return _kessRngBeta(0, stream, n, r, s.p, s.q, a, beta);
}

/// 1 - x as the last step sees it.
ext mirrored(double x) { return 1 - ext{x}; }
ext mirrored(float x) { return round32(1 - ext{x}); }

template <class T> struct OneAtATime : Uniforms<T> {
    using Uniforms<T>::next;

    ext johnk(T p, T q) {
        for (;;) {
            const T x = exponentialOf(T(logarithmOf(next()) * (1 / ext{p})));
            const T y = exponentialOf(T(logarithmOf(next()) * (1 / ext{q})));
            const ext s = ext{x} + y;
            if (s > 0 && s <= 1) return T(x / s);
        }
    }

    ext atkinson1(T p, T q) {
        const T s1 = squareRootOf(T(p * (1 - ext{p})));
        const T s2 = squareRootOf(T(q * (1 - ext{q})));
        const ext t = s1 / (ext{s2} + s1);
        return belowSwitch(p, q, t, q * t / ((1 - t) * p + q * t), 1 - t);
    }

    ext atkinson2(T p, T q) {
        const ext t = (1 - ext{p}) / ((1 - ext{p}) + q);
        const ext e = powerOf(T(1 - t), q);
        return belowSwitch(p, q, t, q * t / (e * p + q * t), 1);
    }

    ext belowSwitch(T p, T q, ext t, ext w, ext width) {
        const T ip = T(1 / ext{p}), iq = T(1 / ext{q});
        T base[2] = {T(1 / w), T(1 / (1 - w))}, exponent[2] = {ip, iq}, c[2];
        power(2, base, exponent, c);
        const ext k1 = c[0] * t, k2 = c[1] * (1 - t);
        for (;;) {
            const T u = next(), l = logarithmOf(next());
            ext x, g;
            if (u <= w) {
                x = k1 * quickPowerOf(u, ip);
                g = (1 - ext{q}) * logarithmOf(T((1 - x) / width));
            } else {
                x = 1 - k2 * quickPowerOf(T(1 - ext{u}), iq);
                g = (1 - ext{p}) * logarithmOf(T(x / t));
            }
            if (g + l <= 0) return T(x);
        }
    }

    ext cheng(T p, T q) {
        const ext s = ext{p} + q;
        const T b = squareRootOf(T((s - 2) / (2 * ext{p} * q - s)));
        const ext g = 1 / ext{b} + p;
        for (;;) {
            const T u1 = next(), u2 = next();
            const ext v = ext{b} * logarithmOf(T(u1 / (1 - ext{u1})));
            const ext w = ext{p} * exponentialOf(T(v)), f = 1 / (w + q);
            const T l1 = logarithmOf(T(s * f)), l2 = logarithmOf(T(ext{u1} * u1 * u2));
            if (s * l1 - T(0x1.62e42fefa39efp+0) + v * g >= l2) return T(w * f);
        }
    }

    ext mirroredAtkinson2(T p, T q) { return mirrored(T(atkinson2(q, p))); }
    ext mirroredPower(T, T q) { return mirrored(powerOf(next(), T(1 / ext{q}))); }
    ext plainPower(T p, T) { return powerOf(next(), T(1 / ext{p})); }
};

template <class T> struct Beta : testing::Test {};
using Types = testing::Types<double, float>;
TYPED_TEST_SUITE(Beta, Types);

/// The last q of _Johnk beside p = 0.5.
template <class T> T border() {
    const T square = T(0x1.b45acbbf56123p-1), constant = T(-0x1.e9986aa60216p-1);
    const ext q = -(square * ext{0.25} + constant);
    return T(q) <= q ? T(q) : std::nextafter(T(q), T(0));
}

TYPED_TEST(Beta, EveryRegionHasItsMethod) {
    using T = TypeParam;
    using Plain = OneAtATime<T>;
    struct Case {
        Shapes<T> shapes;
        ext (Plain::*method)(T, T);
    };
    const T below = std::nextafter(T(1), T(0)), above = std::nextafter(T(1), T(2));
    for (const auto& [shapes, method] : std::initializer_list<Case>{
             {{T(0.01), T(0.02)}, &Plain::johnk},
             {{T(0.5), border<T>()}, &Plain::johnk},
             {{T(0.5), std::nextafter(border<T>(), T(1))}, &Plain::atkinson1},
             {{below, below}, &Plain::atkinson1},
             {{below, above}, &Plain::atkinson2},
             {{T(0.3), T(2.5)}, &Plain::atkinson2},
             {{above, below}, &Plain::mirroredAtkinson2},
             {{T(40), T(0.9)}, &Plain::mirroredAtkinson2},
             {{above, above}, &Plain::cheng},
             {{T(2), T(300)}, &Plain::cheng},
             {{T(1), T(0.5)}, &Plain::mirroredPower},
             {{T(1), T(1)}, &Plain::mirroredPower},
             {{T(1), T(3)}, &Plain::mirroredPower},
             {{T(0.5), T(1)}, &Plain::plainPower},
             {{T(3), T(1)}, &Plain::plainPower},
             {{T(NAN), T(1)}, &Plain::plainPower}}) {
        SCOPED_TRACE(testing::Message() << shapes.p << ", " << shapes.q);
        const Stream stream = randomStream();
        Plain plain;
        const T a = T(-0.3), width = T(1.7);
        expectOneAtATime<T>(
            stream,
            [&](auto* s, int n, T* r) { return beta(s, n, r, shapes, a, width); },
            plain,
            [&] {
                const ext x = (plain.*method)(shapes.p, shapes.q);
                return scaled(x, width, a);
            });
    }
}

TYPED_TEST(Beta, DrawsBlocksOfWhatIsMissing) {
    using T = TypeParam;
    using Counts = std::vector<int>;
    const auto counts = [](Shapes<T> shapes, int n) {
        return countsOf<T>(
            scriptedStream({0.3, 0.05}),
            [=](auto* s, int m, T* r) { return beta(s, m, r, shapes); }, n);
    };
    for (const Shapes<T> shapes : {Shapes<T>{T(0.3), T(0.4)},
                                   {T(0.7), T(0.8)},
                                   {T(0.5), 3},
                                   {3, T(0.5)},
                                   {2, 3}}) {
        EXPECT_EQ(counts(shapes, 0), Counts{});
        EXPECT_EQ(counts(shapes, 1026), (Counts{1024, 1024, 4}));
    }
    for (const Shapes<T> shapes : {Shapes<T>{1, 3}, {3, 1}, {T(NAN), 3}}) {
        EXPECT_EQ(counts(shapes, 0), Counts{0});
        EXPECT_EQ(counts(shapes, 1026), Counts{1026});
    }
}

TYPED_TEST(Beta, KeepsWhatItHasWhenADrawFails) {
    using T = TypeParam;
    const auto expect = [](Shapes<T> shapes, Shapes<T> standard, bool leavesUniforms) {
        SCOPED_TRACE(testing::Message() << shapes.p << ", " << shapes.q);
        expectFailures<T>(
            [=](auto* s, int n, T* r) { return beta(s, n, r, standard); },
            [=](auto* s, int n, T* r) { return beta(s, n, r, shapes, 3, 2); },
            [=](int i) {
                if (!leavesUniforms || script.failAt == 0) return T(-7);
                return T(script.numbers[script.next - 2 * (500 - i)]);
            });
    };
    expect({T(0.3), T(0.4)}, {T(0.3), T(0.4)}, false);
    expect({T(0.7), T(0.8)}, {T(0.7), T(0.8)}, true);
    expect({T(0.5), 3}, {T(0.5), 3}, true);
    expect({3, T(0.5)}, {T(0.5), 3}, true);
    expect({2, 3}, {2, 3}, false);
}

TYPED_TEST(Beta, IsUniformWithAShapeThatIsNoNumber) {
    using T = TypeParam;
    T r[9], u[9];
    ASSERT_EQ(beta(randomStream().get(), 9, r, {T(NAN), T(2)}, T(0.1), T(0.3)), 0);
    ASSERT_EQ(draw<T>(randomStream(), 9, u, {T(0.1), T(ext{T(0.1)} + T(0.3))}), 0);
    EXPECT_TRUE(sameBits(u, r, 9));
}

TEST(Beta, EndsForShapesWithoutVariates) {
    const Stream stream = newStream(KesBrngMCG59, {1});
    double r[512];
    EXPECT_EQ(beta(stream.get(), 512, r, {-1, -1}), KesStatusOk);
    EXPECT_TRUE(std::ranges::all_of(r, [](double x) { return std::isnan(x); }));
}

TYPED_TEST(Beta, FitsEveryRegion) {
    using T = TypeParam;
    constexpr int n = std::is_same_v<T, double> ? 1000000 : 100000;
    const Stream stream = newStream(KesBrngMT19937, {21});
    std::vector<T> r(n);
    for (const auto& [p, q] : std::initializer_list<Shapes<T>>{{T(0.45), T(0.7)},
                                                               {T(0.7), T(0.8)},
                                                               {T(0.5), T(3)},
                                                               {T(3), T(0.7)},
                                                               {T(2), T(3)},
                                                               {T(1), T(3)},
                                                               {T(3), T(1)}}) {
        ASSERT_EQ(beta(stream.get(), n, r.data(), {p, q}, 0, 2), KesStatusOk);
        const double fit =
            kolmogorovSmirnov(r, [=](double x) { return gsl_cdf_beta_P(x / 2, p, q); });
        expectFit(fit, (std::to_string(p) + ", " + std::to_string(q)).c_str());
    }
}

} // namespace

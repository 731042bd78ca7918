// Beta variates: each method against variates made one at a time, and failures.
#include "attempts.hpp"

using namespace qorkes;
using namespace qorkes::test;

namespace {

/// 1 - x as the last step sees it, and that step.
ext mirrored(double x) { return 1 - ext{x}; }
ext mirrored(float x) { return round32(1 - ext{x}); }
double scaledAtOnce(ext x, double beta, double a) { return round64(x * beta + a); }
float scaledAtOnce(ext x, float beta, float a) { return scaled(round32(x), beta, a); }

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

    T quickPowerAt(T x, T y) {
        quickPower(1, &x, &y, &x);
        return x;
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
                x = k1 * quickPowerAt(u, ip);
                g = (1 - ext{q}) * logarithmOf(T((1 - x) / width));
            } else {
                x = 1 - k2 * quickPowerAt(T(1 - ext{u}), iq);
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
    const auto expectMethod = [](T p, T q, ext (Plain::*method)(T, T)) {
        const Stream stream = newStream(KesBrngMT19937, {6});
        Plain plain{{stream}};
        const T a = T(-0.3), beta = T(1.7);
        expectOneAtATime<T>("beta", {p, q, a, beta}, stream, [&] {
            return scaledAtOnce((plain.*method)(p, q), beta, a);
        });
    };
    const T below = std::nextafter(T(1), T(0)), above = std::nextafter(T(1), T(2));
    expectMethod(T(0.01), T(0.02), &Plain::johnk);
    expectMethod(T(0.5), border<T>(), &Plain::johnk);
    expectMethod(T(0.5), std::nextafter(border<T>(), T(1)), &Plain::atkinson1);
    expectMethod(below, below, &Plain::atkinson1);
    expectMethod(below, above, &Plain::atkinson2);
    expectMethod(T(0.3), T(2.5), &Plain::atkinson2);
    expectMethod(above, below, &Plain::mirroredAtkinson2);
    expectMethod(40, T(0.9), &Plain::mirroredAtkinson2);
    expectMethod(above, above, &Plain::cheng);
    expectMethod(2, 300, &Plain::cheng);
    expectMethod(1, T(0.5), &Plain::mirroredPower);
    expectMethod(1, 1, &Plain::mirroredPower);
    expectMethod(1, T(NAN), &Plain::mirroredPower);
    expectMethod(T(0.5), 1, &Plain::plainPower);
    expectMethod(3, 1, &Plain::plainPower);
    expectMethod(T(NAN), 1, &Plain::plainPower);
}

TYPED_TEST(Beta, DrawsBlocksOfWhatIsMissing) {
    const auto counts = [](double p, double q, int n) {
        return countsOf<TypeParam>("beta", scriptedStream({0.3, 0.05}), n,
                                   {p, q, 0, 1});
    };
    for (const auto& [p, q] : std::initializer_list<std::pair<double, double>>{
             {0.3, 0.4}, {0.7, 0.8}, {0.5, 3}, {3, 0.5}, {2, 3}}) {
        EXPECT_EQ(counts(p, q, 0), Counts{});
        EXPECT_EQ(counts(p, q, 1026), (Counts{1024, 1024, 4})) << p << ", " << q;
    }
    EXPECT_EQ(counts(1, 3, 0), Counts{0});
    EXPECT_EQ(counts(3, 1, 1026), Counts{1026});
}

TYPED_TEST(Beta, KeepsWhatItHasWhenADrawFails) {
    using T = TypeParam;
    const auto untouched = [](int) { return T(-7); };
    const auto uniforms = [](int i) {
        const auto place = script.next - 2 * static_cast<std::size_t>(500 - i);
        return script.failAt == 0 ? T(-7) : T(script.numbers[place]);
    };
    expectFailures<T>("beta", {0.3, 0.4, 3, 2}, {0.3, 0.4, 0, 1}, untouched);
    expectFailures<T>("beta", {0.7, 0.8, 3, 2}, {0.7, 0.8, 0, 1}, uniforms);
    expectFailures<T>("beta", {0.5, 3, 3, 2}, {0.5, 3, 0, 1}, uniforms);
    expectFailures<T>("beta", {3, 0.5, 3, 2}, {0.5, 3, 0, 1}, uniforms);
    expectFailures<T>("beta", {2, 3, 3, 2}, {2, 3, 0, 1}, untouched);
}

TYPED_TEST(Beta, IsUniformWithAShapeThatIsNoNumber) {
    using T = TypeParam;
    const Stream stream = newStream(KesBrngMT19937, {7}), other = copyOf(stream);
    const T a = T(0.1), beta = T(0.3);
    EXPECT_EQ(variates<T>("beta", 0, stream, 9, {NAN, 2, a, beta}),
              take<T>(other, 9, {a, static_cast<T>(ext{a} + beta)}));
}

TEST(Beta, EndsForShapesWithoutVariates) { expectNoNumbers("beta", {-1, -1, 0, 1}); }

} // namespace

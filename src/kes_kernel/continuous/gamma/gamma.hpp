// Standard gamma variates by four methods that divide the range of the shape.
#pragma once

#include <common/bits.hpp>
#include <kes_kernel/attempts.hpp>
#include <kes_kernel/continuous/exponential/exponential.hpp>
#include <kes_kernel/continuous/gaussian/gaussian.hpp>

namespace qorkes {

template <class T> struct GammaTab {
    T zero, third, squeeze, one, half;
    T border; // of the shapes of _EPDTransform and _Vaduva
    T twoPi;
};
constexpr GammaTab<double> _kesdGAMMATab = {
    0.0, 0x1.5555555555555p-2, 0x1.0f27bb2fec56dp-5, 1.0,
    0.5, 0x1.3333333333333p-1, 0x1.921fb54442d18p+2};
constexpr GammaTab<float> _kessGAMMATab = {0.0f, 0x1.555556p-2f, 0x1.0f27bcp-5f, 1.0f,
                                           0.5f, 0x1.333334p-1f, 0x1.921fb6p+2f};
static_assert(hasPattern(_kesdGAMMATab.third, 0x3FD5555555555555));
static_assert(hasPattern(_kesdGAMMATab.squeeze, 0x3FA0F27BB2FEC56D));
static_assert(hasPattern(_kesdGAMMATab.border, 0x3FE3333333333333));
static_assert(hasPattern(_kesdGAMMATab.twoPi, 0x401921FB54442D18));

/// What differs by the type of number: the constants, and the chunk of the attempt that
/// waits.
template <class T> struct GammaTraits;
template <> struct GammaTraits<double> {
    static constexpr const auto& tab = _kesdGAMMATab;
    static constexpr int chunk = 7;
};
template <> struct GammaTraits<float> {
    static constexpr const auto& tab = _kessGAMMATab;
    static constexpr int chunk = 8;
};

// ---- Shapes above 1 -----------------------------------------------------------------

constexpr int pairsOfBlock = attemptsOfBlock / 2;

/// Normals y, two of each pair of uniforms: c is for their distance, b for their angle.
/// Both arrays serve as scratch.
template <class T> QORKES_INLINE void _BoxMuller2(int pairs, T* c, T* b, T* y) {
    T s[pairsOfBlock];
    multiply(pairs, b, GammaTraits<T>::tab.twoPi);
    quickSineCosine(pairs, b, s, b);
    distances(pairs, c);
    bothValues(pairs, c, s, b, y);
}

/// An attempt that waits for the next call: a uniform, below 0 if none waits, and a
/// normal.
template <class T> struct CarriedAttempt { T U, X; };

/// The uniforms and normals of a round; uniforms are drawn to A before every other one
/// of them becomes a normal. One attempt more than a block has may be carried.
template <class T> struct Round {
    T A[1 + 2 * attemptsOfBlock], B[1 + attemptsOfBlock];
};

/// m attempts, an even number, of two uniforms each. Of four uniforms the first and the
/// third make two normals, the second and the fourth stand beside them.
template <class T> int drawAttempts(StreamState* stream, int m, T* A, T* B) {
    const int status =
        uniforms(stream, 2 * m, A, GammaTraits<T>::tab.zero, GammaTraits<T>::tab.one);
    if (failed(status)) return status;
    T radii[pairsOfBlock], angles[pairsOfBlock];
    pick(m / 2, A, 4, radii);
    pick(m / 2, A + 2, 4, angles);
    pick(m, A + 1, 2, A);
    _BoxMuller2(m / 2, radii, angles, B);
    return status;
}

/// True if the uniform u lies below the ratio of the densities at v = (1 + c x)^3,
/// where the squeeze could not tell.
template <class T> QORKES_COLD bool isBelowRatio(T u, ext xx, ext v, ext d) {
    T pair[2] = {u, rounded<T>(v)};
    logarithm(2, pair, pair);
    return GammaTraits<T>::tab.half * xx +
               (GammaTraits<T>::tab.one + ext{pair[1]} - v) * d >
           pair[0];
}

/// The cubes of a round's normals that are accepted, to r; returns how many they are.
template <class T>
int takeCubes(int attempts, const Round<T>& round, T c, ext d, T* r) {
    constexpr const auto& tab = GammaTraits<T>::tab;
    int accepted = 0;
    for (int k = 0; k < attempts; ++k) {
        const ext x = round.B[k], t = x * c + tab.one;
        if (t <= tab.zero) continue;
        const ext v = t * t * t, xx = x * x;
        if (round.A[k] < tab.one - tab.squeeze * xx * xx ||
            isBelowRatio(round.A[k], xx, v, d))
            store(r[accepted++], v * d);
    }
    return accepted;
}

/// Cubes of normals: Marsaglia and Tsang (2000). A round makes as many attempts as
/// variates are missing, up to a block of them; one that is left over, since normals
/// come in pairs, waits in a chunk of the stream.
template <class T> int _Marsaglia(StreamState* stream, int n, T* r, T alpha) {
    const ext d = ext{alpha} - GammaTraits<T>::tab.third;
    const T c = squareRootOf(rounded<T>(1.0L / (ext{alpha} * 9.0L - 3.0L)));
    CarriedAttempt<T>* waiting;
    int status = chunkOf(stream, GammaTraits<T>::chunk, waiting, {-1, 0});
    if (failed(status)) return status;

    Round<T> round;
    int carried = 0;
    if (waiting->U >= 0) {
        round.A[0] = waiting->U;
        round.B[0] = waiting->X;
        waiting->U = -1;
        carried = 1;
    }
    for (int i = 0; i < n;) {
        const int left = n - i, need = left - carried;
        const bool isLast = need < attemptsOfBlock;
        const int attempts = isLast ? left : attemptsOfBlock;
        const int m = isLast ? need + (need & 1) : attemptsOfBlock;
        if (m != 0) {
            status = drawAttempts(stream, m, round.A + carried, round.B + carried);
            if (failed(status)) return status;
        }
        i += takeCubes(attempts, round, c, d, r + i);
        const int last = carried + m - 1;
        carried = attempts <= last;
        round.A[0] = round.A[last];
        round.B[0] = round.B[last];
    }
    if (carried) *waiting = {round.A[0], round.B[0]};
    return status;
}

// ---- Shapes below 1 -----------------------------------------------------------------

/// Below a Weibull envelope, for shapes not much below 1: Vaduva (1977).
template <class T> int _Vaduva(StreamState* stream, int n, T* r, T alpha) {
    const ext rest = 1.0L - alpha;
    const T ia = rounded<T>(1.0L / alpha);
    const ext w = rest * exponentialOf(rounded<T>(alpha / rest * logarithmOf(alpha)));
    OfPart<T> E1, E2, W;
    return byAttempts(
        stream, n, r, W,
        [&](int count, T* u, T*) {
            logarithm(2 * count, u, u);
            negate(2 * count, u);
            pick(count, u, 2, E1);
            pick(count, u + 1, 2, E2);
            power(count, E1, ia, W);
        },
        [&](int k) { return w + W[k] <= ext{E1[k]} + E2[k]; });
}

/// For small shapes: a power of a variate of the exponential power distribution, which
/// is a uniform below 1 - alpha and an exponential y above. Devroye (1986).
template <class T> int _EPDTransform(StreamState* stream, int n, T* r, T alpha) {
    const ext ia = 1.0L / alpha, b = 1.0L - alpha;
    const T exponent = rounded<T>(ia);
    OfPart<T> x, E, y, above;
    OfPart<int> places; // of the attempts above
    return byAttempts(
        stream, n, r, x,
        [&](int count, T* u, T*) {
            pick(count, u, 2, x);
            pick(count, u + 1, 2, E);
            logarithm(count, E, E);
            negate(count, E);
            int m = 0;
            for (int k = 0; k < count; ++k) {
                y[k] = 0;
                places[m] = k;
                store(above[m], (1.0L - x[k]) * ia);
                m += !(x[k] <= b);
            }
            singleLogarithms(m, above, above);
            negate(m, above);
            for (int j = 0; j < m; ++j) {
                y[places[j]] = above[j];
                store(x[places[j]], above[j] * ext{alpha} + b);
            }
            power(count, x, exponent, x);
        },
        [&](int k) { return ext{y[k]} + E[k] >= x[k]; });
}

// ---- By shape -----------------------------------------------------------------------

template <class T> int standardGamma(StreamState* stream, int n, T* r, T alpha) {
    constexpr const auto& tab = GammaTraits<T>::tab;
    if (alpha > tab.one) return _Marsaglia(stream, n, r, alpha);
    if (alpha == tab.one) return exponentials<T>(stream, n, r, 0, 1);
    if (alpha >= tab.border) return _Vaduva(stream, n, r, alpha);
    return _EPDTransform(stream, n, r, alpha);
}

template <class T>
QORKES_INLINE int gammas(StreamState* stream, int n, T* r, T alpha, T a, T beta) {
    const int status = standardGamma(stream, n, r, alpha);
    if (!failed(status)) scale(n, r, beta, a);
    return status;
}

} // namespace qorkes

// Beta variates by methods that divide the plane of the shapes.
#pragma once

#include <common/bits.hpp>
#include <kes_kernel/attempts.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {

template <class T> struct BetaTab {
    T zero, one, lnOf4, two;
    T coefficient, constant; // of the border between _Johnk and _Atkinson1
};
constexpr BetaTab<double> _kesdBETATab = {
    0.0, 1.0, 0x1.62e42fefa39efp+0, 2.0, 0x1.b45acbbf56123p-1, -0x1.e9986aa60216p-1};
constexpr BetaTab<float> _kessBETATab = {0.0f, 1.0f,           0x1.62e43p+0f,
                                         2.0f, 0x1.b45accp-1f, -0x1.e9986ap-1f};
static_assert(hasPattern(_kesdBETATab.lnOf4, 0x3FF62E42FEFA39EF));
static_assert(hasPattern(_kesdBETATab.coefficient, 0x3FEB45ACBBF56123));
static_assert(hasPattern(_kesdBETATab.constant, 0xBFEE9986AA602160));

constexpr const auto& betaTab(double) { return _kesdBETATab; }
constexpr const auto& betaTab(float) { return _kessBETATab; }

/// r[i] = (1 - r[i]) * factor + shift, rounded where `scale` is, and in floats at the
/// difference.
QORKES_INLINE void scaleMirrored(int n, double* r, ext factor, double shift) {
    for (int i = 0; i < n; ++i) r[i] = round64((1.0L - r[i]) * factor + shift);
}
QORKES_INLINE void scaleMirrored(int n, float* r, float factor, float shift) {
    inFours(n, r, [=](__m128 x) { return _mm_sub_ps(_mm_set1_ps(1.0f), x); });
    scale(n, r, factor, shift);
}

// ---- Both shapes below 1 ------------------------------------------------------------

/// Powers x and y of two uniforms under the condition x + y <= 1: Johnk (1964).
template <class T> int _Johnk(StreamState* stream, int n, T* r, T p, T q) {
    constexpr const auto& tab = betaTab(T());
    const ext ip = 1.0L / p, iq = 1.0L / q;
    OfPart<T> x;
    OfPart<bool> accepted;
    return byAttempts(
        stream, n, r, x,
        [&](int count, T* u, T*) {
            logarithm(2 * count, u, u);
            for (int k = 0; k < count; ++k) {
                store(u[2 * k], u[2 * k] * ip);
                store(u[2 * k + 1], u[2 * k + 1] * iq);
            }
            exponential(2 * count, u, u);
            for (int k = 0; k < count; ++k) {
                const ext s = ext{u[2 * k]} + u[2 * k + 1];
                accepted[k] = s > tab.zero && s <= tab.one;
                store(x[k], u[2 * k] / s);
            }
        },
        [&](int k) { return accepted[k]; });
}

/// A piece of an envelope that switches. A uniform's distance from 0 or 1 goes through
/// a power to the candidate's distance from the same end; the ratio of the densities is
/// a power of the candidate's distance from the other end.
template <class T> struct Piece {
    T end, sign; // 0 and 1, or 1 and -1
    T exponent;
    ext reach, width, ratioExponent;
};

/// The envelope switches from a power of x to one of 1 - x at t; w is the weight of the
/// first. `width` is what 1 - x is measured by.
template <class T> struct Envelope {
    ext w;
    Piece<T> piece[2]; // above t, below t
};
template <class T> Envelope<T> envelope(T p, T q, ext t, ext w, ext width) {
    T reach[2] = {rounded<T>(1.0L / w), rounded<T>(1.0L / (1.0L - w))};
    const T exponent[2] = {rounded<T>(1.0L / p), rounded<T>(1.0L / q)};
    power(2, reach, exponent, reach);
    return {w,
            {{1, -1, exponent[1], reach[1] * (1.0L - t), t, 1.0L - p},
             {0, 1, exponent[0], reach[0] * t, width, 1.0L - q}}};
}

/// Rejection from such an envelope: Atkinson and Whittaker (1976).
template <class T>
int bySwitching(StreamState* stream, int n, T* r, const Envelope<T>& envelope) {
    OfPart<T> x, exponent, ratio, L;
    OfPart<const Piece<T>*> piece;
    return byAttempts(
        stream, n, r, x,
        [&](int count, T* both, T* u) {
            pick(count, both, 2, u);
            pick(count, both + 1, 2, L);
            logarithm(count, L, L);
            for (int k = 0; k < count; ++k) {
                piece[k] = &envelope.piece[u[k] <= envelope.w];
                exponent[k] = piece[k]->exponent;
                store(x[k], piece[k]->end + ext{piece[k]->sign} * u[k]);
            }
            quickPower(count, x, exponent, x);
            for (int k = 0; k < count; ++k) {
                const Piece<T>& s = *piece[k];
                const ext candidate = s.end + s.sign * (s.reach * x[k]);
                store(ratio[k], (1.0L - s.end - s.sign * candidate) / s.width);
                store(x[k], candidate);
            }
            singleLogarithms(count, ratio, ratio);
        },
        [&](int k) { return piece[k]->ratioExponent * ratio[k] + L[k] <= 0; });
}

template <class T> int _Atkinson1(StreamState* stream, int n, T* r, T p, T q) {
    T s[2] = {rounded<T>(p * (1.0L - p)), rounded<T>(q * (1.0L - q))};
    squareRoot(2, s, s);
    const ext t = s[0] / (ext{s[1]} + s[0]);
    const ext w = q * t / ((1.0L - t) * p + q * t);
    return bySwitching(stream, n, r, envelope(p, q, t, w, 1.0L - t));
}

// ---- One shape below 1, the other above ---------------------------------------------

template <class T> int _Atkinson2(StreamState* stream, int n, T* r, T p, T q) {
    const ext t = (1.0L - p) / ((1.0L - p) + q);
    const ext e = powerOf(rounded<T>(1.0L - t), q);
    const ext w = q * t / (e * p + q * t);
    return bySwitching(stream, n, r, envelope(p, q, t, w, 1.0L));
}

// ---- Both shapes above 1 ------------------------------------------------------------

/// A logistic envelope: algorithm BB of Cheng (1978).
template <class T> int _Cheng(StreamState* stream, int n, T* r, T p, T q) {
    constexpr const auto& tab = betaTab(T());
    const ext s = ext{p} + q;
    const T b = squareRootOf(rounded<T>((s - tab.two) / (tab.two * ext{p} * q - s)));
    const ext g = 1.0L / b + p;
    OfPart<T> x, odds, power;
    T pair[2 * attemptsOfPart];
    return byAttempts(
        stream, n, r, x,
        [&](int count, T* u, T*) {
            for (int k = 0; k < count; ++k)
                store(odds[k], u[2 * k] / (1.0L - u[2 * k]));
            singleLogarithms(count, odds, odds);
            for (int k = 0; k < count; ++k) store(power[k], ext{b} * odds[k]);
            exponential(count, power, power);
            for (int k = 0; k < count; ++k) {
                const ext W = ext{p} * power[k], f = 1.0L / (W + q), u1 = u[2 * k];
                store(pair[2 * k], s * f);
                store(pair[2 * k + 1], u1 * u1 * u[2 * k + 1]);
                store(x[k], W * f);
            }
            logarithm(2 * count, pair, pair);
        },
        [&](int k) {
            return s * pair[2 * k] - tab.lnOf4 + ext{b} * odds[k] * g >=
                   pair[2 * k + 1];
        });
}

// ---- By shapes ----------------------------------------------------------------------

/// u^(1/shape), which is beta with q or, mirrored, p of 1.
template <class T> int powersOfUniforms(StreamState* stream, int n, T* r, T shape) {
    const int status = uniforms(stream, n, r);
    if (failed(status)) return status;
    power(n, r, rounded<T>(1.0L / shape), r);
    return status;
}

template <class T>
QORKES_INLINE int betas(StreamState* stream, int n, T* r, T p, T q, T a, T beta) {
    constexpr const auto& tab = betaTab(T());
    int status;
    bool mirrored = false;
    if (p < tab.one && q < tab.one) {
        const bool switches =
            tab.coefficient * ext{p} * p + tab.constant + q > tab.zero;
        status = switches ? _Atkinson1(stream, n, r, p, q) : _Johnk(stream, n, r, p, q);
    } else if (p < tab.one && q > tab.one) {
        status = _Atkinson2(stream, n, r, p, q);
    } else if (p > tab.one && q < tab.one) {
        status = _Atkinson2(stream, n, r, q, p);
        mirrored = true;
    } else if (p > tab.one && q > tab.one) {
        status = _Cheng(stream, n, r, p, q);
    } else if (p == tab.one) {
        status = powersOfUniforms(stream, n, r, q);
        mirrored = true;
    } else if (q == tab.one) {
        status = powersOfUniforms(stream, n, r, p);
    } else {
        return uniforms(stream, n, r, a, rounded<T>(ext{a} + beta));
    }
    if (failed(status)) return status;
    if (mirrored)
        scaleMirrored(n, r, beta, a);
    else
        scale(n, r, beta, a);
    return status;
}

} // namespace qorkes

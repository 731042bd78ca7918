// Transforms and sums in long double, by the shortest means.
#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <vector>

namespace qorkes::test {

using Exact = long double;
using Complex = std::complex<Exact>;
constexpr Exact twoPi = 6.283185307179586476925286766559L;

/// The sum of x[n] exp(sign 2 pi i k n / N), by radix 2 from short pieces to long ones.
inline std::vector<Complex> transform(std::vector<Complex> x, int sign) {
    const size_t n = x.size();
    for (size_t i = 0, r = 0; i < n; ++i) {
        if (i < r) std::swap(x[i], x[r]);
        size_t bit = n >> 1;
        for (; bit && (r & bit); bit >>= 1) r ^= bit;
        r |= bit;
    }
    static std::vector<Complex> root; // of the largest n so far, with sign 1
    if (root.size() < n / 2) {
        root.resize(n / 2);
        for (size_t k = 0; k < n / 2; ++k)
            root[k] = std::polar(Exact{1}, twoPi * Exact(k) / Exact(n));
    }
    for (size_t half = 1; half < n; half *= 2)
        for (size_t block = 0; block < n; block += 2 * half)
            for (size_t k = 0; k < half; ++k) {
                Complex &a = x[block + k], &b = x[block + k + half];
                const Complex& w = root[k * (root.size() / half)];
                const Exact sine = sign * w.imag();
                const Complex turned(b.real() * w.real() - b.imag() * sine,
                                     b.real() * sine + b.imag() * w.real());
                b = a - turned;
                a += turned;
            }
    return x;
}

/// Between the first half of a spectrum and N numbers in Perm layout.
inline std::vector<Exact> toPerm(const std::vector<Complex>& spectrum) {
    const size_t n = spectrum.size();
    std::vector<Exact> perm(n);
    perm[0] = spectrum[0].real();
    if (n > 1) perm[1] = spectrum[n / 2].real();
    for (size_t k = 1; k < n / 2; ++k) {
        perm[2 * k] = spectrum[k].real();
        perm[2 * k + 1] = spectrum[k].imag();
    }
    return perm;
}
template <class T> std::vector<Complex> fromPerm(const std::vector<T>& perm) {
    const size_t n = perm.size();
    std::vector<Complex> spectrum(n);
    spectrum[0] = perm[0];
    if (n > 1) spectrum[n / 2] = perm[1];
    for (size_t k = 1; k < n / 2; ++k) {
        spectrum[k] = {perm[2 * k], perm[2 * k + 1]};
        spectrum[n - k] = std::conj(spectrum[k]);
    }
    return spectrum;
}

template <class T> std::vector<Exact> forwardExactly(const std::vector<T>& x) {
    return toPerm(transform({x.begin(), x.end()}, -1));
}
template <class T> std::vector<Exact> inverseExactly(const std::vector<T>& perm) {
    const std::vector<Complex> samples = transform(fromPerm(perm), 1);
    std::vector<Exact> x(samples.size());
    std::transform(samples.begin(), samples.end(), x.begin(),
                   [](const Complex& z) { return z.real(); });
    return x;
}

/// Root of the mean square of x - scale * y over that of scale * y.
template <class A, class B>
Exact relativeError(const A& x, const B& y, Exact scale = 1) {
    Exact error = 0, size = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        const Exact expected = scale * y[i], d = x[i] - expected;
        error += d * d;
        size += expected * expected;
    }
    return std::sqrt(error / size);
}

} // namespace qorkes::test

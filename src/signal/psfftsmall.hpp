// Real transforms of 1, 2, 4 and 8 points in straight lines, the same text for both
// precisions: double on the x87 unit, float in scalar SSE arithmetic.
#pragma once

#include <signal/psfft.hpp>
#include <signal/values.hpp>

namespace qorkes {

/// Stores results, scaled if the transform is.
template <class T, bool norm> struct Scaled {
    T* y;
    T factor;
    template <class Value> QORKES_INLINE void put(int place, Value x) const {
        if constexpr (norm)
            store(y[place], x * valueOf(factor));
        else
            store(y[place], x);
    }
};

template <class T> constexpr T rootOfHalf = static_cast<T>(0.70710678118654757);
template <class T> constexpr T rootOfTwo = static_cast<T>(1.4142135623730951);

template <class T, bool norm> void rFFT_1(const T* x, T* y, T factor) {
    Scaled<T, norm>{y, factor}.put(0, valueOf(x[0]));
}

template <class T, bool norm> void rFFT_2(const T* x, T* y, T factor) {
    const Scaled<T, norm> result{y, factor};
    const auto a = valueOf(x[0]), b = valueOf(x[1]);
    result.put(0, a + b);
    result.put(1, a - b);
}

template <class T, bool norm> void rFFTfwd_4(const T* x, T* y, T factor) {
    const Scaled<T, norm> result{y, factor};
    const auto x0 = valueOf(x[0]), x1 = valueOf(x[1]);
    const auto x2 = valueOf(x[2]), x3 = valueOf(x[3]);
    const auto even = x0 + x2, odd = x1 + x3;
    result.put(0, even + odd);
    result.put(1, even - odd);
    result.put(2, x0 - x2);
    result.put(3, x3 - x1);
}

template <class T, bool norm> void rFFTinv_4(const T* x, T* y, T factor) {
    const Scaled<T, norm> result{y, factor};
    const auto a = valueOf(x[0]), b = valueOf(x[1]);
    const auto re = valueOf(x[2]), im = valueOf(x[3]);
    const auto even = a + b, odd = a - b, twiceRe = re + re, twiceIm = im + im;
    result.put(0, even + twiceRe);
    result.put(1, odd - twiceIm);
    result.put(2, even - twiceRe);
    result.put(3, odd + twiceIm);
}

template <class T, bool norm> void rFFTfwd_8(const T* x, T* y, T factor) {
    const Scaled<T, norm> result{y, factor};
    const auto x0 = valueOf(x[0]), x1 = valueOf(x[1]), x2 = valueOf(x[2]);
    const auto x3 = valueOf(x[3]), x4 = valueOf(x[4]), x5 = valueOf(x[5]);
    const auto x6 = valueOf(x[6]), x7 = valueOf(x[7]);
    const auto s04 = x0 + x4, s26 = x2 + x6, s15 = x1 + x5, s37 = x3 + x7;
    const auto even = s04 + s26, odd = s15 + s37;
    result.put(0, even + odd);
    result.put(1, even - odd);
    result.put(4, s04 - s26);
    result.put(5, s37 - s15);
    const auto d15 = x1 - x5, d73 = x7 - x3, r = valueOf(rootOfHalf<T>);
    const auto re = (d15 + d73) * r, im = (d73 - d15) * r;
    const auto d04 = x0 - x4, d62 = x6 - x2;
    result.put(2, d04 + re);
    result.put(3, d62 + im);
    result.put(6, d04 - re);
    result.put(7, im - d62);
}

template <class T, bool norm> void rFFTinv_8(const T* x, T* y, T factor) {
    const Scaled<T, norm> result{y, factor};
    const auto x0 = valueOf(x[0]), x4 = valueOf(x[1]), r1 = valueOf(x[2]);
    const auto i1 = valueOf(x[3]), r2 = valueOf(x[4]), i2 = valueOf(x[5]);
    const auto r3 = valueOf(x[6]), i3 = valueOf(x[7]);
    const auto s = x0 + x4, d = x0 - x4, twice2r = r2 + r2, twice2i = i2 + i2;
    const auto re = r1 + r3, im = i1 - i3, twiceRe = re + re, twiceIm = im + im;
    const auto even = s + twice2r, evenMinus = s - twice2r;
    result.put(0, even + twiceRe);
    result.put(2, evenMinus - twiceIm);
    result.put(4, even - twiceRe);
    result.put(6, evenMinus + twiceIm);
    const auto dr = r1 - r3, si = i1 + i3, root = valueOf(rootOfTwo<T>);
    const auto oddRe = (dr - si) * root, oddIm = (dr + si) * root;
    const auto odd = d - twice2i, oddMinus = d + twice2i;
    result.put(1, odd + oddRe);
    result.put(3, oddMinus - oddIm);
    result.put(5, odd - oddRe);
    result.put(7, oddMinus + oddIm);
}

template <class T> using SmallTransform = void (*)(const T* x, T* y, T factor);

template <class T>
constexpr SmallTransform<T> tbl_rFFTfwd_small[] = {
    rFFT_1<T, false>, rFFT_2<T, false>, rFFTfwd_4<T, false>, rFFTfwd_8<T, false>};
template <class T>
constexpr SmallTransform<T> tbl_rFFTfwd_norm_small[] = {
    rFFT_1<T, true>, rFFT_2<T, true>, rFFTfwd_4<T, true>, rFFTfwd_8<T, true>};
template <class T>
constexpr SmallTransform<T> tbl_rFFTinv_small[] = {
    rFFT_1<T, false>, rFFT_2<T, false>, rFFTinv_4<T, false>, rFFTinv_8<T, false>};
template <class T>
constexpr SmallTransform<T> tbl_rFFTinv_norm_small[] = {
    rFFT_1<T, true>, rFFT_2<T, true>, rFFTinv_4<T, true>, rFFTinv_8<T, true>};

} // namespace qorkes

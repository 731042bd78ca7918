// The loop of the kernels of Tan on the x87 unit: x less a multiple of pi/2, the
// tangent of r in [-pi/4, pi/4] as a quotient u / v of an odd and an even polynomial.
// An odd multiple makes it -v / u. Four quotients share one division.
//
// A kernel brings, as static members,
//     Element                double or float
//     Slot                   what numerators and denominators are kept in
//     step                   pi/2 in parts
//     isOrdinary(x)          false beyond the limit, where the scalar code takes over
//     areFourOrdinary(x)
//     polynomials(r, u, v)
//     scalarCode(i, a, y)
#pragma once

#include <qor_core/_heap/trig_groups.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

template <class Slot> struct Quotient { Slot numerator, denominator; };

template <class Kernel, class T>
QORKES_INLINE void countQuarterTurns(int32_t& count, const T& x) {
    storeNearest(count, loadedHere(Kernel::step.inverse) * x);
}

template <class Kernel, class T>
QORKES_INLINE auto quotientOf(const T& x, const int32_t& count) {
    using Slot = typename Kernel::Slot;
    const bool isOdd = count & 1;
    ext u, v;
    Kernel::polynomials(reduced(x, loadInteger(count), Kernel::step), u, v);
    return Quotient<Slot>{static_cast<Slot>(isOdd ? v : u),
                          static_cast<Slot>(isOdd ? u : v)};
}

/// The sign of -v / u goes into the stored quotient.
template <class T> QORKES_INLINE void storeTangent(T& y, ext quotient, int32_t count) {
    storeFlipped(y, quotient, static_cast<uint32_t>(count) << 31);
}

template <class Kernel, class T>
QORKES_NOINLINE void tangentOfOne(int i, const T* a, T* y) {
    if (!Kernel::isOrdinary(a + i)) return Kernel::scalarCode(i, a, y);
    int32_t count;
    countQuarterTurns<Kernel>(count, a[i]);
    const auto q = quotientOf<Kernel>(a[i], count);
    storeTangent(y[i], ext{q.numerator} / q.denominator, count);
}

template <class Kernel, class T> QORKES_COLD void oneByOne(int i, const T* a, T* y) {
    for (int k = 0; k < 4; ++k) tangentOfOne<Kernel>(i + k, a, y);
}

template <class Kernel, class T>
QORKES_INLINE void tangentsOfFour(int i, const T* a, T* y) {
    const T* x = a + i;
    if (!Kernel::areFourOrdinary(x)) [[unlikely]] {
        for (int k = 0; k < 4; ++k) Kernel::scalarCode(i + k, a, y);
        return;
    }
    int32_t count[4];
    countQuarterTurns<Kernel>(count[0], x[0]);
    countQuarterTurns<Kernel>(count[1], x[1]);
    countQuarterTurns<Kernel>(count[2], x[2]);
    countQuarterTurns<Kernel>(count[3], x[3]);
    const auto q0 = quotientOf<Kernel>(x[0], count[0]);
    const auto q1 = quotientOf<Kernel>(x[1], count[1]);
    const ext n0 = ext{q0.numerator} * q1.denominator;
    const ext n1 = ext{q1.numerator} * q0.denominator;
    const ext d01 = ext{q0.denominator} * q1.denominator;
    const auto q2 = quotientOf<Kernel>(x[2], count[2]);
    const auto q3 = quotientOf<Kernel>(x[3], count[3]);
    const ext n2 = ext{q2.numerator} * q3.denominator;
    const ext n3 = ext{q3.numerator} * q2.denominator;
    const ext d23 = ext{q2.denominator} * q3.denominator;
    const ext product = d01 * d23;
    if (product == 0.0L) [[unlikely]]
        return oneByOne<Kernel>(i, a, y);
    const ext inverse = 1.0L / product;
    const ext of01 = d23 * inverse;
    const ext of23 = d01 * inverse;
    storeTangent(y[i], n0 * of01, count[0]);
    storeTangent(y[i + 1], n1 * of01, count[1]);
    storeTangent(y[i + 2], n2 * of23, count[2]);
    storeTangent(y[i + 3], n3 * of23, count[3]);
}

template <class Kernel, class T = typename Kernel::Element>
QORKES_NOINLINE [[gnu::flatten]] void tangents(int n, const T* a, T* y) {
    inGroups<4>(
        n, [=](int i) { tangentsOfFour<Kernel>(i, a, y); },
        [=](int i) { tangentOfOne<Kernel>(i, a, y); });
}

} // namespace qorkes

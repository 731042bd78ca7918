// The loop of the kernels of Tan on the x87 unit: x less a multiple of pi/2, the
// tangent of r in [-pi/4, pi/4] as a quotient u / v of an odd and an even polynomial.
// An odd multiple makes it -v / u. Four quotients share one division.
//
// A kernel brings, as static members,
//     Element                double or float
//     Slot                   what numerators and denominators are kept in
//     isOrdinary(x), areOrdinary(x)   one of the limits
//     coefficients           of the two polynomials
//     numerator(A, r, r2)    u
//     lostSign(x)            the sign bit of a zero where u loses it
//     scalarCode(i, a, y)
#pragma once

#include <qor_core/_heap/trig_groups.hpp>

#include <iterator>

namespace qorkes {

/// A slot in memory for 80 bits: a number rounded and, exactly, how much it was rounded
/// by, which costs half as much as to store 80 bits. A difference gives it back, since
/// a sum would lose the sign of a zero.
struct WideSlot {
    double rounded, excess;
};
QORKES_INLINE void fill(WideSlot& slot, ext x) {
    slot.rounded = round64(x);
    slot.excess = round64(loadedHere(slot.rounded) - x);
}
QORKES_INLINE ext valueOf(const WideSlot& slot) {
    return loadedHere(slot.rounded) - slot.excess;
}

QORKES_INLINE void fill(double& slot, ext x) { slot = round64(x); }
QORKES_INLINE ext valueOf(const double& slot) { return loadedHere(slot); }

/// The coefficients of both polynomials in r^2.
template <int n, int m> struct TangentCoefficients { double A[n], B[m]; };

/// u and v have changed places, if they have to, by where they were stored: the
/// processor could not guess a branch.
template <class Slot> struct Quotient {
    Slot slots[2];

    QORKES_INLINE ext numerator() const { return valueOf(slots[0]); }
    QORKES_INLINE ext denominator() const { return valueOf(slots[1]); }
};

template <class Kernel>
QORKES_INLINE void setQuotient(Quotient<typename Kernel::Slot>& q, ext r,
                               int32_t count) {
    const int odd = count & 1;
    const auto& k = *inRegister(&Kernel::coefficients);
    const ext r2 = r * r;
    fill(q.slots[odd], Kernel::numerator(k.A, r, r2));
    fill(q.slots[1 - odd], polynomial<std::size(Kernel::coefficients.B)>(k.B, r2));
}

/// The sign of -v / u goes into the stored quotient, and that of a zero.
template <class Kernel, class T>
QORKES_INLINE void storeTangent(T& y, ext quotient, int32_t count, const T& x) {
    const uint32_t zero = Kernel::lostSign(x);
    storeFlipped(y, quotient, static_cast<uint32_t>(count) << 31 ^ zero);
}

template <class Kernel, class T>
QORKES_NOINLINE void tangentOfOne(int i, const T* a, T* y) {
    if (!Kernel::isOrdinary(a + i)) return Kernel::scalarCode(i, a, y);
    int32_t count;
    countQuarterTurns(count, a[i]);
    Quotient<typename Kernel::Slot> q;
    setQuotient<Kernel>(q, reducedByQuarterTurns(a[i], count), count);
    storeTangent<Kernel>(y[i], q.numerator() / q.denominator(), count, a[i]);
}

template <class Kernel, class T> QORKES_COLD void oneByOne(int i, const T* a, T* y) {
    for (int k = 0; k < 4; ++k) tangentOfOne<Kernel>(i + k, a, y);
}

template <class Kernel, class T>
QORKES_INLINE void tangentsOfFour(int i, const T* a, T* y) {
    const T* x = a + i;
    if (!Kernel::areOrdinary(x)) [[unlikely]] {
        for (int k = 0; k < 4; ++k) Kernel::scalarCode(i + k, a, y);
        return;
    }
    int32_t count[4];
    countQuarterTurns(count[0], x[0]);
    countQuarterTurns(count[1], x[1]);
    countQuarterTurns(count[2], x[2]);
    countQuarterTurns(count[3], x[3]);
    const ext r0 = reducedByQuarterTurns(x[0], count[0]);
    const ext r1 = reducedByQuarterTurns(x[1], count[1]);
    const ext r2 = reducedByQuarterTurns(x[2], count[2]);
    const ext r3 = reducedByQuarterTurns(x[3], count[3]);
    Quotient<typename Kernel::Slot> q[4];
    setQuotient<Kernel>(q[3], r3, count[3]);
    setQuotient<Kernel>(q[2], r2, count[2]);
    setQuotient<Kernel>(q[1], r1, count[1]);
    setQuotient<Kernel>(q[0], r0, count[0]);
    const ext d01 = q[0].denominator() * q[1].denominator();
    const ext d23 = q[2].denominator() * q[3].denominator();
    const ext product = d01 * d23;
    if (product == 0.0L) [[unlikely]]
        return oneByOne<Kernel>(i, a, y);
    const ext inverse = 1.0L / product;
    const ext of01 = d23 * inverse;
    storeTangent<Kernel>(y[i], q[0].numerator() * q[1].denominator() * of01, count[0],
                         x[0]);
    storeTangent<Kernel>(y[i + 1], q[1].numerator() * q[0].denominator() * of01,
                         count[1], x[1]);
    const ext of23 = d01 * inverse;
    storeTangent<Kernel>(y[i + 2], q[2].numerator() * q[3].denominator() * of23,
                         count[2], x[2]);
    storeTangent<Kernel>(y[i + 3], q[3].numerator() * q[2].denominator() * of23,
                         count[3], x[3]);
}

template <class Kernel, class T = typename Kernel::Element>
QORKES_NOINLINE [[gnu::flatten]] void tangents(int n, const T* a, T* y) {
    inGroups<4>(
        n, [=](int i) { tangentsOfFour<Kernel>(i, a, y); },
        [=](int i) { tangentOfOne<Kernel>(i, a, y); });
}

} // namespace qorkes

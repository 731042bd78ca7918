// The scalar-code entries of the sine family: one element of any size. They are the way
// from a vector kernel to a report, so each has a short name of its own for it.
#pragma once

#include <qor_core/frame.hpp>

namespace qorkes {

/// What a refused element gets: the NaN of the x87 unit.
QORKES_INLINE void setDefaultNaN(double& y) { setBits(y, 0xFFF8000000000000); }
QORKES_INLINE void setDefaultNaN(float& y) { setBits(y, 0xFFC00000); }

/// A float is refused if it is an infinity; a double by its high word, NaNs included.
QORKES_INLINE bool isRefused(const float& x) {
    return (bitsOf(x) & magnitudeBits) == floatInfinity;
}
QORKES_INLINE bool isRefused(const double& x) {
    return (highWord(x) & magnitudeBits) >= doubleInfinityHigh;
}

/// Whether a refused element counts as an infinity. The low word of a double is not
/// looked at: a NaN with nothing in the high word does, too.
QORKES_INLINE bool isReported(const float&) { return true; }
QORKES_INLINE bool isReported(const double& x) {
    return (highWord(x) & magnitudeBits) == doubleInfinityHigh;
}

template <class T>
QORKES_COLD void refuse(int i, const T* a, T* y, T* z, const char* name) {
    const bool isInfinity = isReported(a[i]);
    setDefaultNaN(y[i]);
    setDefaultNaN(z[i]);
    if (isInfinity) report(QOR_STATUS_ERRDOM, i, a, a, y, z, name);
}

QORKES_INLINE void narrow(double& y, double value) { y = value; }
QORKES_INLINE void narrow(float& y, double value) { y = round32(value); }

template <class T, double (*function)(double)>
QORKES_NOINLINE void storeValue(const T* x, T* y) {
    narrow(*y, function(*x));
}

template <class T, void (*function)(double, double*, double*)>
QORKES_NOINLINE void storeValues(const T* x, T* y, T* z) {
    double first, second;
    function(*x, &first, &second);
    narrow(*y, first);
    narrow(*z, second);
}

/// y[i] = function(a[i]), computed and narrowed at 53 bits, to nearest.
template <double (*function)(double), class T>
void scalarCode(int i, const T* a, T* y, const char* name) {
    if (isRefused(a[i])) return refuse(i, a, y, y, name);
    inFrame<Precision::bits53, Mxcsr::callers, storeValue<T, function>>(a + i, y + i);
}

/// The same for a function of two results.
template <void (*function)(double, double*, double*), class T>
void scalarCode(int i, const T* a, T* y, T* z, const char* name) {
    if (isRefused(a[i])) return refuse(i, a, y, z, name);
    inFrame<Precision::bits53, Mxcsr::callers, storeValues<T, function>>(a + i, y + i,
                                                                         z + i);
}

} // namespace qorkes

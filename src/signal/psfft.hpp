// What the FFT files of both precisions share: the direction, the plan, and twiddles
// read from the one table of sines that a plan is made from.
#pragma once

#include <qorkes/zubs.h>
#include <signal/values.hpp>

#include <cmath>

namespace qorkes {

/// Tables hold exp(-i t). The inverse conjugates when it applies them.
enum class Direction { forward, inverse };

/// A plan for 2^order real points. The public header knows it as FftCtx.
template <class T> struct FftCtxOf {
    int32_t idCtx;
    int32_t order;
    int32_t fwdNorm;
    int32_t invNorm;
    T normFactor;
    int32_t hint;
    int32_t bufSize;
    int32_t isOwned;
    int32_t* bitRevTab;
    T* twdL1;
    T* twdL2;
    T* twdL3; // for merges beyond 8192 points, which no order needs
    T* realRecTab;
    T* ccsRecTab;
    T* rowTwd[3];
    T* stepTwd[3];
};
static_assert(sizeof(void*) != 4 || sizeof(FftCtxOf<double>) == 84);
static_assert(sizeof(void*) != 4 || sizeof(FftCtxOf<float>) == 80);

template <class T> QORKES_INLINE FftCtxOf<T>* planOf(FftCtx* plan) {
    return reinterpret_cast<FftCtxOf<T>*>(plan);
}
template <class T> QORKES_INLINE const FftCtxOf<T>* planOf(const FftCtx* plan) {
    return reinterpret_cast<const FftCtxOf<T>*>(plan);
}

QORKES_INLINE int64_t pointsOf(int order) { return int64_t{1} << order; }

/// Bytes rounded up to a multiple of 16, so that what follows in a block stays aligned.
QORKES_INLINE int64_t to16(int64_t bytes) { return (bytes + 15) & ~int64_t{15}; }

/// Makes the compiler load operands from memory again. It would rather keep them, run
/// out of x87 registers and store 80-bit values, at seven cycles each.
QORKES_INLINE void forgetLoads() { asm volatile("" ::: "memory"); }

/// sin(2 pi k / N) for k from 0 to N/4: to the octant by the sine, beyond it by the
/// cosine of the complement.
template <class T> void fillSines(int order, T* table) {
    constexpr double twoPi = 0x1.921fb54442d18p+2; // 6.2831853071795862
    const double step = twoPi / static_cast<double>(pointsOf(order));
    const int quarter = static_cast<int>(pointsOf(order) / 4);
    for (int k = 0; 2 * k <= quarter; ++k) {
        const double angle = round64(ext{step} * k);
        store(table[quarter - k], std::cos(angle));
        store(table[k], std::sin(angle));
    }
}

/// exp(-i t): cosine and negated sine.
template <class T> struct Twiddle { T cosine, minusSine; };

/// A table of fillSines, of 2^order points.
template <class T> struct Sines {
    const T* table;
    int order;

    /// The twiddle of the angle 2 pi k / 2^points, any k, from its quadrant.
    Twiddle<T> at(int points, int64_t k) const {
        const int64_t quarter = pointsOf(order - 2);
        const int64_t place = k << (order - points);
        const int64_t p = place & (quarter - 1);
        const T sine = table[p];
        const T cosine = table[quarter - p];
        switch (place >> (order - 2) & 3) {
        case 0:
            return {cosine, -sine};
        case 1:
            return {-sine, -cosine};
        case 2:
            return {-cosine, sine};
        default:
            return {sine, cosine};
        }
    }
};

} // namespace qorkes

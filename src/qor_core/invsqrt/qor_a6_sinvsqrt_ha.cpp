// _qorsInvSqrt_HA: y = 1 / sqrt(a) in single precision, largest error 1.46 ulp.
//
// With r the short estimate of 1/sqrt(x) and e = x r^2 - 1: y = r + r e (-1/2 + 3/8 e -
// 5/16 e^2). A group with any other argument than positive normal numbers comes from
// fsqrt and a division, at the precision and rounding that the caller has in force.
//
//   +-0                   the infinity of the same sign, status 2
//   positive denormal     as any number
//   +infinity             +0
//   NaN                   the same NaN, quiet
//   negative, -infinity   the NaN 0xFFC00000, status 1
#include <qor_core/_heap/single_roots.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsInvSqrt_HA";
constexpr auto _ErrorGate = errorGate<float, _QOR_THISFUNC_NAME>;

QORKES_INLINE __m128 inverseRootsOf(__m128 x) {
    const __m128 r = shortPart(_mm_rsqrt_ps(x));
    const __m128 e = _mm_sub_ps(_mm_mul_ps(_mm_mul_ps(x, r), r), _mm_set1_ps(1.0f));
    return _mm_add_ps(r, _mm_mul_ps(_mm_mul_ps(r, e), rootCorrection(e)));
}

/// True if all arguments were positive normal numbers. Of others inverseRootsOf makes
/// minus infinity (negative denormals) or a NaN: where the estimate is infinite, so is
/// e, and the sum is none; where it is zero, x r is none. A sum of roots stays small.
QORKES_INLINE bool arePositive(__m128 rootSum) {
    return _mm_movemask_ps(_mm_cmpnlt_ps(_mm_setzero_ps(), rootSum)) == 0;
}

/// Recomputes `count` elements and reports zeros, then negatives. The arguments are
/// kept aside, since y may be the array a.
QORKES_COLD void inverseRootsByDivision(int i, int count, const float* a, float* y) {
    uint32_t argument[8];
    for (int k = 0; k < count; ++k) {
        argument[k] = bitsOf(a[i + k]);
        y[i + k] = round32(1.0L / squareRoot(a[i + k]));
    }
    for (int k = 0; k < count; ++k)
        if ((argument[k] & magnitudeBits) == 0)
            _ErrorGate(QOR_STATUS_SING, i + k, a, y);
    for (int k = 0; k < count; ++k)
        if (argument[k] > signBit && argument[k] <= (signBit | floatInfinity))
            _ErrorGate(QOR_STATUS_ERRDOM, i + k, a, y);
}

QORKES_INLINE void inverseRootsOfEight(int i, const float* a, float* y) {
    const __m128 low = _mm_loadu_ps(a + i);
    const __m128 high = _mm_loadu_ps(a + i + 4);
    const __m128 lowRoots = inverseRootsOf(low);
    const __m128 highRoots = inverseRootsOf(high);
    if (!arePositive(_mm_add_ps(lowRoots, highRoots))) [[unlikely]] {
        inverseRootsByDivision(i, 8, a, y);
        return;
    }
    _mm_storeu_ps(y + i, lowRoots);
    _mm_storeu_ps(y + i + 4, highRoots);
}

/// In all lanes, so that no lane raises what the element does not.
QORKES_INLINE void inverseRootOfOne(int i, const float* a, float* y) {
    const __m128 root = inverseRootsOf(_mm_load1_ps(a + i));
    if (!arePositive(root)) [[unlikely]] {
        inverseRootsByDivision(i, 1, a, y);
        return;
    }
    _mm_store_ss(y + i, root);
}

QORKES_NOINLINE void inverseSquareRoots(int n, const float* a, float* y) {
    inGroups<8>(
        n, [=](int i) { inverseRootsOfEight(i, a, y); },
        [=](int i) { inverseRootOfOne(i, a, y); });
}

} // namespace

void _qorsInvSqrt_HA(int n, const float* a, float* y) {
    inFrame<Precision::callers, Mxcsr::cleared, inverseSquareRoots>(n, a, y);
}

// _qorsSqrt_HA: y = sqrt(a) in single precision, largest error below 0.77 ulp.
//
// With r the short estimate of 1/sqrt(x) and x = xh + xl, xh short: e = x r^2 - 1 comes
// without rounding of its leading part, and y = xh r + xl r + x r e (-1/2 + 3/8 e -
// ...), the smallest term first.
//
//   +-0                   the argument
//   positive denormal     scaled by 2^26, rounded once
//   +infinity             the argument
//   NaN                   the same NaN, quiet
//   negative, -infinity   the NaN 0xFFC00000, status 1
#include <qor_core/_heap/single_roots.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsSqrt_HA";
constexpr auto _ErrorGate = errorGate<float, _QOR_THISFUNC_NAME>;

constexpr float denormalScale = 0x1p+26f;
constexpr float inverseOfRootScale = 0x1p-13f;
static_assert(hasPattern(denormalScale, 0x4C800000));
static_assert(hasPattern(inverseOfRootScale, 0x39000000));

constexpr uint32_t defaultNaN = 0xFFC00000;

/// A zero keeps its sign: every term comes out as that zero.
QORKES_INLINE __m128 rootsOf(__m128 x) {
    const __m128 isNotZero = _mm_cmpneq_ps(x, _mm_setzero_ps());
    const __m128 r = _mm_and_ps(shortPart(_mm_rsqrt_ps(x)), isNotZero);
    const __m128 xh = shortPart(x);
    const __m128 minusXl = _mm_sub_ps(xh, x);
    const __m128 leading = _mm_mul_ps(xh, r);
    const __m128 minusRest = _mm_mul_ps(minusXl, r);
    const __m128 e = _mm_sub_ps(_mm_sub_ps(_mm_mul_ps(leading, r), _mm_set1_ps(1.0f)),
                                _mm_mul_ps(minusRest, r));
    const __m128 correction =
        _mm_mul_ps(_mm_mul_ps(_mm_mul_ps(x, r), e), rootCorrection(e));
    return _mm_add_ps(_mm_sub_ps(correction, minusRest), leading);
}

/// True if no argument needs sqrt_scalar: of denormals, negative numbers, infinities
/// and NaNs rootsOf makes infinity (negative denormals) or a NaN, since their estimate
/// or its product with xh is infinite or none. A sum of roots stays small.
QORKES_INLINE bool areRoots(__m128 rootSum) {
    return _mm_movemask_ps(_mm_cmpnlt_ps(rootSum, _mm_set1_ps(__builtin_inff()))) == 0;
}

QORKES_NOINLINE void sqrt_scalar(int i, const float* a, float* y) {
    const uint32_t bits = bitsOf(a[i]);
    const uint32_t magnitude = bits & magnitudeBits;
    if (isPositiveNormalFloat(bits)) {
        _mm_store_ss(y + i, rootsOf(_mm_load_ss(a + i)));
    } else if (magnitude > floatInfinity) {
        _mm_store_ss(y + i, _mm_mul_ss(_mm_load_ss(a + i), _mm_set_ss(1.0f)));
    } else if (magnitude == 0 || bits == floatInfinity) {
        setBits(y[i], bits);
    } else if (bits & signBit) {
        setBits(y[i], defaultNaN);
        _ErrorGate(QOR_STATUS_ERRDOM, i, a, y);
    } else {
        const __m128 scaled = _mm_mul_ss(_mm_load_ss(a + i), _mm_set_ss(denormalScale));
        _mm_store_ss(y + i,
                     _mm_mul_ss(rootsOf(scaled), _mm_set_ss(inverseOfRootScale)));
    }
}

QORKES_INLINE void rootsOfEight(int i, const float* a, float* y) {
    const __m128 low = rootsOf(_mm_loadu_ps(a + i));
    const __m128 high = rootsOf(_mm_loadu_ps(a + i + 4));
    if (!areRoots(_mm_add_ps(low, high))) [[unlikely]] {
        for (int k = 0; k < 8; ++k) sqrt_scalar(i + k, a, y);
        return;
    }
    _mm_storeu_ps(y + i, low);
    _mm_storeu_ps(y + i + 4, high);
}

QORKES_NOINLINE void squareRoots(int n, const float* a, float* y) {
    inGroups<8>(
        n, [=](int i) { rootsOfEight(i, a, y); }, [=](int i) { sqrt_scalar(i, a, y); });
}

} // namespace

void _qorsSqrt_HA(int n, const float* a, float* y) {
    inFrame<Precision::callers, Mxcsr::cleared, squareRoots>(n, a, y);
}

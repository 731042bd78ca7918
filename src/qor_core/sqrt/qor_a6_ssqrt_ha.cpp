// _qorsSqrt_HA: y = sqrt(a) in single precision, largest error 0.75 ulp.
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

struct Roots {
    __m128 value;
    __m128 leading; // not finite in every lane that needs sqrt_scalar
};

QORKES_INLINE Roots rootsOf(__m128 x) {
    const __m128 estimate = shortPart(_mm_rsqrt_ps(x));
    const __m128 r = _mm_and_ps(estimate, _mm_cmpneq_ps(x, _mm_setzero_ps()));
    const __m128 xh = shortPart(x);
    const __m128 xl = _mm_sub_ps(x, xh);
    const __m128 leading = _mm_mul_ps(xh, r);
    const __m128 rest = _mm_mul_ps(xl, r);
    const __m128 e = _mm_add_ps(_mm_sub_ps(_mm_mul_ps(leading, r), _mm_set1_ps(1.0f)),
                                _mm_mul_ps(rest, r));
    const __m128 correction =
        _mm_mul_ps(_mm_mul_ps(_mm_mul_ps(x, r), e), rootCorrection(e));
    const __m128 root = _mm_add_ps(_mm_add_ps(correction, rest), leading);
    return {_mm_or_ps(root, _mm_and_ps(x, _mm_set1_ps(-0.0f))), leading};
}

QORKES_INLINE bool areFinite(__m128 a, __m128 b) {
    const __m128 infinity = _mm_set1_ps(__builtin_inff());
    const __m128 magnitude = _mm_set1_ps(-0.0f);
    const __m128 finite =
        _mm_and_ps(_mm_cmplt_ps(_mm_andnot_ps(magnitude, a), infinity),
                   _mm_cmplt_ps(_mm_andnot_ps(magnitude, b), infinity));
    return _mm_movemask_ps(finite) == 0xF;
}

QORKES_NOINLINE void sqrt_scalar(int i, const float* a, float* y) {
    const uint32_t bits = bitsOf(a[i]);
    const uint32_t magnitude = bits & magnitudeBits;
    if (bits - 0x00800000u < 0x7F000000u) {
        _mm_store_ss(y + i, rootsOf(_mm_load_ss(a + i)).value);
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
                     _mm_mul_ss(rootsOf(scaled).value, _mm_set_ss(inverseOfRootScale)));
    }
}

QORKES_INLINE void rootsOfEight(int i, const float* a, float* y) {
    const Roots low = rootsOf(_mm_loadu_ps(a + i));
    const Roots high = rootsOf(_mm_loadu_ps(a + i + 4));
    if (!areFinite(low.leading, high.leading)) [[unlikely]] {
        for (int k = 0; k < 8; ++k) sqrt_scalar(i + k, a, y);
        return;
    }
    _mm_storeu_ps(y + i, low.value);
    _mm_storeu_ps(y + i + 4, high.value);
}

QORKES_NOINLINE void squareRoots(int n, const float* a, float* y) {
    inGroups<8>(
        n, [=](int i) { rootsOfEight(i, a, y); }, [=](int i) { sqrt_scalar(i, a, y); });
}

} // namespace

void _qorsSqrt_HA(int n, const float* a, float* y) {
    inFrame<Precision::callers, Mxcsr::cleared, squareRoots>(n, a, y);
}

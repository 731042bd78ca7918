// The kernels of float Sin and Cos, lower accuracy: x less a multiple of pi (for the
// cosine an odd multiple of pi/2), and one odd polynomial for r in [-pi/2, pi/2].
#pragma once

#include <qor_core/_heap/single_lanes.hpp>

namespace qorkes {

constexpr float singleInversePi = 0x1.45f306p-2f; // 0.31830987
static_assert(singleInversePi == 0.31830987f);

/// sin(r) with the sign of its half turn.
QORKES_INLINE LaneResults waveLanes(__m128 r, __m128 halfTurns) {
    const __m128 r2 = _mm_mul_ps(r, r);
    const __m128 p = polynomial(r2, 1.0f, -0x1.55554ap-3f, 0x1.110ee6p-7f,
                                -0x1.9f75e2p-13f, 0x1.5e0a32p-19f);
    return {_mm_xor_ps(_mm_mul_ps(r, p), signOf(areOdd(halfTurns))), _mm_setzero_ps()};
}

} // namespace qorkes

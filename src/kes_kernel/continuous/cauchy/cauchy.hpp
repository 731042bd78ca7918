// Cauchy variates, a + beta tan(v) with v uniform on [-pi/2, pi/2): the inverse of
// their distribution function.
#pragma once

#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {

constexpr double _kesdCauchyTab[2] = {0x1.921fb54442d18p+0, -0x1.921fb54442d18p+0};
constexpr float _kessCauchyTab[2] = {0x1.921fb6p+0f, -0x1.921fb6p+0f};
static_assert(hasPattern(_kesdCauchyTab[0], 0x3FF921FB54442D18));
static_assert(hasPattern(_kessCauchyTab[0], 0x3FC90FDB));

template <class T>
QORKES_INLINE int cauchys(StreamState* stream, int n, T* r, T a, T beta,
                          const T (&halfPi)[2]) {
    const int status = uniforms(stream, n, r, halfPi[1], halfPi[0]);
    if (failed(status)) return status;
    quickTangent(n, r, r);
    scale(n, r, beta, a);
    return status;
}

} // namespace qorkes

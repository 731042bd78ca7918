// Lognormal variates, b + beta exp(z) with z normal, in pairs (method 1).
#pragma once

#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {

template <auto gaussian, class T>
QORKES_INLINE int lognormals(StreamState* stream, int n, T* r, T a, T sigma, T b,
                             T beta) {
    const int status = gaussian(1, stream, n, r, a, sigma);
    if (failed(status)) return status;
    exponential(n, r, r);
    scale(n, r, beta, b);
    return status;
}

} // namespace qorkes

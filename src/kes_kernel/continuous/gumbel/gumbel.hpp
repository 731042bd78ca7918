// Gumbel variates of the smallest value, a + beta ln(x) with x exponential.
#pragma once

#include <kes_kernel/frame.hpp>
#include <kes_kernel/kernels.hpp>

namespace qorkes {

template <auto exponential, class T>
QORKES_INLINE int gumbels(StreamState* stream, int n, T* r, T a, T beta) {
    const int status = exponential(0, stream, n, r, 0, 1);
    if (failed(status)) return status;
    logarithm(n, r, r);
    scale(n, r, beta, a);
    return status;
}

} // namespace qorkes

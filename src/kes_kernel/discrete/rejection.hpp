// Rejection: values made of two uniforms each, kept or thrown away.
#pragma once

#include <kes_kernel/frame.hpp>

#include <algorithm>

namespace qorkes {

/// Fills r with values that attempt(u, v, value) accepts. A block of uniforms holds no
/// more attempts than there are values wanted, so that none is left at the end.
template <int size, class Attempt>
QORKES_INLINE int acceptInto(StreamState* stream, int n, int32_t* r,
                             Attempt&& attempt) {
    double u[size];
    int status = KesStatusOk;
    for (int i = 0; i < n;) {
        const int count = 2 * std::min(n - i, size / 2);
        status = uniforms(stream, count, u);
        if (failed(status)) return status;
        for (int j = 0; j < count; j += 2) i += attempt(u[j], u[j + 1], r[i]) ? 1 : 0;
    }
    return status;
}

} // namespace qorkes

// Rejection: values made of two uniforms each, kept or thrown away.
#pragma once

#include <kes_kernel/frame.hpp>

#include <algorithm>
#include <cmath>

namespace qorkes {

/// Fills r with values that attempt(u, v, value) accepts. A block of uniforms holds no
/// more attempts than there are values wanted, so that none is left at the end; `begin`
/// sees the block's uniforms before its attempts do.
template <int size, class Begin, class Attempt>
QORKES_INLINE int acceptInto(StreamState* stream, int n, int32_t* r, Begin&& begin,
                             Attempt&& attempt) {
    double u[size];
    int status = KesStatusOk;
    for (int i = 0; i < n;) {
        const int count = 2 * std::min(n - i, size / 2);
        status = uniforms(stream, count, u);
        if (failed(status)) return status;
        begin(u, count);
        for (int j = 0; j < count; j += 2) i += attempt(u[j], u[j + 1], r[i]) ? 1 : 0;
    }
    return status;
}
template <int size, class Attempt>
QORKES_INLINE int acceptInto(StreamState* stream, int n, int32_t* r,
                             Attempt&& attempt) {
    return acceptInto<size>(
        stream, n, r, [](const double*, int) {}, attempt);
}

/// ln(v) to within its error, without a logarithm: an exponent and a fraction together
/// are log2(v) on a chord.
struct RoughLog {
    ext least, greatest;
};

/// For v that is not too small; others are anything.
QORKES_INLINE RoughLog roughLog(const double& v) {
    if (!(v > 0x1p-1000)) return {-INFINITY, INFINITY};
    const ext chord = (patternAsInteger(v) * 0x1p-52L - 1023) * lnOf2;
    return {chord - 1e-9L, chord + 0.06L};
}

} // namespace qorkes

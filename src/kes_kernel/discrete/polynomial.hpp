// Polynomials of the coefficient tables.
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>

namespace qorkes {

/// (c[degree] x + ...) x + c[0].
template <int degree> QORKES_INLINE ext polynomial(const double* c, ext x) {
    ext sum = c[degree];
    for (int i = degree - 1; i >= 0; --i) sum = sum * x + c[i];
    return sum;
}

/// The significand of a positive normal number, in [1, 2).
QORKES_INLINE double significandOf(const double& x) {
    double result;
    setWords(result, (highWord(x) & 0x000FFFFF) | 0x3FF00000, lowWord(x));
    return result;
}

} // namespace qorkes

// Polynomials on the x87 unit, at the precision in force.
#pragma once

#include <common/ext.hpp>

namespace qorkes {

/// c[0] + c[1] x + ... + c[n-1] x^(n-1) by Horner's rule.
template <int n> QORKES_INLINE ext polynomial(const double* c, ext x) {
    if constexpr (n == 1)
        return loadedHere(c[0]);
    else
        return polynomial<n - 1>(c + 1, x) * x + c[0];
}

} // namespace qorkes

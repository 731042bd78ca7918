// Sums of products in extended precision, for one output and for four whose y lie
// `step` apart: x is then loaded once for four products, and four sums are under way.
#pragma once

#include <common/ext.hpp>

namespace qorkes {

QORKES_INLINE void addProducts(ext& sum, const double* x, const double* y, int n) {
    for (int i = 0; i < n; ++i) sum += ext{x[i]} * y[i];
}

QORKES_INLINE void addProducts(ext (&sums)[4], const double* x, const double* y,
                               ptrdiff_t step, int n) {
    ext sum0 = sums[0], sum1 = sums[1], sum2 = sums[2], sum3 = sums[3];
    for (int i = 0; i < n; ++i) {
        const ext factor = loaded(x[i]);
        sum0 += factor * y[i];
        sum1 += factor * y[i + step];
        sum2 += factor * y[i + 2 * step];
        sum3 += factor * y[i + 3 * step];
    }
    sums[0] = sum0;
    sums[1] = sum1;
    sums[2] = sum2;
    sums[3] = sum3;
}

} // namespace qorkes

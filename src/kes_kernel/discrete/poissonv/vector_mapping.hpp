// PoissonV of one normal variate: a curve through the distribution's quantiles for the
// binade of the mean, and below 1/16 the partial sums of exp(mean) that a uniform
// exceeds. In extended precision.
#pragma once

#include <common/bits.hpp>
#include <kes_kernel/discrete/polynomial.hpp>
#include <kes_kernel/discrete/truncate.hpp>
#include <qorkes/qor.h>

namespace qorkes {
namespace vector_mapping {

#include "_kes_ipoissonv_tables.inc"

constexpr double leastMapped = 0.0625;
constexpr uint32_t exponentOfLeast = 1019, lastRow = 17;
constexpr int rowLength = 20;
constexpr const double *exponentialRow = _kesdPoissonTab, *rows = _kesdPoissonTab + 5;
constexpr double inverseRootOf2 = _kesdPoissonTab[4];
static_assert(hasPattern(inverseRootOf2, 0x3FE6A09E667F3BCD));

/// The uniform is made of the normal: |erf(z / sqrt(2))|.
inline int countedSums(float z, double mean) {
    float u = round32(z * ext{inverseRootOf2});
    _qorsErf_HA(1, &u, &u);
    const ext w = (u < 0 ? -u : u) * polynomial<3>(exponentialRow, mean);
    ext term = 1, sum = 1;
    int k = 0;
    for (; k <= 10 && w > sum; ++k) {
        term = term * mean / (k + 1);
        sum += term;
    }
    return k;
}

QORKES_INLINE int mapped(float z, const double& mean, double root) {
    const uint32_t above = (highWord(mean) >> 20) - exponentOfLeast;
    const double* c = rows + rowLength * (above < lastRow ? above : lastRow);
    const ext x = significandOf(mean) - 1.0L;
    const ext shift = mean + ext{c[0]} + x * c[1], spread = root + ext{c[2]} + c[3] * x;
    const ext p1 = polynomial<3>(c + 4, x), p2 = polynomial<3>(c + 8, x),
              p3 = polynomial<3>(c + 12, x), p4 = polynomial<3>(c + 16, x);
    const ext y = z * (p1 + (p2 + (p3 + p4 * z) * z) * z) * spread + (1 + shift);
    return y > 0 ? truncate(y) : 0;
}

} // namespace vector_mapping
} // namespace qorkes

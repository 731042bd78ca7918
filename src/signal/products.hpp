// Products of complex doubles with twiddles, in extended precision.
#pragma once

#include <signal/psfft.hpp>

namespace qorkes {

/// Where the two parts of a number stand. The inverse exchanges them throughout, which
/// conjugates every twiddle.
template <Direction direction>
constexpr int re = direction == Direction::forward ? 0 : 1;
template <Direction direction> constexpr int im = 1 - re<direction>;

template <Direction d> QORKES_INLINE ext productRe(const double* x, const double* w) {
    return ext{x[re<d>]} * w[0] - ext{x[im<d>]} * w[1];
}
template <Direction d> QORKES_INLINE ext productIm(const double* x, const double* w) {
    return ext{x[im<d>]} * w[0] + ext{x[re<d>]} * w[1];
}

} // namespace qorkes

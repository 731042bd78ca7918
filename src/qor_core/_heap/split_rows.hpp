// Polynomials about a centre whose sum comes in two parts: the leading terms exact at
// 53-bit precision, and a rest so small that plain arithmetic is good enough for it.
#pragma once

#include <common/ext.hpp>

namespace qorkes {

/// A value as the sum of two numbers, the second small against the first.
struct Parts {
    ext high, low;
};

/// For making tables; nothing computes with it at run time.
using Wide = __float128;

/// x cut to a multiple of 1/unit.
constexpr double cut(Wide x, ext unit) {
    return static_cast<double>(static_cast<int64_t>(x * unit) / unit);
}

/// With the argument's distance t from the centre cut to th, a multiple of 2^-16, and
/// the first three coefficients cut to multiples of 2^-52, 2^-36 and 2^-20, their part
/// of the sum at th is exact as long as it is below 2.
template <int degree> struct SplitRow {
    double centre, value, slope, curve;
    double rest[3]; // what the cut took from the coefficients
    double further[degree - 2];

    constexpr void set(double middle, const Wide* c) {
        centre = middle;
        value = cut(c[0], 0x1p52L);
        slope = cut(c[1], 0x1p36L);
        curve = cut(c[2], 0x1p20L);
        rest[0] = static_cast<double>(c[0] - value);
        rest[1] = static_cast<double>(c[1] - slope);
        rest[2] = static_cast<double>(c[2] - curve);
        for (int k = 3; k <= degree; ++k) further[k - 3] = static_cast<double>(c[k]);
    }
};

/// v - centre must be exact, and the row's polynomial below 2 in magnitude.
template <int degree> QORKES_INLINE Parts sumAt(ext v, const SplitRow<degree>& row) {
    constexpr float shifter = 0x1.8p+36f; // rounds to multiples of 2^-16
    const ext t = v - row.centre;
    const ext th = t + shifter - shifter;
    const ext slope = row.curve * th + row.slope;
    const ext exact = slope * th + row.value;
    ext rest = row.further[degree - 3];
#pragma GCC unroll 12
    for (int k = degree - 4; k >= 0; --k) rest = rest * t + row.further[k];
    rest = ((rest * t + row.rest[2]) * t + row.rest[1]) * t + row.rest[0];
    return {exact, rest + (row.curve * t + slope) * (t - th)};
}

} // namespace qorkes

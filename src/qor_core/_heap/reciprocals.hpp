// Four reciprocals for the price of one division: with p01 = b0 b1 and p23 = b2 b3,
// 1/b0 = b1 p23/P and so on, where P = p01 p23 (Montgomery, "Speeding the Pollard and
// elliptic curve methods of factorization", 1987, for the trick in modular arithmetic).
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>

namespace qorkes {

struct FourReciprocals {
    ext of0, of1, of2, of3;
};

/// True if a product of four divisors, rounded to float, is neither zero nor beyond the
/// largest float. Far narrower than the extended range, which makes the test cheap and
/// leaves no zero, infinity or NaN among the divisors.
QORKES_INLINE bool isSafeProduct(float product) {
    const uint32_t magnitude = bitsOf(product) & magnitudeBits;
    return magnitude != 0 && magnitude < floatInfinity;
}

/// By the divisors, their products in pairs and the product of all.
QORKES_INLINE FourReciprocals reciprocalsOf(ext b0, ext b1, ext b2, ext b3, ext p01,
                                            ext p23, ext product) {
    const ext inverse = 1.0L / product;
    const ext r23 = p01 * inverse;
    const ext r01 = p23 * inverse;
    return {b1 * r01, b0 * r01, b3 * r23, b2 * r23};
}

/// Gives the reciprocals of b[0] to b[3]; false, and nothing, if they are not safe.
QORKES_INLINE bool reciprocalsOf(const double* b, FourReciprocals& reciprocal) {
    const ext b0 = b[0], b1 = b[1], b2 = b[2], b3 = b[3];
    const ext p01 = b0 * b1;
    const ext p23 = b2 * b3;
    const ext product = p01 * p23;
    if (!isSafeProduct(round32(product))) [[unlikely]]
        return false;
    reciprocal = reciprocalsOf(b0, b1, b2, b3, p01, p23, product);
    return true;
}

} // namespace qorkes

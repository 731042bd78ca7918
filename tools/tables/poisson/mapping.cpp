#include "mapping.hpp"

#include <cmath>

namespace poisson {
namespace {

/// Of c[0] to c[degree], constant term first.
Real polynomial(const Real* c, int degree, Real x) {
    Real sum = c[degree];
    for (int i = degree - 1; i >= 0; --i) sum = sum * x + c[i];
    return sum;
}

/// The significand in [1, 2), less 1.
Real fraction(Real mean) {
    int exponent;
    return 2 * std::frexp(mean, &exponent) - 1;
}

} // namespace

Real largeMean(const Real* c, Real mean, Real z) {
    const Real w = 1 / mean;
    const Real centre = c[0] + mean + polynomial(c + 1, 2, w) * w;
    const Real e = z * std::sqrt(mean + c[4] + polynomial(c + 5, 2, w) * w);
    const Real b1 = w * polynomial(c + 8, 4, w), b2 = w * polynomial(c + 13, 4, w),
               b3 = w * polynomial(c + 18, 4, w);
    return ((e * b3 + b2) * e + b1) * e + centre + e + 1;
}

Real middleMean(const Real* c, Real mean, Real z) {
    const Real x = fraction(mean);
    const Real p[] = {polynomial(c + 7, 3, x), polynomial(c + 11, 3, x),
                      polynomial(c + 15, 3, x), polynomial(c + 19, 3, x)};
    return z * polynomial(p, 3, z) * polynomial(c + 3, 3, x) + 1 + polynomial(c, 2, x);
}

Real vectorMean(const Real* c, Real mean, Real z) {
    const Real x = fraction(mean);
    const Real p[] = {polynomial(c + 4, 3, x), polynomial(c + 8, 3, x),
                      polynomial(c + 12, 3, x), polynomial(c + 16, 3, x)};
    const Real spread = std::sqrt(mean) + polynomial(c + 2, 1, x);
    return z * polynomial(p, 3, z) * spread + 1 + mean + polynomial(c, 1, x);
}

} // namespace poisson

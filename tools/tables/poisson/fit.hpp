// Coefficients of a curve for a range of means.
#pragma once

#include "mapping.hpp"

#include <optional>

namespace poisson {

struct Problem {
    Curve curve;
    std::vector<Real> means;
    std::vector<std::optional<double>> fixed; // by index; none: to be fitted
    std::vector<Real> start;
};

struct Solution {
    std::vector<double> coefficients;
    Real misplaced; // the largest share of variates, of all means, by the curve's slope
};

/// Weighted least squares by Levenberg and Marquardt's method, again and again with
/// weights that turn the sum of squares towards the mass misplaced (iteratively
/// reweighted least squares).
Solution fit(const Problem& problem);

} // namespace poisson

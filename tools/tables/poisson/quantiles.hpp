// Poisson probabilities as thresholds of a standard normal: the variate is at least k
// where the normal is at least g, the quantile of P(X < k).
#pragma once

#include <vector>

namespace poisson {

/// All of the fit's arithmetic: the C library's functions of this type are the same on
/// every processor.
using Real = long double;

struct Threshold {
    Real g, k;
    Real mass; // that a unit of error in k misplaces: the probability about k
};

/// Those of a mean where both tails hold more than `tail`; at most `most` of them, in
/// even steps of k, each with the mass of its neighbours that are left out.
std::vector<Threshold> thresholds(Real mean, Real tail, int most);

/// Density of the standard normal.
Real density(Real z);

} // namespace poisson

// How many numbers of a sample lie where, and how many should.
#pragma once

#include "distributions.hpp"

#include <vector>

namespace qorkes {

/// The quantile at `share` of a sorted sample, linear between its elements.
double quantile(const std::vector<double>& sorted, double share);

struct Histogram {
    struct Bin {
        double low; // of real numbers; the least of whole numbers
        double count;
        double expected; // NaN where nothing is known
    };
    double width = 1;            // a whole number for whole numbers
    std::vector<Bin> bins;       // none if all numbers of the sample are the same
    double below = 0, above = 0; // counts beyond the bins
};

/// A sorted sample in about `most` bins of a round width. They reach four quartile
/// ranges beyond the quartiles, and no farther: heavy tails are only counted.
Histogram histogramOf(const std::vector<double>& sorted,
                      const catalogue::Distribution& distribution,
                      const double* parameters, int most);

} // namespace qorkes

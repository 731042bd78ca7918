// A sample in a few lines of text.
#pragma once

#include "distributions.hpp"

#include <string>
#include <vector>

namespace qorkes {

/// A line of a summary, which the exact value may end.
std::string summaryRow(const std::string& name, double drawn,
                       const double* exact = nullptr);

/// Of a sorted sample: count, moments and quartiles beside the exact moments where they
/// are known, and a histogram with the exact place of the end of each bar.
std::string summary(const std::vector<double>& sample,
                    const catalogue::Distribution& distribution,
                    const double* parameters);

} // namespace qorkes

// A sample in a few lines of text.
#pragma once

#include "distributions.hpp"

#include <string>
#include <vector>

namespace qorkes {

/// Count, moments and quartiles beside the exact moments where they are known, and a
/// histogram with the place that the density gives to the end of each bar.
std::string summary(std::vector<double> sample,
                    const catalogue::Distribution& distribution,
                    const double* parameters);

} // namespace qorkes

// A sample as a picture, drawn by gnuplot.
#pragma once

#include "distributions.hpp"

#include <string>
#include <vector>

namespace qorkes {

/// Ends the program if this is no name for a picture.
void checkPicture(const std::string& path);

/// The histogram of a sorted sample against the density or the probabilities, as SVG.
void writePicture(const std::string& path, const std::vector<double>& sample,
                  const catalogue::Distribution& distribution,
                  const double* parameters);

} // namespace qorkes

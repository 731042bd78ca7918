// A sample as a picture, drawn by gnuplot.
#pragma once

#include "distributions.hpp"

#include <string>
#include <vector>

namespace qorkes {

/// Ends the program if this is no name for a picture.
void checkPicture(const std::string& path);

/// The histogram of a sorted sample against the density or the probabilities.
struct Panel {
    std::string caption; // in front of the distribution's name
    std::vector<double> sample;
    const catalogue::Distribution& distribution;
    std::vector<double> parameters;
};

/// Panels one below the other, as SVG.
void writePicture(const std::string& path, const std::vector<Panel>& panels);

} // namespace qorkes

// What `draw` and `stream load` have in common: numbers of a distribution from a
// stream.
#pragma once

#include "stream_source.hpp"

#include <functional>
#include <string>
#include <vector>

namespace qorkes {

struct Drawing {
    std::string distribution;
    std::vector<std::string> parameters;
    std::string count = "10";
    std::string precision = "double";
    bool summary = false;
    bool binary = false;
};

/// DISTRIBUTION and PARAMETERS.
void addDistribution(CLI::App& command, Drawing& drawing);
void addDrawingOptions(CLI::App& command, Drawing& drawing);

/// Draws from the stream that `open` gives, once all else is known to be right, and
/// writes the numbers.
void writeDrawn(const Drawing& drawing, const std::function<StreamState*()>& open);

} // namespace qorkes

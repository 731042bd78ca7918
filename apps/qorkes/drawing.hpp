// What `draw` and `stream load` have in common: numbers of a distribution from a
// stream.
#pragma once

#include "distributions.hpp"
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
    std::string method = "0";
    std::string picture; // file to draw, if any
    bool summary = false;
    bool binary = false;
};

/// DISTRIBUTION and PARAMETERS.
void addDistribution(CLI::App& command, Drawing& drawing);
void addDrawingOptions(CLI::App& command, Drawing& drawing);

/// How many numbers, or vectors of `size` numbers, are asked for.
int64_t countOf(const Drawing& drawing, int64_t size);

int methodOf(const catalogue::Distribution& distribution, const std::string& method);

/// Whether the numbers themselves are not wanted.
bool isDescribed(const Drawing& drawing);

/// Draws from the stream that `open` gives, once all else is known to be right, and
/// writes the numbers.
void writeDrawn(const Drawing& drawing, const std::function<StreamState*()>& open);

} // namespace qorkes

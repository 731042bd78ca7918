#include "summary.hpp"

#include "histogram.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace qorkes {
namespace {

using catalogue::Distribution;

catalogue::Moments momentsOf(const std::vector<double>& sample) {
    const auto n = static_cast<long double>(sample.size());
    long double sum = 0, squares = 0;
    for (const double x : sample) sum += x;
    const long double mean = sum / n;
    for (const double x : sample) squares += (x - mean) * (x - mean);
    return {static_cast<double>(mean),
            static_cast<double>(std::sqrt(squares / (n - 1)))};
}

std::string bar(double length, char filling) {
    return std::string(static_cast<size_t>(std::lround(length)), filling);
}

/// A line for the numbers on one side of the bins, if there are any.
std::string beside(const char* side, double count) {
    char text[64];
    std::snprintf(text, sizeof text, "%12s  %g\n", side, count);
    return count > 0 ? text : "";
}

std::string histogram(const std::vector<double>& sorted,
                      const Distribution& distribution, const double* parameters) {
    constexpr int mostBins = 15, columns = 50;
    const Histogram histogram = histogramOf(sorted, distribution, parameters, mostBins);
    if (histogram.bins.empty()) return "";
    const double scale =
        columns / std::ranges::max(histogram.bins, {}, &Histogram::Bin::count).count;

    std::string text = "\n";
    text += beside("below", histogram.below);
    for (const auto& [low, count, expected] : histogram.bins) {
        std::string line = bar(count * scale, '#');
        if (!std::isnan(expected)) {
            const std::string before =
                bar(std::min(expected * scale, columns * 1.2), ' ');
            line.resize(std::max(line.size(), before.size() + 1), ' ');
            line[before.size()] = '|';
        }
        char label[32];
        std::snprintf(label, sizeof label, "%12.6g  ", low);
        text += label + line + '\n';
    }
    return text + beside("above", histogram.above);
}

} // namespace

std::string summaryRow(const std::string& name, double drawn, const double* exact) {
    char text[96];
    const int length =
        exact ? std::snprintf(text, sizeof text, "%-20s %12.6g %12.6g\n", name.c_str(),
                              drawn, *exact)
              : std::snprintf(text, sizeof text, "%-20s %12.6g\n", name.c_str(), drawn);
    return {text, static_cast<size_t>(length)};
}

std::string summary(const std::vector<double>& sample, const Distribution& distribution,
                    const double* parameters) {
    const auto drawn = momentsOf(sample);
    catalogue::Moments exact{};
    const double *mean = nullptr, *deviation = nullptr;
    if (distribution.moments) {
        exact = distribution.moments(parameters);
        mean = &exact.mean;
        deviation = &exact.deviation;
    }
    return std::string("                            drawn") +
           (mean ? "        exact\n" : "\n") +
           summaryRow("count", static_cast<double>(sample.size())) +
           summaryRow("mean", drawn.mean, mean) +
           summaryRow("standard deviation", drawn.deviation, deviation) +
           summaryRow("minimum", sample.front()) +
           summaryRow("lower quartile", quantile(sample, 0.25)) +
           summaryRow("median", quantile(sample, 0.5)) +
           summaryRow("upper quartile", quantile(sample, 0.75)) +
           summaryRow("maximum", sample.back()) +
           histogram(sample, distribution, parameters);
}

} // namespace qorkes

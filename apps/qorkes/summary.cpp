#include "summary.hpp"

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

/// The quantile at `share` of a sorted sample, linear between its elements.
double quantile(const std::vector<double>& sorted, double share) {
    const double place = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<size_t>(place);
    const size_t above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] +
           (place - static_cast<double>(below)) * (sorted[above] - sorted[below]);
}

std::string row(const char* name, double value, const double* exact = nullptr) {
    char text[96];
    const int length =
        exact ? std::snprintf(text, sizeof text, "%-20s %12.6g %12.6g\n", name, value,
                              *exact)
              : std::snprintf(text, sizeof text, "%-20s %12.6g\n", name, value);
    return {text, static_cast<size_t>(length)};
}

/// The number of n elements that the density expects from low to low + width.
double expected(double n, double low, double width, const Distribution& distribution,
                const double* parameters) {
    constexpr int points = 64; // of the midpoint rule; a bin may hold the support's end
    double sum = 0;
    for (int i = 0; i < points; ++i)
        sum += distribution.density(low + width * (i + 0.5) / points, parameters);
    return n * width * sum / points;
}

/// The least of 1, 2 and 5 times a power of ten that is not below x.
double roundedUp(double x) {
    const double power = std::pow(10.0, std::floor(std::log10(x)));
    for (const double step : {1.0, 2.0, 5.0})
        if (step * power >= x) return step * power;
    return 10 * power;
}

std::string bar(double length, char filling) {
    return std::string(static_cast<size_t>(std::lround(length)), filling);
}

std::string histogram(const std::vector<double>& sorted,
                      const Distribution& distribution, const double* parameters) {
    constexpr int mostBins = 15, columns = 50;
    const double range = sorted.back() - sorted.front();
    if (!(range > 0) || !std::isfinite(range)) return "";

    const double width = roundedUp(range / mostBins);
    const double first = std::floor(sorted.front() / width);
    std::vector<double> counts(mostBins + 2);
    for (const double x : sorted)
        ++counts[static_cast<size_t>(std::max(x / width - first, 0.0))];
    while (counts.back() == 0) counts.pop_back();
    const double scale = columns / *std::max_element(counts.begin(), counts.end());

    std::string text = "\n";
    for (size_t bin = 0; bin < counts.size(); ++bin) {
        const double low = (first + static_cast<double>(bin)) * width;
        std::string line = bar(counts[bin] * scale, '#');
        if (distribution.density) {
            const double end = scale * expected(static_cast<double>(sorted.size()), low,
                                                width, distribution, parameters);
            const std::string before = bar(std::min(end, columns * 1.2), ' ');
            line.resize(std::max(line.size(), before.size() + 1), ' ');
            line[before.size()] = '|';
        }
        char label[32];
        std::snprintf(label, sizeof label, "%12.6g  ", low);
        text += label + line + '\n';
    }
    return text;
}

} // namespace

std::string summary(std::vector<double> sample, const Distribution& distribution,
                    const double* parameters) {
    std::sort(sample.begin(), sample.end());
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
           row("count", static_cast<double>(sample.size())) +
           row("mean", drawn.mean, mean) +
           row("standard deviation", drawn.deviation, deviation) +
           row("minimum", sample.front()) +
           row("lower quartile", quantile(sample, 0.25)) +
           row("median", quantile(sample, 0.5)) +
           row("upper quartile", quantile(sample, 0.75)) +
           row("maximum", sample.back()) + histogram(sample, distribution, parameters);
}

} // namespace qorkes

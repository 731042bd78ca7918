#include "histogram.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qorkes {
namespace {

using catalogue::Distribution;

/// The least of 1, 2 and 5 times a power of ten that is not below x.
double roundedUp(double x) {
    const double power = std::pow(10.0, std::floor(std::log10(x)));
    for (const double step : {1.0, 2.0, 5.0})
        if (step * power >= x) return step * power;
    return 10 * power;
}

/// The share of all numbers that lies from low to low + width.
double exactShare(double low, double width, const Distribution& distribution,
                  const double* parameters) {
    double sum = 0;
    if (distribution.probability) {
        for (double k = low; k < low + width; ++k)
            sum += distribution.probability(k, parameters);
        return sum;
    }
    if (!distribution.density) return std::numeric_limits<double>::quiet_NaN();
    constexpr int points = 64; // of the midpoint rule; a bin may hold the support's end
    for (int i = 0; i < points; ++i)
        sum += distribution.density(low + width * (i + 0.5) / points, parameters);
    return width * sum / points;
}

struct Reach {
    double low, high;
};

Reach reachOf(const std::vector<double>& sorted) {
    const double lower = quantile(sorted, 0.25), upper = quantile(sorted, 0.75);
    const Reach all = {sorted.front(), sorted.back()};
    const double beyond = 4 * (upper - lower);
    if (!(beyond > 0)) return all;
    return {std::max(all.low, lower - beyond), std::min(all.high, upper + beyond)};
}

} // namespace

double quantile(const std::vector<double>& sorted, double share) {
    const double place = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<size_t>(place);
    const size_t above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] +
           (place - static_cast<double>(below)) * (sorted[above] - sorted[below]);
}

Histogram histogramOf(const std::vector<double>& sorted,
                      const Distribution& distribution, const double* parameters,
                      int most) {
    const auto [low, high] = reachOf(sorted);
    const double range = high - low;
    if (!(range > 0) || !std::isfinite(range)) return {};

    Histogram histogram;
    histogram.width = roundedUp(range / most);
    if (!distribution.doubles) histogram.width = std::max(histogram.width, 1.0);
    const double width = histogram.width, first = std::floor(low / width);
    const auto n = static_cast<double>(sorted.size());
    for (double i = first; i * width <= high; ++i)
        histogram.bins.push_back(
            {i * width, 0, n * exactShare(i * width, width, distribution, parameters)});
    for (const double x : sorted) {
        const double bin = std::floor(x / width) - first;
        if (bin < 0)
            ++histogram.below;
        else if (bin >= static_cast<double>(histogram.bins.size()))
            ++histogram.above;
        else
            ++histogram.bins[static_cast<size_t>(bin)].count;
    }
    return histogram;
}

} // namespace qorkes

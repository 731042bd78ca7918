// Do draws follow a distribution? The probability of a fit as bad as theirs, by tests
// against the exact distribution.
#pragma once

#include <gsl/gsl_cdf.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace qorkes::test {

/// Kolmogorov's distribution of the largest distance between the two distribution
/// functions; Stephens (1970) for the finite number of draws.
template <class T, class Cumulative>
double kolmogorovSmirnov(std::vector<T> draws, Cumulative&& cumulative) {
    std::sort(draws.begin(), draws.end());
    const double n = static_cast<double>(draws.size());
    double distance = 0;
    for (std::size_t i = 0; i < draws.size(); ++i) {
        const double p = cumulative(static_cast<double>(draws[i]));
        const double below = static_cast<double>(i) / n;
        distance = std::max({distance, p - below, below + 1 / n - p});
    }
    const double x = (std::sqrt(n) + 0.12 + 0.11 / std::sqrt(n)) * distance;
    double sum = 0;
    for (int k = 1; k <= 100; ++k)
        sum += (k % 2 ? 2 : -2) * std::exp(-2.0 * k * k * x * x);
    return std::clamp(sum, 0.0, 1.0);
}

/// Pearson's test of integers against their probabilities from `low` on; values are
/// gathered until `expected` draws fall in a cell, the rest is the last cell.
template <class Probability>
double chiSquare(const std::vector<int32_t>& draws, int32_t low, int32_t high,
                 Probability&& probability, double expected = 20) {
    const double n = static_cast<double>(draws.size());
    std::vector<double> counts(static_cast<std::size_t>(high - low) + 1);
    double beside = 0;
    for (const int32_t x : draws)
        (x < low || x > high ? beside : counts[static_cast<std::size_t>(x - low)]) += 1;
    double statistic = 0, cell = 0, wanted = 0, left = n;
    int cells = 0;
    for (int32_t x = low; x <= high; ++x) {
        cell += counts[static_cast<std::size_t>(x - low)];
        wanted += n * probability(x);
        if (wanted < expected || left - wanted < expected) continue;
        statistic += (cell - wanted) * (cell - wanted) / wanted;
        left -= wanted;
        cell = wanted = 0;
        ++cells;
    }
    cell += beside;
    statistic += (cell - left) * (cell - left) / left;
    return gsl_cdf_chisq_Q(statistic, cells);
}

/// Fixed seeds: a fit that fails here fails always.
inline void expectFit(double p, const char* what) {
    EXPECT_GT(p, 1e-4) << what;
    EXPECT_LT(p, 1 - 1e-4) << what;
}

} // namespace qorkes::test

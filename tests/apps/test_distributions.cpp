// What the rows of distributions say of moments and probabilities, against draws.
#include <distributions.hpp>
#include <kes_sub_kernel/stream.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace qorkes;
using catalogue::Distribution;

namespace {

/// The presets, moved where that is allowed.
std::vector<double> parametersOf(const Distribution& row) {
    std::vector<double> values;
    for (const auto& parameter : row.parameters) {
        const double other = parameter.preset * 0.75 + 0.125;
        values.push_back(parameter.range->holds(other) ? other : parameter.preset);
    }
    if (row.fault && row.fault(values.data()))
        for (size_t i = 0; i < values.size(); ++i) values[i] = row.parameters[i].preset;
    return values;
}

std::vector<double> sorted(const Distribution& row, int method,
                           const std::vector<double>& parameters) {
    constexpr int n = 200000;
    const auto stream = test::newStream(KesBrngMT19937, {1871});
    std::vector<double> numbers(n);
    if (row.doubles) {
        row.doubles(method, stream.get(), n, numbers.data(), parameters.data());
    } else {
        std::vector<int32_t> integers(n);
        row.integers(method, stream.get(), n, integers.data(), parameters.data());
        std::ranges::copy(integers, numbers.begin());
    }
    std::ranges::sort(numbers);
    return numbers;
}

/// The share of numbers from low to high.
double exactShare(const Distribution& row, const double* parameters, double low,
                  double high) {
    double sum = 0;
    if (row.probability) {
        for (double k = low; k <= high; ++k) sum += row.probability(k, parameters);
        return sum;
    }
    constexpr int points = 10000;
    const double step = (high - low) / points;
    for (int i = 0; i < points; ++i)
        sum += row.density(low + (i + 0.5) * step, parameters);
    return sum * step;
}

void expectMoments(const Distribution& row, const std::vector<double>& numbers,
                   const double* parameters) {
    const auto n = static_cast<double>(numbers.size());
    double sum = 0, squares = 0;
    for (const double x : numbers) sum += x;
    for (const double x : numbers) squares += std::pow(x - sum / n, 2);
    const auto [mean, deviation] = row.moments(parameters);
    EXPECT_NEAR(sum / n, mean, 5 * deviation / std::sqrt(n));
    EXPECT_NEAR(std::sqrt(squares / n), deviation, 0.05 * deviation);
}

TEST(Distributions, HaveTheMomentsAndSharesThatTheirRowsSay) {
    for (const Distribution& row : catalogue::distributions())
        for (int method = 0; method < std::max(1, int(row.methods.size())); ++method) {
            if (!row.doubles && !row.integers) continue;
            SCOPED_TRACE(testing::Message() << row.name << method);
            const auto parameters = parametersOf(row);
            const auto numbers = sorted(row, method, parameters);
            if (row.moments) expectMoments(row, numbers, parameters.data());
            const double low = numbers[numbers.size() / 4];
            const double high = numbers[numbers.size() / 4 * 3];
            const auto from = std::ranges::lower_bound(numbers, low);
            const auto to = std::ranges::upper_bound(numbers, high);
            EXPECT_NEAR(exactShare(row, parameters.data(), low, high),
                        static_cast<double>(to - from) /
                            static_cast<double>(numbers.size()),
                        0.01);
        }
}

} // namespace

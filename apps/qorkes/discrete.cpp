// The distributions of whole numbers, in alphabetical order.
#include "distribution_rows.hpp"

#include <tuple>

namespace qorkes::catalogue {
namespace {

constexpr Range count = {"a whole number from 0 to 2147483647", [](double x) {
                             return x >= 0 && x <= 0x7FFFFFFF && x == std::floor(x);
                         }};
constexpr Range chance = {"a number from 0 to 1",
                          [](double x) { return x >= 0 && x <= 1; }};
constexpr Range positiveChance = {"a number above 0 and up to 1",
                                  [](double x) { return x > 0 && x <= 1; }};
constexpr Range whole = {"a whole number of 32 bits", [](double x) {
                             return std::fabs(x) <= 0x7FFFFFFF && x == std::floor(x);
                         }};
constexpr Range poissonMean = {"a number from 0 to 1e9",
                               [](double x) { return x >= 0 && x <= 1e9; }};

/// ln C(n, k), for real n too.
double logChoose(double n, double k) {
    return std::lgamma(n + 1) - std::lgamma(k + 1) - std::lgamma(n - k + 1);
}

/// k ln(p), where nothing to the power of nothing is 1.
double logPower(double p, double k) { return k == 0 ? 0 : k * std::log(p); }

namespace bernoulli {
constexpr Parameter parameters[] = {{"p", 0.5, &chance}};
Moments moments(const double* p) { return {p[0], std::sqrt(p[0] * (1 - p[0]))}; }
double probability(double k, const double* p) {
    return k == 1 ? p[0] : k == 0 ? 1 - p[0] : 0;
}
} // namespace bernoulli

namespace binomial {
constexpr Parameter parameters[] = {{"ntrial", 10, &count}, {"p", 0.5, &chance}};
Moments moments(const double* p) {
    return {p[0] * p[1], std::sqrt(p[0] * p[1] * (1 - p[1]))};
}
double probability(double k, const double* p) {
    if (k < 0 || k > p[0]) return 0;
    return std::exp(logChoose(p[0], k) + logPower(p[1], k) +
                    logPower(1 - p[1], p[0] - k));
}
} // namespace binomial

namespace geometric {
constexpr Parameter parameters[] = {{"p", 0.5, &positiveChance}};
const char* fault(const double* p) {
    return p[0] < 2e-8 ? "numbers would be too large: p must be at least 2e-8"
                       : nullptr;
}
Moments moments(const double* p) {
    return {(1 - p[0]) / p[0], std::sqrt(1 - p[0]) / p[0]};
}
double probability(double k, const double* p) {
    return k < 0 ? 0 : p[0] * std::exp(logPower(1 - p[0], k));
}
} // namespace geometric

namespace hypergeometric {
constexpr Parameter parameters[] = {
    {"l", 100, &count}, {"s", 20, &count}, {"m", 30, &count}};
const char* fault(const double* p) {
    return p[1] > p[0]   ? "s must not be above l"
           : p[2] > p[0] ? "m must not be above l"
                         : nullptr;
}
Moments moments(const double* p) {
    const auto [l, s, m] = std::tuple(p[0], p[1], p[2]);
    if (l < 2) return {s * m, 0};
    return {s * m / l, std::sqrt(s * m / l * (l - m) / l * (l - s) / (l - 1))};
}
double probability(double k, const double* p) {
    return std::exp(logChoose(p[2], k) + logChoose(p[0] - p[2], p[1] - k) -
                    logChoose(p[0], p[1]));
}
} // namespace hypergeometric

namespace integers {
constexpr Parameter parameters[] = {{"a", 0, &whole}, {"b", 10, &whole}};
Moments moments(const double* p) {
    const double count = p[1] - p[0];
    return {(p[0] + p[1] - 1) / 2, std::sqrt((count * count - 1) / 12)};
}
double probability(double k, const double* p) {
    return k < p[0] || k >= p[1] ? 0 : 1 / (p[1] - p[0]);
}
} // namespace integers

namespace negbinomial {
constexpr Parameter parameters[] = {{"a", 5, &positive}, {"p", 0.5, &positiveChance}};
const char* fault(const double* p) {
    return (p[0] + 20) * (1 - p[1]) / p[1] > 1e8
               ? "numbers would be too large: (a + 20) (1 - p) / p must be at most 1e8"
               : nullptr;
}
Moments moments(const double* p) {
    const double q = 1 - p[1];
    return {p[0] * q / p[1], std::sqrt(p[0] * q) / p[1]};
}
double probability(double k, const double* p) {
    if (k < 0) return 0;
    return std::exp(logChoose(k + p[0] - 1, k) + logPower(p[1], p[0]) +
                    logPower(1 - p[1], k));
}
} // namespace negbinomial

namespace poisson {
constexpr Parameter parameters[] = {{"lambda", 1, &poissonMean}};
constexpr const char* methods[] = {
    "exact: table search, rejection from a mean of 27 on",
    "approximate: a curve of a normal number"};
Moments moments(const double* p) { return {p[0], std::sqrt(p[0])}; }
double probability(double k, const double* p) {
    return k < 0 ? 0 : std::exp(logPower(p[0], k) - p[0] - std::lgamma(k + 1));
}
int drawEach(int, StreamState* stream, int n, int32_t* r, const double* p) {
    const std::vector<double> means(static_cast<size_t>(n), p[0]);
    return _kesiRngPoissonV(0, stream, n, r, means.data());
}
} // namespace poisson

} // namespace

std::vector<Distribution> discreteDistributions() {
    return {
        {
            .name = "bernoulli",
            .description = "1 with probability p, else 0",
            .parameters = bernoulli::parameters,
            .integers = drawBy<_kesiRngBernoulli>,
            .moments = bernoulli::moments,
            .probability = bernoulli::probability,
        },
        {
            .name = "binomial",
            .description = "successes among ntrial trials of probability p",
            .parameters = binomial::parameters,
            .integers = drawBy<_kesiRngBinomial>,
            .moments = binomial::moments,
            .probability = binomial::probability,
        },
        {
            .name = "bits",
            .description = "the generator's own words",
            .words = drawBy<_kesiRngUniformBits>,
        },
        {
            .name = "geometric",
            .description = "failures before the first success of probability p",
            .parameters = geometric::parameters,
            .integers = drawBy<_kesiRngGeometric>,
            .fault = geometric::fault,
            .moments = geometric::moments,
            .probability = geometric::probability,
        },
        {
            .name = "hypergeometric",
            .description = "marked items in a sample of s from l with m marked",
            .parameters = hypergeometric::parameters,
            .integers = drawBy<_kesiRngHypergeometric>,
            .fault = hypergeometric::fault,
            .moments = hypergeometric::moments,
            .probability = hypergeometric::probability,
        },
        {
            .name = "integers",
            .description = "whole numbers a to b - 1, all as probable",
            .parameters = integers::parameters,
            .integers = drawBy<_kesiRngUniform>,
            .fault = faultOfEnds,
            .moments = integers::moments,
            .probability = integers::probability,
        },
        {
            .name = "negbinomial",
            .description = "failures before the a-th success of probability p",
            .parameters = negbinomial::parameters,
            .integers = drawBy<_kesiRngNegbinomial>,
            .fault = negbinomial::fault,
            .moments = negbinomial::moments,
            .probability = negbinomial::probability,
        },
        {
            .name = "poisson",
            .description = "events in a time that sees lambda of them on average",
            .parameters = poisson::parameters,
            .methods = poisson::methods,
            .integers = drawBy<_kesiRngPoisson>,
            .moments = poisson::moments,
            .probability = poisson::probability,
        },
        {
            .name = "poissonv",
            .description = "the same by the entry that takes a mean for each number",
            .parameters = poisson::parameters,
            .integers = poisson::drawEach,
            .moments = poisson::moments,
            .probability = poisson::probability,
        },
    };
}

} // namespace qorkes::catalogue

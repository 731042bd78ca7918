// The distributions of real numbers, in alphabetical order.
#include "distribution_rows.hpp"

#include <numbers>

namespace qorkes::catalogue {
namespace {

using std::numbers::egamma, std::numbers::pi;

double square(double x) { return x * x; }

/// The standard normal density.
double bell(double z) { return std::exp(-z * z / 2) / std::sqrt(2 * pi); }

/// Where most distributions lie and how wide they are.
constexpr Parameter shift = {"a", 0, &anyNumber}, scale = {"beta", 1, &positive};
constexpr Parameter shiftAndScale[] = {shift, scale};

namespace beta {
constexpr Parameter parameters[] = {
    {"p", 2, &positive}, {"q", 3, &positive}, shift, scale};
Moments moments(const double* p) {
    const double sum = p[0] + p[1];
    return {p[2] + p[3] * p[0] / sum, p[3] * std::sqrt(p[0] * p[1] / (sum + 1)) / sum};
}
double density(double x, const double* p) {
    const double z = (x - p[2]) / p[3];
    if (z < 0 || z > 1) return 0;
    const double norm =
        std::lgamma(p[0]) + std::lgamma(p[1]) - std::lgamma(p[0] + p[1]);
    return std::pow(z, p[0] - 1) * std::pow(1 - z, p[1] - 1) * std::exp(-norm) / p[3];
}
} // namespace beta

namespace cauchy {
double density(double x, const double* p) {
    return 1 / (pi * p[1] * (1 + square((x - p[0]) / p[1])));
}
} // namespace cauchy

namespace exponential {
Moments moments(const double* p) { return {p[0] + p[1], p[1]}; }
double density(double x, const double* p) {
    return x < p[0] ? 0 : std::exp(-(x - p[0]) / p[1]) / p[1];
}
} // namespace exponential

namespace gamma {
constexpr Parameter parameters[] = {{"alpha", 2, &positive}, shift, scale};
Moments moments(const double* p) {
    return {p[1] + p[2] * p[0], p[2] * std::sqrt(p[0])};
}
double density(double x, const double* p) {
    const double z = (x - p[1]) / p[2];
    if (z < 0) return 0;
    return std::pow(z, p[0] - 1) * std::exp(-z - std::lgamma(p[0])) / p[2];
}
} // namespace gamma

namespace gaussian {
constexpr Parameter parameters[] = {shift, {"sigma", 1, &positive}};
constexpr const char* methods[] = {"Box-Muller, one number of each pair",
                                   "Box-Muller, both numbers of each pair"};
Moments moments(const double* p) { return {p[0], p[1]}; }
double density(double x, const double* p) { return bell((x - p[0]) / p[1]) / p[1]; }
} // namespace gaussian

namespace gumbel {
Moments moments(const double* p) {
    return {p[0] - egamma * p[1], pi * p[1] / std::sqrt(6)};
}
double density(double x, const double* p) {
    const double z = (x - p[0]) / p[1];
    return std::exp(z - std::exp(z)) / p[1];
}
} // namespace gumbel

namespace laplace {
Moments moments(const double* p) { return {p[0], std::sqrt(2) * p[1]}; }
double density(double x, const double* p) {
    return std::exp(-std::abs(x - p[0]) / p[1]) / (2 * p[1]);
}
} // namespace laplace

namespace lognormal {
constexpr Parameter parameters[] = {
    shift, {"sigma", 1, &positive}, {"b", 0, &anyNumber}, scale};
Moments moments(const double* p) {
    const double mean = p[3] * std::exp(p[0] + square(p[1]) / 2);
    return {p[2] + mean, mean * std::sqrt(std::expm1(square(p[1])))};
}
double density(double x, const double* p) {
    if (x <= p[2]) return 0;
    const double z = (std::log((x - p[2]) / p[3]) - p[0]) / p[1];
    return bell(z) / (p[1] * (x - p[2]));
}
} // namespace lognormal

namespace rayleigh {
Moments moments(const double* p) {
    return {p[0] + p[1] * std::sqrt(pi) / 2, p[1] * std::sqrt(1 - pi / 4)};
}
double density(double x, const double* p) {
    const double z = (x - p[0]) / p[1];
    return z < 0 ? 0 : 2 * z * std::exp(-z * z) / p[1];
}
} // namespace rayleigh

namespace uniform {
constexpr Parameter parameters[] = {{"a", 0, &anyNumber}, {"b", 1, &anyNumber}};
Moments moments(const double* p) {
    return {(p[0] + p[1]) / 2, (p[1] - p[0]) / std::sqrt(12.0)};
}
double density(double x, const double* p) {
    return x < p[0] || x > p[1] ? 0 : 1 / (p[1] - p[0]);
}
} // namespace uniform

namespace weibull {
constexpr Parameter parameters[] = {{"alpha", 2, &positive}, shift, scale};
Moments moments(const double* p) {
    const double mean = std::tgamma(1 + 1 / p[0]);
    return {p[1] + p[2] * mean,
            p[2] * std::sqrt(std::tgamma(1 + 2 / p[0]) - square(mean))};
}
double density(double x, const double* p) {
    const double z = (x - p[1]) / p[2];
    if (z < 0) return 0;
    const double power = std::pow(z, p[0] - 1);
    return p[0] / p[2] * power * std::exp(-power * z);
}
} // namespace weibull

} // namespace

std::vector<Distribution> continuousDistributions() {
    return {
        {
            .name = "beta",
            .description =
                "shares: of a gamma variate of shape p in a sum with one of q",
            .parameters = beta::parameters,
            .doubles = drawBy<_kesdRngBeta>,
            .singles = drawBy<_kessRngBeta>,
            .moments = beta::moments,
            .density = beta::density,
        },
        {
            .name = "cauchy",
            .description = "quotient of two normal numbers; without moments",
            .parameters = shiftAndScale,
            .doubles = drawBy<_kesdRngCauchy>,
            .singles = drawBy<_kessRngCauchy>,
            .density = cauchy::density,
        },
        {
            .name = "exponential",
            .description = "times between events that come at random",
            .parameters = shiftAndScale,
            .doubles = drawBy<_kesdRngExponential>,
            .singles = drawBy<_kessRngExponential>,
            .moments = exponential::moments,
            .density = exponential::density,
        },
        {
            .name = "gamma",
            .description = "waiting times for alpha events that come at random",
            .parameters = gamma::parameters,
            .doubles = drawBy<_kesdRngGamma>,
            .singles = drawBy<_kessRngGamma>,
            .moments = gamma::moments,
            .density = gamma::density,
        },
        {
            .name = "gaussian",
            .description = "normal numbers: mean a, standard deviation sigma",
            .parameters = gaussian::parameters,
            .methods = gaussian::methods,
            .doubles = drawBy<_kesdRngGaussian>,
            .singles = drawBy<_kessRngGaussian>,
            .moments = gaussian::moments,
            .density = gaussian::density,
        },
        {
            .name = "gumbel",
            .description = "smallest values of many; mode a",
            .parameters = shiftAndScale,
            .doubles = drawBy<_kesdRngGumbel>,
            .singles = drawBy<_kessRngGumbel>,
            .moments = gumbel::moments,
            .density = gumbel::density,
        },
        {
            .name = "laplace",
            .description = "exponential to both sides of a",
            .parameters = shiftAndScale,
            .doubles = drawBy<_kesdRngLaplace>,
            .singles = drawBy<_kessRngLaplace>,
            .moments = laplace::moments,
            .density = laplace::density,
        },
        {
            .name = "lognormal",
            .description = "b + beta exp(z), z normal with mean a and deviation sigma",
            .parameters = lognormal::parameters,
            .doubles = drawBy<_kesdRngLognormal>,
            .singles = drawBy<_kessRngLognormal>,
            .moments = lognormal::moments,
            .density = lognormal::density,
        },
        {
            .name = "rayleigh",
            .description = "distances of normal points in the plane",
            .parameters = shiftAndScale,
            .doubles = drawBy<_kesdRngRayleigh>,
            .singles = drawBy<_kessRngRayleigh>,
            .moments = rayleigh::moments,
            .density = rayleigh::density,
        },
        {
            .name = "uniform",
            .description = "real numbers in [a, b)",
            .parameters = uniform::parameters,
            .doubles = drawBy<_kesdRngUniform>,
            .singles = drawBy<_kessRngUniform>,
            .fault = faultOfEnds,
            .moments = uniform::moments,
            .density = uniform::density,
        },
        {
            .name = "weibull",
            .description = "lifetimes whose risk goes with age^(alpha - 1)",
            .parameters = weibull::parameters,
            .doubles = drawBy<_kesdRngWeibull>,
            .singles = drawBy<_kessRngWeibull>,
            .moments = weibull::moments,
            .density = weibull::density,
        },
    };
}

Distribution gaussianMV() {
    return {
        .name = "gaussianmv",
        .description = "normal vectors, say a=1,2 covariance=4,1,1,9 (rows)",
        .methods = gaussian::methods,
    };
}

} // namespace qorkes::catalogue

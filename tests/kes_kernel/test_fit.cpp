// A million draws of each continuous distribution against its exact law.
#include "continuous.hpp"
#include "goodness.hpp"

using namespace qorkes::test;

namespace {

/// Scaled by 2, and not displaced, which would round small numbers away.
struct Law {
    const char* name;
    int method;
    std::vector<double> shapes;
    double (*cumulative)(double x); // of the standard law
};

#define LAW(value) [](double x) { return value; }
const Law laws[] = {
    {"beta", 0, {0.45, 0.7}, LAW(gsl_cdf_beta_P(x, 0.45, 0.7))},
    {"beta", 0, {0.7, 0.8}, LAW(gsl_cdf_beta_P(x, 0.7, 0.8))},
    {"beta", 0, {0.5, 3}, LAW(gsl_cdf_beta_P(x, 0.5, 3))},
    {"beta", 0, {3, 0.7}, LAW(gsl_cdf_beta_P(x, 3, 0.7))},
    {"beta", 0, {2, 3}, LAW(gsl_cdf_beta_P(x, 2, 3))},
    {"beta", 0, {1, 3}, LAW(gsl_cdf_beta_P(x, 1, 3))},
    {"beta", 0, {3, 1}, LAW(gsl_cdf_beta_P(x, 3, 1))},
    {"cauchy", 0, {}, LAW(gsl_cdf_cauchy_P(x, 1))},
    {"exponential", 0, {}, LAW(gsl_cdf_exponential_P(x, 1))},
    {"gamma", 0, {0.3}, LAW(gsl_cdf_gamma_P(x, 0.3, 1))},
    {"gamma", 0, {0.8}, LAW(gsl_cdf_gamma_P(x, 0.8, 1))},
    {"gamma", 0, {1}, LAW(gsl_cdf_gamma_P(x, 1, 1))},
    {"gamma", 0, {1.1}, LAW(gsl_cdf_gamma_P(x, 1.1, 1))},
    {"gamma", 0, {100}, LAW(gsl_cdf_gamma_P(x, 100, 1))},
    {"gaussian", 0, {}, LAW(gsl_cdf_ugaussian_P(x))},
    {"gaussian", 1, {}, LAW(gsl_cdf_ugaussian_P(x))},
    {"gumbel", 0, {}, LAW(gsl_cdf_gumbel1_Q(-x, 1, 1))},
    {"laplace", 0, {}, LAW(gsl_cdf_laplace_P(x, 1))},
    {"lognormal", 0, {1, 0.5}, LAW(gsl_cdf_lognormal_P(x, 1, 0.5))},
    {"rayleigh", 0, {}, LAW(gsl_cdf_rayleigh_P(x, M_SQRT1_2))},
    {"weibull", 0, {0.7}, LAW(gsl_cdf_weibull_P(x, 1, 0.7))},
    {"weibull", 0, {3}, LAW(gsl_cdf_weibull_P(x, 1, 3))},
};
#undef LAW

template <class T> void expectAllFit(uint32_t seed) {
    for (const auto& [name, method, shapes, cumulative] : laws) {
        const Stream stream = newStream(KesBrngMT19937, {seed});
        std::vector<double> parameters = shapes;
        parameters.insert(parameters.end(), {0, 2});
        const auto draws = variates<T>(name, method, stream, 1000000, parameters);
        const auto law = [&](double x) { return cumulative(x / 2); };
        expectFit(kolmogorovSmirnov(draws, law), name);
    }
}

TEST(Fit, DoublesFollowTheirLaws) { expectAllFit<double>(1871); }
TEST(Fit, FloatsFollowTheirLaws) { expectAllFit<float>(1970); }

} // namespace

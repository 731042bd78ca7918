// A million draws of each continuous distribution against its exact law.
#include "continuous.hpp"
#include "goodness.hpp"

using namespace qorkes::test;

namespace {

struct Law {
    const char* name;
    int method;
    std::vector<double> parameters;
    double (*cumulative)(double x);
};

const Law laws[] = {
    {"cauchy", 0, {1, 2}, [](double x) { return gsl_cdf_cauchy_P(x - 1, 2); }},
    {"exponential",
     0,
     {1, 2},
     [](double x) { return gsl_cdf_exponential_P(x - 1, 2); }},
    {"gaussian", 0, {1, 2}, [](double x) { return gsl_cdf_gaussian_P(x - 1, 2); }},
    {"gaussian", 1, {1, 2}, [](double x) { return gsl_cdf_gaussian_P(x - 1, 2); }},
    {"gumbel",
     0,
     {1, 2},
     [](double x) { return gsl_cdf_gumbel1_Q((1 - x) / 2, 1, 1); }},
    {"laplace", 0, {1, 2}, [](double x) { return gsl_cdf_laplace_P(x - 1, 2); }},
    {"lognormal",
     0,
     {1, 0.5, 3, 2},
     [](double x) { return gsl_cdf_lognormal_P((x - 3) / 2, 1, 0.5); }},
    {"rayleigh",
     0,
     {1, 2},
     [](double x) { return gsl_cdf_rayleigh_P(x - 1, M_SQRT2); }},
    {"weibull",
     0,
     {0.7, 1, 2},
     [](double x) { return gsl_cdf_weibull_P(x - 1, 2, 0.7); }},
    {"weibull", 0, {3, 1, 2}, [](double x) { return gsl_cdf_weibull_P(x - 1, 2, 3); }},
};

template <class T> void expectAllFit(uint32_t seed) {
    for (const Law& law : laws) {
        const Stream stream = newStream(KesBrngMT19937, {seed});
        const auto draws =
            variates<T>(law.name, law.method, stream, 1000000, law.parameters);
        expectFit(kolmogorovSmirnov(draws, law.cumulative), law.name);
    }
}

TEST(Fit, DoublesFollowTheirLaws) { expectAllFit<double>(1871); }
TEST(Fit, FloatsFollowTheirLaws) { expectAllFit<float>(1970); }

} // namespace

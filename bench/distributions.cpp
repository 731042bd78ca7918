// The rows for distributions: variates from a Mersenne Twister against those of a
// peer's distribution over its own Mersenne Twister.
#include "drawing.hpp"

#include <distribution_rows.hpp>

namespace qorkes::bench {
namespace {

using catalogue::drawBy;

template <class T> struct DrawnRow {
    const char* ours; // name and method
    const char* peer; // a distribution of peers.cpp
    catalogue::Draw<T> draw;
    int method;
    double parameters[4]; // as far as the distribution has any
};

constexpr DrawnRow<double> doubles[] = {
    {"Cauchy", "GSL cauchy", drawBy<_kesdRngCauchy>, 0, {0, 1}},
    {"Cauchy", "std cauchy", drawBy<_kesdRngCauchy>, 0, {0, 1}},
    {"Cauchy", "Boost cauchy", drawBy<_kesdRngCauchy>, 0, {0, 1}},
    {"Exponential", "GSL exponential", drawBy<_kesdRngExponential>, 0, {0, 1}},
    {"Exponential", "std exponential", drawBy<_kesdRngExponential>, 0, {0, 1}},
    {"Exponential", "Boost exponential", drawBy<_kesdRngExponential>, 0, {0, 1}},
    {"Gaussian 0", "GSL polar", drawBy<_kesdRngGaussian>, 0, {0, 1}},
    {"Gaussian 0", "std polar", drawBy<_kesdRngGaussian>, 0, {0, 1}},
    {"Gaussian 1", "GSL ziggurat", drawBy<_kesdRngGaussian>, 1, {0, 1}},
    {"Gaussian 1", "Boost ziggurat", drawBy<_kesdRngGaussian>, 1, {0, 1}},
    {"Gumbel", "GSL gumbel", drawBy<_kesdRngGumbel>, 0, {0, 1}},
    {"Gumbel", "std gumbel", drawBy<_kesdRngGumbel>, 0, {0, 1}},
    {"Gumbel", "Boost gumbel", drawBy<_kesdRngGumbel>, 0, {0, 1}},
    {"Laplace", "GSL laplace", drawBy<_kesdRngLaplace>, 0, {0, 1}},
    {"Laplace", "Boost laplace", drawBy<_kesdRngLaplace>, 0, {0, 1}},
    {"Lognormal", "GSL lognormal", drawBy<_kesdRngLognormal>, 0, {0, 1, 0, 1}},
    {"Lognormal", "std lognormal", drawBy<_kesdRngLognormal>, 0, {0, 1, 0, 1}},
    {"Lognormal", "Boost lognormal", drawBy<_kesdRngLognormal>, 0, {0, 1, 0, 1}},
    {"Rayleigh", "GSL rayleigh", drawBy<_kesdRngRayleigh>, 0, {0, 1}},
    {"Weibull", "GSL weibull", drawBy<_kesdRngWeibull>, 0, {2, 0, 1}},
    {"Weibull", "std weibull", drawBy<_kesdRngWeibull>, 0, {2, 0, 1}},
    {"Weibull", "Boost weibull", drawBy<_kesdRngWeibull>, 0, {2, 0, 1}},
};

constexpr DrawnRow<float> singles[] = {
    {"Exponential", "std exponential", drawBy<_kessRngExponential>, 0, {0, 1}},
    {"Gaussian 0", "std polar", drawBy<_kessRngGaussian>, 0, {0, 1}},
    {"Gaussian 1", "std polar", drawBy<_kessRngGaussian>, 1, {0, 1}},
};

constexpr DrawnRow<std::int32_t> integers[] = {
    {"Bernoulli(0.3)", "GSL bernoulli(0.3)", drawBy<_kesiRngBernoulli>, 0, {0.3}},
    {"Bernoulli(0.3)", "std bernoulli(0.3)", drawBy<_kesiRngBernoulli>, 0, {0.3}},
    {"Bernoulli(0.3)", "Boost bernoulli(0.3)", drawBy<_kesiRngBernoulli>, 0, {0.3}},
    {"Binomial(50, 0.3)",
     "GSL binomial(50, 0.3)",
     drawBy<_kesiRngBinomial>,
     0,
     {50, 0.3}},
    {"Binomial(50, 0.3)",
     "std binomial(50, 0.3)",
     drawBy<_kesiRngBinomial>,
     0,
     {50, 0.3}},
    {"Binomial(50, 0.3)",
     "Boost binomial(50, 0.3)",
     drawBy<_kesiRngBinomial>,
     0,
     {50, 0.3}},
    {"Binomial(10000, 0.25)",
     "GSL binomial(10000, 0.25)",
     drawBy<_kesiRngBinomial>,
     0,
     {10000, 0.25}},
    {"Binomial(10000, 0.25)",
     "std binomial(10000, 0.25)",
     drawBy<_kesiRngBinomial>,
     0,
     {10000, 0.25}},
    {"Binomial(10000, 0.25)",
     "Boost binomial(10000, 0.25)",
     drawBy<_kesiRngBinomial>,
     0,
     {10000, 0.25}},
    {"Geometric(0.3)", "GSL geometric(0.3)", drawBy<_kesiRngGeometric>, 0, {0.3}},
    {"Geometric(0.3)", "std geometric(0.3)", drawBy<_kesiRngGeometric>, 0, {0.3}},
    {"Geometric(0.3)", "Boost geometric(0.3)", drawBy<_kesiRngGeometric>, 0, {0.3}},
    {"Hypergeometric(100, 20, 30)",
     "GSL hypergeometric(100, 20, 30)",
     drawBy<_kesiRngHypergeometric>,
     0,
     {100, 20, 30}},
    {"Hypergeometric(1000, 300, 400)",
     "GSL hypergeometric(1000, 300, 400)",
     drawBy<_kesiRngHypergeometric>,
     0,
     {1000, 300, 400}},
    {"Negbinomial(5, 0.3)",
     "GSL negbinomial(5, 0.3)",
     drawBy<_kesiRngNegbinomial>,
     0,
     {5, 0.3}},
    {"Negbinomial(5, 0.3)",
     "std negbinomial(5, 0.3)",
     drawBy<_kesiRngNegbinomial>,
     0,
     {5, 0.3}},
    {"Negbinomial(5, 0.3)",
     "Boost negbinomial(5, 0.3)",
     drawBy<_kesiRngNegbinomial>,
     0,
     {5, 0.3}},
    {"Negbinomial(50, 0.1)",
     "GSL negbinomial(50, 0.1)",
     drawBy<_kesiRngNegbinomial>,
     0,
     {50, 0.1}},
    {"Negbinomial(50, 0.1)",
     "std negbinomial(50, 0.1)",
     drawBy<_kesiRngNegbinomial>,
     0,
     {50, 0.1}},
    {"Negbinomial(50, 0.1)",
     "Boost negbinomial(50, 0.1)",
     drawBy<_kesiRngNegbinomial>,
     0,
     {50, 0.1}},
    {"Poisson 0 (3)", "GSL poisson(3)", drawBy<_kesiRngPoisson>, 0, {3}},
    {"Poisson 0 (3)", "std poisson(3)", drawBy<_kesiRngPoisson>, 0, {3}},
    {"Poisson 0 (3)", "Boost poisson(3)", drawBy<_kesiRngPoisson>, 0, {3}},
    {"Poisson 0 (30)", "GSL poisson(30)", drawBy<_kesiRngPoisson>, 0, {30}},
    {"Poisson 0 (30)", "std poisson(30)", drawBy<_kesiRngPoisson>, 0, {30}},
    {"Poisson 0 (30)", "Boost poisson(30)", drawBy<_kesiRngPoisson>, 0, {30}},
    {"Poisson 0 (1000)", "GSL poisson(1000)", drawBy<_kesiRngPoisson>, 0, {1000}},
    {"Poisson 0 (1000)", "std poisson(1000)", drawBy<_kesiRngPoisson>, 0, {1000}},
    {"Poisson 0 (1000)", "Boost poisson(1000)", drawBy<_kesiRngPoisson>, 0, {1000}},
    {"Poisson 1 (1000)", "GSL poisson(1000)", drawBy<_kesiRngPoisson>, 1, {1000}},
    {"Poisson 1 (1000)", "std poisson(1000)", drawBy<_kesiRngPoisson>, 1, {1000}},
    {"Poisson 1 (1000)", "Boost poisson(1000)", drawBy<_kesiRngPoisson>, 1, {1000}},
    {"Uniform(0, 100)", "GSL uniform(0, 100)", drawBy<_kesiRngUniform>, 0, {0, 100}},
    {"Uniform(0, 100)", "std uniform(0, 100)", drawBy<_kesiRngUniform>, 0, {0, 100}},
    {"Uniform(0, 100)", "Boost uniform(0, 100)", drawBy<_kesiRngUniform>, 0, {0, 100}},
};

template <class T>
void addRows(const char* type, std::span<const DrawnRow<T>> table,
             std::span<const StreamPeer<T>> Peers::*peers, std::vector<Row>& rows) {
    for (const DrawnRow<T>& row : table)
        rows.push_back(
            {type + std::string(row.ours), "", row.peer, [&row, peers](int n) {
                 const auto draw = [&row](StreamState* s, int m, T* r) {
                     row.draw(row.method, s, m, r, row.parameters);
                 };
                 return drawingContest<T>(n, KesBrngMT19937, 1, draw, peers, row.peer);
             }});
}

} // namespace

std::vector<Row> distributionRows() {
    std::vector<Row> rows;
    addRows<double>("double ", doubles, &Peers::drawnDoubles, rows);
    addRows<float>("float ", singles, &Peers::drawnSingles, rows);
    addRows<std::int32_t>("", integers, &Peers::drawnIntegers, rows);
    return rows;
}

} // namespace qorkes::bench

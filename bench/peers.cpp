#include "peers.hpp"

#include <boost/random/additive_combine.hpp>
#include <boost/random/bernoulli_distribution.hpp>
#include <boost/random/beta_distribution.hpp>
#include <boost/random/binomial_distribution.hpp>
#include <boost/random/cauchy_distribution.hpp>
#include <boost/random/exponential_distribution.hpp>
#include <boost/random/extreme_value_distribution.hpp>
#include <boost/random/gamma_distribution.hpp>
#include <boost/random/geometric_distribution.hpp>
#include <boost/random/laplace_distribution.hpp>
#include <boost/random/linear_congruential.hpp>
#include <boost/random/lognormal_distribution.hpp>
#include <boost/random/mersenne_twister.hpp>
#include <boost/random/negative_binomial_distribution.hpp>
#include <boost/random/normal_distribution.hpp>
#include <boost/random/poisson_distribution.hpp>
#include <boost/random/uniform_int_distribution.hpp>
#include <boost/random/uniform_real_distribution.hpp>
#include <boost/random/weibull_distribution.hpp>
#include <gsl/gsl_qrng.h>
#include <gsl/gsl_randist.h>
#include <gsl/gsl_rng.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace qorkes::bench {
namespace {

/// The next raw word, or a real number from [0, 1) by the library's own distribution.
template <class T, class Real, class Engine> T next(Engine& engine) {
    if constexpr (std::is_integral_v<T>)
        return static_cast<T>(engine());
    else
        return Real(0, 1)(engine);
}

template <class Engine, class T> void fillFromStd(int n, T* y) {
    using Real = std::uniform_real_distribution<
        std::conditional_t<std::is_integral_v<T>, double, T>>;
    static Engine engine;
    for (int i = 0; i < n; ++i) y[i] = next<T, Real>(engine);
}

template <class Engine, class T> void fillFromBoost(int n, T* y) {
    using Real = boost::random::uniform_real_distribution<
        std::conditional_t<std::is_integral_v<T>, double, T>>;
    static Engine engine;
    for (int i = 0; i < n; ++i) y[i] = next<T, Real>(engine);
}

/// A generator of the GNU Scientific Library.
template <const gsl_rng_type* const& type, class T> void fillFromGsl(int n, T* y) {
    static gsl_rng* const generator = gsl_rng_alloc(type);
    for (int i = 0; i < n; ++i)
        if constexpr (std::is_integral_v<T>)
            y[i] = static_cast<T>(gsl_rng_get(generator));
        else
            y[i] = static_cast<T>(gsl_rng_uniform(generator));
}

template <class T>
const StreamPeer<T> streamPeers[] = {
    {"std minstd_rand", fillFromStd<std::minstd_rand, T>},
    {"std mt19937", fillFromStd<std::mt19937, T>},
    {"Boost minstd_rand", fillFromBoost<boost::random::minstd_rand, T>},
    {"Boost mt19937", fillFromBoost<boost::random::mt19937, T>},
    {"Boost ecuyer1988", fillFromBoost<boost::random::ecuyer1988, T>},
    {"GSL minstd", fillFromGsl<gsl_rng_minstd, T>},
    {"GSL mt19937", fillFromGsl<gsl_rng_mt19937, T>},
    {"GSL r250", fillFromGsl<gsl_rng_r250, T>},
    {"GSL taus88", fillFromGsl<gsl_rng_taus, T>},
};

/// Points of a quasi-random sequence of the GNU Scientific Library, begun anew before
/// it ends.
template <const gsl_qrng_type* const& type> void fillWithPoints(int n, double* y) {
    static gsl_qrng* const sequence = gsl_qrng_alloc(type, quasiDimensions);
    static int drawn = 0;
    if ((drawn += n) > 1 << 30) {
        gsl_qrng_init(sequence);
        drawn = n;
    }
    for (int i = 0; i < n; i += quasiDimensions) gsl_qrng_get(sequence, y + i);
}

const StreamPeer<double> pointPeers[] = {
    {"GSL sobol", fillWithPoints<gsl_qrng_sobol>},
    {"GSL niederreiter_2", fillWithPoints<gsl_qrng_niederreiter_2>},
};

// ---- Distributions, all of them over a Mersenne Twister of the same library ---------

/// make() is a distribution of the C++ standard library or of Boost.
template <class Engine, class T, class Make>
StreamPeer<T> drawing(const char* name, Make) {
    return {name, [](int n, T* y) {
                static Engine engine;
                static auto distribution = Make{}();
                for (int i = 0; i < n; ++i) y[i] = distribution(engine);
            }};
}
template <class T, class Make> StreamPeer<T> ofStd(const char* name, Make make) {
    return drawing<std::mt19937, T>(name, make);
}
template <class T, class Make> StreamPeer<T> ofBoost(const char* name, Make make) {
    return drawing<boost::random::mt19937, T>(name, make);
}

/// draw(generator) is a variate of the GNU Scientific Library.
template <class T, class Draw> StreamPeer<T> ofGsl(const char* name, Draw) {
    return {name, [](int n, T* y) {
                static gsl_rng* const generator = gsl_rng_alloc(gsl_rng_mt19937);
                for (int i = 0; i < n; ++i) y[i] = static_cast<T>(Draw{}(generator));
            }};
}

#define MAKE(...)    [] { return __VA_ARGS__(); }
#define DRAW(f, ...) [](gsl_rng* g) { return f(g, __VA_ARGS__); }

namespace boosted = boost::random;

const StreamPeer<double> drawnDoubles[] = {
    ofGsl<double>("GSL beta(0.7, 0.8)", DRAW(gsl_ran_beta, 0.7, 0.8)),
    ofBoost<double>("Boost beta(0.7, 0.8)",
                    [] { return boosted::beta_distribution<>(0.7, 0.8); }),
    ofGsl<double>("GSL beta(2, 3)", DRAW(gsl_ran_beta, 2, 3)),
    ofBoost<double>("Boost beta(2, 3)",
                    [] { return boosted::beta_distribution<>(2, 3); }),
    ofGsl<double>("GSL cauchy", DRAW(gsl_ran_cauchy, 1)),
    ofStd<double>("std cauchy", MAKE(std::cauchy_distribution<>)),
    ofBoost<double>("Boost cauchy", MAKE(boosted::cauchy_distribution<>)),
    ofGsl<double>("GSL exponential", DRAW(gsl_ran_exponential, 1)),
    ofStd<double>("std exponential", MAKE(std::exponential_distribution<>)),
    ofBoost<double>("Boost exponential", MAKE(boosted::exponential_distribution<>)),
    ofGsl<double>("GSL gamma(0.5)", DRAW(gsl_ran_gamma, 0.5, 1)),
    ofStd<double>("std gamma(0.5)", [] { return std::gamma_distribution<>(0.5); }),
    ofBoost<double>("Boost gamma(0.5)",
                    [] { return boosted::gamma_distribution<>(0.5); }),
    ofGsl<double>("GSL gamma(1.5)", DRAW(gsl_ran_gamma, 1.5, 1)),
    ofStd<double>("std gamma(1.5)", [] { return std::gamma_distribution<>(1.5); }),
    ofBoost<double>("Boost gamma(1.5)",
                    [] { return boosted::gamma_distribution<>(1.5); }),
    ofGsl<double>("GSL gamma(100)", DRAW(gsl_ran_gamma, 100, 1)),
    ofStd<double>("std gamma(100)", [] { return std::gamma_distribution<>(100); }),
    ofBoost<double>("Boost gamma(100)",
                    [] { return boosted::gamma_distribution<>(100); }),
    ofGsl<double>("GSL polar", DRAW(gsl_ran_gaussian, 1)),
    ofGsl<double>("GSL ziggurat", DRAW(gsl_ran_gaussian_ziggurat, 1)),
    ofStd<double>("std polar", MAKE(std::normal_distribution<>)),
    ofBoost<double>("Boost ziggurat", MAKE(boosted::normal_distribution<>)),
    ofGsl<double>("GSL gumbel", DRAW(gsl_ran_gumbel1, 1, 1)),
    ofStd<double>("std gumbel", MAKE(std::extreme_value_distribution<>)),
    ofBoost<double>("Boost gumbel", MAKE(boosted::extreme_value_distribution<>)),
    ofGsl<double>("GSL laplace", DRAW(gsl_ran_laplace, 1)),
    ofBoost<double>("Boost laplace", MAKE(boosted::laplace_distribution<>)),
    ofGsl<double>("GSL lognormal", DRAW(gsl_ran_lognormal, 0, 1)),
    ofStd<double>("std lognormal", MAKE(std::lognormal_distribution<>)),
    ofBoost<double>("Boost lognormal", MAKE(boosted::lognormal_distribution<>)),
    ofGsl<double>("GSL rayleigh", DRAW(gsl_ran_rayleigh, 1)),
    ofGsl<double>("GSL weibull", DRAW(gsl_ran_weibull, 1, 2)),
    ofStd<double>("std weibull", [] { return std::weibull_distribution<>(2, 1); }),
    ofBoost<double>("Boost weibull",
                    [] { return boosted::weibull_distribution<>(2, 1); }),
};

const StreamPeer<float> drawnSingles[] = {
    ofStd<float>("std exponential", MAKE(std::exponential_distribution<float>)),
    ofStd<float>("std polar", MAKE(std::normal_distribution<float>)),
};

const StreamPeer<std::int32_t> drawnIntegers[] = {
    ofGsl<std::int32_t>("GSL bernoulli(0.3)", DRAW(gsl_ran_bernoulli, 0.3)),
    ofStd<std::int32_t>("std bernoulli(0.3)",
                        [] { return std::bernoulli_distribution(0.3); }),
    ofBoost<std::int32_t>("Boost bernoulli(0.3)",
                          [] { return boosted::bernoulli_distribution<>(0.3); }),
    ofGsl<std::int32_t>("GSL geometric(0.3)", DRAW(gsl_ran_geometric, 0.3)),
    ofStd<std::int32_t>("std geometric(0.3)",
                        [] { return std::geometric_distribution<>(0.3); }),
    ofBoost<std::int32_t>("Boost geometric(0.3)",
                          [] { return boosted::geometric_distribution<>(0.3); }),
    ofGsl<std::int32_t>("GSL poisson(3)", DRAW(gsl_ran_poisson, 3)),
    ofStd<std::int32_t>("std poisson(3)",
                        [] { return std::poisson_distribution<>(3); }),
    ofBoost<std::int32_t>("Boost poisson(3)",
                          [] { return boosted::poisson_distribution<>(3); }),
    ofGsl<std::int32_t>("GSL poisson(30)", DRAW(gsl_ran_poisson, 30)),
    ofStd<std::int32_t>("std poisson(30)",
                        [] { return std::poisson_distribution<>(30); }),
    ofBoost<std::int32_t>("Boost poisson(30)",
                          [] { return boosted::poisson_distribution<>(30); }),
    ofGsl<std::int32_t>("GSL poisson(1000)", DRAW(gsl_ran_poisson, 1000)),
    ofStd<std::int32_t>("std poisson(1000)",
                        [] { return std::poisson_distribution<>(1000); }),
    ofBoost<std::int32_t>("Boost poisson(1000)",
                          [] { return boosted::poisson_distribution<>(1000); }),
    ofGsl<std::int32_t>("GSL uniform(0, 100)", DRAW(gsl_rng_uniform_int, 100)),
    ofStd<std::int32_t>("std uniform(0, 100)",
                        [] { return std::uniform_int_distribution<>(0, 99); }),
    ofBoost<std::int32_t>("Boost uniform(0, 100)",
                          [] { return boosted::uniform_int_distribution<>(0, 99); }),
    ofGsl<std::int32_t>("GSL binomial(50, 0.3)", DRAW(gsl_ran_binomial, 0.3, 50)),
    ofStd<std::int32_t>("std binomial(50, 0.3)",
                        [] { return std::binomial_distribution<>(50, 0.3); }),
    ofBoost<std::int32_t>("Boost binomial(50, 0.3)",
                          [] { return boosted::binomial_distribution<>(50, 0.3); }),
    ofGsl<std::int32_t>("GSL binomial(10000, 0.25)",
                        DRAW(gsl_ran_binomial, 0.25, 10000)),
    ofStd<std::int32_t>("std binomial(10000, 0.25)",
                        [] { return std::binomial_distribution<>(10000, 0.25); }),
    ofBoost<std::int32_t>("Boost binomial(10000, 0.25)",
                          [] { return boosted::binomial_distribution<>(10000, 0.25); }),
    ofGsl<std::int32_t>("GSL hypergeometric(100, 20, 30)",
                        DRAW(gsl_ran_hypergeometric, 30, 70, 20)),
    ofGsl<std::int32_t>("GSL hypergeometric(1000, 300, 400)",
                        DRAW(gsl_ran_hypergeometric, 400, 600, 300)),
    ofGsl<std::int32_t>("GSL negbinomial(5, 0.3)",
                        DRAW(gsl_ran_negative_binomial, 0.3, 5)),
    ofStd<std::int32_t>("std negbinomial(5, 0.3)",
                        [] { return std::negative_binomial_distribution<>(5, 0.3); }),
    ofBoost<std::int32_t>(
        "Boost negbinomial(5, 0.3)",
        [] { return boosted::negative_binomial_distribution<>(5, 0.3); }),
    ofGsl<std::int32_t>("GSL negbinomial(50, 0.1)",
                        DRAW(gsl_ran_negative_binomial, 0.1, 50)),
    ofStd<std::int32_t>("std negbinomial(50, 0.1)",
                        [] { return std::negative_binomial_distribution<>(50, 0.1); }),
    ofBoost<std::int32_t>(
        "Boost negbinomial(50, 0.1)",
        [] { return boosted::negative_binomial_distribution<>(50, 0.1); }),
};

// ---- Sums by their definition -------------------------------------------------------

template <class T> void convolveLines(const T* x, int nx, const T* y, int ny, T* z) {
    for (int k = 0; k < nx + ny - 1; ++k) {
        T sum = 0;
        const int end = std::min(nx, k + 1);
        for (int i = std::max(0, k - ny + 1); i < end; ++i) sum += x[i] * y[k - i];
        z[k] = sum;
    }
}

template <class T> void correlateLines(const T* x, int nx, const T* y, int ny, T* z) {
    for (int lag = 1 - nx; lag < ny; ++lag) {
        T sum = 0;
        const int end = std::min(nx, ny - lag);
        for (int i = std::max(0, -lag); i < end; ++i) sum += x[i] * y[i + lag];
        *z++ = sum;
    }
}

template <class T>
void convolveGrids(const T* x, const int* nx, const T* y, const int* ny, T* z) {
    for (int l = 0; l < nx[1] + ny[1] - 1; ++l)
        for (int k = 0; k < nx[0] + ny[0] - 1; ++k) {
            T sum = 0;
            const int lines = std::min(nx[1], l + 1), end = std::min(nx[0], k + 1);
            for (int j = std::max(0, l - ny[1] + 1); j < lines; ++j)
                for (int i = std::max(0, k - ny[0] + 1); i < end; ++i)
                    sum += x[j * nx[0] + i] * y[(l - j) * ny[0] + k - i];
            *z++ = sum;
        }
}

template <class T>
constexpr SumPeer<T> sumPeers = {convolveLines<T>, correlateLines<T>, convolveGrids<T>};

} // namespace

Peers QORKES_PEERS() {
    return {kernelPeers<double>, kernelPeers<float>, streamPeers<std::uint32_t>,
            streamPeers<double>, streamPeers<float>, pointPeers,
            drawnDoubles,        drawnSingles,       drawnIntegers,
            sumPeers<double>,    sumPeers<float>};
}

} // namespace qorkes::bench

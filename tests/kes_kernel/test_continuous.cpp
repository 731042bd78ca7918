// Continuous distributions: which uniforms each variate takes, block by block, its
// bits, and what failing draws and warnings leave.
#include "continuous.hpp"

#include <cmath>
#include <numeric>

using namespace qorkes;
using namespace qorkes::test;

namespace {

using Counts = std::vector<int>;

Counts allAtOnce(int n) { return {n}; }

/// Two uniforms a variate, and a last draw even of none.
template <int size> Counts inPairs(int n) {
    Counts counts(static_cast<std::size_t>(n / size), 2 * size);
    counts.push_back(2 * (n % size));
    return counts;
}

/// Two uniforms for two variates, and a pair for one that is left.
Counts inFullPairs(int n) {
    Counts counts(static_cast<std::size_t>(n / 1024), 1024);
    if (n % 1024 >= 2) counts.push_back(n % 1024 / 2 * 2);
    if (n % 2 != 0) counts.push_back(2);
    return counts;
}

template <class T> struct Case {
    const char* name;
    int method;
    std::vector<double> parameters;
    Counts (*counts)(int n);
    int uniformsEach;
    T (*plain)(Uniforms<T>& source, const T* parameters);
    T (*unfinished)(Uniforms<T>& source, const T* parameters); // before a failure
    void (*finish)(std::vector<T>& r, const T* parameters) = nullptr;
};

template <class T> std::vector<Case<T>> cases() {
    return {
        {"cauchy", 0, {1.5, 3}, allAtOnce, 1, plainCauchy<T>, nullptr, finishCauchy<T>},
        {"exponential", 0, {0.25, 3}, allAtOnce, 1, plainExponential<T>, nullptr},
        {"gaussian", 0, {-1, 3}, inPairs<512>, 2, plainGaussian0<T>, standard0<T>},
        {"gaussian", 1, {-1, 3}, inFullPairs, 1, plainGaussian1<T>, standard1<T>},
        {"gumbel", 0, {5, 3}, allAtOnce, 1, plainGumbel<T>, nullptr},
        {"laplace", 0, {5, 3}, inPairs<1024>, 2, plainLaplace<T>, plainLaplace<T>},
        {"lognormal",
         0,
         {1, 0.5, 3, 7},
         inFullPairs,
         1,
         plainLognormal<T>,
         standard1<T>},
        {"rayleigh", 0, {5, 3}, allAtOnce, 1, plainRayleigh<T>, nullptr},
        {"weibull", 0, {3, 5, 7}, allAtOnce, 1, plainWeibull<T>, nullptr},
        {"weibull", 0, {0.75, 5, 7}, allAtOnce, 1, plainWeibull<T>, nullptr},
    };
}

/// Uniforms of all sizes, with both ends and the half that Laplace decides by.
std::vector<double> numbers() {
    std::vector<double> u = {0, 0.5, 1, 0.75, 0.5, 0.5 + 0x1p-24, 0x1p-32, 0.125};
    for (int i = 1; i < 997; ++i) u.push_back(std::fmod(i * 0.6180339887498949, 1));
    return u;
}

template <class T> struct Run {
    int status;
    std::vector<T> r;
    Counts counts;
};

constexpr float untouched = -12345;

template <class T>
Run<T> run(const Case<T>& x, int n, int failAt = -1, int status = -77) {
    const Stream stream = scriptedStream(numbers());
    script.failAt = failAt;
    script.status = status;
    Run<T> result = {0, std::vector<T>(static_cast<std::size_t>(n) + 1, untouched), {}};
    result.status =
        variates(x.name, x.method, stream, n, result.r.data(), x.parameters);
    result.counts = script.counts;
    return result;
}

/// The first n numbers, one at a time, and an untouched one.
template <class T>
std::vector<T> plain(T (*one)(Uniforms<T>&, const T*), const Case<T>& x, int n) {
    const Stream stream = scriptedStream(numbers());
    Uniforms<T> source{stream};
    const std::vector<T> parameters(x.parameters.begin(), x.parameters.end());
    std::vector<T> r;
    for (int i = 0; i < n; ++i) {
        source.isLast = i == n - 1;
        r.push_back(one(source, parameters.data()));
    }
    if (x.finish) x.finish(r, parameters.data());
    r.push_back(untouched);
    return r;
}

template <class T>
void expectBits(const std::vector<T>& wanted, const std::vector<T>& r) {
    EXPECT_TRUE(sameBits(wanted.data(), r.data(), static_cast<int>(wanted.size())));
}

template <class T> struct Continuous : testing::Test {};
using Precisions = testing::Types<double, float>;
TYPED_TEST_SUITE(Continuous, Precisions);

TYPED_TEST(Continuous, TakesTheStatedUniformsAroundBlocks) {
    for (const auto& x : cases<TypeParam>())
        for (const int n :
             {0, 1, 2, 3, 511, 512, 513, 1023, 1024, 1025, 1026, 2048, 2049, 2050}) {
            SCOPED_TRACE(testing::Message() << x.name << x.method << ' ' << n);
            const auto result = run(x, n);
            EXPECT_EQ(result.status, KesStatusOk);
            EXPECT_EQ(result.counts, x.counts(n));
            expectBits(plain(x.plain, x, n), result.r);
        }
}

TYPED_TEST(Continuous, StopsAtAFailingDraw) {
    constexpr int n = 2501;
    for (const auto& x : cases<TypeParam>()) {
        const Counts counts = x.counts(n);
        for (int failAt = 0; failAt < static_cast<int>(counts.size()); ++failAt) {
            SCOPED_TRACE(testing::Message() << x.name << x.method << ' ' << failAt);
            const auto result = run(x, n, failAt);
            EXPECT_EQ(result.status, -77);
            EXPECT_EQ(result.counts,
                      Counts(counts.begin(), counts.begin() + failAt + 1));
            const int drawn =
                std::accumulate(counts.begin(), counts.begin() + failAt, 0);
            auto wanted = plain(x.unfinished, x, drawn / x.uniformsEach);
            wanted.resize(n + 1, untouched);
            expectBits(wanted, result.r);
        }
    }
}

TYPED_TEST(Continuous, PassesTheLastWarningOn) {
    constexpr int n = 2501;
    for (const auto& x : cases<TypeParam>()) {
        const int last = static_cast<int>(x.counts(n).size()) - 1;
        for (const int warnAt : {0, last}) {
            const auto result = run(x, n, warnAt, 5);
            EXPECT_EQ(result.status, warnAt == last ? 5 : 0) << x.name;
            expectBits(plain(x.plain, x, n), result.r);
        }
    }
}

TEST(Exponential, HoldsFloatsAtTheirDisplacement) {
    const Stream stream = scriptedStream({1});
    const double beta = -1; // which puts everything below a
    for (const double u : {0.25, 0.75}) {
        script.numbers = {u};
        EXPECT_EQ(variates<float>("exponential", 0, stream, 1, {7, beta})[0], 7);
        EXPECT_LT(variates<double>("exponential", 0, stream, 1, {7, beta})[0], 7);
    }
}

} // namespace

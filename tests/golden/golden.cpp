#include "golden.hpp"

#include <distributions.hpp>
#include <generators.hpp>
#include <support/kernels.hpp>
#include <support/samples.hpp>

#include <common/bits.hpp>
#include <common/ext.hpp>

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <stdexcept>
#include <xmmintrin.h>

namespace qorkes {
namespace {

using catalogue::Distribution;
using catalogue::Function;
using catalogue::Generator;
using catalogue::Kernel;

constexpr std::size_t arguments = 100'000;
constexpr int drawn = 1'000'000;
constexpr uint32_t seed = 7;

// ---- Digests ------------------------------------------------------------------------

/// The 64-bit digest of Fowler, Noll and Vo, by words of 32 bits.
class Digest {
public:
    void add(uint32_t word) { state = (state ^ word) * 0x100000001B3; }
    template <class T> void add(const T& x) {
        uint32_t words[sizeof(T) / 4];
        std::memcpy(words, &x, sizeof x);
        for (const uint32_t word : words) add(word);
    }
    std::string text() const { return hexadecimal(state); }

    template <class T> static std::string hexadecimal(T x) {
        char text[20];
        std::snprintf(text, sizeof text, "%0*llx", static_cast<int>(2 * sizeof x),
                      static_cast<unsigned long long>(x));
        return text;
    }

private:
    uint64_t state = 0xCBF29CE484222325;
};

std::string hexadecimal(double x) { return Digest::hexadecimal(bitsOf(x)); }
std::string hexadecimal(float x) { return Digest::hexadecimal(bitsOf(x)); }
std::string hexadecimal(uint32_t x) { return Digest::hexadecimal(x); }
std::string hexadecimal(int32_t x) { return std::to_string(x); }

/// The digest of all and the first ones as they are.
template <class T> std::string numbersOf(const std::vector<T>& results) {
    Digest digest;
    for (const T& x : results) digest.add(x);
    std::string text = digest.text();
    for (std::size_t i = 0; i < 3; ++i)
        text.append(" ").append(hexadecimal(results[i]));
    return text;
}

// ---- Kernels ------------------------------------------------------------------------

/// Numbers of a range that no library has a part in: mantissas of random bits under
/// exponents that stay inside.
template <class T> std::vector<T> ordinary(const test::Range& range, unsigned first) {
    const int low = std::ilogb(range.smallest) + 1;
    const int exponents = std::max(std::ilogb(range.largest) - low, 1);
    test::Random random(first);
    std::vector<T> numbers;
    for (std::size_t i = 0; i < arguments; ++i) {
        const uint32_t leading = random(), trailing = random();
        const auto mantissa =
            static_cast<double>(1 + leading * 0x1p-32L + trailing * 0x1p-64L);
        const int exponent =
            low + static_cast<int>(random() % static_cast<unsigned>(exponents));
        const bool isNegative = range.sign == test::Sign::negative ||
                                (range.sign == test::Sign::both && random() % 2 == 1);
        const double x = std::ldexp(mantissa, exponent);
        numbers.push_back(static_cast<T>(isNegative ? -x : x));
    }
    return numbers;
}

/// The same with a number of each other kind in front.
template <class T>
std::vector<T> argumentsOf(const test::Range& range, unsigned first) {
    using Limits = std::numeric_limits<T>;
    constexpr T infinity = Limits::infinity(), largest = Limits::max();
    constexpr T tiny = Limits::denorm_min(), smallest = Limits::min();
    const T others[] = {0,
                        T(-0.0),
                        infinity,
                        -infinity,
                        Limits::quiet_NaN(),
                        tiny,
                        -tiny,
                        smallest,
                        -smallest,
                        largest,
                        -largest,
                        T(1),
                        T(-1),
                        T(0.5),
                        T(-0.5),
                        T(2),
                        smallest - tiny,
                        T(1e-9),
                        T(3)};
    std::vector<T> numbers = ordinary<T>(range, first);
    std::copy(std::begin(others), std::end(others), numbers.begin());
    return numbers;
}

/// Kernels with results that are the processor's own in their last bits: by its
/// logarithm or angle, or from its estimates of roots and reciprocals.
constexpr const char* kernelsOfUnit[] = {
    "_qordAtan2_HA", "_qordPow_50",  "_qorsAcos_HA",    "_qorsAsin_HA",
    "_qorsAtan_21",  "_qorsSqrt_HA", "_qorsInvSqrt_HA",
};
/// Distributions whose floats need a square root; Poisson variates may be made of
/// those.
constexpr const char* distributionsOfUnit[] = {"beta", "gamma", "gaussian", "lognormal",
                                               "rayleigh"};

template <std::size_t n>
bool isAmong(const std::string& name, const char* const (&names)[n]) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

template <class T> GoldenRow rowOf(const Function& function, const Kernel<T>& kernel) {
    const test::Samples& samples = test::samplesOf(function.name);
    const std::vector<T> a = argumentsOf<T>(samples.a, 1);
    std::vector<T> b = argumentsOf<T>(samples.b, 2);
    std::rotate(b.begin(), b.begin() + 7, b.begin() + 19); // pairs of special numbers
    std::vector<T> y(arguments), z(arguments);
    const bool hasScalar = function.form == catalogue::Form::arrayAndScalar;
    call(function.form, kernel.entry, static_cast<int>(arguments), a.data(),
         hasScalar ? &b.back() - 10 : b.data(), y.data(), z.data());
    if (function.form == catalogue::Form::oneToTwo)
        y.insert(y.end(), z.begin(), z.end());
    return {kernel.symbol, numbersOf(y), isAmong(kernel.symbol, kernelsOfUnit)};
}

template <class T> void addKernels(std::vector<GoldenRow>& rows) {
    for (const Function& function : catalogue::functions())
        for (const Kernel<T>& kernel : kernelsOf<T>(function))
            if (isOwnCode(kernel)) rows.push_back(rowOf(function, kernel));
}

// ---- Streams ------------------------------------------------------------------------

/// The next numbers of a stream of its own, by draw(stream, n, r).
template <class T, class Draw> std::string drawnFrom(int brng, int width, Draw&& draw) {
    StreamState* stream;
    if (__kesNewStreamEx(&stream, brng, 1, &seed) < 0)
        throw std::runtime_error("no stream");
    std::vector<T> r(static_cast<std::size_t>(drawn) * static_cast<std::size_t>(width));
    const int status = draw(stream, drawn, r.data());
    __kesDeleteStream(&stream);
    if (status < 0) throw std::runtime_error("no numbers");
    return numbersOf(r);
}

void addMember(std::vector<GoldenRow>& rows, const std::string& name, int brng) {
    BrngProperties row;
    __kesGetBrngProperties(brng, &row);
    const auto words = [](StreamState* stream, int n, uint32_t* r) {
        return _kesiRngUniformBits(0, stream, n, r);
    };
    const auto doubles = [](StreamState* stream, int n, double* r) {
        return _kesdRngUniform(0, stream, n, r, 0, 1);
    };
    const auto singles = [](StreamState* stream, int n, float* r) {
        return _kessRngUniform(0, stream, n, r, 0, 1);
    };
    rows.push_back(
        {name + " words", drawnFrom<uint32_t>(brng, row.WordSize / 4, words), false});
    rows.push_back({name + " doubles", drawnFrom<double>(brng, 1, doubles), false});
    rows.push_back({name + " floats", drawnFrom<float>(brng, 1, singles), false});
}

void addGenerators(std::vector<GoldenRow>& rows) {
    for (const Generator& generator : catalogue::generators()) {
        addMember(rows, generator.name, generator.identifier);
        if (generator.members == 1) continue;
        const int last = generator.members - 1;
        addMember(rows, std::string(generator.name) + ":" + std::to_string(last),
                  generator.identifier + last);
    }
}

// ---- Distributions ------------------------------------------------------------------

/// Parameters beside the preset ones: one set for every algorithm that a distribution
/// has.
struct Variant {
    std::string distribution;
    std::vector<double> parameters;
};
const Variant variants[] = {
    {"beta", {0.3, 0.3, 0, 1}},  {"beta", {0.7, 0.8, 0, 1}},
    {"beta", {0.5, 2, 0, 1}},    {"beta", {1, 3, 0, 1}},
    {"binomial", {10000, 0.25}}, {"gamma", {0.3, 0, 1}},
    {"gamma", {0.7, 0, 1}},      {"hypergeometric", {1000, 300, 400}},
    {"negbinomial", {0.5, 0.3}}, {"negbinomial", {50, 0.3}},
    {"gaussian", {7, 3}},        {"integers", {-1000000, 999}},
    {"laplace", {7, 3}},         {"poisson", {0.5}},
    {"poisson", {30}},           {"poisson", {1000}},
    {"poissonv", {0.03}},        {"poissonv", {30}},
    {"uniform", {-3, 5}},        {"weibull", {0.7, 1, 3}},
};

template <class T> bool isOfUnit(const std::string& distribution, int method) {
    if constexpr (std::is_same_v<T, float>)
        return isAmong(distribution, distributionsOfUnit);
    else
        return distribution == "poissonv" || (distribution == "poisson" && method == 1);
}

void addDraws(std::vector<GoldenRow>& rows, const Distribution& distribution,
              int method, const std::vector<double>& parameters) {
    std::string name = distribution.name;
    if (!distribution.methods.empty()) name += " by " + std::to_string(method);
    for (const double x : parameters) {
        std::ostringstream text;
        text << ' ' << x;
        name += text.str();
    }
    const auto add = [&]<class T>(const char* kind, catalogue::Draw<T> draw) {
        if (!draw) return;
        const auto one = [&](StreamState* stream, int n, T* r) {
            return draw(method, stream, n, r, parameters.data());
        };
        rows.push_back({name + kind, drawnFrom<T>(KesBrngMCG59, 1, one),
                        isOfUnit<T>(distribution.name, method)});
    };
    add(" doubles", distribution.doubles);
    add(" floats", distribution.singles);
    add(" integers", distribution.integers);
}

void addDistributions(std::vector<GoldenRow>& rows) {
    for (const Distribution& distribution : catalogue::distributions()) {
        std::vector<double> presets;
        for (const auto& parameter : distribution.parameters)
            presets.push_back(parameter.preset);
        const auto methods = static_cast<int>(distribution.methods.size());
        for (int method = 0; method < std::max(methods, 1); ++method) {
            addDraws(rows, distribution, method, presets);
            for (const Variant& variant : variants)
                if (variant.distribution == distribution.name)
                    addDraws(rows, distribution, method, variant.parameters);
        }
    }
}

// ---- The processor's own ------------------------------------------------------------

[[gnu::target("sse")]] void addEstimates(Digest& digest, float x) {
    const __m128 argument = _mm_set_ss(x);
    digest.add(_mm_cvtss_f32(_mm_rcp_ss(argument)));
    digest.add(_mm_cvtss_f32(_mm_rsqrt_ss(argument)));
}

} // namespace

std::string digestOfUnit() {
    test::Random random(1);
    Digest digest;
    for (std::size_t i = 0; i < arguments; ++i) {
        const ext x = random() * 0x1p-32L + 0x1p-40L, y = random() * 0x1p-32L;
        for (const ext result : {timesLog2(1, x), angleOf(y, x)}) {
            digest.add(round64(result));
            digest.add(round64((result - round64(result)) * 0x1p+60L));
        }
        addEstimates(digest, round32(x));
    }
    return digest.text();
}

std::vector<GoldenRow> goldenRows() {
    std::vector<GoldenRow> rows;
    addKernels<double>(rows);
    addKernels<float>(rows);
    addGenerators(rows);
    addDistributions(rows);
    return rows;
}

} // namespace qorkes
